// SPDX-License-Identifier: MIT
// Where the folder dialog's tree begins.

#include "FolderDlgTest.h"

#include "kx/win/Registry.h"
#include "tests/support/SlowDisk.h"

#include <shellapi.h>
#include <shlobj.h>

namespace kx {
namespace {

using namespace test;

/// One of the user's special folders is in another place for the length of a scope.
class TMovedFolder {
public:
    TMovedFolder(const std::string& name, const std::string& path) : FName(name) {
        FRegistry.SetRootKey(HKEY_CURRENT_USER);
        FRegistry.OpenKey("\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders", true);
        FHadValue = FRegistry.ValueExists(FName);
        FOld = FHadValue ? FRegistry.ReadString(FName) : "";
        FRegistry.WriteString(FName, path);
    }
    TMovedFolder(const TMovedFolder&) = delete;
    TMovedFolder& operator=(const TMovedFolder&) = delete;
    ~TMovedFolder() {
        if (FHadValue) {
            FRegistry.WriteString(FName, FOld);
        } else {
            FRegistry.DeleteValue(FName);
        }
    }

private:
    TRegistry FRegistry;
    std::string FName;
    std::string FOld;
    bool FHadValue = false;
};

class FolderRoot : public TFolderDlgTest {
protected:
    /// What the shell calls the folder.
    static std::string NameOf(TKxSpecShellFolder folder) {
        unique_pidl pidl;
        SHGetSpecialFolderLocation(nullptr, constFolders[folder], reinterpret_cast<LPITEMIDLIST*>(pidl.put()));
        SHFILEINFOA info{};
        SHGetFileInfoA(reinterpret_cast<LPCSTR>(pidl.get()), 0, &info, sizeof info, SHGFI_PIDL | SHGFI_DISPLAYNAME);
        return info.szDisplayName;
    }
    /// The first line of the tree.
    std::string RootOf(TKxFolderDialog& dialog) {
        std::string root;
        Look(dialog, [&] { root = TreeTexts(TreeOf(dialog)).at(0); });
        return root;
    }
    /// What Execute throws, which opens no browser.
    static std::string ErrorOf(TKxFolderDialog& dialog) {
        try {
            dialog.Execute();
        } catch (const EOSError& e) {
            EXPECT_NE(e.ErrorCode(), 0U);
            return e.what();
        }
        return "no error";
    }
};

TEST_F(FolderRoot, TheInitialDirIsTheRootOfTheTreeAndNotAMereSelection) {
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        EXPECT_THAT(TreeTexts(TreeOf(dialog)), ElementsAre(ExtractFileName(Folder.Path()), "alpha", "beta"));
        Screenshot("folder_root");
    });
}

TEST_F(FolderRoot, WithoutInitialDirTheTreeShowsTheWholeNamespace) {
    auto& dialog = NewDialog();
    dialog.SetInitialDir("");
    Look(dialog, [&] {
        const auto texts = TreeTexts(TreeOf(dialog));
        EXPECT_EQ(texts.at(0), NameOf(ftDesktop));
        EXPECT_GT(texts.size(), 2U);
    });
}

TEST_F(FolderRoot, ASpecialFolderIsTheRootOfTheTree) {
    for (const TKxSpecShellFolder folder : {ftPersonal, ftDrives, ftPrograms, ftDesktop}) {
        auto& dialog = NewDialog();
        dialog.SetSpecialIniFolder(folder);
        EXPECT_EQ(RootOf(dialog), NameOf(folder)) << folder;
    }
}

TEST_F(FolderRoot, SpecialFolderAndInitialDirExcludeEachOther) {
    auto& dialog = NewDialog();
    dialog.SetSpecialIniFolder(ftFavorites);
    EXPECT_EQ(dialog.InitialDir(), "");
    EXPECT_EQ(dialog.SpecialIniFolder(), ftFavorites);
    dialog.SetInitialDir(Folder.Path());
    EXPECT_EQ(dialog.SpecialIniFolder(), ftNone);
    EXPECT_EQ(dialog.InitialDir(), Folder.Path());
    dialog.SetSpecialIniFolder(ftNone);
    EXPECT_EQ(dialog.InitialDir(), Folder.Path());
}

