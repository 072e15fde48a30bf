// SPDX-License-Identifier: MIT
// Buttons that draw themselves.

#include "kx/ui/widgets/Buttons.h"

#include "kx/ui/controls/Looks.h"
#include "kx/win/Windows.h"

#include <vsstyle.h>

#include <algorithm>

namespace kx {

const TClass& TSpeedButton::StaticClass() {
    static const TClassBuilder<TSpeedButton> cls("TSpeedButton", TGraphicControl::StaticClass(), [](auto& c) {
        using T = TSpeedButton;
        c.Creatable();
        c.Property("AllowAllUp", &T::AllowAllUp, &T::SetAllowAllUp).Default = false;
        c.Property("GroupIndex", &T::GroupIndex, &T::SetGroupIndex).Default = 0;
        c.Property("Down", &T::Down, &T::SetDown).Default = false;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("Flat", &T::Flat, &T::SetFlat).Default = false;
        c.SubObject("Glyph", &T::Glyph, &T::SetGlyph);
        c.Property("Layout", &T::Layout, &T::SetLayout).Default = blGlyphLeft;
        c.Property("Margin", &T::Margin, &T::SetMargin).Default = -1;
        c.Property("NumGlyphs", &T::NumGlyphs, &T::SetNumGlyphs).Default = 1;
        c.Property("Spacing", &T::Spacing, &T::SetSpacing).Default = 4;
        c.Property("Transparent", &T::Transparent, &T::SetTransparent).Default = true;
    });
    return cls.Class();
}

TSpeedButton::TSpeedButton(TComponent* owner) : TGraphicControl(owner) {
    SetControlStyle({csCaptureMouse, csDoubleClicks, csSetCaption});
    SetBoundsFields(0, 0, 23, 22);
    FGlyph.SetOnChange([this](TObject*) {
        FPictures.reset();
        Invalidate();
    });
}

void TSpeedButton::Loaded() {
    TGraphicControl::Loaded();
    FDown = FDown && FGroupIndex != 0;
}

// --- Groups

/// Calls `f` with the other buttons of the group.
template <class F> void TSpeedButton::ForGroup(F&& f) {
    for (int i = 0; FGroupIndex != 0 && Parent() && i < Parent()->ControlCount(); ++i) {
        auto* const other = dynamic_cast<TSpeedButton*>(Parent()->Controls(i));
        if (other && other != this && other->FGroupIndex == FGroupIndex) {
            f(*other);
        }
    }
}

void TSpeedButton::SetGroupIndex(int value) {
    FGroupIndex = value;
    if (value == 0 && !IsLoading()) {
        Change(FDown, false);
    }
}

void TSpeedButton::SetAllowAllUp(bool value) {
    FAllowAllUp = value;
    ForGroup([value](TSpeedButton& other) { other.FAllowAllUp = value; });
}

void TSpeedButton::SetDown(bool value) {
    if (IsLoading()) {
        FDown = value; // its group may not be known yet
        return;
    }
    if (FGroupIndex == 0 || (!value && !FAllowAllUp)) {
        return;
    }
    ChangeDown(value);
    if (value) {
        ForGroup([](TSpeedButton& other) { other.ChangeDown(false); });
    }
}

void TSpeedButton::ChangeDown(bool value) {
    if (FDown != value) {
        FDown = value;
        Invalidate();
        TellAccessible(aeStateChange);
    }
}

TAccessibleInfo TSpeedButton::AccessibleInfo() const {
    TAccessibleInfo info = TGraphicControl::AccessibleInfo();
    info.Role = arPushButton;
    info.State = (FDown || FPressed ? asPressed : 0) | (FDown ? asChecked : 0);
    info.Action = "Press";
    return info;
}

// --- Mouse and keyboard

void TSpeedButton::WndProc(TMessage& message) {
    if (message.Msg == WM_CANCELMODE) {
        FHeld = false; // the press has become something else, a drag for instance
        Change(FPressed, false);
    }
    TGraphicControl::WndProc(message);
}

void TSpeedButton::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    if (button == mbLeft) {
        FHeld = true;
        Change(FPressed, true);
    }
    TGraphicControl::MouseDown(button, shift, x, y);
}

