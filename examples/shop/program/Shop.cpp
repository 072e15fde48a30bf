// SPDX-License-Identifier: MIT
// Opens drawings, which show beside the dialog.

#include "examples/shop/MainForm.h"
#include "examples/shop/PreviewForm.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    Application().CreateForm(&MainForm);
    Application().CreateForm(&PreviewForm);
    MainForm->Show();
    Application().Run();
    return 0;
}
