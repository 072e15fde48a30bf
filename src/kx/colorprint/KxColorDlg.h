// SPDX-License-Identifier: MIT
#pragma once

#include "kx/colorprint/KxBoxDialog.h"
#include "kx/ui/dialogs/DialogsColor.h"

#include <string>

namespace kx {

/// Texts of the colour dialog's buttons.
class TKxColorDlgCaptions : public TKxDlgCaptions {
    KX_CLASS()

    const std::string& AddCustomColor() const { return FAddCustomColor; }
    void SetAddCustomColor(const std::string& value) { FAddCustomColor = value; }
    const std::string& DefineCustomColor() const { return FDefineCustomColor; }
    void SetDefineCustomColor(const std::string& value) { FDefineCustomColor = value; }

    void SetCaptions(HWND handle) const override;

private:
    std::string FAddCustomColor;
    std::string FDefineCustomColor;
};

/// Hears of a colour.
using TKxColorEvent = TEvent<void(TObject* sender, TColor color)>;
/// May change a colour, or veto it.
using TKxColorQueryEvent = TEvent<void(TObject* sender, TColor& color, bool& allowedColor)>;

/// The system's colour dialog with a form of the application docked to its bottom, captions, placement, and events
/// around the part in which the user makes colours. Other sides than the bottom are not supported.
///
/// The colour to be added is read from the edits of its components. A text that is no number raises EConvertError, a
/// number above 255 ERangeError; the application's exception handling gets them, and nothing is added.
class TKxCustomColorDialog : public TKxBoxDialog<TColorDialog> {
    KX_CLASS()

    explicit TKxCustomColorDialog(TComponent* owner = nullptr);
    ~TKxCustomColorDialog() override;

    TKxColorDlgCaptions& DlgItemsCaptions() { return FCaptions; }
    const TKxColorDlgCaptions& DlgItemsCaptions() const { return FCaptions; }

    /// The full part has been opened; OnFullOpening comes before, with a veto.
    const TNotifyEvent& OnFullOpen() const { return FOnFullOpen; }
    void SetOnFullOpen(TNotifyEvent value) { FOnFullOpen = std::move(value); }
    const TKxCtrlQueryEvent& OnFullOpening() const { return FOnFullOpening; }
    void SetOnFullOpening(TKxCtrlQueryEvent value) { FOnFullOpening = std::move(value); }
    /// A custom colour has been added: the event tells what the edits held before OnCustomColorAdding changed it.
    const TKxColorEvent& OnCustomColorAdd() const { return FOnCustomColorAdd; }
    void SetOnCustomColorAdd(TKxColorEvent value) { FOnCustomColorAdd = std::move(value); }
    /// A custom colour is about to be added. The system adds the colour that the handler leaves.
    const TKxColorQueryEvent& OnCustomColorAdding() const { return FOnCustomColorAdding; }
    void SetOnCustomColorAdding(TKxColorQueryEvent value) { FOnCustomColorAdding = std::move(value); }

protected:
    // Fire their events
    virtual void DoFullOpen() { FOnFullOpen(this); }
    virtual void DoFullOpening(bool& allow) { FOnFullOpening(this, allow); }
    virtual void DoAddCustomColor(TColor color) { FOnCustomColorAdd(this, color); }
    virtual void DoAddingCustomColor(TColor color, bool& allow); ///< It also writes an allowed colour into the edits.

    void TakeOver() override;
    const TKxDlgCaptions& Captions() const override { return FCaptions; }
    void DoClose() override;

    TKxMsgVerdict BeforeSystem(TMessage& message, int& command) override;
    void AfterSystem(TMessage& message, int command) override;

private:
    bool AllowsAdding();
    bool AllowsFullOpening();
    void FullOpened();

    TKxColorDlgCaptions FCaptions;
    TColor FAdded = clBlack; ///< The colour that OnCustomColorAdd will tell.
    TRect FOuterBefore;      ///< Of the window, before the system opens the full part.
    TNotifyEvent FOnFullOpen;
    TKxCtrlQueryEvent FOnFullOpening;
    TKxColorEvent FOnCustomColorAdd;
    TKxColorQueryEvent FOnCustomColorAdding;
};

/// The published colour dialog.
class TKxColorDialog : public TKxCustomColorDialog {
    KX_CLASS()

    using TKxCustomColorDialog::TKxCustomColorDialog;
};

} // namespace kx
