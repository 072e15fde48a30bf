// SPDX-License-Identifier: MIT
// File dialogs that remember what the user did.

#include "RememberFixture.h"

#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/opensave/KxSaveDlg.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/SlowDisk.h"

#include <commdlg.h>

namespace kx::test {
namespace {

/// What all file dialogs remember, whatever their class.
struct TKind {
    const char* Name;
    TOpenDialog& (*Make)(TForm& owner, const std::string& key);
};

template <class T> TOpenDialog& MakeKind(TForm& owner, const std::string& key) {
    auto* const dialog = new T(&owner);
    dialog->SetFilter(Filter);
    dialog->SetRememberKey(key);
    return *dialog;
}

class RememberAll : public Remember, public testing::WithParamInterface<TKind> {
protected:
    TOpenDialog& Make() { return Make(Key.Path()); }
    TOpenDialog& Make(const std::string& key) { return GetParam().Make(*Owner, key); }
    static TKxFileDlgCore& Core(TOpenDialog& dialog) { return dynamic_cast<TKxFileDlgCore&>(dialog); }
};

INSTANTIATE_TEST_SUITE_P(Kinds, RememberAll,
                         testing::Values(TKind{"Open", MakeKind<TKxOpenDialog>}, TKind{"Save", MakeKind<TKxSaveDialog>},
                                         TKind{"OpenEx", MakeKind<TKxOpenDialogEx>},
                                         TKind{"OpenLite", MakeKind<TKxOpenLiteDialog>},
                                         TKind{"SaveLite", MakeKind<TKxSaveLiteDialog>}),
                         [](const auto& each) { return std::string(each.param.Name); });

TEST_P(RememberAll, BeginsInTheFolderAndWithTheFilterAndSizeOfTheLastChoice) {
    auto& first = Make();
    first.SetInitialDir(Folder.Path());
    TPoint size{};
    EXPECT_TRUE(RunDialog(first,
                          [&] {
                              Resize(Core(first), 40, 30);
                              size = SizeOf(Core(first));
                              ChooseFilter(Core(first), 2);
                          },
                          {EnterFileName(first, "one.txt")}));
    EXPECT_EQ(TextAt("Folder"), Folder.Path());
    EXPECT_EQ(Number("FilterIndex"), 2);
    auto& second = Make();
    Look(second, [&] {
        EXPECT_EQ(Core(second).SelectedFolder(), Folder.Path());
        EXPECT_EQ(FilterOf(Core(second)), 2);
        EXPECT_EQ(SizeOf(Core(second)), size);
        ExpectCleanLayout(Core(second));
        Screenshot(std::string("remember-") + GetParam().Name, Core(second).DlgHandle());
    });
    EXPECT_EQ(second.InitialDir(), "") << "what the program has set is as it was";
    EXPECT_EQ(second.FilterIndex(), 1);
}

TEST_P(RememberAll, ACancelledDialogKeepsItsSizeButNeitherFolderNorFilter) {
    Key.Write("Folder", Other.Path());
    Key.Write("FilterIndex", 3);
    auto& dialog = Make();
    TPoint size{};
    Look(dialog, [&] {
        EXPECT_EQ(FilterOf(Core(dialog)), 3);
        Resize(Core(dialog), 40, 30);
        size = SizeOf(Core(dialog));
        Core(dialog).SetSelectedFolder(Folder.Path());
        ChooseFilter(Core(dialog), 2);
    });
    EXPECT_EQ(TextAt("Folder"), Other.Path());
    EXPECT_EQ(Number("FilterIndex"), 3);
    auto& second = Make();
    Look(second, [&] {
        EXPECT_EQ(SizeOf(Core(second)), size);
        EXPECT_EQ(Core(second).SelectedFolder(), Other.Path());
        EXPECT_EQ(FilterOf(Core(second)), 3);
    });
}

TEST_P(RememberAll, WhatTheProgramSaysIsStronger) {
    Key.Write("Folder", Other.Path());
    Key.Write("FilterIndex", 3);
    Key.Write("Width", 700);
    Key.Write("Height", 500);
    auto& dialog = Make();
    dialog.SetInitialDir(Folder.Path());
    dialog.SetFilterIndex(2);
    dialog.SetOptions(dialog.Options() - TOpenOptions{ofEnableSizing});
    Look(dialog, [&] {
        EXPECT_EQ(Core(dialog).SelectedFolder(), Folder.Path());
        EXPECT_EQ(FilterOf(Core(dialog)), 2);
        EXPECT_NE(SizeOf(Core(dialog)), (TPoint{700, 500}));
    });
    EXPECT_EQ(Number("Width"), 700) << "a size that the user cannot change is not his";
    auto& named = Make();
    named.SetFileName(Folder.Path("one.txt"));
    Look(named, [&] { EXPECT_EQ(Core(named).SelectedFolder(), Folder.Path()); });
    auto& nameless = Make();
    nameless.SetFileName("one.txt");
    Look(nameless, [&] {
        EXPECT_EQ(Core(nameless).SelectedFolder(), Other.Path()) << "a name alone says nothing of a folder";
        EXPECT_EQ(SizeOf(Core(nameless)), (TPoint{700, 500}) + ExtraOf(Core(nameless)));
    });
}

TEST_P(RememberAll, ADialogOfFixedSizeIsNotClipped) {
    Key.Write("Width", 700);
    Key.Write("Height", 500);
    const TFormPtr bottom = MakeMarkedForm(clSkyBlue, 60, WorkArea.Y);
    auto& dialog = Make();
    dialog.SetOptions(dialog.Options() - TOpenOptions{ofEnableSizing});
    Core(dialog).CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] { EXPECT_GT(SizeOf(Core(dialog)).Y, WorkArea.Y); });
}

