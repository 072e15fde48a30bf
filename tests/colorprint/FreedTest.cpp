#include "BoxDialogTest.h"

#include "support/FreedAtMessages.h"

namespace kx {
namespace {

using namespace test;

/// The dialogs are freed at each of their messages in turn, with a form docked to them.
class BoxDialogFreed : public TBoxDialogTest, public testing::WithParamInterface<bool> {
protected:
    template <class T> void FreeAtAnyMessage() {
        const TDockedForm bottom(clMoneyGreen, 80, 50);
        FreeAtEachMessage<T>(
            GetParam(),
            [&] {
                auto* dialog = new T(Owner.get());
                dialog->SetTitle("Title");
                dialog->DlgItemsCaptions().SetOK("&Take");
                dialog->CustDlgParams().SetBottomForm(bottom.get());
                dialog->CustDlgParams().SetPosition(dpScrCenter);
                return dialog;
            },
            [&] {
                EXPECT_FALSE(bottom->IsDocked());
                EXPECT_THAT(TakeExceptions(), testing::IsEmpty());
            });
    }
};

TEST_P(BoxDialogFreed, AColorDialogAtAnyMessage) { FreeAtAnyMessage<TKxColorDialog>(); }

TEST_P(BoxDialogFreed, APrintDialogAtAnyMessage) { FreeAtAnyMessage<TKxPrintDialog>(); }

INSTANTIATE_TEST_SUITE_P(Hooks, BoxDialogFreed, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& hook) { return hook.param ? "Behind" : "Before"; });

} // namespace
} // namespace kx
