#include "FileDlgTest.h"

#include "support/Census.h"

namespace kx {
namespace {

using namespace test;

/// Many showings in one process.
class LiteCycles : public TFileDlgTest {
protected:
    /// How the census changes over `count` calls of `show`, the first ones left out: they fill caches.
    template <class F> TCensus Growth(int count, F show) {
        for (int i = 0; i < 5; ++i) {
            show();
        }
        const TCensus before = TakeCensus();
        for (int i = 0; i < count; ++i) {
            show();
        }
        TCensus growth = TakeCensus();
        for (size_t i = 0; i < growth.Counts.size(); ++i) {
            growth.Counts[i] -= before.Counts[i];
        }
        return growth;
    }
};

TEST_F(LiteCycles, LeaveNothingBehindThatTheSystemsDialogDoesNot) {
    constexpr int Cycles = 300;
    constexpr int SystemCycles = 20;

    TOpenDialog plain(Owner.get());
    plain.SetInitialDir(Folder.Path());
    plain.SetOnShow([&](TObject*) { PostMessageA(plain.DialogWindow(), WM_COMMAND, IDCANCEL, 0); });
    const TCensus system = Growth(SystemCycles, [&] { ASSERT_FALSE(plain.Execute()); });

    const TFormPtr left = MakeForm(clMoneyGreen, 120, 60);
    const TFormPtr top = MakeForm(clSkyBlue, 120, 60);
    const TFormPtr right = MakeForm(clCream, 120, 60);
    const TFormPtr bottom = MakeForm(clSilver, 120, 60);
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
    const TCensus ours = Growth(Cycles, [&] { ASSERT_FALSE(dialog.Execute()); });

    EXPECT_GT(messages, Cycles);
    for (size_t i = 0; i < ours.Counts.size(); ++i) {
        // What the bare dialog loses, for as many showings. The heap has some play: caches come and go.
        const long loss = std::max(0L, system.Counts[i] * Cycles / SystemCycles);
        const auto kind = static_cast<TCensusKind>(i);
        const long play = kind == TCensusKind::HeapBlock ? 8 : kind == TCensusKind::HeapByte ? 4096 : 0;
        EXPECT_LE(ours.Counts[i], loss + play) << "kind " << i << " after " << Cycles << " showings";
    }
}

} // namespace
} // namespace kx
