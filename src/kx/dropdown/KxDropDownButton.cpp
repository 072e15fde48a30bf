// SPDX-License-Identifier: MIT
// A button whose arrow opens a menu.

#include "kx/dropdown/KxDropDownButton.h"

#include "kx/dropdown/KxDropDownButtonGlyph.h"
#include "kx/ui/controls/ActnList.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Dpi.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

const TClass& TKxBitBtn::StaticClass() {
    using T = TKxBitBtn;
    static const TClassBuilder<T> cls("TKxBitBtn", TButton::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("Glyph", &T::Glyph, &T::SetGlyph);
        c.Property("Margin", &T::Margin, &T::SetMargin).Default = -1;
        TPropInfo& count = c.Property("NumGlyphs", &T::NumGlyphs, &T::SetNumGlyphs);
        count.Default = 1;
        count.MinValue = 1;
        count.MaxValue = 4;
        c.Property("Style", &T::Style, &T::SetStyle).Default = bsAutoDetect;
        c.Property("Spacing", &T::Spacing, &T::SetSpacing).Default = 4;
        c.Property("CaptionAlignment", &T::CaptionAlignment, &T::SetCaptionAlignment);
        c.Reference("DropDownMenu", &T::DropDownMenu, &T::SetDropDownMenu);
    });
    return cls.Class();
}

TKxBitBtn::TKxBitBtn(TComponent* owner)
    : TButton(owner), FCanvas(std::make_unique<TCanvas>()), FGlyph(std::make_unique<TButtonGlyph>()) {
    FGlyph->SetOnChange([this](TObject*) { Repaint(); });
    TControlStyle style = ControlStyle();
    SetControlStyle(style.Include(csReflector));
    TBitmap arrow;
    arrow.LoadFromResourceName(HInstance(), "DROPDOWNBUTTON");
    FGlyph->SetGlyph(&arrow);
}

TKxBitBtn::~TKxBitBtn() {
    Destroying();
    EndLife();
    ReturnHandlers();
    FGlyph->SetOnChange({});
}

// --- Properties

TBitmap& TKxBitBtn::Glyph() { return FGlyph->Glyph(); }

void TKxBitBtn::SetGlyph(const TBitmap& value) {
    FGlyph->SetGlyph(&value);
    Repaint();
}

int TKxBitBtn::NumGlyphs() const { return FGlyph->NumGlyphs(); }

void TKxBitBtn::SetNumGlyphs(int value) {
    FGlyph->SetNumGlyphs(value);
    Repaint();
}

HPALETTE TKxBitBtn::GetPalette() const { return FGlyph->Glyph().Palette(); }

void TKxBitBtn::ActionChange(TObject* sender, bool checkDefaults) {
    TButton::ActionChange(sender, checkDefaults);
    const auto* const action = dynamic_cast<TCustomAction*>(sender);
    const TImageList* const images = action && action->ActionList() ? action->ActionList()->Images() : nullptr;
    if (!Glyph().Empty() || !images || action->ImageIndex() < 0 || action->ImageIndex() >= images->Count()) {
        return;
    }
    TBitmap& glyph = Glyph();
    glyph.SetSize(images->Width(), images->Height());
    glyph.Canvas().Brush().SetColor(clFuchsia);
    glyph.Canvas().FillRect({0, 0, glyph.Width(), glyph.Height()});
    glyph.SetTransparentColor(clFuchsia);
    images->Draw(glyph.Canvas(), 0, 0, action->ImageIndex());
}

void TKxBitBtn::CreateParams(TCreateParams& params) {
    TButton::CreateParams(params);
    params.Style |= BS_OWNERDRAW;
}

/// The window keeps the style of owner drawing: any other would have the system paint the button.
void TKxBitBtn::SetButtonStyle(bool isDefault) {
    if (isDefault != FIsFocused) {
        FIsFocused = isDefault;
        Refresh();
    }
}

// --- Menu

