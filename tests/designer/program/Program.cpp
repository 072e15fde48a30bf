// SPDX-License-Identifier: MIT
// A designer that comes to a bad end: it changes the form that its argument names, waits for the copy of what is not
// saved, and does what ends a program.

#include "designer/DesignerForm.h"
#include "designer/Files.h"
#include "designer/StandardPackage.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

namespace {

LONG WINAPI EndAtOnce(EXCEPTION_POINTERS*) {
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

int main(int count, char** arguments) {
    using namespace kx;
    if (count != 2) {
        return 1;
    }
    const std::string path = arguments[1];
    SetUnhandledExceptionFilter(EndAtOnce); // and no debugger
    designer::RegisterStandardPackage();
    auto* const window = NewForm<designer::TDesignerForm>(nullptr);
    window->Show();
    if (!window->OpenPath(path)) {
        return 2;
    }
    window->Document()->Designer().Form().SetCaption("before the fault");
    window->Document()->Designer().Record("Caption");
    while (!FileExists(path + ".~recover")) {
        Application().HandleMessage();
    }
    int* volatile nowhere = nullptr;
    *nowhere = 1;
    return 0;
}
