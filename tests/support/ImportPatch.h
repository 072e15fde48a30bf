// SPDX-License-Identifier: MIT
#pragma once

namespace kx::test {

/// While this lives, what the program calls under the name of a function of a system library is `replacement`, which
/// has its type and calling convention. The libraries among themselves go on calling the function.
class TImportPatch {
public:
    TImportPatch(const char* function, void* replacement);
    TImportPatch(const TImportPatch&) = delete;
    TImportPatch& operator=(const TImportPatch&) = delete;
    ~TImportPatch();

private:
    void** FSlot;
    void* FOriginal = nullptr;
};

} // namespace kx::test
