// SPDX-License-Identifier: MIT
// Keeps the component palette.

#include "kx/ide/Palette.h"

#include "kx/core/Components.h"

#include <algorithm>
#include <map>

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

std::map<std::string, std::string>& Headers() {
    static std::map<std::string, std::string> headers; // by the names of the classes
    return headers;
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

void RegisterHeader(const std::string& header, std::initializer_list<const TClass*> classes) {
    for (const TClass* cls : classes) {
        Headers()[cls->Name()] = header;
    }
}

std::string HeaderOf(const std::string& className) {
    const auto found = Headers().find(className);
    return found == Headers().end() ? std::string() : found->second;
}

} // namespace kx
