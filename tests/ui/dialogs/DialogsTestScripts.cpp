// SPDX-License-Identifier: MIT
// File names of any script.

#include "tests/support/TestDriver.h"

#include <dlgs.h>

// Built twice: into a program whose code page is the system's, and into one whose code page is UTF-8.

namespace kx {
namespace {

using namespace test;

/// Names in UTF-8: Latin with marks, Cyrillic, Greek, Chinese, Japanese, Hebrew, and a character beyond 16 bits.
const char* const Names[] = {
    "Grüße aus Köln.txt", "Отчёт за год.txt",           "Αναφορά.txt", "年度报告.txt", "レポート.txt",
    "דוח שנתי.txt",       "music \xF0\x9D\x84\x9E.txt",
};

class FileNames : public testing::TestWithParam<const char*> {
protected:
    FileNames() { Dialog.SetInitialDir(Folder.Path()); }
    void SetUp() override {
        if (!CodePageHolds(GetParam())) {
            // What the system makes of such a name in this code page is no name any more.
            EXPECT_NE(GetACP(), static_cast<UINT>(CP_UTF8));
            Holds = false;
        }
    }

    bool Holds = true;
    TTempFolder Folder;
    TOpenDialog Dialog;
};

TEST_P(FileNames, AreShownChosenAndComeBack) {
    Folder.AddFile(GetParam());
    const std::string name = FromUtf8(GetParam());
    std::string inEdit;
    const bool confirmed = RunDialog(Dialog,
                                     [&] {
                                         HWND window = Dialog.DialogWindow();
                                         EXPECT_EQ(ItemText(FileListOf(window), 0), name);
                                         SelectAllItems(FileListOf(window));
                                         inEdit = TextOf(FileNameEditOf(window));
                                     },
                                     {Press(Dialog, IDOK)});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(inEdit, name);
    EXPECT_EQ(Dialog.FileName(), Folder.Path(GetParam()));
    // A name that the code page holds opens the file; another one comes back with question marks, which no file has.
    EXPECT_EQ(GetFileAttributesA(Dialog.FileName().c_str()) != INVALID_FILE_ATTRIBUTES, Holds);
}

TEST_P(FileNames, ComeBackFromSeveralAndFromFoldersOfThatName) {
    const std::string inner = std::string(GetParam()) + ".d\\";
    Folder.AddFile(inner + "1 " + GetParam());
    Folder.AddFile(inner + "2 " + GetParam());
    Dialog.SetOptions({ofAllowMultiSelect});
    Dialog.SetInitialDir(Holds ? Folder.Path(inner) : Folder.Path());
    std::vector<TStep> steps;
    if (!Holds) { // the code page has no name for the folder: the user opens it in the list
        steps.push_back(Perform("open the folder", [&] {
            HWND list = FileListOf(Dialog.DialogWindow());
            LVITEMA item{};
            item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
            SendMessageA(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
            SetFocus(list);
            PressKey(VK_RETURN);
        }));
    }
    steps.push_back({"the folder is open", FolderIs(Dialog, ExcludeTrailingPathDelimiter(Folder.Path(inner))),
                     [&] { SelectAllItems(FileListOf(Dialog.DialogWindow())); }});
    steps.push_back(Press(Dialog, IDOK));
    EXPECT_TRUE(RunDialog(Dialog, std::move(steps)));
    ASSERT_EQ(Dialog.Files().Count(), 2);
    EXPECT_THAT(
        (std::vector<std::string>{Dialog.Files()[0], Dialog.Files()[1]}),
        testing::UnorderedElementsAre(Folder.Path(inner + "1 " + GetParam()), Folder.Path(inner + "2 " + GetParam())));
}

TEST_P(FileNames, GoInAsFileNameFolderTitleAndFilter) {
    if (!Holds) {
        EXPECT_NE(FromUtf8(GetParam()).find('?'), std::string::npos) << "there is no such text in this code page";
        return;
    }
    const std::string name = FromUtf8(GetParam());
    TSaveDialog dialog;
    dialog.SetInitialDir(Folder.AddFolder("in"));
    dialog.SetFileName(name);
    dialog.SetTitle(name);
    dialog.SetFilter(name + "|*.txt");
    const bool confirmed = RunDialog(dialog,
                                     [&] {
                                         HWND window = dialog.DialogWindow();
                                         EXPECT_EQ(TextOf(window), name);
                                         EXPECT_EQ(TextOf(FileNameEditOf(window)), name);
                                         EXPECT_EQ(TextOf(FindChild(window, "ComboBox", cmb1)), name);
                                     },
                                     {Press(dialog, IDOK)});
    EXPECT_TRUE(confirmed);
    EXPECT_EQ(dialog.FileName(), Folder.Path("in\\" + std::string(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(InEveryScript, FileNames, testing::ValuesIn(Names),
                         [](const auto& test) { return std::to_string(test.index); });

TEST(FileNamesOfThisProgram, AreInTheCodePageOfItsManifest) {
#ifdef KX_TEST_UTF8
    EXPECT_EQ(GetACP(), static_cast<UINT>(CP_UTF8));
    EXPECT_TRUE(CodePageHolds(Names[3]));
#else
    EXPECT_TRUE(CodePageHolds(Names[0]));
#endif
}

} // namespace
} // namespace kx
