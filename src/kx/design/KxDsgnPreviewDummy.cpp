// SPDX-License-Identifier: MIT
// The window from which a dialog's preview runs.

#include "kx/design/KxDsgnPreviewDummy.h"

#include "kx/design/KxServices.h"

namespace kx {

TKxPreviewDummyFrm* KxPreviewDummyFrm = nullptr;

const TClass& TKxPreviewDummyFrm::StaticClass() {
    using T = TKxPreviewDummyFrm;
    static const TClassBuilder<T> cls("TKxPreviewDummyFrm", TForm::StaticClass(), [](auto& c) {
        c.Method("Button1Click", &T::Button1Click);
        c.Method("FormClose", &T::FormClose);
    });
    return cls.Class();
}

TKxPreviewDummyFrm::TKxPreviewDummyFrm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

TKxPreviewDummyFrm::~TKxPreviewDummyFrm() {
    if (KxPreviewDummyFrm == this) {
        KxPreviewDummyFrm = nullptr;
    }
}

void TKxPreviewDummyFrm::Button1Click(TObject*) {
    if (!Dlg() || FPreviewed) {
        return;
    }
    FPreviewed = true;
    const TAlive alive(*this);
    const auto close = [&] {
        if (alive) { // the user may have closed the window while the dialog was shown
            Close();
        }
    };
    try {
        KxPreviewDialog(*Dlg(), {}, {}, {}, {}, false);
    } catch (...) {
        close();
        throw;
    }
    close();
}

void TKxPreviewDummyFrm::FormClose(TObject*, TCloseAction& action) { action = caFree; }

} // namespace kx