void TKxBitBtn::SetMenu(TPopupMenu* value) {
    ReturnHandlers();
    if (FMenu) {
        RemoveFreeNotification(FMenu);
    }
    FMenu = value;
    if (FMenu) {
        FreeNotification(FMenu);
        BorrowHandlers();
    }
}

void TKxBitBtn::Notification(TComponent* component, TOperation operation) {
    TButton::Notification(component, operation);
    if (operation == opRemove && component == FMenu) {
        FHandlers.clear(); // the items go too
        FMenu = nullptr;
    }
}

void TKxBitBtn::BorrowHandlers() {
    for (int i = 0; i < FMenu->Items().Count(); ++i) {
        TMenuItem* const item = FMenu->Items()[i];
        const TNotifyEvent own = item->OnClick();
        const TNotifyEvent borrowed = [this, alive = TAlive(*this), own](TObject* sender) {
            // Another button may have borrowed the item after this one, and give it back when this one has gone.
            alive ? DoClickDropDownMenuItem(sender) : own(sender);
        };
        item->SetOnClick(borrowed);
        FHandlers.push_back({item, own, borrowed});
    }
}

void TKxBitBtn::ReturnHandlers() {
    const std::vector<THandler> handlers = std::exchange(FHandlers, {});
    for (int i = 0; FMenu && !FMenu->IsDestroying() && i < FMenu->Items().Count(); ++i) {
        TMenuItem* const item = FMenu->Items()[i];
        const auto found =
            std::find_if(handlers.begin(), handlers.end(), [item](const auto& h) { return h.Item == item; });
        // A handler that the application has set meanwhile stays.
        if (found != handlers.end() && item->OnClick() == found->Borrowed) {
            item->SetOnClick(found->Own);
        }
    }
}

void TKxBitBtn::ShowDropDownMenu() {
    if (FMenu) {
        OpenBelow(*FMenu);
    }
}

/// As the keyboard and screen readers open it: when it has closed, the arrow is up again.
void TKxBitBtn::OpenMenu() {
    if (!FMenu) {
        return;
    }
    FPressingDropDown = true;
    Repaint();
    if (Outlives(*this, [this] { ShowDropDownMenu(); })) {
        FPressingDropDown = false;
        Repaint();
    }
}

void TKxBitBtn::KeyDown(uint16_t& key, TShiftState shift) {
    if (!Outlives(*this, [&] { TButton::KeyDown(key, shift); })) {
        return;
    }
    const bool alt = shift.Contains(ssAlt);
    if ((key == VK_F4 && !alt) || (key == VK_DOWN && alt)) {
        key = 0;
        OpenMenu();
    }
}

void TKxBitBtn::DoClickDropDownMenuItem(TObject* sender) {
    const auto found =
        std::find_if(FHandlers.begin(), FHandlers.end(), [sender](const auto& h) { return h.Item == sender; });
    const TNotifyEvent own = found == FHandlers.end() ? TNotifyEvent() : found->Own;
    ReleaseCapture();
    const TAlive alive(*this);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), WM_LBUTTONUP, 0, 0);
    }
    if (alive) {
        Repaint();
    }
    own(sender);
}

// --- Screen readers

int TKxBitBtn::Split() const { return Width() - FGlyph->Glyph().Width() - 2 * FSpacing; }

TAccessibleInfo TKxBitBtn::AccessibleInfo() const {
    TAccessibleInfo info = TButton::AccessibleInfo();
    info.Role = arSplitButton;
    info.State = FMenu ? asHasPopup : 0;
    info.Action = "Press";
    return info;
}

TAccessibleInfo TKxBitBtn::AccessiblePart(int) const {
    TAccessibleInfo info;
    info.Role = arMenuButton;
    info.State = asHasPopup | (FPressingDropDown ? asPressed : 0);
    info.Name = TButton::AccessibleInfo().Name;
    info.ShortCut = "Alt+Down";
    info.Action = "Open";
    return info;
}

