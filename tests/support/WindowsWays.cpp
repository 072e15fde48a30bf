// SPDX-License-Identifier: MIT
// Has the system's dialogs behave as those of Windows.

#include "tests/support/WindowsWays.h"

#include "kx/core/SysUtils.h"

#include <algorithm>
#include <cderr.h>
#include <commdlg.h>
#include <cstring>

namespace kx::test {

namespace {

bool IsNoFileName(const std::string& name) {
    const DWORD attributes = GetFileAttributesA(name.c_str());
    const bool isFolder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return isFolder || name.ends_with('\\') || name.find_first_of("?*<>|\"") != std::string::npos;
}

/// Bytes of the names that the system has left, their ends included.
size_t SizeOfNames(const OPENFILENAMEA& record) {
    size_t at = std::strlen(record.lpstrFile) + 1;
    if ((record.Flags & OFN_ALLOWMULTISELECT) != 0) {
        while (record.lpstrFile[at] != '\0') {
            at += std::strlen(record.lpstrFile + at) + 1;
        }
        ++at;
    }
    return at;
}

} // namespace

bool TWindowsOpenDialog::Execute() {
    return DoExecute([this](OPENFILENAMEA& record) { return Run(record); });
}

bool TWindowsOpenDialog::Run(OPENFILENAMEA& record) {
    if (++Calls == 1 && FirstSize > 0) {
        record.nMaxFile = FirstSize;
    }
    if (RefusesNames) {
        const bool refused = record.lpstrFile[0] != '\0' && IsNoFileName(record.lpstrFile);
        Error = refused ? FNERR_INVALIDFILENAME : 0;
        if (refused) {
            return false;
        }
    }
    return KeepsFirstBlock ? RunInFirstBlock(record) : System(record);
}

bool TWindowsOpenDialog::RunInFirstBlock(OPENFILENAMEA& record) {
    char* const first = record.lpstrFile;
    const DWORD size = record.nMaxFile;
    bool confirmed = System(record);
    if (confirmed && record.lpstrFile != first) {
        const size_t needed = SizeOfNames(record);
        confirmed = needed <= size;
        Error = confirmed ? 0 : FNERR_BUFFERTOOSMALL;
        if (confirmed) {
            std::copy_n(record.lpstrFile, needed, first);
        }
        std::fill_n(record.lpstrFile, needed, '\0');
    }
    return confirmed;
}

DWORD TWindowsOpenDialog::SystemError() const { return Error != 0 ? Error : TOpenDialog::SystemError(); }

} // namespace kx::test
