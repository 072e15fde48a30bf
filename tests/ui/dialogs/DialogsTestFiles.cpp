// SPDX-License-Identifier: MIT
// The files that come back from the file dialogs.

#include "tests/support/TestDriver.h"
#include "tests/support/Texts.h"

#include <commdlg.h>
#include <dlgs.h>

#include <algorithm>

namespace kx {
namespace {

using namespace test;

constexpr int ReadOnlyBoxId = 1040;

std::string CurrentFolder() {
    char path[MAX_PATH + 1] = "";
    GetCurrentDirectoryA(sizeof(path), path);
    return path;
}

class ChosenFiles : public testing::Test {
protected:
    ChosenFiles() { Dialog.SetInitialDir(Folder.Path()); }
    void AllowSeveral() { Dialog.SetOptions(Dialog.Options() + TOpenOptions{ofAllowMultiSelect}); }
    HWND List() const { return FileListOf(Dialog.DialogWindow()); }
    HWND Edit() const { return FileNameEditOf(Dialog.DialogWindow()); }

    TTempFolder Folder;
    TOpenDialog Dialog;
};

TEST_F(ChosenFiles, SeveralSelectedFilesComeBackWithFullPaths) {
    Folder.AddFile("a b.txt");
    Folder.AddFile("c.txt");
    Folder.AddFile("d.txt");
    AllowSeveral();
    EXPECT_TRUE(RunDialog(Dialog, [&] { SelectAllItems(List()); }, {Press(Dialog, IDOK)}));
    EXPECT_THAT(TextsOf(Dialog.Files()),
                UnorderedElementsAre(Folder.Path("a b.txt"), Folder.Path("c.txt"), Folder.Path("d.txt")));
    EXPECT_EQ(Dialog.FileName(), Dialog.Files()[0]);
}

TEST_F(ChosenFiles, OneSelectedFileOfADialogForSeveralIsOneFullPath) {
    Folder.AddFile("only one.txt");
    AllowSeveral();
    EXPECT_TRUE(RunDialog(Dialog, [&] { SelectAllItems(List()); }, {Press(Dialog, IDOK)}));
    EXPECT_THAT(TextsOf(Dialog.Files()), ElementsAre(Folder.Path("only one.txt")));
}

TEST_F(ChosenFiles, SeveralTypedNamesComeBackWithFullPaths) {
    Folder.AddFile("a.txt");
    Folder.AddFile("b.txt");
    AllowSeveral();
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "\"b.txt\" \"a.txt\"")}));
    EXPECT_THAT(TextsOf(Dialog.Files()), ElementsAre(Folder.Path("b.txt"), Folder.Path("a.txt")));
}

TEST_F(ChosenFiles, FiveThousandFilesComeBackComplete) {
    constexpr int count = 5000;
    const auto nameOf = [](int i) { return "a file with a long name, number " + IntToStr(10000 + i) + ".txt"; };
    for (int i = 0; i < count; ++i) {
        Folder.AddFile(nameOf(i));
    }
    AllowSeveral();
    EXPECT_TRUE(RunDialog(Dialog,
                          [&] {
                              EXPECT_EQ(ItemCount(List()), count);
                              SelectAllItems(List());
                          },
                          {Press(Dialog, IDOK)}));
    std::vector<std::string> files = TextsOf(Dialog.Files());
    std::sort(files.begin(), files.end());
    ASSERT_EQ(files.size(), count);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(files[static_cast<size_t>(i)], Folder.Path(nameOf(i)));
    }
}

TEST_F(ChosenFiles, TwoThousandPastedNamesComeBackComplete) {
    constexpr int count = 2000;
    std::string names;
    for (int i = 0; i < count; ++i) {
        const std::string name = "a pasted file, number " + IntToStr(10000 + i) + ".txt";
        Folder.AddFile(name);
        names += "\"" + name + "\" ";
    }
    AllowSeveral();
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, names)}));
    EXPECT_EQ(Dialog.Files().Count(), count);
    EXPECT_EQ(Dialog.Files()[count - 1], Folder.Path("a pasted file, number 11999.txt"));
}

