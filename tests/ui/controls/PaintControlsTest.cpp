// SPDX-License-Identifier: MIT
// One control's failure does not keep the others from being painted.

#include "tests/support/ExceptionLog.h"
#include "tests/support/TestForms.h"

#include <gtest/gtest.h>

// Controls without windows, painted by the window that they are in.

namespace kx {
namespace {

using namespace test;

/// A square of a colour, or one that fails to paint.
class TSquare : public TGraphicControl {
public:
    TSquare(TForm& form, int left, TColor color) : TGraphicControl(&form), FColor(color) {
        SetParent(&form);
        SetBounds(left, 0, 20, 20);
    }

protected:
    void Paint() override {
        if (FColor == clNone) {
            throw EInvalidOperation("square");
        }
        Canvas().Brush().SetColor(FColor);
        Canvas().FillRect(ClientRect());
    }

private:
    TColor FColor;
};

TEST(PaintingOfControls, OneThatFailsLeavesTheOthersPainted) {
    const TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->SetBorderStyle(bsNone);
    form->SetBounds(100, 100, 100, 40);
    new TSquare(*form, 0, clRed);
    new TSquare(*form, 20, clNone);
    new TSquare(*form, 40, clBlue);
    form->Show();
    form->Update();
    const HDC dc = GetDC(form->Handle());
    EXPECT_EQ(GetPixel(dc, 10, 10), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(dc, 50, 10), RGB(0, 0, 255));
    EXPECT_EQ(GetPixel(dc, 90, 10), static_cast<COLORREF>(ColorToRGB(form->Color())));
    ReleaseDC(form->Handle(), dc);
    ASSERT_FALSE(log.Messages().empty());
    EXPECT_EQ(log.Messages().front(), "square");
}

} // namespace
} // namespace kx
