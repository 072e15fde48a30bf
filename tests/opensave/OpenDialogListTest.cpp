// SPDX-License-Identifier: MIT
// The filter and the styles of the running dialog's list.

#include "OpenDialogTest.h"

namespace kx {
namespace {

using namespace test;

class OpenDialogList : public TOpenDialogTest {
protected:
    OpenDialogList() {
        Folder.AddFile("three.log");
        Folder.AddFile("inner\\deep.log");
    }

    /// Leaves text files in the list only.
    void FilterTexts() {
        Dialog.ExtFilter().SetEnabled(true);
        Dialog.SetOnIncludeFile([this](TObject* sender, const std::string& name, bool& include) {
            EXPECT_EQ(sender, &Dialog.ExtFilter());
            EXPECT_TRUE(include);
            include = SameText(ExtractFileExt(name), ".txt");
        });
    }
    void OpenFolder(const std::string& path) { Dialog.SetSelectedFolder(path); }
    DWORD ListStyle() const { return static_cast<DWORD>(GetWindowLongPtrA(List(), GWL_STYLE)); }
    DWORD ListExStyle() const { return static_cast<DWORD>(SendMessageA(List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0)); }
};

// --- The filter

TEST_F(OpenDialogList, WithoutTheFilterTheListIsTheSystems) {
    Dialog.ExtFilter().SetShowFolders(false);
    Dialog.SetOnIncludeFile([](TObject*, const std::string&, bool&) { ADD_FAILURE() << "asked"; });
    Look(Dialog, [&] { EXPECT_THAT(ListedNames(), UnorderedElementsAre("inner", "one.txt", "three.log", "two.txt")); });
}

TEST_F(OpenDialogList, TheFirstFoldersListIsFiltered) {
    FilterTexts();
    Look(Dialog, [&] { EXPECT_THAT(ListedNames(), UnorderedElementsAre("inner", "one.txt", "two.txt")); });
}

TEST_F(OpenDialogList, WithoutFoldersEveryFileStays) {
    Dialog.ExtFilter().SetEnabled(true);
    Dialog.ExtFilter().SetShowFolders(false);
    Look(Dialog, [&] { EXPECT_THAT(ListedNames(), UnorderedElementsAre("one.txt", "three.log", "two.txt")); });
}

TEST_F(OpenDialogList, TheHandlerGetsFullNamesOfFilesOnly) {
    Dialog.ExtFilter().SetEnabled(true);
    std::vector<std::string> asked;
    Dialog.SetOnIncludeFile([&](TObject*, const std::string& name, bool& include) {
        asked.push_back(name);
        include = false;
    });
    Look(Dialog, [&] { EXPECT_THAT(ListedNames(), ElementsAre("inner")); });
    EXPECT_THAT(asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("three.log"), Folder.Path("two.txt")));
}

TEST_F(OpenDialogList, EachFolderIsFiltered) {
    FilterTexts();
    Folder.AddFile("inner\\seen.txt");
    RunDialog(Dialog, [&] { OpenFolder(Folder.Path("inner")); },
              {Await("it is filtered", Lists({"deep.txt", "seen.txt"})),
               Perform("back", [&] { OpenFolder(Folder.Path()); }),
               Await("it is filtered again", Lists({"inner", "one.txt", "two.txt"})), Cancel(Dialog)});
}

TEST_F(OpenDialogList, AFolderOpenedFromTheKeyboardIsFiltered) {
    FilterTexts();
    Dialog.SetInitialDir(Folder.Path("inner"));
    RunDialog(Dialog,
              {Await("it is shown, filtered", Lists({"deep.txt"})),
               Perform("the list has the focus", [&] { FocusList(); }), Perform("back up", [] { PressKey(VK_BACK); }),
               Await("its parent is filtered", Lists({"inner", "one.txt", "two.txt"})), Cancel(Dialog)});
}

TEST_F(OpenDialogList, ReadingTheFolderAgainIsFiltered) {
    FilterTexts();
    RunDialog(Dialog,
              [&] {
                  Folder.AddFile("four.txt");
                  Folder.AddFile("four.log");
                  FocusList();
                  PressKey(VK_F5);
              },
              {Await("it is listed", Lists({"inner", "one.txt", "two.txt", "four.txt"})), Cancel(Dialog)});
}

TEST_F(OpenDialogList, AnotherFileTypeIsFiltered) {
    FilterTexts();
    Dialog.SetFilter("All|*.*|With an o|*o*");
    RunDialog(Dialog, [&] { ChooseInCombo(ItemOf(Dialog, KxFileTypeId), 1, CBN_SELENDOK); },
              {Await("it is filtered too", Lists({"inner", "one.txt", "two.txt"})),
               Perform("logs would match the type", [&] { EXPECT_EQ(FindItem(List(), "three.log"), -1); }),
               Cancel(Dialog)});
}

TEST_F(OpenDialogList, ShowingFoldersTakesEffectAtOnce) {
    FilterTexts();
    RunDialog(Dialog, [&] { Dialog.ExtFilter().SetShowFolders(false); },
              {Await("there is none", Lists({"one.txt", "two.txt"})),
               Perform("with folders", [&] { Dialog.ExtFilter().SetShowFolders(true); }),
               Await("there it is", Lists({"inner", "one.txt", "two.txt"})), Cancel(Dialog)});
}

TEST_F(OpenDialogList, AHandlerThatThrowsEndsThePassAndIsReported) {
    Dialog.ExtFilter().SetEnabled(true);
    Dialog.SetOnIncludeFile([](TObject*, const std::string&, bool&) { throw Exception("no answer"); });
    Look(Dialog, [&] { EXPECT_EQ(ListedNames().size(), 4u); });
    EXPECT_THAT(TakeExceptions(), testing::Each("no answer"));
}

TEST_F(OpenDialogList, TenThousandFilesAreFiltered) {
    for (int i = 0; i < 10'000; ++i) {
        Folder.AddFile("many\\" + std::to_string(i) + (i % 2 ? ".txt" : ".log"));
    }
    FilterTexts();
    Dialog.SetInitialDir(Folder.Path("many"));
    int asked = 0;
    const TKxFileFilterEvent texts = Dialog.OnIncludeFile();
    Dialog.SetOnIncludeFile([&](TObject* sender, const std::string& name, bool& include) {
        ++asked;
        texts(sender, name, include);
    });
    Look(Dialog, [&] {
        EXPECT_EQ(ItemCount(List()), 5'000);
        EXPECT_EQ(asked, 10'000);
        SelectItem(List(), "4711.txt");
        EXPECT_EQ(asked, 10'000) << "a selection is no reason to ask again";
        EXPECT_EQ(Dialog.SelectedFiles(), "4711.txt");
    });
}

// --- Styles

TEST_F(OpenDialogList, StylesAreForcedOnEachList) {
    Dialog.ListViewStyles().SetGridLines(true);
    Dialog.ListViewStyles().SetHotTrackStyles({htUnderlineCold});
    Dialog.ListViewStyles().SetEnableRename(false);
    const auto forced = [&] {
        const DWORD wanted = LVS_EX_GRIDLINES | LVS_EX_TWOCLICKACTIVATE | LVS_EX_UNDERLINECOLD;
        return (ListExStyle() & wanted) == wanted && !(ListStyle() & LVS_EDITLABELS);
    };
    RunDialog(Dialog, {Await("the first list has them", forced),
                       Perform("a folder is opened", [&] { OpenFolder(Folder.Path("inner")); }),
                       Await("it is shown", Lists({"deep.log", "deep.txt"})), Await("its list has them", forced),
                       Cancel(Dialog)});
}

TEST_F(OpenDialogList, AHandMeansOneClick) {
    Dialog.ListViewStyles().SetHotTrackStyles({htHandPoint, htUnderlineHot});
    RunDialog(Dialog, {Await("the list has the styles",
                             [&] {
                                 const DWORD style = ListExStyle();
                                 return style & LVS_EX_ONECLICKACTIVATE && style & LVS_EX_UNDERLINEHOT &&
                                        !(style & LVS_EX_TWOCLICKACTIVATE);
                             }),
                       Cancel(Dialog)});
}

TEST_F(OpenDialogList, AStyleTakenBackStaysOnTheListThatHasIt) {
    Dialog.ListViewStyles().SetFlatScrollBars(true);
    Dialog.ListViewStyles().SetRowSelect(true);
    RunDialog(Dialog, {{"the list has it", [&] { return (ListExStyle() & LVS_EX_FULLROWSELECT) != 0; },
                        [&] {
                            Dialog.ListViewStyles().SetFlatScrollBars(false);
                            Dialog.RefreshListViewStyles();
                            EXPECT_TRUE(ListExStyle() & LVS_EX_FLATSB);
                        }},
                       Cancel(Dialog)});
}

TEST_F(OpenDialogList, StylesOfTheApplicationAreInForceWhileTheyLive) {
    TKxListViewStyles& own = Dialog.ListViewStyles();
    auto given = std::make_unique<TKxListViewStyles>();
    given->SetGridLines(true);
    given->SetEnableRename(false);
    Dialog.SetLVOptions(given.get());
    EXPECT_EQ(&Dialog.ListViewStyles(), given.get()) << "the object itself, no copy of it";
    constexpr DWORD both = LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT;
    RunDialog(Dialog,
              {{"the list has them", [&] { return (ListExStyle() & both) == LVS_EX_GRIDLINES; },
                [&] {
                    EXPECT_FALSE(ListStyle() & LVS_EDITLABELS);
                    given.reset();
                    EXPECT_EQ(&Dialog.ListViewStyles(), &own);
                    own.SetRowSelect(true);
                    OpenFolder(Folder.Path("inner"));
                }},
               Await("the next list has the dialog's own",
                     [&] { return (ListExStyle() & both) == LVS_EX_FULLROWSELECT && ListStyle() & LVS_EDITLABELS; }),
               Cancel(Dialog)});
    TKxListViewStyles other;
    Dialog.SetLVOptions(&other);
    EXPECT_EQ(&Dialog.ListViewStyles(), &other);
    Dialog.SetLVOptions(nullptr);
    EXPECT_EQ(&Dialog.ListViewStyles(), &own);
}

// --- Renaming and deleting

TEST_F(OpenDialogList, WithoutRenamingEvenAListWithTheStyleRefuses) {
    Dialog.ListViewStyles().SetEnableRename(false);
    Look(Dialog, [&] {
        const auto edits = [&] {
            SetWindowLongPtrA(List(), GWL_STYLE, static_cast<LONG_PTR>(ListStyle() | LVS_EDITLABELS));
            FocusList();
            return SendMessageA(List(), LVM_EDITLABELA, static_cast<WPARAM>(FindItem(List(), "one.txt")), 0) != 0;
        };
        EXPECT_FALSE(edits());
        Dialog.ListViewStyles().SetEnableRename(true);
        EXPECT_TRUE(edits());
        SendMessageA(List(), LVM_CANCELEDITLABEL, 0, 0);
    });
}

TEST_F(OpenDialogList, WithoutRenamingF2DoesNothing) {
    Dialog.ListViewStyles().SetEnableRename(false);
    RunDialog(Dialog,
              {{"the styles are there", [&] { return !(ListStyle() & LVS_EDITLABELS); },
                [&] {
                    FocusList();
                    SelectItem(List(), "one.txt");
                    PressKey(VK_F2);
                    PressKey(VK_END);
                }},
               Await("the keys have arrived", [&] { return !GetQueueStatus(QS_KEY); }),
               Perform("nothing is edited", [&] { EXPECT_EQ(SendMessageA(List(), LVM_GETEDITCONTROL, 0, 0), 0); }),
               Cancel(Dialog)});
}

TEST_F(OpenDialogList, WithRenamingF2EditsTheName) {
    RunDialog(Dialog,
              [&] {
                  FocusList();
                  SelectItem(List(), "one.txt");
                  PressKey(VK_F2);
              },
              {{"the name is edited", [&] { return SendMessageA(List(), LVM_GETEDITCONTROL, 0, 0) != 0; },
                [&] { SendMessageA(List(), LVM_CANCELEDITLABEL, 0, 0); }},
               Cancel(Dialog)});
}

TEST_F(OpenDialogList, WithoutDeletingTheDeleteKeyWorksInTheEditOnly) {
    Dialog.ListViewStyles().SetEnableDelete(false);
    HWND edit = nullptr;
    RunDialog(Dialog,
              [&] {
                  FocusList();
                  SelectItem(List(), "one.txt");
                  PressKey(VK_DELETE);
                  PressKey(VK_DOWN);
              },
              {Await("the keys have arrived",
                     [&] { return ListView_GetNextItem(List(), -1, LVNI_SELECTED) != FindItem(List(), "one.txt"); }),
               Perform("no box has come up",
                       [&] {
                           EXPECT_EQ(ShownMessageBox(), nullptr);
                           edit = FileNameEditOf(Dialog.DlgHandle());
                           Dialog.SetFilenameText("xyz");
                           SetFocus(edit);
                           SendMessageA(edit, EM_SETSEL, 0, 1);
                           PressKey(VK_DELETE);
                       }),
               Await("the letter is gone", [&] { return TextOf(edit) == "yz"; }), Cancel(Dialog)});
    EXPECT_TRUE(Folder.Contains("one.txt"));
}

TEST_F(OpenDialogList, WithDeletingTheDeleteKeyAsks) {
    RunDialog(Dialog,
              [&] {
                  FocusList();
                  SelectItem(List(), "one.txt");
                  PressKey(VK_DELETE);
              },
              {Await("it is asked", [] { return TextOf(ActiveDialog()) == "Confirm file deletion"; }),
               Perform("no", [] { SendMessageA(ActiveDialog(), WM_COMMAND, IDNO, 0); }), Cancel(Dialog)});
    EXPECT_TRUE(Folder.Contains("one.txt"));
}

} // namespace
} // namespace kx
