// SPDX-License-Identifier: MIT
// The folder dialog's texts, its selection and its place.

#include "FolderDlgTest.h"

#include <shlobj.h>
#include <tuple>

namespace kx {
namespace {

using namespace test;
using testing::Not;

class FolderShow : public TFolderDlgTest {};

// --- Texts

TEST_F(FolderShow, TextsOfTheSystemStandUnlessOthersAreSet) {
    std::string title;
    std::string ok;
    std::string cancel;
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        title = TextOf(dialog.DialogWindow());
        ok = TextOf(ItemOf(dialog, IDOK));
        cancel = TextOf(ItemOf(dialog, IDCANCEL));
        EXPECT_EQ(TextOf(ItemOf(dialog, TitleId)), "");
    });
    EXPECT_THAT((std::vector{title, ok, cancel}), Each(Not(IsEmpty())));
    dialog.DlgItemsCaptions().SetCancel("No thanks");
    Look(dialog, [&] {
        EXPECT_EQ(TextOf(dialog.DialogWindow()), title);
        EXPECT_EQ(TextOf(ItemOf(dialog, IDOK)), ok);
        EXPECT_EQ(TextOf(ItemOf(dialog, IDCANCEL)), "No thanks");
    });
}

TEST_F(FolderShow, ShowsItsTitleTextAndCaptions) {
    auto& dialog = NewDialog();
    dialog.SetTitle("Where to?");
    dialog.SetText("Choose the folder for the copies.");
    dialog.DlgItemsCaptions().SetOK("&Take");
    dialog.DlgItemsCaptions().SetCancel("&Leave");
    Look(dialog, [&] {
        EXPECT_EQ(TextOf(dialog.DialogWindow()), "Where to?");
        EXPECT_EQ(TextOf(ItemOf(dialog, TitleId)), "Choose the folder for the copies.");
        EXPECT_EQ(TextOf(ItemOf(dialog, IDOK)), "&Take");
        EXPECT_EQ(TextOf(ItemOf(dialog, IDCANCEL)), "&Leave");
        Screenshot("folder_texts", dialog.DialogWindow());
    });
}

TEST_F(FolderShow, LongTextsAreCutToWhatTheirBuffersHold) {
    auto& dialog = NewDialog();
    dialog.SetTitle(std::string(5000, 't'));
    dialog.SetText(std::string(5000, 'x'));
    Look(dialog, [&] {
        EXPECT_EQ(TextOf(dialog.DialogWindow()), std::string(254, 't'));
        EXPECT_EQ(TextOf(ItemOf(dialog, TitleId)), std::string(127, 'x'));
    });
    dialog.SetTitle(std::string(254, 't'));
    dialog.SetText(std::string(127, 'x'));
    Look(dialog, [&] {
        EXPECT_EQ(TextOf(dialog.DialogWindow()), dialog.Title());
        EXPECT_EQ(TextOf(ItemOf(dialog, TitleId)), dialog.Text());
    });
}

TEST_F(FolderShow, UmlautsReachTheWindow) {
    auto& dialog = NewDialog();
    dialog.SetTitle(FromUtf8("Ordner wählen"));
    dialog.SetText(FromUtf8(std::string(126, 'x') + "ö")); // in UTF-8 its two bytes would not fit
    Folder.AddFolder("Übersicht");
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_EQ(ToUtf8(TextOf(dialog.DialogWindow())), "Ordner wählen");
                              const std::string text = ToUtf8(TextOf(ItemOf(dialog, TitleId)));
                              EXPECT_EQ(text, std::string(126, 'x') + (GetACP() == CP_UTF8 ? "" : "ö"));
                          },
                          {Choose(dialog, FromUtf8("Übersicht"))}));
    EXPECT_EQ(ToUtf8(dialog.Folder()), ToUtf8(Folder.Path("Übersicht")));
}

// --- Status

