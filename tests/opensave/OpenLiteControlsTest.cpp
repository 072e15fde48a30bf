// SPDX-License-Identifier: MIT
// Captions and controls of the lite dialogs.

#include "FileDlgTest.h"

#include "kx/win/System.h"

#include <map>
#include <tuple>

namespace kx {
namespace {

using namespace test;

class LiteControls : public TFileDlgTest {};

bool IsShown(HWND window) { return window && IsWindowVisible(window); }

// --- The component

TEST_F(LiteControls, KnowTheirDialog) {
    TKxSaveLiteDialog dialog;
    EXPECT_EQ(dialog.CustDlgParams().Dlg(), &dialog);
    EXPECT_EQ(&dialog.GetCustDlgParams(), &dialog.CustDlgParams());
}

TEST_F(LiteControls, PublishATitleOfTheirOwn) {
    TKxOpenLiteDialog dialog;
    SetStrProp(dialog, "Title", "By name");
    EXPECT_EQ(dialog.Title(), "By name");
    EXPECT_EQ(static_cast<TOpenDialog&>(dialog).Title(), ""); // the inherited one is out of use
}

// --- Captions

std::map<int, std::string> Texts(const TKxCustomOpenLiteDialog& dialog) {
    std::map<int, std::string> texts;
    for (const int id : {1, 2, 1038, 1091, 1090, 1089, 1040}) {
        texts[id] = TextOf(ItemOf(dialog, id));
    }
    return texts;
}

TEST_F(LiteControls, WithoutCaptionsKeepTheSystemsTexts) {
    std::map<int, std::string> system;
    TOpenDialog plain(Owner.get());
    Look(plain, [&] {
        for (const int id : {1, 2, 1038, 1091, 1090, 1089, 1040}) {
            system[id] = TextOf(GetDlgItem(plain.DialogWindow(), id));
        }
    });
    auto& dialog = NewDialog();
    Look(dialog, [&] { EXPECT_EQ(Texts(dialog), system); });
}

TEST_F(LiteControls, OneCaptionChangesOneControl) {
    auto& dialog = NewDialog();
    std::map<int, std::string> before;
    Look(dialog, [&] { before = Texts(dialog); });
    dialog.DlgItemsCaptions().SetLookIn("Search here:");
    before[1091] = "Search here:";
    Look(dialog, [&] { EXPECT_EQ(Texts(dialog), before); });
}

TEST_F(LiteControls, AllCaptionsReachTheirControls) {
    auto& dialog = NewDialog();
    TKxOpenDlgCaptions& captions = dialog.DlgItemsCaptions();
    captions.SetOK("&Take");
    captions.SetCancel("&Leave");
    captions.SetHelp("&Hints");
    captions.SetLookIn("&Where:");
    captions.SetFileName("&What:");
    captions.SetFileType("&Which:");
    captions.SetReadOnlyFlag("&Only look");
    dialog.SetOptions({ofShowHelp});
    Look(dialog, [&] {
        EXPECT_EQ(Texts(dialog), (std::map<int, std::string>{{1, "&Take"},
                                                             {2, "&Leave"},
                                                             {1038, "&Hints"},
                                                             {1091, "&Where:"},
                                                             {1090, "&What:"},
                                                             {1089, "&Which:"},
                                                             {1040, "&Only look"}}));
        ExpectCleanLayout(dialog);
        Screenshot("lite_captions", dialog.DlgHandle());
    });
}

TEST_F(LiteControls, TheTitleIsTheDialogWindowsText) {
    auto& dialog = NewDialog();
    dialog.SetTitle("Choose a drawing");
    Look(dialog, [&] {
        EXPECT_EQ(TextOf(dialog.DlgHandle()), "Choose a drawing");
        dialog.SetTitle("Another one");
        EXPECT_EQ(TextOf(dialog.DlgHandle()), "Another one");
        dialog.SetTitle(std::string(2000, 'x'));
        EXPECT_EQ(TextOf(dialog.DlgHandle()), std::string(511, 'x'));
    });
    EXPECT_EQ(dialog.Title(), std::string(2000, 'x'));
}

TEST_F(LiteControls, WithoutATitleHaveTheSystemsOne) {
    auto& dialog = NewDialog();
    Look(dialog, [&] { EXPECT_EQ(TextOf(dialog.DlgHandle()), "Open"); });
}

// --- Visible controls

HWND WindowOf(const TKxCustomOpenLiteDialog& dialog, TKxOpenDlgControl control) {
    switch (control) {
    case dcToolBar: return NavigationBarOf(dialog);
    case dcFileName: return dialog.EditHandle();
    case dcSelectionCtrl: return ListOf(dialog);
    default: return ItemOf(dialog, KxOpenDlgControlIds[control]);
    }
}

class LiteVisibleControl : public TFileDlgTest, public testing::WithParamInterface<std::tuple<int, bool>> {};

TEST_P(LiteVisibleControl, OutOfTheSetIsHiddenAloneAndComesBack) {
    const auto hidden = static_cast<TKxOpenDlgControl>(std::get<0>(GetParam()));
    auto& dialog = NewDialog();
    dialog.PlacesBar().SetVisible(std::get<1>(GetParam()));
    TKxOpenDlgControls visible = KxAllOpenDlgControls;
    dialog.SetVisibleControls(visible.Exclude(hidden));
    Look(dialog, [&] {
        for (int i = dcFolderCombo; i <= dcToolBar; ++i) {
            const auto control = static_cast<TKxOpenDlgControl>(i);
            // The lite dialogs always show the file list.
            const bool expected = control != hidden || control == dcSelectionCtrl;
            EXPECT_EQ(IsShown(WindowOf(dialog, control)), expected) << KxTypeInfo(control).NameOf(i);
        }
        EXPECT_EQ(IsShown(PlacesBarOf(dialog)), std::get<1>(GetParam()));
        Screenshot("lite_without_" + KxTypeInfo(hidden).NameOf(hidden) + (std::get<1>(GetParam()) ? "_places" : ""),
                   dialog.DlgHandle());
        dialog.SetVisibleControls(KxAllOpenDlgControls);
        EXPECT_TRUE(IsShown(WindowOf(dialog, hidden)));
        dialog.SetVisibleControls({});
        EXPECT_EQ(IsShown(WindowOf(dialog, hidden)), hidden == dcSelectionCtrl);
    });
}

INSTANTIATE_TEST_SUITE_P(All, LiteVisibleControl,
                         testing::Combine(testing::Range<int>(dcFolderCombo, dcToolBar + 1), testing::Bool()),
                         [](const testing::TestParamInfo<std::tuple<int, bool>>& param) {
                             const int control = std::get<0>(param.param);
                             return KxTypeInfo(TKxOpenDlgControl{}).NameOf(control) +
                                    (std::get<1>(param.param) ? "WithPlaces" : "");
                         });

TEST_F(LiteControls, HiddenOnesKeepTheirPlaceAndTheOthersToo) {
    auto& dialog = NewDialog();
    std::map<int, TRect> before;
    const auto places = [&] {
        std::map<int, TRect> rects;
        for (const int id : {1, 2, 1091, 1137, 1090, 1089, 1136, 1120, 1148}) {
            rects[id] = RectIn(dialog.DlgHandle(), ItemOf(dialog, id));
        }
        return rects;
    };
    Look(dialog, [&] { before = places(); });
    dialog.SetVisibleControls({});
    Look(dialog, [&] {
        EXPECT_EQ(places(), before);
        Screenshot("lite_without_all", dialog.DlgHandle());
    });
}

TEST_F(LiteControls, TheToolBarOfADockedFormIsNotTheDialogs) {
    const TFormPtr form = MakeMarkedForm(clCream, 150, 100);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetLeftForm(form.get());
    TKxOpenDlgControls visible = KxAllOpenDlgControls;
    dialog.SetVisibleControls(visible.Exclude(dcToolBar));
    HWND bar = CreateWindowExA(0, TOOLBARCLASSNAMEA, "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, form->Handle(), nullptr,
                               nullptr, nullptr);
    Look(dialog, [&] {
        EXPECT_TRUE(IsShown(bar));
        EXPECT_FALSE(IsShown(NavigationBarOf(dialog)));
    });
}

// --- The system's places bar

TEST_F(LiteControls, AnOldSystemIsNotAskedForItsPlacesBar) {
    for (const TSystem& old : {TSystem{.Major = 4, .Minor = 0}, TSystem{.Platform = 0, .Major = 0, .Minor = 0}}) {
        const TAssumedSystem assumed(old);
        auto& dialog = NewDialog();
        Look(dialog, [&] { EXPECT_EQ(PlacesBarOf(dialog), nullptr); });
    }
}

TEST_F(LiteControls, ThePlacesBarIsTheSystemsOrNone) {
    auto& dialog = NewDialog();
    int without = 0;
    dialog.PlacesBar().SetVisible(false);
    Look(dialog, [&] {
        EXPECT_EQ(PlacesBarOf(dialog), nullptr);
        without = ClientRectOf(dialog.DlgHandle()).Right;
        Screenshot("lite_places_hidden", dialog.DlgHandle());
    });
    dialog.PlacesBar().SetVisible(true);
    Look(dialog, [&] {
        EXPECT_TRUE(IsShown(PlacesBarOf(dialog)));
        EXPECT_GT(ClientRectOf(dialog.DlgHandle()).Right, without);
        Screenshot("lite_places_shown", dialog.DlgHandle());
    });
}

TEST_F(LiteControls, WithThePlacesBarTheFilterIndexAndTheReadOnlyOptionStayAsTheyWere) {
    auto& dialog = NewDialog();
    dialog.SetFilter("All|*.*|Text|*.txt");
    dialog.SetOptions({});
    const auto choose = [&] {
        EXPECT_TRUE(RunDialog(dialog,
                              [&] {
                                  ChooseInCombo(ItemOf(dialog, 1136), 1, CBN_SELENDOK);
                                  SendMessageA(ItemOf(dialog, 1040), BM_CLICK, 0, 0);
                              },
                              {EnterFileName(dialog, "two.txt")}));
    };
    choose();
    EXPECT_EQ(dialog.FilterIndex(), 1);
    EXPECT_FALSE(dialog.Options().Contains(ofReadOnly));
    EXPECT_EQ(dialog.FileName(), Folder.Path("two.txt")); // it travels in the record's buffer

    dialog.PlacesBar().SetVisible(false); // the system's own record: all comes back
    dialog.SetFileName("");
    choose();
    EXPECT_EQ(dialog.FilterIndex(), 2);
    EXPECT_TRUE(dialog.Options().Contains(ofReadOnly));
}

} // namespace
} // namespace kx
