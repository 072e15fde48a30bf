// SPDX-License-Identifier: MIT
// Controls: their place, look and parent.

#include "kx/ui/controls/Controls.h"

#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- TControl

const TClass& TControl::StaticClass() {
    static const TClassBuilder<TControl> cls("TControl", TComponent::StaticClass(), [](auto& c) {
        using T = TControl;
        c.Reference("Action", &T::Action, &T::SetAction);
        c.Property("Left", &T::Left, &T::SetLeft).Stored = [](const TObject&) { return true; };
        c.Property("Top", &T::Top, &T::SetTop).Stored = [](const TObject&) { return true; };
        c.Property("Width", &T::Width, &T::SetWidth).Stored = [](const TObject&) { return true; };
        c.Property("Height", &T::Height, &T::SetHeight).Stored = [](const TObject&) { return true; };
        c.Property("Align", &T::Align, &T::SetAlign).Default = alNone;
        c.Property("AlignWithMargins", &T::AlignWithMargins, &T::SetAlignWithMargins).Default = false;
        c.Property("Anchors", &T::Anchors, &T::SetAnchors).Default = TAnchors{akLeft, akTop}.Bits();
        c.SubObject("Constraints", &T::Constraints, &T::SetConstraints);
        c.Property("Cursor", &T::Cursor, &T::SetCursor).Default = crDefault;
        c.Property("DragCursor", &T::DragCursor, &T::SetDragCursor).Default = crDrag;
        c.Property("DragMode", &T::DragMode, &T::SetDragMode).Default = dmManual;
        c.Property("Enabled", static_cast<bool (T::*)() const>(&T::Enabled), &T::SetEnabled).Default = true;
        c.Property("Color", &T::Color, &T::SetColor).Stored = [](const TObject& o) {
            return !static_cast<const T&>(o).ParentColor();
        };
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = true;
        c.SubObject("Font", &T::Font, &T::SetFont).Stored = [](const TObject& o) {
            return !static_cast<const T&>(o).ParentFont();
        };
        c.Property("ParentFont", &T::ParentFont, &T::SetParentFont).Default = true;
        c.Property("BiDiMode", &T::BiDiMode, &T::SetBiDiMode).Stored = [](const TObject& o) {
            return !static_cast<const T&>(o).ParentBiDiMode();
        };
        c.Property("ParentBiDiMode", &T::ParentBiDiMode, &T::SetParentBiDiMode).Default = true;
        c.SubObject("Margins", &T::Margins, &T::SetMargins);
        c.Property("HelpContext", &T::HelpContext, &T::SetHelpContext).Default = 0;
        c.Property("HelpKeyword", &T::HelpKeyword, &T::SetHelpKeyword);
        c.Property("HelpType", &T::HelpType, &T::SetHelpType).Default = htContext;
        c.Property("Hint", &T::Hint, &T::SetHint);
        c.Property("ShowHint", &T::ShowHint, &T::SetShowHint).Stored = [](const TObject& o) {
            return !static_cast<const T&>(o).ParentShowHint();
        };
        c.Property("ParentShowHint", &T::ParentShowHint, &T::SetParentShowHint).Default = true;
        c.Reference("PopupMenu", &T::PopupMenu, &T::SetPopupMenu);
        c.Property("Visible", &T::Visible, &T::SetVisible).Default = true;
        c.Property("OnClick", &T::OnClick, &T::SetOnClick);
        c.Property("OnConstrainedResize", &T::OnConstrainedResize, &T::SetOnConstrainedResize);
        c.Property("OnContextPopup", &T::OnContextPopup, &T::SetOnContextPopup);
        c.Property("OnDblClick", &T::OnDblClick, &T::SetOnDblClick);
        c.Property("OnDragDrop", &T::OnDragDrop, &T::SetOnDragDrop);
        c.Property("OnDragOver", &T::OnDragOver, &T::SetOnDragOver);
        c.Property("OnEndDrag", &T::OnEndDrag, &T::SetOnEndDrag);
        c.Property("OnMouseDown", &T::OnMouseDown, &T::SetOnMouseDown);
        c.Property("OnMouseEnter", &T::OnMouseEnter, &T::SetOnMouseEnter);
        c.Property("OnMouseLeave", &T::OnMouseLeave, &T::SetOnMouseLeave);
        c.Property("OnMouseMove", &T::OnMouseMove, &T::SetOnMouseMove);
        c.Property("OnMouseUp", &T::OnMouseUp, &T::SetOnMouseUp);
        c.Property("OnResize", &T::OnResize, &T::SetOnResize);
        c.Property("OnStartDrag", &T::OnStartDrag, &T::SetOnStartDrag);
    });
    return cls.Class();
}

