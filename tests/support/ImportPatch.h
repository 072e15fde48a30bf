// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/WinTypes.h"

#include <vector>

namespace kx::test {

/// While this lives, what the program, and the library where that is a DLL, call under the name of a function of a
/// system library is `replacement`, which has its type and calling convention. The system's libraries among themselves
/// go on calling the function.
class TImportPatch {
public:
    TImportPatch(const char* function, void* replacement);
    TImportPatch(const TImportPatch&) = delete;
    TImportPatch& operator=(const TImportPatch&) = delete;
    ~TImportPatch();

private:
    struct TSlot {
        void** Place;
        void* Original;
    };

    void Patch(HMODULE module, const char* function, void* replacement);

    std::vector<TSlot> FSlots;
};

} // namespace kx::test
