// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/TypInfo.h"
#include "kx/win/Messages.h"

namespace kx {

class TKxCustDlgParams;

/// What a dialog lets the user select with.
enum TKxDlgSelectionType : uint8_t {
    stStandard, ///< The system's own selection control.
    stCustom    ///< The custom form in its place.
};
KX_ENUM(TKxDlgSelectionType, "stStandard", "stCustom")

/// Sees a message of the dialog window before the dialog does, may change it, and may veto it: the system does not get
/// the message then, and its result stays as the handler left it.
using TKxMsgQueryEvent = TEvent<void(TObject* sender, TMessage& message, bool& allowDispatch)>;
/// May veto what the user is about to do.
using TKxCtrlQueryEvent = TEvent<void(TObject* sender, bool& allowProceed)>;

/// Drives any of the dialogs without knowing its class. Every dialog component implements it on itself and is owned as
/// a component is.
class ICommonDialog {
public:
    /// The dialog window while it is shown, else null.
    virtual HWND GetCommonDialogHandle() const = 0;
    /// Fires behind OnShow, when the dialog is set up, with the dialog as sender. It is not the application's event.
    virtual TNotifyEvent GetCommonDialogInternalShowEvent() const = 0;
    virtual void SetCommonDialogInternalShowEvent(const TNotifyEvent& event) = 0;
    /// Closes the shown dialog as if a button was pressed: mrOk or mrCancel; other values do nothing.
    virtual void CloseDialog(int modalResult) = 0;
    virtual bool Execute() = 0;
    virtual TKxCustDlgParams& GetCustDlgParams() = 0;

protected:
    ~ICommonDialog() = default;
};

/// What CloseDialog does in every dialog: clicks the OK or Cancel button of the window.
void KxCloseDialog(HWND handle, int modalResult);

} // namespace kx
