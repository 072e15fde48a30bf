// SPDX-License-Identifier: MIT
#pragma once

#include "FrameDialog.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/Painted.h"
#include "tests/support/TestDriver.h"

#include <gtest/gtest.h>

#include <string>

namespace kx::test {

enum TSide : unsigned { Left = 1, Top = 2, Right = 4, Bottom = 8, AllSides = 15 };

inline std::string NameOf(unsigned sides) {
    std::string name;
    for (const auto& [side, text] : {std::pair{Left, "Left"}, {Top, "Top"}, {Right, "Right"}, {Bottom, "Bottom"}}) {
        name += (sides & side) != 0 ? text : "";
    }
    return name.empty() ? "None" : name;
}

inline TRect At(int32_t left, int32_t top, int32_t width, int32_t height) {
    return {left, top, left + width, top + height};
}

class Docking : public testing::Test {
protected:
    Docking() {
        FFolder.AddFile("drawing.txt");
        FFolder.AddFile("letter.txt");
        FDialog.SetInitialDir(FFolder.Path());
        // Where no test moves it, all of the dialog is to be on the screen, away from the other windows.
        FDialog.CustDlgParams().PosParams().SetFitToScreen(true);
    }

    TKxCustDlgParams& Params() { return FDialog.CustDlgParams(); }
    HWND Window() const { return FDialog.DialogWindow(); }
    TRect ClientSize() const { return KxClientRect(Window()); }
    TRect RectOf(TForm& form) const { return RectIn(Window(), form.WindowHandle()); }

    void DockByForm(unsigned sides) {
        Params().SetLeftForm((sides & Left) != 0 ? FLeft.get() : nullptr);
        Params().SetTopForm((sides & Top) != 0 ? FTop.get() : nullptr);
        Params().SetRightForm((sides & Right) != 0 ? FRight.get() : nullptr);
        Params().SetBottomForm((sides & Bottom) != 0 ? FBottom.get() : nullptr);
    }
    std::vector<TForm*> DockedForms() {
        std::vector<TForm*> forms;
        for (TForm* form : {Params().LeftForm(), Params().TopForm(), Params().RightForm(), Params().BottomForm()}) {
            if (form) {
                forms.push_back(form);
            }
        }
        return forms;
    }
    TCondition AllPainted() {
        return [this] {
            for (TForm* form : DockedForms()) {
                if (!IsPainted(*form)) {
                    return false;
                }
            }
            return true;
        };
    }

    /// Runs the dialog; `look` acts in it once all docked forms are painted, then the steps do. At the end it is
    /// cancelled.
    void LookPainted(TAction look = {}, std::vector<TStep> steps = {}) {
        steps.insert(steps.begin(), {"the forms are painted", AllPainted(), std::move(look)});
        steps.push_back(Cancel(FDialog));
        RunDialog(FDialog, std::move(steps));
    }

    /// All docked forms stand around the middle of a client area of this size.
    void ExpectFormsAround(int32_t width, int32_t height) {
        const int32_t left = Params().LeftForm() ? FLeft->Width() : 0;
        const int32_t top = Params().TopForm() ? FTop->Height() : 0;
        const int32_t right = Params().RightForm() ? FRight->Width() : 0;
        const int32_t bottom = Params().BottomForm() ? FBottom->Height() : 0;
        if (Params().LeftForm()) {
            EXPECT_EQ(RectOf(*FLeft), At(0, 0, left, height - bottom));
        }
        if (Params().TopForm()) {
            EXPECT_EQ(RectOf(*FTop), At(left, 0, width - left - right, top));
        }
        if (Params().RightForm()) {
            EXPECT_EQ(RectOf(*FRight), At(width - right, 0, right, height - bottom));
        }
        if (Params().BottomForm()) {
            EXPECT_EQ(RectOf(*FBottom), At(0, height - bottom, width, bottom));
        }
    }

    TTempFolder FFolder;
    TFormPtr FLeft = MakeForm<TLeftForm>();
    TFormPtr FTop = MakeForm<TTopForm>();
    TFormPtr FRight = MakeForm<TRightForm>();
    TFormPtr FBottom = MakeForm<TBottomForm>();
    TFrameDialog FDialog;
};

} // namespace kx::test
