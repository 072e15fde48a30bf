// SPDX-License-Identifier: MIT
// The folder dialog remembers what the user did.

#include "FolderDlgTest.h"

#include "kx/win/Registry.h"
#include "tests/support/TestKey.h"

namespace kx {
namespace {

using namespace test;

class FolderRemember : public TFolderDlgTest {
protected:
    TKxFolderDialog& New() {
        auto& dialog = NewDialog();
        dialog.SetRememberKey(Key.Path());
        return dialog;
    }
    TKxFolderDialog& NewSizeable() {
        auto& dialog = New();
        dialog.SetOptionsEx({ffNewDialogStyle});
        return dialog;
    }
    std::string StoredFolder() const {
        TRegistry registry;
        return registry.OpenKeyReadOnly(Key.Path()) ? registry.ReadString("Folder") : std::string();
    }
    static TPoint SizeOf(const TKxFolderDialog& dialog) {
        const TRect r = ScreenRectOf(dialog.DialogWindow());
        return {Width(r), Height(r)};
    }
    static void Resize(const TKxFolderDialog& dialog, int dx, int dy) {
        const TPoint size = SizeOf(dialog);
        SetWindowPos(dialog.DialogWindow(), nullptr, 0, 0, size.X + dx, size.Y + dy,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    TTestKey Key;
};

TEST_F(FolderRemember, TheChosenFolderIsSelectedNextTime) {
    auto& first = New();
    EXPECT_TRUE(RunDialog(first, {Choose(first, "alpha")}));
    EXPECT_EQ(StoredFolder(), Folder.Path("alpha"));
    for (const bool newStyle : {false, true}) {
        auto& second = newStyle ? NewSizeable() : New();
        EXPECT_TRUE(RunDialog(second,
                              [&] {
                                  EXPECT_TRUE(PumpUntil([&] { return second.SelFolder() == Folder.Path("alpha"); }));
                                  Screenshot("folder-remember", second.DialogWindow());
                              },
                              {Press(second, IDOK)}));
        EXPECT_EQ(second.Folder(), Folder.Path("alpha"));
    }
}

TEST_F(FolderRemember, ACancelledDialogKeepsTheFolderOfTheLastChoice) {
    Key.Write("Folder", Folder.Path("alpha"));
    auto& dialog = New();
    Look(dialog, [&] { SelectTreeItem(TreeOf(dialog), "beta"); });
    EXPECT_EQ(StoredFolder(), Folder.Path("alpha"));
}

TEST_F(FolderRemember, WithoutARootTheFolderIsSelectedToo) {
    Key.Write("Folder", Folder.Path("alpha"));
    auto& dialog = New();
    dialog.SetInitialDir("");
    Look(dialog, [&] { EXPECT_TRUE(PumpUntil([&] { return SameText(dialog.SelFolder(), Folder.Path("alpha")); })); });
}

TEST_F(FolderRemember, AFolderOutsideOfTheRootOrThatHasGoneIsNotSelected) {
    const TTempFolder other("other");
    for (const std::string& folder : {other.Path(), Folder.Path("nothing"), Folder.Path() + "x"}) {
        Key.Write("Folder", folder);
        auto& dialog = New();
        int selections = 0;
        dialog.SetOnSelectionChange([&](TObject*) { ++selections; });
        Look(dialog, [&] { EXPECT_EQ(dialog.SelFolder(), ""); });
        EXPECT_EQ(selections, 0) << folder;
    }
    Key.Write("Folder", Folder.Path("alpha"));
    auto& special = New();
    special.SetSpecialIniFolder(ftDrives);
    Look(special, [&] { EXPECT_NE(special.SelFolder(), Folder.Path("alpha")); });
}

TEST_F(FolderRemember, AFolderThatTheProgramSelectsIsStronger) {
    Key.Write("Folder", Folder.Path("alpha"));
    auto& dialog = New();
    dialog.SetOnShow([&](TObject*) { dialog.SetSelFolder(Folder.Path("beta")); });
    EXPECT_TRUE(RunDialog(dialog,
                          [&] { EXPECT_TRUE(PumpUntil([&] { return dialog.SelFolder() == Folder.Path("beta"); })); },
                          {Press(dialog, IDOK)}));
    EXPECT_EQ(StoredFolder(), Folder.Path("beta"));
}

TEST_F(FolderRemember, ABrowserThatCanBeSizedComesBackInItsSizeWhetherTheUserChoseOrNot) {
    for (const bool confirmed : {true, false}) {
        auto& first = NewSizeable();
        TPoint size{};
        RunDialog(first,
                  [&] {
                      Resize(first, confirmed ? 60 : 30, 40);
                      size = SizeOf(first);
                  },
                  {confirmed ? Choose(first, "alpha") : Cancel(first)});
        auto& second = NewSizeable();
        Look(second, [&] {
            EXPECT_EQ(SizeOf(second), size);
            Screenshot("folder-remember-size", second.DialogWindow());
        });
    }
}

TEST_F(FolderRemember, ABrowserThatCannotBeSizedHasTheSystemsSize) {
    TPoint size{};
    auto& plain = NewDialog();
    Look(plain, [&] { size = SizeOf(plain); });
    Key.Write("Width", 700);
    Key.Write("Height", 500);
    auto& dialog = New();
    Look(dialog, [&] {
        EXPECT_EQ(SizeOf(dialog), size);
        Resize(dialog, 10, 10);
    });
    TRegistry registry;
    ASSERT_TRUE(registry.OpenKeyReadOnly(Key.Path()));
    EXPECT_EQ(registry.ReadInteger("Width"), 700) << "a size that the user cannot change is not his";
}

TEST_F(FolderRemember, ASizeBeyondTheScreenIsClippedToIt) {
    RECT area{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    Key.Write("Width", 30000);
    Key.Write("Height", 30000);
    auto& dialog = NewSizeable();
    Look(dialog, [&] { EXPECT_EQ(SizeOf(dialog), (TPoint{area.right - area.left, area.bottom - area.top})); });
}

TEST_F(FolderRemember, WithoutAKeyNothingIsRemembered) {
    auto& dialog = NewDialog();
    EXPECT_TRUE(RunDialog(dialog, {Choose(dialog, "alpha")}));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_F(FolderRemember, ADialogThatIsFreedMeanwhileKeepsNothing) {
    auto* dialog = &NewSizeable();
    EXPECT_FALSE(RunDialog(*dialog, [&] { std::exchange(dialog, nullptr)->Free(); }));
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

} // namespace
} // namespace kx
