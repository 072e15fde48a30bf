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
    TButton* Button1 = nullptr;
    TKxOpenDialog* KxOpenDialog1 = nullptr;
};

inline TMainForm* MainForm = nullptr;
