// SPDX-License-Identifier: MIT
// The dialog with recent files: its tabs and forms.

#include "OpenDialogExFixture.h"

#include "kx/ui/controls/Menus.h"

// The dialog with recent files as a user has it: its tabs and its list.

namespace kx {
namespace {

using namespace test;

class OpenDialogEx : public TExDlgTest {};

// --- The forms

TEST_F(OpenDialogEx, TheFormOfTheTabsIsAsDesigned) {
    const std::unique_ptr<TKxOpenExTopFrm, TFreeDeleter> form(NewForm<TKxOpenExTopFrm>(nullptr));
    EXPECT_EQ(form->BorderStyle(), bsNone);
    EXPECT_EQ(form->ClientWidth(), 536);
    EXPECT_EQ(form->ClientHeight(), 23);
    EXPECT_EQ(form->Color(), clBtnFace);
    const TTabControl& tabs = *form->TabControl1;
    EXPECT_EQ(tabs.BoundsRect(), (TRect{-1, 0, 8999, 193}));
    EXPECT_TRUE(tabs.HotTrack());
    EXPECT_THAT(TextsOf(form->TabControl1->Tabs()), ElementsAre("Durchsuchen", "Zuletzt verwendet"));
    EXPECT_EQ(tabs.TabIndex(), 0);
    EXPECT_EQ(tabs.OnChange(), TNotifyEvent(form.get(), &TKxOpenExTopFrm::TabControl1Change, "TabControl1Change"));
    EXPECT_TRUE(tabs.OnChanging());
    EXPECT_EQ(form->Dlg(), nullptr);
    tabs.OnChange()(form->TabControl1); // without a dialog nothing happens
}

TEST_F(OpenDialogEx, TheFormOfTheListIsAsDesigned) {
    const std::unique_ptr<TKxOpenExRecentFrm, TFreeDeleter> form(NewForm<TKxOpenExRecentFrm>(nullptr));
    EXPECT_EQ(form->BorderStyle(), bsNone);
    EXPECT_EQ(form->ClientWidth(), 393);
    EXPECT_EQ(form->ClientHeight(), 188);
    EXPECT_EQ(form->Color(), clBtnFace);
    TListView& list = *form->ListView1;
    EXPECT_EQ(list.Align(), alClient);
    EXPECT_EQ(list.BoundsRect(), (TRect{0, 0, 393, 188}));
    EXPECT_EQ(list.ViewStyle(), vsReport);
    ASSERT_EQ(list.Columns().Count(), 2);
    EXPECT_EQ(list.Columns()[0].Caption(), "Datei");
    EXPECT_EQ(list.Columns()[0].Width(), 110);
    EXPECT_EQ(list.Columns()[1].Caption(), "Verzeichnis");
    EXPECT_EQ(list.Columns()[1].Width(), 250);
    EXPECT_TRUE(list.OnChange());
    EXPECT_TRUE(list.OnDblClick());
    list.OnDblClick()(&list); // without a dialog nothing happens
}

TEST_F(OpenDialogEx, ComesWithItsFormsAndAnEmptyList) {
    TKxOpenDialogEx dialog;
    EXPECT_EQ(dialog.RecentCount(), 10);
    EXPECT_EQ(dialog.RecentRegKey(), "");
    EXPECT_THAT(TextsOf(dialog.RecentFiles()), IsEmpty());
    EXPECT_THAT(TextsOf(dialog.Tabs()), ElementsAre("Durchsuchen", "Zuletzt verwendet"));
    EXPECT_EQ(dialog.TabIndex(), 0);
    auto* const top = dynamic_cast<TKxOpenExTopFrm*>(dialog.CustDlgParams().TopForm());
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->Owner(), nullptr);
    EXPECT_NE(top->Dlg(), nullptr);
    EXPECT_EQ(dialog.TabControl(), top->TabControl1);
    EXPECT_EQ(RecentForm(dialog).Owner(), nullptr);
    EXPECT_EQ(RecentForm(dialog).Dlg(), &dialog);
}

TEST_F(OpenDialogEx, TakesFormsByNameAtItsBottomAlone) {
    TKxOpenDialogEx dialog;
    TKxCustDlgParams& params = dialog.CustDlgParams();
    params.SetLeftFormName("Left");
    params.SetTopFormName("Top");
    params.SetRightFormName("Right");
    params.SetBottomFormName("Bottom");
    EXPECT_EQ(params.LeftFormName() + params.TopFormName() + params.RightFormName(), "");
    EXPECT_EQ(params.BottomFormName(), "Bottom");
    EXPECT_EQ(params.TopForm(), dialog.TabControl()->Parent()) << "the tabs stay";
}

TEST_F(OpenDialogEx, TabsAreReadAndWrittenOnTheTabControl) {
    auto& dialog = NewRecent({});
    TStringList texts;
    texts.SetCommaText("Browse,Recent,More");
    dialog.SetTabs(texts);
    dialog.SetTabIndex(0);
    EXPECT_THAT(TextsOf(dialog.TabControl()->Tabs()), ElementsAre("Browse", "Recent", "More"));
    Look(dialog, [&] {
        EXPECT_EQ(SendMessageA(TabsOf(dialog), TCM_GETITEMCOUNT, 0, 0), 3);
        dialog.TabControl()->SetTabIndex(2);
        EXPECT_EQ(dialog.TabIndex(), 2);
        dialog.SetTabIndex(1);
        EXPECT_EQ(SendMessageA(TabsOf(dialog), TCM_GETCURSEL, 0, 0), 1);
    });
}

// --- Switching tabs

/// Which of the controls that the tabs show and hide, and which of those that they leave alone, are visible.
std::string VisibleItems(const TKxOpenDialogEx& dialog) {
    std::string items;
    for (const int id :
         {KxFolderComboId, KxFolderLabelId, KxFileTypeId, KxFileTypeLabelId, IDOK, IDCANCEL, KxFileNameLabelId}) {
        items += IsWindowVisible(ItemOf(dialog, id)) ? IntToStr(id) + " " : "";
    }
    items += IsWindowVisible(NavigationBarOf(dialog)) ? "bar " : "";
    return items + (IsWindowVisible(ListOf(dialog)) ? "files" : "");
}

constexpr const char* BrowsingItems = "1137 1091 1136 1089 1 2 1090 bar files";

TEST_F(OpenDialogEx, BeginsAsTheOrdinaryDialogBelowTheTabs) {
    auto& dialog = NewRecent({"one.txt"});
    Look(dialog, [&] {
        EXPECT_EQ(VisibleItems(dialog), BrowsingItems);
        EXPECT_FALSE(RecentForm(dialog).Visible());
        const TRect client = ClientRectOf(dialog.DlgHandle());
        EXPECT_EQ(RectIn(dialog.DlgHandle(), GetParent(TabsOf(dialog))), (TRect{0, 0, client.Right, 23}));
        ExpectCleanLayout(dialog);
        Screenshot("ex-browse", dialog.DlgHandle());
    });
    EXPECT_EQ(dialog.VisibleControls(), KxAllOpenDlgControls);
}

TEST_F(OpenDialogEx, AClickOnTheSecondTabShowsTheRecentFilesAndOneOnTheFirstTheFolder) {
    auto& dialog = NewRecent({"one.txt", "inner\\deep.txt"});
    const TKxOpenDlgControls folderControls{dcFolderCombo, dcFolderLabel, dcFileType, dcFileTypeLabel, dcToolBar};
    RunDialog(dialog, {ClickTab(dialog, 1), AwaitRecent(dialog),
                       Perform("the recent files are in the list's place",
                               [&] {
                                   EXPECT_EQ(dialog.TabIndex(), 1);
                                   EXPECT_EQ(dialog.SelectionType(), stCustom);
                                   EXPECT_EQ(dialog.VisibleControls(), KxAllOpenDlgControls - folderControls);
                                   EXPECT_EQ(VisibleItems(dialog), "1 2 1090 ");
                                   const TRect& place = dialog.CustDlgParams().CustRect();
                                   EXPECT_EQ(RectIn(dialog.DlgHandle(), RecentForm(dialog).WindowHandle()),
                                             (TRect{place.Left, place.Top, place.Left + place.Right,
                                                    place.Top + place.Bottom}));
                                   HWND list = RecentList(dialog).WindowHandle();
                                   EXPECT_THAT(ItemTexts(list), ElementsAre("one.txt", "deep.txt"));
                                   char text[MAX_PATH] = {};
                                   LVITEMA item{};
                                   item.iSubItem = 1;
                                   item.pszText = text;
                                   item.cchTextMax = sizeof text;
                                   SendMessageA(list, LVM_GETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&item));
                                   EXPECT_EQ(text, Folder.Path("inner") + "\\") << "with its backslash";
                                   ExpectCleanLayout(dialog);
                                   Screenshot("ex-recent", dialog.DlgHandle());
                               }),
                       ClickTab(dialog, 0), AwaitFolder(dialog),
                       Perform("the folder is back",
                               [&] {
                                   EXPECT_EQ(dialog.SelectionType(), stStandard);
                                   EXPECT_EQ(dialog.VisibleControls(), KxAllOpenDlgControls);
                                   EXPECT_EQ(VisibleItems(dialog), BrowsingItems);
                                   EXPECT_FALSE(IsWindowVisible(RecentList(dialog).WindowHandle()));
                                   ExpectCleanLayout(dialog);
                                   Screenshot("ex-browse-again", dialog.DlgHandle());
                               }),
                       Cancel(dialog)});
}

