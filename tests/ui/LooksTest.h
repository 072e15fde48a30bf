// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"
#include "tests/support/FormTest.h"
#include "tests/support/Pictures.h"

namespace kx::test {

/// A form whose controls are looked at, pixel by pixel. The mouse is somewhere else.
class TLooksTest : public TFormTest {
protected:
    TLooksTest() {
        Form->SetBorderStyle(bsNone);
        MoveMouse({5, 5});
    }
    /// What is seen of a part of the form.
    std::vector<uint32_t> Seen(const TRect& r) {
        RedrawWindow(Form->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        const TWindowDC dc(Form->Handle());
        return PixelsOf(dc.Handle(), r);
    }
    /// `inset`: pixels at each edge that are left out.
    std::vector<uint32_t> Seen(TControl& control, int inset = 0) {
        const TPoint at = Form->ScreenToClient(control.ClientToScreen({0, 0}));
        return Seen({at.X + inset, at.Y + inset, at.X + control.Width() - inset, at.Y + control.Height() - inset});
    }
};

} // namespace kx::test