TControl::TControl(TComponent* owner) : TComponent(owner), FFont(std::make_unique<TFont>()) {
    FFont->SetOnChange([this](TObject*) { OwnFontChanged(); });
}

TControl::~TControl() {
    Destroying();
    TControl::SetParent(nullptr);
    detail::TDragSession::ControlGone(*this);
    if (CaptureControl() == this) {
        CaptureControl() = nullptr;
    }
    ControlHost().ControlGone(*this);
}

void TControl::Notification(TComponent* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == opRemove && component == FPopupMenu) {
        FPopupMenu = nullptr;
    }
}

void TControl::Loaded() {
    TComponent::Loaded();
    ParentSettingsChanged();
    UpdateAnchorBase();
}

// --- Place

void TControl::SetBoundsFields(int left, int top, int width, int height) {
    if (BoundsRect() != TRect{left, top, left + width, top + height}) {
        ContextStale();
    }
    FLeft = left;
    FTop = top;
    FWidth = width;
    FHeight = height;
}

std::optional<TRect> TControl::LimitedBounds(int left, int top, int width, int height) {
    TSizeLimits limits;
    if (!Outlives(*this, [&] { limits = SizeLimits(); })) {
        return std::nullopt;
    }
    limits.Apply(width, height);
    return TRect{left, top, CheckedAdd(left, std::max(width, 0)), CheckedAdd(top, std::max(height, 0))};
}

void TControl::SetBounds(int left, int top, int width, int height) {
    const std::optional<TRect> bounds = LimitedBounds(left, top, width, height);
    if (!bounds || BoundsRect() == *bounds) {
        return;
    }
    const int32_t newWidth = kx::Width(*bounds);
    const int32_t newHeight = kx::Height(*bounds);
    const bool resized = newWidth != FWidth || newHeight != FHeight;
    Invalidate();
    SetBoundsFields(left, top, newWidth, newHeight);
    UpdateAnchorBase();
    Invalidate();
    if (Outlives(*this, [this] { RequestAlign(); }) && resized && !IsLoading()) {
        Resize();
    }
}

void TControl::SetClientSize(int width, int height) {
    const TRect client = ClientRect();
    SetBounds(FLeft, FTop, CheckedAdd(FWidth - client.Right, width), CheckedAdd(FHeight - client.Bottom, height));
}

TPoint TControl::ClientOrigin() const { return ClientToScreen({0, 0}); }

TPoint TControl::ClientToScreen(const TPoint& point) const {
    if (!FParent) {
        throw EInvalidOperation(Format("Control '%s' has no parent window", {Name()}));
    }
    return FParent->ClientToScreen({CheckedAdd(point.X, FLeft), CheckedAdd(point.Y, FTop)});
}

TPoint TControl::ScreenToClient(const TPoint& point) const {
    if (!FParent) {
        throw EInvalidOperation(Format("Control '%s' has no parent window", {Name()}));
    }
    const TPoint inParent = FParent->ScreenToClient(point);
    return {CheckedSub(inParent.X, FLeft), CheckedSub(inParent.Y, FTop)};
}

void TControl::SetAlign(TAlign value) {
    if (FAlign != value) {
        FAlign = value;
        RequestAlign();
    }
}

void TControl::SetAnchors(TAnchors value) {
    FAnchors = value;
    UpdateAnchorBase();
}

void TControl::RequestAlign() {
    if (FParent) {
        FParent->AlignControls();
    }
}

