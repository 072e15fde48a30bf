// SPDX-License-Identifier: MIT
// The window in which the grid is set.

#include "designer/GridForm.h"

#include "designer/FormDesigner.h"
#include "kx/win/Windows.h"

namespace kx::designer {

const TClass& TGridForm::StaticClass() {
    static const TClassBuilder<TGridForm> cls("TGridForm", TForm::StaticClass(),
                                              [](auto& c) { c.Method("FormCloseQuery", &TGridForm::FormCloseQuery); });
    return cls.Class();
}

TGridForm::TGridForm(TComponent* owner) : TForm(owner) {
    RegisterClasses<TLabel, TEdit, TCheckBox, TButton>();
    InitForm(*this, StaticClass());
}

void TGridForm::SetGrid(const TDesignGrid& value) {
    WidthEdit->SetText(IntToStr(value.Size.X));
    HeightEdit->SetText(IntToStr(value.Size.Y));
    ShowCheck->SetChecked(value.IsShown);
    SnapCheck->SetChecked(value.Snaps);
}

TDesignGrid TGridForm::Grid() const {
    return {
        {LengthIn(*WidthEdit, "width"), LengthIn(*HeightEdit, "height")}, ShowCheck->Checked(), SnapCheck->Checked()};
}

/// A wrong one gets the focus.
int TGridForm::LengthIn(TEdit& edit, const std::string& name) {
    constexpr int none = 0;
    const int64_t value = StrToIntDef(Trim(edit.Text()), none);
    if (value < TDesignGrid::Least || value > TDesignGrid::Greatest) {
        edit.SetFocus();
        edit.SelectAll();
        throw EDesignError("The " + name + " has to be a number from " + IntToStr(TDesignGrid::Least) + " to " +
                           IntToStr(TDesignGrid::Greatest));
    }
    return static_cast<int>(value);
}

void TGridForm::FormCloseQuery(TObject*, bool& canClose) {
    if (ModalResult() != mrOk) {
        return;
    }
    try {
        Grid();
    } catch (const EDesignError& error) {
        canClose = false;
        Application().MessageBox(error.Message(), Caption(), MB_OK | MB_ICONERROR);
    }
}

} // namespace kx::designer
