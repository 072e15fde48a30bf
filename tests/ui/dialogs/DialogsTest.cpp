// SPDX-License-Identifier: MIT
// The file dialogs as the system has them.

#include "tests/support/ErrorOf.h"
#include "tests/support/TestDriver.h"

#include <commdlg.h>
#include <dlgs.h>

namespace kx {
namespace {

using namespace test;

/// A folder with two text files, a picture and a folder, and an open dialog that starts there.
class OpenDialog : public testing::Test {
protected:
    OpenDialog() {
        Folder.AddFile("one.txt");
        Folder.AddFile("two.txt");
        Folder.AddFile("three.png");
        Folder.AddFolder("inner");
        Dialog.SetInitialDir(Folder.Path());
    }

    TTempFolder Folder;
    TOpenDialog Dialog;
};

TEST_F(OpenDialog, HasNoFilesAndNoWindowAtFirst) {
    const TOpenDialog dialog;
    EXPECT_EQ(dialog.Files().Count(), 0);
    EXPECT_EQ(dialog.Handle(), nullptr);
    EXPECT_EQ(dialog.DialogWindow(), nullptr);
}

TEST_F(OpenDialog, ReturnsTheFullPathOfATypedName) {
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "two.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("two.txt"));
    ASSERT_EQ(Dialog.Files().Count(), 1);
    EXPECT_EQ(Dialog.Files()[0], Folder.Path("two.txt"));
}

TEST_F(OpenDialog, ReturnsTheFileChosenInTheListByKeyboard) {
    const bool confirmed = RunDialog(
        Dialog,
        [&] {
            SetFocus(FileListOf(Dialog.DialogWindow()));
            TypeText("three");
        },
        {{"the name is in the edit", [&] { return TextOf(FileNameEditOf(Dialog.DialogWindow())) == "three.png"; },
          [] { PressKey(VK_RETURN); }}});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(Dialog.FileName(), Folder.Path("three.png"));
}

TEST_F(OpenDialog, ReturnsTheFileChosenByDoubleClick) {
    const bool confirmed = RunDialog(Dialog, [&] {
        HWND list = FileListOf(Dialog.DialogWindow());
        DoubleClickAt(ItemCenter(list, FindItem(list, "one.txt")));
    });
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OpenDialog, GivesUpOnCancelEscapeAndClosing) {
    const std::function<void()> ways[] = {
        [&] { Click(FindChild(Dialog.DialogWindow(), "Button", IDCANCEL)); },
        [&] { PressKey(VK_ESCAPE); },
        [&] { PostMessageA(Dialog.DialogWindow(), WM_CLOSE, 0, 0); },
        [&] { PostMessageA(Dialog.DialogWindow(), WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    for (const auto& way : ways) {
        int closed = 0;
        Dialog.SetOnClose([&](TObject* sender) {
            EXPECT_EQ(sender, &Dialog);
            ++closed;
        });
        Dialog.SetFileName("before.txt");
        EXPECT_FALSE(RunDialog(Dialog, way));
        EXPECT_EQ(closed, 1);
        EXPECT_EQ(Dialog.FileName(), "before.txt");
        EXPECT_EQ(Dialog.Handle(), nullptr);
        EXPECT_EQ(Dialog.DialogWindow(), nullptr);
    }
}

TEST_F(OpenDialog, IsCompleteButHiddenInOnShow) {
    Dialog.SetOptions({ofHideReadOnly}); // a resizable dialog still gets the size of the one before it
    TRect shownRect;
    int files = 0;
    Dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &Dialog);
        HWND window = Dialog.DialogWindow();
        EXPECT_EQ(IsWindowVisible(window), 0);
        EXPECT_EQ(GetParent(Dialog.Handle()), window);
        files = ItemCount(FileListOf(window));
        shownRect = ScreenRectOf(window);
    });
    Look(Dialog, [&] { EXPECT_EQ(ScreenRectOf(Dialog.DialogWindow()), shownRect); });
    EXPECT_EQ(files, 4);
    EXPECT_GT(Width(shownRect), 300);
}

TEST_F(OpenDialog, FiresItsEventsInOrder) {
    std::vector<std::string> events;
    const auto log = [&](const char* name) { return [&events, name](TObject*) { events.emplace_back(name); }; };
    Dialog.SetOnShow(log("show"));
    Dialog.SetOnClose(log("close"));
    Dialog.SetOnFolderChange(log("folder"));
    Dialog.SetOnTypeChange(log("type"));
    Dialog.SetOnCanClose([&](TObject* sender, bool& canClose) {
        EXPECT_EQ(sender, &Dialog);
        EXPECT_TRUE(canClose);
        EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\deep.txt"));
        events.emplace_back("can close");
    });
    Folder.AddFile("inner\\deep.txt");
    Dialog.SetFilter("Text|*.txt|All|*.*");
    Dialog.SetFilterIndex(2);
    RunDialog(
        Dialog,
        {EnterFileName(Dialog, "inner"),
         {"the folder is open", FolderIs(Dialog, Folder.Path("inner")),
          [&] { EXPECT_TRUE(ChooseInCombo(FindChild(Dialog.DialogWindow(), "ComboBox", cmb1), 0, CBN_SELENDOK)); }},
         EnterFileName(Dialog, "deep.txt")});
    EXPECT_THAT(events, ElementsAre("show", "folder", "folder", "type", "can close", "close"));
    EXPECT_EQ(Dialog.FilterIndex(), 1);
}

TEST_F(OpenDialog, ReportsEachNewSelection) {
    int changes = 0;
    const bool confirmed =
        RunDialog(Dialog, [&] { Dialog.SetOnSelectionChange([&](TObject*) { ++changes; }); },
                  {Perform("select", [&] { EXPECT_TRUE(SelectItem(FileListOf(Dialog.DialogWindow()), "one.txt")); }),
                   {"the selection was reported", [&] { return changes > 0; },
                    [&] { EXPECT_EQ(TextOf(FileNameEditOf(Dialog.DialogWindow())), "one.txt"); }},
                   Press(Dialog, IDOK)});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OpenDialog, StaysOpenWhileOnCanCloseRefuses) {
    int asked = 0;
    Dialog.SetFileName("one.txt");
    Dialog.SetOnCanClose([&](TObject*, bool& canClose) {
        EXPECT_EQ(Dialog.FileName(), asked == 0 ? Folder.Path("two.txt") : Folder.Path("three.png"));
        canClose = ++asked == 2;
    });
    const bool confirmed = RunDialog(Dialog, {EnterFileName(Dialog, "two.txt"),
                                              Perform("still there",
                                                      [&] {
                                                          EXPECT_EQ(asked, 1);
                                                          EXPECT_NE(IsWindowVisible(Dialog.DialogWindow()), 0);
                                                          EXPECT_EQ(Dialog.FileName(), "one.txt");
                                                      }),
                                              EnterFileName(Dialog, "three.png")});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(Dialog.FileName(), Folder.Path("three.png"));
}

TEST_F(OpenDialog, AsksAboutEachFileWhenItemsAreToBeIncluded) {
    Dialog.SetOptions(Dialog.Options() + TOpenOptions{ofEnableIncludeNotify});
    int asked = 0;
    Dialog.SetOnIncludeItem([&](const OFNOTIFYEXA& notification, bool& include) {
        EXPECT_TRUE(include);
        EXPECT_EQ(notification.hdr.hwndFrom, Dialog.DialogWindow());
        ++asked;
    });
    RunDialog(Dialog, {Cancel(Dialog)});
    EXPECT_EQ(asked, 3) << "three files, and a folder, about which nobody is asked";
}

TEST_F(OpenDialog, CanBeShownAgainAndAgain) {
    for (const char* name : {"one.txt", "two.txt", "three.png"}) {
        EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, Folder.Path(name))}));
        EXPECT_EQ(Dialog.FileName(), Folder.Path(name));
    }
}

