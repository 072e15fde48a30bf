// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ide/Designer.h"
#include "kx/ui/forms/Forms.h"

namespace kx {

/// A window of a design-time package, which hears what happens in the designers from its making to its end. A
/// descendant overrides what concerns it.
class TDesignWindow : public TForm, private IDesignNotification {
    KX_CLASS()

    explicit TDesignWindow(TComponent* owner = nullptr);
    ~TDesignWindow() override;

protected:
    void ItemDeleted(IDesigner&, TPersistent&) override {}
    void ItemInserted(IDesigner&, TPersistent&) override {}
    void ItemsModified(IDesigner&) override {}
    void SelectionChanged(IDesigner&, const TDesignSelection&) override {}
    void DesignerClosed(IDesigner&, bool) override {}
};

} // namespace kx
