// SPDX-License-Identifier: MIT
// The five rules by which a dialog is placed.

#include "FrameDialog.h"

#include "tests/support/TestDriver.h"

namespace kx::test {
namespace {

TPoint CornerOf(const TRect& r) { return {r.Left, r.Top}; }

/// What centring over a form gives, worked out apart from the library.
TPoint CornerOver(const TRect& dialog, const TRect& form) {
    const int dx = (dialog.Right + dialog.Left) / 2 - (form.Right + form.Left) / 2;
    const int dy = (dialog.Bottom + dialog.Top) / 2 - (form.Bottom + form.Top) / 2;
    return {dialog.Left - dx, dialog.Top - dy};
}

TPoint CornerOnScreen(const TRect& dialog) {
    return {(Screen().Width() - Width(dialog)) / 2, (Screen().Height() - Height(dialog)) / 2};
}

class Position : public testing::Test {
protected:
    Position() { FDialog.SetInitialDir(FFolder.Path()); }

    TKxCustDlgParams& Params() { return FDialog.CustDlgParams(); }
    TKxPosParams& Details() { return FDialog.CustDlgParams().PosParams(); }

    /// Where the dialog shows.
    TRect Placed() {
        TRect placed;
        RunDialog(FDialog, {{"", {}, [&] { placed = KxWindowRect(FDialog.DialogWindow()); }}, Cancel(FDialog)});
        return placed;
    }

    TTempFolder FFolder;
    TFrameDialog FDialog{&Application()};
};

TEST_F(Position, DefaultLeavesTheDialogWhereTheSystemPutsIt) {
    const TRect placed = Placed();
    EXPECT_EQ(placed, FDialog.SystemRect());
}

TEST_F(Position, DefaultWithAShiftOf10MovesTheDialog10PixelsToTheRight) {
    Details().SetShiftX(10);
    const TRect placed = Placed();
    EXPECT_EQ(placed.Left, FDialog.SystemRect().Left + 10);
    EXPECT_EQ(placed.Top, FDialog.SystemRect().Top);
    EXPECT_EQ(Width(placed), Width(FDialog.SystemRect()));
}

TEST_F(Position, ScreenCenterCentresTheDialogAndThenShiftsIt) {
    Params().SetPosition(dpScrCenter);
    TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
    Details().SetShiftX(-37);
    Details().SetShiftY(21);
    placed = Placed();
    const TPoint centred = CornerOnScreen(placed);
    EXPECT_EQ(CornerOf(placed), (TPoint{centred.X - 37, centred.Y + 21}));
}

TEST_F(Position, ScreenCenterPutsADialogWiderThanTheScreenToItsLeftEdge) {
    const auto form = MakeForm<TLeftForm>();
    form->SetWidth(Screen().Width());
    Params().SetLeftForm(form.get());
    Params().SetPosition(dpScrCenter);
    const TRect placed = Placed();
    EXPECT_GT(Width(placed), Screen().Width());
    EXPECT_EQ(placed.Left, 0);
}

TEST_F(Position, MainFormCenterCentresOverTheMainForm) {
    TMainFormScope main({500, 400, 901, 703});
    Params().SetPosition(dpMainFormCenter);
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOver(FDialog.SystemRect(), main.Form().BoundsRect()));
}

TEST_F(Position, MainFormCenterWithoutAMainFormCentresOnTheScreen) {
    ASSERT_EQ(Application().MainForm(), nullptr);
    Params().SetPosition(dpMainFormCenter);
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
}

TEST_F(Position, CenteringOverAFormDoesNotFitToTheScreenByItself) {
    TMainFormScope main({-300, -250, 1, 2});
    Params().SetPosition(dpMainFormCenter);
    const TRect placed = Placed();
    EXPECT_LT(placed.Left, 0);
    EXPECT_LT(placed.Top, 0);
    EXPECT_EQ(CornerOf(placed), CornerOver(FDialog.SystemRect(), main.Form().BoundsRect()));
}

TEST_F(Position, FitToScreenBringsTheShiftedDialogBack) {
    Details().SetFitToScreen(true);
    Details().SetShiftX(-4000);
    Details().SetShiftY(4000);
    const TRect placed = Placed();
    EXPECT_EQ(placed.Left, 0);
    EXPECT_EQ(placed.Bottom, Screen().Height());
}

TEST_F(Position, OwnerCenterCentresOverTheFormThatOwnsTheDialog) {
    TMainFormScope main({0, 0, 300, 300});
    const auto owner = MakeForm<TCentreForm>();
    owner->SetBounds(600, 500, 333, 222);
    auto* dialog = new TFrameDialog(owner.get());
    dialog->SetInitialDir(FFolder.Path());
    dialog->CustDlgParams().SetPosition(dpOwnerCenter);
    TRect placed;
    RunDialog(*dialog, {{"", {}, [&] { placed = KxWindowRect(dialog->DialogWindow()); }}, Cancel(*dialog)});
    EXPECT_EQ(CornerOf(placed), CornerOver(dialog->SystemRect(), owner->BoundsRect()));
}

TEST_F(Position, OwnerCenterOfAnOwnerThatIsNoFormFallsBackToTheMainForm) {
    TMainFormScope main({500, 400, 901, 703});
    Params().SetPosition(dpOwnerCenter);
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOver(FDialog.SystemRect(), main.Form().BoundsRect()));
}