TEST_P(RememberAll, WithoutAKeyNothingIsRemembered) {
    auto& dialog = Make("");
    dialog.SetInitialDir(Folder.Path());
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_P(RememberAll, BrokenValuesMeanNothingToRecall) {
    TPoint size{};
    auto& plain = Make("");
    Look(plain, [&] { size = SizeOf(Core(plain)); });
    Key.Write("Folder", Folder.Path("nothing"));
    Key.Write("FilterIndex", 4);
    Key.Write("Width", "wide");
    Key.Write("Height", 500);
    Key.Write("ViewStyle", 99);
    Key.Write("ColumnWidths", "1,2,many");
    auto& dialog = Make();
    Look(dialog, [&] {
        EXPECT_EQ(SizeOf(Core(dialog)), size);
        EXPECT_EQ(FilterOf(Core(dialog)), 1) << "there are three";
        EXPECT_NE(Core(dialog).SelectedFolder(), Folder.Path("nothing"));
    });
}

TEST_P(RememberAll, AFolderOfAComputerThatIsNotThereIsLeftOut) {
    const std::string share = "\\\\kx-test\\share\\folder";
    TSlowDisk disk;
    disk.Fail(share, ERROR_BAD_NETPATH);
    Key.Write("Folder", share);
    auto& dialog = Make();
    Look(dialog, [&] {
        const std::string folder = Core(dialog).SelectedFolder();
        EXPECT_NE(folder, share);
        const int asked = disk.Asked(share);
        EXPECT_GT(asked, 0);
        Core(dialog).SetSelectedFolder(share);
        EXPECT_GT(disk.Asked(share), asked);
        EXPECT_EQ(Core(dialog).SelectedFolder(), folder) << "nor does the dialog go there later";
    });
}

TEST_P(RememberAll, ASizeBeyondTheScreenIsClippedToIt) {
    Key.Write("Width", 30000);
    Key.Write("Height", 30000);
    const TFormPtr bottom = MakeMarkedForm(clSkyBlue, 60, 70);
    auto& dialog = Make();
    Core(dialog).CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] { EXPECT_EQ(SizeOf(Core(dialog)), WorkArea) << "with all that is docked"; });
    auto& narrow = Make();
    Key.Write("Width", 700);
    Key.Write("Height", 30000);
    Look(narrow, [&] { EXPECT_EQ(SizeOf(Core(narrow)), (TPoint{700 + ExtraOf(Core(narrow)).X, WorkArea.Y})); });
}

TEST_P(RememberAll, TheSizeIsThatWithoutTheDockedForms) {
    const TFormPtr right = MakeMarkedForm(clSkyBlue, 90, 70);
    auto& dialog = Make();
    Core(dialog).CustDlgParams().SetBottomForm(right.get());
    TPoint with{};
    int extra = 0;
    Look(dialog, [&] {
        Resize(Core(dialog), 40, 30);
        with = SizeOf(Core(dialog));
        extra = Core(dialog).CustDlgParams().IncY();
    });
    EXPECT_GE(extra, 70);
    auto& plain = Make();
    Look(plain, [&] {
        EXPECT_EQ(SizeOf(Core(plain)), (TPoint{with.X, with.Y - extra + Core(plain).CustDlgParams().IncY()}));
    });
}

