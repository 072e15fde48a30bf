// SPDX-License-Identifier: MIT
// The keyboard among the controls of forms inside a dialog's window.

#include "tests/ui/HostDialog.h"

#include "kx/ui/forms/Frames.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

namespace kx {
namespace {

using namespace test;

class FormsDockingKeys : public ::testing::Test {
protected:
    FormsDockingKeys() {
        Form->SetBorderStyle(bsNone);
        Form->SetParentWindow(Host.Window);
        Form->SetBounds(10, 70, 480, 300);
    }
    template <class T> T* Add(TWinControl* parent, int top) {
        auto* const control = new T(Form.get());
        control->SetParent(parent);
        control->SetBounds(5, top, 100, 25);
        return control;
    }
    void Show() {
        Form->Show();
        SetForegroundWindow(Host.Window);
        ::SetFocus(GetDlgItem(Host.Window, IDCANCEL));
        ASSERT_TRUE(FocusIs(GetDlgItem(Host.Window, IDCANCEL)));
    }
    bool FocusIs(HWND window) {
        return Host.PumpUntil([&] { return GetFocus() == window; });
    }
    bool Goes(WORD key, TWinControl& control, std::initializer_list<WORD> held = {}) {
        PressKey(key, held);
        return FocusIs(control.Handle());
    }

    THostDialog Host;
    TFormPtr Form{NewForm<TForm>(nullptr)};
};

TEST_F(FormsDockingKeys, TabGoesThroughPanelsFramesAndPages) {
    auto* const panel = Add<TPanel>(Form.get(), 0);
    panel->SetBounds(0, 0, 200, 60);
    auto* const inPanel = Add<TEdit>(panel, 5);
    auto* const frame = Add<TFrame>(Form.get(), 60);
    frame->SetBounds(0, 60, 200, 60);
    auto* const inFrame = Add<TEdit>(frame, 5);
    auto* const pages = Add<TPageControl>(Form.get(), 120);
    pages->SetBounds(0, 120, 200, 80);
    auto* const page = new TTabSheet(Form.get());
    page->SetPageControl(pages);
    auto* const inPage = Add<TEdit>(page, 5);
    auto* const hidden = new TTabSheet(Form.get());
    hidden->SetPageControl(pages);
    Add<TEdit>(hidden, 5);
    auto* const last = Add<TEdit>(Form.get(), 220);
    pages->SetActivePage(page);
    Show();
    for (TWinControl* control : std::initializer_list<TWinControl*>{inPanel, inFrame, inPage, last}) {
        ASSERT_TRUE(Goes(VK_TAB, *control)) << control->Parent()->ClassName();
    }
    PressKey(VK_TAB);
    ASSERT_TRUE(FocusIs(GetDlgItem(Host.Window, 100))) << "and out again";
    for (TWinControl* control : std::initializer_list<TWinControl*>{last, inPage, inFrame, inPanel}) {
        ASSERT_TRUE(Goes(VK_TAB, *control, {VK_SHIFT})) << control->Parent()->ClassName();
    }
    PressKey(VK_TAB, {VK_SHIFT});
    EXPECT_TRUE(FocusIs(GetDlgItem(Host.Window, IDCANCEL)));
}

TEST_F(FormsDockingKeys, ArrowsChooseInARadioGroup) {
    auto* const group = Add<TRadioGroup>(Form.get(), 0);
    group->SetBounds(0, 0, 200, 100);
    for (const char* text : {"One", "Two", "Three"}) {
        group->Items().Add(text);
    }
    group->SetItemIndex(1);
    auto* const edit = Add<TEdit>(Form.get(), 120);
    Show();
    const auto chosen = [&](int index) {
        return Host.PumpUntil([&] {
            const TWinControl* const focused = FindControl(GetFocus());
            return group->ItemIndex() == index && focused && focused->Parent() == group;
        });
    };
    PressKey(VK_TAB);
    ASSERT_TRUE(chosen(1)) << "Tab goes to the chosen one";
    PressKey(VK_DOWN);
    EXPECT_TRUE(chosen(2));
    PressKey(VK_UP);
    EXPECT_TRUE(chosen(1));
    ASSERT_TRUE(Goes(VK_TAB, *edit)) << "and out of the group";
    PressKey(VK_TAB, {VK_SHIFT});
    EXPECT_TRUE(chosen(1));
}

TEST_F(FormsDockingKeys, CtrlTabChangesThePage) {
    auto* const pages = Add<TPageControl>(Form.get(), 0);
    pages->SetBounds(0, 0, 200, 100);
    std::vector<TTabSheet*> sheets;
    std::vector<TEdit*> edits;
    for (int i = 0; i < 2; ++i) {
        sheets.push_back(new TTabSheet(Form.get()));
        sheets.back()->SetPageControl(pages);
        edits.push_back(Add<TEdit>(sheets.back(), 5));
    }
    pages->SetActivePage(sheets[0]);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *edits[0]));
    PressKey(VK_TAB, {VK_CONTROL});
    EXPECT_TRUE(Host.PumpUntil([&] { return pages->ActivePage() == sheets[1]; }));
    EXPECT_TRUE(FocusIs(edits[1]->Handle()));
}

