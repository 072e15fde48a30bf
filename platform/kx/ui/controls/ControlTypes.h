// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Delegate.h"
#include "kx/core/TypInfo.h"
#include "kx/core/Types.h"

namespace kx {

/// Side of its parent to which a control sticks, filling the parent's whole edge; alClient fills what is left.
enum TAlign : uint8_t { alNone, alTop, alBottom, alLeft, alRight, alClient };
KX_ENUM(TAlign, "alNone", "alTop", "alBottom", "alLeft", "alRight", "alClient")

/// Edges of its parent to which a control keeps its distance when the parent is resized.
enum TAnchorKind : uint8_t { akLeft, akTop, akRight, akBottom };
KX_ENUM(TAnchorKind, "akLeft", "akTop", "akRight", "akBottom")
using TAnchors = TSet<TAnchorKind>;

enum TMouseButton : uint8_t { mbLeft, mbRight, mbMiddle };
KX_ENUM(TMouseButton, "mbLeft", "mbRight", "mbMiddle")

/// Keys and mouse buttons that are held.
enum TShiftStateFlag : uint8_t { ssShift, ssAlt, ssCtrl, ssLeft, ssRight, ssMiddle, ssDouble };
KX_ENUM(TShiftStateFlag, "ssShift", "ssAlt", "ssCtrl", "ssLeft", "ssRight", "ssMiddle", "ssDouble")
using TShiftState = TSet<TShiftStateFlag>;

enum TAlignment : uint8_t { taLeftJustify, taRightJustify, taCenter };
KX_ENUM(TAlignment, "taLeftJustify", "taRightJustify", "taCenter")

/// Reading order of texts. From right to left, texts that stand left otherwise stand right, and scroll bars are left:
/// NoAlign leaves the texts where they are, ReadingOnly the scroll bars too.
enum TBiDiMode : uint8_t { bdLeftToRight, bdRightToLeft, bdRightToLeftNoAlign, bdRightToLeftReadingOnly };
KX_ENUM(TBiDiMode, "bdLeftToRight", "bdRightToLeft", "bdRightToLeftNoAlign", "bdRightToLeftReadingOnly")

enum TScrollStyle : uint8_t { ssNone, ssHorizontal, ssVertical, ssBoth };
KX_ENUM(TScrollStyle, "ssNone", "ssHorizontal", "ssVertical", "ssBoth")

/// Frame of a form; controls know only the first two.
enum TFormBorderStyle : uint8_t { bsNone, bsSingle, bsSizeable, bsDialog, bsToolWindow, bsSizeToolWin };
KX_ENUM(TFormBorderStyle, "bsNone", "bsSingle", "bsSizeable", "bsDialog", "bsToolWindow", "bsSizeToolWin")
using TBorderStyle = TFormBorderStyle;

/// What a control is like.
enum TControlStyleFlag : uint8_t {
    csAcceptsControls, ///< Form files and designers may put controls into it.
    csCaptureMouse,    ///< Keeps the mouse from a press to the release.
    csClickEvents,     ///< A press and release of the left button is a click.
    csDoubleClicks,    ///< Knows double clicks; without it the second press is another click.
    csOpaque,          ///< Paints every pixel of its rectangle.
    csSetCaption,      ///< Its text follows its name as long as they are equal.
    csReflector        ///< Needs the notifications that its parent window gets: a foreign one must send them back.
};
using TControlStyle = TSet<TControlStyleFlag>;

/// A mouse pointer, by its number in `Screen().Cursors`.
enum TCursor : int16_t {
    crDefault = 0,
    crNone = -1,
    crArrow = -2,
    crCross = -3,
    crIBeam = -4,
    crSize = -22,
    crSizeNESW = -6,
    crSizeNS = -7,
    crSizeNWSE = -8,
    crSizeWE = -9,
    crUpArrow = -10,
    crHourGlass = -11,
    crDrag = -12,
    crNoDrop = -13,
    crHSplit = -14,
    crVSplit = -15,
    crMultiDrag = -16,
    crNo = -18,
    crAppStart = -19,
    crHelp = -20,
    crHandPoint = -21,
    crSizeAll = crSize
};
const TIdentInfo& KxIdentInfo(TCursor);

/// How a modal form was closed; 0 while it is shown. Other numbers are the program's.
enum TModalResult : int32_t {
    mrNone = 0,
    mrOk = 1,
    mrCancel = 2,
    mrAbort = 3,
    mrRetry = 4,
    mrIgnore = 5,
    mrYes = 6,
    mrNo = 7
};
const TIdentInfo& KxIdentInfo(TModalResult);

/// What names a control's topic in the program's help: its HelpKeyword or its HelpContext.
enum THelpType : uint8_t { htKeyword, htContext };
KX_ENUM(THelpType, "htKeyword", "htContext")

/// Coordinates are client coordinates of the sender.
using TMouseEvent = TEvent<void(TObject* sender, TMouseButton button, TShiftState shift, int x, int y)>;
using TMouseMoveEvent = TEvent<void(TObject* sender, TShiftState shift, int x, int y)>;
/// A handler that sets `key` to 0 takes the key away from the control.
using TKeyEvent = TEvent<void(TObject* sender, uint16_t& key, TShiftState shift)>;
/// `key` is a whole character, as Unicode numbers it: to be compared with 'x', or with a literal of char32_t. A handler
/// that sets it to another one has that typed instead; 0 suppresses it. `TextOfCharacter` gives it as text.
using TKeyPressEvent = TEvent<void(TObject* sender, char32_t& key)>;
/// The mouse wheel was turned: by `wheelDelta`, positive away from the user, or by one whole notch. `mousePos` in
/// screen coordinates. A handler that sets `handled` keeps the turn from the control and from those around it.
using TMouseWheelEvent =
    TEvent<void(TObject* sender, TShiftState shift, int wheelDelta, const TPoint& mousePos, bool& handled)>;
using TMouseWheelUpDownEvent = TEvent<void(TObject* sender, TShiftState shift, const TPoint& mousePos, bool& handled)>;
/// The control is about to get another size, or its user to drag its frame: pixels, 0 for no limit, as the constraints
/// have them. A handler may change them for this time.
using TConstrainedResizeEvent =
    TEvent<void(TObject* sender, int& minWidth, int& minHeight, int& maxWidth, int& maxHeight)>;
/// `position` in client coordinates of the sender, (-1, -1) when the keyboard asked.
using TContextPopupEvent = TEvent<void(TObject* sender, const TPoint& position, bool& handled)>;

} // namespace kx
