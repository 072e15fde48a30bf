#include "PreviewForm.h"

const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass(), [](auto& c) {
        c.Field("Image1", &TPreviewForm::Image1);
        c.Field("Label1", &TPreviewForm::Label1);
        c.Field("Label2", &TPreviewForm::Label2);
    });
    return cls.Class();
}

TPreviewForm::TPreviewForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }
