// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/dialogs/Dialogs.h"

#include <commdlg.h>
#include <functional>
#include <string>

namespace kx::test {

/// An open dialog whose system function has ways of Windows that those of other systems do not have, and one that looks
/// on. By itself it is that of the system.
class TWindowsOpenDialog : public TOpenDialog {
public:
    using TOpenDialog::TOpenDialog;

    bool Execute() override;

    /// A name to start with that is a folder, or has characters that no name has, makes the function fail at once.
    bool RefusesNames = false;
    /// The names go where they were to go when the dialog began, and have to fit in there, whatever the record says
    /// in the end.
    bool KeepsFirstBlock = false;
    DWORD FirstSize = 0; ///< Bytes for the names in the first call; 0: as many as there are.
    DWORD Error = 0;     ///< Why the function fails, when it does; 0: as it says itself.
    /// Called in place of the system's function, with the record that this would get.
    std::function<bool(OPENFILENAMEA& record)> System = [](OPENFILENAMEA& record) {
        return GetOpenFileNameA(&record) != FALSE;
    };
    int Calls = 0; ///< Of the system function.

protected:
    DWORD SystemError() const override;

private:
    bool Run(OPENFILENAMEA& record);
    bool RunInFirstBlock(OPENFILENAMEA& record);
};

} // namespace kx::test
