// Forms for tests.

#include "tests/ui/SampleForms.h"

namespace kx::test {

const TClass& TAllControlsForm::StaticClass() {
    static const TClassBuilder<TAllControlsForm> cls("TAllControlsForm", TForm::StaticClass(), [](auto& c) {
        using T = TAllControlsForm;
        c.Field("Label1", &T::Label1);
        c.Field("Edit1", &T::Edit1);
        c.Field("Memo1", &T::Memo1);
        c.Field("OkButton", &T::OkButton);
        c.Field("CancelButton", &T::CancelButton);
        c.Field("CheckBox1", &T::CheckBox1);
        c.Field("RadioButton1", &T::RadioButton1);
        c.Field("RadioButton2", &T::RadioButton2);
        c.Field("GroupBox1", &T::GroupBox1);
        c.Field("ListBox1", &T::ListBox1);
        c.Field("ComboBox1", &T::ComboBox1);
        c.Field("ComboBox2", &T::ComboBox2);
        c.Field("Panel1", &T::Panel1);
        c.Field("Bevel1", &T::Bevel1);
        c.Field("PaintBox1", &T::PaintBox1);
        c.Field("TabControl1", &T::TabControl1);
        c.Field("ListView1", &T::ListView1);
        c.Field("SpeedButton1", &T::SpeedButton1);
        c.Field("DrawGrid1", &T::DrawGrid1);
        c.Field("PageScroller1", &T::PageScroller1);
        c.Field("ToolBar1", &T::ToolBar1);
        c.Field("ToolButton1", &T::ToolButton1);
        c.Field("ToolButton2", &T::ToolButton2);
        c.Field("PopupMenu1", &T::PopupMenu1);
        c.Field("Item1", &T::Item1);
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
