// Forms and frames from the form files in the program.

#include "kx/ui/forms/Forms.h"

#include "kx/core/FormText.h"
#include "kx/core/Streams.h"
#include "kx/ui/forms/Frames.h"
#include "kx/win/Windows.h"

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

namespace {

void ReadFormFile(TComponent& root, const TClass& cls) {
    HMODULE module;
    const HRSRC resource = FindFormFile(cls, module);
    if (!resource) {
        return;
    }
    const void* const data = LockResource(LoadResource(module, resource));
    TStaticMemoryStream stream(data, SizeofResource(module, resource));
    ReadComponent(stream, &root);
}

} // namespace

void InitForm(TCustomForm& form, const TClass& cls) { ReadFormFile(form, cls); }

void InitForm(TCustomFrame& frame, const TClass& cls) { ReadFormFile(frame, cls); }

} // namespace kx