TEST_F(FormsDockingKeys, CtrlTabIsTabWhereThereAreNoPages) {
    auto* const first = Add<TEdit>(Form.get(), 0);
    auto* const second = Add<TEdit>(Form.get(), 30);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *first));
    EXPECT_TRUE(Goes(VK_TAB, *second, {VK_CONTROL}));
    EXPECT_TRUE(Goes(VK_TAB, *first, {VK_CONTROL, VK_SHIFT}));
    PressKey(VK_TAB, {VK_CONTROL, VK_SHIFT});
    EXPECT_TRUE(FocusIs(GetDlgItem(Host.Window, IDCANCEL)));
}

TEST_F(FormsDockingKeys, AToolBarKeepsArrowsAndTheReturnThatPressesItsButton) {
    auto* const bar = new TToolBar(Form.get());
    bar->SetParent(Form.get());
    bar->SetTabStop(true);
    int clicks = 0;
    for (int i = 0; i < 2; ++i) {
        auto* const button = new TToolButton(Form.get());
        button->SetParent(bar);
        button->SetOnClick([&](TObject*) { ++clicks; });
    }
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *bar));
    const auto at = [&](int index) {
        return Host.PumpUntil([&] { return bar->KeyButton() && bar->KeyButton()->Index() == index; });
    };
    for (const auto& [key, index] : {std::pair{VK_RIGHT, 1}, {VK_LEFT, 0}, {VK_DOWN, 1}, {VK_UP, 0}}) {
        PressKey(static_cast<WORD>(key));
        ASSERT_TRUE(at(index)) << key;
    }
    EXPECT_TRUE(bar->Focused());
    PressKey(VK_RETURN);
    EXPECT_TRUE(Host.PumpUntil([&] { return clicks == 1; }));
    EXPECT_EQ(Host.Ok, 0);
}

TEST_F(FormsDockingKeys, OnlyAPlainReturnThatNobodyHasUsedPressesAButton) {
    auto* const button = Add<TButton>(Form.get(), 0);
    int clicks = 0;
    button->SetOnClick([&](TObject*) { ++clicks; });
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *button));
    PressKey(VK_RETURN);
    EXPECT_TRUE(Host.PumpUntil([&] { return clicks == 1; }));
    EXPECT_EQ(Host.Ok, 0);
    PressKey(VK_RETURN, {VK_SHIFT});
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(Host.PumpUntil([&] { return Host.Cancel == 1; }));
    EXPECT_EQ(clicks, 1);
    button->SetOnKeyDown([](TObject*, uint16_t& key, TShiftState) { key = 0; });
    PressKey(VK_RETURN);
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(Host.PumpUntil([&] { return Host.Cancel == 2; }));
    EXPECT_EQ(clicks, 1) << "the handler has used it up";
}

TEST_F(FormsDockingKeys, AButtonMayBeFreedByTheKeyThatPressesIt) {
    auto* button = Add<TButton>(Form.get(), 0);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *button));
    button->SetOnKeyDown([&](TObject*, uint16_t&, TShiftState) { std::exchange(button, nullptr)->Free(); });
    PressKey(VK_RETURN);
    EXPECT_TRUE(Host.PumpUntil([&] { return button == nullptr; }));
}

