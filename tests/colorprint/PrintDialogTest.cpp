// SPDX-License-Identifier: MIT
// The print dialog's controls, its place and its forms.

#include "PrintDialogTest.h"

namespace kx {
namespace {

using namespace test;

// --- What is shown

TEST_F(PrintDialog, EachCaptionGoesToItsControl) {
    auto& dialog = NewDialog();
    for (const TCaptionCase& caption : Captions) {
        SetStrProp(dialog.DlgItemsCaptions(), caption.Name, caption.Name);
    }
    Look(dialog, [&] {
        for (const TCaptionCase& caption : Captions) {
            EXPECT_EQ(ItemText(dialog, caption.Control), caption.Name);
        }
        Screenshot("print_captions", dialog.DialogWindow());
    });
}

TEST_F(PrintDialog, EmptyCaptionsLeaveTheSystemsTexts) {
    TPrintDialog plain(Owner.get());
    auto& dialog = NewDialog();
    plain.SetOptions(dialog.Options());
    std::vector<std::string> system;
    Look(plain, [&] { system = AllTexts(plain); });
    dialog.DlgItemsCaptions().SetGroupCopies("How many");
    Look(dialog, [&] {
        std::vector<std::string> ours = AllTexts(dialog);
        EXPECT_EQ(ours.back(), "How many");
        ours.back() = system.back();
        EXPECT_EQ(ours, system);
    });
}

TEST_F(PrintDialog, ThePrinterIsKnownAtOnShow) {
    auto& dialog = NewDialog();
    int shown = 0;
    dialog.SetOnShow([&](TObject*) { shown += dialog.SelectedDevice() == Printers[0] ? 1 : 0; });
    Look(dialog);
    EXPECT_EQ(shown, 1);
}

// --- Placement and docking

TEST_F(PrintDialog, StaysWhereTheSystemPutsIt) {
    TPrintDialog plain(Owner.get());
    auto& dialog = NewDialog();
    plain.SetOptions(dialog.Options());
    TRect system;
    Look(plain, [&] { system = ScreenRectOf(plain.Handle()); });
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()), system); });
}

class PrintDialogSides : public PrintDialog, public testing::WithParamInterface<int> {};

TEST_P(PrintDialogSides, FormsLieAroundTheDialog) {
    constexpr int leftW = 110;
    constexpr int topH = 45;
    constexpr int rightW = 130;
    constexpr int bottomH = 60;
    const TFormPtr left = MakeForm(clMoneyGreen, leftW, 33);
    const TFormPtr top = MakeForm(clSkyBlue, 44, topH);
    const TFormPtr right = MakeForm(clCream, rightW, 55);
    const TFormPtr bottom = MakeForm(clSilver, 66, bottomH);
    auto& dialog = NewDialog();
    TRect bare;
    TRect bareOk;
    Look(dialog, [&] {
        bare = ClientRectOf(dialog.Handle());
        bareOk = RectIn(dialog.Handle(), ItemOf(dialog, IDOK));
    });
    const int sides = GetParam();
    const int l = (sides & 1) != 0 ? leftW : 0;
    const int t = (sides & 2) != 0 ? topH : 0;
    const int r = (sides & 4) != 0 ? rightW : 0;
    const int b = (sides & 8) != 0 ? bottomH : 0;
    TKxCustDlgParams& params = dialog.CustDlgParams();
    params.SetLeftForm(l != 0 ? left.get() : nullptr);
    params.SetTopForm(t != 0 ? top.get() : nullptr);
    params.SetRightForm(r != 0 ? right.get() : nullptr);
    params.SetBottomForm(b != 0 ? bottom.get() : nullptr);
    params.SetPosition(dpScrCenter);
    Look(dialog, [&] {
        EXPECT_EQ(ClientRectOf(dialog.Handle()), (TRect{0, 0, bare.Right + l + r, bare.Bottom + t + b}));
        if (l != 0) {
            ExpectDocked(dialog, *left.get(), {0, 0, l, t + bare.Bottom});
        }
        if (t != 0) {
            ExpectDocked(dialog, *top.get(), {l, 0, l + bare.Right, t});
        }
        if (r != 0) {
            ExpectDocked(dialog, *right.get(), {l + bare.Right, 0, l + bare.Right + r, t + bare.Bottom});
        }
        if (b != 0) {
            ExpectDocked(dialog, *bottom.get(), {0, t + bare.Bottom, l + bare.Right + r, t + bare.Bottom + b});
        }
        const int dx = l != 0 ? l + GetSystemMetrics(SM_CYDLGFRAME) : 0;
        const int dy = t != 0 ? t + GetSystemMetrics(SM_CXDLGFRAME) : 0;
        EXPECT_EQ(RectIn(dialog.Handle(), ItemOf(dialog, IDOK)),
                  (TRect{bareOk.Left + dx, bareOk.Top + dy, bareOk.Right + dx, bareOk.Bottom + dy}));
        Screenshot("print_sides_" + IntToStr(sides), dialog.Handle());
    });
    for (const TFormPtr* form : {&left, &top, &right, &bottom}) {
        EXPECT_FALSE((*form)->IsDocked());
        EXPECT_FALSE((*form)->Visible());
    }
}

INSTANTIATE_TEST_SUITE_P(All, PrintDialogSides, testing::Range(0, 16));

TEST_F(PrintDialog, FormsDoNotFollowTheSizeOfTheDialog) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 50, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    Look(dialog, [&] {
        const int width = bottom->Width();
        const TRect outer = ScreenRectOf(dialog.Handle());
        SetWindowPos(dialog.Handle(), nullptr, 0, 0, Width(outer) + 70, Height(outer), SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(bottom->Width(), width);
    });
}

} // namespace
} // namespace kx
