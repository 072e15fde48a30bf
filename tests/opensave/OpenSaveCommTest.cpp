// SPDX-License-Identifier: MIT
// What the file dialogs' settings mean in numbers.

#include "kx/opensave/KxOpenSaveComm.h"
#include "kx/opensave/KxToolBarProps.h"

#include <commdlg.h>
#include <gmock/gmock.h>

namespace kx {
namespace {

using testing::ElementsAre;

// --- Standard controls

TEST(OpenDlgControls, KnowTheIdsOfTheSystemsDialog) {
    EXPECT_THAT(KxOpenDlgControlIds, ElementsAre(1137, 1091, 1120, 1, 2, 1152, 1090, 1136, 1089));
    EXPECT_EQ(dcToolBar, 9);
    EXPECT_EQ(KxAllOpenDlgControls.Bits(), 0x3FFu);
}

// --- List styles

TEST(ListViewStyles, LeaveTheViewToTheSystemAtFirst) {
    const TKxListViewStyles styles;
    EXPECT_FALSE(styles.ApplyViewStyle());
    EXPECT_EQ(styles.ViewStyle(), lvsList);
}

TEST(ListViewStyles, NameTheCommandsOfTheViewMenu) {
    EXPECT_EQ(KxViewCommand(lvsIcon), 0x7029);
    EXPECT_EQ(KxViewCommand(lvsSmallIcon), 0x702A);
    EXPECT_EQ(KxViewCommand(lvsList), 0x702B);
    EXPECT_EQ(KxViewCommand(lvsReport), 0x702C);
    EXPECT_EQ(KxViewCommand(lvsThumbnail), 0x702D);
    EXPECT_EQ(KxViewCommand(lvsTile), 0x702E);
}

TEST(ListViewStyles, AddTheBitOfEachStyle) {
    TKxListViewStyles styles;
    EXPECT_EQ(styles.ApplyToExStyle(0), 0u);
    styles.SetFlatScrollBars(true);
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x100u);
    styles.SetRowSelect(true);
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x120u);
    styles.SetHotTrack(true);
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x128u);
    styles.SetGridLines(true);
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x129u);
}

TEST(ListViewStyles, UnderlinesAloneActivateByTwoClicks) {
    TKxListViewStyles styles;
    styles.SetHotTrackStyles({htUnderlineCold});
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x80u | 0x1000u);
    styles.SetHotTrackStyles({htUnderlineHot});
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x80u | 0x800u);
    styles.SetHotTrackStyles({htUnderlineHot, htUnderlineCold});
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x80u | 0x800u | 0x1000u);
}

TEST(ListViewStyles, TheHandActivatesByOneClickAndNeverByTwo) {
    TKxListViewStyles styles;
    styles.SetHotTrackStyles({htHandPoint});
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x40u);
    styles.SetHotTrackStyles({htHandPoint, htUnderlineHot});
    EXPECT_EQ(styles.ApplyToExStyle(0), 0x40u | 0x800u);
}

TEST(ListViewStyles, TakeNoBitAway) {
    TKxListViewStyles styles;
    styles.SetFlatScrollBars(true);
    const DWORD shown = styles.ApplyToExStyle(0x10000);
    styles.SetFlatScrollBars(false);
    EXPECT_EQ(styles.ApplyToExStyle(shown), 0x10100u);
}

TEST(ListViewStyles, RemoveTheLabelEditingOfAListWithoutRenaming) {
    TKxListViewStyles styles;
    EXPECT_EQ(styles.ApplyToStyle(0x56010B4F), 0x56010B4Fu);
    styles.SetEnableRename(false);
    EXPECT_EQ(styles.ApplyToStyle(0x56010B4F), 0x5601094Fu);
}

// --- Tool bars