TEST_F(FormsDockingKeys, TheFocusOfTheLastControlGoesToTheDialog) {
    auto* const edit = Add<TEdit>(Form.get(), 0);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *edit));
    edit->SetEnabled(false);
    EXPECT_EQ(GetFocus(), GetDlgItem(Host.Window, 100));
    EXPECT_EQ(Form->ActiveControl(), nullptr);
}

TEST_F(FormsDockingKeys, TheFocusGoesToTheNextControlOfTheForm) {
    auto* const first = Add<TEdit>(Form.get(), 0);
    auto* const second = Add<TEdit>(Form.get(), 30);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *first));
    first->SetVisible(false);
    EXPECT_EQ(GetFocus(), second->Handle());
    second->Free();
    EXPECT_EQ(GetFocus(), GetDlgItem(Host.Window, 100));
}

TEST_F(FormsDockingKeys, AFormThatLeavesGivesTheFocusToTheDialog) {
    auto* const edit = Add<TEdit>(Form.get(), 0);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *edit));
    Form->Hide();
    EXPECT_EQ(GetFocus(), GetDlgItem(Host.Window, 100));
    Form->SetParentWindow(nullptr);
    EXPECT_EQ(GetFocus(), GetDlgItem(Host.Window, 100));
}

TEST_F(FormsDockingKeys, AFormThatHasAllThatCanHaveTheFocusLeavesItToTheDialog) {
    auto* const first = Add<TEdit>(Form.get(), 0);
    Add<TEdit>(Form.get(), 30);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *first));
    for (const int id : {100, IDOK, IDCANCEL}) {
        EnableWindow(GetDlgItem(Host.Window, id), FALSE);
    }
    Form->Hide(); // who asks the system for the next control goes round in the form for ever
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(Host.PumpUntil([&] { return Host.Cancel == 1; })) << "keys still reach the dialog";
}

TEST_F(FormsDockingKeys, AFormThatLeavesAHiddenDialogMovesNoFocusInIt) {
    auto* const edit = Add<TEdit>(Form.get(), 0);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *edit));
    ShowWindow(Host.Window, SW_HIDE);
    ::SetFocus(edit->Handle());
    edit->SetEnabled(false);
    EXPECT_NE(GetFocus(), GetDlgItem(Host.Window, 100));
    EXPECT_EQ(Form->ActiveControl(), nullptr);
}

TEST_F(FormsDockingKeys, AControlThatCannotHaveTheFocusAnyMoreIsNoLongerTheActiveOne) {
    auto* const first = Add<TEdit>(Form.get(), 0);
    Add<TEdit>(Form.get(), 30);
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *first));
    ::SetFocus(GetDlgItem(Host.Window, 100));
    ASSERT_EQ(Form->ActiveControl(), first);
    first->SetEnabled(false);
    EXPECT_EQ(Form->ActiveControl(), nullptr);
}

TEST_F(FormsDockingKeys, AControlIsExitedWhenTheFocusStaysInTheDialogOnly) {
    auto* const edit = Add<TEdit>(Form.get(), 0);
    int exits = 0;
    edit->SetOnExit([&](TObject*) { ++exits; });
    Show();
    ASSERT_TRUE(Goes(VK_TAB, *edit));
    const TFormPtr other(NewForm<TForm>(nullptr));
    auto* const outside = new TEdit(other.get());
    outside->SetParent(other.get());
    other->Show();
    ::SetFocus(outside->Handle());
    ASSERT_TRUE(FocusIs(outside->Handle()));
    EXPECT_EQ(exits, 0) << "it has the focus of its dialog";
    ::SetFocus(edit->Handle());
    ASSERT_TRUE(FocusIs(edit->Handle()));
    EXPECT_EQ(exits, 0);
    ::SetFocus(GetDlgItem(Host.Window, 100));
    EXPECT_EQ(exits, 1);
}

TEST_F(FormsDockingKeys, WhereNobodyCanHaveTheFocusTheFormHasIt) {
    auto* const edit = Add<TEdit>(Form.get(), 0);
    Show();
    for (const int id : {100, IDOK, IDCANCEL}) {
        EnableWindow(GetDlgItem(Host.Window, id), FALSE);
    }
    edit->SetFocus();
    edit->SetEnabled(false);
    EXPECT_EQ(GetFocus(), Form->Handle()) << "where keys still reach the dialog";
}

} // namespace
} // namespace kx
