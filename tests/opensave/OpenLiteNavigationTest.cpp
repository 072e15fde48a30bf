// SPDX-License-Identifier: MIT
// What the lite dialogs ask and tell as the user navigates.

#include "FileDlgTest.h"

#include <shlobj.h>

namespace kx {
namespace {

using namespace test;

class LiteNavigation : public TFileDlgTest {
protected:
    LiteNavigation() : Dialog(NewDialog()) {}

    /// Has every event of the tool bar and the file name noted in `Log`; `veto` names the query that says no.
    void LogEvents(const std::string& veto = {}) { LogNavigation(Dialog, Dialog, Log, veto); }

    TKxOpenLiteDialog& Dialog;
    std::vector<std::string> Log;
};

std::string DesktopFolder() {
    char path[MAX_PATH] = {};
    SHGetSpecialFolderPathA(nullptr, path, CSIDL_DESKTOPDIRECTORY, FALSE);
    return path;
}

/// Clicks the button with that command on the navigation bar with the mouse.
void ClickToolButton(const TKxFileDlgCore& dialog, WORD command) {
    HWND bar = NavigationBarOf(dialog);
    const LRESULT index = SendMessageA(bar, TB_COMMANDTOINDEX, command, 0);
    ASSERT_GE(index, 0);
    RECT r{};
    SendMessageA(bar, TB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&r));
    POINT centre{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    ClientToScreen(bar, &centre);
    ClickAt(FromPOINT(centre));
}

// --- The tool bar

TEST_F(LiteNavigation, UpOneLevelIsAskedAndReported) {
    LogEvents();
    RunDialog(Dialog, [&] { ClickToolButton(Dialog, 40961); },
              {Await("the parent is shown", FolderIs(Dialog, ExtractFileDir(Folder.Path()))),
               Await("it was reported", [&] { return Log.size() == 2; }), Cancel(Dialog)});
    EXPECT_THAT(Log, ElementsAre("up?", "up"));
}

TEST_F(LiteNavigation, AVetoedUpOneLevelStaysInTheFolder) {
    LogEvents("up?");
    RunDialog(
        Dialog, [&] { ClickToolButton(Dialog, 40961); },
        {{"it was asked", [&] { return !Log.empty(); }, [&] { EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path()); }},
         Cancel(Dialog)});
    EXPECT_THAT(Log, ElementsAre("up?"));
}

WORD DesktopButton(const TKxFileDlgCore& dialog) {
    // 40969 on Windows, 40965 elsewhere
    return SendMessageA(NavigationBarOf(dialog), TB_COMMANDTOINDEX, 40969, 0) >= 0 ? WORD{40969} : WORD{40965};
}

TEST_F(LiteNavigation, TheDesktopIsAskedAndReported) {
    LogEvents();
    RunDialog(Dialog, [&] { ClickToolButton(Dialog, DesktopButton(Dialog)); },
              {Await("the desktop is shown", FolderIs(Dialog, DesktopFolder())),
               Await("it was reported", [&] { return Log.size() == 2; }), Cancel(Dialog)});
    EXPECT_THAT(Log, ElementsAre("desktop?", "desktop"));
}

TEST_F(LiteNavigation, AVetoedDesktopStaysInTheFolder) {
    LogEvents("desktop?");
    RunDialog(
        Dialog, [&] { ClickToolButton(Dialog, DesktopButton(Dialog)); },
        {{"it was asked", [&] { return !Log.empty(); }, [&] { EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path()); }},
         Cancel(Dialog)});
    EXPECT_THAT(Log, ElementsAre("desktop?"));
}

TEST_F(LiteNavigation, TheDesktopCommandOfWindowsIsKnownEverywhere) {
    LogEvents();
    Look(Dialog, [&] { PressToolButton(Dialog, 40969); });
    EXPECT_THAT(Log, ElementsAre("desktop?", "desktop"));
}

TEST_F(LiteNavigation, ANewFolderIsAskedFor) {
    LogEvents();
    RunDialog(Dialog, [&] { ClickToolButton(Dialog, 40962); },
              {{"the folder is made", [&] { return Folder.Contains("New Folder"); },
                [&] { SendMessageA(ListOf(Dialog), LVM_CANCELEDITLABEL, 0, 0); }},
               Cancel(Dialog)});
    EXPECT_THAT(Log, testing::Contains("folder?"));
}

TEST_F(LiteNavigation, AVetoedNewFolderIsNotMade) {
    LogEvents("folder?");
    RunDialog(Dialog, [&] { ClickToolButton(Dialog, 40962); },
              {{"it was asked", [&] { return !Log.empty(); }, [&] { EXPECT_FALSE(Folder.Contains("New Folder")); }},
               Cancel(Dialog)});
    EXPECT_THAT(Log, ElementsAre("folder?"));
}

