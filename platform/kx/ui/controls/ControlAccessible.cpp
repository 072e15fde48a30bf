// SPDX-License-Identifier: MIT
// What controls say of themselves to screen readers.

#include "kx/ui/controls/Controls.h"

#include "kx/core/Barrier.h"
#include "kx/ui/controls/ShortCuts.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// The text of the control is its caption, not what the user types or chooses.
bool HasCaption(const TControl& control) { return control.ClassType().FindProperty("Caption") != nullptr; }

std::string AcceleratorOf(const std::string& caption) {
    const wchar_t key = GetHotkey(caption);
    return key ? "Alt+" + FromWide({&key, 1}) : std::string();
}

} // namespace

TAccessibleInfo TControl::AccessibleInfo() const {
    TAccessibleInfo info;
    info.Role = arGraphic;
    if (HasCaption(*this)) {
        info.Name = StripHotkey(Text());
        info.ShortCut = AcceleratorOf(Text());
    }
    const std::string hint = GetShortHint(FHint);
    (info.Name.empty() ? info.Name : info.Description) = hint;
    return info;
}

TAccessibleInfo TWinControl::AccessibleInfo() const {
    TAccessibleInfo info = TControl::AccessibleInfo();
    info.Role = FSystemClass ? arSystem : arPane;
    if (HasCaption(*this) && !Text().empty()) {
        return info;
    }
    const TWinControl* top = this;
    while (top->Parent()) {
        top = top->Parent();
    }
    if (const TControl* const label = top->LabelInside(*this)) {
        const std::string hint = info.Name;
        info.Name = StripHotkey(label->Text());
        info.ShortCut = AcceleratorOf(label->Text());
        info.Description = hint;
    }
    return info;
}

/// The visible label inside this control, on any level, that leads to `control`; null: none.
const TControl* TWinControl::LabelInside(const TWinControl& control) const {
    for (const TControl* inside : FControls) {
        if (inside->LabelledControl() == &control && inside->Visible()) {
            return inside;
        }
        const auto* const windowed = dynamic_cast<const TWinControl*>(inside);
        if (const TControl* const found = windowed ? windowed->LabelInside(control) : nullptr) {
            return found;
        }
    }
    return nullptr;
}

std::vector<const TControl*> TWinControl::AccessibleChildren() const {
    std::vector<const TControl*> children;
    for (const TControl* control : FControls) {
        if (control->Visible() && !dynamic_cast<const TWinControl*>(control)) {
            children.push_back(control);
        }
    }
    return children;
}

namespace {

/// By which number a window tells of a part of itself, or of a control inside that has none.
LONG ChildNumber(const TWinControl& window, const TControl& control, int part) {
    if (&window == &control) {
        return part + 1; // 0: the window itself
    }
    const auto* const parts = dynamic_cast<const IAccessibleParts*>(&window);
    const auto children = window.AccessibleChildren();
    const auto found = std::find(children.begin(), children.end(), &control);
    return found == children.end()
               ? -1
               : static_cast<LONG>(found - children.begin()) + 1 + (parts ? parts->AccessiblePartCount() : 0);
}

} // namespace

void TControl::TellAccessible(TAccessibleEvent event, int part) const {
    const auto* const own = dynamic_cast<const TWinControl*>(this);
    const TWinControl* const window = own ? own : FParent;
    if (!window || !window->HandleAllocated() || IsLoading() || !IsWinEventHookInstalled(event)) {
        return; // to count the children takes long where there are many
    }
    const LONG number = ChildNumber(*window, *this, part);
    if (number >= 0) {
        NotifyWinEvent(event, window->WindowHandle(), OBJID_CLIENT, number);
    }
}

void TWinControl::DoAccessibleAction(const TMessage& message) {
    auto* const control = reinterpret_cast<TControl*>(message.LParam); // it may have been freed since
    if (control != this && !HasChild(control)) {
        return;
    }
    if (!control->Enabled() || !control->Showing()) {
        return;
    }
    if (message.WParam == 0) {
        control->AccessibleAction();
    } else if (auto* const parts = dynamic_cast<IAccessibleParts*>(control)) {
        const auto part = static_cast<int64_t>(message.WParam) - 1;
        if (part < parts->AccessiblePartCount()) {
            parts->AccessiblePartAction(static_cast<int>(part));
        }
    }
}

} // namespace kx
