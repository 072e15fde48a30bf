// SPDX-License-Identifier: MIT
// Forms that are read from right to left.

#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"
#include "tests/support/Reader.h"
#include "tests/ui/MirroredForm.h"

#include "kx/ui/StandardClasses.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

class FlippedControls : public TFormTest {};

TEST_F(FlippedControls, ExchangeTheirSides) {
    Form->SetBorderStyle(bsNone);
    auto* const panel = Add<TPanel>(10, 20, 200, 100);
    auto* const edit = Add<TEdit>(5, 30, 50, 20, panel);
    auto* const anchored = Add<TEdit>(60, 150, 50, 20);
    anchored->SetAnchors({akTop, akRight});
    auto* const both = Add<TEdit>(60, 180, 300, 20);
    both->SetAnchors({akLeft, akTop, akRight});
    auto* const side = Add<TPanel>(0, 0, 30, 300);
    side->SetAlign(alLeft);
    Form->FlipChildren(false);
    EXPECT_EQ(panel->BoundsRect(), (TRect{190, 20, 390, 120}));
    EXPECT_EQ(edit->Left(), 5) << "only this level";
    EXPECT_EQ(anchored->BoundsRect(), (TRect{290, 150, 340, 170}));
    EXPECT_EQ(anchored->Anchors(), (TAnchors{akTop, akLeft}));
    EXPECT_EQ(both->BoundsRect(), (TRect{40, 180, 340, 200}));
    EXPECT_EQ(both->Anchors(), (TAnchors{akLeft, akTop, akRight}));
    EXPECT_EQ(side->Align(), alRight);
    EXPECT_EQ(side->BoundsRect(), (TRect{370, 0, 400, 300}));
    Form->FlipChildren(true);
    EXPECT_EQ(panel->BoundsRect(), (TRect{10, 20, 210, 120}));
    EXPECT_EQ(edit->Left(), 200 - 5 - 50);
    EXPECT_EQ(anchored->Anchors(), (TAnchors{akTop, akRight}));
    EXPECT_EQ(side->BoundsRect(), (TRect{0, 0, 30, 300}));
    EXPECT_EQ(side->Align(), alLeft);
    Form->SetWidth(500);
    EXPECT_EQ(anchored->Left(), 160) << "it keeps its distance from the right edge";
    EXPECT_EQ(both->BoundsRect(), (TRect{60, 180, 460, 200}));
    EXPECT_EQ(panel->Left(), 10);
}

TEST_F(FlippedControls, KeepWhatTheirControlsArrange) {
    auto* const grid = Add<TStringGrid>(10, 20, 200, 100);
    auto* const label = Add<TLabel>(5, 5, 50, 20, grid);
    Form->FlipChildren(true);
    EXPECT_EQ(grid->Left(), Form->ClientWidth() - 10 - 200);
    EXPECT_EQ(label->Left(), 5) << "only controls that are made to hold others are reversed inside";
}

TEST_F(FlippedControls, AHandlerMayFreeOthersMeanwhile) {
    auto* const first = Add<TPanel>(10, 20, 20, 20);
    auto* const second = Add<TPanel>(10, 60, 20, 20);
    auto* const third = Add<TPanel>(10, 90, 20, 20);
    Show();
    first->SetAlign(alLeft);
    first->SetOnResize([&](TObject*) { second->Free(); });
    first->SetHeight(1);
    Form->FlipChildren(true);
    EXPECT_EQ(third->Left(), Form->ClientWidth() - 10 - 20);
}

/// Reading order of the application for the length of a scope.
class TReadingScope {
public:
    explicit TReadingScope(TBiDiMode mode) { Application().SetBiDiMode(mode); }
    TReadingScope(const TReadingScope&) = delete;
    TReadingScope& operator=(const TReadingScope&) = delete;
    ~TReadingScope() { Application().SetBiDiMode(bdLeftToRight); }
};

TEST(ReadingOrder, FormsFollowTheApplication) {
    const TFormPtr follower(NewForm<TForm>(nullptr));
    const TFormPtr own(NewForm<TForm>(nullptr));
    own->SetBiDiMode(bdRightToLeftReadingOnly);
    auto* const label = new TLabel(follower.get());
    label->SetParent(follower.get());
    {
        const TReadingScope reading(bdRightToLeft);
        EXPECT_EQ(follower->BiDiMode(), bdRightToLeft);
        EXPECT_TRUE(follower->ParentBiDiMode());
        EXPECT_EQ(label->BiDiMode(), bdRightToLeft);
        EXPECT_EQ(own->BiDiMode(), bdRightToLeftReadingOnly);
        const TFormPtr later(NewForm<TForm>(nullptr));
        EXPECT_EQ(later->BiDiMode(), bdRightToLeft);
    }
    EXPECT_EQ(follower->BiDiMode(), bdLeftToRight);
    EXPECT_EQ(own->BiDiMode(), bdRightToLeftReadingOnly);
}

