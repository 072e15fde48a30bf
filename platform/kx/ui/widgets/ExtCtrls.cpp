// SPDX-License-Identifier: MIT
// Panels, bevels, images and boxes to paint in.

#include "kx/ui/widgets/ExtCtrls.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- TPanel

const TClass& TPanel::StaticClass() {
    static const TClassBuilder<TPanel> cls("TPanel", TCustomControl::StaticClass(), [](auto& c) {
        using T = TPanel;
        c.Creatable();
        c.Property("Alignment", &T::Alignment, &T::SetAlignment).Default = taCenter;
        c.Property("BevelInner", &T::BevelInner, &T::SetBevelInner).Default = bvNone;
        c.Property("BevelOuter", &T::BevelOuter, &T::SetBevelOuter).Default = bvRaised;
        c.Property("BevelWidth", &T::BevelWidth, &T::SetBevelWidth).Default = 1;
        c.Property("BorderWidth", &T::BorderWidth, &T::SetBorderWidth).Default = 0;
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsNone;
        c.Property("Caption", &T::Caption, &T::SetCaption);
    });
    return cls.Class();
}

TPanel::TPanel(TComponent* owner) : TCustomControl(owner) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks, csSetCaption, csOpaque});
    SetBoundsFields(0, 0, 185, 41);
}

void TPanel::CreateParams(TCreateParams& params) {
    TCustomControl::CreateParams(params);
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
}

void TPanel::SetBorderStyle(TBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        if (Outlives(*this, [this] { RecreateWnd(); })) {
            Realign();
        }
    }
}

namespace {

/// Takes `by` pixels off each side of the rectangle. A smaller one ends empty.
void Inset(TRect& rect, int by) {
    by = std::clamp(by, 0, std::max({Width(rect), Height(rect), 0}));
    rect = {rect.Left + by, rect.Top + by, rect.Right - by, rect.Bottom - by};
}

} // namespace

void TPanel::AdjustClientRect(TRect& rect) const {
    Inset(rect, FBorderWidth);
    Inset(rect, FBevelInner == bvNone ? 0 : FBevelWidth);
    Inset(rect, FBevelOuter == bvNone ? 0 : FBevelWidth);
}

void TPanel::Paint() {
    TCanvas& canvas = Canvas();
    TRect r = ClientRect();
    if (!HasThemedBackground()) { // else it is there already
        canvas.Brush().SetColor(Color());
        canvas.FillRect(r);
    }
    const auto bevel = [&](TBevelCut cut) {
        if (cut == bvLowered || cut == bvRaised) {
            const TColor topLeft = cut == bvRaised ? clBtnHighlight : clBtnShadow;
            const TColor bottomRight = cut == bvRaised ? clBtnShadow : clBtnHighlight;
            for (int i = 0; i < FBevelWidth && r.Left < r.Right && r.Top < r.Bottom; ++i) {
                canvas.Pen().SetColor(topLeft);
                canvas.MoveTo(r.Left, r.Bottom - 1);
                canvas.LineTo(r.Left, r.Top);
                canvas.LineTo(r.Right - 1, r.Top);
                canvas.Pen().SetColor(bottomRight);
                canvas.LineTo(r.Right - 1, r.Bottom - 1);
                canvas.LineTo(r.Left, r.Bottom - 1);
                Inset(r, 1);
            }
        } else if (cut == bvSpace) {
            Inset(r, FBevelWidth);
        }
    };
    bevel(FBevelOuter);
    Inset(r, FBorderWidth);
    bevel(FBevelInner);
    if (!Text().empty()) {
        constexpr UINT alignment[] = {DT_LEFT, DT_RIGHT, DT_CENTER};
        canvas.Brush().SetStyle(bsClear);
        canvas.Font().Assign(&Font());
        if (!Enabled()) {
            canvas.Font().SetColor(clGrayText);
        }
        canvas.DrawText(Text(), r,
                        DrawTextBiDiModeFlags(DT_SINGLELINE | DT_VCENTER | DT_EXPANDTABS |
                                              alignment[BiDiAlignment(FAlignment)] | HiddenPrefix()));
    }
}

bool TPanel::DialogChar(wchar_t letter) {
    if (IsAccel(letter, Text()) && CanFocus()) {
        SelectNext(nullptr, true, true);
        return true;
    }
    return TCustomControl::DialogChar(letter);
}

// --- TBevel

const TClass& TBevel::StaticClass() {
    static const TClassBuilder<TBevel> cls("TBevel", TGraphicControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Shape", &TBevel::Shape, &TBevel::SetShape).Default = bsBox;
        c.Property("Style", &TBevel::Style, &TBevel::SetStyle).Default = bsLowered;
    });
    return cls.Class();
}

TBevel::TBevel(TComponent* owner) : TGraphicControl(owner) { SetBoundsFields(0, 0, 50, 50); }

void TBevel::SetShape(TBevelShape value) {
    FShape = value;
    Invalidate();
}

void TBevel::SetStyle(TBevelStyle value) {
    FStyle = value;
    Invalidate();
}

TAccessibleInfo TBevel::AccessibleInfo() const {
    TAccessibleInfo info = TGraphicControl::AccessibleInfo();
    info.Role = arSeparator;
    return info;
}