TEST_F(OpenDialogEx, TheOrdinaryDialogGetsBackEvenWhatTheApplicationHasHidden) {
    auto& dialog = NewRecent({});
    dialog.SetVisibleControls({dcOkBtn, dcCancelBtn, dcSelectionCtrl});
    Look(dialog, [&] { EXPECT_EQ(VisibleItems(dialog), "1137 1091 1136 1089 1 2 bar files"); });
}

TEST_F(OpenDialogEx, ATabBehindTheSecondShowsTheRecentFilesToo) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.Tabs().Add("Third");
    RunDialog(dialog, {ClickTab(dialog, 2), AwaitRecent(dialog), Cancel(dialog)});
    EXPECT_EQ(dialog.SelectionType(), stCustom);
}

TEST_F(OpenDialogEx, BeginsWithTheTabThatIsChosen) {
    auto& dialog = NewRecent({"two.txt"});
    dialog.SetTabIndex(1);
    EXPECT_EQ(dialog.SelectionType(), stStandard) << "only the run looks at it";
    Look(dialog, [&] {
        EXPECT_EQ(VisibleItems(dialog), "1 2 1090 ");
        EXPECT_TRUE(IsWindowVisible(RecentList(dialog).WindowHandle()));
        ExpectCleanLayout(dialog);
    });
    dialog.SetTabIndex(0);
    Look(dialog, [&] { EXPECT_EQ(VisibleItems(dialog), BrowsingItems); });
}

