// SPDX-License-Identifier: MIT
// How dialogs look.

#include "Recipes.h"

namespace cookbook {

// [my form]
void ShowMyForm(TKxOpenLiteDialog& dialog, TForm& form) {
    dialog.CustDlgParams().SetBottomForm(&form); // or SetBottomFormName("OptionsForm"): found when the dialog opens
}
// [my form]

// [grow]
void GrowWithDialog(TForm& form, TListBox& list) {
    list.SetAnchors({akLeft, akTop, akRight, akBottom});
    form.Constraints().SetMinWidth(120); // pixels
}
// [grow]

// [instead of the list]
void ReplaceFileList(TKxOpenDialog& dialog, TForm& form) {
    dialog.CustDlgParams().SetCustomForm(&form);
    dialog.SetSelectionType(stCustom); // stStandard brings the list back, also while the dialog is shown
}
// [instead of the list]

// [button menu]
void AddButtonMenu(TKxOpenDialog& dialog, TPopupMenu& menu) {
    auto* readOnly = new TMenuItem(&menu);
    readOnly->SetCaption("Open &read-only");
    readOnly->SetOnClick([&dialog](TObject*) {
        dialog.SetTag(1); // how the user wants it, for whoever called Execute
        dialog.CloseDialog(mrOk);
    });
    menu.Items().Add(readOnly);
    dialog.SetOkButtonMenu(&menu);
}
// [button menu]

// [tool bar]
void LendToolBar(TKxOpenDialog& dialog, TToolBar& bar) {
    dialog.ToolBar().SetCustomBar(&bar); // it stands beside the system's while the dialog is shown
}
// [tool bar]

// [centre]
void CentreOverOwner(TKxOpenLiteDialog& dialog) {
    dialog.CustDlgParams().SetPosition(dpOwnerCenter); // the form that owns the component
    dialog.CustDlgParams().PosParams().SetFitToScreen(true);
}
// [centre]

// [icon]
void GiveIcon(TKxOpenLiteDialog& dialog, const std::string& iconFile) {
    dialog.CustDlgParams().Icon().LoadFromFile(iconFile);
}
// [icon]

// [details]
void ForceDetails(TKxOpenDialog& dialog) {
    dialog.SetOnShow([&dialog](TObject*) { dialog.SetFileListViewStyle(lvsReport); });
    dialog.SetOnSelectionStyleChanging([](TObject*, TViewStyle style, bool& allow) { allow = style == vsReport; });
}
// [details]

// [preview]
void ShowPreview(TKxOpenLiteDialog& dialog, TLabel& label) {
    dialog.SetOnSelectionChange([&dialog, &label](TObject*) {
        const TStringList& names = dialog.SelectedFilesList();
        label.SetCaption(names.Count() == 1 ? "Preview of " + names[0] : "Select one file");
    });
}
// [preview]

// [lite]
std::string AskQuickly() {
    TKxOpenLiteDialog dialog(&Application());
    dialog.SetTitle("Open drawing");
    return dialog.Execute() ? dialog.FileName() : std::string();
}
// [lite]

} // namespace cookbook