TEST_F(LiteNavigation, GoingBackIsAskedAndReported) {
    LogEvents();
    Look(Dialog, [&] { PressToolButton(Dialog, 40971); });
    EXPECT_THAT(Log, ElementsAre("back?", "back"));
}

TEST_F(LiteNavigation, AVetoedGoingBackIsNotReported) {
    LogEvents("back?");
    Look(Dialog, [&] { PressToolButton(Dialog, 40971); });
    EXPECT_THAT(Log, ElementsAre("back?"));
}

TEST_F(LiteNavigation, OtherCommandsAskNothing) {
    LogEvents();
    Look(Dialog, [&] {
        PressToolButton(Dialog, 40963);
        PressToolButton(Dialog, 40964);
    });
    EXPECT_THAT(Log, IsEmpty());
}

// --- The file name

TEST_F(LiteNavigation, TypingReportsEachChangeOfTheFileName) {
    LogEvents();
    std::string typed;
    Dialog.SetOnFilenameChange([&](TObject*) {
        Log.emplace_back("change");
        typed = Dialog.FilenameText();
    });
    RunDialog(Dialog, [&] { Click(FileNameEditOf(Dialog.DlgHandle())); },
              {{"the field has the focus", [&] { return GetFocus() == FileNameEditOf(Dialog.DlgHandle()); },
                [&] { TypeText("abc"); }},
               Await("all of it was reported", [&] { return typed == "abc"; }),
               Cancel(Dialog)});
    EXPECT_THAT(Log, testing::SizeIs(testing::Ge(3u)));
    EXPECT_THAT(Log, testing::Each("change"));
}

TEST_F(LiteNavigation, TheClassicEditReportsItsChangesToo) {
    LogEvents();
    Look(Dialog, [&] {
        HWND other = ItemOf(Dialog, 1136);
        SendMessageA(Dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(1152, EN_CHANGE), reinterpret_cast<LPARAM>(other));
        EXPECT_THAT(Log, ElementsAre("change"));
        SendMessageA(Dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(77, CBN_EDITCHANGE),
                     reinterpret_cast<LPARAM>(Dialog.EditHandle()));
        EXPECT_THAT(Log, ElementsAre("change", "change"));
        SendMessageA(Dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(1136, CBN_EDITCHANGE), reinterpret_cast<LPARAM>(other));
        EXPECT_THAT(Log, ElementsAre("change", "change")); // another control's
    });
}

TEST_F(LiteNavigation, EnterInTheFileNameFieldIsAsked) {
    LogEvents();
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        Dialog.SetFilenameText("two.txt");
        SetFocus(FileNameEditOf(Dialog.DlgHandle()));
        PressKey(VK_RETURN);
    }));
    EXPECT_THAT(Log, testing::Contains("enter?"));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("two.txt"));
}

TEST_F(LiteNavigation, AVetoedNameKeepsTheDialogOpen) {
    LogEvents("enter?");
    const bool confirmed = RunDialog(
        Dialog,
        [&] {
            Dialog.SetFilenameText("two.txt");
            Log.clear();
            SetFocus(FileNameEditOf(Dialog.DlgHandle()));
            PressKey(VK_RETURN);
        },
        {{"it was asked", [&] { return !Log.empty(); }, [&] { EXPECT_TRUE(IsWindowVisible(Dialog.DlgHandle())); }},
         Cancel(Dialog)});
    EXPECT_FALSE(confirmed);
    EXPECT_THAT(Log, ElementsAre("enter?"));
}

TEST_F(LiteNavigation, OkWithTheFocusInTheFileListIsNotAsked) {
    LogEvents("enter?");
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        Dialog.SetFilenameText("two.txt");
        Log.clear();
        SetFocus(ListOf(Dialog));
        SendMessageA(Dialog.DlgHandle(), WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(ItemOf(Dialog, IDOK)));
    }));
    EXPECT_THAT(Log, IsEmpty());
}

TEST_F(LiteNavigation, AMouseClickOnOkIsNotAskedSinceItTakesTheFocus) {
    LogEvents("enter?");
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        Dialog.SetFilenameText("two.txt");
        Log.clear();
        SetFocus(ListOf(Dialog));
        Click(ItemOf(Dialog, IDOK));
    }));
    EXPECT_THAT(Log, IsEmpty());
}

TEST_F(LiteNavigation, ClosingByTheProgramIsNotAskedSinceItIsLikeAClick) {
    LogEvents("enter?");
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        Dialog.SetFilenameText("two.txt");
        Log.clear();
        SetFocus(FileNameEditOf(Dialog.DlgHandle()));
        Dialog.CloseDialog(mrOk);
    }));
    EXPECT_THAT(Log, IsEmpty());
}