TEST_F(FolderShow, TheStatusTextShowsFromTheBeginningAndCanBeChanged) {
    auto& dialog = NewDialog();
    dialog.SetOptions({ffStatusText});
    dialog.SetStatusText("ready");
    Look(dialog, [&] {
        EXPECT_TRUE(IsWindowVisible(ItemOf(dialog, StatusId)));
        EXPECT_EQ(TextOf(ItemOf(dialog, StatusId)), "ready");
        dialog.SetStatusText("busy");
        EXPECT_EQ(TextOf(ItemOf(dialog, StatusId)), "busy");
        dialog.SetStatusText("");
        EXPECT_EQ(TextOf(ItemOf(dialog, StatusId)), "");
    });
}

TEST_F(FolderShow, AStatusTextWithoutItsOptionIsKeptButNeverShown) {
    auto& dialog = NewDialog();
    dialog.SetStatusText("ready");
    int sent = 0;
    dialog.SetOnEventHook([&](TMessage& m) { sent += m.Msg == BFFM_SETSTATUSTEXTA ? 1 : 0; });
    Look(dialog, [&] {
        dialog.SetStatusText("busy");
        EXPECT_EQ(TextOf(ItemOf(dialog, StatusId)), "");
        EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, StatusId)));
    });
    EXPECT_EQ(sent, 0);
    EXPECT_EQ(dialog.StatusText(), "busy");
    dialog.SetOptions({ffStatusText});
    Look(dialog, [&] { EXPECT_EQ(TextOf(ItemOf(dialog, StatusId)), "busy"); });
    EXPECT_EQ(sent, 1);
}

TEST_F(FolderShow, TheStatusFollowsTheSelection) {
    auto& dialog = NewDialog();
    dialog.SetOptions({ffStatusText});
    dialog.SetOnSelectionChange([&](TObject*) { dialog.SetStatusText(ExtractFileName(dialog.SelFolder())); });
    RunDialog(dialog, [&] { ClickTreeItem(TreeOf(dialog), "alpha"); },
              {Await("the status", [&] { return TextOf(ItemOf(dialog, StatusId)) == "alpha"; }), Cancel(dialog)});
}

// --- OK and the selection

TEST_F(FolderShow, OkIsEnabledAndDisabled) {
    auto& dialog = NewDialog();
    dialog.SetOk(true);
    EXPECT_TRUE(dialog.Ok());
    Look(dialog, [&] {
        dialog.SetOk(false);
        EXPECT_FALSE(dialog.Ok());
        EXPECT_FALSE(IsWindowEnabled(ItemOf(dialog, IDOK)));
        dialog.SetOk(true);
        EXPECT_TRUE(dialog.Ok());
        EXPECT_TRUE(IsWindowEnabled(ItemOf(dialog, IDOK)));
    });
}

TEST_F(FolderShow, OkDisabledForAFolderTakesNoClick) {
    auto& dialog = NewDialog();
    dialog.SetOnSelectionChange([&](TObject*) { dialog.SetOk(dialog.SelFolder() != Folder.Path("alpha")); });
    EXPECT_TRUE(RunDialog(dialog, [&] { ClickTreeItem(TreeOf(dialog), "alpha"); },
                          {{"OK is disabled", [&] { return !IsWindowEnabled(ItemOf(dialog, IDOK)); },
                            [&] {
                                ClickAt(CenterOf(ItemOf(dialog, IDOK)));
                                ClickTreeItem(TreeOf(dialog), "beta");
                            }},
                           {"OK is enabled", [&] { return IsWindowEnabled(ItemOf(dialog, IDOK)) != 0; },
                            [&] { Click(ItemOf(dialog, IDOK)); }}}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
}

TEST_F(FolderShow, AFolderIsSelectedByItsPath) {
    auto& dialog = NewDialog();
    int changes = 0;
    dialog.SetOnSelectionChange([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        ++changes;
    });
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              dialog.SetSelFolder(Folder.Path("beta\\inner"));
                              EXPECT_EQ(changes, 1);
                              EXPECT_EQ(dialog.SelFolder(), Folder.Path("beta\\inner"));
                              EXPECT_NE(dialog.SelPidl(), nullptr);
                          },
                          {Press(dialog, IDOK)}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta\\inner"));
}

TEST_F(FolderShow, AFolderIsSelectedByItsItemList) {
    auto& dialog = NewDialog();
    dialog.SetOnShow([&](TObject*) { dialog.SetSelPidl(CreatePIDLFromPath(Folder.Path("alpha")).get()); });
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_EQ(dialog.SelFolder(), Folder.Path("alpha"));
                              // Only the first item of the list is kept
                              ASSERT_NE(dialog.SelPidl(), nullptr);
                              EXPECT_EQ(GetNextItemID(dialog.SelPidl()), nullptr);
                          },
                          {Press(dialog, IDOK)}));
    EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
}

TEST_F(FolderShow, TheHeldItemListMayBeSelected) {
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        dialog.SetSelPidl(CreatePIDLFromPath(Folder.Path("alpha")).get());
        dialog.SetSelPidl(dialog.SelPidl());
        dialog.SetSelFolder(dialog.SelFolder());
        dialog.SetSelPidl(nullptr);
        EXPECT_EQ(dialog.SelPidl(), nullptr);
    });
}

TEST_F(FolderShow, AMissingFolderIsNotSelected) {
    auto& dialog = NewDialog();
    int changes = 0;
    dialog.SetOnSelectionChange([&](TObject*) { ++changes; });
    Look(dialog, [&] {
        dialog.SetSelFolder(Folder.Path("alpha"));
        dialog.SetSelFolder(Folder.Path("nowhere"));
        EXPECT_EQ(changes, 1);
        HWND tree = TreeOf(dialog);
        EXPECT_EQ(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CARET, 0),
                  reinterpret_cast<LRESULT>(FindTreeItem(tree, "alpha")));
    });
}

TEST_F(FolderShow, ASelectionBeforeTheShowingIsOnlyKept) {
    auto& dialog = NewDialog();
    dialog.SetSelFolder(Folder.Path("alpha"));
    dialog.SetSelPidl(CreatePIDLFromPath(Folder.Path("alpha")).get());
    EXPECT_EQ(dialog.SelFolder(), Folder.Path("alpha"));
    EXPECT_NE(dialog.SelPidl(), nullptr);
    Look(dialog, [&] {
        EXPECT_EQ(dialog.SelFolder(), Folder.Path("alpha"));
        EXPECT_EQ(SendMessageA(TreeOf(dialog), TVM_GETNEXTITEM, TVGN_CARET, 0), 0);
    });
    EXPECT_EQ(dialog.SelFolder(), "");
    EXPECT_EQ(dialog.SelPidl(), nullptr);
}

// --- Owner and place

TEST_F(FolderShow, IsOwnedByItsParentFormElseByTheApplication) {
    auto& dialog = NewDialog();
    Look(dialog, [&] { EXPECT_EQ(GetWindow(dialog.DialogWindow(), GW_OWNER), Application().Handle()); });
    TFormPtr parent = MakeForm(clCream, 200, 200);
    dialog.SetParentForm(parent.get());
    Look(dialog, [&] {
        EXPECT_EQ(GetWindow(dialog.DialogWindow(), GW_OWNER), parent->Handle());
        EXPECT_FALSE(IsWindowEnabled(parent->Handle()));
        EXPECT_FALSE(IsWindowEnabled(Owner->Handle()));
    });
    EXPECT_TRUE(IsWindowEnabled(parent->Handle()));
    EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
    parent.reset();
    EXPECT_EQ(dialog.ParentForm(), nullptr);
    Look(dialog, [&] { EXPECT_EQ(GetWindow(dialog.DialogWindow(), GW_OWNER), Application().Handle()); });
}

TEST_F(FolderShow, IsNotShownWhenItIsFreedAsItsParentFormGetsItsWindow) {
    auto& dialog = NewDialog();
    TFormPtr parent = MakeForm(clCream, 200, 200);
    ASSERT_FALSE(parent->HandleAllocated());
    bool freed = false;
    parent->SetOnResize([&](TObject*) {
        parent->SetOnResize(nullptr);
        dialog.Free();
        freed = true;
    });
    dialog.SetParentForm(parent.get());
    EXPECT_FALSE(dialog.Execute());
    EXPECT_TRUE(freed);
    EXPECT_EQ(TKxFolderDialog::Running(), nullptr);
}