TEST_F(OpenDialogEx, ATabThatTheProgramChoosesMeanwhileIsShownByTheNextRun) {
    auto& dialog = NewRecent({"one.txt"});
    int changes = 0;
    dialog.SetOnTabChange([&](TObject*) { ++changes; });
    Look(dialog, [&] {
        dialog.SetTabIndex(1);
        EXPECT_EQ(VisibleItems(dialog), BrowsingItems);
    });
    EXPECT_EQ(changes, 1) << "the one of the start";
    Look(dialog, [&] { EXPECT_EQ(VisibleItems(dialog), "1 2 1090 "); });
}

TEST_F(OpenDialogEx, TheRecentFilesStayWhenTheFolderChanges) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    RunDialog(dialog,
              [&] {
                  SendMessageA(dialog.DlgHandle(), WM_COMMAND, 41060, // the desktop in the places bar
                               reinterpret_cast<LPARAM>(PlacesBarOf(dialog)));
              },
              {{"the desktop", [&] { return dialog.SelectedFolder() != Folder.Path(); },
                [&] {
                    EXPECT_EQ(VisibleItems(dialog), "1 2 1090 ");
                    dialog.SetSelectedFolder(Folder.Path("inner"));
                    EXPECT_EQ(VisibleItems(dialog), "1 2 1090 ");
                    ClickAt(FileAt(dialog, 0));
                }},
               Await("a recent file can be chosen", [&] { return dialog.FilenameText() == Folder.Path("one.txt"); }),
               ClickTab(dialog, 0),
               AwaitFolder(dialog),
               Cancel(dialog)});
}

