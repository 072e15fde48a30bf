// SPDX-License-Identifier: MIT
// Deeds of handlers and forms in dialogs that do not block.

#include "ModelessTest.h"

#include "tests/support/DockedDeeds.h"

namespace kx {
namespace {

using namespace test;

/// A form docked into a dialog of another thread, or a control of it, frees itself or others in one of its events. The
/// dialog's thread waits for each piece of docking: it must always get its answer.
class ModelessDeeds : public TModelessTest, public testing::WithParamInterface<TDeedIn> {
protected:
    template <class T> void Run(const typename TDockedDeeds<T>::TDock& dock) {
        TDockedDeeds<T> deeds(&NewDialog<T>(), dock);
        deeds.Run(GetParam(), [this](T&, std::vector<TStep> steps) { Show(std::move(steps)); });
        EXPECT_THAT(Results, testing::ElementsAre(false));
    }
};

TEST_P(ModelessDeeds, AtTheSideOfALiteDialog) {
    Run<TKxOpenLiteDialog>([](TKxOpenLiteDialog& dialog, TForm* acting, TForm* other) {
        dialog.CustDlgParams().SetBottomForm(acting);
        dialog.CustDlgParams().SetLeftForm(other);
    });
}

TEST_P(ModelessDeeds, InThePlaceOfTheFilesOfAFullDialog) {
    Run<TKxOpenDialog>([](TKxOpenDialog& dialog, TForm* acting, TForm* other) {
        dialog.SetSelectionType(stCustom);
        dialog.CustDlgParams().SetCustomForm(acting);
        dialog.CustDlgParams().SetRightForm(other);
    });
}

INSTANTIATE_TEST_SUITE_P(Deeds, ModelessDeeds, testing::ValuesIn(AllDeeds({"OnShow", "OnHide", "OnResize", "OnClick"})),
                         [](const testing::TestParamInfo<TDeedIn>& deed) { return deed.param.Name(); });

} // namespace
} // namespace kx
