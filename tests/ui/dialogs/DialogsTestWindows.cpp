// SPDX-License-Identifier: MIT
// What the dialogs of Windows do and those of other systems do not.

#include "kx/win/PathKind.h"
#include "tests/support/SlowDisk.h"
#include "tests/support/WindowsWays.h"

#include "kx/win/Subclass.h"
#include "kx/win/System.h"
#include "tests/support/TestDriver.h"

#include <cderr.h>
#include <cfloat>
#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

class OnWindows : public testing::Test {
protected:
    OnWindows() {
        Folder.AddFile("one.txt");
        Folder.AddFile("inner\\two.txt");
        Dialog.SetInitialDir(Folder.Path());
    }

    HWND Window() const { return Dialog.DialogWindow(); }
    std::string TypedName() const { return TextOf(FileNameEditOf(Window())); }
    /// The name in the edit, and the folder, with which the dialog starts.
    std::vector<std::string> Start() {
        std::vector<std::string> start;
        Look(Dialog, [&] { start = {TypedName(), ExcludeTrailingPathDelimiter(FolderOf(Window()))}; });
        return start;
    }

    const TAssumedSystem Assumed{{.Wine = false}};
    TTempFolder Folder;
    TWindowsOpenDialog Dialog;
};

// --- The name to start with

TEST_F(OnWindows, AStartingNameThatTheSystemRefusesIsLeftOut) {
    Dialog.RefusesNames = true;
    Dialog.SetFileName("what?.txt");
    EXPECT_THAT(Start(), ElementsAre("", Folder.Path()));
    EXPECT_EQ(Dialog.FileName(), "what?.txt") << "as before, since nothing was chosen";
    EXPECT_EQ(Dialog.Calls, 2);
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OnWindows, AFolderAsStartingNameIsTheOneToStartIn) {
    Dialog.RefusesNames = true;
    for (const char* name : {"inner", "inner\\", "inner\\what?.txt"}) {
        Dialog.SetFileName(Folder.Path(name));
        EXPECT_THAT(Start(), ElementsAre("", Folder.Path("inner"))) << name;
    }
}

TEST_F(OnWindows, AStartingNameThatTheSystemTakesStays) {
    Dialog.RefusesNames = true;
    Dialog.SetFileName("one.txt");
    EXPECT_THAT(Start(), ElementsAre("one.txt", Folder.Path()));
    EXPECT_EQ(Dialog.Calls, 1);
}

TEST_F(OnWindows, ASystemThatRefusesNoNameTooIsNotAskedForEver) {
    std::vector<std::string> names;
    Dialog.Error = FNERR_INVALIDFILENAME;
    Dialog.System = [&](const OPENFILENAMEA& record) {
        names.emplace_back(record.lpstrFile);
        return false;
    };
    Dialog.SetFileName("a.txt");
    EXPECT_FALSE(Dialog.Execute());
    EXPECT_THAT(names, ElementsAre("a.txt", ""));
}

TEST_F(OnWindows, ADialogThatIsFreedWhileItsNameIsRefusedIsNotTriedAgain) {
    auto* const dialog = new TWindowsOpenDialog;
    int calls = 0;
    dialog->SetFileName("a.txt");
    dialog->Error = FNERR_INVALIDFILENAME;
    dialog->System = [&calls, dialog](const OPENFILENAMEA&) {
        ++calls;
        dialog->Free();
        return false;
    };
    EXPECT_FALSE(dialog->Execute());
    EXPECT_EQ(calls, 1);
}

