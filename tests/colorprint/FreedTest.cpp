// SPDX-License-Identifier: MIT
// The colour and the print dialog are freed at any of their messages.

#include "BoxDialogTest.h"

#include "tests/support/DockedDeeds.h"
#include "tests/support/FreedAtMessages.h"

namespace kx {
namespace {

using namespace test;

/// The dialogs are freed at each of their messages in turn, with a form docked to them.
class BoxDialogFreed : public TDialogTest, public testing::WithParamInterface<bool> {
protected:
    template <class T> void FreeAtAnyMessage() {
        const TFormPtr bottom = MakeForm(clMoneyGreen, 80, 50);
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

// --- In the midst of what the user does

class BoxFreedDuring : public TDialogTest, public testing::WithParamInterface<TCourse> {
protected:
    template <class T> void RunCourse() {
        const TFormPtr bottom = MakeForm(clMoneyGreen, 80, 50);
        TFreedAtMessages<T>([&] {
            auto* dialog = new T(Owner.get());
            dialog->CustDlgParams().SetBottomForm(bottom.get());
            return dialog;
        })
            .Behind(GetParam().Behind)
            .During([](T& dialog) { Do(GetParam().Name, dialog); })
            .Check([&] {
                EXPECT_FALSE(bottom->IsDocked());
                EXPECT_FALSE(bottom->Visible());
                EXPECT_THAT(TakeExceptions(), testing::IsEmpty());
            })
            .Run();
    }

private:
    template <class T> static void Do(const std::string& course, T& dialog) {
        HWND window = dialog.DialogWindow();
        if (DoInAnyDialog(course, dialog, window)) {
            return;
        }
        if (course == "FullOpen") {
            SendMessageA(GetDlgItem(window, 719), BM_CLICK, 0, 0);
        } else if (course == "AddAColor") {
            SendMessageA(GetDlgItem(window, 719), BM_CLICK, 0, 0);
            SendMessageA(GetDlgItem(window, 712), BM_CLICK, 0, 0);
        } else if (course == "Copies") {
            SetDlgItemInt(window, 1154, 3, FALSE);
        } else {
            FAIL() << course;
        }
    }
};

class ColorFreedDuring : public BoxFreedDuring {};
TEST_P(ColorFreedDuring, ItIsGoneWithoutATrace) { RunCourse<TKxColorDialog>(); }
KX_COURSE(ColorFreedDuring, Cancel);
KX_COURSE(ColorFreedDuring, Ok);
KX_COURSE(ColorFreedDuring, Close);
KX_COURSE(ColorFreedDuring, FullOpen);
KX_COURSE(ColorFreedDuring, AddAColor);

class PrintFreedDuring : public BoxFreedDuring {};
TEST_P(PrintFreedDuring, ItIsGoneWithoutATrace) { RunCourse<TKxPrintDialog>(); }
KX_COURSE(PrintFreedDuring, Cancel);
KX_COURSE(PrintFreedDuring, Ok);
KX_COURSE(PrintFreedDuring, Close);
KX_COURSE(PrintFreedDuring, Copies);

// --- By their docked forms

class BoxDeeds : public TDialogTest, public testing::WithParamInterface<TDeedIn> {};

TEST_P(BoxDeeds, AtTheBottomOfAColorDialog) {
    TDockedDeeds<TKxColorDialog>(new TKxColorDialog(Owner.get()), [](TKxColorDialog& dialog, TForm* acting, TForm*) {
        dialog.CustDlgParams().SetBottomForm(acting);
    }).Run(GetParam());
}

TEST_P(BoxDeeds, AtTheLeftOfAPrintDialog) {
    TDockedDeeds<TKxPrintDialog>(new TKxPrintDialog(Owner.get()), [](TKxPrintDialog& dialog, TForm* acting,
                                                                     TForm* other) {
        dialog.CustDlgParams().SetLeftForm(acting);
        dialog.CustDlgParams().SetTopForm(other);
    }).Run(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Deeds, BoxDeeds, testing::ValuesIn(AllDeeds()),
                         [](const testing::TestParamInfo<TDeedIn>& deed) { return deed.param.Name(); });

} // namespace
} // namespace kx
