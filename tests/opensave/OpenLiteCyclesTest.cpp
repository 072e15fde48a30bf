// SPDX-License-Identifier: MIT
// Showings of the lite dialogs leave nothing behind.

#include "FileDlgTest.h"

#include "tests/support/Cycles.h"

namespace kx {
namespace {

using namespace test;

class LiteCycles : public TFileDlgTest {};

TEST_F(LiteCycles, LeaveNothingBehindThatTheSystemsDialogDoesNot) {
    constexpr int SystemCycles = 20;

    TOpenDialog plain(Owner.get());
    plain.SetInitialDir(Folder.Path());
    plain.SetOnShow([&](TObject*) { PostMessageA(plain.DialogWindow(), WM_COMMAND, IDCANCEL, 0); });
    const TCensus system = Growth(SystemCycles, [&] { ASSERT_FALSE(plain.Execute()); });

    const TFormPtr left = MakeMarkedForm(clMoneyGreen, 120, 60);
    const TFormPtr top = MakeMarkedForm(clSkyBlue, 120, 60);
    const TFormPtr right = MakeMarkedForm(clCream, 120, 60);
    const TFormPtr bottom = MakeMarkedForm(clSilver, 120, 60);
    auto& dialog = NewDialog();
    dialog.SetTitle("Cycles");
    dialog.DlgItemsCaptions().SetOK("&Take");
    dialog.CustDlgParams().SetLeftForm(left.get());
    dialog.CustDlgParams().SetTopForm(top.get());
    dialog.CustDlgParams().SetRightForm(right.get());
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    int messages = 0;
    dialog.SetOnEventHook([&](TMessage&) { ++messages; });
    dialog.SetOnShow([&](TObject*) { PostMessageA(dialog.DlgHandle(), WM_COMMAND, IDCANCEL, 0); });
    const TCensus ours = Growth(ManyCycles, [&] { ASSERT_FALSE(dialog.Execute()); });

    EXPECT_GT(messages, ManyCycles);
    ExpectNoLoss(ours, ManyCycles, system, SystemCycles);
}

} // namespace
} // namespace kx
