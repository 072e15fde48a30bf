// SPDX-License-Identifier: MIT
// Forms for tests.

#include "tests/ui/SampleForms.h"

namespace kx::test {

const TClass& TAllControlsForm::StaticClass() {
    static const TClassBuilder<TAllControlsForm> cls("TAllControlsForm", TForm::StaticClass(), [](auto& c) {
        using T = TAllControlsForm;
        c.Method("FormCreate", &T::FormCreate);
        c.Method("FormShow", &T::FormShow);
        c.Method("FormDestroy", &T::FormDestroy);
        c.Method("OkButtonClick", &T::OkButtonClick);
        c.Method("PaintBox1Paint", &T::PaintBox1Paint);
        c.Method("Item1Click", &T::Item1Click);
    });
    return cls.Class();
}

TAllControlsForm::TAllControlsForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TAllControlsForm::FormCreate(TObject*) {
    Log.emplace_back("create");
    if (ListView1->Items().Count() == 0) { // a form file that was written later has it
        TListItem& item = ListView1->Items().Add();
        item.SetCaption("readme.txt");
        item.SubItems().Add("C:\\Data");
    }
}

void TAllControlsForm::FormShow(TObject*) { Log.emplace_back("show"); }

void TAllControlsForm::FormDestroy(TObject*) {
    if (DestroyLog) {
        DestroyLog->emplace_back("destroy " + Edit1->Name());
    }
}

void TAllControlsForm::OkButtonClick(TObject*) { Log.emplace_back("ok"); }

void TAllControlsForm::PaintBox1Paint(TObject*) {
    PaintBox1->Canvas().Brush().SetColor(clYellow);
    PaintBox1->Canvas().Ellipse({0, 0, PaintBox1->Width(), PaintBox1->Height()});
}

void TAllControlsForm::Item1Click(TObject*) { Log.emplace_back("item"); }

const TClass& TBaseForm::StaticClass() {
    static const TClassBuilder<TBaseForm> cls("TBaseForm", TForm::StaticClass(), [](auto& c) {
        c.Field("NameEdit", &TBaseForm::NameEdit);
        c.Field("CloseButton", &TBaseForm::CloseButton);
        c.Method("FormCreate", &TBaseForm::FormCreate);
        c.Method("CloseClick", &TBaseForm::CloseClick);
    });
    return cls.Class();
}

TBaseForm::TBaseForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TBaseForm::FormCreate(TObject*) {
    ++Creates;
    CreatedAs = ClassName();
}

void TBaseForm::CloseClick(TObject*) { ++Closes; }

const TClass& TDerivedForm::StaticClass() {
    static const TClassBuilder<TDerivedForm> cls("TDerivedForm", TBaseForm::StaticClass(),
                                                 [](auto& c) { c.Field("Extra", &TDerivedForm::Extra); });
    return cls.Class();
}

TDerivedForm::TDerivedForm(TComponent* owner) : TBaseForm(owner) { InitForm(*this, StaticClass()); }

} // namespace kx::test
