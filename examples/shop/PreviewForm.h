#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"

using namespace kx;

class TPreviewForm : public TForm {
    KX_CLASS()

    explicit TPreviewForm(TComponent* owner = nullptr);

private:
    TImage* Image1 = nullptr;
    TLabel* Label1 = nullptr;
    TLabel* Label2 = nullptr;
};

inline TPreviewForm* PreviewForm = nullptr;
