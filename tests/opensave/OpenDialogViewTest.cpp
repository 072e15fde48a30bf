// SPDX-License-Identifier: MIT
// View styles: asked, told and set.

#include "OpenDialogTest.h"

#include "kx/win/System.h"

namespace kx {
namespace {

using namespace test;

class OpenDialogView : public TOpenDialogTest {
protected:
    void LogStyles() {
        Dialog.SetOnSelectionStyleChanging([this](TObject* sender, TViewStyle style, bool& allow) {
            EXPECT_EQ(sender, &Dialog);
            EXPECT_TRUE(allow);
            Log.push_back("changing to " + IntToStr(style));
            allow = Allowed;
        });
        Dialog.SetOnSelectionStyleChange([this](TObject* sender, TViewStyle style) {
            EXPECT_EQ(sender, &Dialog);
            Log.push_back("changed to " + IntToStr(style));
        });
    }

    /// Right-clicks an entry of the list, or its empty part.
    void RightClick(const char* entry) const {
        if (entry) {
            SelectItem(List(), entry);
            ClickAt(ItemCenter(List(), FindItem(List(), entry)), mbRight);
        } else {
            const TRect list = ScreenRectOf(List());
            ClickAt({list.Right - 40, list.Bottom - 40}, mbRight);
        }
    }
    /// Steps that right-click and expect the menu; `check` looks at it.
    std::vector<TStep> MenuComes(const char* entry, const std::function<void(HMENU menu)>& check = {}) const {
        return {Perform("a right click", [=, this] { RightClick(entry); }),
                {"a menu is open", [] { return ShownMenu() != nullptr; },
                 [=] {
                     HWND window = ShownMenu();
                     if (check) {
                         check(reinterpret_cast<HMENU>(SendMessageA(window, MN_GETHMENU, 0, 0)));
                     }
                     PressKey(VK_ESCAPE);
                 }},
                Await("it is closed", [] { return ShownMenu() == nullptr; })};
    }
    std::vector<TStep> NoMenuComes(const char* entry) const {
        return {Perform("a right click", [=, this] { RightClick(entry); }), Await("it has arrived", MouseInputTaken),
                Perform("no menu", [] { EXPECT_EQ(ShownMenu(), nullptr); })};
    }
    void Run(std::initializer_list<std::vector<TStep>> parts) {
        std::vector<TStep> steps{Await("the files are listed", Lists({"inner", "one.txt", "two.txt"}))};
        for (const std::vector<TStep>& part : parts) {
            steps.insert(steps.end(), part.begin(), part.end());
        }
        steps.push_back(Cancel(Dialog));
        RunDialog(Dialog, steps);
    }