TEST_P(RememberAll, AKeyThatCannotBeMadeIsPassedOver) {
    constexpr size_t tooLong = 300; // characters in the name of a key
    auto& dialog = Make(Key.Path() + '\\' + std::string(tooLong, 'k'));
    dialog.SetInitialDir(Folder.Path());
    EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_P(RememberAll, ADialogThatIsFreedMeanwhileKeepsNothing) {
    auto* dialog = &Make();
    EXPECT_FALSE(RunDialog(*dialog, [&] { std::exchange(dialog, nullptr)->Free(); }));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_P(RememberAll, ToExecuteARunningDialogDisturbsNothing) {
    auto& dialog = Make();
    dialog.SetInitialDir(Folder.Path());
    TPoint size{};
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              Key.Write("Width", 900);
                              Key.Write("Height", 650);
                              EXPECT_THROW(dialog.Execute(), EInvalidOperation);
                              Resize(Core(dialog), 40, 30);
                              size = SizeOf(Core(dialog)) - ExtraOf(Core(dialog));
                          },
                          {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ((TPoint{Number("Width"), Number("Height")}), size);
    EXPECT_EQ(TextAt("Folder"), Folder.Path());
}

TEST_P(RememberAll, ANewKeyHoldsFromTheNextExecuteOn) {
    auto& dialog = Make();
    dialog.SetInitialDir(Folder.Path());
    const std::string other = Key.Path() + "\\Other";
    EXPECT_TRUE(RunDialog(dialog, [&] { Core(dialog).SetRememberKey(other); }, {EnterFileName(dialog, "one.txt")}));
    EXPECT_EQ(TextAt("Folder"), Folder.Path());
    EXPECT_FALSE(TRegistry().KeyExists(other));
}

/// Notes what the system is given.
struct TPeek : TKxOpenDialog {
    using TKxOpenDialog::TKxOpenDialog;
    std::string FirstFolder() const override { return GivenFolder = TKxOpenDialog::FirstFolder(); }
    int FirstFilterIndex() const override { return GivenFilter = TKxOpenDialog::FirstFilterIndex(); }
    mutable std::string GivenFolder;
    mutable int GivenFilter = 0;
};

TEST_F(Remember, TheSystemIsGivenNothingThatItWouldHaveToCorrect) {
    Key.Write("Folder", Other.Path());
    Key.Write("FilterIndex", 4); // there are three
    auto& dialog = New<TPeek>();
    Look(dialog);
    EXPECT_EQ(dialog.GivenFilter, 1);
    EXPECT_EQ(dialog.GivenFolder, Other.Path());
    dialog.SetFileName(Folder.Path("one.txt"));
    Look(dialog);
    EXPECT_EQ(dialog.GivenFolder, "") << "the name has a folder";
    dialog.SetFilter("All|*.*|Text|*.txt|Logs|*.log|Rest|*.rest");
    Look(dialog);
    EXPECT_EQ(dialog.GivenFilter, 4);
    Key.Write("FilterIndex", 0);
    Look(dialog);
    EXPECT_EQ(dialog.GivenFilter, 1);
}

BOOL WINAPI ShowNothing(OPENFILENAMEA*) { return FALSE; }
LSTATUS WINAPI RefuseValue(HKEY, LPCSTR, DWORD, DWORD, const BYTE*, DWORD) { return ERROR_ACCESS_DENIED; }

TEST_F(Remember, ADialogThatTheSystemDoesNotShowKeepsNothing) {
    auto& dialog = New<TKxOpenLiteDialog>();
    const TImportPatch patch("GetOpenFileNameA", reinterpret_cast<void*>(ShowNothing));
    EXPECT_FALSE(dialog.Execute());
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_F(Remember, WhatCannotBeWrittenIsReportedAndTheChoiceStands) {
    auto& dialog = New<TKxOpenDialog>();
    dialog.SetInitialDir(Folder.Path());
    {
        const TImportPatch patch("RegSetValueExA", reinterpret_cast<void*>(RefuseValue));
        EXPECT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    }
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
    EXPECT_THAT(TakeExceptions(), ElementsAre("Failed to set data for 'Width'"));
}

} // namespace
} // namespace kx::test
