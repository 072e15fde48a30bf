// SPDX-License-Identifier: MIT
// The form with the tabs above the open dialog with recent files.

#include "kx/opensave/KxOExTopForm.h"

namespace kx {

const TClass& TKxOpenExTopFrm::StaticClass() {
    using T = TKxOpenExTopFrm;
    static const TClassBuilder<T> cls("TKxOpenExTopFrm", TForm::StaticClass(), [](auto& c) {
        c.Method("TabControl1Change", &T::TabControl1Change);
        c.Method("TabControl1Changing", &T::TabControl1Changing);
    });
    return cls.Class();
}

TKxOpenExTopFrm::TKxOpenExTopFrm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TKxOpenExTopFrm::TabControl1Change(TObject*) {
    if (!FDlg) {
        return;
    }
    const TAlive alive(*this);
    FDlg->ShowRecentFiles(TabControl1->TabIndex() != 0);
    if (alive) { // a handler of the dialog's messages may have freed the dialog, and with it this form
        FDlg->DoTabChange(*TabControl1);
    }
}

void TKxOpenExTopFrm::TabControl1Changing(TObject*, bool& allowChange) {
    if (FDlg) {
        FDlg->DoTabChanging(*TabControl1, allowChange);
    }
}

} // namespace kx