void TControl::UpdateAnchorBase() {
    if (FParent && !FParent->FAligning) {
        FAnchorBase = BoundsRect();
        FAnchorParentSize = {FParent->ClientWidth(), FParent->ClientHeight()};
    }
}

void TControl::AnchoredBounds(const TRect& parentClient) {
    const auto place = [](int& from, int& to, int delta, bool first, bool last) {
        if (first && last) {
            to = std::max(CheckedAdd(to, delta), from);
        } else if (!first) {
            const int shift = last ? delta : delta / 2;
            from = CheckedAdd(from, shift);
            to = CheckedAdd(to, shift);
        }
    };
    TRect r = FAnchorBase;
    place(r.Left, r.Right, parentClient.Right - FAnchorParentSize.X, FAnchors.Contains(akLeft),
          FAnchors.Contains(akRight));
    place(r.Top, r.Bottom, parentClient.Bottom - FAnchorParentSize.Y, FAnchors.Contains(akTop),
          FAnchors.Contains(akBottom));
    if (r != BoundsRect()) {
        SetBoundsRect(r);
    }
}

// --- Family

void TControl::CheckParent(TWinControl* value) const {
    const auto* const windowed = dynamic_cast<const TWinControl*>(this);
    if (value && (value == this || (windowed && windowed->ContainsControl(value)))) {
        throw EInvalidOperation("A control cannot have itself as its parent");
    }
}

void TControl::SetParent(TWinControl* value) {
    if (FParent == value || (value && IsGoing())) {
        return;
    }
    CheckParent(value);
    ContextStale();
    if (TWinControl* const old = FParent) {
        if (TParentForm* const form = ParentFormOf(old)) {
            form->ControlGone(*this);
        }
        old->DetachControl(this);
        FParent = nullptr;
        if (!old->IsDestroying()) {
            const TAlive valueAlive(value);
            // Has the old parent close the gap.
            if (!Outlives(*this, [&] { CallOut([&] { old->AlignControls(); }); }) || FParent ||
                (value && !valueAlive)) {
                return; // the control or its new parent has gone, or a handler has moved the control elsewhere
            }
        }
    }
    FParent = value;
    if (value) {
        value->AttachControl(this);
        if (Outlives(*this, [this] { ParentSettingsChanged(); }) && FParent == value) {
            UpdateAnchorBase();
            if (Outlives(*this, [this] { RequestAlign(); })) {
                Invalidate();
            }
        }
    }
}

TComponent* TControl::GetParentComponent() const { return FParent; }

void TControl::SetParentComponent(TComponent* parent) {
    if (auto* const control = dynamic_cast<TWinControl*>(parent); control && control != FParent) {
        SetParent(control);
    }
}

void TControl::SetZOrder(bool front) {
    if (FParent) {
        auto& siblings = FParent->FControls;
        const auto at = std::find(siblings.begin(), siblings.end(), this);
        siblings.erase(at);
        siblings.insert(front ? siblings.end() : siblings.begin(), this);
        Invalidate();
    }
}

void TControl::ParentSettingsChanged() {
    // Another font may give a control another size, and handlers hear of that.
    const TAlive alive(*this);
    if (FParent && FParentFont) {
        const TFieldScope following(*this, FFollowing, true);
        FFont->Assign(FParent->FFont.get());
    }
    if (alive && FParent && FParentColor && FColor != FParent->Color()) {
        FColor = FParent->Color();
        ColorChanged();
    }
    if (alive && FParent && FParentShowHint && FShowHint != FParent->FShowHint) {
        FShowHint = FParent->FShowHint;
        ShowHintChanged();
    }
    if (alive && FParent && FParentBiDiMode && FBiDiMode != FParent->FBiDiMode) {
        FBiDiMode = FParent->FBiDiMode;
        BiDiModeChanged();
    }
}

// --- Look

void TControl::SetVisible(bool value) {
    if (FVisible != value) {
        FVisible = value;
        VisibleChanged();
    }
}

void TControl::VisibleChanged() {
    if (FParent) {
        const RECT r = ToRECT(BoundsRect());
        FParent->InvalidateShown(&r, true);
    }
    RequestAlign();
}

void TControl::SetEnabled(bool value) {
    if (FEnabled != value) {
        FEnabled = value;
        if (Outlives(*this, [this] { EnabledChanged(); })) {
            TellAccessible(aeStateChange);
        }
    }
}

bool TControl::Showing() const {
    for (const TControl* control = this; control; control = control->FParent) {
        if (!control->FVisible) {
            return false;
        }
    }
    return true;
}

void TControl::SetColor(TColor value) {
    FParentColor = false;
    if (FColor != value) {
        FColor = value;
        ColorChanged();
    }
}

void TControl::SetParentColor(bool value) {
    FParentColor = value;
    ParentSettingsChanged();
}

void TControl::SetParentFont(bool value) {
    FParentFont = value;
    ParentSettingsChanged();
}

void TControl::OwnFontChanged() {
    if (!FFollowing) {
        FParentFont = false;
    }
    FontChanged();
}

void TControl::SetShowHint(bool value) {
    FParentShowHint = false;
    if (FShowHint != value) {
        FShowHint = value;
        ShowHintChanged();
    }
}

void TControl::SetParentShowHint(bool value) {
    FParentShowHint = value;
    ParentSettingsChanged();
}

void TControl::SetBiDiMode(TBiDiMode value) {
    FParentBiDiMode = false;
    if (FBiDiMode != value) {
        FBiDiMode = value;
        BiDiModeChanged();
    }
}

void TControl::SetParentBiDiMode(bool value) {
    FParentBiDiMode = value;
    ParentSettingsChanged();
}

UINT TControl::DrawTextBiDiModeFlags(UINT flags) const {
    return UseRightToLeftReading() ? flags | DT_RTLREADING : flags;
}

TAlignment TControl::BiDiAlignment(TAlignment alignment) const {
    if (!UseRightToLeftAlignment() || alignment == taCenter) {
        return alignment;
    }
    return alignment == taLeftJustify ? taRightJustify : taLeftJustify;
}

const TControl* TControl::NearestHelp() const {
    const TControl* control = this;
    while (control && (control->FHelpType == htContext ? control->FHelpContext == 0 : control->FHelpKeyword.empty())) {
        control = control->FParent;
    }
    return control;
}

int TControl::NearestHelpContext() const {
    const TControl* control = this;
    while (control->FParent && control->FHelpContext == 0) {
        control = control->FParent;
    }
    return control->FHelpContext;
}

void TControl::SetText(const std::string& value) {
    if (FText != value) {
        FText = value;
        if (Outlives(*this, [this] { TextChanged(); })) {
            TellAccessible(aeNameChange);
        }
    }
}

void TControl::SetName(const std::string& value) {
    const bool ownerLoads = dynamic_cast<TControl*>(Owner()) && Owner()->IsLoading();
    const bool follows = FControlStyle.Contains(csSetCaption) && !ownerLoads && !IsLoading() && Text() == Name();
    TComponent::SetName(value);
    if (follows) {
        SetText(value);
    }
}

void TControl::SetCursor(TCursor value) {
    if (FCursor != value) {
        FCursor = value;
        if (Showing()) {
            POINT mouse;
            GetCursorPos(&mouse); // the new pointer shows at once if the mouse is here
            SetCursorPos(mouse.x, mouse.y);
        }
    }
}

void TControl::SetPopupMenu(TPopupMenu* value) {
    if (FPopupMenu) {
        RemoveFreeNotification(FPopupMenu);
    }
    FPopupMenu = value;
    if (value) {
        FreeNotification(value);
    }
}

void TControl::Invalidate() {
    if (FVisible && FParent) {
        const RECT r = ToRECT(BoundsRect());
        FParent->InvalidateShown(&r, !FControlStyle.Contains(csOpaque));
    }
}

void TControl::Update() {
    if (FParent) {
        FParent->Update();
    }
}

void TControl::TextChanged() { Invalidate(); }
void TControl::FontChanged() { Invalidate(); }
void TControl::ColorChanged() { Invalidate(); }

} // namespace kx