TEST_F(ChosenFiles, TheStartingNameIsInTheEdit) {
    Folder.AddFile("start.txt");
    Dialog.SetFileName("start.txt");
    EXPECT_TRUE(RunDialog(Dialog, [&] { EXPECT_EQ(TextOf(Edit()), "start.txt"); }, {Press(Dialog, IDOK)}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("start.txt"));
}

TEST_F(ChosenFiles, AFullStartingPathOpensItsFolder) {
    Folder.AddFile("inner\\start.txt");
    Dialog.SetInitialDir("");
    Dialog.SetFileName(Folder.Path("inner\\start.txt"));
    EXPECT_TRUE(
        RunDialog(Dialog, {{"its folder is open", FolderIs(Dialog, Folder.Path("inner")), {}}, Press(Dialog, IDOK)}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\start.txt"));
}

TEST_F(ChosenFiles, AStartingNameThatNoFileCanHaveStillOpensTheDialog) {
    Folder.AddFile("good.txt");
    Dialog.SetFileName("no|such<name>?");
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "good.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("good.txt"));
}

TEST_F(ChosenFiles, AMissingInitialFolderGivesTheCurrentOne) {
    const TTempFolder current;
    SetCurrentDirectoryA(current.Path().c_str());
    Dialog.SetInitialDir(Folder.Path("not there"));
    RunDialog(Dialog, {{"the current folder is open", FolderIs(Dialog, current.Path()), {}}, Cancel(Dialog)});
    Dialog.SetInitialDir("");
    RunDialog(Dialog, {{"the current folder is open", FolderIs(Dialog, current.Path()), {}}, Cancel(Dialog)});
}

TEST_F(ChosenFiles, RelativeNamesAreTakenFromTheFolderThatIsShown) {
    Folder.AddFile("inner\\deep.txt");
    Folder.AddFile("up.txt");
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "inner\\deep.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("inner\\deep.txt"));
    Dialog.SetInitialDir(Folder.Path("inner"));
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "..\\up.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("up.txt"));
}

TEST_F(ChosenFiles, AMissingFileIsRefusedWithABoxWhenItMustExist) {
    Folder.AddFile("there.txt");
    Dialog.SetOptions(Dialog.Options() + TOpenOptions{ofFileMustExist});
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "missing.txt"),
                                   AnswerBox(IDOK),
                                   {"the box has gone", NoBoxShown(), {}},
                                   EnterFileName(Dialog, "there.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("there.txt"));
}

TEST_F(ChosenFiles, TheFilterIndexGoesInAndComesOut) {
    Folder.AddFile("a.txt");
    Dialog.SetFilter("Text|*.txt|Pictures|*.png|All|*.*");
    Dialog.SetFilterIndex(3);
    EXPECT_TRUE(RunDialog(Dialog,
                          [&] {
                              HWND types = FindChild(Dialog.DialogWindow(), "ComboBox", cmb1);
                              EXPECT_EQ(TextOf(types), "All");
                              ChooseInCombo(types, 1, CBN_SELENDOK);
                          },
                          {EnterFileName(Dialog, "a.txt")}));
    EXPECT_EQ(Dialog.FilterIndex(), 2);
}

TEST_F(ChosenFiles, ACancelledDialogKeepsTheFilterIndex) {
    Dialog.SetFilter("Text|*.txt|Pictures|*.png");
    Look(Dialog, [&] { ChooseInCombo(FindChild(Dialog.DialogWindow(), "ComboBox", cmb1), 1, CBN_SELENDOK); });
    EXPECT_EQ(Dialog.FilterIndex(), 1);
}

TEST_F(ChosenFiles, OddFiltersAndIndexesDoNoHarm) {
    for (const char* filter : {"Text", "Text|", "|", "||", "Text|*.txt|Lonely", "|*.txt"}) {
        for (const int index : {-1, 0, 1, 99}) {
            Dialog.SetFilter(filter);
            Dialog.SetFilterIndex(index);
            EXPECT_FALSE(RunDialog(Dialog, {Cancel(Dialog)})) << filter << " " << index;
        }
    }
}

TEST_F(ChosenFiles, AVeryLongFilterWorks) {
    Folder.AddFile("a.ext4999");
    Folder.AddFile("b.other");
    std::string filter = "Many|";
    for (int i = 0; i < 5000; ++i) {
        filter += "*.ext" + IntToStr(i) + ";";
    }
    filter.back() = '|';
    Dialog.SetFilter(filter + "All|*.*");
    Dialog.SetFilter(filter.substr(0, filter.size() - 1));
    Look(Dialog, [&] { EXPECT_THAT(ItemTexts(List()), ElementsAre("a.ext4999")); });
}

TEST_F(ChosenFiles, TheReadOnlyBoxGoesInAndComesOut) {
    Folder.AddFile("a.txt");
    Dialog.SetOptions({ofEnableSizing});
    const auto run = [&](bool before, bool after) {
        return RunDialog(Dialog,
                         [&, before, after] {
                             HWND box = FindChild(Dialog.DialogWindow(), "Button", ReadOnlyBoxId);
                             EXPECT_NE(IsWindowVisible(box), 0);
                             EXPECT_EQ(SendMessageA(box, BM_GETCHECK, 0, 0) == BST_CHECKED, before);
                             if (before != after) {
                                 PressButton(box);
                             }
                         },
                         {EnterFileName(Dialog, "a.txt")});
    };
    EXPECT_TRUE(run(false, true));
    EXPECT_TRUE(Dialog.Options().Contains(ofReadOnly));
    EXPECT_TRUE(run(true, true));
    EXPECT_TRUE(Dialog.Options().Contains(ofReadOnly));
    EXPECT_TRUE(run(true, false));
    EXPECT_FALSE(Dialog.Options().Contains(ofReadOnly));
}

TEST_F(ChosenFiles, TheCurrentFolderFollowsTheChoiceUnlessToldNotTo) {
    const TTempFolder current;
    Folder.AddFile("a.txt");
    SetCurrentDirectoryA(current.Path().c_str());
    Dialog.SetOptions(Dialog.Options() + TOpenOptions{ofNoChangeDir});
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "a.txt")}));
    EXPECT_EQ(CurrentFolder(), current.Path());
    Dialog.SetOptions(Dialog.Options() - TOpenOptions{ofNoChangeDir});
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "a.txt")}));
    EXPECT_EQ(CurrentFolder(), Folder.Path());
}

