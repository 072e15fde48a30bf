// SPDX-License-Identifier: MIT
// Handlers of the file dialogs that fail.

#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <commdlg.h>
#include <dlgs.h>

#include <stdexcept>

namespace kx {
namespace {

using namespace test;

/// Goes through everything that fires an event and ends with OK.
std::vector<TStep> WholeTour(TOpenDialog& dialog, const TTempFolder& folder) {
    return {EnterFileName(dialog, "inner"),
            {"the folder is open", FolderIs(dialog, folder.Path("inner")),
             [&dialog] {
                 HWND window = dialog.DialogWindow();
                 ChooseInCombo(FindChild(window, "ComboBox", cmb1), 1, CBN_SELENDOK);
                 EXPECT_TRUE(SelectItem(FileListOf(window), "deep.txt"));
             }},
            Press(dialog, IDOK)};
}

class DialogEvents : public testing::Test {
protected:
    DialogEvents() {
        Folder.AddFile("inner\\deep.txt");
        Folder.AddFile("one.txt");
        Dialog.SetInitialDir(Folder.Path());
        Dialog.SetFilter("Text|*.txt|All|*.*");
        Dialog.SetOptions(Dialog.Options() + TOpenOptions{ofEnableIncludeNotify});
    }

    TTempFolder Folder;
    TOpenDialog Dialog;
    TExceptionLog Log;
};

TEST_F(DialogEvents, AnExceptionInOnShowReachesTheApplicationAndTheDialogGoesOn) {
    Dialog.SetOnShow([](TObject*) { throw Exception("from the handler"); });
    EXPECT_TRUE(RunDialog(Dialog, WholeTour(Dialog, Folder)));
    EXPECT_THAT(Log.Messages(), ElementsAre("from the handler"));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\deep.txt"));
}

TEST_F(DialogEvents, AnExceptionInOnCloseReachesTheApplicationAndTheChoiceStands) {
    Dialog.SetOnClose([](TObject*) { throw Exception("from the handler"); });
    EXPECT_TRUE(RunDialog(Dialog, WholeTour(Dialog, Folder)));
    EXPECT_THAT(Log.Messages(), ElementsAre("from the handler"));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\deep.txt"));
    EXPECT_EQ(Dialog.Handle(), nullptr);
}

TEST_F(DialogEvents, ExceptionsInTheNotificationsReachTheApplicationAndTheDialogGoesOn) {
    const TNotifyEvent raise = [](TObject*) { throw Exception("from the handler"); };
    Dialog.SetOnFolderChange(raise);
    Dialog.SetOnSelectionChange(raise);
    Dialog.SetOnTypeChange(raise);
    Dialog.SetOnIncludeItem([](const OFNOTIFYEXA&, bool&) { throw Exception("from the handler"); });
    EXPECT_TRUE(RunDialog(Dialog, WholeTour(Dialog, Folder)));
    EXPECT_GE(Log.Messages().size(), 5U);
    EXPECT_THAT(Log.Messages(), Each("from the handler"));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\deep.txt"));
}

TEST_F(DialogEvents, AnExceptionInOnCanCloseRefusesTheClosing) {
    int asked = 0;
    Dialog.SetOnCanClose([&](TObject*, bool&) {
        if (++asked == 1) {
            throw Exception("not yet");
        }
    });
    EXPECT_TRUE(
        RunDialog(Dialog, {EnterFileName(Dialog, "one.txt"),
                           Perform("still there", [&] { EXPECT_NE(IsWindowVisible(Dialog.DialogWindow()), 0); }),
                           Press(Dialog, IDOK)}));
    EXPECT_EQ(asked, 2);
    EXPECT_THAT(Log.Messages(), ElementsAre("not yet"));
}

TEST_F(DialogEvents, WhatIsNoExceptionOfOursEndsThereToo) {
    Dialog.SetOnShow([](TObject*) { throw std::runtime_error("of the standard library"); });
    EXPECT_FALSE(RunDialog(Dialog, {Cancel(Dialog)}));
    EXPECT_THAT(Log.Messages(), ElementsAre("of the standard library"));
}

TEST_F(DialogEvents, AHandlerMayReplaceItself) {
    int first = 0;
    int second = 0;
    Dialog.SetOnFolderChange([&](TObject*) {
        ++first;
        Dialog.SetOnFolderChange([&](TObject*) { ++second; });
    });
    EXPECT_TRUE(RunDialog(Dialog, WholeTour(Dialog, Folder)));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

/// An application with a main form, which has an edit and another form beside it.
class DialogOfAForm : public testing::Test {
protected:
    DialogOfAForm() : Main(NewForm<TForm>(nullptr)), Other(NewForm<TForm>(nullptr)) {
        Main->SetBounds(300, 500, 400, 200);
        Other->SetBounds(800, 500, 200, 200);
        Other->Show();
        Main->Show();
        Edit = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 10, 10, 100, 24, Main->Handle(), nullptr,
                               HInstance(), nullptr);
        PumpUntil([&] { return GetActiveWindow() == Main->Handle(); });
        SetFocus(Edit);
        Dialog = std::make_unique<TOpenDialog>(Main.get());
        Dialog->SetInitialDir(Folder.Path());
    }

    TTempFolder Folder;
    TFormPtr Main;
    TFormPtr Other;
    HWND Edit = nullptr;
    std::unique_ptr<TOpenDialog> Dialog;
};

TEST_F(DialogOfAForm, DisablesAllWindowsOfTheApplicationWhileItIsShown) {
    Look(*Dialog, [&] {
        EXPECT_EQ(IsWindowEnabled(Main->Handle()), 0);
        EXPECT_EQ(IsWindowEnabled(Other->Handle()), 0);
        EXPECT_EQ(GetWindow(Dialog->DialogWindow(), GW_OWNER), Main->Handle());
        EXPECT_EQ(GetActiveWindow(), Dialog->DialogWindow());
    });
    EXPECT_NE(IsWindowEnabled(Main->Handle()), 0);
    EXPECT_NE(IsWindowEnabled(Other->Handle()), 0);
}

TEST_F(DialogOfAForm, GivesTheFocusBack) {
    RunDialog(*Dialog, {Cancel(*Dialog)});
    EXPECT_EQ(GetActiveWindow(), Main->Handle());
    EXPECT_EQ(GetFocus(), Edit);
    TypeText("abc");
    EXPECT_TRUE(PumpUntil([&] { return TextOf(Edit) == "abc"; }));
}

TEST_F(DialogOfAForm, LeavesTheFormsClickable) {
    RunDialog(*Dialog, {Cancel(*Dialog)});
    int clicks = 0;
    Other->SetOnMouseDown([&](TObject*, TMouseButton, TShiftState, int, int) { ++clicks; });
    Click(Other->Handle());
    EXPECT_TRUE(PumpUntil([&] { return clicks == 1; }));
    EXPECT_TRUE(PumpUntil([&] { return GetActiveWindow() == Other->Handle(); }));
}

TEST_F(DialogOfAForm, EnablesTheFormsAgainWhenTheSystemCannotShowIt) {
    class TFailingDialog : public TOpenDialog {
    public:
        bool Execute() override {
            return DoExecute([](OPENFILENAMEA& record) {
                record.lStructSize = 1;
                return GetOpenFileNameA(&record) != FALSE;
            });
        }
    };
    TFailingDialog dialog;
    EXPECT_FALSE(dialog.Execute());
    EXPECT_NE(IsWindowEnabled(Main->Handle()), 0);
    EXPECT_NE(IsWindowEnabled(Other->Handle()), 0);
    EXPECT_EQ(GetFocus(), Edit);
}

TEST_F(DialogOfAForm, NestsInAnotherDialog) {
    Folder.AddFile("outer.txt");
    const TTempFolder innerFolder;
    innerFolder.AddFile("inner.txt");
    TSaveDialog inner(Main.get());
    inner.SetInitialDir(innerFolder.Path());
    bool innerResult = false;
    const bool outerResult =
        RunDialog(*Dialog,
                  [&] {
                      innerResult =
                          RunDialog(inner,
                                    [&] {
                                        EXPECT_EQ(GetWindow(inner.DialogWindow(), GW_OWNER), Dialog->DialogWindow());
                                        EXPECT_EQ(IsWindowEnabled(Dialog->DialogWindow()), 0);
                                    },
                                    {EnterFileName(inner, "inner.txt")});
                  },
                  {Perform("look",
                           [&] {
                               EXPECT_NE(IsWindowEnabled(Dialog->DialogWindow()), 0);
                               EXPECT_EQ(IsWindowEnabled(Main->Handle()), 0);
                               EXPECT_EQ(GetActiveWindow(), Dialog->DialogWindow());
                           }),
                   EnterFileName(*Dialog, Folder.Path("outer.txt"))});
    EXPECT_TRUE(innerResult);
    EXPECT_TRUE(outerResult);
    EXPECT_EQ(inner.FileName(), innerFolder.Path("inner.txt"));
    EXPECT_EQ(Dialog->FileName(), Folder.Path("outer.txt"));
    EXPECT_NE(IsWindowEnabled(Main->Handle()), 0);
    EXPECT_EQ(GetFocus(), Edit);
}

TEST_F(DialogOfAForm, NestsInAnEventOfADialogThatIsNotVisibleYet) {
    Folder.AddFile("a.txt");
    TOpenDialog inner(Main.get());
    inner.SetInitialDir(Folder.Path());
    bool innerResult = false;
    Dialog->SetOnShow([&](TObject*) {
        Dialog->SetOnShow(nullptr);
        innerResult = RunDialog(inner, {EnterFileName(inner, "a.txt")});
    });
    EXPECT_FALSE(RunDialog(*Dialog, {Cancel(*Dialog)}));
    EXPECT_TRUE(innerResult);
    EXPECT_EQ(inner.FileName(), Folder.Path("a.txt"));
}

TEST_F(DialogOfAForm, TellsTheApplicationWhenModalityBeginsAndEnds) {
    std::vector<std::string> events;
    Application().SetOnModalBegin([&](TObject*) { events.emplace_back("begin"); });
    Application().SetOnModalEnd([&](TObject*) { events.emplace_back("end"); });
    Dialog->SetOnShow([&](TObject*) { events.emplace_back("show"); });
    RunDialog(*Dialog, {Cancel(*Dialog)});
    Application().SetOnModalBegin(nullptr);
    Application().SetOnModalEnd(nullptr);
    EXPECT_THAT(events, ElementsAre("begin", "show", "end"));
}

TEST_F(DialogOfAForm, IsNotShownWhenItIsFreedAsModalityBegins) {
    int ends = 0;
    Application().SetOnModalBegin([&](TObject*) { Dialog.reset(); });
    Application().SetOnModalEnd([&](TObject*) { ++ends; });
    EXPECT_FALSE(Dialog.get()->Execute());
    Application().SetOnModalBegin(nullptr);
    Application().SetOnModalEnd(nullptr);
    EXPECT_EQ(ends, 1);
    EXPECT_TRUE(IsWindowEnabled(Main->Handle()));
}

TEST(ShowMessage, ShowsItsTextUntilItIsAnswered) {
    RunDialog(
        [] {
            ShowMessage("Something was saved");
            return true;
        },
        {AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Something was saved"); })});
    EXPECT_FALSE(ShownMessageBox());
}

} // namespace
} // namespace kx
