// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/widgets/ComCtrlsToolBar.h"

#include "kx/core/FormText.h"
#include "kx/core/Streams.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"

#include <gtest/gtest.h>

namespace kx::test {

/// Draws itself, and counts how often.
class TPaintedButton : public TToolButton {
public:
    using TToolButton::TToolButton;
    int Paints = 0;

protected:
    void Paint() override {
        ++Paints;
        Canvas().Brush().SetColor(Down() ? clRed : clLime);
        Canvas().FillRect(ClientRect());
    }
};

class ToolBar : public TFormTest {
protected:
    ToolBar() : Bar(new TToolBar(Form.get())) {
        Form->SetBorderStyle(bsNone);
        Bar->SetEdgeBorders({});
        Bar->SetParent(Form.get());
    }
    void Show() {
        TFormTest::Show();
        Bar->Update();
    }
    /// As a bar of places: one column.
    void MakeColumn() {
        Bar->SetAlign(alNone);
        Bar->SetBounds(10, 10, 100, 29);
        Bar->SetAutoSize(true);
        Bar->SetButtonWidth(87);
        Bar->SetButtonHeight(49);
        Bar->SetFlat(true);
    }
    template <class T = TToolButton> T* Add(const std::string& caption = {}) {
        auto* const button = new T(Bar);
        button->SetCaption(caption);
        button->SetParent(Bar);
        return button;
    }
    /// Behind all others.
    template <class T = TToolButton> T* Append(const std::string& caption = {}) {
        auto* const button = new T(Bar);
        button->SetCaption(caption);
        button->SetLeft(10000);
        button->SetTop(10000);
        button->SetParent(Bar);
        return button;
    }
    std::string Order() const {
        std::string order;
        for (int i = 0; i < Bar->ButtonCount(); ++i) {
            EXPECT_EQ(Bar->Buttons(i)->Index(), i);
            order += Bar->Buttons(i)->Caption();
        }
        return order;
    }
    /// Where the system draws the button.
    TRect SystemRect(int index) const {
        RECT r{};
        SendMessageA(Bar->Handle(), TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&r));
        return FromRECT(r);
    }
    COLORREF ColorIn(TControl& control) {
        Bar->Update();
        const TWindowDC dc(Bar->Handle());
        return GetPixel(dc.Handle(), control.Left() + control.Width() / 2, control.Top() + control.Height() / 2);
    }

    TToolBar* Bar;
};

} // namespace kx::test