// --- Selection

TEST_F(LiteNavigation, SelectedFilesAreReadFromTheDialog) {
    Dialog.SetOptions({ofAllowMultiSelect});
    Look(Dialog, [&] {
        EXPECT_EQ(Dialog.SelectedFiles(), "");
        EXPECT_EQ(Dialog.SelectedFilesList().Count(), 0);
        SelectItem(ListOf(Dialog), "two.txt");
        EXPECT_EQ(Dialog.SelectedFiles(), "two.txt");
        ASSERT_EQ(Dialog.SelectedFilesList().Count(), 1);
        EXPECT_EQ(Dialog.SelectedFilesList()[0], "two.txt");
        SelectAllItems(ListOf(Dialog));
        const TStringList& list = Dialog.SelectedFilesList();
        ASSERT_EQ(list.Count(), 2); // the folder does not count
        EXPECT_NE(list.IndexOf("one.txt"), -1);
        EXPECT_NE(list.IndexOf("two.txt"), -1);
    });
}

TEST_F(LiteNavigation, SelectedFilesAreWrittenIntoTheFileNameField) {
    Look(Dialog, [&] {
        Dialog.SetSelectedFiles("\"one.txt\" \"two.txt\"");
        EXPECT_EQ(Dialog.FilenameText(), "\"one.txt\" \"two.txt\"");
        EXPECT_EQ(Dialog.SelectedFilesList().Count(), 2);
        EXPECT_EQ(TextOf(FileNameEditOf(Dialog.DlgHandle())), "\"one.txt\" \"two.txt\"");
    });
}

TEST_F(LiteNavigation, AListOfOneNameIsWrittenWithALineBreak) {
    TStringList list;
    list.Add("two.txt");
    Look(Dialog, [&] {
        Dialog.SetSelectedFilesList(list);
        EXPECT_EQ(Dialog.FilenameText(), "two.txt\r\n");
    });
}

TEST_F(LiteNavigation, AListOfTwoNamesIsWrittenInQuotesAndTakenByOk) {
    TStringList list;
    list.Add("one.txt");
    list.Add("two.txt");
    Dialog.SetOptions({ofAllowMultiSelect});
    EXPECT_TRUE(RunDialog(Dialog,
                          [&] {
                              Dialog.SetSelectedFilesList(list);
                              EXPECT_EQ(Dialog.FilenameText(), "\"one.txt\" \"two.txt\"");
                          },
                          {Press(Dialog, IDOK)}));
    ASSERT_EQ(Dialog.Files().Count(), 2);
    EXPECT_EQ(Dialog.Files()[0], Folder.Path("one.txt"));
    EXPECT_EQ(Dialog.Files()[1], Folder.Path("two.txt"));
}

TEST_F(LiteNavigation, AnEmptyListEmptiesTheFileNameField) {
    Look(Dialog, [&] {
        Dialog.SetFilenameText("x");
        Dialog.SetSelectedFilesList(TStringList());
        EXPECT_EQ(Dialog.FilenameText(), "");
    });
}

TEST_F(LiteNavigation, TheDialogsOwnListMayBeWrittenBack) {
    Look(Dialog, [&] {
        Dialog.SetSelectedFiles("\"one.txt\" \"two.txt\"");
        Dialog.SetSelectedFilesList(Dialog.SelectedFilesList());
        EXPECT_EQ(Dialog.FilenameText(), "\"one.txt\" \"two.txt\"");
    });
}

TEST_F(LiteNavigation, TheSelectedFolderIsSetWithoutTouchingNameAndFocus) {
    Look(Dialog, [&] {
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
        Dialog.SetFilenameText("unfinished");
        SetFocus(ItemOf(Dialog, IDCANCEL));
        Dialog.SetSelectedFolder(Folder.Path("inner"));
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path("inner"));
        EXPECT_THAT(ItemTexts(ListOf(Dialog)), ElementsAre("deep.txt"));
        EXPECT_EQ(Dialog.FilenameText(), "unfinished");
        EXPECT_EQ(GetFocus(), ItemOf(Dialog, IDCANCEL));
    });
}

TEST_F(LiteNavigation, AFolderThatIsNotThereIsNotGoneTo) {
    LogEvents();
    Look(Dialog, [&] {
        Dialog.SetFilenameText("unfinished");
        Log.clear();
        Dialog.SetSelectedFolder(Folder.Path("nowhere"));
        Dialog.SetSelectedFolder(Folder.Path("one.txt"));
        Dialog.SetSelectedFolder("");
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
        EXPECT_EQ(Dialog.FilenameText(), "unfinished");
        EXPECT_EQ(ShownMessageBox(), nullptr);
    });
    EXPECT_THAT(Log, IsEmpty());
}