TEST_F(OnWindows, AFolderOnAnotherComputerIsOneToStartInWhenTheComputerAnswers) {
    const std::string share = "\\\\kx-test\\share\\folder";
    TSlowDisk disk;
    std::string folder;
    Dialog.System = [&](const OPENFILENAMEA& record) {
        folder = record.lpstrInitialDir;
        return false;
    };
    Dialog.SetInitialDir(share);
    EXPECT_FALSE(Dialog.Execute()); // and does not wait for long
    EXPECT_NE(folder, share);
    EXPECT_NE(folder, "");
    disk.Answer(share, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(TPathQuestion(share).Answer(INFINITE), pkFolder);
    EXPECT_FALSE(Dialog.Execute());
    EXPECT_EQ(folder, share);
    Dialog.SetInitialDir(Folder.Path("missing"));
    EXPECT_FALSE(Dialog.Execute());
    EXPECT_NE(folder, Folder.Path("missing"));
}

// --- The names that were chosen

TEST_F(OnWindows, NamesInTheFirstBlockAreFoundWhenThereIsALargerOne) {
    constexpr int count = 300;
    for (int i = 0; i < count; ++i) {
        Folder.AddFile("inner\\a file with quite a long name, of number " + IntToStr(1000 + i) + ".txt");
    }
    Dialog.SetInitialDir(Folder.Path("inner"));
    Dialog.SetOptions({ofAllowMultiSelect});
    Dialog.KeepsFirstBlock = true;
    Dialog.FirstSize = 20'000; // enough, but not by what can be known before
    DWORD sizeInTheEnd = 0;
    Dialog.System = [&](OPENFILENAMEA& record) {
        const bool confirmed = GetOpenFileNameA(&record) != FALSE;
        sizeInTheEnd = record.nMaxFile;
        return confirmed;
    };
    EXPECT_TRUE(RunDialog(Dialog, [&] { SelectAllItems(FileListOf(Window())); }, {Press(Dialog, IDOK)}));
    EXPECT_GT(sizeInTheEnd, Dialog.FirstSize);
    ASSERT_EQ(Dialog.Files().Count(), count + 1);
    EXPECT_EQ(Dialog.FileName(), Dialog.Files()[0]);
    for (int i = 0; i <= count; ++i) {
        EXPECT_EQ(ExtractFilePath(Dialog.Files()[i]), Folder.Path("inner\\"));
    }
}

TEST_F(OnWindows, ADialogForSeveralFilesHasRoomForManyFromTheBeginning) {
    DWORD size = 0;
    Dialog.System = [&](const OPENFILENAMEA& record) {
        size = record.nMaxFile;
        return false;
    };
    Dialog.SetOptions({ofAllowMultiSelect});
    EXPECT_FALSE(Dialog.Execute());
    EXPECT_EQ(size, 1024U * 1024U);
}

TEST_F(OnWindows, ANameThatDoesNotFitIsAskedForAgainWithMoreRoom) {
    Dialog.SetFileName("start.txt");
    Dialog.FirstSize = 12;
    std::string nameAgain;
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt"),
                                   {"it is shown again", [&] { return Dialog.Calls == 2 && Shown(Dialog)(); },
                                    [&] { nameAgain = TypedName(); }},
                                   EnterFileName(Dialog, "one.txt")}));
    EXPECT_EQ(nameAgain, "");
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OnWindows, TheFolderWhoseNamesDidNotFitIsShownAgain) {
    Dialog.SetOptions({ofAllowMultiSelect});
    Dialog.KeepsFirstBlock = true;
    Dialog.FirstSize = 12;
    EXPECT_TRUE(RunDialog(
        Dialog, {EnterFileName(Dialog, "inner"),
                 {"the folder is open", FolderIs(Dialog, Folder.Path("inner")), EnterFileName(Dialog, "two.txt").Do},
                 {"it is shown again, in that folder",
                  [&] { return Dialog.Calls == 2 && Shown(Dialog)() && FolderIs(Dialog, Folder.Path("inner"))(); },
                  EnterFileName(Dialog, "two.txt").Do}}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\two.txt"));
    EXPECT_EQ(Dialog.Files().Count(), 1);
}

TEST_F(OnWindows, RoomIsNotMadeForEver) {
    std::vector<DWORD> sizes;
    Dialog.Error = FNERR_BUFFERTOOSMALL;
    Dialog.System = [&](const OPENFILENAMEA& record) {
        sizes.push_back(record.nMaxFile);
        return false;
    };
    Dialog.SetOptions({ofAllowMultiSelect});
    EXPECT_FALSE(Dialog.Execute());
    EXPECT_THAT(sizes, ElementsAre(1U << 20, 1U << 23, 1U << 26));
}

/// The hook of the running dialog, and what is to take over the dialog's window before it.
LPOFNHOOKPROC Hook = nullptr;
TSubclass* Below = nullptr;

UINT_PTR CALLBACK HookWithBelow(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        Below->Install(GetParent(window));
    }
    return Hook(window, message, wParam, lParam);
}

TEST_F(OnWindows, LongNamesAreLeftToTheSystem) {
    TSubclass below; // in the place of the system: Wine would write such a name over its stack
    int entered = 0;
    Dialog.System = [&](OPENFILENAMEA& record) {
        Below = &below;
        Hook = std::exchange(record.lpfnHook, HookWithBelow);
        return GetOpenFileNameA(&record) != FALSE;
    };
    below.SetHandler([&](TMessage& message) {
        if (message.Msg == WM_COMMAND && message.WParamLo() == IDOK) {
            ++entered;
        } else {
            below.CallPrevious(message);
        }
    });
    const std::string address = "https://example.invalid/" + std::string(400, 'x');
    EXPECT_FALSE(RunDialog(Dialog, {EnterFileName(Dialog, address),
                                    Perform("look", [&] { EXPECT_EQ(ShownMessageBox(), nullptr); }), Cancel(Dialog)}));
    EXPECT_EQ(entered, 1);
}

/// Runs a save dialog and tells whether it says that the extension is another, with what the system says.
bool SaysOtherExtension(const std::string& name, DWORD systemSays) {
    const TTempFolder folder;
    TWindowsOpenDialog dialog;
    OPENFILENAMEA* running = nullptr;
    dialog.System = [&](OPENFILENAMEA& record) {
        running = &record;
        return GetSaveFileNameA(&record) != FALSE;
    };
    dialog.SetOnCanClose(
        [&](TObject*, bool&) { running->Flags = (running->Flags & ~DWORD{OFN_EXTENSIONDIFFERENT}) | systemSays; });
    dialog.SetInitialDir(folder.Path());
    dialog.SetDefaultExt("txt");
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, name)}));
    return dialog.Options().Contains(ofExtensionDifferent);
}