class ToolBarWindows : public testing::Test {
protected:
    static HWND Make(const char* className, HWND parent, int id) {
        return CreateWindowExA(0, className, "", parent ? WS_CHILD : WS_POPUP, 0, 0, 50, 20, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }

    ToolBarWindows() {
        INITCOMMONCONTROLSEX init{sizeof init, ICC_BAR_CLASSES};
        InitCommonControlsEx(&init);
    }
    unique_hwnd Parent{Make("STATIC", nullptr, 0)};
};

TEST_F(ToolBarWindows, TheFirstDirectChildOfTheClassIsFoundUnlessAnotherHasTheButton) {
    HWND inside = Make("STATIC", Parent.get(), 5);
    Make(TOOLBARCLASSNAMEA, inside, 6);
    HWND first = Make(TOOLBARCLASSNAMEA, Parent.get(), 7);
    Make(TOOLBARCLASSNAMEA, Parent.get(), 8);
    EXPECT_EQ(KxFindToolbar(Parent.get()), first);
    EXPECT_EQ(KxFindToolbar(Parent.get(), 12345), first); // nobody has that button
    HWND third = Make(TOOLBARCLASSNAMEA, Parent.get(), 9);
    TBBUTTON button{};
    button.idCommand = KxCmdUpLevel;
    SendMessageA(third, TB_BUTTONSTRUCTSIZE, sizeof button, 0);
    SendMessageA(third, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    EXPECT_EQ(KxFindToolbar(Parent.get()), third);
    EXPECT_EQ(KxFindToolbar(Parent.get(), KxCmdNewFolder), first);
}

TEST_F(ToolBarWindows, NoneIsFoundAmongOtherClasses) {
    Make("STATIC", Parent.get(), 5);
    EXPECT_EQ(KxFindToolbar(Parent.get()), nullptr);
}

TEST_F(ToolBarWindows, TheSystemsPlacesBarIsNotTheNavigationBar) {
    Make(TOOLBARCLASSNAMEA, Parent.get(), 1184);
    EXPECT_EQ(KxFindToolbar(Parent.get()), nullptr);
    HWND second = Make(TOOLBARCLASSNAMEA, Parent.get(), 1);
    EXPECT_EQ(KxFindToolbar(Parent.get()), second);
}

TEST_F(ToolBarWindows, FlatButtonsChangeNothingElse) {
    HWND bar = Make(TOOLBARCLASSNAMEA, Parent.get(), 1);
    const LONG_PTR before = GetWindowLongPtrA(bar, GWL_STYLE);
    ASSERT_EQ(before & TBSTYLE_FLAT, 0);
    MakeFlatButtons(bar);
    EXPECT_EQ(GetWindowLongPtrA(bar, GWL_STYLE), before | TBSTYLE_FLAT);
    MakeFlatButtons(bar);
    EXPECT_EQ(GetWindowLongPtrA(bar, GWL_STYLE), before | TBSTYLE_FLAT);
}

TEST(ToolBarOptions, ForgetABarThatIsFreed) {
    TKxToolBarOptions options;
    EXPECT_FALSE(options.Flat());
    EXPECT_EQ(options.CustomBar(), nullptr);
    auto bar = std::make_unique<TToolBar>();
    options.SetCustomBar(bar.get());
    EXPECT_EQ(options.CustomBar(), bar.get());
    bar.reset();
    EXPECT_EQ(options.CustomBar(), nullptr);
}

// --- Places bar

TEST(PlacesBar, IsSupportedFromWindows2000AndMeOn) {
    EXPECT_TRUE(PlacesBarSupported(2, 5, 0));
    EXPECT_TRUE(PlacesBarSupported(2, 6, 1));
    EXPECT_FALSE(PlacesBarSupported(2, 4, 90));
    EXPECT_TRUE(PlacesBarSupported(1, 4, 90));
    EXPECT_FALSE(PlacesBarSupported(1, 4, 10));
    EXPECT_FALSE(PlacesBarSupported(0, 6, 0));
    EXPECT_TRUE(PlacesBarSupported()); // every system that this runs on
}

TEST(PlacesBar, TheRecordThatShowsItKeepsAllElse) {
    OPENFILENAMEA record{};
    char file[] = "x";
    record.lStructSize = 76;
    record.lpstrFile = file;
    record.nFilterIndex = 3;
    record.FlagsEx = OFN_EX_NOPLACESBAR;
    const OPENFILENAMEA copy = KxWithPlacesBar(record);
    EXPECT_EQ(copy.lStructSize, sizeof(void*) == 4 ? 88u : sizeof copy);
    EXPECT_EQ(copy.FlagsEx, 0u);
    EXPECT_EQ(copy.lpstrFile, file);
    EXPECT_EQ(copy.nFilterIndex, 3u);
    EXPECT_EQ(record.FlagsEx, static_cast<DWORD>(OFN_EX_NOPLACESBAR));
}

} // namespace
} // namespace kx
