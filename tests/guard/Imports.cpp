// SPDX-License-Identifier: MIT
// Puts our functions into import tables.

#include "tests/guard/Imports.h"

#include "tests/guard/StackWalk.h"

#include <cstring>

namespace kx::guard {

namespace {

char* At(DWORD offset) { return const_cast<char*>(OurFile()) + offset; }

void Replace(void** entry, const TImport& import) {
    DWORD protection = 0;
    VirtualProtect(entry, sizeof(*entry), PAGE_READWRITE, &protection);
    *import.Original = *entry;
    *entry = import.Replacement;
    VirtualProtect(entry, sizeof(*entry), protection, &protection);
}

} // namespace

void ReplaceImports(std::span<const TImport> imports) {
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(
        At(static_cast<DWORD>(reinterpret_cast<const IMAGE_DOS_HEADER*>(OurFile())->e_lfanew)));
    const DWORD table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(At(table)); library->Name != 0; ++library) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(At(library->OriginalFirstThunk));
        auto* entry = reinterpret_cast<void**>(At(library->FirstThunk));
        for (; name->u1.AddressOfData != 0; ++name, ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) {
                continue;
            }
            const char* wanted =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(At(static_cast<DWORD>(name->u1.AddressOfData)))->Name;
            for (const TImport& import : imports) {
                if (std::strcmp(import.Name, wanted) == 0) {
                    Replace(entry, import);
                }
            }
        }
    }
}

} // namespace kx::guard