void TBevel::Paint() {
    TCanvas& canvas = Canvas();
    const TColor first = FStyle == bsLowered ? clBtnShadow : clBtnHighlight;
    const TColor second = FStyle == bsLowered ? clBtnHighlight : clBtnShadow;
    const int right = Width() - 1;
    const int bottom = Height() - 1;
    const auto line = [&](TColor color, int x1, int y1, int x2, int y2) {
        canvas.Pen().SetColor(color);
        canvas.MoveTo(x1, y1);
        canvas.LineTo(x2, y2);
    };
    const auto box = [&](TColor topLeft, TColor bottomRight, int left, int top, int r, int b) {
        line(topLeft, left, b, left, top);
        line(topLeft, left, top, r, top);
        line(bottomRight, r, top, r, b);
        line(bottomRight, r, b, left - 1, b);
    };
    switch (FShape) {
    case bsBox: box(first, second, 0, 0, right, bottom); break;
    case bsFrame:
        box(second, second, 1, 1, right, bottom);
        box(first, first, 0, 0, right - 1, bottom - 1);
        break;
    case bsTopLine:
        line(first, 0, 0, Width(), 0);
        line(second, 0, 1, Width(), 1);
        break;
    case bsBottomLine:
        line(first, 0, bottom - 1, Width(), bottom - 1);
        line(second, 0, bottom, Width(), bottom);
        break;
    case bsLeftLine:
        line(first, 0, 0, 0, Height());
        line(second, 1, 0, 1, Height());
        break;
    case bsRightLine:
        line(first, right - 1, 0, right - 1, Height());
        line(second, right, 0, right, Height());
        break;
    case bsSpacer: break;
    }
}

// --- TImage

const TClass& TImage::StaticClass() {
    static const TClassBuilder<TImage> cls("TImage", TGraphicControl::StaticClass(), [](auto& c) {
        using T = TImage;
        c.Creatable();
        c.Property("AutoSize", &T::AutoSize, &T::SetAutoSize).Default = false;
        c.Property("Center", &T::Center, &T::SetCenter).Default = false;
        c.SubObject("Picture", &T::Picture, &T::SetPicture);
        c.Property("Proportional", &T::Proportional, &T::SetProportional).Default = false;
        c.Property("Stretch", &T::Stretch, &T::SetStretch).Default = false;
        c.Property("Transparent", &T::Transparent, &T::SetTransparent).Default = false;
    });
    return cls.Class();
}

TImage::TImage(TComponent* owner) : TGraphicControl(owner) {
    SetBoundsFields(0, 0, 105, 105);
    FPicture.SetOnChange([this](TObject*) { PictureChanged(); });
}

void TImage::PictureChanged() {
    if (FPicture.Graphic() && FPicture.Graphic()->Transparent() != FTransparent) {
        FPicture.Graphic()->SetTransparent(FTransparent); // this comes back here
        return;
    }
    Invalidate();
    if (FAutoSize && FPicture.Width() > 0 && FPicture.Height() > 0) {
        SetBounds(Left(), Top(), FPicture.Width(), FPicture.Height());
    }
}

void TImage::SetAutoSize(bool value) {
    FAutoSize = value;
    PictureChanged();
}

void TImage::SetCenter(bool value) {
    FCenter = value;
    Invalidate();
}

void TImage::SetProportional(bool value) {
    FProportional = value;
    Invalidate();
}

void TImage::SetStretch(bool value) {
    FStretch = value;
    Invalidate();
}

void TImage::SetTransparent(bool value) {
    FTransparent = value;
    PictureChanged();
}

void TImage::Paint() {
    const TGraphic* const graphic = FPicture.Graphic();
    if (!graphic || graphic->Empty()) {
        return;
    }
    const TRect place = PictureRect();
    if (kx::Width(place) != graphic->Width() || kx::Height(place) != graphic->Height()) {
        Canvas().StretchDraw(place, *graphic);
    } else {
        Canvas().Draw(place.Left, place.Top, *graphic);
    }
}

/// Where the picture, which is not empty, is painted.
TRect TImage::PictureRect() const {
    int64_t width = FPicture.Width();
    int64_t height = FPicture.Height();
    if (FStretch || (FProportional && (width > Width() || height > Height()))) {
        // Whichever side the control is too short for, beside the other one, gives the scale.
        const bool byWidth = width * Height() > height * Width();
        const int64_t proportionalWidth = byWidth ? Width() : width * Height() / height;
        const int64_t proportionalHeight = byWidth ? height * Width() / width : Height();
        width = FProportional ? proportionalWidth : Width();
        height = FProportional ? proportionalHeight : Height();
    }
    const auto left = static_cast<int>(FCenter ? (Width() - width) / 2 : 0);
    const auto top = static_cast<int>(FCenter ? (Height() - height) / 2 : 0);
    return {left, top, left + static_cast<int>(width), top + static_cast<int>(height)};
}

// --- TPaintBox

const TClass& TPaintBox::StaticClass() {
    static const TClassBuilder<TPaintBox> cls("TPaintBox", TGraphicControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("OnPaint", &TPaintBox::OnPaint, &TPaintBox::SetOnPaint);
    });
    return cls.Class();
}

TPaintBox::TPaintBox(TComponent* owner) : TGraphicControl(owner) { SetBoundsFields(0, 0, 105, 105); }

void TPaintBox::Paint() {
    Canvas().Font().Assign(&Font());
    Canvas().Brush().SetColor(Color());
    FOnPaint(this);
}

} // namespace kx
