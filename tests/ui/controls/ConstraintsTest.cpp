// SPDX-License-Identifier: MIT
// The limits of sizes that handlers set.

#include "kx/ui/widgets/ExtCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

#include <limits>

namespace kx {
namespace {

using namespace test;

class ConstrainedResize : public TFormTest {
protected:
    TPoint SizeOf(TControl& control) { return {control.Width(), control.Height()}; }

    TPaintBox* Box = Add<TPaintBox>(0, 0, 50, 40);
    TPanel* Panel = Add<TPanel>(60, 0, 50, 40);
};

TEST_F(ConstrainedResize, AHandlerLimitsTheSizeAnew) {
    for (TControl* control : {static_cast<TControl*>(Box), static_cast<TControl*>(Panel)}) {
        control->Constraints().SetMinWidth(30);
        control->Constraints().SetMaxHeight(90);
        std::vector<int> got;
        control->SetOnConstrainedResize(
            [&](TObject* sender, int& minWidth, int& minHeight, int& maxWidth, int& maxHeight) {
                EXPECT_EQ(sender, control);
                got = {minWidth, minHeight, maxWidth, maxHeight};
                minWidth = 45;
                minHeight = 20;
                maxWidth = 100;
                maxHeight = 60;
            });
        control->SetBounds(0, 0, 10, 10);
        EXPECT_EQ(got, (std::vector<int>{30, 0, 0, 90}));
        EXPECT_EQ(SizeOf(*control), (TPoint{45, 20}));
        control->SetBounds(0, 0, 500, 500);
        EXPECT_EQ(SizeOf(*control), (TPoint{100, 60}));
        control->SetBounds(0, 0, 46, 59);
        EXPECT_EQ(SizeOf(*control), (TPoint{46, 59})) << "within the limits";
        control->SetBounds(0, 0, 99, 21);
        EXPECT_EQ(SizeOf(*control), (TPoint{99, 21}));
        EXPECT_EQ(control->Constraints().MinWidth(), 30) << "for that time only";
        control->SetOnConstrainedResize(nullptr);
        control->SetBounds(0, 0, 500, 500);
        EXPECT_EQ(SizeOf(*control), (TPoint{500, 90}));
    }
    Show();
    Panel->SetOnConstrainedResize([](TObject*, int&, int&, int& maxWidth, int&) { maxWidth = 70; });
    Panel->SetBounds(0, 0, 500, 50);
    EXPECT_EQ(SizeOf(*Panel), (TPoint{70, 50}));
}

TEST_F(ConstrainedResize, TheUserGetsAFormNoFurther) {
    Form->Constraints().SetMinWidth(150);
    Show();
    Form->SetOnConstrainedResize([](TObject*, int& minWidth, int& minHeight, int& maxWidth, int& maxHeight) {
        EXPECT_EQ(minWidth, 150);
        minHeight = 160;
        maxWidth = 500;
        maxHeight = 400;
    });
    MINMAXINFO info{};
    SendMessageA(Form->Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.ptMinTrackSize.x, 150);
    EXPECT_EQ(info.ptMinTrackSize.y, 160);
    EXPECT_EQ(info.ptMaxTrackSize.x, 500);
    EXPECT_EQ(info.ptMaxTrackSize.y, 400);
    SetWindowPos(Form->Handle(), nullptr, 0, 0, 50, 50, SWP_NOZORDER | SWP_NOMOVE);
    EXPECT_EQ(SizeOf(*Form), (TPoint{150, 160}));
    Form->SetBounds(0, 0, 900, 900);
    EXPECT_EQ(SizeOf(*Form), (TPoint{500, 400}));
}

TEST_F(ConstrainedResize, AHandlerMayFreeTheControl) {
    Show();
    Box->SetOnConstrainedResize([this](TObject*, int&, int&, int&, int&) { Box->Free(); });
    Box->SetWidth(5);
    Panel->SetOnConstrainedResize([this](TObject*, int&, int&, int&, int&) { Panel->Free(); });
    Panel->SetWidth(5);
    EXPECT_EQ(Form->ControlCount(), 0);
    Form->SetOnConstrainedResize([this](TObject*, int&, int&, int&, int&) { Form.reset(); });
    SetWindowPos(Form->Handle(), nullptr, 0, 0, 50, 50, SWP_NOZORDER | SWP_NOMOVE);
    EXPECT_FALSE(Form);
}

TEST_F(ConstrainedResize, IsAPropertyOfFormFiles) {
    const TPropInfo* const property = TForm::StaticClass().FindProperty("OnConstrainedResize");
    ASSERT_TRUE(property);
    EXPECT_EQ(property->Kind, TTypeKind::Event);
}

TEST_F(ConstrainedResize, LimitsActAtOnceAndAreNeverNegative) {
    Panel->SetBounds(0, 0, 200, 200);
    Box->Constraints().SetMaxWidth(45);
    Box->Constraints().SetMinHeight(60);
    EXPECT_EQ(SizeOf(*Box), (TPoint{45, 60}));
    Panel->SetConstraints(Box->Constraints());
    EXPECT_EQ(SizeOf(*Panel), (TPoint{45, 200}));
    EXPECT_EQ(Panel->Constraints().MinHeight(), 60);
    Panel->Constraints().SetMaxWidth(-1);
    EXPECT_EQ(Panel->Constraints().MaxWidth(), 0);
}

TEST_F(ConstrainedResize, NobodyIsAskedOrToldBeforeTheFileIsRead) {
    int asked = 0;
    int told = 0;
    Box->SetOnConstrainedResize([&](TObject*, int&, int&, int&, int&) { ++asked; });
    Box->SetOnResize([&](TObject*) { ++told; });
    ReadFormOver(*Box, "object B: TPaintBox Width = 77 Height = 66 end");
    EXPECT_EQ(SizeOf(*Box), (TPoint{77, 66}));
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(told, 0);
    Box->SetWidth(78);
    EXPECT_GT(asked, 0);
    EXPECT_EQ(told, 1);
}

} // namespace
} // namespace kx
