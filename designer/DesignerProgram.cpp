// SPDX-License-Identifier: MIT
// The designer as a program.

#include "designer/DesignerProgram.h"

#include "designer/DesignerForm.h"
#include "designer/StandardPackage.h"

#include <cstdlib>

namespace kx::designer {

int RunDesigner(const std::vector<void (*)()>& packages) {
    try {
        RegisterStandardPackage();
        for (void (*const registerPackage)() : packages) {
            registerPackage();
        }
        Application().SetTitle("Form designer");
        TDesignerForm* form = nullptr;
        Application().CreateForm(&form);
        form->Show();
        for (int i = 1; i < __argc; ++i) {
            form->OpenPath(__argv[i]);
        }
        Application().Run();
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        Application().ShowException(error);
        return EXIT_FAILURE;
    }
}

} // namespace kx::designer