TRect TKxBitBtn::AccessiblePartRect(int) const { return {Split() + 1, 0, Width(), Height()}; }

int TKxBitBtn::AccessiblePartAt(const TPoint& point) const { return FMenu && point.X > Split() ? 0 : -1; }

// --- Messages

void TKxBitBtn::WndProc(TMessage& message) {
    switch (message.Msg) {
    case CN_MEASUREITEM: {
        auto& item = message.LParamAs<MEASUREITEMSTRUCT>();
        item.itemWidth = static_cast<UINT>(Width());
        item.itemHeight = static_cast<UINT>(Height());
        return;
    }
    case CN_DRAWITEM: DrawItem(message.LParamAs<DRAWITEMSTRUCT>()); return;
    case WM_LBUTTONDOWN: WMLButtonClk(message); return;
    case WM_LBUTTONDBLCLK: // counts as two presses
        message.Result = Perform(WM_LBUTTONDOWN, message.WParam, message.LParam);
        return;
    case WM_KILLFOCUS: WMKillFocus(message); return;
    case WM_LBUTTONUP: {
        if (Outlives(*this, [&] { TButton::WndProc(message); })) {
            Repaint();
        }
        return;
    }
    default: TButton::WndProc(message);
    }
}

void TKxBitBtn::WMLButtonClk(TMessage& message) {
    const TAlive alive(*this);
    const bool onArrow = message.Pos().X > Split();
    if (onArrow && FPressingDropDown) {
        // Deliberate: the arrow stays pressed when its menu has closed, and this press opens no menu, where one would
        // expect the arrow to be up again. A press on the body or the loss of the focus lets it up as well.
        ReleaseCapture();
        FPressingDropDown = false;
        Repaint();
        return;
    }
    if (onArrow) {
        FPressingDropDown = true;
        Repaint();
        ShowDropDownMenu();
        if (!alive) {
            return;
        }
    }
    TButton::WndProc(message);
    if (!alive) {
        return;
    }
    if (!onArrow) {
        FPressingDropDown = false;
    } else if (!FMenu || GetKeyState(VK_LBUTTON) >= 0) {
        // Without a menu the press only changes the looks: wherever the mouse goes up, there is no click. With a menu,
        // the menu has seen the mouse go up, and nothing else would end the press.
        ReleaseCapture();
    }
    if (alive) {
        Repaint();
    }
}

void TKxBitBtn::WMKillFocus(TMessage& message) {
    if (Outlives(*this, [&] { TButton::WndProc(message); })) {
        FPressingDropDown = false;
        Repaint();
    }
}

void TKxBitBtn::FontChanged() {
    TButton::FontChanged();
    Repaint();
}

/// The pictures of the states were made with the system's colours, which may have changed.
void TKxBitBtn::ColorChanged() {
    FGlyph->Invalidate();
    TButton::ColorChanged();
}

void TKxBitBtn::EnabledChanged() {
    TButton::EnabledChanged();
    Repaint();
}

void TKxBitBtn::ChangeScale(int to, int from) {
    FMargin = FMargin == -1 ? -1 : ScaleValue(FMargin, to, from);
    FSpacing = ScaleValue(FSpacing, to, from);
    const int count = NumGlyphs();
    TBitmap& strip = Glyph();
    strip.Stretch(ScaleValue(strip.Width() / count, to, from) * count, ScaleValue(strip.Height(), to, from));
    TButton::ChangeScale(to, from);
}

void TKxBitBtn::MouseLeave() {
    if (Outlives(*this, [this] { TButton::MouseLeave(); })) {
        Repaint();
    }
}

void TKxBitBtn::Click() {
    TCustomForm* const form = FKind == bkClose ? GetParentForm(this) : nullptr;
    const int helpContext = FKind == bkHelp ? NearestHelpContext() : 0;
    if (form) {
        form->Close();
    } else if (helpContext != 0) {
        Application().HelpContext(helpContext);
    } else {
        TButton::Click();
    }
}

