#include "FolderDlgTest.h"

#include "support/FreedAtMessages.h"

namespace kx {
namespace {

using namespace test;

/// The dialog is freed at each of its messages in turn, with forms docked to it or in place of its tree.
class FolderFreed : public TFolderDlgTest, public testing::WithParamInterface<bool> {};

TEST_P(FolderFreed, AtAnyMessage) {
    const TFormPtr left = MakeForm(clMoneyGreen, 80, 60);
    const TFormPtr custom = MakeForm(clCream, 80, 60);
    FreeAtEachMessage<TKxFolderDialog>(
        GetParam(),
        [&] {
            auto& dialog = NewDialog();
            dialog.SetTitle("Folder");
            dialog.SetOptions({ffStatusText});
            dialog.SetStatusText("status");
            dialog.SetSelectionType(stCustom);
            dialog.CustDlgParams().SetLeftForm(left.get());
            dialog.CustDlgParams().SetCustomForm(custom.get());
            dialog.CustDlgParams().SetPosition(dpScrCenter);
            return &dialog;
        },
        [&] {
            EXPECT_FALSE(left->IsDocked());
            EXPECT_FALSE(custom->IsDocked());
            EXPECT_THAT(TakeExceptions(), testing::IsEmpty());
            EXPECT_EQ(TKxCustomFolderDialog::Running(), nullptr);
        });
}

TEST_P(FolderFreed, AtAnyMessageInTheNewStyle) {
    FreeAtEachMessage<TKxFolderDialog>(
        GetParam(),
        [this] {
            auto& dialog = NewDialog();
            dialog.SetOptionsEx({ffNewDialogStyle, ffEditBox});
            return &dialog;
        },
        [this] { EXPECT_THAT(TakeExceptions(), testing::IsEmpty()); });
}

INSTANTIATE_TEST_SUITE_P(Hooks, FolderFreed, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& hook) { return hook.param ? "Behind" : "Before"; });

} // namespace
} // namespace kx