TEST_F(FolderShow, GetsItsIcon) {
    auto& dialog = NewDialog();
    TIcon icon;
    icon.SetHandle(CopyIcon(LoadIconA(nullptr, IDI_WARNING)));
    dialog.CustDlgParams().SetIcon(icon);
    for (const TKxBrowseForFolderFlagsEx options :
         {TKxBrowseForFolderFlagsEx{}, TKxBrowseForFolderFlagsEx{ffEditBox}}) {
        dialog.SetOptionsEx(options);
        Look(dialog, [&] {
            EXPECT_EQ(SendMessageA(dialog.DialogWindow(), WM_GETICON, ICON_SMALL, 0),
                      reinterpret_cast<LRESULT>(dialog.CustDlgParams().Icon().Handle()));
        });
    }
}

class FolderPlace : public TFolderDlgTest {
protected:
    TRect Placed(TKxFolderDialog& dialog) {
        TRect placed;
        TRect inShow;
        dialog.SetOnShow([&](TObject*) { inShow = ScreenRectOf(dialog.DialogWindow()); });
        Look(dialog, [&] { placed = ScreenRectOf(dialog.DialogWindow()); });
        EXPECT_EQ(placed, inShow); // it is placed before OnShow
        return placed;
    }
    static TPoint CornerOver(const TRect& dialog, const TRect& form) {
        return {dialog.Left - ((dialog.Right + dialog.Left) / 2 - (form.Right + form.Left) / 2),
                dialog.Top - ((dialog.Bottom + dialog.Top) / 2 - (form.Bottom + form.Top) / 2)};
    }
    static TPoint CornerOf(const TRect& r) { return {r.Left, r.Top}; }
};

TEST_F(FolderPlace, FollowsEachPosition) {
    auto& dialog = NewDialog();
    const TRect system = Placed(dialog);
    const TFormPtr form = MakeForm(clCream, 301, 207);
    form->SetBounds(700, 500, 301, 207);
    TForm* mainForm = nullptr;
    Application().CreateForm(&mainForm);
    mainForm->SetBounds(500, 100, 411, 333);
    dialog.CustDlgParams().PosParams().SetForm(form.get());
    const TPoint onScreen{(Screen().Width() - Width(system)) / 2, (Screen().Height() - Height(system)) / 2};
    const std::tuple<TKxDlgPosition, TPoint> expected[] = {
        {dpDefault, CornerOf(system)},
        {dpScrCenter, onScreen},
        {dpMainFormCenter, CornerOver(system, mainForm->BoundsRect())},
        {dpOwnerCenter, CornerOver(system, Owner->BoundsRect())},
        {dpFormCenter, CornerOver(system, form->BoundsRect())}};
    for (const auto& [position, corner] : expected) {
        dialog.CustDlgParams().SetPosition(position);
        dialog.CustDlgParams().PosParams().SetShiftX(0);
        EXPECT_EQ(CornerOf(Placed(dialog)), corner) << position;
        dialog.CustDlgParams().PosParams().SetShiftX(17);
        EXPECT_EQ(CornerOf(Placed(dialog)), (TPoint{corner.X + 17, corner.Y})) << position;
    }
    mainForm->Free();
}

TEST_F(FolderPlace, StaysInsideTheScreen) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().PosParams().SetShiftX(10'000);
    dialog.CustDlgParams().PosParams().SetShiftY(-10'000);
    dialog.CustDlgParams().PosParams().SetFitToScreen(true);
    const TRect placed = Placed(dialog);
    EXPECT_EQ(placed.Right, Screen().Width());
    EXPECT_EQ(placed.Top, 0);
}

// --- Properties

TEST(FolderProperties, HaveNoFolderAtFirst) {
    TKxFolderDialog dialog;
    EXPECT_EQ(dialog.Folder(), "");
    EXPECT_EQ(dialog.Pidl(), nullptr);
    EXPECT_EQ(dialog.CustDlgParams().Dlg(), &dialog);
}

} // namespace
} // namespace kx
