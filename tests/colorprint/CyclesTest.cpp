// SPDX-License-Identifier: MIT
// Showings of the colour and the print dialog leave nothing behind.

#include "tests/support/Cycles.h"

#include "BoxDialogTest.h"
#include "tests/support/Printers.h"

namespace kx {
namespace {

using namespace test;

constexpr int SystemCycles = 40;

/// Shows the dialog and has it cancel itself, so many times.
template <class T> TCensus GrowthOf(T& dialog, int count) {
    TCommonDialog& common = dialog;
    common.SetOnShow([&](TObject*) { PostMessageA(common.DialogWindow(), WM_COMMAND, IDCANCEL, 0); });
    return Growth(count, [&] { ASSERT_FALSE(dialog.Execute()); });
}

class BoxDialogCycles : public TDialogTest {};

TEST_F(BoxDialogCycles, OfTheColourDialogLeaveNothingBehindThatTheSystemsDoesNot) {
    TColorDialog plain(Owner.get());
    const TCensus system = GrowthOf(plain, SystemCycles);
    const TFormPtr bottom = MakeForm(clMoneyGreen, 120, 60);
    TKxColorDialog dialog(Owner.get());
    dialog.SetTitle("Cycles");
    dialog.DlgItemsCaptions().SetAddCustomColor("&Keep");
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    int messages = 0;
    dialog.SetOnEventHook([&](TMessage&) { ++messages; });
    const TCensus ours = GrowthOf(dialog, ManyCycles);
    EXPECT_GT(messages, ManyCycles);
    ExpectNoLoss(ours, ManyCycles, system, SystemCycles);
}

TEST_F(BoxDialogCycles, OfThePrintDialogLeaveNothingBehindThatTheSystemsDoesNot) {
    ASSERT_GE(InstalledPrinters().size(), 2u) << NoPrinters;
    TPrintDialog plain(Owner.get());
    const TCensus system = GrowthOf(plain, SystemCycles);
    const TFormPtr left = MakeForm(clMoneyGreen, 120, 60);
    const TFormPtr top = MakeForm(clSkyBlue, 120, 60);
    const TFormPtr right = MakeForm(clCream, 120, 60);
    const TFormPtr bottom = MakeForm(clSilver, 120, 60);
    TKxPrintDialog dialog(Owner.get());
    dialog.SetTitle("Cycles");
    dialog.DlgItemsCaptions().SetGroupCopies("How many");
    dialog.CustDlgParams().SetLeftForm(left.get());
    dialog.CustDlgParams().SetTopForm(top.get());
    dialog.CustDlgParams().SetRightForm(right.get());
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    int messages = 0;
    dialog.SetOnEventHook([&](TMessage&) { ++messages; });
    const TCensus ours = GrowthOf(dialog, ManyCycles);
    EXPECT_GT(messages, ManyCycles);
    ExpectNoLoss(ours, ManyCycles, system, SystemCycles);
}

} // namespace
} // namespace kx
