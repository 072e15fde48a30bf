#include "PreviewForm.h"

const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass());
    return cls.Class();
}

TPreviewForm::TPreviewForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }
