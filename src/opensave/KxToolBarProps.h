#pragma once

#include "frame/KxDlgParamsFormRef.h"
#include "ui/ComCtrlsToolBar.h"

namespace kx {

/// How a dialog treats its navigation tool bar.
class TKxToolBarOptions : public TPersistent {
    KX_CLASS()

    bool Flat() const { return FFlat; } ///< Flat buttons.
    void SetFlat(bool value) { FFlat = value; }
    /// A tool bar of the application that the dialog borrows and shows beside its own. Not owned; null: none, also once
    /// the tool bar has been freed.
    TToolBar* CustomBar() const { return FBar.Get(); }
    void SetCustomBar(TToolBar* value) { FBar.Set(value); }

private:
    bool FFlat = false;
    TKxFormRef<TToolBar> FBar;
};

} // namespace kx
