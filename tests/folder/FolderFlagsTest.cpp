// SPDX-License-Identifier: MIT
// The folder dialog's options and the system's flags.

#include "FolderDlgTest.h"

#include <shlobj.h>

namespace kx {
namespace {

using namespace test;
using testing::ElementsAreArray;

/// What can be seen of a browser.
using TLook = std::vector<std::string>;

TLook LookOf(HWND browser) {
    TLook look;
    look.push_back("sizeable " + std::to_string((GetWindowLongA(browser, GWL_STYLE) & WS_THICKFRAME) != 0));
    for (HWND child = GetWindow(browser, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const TRect r = RectIn(browser, child);
        look.push_back(ClassOf(child) + " " + std::to_string(GetDlgCtrlID(child)) +
                       (IsWindowVisible(child) ? " visible " : " hidden ") + std::to_string(r.Left) + "," +
                       std::to_string(r.Top) + "," + std::to_string(r.Right) + "," + std::to_string(r.Bottom));
    }
    HWND tree = TreeOf(browser);
    for (const std::string& text : TreeTexts(tree)) {
        SelectTreeItem(tree, text);
        const bool ok = IsWindowEnabled(GetDlgItem(browser, IDOK)) != 0;
        look.push_back(text + (ok ? " may be chosen" : " may not be chosen"));
    }
    return look;
}

class FolderFlags : public TFolderDlgTest {
protected:
    TLook OurLook(TKxBrowseForFolderFlags options, TKxBrowseForFolderFlagsEx optionsEx, TKxSpecShellFolder root) {
        auto& dialog = NewDialog();
        dialog.SetOptions(options);
        dialog.SetOptionsEx(optionsEx);
        if (root != ftNone) {
            dialog.SetSpecialIniFolder(root);
        }
        TLook look;
        Look(dialog, [&] { look = LookOf(dialog.DialogWindow()); });
        return look;
    }
    /// The same of the bare system's browser.
    TLook BareLook(UINT flags, TKxSpecShellFolder root) {
        unique_pidl pidl;
        if (root == ftNone) {
            pidl = CreatePIDLFromPath(Folder.Path());
        } else {
            SHGetSpecialFolderLocation(nullptr, constFolders[root], reinterpret_cast<LPITEMIDLIST*>(pidl.put()));
        }
        char name[MAX_PATH] = "";
        BROWSEINFOA info{};
        info.pidlRoot = pidl.get();
        info.pszDisplayName = name;
        info.lpszTitle = "";
        info.ulFlags = flags;
        TLook look;
        RunDialog([&] { return static_cast<bool>(unique_pidl(SHBrowseForFolderA(&info))); },
                  {{"the browser is shown", [] { return ActiveDialog() != nullptr; },
                    [&] {
                        HWND browser = ActiveDialog();
                        look = LookOf(browser);
                        PressButton(GetDlgItem(browser, IDCANCEL));
                    }}});
        return look;
    }
    void ExpectSameLook(TKxBrowseForFolderFlags options, TKxBrowseForFolderFlagsEx optionsEx, UINT flags) {
        for (const TKxSpecShellFolder root : {ftNone, ftDesktop}) {
            EXPECT_THAT(OurLook(options, optionsEx, root), ElementsAreArray(BareLook(flags, root))) << root;
        }
    }
};

TEST_F(FolderFlags, HaveTheirValues) {
    EXPECT_THAT(constFolderOptions, testing::ElementsAre(0x1000U, 0x2000U, 2U, 8U, 1U, 4U));
    EXPECT_THAT(constFolderOptionsEx, testing::ElementsAre(0x200U, 0x40U, 0x10U, 0x4000U, 0x80U, 0x20U, 0x8000U));
    EXPECT_EQ(numOfBrwsFlags, KxTypeInfo(TKxBrowseForFolderFlag{}).Values.size());
    EXPECT_EQ(numOfBrwsFlagsEx, KxTypeInfo(TKxBrowseForFolderFlagEx{}).Values.size());
}

class FolderFlag : public FolderFlags, public testing::WithParamInterface<TKxBrowseForFolderFlag> {};

TEST_P(FolderFlag, ReachesTheSystem) { ExpectSameLook({GetParam()}, {}, constFolderOptions[GetParam()]); }

INSTANTIATE_TEST_SUITE_P(Each, FolderFlag,
                         testing::Values(ffBrowseForComputer, ffBrowseForPrinter, ffDontGoBelowDomain,
                                         ffReturnFSAncestors, ffReturnOnlyFSDirs, ffStatusText),
                         [](const testing::TestParamInfo<TKxBrowseForFolderFlag>& flag) {
                             return KxTypeInfo(flag.param).Values[flag.param];
                         });

class FolderFlagEx : public FolderFlags, public testing::WithParamInterface<TKxBrowseForFolderFlagEx> {};

TEST_P(FolderFlagEx, ReachesTheSystem) {
    ExpectSameLook({}, {GetParam()}, constFolderOptionsEx[GetParam()]);
    if (GetParam() != ffNewDialogStyle) {
        ExpectSameLook({}, {GetParam(), ffNewDialogStyle}, constFolderOptionsEx[GetParam()] | BIF_NEWDIALOGSTYLE);
    }
}

INSTANTIATE_TEST_SUITE_P(Each, FolderFlagEx,
                         testing::Values(ffNoNewFolderButton, ffNewDialogStyle, ffEditBox, ffIncludeFiles,
                                         ffIncludeUrls, ffValidate, ffShareable),
                         [](const testing::TestParamInfo<TKxBrowseForFolderFlagEx>& flag) {
                             return KxTypeInfo(flag.param).Values[flag.param];
                         });

TEST_F(FolderFlags, ThatCanBeSeenChangeTheBrowser) {
    const TLook plain = OurLook({}, {}, ftDesktop);
    for (const TKxBrowseForFolderFlag flag :
         {ffBrowseForComputer, ffReturnFSAncestors, ffReturnOnlyFSDirs, ffStatusText}) {
        EXPECT_NE(OurLook({flag}, {}, ftDesktop), plain) << KxTypeInfo(flag).Values[flag];
    }
    const TLook modern = OurLook({}, {ffNewDialogStyle}, ftNone);
    EXPECT_NE(modern, OurLook({}, {}, ftNone));
    for (const TKxBrowseForFolderFlagEx flag : {ffNoNewFolderButton, ffEditBox, ffIncludeFiles}) {
        EXPECT_NE(OurLook({}, {ffNewDialogStyle, flag}, ftNone), modern) << KxTypeInfo(flag).Values[flag];
    }
}

TEST_F(FolderFlags, FilesCanBeChosenWhenTheyAreIncluded) {
    auto& dialog = NewDialog();
    dialog.SetOptionsEx({ffIncludeFiles});
    EXPECT_TRUE(RunDialog(dialog, {Choose(dialog, "letter.txt")}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("letter.txt"));
}

TEST_F(FolderFlags, TheNewStyleMakesFolders) {
    auto& dialog = NewDialog();
    dialog.SetOptionsEx({ffNewDialogStyle});
    EXPECT_TRUE(RunDialog(dialog, [&] { ClickTreeItem(TreeOf(dialog), ExtractFileName(Folder.Path())); },
                          {{"the root is selected", [&] { return dialog.SelFolder() == Folder.Path(); },
                            [&] { Click(ItemOf(dialog, NewFolderId)); }},
                           {"the name of a new folder is edited",
                            [&] { return SendMessageA(TreeOf(dialog), TVM_GETEDITCONTROL, 0, 0) != 0; },
                            [&] {
                                Screenshot("folder_new_style", dialog.DialogWindow());
                                Click(ItemOf(dialog, IDOK));
                            }}}));
    EXPECT_EQ(ExtractFileDir(dialog.Folder()), Folder.Path());
    EXPECT_TRUE(Folder.Contains(ToUtf8(ExtractFileName(dialog.Folder()))));
    EXPECT_NE(GetFileAttributesA(dialog.Folder().c_str()), INVALID_FILE_ATTRIBUTES);
}

} // namespace
} // namespace kx
