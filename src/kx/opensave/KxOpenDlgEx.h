// SPDX-License-Identifier: MIT
#pragma once

#include "kx/opensave/KxOExRecentForm.h"
#include "kx/opensave/KxOExTopForm.h"
#include "kx/opensave/KxOpenDlg.h"

#include <memory>
#include <string>

namespace kx {

/// An open dialog with two tabs above it: the ordinary dialog, and a list of recently used files in the place of its
/// file list. The application says which files are recent, and when the registry is to keep them.
class TKxOpenDialogEx : public TKxOpenDialog, private IKxTabsHost {
    KX_CLASS()

    explicit TKxOpenDialogEx(TComponent* owner = nullptr);
    ~TKxOpenDialogEx() override;

    bool Execute() override;

    // --- Recent files

    /// Full paths, most recent first. What is changed in the list itself shows with the next RefreshList.
    TStrings& RecentFiles() { return FFileList; }
    const TStrings& RecentFiles() const { return FFileList; }
    void SetRecentFiles(const TStrings& value);
    int RecentCount() const { return FMRUCount; } ///< At most so many are kept; below 0 is the same as 0.
    void SetRecentCount(int value);
    /// Key below HKEY_CURRENT_USER. Setting it reads the files from there at once. Empty: none.
    const std::string& RecentRegKey() const { return FRegKey; }
    void SetRecentRegKey(const std::string& value);

    /// Puts the dialog's FileName in front. Deliberate: `fileName` is not used, where one would expect it to be added,
    /// and a file that is in the list stays in its place, where one would expect it to move to the front.
    void AddToRecent(const std::string& fileName);
    /// A key that is not there, or cannot be read, empties the list. The values in section "RecentFiles" are named by
    /// the file's index; the first one that is missing, empty or no text ends the list.
    void LoadFromRegistry();
    /// Writes the files to the key and makes it if it is missing. Deliberate: it deletes nothing, where one would
    /// expect it to, so that the files of a longer list that was stored before follow those of this one.
    /// @throws ERegistryException when a value cannot be written. A key that cannot be opened is passed over.
    void SaveToRegistry();
    /// Brings the shown list in line with the files.
    void RefreshList() { FRecentForm->ShowFiles(FFileList); }

    // --- Tabs

    TTabControl* TabControl() const { return FTopForm->TabControl1; } ///< Owned by the dialog.
    TStrings& Tabs() { return TabControl()->Tabs(); }
    const TStrings& Tabs() const { return TabControl()->Tabs(); }
    void SetTabs(const TStrings& value) { TabControl()->SetTabs(value); }
    /// Tab 0 is the ordinary dialog, all others show the recent files. Setting it shows in the next run.
    int TabIndex() const { return TabControl()->TabIndex(); }
    void SetTabIndex(int value) { TabControl()->SetTabIndex(value); }

    /// The tab has changed; also fired before the dialog shows. The sender is the tab control.
    const TNotifyEvent& OnTabChange() const { return FTabChange; }
    void SetOnTabChange(TNotifyEvent value) { FTabChange = std::move(value); }
    /// The user is about to change the tab and may be refused. The sender is the tab control.
    const TTabChangingEvent& OnTabChanging() const { return FTabChanging; }
    void SetOnTabChanging(TTabChangingEvent value) { FTabChanging = std::move(value); }

    void Loaded() override;

protected:
    void DoShow() override;
    // Fire their events
    void DoTabChange(TTabControl& tabs) override { FTabChange(&tabs); }
    void DoTabChanging(TTabControl& tabs, bool& allowChange) override { FTabChanging(&tabs, allowChange); }

private:
    void ShowRecentFiles(bool recent) override;
    void TrimAndRefresh();

    std::unique_ptr<TKxOpenExTopFrm, TFreeDeleter> FTopForm;
    std::unique_ptr<TKxOpenExRecentFrm, TFreeDeleter> FRecentForm;
    TNotifyEvent FTabChange;
    TTabChangingEvent FTabChanging;
    TStringList FFileList;
    int32_t FMRUCount = 10;
    std::string FRegKey;
};

} // namespace kx