TEST(ReadingOrder, AFormOfAFileIsReversedOnce) {
    const std::string file = "object Form: TForm\n ClientWidth = 200\n ClientHeight = 100\n BorderStyle = bsNone\n"
                             " object Edit: TEdit\n Left = 10\n Top = 10\n Width = 50\n Height = 20\n end\nend\n";
    const auto read = [&] {
        TFormPtr form(new TForm(nullptr));
        ReadFormOver(*form, file);
        return form;
    };
    RegisterStandardClasses();
    EXPECT_EQ(dynamic_cast<TEdit&>(*read()->Controls(0)).Left(), 10);
    const TReadingScope reading(bdRightToLeft);
    EXPECT_EQ(dynamic_cast<TEdit&>(*read()->Controls(0)).Left(), 200 - 10 - 50);
    Application().SetBiDiMode(bdRightToLeftNoAlign);
    EXPECT_EQ(dynamic_cast<TEdit&>(*read()->Controls(0)).Left(), 10) << "only the reading changes";
}

class ReadFromTheRight : public TFormTest {
protected:
    ReadFromTheRight() { Form->SetBiDiMode(bdRightToLeft); }
    static LONG StyleOf(TWinControl& control) { return GetWindowLongA(control.Handle(), GWL_STYLE); }
};

TEST_F(ReadFromTheRight, BoxesHaveTheirMarksAtTheRight) {
    auto* const box = Add<TCheckBox>(10, 10, 100, 20);
    auto* const radio = Add<TRadioButton>(10, 40, 100, 20);
    box->SetChecked(true);
    Show();
    EXPECT_NE(StyleOf(*box) & BS_RIGHTBUTTON, 0);
    EXPECT_NE(StyleOf(*radio) & BS_RIGHTBUTTON, 0);
    Form->SetBiDiMode(bdRightToLeftNoAlign);
    EXPECT_EQ(StyleOf(*box) & BS_RIGHTBUTTON, 0);
    EXPECT_EQ(StyleOf(*radio) & BS_RIGHTBUTTON, 0);
    EXPECT_EQ(SendMessageA(box->Handle(), BM_GETCHECK, 0, 0), BST_CHECKED);
}

class MirroredWindow : public ::testing::Test {
protected:
    MirroredWindow() {
        Form->SetBorderStyle(bsNone);
        Form->SetBounds(100, 100, 400, 300);
        Label->SetParent(Form.get());
        Label->SetAutoSize(false);
        Label->SetBounds(10, 20, 50, 30);
        Panel->SetParent(Form.get());
        Panel->SetBounds(100, 50, 200, 100);
        Edit->SetParent(Panel);
        Edit->SetBounds(20, 30, 60, 20);
        Form->Show();
    }
    TFormPtr Form{NewForm<TMirroredForm>(nullptr)};
    TLabel* Label = new TLabel(Form.get());
    TPanel* Panel = new TPanel(Form.get());
    TEdit* Edit = new TEdit(Form.get());
};

TEST_F(MirroredWindow, CoordinatesCountFromTheRight) {
    ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    Screenshot("mirrored-form", Form->Handle());
    ASSERT_TRUE(IsMirrored(Form->Handle()));
    ASSERT_TRUE(IsMirrored(Panel->Handle())) << "inherited";
    EXPECT_EQ(ScreenRectOf(Panel->Handle()), (TRect{200, 150, 400, 250}));
    EXPECT_EQ(Panel->BoundsRect(), (TRect{100, 50, 300, 150})) << "in the form's coordinates";
    for (const TPoint& p : {TPoint{0, 0}, TPoint{7, 9}, TPoint{-5, 300}}) {
        POINT system = ToPOINT(p);
        ::ClientToScreen(Panel->Handle(), &system);
        EXPECT_EQ(Panel->ClientToScreen(p), FromPOINT(system)) << p.X;
        EXPECT_EQ(Panel->ScreenToClient(FromPOINT(system)), p) << p.X;
        POINT onForm{p.X + Label->Left(), p.Y + Label->Top()};
        ::ClientToScreen(Form->Handle(), &onForm);
        EXPECT_EQ(Label->ClientToScreen(p), FromPOINT(onForm)) << p.X;
        EXPECT_EQ(Label->ScreenToClient(FromPOINT(onForm)), p) << p.X;
    }
    EXPECT_EQ(Label->ClientOrigin(), Label->ClientToScreen({0, 0}));
}

