#include "MainForm.h"

const TClass& TMainForm::StaticClass() {
    static const TClassBuilder<TMainForm> cls("TMainForm", TForm::StaticClass(), [](auto& c) {
        c.Method("Button1Click", &TMainForm::Button1Click);
    });
    return cls.Class();
}

TMainForm::TMainForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TMainForm::Button1Click(TObject*) {
    if (KxOpenDialog1->Execute()) {
        ShowMessage(KxOpenDialog1->FileName());
    }
}
