// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Barrier.h"
#include "kx/core/SystemNames.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/ui/forms/FormsApplication.h"
#include "kx/ui/forms/FormsLoad.h"
#include "kx/ui/forms/FormsScreen.h"
#include "kx/ui/forms/FormsTypes.h"

#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kx {

class TMainMenu;

/// What every form can do. A form is a top-level window, or, with a `ParentWindow`, part of a foreign window: it is
/// turned into a child of that window in place, and back into a top-level form by `SetParentWindow(nullptr)`, with its
/// size and all that is in it. When the foreign window is destroyed, the form only loses its window.
///
/// Form files. The constructor of each form class calls `InitForm(*this, TMyForm::StaticClass())` first, which reads
/// the form file that is embedded under the class's name over the instance; KX_FIELDS names the components in it that
/// the class's code uses. An inherited form's file is read over what its ancestor's brought. Its sizes are in pixels of
/// `PixelsPerInch`. When the form is complete, just before OnCreate, a `Scaled` one is taken to the resolution of the
/// screen, with all that is on it and the lists of images that it owns; constructors still see the sizes of the file.
/// It follows when it comes to a screen of another resolution.
///
/// OnCreate runs when the form is complete: `Application().CreateForm` and `NewForm` see to that. A form that was made
/// in another way runs it at the latest before its window is made. OnDestroy runs when the form is freed by `Free` or
/// by its owner. A form that goes in another way (a local variable) runs it from its base class's destructor, when
/// handlers that are methods of the form cannot be called any more and are left out.
class TCustomForm : public TParentForm {
    KX_CLASS()

    explicit TCustomForm(TComponent* owner = nullptr);
    ~TCustomForm() override;

    /// Fires OnCreate, once. @throws EInvalidOperation when the program has a form file that has not been read over it.
    void AfterConstruction();
    void BeforeDestruction() override;

    // --- Showing and closing

    void Show(); ///< Shows the form and brings it to the front.
    /// Shows the form, disables all other windows of the thread, and returns how it was closed.
    /// @throws EInvalidOperation "Cannot make a visible window modal"
    TModalResult ShowModal();
    TModalResult ModalResult() const { return FModalResult; }
    void SetModalResult(TModalResult value) { FModalResult = value; }
    bool IsModal() const { return FModal; }
    void Close(); ///< Asks OnCloseQuery, then does what OnClose says: hide, unless told otherwise.
    /// False: the form wants to stay. Also asked when the user logs off or shuts the system down, of each form that is
    /// shown, modal or not, and of the main form; then false keeps the session. A docked form is not asked. When the
    /// session does end, no form is closed: the application ends as by `Terminate`, as far as the system lets it.
    virtual bool CloseQuery();
    /// Frees the form when the message that is being handled is done, even if its handler shows dialogs meanwhile.
    void Release();

    // --- Settings

    TFormBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TFormBorderStyle value);
    TBorderIcons BorderIcons() const { return FBorderIcons; }
    void SetBorderIcons(TBorderIcons value);
    TPosition Position() const { return FPosition; }
    void SetPosition(TPosition value) { FPosition = value; }
    TDefaultMonitor DefaultMonitor() const { return FDefaultMonitor; }
    void SetDefaultMonitor(TDefaultMonitor value) { FDefaultMonitor = value; }
    /// While the user moves the form, it sticks to the edges of the monitor's free area within SnapBuffer pixels.
    bool ScreenSnap() const { return FScreenSnap; }
    void SetScreenSnap(bool value) { FScreenSnap = value; }
    int SnapBuffer() const { return FSnapBuffer; }
    void SetSnapBuffer(int value) { FSnapBuffer = value; }
    /// Pixels between the frame and the client area, in the form's colour; 0 to 32767.
    int BorderWidth() const { return FBorderWidth; }
    void SetBorderWidth(int value);
    /// State of a form that is not docked. A docked form has its ordinary size; its state comes back when it is a
    /// window of its own again and is shown.
    TWindowState WindowState() const { return FWindowState; }
    void SetWindowState(TWindowState value);
    /// Its bounds. While it is an icon or fills the screen: those that it will have again.
    TRect NormalBounds() const;
    TFormStyle FormStyle() const { return FFormStyle; }
    void SetFormStyle(TFormStyle value);
    /// The form lets what is behind it show through, the more the smaller its AlphaBlendValue is; 255 hides that.
    bool AlphaBlend() const { return FAlphaBlend; }
    void SetAlphaBlend(bool value);
    uint8_t AlphaBlendValue() const { return FAlphaBlendValue; }
    void SetAlphaBlendValue(uint8_t value);
    bool KeyPreview() const override { return FKeyPreview; }
    void SetKeyPreview(bool value) { FKeyPreview = value; }
    TIcon& Icon() { return FIcon; }
    const TIcon& Icon() const { return FIcon; }
    void SetIcon(const TIcon& value);
    TMainMenu* Menu() const { return FMenu; } ///< Not owned.
    void SetMenu(TMainMenu* value);
    bool Scaled() const { return FScaled; } ///< The form takes the resolution of its screen.
    void SetScaled(bool value) { FScaled = value; }
    /// Dots per inch that the form's sizes are for: of the form file at first, then of the screen.
    int PixelsPerInch() const { return FPixelsPerInch; }
    void SetPixelsPerInch(int value) { FPixelsPerInch = value; }
    /// False while the sizes are still those of the form file.
    bool HasFinalSizes() const { return !FHasFileSizes; }
    TCanvas& Canvas();

    /// The control that has, or will get, the focus in this form; null: the first in tab order.
    TWinControl* ActiveControl() const { return FActiveControl; }
    /// @throws EInvalidOperation "Cannot focus a disabled or invisible window" for a control that is not on the form.
    void SetActiveControl(TWinControl* value);
    bool Active() const; ///< Its window, or the one it is docked in, is the active one.

    /// Offers a letter that was pressed with Alt to the controls, as their accelerator. True: one has taken it.
    bool TakeAccelerator(wchar_t letter) { return Showing() && Enabled() && DialogChar(letter); }

    TAccessibleInfo AccessibleInfo() const override;
    void SetParentWindow(HWND value) override;
    void SetVisible(bool value) override;
    void SetFocus() override;
    void SetClientWidth(int value) override;
    void SetClientHeight(int value) override;
    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;
    void GetChildren(const TGetChildProc& proc, TComponent* root) override;
    void ReadState(TReader& reader) override;
    void Loaded() override;

    const TNotifyEvent& OnCreate() const { return FOnCreate; }
    void SetOnCreate(TNotifyEvent value) { FOnCreate = std::move(value); }
    const TNotifyEvent& OnDestroy() const { return FOnDestroy; }
    void SetOnDestroy(TNotifyEvent value) { FOnDestroy = std::move(value); }
    const TNotifyEvent& OnShow() const { return FOnShow; }
    void SetOnShow(TNotifyEvent value) { FOnShow = std::move(value); }
    const TNotifyEvent& OnHide() const { return FOnHide; }
    void SetOnHide(TNotifyEvent value) { FOnHide = std::move(value); }
    const TNotifyEvent& OnActivate() const { return FOnActivate; }
    void SetOnActivate(TNotifyEvent value) { FOnActivate = std::move(value); }
    const TNotifyEvent& OnDeactivate() const { return FOnDeactivate; }
    void SetOnDeactivate(TNotifyEvent value) { FOnDeactivate = std::move(value); }
    const TNotifyEvent& OnPaint() const { return FOnPaint; }
    void SetOnPaint(TNotifyEvent value) { FOnPaint = std::move(value); }
    /// A key goes down in the form, before its menu and its controls are asked. A handler that sets `handled` has used
    /// it up.
    const TShortCutEvent& OnShortCut() const { return FOnShortCut; }
    void SetOnShortCut(TShortCutEvent value) { FOnShortCut = std::move(value); }
    const TCloseEvent& OnClose() const { return FOnClose; }
    void SetOnClose(TCloseEvent value) { FOnClose = std::move(value); }
    const TCloseQueryEvent& OnCloseQuery() const { return FOnCloseQuery; }
    void SetOnCloseQuery(TCloseQueryEvent value) { FOnCloseQuery = std::move(value); }

protected:
    friend class TApplication;
    friend class TScreen;

    void CreateHandle() override;
    void CreateWnd() override;
    void SaveWindowState() override;
    bool DialogKey(uint16_t key, TShiftState shift) override;
    void ContextStale() override;
    void PaintWindow(HDC dc) override;
    TPoint FrameExtent() const override;
    void ChangeScale(int to, int from) override;
    void ScaleBounds(int to, int from) override;
    void ColorChanged() override;
    bool SizesItself(bool horizontal) const override;
    void WindowLost() override;
    void VisibleChanged() override;
    void Notification(TComponent* component, TOperation operation) override;

    void FocusControl(TWinControl& control) override;
    void ControlFocused(TWinControl& control) override;
    void FocusLost(TWinControl& control, HWND to) override;
    void FocusLeaves(TWinControl& control) override;
    void ControlGone(const TControl& control) override;
    bool PreTranslateFor(TWinControl& control, MSG& message) override;

    virtual void DoCreate();
    virtual void DoDestroy();
    virtual void DoShow();
    virtual void DoHide();
    virtual void DoClose(TCloseAction& action);
    virtual void Activate();
    virtual void Deactivate();
    virtual void Paint();

