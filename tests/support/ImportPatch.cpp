// SPDX-License-Identifier: MIT
// Stands in for functions of the system in the table by which the program calls them.

#include "tests/support/ImportPatch.h"

#include "kx/win/Windows.h"

#include <gtest/gtest.h>

#include <cstring>

namespace kx::test {

namespace {

/// In the module that has the library: the program, or its DLL
template <class T> T* At(DWORD_PTR offset) {
    return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(HInstance()) + offset);
}

/// Where the program has the address of the function; null when it does not call it.
void** SlotOf(const char* function) {
    const auto& headers = *At<IMAGE_NT_HEADERS>(static_cast<DWORD_PTR>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
    const DWORD imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(imports); library->Name != 0; ++library) {
        const auto* names = At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
        for (size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
            const bool byNumber = IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal);
            if (!byNumber && std::strcmp(At<IMAGE_IMPORT_BY_NAME>(names[i].u1.AddressOfData)->Name, function) == 0) {
                return At<void*>(library->FirstThunk) + i;
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

TImportPatch::TImportPatch(const char* function, void* replacement) : FSlot(SlotOf(function)) {
    EXPECT_TRUE(FSlot) << "the program does not call " << function;
    if (FSlot) {
        FOriginal = *FSlot;
        Write(FSlot, replacement);
    }
}

TImportPatch::~TImportPatch() {
    if (FSlot) {
        Write(FSlot, FOriginal);
    }
}

} // namespace kx::test