// --- The tabs' events

TEST_F(OpenDialogEx, TheTabChangeIsToldOnceBeforeTheDialogShows) {
    auto& dialog = NewRecent({});
    std::vector<std::string> log;
    dialog.SetOnTabChange([&](TObject* sender) {
        EXPECT_EQ(sender, dialog.TabControl());
        log.emplace_back(dialog.DlgHandle() ? "change in the dialog" : "change");
    });
    dialog.SetOnTabChanging([&](TObject*, bool&) { log.emplace_back("changing"); });
    dialog.SetOnShow([&](TObject*) { log.emplace_back("show"); });
    Look(dialog);
    EXPECT_THAT(log, ElementsAre("change", "show"));
}

TEST_F(OpenDialogEx, TheTabChangeIsToldWhenTheDialogShowsTheTab) {
    auto& dialog = NewRecent({"one.txt"});
    std::vector<std::string> log;
    dialog.SetOnTabChange([&](TObject* sender) {
        EXPECT_EQ(sender, dialog.TabControl());
        log.push_back("change " + IntToStr(dialog.TabIndex()) +
                      (dialog.SelectionType() == stCustom ? " recent" : " folder"));
    });
    dialog.SetOnTabChanging([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, dialog.TabControl());
        EXPECT_TRUE(allow);
        log.push_back("changing " + IntToStr(dialog.TabIndex()));
    });
    RunDialog(dialog,
              {ClickTab(dialog, 1), AwaitRecent(dialog), ClickTab(dialog, 0), AwaitFolder(dialog), Cancel(dialog)});
    EXPECT_THAT(log, ElementsAre("change 0 folder", "changing 0", "change 1 recent", "changing 1", "change 0 folder"));
}

TEST_F(OpenDialogEx, ARefusedTabChangeLeavesTheTab) {
    auto& dialog = NewRecent({"one.txt"});
    int asked = 0;
    int changes = 0;
    dialog.SetOnTabChange([&](TObject*) { ++changes; });
    dialog.SetOnTabChanging([&](TObject*, bool& allow) {
        ++asked;
        allow = false;
    });
    RunDialog(dialog, {ClickTab(dialog, 1), Await("it was asked", [&] { return asked == 1; }),
                       Perform("the tab is as before",
                               [&] {
                                   EXPECT_EQ(dialog.TabIndex(), 0);
                                   EXPECT_EQ(VisibleItems(dialog), BrowsingItems);
                               }),
                       Cancel(dialog)});
    EXPECT_EQ(changes, 1) << "the one of the start";
}

// --- Choosing a recent file

TEST_F(OpenDialogEx, AClickPutsTheFullNameIntoTheFileNameControl) {
    auto& dialog = NewRecent({"one.txt", "inner\\deep.txt"});
    dialog.SetTabIndex(1);
    RunDialog(dialog, [&] { ClickAt(FileAt(dialog, 1)); },
              {Await("the name is there", [&] { return dialog.FilenameText() == Folder.Path("inner\\deep.txt"); }),
               Perform("it counts as selected",
                       [&] {
                           EXPECT_EQ(dialog.SelectedFiles(), Folder.Path("inner\\deep.txt"));
                           EXPECT_EQ(FolderOf(dialog.DlgHandle()), Folder.Path()) << "the folder stays";
                       }),
               {"another one", {}, [&] { ClickAt(FileAt(dialog, 0)); }},
               Await("its name is there", [&] { return dialog.FilenameText() == Folder.Path("one.txt"); }),
               Press(dialog, IDOK)});
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OpenDialogEx, ADoubleClickClosesTheDialogThroughOk) {
    auto& dialog = NewRecent({"one.txt", "inner\\deep.txt"});
    dialog.SetTabIndex(1);
    std::vector<std::string> log;
    dialog.SetOnFilenameEntering([&](TObject*, bool&) { log.push_back("entering " + dialog.FilenameText()); });
    dialog.SetOnCanClose([&](TObject*, bool&) { log.push_back("closing " + dialog.FileName()); });
    EXPECT_TRUE(RunDialog(dialog, [&] { DoubleClickAt(FileAt(dialog, 1)); }));
    const std::string name = Folder.Path("inner\\deep.txt");
    EXPECT_THAT(log, ElementsAre("entering " + name, "closing " + name));
    EXPECT_EQ(dialog.FileName(), name);
    EXPECT_THAT(TextsOf(dialog.Files()), ElementsAre(name));
}