void TSpeedButton::MouseMove(TShiftState shift, int x, int y) {
    if (FHeld) {
        const RECT client = ToRECT(ClientRect());
        Change(FPressed, shift.Contains(ssLeft) && PtInRect(&client, {x, y}));
    }
    TGraphicControl::MouseMove(shift, x, y);
}

void TSpeedButton::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    const TAlive alive(*this);
    if (button == mbLeft && std::exchange(FHeld, false)) {
        const RECT client = ToRECT(ClientRect());
        Change(FPressed, false);
        if (PtInRect(&client, {x, y})) {
            Clicked();
        }
    }
    if (alive) {
        TGraphicControl::MouseUp(button, shift, x, y);
    }
}

void TSpeedButton::Clicked() {
    SetDown(!FDown);
    Click();
}

void TSpeedButton::MouseEnter() {
    Change(FHot, true);
    TGraphicControl::MouseEnter();
}

void TSpeedButton::MouseLeave() {
    Change(FHot, false);
    TGraphicControl::MouseLeave();
}

void TSpeedButton::EnabledChanged() {
    FHeld = FPressed = false;
    FHot = FHot && Enabled();
    Invalidate();
}

bool TSpeedButton::DialogChar(wchar_t letter) {
    if (!IsAccel(letter, Caption()) || !Showing()) {
        return false;
    }
    Clicked();
    return true;
}

// --- Painting

TButtonState TSpeedButton::State() const {
    return !Enabled() ? bsDisabled : FPressed ? bsDown : FDown ? bsExclusive : bsUp;
}

void TSpeedButton::Paint() {
    const TButtonState state = State();
    Canvas().Font().Assign(&Font());
    if (FFlat && !FTransparent && !HasThemedBackground()) {
        Canvas().Brush().SetColor(Color());
        Canvas().FillRect(ClientRect());
    }
    const TTheme theme = Theme(FFlat ? TThemeKind::ToolBar : TThemeKind::Button);
    if (theme) {
        PaintThemedFrame(theme, state);
    } else {
        PaintFrame(state);
    }
    const int shift = !theme && (state == bsDown || state == bsExclusive) ? 1 : 0;
    PaintContent(state, shift);
}

/// A flat button is one of a tool bar.
void TSpeedButton::PaintThemedFrame(const TTheme& theme, TButtonState state) {
    int part = BP_PUSHBUTTON;
    int look = state == bsDisabled ? PBS_DISABLED : state != bsUp ? PBS_PRESSED : FHot ? PBS_HOT : PBS_NORMAL;
    if (FFlat) {
        part = TP_BUTTON;
        const int checked = FHot ? TS_HOTCHECKED : TS_CHECKED;
        const int up = FHot || IsDesigning() ? TS_HOT : TS_NORMAL;
        look = state == bsDisabled ? TS_DISABLED : state == bsDown ? TS_PRESSED : state == bsExclusive ? checked : up;
    }
    theme.Draw(Canvas().Handle(), part, look, ClientRect());
    if (state != bsDisabled) {
        Canvas().Font().SetColor(ThemedTextColor(Font().Color(), theme, part, look));
    }
}