    bool Allowed = true;
    std::vector<std::string> Log;
};

// --- View styles

TEST_F(OpenDialogView, AClickOnDetailsIsAskedAndReported) {
    LogStyles();
    RunDialog(Dialog, [&] { PressToolButton(Dialog, 40964); },
              {Await("they are shown", [&] { return Dialog.SelectionStyle() == vsReport; }), Cancel(Dialog)});
    EXPECT_EQ(Dialog.FileListViewStyle(), lvsIcon) << "while the dialog is not shown";
    EXPECT_THAT(Log, ElementsAre("changing to 3", "changed to 3"));
}

TEST_F(OpenDialogView, AVetoKeepsTheStyle) {
    LogStyles();
    Allowed = false;
    Look(Dialog, [&] {
        PressToolButton(Dialog, 40964);
        EXPECT_EQ(Dialog.SelectionStyle(), vsList);
        EXPECT_EQ(Dialog.FileListViewStyle(), lvsList);
    });
    EXPECT_THAT(Log, ElementsAre("changing to 3"));
}

TEST_F(OpenDialogView, SettingTheStyleIsTheShellsCommandAndFiresTheEvents) {
    LogStyles();
    Look(Dialog, [&] {
        for (const TKxListViewStyle style : {lvsIcon, lvsSmallIcon, lvsReport, lvsList}) {
            Dialog.SetFileListViewStyle(style);
            EXPECT_EQ(Dialog.FileListViewStyle(), style);
        }
    });
    EXPECT_THAT(Log, ElementsAre("changing to 0", "changed to 0", "changing to 1", "changed to 1", "changing to 3",
                                 "changed to 3", "changing to 2", "changed to 2"));
}

TEST_F(OpenDialogView, ThumbnailsAndTilesAreReportedAsIcons) {
    LogStyles();
    Look(Dialog, [&] {
        Dialog.SetFileListViewStyle(lvsThumbnail);
        Dialog.SetFileListViewStyle(lvsTile);
    });
    EXPECT_THAT(Log, ElementsAre("changing to 0", "changed to 0", "changing to 0", "changed to 0"));
}

TEST_F(OpenDialogView, TheStyleStaysFromFolderToFolder) {
    RunDialog(Dialog,
              [&] {
                  Dialog.SetFileListViewStyle(lvsReport);
                  Dialog.SetSelectedFolder(Folder.Path("inner"));
              },
              {{"it is shown", Lists({"deep.txt"}), [&] { EXPECT_EQ(Dialog.FileListViewStyle(), lvsReport); }},
               Cancel(Dialog)});
}

TEST_F(OpenDialogView, AHandlerMayThrowOrCloseTheDialog) {
    Dialog.SetOnSelectionStyleChanging([](TObject*, TViewStyle, bool&) { throw Exception("no style"); });
    Look(Dialog, [&] {
        Dialog.SetFileListViewStyle(lvsReport);
        EXPECT_TRUE(IsWindowVisible(Dialog.DlgHandle()));
    });
    EXPECT_THAT(TakeExceptions(), ElementsAre("no style"));
    Dialog.SetOnSelectionStyleChanging({});
    Dialog.SetOnSelectionStyleChange([&](TObject*, TViewStyle) { Dialog.CloseDialog(mrCancel); });
    EXPECT_FALSE(RunDialog(Dialog, [&] { Dialog.SetFileListViewStyle(lvsReport); }));
}

// --- Shells before system 5.1, which tell of a style by their list alone

TSystem SystemOf(unsigned major, unsigned minor) {
    TSystem system = System();
    system.Major = major;
    system.Minor = minor;
    return system;
}

class OpenDialogOldShell : public OpenDialogView {
protected:
    OpenDialogOldShell() {
        Old.SetOnSelectionStyleChanging([this](TObject*, TViewStyle style, bool& allow) {
            Log.push_back("changing to " + IntToStr(style));
            allow = Allowed;
        });
        Old.SetOnSelectionStyleChange(
            [this](TObject*, TViewStyle style) { Log.push_back("changed to " + IntToStr(style)); });
    }
    /// Changes the view as such a shell does.
    void SetListStyle(DWORD view) {
        HWND list = ListOf(Old);
        const auto style = static_cast<DWORD>(GetWindowLongPtrA(list, GWL_STYLE));
        SetWindowLongPtrA(list, GWL_STYLE, static_cast<LONG_PTR>((style & ~DWORD{LVS_TYPEMASK}) | view));
    }

    const TAssumedSystem Assumed{SystemOf(5, 0)};
    TKxOpenDialog& Old = NewDialog<TKxOpenDialog>();
};

TEST_F(OpenDialogOldShell, AChangedListIsAskedAboutAndReported) {
    Look(Old, [&] {
        SetListStyle(LVS_REPORT);
        EXPECT_EQ(Old.FileListViewStyle(), lvsReport);
        SetListStyle(LVS_REPORT);
        SetListStyle(LVS_SMALLICON);
        EXPECT_EQ(Old.SelectionStyle(), vsSmallIcon);
        SetListStyle(LVS_ICON);
        EXPECT_EQ(Old.SelectionStyle(), vsIcon);
    });
    EXPECT_THAT(Log, ElementsAre("changing to 3", "changed to 3", "changing to 1", "changed to 1", "changing to 0",
                                 "changed to 0"));
}

TEST_F(OpenDialogOldShell, AVetoKeepsTheListAsItIs) {
    Allowed = false;
    Look(Old, [&] {
        SetListStyle(LVS_REPORT);
        EXPECT_EQ(Old.FileListViewStyle(), lvsList);
    });
    EXPECT_THAT(Log, ElementsAre("changing to 3"));
}

TEST_F(OpenDialogOldShell, ItsCommandsAreNotAskedAbout) {
    Allowed = false;
    Look(Old, [&] { SendMessageA(Old.GetDVHandle(), WM_COMMAND, KxViewCommand(lvsReport), 0); });
    EXPECT_THAT(Log, ElementsAre("changing to 3")) << "only the change of the list is";
}

TEST_F(OpenDialogView, ShellsSinceSystem51AreAskedByTheirCommands) {
    for (const auto& version : {std::pair{5u, 1u}, std::pair{5u, 2u}, std::pair{6u, 0u}, std::pair{10u, 0u}}) {
        const unsigned major = version.first; // not all compilers let lambdas have the parts of a pair
        const unsigned minor = version.second;
        const TAssumedSystem assumed(SystemOf(major, minor));
        auto& dialog = NewDialog<TKxOpenDialog>();
        int asked = 0;
        dialog.SetOnSelectionStyleChanging([&](TObject*, TViewStyle, bool& allow) {
            ++asked;
            allow = false;
        });
        Look(dialog, [&] {
            dialog.SetFileListViewStyle(lvsReport);
            EXPECT_EQ(dialog.FileListViewStyle(), lvsList) << major << "." << minor;
        });
        EXPECT_EQ(asked, 1) << major << "." << minor;
    }
}

// --- Which style it is

TEST_F(OpenDialogView, IconsWithMuchRoomBelowEachOtherAreThumbnails) {
    Look(Dialog, [&] {
        Dialog.SetFileListViewStyle(lvsIcon);
        const int metric = GetSystemMetrics(SM_CXICONSPACING);
        const auto styleOf = [&](int across, int down) {
            SendMessageA(List(), LVM_SETICONSPACING, 0, MAKELPARAM(across, down));
            EXPECT_EQ(SendMessageA(List(), LVM_GETITEMSPACING, FALSE, 0), MAKELONG(across, down));
            EXPECT_EQ(Dialog.SelectionStyle(), vsIcon);
            return Dialog.FileListViewStyle();
        };
        EXPECT_EQ(styleOf(metric, metric + 1), lvsThumbnail);
        EXPECT_EQ(styleOf(metric + 100, metric), lvsIcon);
    });
}

TEST_F(OpenDialogView, EachViewOfTheListIsAStyle) {
    Look(Dialog, [&] {
        DWORD view = 0;
        TSubclass list(List(), [&](TMessage& message) { // the list of every system knows these, but not each shows them
            if (message.Msg == LVM_GETVIEW) {
                message.Result = static_cast<LRESULT>(view);
            } else {
                list.CallPrevious(message);
            }
        });
        const auto styleOf = [&](DWORD number) {
            view = number;
            return Dialog.FileListViewStyle();
        };
        EXPECT_EQ(styleOf(LV_VIEW_TILE), lvsTile);
        EXPECT_EQ(Dialog.SelectionStyle(), vsIcon);
        EXPECT_EQ(styleOf(LV_VIEW_DETAILS), lvsReport);
        EXPECT_EQ(styleOf(LV_VIEW_SMALLICON), lvsSmallIcon);
        EXPECT_EQ(styleOf(LV_VIEW_LIST), lvsList);
        EXPECT_EQ(styleOf(LV_VIEW_TILE + 1), lvsIcon) << "a view of the future";
    });
}

// --- Context menus

TEST_F(OpenDialogView, BothContextMenusComeUnlessForbidden) { Run({MenuComes("one.txt"), MenuComes(nullptr)}); }

TEST_F(OpenDialogView, TheMenuOfTheEmptyAreaCanBeForbidden) {
    Dialog.ListViewStyles().SetPopupOnEmpty(false);
    Run({NoMenuComes(nullptr), MenuComes("one.txt")});
}

TEST_F(OpenDialogView, TheMenuOfFilesCanBeForbidden) {
    Dialog.ListViewStyles().SetPopupOnSelection(false);
    Run({NoMenuComes("one.txt"), MenuComes(nullptr)});
}

bool IsGrayed(HMENU menu, int fromEnd) {
    return (GetMenuState(menu, static_cast<UINT>(GetMenuItemCount(menu) - fromEnd), MF_BYPOSITION) & MF_GRAYED) != 0;
}

TEST_F(OpenDialogView, WhatIsNotEnabledIsGrayInTheMenu) {
    Dialog.ListViewStyles().SetEnableRename(false);
    Dialog.ListViewStyles().SetEnableDelete(false);
    Run({MenuComes("one.txt", [](HMENU menu) {
        EXPECT_TRUE(IsGrayed(menu, 3));
        EXPECT_TRUE(IsGrayed(menu, 4));
        EXPECT_FALSE(IsGrayed(menu, 1));
    })});
}

TEST_F(OpenDialogView, RenamingAloneCanBeGray) {
    Dialog.ListViewStyles().SetEnableRename(false);
    Run({MenuComes("one.txt", [](HMENU menu) {
        EXPECT_TRUE(IsGrayed(menu, 3));
        EXPECT_FALSE(IsGrayed(menu, 4));
    })});
}

TEST_F(OpenDialogView, WhatIsEnabledIsNotGray) {
    Run({MenuComes("one.txt", [](HMENU menu) {
        EXPECT_FALSE(IsGrayed(menu, 3));
        EXPECT_FALSE(IsGrayed(menu, 4));
    })});
}

/// A menu with entries of these command ids, shown to the shell view as one that is about to open.
class TSampleMenu {
public:
    TSampleMenu(HWND view, std::initializer_list<UINT> commands, WORD index = 0) : FMenu(CreatePopupMenu()) {
        for (const UINT command : commands) {
            AppendMenuA(FMenu.get(), MF_STRING, command, "entry");
        }
        SendMessageA(view, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(FMenu.get()), index);
    }
    bool Gray(UINT command) const { return (GetMenuState(FMenu.get(), command, MF_BYCOMMAND) & MF_GRAYED) != 0; }

private:
    unique_hmenu FMenu;
};

TEST_F(OpenDialogView, TheEntriesAreKnownByPlaceAndNumber) {
    Dialog.ListViewStyles().SetEnableRename(false);
    Dialog.ListViewStyles().SetEnableDelete(false);
    Look(Dialog, [&] {
        SelectItem(List(), "one.txt");
        HWND view = Dialog.GetDVHandle();
        const TSampleMenu xp(view, {1, 30737, 30738, 2, 3});
        EXPECT_TRUE(xp.Gray(30737) && xp.Gray(30738));
        const TSampleMenu older(view, {1, 30994, 30995, 2, 3});
        EXPECT_TRUE(older.Gray(30994) && older.Gray(30995));
        const TSampleMenu elsewhere(view, {30737, 30738, 1, 2, 3});
        EXPECT_FALSE(elsewhere.Gray(30737) || elsewhere.Gray(30738));
        const TSampleMenu others(view, {1, 4711, 4712, 2, 3});
        EXPECT_FALSE(others.Gray(4711) || others.Gray(4712));
        const TSampleMenu inside(view, {1, 30737, 30738, 2, 3}, 1);
        EXPECT_FALSE(inside.Gray(30737) || inside.Gray(30738)) << "a menu inside the menu";
        LVITEMA none{};
        none.stateMask = LVIS_SELECTED;
        SendMessageA(List(), LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&none));
        const TSampleMenu nothing(view, {1, 30737, 30738, 2, 3});
        EXPECT_FALSE(nothing.Gray(30737) || nothing.Gray(30738));
    });
}

} // namespace
} // namespace kx
