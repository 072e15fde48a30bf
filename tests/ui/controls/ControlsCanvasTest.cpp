// What a control's canvas draws on.

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/TestDriver.h"

#include <gtest/gtest.h>
#include <memory>

namespace kx {
namespace {

using namespace test;

using TFormPtr = std::unique_ptr<TForm, TFreeDeleter>;

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

TEST(ControlCanvas, AFormThatPaintsItselfDrawsOnWhatItIsGivenFromItsFirstPaintingOn) {
    const std::unique_ptr<TSelfPaintingForm, TFreeDeleter> form(NewForm<TSelfPaintingForm>(nullptr));
    form->SetDoubleBuffered(true); // the picture in memory is not the window's
    form->Show();
    form->Repaint();
    ASSERT_NE(form->Given, nullptr);
    EXPECT_EQ(form->Used, form->Given);
}

TEST(ControlCanvas, OutsideOfPaintingItFollowsAWindowThatIsMadeAnew) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const panel = new TPanel(form.get());
    panel->SetBounds(20, 20, 100, 50);
    panel->SetParent(form.get());
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    FillRed(panel->Canvas());
    ASSERT_EQ(PixelOf(*panel, 50, 25), Red);
    panel->RecreateWnd();
    panel->Repaint();
    ASSERT_NE(PixelOf(*panel, 50, 25), Red);
    FillRed(panel->Canvas());
    EXPECT_EQ(PixelOf(*panel, 50, 25), Red);
}

TEST(ControlCanvas, OutsideOfPaintingItFollowsAFormsWindowToo) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    const HDC before = form->Canvas().Handle();
    ASSERT_EQ(WindowFromDC(before), form->WindowHandle());
    form->RecreateWnd();
    EXPECT_EQ(WindowFromDC(form->Canvas().Handle()), form->WindowHandle());
}

TEST(ControlCanvas, OutsideOfPaintingItFollowsAControlWithoutAWindow) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const label = new TPaintBox(form.get());
    label->SetBounds(10, 10, 20, 20);
    label->SetParent(form.get());
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    FillRed(label->Canvas());
    ASSERT_EQ(PixelOf(*form, 15, 15), Red);
    ASSERT_NE(PixelOf(*form, 60, 60), Red);
    label->SetBounds(50, 50, 30, 30);
    form->Repaint();
    ASSERT_NE(PixelOf(*form, 15, 15), Red);
    FillRed(label->Canvas());
    EXPECT_EQ(PixelOf(*form, 75, 75), Red) << "at its new place, in its new size";
    EXPECT_NE(PixelOf(*form, 15, 15), Red);
}

TEST(ControlCanvas, OutsideOfPaintingItFollowsAControlToAnotherParent) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const panel = new TPanel(form.get());
    panel->SetBounds(100, 100, 100, 50);
    panel->SetParent(form.get());
    auto* const box = new TPaintBox(form.get());
    box->SetBounds(10, 10, 20, 20);
    box->SetParent(form.get());
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    FillRed(box->Canvas());
    box->SetParent(panel);
    form->Repaint();
    FillRed(box->Canvas());
    EXPECT_EQ(PixelOf(*panel, 15, 15), Red);
}

TEST(ControlCanvas, AWindowThatGoesTakesTheContextsOfTheControlsInItAlong) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const box = new TPaintBox(form.get());
    box->SetBounds(10, 10, 20, 20);
    box->SetParent(form.get());
    form->Show();
    ASSERT_TRUE(PumpUntil([&] { return form->Active(); }));
    FillRed(box->Canvas());
    form->RecreateWnd();
    EXPECT_EQ(WindowFromDC(box->Canvas().Handle()), form->WindowHandle());
}

} // namespace
} // namespace kx
