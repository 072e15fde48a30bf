// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgParams.h"

#include <string>

namespace kx {

/// Texts that replace those of the standard controls; an empty one leaves the system's.
class TKxOpenDlgCaptions : public TKxDlgCaptions {
    KX_CLASS()

    const std::string& ReadOnlyFlag() const { return FReadOnlyFlag; } ///< Of the read-only check box.
    void SetReadOnlyFlag(const std::string& value) { FReadOnlyFlag = value; }
    const std::string& FileName() const { return FFileName; } ///< Of the file name's label.
    void SetFileName(const std::string& value) { FFileName = value; }
    const std::string& FileType() const { return FFileType; } ///< Of the file type's label.
    void SetFileType(const std::string& value) { FFileType = value; }
    const std::string& LookIn() const { return FLookIn; } ///< Of the folder's label.
    void SetLookIn(const std::string& value) { FLookIn = value; }

    void SetCaptions(HWND dialog) const override;
    /// Gives the OK button its caption again when the system has put another text in its place.
    void KeepOk(HWND dialog) const;

private:
    std::string FReadOnlyFlag;
    std::string FFileName;
    std::string FFileType;
    std::string FLookIn;
};

} // namespace kx
