// Keeps the component palette.

#include "kx/ide/Palette.h"

#include "kx/core/Components.h"

#include <algorithm>

namespace kx {

namespace {

std::vector<TPalettePage>& Pages() {
    static std::vector<TPalettePage> pages;
    return pages;
}

TPalettePage& Page(const std::string& name) {
    for (TPalettePage& page : Pages()) {
        if (SameText(page.Name, name)) {
            return page;
        }
    }
    return Pages().emplace_back(TPalettePage{name, {}});
}

} // namespace

void RegisterComponents(const std::string& page, std::initializer_list<const TClass*> classes) {
    for (const TClass* cls : classes) {
        if (!cls->IsCreatable()) {
            throw EInvalidOperation(cls->Name() + " cannot be created by name");
        }
    }
    for (const TClass* cls : classes) {
        for (TPalettePage& other : Pages()) {
            std::erase(other.Classes, cls);
        }
        Page(page).Classes.push_back(cls);
        RegisterClass(*cls);
    }
    std::erase_if(Pages(), [](const TPalettePage& one) { return one.Classes.empty(); });
}

const std::vector<TPalettePage>& PalettePages() { return Pages(); }

} // namespace kx