private:
    struct TStyles;
    void UpdateWindowStyle(); ///< Brings the existing window in line with border, icons and parent window.
    void EnterParent(HWND parent, const TStyles& styles);
    void LeaveParent(HWND owner, const TStyles& styles);
    bool StoresOuterSize() const;
    void PlaceFirst();
    void CenterIn(const TRect& area);
    TRect DefaultMonitorBounds() const;
    void Snap(WINDOWPOS& to) const;
    void ExcludeBorder(RECT& client) const;
    void PaintBorder();
    HWND OwnerWindow() const;
    void ShowWindowNow();
    int ShowCommand(TWindowState state) const;
    void CloseModal();
    bool SessionMayEnd();
    void WakeModalLoop() const;
    void Activated(bool active);
    bool ShowHelp(TMessage& message);
    bool Leave(TWinControl* old, TWinControl* next);
    void ExitFocused();       ///< Fires OnExit of the control that was entered last.
    void FollowApplication(); ///< Takes over its reading order, unless the form has one of its own.
    void LeaveToHost();       ///< The focus goes to the next control of the dialog that the form is docked in.
    void FocusInside();       ///< Gives the focus to the active control, or to the first one.
    void RunDestroyHandler(bool complete);
    void ScaleFileSizes();      ///< From those of the form file to the screen's.
    void FollowScreen(int dpi); ///< To those of the screen that the window is on.
    void ScreenChanged(TMessage& message);
    static bool Focused(const TCustomForm& form);
    void ApplyAlpha();
    void ApplyIcon();
    void ApplyMenu();
    void ShowCuesFor(TWinControl& control, const MSG& message);
    bool ForwardToHost(MSG& message);

    TFormBorderStyle FBorderStyle = bsSizeable;
    TBorderIcons FBorderIcons{biSystemMenu, biMinimize, biMaximize};
    TPosition FPosition = poDesigned;
    TDefaultMonitor FDefaultMonitor = dmActiveForm;
    TWindowState FWindowState = wsNormal;
    TFormStyle FFormStyle = fsNormal;
    TModalResult FModalResult = mrNone;
    TWinControl* FActiveControl = nullptr;
    TWinControl* FFocusedControl = nullptr; ///< Whose OnEnter ran last.
    TMainMenu* FMenu = nullptr;
    TIcon FIcon;
    std::unique_ptr<TCanvas> FCanvas;
    int FPixelsPerInch;
    int FBorderWidth = 0;
    int FSnapBuffer = 10;
    bool FScreenSnap = false;
    bool FDragged = false; ///< The user moves the form.
    bool FScaled = true;
    bool FFlipped = false; ///< The controls of the form file have been reversed from left to right.
    bool FHasFileSizes = false;
    bool FKeepsBounds = false; ///< While it is scaled.
    bool FKeyPreview = false;
    bool FAlphaBlend = false;
    uint8_t FAlphaBlendValue = 255;
    bool FModal = false;
    const TClass* FFileClass = nullptr; ///< The one that a form file has been read for; null: none.
    bool FCreated = false;              ///< OnCreate has run.
    bool FDestroyed = false;            ///< OnDestroy has run.
    bool FPlaced = false;               ///< `Position` has been applied.
    bool FPlacing = false;              ///< The first window is being made.
    bool FArranged = true;              ///< The windows inside have the Z order that they are to have.
    bool FIsActive = false;
    bool FVisibleWanted = false; ///< `Visible` of the form file, until the form is complete.
    bool FShowing = false;       ///< OnShow runs.
    bool FOnScreen = false;      ///< Screen lists it.
    int FWantedClientWidth = -1; ///< Of the form file, until its frame is known.
    int FWantedClientHeight = -1;

    TNotifyEvent FOnCreate;
    TNotifyEvent FOnDestroy;
    TNotifyEvent FOnShow;
    TNotifyEvent FOnHide;
    TNotifyEvent FOnActivate;
    TNotifyEvent FOnDeactivate;
    TNotifyEvent FOnPaint;
    TShortCutEvent FOnShortCut;
    TCloseEvent FOnClose;
    TCloseQueryEvent FOnCloseQuery;
};

/// The form that programs derive theirs from.
class TForm : public TCustomForm {
    KX_CLASS()

    explicit TForm(TComponent* owner = nullptr);
};

/// The form that the control is on, through all its parents; null when it is on none.
TCustomForm* GetParentForm(const TControl* control);

/// A new form whose OnCreate has run. The owner frees it; without one, the caller does, by `Free`.
template <class T, class... Args> T* NewForm(TComponent* owner, Args&&... args) {
    auto form = std::make_unique<T>(owner, std::forward<Args>(args)...);
    form->AfterConstruction();
    return form.release();
}

/// Frees objects by `Free`, for `std::unique_ptr<TMyForm, TFreeDeleter>`.
struct TFreeDeleter {
    void operator()(TObject* object) const { object->Free(); }
};

} // namespace kx
