// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/win/WinTypes.h"

#include <string>

namespace kx {

/// Texts for the buttons that all dialogs have; an empty one leaves the system's text. Dialogs with more buttons derive
/// their own class.
class TKxDlgCaptions : public TPersistent {
    KX_CLASS()

    const std::string& OK() const { return FOk; }
    void SetOK(const std::string& value) { FOk = value; }
    const std::string& Cancel() const { return FCancel; }
    void SetCancel(const std::string& value) { FCancel = value; }
    const std::string& Help() const { return FHelp; }
    void SetHelp(const std::string& value) { FHelp = value; }

    /// Applies the texts to the dialog window.
    virtual void SetCaptions(HWND handle) const;

protected:
    /// Gives a control of the dialog its text, unless that is empty.
    static void SetCaption(HWND handle, int controlId, const std::string& text);

private:
    std::string FOk;
    std::string FCancel;
    std::string FHelp;
};

} // namespace kx
