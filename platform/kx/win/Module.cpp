// SPDX-License-Identifier: MIT
// The module that the library has been linked into.

#include "kx/win/Module.h"

#include "kx/win/Windows.h"

namespace kx {

bool IsInLibrary() {
    static const bool inLibrary = HInstance() != GetModuleHandleW(nullptr);
    return inLibrary;
}

unique_hmodule HoldModule() {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&HoldModule), &module)) {
        RaiseLastOSError();
    }
    return unique_hmodule(module);
}

} // namespace kx
