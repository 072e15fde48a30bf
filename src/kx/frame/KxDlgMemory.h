// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"
#include "kx/win/WinTypes.h"

#include <optional>
#include <string>
#include <vector>

namespace kx {

/// What a dialog remembers from one showing to the next, for dialogs of one purpose: values below a registry key. It is
/// read before the dialog shows and written when it has closed.
class TKxDlgMemory {
public:
    TKxDlgMemory() = default;
    /// Reads what the key below HKEY_CURRENT_USER holds. What is missing, of another type or makes no sense is nothing
    /// that is remembered. An empty key, or one of nothing but backslashes, holds nothing.
    explicit TKxDlgMemory(const std::string& key);

    /// There is a key: the dialog is to remember.
    bool IsOn() const { return !FKey.empty(); }

    std::string Folder;           ///< In which the user has chosen; empty: none.
    std::optional<int> Filter;    ///< Of the files, counted from 1.
    std::optional<TPoint> Size;   ///< Outer size in pixels without what the library adds to the dialog.
    std::optional<int> ViewStyle; ///< Ordinal number.
    std::vector<int> Columns;     ///< Widths in pixels; empty: none.

    /// Writes to the key, and makes it if it is missing: what the user sees of the dialog, and, when he has `confirmed`
    /// it, what he has chosen. Values of nothing that is remembered stay as they are. A key that cannot be opened is
    /// passed over. @throws ERegistryException when a value cannot be written
    void Keep(bool confirmed) const;

    /// The remembered folder, if it is there and can be reached (`KindOfPath`); else an empty string.
    std::string ExistingFolder() const;

private:
    std::string FKey; ///< From the root.
};

/// The size as far as it fits the work area of the monitor on which the window is.
TPoint KxFitSize(HWND window, TPoint size);

} // namespace kx