TEST_F(OnWindows, TheSystemSaysWhetherTheExtensionIsAnother) {
    EXPECT_TRUE(SaysOtherExtension("report.txt", OFN_EXTENSIONDIFFERENT));
    EXPECT_FALSE(SaysOtherExtension("report.pdf", 0));
}

TEST(NotOnWindows, TheDialogSaysWhetherTheExtensionIsAnother) {
    const TAssumedSystem wine({.Wine = true});
    EXPECT_FALSE(SaysOtherExtension("report.txt", OFN_EXTENSIONDIFFERENT));
    EXPECT_TRUE(SaysOtherExtension("report.pdf", 0));
}

// --- The thread in which the system's function runs

TEST_F(OnWindows, DrivesWithoutAMediumOpenNoBoxes) {
    DWORD before = 0;
    SetThreadErrorMode(SEM_NOOPENFILEERRORBOX, &before);
    DWORD inside = 0;
    Dialog.System = [&](const OPENFILENAMEA&) {
        inside = GetThreadErrorMode();
        return false;
    };
    Dialog.Execute();
    EXPECT_EQ(inside, DWORD{SEM_NOOPENFILEERRORBOX | SEM_FAILCRITICALERRORS});
    EXPECT_EQ(GetThreadErrorMode(), DWORD{SEM_NOOPENFILEERRORBOX});
    SetThreadErrorMode(before, nullptr);
}

constexpr unsigned Rounding = _MCW_RC;
constexpr unsigned Exceptions = _MCW_EM;

TEST_F(OnWindows, WhatADriverDoesToTheArithmeticEndsWithTheDialog) {
    const unsigned before = _control87(0, 0);
    Dialog.System = [&](const OPENFILENAMEA&) {
        _control87(_RC_UP | (before ^ _EM_INEXACT), Rounding | _EM_INEXACT);
        return false;
    };
    Dialog.Execute();
    EXPECT_EQ(_control87(0, 0) & (Rounding | Exceptions), before & (Rounding | Exceptions));
}

TEST_F(OnWindows, WhatADriverMiscalculatedDoesNotFailLater) {
    const unsigned before = _control87(0, 0);
    _control87(0, _EM_ZERODIVIDE); // counts as an error in this thread
    Dialog.System = [&](const OPENFILENAMEA&) {
        _control87(_EM_ZERODIVIDE, _EM_ZERODIVIDE);
        volatile long double zero = 0;
        volatile long double endless = 1 / zero;
        EXPECT_GT(endless, 1e30L);
        return false;
    };
    Dialog.Execute();
    EXPECT_EQ(_statusfp() & _EM_ZERODIVIDE, 0U);
    _control87(before, Exceptions);
}

// --- The dialog of the old style

TEST_F(OnWindows, TheOldDialogAsksWhetherItMayClose) {
    Dialog.SetOptions({ofOldStyleDialog, ofHideReadOnly});
    std::vector<std::string> asked;
    Dialog.SetOnCanClose([&](TObject*, bool& canClose) {
        asked.push_back(Dialog.FileName());
        canClose = asked.size() == 2;
    });
    const auto enter = [&](const char* name) {
        return Perform(std::string("enter ") + name, [this, name] {
            SetWindowTextA(FindChild(Window(), "Edit", 1152), Folder.Path(name).c_str());
            PressButton(FindChild(Window(), "Button", IDOK));
        });
    };
    EXPECT_TRUE(RunDialog(Dialog, {enter("one.txt"),
                                   Perform("still there",
                                           [&] {
                                               EXPECT_NE(IsWindowVisible(Window()), 0);
                                               EXPECT_EQ(Dialog.FileName(), "");
                                           }),
                                   enter("inner\\two.txt")}));
    EXPECT_THAT(asked, ElementsAre(Folder.Path("one.txt"), Folder.Path("inner\\two.txt")));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\two.txt"));
}

} // namespace
} // namespace kx
