// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxRunning.h"
#include "kx/opensave/KxFileDlgCore.h"

namespace kx {

/// The system's open dialog with the application's forms docked into it, captions, placement and navigation events of
/// its own. Nothing but the dialog window is taken over: the file list, the tool bar and the places bar are the
/// system's.
class TKxCustomOpenLiteDialog : public TOpenDialog, public TKxFileDlgCore {
    KX_CLASS()

    explicit TKxCustomOpenLiteDialog(TComponent* owner = nullptr);
    ~TKxCustomOpenLiteDialog() override;

    bool Execute() override;

    /// The system's places bar. When it is shown, the dialog runs on a record of its own: FilterIndex and the read-only
    /// option stay as they were set.
    TKxPlacesBarLiteOptions& PlacesBar() { return FPBarOptions; }
    const TKxPlacesBarLiteOptions& PlacesBar() const { return FPBarOptions; }

    // These members of the library's file dialogs take the place of the inherited ones.
    using TKxFileDlgCore::OnShow;
    using TKxFileDlgCore::SetOnShow;
    using TKxFileDlgCore::SetTitle;
    using TKxFileDlgCore::Title;

    /// The lite dialog of this thread that counts as running: the last one that was started, until it brings its
    /// predecessor back. Null when there is none.
    static TKxCustomOpenLiteDialog* Running();

protected:
    using TRunning = TKxRunning<TKxCustomOpenLiteDialog>;
    /// Makes this the running dialog while the result lives. Whoever runs the dialog in a way of their own calls it
    /// first.
    [[nodiscard]] TRunning PrepareExecution() { return TRunning(*this); }
    using TSystemDialog = BOOL KX_CALLBACK(OPENFILENAMEA* record);
    /// Runs the system's dialog, with the places bar when the running dialog component wants it.
    static bool RunLite(TSystemDialog* dialog, OPENFILENAMEA& record);

    std::string FirstFolder() const override { return StartFolder(); }
    int FirstFilterIndex() const override { return StartFilterIndex(); }

    void DoShow() override;
    void DoClose() override;

    void WMNotify(TMessage& message) override;
    TKxMsgVerdict BeforeSystem(TMessage& message, int& command) override;
    bool IsFilenameEntered() const override { return Window().EditHasFocus(); }

private:
    void MeasureDialog();
    void FireInheritedClose();

    TKxPlacesBarLiteOptions FPBarOptions;
};

/// A program and the library's DLL have one running dialog in common.
extern template class TKxRunning<TKxCustomOpenLiteDialog>;

/// The published lite open dialog.
class TKxOpenLiteDialog : public TKxCustomOpenLiteDialog {
    KX_CLASS()

    using TKxCustomOpenLiteDialog::TKxCustomOpenLiteDialog;
};

/// The system's save dialog in the same way.
class TKxCustomSaveLiteDialog : public TKxCustomOpenLiteDialog {
    KX_CLASS()

    using TKxCustomOpenLiteDialog::TKxCustomOpenLiteDialog;

    bool Execute() override;
};

/// The published lite save dialog.
class TKxSaveLiteDialog : public TKxCustomSaveLiteDialog {
    KX_CLASS()

    using TKxCustomSaveLiteDialog::TKxCustomSaveLiteDialog;
};

} // namespace kx
