// SPDX-License-Identifier: MIT
// The form with the recent files.

#include "kx/opensave/KxOExRecentForm.h"

#include "kx/opensave/KxOpenDlg.h"

namespace kx {

namespace {

enum TRecentSubItem { siFolder, siFullName };

} // namespace

const TClass& TKxOpenExRecentFrm::StaticClass() {
    using T = TKxOpenExRecentFrm;
    static const TClassBuilder<T> cls("TKxOpenExRecentFrm", TForm::StaticClass(), [](auto& c) {
        c.Method("ListView1Change", &T::ListView1Change);
        c.Method("ListView1DblClick", &T::ListView1DblClick);
    });
    return cls.Class();
}

TKxOpenExRecentFrm::TKxOpenExRecentFrm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TKxOpenExRecentFrm::ShowFiles(const TStrings& files) {
    TListItems& items = ListView1->Items();
    items.BeginUpdate();
    items.Clear();
    for (int i = 0; i < files.Count(); ++i) {
        const std::string name = files[i];
        TListItem& item = items.Add();
        item.SetCaption(ExtractFileName(name));
        item.SubItems().Add(ExtractFilePath(name));
        item.SubItems().Add(name); // there is no column for it: it is not shown
    }
    items.EndUpdate();
}

void TKxOpenExRecentFrm::ListView1Change(TObject*, TListItem*, TItemChange) {
    TListItem* const selected = ListView1->Selected();
    // An item that is being added has no names yet.
    if (FDlg && selected && selected->SubItems().Count() > siFullName) {
        FDlg->SetFNameText(selected->SubItems()[siFullName]);
    }
}

void TKxOpenExRecentFrm::ListView1DblClick(TObject*) {
    if (FDlg) {
        FDlg->CloseDialog(mrOk);
    }
}

} // namespace kx
