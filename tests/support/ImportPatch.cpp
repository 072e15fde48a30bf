// SPDX-License-Identifier: MIT
// Stands in for functions of the system in the tables by which the program and the library call them.

#include "tests/support/ImportPatch.h"

#include "kx/win/Module.h"
#include "kx/win/Windows.h"

#include <gtest/gtest.h>

#include <cstring>

namespace kx::test {

namespace {

template <class T> T* At(HMODULE module, DWORD_PTR offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

/// Where the module has the address of the function; null when it does not call it.
void** SlotOf(HMODULE module, const char* function) {
    const auto& headers =
        *At<IMAGE_NT_HEADERS>(module, static_cast<DWORD_PTR>(At<IMAGE_DOS_HEADER>(module, 0)->e_lfanew));
    const DWORD imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, imports); library->Name != 0; ++library) {
        const auto* names = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        for (size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
            const bool byNumber = IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal);
            if (!byNumber &&
                std::strcmp(At<IMAGE_IMPORT_BY_NAME>(module, names[i].u1.AddressOfData)->Name, function) == 0) {
                return At<void*>(module, library->FirstThunk) + i;
            }
        }
    }
    return nullptr;
}

void Write(void** slot, void* value) {
    DWORD before = 0;
    VirtualProtect(slot, sizeof value, PAGE_READWRITE, &before);
    *slot = value;
    VirtualProtect(slot, sizeof value, before, &before);
}

} // namespace

TImportPatch::TImportPatch(const char* function, void* replacement) {
    Patch(GetModuleHandleW(nullptr), function, replacement);
    if (IsInLibrary()) {
        Patch(HInstance(), function, replacement);
    }
    EXPECT_FALSE(FSlots.empty()) << "the program does not call " << function;
}

TImportPatch::~TImportPatch() {
    for (const auto& slot : FSlots) {
        Write(slot.Place, slot.Original);
    }
}

void TImportPatch::Patch(HMODULE module, const char* function, void* replacement) {
    if (void** place = SlotOf(module, function)) {
        FSlots.push_back({place, *place});
        Write(place, replacement);
    }
}

} // namespace kx::test
