// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/win/Subclass.h"
#include "kx/win/Windows.h"

#include <commdlg.h>
#include <string>
#include <vector>

namespace kx {

/// Memory for the names that a file dialog answers with. The system may keep to the block that it got first, or take
/// the one that its record names when the user has chosen: all of them stay until the end.
class TNameBlocks {
public:
    explicit TNameBlocks(size_t size) { Add(size); }

    /// The block that is meant for the system; its size is in bytes.
    std::vector<char>& Last() { return FBlocks.back(); }
    /// Makes an empty block the last one.
    void Add(size_t size) { FBlocks.emplace_back(size); }
    /// The youngest block that has text in it: the one that the system has filled.
    const std::vector<char>& Filled() const;

private:
    std::vector<std::vector<char>> FBlocks; // the bytes of a block keep their place when more blocks come
};

/// One showing: the record for the system and what it points to.
struct TOpenDialog::TRun {
    explicit TRun(TOpenDialog& dialog);
    TRun(const TRun&) = delete;
    TRun& operator=(const TRun&) = delete;

    TOpenDialog* Dialog;
    TAlive Alive; ///< Of the component.
    OPENFILENAMEA Record{};
    OPENFILENAMEA* SystemRecord = &Record; ///< The one that the system uses: a wrapper may have given it another.
    bool OwnerEnabled = false;             ///< The owner window was enabled before the dialog came.
    bool Asking = false;                   ///< The system waits to hear whether it may take the names.
    TSubclass DialogMessages;              ///< Of the dialog window.

    bool Has(DWORD flag) const { return (Record.Flags & flag) != 0; }
    /// The full paths that the system has left.
    std::vector<std::string> Files() const;
    /// For systems that do not tell whether the chosen name has another extension than the default one.
    void NoteExtension(const std::string& fileName);
    /// Makes room in the system's record for all that is selected or typed.
    void ReserveNames();
    /// Takes out of the record what made the system refuse the dialog. False when that cannot be helped here.
    bool Mend(DWORD error);
    /// Messages of the dialog window.
    void HandleMessage(TMessage& message);

private:
    void SetBlock(OPENFILENAMEA& record);
    bool KeepsBack(const TMessage& message) const;
    bool TakesNames();
    bool NamesFit() const;

    TNameBlocks FNames;
    std::string FFilter;
    std::string FFolder;
    std::string FShownFolder; ///< The folder for whose names room was last reserved.
    std::string FExtension;
    std::string FTitle;
};

} // namespace kx
