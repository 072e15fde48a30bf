// SPDX-License-Identifier: MIT
// Areas that scroll.

#include "kx/ui/widgets/ScrollBoxes.h"

#include "kx/win/Windows.h"

namespace kx {

const TClass& TScrollBox::StaticClass() {
    static const TClassBuilder<TScrollBox> cls("TScrollBox", TScrollingWinControl::StaticClass(), [](auto& c) {
        using T = TScrollBox;
        c.Creatable();
        c.Property("AutoScroll", &T::AutoScroll, &T::SetAutoScroll).Default = true;
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
    });
    return cls.Class();
}

TScrollBox::TScrollBox(TComponent* owner) : TScrollingWinControl(owner) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks});
    SetBoundsFields(0, 0, 185, 41);
    SetAutoScroll(true);
}

void TScrollBox::CreateParams(TCreateParams& params) {
    TScrollingWinControl::CreateParams(params);
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
}

void TScrollBox::SetBorderStyle(TBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        RecreateWnd();
    }
}

} // namespace kx
