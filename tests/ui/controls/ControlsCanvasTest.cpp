// SPDX-License-Identifier: MIT
// What a control's canvas draws on.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

constexpr COLORREF Red = 0x0000FF;

COLORREF PixelOf(TWinControl& control, int x, int y) {
    const HDC dc = GetDC(control.WindowHandle());
    const COLORREF color = GetPixel(dc, x, y);
    ReleaseDC(control.WindowHandle(), dc);
    return color;
}

void FillRed(TCanvas& canvas) {
    canvas.Brush().SetColor(static_cast<TColor>(Red));
    canvas.FillRect({0, 0, 1000, 1000});
}

/// Paints itself without a handler.
class TSelfPaintingForm : public TForm {
    KX_CLASS()
    explicit TSelfPaintingForm(TComponent* owner = nullptr) : TForm(owner) {}
    HDC Given = nullptr; ///< What the form was to paint on,
    HDC Used = nullptr;  ///< and what its canvas drew on.

protected:
    void PaintWindow(HDC dc) override {
        Given = dc;
        TForm::PaintWindow(dc);
    }
    void Paint() override { Used = Canvas().Handle(); }
};

const TClass& TSelfPaintingForm::StaticClass() {
    static const TClassBuilder<TSelfPaintingForm> cls("TSelfPaintingForm", TForm::StaticClass());
    return cls.Class();
}

class ControlCanvas : public TFormTest {};

TEST_F(ControlCanvas, AFormThatPaintsItselfDrawsOnWhatItIsGivenFromItsFirstPaintingOn) {
    const std::unique_ptr<TSelfPaintingForm, TFreeDeleter> form(NewForm<TSelfPaintingForm>(nullptr));
    form->SetDoubleBuffered(true); // the picture in memory is not the window's
    form->Show();
    form->Repaint();
    ASSERT_NE(form->Given, nullptr);
    EXPECT_EQ(form->Used, form->Given);
}

TEST_F(ControlCanvas, OutsideOfPaintingItFollowsAWindowThatIsMadeAnew) {
    auto* const panel = Add<TPanel>(20, 20, 100, 50);
    Show();
    FillRed(panel->Canvas());
    ASSERT_EQ(PixelOf(*panel, 50, 25), Red);
    panel->RecreateWnd();
    panel->Repaint();
    ASSERT_NE(PixelOf(*panel, 50, 25), Red);
    FillRed(panel->Canvas());
    EXPECT_EQ(PixelOf(*panel, 50, 25), Red);
}

TEST_F(ControlCanvas, OutsideOfPaintingItFollowsAFormsWindowToo) {
    Show();
    const HDC before = Form->Canvas().Handle();
    ASSERT_EQ(WindowFromDC(before), Form->WindowHandle());
    Form->RecreateWnd();
    EXPECT_EQ(WindowFromDC(Form->Canvas().Handle()), Form->WindowHandle());
}

TEST_F(ControlCanvas, OutsideOfPaintingItFollowsAControlWithoutAWindow) {
    auto* const label = Add<TPaintBox>(10, 10, 20, 20);
    Show();
    FillRed(label->Canvas());
    ASSERT_EQ(PixelOf(*Form, 15, 15), Red);
    ASSERT_NE(PixelOf(*Form, 60, 60), Red);
    label->SetBounds(50, 50, 30, 30);
    Form->Repaint();
    ASSERT_NE(PixelOf(*Form, 15, 15), Red);
    FillRed(label->Canvas());
    EXPECT_EQ(PixelOf(*Form, 75, 75), Red) << "at its new place, in its new size";
    EXPECT_NE(PixelOf(*Form, 15, 15), Red);
}

TEST_F(ControlCanvas, OutsideOfPaintingItFollowsAControlToAnotherParent) {
    auto* const panel = Add<TPanel>(100, 100, 100, 50);
    auto* const box = Add<TPaintBox>(10, 10, 20, 20);
    Show();
    FillRed(box->Canvas());
    box->SetParent(panel);
    Form->Repaint();
    FillRed(box->Canvas());
    EXPECT_EQ(PixelOf(*panel, 15, 15), Red);
}

TEST_F(ControlCanvas, AWindowThatGoesTakesTheContextsOfTheControlsInItAlong) {
    auto* const box = Add<TPaintBox>(10, 10, 20, 20);
    Show();
    FillRed(box->Canvas());
    Form->RecreateWnd();
    EXPECT_EQ(WindowFromDC(box->Canvas().Handle()), Form->WindowHandle());
}

} // namespace
} // namespace kx
