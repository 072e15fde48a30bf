// SPDX-License-Identifier: MIT
// The focus, and keys that move it.

#include "tests/ui/FocusPump.h"
#include "tests/ui/SampleForms.h"

#include "kx/win/CodePage.h"
#include "tests/support/TestDriver.h"
#include "tests/ui/ControlFixture.h"

namespace kx {
namespace {

using namespace test;

/// A form with one of each control, shown, with real keys.
class FocusTest : public ::testing::Test {
protected:
    FocusTest() : Form(NewForm<TAllControlsForm>(nullptr)) { Form->Show(); }
    void SetUp() override {
        ASSERT_TRUE(FocusPump([&] { return Form->Edit1->Focused(); })) << "the active control has the focus";
    }
    bool FocusIs(TWinControl* control) {
        return FocusPump([&] { return control->Focused() || IsChild(control->Handle(), GetFocus()); });
    }
    std::unique_ptr<TAllControlsForm, TFreeDeleter> Form;
};

TEST_F(FocusTest, TabWalksThroughTheControlsInTabOrder) {
    for (TWinControl* control : std::initializer_list<TWinControl*>{
             Form->CheckBox1, Form->Memo1, Form->RadioButton1, Form->ListBox1, Form->ComboBox1, Form->ComboBox2,
             Form->TabControl1, Form->ListView1, Form->OkButton, Form->CancelButton, Form->Edit1}) {
        PressKey(VK_TAB);
        ASSERT_TRUE(FocusIs(control)) << control->Name();
        EXPECT_EQ(Form->ActiveControl(), control);
    }
    PressKey(VK_TAB, {VK_SHIFT});
    EXPECT_TRUE(FocusIs(Form->CancelButton));
}

TEST_F(FocusTest, TabPassesOverDisabledAndHiddenControls) {
    Form->CheckBox1->SetEnabled(false);
    Form->Memo1->Hide();
    Form->GroupBox1->SetEnabled(false);
    PressKey(VK_TAB);
    EXPECT_TRUE(FocusIs(Form->ListBox1));
}

TEST_F(FocusTest, AnAcceleratorOfALabelMovesTheFocus) {
    Form->OkButton->SetFocus();
    PressKey('T', {VK_MENU});
    EXPECT_TRUE(FocusIs(Form->Edit1));
}

TEST_F(FocusTest, AnAcceleratorOfACheckBoxTogglesIt) {
    PressKey('A', {VK_MENU});
    ASSERT_TRUE(FocusPump([&] { return !Form->CheckBox1->Checked(); }));
    EXPECT_TRUE(FocusIs(Form->CheckBox1));
}

TEST_F(FocusTest, ArrowKeysChooseAmongRadioButtons) {
    Form->RadioButton1->SetFocus();
    PressKey(VK_DOWN);
    ASSERT_TRUE(FocusPump([&] { return Form->RadioButton2->Checked(); }));
    EXPECT_FALSE(Form->RadioButton1->Checked());
    EXPECT_TRUE(Form->RadioButton2->Focused());
    EXPECT_EQ(SendMessageA(Form->RadioButton1->Handle(), BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

TEST_F(FocusTest, ReturnPressesTheDefaultButtonAndEscapeTheCancelButton) {
    PressKey(VK_RETURN);
    ASSERT_TRUE(FocusPump([&] { return Form->ModalResult() == mrOk; }));
    EXPECT_EQ(Form->Log.back(), "ok");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(FocusPump([&] { return Form->ModalResult() == mrCancel; }));
}

TEST_F(FocusTest, ReturnPressesTheButtonThatHasTheFocus) {
    Form->CancelButton->SetFocus();
    EXPECT_EQ(GetWindowLongA(Form->CancelButton->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
    EXPECT_EQ(GetWindowLongA(Form->OkButton->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON);
    PressKey(VK_RETURN);
    ASSERT_TRUE(FocusPump([&] { return Form->ModalResult() == mrCancel; }));
    Form->Edit1->SetFocus();
    EXPECT_EQ(GetWindowLongA(Form->OkButton->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
}

TEST_F(FocusTest, ReturnMakesALineInAMemo) {
    Form->Memo1->SetFocus();
    Form->Memo1->SetText("");
    TypeText("a");
    PressKey(VK_RETURN);
    TypeText("b");
    ASSERT_TRUE(FocusPump([&] { return Form->Memo1->Text() == "a\r\nb"; }));
    EXPECT_EQ(Form->ModalResult(), mrNone);
    EXPECT_EQ(Form->Memo1->Lines()[1], "b");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(FocusPump([&] { return Form->ModalResult() == mrCancel; })) << "a memo does not want Escape";
}

TEST_F(FocusTest, TypingReachesTheEditThroughTheKeyEvents) {
    std::vector<std::string> log;
    Form->SetKeyPreview(true);
    Form->SetOnKeyPress([&](TObject*, char32_t& key) {
        log.push_back("form " + TextOfCharacter(key));
        if (key == 'x') {
            key = 0;
        }
    });
    Form->Edit1->SetOnKeyPress([&](TObject*, char32_t& key) {
        log.push_back("edit " + TextOfCharacter(key));
        if (key == 'b') {
            key = 'B';
        }
    });
    TypeText("axb");
    ASSERT_TRUE(FocusPump([&] { return Form->Edit1->Text() == "aB"; })) << Form->Edit1->Text();
    EXPECT_EQ(log, (std::vector<std::string>{"form a", "edit a", "form x", "form b", "edit b"}));
}

TEST_F(FocusTest, KeysOfAComboBoxsEditAreTheComboBoxs) {
    int downs = 0;
    int changes = 0;
    Form->ComboBox1->SetOnKeyDown([&](TObject*, uint16_t&, TShiftState) { ++downs; });
    Form->ComboBox1->SetOnChange([&](TObject*) { ++changes; });
    Form->ComboBox1->SetFocus();
    Form->ComboBox1->SelectAll();
    TypeText("z");
    ASSERT_TRUE(FocusPump([&] { return Form->ComboBox1->Text() == "z"; }));
    EXPECT_EQ(downs, 1);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(Form->ActiveControl(), Form->ComboBox1);
    PressKey(VK_TAB);
    EXPECT_TRUE(FocusIs(Form->ComboBox2));
}

TEST_F(FocusTest, EnterAndExitRunForContainersToo) {
    std::vector<std::string> log;
    const auto watch = [&](TWinControl* control, const std::string& name) {
        control->SetOnEnter([&log, name](TObject*) { log.push_back("enter " + name); });
        control->SetOnExit([&log, name](TObject*) { log.push_back("exit " + name); });
    };
    watch(Form->Edit1, "edit");
    watch(Form->GroupBox1, "group");
    watch(Form->RadioButton1, "first");
    watch(Form->RadioButton2, "second");
    Form->RadioButton1->SetFocus();
    Form->RadioButton2->SetFocus();
    Form->Edit1->SetFocus();
    EXPECT_EQ(log, (std::vector<std::string>{"exit edit", "enter group", "enter first", "exit first", "enter second",
                                             "exit second", "exit group", "enter edit"}));
}

TEST_F(FocusTest, TheFocusMovesOnFromAControlThatIsHiddenOrDisabledOrFreed) {
    Form->Edit1->SetEnabled(false);
    EXPECT_TRUE(Form->CheckBox1->Focused());
    Form->CheckBox1->Hide();
    EXPECT_TRUE(Form->Memo1->Focused());
    Form->Memo1->Free();
    EXPECT_TRUE(Form->RadioButton1->Focused());
    PressKey(VK_TAB);
    EXPECT_TRUE(FocusIs(Form->ListBox1));
}

TEST_F(FocusTest, AControlThatCannotHaveTheFocusRefusesIt) {
    Form->CheckBox1->SetEnabled(false);
    EXPECT_THROW(Form->CheckBox1->SetFocus(), EInvalidOperation);
    EXPECT_THROW(Form->SetActiveControl(Form->CheckBox1), EInvalidOperation);
    EXPECT_TRUE(Form->Edit1->Focused());
}

TEST_F(FocusTest, ARightClickOpensTheControlsPopupMenu) {
    int popups = 0;
    Form->PopupMenu1->SetOnPopup([&](TObject*) { ++popups; });
    RunDialog(
        [&] {
            Click(Form->ListBox1->Handle(), mbRight);
            return FocusPump([&] { return !Form->Log.empty() && Form->Log.back() == "item"; });
        },
        {{"the menu opens", [] { return ShownMenu() != nullptr; }, [] { PressKey('I'); }}});
    EXPECT_EQ(popups, 1);
    EXPECT_EQ(Form->PopupMenu1->PopupComponent(), Form->ListBox1);
}

} // namespace
} // namespace kx
