// SPDX-License-Identifier: MIT
// The full save dialog.

#include "kx/opensave/KxSaveDlg.h"

#include "kx/opensave/KxFileDlgPublish.h"

namespace kx {

const TClass& TKxCustomSaveDialog::StaticClass() {
    static const TClassBuilder<TKxCustomSaveDialog> cls(
        "TKxCustomSaveDialog", TKxCustomOpenDialog::StaticClass(),
        [](auto& c) { c.Method("Execute", &TKxCustomSaveDialog::PublishedExecute); });
    return cls.Class();
}

const TClass& TKxSaveDialog::StaticClass() {
    using T = TKxSaveDialog;
    static const TClassBuilder<T> cls("TKxSaveDialog", TKxCustomSaveDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        PublishTitle(c);
        PublishSelection(c);
        c.Property("OnIncludeFile", &T::OnIncludeFile, &T::SetOnIncludeFile);
        PublishNavigation(c);
        PublishInput(c);
        c.Property("OnShareViolation", &T::OnShareViolation, &T::SetOnShareViolation);
        c.Property("OnSelectionStyleChange", &T::OnSelectionStyleChange, &T::SetOnSelectionStyleChange);
        PublishMemory(c);
    });
    return cls.Class();
}

bool TKxCustomSaveDialog::Execute() { return ExecuteWith(GetSaveFileNameWrapper); }

} // namespace kx
