// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Barrier.h"
#include "kx/frame/KxDlgParams.h"
#include "kx/frame/KxDlgPipeline.h"
#include "kx/ui/dialogs/Dialogs.h"

#include <initializer_list>
#include <string>

namespace kx {

/// What all dialogs of the library share, whatever they show: their placement and docked forms, their title, the events
/// of every message, and the part of ICommonDialog that is the same in all. A dialog component inherits it beside the
/// framework's dialog and hands it itself.
class TKxDlgCore : public ICommonDialog, protected TKxDlgPipeline::IDialog {
public:
    TKxDlgCore(const TKxDlgCore&) = delete;
    TKxDlgCore& operator=(const TKxDlgCore&) = delete;

    const std::string& Title() const { return FTitle; } ///< Caption of the window; empty: the system's.
    void SetTitle(const std::string& value) { FTitle = value; }
    TKxCustDlgParams& CustDlgParams() { return FParams; }
    const TKxCustDlgParams& CustDlgParams() const { return FParams; }
    void SetCustDlgParams(const TKxCustDlgParams& value) { FParams.Assign(&value); }

    /// The dialog is complete and about to become visible.
    const TNotifyEvent& OnShow() const { return FMyOnShow; }
    void SetOnShow(TNotifyEvent value) { FMyOnShow = std::move(value); }
    /// Each message of the dialog window: OnEventHook after the dialog handled it, OnEventHooking before, with a veto.
    const TWndMethod& OnEventHook() const { return FOnHookEvent; }
    void SetOnEventHook(TWndMethod value) { FOnHookEvent = std::move(value); }
    const TKxMsgQueryEvent& OnEventHooking() const { return FHooking; }
    void SetOnEventHooking(TKxMsgQueryEvent value) { FHooking = std::move(value); }

    // --- ICommonDialog

    HWND GetCommonDialogHandle() const override { return FDlgHandle; }
    TNotifyEvent GetCommonDialogInternalShowEvent() const override { return FOnInternalShow; }
    void SetCommonDialogInternalShowEvent(const TNotifyEvent& event) override { FOnInternalShow = event; }
    void CloseDialog(int modalResult) override { KxCloseDialog(GetCommonDialogHandle(), modalResult); }
    TKxCustDlgParams& GetCustDlgParams() override { return FParams; }

    // --- For the parts of a dialog

    /// How long the object may be touched. It ends with the destructor. The component's `Lifetime` ends earlier, when
    /// the component begins to go; the dialog closes between the two.
    const TLifetime& Existence() const { return FExistence; }

protected:
    /// `dialog` is the component that this is a part of.
    explicit TKxDlgCore(TCommonDialog& dialog);
    ~TKxDlgCore() = default;

    /// The component is on its way out, and the dialog closes as a part of that.
    bool IsGoing() const { return !TAlive(FDialog); }

    bool TakeAccelerator(wchar_t letter) override { return FParams.TakeAccelerator(letter); }
    void DoHookEvent(TMessage& message) override { FOnHookEvent(message); }
    void DoHookingEvent(TMessage& message, bool& allow) override { FHooking(&FDialog, message, allow); }

    // --- Pieces of a showing

    /// Runs the steps of a showing, or of its end, in their order. The application hears of the messages that a step
    /// sends and may free the dialog: then the other steps are left out. A step that fails is reported, and the others
    /// run all the same. Tells whether the dialog is still there.
    template <class T> static bool RunSteps(T& dialog, std::initializer_list<void (T::*)()> steps) {
        const TAlive there(static_cast<TKxDlgCore&>(dialog).FExistence);
        for (const auto step : steps) {
            try {
                if (there) {
                    (dialog.*step)();
                }
            } catch (...) {
                if (there) { // else the step failed because the dialog went, which is no fault to report
                    ReportException();
                }
            }
        }
        return static_cast<bool>(there);
    }
    /// Takes over the dialog window: from now on its messages take the way of the pipeline.
    void AttachDialog(HWND window); ///< @throws EOSError
    /// Gives the window its own procedure back.
    void DetachDialog();
    /// Docks the forms and grows the dialog by them. The failure of a form's OnShow is reported, and the dialog goes
    /// on.
    void DockForms();
    /// Gives the dialog window its title, if there is one.
    void ShowTitle();
    /// Places the dialog by its parameters.
    void Place() { KxSetPosition(FDlgHandle, FParams); }
    /// Fires OnShow and the internal notification, whose handlers may free the dialog.
    void FireShow();

    TKxCustDlgParams FParams;
    HWND FDlgHandle = nullptr; ///< The dialog window while it is taken over, else null.
    TNotifyEvent FOnInternalShow;

private:
    TCommonDialog& FDialog;
    TLifetime FExistence;
    TKxDlgPipeline FPipeline;
    std::string FTitle;
    TNotifyEvent FMyOnShow;
    TWndMethod FOnHookEvent;
    TKxMsgQueryEvent FHooking;
};

} // namespace kx
