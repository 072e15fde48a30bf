// SPDX-License-Identifier: MIT
// Labels.

#include "kx/ui/controls/Looks.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"

#include <vsstyle.h>

#include <algorithm>
#include <cstdlib>

namespace kx {

// --- TLabel

const TClass& TLabel::StaticClass() {
    static const TClassBuilder<TLabel> cls("TLabel", TGraphicControl::StaticClass(), [](auto& c) {
        using T = TLabel;
        c.Creatable();
        c.Property("Alignment", &T::Alignment, &T::SetAlignment).Default = taLeftJustify;
        c.Property("AutoSize", &T::AutoSize, &T::SetAutoSize).Default = true;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("EllipsisPosition", &T::EllipsisPosition, &T::SetEllipsisPosition).Default = epNone;
        c.Reference("FocusControl", &T::FocusControl, &T::SetFocusControl);
        c.Property("Layout", &T::Layout, &T::SetLayout).Default = tlTop;
        c.Property("ShowAccelChar", &T::ShowAccelChar, &T::SetShowAccelChar).Default = true;
        c.Property("Transparent", &T::Transparent, &T::SetTransparent).Default = false;
        c.Property("WordWrap", &T::WordWrap, &T::SetWordWrap).Default = false;
    });
    return cls.Class();
}

TLabel::TLabel(TComponent* owner) : TGraphicControl(owner) { SetBoundsFields(0, 0, 65, 17); }

void TLabel::Loaded() {
    TGraphicControl::Loaded();
    AdjustBounds();
}

UINT TLabel::TextFormat() const {
    constexpr UINT alignment[] = {DT_LEFT, DT_RIGHT, DT_CENTER};
    return DrawTextBiDiModeFlags(DT_EXPANDTABS | alignment[BiDiAlignment(FAlignment)] |
                                 (FWordWrap ? DT_WORDBREAK : 0u) | (FShowAccelChar ? 0u : DT_NOPREFIX));
}

void TLabel::AdjustBounds() {
    if (!FAutoSize || IsLoading()) {
        return;
    }
    const TWindowDC screen(nullptr);
    TCanvas canvas;
    canvas.SetHandle(screen.Handle());
    canvas.Font().Assign(&Font());
    TRect r{0, 0, FWordWrap ? Width() : 0, 0};
    canvas.DrawText(Text().empty() ? " " : Text(), r, TextFormat() | DT_CALCRECT);
    canvas.SetHandle(nullptr);
    const int width = FWordWrap ? Width() : (Text().empty() ? 0 : r.Right);
    const int left = BiDiAlignment(FAlignment) == taRightJustify ? Left() + Width() - width : Left();
    SetBounds(left, Top(), width, r.Bottom);
}

void TLabel::Paint() {
    TCanvas& canvas = Canvas();
    TRect r{0, 0, Width(), Height()};
    if (!FTransparent && !HasThemedBackground()) {
        canvas.Brush().SetColor(Color());
        canvas.FillRect(r);
    }
    canvas.Brush().SetStyle(bsClear);
    canvas.Font().Assign(&Font());
    if (FLayout != tlTop) {
        TRect text = r;
        canvas.DrawText(Text(), text, TextFormat() | DT_CALCRECT);
        r.Top += (r.Bottom - text.Bottom) / (FLayout == tlCenter ? 2 : 1);
    }
    constexpr UINT ellipses[] = {0, DT_PATH_ELLIPSIS, DT_END_ELLIPSIS, DT_WORD_ELLIPSIS};
    const UINT format = TextFormat() | ellipses[FEllipsisPosition] | HiddenPrefix();
    if (Enabled()) {
        canvas.DrawText(Text(), r, format);
    } else {
        DrawDisabledText(canvas, Text(), r, format, !Theme(TThemeKind::Button) && !HighContrast());
    }
}

void TLabel::TextChanged() {
    TGraphicControl::TextChanged();
    AdjustBounds();
}

void TLabel::FontChanged() {
    TGraphicControl::FontChanged();
    AdjustBounds();
}

void TLabel::SetFocusControl(TWinControl* value) {
    if (FFocusControl) {
        RemoveFreeNotification(FFocusControl);
    }
    FFocusControl = value;
    if (value) {
        FreeNotification(value);
    }
}

bool TLabel::DialogChar(wchar_t letter) {
    if (!FFocusControl || !FShowAccelChar || !IsAccel(letter, Text()) || !FFocusControl->CanFocus()) {
        return false;
    }
    FFocusControl->SetFocus();
    return true;
}

TAccessibleInfo TLabel::AccessibleInfo() const {
    TAccessibleInfo info = TGraphicControl::AccessibleInfo();
    info.Role = arStaticText;
    info.State = asReadOnly;
    info.ShortCut.clear(); // that of the control that it leads to
    if (!FShowAccelChar && !Text().empty()) {
        info.Name = Text();
    }
    return info;
}

void TLabel::Notification(TComponent* component, TOperation operation) {
    TGraphicControl::Notification(component, operation);
    if (operation == opRemove && component == FFocusControl) {
        FFocusControl = nullptr;
    }
}

// --- TGroupBox

const TClass& TGroupBox::StaticClass() {
    static const TClassBuilder<TGroupBox> cls("TGroupBox", TCustomControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Caption", &TGroupBox::Caption, &TGroupBox::SetCaption);
    });
    return cls.Class();
}

