// SPDX-License-Identifier: MIT
// Frames.

#include "kx/ui/forms/Frames.h"

namespace kx {

const TClass& TCustomFrame::StaticClass() {
    static const TClassBuilder<TCustomFrame> cls("TCustomFrame", TScrollingWinControl::StaticClass());
    return cls.Class();
}

const TClass& TFrame::StaticClass() {
    static const TClassBuilder<TFrame> cls("TFrame", TCustomFrame::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TCustomFrame::TCustomFrame(TComponent* owner) : TScrollingWinControl(owner) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks});
    SetBoundsFields(0, 0, 320, 240);
}

TFrame::TFrame(TComponent* owner) : TCustomFrame(owner) {}

void TCustomFrame::CreateHandle() {
    detail::CheckFormFileRead(ClassType(), FFileClass);
    TScrollingWinControl::CreateHandle();
}

void TCustomFrame::GetChildren(const TGetChildProc& proc, TComponent* root) {
    TScrollingWinControl::GetChildren(proc, root);
    for (int i = 0; root == this && i < ComponentCount(); ++i) {
        if (!Components(i)->HasParent()) {
            proc(Components(i));
        }
    }
}

} // namespace kx
