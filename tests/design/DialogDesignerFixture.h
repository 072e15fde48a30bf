// SPDX-License-Identifier: MIT
#pragma once

#include "DesignFixture.h"

#include <string>
#include <vector>

namespace kx::test {

/// A dialog on the designed form, and the dialog designer in which the user changes it.
class TDialogDesignerTest : public TDesignTest {
protected:
    TDialogDesignerTest() {
        Host.AddModule("Second");
        Host.AddModule("Third");
        Params.PosParams().SetShiftX(3);
        Params.PosParams().SetShiftY(-4);
        Params.SetLeftFormName("Second");
    }

    static TDlgDsgnForm& Form() { return *Find<TDlgDsgnForm>(); }

    /// Opens the designer, does the steps in it, and tells whether the dialog has changed.
    bool Customize(TComponent& dialog, std::vector<TStep> steps) {
        steps.insert(steps.begin(), Await("the designer", IsOpen<TDlgDsgnForm>()));
        return RunDialog([&] { return ShowTemplateDesigner(dialog); }, std::move(steps));
    }
    bool Customize(std::vector<TStep> steps) { return Customize(*Dialog, std::move(steps)); }

    static TStep PressOk() {
        return Perform("OK", [] { PressButton(Form().Button2->Handle()); });
    }
    static TStep PressCancel() {
        return Perform("Cancel", [] { PressButton(Form().Button1->Handle()); });
    }
    static std::vector<std::string> TextsOf(TComboBox& combo) {
        std::vector<std::string> texts;
        for (int i = 0; i < combo.Items().Count(); ++i) {
            texts.push_back(combo.Items()[i]);
        }
        return texts;
    }
    /// The picture on top of the others.
    static TControl* TopPicture() {
        TControl* top = nullptr;
        for (int i = 0; i < Form().TabSheet2->ControlCount(); ++i) {
            TControl* const control = Form().TabSheet2->Controls(i);
            top = dynamic_cast<TImage*>(control) ? control : top;
        }
        return top;
    }
    /// The user chooses that position.
    static void Choose(int position) {
        Form().PageControl1->SetActivePage(Form().TabSheet2);
        PressButton(Form().rg1->Buttons(position).Handle());
    }

    TKxOpenDialog* Dialog = Add<TKxOpenDialog>();
    TKxCustDlgParams& Params = Dialog->CustDlgParams();
};

} // namespace kx::test
