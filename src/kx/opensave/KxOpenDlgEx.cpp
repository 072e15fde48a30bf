// SPDX-License-Identifier: MIT
// The open dialog with recent files.

#include "kx/opensave/KxOpenDlgEx.h"

#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

const char* const RecentSection = "RecentFiles";

/// The controls that serve to find files in folders alone.
constexpr TKxOpenDlgControls FolderControls{dcFolderCombo, dcFolderLabel, dcFileType, dcFileTypeLabel, dcToolBar};

/// A value that is no text reads like a missing one.
std::string ReadFileName(const TRegIniFile& ini, int index) {
    try {
        return ini.ReadString(RecentSection, IntToStr(index), {});
    } catch (const ERegistryException&) {
        return {};
    }
}

/// Whether the list has the text in that letter case: TStrings itself compares without case.
bool ContainsExactly(const TStrings& list, const std::string& text) {
    int i = 0;
    while (i < list.Count() && list[i] != text) {
        ++i;
    }
    return i < list.Count();
}

} // namespace

const TClass& TKxOpenDialogEx::StaticClass() {
    using T = TKxOpenDialogEx;
    static const TClassBuilder<T> cls("TKxOpenDialogEx", TKxOpenDialog::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("OnTabChange", &T::OnTabChange, &T::SetOnTabChange);
        c.Property("OnTabChanging", &T::OnTabChanging, &T::SetOnTabChanging);
        c.SubObject("RecentFiles", &T::RecentFiles, &T::SetRecentFiles);
        c.Property("RecentCount", &T::RecentCount, &T::SetRecentCount).Default = 10;
        c.Property("RecentRegKey", &T::RecentRegKey, &T::SetRecentRegKey);
        c.SubObject("Tabs", &T::Tabs, &T::SetTabs);
        c.Property("TabIndex", &T::TabIndex, &T::SetTabIndex);
    });
    return cls.Class();
}

// --- Life

TKxOpenDialogEx::TKxOpenDialogEx(TComponent* owner)
    : TKxOpenDialog(owner), FTopForm(NewForm<TKxOpenExTopFrm>(nullptr)),
      FRecentForm(NewForm<TKxOpenExRecentFrm>(nullptr)) {
    TKxCustDlgParams& params = CustDlgParams();
    params.SetCanLeft(false);
    params.SetCanTop(false);
    params.SetCanRight(false);
    params.SetTopForm(FTopForm.get());
    params.SetCustForm(FRecentForm.get());
    FTopForm->SetDlg(this);
    FRecentForm->SetDlg(this);
}

TKxOpenDialogEx::~TKxOpenDialogEx() {
    CloseShown(); // before the forms go, which are in the dialog window
}

void TKxOpenDialogEx::Loaded() {
    TKxOpenDialog::Loaded();
    TrimAndRefresh(); // a form file fills the list directly
}

// --- Running

bool TKxOpenDialogEx::Execute() {
    TTabControl* const tabs = TabControl();
    return Outlives(Existence(), [=] { tabs->OnChange()(tabs); }) && TKxOpenDialog::Execute();
}

void TKxOpenDialogEx::DoShow() {
    if (Outlives(Existence(), [this] { TKxOpenDialog::DoShow(); })) {
        KxInFormsThread([this] { RefreshList(); });
    }
}

void TKxOpenDialogEx::ShowRecentFiles(bool recent) {
    if (Outlives(Existence(), [=, this] { SetSelectionType(recent ? stCustom : stStandard); })) {
        SetVisibleControls(recent ? VisibleControls() - FolderControls : VisibleControls() + FolderControls);
    }
}

// --- Recent files

void TKxOpenDialogEx::TrimAndRefresh() {
    while (FFileList.Count() > std::max(FMRUCount, 0)) {
        FFileList.Delete(FFileList.Count() - 1);
    }
    RefreshList();
}

void TKxOpenDialogEx::SetRecentFiles(const TStrings& value) {
    FFileList.Assign(&value);
    TrimAndRefresh();
}

void TKxOpenDialogEx::SetRecentCount(int value) {
    FMRUCount = value;
    TrimAndRefresh();
}

void TKxOpenDialogEx::SetRecentRegKey(const std::string& value) {
    FRegKey = value;
    LoadFromRegistry();
}

void TKxOpenDialogEx::AddToRecent(const std::string&) {
    const std::string& name = FileName();
    // An empty name would end the list when it is read from the registry.
    if (!name.empty() && !ContainsExactly(FFileList, name)) {
        FFileList.Insert(0, name);
    }
    TrimAndRefresh();
}

void TKxOpenDialogEx::LoadFromRegistry() {
    FFileList.Clear();
    TRegIniFile ini({}, KEY_READ);
    if (!FRegKey.empty() && ini.OpenKey(FRegKey, false)) {
        std::string name;
        while (FFileList.Count() < FMRUCount && !(name = ReadFileName(ini, FFileList.Count())).empty()) {
            FFileList.Add(name);
        }
    }
    TrimAndRefresh();
}

void TKxOpenDialogEx::SaveToRegistry() {
    TRegIniFile ini;
    if (!FRegKey.empty() && ini.OpenKey(FRegKey, true)) {
        for (int i = 0; i < FFileList.Count(); ++i) {
            ini.WriteString(RecentSection, IntToStr(i), FFileList[i]);
        }
    }
}

} // namespace kx
