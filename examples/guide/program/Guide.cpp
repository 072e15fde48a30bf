// SPDX-License-Identifier: MIT
// guide          shows the finished dialog
// guide NUMBER   shows it as it is after that step

#include "examples/guide/OptionsForm.h"
#include "examples/guide/PreviewForm.h"
#include "examples/guide/Steps.h"

#include <windows.h>

#include <cstdlib>

using namespace guide;

// [program]
int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int) {
    Application().SetTitle("Drawings");
    Application().CreateForm(&PreviewForm);
    Application().CreateForm(&OptionsForm);
    TKxOpenDialog dialog(&Application());
    const int number = std::atoi(commandLine);
    TakeSteps(dialog, number == 0 ? StepCount : number);
    if (dialog.Execute()) {
        ShowMessage(dialog.FileName());
    }
    return 0;
}
// [program]
