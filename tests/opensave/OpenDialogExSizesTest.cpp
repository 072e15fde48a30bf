// SPDX-License-Identifier: MIT
// The dialog with recent files at all sizes.

#include "OpenDialogExFixture.h"

// The dialog with recent files in every size: its tabs span it, its lists fill their place.

namespace kx {
namespace {

using namespace test;

class OpenDialogExSizes : public TExDlgTest, public testing::WithParamInterface<bool> {
protected:
    void ExpectSpanned(TKxOpenDialogEx& dialog) {
        const TRect client = ClientRectOf(dialog.DlgHandle());
        EXPECT_EQ(RectIn(dialog.DlgHandle(), GetParent(TabsOf(dialog))), (TRect{0, 0, client.Right, 23}));
        ExpectCleanLayout(dialog);
    }
    /// Both lists take the same place.
    void ExpectInTheListsPlace(TKxOpenDialogEx& dialog, const TRect& files) {
        const TRect recent = RectIn(dialog.DlgHandle(), RecentForm(dialog).WindowHandle());
        const int frame = GetSystemMetrics(SM_CXDLGFRAME);
        EXPECT_EQ(recent.Left, files.Left);
        EXPECT_EQ(recent.Top, files.Top);
        EXPECT_NEAR(recent.Right, files.Right, frame);
        EXPECT_NEAR(recent.Bottom, files.Bottom, frame);
        EXPECT_EQ(ScreenRectOf(RecentList(dialog).WindowHandle()), ScreenRectOf(RecentForm(dialog).WindowHandle()));
    }
};

TEST_P(OpenDialogExSizes, NeitherTabLeavesAnythingOfTheOtherBehind) {
    auto& dialog = NewRecent({"one.txt", "two.txt"});
    dialog.SetOptions(GetParam() ? TOpenOptions{ofHideReadOnly, ofEnableSizing} : TOpenOptions{ofHideReadOnly});
    const std::string kind = GetParam() ? "ex-sizeable" : "ex-fixed";
    TRect files;
    std::vector<TStep> steps;
    for (int round = 0; round < 3; ++round) {
        steps.push_back({"the folder is shown", [&] { return Shown(dialog)() && IsWindowVisible(ListOf(dialog)); },
                         [&] {
                             files = RectIn(dialog.DlgHandle(), GetParent(ListOf(dialog)));
                             ExpectSpanned(dialog);
                             ClickAt(TabAt(dialog, 1));
                         }});
        steps.push_back(AwaitRecent(dialog));
        steps.push_back(Perform("the recent files fill the place", [&, round] {
            ExpectSpanned(dialog);
            ExpectInTheListsPlace(dialog, files);
            Screenshot(kind + "-recent-" + IntToStr(round), dialog.DlgHandle());
            ClickAt(TabAt(dialog, 0));
        }));
        steps.push_back(AwaitFolder(dialog));
        steps.push_back(Perform("its picture",
                                [&, round] { Screenshot(kind + "-browse-" + IntToStr(round), dialog.DlgHandle()); }));
    }
    steps.push_back(Cancel(dialog));
    RunDialog(dialog, steps);
}

INSTANTIATE_TEST_SUITE_P(Options, OpenDialogExSizes, testing::Bool(),
                         [](const auto& run) { return run.param ? "Sizeable" : "Fixed"; });

class OpenDialogExWithPlaces : public TExDlgTest {};

TEST_F(OpenDialogExWithPlaces, BothTabsFitBesideTheLibrarysPlacesBarAndAboveAForm) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.PlacesBar().SetNative(false);
    TKxPlace& place = *dialog.PlacesBar().Places().Add();
    place.SetPlaceName("Here");
    place.SetPlacePath(Folder.Path());
    const TFormPtr bottom = MakeMarkedForm(clCream, 100, 60);
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    RunDialog(dialog,
              [&] {
                  ExpectCleanLayout(dialog);
                  ClickAt(TabAt(dialog, 1));
              },
              {AwaitRecent(dialog),
               Perform("the recent files fit too",
                       [&] {
                           ExpectCleanLayout(dialog);
                           Screenshot("ex-places-bar", dialog.DlgHandle());
                       }),
               Cancel(dialog)});
}

class OpenDialogExSizing : public OpenDialogExSizes {};

/// The tab in which the user makes the dialog larger.
TEST_P(OpenDialogExSizing, ALargerDialogIsFilledInBothTabs) {
    auto& dialog = NewRecent({"one.txt", "two.txt"});
    dialog.SetTabIndex(GetParam() ? 1 : 0);
    const std::string kind = GetParam() ? "ex-larger-recent" : "ex-larger-browse";
    TRect before;
    TRect files; // of the enlarged dialog
    const auto look = [&] {
        ExpectSpanned(dialog);
        if (IsWindowVisible(ListOf(dialog))) {
            files = RectIn(dialog.DlgHandle(), GetParent(ListOf(dialog)));
        } else if (Width(files) > 0) {
            ExpectInTheListsPlace(dialog, files);
        }
    };
    std::vector<TStep> steps{
        {"the dialog is shown", Shown(dialog), [&] { before = ScreenRectOf(dialog.DlgHandle()); }}};
    for (TStep& step : DragCorner(dialog, 120, 90)) {
        steps.push_back(std::move(step));
    }
    steps.push_back({"the dialog is larger",
                     [&] {
                         const TRect r = ScreenRectOf(dialog.DlgHandle());
                         return Width(r) == Width(before) + 120 && Height(r) == Height(before) + 90;
                     },
                     [&] {
                         look();
                         Screenshot(kind + "-1", dialog.DlgHandle());
                         ClickAt(TabAt(dialog, GetParam() ? 0 : 1));
                     }});
    steps.push_back(GetParam() ? AwaitFolder(dialog) : AwaitRecent(dialog));
    steps.push_back(Perform("the other tab is as large", [&] {
        look();
        Screenshot(kind + "-2", dialog.DlgHandle());
        ClickAt(TabAt(dialog, GetParam() ? 1 : 0));
    }));
    steps.push_back(GetParam() ? AwaitRecent(dialog) : AwaitFolder(dialog));
    steps.push_back(Perform("and the first one again", look));
    steps.push_back(Cancel(dialog));
    RunDialog(dialog, steps);
}

INSTANTIATE_TEST_SUITE_P(Tab, OpenDialogExSizing, testing::Bool(),
                         [](const auto& run) { return run.param ? "RecentFiles" : "Folder"; });

} // namespace
} // namespace kx
