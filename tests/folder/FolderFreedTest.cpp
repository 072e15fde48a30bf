// SPDX-License-Identifier: MIT
// The folder dialog is freed at any of its messages.

#include "FolderDlgTest.h"

#include "tests/support/DockedDeeds.h"
#include "tests/support/FreedAtMessages.h"

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

// --- In the midst of what the user, or the application, does

class FolderFreedDuring : public TFolderDlgTest, public testing::WithParamInterface<TCourse> {
protected:
    void RunCourse(TKxBrowseForFolderFlagsEx style) {
        const std::string course = GetParam().Name;
        const TFormPtr left = MakeForm(clMoneyGreen, 80, 60);
        const TFormPtr custom = MakeForm(clCream, 80, 60);
        TFreedAtMessages<TKxFolderDialog>([&] {
            auto& dialog = NewDialog();
            dialog.SetOptions({ffStatusText});
            dialog.SetOptionsEx(style);
            dialog.CustDlgParams().SetLeftForm(left.get());
            dialog.CustDlgParams().SetCustomForm(custom.get());
            dialog.SetSelectionType(course == "StandardSelection" ? stCustom : stStandard);
            return &dialog;
        })
            .Behind(GetParam().Behind)
            .During([&](TKxFolderDialog& dialog) { Do(course, dialog); })
            .Check([&] {
                for (const TFormPtr* form : {&left, &custom}) {
                    EXPECT_FALSE((*form)->IsDocked());
                    EXPECT_FALSE((*form)->Visible());
                }
                EXPECT_THAT(TakeExceptions(), testing::IsEmpty());
                EXPECT_EQ(TKxCustomFolderDialog::Running(), nullptr);
            })
            .Run();
    }

private:
    void Do(const std::string& course, TKxFolderDialog& dialog) const {
        if (DoInAnyDialog(course, dialog, dialog.DialogWindow())) {
            return;
        }
        if (course == "Select") {
            dialog.SetSelFolder(Folder.Path("beta"));
        } else if (course == "Status") {
            dialog.SetStatusText("another");
        } else if (course == "EnableOk") {
            dialog.SetOk(false);
        } else if (course == "CustomSelection") {
            dialog.SetSelectionType(stCustom);
        } else if (course == "StandardSelection") {
            dialog.SetSelectionType(stStandard);
        } else {
            FAIL() << course;
        }
    }
};

TEST_P(FolderFreedDuring, InTheOldStyle) { RunCourse({}); }

TEST_P(FolderFreedDuring, InTheNewStyle) { RunCourse({ffNewDialogStyle}); }

KX_COURSE(FolderFreedDuring, Cancel);
KX_COURSE(FolderFreedDuring, Ok);
KX_COURSE(FolderFreedDuring, Close);
KX_COURSE(FolderFreedDuring, Select);
KX_COURSE(FolderFreedDuring, Status);
KX_COURSE(FolderFreedDuring, EnableOk);
KX_COURSE(FolderFreedDuring, CustomSelection);
KX_COURSE(FolderFreedDuring, StandardSelection);
KX_COURSE(FolderFreedDuring, Grow);

// --- By docked forms

class FolderDeeds : public TFolderDlgTest, public testing::WithParamInterface<TDeedIn> {};

TEST_P(FolderDeeds, AtTheSide) {
    TDockedDeeds<TKxFolderDialog>(&NewDialog(), [](TKxFolderDialog& dialog, TForm* acting, TForm* other) {
        dialog.CustDlgParams().SetRightForm(acting);
        dialog.CustDlgParams().SetBottomForm(other);
    }).Run(GetParam());
}

TEST_P(FolderDeeds, InThePlaceOfTheTree) {
    TDockedDeeds<TKxFolderDialog>(&NewDialog(), [](TKxFolderDialog& dialog, TForm* acting, TForm* other) {
        dialog.SetSelectionType(stCustom);
        dialog.CustDlgParams().SetCustomForm(acting);
        dialog.CustDlgParams().SetLeftForm(other);
    }).Run(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Deeds, FolderDeeds, testing::ValuesIn(AllDeeds()),
                         [](const testing::TestParamInfo<TDeedIn>& deed) { return deed.param.Name(); });

} // namespace
} // namespace kx