TEST_F(OpenDialog, RefusesToBeShownWhileItIsShown) {
    Look(Dialog, [&] { EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { Dialog.Execute(); }), "Dialog is already shown"); });
}

TEST_F(OpenDialog, ShowsItsTitleAndTheTextOfItsFilters) {
    Dialog.SetTitle("Choose a drawing");
    Dialog.SetFilter("Text files|*.txt|Pictures|*.png;*.bmp");
    Look(Dialog, [&] {
        EXPECT_EQ(TextOf(Dialog.DialogWindow()), "Choose a drawing");
        HWND types = FindChild(Dialog.DialogWindow(), "ComboBox", cmb1);
        EXPECT_EQ(SendMessageA(types, CB_GETCOUNT, 0, 0), 2);
        EXPECT_EQ(TextOf(types), "Text files");
        EXPECT_THAT(ItemTexts(FileListOf(Dialog.DialogWindow())),
                    testing::UnorderedElementsAre("inner", "one.txt", "two.txt"));
        Screenshot("open-dialog");
    });
}

TEST(SaveDialog, AppendsTheDefaultExtension) {
    const TTempFolder folder;
    TSaveDialog dialog;
    dialog.SetInitialDir(folder.Path());
    dialog.SetDefaultExt(".txt");
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "report")}));
    EXPECT_EQ(dialog.FileName(), folder.Path("report.txt"));
    EXPECT_FALSE(dialog.Options().Contains(ofExtensionDifferent));
}

TEST(SaveDialog, TellsWhenTheExtensionIsAnother) {
    const TTempFolder folder;
    TSaveDialog dialog;
    dialog.SetInitialDir(folder.Path());
    dialog.SetDefaultExt("txt");
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "report.pdf")}));
    EXPECT_EQ(dialog.FileName(), folder.Path("report.pdf"));
    EXPECT_TRUE(dialog.Options().Contains(ofExtensionDifferent));
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "report.txt")}));
    EXPECT_FALSE(dialog.Options().Contains(ofExtensionDifferent));
}

TEST(SaveDialog, AsksBeforeItReplacesAFile) {
    const TTempFolder folder;
    folder.AddFile("there.txt");
    TSaveDialog dialog;
    dialog.SetInitialDir(folder.Path());
    dialog.SetOptions(dialog.Options() + TOpenOptions{ofOverwritePrompt});
    const bool confirmed = RunDialog(dialog, {EnterFileName(dialog, "there.txt"),
                                              AnswerBox(IDNO, [&](const std::string& text) { EXPECT_NE(text, ""); }),
                                              {"the box has gone", NoBoxShown(), {}},
                                              EnterFileName(dialog, "there.txt"),
                                              AnswerBox(IDYES)});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(dialog.FileName(), folder.Path("there.txt"));
}

} // namespace
} // namespace kx
