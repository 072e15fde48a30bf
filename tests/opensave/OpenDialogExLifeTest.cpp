// SPDX-License-Identifier: MIT
// Handlers that fail or free under the dialog with recent files.

#include "OpenDialogExFixture.h"

#include "tests/support/Cycles.h"

#include <stdexcept>

// Handlers of the dialog with recent files that throw, or free what called them; many runs.

namespace kx {
namespace {

using namespace test;

class OpenDialogExLife : public TExDlgTest {
protected:
    /// Runs a dialog that is freed meanwhile.
    static void RunFreed(TKxOpenDialogEx& dialog, std::vector<TStep> steps = {}) {
        EXPECT_FALSE(RunDialog([&] { return dialog.Execute(); }, std::move(steps)));
        EXPECT_THAT(TopWindows("#32770"), IsEmpty());
    }
    static void RunFreed(TKxOpenDialogEx& dialog, TAction act) {
        RunFreed(dialog, {{"the dialog is shown", Shown(dialog), std::move(act)}});
    }
};

TEST_F(OpenDialogExLife, AHandlerThatThrowsAtTheStartKeepsTheDialogFromShowing) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetOnTabChange([](TObject*) { throw std::runtime_error("no tab"); });
    EXPECT_THROW(dialog.Execute(), std::runtime_error);
    EXPECT_FALSE(dialog.DlgHandle());
    dialog.SetOnTabChange({});
    EXPECT_FALSE(Look(dialog)) << "it can be shown again";
}

TEST_F(OpenDialogExLife, HandlersThatThrowInTheDialogAreReportedAndTheTabsGoOn) {
    auto& dialog = NewRecent({"one.txt"});
    RunDialog(dialog,
              [&] {
                  dialog.SetOnTabChanging([](TObject*, bool&) { throw std::runtime_error("changing failed"); });
                  dialog.SetOnTabChange([](TObject*) { throw std::runtime_error("change failed"); });
                  ClickAt(TabAt(dialog, 1));
              },
              {AwaitRecent(dialog), ClickTab(dialog, 0), AwaitFolder(dialog), Cancel(dialog)});
    EXPECT_THAT(TakeExceptions(), ElementsAre("changing failed", "change failed", "changing failed", "change failed"));
}

TEST_F(OpenDialogExLife, AHandlerMayReplaceItself) {
    auto& dialog = NewRecent({"one.txt"});
    std::vector<std::string> log;
    dialog.SetOnTabChange([&](TObject*) {
        dialog.SetOnTabChange([&log](TObject*) { log.emplace_back("second"); });
        log.emplace_back("first");
    });
    RunDialog(dialog, {ClickTab(dialog, 1), AwaitRecent(dialog), Cancel(dialog)});
    EXPECT_THAT(log, ElementsAre("first", "second"));
}

TEST_F(OpenDialogExLife, MayBeFreedAtTheStart) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetOnTabChange([&](TObject*) { dialog.Free(); });
    EXPECT_FALSE(dialog.Execute());
}

TEST_F(OpenDialogExLife, MayBeFreedInTheShow) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetOnShow([&](TObject*) { dialog.Free(); });
    RunFreed(dialog);
}

TEST_F(OpenDialogExLife, MayBeFreedWhenTheTabChanges) {
    auto& dialog = NewRecent({"one.txt"});
    bool freed = false;
    RunFreed(dialog, [&] {
        dialog.SetOnTabChange([&](TObject*) {
            freed = true;
            dialog.Free();
        });
        ClickAt(TabAt(dialog, 1));
    });
    EXPECT_TRUE(freed);
}

TEST_F(OpenDialogExLife, MayBeFreedWhenTheTabIsAboutToChange) {
    auto& dialog = NewRecent({"one.txt"});
    bool freed = false;
    dialog.SetOnTabChanging([&](TObject*, bool&) {
        freed = true;
        dialog.Free();
    });
    RunFreed(dialog, {ClickTab(dialog, 1)});
    EXPECT_TRUE(freed);
}

TEST_F(OpenDialogExLife, MayBeFreedByWhatADoubleClickBringsAbout) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    bool freed = false;
    dialog.SetOnCanClose([&](TObject*, bool&) {
        freed = true;
        dialog.Free();
    });
    RunFreed(dialog, [&] { DoubleClickAt(FileAt(dialog, 0)); });
    EXPECT_TRUE(freed);
}

TEST_F(OpenDialogExLife, MayBeFreedByWhatAChosenFileBringsAbout) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    bool freed = false;
    dialog.SetOnFilenameChange([&](TObject*) {
        freed = true;
        dialog.Free();
    });
    RunFreed(dialog, [&] { ClickAt(FileAt(dialog, 0)); });
    EXPECT_TRUE(freed);
}

TEST_F(OpenDialogExLife, MayBeDeletedWhileItIsShown) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    bool deleted = false;
    RunFreed(dialog, [&] {
        deleted = true;
        delete &dialog;
    });
    EXPECT_TRUE(deleted);
}

TEST_F(OpenDialogExLife, ADialogInsideOfAnotherHasTabsOfItsOwn) {
    auto& outer = NewRecent({"one.txt"});
    auto& inner = NewRecent({"two.txt"});
    outer.SetTabIndex(1);
    RunDialog(outer,
              [&] {
                  Look(inner, [&] {
                      EXPECT_TRUE(IsWindowVisible(ListOf(inner)));
                      EXPECT_TRUE(IsWindowVisible(TabsOf(inner)));
                      EXPECT_TRUE(IsWindowVisible(RecentList(outer).WindowHandle()));
                  });
              },
              {{"the outer one goes on", Shown(outer), [&] { ClickAt(TabAt(outer, 0)); }},
               AwaitFolder(outer),
               Cancel(outer)});
}

TEST_F(OpenDialogExLife, ManyRunsAndManyDialogsLeaveNothingBehind) {
    const auto work = [&] {
        for (int i = 0; i < 3; ++i) {
            const auto dialog = std::make_unique<TKxOpenDialogEx>();
            dialog->SetInitialDir(Folder.Path());
            dialog->RecentFiles().Add(Folder.Path("one.txt"));
            for (int tab = 0; tab < 2; ++tab) {
                dialog->SetTabIndex(tab);
                Look(*dialog);
            }
        }
    };
    EXPECT_EQ(LeftBehind(work, [] { return GdiCensus() + UserCensus(); }), "");
}

} // namespace
} // namespace kx
