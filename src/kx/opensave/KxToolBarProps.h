// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"

namespace kx {

/// How a dialog treats its navigation tool bar.
class TKxToolBarOptions : public TPersistent {
    KX_CLASS()

    bool Flat() const { return FFlat; } ///< Flat buttons.
    void SetFlat(bool value) { FFlat = value; }
    /// A tool bar of the application that the dialog borrows and shows beside its own. Not owned. Null when there is
    /// none, or when it has been freed.
    TToolBar* CustomBar() const { return FBar.Get(); }
    void SetCustomBar(TToolBar* value) { FBar.Set(value); }

private:
    bool FFlat = false;
    TComponentRef<TToolBar> FBar;
};

} // namespace kx
