#include "PrintDialogTest.h"

namespace kx {
namespace {

using namespace test;
using testing::ElementsAre;

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

TEST_F(PrintDialog, ATitleReplacesTheSystemsAndAnEmptyOneDoesNot) {
    auto& dialog = NewDialog();
    std::string system;
    Look(dialog, [&] { system = TextOf(dialog.DialogWindow()); });
    EXPECT_NE(system, "");
    dialog.SetTitle("Print the drawing");
    Look(dialog, [&] { EXPECT_EQ(TextOf(dialog.DialogWindow()), "Print the drawing"); });
}

TEST_F(PrintDialog, OnShowComesWhenAllIsDoneAndTheInternalNotificationBehindIt) {
    const TDockedForm right(clMoneyGreen, 120, 60);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetRightForm(right.get());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.SetTitle("Complete");
    std::vector<std::string> log;
    TRect place;
    static_cast<TCommonDialog&>(dialog).SetOnShow(Note(log, dialog, "inherited"));
    dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        log.emplace_back("show");
        EXPECT_EQ(TextOf(dialog.Handle()), "Complete");
        EXPECT_EQ(GetParent(right->WindowHandle()), dialog.Handle());
        EXPECT_EQ(dialog.GetCommonDialogHandle(), dialog.Handle());
        EXPECT_EQ(dialog.SelectedDevice(), Printers[0]);
        EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
        place = ScreenRectOf(dialog.Handle());
    });
    dialog.SetCommonDialogInternalShowEvent(Note(log, dialog, "internal"));
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()), place); });
    EXPECT_THAT(log, ElementsAre("inherited", "show", "internal"));
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

// --- Placement and docking

TEST_F(PrintDialog, IsPlacedWithItsForms) {
    const TDockedForm bottom(clMoneyGreen, 50, 77);
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().PosParams().SetShiftX(11);
    Look(dialog, [&] {
        const TRect r = ScreenRectOf(dialog.Handle());
        EXPECT_EQ(r.Left, (GetSystemMetrics(SM_CXSCREEN) - Width(r)) / 2 + 11);
        EXPECT_EQ(r.Top, (GetSystemMetrics(SM_CYSCREEN) - Height(r)) / 2);
    });
}

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
    const TDockedForm left(clMoneyGreen, leftW, 33);
    const TDockedForm top(clSkyBlue, 44, topH);
    const TDockedForm right(clCream, rightW, 55);
    const TDockedForm bottom(clSilver, 66, bottomH);
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
    for (const TDockedForm* form : {&left, &top, &right, &bottom}) {
        EXPECT_FALSE((*form)->IsDocked());
        EXPECT_FALSE((*form)->Visible());
    }
}

INSTANTIATE_TEST_SUITE_P(All, PrintDialogSides, testing::Range(0, 16));

TEST_F(PrintDialog, FormsDoNotFollowTheSizeOfTheDialog) {
    const TDockedForm bottom(clMoneyGreen, 50, 60);
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
