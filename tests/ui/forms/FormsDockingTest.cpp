// SPDX-License-Identifier: MIT
// Forms inside a dialog's window.

#include "tests/ui/HostDialog.h"
#include "tests/ui/SampleForms.h"

#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <algorithm>

// Forms inside windows that are not the framework's.

namespace kx {
namespace {

using namespace test;

class FormsDocking : public ::testing::Test {
protected:
    FormsDocking() : Form(NewForm<TAllControlsForm>(nullptr)) {}
    void Dock() {
        Form->SetBorderStyle(bsNone);
        Form->SetParentWindow(Host.Window);
        Form->SetBounds(10, 70, 480, 300);
        Form->Show();
    }
    bool FocusIs(HWND window) {
        return Host.PumpUntil([&] { return GetFocus() == window || IsChild(window, GetFocus()); });
    }
    THostDialog Host;
    std::unique_ptr<TAllControlsForm, TFreeDeleter> Form;
};

TEST_F(FormsDocking, AShownFormBecomesAChildInPlaceAndATopLevelFormAgain) {
    Form->Edit1->SetAutoSelect(false); // else all of it is selected when it is entered again
    Form->Show();
    const HWND window = Form->Handle();
    const HWND edit = Form->Edit1->Handle();
    SetWindowTextA(edit, "typed");
    SendMessageA(edit, EM_SETSEL, 1, 3);
    const int width = Form->Width();
    const int height = Form->Height();

    Form->SetBorderStyle(bsNone);
    Form->SetParentWindow(Host.Window);
    EXPECT_EQ(Form->WindowHandle(), window) << "the same window";
    EXPECT_EQ(GetParent(window), Host.Window);
    EXPECT_NE(GetWindowLongA(window, GWL_STYLE) & WS_CHILD, 0);
    EXPECT_NE(GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT, 0);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_EQ(Form->Width(), width);
    EXPECT_EQ(Form->Height(), height);
    EXPECT_EQ(Form->Edit1->Handle(), edit);
    EXPECT_TRUE(Form->IsDocked());
    Form->SetBounds(5, 60, 200, 100);
    EXPECT_EQ(RectIn(Host.Window, window), (TRect{5, 60, 205, 160}));

    Form->Hide();
    Form->SetParentWindow(nullptr);
    EXPECT_EQ(Form->WindowHandle(), window);
    EXPECT_EQ(GetAncestor(window, GA_PARENT), GetDesktopWindow());
    EXPECT_EQ(GetWindowLongA(window, GWL_STYLE) & WS_CHILD, 0);
    EXPECT_EQ(GetWindow(window, GW_OWNER), Application().Handle());
    Form->SetBorderStyle(bsSizeable);
    Form->SetBounds(50, 50, 300, 200);
    Form->Show();
    EXPECT_EQ(ScreenRectOf(window), (TRect{50, 50, 350, 250}));
    EXPECT_EQ(TextOf(edit), "typed");
    DWORD start = 0;
    DWORD end = 0;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 1u);
    EXPECT_EQ(end, 3u);
}

TEST_F(FormsDocking, AFormThatWasNeverShownIsDockedToo) {
    Dock();
    EXPECT_EQ(GetParent(Form->Handle()), Host.Window);
    EXPECT_EQ(RectIn(Host.Window, Form->Handle()), (TRect{10, 70, 490, 370}));
    EXPECT_TRUE(IsWindowVisible(Form->Edit1->Handle()));
    EXPECT_EQ(Form->Log, (std::vector<std::string>{"create", "show"}));
}

TEST_F(FormsDocking, ClicksAndTypingReachTheControls) {
    Dock();
    Click(Form->Edit1->Handle());
    ASSERT_TRUE(FocusIs(Form->Edit1->Handle()));
    EXPECT_EQ(Form->ActiveControl(), Form->Edit1);
    Form->Edit1->SelectAll();
    TypeText("ab");
    EXPECT_TRUE(Host.PumpUntil([&] { return Form->Edit1->Text() == "ab"; })) << Form->Edit1->Text();
    Click(Form->CheckBox1->Handle());
    EXPECT_TRUE(Host.PumpUntil([&] { return !Form->CheckBox1->Checked(); }));
}

TEST_F(FormsDocking, TabReachesTheControlsAndLeavesThem) {
    Dock();
    ::SetFocus(GetDlgItem(Host.Window, IDCANCEL));
    SetForegroundWindow(Host.Window);
    ASSERT_TRUE(FocusIs(GetDlgItem(Host.Window, IDCANCEL)));
    std::vector<HWND> seen;
    for (int i = 0; i < 15; ++i) {
        const HWND before = GetFocus();
        PressKey(VK_TAB);
        ASSERT_TRUE(Host.PumpUntil([&] { return GetFocus() != before; }));
        const HWND focus = GetFocus();
        TWinControl* control = FindControl(focus);
        control = control ? control : FindControl(GetParent(focus));
        seen.push_back(control ? control->Handle() : focus);
        if (focus == GetDlgItem(Host.Window, IDCANCEL)) {
            break;
        }
    }
    // A dialog enters controls that hold others, such as the tab control, instead of stopping there.
    const std::vector<HWND> expected{Form->Edit1->Handle(),
                                     Form->CheckBox1->Handle(),
                                     Form->Memo1->Handle(),
                                     Form->RadioButton1->Handle(),
                                     Form->ListBox1->Handle(),
                                     Form->ComboBox1->Handle(),
                                     Form->ComboBox2->Handle(),
                                     Form->ListView1->Handle(),
                                     Form->OkButton->Handle(),
                                     Form->CancelButton->Handle(),
                                     GetDlgItem(Host.Window, 100),
                                     GetDlgItem(Host.Window, IDOK),
                                     GetDlgItem(Host.Window, IDCANCEL)};
    EXPECT_EQ(seen, expected);
}

TEST_F(FormsDocking, AFormDockedAgainHasTheTabOrderThatItGotMeanwhile) {
    Dock();
    const auto comesBefore = [this](const TWinControl& first, const TWinControl& second) {
        const std::vector<HWND> order = DirectChildren(Form->Handle());
        return std::find(order.begin(), order.end(), first.WindowHandle()) <
               std::find(order.begin(), order.end(), second.WindowHandle());
    };
    EXPECT_TRUE(comesBefore(*Form->Edit1, *Form->CheckBox1));
    Form->Hide();
    Form->SetParentWindow(nullptr);
    Form->CheckBox1->SetTabOrder(Form->Edit1->TabOrder());
    Dock();
    EXPECT_TRUE(comesBefore(*Form->CheckBox1, *Form->Edit1));
}

TEST_F(FormsDocking, ReturnAndEscapeGoToTheDialogUnlessAControlWantsThem) {
    Dock();
    Click(Form->Edit1->Handle());
    ASSERT_TRUE(FocusIs(Form->Edit1->Handle()));
    PressKey(VK_RETURN);
    ASSERT_TRUE(Host.PumpUntil([&] { return Host.Ok == 1; }));
    PressKey(VK_ESCAPE);
    ASSERT_TRUE(Host.PumpUntil([&] { return Host.Cancel == 1; }));
    EXPECT_EQ(Form->ModalResult(), mrNone) << "the form's own default button stays out of it";

    Form->Memo1->SetFocus();
    Form->Memo1->SetText("");
    PressKey(VK_RETURN);
    EXPECT_TRUE(Host.PumpUntil([&] { return Form->Memo1->Text() == "\r\n"; }));

    Form->OkButton->SetFocus();
    PressKey(VK_RETURN);
    EXPECT_TRUE(Host.PumpUntil([&] { return Form->ModalResult() == mrOk; })) << "a focused button is pressed";
    EXPECT_EQ(Host.Ok, 1);
}

TEST_F(FormsDocking, KeysWorkTheSameInTheApplicationsMessageLoop) {
    Dock();
    Click(Form->Edit1->Handle());
    ASSERT_TRUE(test::PumpUntil([&] { return Form->Edit1->Focused(); }));
    const auto loop = [&](const std::function<bool()>& condition) {
        const DWORD end = GetTickCount() + 20000;
        UINT_PTR timer = SetTimer(nullptr, 0, 20, nullptr); // wakes the loop
        while (!condition() && GetTickCount() < end) {
            Application().HandleMessage();
        }
        KillTimer(nullptr, timer);
        return condition();
    };
    PressKey(VK_TAB);
    EXPECT_TRUE(loop([&] { return Form->CheckBox1->Focused(); }));
    PressKey(VK_RETURN);
    EXPECT_TRUE(loop([&] { return Host.Ok == 1; }));
    PressKey('T', {VK_MENU});
    EXPECT_TRUE(loop([&] { return Form->Edit1->Focused(); })) << "accelerators of the form's labels";
}

TEST_F(FormsDocking, AcceleratorsOfLabelsWorkInTheDialogsMessageLoop) {
    Dock();
    Click(Form->ListBox1->Handle());
    ASSERT_TRUE(FocusIs(Form->ListBox1->Handle()));
    PressKey('T', {VK_MENU});
    EXPECT_TRUE(FocusIs(Form->Edit1->Handle()));
}

TEST_F(FormsDocking, WhenTheDialogDiesTheFormLosesOnlyItsWindow) {
    Dock();
    SetWindowTextA(Form->Edit1->Handle(), "kept");
    Form->ListBox1->SetItemIndex(1);
    Form->ComboBox1->SetText("also kept");
    Form->ListView1->Items()[0].SetSelected(true);
    Form->TabControl1->SetTabIndex(1);
    int hides = 0;
    Form->SetOnHide([&](TObject*) { ++hides; });
    Host.Destroy();
    EXPECT_FALSE(Form->HandleAllocated());
    EXPECT_FALSE(Form->Edit1->HandleAllocated());
    EXPECT_FALSE(Form->Visible());
    EXPECT_EQ(hides, 1);
    EXPECT_EQ(Form->ParentWindow(), nullptr);
    EXPECT_EQ(Form->Edit1->Text(), "kept");
    EXPECT_EQ(Form->ListBox1->ItemIndex(), 1);

    Form->SetBorderStyle(bsSizeable);
    Form->Show();
    EXPECT_TRUE(IsWindowVisible(Form->Handle()));
    EXPECT_EQ(TextOf(Form->Edit1->Handle()), "kept");
    EXPECT_EQ(Form->ListBox1->ItemIndex(), 1);
    EXPECT_EQ(TextOf(Form->ComboBox1->Handle()), "also kept");
    EXPECT_EQ(ItemTexts(Form->ListView1->Handle()), std::vector<std::string>{"readme.txt"});
    EXPECT_EQ(Form->ListView1->ItemIndex(), 0);
    EXPECT_EQ(Form->TabControl1->TabIndex(), 1);
}

TEST_F(FormsDocking, AFormThatLeavesInTheDialogsLastMessagesKeepsItsWindow) {
    Dock();
    const HWND window = Form->Handle();
    Host.OnDestroy = [&] {
        Form->Hide();
        Form->SetParentWindow(nullptr);
    };
    Host.Destroy();
    EXPECT_EQ(Form->WindowHandle(), window);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_TRUE(IsWindow(Form->Edit1->WindowHandle()));
    Form->Show();
    EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(FormsDocking, AFormFreedWhileDockedLeavesTheDialogAlone) {
    Dock();
    Click(Form->Edit1->Handle());
    ASSERT_TRUE(FocusIs(Form->Edit1->Handle()));
    Form.reset();
    EXPECT_TRUE(IsWindow(Host.Window));
    EXPECT_EQ(FindDescendant(Host.Window, "TAllControlsForm"), nullptr);
    ::SetFocus(GetDlgItem(Host.Window, 100));
    TypeText("x");
    EXPECT_TRUE(Host.PumpUntil([&] { return TextOf(GetDlgItem(Host.Window, 100)) == "x"; }));
}

TEST_F(FormsDocking, AFormMovesFromOneDialogToAnother) {
    Dock();
    const HWND window = Form->Handle();
    {
        THostDialog second;
        Form->SetParentWindow(second.Window);
        EXPECT_EQ(GetParent(window), second.Window);
        EXPECT_TRUE(IsWindowVisible(window));
        Host.Destroy();
        EXPECT_EQ(Form->WindowHandle(), window);
    }
    EXPECT_FALSE(Form->HandleAllocated());
    for (int i = 0; i < 3; ++i) {
        THostDialog again;
        Form->SetParentWindow(again.Window);
        Form->Show();
        EXPECT_EQ(GetParent(Form->Handle()), again.Window);
        Form->Hide();
        Form->SetParentWindow(nullptr);
    }
    EXPECT_TRUE(Form->HandleAllocated());
}

/// Writes down who is entered and left.
void LogFocus(TWinControl* control, const std::string& name, std::vector<std::string>& log) {
    control->SetOnEnter([name, &log](TObject*) { log.push_back("enter " + name); });
    control->SetOnExit([name, &log](TObject*) { log.push_back("exit " + name); });
}

TEST_F(FormsDocking, AControlIsLeftWhenTheFocusGoesToTheDialogsOwn) {
    std::vector<std::string> log;
    LogFocus(Form->RadioButton1, "radio", log);
    LogFocus(Form->GroupBox1, "group", log);
    Dock();
    Form->RadioButton1->SetFocus();
    ::SetFocus(GetDlgItem(Host.Window, 100));
    EXPECT_EQ(log, (std::vector<std::string>{"enter group", "enter radio", "exit radio", "exit group"}));
    ::SetFocus(Form->RadioButton1->WindowHandle());
    EXPECT_EQ(log.size(), 6u) << "and entered again";
    EXPECT_EQ(log.back(), "enter radio");
}

TEST_F(FormsDocking, AComboBoxIsLeftWhenTheFocusGoesToTheDialogsOwn) {
    std::vector<std::string> log;
    LogFocus(Form->ComboBox1, "combo", log);
    Dock();
    Form->ComboBox1->SetFocus();
    EXPECT_EQ(log, (std::vector<std::string>{"enter combo"})) << "its edit is no other control";
    ::SetFocus(GetDlgItem(Host.Window, 100));
    EXPECT_EQ(log, (std::vector<std::string>{"enter combo", "exit combo"}));
}

TEST_F(FormsDocking, AControlKeepsTheFocusInItsDialogWhileAnotherWindowIsActive) {
    std::vector<std::string> log;
    LogFocus(Form->Edit1, "edit", log);
    Dock();
    Form->Edit1->SetFocus();
    const TFormPtr other(NewForm<TForm>(nullptr));
    other->Show();
    SetActiveWindow(other->WindowHandle());
    ASSERT_NE(GetFocus(), Form->Edit1->WindowHandle());
    EXPECT_EQ(log, (std::vector<std::string>{"enter edit"}));
}

TEST_F(FormsDocking, AControlIsLeftWhenItsFormIsHiddenOrTheDialogGoes) {
    std::vector<std::string> log;
    LogFocus(Form->Edit1, "edit", log);
    Form->SetOnHide([&](TObject*) { log.emplace_back("hide"); });
    Dock();
    Form->Edit1->SetFocus();
    Form->Hide();
    EXPECT_EQ(log, (std::vector<std::string>{"enter edit", "exit edit", "hide"}));
    Form->Show();
    ::SetFocus(Form->Edit1->WindowHandle());
    log.clear();
    Host.Destroy();
    EXPECT_EQ(log, (std::vector<std::string>{"exit edit", "hide"}));
}

TEST_F(FormsDocking, AControlOfAFormThatIsFreedIsNotLeft) {
    int exits = 0;
    Form->Edit1->SetOnExit([&](TObject*) { ++exits; });
    Dock();
    ::SetFocus(Form->Edit1->WindowHandle());
    Form.reset();
    EXPECT_EQ(exits, 0) << "there is no whole form any more to call";
}

TEST_F(FormsDocking, InAFormOfItsOwnAControlIsNotLeftForAnotherWindow) {
    std::vector<std::string> log;
    LogFocus(Form->Edit1, "edit", log);
    Form->Show();
    Form->Edit1->SetFocus();
    log.clear();
    ::SetFocus(GetDlgItem(Host.Window, 100));
    Form->Hide();
    EXPECT_TRUE(log.empty());
}

TEST_F(FormsDocking, ExceptionsInHandlersOfADockedFormAreReported) {
    TExceptionLog log;
    Form->OkButton->SetOnClick([](TObject*) { throw Exception("docked"); });
    Form->SetOnHide([](TObject*) { throw Exception("hide"); });
    Dock();
    SendMessageA(Form->OkButton->Handle(), BM_CLICK, 0, 0);
    Host.Destroy();
    EXPECT_EQ(log.Messages(), (std::vector<std::string>{"docked", "hide"}));
}

} // namespace
} // namespace kx