// --- Painting

namespace {

TRect Inside(const TRect& rect, int by) { return {rect.Left + by, rect.Top + by, rect.Right - by, rect.Bottom - by}; }

/// Draws on a context of the system for the length of a scope.
class TDrawOn {
public:
    TDrawOn(TCanvas& canvas, HDC dc) : FCanvas(canvas) { FCanvas.SetHandle(dc); }
    TDrawOn(const TDrawOn&) = delete;
    TDrawOn& operator=(const TDrawOn&) = delete;
    ~TDrawOn() { FCanvas.SetHandle(nullptr); }

private:
    TCanvas& FCanvas;
};

} // namespace

/// Draws the raised frame, and the pressed part flat. `face` is what lies inside the frame.
///
/// Departure: only the pressed part of a pressed button would have to be drawn. The other part would then show what was
/// painted before, or nothing when the system has erased it. With the frame below, it shows the same in both cases.
void TKxBitBtn::DrawFrame(TRect& face, bool isDown, bool isDisabled) {
    RECT frame = ToRECT(face);
    DrawFrameControl(FCanvas->Handle(), &frame, DFC_BUTTON,
                     DFCS_BUTTONPUSH | DFCS_ADJUSTRECT | (isDisabled ? UINT{DFCS_INACTIVE} : 0u));
    if (!isDown && !FPressingDropDown) {
        face = FromRECT(frame);
        return;
    }
    const int arrow = Glyph().Width() + FSpacing;
    if (isDown) {
        face.Right -= arrow;
    } else {
        face.Left = face.Right - arrow;
    }
    FCanvas->Pen().SetColor(clBtnShadow);
    FCanvas->Pen().SetWidth(1);
    FCanvas->Brush().SetColor(clBtnFace);
    FCanvas->Rectangle(face);
}

/// Deliberate: in the same way whatever the theme, where one would expect a themed button.
void TKxBitBtn::DrawItem(const DRAWITEMSTRUCT& item) {
    const TDrawOn drawing(*FCanvas, item.hDC);
    const bool isDown = (item.itemState & ODS_SELECTED) != 0;
    const bool isDefault = (item.itemState & ODS_FOCUS) != 0;
    const TButtonState state = !Enabled() ? bsDisabled : isDown ? bsDown : bsUp;
    TRect face = ClientRect();
    if (FIsFocused || isDefault) {
        FCanvas->Pen().SetColor(clWindowFrame);
        FCanvas->Pen().SetWidth(1);
        FCanvas->Brush().SetStyle(bsClear);
        FCanvas->Rectangle(face);
        face = Inside(face, 1);
    }
    DrawFrame(face, isDown, (item.itemState & ODS_DISABLED) != 0);
    if (FIsFocused || isDown || FPressingDropDown) {
        // Departure: this is done for every button, not for a focused one alone. The menu opens before the button gets
        // the focus; in a layout for the pressed part, the caption would be drawn over the arrow.
        face = Inside(ClientRect(), 1);
    }
    FCanvas->SetFont(Font());
    if (isDown) {
        face = {face.Left + 1, face.Top + 1, face.Right + 1, face.Bottom + 1};
    }
    TButtonPlan plan;
    plan.Client = face;
    plan.Caption = Caption();
    plan.Margin = FMargin;
    plan.Spacing = FSpacing;
    plan.BiDiFlags = DrawTextBiDiModeFlags(0);
    plan.Pressing = isDown;
    plan.PressingDropDown = FPressingDropDown;
    FGlyph->Draw(*FCanvas, plan, state, false);
    if (FIsFocused && isDefault) {
        TRect focus = Inside(ClientRect(), 4);
        focus.Right = Split() - 1;
        FCanvas->Pen().SetColor(clWindowFrame);
        FCanvas->Brush().SetColor(clBtnFace);
        FCanvas->DrawFocusRect(focus);
    }
}

} // namespace kx
