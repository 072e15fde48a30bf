// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Controls.h"

namespace kx {

/// An area with scroll bars for more controls than it has room for.
class TScrollBox : public TScrollingWinControl {
    KX_CLASS()

    explicit TScrollBox(TComponent* owner = nullptr);

    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);

    void CreateParams(TCreateParams& params) override;

private:
    TBorderStyle FBorderStyle = bsSingle;
};

} // namespace kx
