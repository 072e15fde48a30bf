// SPDX-License-Identifier: MIT
// What the user chooses, and may not choose.

#include "Recipes.h"

#include "kx/opensave/KxFileDlgControls.h"

#include <windows.h>

#include <array>

namespace cookbook {

// [selection]
void FollowSelection(TKxOpenLiteDialog& dialog, TLabel& label) {
    dialog.SetOnSelectionChange([&](TObject*) {
        label.SetCaption(IntToStr(dialog.SelectedFilesList().Count()) + " selected in " + dialog.SelectedFolder());
    });
    dialog.SetOnFolderChange([&](TObject*) { label.SetCaption(dialog.SelectedFolder()); });
}
// [selection]

// [check]
void CheckChoice(TKxOpenLiteDialog& dialog) {
    dialog.SetOnCanClose([&dialog](TObject*, bool& canClose) {
        canClose = !SameText(ExtractFileExt(dialog.FileName()), ".exe");
        if (!canClose) {
            ShowMessage("Programs cannot be opened."); // over the dialog, which stays
        }
    });
}
// [check]

// [stay below]
void StayBelow(TKxOpenLiteDialog& dialog, const std::string& top) {
    dialog.SetInitialDir(top);
    dialog.SetVisibleControls(KxAllOpenDlgControls - TKxOpenDlgControls{dcFolderCombo, dcFolderLabel});
    dialog.SetOnDesktopNavigating([](TObject*, bool& allow) { allow = false; });
    dialog.SetOnUpLevelNavigating(
        [&dialog, top](TObject*, bool& allow) { allow = !SameText(dialog.SelectedFolder(), top); });
}
// [stay below]

// [protect]
void ProtectFiles(TKxOpenDialog& dialog) {
    dialog.ListViewStyles().SetEnableRename(false);
    dialog.ListViewStyles().SetEnableDelete(false);
    dialog.ListViewStyles().SetPopupOnSelection(false); // no menu that could do either
    dialog.SetOnFolderCreating([](TObject*, bool& allow) { allow = false; });
}
// [protect]

// [hide]
void HideFiles(TKxOpenDialog& dialog) {
    dialog.ExtFilter().SetEnabled(true);
    dialog.ExtFilter().SetShowFolders(true);
    dialog.SetOnIncludeFile([](TObject*, const std::string& fileName, bool& include) {
        include = !ExtractFileName(fileName).starts_with("~");
    });
}
// [hide]

// [extension]
void CompleteExtension(TKxSaveDialog& dialog) {
    dialog.SetFilter("Tables|*.csv|Texts|*.txt");
    dialog.SetDefaultExt("csv"); // for a name without one
    dialog.SetOnTypeChange([&dialog](TObject*) {
        constexpr std::array extensions{".csv", ".txt"};
        const LRESULT type = SendDlgItemMessageA(dialog.DlgHandle(), KxFileTypeId, CB_GETCURSEL, 0, 0);
        dialog.SetFilenameText(ChangeFileExt(dialog.FilenameText(), extensions.at(static_cast<size_t>(type))));
    });
}
// [extension]

// [suggest]
void SuggestName(TKxSaveDialog& dialog, const std::string& name) {
    dialog.SetFileName(name); // with a full path the dialog starts in that folder
    dialog.SetOptions({ofOverwritePrompt, ofPathMustExist, ofHideReadOnly, ofEnableSizing});
}
// [suggest]

// [encoding]
std::string SaveWithEncoding(TKxSaveDialog& dialog, TForm& form, TComboBox& encodings) {
    encodings.Items().SetText("UTF-8\r\nUTF-16\r\nThe system's code page");
    encodings.SetItemIndex(0);
    dialog.CustDlgParams().SetBottomForm(&form); // on which the box is
    return dialog.Execute() ? dialog.FileName() + " in " + encodings.Text() : std::string();
}
// [encoding]

// [several]
std::vector<std::string> PickSeveral(TKxOpenLiteDialog& dialog) {
    dialog.SetOptions({ofAllowMultiSelect, ofFileMustExist, ofHideReadOnly, ofEnableSizing});
    std::vector<std::string> files;
    if (dialog.Execute()) {
        for (int i = 0; i < dialog.Files().Count(); ++i) { // full paths, as many as there are
            files.push_back(dialog.Files()[i]);
        }
    }
    return files;
}
// [several]

// [close]
void CloseAfter(TKxOpenLiteDialog& dialog, TTimer& timer) {
    timer.SetInterval(30'000); // milliseconds
    timer.SetOnTimer([&dialog](TObject*) { dialog.CloseDialog(mrCancel); });
}
// [close]

// [messages]
void NoteMessages(TKxOpenLiteDialog& dialog, std::vector<unsigned>& messages) {
    dialog.SetOnEventHooking([&messages](TObject*, TMessage& message, bool& allowDispatch) {
        messages.push_back(message.Msg);
        allowDispatch = true; // false: the system does not get the message
    });
}
// [messages]

// [errors]
void HandleErrors(std::vector<std::string>& log) {
    Application().SetOnException([&log](TObject*, const std::exception& e) { log.push_back(e.what()); });
}
// [errors]

} // namespace cookbook