TGroupBox::TGroupBox(TComponent* owner) : TCustomControl(owner) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks, csSetCaption});
    SetBoundsFields(0, 0, 185, 105);
}

void TGroupBox::Paint() {
    TCanvas& canvas = Canvas();
    canvas.Font().Assign(&Font());
    const int height = canvas.TextHeight("0");
    const UINT format = DrawTextBiDiModeFlags(DT_SINGLELINE) | HiddenPrefix();
    TRect text{};
    if (!Text().empty()) {
        text = {8, 0, 0, height};
        canvas.DrawText(Text(), text, format | DT_CALCRECT);
        text.Right = std::min(text.Right, Width() - 8);
        if (UseRightToLeftAlignment()) {
            text = {Width() - text.Right, text.Top, Width() - text.Left, text.Bottom};
        }
    }
    const TRect frame{0, height / 2 - 1, Width(), Height()};
    if (const TTheme theme = Theme(TThemeKind::Button)) {
        PaintThemedFrame(theme, frame, text);
    } else {
        RECT edge = ToRECT(frame);
        DrawEdge(canvas.Handle(), &edge, EDGE_ETCHED, BF_RECT);
        canvas.Brush().SetColor(Color());
        if (!Enabled()) {
            canvas.Font().SetColor(clGrayText);
        }
    }
    if (!Text().empty()) {
        canvas.DrawText(Text(), text, format);
    }
}

/// Draws the frame, with a gap for the caption, and prepares the canvas for that.
void TGroupBox::PaintThemedFrame(const TTheme& theme, const TRect& frame, const TRect& caption) {
    const int state = Enabled() ? GBS_NORMAL : GBS_DISABLED;
    TCanvas& canvas = Canvas();
    const HDC dc = canvas.Handle();
    const int saved = SaveDC(dc);
    ExcludeClipRect(dc, caption.Left, caption.Top, caption.Right, caption.Bottom);
    theme.Draw(dc, BP_GROUPBOX, state, frame);
    RestoreDC(dc, saved);
    canvas.Brush().SetStyle(bsClear);
    canvas.Font().SetColor(Enabled() ? ThemedTextColor(Font().Color(), theme, BP_GROUPBOX, state) : clGrayText);
}

TAccessibleInfo TGroupBox::AccessibleInfo() const {
    TAccessibleInfo info = TCustomControl::AccessibleInfo();
    info.Role = arGrouping;
    return info;
}

void TGroupBox::EnabledChanged() {
    TCustomControl::EnabledChanged();
    Invalidate();
}

bool TGroupBox::DialogChar(wchar_t letter) {
    if (IsAccel(letter, Text()) && CanFocus()) {
        SelectNext(nullptr, true, true);
        return true;
    }
    return TCustomControl::DialogChar(letter);
}

void TGroupBox::AdjustClientRect(TRect& rect) const {
    rect = {rect.Left + 2, rect.Top + std::abs(Font().Height()) + 5, rect.Right - 2, rect.Bottom - 2};
}

} // namespace kx
