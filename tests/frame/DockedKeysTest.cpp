// SPDX-License-Identifier: MIT
// The focus in a system dialog with docked forms.

#include "DockingFixture.h"

#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

using DockedKeys = Docking;

TEST_F(DockedKeys, TheFocusGoesOnFromAControlThatVanishes) {
    const struct {
        const char* What;
        std::function<void(TEdit&)> Deed;
    } deeds[] = {{"disabled", [](TEdit& e) { e.SetEnabled(false); }},
                 {"hidden", [](TEdit& e) { e.SetVisible(false); }},
                 {"freed", [](TEdit& e) { e.Free(); }},
                 {"in a form that is hidden", [](TEdit& e) { GetParentForm(&e)->Hide(); }},
                 {"in a form that is undocked", [](TEdit& e) {
                      TCustomForm* const form = GetParentForm(&e);
                      form->Hide();
                      form->SetParentWindow(nullptr);
                  }}};
    for (const auto& deed : deeds) {
        SCOPED_TRACE(deed.What);
        TFormPtr form = MakeForm<TBottomForm>();
        auto* const edit = new TEdit(form.get());
        edit->SetParent(form.get());
        Params().SetBottomForm(form.get());
        RunDialog(FDialog, {{"shown", [&] { return IsWindowVisible(edit->Handle()) != 0; }, [&] { edit->SetFocus(); }},
                            {"it has the focus", [&] { return edit->Focused(); },
                             [&] {
                                 deed.Deed(*edit);
                                 const HWND focus = GetFocus();
                                 EXPECT_TRUE(IsChild(Window(), focus));
                                 EXPECT_TRUE(IsWindowVisible(focus) && IsWindowEnabled(focus));
                                 EXPECT_EQ(FindControl(focus), nullptr) << "a control of the system's";
                             }},
                            Cancel(FDialog)});
        Params().SetBottomForm(nullptr);
    }
}

} // namespace
} // namespace kx