void TSpeedButton::PaintFrame(TButtonState state) {
    RECT r = ToRECT(ClientRect());
    const HDC dc = Canvas().Handle();
    const bool down = state == bsDown || state == bsExclusive || (state == bsDisabled && FDown);
    if (!FFlat) {
        DrawFrameControl(dc, &r, DFC_BUTTON, DFCS_BUTTONPUSH | (down ? UINT{DFCS_PUSHED} : 0));
        InflateRect(&r, -2, -2);
    }
    if (state == bsExclusive && !(FFlat && FHot)) {
        InflateRect(&r, -1, -1);
        Canvas().Brush().SetColor(cl3DLight);
        Canvas().FillRect(FromRECT(r));
    }
    if (FFlat && (down || FHot || IsDesigning())) {
        RECT edge = ToRECT(ClientRect());
        DrawEdge(Canvas().Handle(), &edge, down ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    }
}

TPoint TSpeedButton::GlyphSize() const { return {FGlyph.Width() / FNumGlyphs, FGlyph.Height()}; }

/// `shift`: pixels by which the picture and the caption of a button that is down move.
void TSpeedButton::PaintContent(TButtonState state, int shift) {
    const TPoint glyph = GlyphSize();
    TRect text{};
    if (!Caption().empty()) {
        Canvas().DrawText(Caption(), text, DT_CALCRECT | DT_SINGLELINE);
    }
    const bool sideways = FLayout == blGlyphLeft || FLayout == blGlyphRight;
    const int room = sideways ? Width() : Height();
    const int glyphExtent = sideways ? glyph.X : glyph.Y;
    const int textExtent = sideways ? text.Right : text.Bottom;
    const bool both = glyphExtent > 0 && textExtent > 0;
    int spacing = both ? FSpacing : 0;
    int margin = FMargin;
    if (spacing < 0) {
        spacing = margin < 0 ? (room - glyphExtent - textExtent) / 3 : (room - margin - glyphExtent - textExtent) / 2;
    }
    if (margin < 0) {
        margin = (room - glyphExtent - spacing - textExtent) / 2;
    }
    // The places are along the direction of the layout, and counted from the side on which the picture stands.
    int glyphAt = margin;
    int textAt = margin + glyphExtent + spacing;
    if (FLayout == blGlyphRight || FLayout == blGlyphBottom) {
        glyphAt = room - glyphAt - glyphExtent;
        textAt = room - textAt - textExtent;
    }
    const TPoint glyphPos =
        sideways ? TPoint{glyphAt, (Height() - glyph.Y) / 2} : TPoint{(Width() - glyph.X) / 2, glyphAt};
    const TPoint textPos =
        sideways ? TPoint{textAt, (Height() - text.Bottom) / 2} : TPoint{(Width() - text.Right) / 2, textAt};
    PaintGlyph({glyphPos.X + shift, glyphPos.Y + shift}, state);
    PaintCaption(
        {textPos.X + shift, textPos.Y + shift, textPos.X + shift + text.Right, textPos.Y + shift + text.Bottom}, state);
}

void TSpeedButton::SetNumGlyphs(TNumGlyphs value) {
    FPictures.reset();
    Change(FNumGlyphs, std::clamp(value, 1, 4));
}

void TSpeedButton::PaintGlyph(const TPoint& at, TButtonState state) {
    const TPoint size = GlyphSize();
    if (size.X == 0 || size.Y == 0) {
        return;
    }
    if (!FPictures) {
        TBitmap strip;
        strip.Assign(&FGlyph);
        strip.SetSize(size.X * FNumGlyphs, size.Y); // a rest that is no whole picture is left out
        FPictures = std::make_unique<TImageList>(size.X, size.Y);
        FPictures->AddMasked(&strip, FGlyph.TransparentColor());
    }
    const bool has = state < FNumGlyphs;
    FPictures->Draw(Canvas(), at.X, at.Y, has ? state : 0, dsTransparent, itImage, has || state != bsDisabled);
}

void TSpeedButton::PaintCaption(const TRect& rect, TButtonState state) {
    if (Caption().empty()) {
        return;
    }
    const UINT format = DT_SINGLELINE | HiddenPrefix();
    if (state == bsDisabled) {
        const bool engraved = !Theme(TThemeKind::Button) && !HighContrast();
        DrawDisabledText(Canvas(), Caption(), rect, format, engraved);
        return;
    }
    TRect r = rect;
    Canvas().Brush().SetStyle(bsClear);
    Canvas().DrawText(Caption(), r, format);
}

} // namespace kx
