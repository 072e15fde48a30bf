// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"
#include "kx/ui/forms/FormsLoad.h"

namespace kx {

/// A part of a form that has a form file of its own: forms and other frames hold it like a control, with all that is in
/// it. A form file that holds one says just what differs from the frame's own file.
///
/// The constructor of each frame class calls `InitForm(*this, TMyFrame::StaticClass())` first, as that of a form does;
/// its published fields and methods are those of the frame. It has no events for its making and its end.
class TCustomFrame : public TScrollingWinControl {
    KX_CLASS()

    explicit TCustomFrame(TComponent* owner = nullptr);

    void GetChildren(const TGetChildProc& proc, TComponent* root) override;
    void ReadState(TReader& reader) override;
    void SetParent(TWinControl* value) override;

protected:
    void CreateHandle() override;
    void ChangeScale(int to, int from) override;

private:
    const TClass* FFileClass = nullptr; ///< The one that its own form file has been read for; null: none.
    bool FHasFileSizes = false;         ///< The sizes are still those of the form file, which are for DefaultDpi.
};

/// The frame that programs derive theirs from.
class TFrame : public TCustomFrame {
    KX_CLASS()

    explicit TFrame(TComponent* owner = nullptr);
};

} // namespace kx
