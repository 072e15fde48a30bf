// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/core/Components.h"
#include "kx/win/WinTypes.h"

#include <string>
#include <unordered_map>

namespace kx {

using TKxFileFilterEvent = TEvent<void(TObject* sender, const std::string& fileName, bool& includeFile)>;

/// What a file filter asks of the dialog that owns it, when that has a list to filter.
class IKxFileListOwner {
public:
    virtual ~IKxFileListOwner() = default;
    /// Has the system read the shown folder again; does nothing while the dialog is not shown.
    virtual void RefreshFileList() = 0;
};

/// Which files a pass of the filter asks about.
enum class TKxFilterPass : uint8_t {
    All,  ///< All of them.
    Added ///< Those that no pass has asked about since the list was filled. The others keep their answers.
};

/// Takes entries out of a file list after the shell has filled it.
class TKxFileFilter : public TPersistent {
    KX_CLASS()

    /// `owner` is the dialog, which owns the filter and outlives it.
    explicit TKxFileFilter(TComponent* owner) : FOwner(owner) {}

    bool ShowFolders() const { return FShowFolders; }
    /// Takes effect at once in a dialog that is an IKxFileListOwner. The other two settings take effect when the list
    /// is filled the next time.
    void SetShowFolders(bool value);
    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value) { FEnabled = value; }
    /// Asked for each file, never for a folder. The sender is the filter itself, `fileName` is a full path.
    const TKxFileFilterEvent& OnIncludeFile() const { return FOnFilter; }
    void SetOnIncludeFile(TKxFileFilterEvent value) { FOnFilter = std::move(value); }

    /// Takes out of `listView`, a list of the shell's, what is to be left out. `folder` is the path of the folder that
    /// the list shows.
    ///
    /// False: the pass could not take out everything and is to be repeated, because a name is being typed into the list
    /// or because the handler had the list change. The handler may also free the filter.
    bool ProcessViaFilter(HWND listView, const std::string& folder, TKxFilterPass pass = TKxFilterPass::All);

    /// The list has been, or will be, filled anew: a pass that is under way ends, and the next asks about every file.
    void Forget();

    TPersistent* GetOwner() const override { return FOwner; }

private:
    bool Includes(const std::string& fileName);

    bool FShowFolders = true;
    bool FEnabled = false;
    TKxFileFilterEvent FOnFilter;
    TComponent* FOwner;
    TLifetime FLife;                                ///< The handler may free the filter.
    unsigned FPass = 0;                             ///< Number of the pass that counts: the latest one.
    std::unordered_map<std::string, bool> FAnswers; ///< Of the handler, by the file's name, since the list was filled.
};

} // namespace kx