TEST_F(LiteNavigation, TheShownFolderMayBeSetAgain) {
    Look(Dialog, [&] {
        Dialog.SetFilenameText("unfinished");
        Dialog.SetSelectedFolder(Folder.Path());
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
        EXPECT_EQ(Dialog.FilenameText(), "unfinished");
    });
}

TEST_F(LiteNavigation, TheFoldersIdentifierListBelongsToTheDialog) {
    Look(Dialog, [&] {
        EXPECT_EQ(GetPathFromPIDL(Dialog.SelectedFolderPidl()), Folder.Path());
        Dialog.SetSelectedFolder(Folder.Path("inner"));
        EXPECT_EQ(GetPathFromPIDL(Dialog.SelectedFolderPidl()), Folder.Path("inner"));
    });
    EXPECT_EQ(Dialog.SelectedFolderPidl(), nullptr);
}

TEST_F(LiteNavigation, TheListIsReadAgainOnRequest) {
    RunDialog(Dialog,
              [&] {
                  Folder.AddFile("added.txt");
                  EXPECT_EQ(FindItem(ListOf(Dialog), "added.txt"), -1);
                  Dialog.SetFilenameText("unfinished");
                  SelectItem(ListOf(Dialog), "inner"); // must not be entered
                  Dialog.SetFilenameText("unfinished");
                  Dialog.RefreshFileList();
              },
              {{"the new file is listed", [&] { return FindItem(ListOf(Dialog), "added.txt") >= 0; },
                [&] {
                    EXPECT_EQ(Dialog.FilenameText(), "unfinished");
                    EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
                }},
               Cancel(Dialog)});
}

TEST_F(LiteNavigation, ADialogThatIsNotShownReadsAsEmptyAndTakesNothing) {
    const auto check = [&] {
        EXPECT_EQ(Dialog.DlgHandle(), nullptr);
        EXPECT_EQ(Dialog.GetCommonDialogHandle(), nullptr);
        EXPECT_EQ(Dialog.EditHandle(), nullptr);
        EXPECT_EQ(Dialog.SelectedFiles(), "");
        EXPECT_EQ(Dialog.SelectedFilesList().Count(), 0);
        EXPECT_EQ(Dialog.SelectedFolder(), "");
        EXPECT_EQ(Dialog.SelectedFolderPidl(), nullptr);
        EXPECT_EQ(Dialog.FilenameText(), "");
        Dialog.SetSelectedFiles("x");
        Dialog.SetSelectedFilesList(TStringList());
        Dialog.SetSelectedFolder(Folder.Path());
        Dialog.SetFilenameText("x");
        Dialog.SetTitle("x");
        Dialog.RefreshFileList();
        Dialog.CloseDialog(1);
        Dialog.CloseDialog(2);
    };
    check();
    Look(Dialog, [&] { EXPECT_EQ(Dialog.GetCommonDialogHandle(), Dialog.DlgHandle()); });
    check();
}

// --- Closing by program

TEST_F(LiteNavigation, CloseDialogPressesTheButtonOfItsResult) {
    bool mayClose = false;
    Dialog.SetOnCanClose([&](TObject*, bool& canClose) { canClose = mayClose; });
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        Dialog.SetFilenameText("two.txt");
        Dialog.CloseDialog(3);
        Dialog.CloseDialog(0);
        Dialog.CloseDialog(1); // refused
        EXPECT_TRUE(IsWindowVisible(Dialog.DlgHandle()));
        mayClose = true;
        Dialog.CloseDialog(1);
    }));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("two.txt"));
    EXPECT_FALSE(RunDialog(Dialog, [&] { Dialog.CloseDialog(2); }));
}

TEST_F(LiteNavigation, TheInternalNotificationComesBehindOnShow) {
    std::vector<std::string> order;
    Dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &Dialog);
        EXPECT_NE(Dialog.DlgHandle(), nullptr);
        EXPECT_FALSE(IsWindowVisible(Dialog.DlgHandle()));
        order.emplace_back("show");
    });
    ICommonDialog& common = Dialog;
    common.SetCommonDialogInternalShowEvent([&](TObject* sender) {
        EXPECT_EQ(sender, &Dialog);
        order.emplace_back("internal");
    });
    EXPECT_TRUE(common.GetCommonDialogInternalShowEvent());
    Look(Dialog);
    EXPECT_THAT(order, ElementsAre("show", "internal"));
}

} // namespace
} // namespace kx
