// SPDX-License-Identifier: MIT
// Forms and frames from the form files in the program.

#include "kx/ui/forms/FormsLoad.h"

#include "kx/core/FormText.h"
#include "kx/core/Streams.h"
#include "kx/win/Windows.h"

#include <string>
#include <vector>

namespace kx {

namespace {

/// The form file of a class: in the module that holds the framework, or in the program.
HRSRC FindFormFile(const TClass& cls, HMODULE& module) {
    const std::string name = UpperCase(cls.Name());
    for (const HMODULE candidate : {static_cast<HMODULE>(HInstance()), GetModuleHandleA(nullptr)}) {
        if (const HRSRC found = FindResourceA(candidate, name.c_str(), reinterpret_cast<LPCSTR>(RT_RCDATA))) {
            module = candidate;
            return found;
        }
    }
    return nullptr;
}

} // namespace

bool HasFormFile(const TClass& cls) {
    HMODULE module;
    return FindFormFile(cls, module) != nullptr;
}

void detail::CheckFormFileRead(const TClass& cls, const TClass* read) {
    for (const TClass* last = &cls; last && !(read && read->InheritsFrom(*last)); last = last->Parent()) {
        if (HasFormFile(*last)) {
            throw EInvalidOperation(
                Format("The form file of %s was not read: its constructor does not call InitForm", {last->Name()}));
        }
    }
}

namespace {

/// ": A, B" behind `what`, on a line of its own; nothing for no names.
std::string LineOf(const std::string& what, const std::vector<std::string>& names) {
    std::string line;
    for (const std::string& name : names) {
        line += (line.empty() ? "  " + what + ": " : ", ") + name;
    }
    return line.empty() ? line : line + "\n";
}

/// `before`: how many components the ancestors' files have brought.
void TellOfFields(const TComponent& root, const TClass& cls, int before) {
    std::vector<std::string> fields;
    for (const TFieldInfo& field : cls.Fields()) {
        if (!root.FindComponent(field.Name)) {
            fields.push_back(field.Name);
        }
    }
    std::vector<std::string> components;
    for (int i = before; i < root.ComponentCount(); ++i) {
        const std::string& name = root.Components(i)->Name();
        if (!name.empty() && !cls.FindField(name)) {
            components.push_back(name);
        }
    }
    const std::string lines =
        LineOf("fields without a component", fields) + LineOf("components without a field", components);
    if (!lines.empty()) {
        OutputDebugStringA((cls.Name() + " and its form file do not agree:\n" + lines).c_str());
    }
}

} // namespace

void InitForm(TComponent& root, const TClass& cls, bool checksFields) {
    HMODULE module;
    const HRSRC resource = FindFormFile(cls, module);
    if (!resource) {
        throw EResNotFound(Format("The program has no form file of %s", {cls.Name()}));
    }
    const int before = root.ComponentCount();
    const void* const data = LockResource(LoadResource(module, resource));
    TStaticMemoryStream stream(data, SizeofResource(module, resource));
    ReadComponent(stream, &root);
    if (checksFields) {
        TellOfFields(root, cls, before);
    }
}

} // namespace kx