TEST_F(MirroredWindow, ControlsAreFoundWhereTheyAreSeen) {
    ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    EXPECT_EQ(FindDragTarget({500 - 10 - 25, 100 + 20 + 15}, false), Label);
    EXPECT_EQ(FindDragTarget({100 + 10 + 25, 100 + 20 + 15}, false), Form.get());
    EXPECT_EQ(FindVCLWindow(CenterOf(Edit->Handle())), Edit);
}

TEST_F(MirroredWindow, ScreenReadersFindControlsWhereTheyAreSeen) {
    ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    Label->SetCaption("Name");
    const TSeen form = TSeen::Of(Form->Handle());
    EXPECT_EQ(form.Child("Name").Rect(), (TRect{440, 120, 490, 150}));
    EXPECT_EQ(TSeen::AtPoint(form, 445, 125).Name(), "Name");
    EXPECT_NE(TSeen::AtPoint(form, 115, 125).Name(), "Name");
    EXPECT_EQ(TSeen::Of(Panel->Handle()).Rect(), ScreenRectOf(Panel->Handle()));
    const TPoint middle = CenterOf(Panel->Handle());
    EXPECT_EQ(TSeen::AtPoint(form, middle.X, middle.Y).Window(), Panel->Handle());
}

TEST_F(MirroredWindow, AMovedControlKnowsWhereItIs) {
    Panel->SetBounds(40, 60, 100, 80);
    EXPECT_EQ(ScreenRectOf(Panel->Handle()), (TRect{360, 160, 460, 240}));
    EXPECT_EQ(Panel->BoundsRect(), (TRect{40, 60, 140, 140}));
    SetWindowPos(Panel->Handle(), nullptr, 70, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_EQ(Panel->Left(), 70);
    EXPECT_EQ(Edit->Left(), 20);
}

TEST_F(MirroredWindow, ClicksReachGraphicControls) {
    ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
    TPoint at{-1, -1};
    Label->SetOnMouseDown([&](TObject*, TMouseButton, TShiftState, int x, int y) { at = {x, y}; });
    ClickAt(Label->ClientToScreen({12, 7}));
    EXPECT_TRUE(PumpUntil([&] { return at == TPoint{12, 7}; })) << at.X << "," << at.Y;
}

/// The point and the alignment at which a menu opens below a button.
class MenuBelow : public TFormTest {
protected:
    void Open(TToolButton& button) {
        button.SetDropdownMenu(&Menu);
        TTestDriver({{"a menu", [] { return ShownMenu() != nullptr; },
                      [this] {
                          Screenshot("menu-below");
                          Rect = ScreenRectOf(ShownMenu());
                          PressKey(VK_ESCAPE);
                      }}})
            .Run([&] { return button.CheckMenuDropdown(); });
    }
    TToolButton* AddButton(TWinControl& form) {
        auto* const bar = new TToolBar(&form);
        bar->SetParent(&form);
        auto* const button = new TToolButton(&form);
        button->SetParent(bar);
        auto* const item = new TMenuItem(&Menu);
        item->SetCaption("An item with a long text");
        Menu.Items().Add(item);
        return button;
    }
    TPopupMenu Menu;
    TRect Rect;
};

TEST_F(MenuBelow, OpensUnderTheLeftEdge) {
    TToolButton* const button = AddButton(*Form);
    Show();
    Open(*button);
    EXPECT_EQ(Rect.Left, button->ClientToScreen({0, 0}).X);
}

TEST_F(MenuBelow, OpensUnderTheRightEdgeWhereTheButtonIsReadFromTheRight) {
    TToolButton* const button = AddButton(*Form);
    Form->SetBounds(300, 100, 400, 300);
    Form->SetBiDiMode(bdRightToLeft);
    Show();
    Open(*button);
    EXPECT_EQ(Rect.Right, button->ClientToScreen({button->Width(), 0}).X);
}

TEST_F(MenuBelow, OpensUnderTheRightEdgeInAMirroredWindow) {
    const TFormPtr mirrored(NewForm<TMirroredForm>(nullptr));
    mirrored->SetBounds(100, 100, 400, 300);
    TToolButton* const button = AddButton(*mirrored);
    mirrored->Show();
    ASSERT_TRUE(PumpUntil([&] { return mirrored->Active(); }));
    Open(*button);
    EXPECT_EQ(Rect.Right, button->ClientToScreen({0, 0}).X);
}

} // namespace
} // namespace kx
