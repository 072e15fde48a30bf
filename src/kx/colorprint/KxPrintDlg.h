// SPDX-License-Identifier: MIT
#pragma once

#include "kx/colorprint/KxBoxDialog.h"
#include "kx/ui/dialogs/DialogsPrint.h"

#include <string>

namespace kx {

/// A caption: its accessors X() and SetX(), and its field.
#define KX_CAPTION(Name)                                                                                               \
public:                                                                                                                \
    const std::string& Name() const { return F##Name; }                                                                \
    void Set##Name(const std::string& value) { F##Name = value; }                                                      \
                                                                                                                       \
private:                                                                                                               \
    std::string F##Name

/// Texts of the print dialog's buttons, labels and groups.
class TKxPrintDlgCaptions : public TKxDlgCaptions {
    KX_CLASS()

    void SetCaptions(HWND handle) const override;

    KX_CAPTION(PrnProperties);
    KX_CAPTION(PrnStatus);
    KX_CAPTION(PrnWhere);
    KX_CAPTION(PrnName);
    KX_CAPTION(PrnComment);
    KX_CAPTION(PrnType);
    KX_CAPTION(CopNumber);
    KX_CAPTION(CopCollate);
    KX_CAPTION(RngAll);
    KX_CAPTION(RngPages);
    KX_CAPTION(RngPagesFrom);
    KX_CAPTION(RngPagesTo);
    KX_CAPTION(RngSelection);
    KX_CAPTION(PrintToFile);
    KX_CAPTION(GroupPrinter);
    KX_CAPTION(GroupRange);
    KX_CAPTION(GroupCopies);
};
#undef KX_CAPTION

/// The system's print dialog with the application's forms docked to its sides, captions, placement, and events around
/// the choice of the printer, its properties and the number of copies.
class TKxCustomPrintDialog : public TKxBoxDialog<TPrintDialog> {
    KX_CLASS()

    explicit TKxCustomPrintDialog(TComponent* owner = nullptr);
    ~TKxCustomPrintDialog() override;

    TKxPrintDlgCaptions& DlgItemsCaptions() { return FCaptions; }
    const TKxPrintDlgCaptions& DlgItemsCaptions() const { return FCaptions; }

    /// Name of the printer that the dialog shows, or showed at last.
    const std::string& SelectedDevice() const { return FPrnDev; }

    /// The user has chosen another printer. OnPrinterChanging comes before; its veto keeps the printer as it was.
    const TNotifyEvent& OnPrinterChange() const { return FOnChangePrn; }
    void SetOnPrinterChange(TNotifyEvent value) { FOnChangePrn = std::move(value); }
    const TKxCtrlQueryEvent& OnPrinterChanging() const { return FOnChangingPrn; }
    void SetOnPrinterChanging(TKxCtrlQueryEvent value) { FOnChangingPrn = std::move(value); }
    /// The window of the printer's properties has been shown and closed; OnPrinterSetupShowing comes before it is
    /// opened, with a veto.
    const TNotifyEvent& OnPrinterSetupShow() const { return FOnSetupPrn; }
    void SetOnPrinterSetupShow(TNotifyEvent value) { FOnSetupPrn = std::move(value); }
    const TKxCtrlQueryEvent& OnPrinterSetupShowing() const { return FOnSetupShowing; }
    void SetOnPrinterSetupShowing(TKxCtrlQueryEvent value) { FOnSetupShowing = std::move(value); }
    const TNotifyEvent& OnCopiesChange() const { return FOnChangeCopies; } ///< The edit of the copies changed.
    void SetOnCopiesChange(TNotifyEvent value) { FOnChangeCopies = std::move(value); }

protected:
    virtual void DoHookQueryEvent(TMessage& message, bool& allow) { TKxBoxDialog::DoHookingEvent(message, allow); }
    void DoHookingEvent(TMessage& message, bool& allow) final { DoHookQueryEvent(message, allow); }

    void TakeOver() override;
    const TKxDlgCaptions& Captions() const override { return FCaptions; }
    void DoClose() override;

    TKxMsgVerdict BeforeSystem(TMessage& message, int& command) override;
    void AfterSystem(TMessage&, int command) override;

private:
    std::string ShownPrinter(int size) const;
    bool AllowsPrinter();
    bool AllowsSetup();

    std::string FPrnDev;
    TKxPrintDlgCaptions FCaptions;
    TNotifyEvent FOnChangePrn;
    TKxCtrlQueryEvent FOnChangingPrn;
    TKxCtrlQueryEvent FOnSetupShowing;
    TNotifyEvent FOnChangeCopies;
    TNotifyEvent FOnSetupPrn;
};

/// The published print dialog.
class TKxPrintDialog : public TKxCustomPrintDialog {
    KX_CLASS()

    using TKxCustomPrintDialog::TKxCustomPrintDialog;
};

} // namespace kx