TEST_F(OpenDialogEx, ADoubleClickThatTheApplicationRefusesKeepsTheDialog) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    int refused = 0;
    dialog.SetOnFilenameEntering([&](TObject*, bool& allow) {
        allow = false;
        ++refused;
    });
    EXPECT_FALSE(RunDialog(dialog, [&] { DoubleClickAt(FileAt(dialog, 0)); },
                           {Await("OK was refused", [&] { return refused == 1; }), Cancel(dialog)}));
}

TEST_F(OpenDialogEx, ADoubleClickBelowTheFilesIsAnOkWithTheNameAsItIs) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    int entered = 0;
    dialog.SetOnFilenameEntering([&](TObject*, bool&) { ++entered; });
    EXPECT_FALSE(RunDialog(
        dialog,
        [&] {
            const TRect r = ScreenRectOf(RecentList(dialog).WindowHandle());
            DoubleClickAt({r.Left + 40, r.Bottom - 30});
        },
        {Await("OK was pressed", [&] { return entered == 1; }),
         Perform("without a name the dialog stays", [&] { EXPECT_TRUE(IsWindowVisible(dialog.DlgHandle())); }),
         Cancel(dialog)}));
}

TEST_F(OpenDialogEx, TheKeyboardChoosesARecentFileToo) {
    auto& dialog = NewRecent({"one.txt", "two.txt", "inner\\deep.txt"});
    dialog.SetTabIndex(1);
    EXPECT_TRUE(RunDialog(dialog, [&] { ClickAt(FileAt(dialog, 0)); },
                          {{"the first is chosen", [&] { return dialog.FilenameText() == Folder.Path("one.txt"); },
                            [] { PressKey(VK_DOWN); }},
                           {"the second is chosen", [&] { return dialog.FilenameText() == Folder.Path("two.txt"); },
                            [] { PressKey(VK_RETURN); }}}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt"));
}

TEST_F(OpenDialogEx, AFileThatIsGoneIsListedAndTheSystemSaysSo) {
    auto& dialog = NewRecent({"gone.txt", "two.txt"});
    dialog.SetOptions(dialog.Options() + TOpenOptions{ofFileMustExist});
    dialog.SetTabIndex(1);
    EXPECT_TRUE(
        RunDialog(dialog, [&] { DoubleClickAt(FileAt(dialog, 0)); },
                  {AnswerBox(IDOK), {"the dialog is back", Shown(dialog), [&] { DoubleClickAt(FileAt(dialog, 1)); }}}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt"));
}

TEST_F(OpenDialogEx, TheChoiceIsForgottenWithTheDialog) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    Look(dialog, [&] { RecentList(dialog).SetItemIndex(0); });
    Look(dialog, [&] {
        EXPECT_EQ(RecentList(dialog).Selected(), nullptr);
        EXPECT_EQ(dialog.FilenameText(), "");
    });
}

TEST_F(OpenDialogEx, ADoubleClickWorksWithAnOkButtonThatHasAMenu) {
    auto& dialog = NewRecent({"one.txt"});
    TPopupMenu menu(nullptr);
    dialog.SetOkButtonMenu(&menu);
    dialog.SetTabIndex(1);
    EXPECT_TRUE(RunDialog(dialog, [&] { DoubleClickAt(FileAt(dialog, 0)); }));
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
}

} // namespace
} // namespace kx
