// SPDX-License-Identifier: MIT
// Deeds of the forms that are docked to a file dialog.

#include "OpenDialogTest.h"

#include "tests/support/DockedDeeds.h"

namespace kx {
namespace {

using namespace test;

/// A form in a dialog, or a control of it, frees itself or others in one of its events.
class FileDeeds : public TFileDlgTest, public testing::WithParamInterface<TDeedIn> {
protected:
    template <class T> void Run(const typename TDockedDeeds<T>::TDock& dock) {
        TDockedDeeds<T> deeds(&NewDialog<T>(), dock);
        deeds.Run(GetParam());
        EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
    }
};

TEST_P(FileDeeds, AtTheSideOfALiteDialog) {
    Run<TKxOpenLiteDialog>([](TKxOpenLiteDialog& dialog, TForm* acting, TForm* other) {
        dialog.CustDlgParams().SetLeftForm(acting);
        dialog.CustDlgParams().SetRightForm(other);
    });
}

TEST_P(FileDeeds, AtTheBottomOfAFullDialog) {
    Run<TKxOpenDialog>([](TKxOpenDialog& dialog, TForm* acting, TForm* other) {
        dialog.PlacesBar().SetNative(false);
        dialog.CustDlgParams().SetBottomForm(acting);
        dialog.CustDlgParams().SetTopForm(other);
    });
}

TEST_P(FileDeeds, InThePlaceOfTheFilesOfAFullDialog) {
    Run<TKxOpenDialog>([](TKxOpenDialog& dialog, TForm* acting, TForm* other) {
        dialog.SetSelectionType(stCustom);
        dialog.CustDlgParams().SetCustomForm(acting);
        dialog.CustDlgParams().SetLeftForm(other);
    });
}

INSTANTIATE_TEST_SUITE_P(Deeds, FileDeeds, testing::ValuesIn(AllDeeds()),
                         [](const testing::TestParamInfo<TDeedIn>& deed) { return deed.param.Name(); });

} // namespace
} // namespace kx