TEST_F(ChosenFiles, ALongPathComesBackWhole) {
    std::string deep = "d";
    while (Folder.Path(deep).size() < 200) {
        deep += "\\a folder with a long name";
    }
    Folder.AddFile(deep + "\\file.txt");
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, Folder.Path(deep)),
                                   {"the folder is open", FolderIs(Dialog, Folder.Path(deep)), {}},
                                   EnterFileName(Dialog, "file.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path(deep + "\\file.txt"));
}

TEST_F(ChosenFiles, APathThatIsTooLongIsRefusedWithABox) {
    Folder.AddFile("a.txt");
    const size_t room = MAX_PATH - 1 - Folder.Path("").size();
    const auto refuses = [&](const std::string& text) {
        return RunDialog(Dialog, {EnterFileName(Dialog, text),
                                  AnswerBox(IDOK),
                                  {"the box has gone", NoBoxShown(), {}},
                                  EnterFileName(Dialog, "a.txt")});
    };
    EXPECT_TRUE(refuses(std::string(room + 1, 'x')));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("a.txt"));
    EXPECT_TRUE(refuses("C:\\" + std::string(300, 'x')));
    EXPECT_TRUE(refuses(std::string(40000, 'x')));
    AllowSeveral();
    EXPECT_TRUE(refuses("\"a.txt\" \"" + std::string(room + 1, 'x') + "\""));
    EXPECT_TRUE(refuses("\"" + std::string(40000, 'x')));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("a.txt"));
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, std::string(room, 'x'))})) << "the longest path that there is";
    EXPECT_EQ(Dialog.FileName(), Folder.Path(std::string(room, 'x')));
}

TEST_F(ChosenFiles, AnEndlessStartingNameIsLeftOut) {
    for (const size_t size : {259U, 260U, 300U, 70000U}) {
        Dialog.SetFileName(std::string(size, 'x'));
        RunDialog(Dialog, {Cancel(Dialog)});
        EXPECT_EQ(Dialog.FileName(), std::string(size, 'x'));
    }
}

TEST_F(ChosenFiles, ThePlacesBarIsThereUnlessToldNotTo) {
    constexpr int placesBarId = 1184;
    Look(Dialog, [&] { EXPECT_TRUE(FindChild(Dialog.DialogWindow(), "ToolbarWindow32", placesBarId)); });
    Dialog.SetOptionsEx({ofExNoPlacesBar});
    Look(Dialog, [&] { EXPECT_FALSE(FindChild(Dialog.DialogWindow(), "ToolbarWindow32", placesBarId)); });
}

TEST_F(ChosenFiles, TheOldStyleDialogWorksToo) {
    Folder.AddFile("old.txt");
    int shown = 0;
    int closed = 0;
    Dialog.SetOptions({ofOldStyleDialog, ofHideReadOnly});
    Dialog.SetOnShow([&](TObject*) { ++shown; });
    Dialog.SetOnClose([&](TObject*) { ++closed; });
    constexpr int oldNameEditId = 1152;
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        HWND window = Dialog.DialogWindow();
        EXPECT_EQ(window, Dialog.Handle());
        SetWindowTextA(FindChild(window, "Edit", oldNameEditId), Folder.Path("old.txt").c_str());
        PressButton(FindChild(window, "Button", IDOK));
    }));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("old.txt"));
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(closed, 1);
}

/// A dialog that shows the system's dialog through a wrapper with a record of its own.
class TWrappedDialog : public TOpenDialog {
public:
    bool Execute() override {
        return DoExecute([](OPENFILENAMEA& record) {
            OPENFILENAMEA copy = record;
            copy.FlagsEx = 0;
            return GetOpenFileNameA(&copy) != FALSE;
        });
    }
};

TEST(WrappedDialog, GetsTheNamesFromTheBufferAndNothingElse) {
    const TTempFolder folder;
    for (int i = 0; i < 1000; ++i) {
        folder.AddFile("a name that is quite long, and has the number " + IntToStr(i) + ".txt");
    }
    TWrappedDialog dialog;
    dialog.SetInitialDir(folder.Path());
    dialog.SetFilter("Text|*.txt|All|*.*");
    dialog.SetOptions({ofAllowMultiSelect});
    const bool confirmed =
        RunDialog(dialog,
                  [&] {
                      HWND window = dialog.DialogWindow();
                      ChooseInCombo(FindChild(window, "ComboBox", cmb1), 1, CBN_SELENDOK);
                      PressButton(FindChild(window, "Button", ReadOnlyBoxId));
                  },
                  {Perform("select", [&] { SelectAllItems(FileListOf(dialog.DialogWindow())); }), Press(dialog, IDOK)});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(dialog.Files().Count(), 1000);
    EXPECT_EQ(dialog.FilterIndex(), 1);
    EXPECT_FALSE(dialog.Options().Contains(ofReadOnly));
}

} // namespace
} // namespace kx