TEST_F(FolderRoot, AnInitialDirThatIsNotThereIsAnErrorBeforeTheBrowserOpens) {
    auto& dialog = NewDialog();
    bool shown = false;
    dialog.SetOnShow([&](TObject*) { shown = true; });
    dialog.SetSelFolder("C:\\");
    dialog.SetInitialDir(Folder.Path("nowhere"));
    EXPECT_EQ(ErrorOf(dialog), "Error parsing folder name to PIDL");
    EXPECT_FALSE(shown);
    EXPECT_EQ(dialog.SelFolder(), "");
    EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
    {
        TSlowDisk disk;
        dialog.SetInitialDir("\\\\kx-test\\share\\folder");
        EXPECT_EQ(ErrorOf(dialog), "Error parsing folder name to PIDL") << "of a computer that does not answer";
    }
    dialog.SetInitialDir(Folder.Path());
    EXPECT_FALSE(Look(dialog)); // it works still
    EXPECT_TRUE(shown);
}

TEST_F(FolderRoot, ASpecialFolderWithoutLocationIsAnError) {
    // A user's folder that has been taken away
    const TMovedFolder moved("Favorites", Folder.Path("gone"));
    auto& dialog = NewDialog();
    dialog.SetSpecialIniFolder(ftFavorites);
    EXPECT_EQ(ErrorOf(dialog), "Can not get folder location (Pidl)");
    EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
}

TEST_F(FolderRoot, ChoosingReturnsPathDisplayNameAndItemList) {
    auto& dialog = NewDialog();
    EXPECT_TRUE(RunDialog(dialog, {Choose(dialog, "beta")}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
    EXPECT_THAT(dialog.DispName(), testing::EndsWith("beta"));
    EXPECT_EQ(GetPathFromPIDL(dialog.Pidl()), Folder.Path("beta"));
    EXPECT_EQ(dialog.SelFolder(), "");
    EXPECT_EQ(dialog.SelPidl(), nullptr);
}

TEST_F(FolderRoot, ChoosingWithMouseAndKeyboard) {
    auto& dialog = NewDialog();
    EXPECT_TRUE(RunDialog(
        dialog,
        {{"the tree has its items", [&] { return FindTreeItem(TreeOf(dialog), "beta") != nullptr; },
          [&] { ClickTreeItem(TreeOf(dialog), "beta"); }},
         {"the clicked folder", [&] { return dialog.SelFolder() == Folder.Path("beta"); }, [] { PressKey(VK_RIGHT); }},
         {"the folder in it", [&] { return FindTreeItem(TreeOf(dialog), "inner") != nullptr; },
          [] { PressKey(VK_DOWN); }},
         {"the folder in it is selected", [&] { return dialog.SelFolder() == Folder.Path("beta\\inner"); },
          [] { PressKey(VK_RETURN); }}}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta\\inner"));
}

TEST_F(FolderRoot, CancellingLeavesTheFormerFolder) {
    auto& dialog = NewDialog();
    ASSERT_TRUE(RunDialog(dialog, {Choose(dialog, "alpha")}));
    const std::string name = dialog.DispName();
    const std::vector<TAction> ways = {[&] { Click(ItemOf(dialog, IDCANCEL)); }, [] { PressKey(VK_ESCAPE); },
                                       [&] { PostMessageA(dialog.DialogWindow(), WM_CLOSE, 0, 0); }};
    for (const TAction& way : ways) {
        EXPECT_FALSE(RunDialog(dialog, [&] { SelectTreeItem(TreeOf(dialog), "beta"); }, {Perform("leave", way)}));
        EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
        EXPECT_EQ(dialog.DispName(), name);
        EXPECT_EQ(dialog.Pidl(), nullptr);
        EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
        EXPECT_EQ(dialog.Handle(), nullptr);
    }
}

TEST_F(FolderRoot, AFolderOutsideTheFileSystemHasNoPath) {
    auto& dialog = NewDialog();
    ASSERT_TRUE(RunDialog(dialog, {Choose(dialog, "alpha")}));
    dialog.SetSpecialIniFolder(ftDrives);
    EXPECT_TRUE(RunDialog(dialog, [&] {
        HWND tree = TreeOf(dialog);
        SelectTreeItem(tree, TreeTexts(tree).at(0));
        PressButton(ItemOf(dialog, IDOK));
    }));
    EXPECT_EQ(dialog.Folder(), "");
    EXPECT_NE(dialog.Pidl(), nullptr);
}

} // namespace
} // namespace kx
