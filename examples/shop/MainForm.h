#pragma once

#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"

using namespace kx;

class TMainForm : public TForm {
    KX_CLASS()

    explicit TMainForm(TComponent* owner = nullptr);

    void Button1Click(TObject* sender);

private:
    KX_FIELDS(TMainForm,
              (TButton, Button1),
              (TKxOpenDialog, KxOpenDialog1))
};

inline TMainForm* MainForm = nullptr;
