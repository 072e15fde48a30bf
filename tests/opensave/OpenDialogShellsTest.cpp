// SPDX-License-Identifier: MIT
// Views that the shell makes late or anew.

#include "OpenDialogFillingTest.h"

#include "kx/win/System.h"
#include "kx/win/Timers.h"

#include <algorithm>
#include <array>
#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

// --- Shells that tell of nothing

/// A dialog whose window and list the test treats before the library comes to them.
class TTreatedDialog : public TKxOpenDialog {
public:
    using TKxOpenDialog::TKxOpenDialog;
    std::function<void(HWND dialog)> Treat;

protected:
    void DoShow() override {
        Treat(GetParent(Handle()));
        TKxOpenDialog::DoShow();
    }
};

class OpenDialogShells : public OpenDialogFilling {
protected:
    OpenDialogShells() {
        Filter(Other);
        Other.ListViewStyles().SetGridLines(true);
        Other.Treat = [](HWND) {};
    }
    bool IsFiltered() const {
        std::vector<std::string> names = ItemTexts(ListOf(Other));
        std::sort(names.begin(), names.end());
        return names == std::vector<std::string>{"inner", "one.txt", "two.txt"};
    }
    bool HasStyles() const {
        return (SendMessageA(ListOf(Other), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_GRIDLINES) != 0;
    }

    TTreatedDialog& Other = NewDialog<TTreatedDialog>();
};

TEST_F(OpenDialogShells, AViewThatComesLateIsTreatedLikeAnother) {
    std::unique_ptr<TLateView> late;
    std::vector<int> styles;
    Other.Treat = [&](HWND dialog) { late = std::make_unique<TLateView>(dialog); };
    Other.ListViewStyles().SetPopupOnEmpty(false);
    Other.SetOnShow([&](TObject*) {
        EXPECT_EQ(Other.GetDVHandle(), nullptr);
        EXPECT_EQ(Other.FileListViewStyle(), lvsIcon);
        Other.SetFileListViewStyle(lvsReport);
    });
    Other.SetOnSelectionStyleChange([&](TObject*, TViewStyle style) { styles.push_back(style); });
    TTimer longer; // than the dialog waits for its list
    bool elapsed = false;
    longer.SetEnabled(false);
    longer.SetInterval(120);
    longer.SetOnTimer([&](TObject*) { elapsed = true; });
    RunDialog([&] { return Other.Execute(); },
              {{"the dialog is shown", [&] { return Other.DlgHandle() && IsWindowVisible(Other.DlgHandle()); },
                [&] { longer.SetEnabled(true); }},
               {"the list takes its time", [&] { return elapsed; },
                [&] {
                    longer.SetEnabled(false);
                    EXPECT_EQ(ListOf(Other), nullptr);
                    late->Come();
                }},
               Await("it is filtered", [&] { return IsFiltered(); }),
               Await("it has the styles", [&] { return HasStyles(); }),
               Await("it has the view", [&] { return Other.FileListViewStyle() == lvsReport; }),
               Perform("it has the menus",
                       [&] {
                           SendMessageA(Other.GetDVHandle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(ListOf(Other)),
                                        0);
                           EXPECT_EQ(ShownMenu(), nullptr);
                       }),
               Cancel(Other)});
    EXPECT_THAT(styles, ElementsAre(vsReport)) << "as if the user had chosen it, and once";
    EXPECT_THAT(Asked, UnorderedElementsAre("one.txt", "three.log", "two.txt"));
}

TEST_F(OpenDialogShells, AViewWishedForInAnotherShowingIsForgotten) {
    std::unique_ptr<TLateView> late;
    Other.Treat = [&](HWND dialog) { late = std::make_unique<TLateView>(dialog); };
    Other.SetOnShow([&](TObject*) { Other.SetFileListViewStyle(lvsReport); });
    RunDialog([&] { return Other.Execute(); },
              {{"the dialog is shown", [&] { return Other.DlgHandle() && IsWindowVisible(Other.DlgHandle()); }, {}},
               Cancel(Other)});
    late.reset();
    Other.Treat = [](HWND) {};
    Other.SetOnShow({});
    RunDialog(Other, {{"the list is there", [&] { return IsFiltered(); },
                       [&] { EXPECT_EQ(Other.FileListViewStyle(), lvsList); }},
                      Cancel(Other)});
}

TEST_F(OpenDialogShells, ACustomSelectionStaysWhenTheViewComesLate) {
    std::unique_ptr<TLateView> late;
    const TFormPtr form = MakeMarkedForm(clCream, 50, 50);
    Other.Treat = [&](HWND dialog) { late = std::make_unique<TLateView>(dialog); };
    Other.CustDlgParams().SetCustomForm(form.get());
    Other.SetSelectionType(stCustom);
    RunDialog([&] { return Other.Execute(); },
              {{"the dialog is shown", [&] { return Other.DlgHandle() && IsWindowVisible(Other.DlgHandle()); },
                [&] { late->Come(); }},
               Await("the list is put away", [&] { return Other.GetDVHandle() && !IsWindowVisible(ListOf(Other)); }),
               Perform("the form is shown", [&] { EXPECT_TRUE(IsWindowVisible(form->Handle())); }),
               Cancel(Other)});
}

TEST_F(OpenDialogShells, AViewThatIsMadeAnewIsTreatedLikeAnother) {
    Other.Treat = [&](HWND dialog) {
        for (int i = 0; i < 3; ++i) {
            BrowseTo(dialog, Folder.Path("inner"));
            BrowseTo(dialog, Folder.Path());
        }
    };
    RunDialog(Other, {Await("it is filtered", [&] { return IsFiltered(); }),
                      {"it has the styles", [&] { return HasStyles(); },
                       [&] {
                           TakeAsked();
                           BrowseTo(Other.DlgHandle(), Folder.Path("inner"));
                           BrowseTo(Other.DlgHandle(), Folder.Path());
                       }},
                      Await("it is filtered again", [&] { return IsFiltered(); }),
                      Await("it has the styles again", [&] { return HasStyles(); }),
                      Cancel(Other)});
    std::erase(Asked, "deep.txt"); // of the folder between, when there was time to show it
    EXPECT_THAT(Asked, UnorderedElementsAre("one.txt", "three.log", "two.txt"));
}

TEST_F(OpenDialogShells, ANewViewIsTakenOverAtOnce) {
    Look(Other, [&] {
        BrowseTo(Other.DlgHandle(), Folder.Path("inner"));
        EXPECT_TRUE(IsTakenOver(Other));
    });
}

TEST_F(OpenDialogShells, ANewViewThatTheApplicationKeepsSecretIsFoundInTime) {
    Other.SetOnEventHooking([](TObject*, TMessage& message, bool& allow) { allow = message.Msg != WM_PARENTNOTIFY; });
    RunDialog(Other, {{"it is filtered", [&] { return IsFiltered() && HasStyles(); },
                       [&] {
                           BrowseTo(Other.DlgHandle(), Folder.Path("inner"));
                           BrowseTo(Other.DlgHandle(), Folder.Path());
                       }},
                      Await("it is filtered again", [&] { return IsFiltered() && HasStyles(); }),
                      Cancel(Other)});
}

TEST_F(OpenDialogShells, EntriesThatNoMessageTellsOfAreFoundInTime) {
    Other.ExtFilter().SetShowFolders(false);
    const auto texts = [&] { return ItemTexts(ListOf(Other)).size() == 2 && FindItem(ListOf(Other), "unseen") < 0; };
    RunDialog(Other, {{"it is filtered", texts,
                       [&] {
                           ShowWindow(ListOf(Other), SW_HIDE); // no painting tells of it either
                           InsertUnseen(ListOf(Other));
                           EXPECT_FALSE(texts());
                           Other.PostRefreshListViewStyles();
                       }},
                      Await("it is filtered again", texts),
                      Cancel(Other)});
}

TEST_F(OpenDialogShells, AnEntryThatComesIntoAListNobodySeesIsFiltered) {
    Other.ExtFilter().SetShowFolders(false);
    RunDialog(Other, {{"it is filtered", [&] { return HasStyles() && ItemTexts(ListOf(Other)).size() == 2; },
                       [&] {
                           ShowWindow(ListOf(Other), SW_HIDE);
                           char text[] = "came";
                           LVITEMA item{};
                           item.mask = LVIF_TEXT;
                           item.pszText = text;
                           SendMessageA(ListOf(Other), LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
                           EXPECT_EQ(ItemTexts(ListOf(Other)).size(), 3u);
                       }},
                      Await("it is filtered again", [&] { return FindItem(ListOf(Other), "came") < 0; }),
                      Cancel(Other)});
}

TEST_F(OpenDialogShells, AViewMayHaveOtherChildrenThanTheList) {
    Look(Other, [&] {
        const unique_hwnd first(CreateWindowExA(0, "Static", "", WS_CHILD | WS_VISIBLE, 3, 4, 10, 11,
                                                Other.GetDVHandle(), nullptr, HInstance(), nullptr));
        SetWindowPos(first.get(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        ASSERT_EQ(GetWindow(Other.GetDVHandle(), GW_CHILD), first.get());
        SetWindowPos(ListOf(Other), nullptr, 0, 0, 50, 50, SWP_NOMOVE | SWP_NOZORDER);
        Other.RefreshSelCtrl();
        EXPECT_EQ(ScreenRectOf(first.get()).Right - ScreenRectOf(first.get()).Left, 10);
        EXPECT_EQ(ScreenRectOf(ListOf(Other)).Right - ScreenRectOf(ListOf(Other)).Left,
                  Other.CustDlgParams().CustRect().Right);
    });
}

TEST_F(OpenDialogShells, APlaceholderThatStaysBehindMovesNothingElse) {
    const TFormPtr form = MakeMarkedForm(clCream, 50, 50);
    std::vector<std::array<TRect, 3>> places;
    for (const bool stays : {false, true}) {
        auto& dialog = NewDialog<TTreatedDialog>();
        std::unique_ptr<TFrozenWindow> frozen;
        dialog.Treat = [](HWND) {};
        dialog.PlacesBar().SetNative(false);
        dialog.CustDlgParams().SetCustomForm(form.get());
        dialog.SetSelectionType(stCustom);
        Look(dialog, [&] {
            if (stays) {
                frozen = std::make_unique<TFrozenWindow>(ItemOf(dialog, KxListPlaceholderId));
            }
            const TRect before = RectIn(dialog.DlgHandle(), ItemOf(dialog, KxListPlaceholderId));
            const TRect outer = ScreenRectOf(dialog.DlgHandle());
            SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, outer.Right - outer.Left + 80,
                         outer.Bottom - outer.Top + 50, SWP_NOMOVE | SWP_NOZORDER);
            EXPECT_EQ(RectIn(dialog.DlgHandle(), ItemOf(dialog, KxListPlaceholderId)) == before, stays);
            places.push_back({RectIn(dialog.DlgHandle(), form->Handle()),
                              RectIn(dialog.DlgHandle(), dialog.PlacesForm()->Handle()),
                              RectIn(dialog.DlgHandle(), ItemOf(dialog, KxFileTypeId))});
        });
    }
    EXPECT_EQ(places[0], places[1]);
}

// --- Shells that ask for the selection when the list is complete

/// The list of a running dialog is one that nobody has told of: the timer has found it, or will.
class OpenDialogQuestion : public OpenDialogShells {
protected:
    /// Has the dialog show a new list that it has not been told of, and `look` at it before any timer can.
    void LookAtSecretList(const std::function<void()>& look) {
        Look(Other, [&] {
            Other.SetOnEventHooking(
                [](TObject*, TMessage& message, bool& allow) { allow = message.Msg != WM_PARENTNOTIFY; });
            BrowseTo(Other.DlgHandle(), Folder.Path("inner"));
            look();
        });
    }

    const TAssumedSystem Windows{{.Wine = false}};
};

TEST_F(OpenDialogQuestion, HasANewListTakenOver) {
    LookAtSecretList([&] {
        EXPECT_FALSE(IsTakenOver(Other)) << "else the question is not put to the test";
        SendMessageA(ListOf(Other), LVM_GETSELECTEDCOUNT, 0, 0);
        EXPECT_TRUE(IsTakenOver(Other));
    });
}

TEST_F(OpenDialogQuestion, OfAnotherListTellsNothing) {
    const TFormPtr form = MakeMarkedForm(clCream, 50, 50);
    const unique_hwnd foreign(
        CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD, 0, 0, 9, 9, form->Handle(), nullptr, HInstance(), nullptr));
    LookAtSecretList([&] {
        const unique_hwnd child(CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD, 0, 0, 9, 9, Other.DlgHandle(), nullptr,
                                                HInstance(), nullptr));
        SendMessageA(foreign.get(), LVM_GETSELECTEDCOUNT, 0, 0);
        SendMessageA(child.get(), LVM_GETSELECTEDCOUNT, 0, 0);
        SendMessageA(ListOf(Other), LVM_GETITEMCOUNT, 0, 0); // another question
        EXPECT_FALSE(IsTakenOver(Other));
    });
}

TEST_F(OpenDialogQuestion, HasEntriesFiltered) {
    Other.ExtFilter().SetShowFolders(false);
    int passes = 0;
    Other.SetOnEventHooking([&](TObject*, TMessage& message, bool&) { passes += message.Msg == CDM_GETFOLDERPATH; });
    const auto texts = [&] { return ItemTexts(ListOf(Other)).size() == 2; };
    RunDialog(Other, {{"it is filtered", texts,
                       [&] {
                           ShowWindow(ListOf(Other), SW_HIDE);
                           InsertUnseen(ListOf(Other));
                           SendMessageA(ListOf(Other), LVM_GETSELECTEDCOUNT, 0, 0);
                       }},
                      {"it is filtered again", texts, [&] { passes = 0; }},
                      Perform("the question again", [&] { SendMessageA(ListOf(Other), LVM_GETSELECTEDCOUNT, 0, 0); }),
                      Perform("nothing had come", [&] { EXPECT_EQ(passes, 0); }),
                      Cancel(Other)});
}

} // namespace
} // namespace kx