TEST_F(Position, OwnerCenterOfAnOwnerThatIsNoFormFallsBackToTheScreen) {
    Params().SetPosition(dpOwnerCenter);
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
}

TEST_F(Position, OwnerCenterWithoutAnyOwnerFallsBackToo) {
    TFrameDialog orphan;
    orphan.SetInitialDir(FFolder.Path());
    orphan.CustDlgParams().SetPosition(dpOwnerCenter);
    TRect placed;
    RunDialog(orphan, {{"", {}, [&] { placed = KxWindowRect(orphan.DialogWindow()); }}, Cancel(orphan)});
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
}

TEST_F(Position, FormCenterCentresOverTheGivenForm) {
    TMainFormScope main({0, 0, 300, 300});
    const auto reference = MakeForm<TCentreForm>();
    reference->SetBounds(700, 600, 201, 103);
    Params().SetPosition(dpFormCenter);
    Details().SetForm(reference.get());
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOver(FDialog.SystemRect(), reference->BoundsRect()));
}

TEST_F(Position, FormCenterFindsTheFormByItsName) {
    const auto reference = MakeForm<TCentreForm>();
    reference->SetBounds(700, 600, 201, 103);
    Params().SetPosition(dpFormCenter);
    Details().SetFormName("CENTREFORM");
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOver(FDialog.SystemRect(), reference->BoundsRect()));
}

TEST_F(Position, FormCenterWithANameNobodyHasFallsBackToTheMainForm) {
    TMainFormScope main({500, 400, 901, 703});
    Params().SetPosition(dpFormCenter);
    Details().SetFormName("NoSuchForm");
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOver(FDialog.SystemRect(), main.Form().BoundsRect()));
}

TEST_F(Position, FormCenterWithANameNobodyHasFallsBackToTheScreen) {
    Params().SetPosition(dpFormCenter);
    Details().SetFormName("NoSuchForm");
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
}

TEST_F(Position, FormCenterOfAFormThatWasFreedFallsBack) {
    auto reference = MakeForm<TCentreForm>();
    Details().SetForm(reference.get());
    Params().SetPosition(dpFormCenter);
    reference.reset();
    const TRect placed = Placed();
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
}

TEST_F(Position, TheGrownDialogIsPlacedNotTheSystemsSize) {
    const auto form = MakeForm<TBottomForm>();
    Params().SetBottomForm(form.get());
    Params().SetPosition(dpScrCenter);
    const TRect placed = Placed();
    EXPECT_EQ(Height(placed), Height(FDialog.SystemRect()) + 80);
    EXPECT_EQ(CornerOf(placed), CornerOnScreen(placed));
}

TEST_F(Position, AShiftOfMoreThan32BitsIsAnIntegerOverflow) {
    RunDialog(FDialog, {{"",
                         {},
                         [&] {
                             HWND window = FDialog.DialogWindow();
                             SetWindowPos(window, nullptr, 10, 10, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
                             const TRect before = KxWindowRect(window);
                             Details().SetShiftX(INT32_MAX);
                             EXPECT_THROW(KxSetPosition(window, Params()), EIntOverflow);
                             Details().SetShiftX(0);
                             Details().SetShiftY(INT32_MAX);
                             EXPECT_THROW(KxSetPosition(window, Params()), EIntOverflow);
                             EXPECT_EQ(KxWindowRect(window), before);
                         }},
                        Cancel(FDialog)});
}

TEST_F(Position, AnOverflowWhileTheDialogShowsReachesTheApplicationAndTheDialogShows) {
    const TExceptionLog caught;
    TMainFormScope main({500, 400, 901, 703});
    Params().SetPosition(dpMainFormCenter);
    Details().SetShiftX(INT32_MAX);
    Placed();
    ASSERT_EQ(caught.Messages().size(), 1u);
    EXPECT_EQ(caught.Messages()[0], EIntOverflow("Integer overflow").Message());
}

TEST_F(Position, ResizeWindowSetsTheOuterSizeAndKeepsTheCorner) {
    RunDialog(
        FDialog,
        {{"",
          {},
          [&] {
              HWND window = FDialog.DialogWindow();
              const TRect before = KxWindowRect(window);
              ResizeWindow(window, Width(before) + 33, Height(before) + 44);
              EXPECT_EQ(KxWindowRect(window), (TRect{before.Left, before.Top, before.Right + 33, before.Bottom + 44}));
          }},
         Cancel(FDialog)});
}

TEST(FitRectToScreen, UsesTheRealScreen) {
    TRect r{Screen().Width() - 10, -20, Screen().Width() + 90, 80};
    KxFitRectToScreen(r);
    EXPECT_EQ(r, (TRect{Screen().Width() - 100, 0, Screen().Width(), 100}));
}

} // namespace
} // namespace kx::test
