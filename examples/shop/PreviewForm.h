#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"

using namespace kx;

class TPreviewForm : public TForm {
    KX_CLASS()

    explicit TPreviewForm(TComponent* owner = nullptr);

private:
    KX_FIELDS(TPreviewForm,
              (TImage, Image1),
              (TLabel, Label1),
              (TLabel, Label2))
};

inline TPreviewForm* PreviewForm = nullptr;
