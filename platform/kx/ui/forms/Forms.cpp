// SPDX-License-Identifier: MIT
// Forms: from their making to their end.

#include "kx/ui/forms/Forms.h"

#include "kx/core/GlobalReferences.h"
#include "kx/ui/controls/Menus.h"
#include "kx/win/Dpi.h"

#include <algorithm>

namespace kx {

const TClass& TCustomForm::StaticClass() {
    static const TClassBuilder<TCustomForm> cls("TCustomForm", TScrollingWinControl::StaticClass(), [](auto& c) {
        using T = TCustomForm;
        const auto always = [](const TObject&) { return true; };
        const auto outer = [](const TObject& o) { return static_cast<const T&>(o).StoresOuterSize(); };
        const auto inner = [](const TObject& o) { return !static_cast<const T&>(o).StoresOuterSize(); };
        c.Property("Width", &T::Width, &T::SetWidth).Stored = outer;
        c.Property("Height", &T::Height, &T::SetHeight).Stored = outer;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("ParentFont", &T::ParentFont, &T::SetParentFont).Default = false;
        c.Property("Visible", &T::Visible, &T::SetVisible).Default = false;
        c.Reference("ActiveControl", &T::ActiveControl, &T::SetActiveControl);
        c.Property("BorderIcons", &T::BorderIcons, &T::SetBorderIcons).Default =
            TBorderIcons{biSystemMenu, biMinimize, biMaximize}.Bits();
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSizeable;
        c.Property("AlphaBlend", &T::AlphaBlend, &T::SetAlphaBlend).Default = false;
        c.Property("AlphaBlendValue", &T::AlphaBlendValue, &T::SetAlphaBlendValue).Default = 255;
        c.Property("BorderWidth", &T::BorderWidth, &T::SetBorderWidth).Default = 0;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("ClientHeight", &T::ClientHeight, &T::SetClientHeight).Stored = inner;
        c.Property("ClientWidth", &T::ClientWidth, &T::SetClientWidth).Stored = inner;
        c.Property("DefaultMonitor", &T::DefaultMonitor, &T::SetDefaultMonitor).Default = dmActiveForm;
        c.Property("FormStyle", &T::FormStyle, &T::SetFormStyle).Default = fsNormal;
        c.SubObject("Icon", &T::Icon, &T::SetIcon);
        c.Property("KeyPreview", &T::KeyPreview, &T::SetKeyPreview).Default = false;
        c.Reference("Menu", &T::Menu, &T::SetMenu);
        c.Property("PixelsPerInch", &T::PixelsPerInch, &T::SetPixelsPerInch).Stored = always;
        c.Property("Position", &T::Position, &T::SetPosition).Default = poDesigned;
        c.Property("Scaled", &T::Scaled, &T::SetScaled).Default = true;
        c.Property("ScreenSnap", &T::ScreenSnap, &T::SetScreenSnap).Default = false;
        c.Property("SnapBuffer", &T::SnapBuffer, &T::SetSnapBuffer).Default = 10;
        c.Property("WindowState", &T::WindowState, &T::SetWindowState).Default = wsNormal;
        c.Property("OnActivate", &T::OnActivate, &T::SetOnActivate);
        c.Property("OnClose", &T::OnClose, &T::SetOnClose);
        c.Property("OnCloseQuery", &T::OnCloseQuery, &T::SetOnCloseQuery);
        c.Property("OnCreate", &T::OnCreate, &T::SetOnCreate);
        c.Property("OnDeactivate", &T::OnDeactivate, &T::SetOnDeactivate);
        c.Property("OnDestroy", &T::OnDestroy, &T::SetOnDestroy);
        c.Property("OnHide", &T::OnHide, &T::SetOnHide);
        c.Property("OnPaint", &T::OnPaint, &T::SetOnPaint);
        c.Property("OnShortCut", &T::OnShortCut, &T::SetOnShortCut);
        c.Property("OnShow", &T::OnShow, &T::SetOnShow);
    });
    return cls.Class();
}

const TClass& TForm::StaticClass() {
    static const TClassBuilder<TForm> cls("TForm", TCustomForm::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TForm::TForm(TComponent* owner) : TCustomForm(owner) {}

TCustomForm::TCustomForm(TComponent* owner) : TParentForm(owner), FPixelsPerInch(SystemDpi()) {
    Application(); // start-up is done before the first form
    FVisible = false;
    FParentColor = false;
    FParentFont = false;
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks, csSetCaption});
    SetBoundsFields(0, 0, 320, 240);
    FBiDiMode = Application().BiDiMode();
    FIcon.SetOnChange([this](TObject*) { ApplyIcon(); });
    FOnScreen = Application().InOwnThread();
    if (FOnScreen) {
        Screen().FForms.push_back(this);
    }
}

TCustomForm::~TCustomForm() {
    Destroying();
    RunDestroyHandler(false);
    WakeModalLoop();
    DestroyHandle();
    if (FOnScreen) {
        std::erase(Screen().FForms, this);
    }
    if (Screen().FActiveForm == this) {
        Screen().FActiveForm = nullptr;
    }
    if (FMenu) {
        SetMenu(nullptr);
    }
    FIcon.SetOnChange(nullptr);
}

// --- Life

void TCustomForm::AfterConstruction() {
    if (FCreated || IsLoading() || IsDestroying()) {
        return;
    }
    detail::CheckFormFileRead(ClassType(), FFileClass);
    FCreated = true;
    if (!Outlives(*this, [this] { Guarded([this] { ScaleFileSizes(); }); })) {
        return;
    }
    // A form that has no file may be what references of others wait for.
    if (Outlives(*this,
                 [this] {
                     GlobalFixupReferences();
                     Guarded([this] { DoCreate(); });
                 }) &&
        FVisibleWanted) {
        SetVisible(true);
    }
}

void TCustomForm::BeforeDestruction() {
    RunDestroyHandler(true);
    TParentForm::BeforeDestruction();
}

void TCustomForm::RunDestroyHandler(bool complete) {
    if (std::exchange(FDestroyed, true)) {
        return;
    }
    const TEventTargetPtr target = FOnDestroy.Target();
    if (complete || !target || target->Receiver() != this) {
        Guarded([this] { DoDestroy(); });
    }
}

void TCustomForm::Release() { Application().ReleaseLater(*this); }

void TCustomForm::Notification(TComponent* component, TOperation operation) {
    TParentForm::Notification(component, operation);
    if (operation == opRemove && component == FMenu) {
        FMenu = nullptr;
        ApplyMenu();
    }
}

void TCustomForm::GetChildren(const TGetChildProc& proc, TComponent* root) {
    TParentForm::GetChildren(proc, root);
    if (root == this) {
        for (int i = 0; i < ComponentCount(); ++i) {
            if (!Components(i)->HasParent()) {
                proc(Components(i));
            }
        }
    }
}

void TCustomForm::Loaded() {
    // The client size in the form file goes with the frame in the form file.
    if (FWantedClientWidth >= 0 || FWantedClientHeight >= 0) {
        const TRect client = ClientRect();
        const int width = FWantedClientWidth >= 0 ? FWantedClientWidth : client.Right;
        const int height = FWantedClientHeight >= 0 ? FWantedClientHeight : client.Bottom;
        FWantedClientWidth = -1;
        FWantedClientHeight = -1;
        if (!Outlives(*this, [&] { SetClientSize(width, height); })) {
            return;
        }
    }
    if (!Outlives(*this, [this] { TParentForm::Loaded(); })) {
        return;
    }
    if (ParentBiDiMode() && UseRightToLeftAlignment() && !IsDesigning() && !std::exchange(FFlipped, true) &&
        !Outlives(*this, [this] { FlipChildren(true); })) {
        return;
    }
    if (!FCreated) {
        return;
    }
    if (Outlives(*this, [this] { ScaleFileSizes(); }) && FVisibleWanted) {
        SetVisible(true);
    }
}

void TCustomForm::FollowApplication() {
    if (ParentBiDiMode() && !Parent() && BiDiMode() != Application().BiDiMode()) {
        FBiDiMode = Application().BiDiMode();
        BiDiModeChanged();
    }
}

TAccessibleInfo TCustomForm::AccessibleInfo() const {
    TAccessibleInfo info = TParentForm::AccessibleInfo();
    info.Role = IsDocked() ? arPane : arClient;
    return info;
}

// --- Closing

void TCustomForm::Close() {
    if (FModal) {
        FModalResult = mrCancel;
        return;
    }
    bool canClose = false;
    if (!Outlives(*this, [&] { canClose = CloseQuery(); }) || !canClose) {
        return;
    }
    TCloseAction action = caHide;
    if (!Outlives(*this, [&] { DoClose(action); }) || action == caNone) {
        return;
    }
    if (Application().MainForm() == this) {
        Application().Terminate();
    } else if (action == caHide) {
        Hide();
    } else if (action == caMinimize) {
        SetWindowState(wsMinimized);
    } else {
        Release();
    }
}

bool TCustomForm::CloseQuery() {
    bool canClose = true;
    FOnCloseQuery(this, canClose);
    return canClose;
}

/// The user logs off. A form that was closed and hidden has been asked already; if it refused, the user could not see
/// which form wants to stay.
bool TCustomForm::SessionMayEnd() { return (!Visible() && Application().MainForm() != this) || CloseQuery(); }

void TCustomForm::DoClose(TCloseAction& action) { FOnClose(this, action); }
void TCustomForm::DoCreate() { FOnCreate(this); }
void TCustomForm::DoDestroy() { FOnDestroy(this); }
void TCustomForm::DoShow() { FOnShow(this); }
void TCustomForm::DoHide() { FOnHide(this); }
void TCustomForm::Activate() { FOnActivate(this); }
void TCustomForm::Deactivate() { FOnDeactivate(this); }

// --- Settings

void TCustomForm::SetBorderStyle(TFormBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        UpdateWindowStyle();
    }
}

void TCustomForm::SetBorderIcons(TBorderIcons value) {
    if (FBorderIcons != value) {
        FBorderIcons = value;
        UpdateWindowStyle();
    }
}

void TCustomForm::SetFormStyle(TFormStyle value) {
    if (FFormStyle != value) {
        FFormStyle = value;
        UpdateWindowStyle();
    }
}

void TCustomForm::SetAlphaBlend(bool value) {
    if (FAlphaBlend != value) {
        FAlphaBlend = value;
        ApplyAlpha();
    }
}

void TCustomForm::SetAlphaBlendValue(uint8_t value) {
    if (FAlphaBlendValue != value) {
        FAlphaBlendValue = value;
        ApplyAlpha();
    }
}

void TCustomForm::SetWindowState(TWindowState value) {
    if (FWindowState != value) {
        FWindowState = value;
        if (HandleAllocated() && Visible() && !IsDocked()) {
            ShowWindowNow();
        }
    }
}

void TCustomForm::SetIcon(const TIcon& value) { FIcon.Assign(&value); }

void TCustomForm::SetMenu(TMainMenu* value) {
    if (FMenu == value) {
        return;
    }
    if (FMenu) {
        RemoveFreeNotification(FMenu);
        FMenu->SetWindowHandle(nullptr);
    }
    FMenu = value;
    if (value) {
        FreeNotification(value);
    }
    ApplyMenu();
}

void TCustomForm::SetClientWidth(int value) {
    if (IsLoading()) {
        FWantedClientWidth = value;
    } else {
        TParentForm::SetClientWidth(value);
    }
}

void TCustomForm::SetClientHeight(int value) {
    if (IsLoading()) {
        FWantedClientHeight = value;
    } else {
        TParentForm::SetClientHeight(value);
    }
}

TCustomForm* GetParentForm(const TControl* control) { return dynamic_cast<TCustomForm*>(ParentFormOf(control)); }

} // namespace kx
