// SPDX-License-Identifier: MIT
// Folders, colours, printers, and dialogs that do not wait.

#include "Recipes.h"

namespace cookbook {

// [folder]
std::string AskForFolder(TKxFolderDialog& dialog) {
    dialog.SetOptions({ffReturnOnlyFSDirs});
    dialog.SetText("Where are the drawings to go?");
    dialog.SetOnSelectionChange([&dialog](TObject*) { dialog.SetOk(!dialog.SelFolder().empty()); });
    return dialog.Execute() ? dialog.Folder() : std::string();
}
// [folder]

// [files in the tree]
void PickFilesInTree(TKxFolderDialog& dialog) {
    dialog.SetOptionsEx({ffIncludeFiles, ffNewDialogStyle, ffEditBox}); // no docked forms with these
    dialog.SetSpecialIniFolder(ftPersonal);
}
// [files in the tree]

// [colour]
void ChooseColour(TKxColorDialog& dialog, TForm& form) {
    dialog.CustDlgParams().SetBottomForm(&form); // the one side at which this dialog takes a form
    dialog.SetOnFullOpening([](TObject*, bool& allow) { allow = false; }); // the ready-made colours only
}
// [colour]

// [printer]
void WatchPrinter(TKxPrintDialog& dialog, TLabel& label) {
    dialog.SetOnPrinterChange([&](TObject*) { label.SetCaption("Paper of " + dialog.SelectedDevice()); });
    dialog.SetOnPrinterSetupShowing([](TObject*, bool& allow) { allow = false; });
}
// [printer]

// [modeless]
void ShowBeside(TKxModelessDialog& runner, TKxOpenLiteDialog& dialog, TLabel& label) {
    dialog.SetOnSelectionChange([&](TObject*) { // in the dialog's thread: controls belong to the application's
        TThread::Synchronize([&] { label.SetCaption(dialog.SelectedFiles()); });
    });
    runner.SetDialog(&dialog);
    runner.SetOnDialogClosed([&](TObject*, bool chosen) { label.SetCaption(chosen ? dialog.FileName() : ""); });
    runner.Show(); // returns at once
}
// [modeless]

} // namespace cookbook
