// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"

#include <cstdint>
#include <string>
#include <vector>

// What screen readers and other aids are told of controls.

namespace kx {

/// What a control, or a part of one, is. The numbers are the system's (ROLE_SYSTEM_...).
enum TAccessibleRole : int32_t {
    arSystem = 0, ///< What the system says of windows of the control's class.
    arClient = 0x0A,
    arPane = 0x10,
    arGrouping = 0x14,
    arSeparator = 0x15,
    arToolBar = 0x16,
    arTable = 0x18,
    arColumnHeader = 0x19,
    arRowHeader = 0x1A,
    arCell = 0x1D,
    arPropertyPage = 0x26,
    arGraphic = 0x28,
    arStaticText = 0x29,
    arPushButton = 0x2B,
    arDropDownButton = 0x38, ///< Opens a list or a menu.
    arMenuButton = 0x39,
    arSplitButton = 0x3E
};

/// Bits of the state, the system's (STATE_SYSTEM_...). Those for the focus, and for controls that are hidden or
/// disabled, need not be given.
constexpr uint32_t asSelected = 0x2;
constexpr uint32_t asFocused = 0x4;
constexpr uint32_t asPressed = 0x8;
constexpr uint32_t asChecked = 0x10;
constexpr uint32_t asMixed = 0x20;
constexpr uint32_t asReadOnly = 0x40;
constexpr uint32_t asFocusable = 0x100000;
constexpr uint32_t asSelectable = 0x200000;
constexpr uint32_t asMultiSelectable = 0x1000000;
constexpr uint32_t asHasPopup = 0x40000000;

/// What is told of a control or of a part of it.
struct TAccessibleInfo {
    TAccessibleRole Role = arSystem;
    uint32_t State = 0;
    std::string Name;        ///< By which the user knows it.
    std::string Description; ///< More than the name says.
    std::string Value;       ///< What it holds.
    std::string ShortCut;    ///< "Alt+N".
    std::string Action;      ///< What a press or a click on it is called; empty: there is none.
};

/// What has happened to a control, for those who read it out. The numbers are the system's (EVENT_OBJECT_...).
enum TAccessibleEvent : uint32_t {
    aeFocus = 0x8005,
    aeSelection = 0x8006,
    aeStateChange = 0x800A,
    aeNameChange = 0x800C,
    aeValueChange = 0x800E
};

/// A control with parts that are no controls: cells of a grid. They are numbered from 0.
class IAccessibleParts {
public:
    /// How many there are. Very many need not all be counted: what is not counted can only be told of as the control's
    /// value.
    virtual int AccessiblePartCount() const = 0;
    virtual TAccessibleInfo AccessiblePart(int part) const = 0;
    virtual TRect AccessiblePartRect(int part) const = 0; ///< In client coordinates; empty: it is not to be seen.
    virtual int AccessiblePartAt(const TPoint& point) const = 0; ///< At a point of the client area; -1: none.
    virtual int FocusedPart() const { return -1; }               ///< Which has the focus when the control has it.
    virtual std::vector<int> SelectedParts() const { return {}; }
    virtual void AccessiblePartAction(int part) = 0; ///< Does what the part's info names as the action.

protected:
    ~IAccessibleParts() = default;
};

} // namespace kx
