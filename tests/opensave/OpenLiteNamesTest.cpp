// SPDX-License-Identifier: MIT
// File names of any script in the lite dialogs.

#include "FileDlgTest.h"

namespace kx {
namespace {

using namespace test;

/// File names beyond ASCII, in UTF-8: those that the program's code page can hold.
std::vector<std::string> Names() {
    std::vector<std::string> names;
    for (const char* name : {"Größe übermäßig.txt", "Чертёж №5.txt", "図面 日本語.txt", "도면.txt", "σχέδιο.txt"}) {
        if (CodePageHolds(name)) {
            names.emplace_back(name);
        }
    }
    return names;
}

class LiteNames : public TFileDlgTest {
protected:
    LiteNames() {
        for (const std::string& name : Names()) {
            Folder.AddFile(name);
            Folder.AddFile("Ordner ä\\" + name);
        }
    }
};

TEST_F(LiteNames, TheProgramsCodePageHoldsTheNamesItShould) {
    // The program with the UTF-8 manifest holds all of them, every Western one the umlauts.
    EXPECT_EQ(Names().size(), GetACP() == CP_UTF8 ? 5u : 1u);
}

TEST_F(LiteNames, FilesAreChosenInADockedDialog) {
    const TFormPtr left = MakeMarkedForm(clCream, 120, 60);
    const TFormPtr bottom = MakeMarkedForm(clSkyBlue, 60, 70);
    for (const std::string& utf8 : Names()) {
        const std::string name = FromUtf8(utf8);
        auto& dialog = NewDialog();
        dialog.CustDlgParams().SetLeftForm(left.get());
        dialog.CustDlgParams().SetBottomForm(bottom.get());
        EXPECT_TRUE(RunDialog(dialog,
                              [&] {
                                  ASSERT_TRUE(SelectItem(ListOf(dialog), name)) << utf8;
                                  EXPECT_EQ(dialog.SelectedFiles(), name);
                                  EXPECT_EQ(dialog.FilenameText(), name);
                                  Screenshot("lite_names", dialog.DlgHandle());
                              },
                              {Press(dialog, IDOK)}));
        EXPECT_EQ(dialog.FileName(), Folder.Path(utf8));
    }
}

TEST_F(LiteNames, SeveralFilesAreChosenTogether) {
    TStringList list;
    for (const std::string& utf8 : Names()) {
        list.Add(FromUtf8(utf8));
    }
    list.Add("one.txt");
    auto& dialog = NewDialog();
    dialog.SetOptions({ofAllowMultiSelect, ofHideReadOnly});
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              dialog.SetSelectedFilesList(list);
                              EXPECT_TRUE(dialog.SelectedFilesList().Equals(list));
                          },
                          {Press(dialog, IDOK)}));
    ASSERT_EQ(dialog.Files().Count(), list.Count());
    for (int i = 0; i < list.Count(); ++i) {
        EXPECT_EQ(dialog.Files()[i], Folder.Path() + "\\" + list[i]);
    }
}

TEST_F(LiteNames, FoldersAreGoneToAndCaptionsShown) {
    auto& dialog = NewDialog();
    dialog.SetTitle(FromUtf8("Öffnen für Größe"));
    dialog.DlgItemsCaptions().SetCancel(FromUtf8("Schließen"));
    Look(dialog, [&] {
        EXPECT_EQ(TextOf(dialog.DlgHandle()), FromUtf8("Öffnen für Größe"));
        EXPECT_EQ(TextOf(ItemOf(dialog, IDCANCEL)), FromUtf8("Schließen"));
        dialog.SetSelectedFolder(Folder.Path("Ordner ä"));
        EXPECT_EQ(dialog.SelectedFolder(), Folder.Path("Ordner ä"));
        EXPECT_EQ(ItemCount(ListOf(dialog)), static_cast<int>(Names().size()));
    });
}

TEST_F(LiteNames, FilesAreSavedUnderTypedNames) {
    for (const std::string& utf8 : Names()) {
        auto& dialog = NewDialog<TKxSaveLiteDialog>();
        dialog.SetOptions({ofHideReadOnly});
        EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, FromUtf8("neu " + utf8))}));
        EXPECT_EQ(dialog.FileName(), Folder.Path("neu " + utf8));
    }
}

} // namespace
} // namespace kx
