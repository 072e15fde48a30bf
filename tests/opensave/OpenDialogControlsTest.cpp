// SPDX-License-Identifier: MIT
// The open dialog's controls, read, set and hidden while it runs.

#include "OpenDialogTest.h"

#include "kx/dropdown/KxDropDownButton.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Dpi.h"

namespace kx {
namespace {

using namespace test;

class OpenDialogControls : public TOpenDialogTest {
protected:
    /// A form over the file list, and the dialog that selects with it.
    TForm& UseCustomForm() {
        Custom = MakeMarkedForm(clCream, 80, 60);
        Dialog.CustDlgParams().SetCustomForm(Custom.get());
        Dialog.SetSelectionType(stCustom);
        return *Custom;
    }
    HWND View() const { return ItemOf(Dialog, KxShellViewId); }
    HWND Placeholder() const { return ItemOf(Dialog, KxListPlaceholderId); }

    TFormPtr Custom;
};

// --- Selection and text

TEST_F(OpenDialogControls, TheSelectionIsReadAndSet) {
    Dialog.SetOptions({ofAllowMultiSelect, ofEnableSizing});
    Look(Dialog, [&] {
        SelectItem(List(), "one.txt");
        EXPECT_EQ(Dialog.SelectedFiles(), "one.txt");
        Dialog.SetSelectedFiles("\"one.txt\" \"two.txt\"");
        EXPECT_THAT(TextsOf(Dialog.SelectedFilesList()), ElementsAre("one.txt", "two.txt"));
        EXPECT_EQ(Dialog.FilenameText(), "\"one.txt\" \"two.txt\"");
        TStringList names;
        names.Add("two.txt");
        Dialog.SetSelectedFilesList(names);
        EXPECT_EQ(Dialog.FilenameText(), "two.txt\r\n");
        names.Add("one.txt");
        Dialog.SetSelectedFilesList(names);
        EXPECT_EQ(Dialog.FilenameText(), "\"two.txt\" \"one.txt\"");
        names.Clear();
        Dialog.SetSelectedFilesList(names);
        EXPECT_EQ(Dialog.FilenameText(), "");
    });
}

TEST_F(OpenDialogControls, WithACustomFormTheSelectionIsTheFileNamesText) {
    UseCustomForm();
    Look(Dialog, [&] {
        Dialog.SetFilenameText("typed by the form");
        EXPECT_EQ(Dialog.SelectedFiles(), "typed by the form");
        EXPECT_THAT(TextsOf(Dialog.SelectedFilesList()), ElementsAre("typed by the form"));
    });
}

TEST_F(OpenDialogControls, FiveThousandFilesAreAllInTheList) {
    for (int i = 0; i < 5'000; ++i) {
        Folder.AddFile("many\\" + std::to_string(i) + ".txt");
    }
    Dialog.SetInitialDir(Folder.Path("many"));
    Dialog.SetOptions({ofAllowMultiSelect, ofEnableSizing});
    EXPECT_TRUE(RunDialog(Dialog, {{"all are listed", [&] { return ItemCount(List()) == 5'000; },
                                    [&] {
                                        SelectAllItems(List());
                                        EXPECT_EQ(Dialog.SelectedFilesList().Count(), 5'000);
                                        Dialog.CloseDialog(mrOk);
                                    }}}));
    EXPECT_EQ(Dialog.Files().Count(), 5'000);
}

TEST_F(OpenDialogControls, TheFolderIsReadAndSetAndTheTextStays) {
    Look(Dialog, [&] {
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
        Dialog.SetFilenameText("stays");
        Dialog.SetSelectedFolder(Folder.Path("no such folder"));
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path());
        FocusList();
        Dialog.SetSelectedFolder(Folder.Path("inner"));
        EXPECT_EQ(Dialog.SelectedFolder(), Folder.Path("inner"));
        EXPECT_EQ(Dialog.FilenameText(), "stays");
        EXPECT_EQ(GetPathFromPIDL(Dialog.SelectedFolderPidl()), Folder.Path("inner"));
    });
    EXPECT_EQ(Dialog.SelectedFolder(), "");
    EXPECT_EQ(Dialog.SelectedFolderPidl(), nullptr);
    EXPECT_EQ(Dialog.SelectedFiles(), "");
}

TEST_F(OpenDialogControls, TheTitleChangesWhileTheDialogRuns) {
    Dialog.SetTitle("First");
    Look(Dialog, [&] {
        EXPECT_EQ(TextOf(Dialog.DlgHandle()), "First");
        Dialog.SetTitle(std::string(600, 'x'));
        EXPECT_EQ(TextOf(Dialog.DlgHandle()), std::string(511, 'x'));
    });
}

TEST_F(OpenDialogControls, CaptionsAreReplaced) {
    Dialog.DlgItemsCaptions().SetOK("&Take");
    Dialog.DlgItemsCaptions().SetLookIn("Folder:");
    Look(Dialog, [&] {
        EXPECT_EQ(TextOf(ItemOf(Dialog, IDOK)), "&Take");
        EXPECT_EQ(TextOf(ItemOf(Dialog, KxFolderLabelId)), "Folder:");
        EXPECT_EQ(TextOf(ItemOf(Dialog, IDCANCEL)), "Cancel");
    });
}

// --- The selection area

TEST_F(OpenDialogControls, TheCustomFormTakesThePlaceOfTheList) {
    TForm& form = UseCustomForm();
    Look(Dialog, [&] {
        EXPECT_FALSE(IsWindowVisible(View()));
        EXPECT_FALSE(IsWindowEnabled(View()));
        EXPECT_FALSE(IsWindowVisible(Placeholder()));
        EXPECT_TRUE(IsWindowVisible(form.WindowHandle()));
        EXPECT_EQ(GetParent(form.WindowHandle()), Dialog.DlgHandle());
        const TRect& area = Dialog.CustDlgParams().CustRect();
        EXPECT_EQ(form.BoundsRect(), (TRect{area.Left, area.Top, area.Left + area.Right, area.Top + area.Bottom}));
        RedrawWindow(Dialog.DlgHandle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        Screenshot("open_custom_form", Dialog.DlgHandle());
        ExpectCleanLayout(Dialog);
        Dialog.SetSelectionType(stStandard);
        EXPECT_TRUE(IsWindowVisible(View()));
        EXPECT_TRUE(IsWindowEnabled(View()));
        EXPECT_FALSE(form.Visible());
        EXPECT_FALSE(form.IsDocked());
        EXPECT_EQ(RectIn(Dialog.DlgHandle(), View()).Left, area.Left);
        ExpectCleanLayout(Dialog);
    });
    EXPECT_FALSE(form.Visible());
}

TEST_F(OpenDialogControls, TheCustomFormStaysWhenTheFolderChanges) {
    TForm& form = UseCustomForm();
    RunDialog(
        Dialog, [&] { Dialog.SetSelectedFolder(Folder.Path("inner")); },
        {Await("it is shown", FolderIs(Dialog, Folder.Path("inner"))),
         Await("its list is not", [&] { return !IsWindowVisible(View()); }),
         Perform("the form is", [&] { EXPECT_TRUE(IsWindowVisible(form.WindowHandle())); }),
         Perform("up by the list's own way", [&] { SendMessageA(Dialog.DlgHandle(), WM_COMMAND, KxCmdUpLevel, 0); }),
         Await("its list is not shown either",
               [&] { return Dialog.SelectedFolder() == Folder.Path() && !IsWindowVisible(View()); }),
         Cancel(Dialog)});
}

TEST_F(OpenDialogControls, TheCustomFormGrowsWithTheDialog) {
    TForm& form = UseCustomForm();
    Dialog.CustDlgParams().SetPosition(dpScrCenter);
    TRect before;
    std::vector<TStep> steps = DragCorner(Dialog, 80, 50);
    steps.insert(steps.begin(), Perform("its size", [&] { before = form.BoundsRect(); }));
    steps.push_back(Await("it has grown", [&] {
        const TRect now = form.BoundsRect();
        return Width(now) == Width(before) + 80 && Height(now) == Height(before) + 50;
    }));
    steps.push_back(Perform("all is well", [&] {
        ExpectCleanLayout(Dialog);
        Screenshot("open_custom_form_larger", Dialog.DlgHandle());
        Dialog.SetSelectionType(stStandard);
        EXPECT_EQ(Width(RectIn(Dialog.DlgHandle(), View())), Width(before) + 80);
    }));
    steps.push_back(Cancel(Dialog));
    RunDialog(Dialog, steps);
}

TEST_F(OpenDialogControls, WithoutTheSelectionControlNothingIsThere) {
    TForm& form = UseCustomForm();
    TKxOpenDlgControls others = KxAllOpenDlgControls;
    others.Exclude(dcSelectionCtrl);
    Dialog.SetVisibleControls(others);
    Look(Dialog, [&] {
        EXPECT_FALSE(IsWindowVisible(View()));
        EXPECT_FALSE(form.Visible());
        Dialog.SetVisibleControls(KxAllOpenDlgControls);
        EXPECT_TRUE(form.Visible());
    });
}

TEST_F(OpenDialogControls, ACustomFormThatIsFreedLeavesTheDialogGoing) {
    UseCustomForm();
    Look(Dialog, [&] {
        Custom.reset();
        Dialog.SetSelectionType(stStandard);
        EXPECT_TRUE(IsWindowVisible(View()));
    });
}

// --- Hidden controls

TEST_F(OpenDialogControls, TheNavigationBarAloneIsHidden) {
    TKxOpenDlgControls others = KxAllOpenDlgControls;
    others.Exclude(dcToolBar);
    ShowPlaces();
    AddPlace("a");
    Dialog.SetVisibleControls(others);
    Look(Dialog, [&] {
        EXPECT_FALSE(IsWindowVisible(NavigationBarOf(Dialog)));
        EXPECT_TRUE(IsWindowVisible(Dialog.PlacesForm()->ToolBar1->WindowHandle()));
        Dialog.SetVisibleControls(KxAllOpenDlgControls);
        EXPECT_TRUE(IsWindowVisible(NavigationBarOf(Dialog)));
    });
}

// --- The OK button with a menu

class OpenDialogOkMenu : public OpenDialogControls {
protected:
    OpenDialogOkMenu() {
        Item = new TMenuItem(&Menu);
        Item->SetCaption("Open &read-only");
        Menu.Items().Add(Item);
        Dialog.SetOkButtonMenu(&Menu);
    }
    TKxBitBtn* Button() const {
        return dynamic_cast<TKxBitBtn*>(FindControl(FindDescendant(Dialog.DlgHandle(), "TKxBitBtn")));
    }

    TPopupMenu Menu;
    TMenuItem* Item;
};

TEST_F(OpenDialogOkMenu, TakesTheButtonsPlaceAndText) {
    TRect place;
    auto& plain = NewDialog<TKxOpenDialog>();
    Look(plain, [&] { place = RectIn(plain.DlgHandle(), ItemOf(plain, IDOK)); });
    Look(Dialog, [&] {
        ASSERT_NE(Button(), nullptr);
        EXPECT_EQ(Button()->Caption(), TextOf(ItemOf(Dialog, IDOK)));
        EXPECT_EQ(RectIn(Dialog.DlgHandle(), Button()->WindowHandle()), place);
        EXPECT_FALSE(IsWindowVisible(ItemOf(Dialog, IDOK)));
        Screenshot("open_ok_menu", Dialog.DlgHandle());
    });
}

TEST_F(OpenDialogOkMenu, LooksLikeTheOneItReplaces) {
    Look(Dialog, [&] {
        TFont font;
        font.SetHandle(reinterpret_cast<HFONT>(SendMessageW(ItemOf(Dialog, IDOK), WM_GETFONT, 0, 0)));
        EXPECT_TRUE(Button()->Font().Equals(font)) << Button()->Font().Name();
        EXPECT_EQ(Button()->Glyph().Width(), SystemLength(8));
        EXPECT_EQ(Button()->Glyph().Height(), SystemLength(16));
        EXPECT_EQ(Button()->Spacing(), SystemLength(4));
    });
}

TEST_F(OpenDialogOkMenu, HasTheReplacedCaption) {
    Dialog.DlgItemsCaptions().SetOK("&Load");
    Look(Dialog, [&] { EXPECT_EQ(Button()->Caption(), "&Load"); });
}

TEST_F(OpenDialogOkMenu, AClickTakesTheFile) {
    EXPECT_TRUE(RunDialog(Dialog, [&] {
        Dialog.SetFilenameText("one.txt");
        ClickAt(Button()->ClientToScreen({10, 10}));
    }));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OpenDialogOkMenu, ItsMenuOpensAndItsItemsWork) {
    int clicks = 0;
    Item->SetOnClick([&](TObject*) { ++clicks; });
    RunDialog(Dialog,
              [&] {
                  ClickAt(Button()->ClientToScreen({Button()->Width() - 8, 10}));
              },
              {Await("the menu is open", [] { return ShownMenu() != nullptr; }),
               Perform("the first item",
                       [] {
                           PressKey(VK_DOWN);
                           PressKey(VK_RETURN);
                       }),
               Await("it was clicked", [&] { return clicks == 1; }), Cancel(Dialog)});
}

TEST_F(OpenDialogOkMenu, FollowsTheButtonAndItsVisibility) {
    Dialog.CustDlgParams().SetPosition(dpScrCenter);
    std::vector<TStep> steps = DragCorner(Dialog, 90, 40);
    steps.push_back(Await("the button is where the system's is", [&] {
        return RectIn(Dialog.DlgHandle(), Button()->WindowHandle()) == RectIn(Dialog.DlgHandle(), ItemOf(Dialog, IDOK));
    }));
    steps.push_back(Perform("hidden and shown", [&] {
        TKxOpenDlgControls others = KxAllOpenDlgControls;
        others.Exclude(dcOkBtn);
        Dialog.SetVisibleControls(others);
        EXPECT_FALSE(Button()->Showing());
        EXPECT_FALSE(IsWindowVisible(ItemOf(Dialog, IDOK)));
        Dialog.SetVisibleControls(KxAllOpenDlgControls);
        EXPECT_TRUE(IsWindowVisible(Button()->WindowHandle()));
        EXPECT_FALSE(IsWindowVisible(ItemOf(Dialog, IDOK)));
        Screenshot("open_ok_menu_larger", Dialog.DlgHandle());
    }));
    steps.push_back(Cancel(Dialog));
    RunDialog(Dialog, steps);
}

TEST_F(OpenDialogOkMenu, IsNotMadeForAHiddenButton) {
    TKxOpenDlgControls others = KxAllOpenDlgControls;
    others.Exclude(dcOkBtn);
    Dialog.SetVisibleControls(others);
    Look(Dialog, [&] { EXPECT_EQ(Button(), nullptr); });
}

// --- Tool bars

class OpenDialogToolBar : public OpenDialogControls {
protected:
    OpenDialogToolBar() : Bar(*new TToolBar(Owner.get())) {
        Bar.SetParent(Owner.get());
        Bar.SetAlign(alNone);
        Bar.SetBounds(7, 9, 26, 28);
        auto* const button = new TToolButton(&Bar);
        button->SetParent(&Bar);
        button->SetOnClick([this](TObject*) { ++Clicks; });
        Dialog.ToolBar().SetCustomBar(&Bar);
    }

    TToolBar& Bar;
    int Clicks = 0;
};

TEST_F(OpenDialogToolBar, IsBorrowedAndGivenBack) {
    RunDialog(Dialog,
              [&] {
                  HWND window = Dialog.DlgHandle();
                  const TRect own = RectIn(window, NavigationBarOf(Dialog));
                  EXPECT_EQ(GetParent(Bar.WindowHandle()), window);
                  EXPECT_EQ(Bar.Left(), own.Right + 1);
                  EXPECT_EQ(Bar.Top(), own.Top + Height(own) / 2 - Bar.Height() / 2 - 1);
                  Screenshot("open_tool_bar", window);
                  ClickAt(Bar.ClientToScreen({12, 12}));
              },
              {Await("its buttons work", [&] { return Clicks == 1; }), Cancel(Dialog)});
    EXPECT_EQ(Bar.Parent(), Owner.get());
    EXPECT_EQ(Bar.BoundsRect(), (TRect{7, 9, 33, 37}));
    EXPECT_TRUE(Bar.Visible());
    EXPECT_EQ(Bar.ButtonCount(), 1);
    EXPECT_EQ(SendMessageA(Bar.Handle(), TB_BUTTONCOUNT, 0, 0), 1);
    EXPECT_EQ(GetParent(Bar.Handle()), Owner->Handle());
}

TEST_F(OpenDialogToolBar, AHiddenOneIsHiddenAgain) {
    Bar.Hide();
    Look(Dialog, [&] { EXPECT_TRUE(IsWindowVisible(Bar.WindowHandle())); });
    EXPECT_FALSE(Bar.Visible());
}

TEST_F(OpenDialogToolBar, MayBeFreedWhileItIsBorrowed) {
    Look(Dialog, [&] { Bar.Free(); });
    EXPECT_EQ(Dialog.ToolBar().CustomBar(), nullptr);
}

TEST_F(OpenDialogControls, TheNavigationBarCanBeFlat) {
    Dialog.ToolBar().SetFlat(true);
    Look(Dialog, [&] { EXPECT_TRUE(GetWindowLongPtrA(NavigationBarOf(Dialog), GWL_STYLE) & TBSTYLE_FLAT); });
}

TEST_F(OpenDialogControls, HiddenFilesGiveTheFocusAway) {
    Look(Dialog, [&] {
        FocusList();
        ASSERT_EQ(GetFocus(), List());
        Dialog.SetSelectionType(stCustom);
        EXPECT_EQ(GetFocus(), FileNameEditOf(Dialog.DlgHandle()));
    });
}

} // namespace
} // namespace kx
