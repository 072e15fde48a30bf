// SPDX-License-Identifier: MIT
#pragma once

#include "GalleryPage.h"
#include "kx/graphics/ImgList.h"
#include "kx/places/KxPlacesBarForm.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"

#include <string>

namespace kx::gallery {

/// The box in which the user picks a folder. It has the control id of the one in the system's dialogs, by which the
/// places bar finds it.
class TLookInBox : public TComboBox {
    KX_CLASS()

    using TComboBox::TComboBox;

protected:
    void CreateWnd() override;
};

/// The library's places bar beside a list of files, which it navigates. The registry keeps its places.
class TPlacesPage : public TGalleryPage, public IKxPlacesHost {
    KX_CLASS()

    explicit TPlacesPage(TComponent* owner = nullptr);
    ~TPlacesPage() override;

    void AddTour(TTour& tour) override;

    HWND GetCommonDialogHandle() const override { return WindowHandle(); }
    std::string GetSelPath() const override { return FFolder; }
    /// Lists the folder's files, or the drives for an empty path; a path that is no folder is reported.
    void SetSelPath(const std::string& path) override;
    void SetFNameText(const std::string& text) override { NameEdit->SetText(text); }

    void FolderBoxClick(TObject* sender);
    void UpButtonClick(TObject* sender);
    void OpenButtonClick(TObject* sender);
    void ResetButtonClick(TObject* sender);
    void FileListSelectItem(TObject* sender, TListItem* item, bool selected);

private:
    void LoadPlaces();
    void ShowFolderInBox();
    void AddEntry(const WIN32_FIND_DATAA& entry);
    void TryRegistry(TTour& tour);

    KX_FIELDS(TPlacesPage, (TPanel, BarPanel),
              (TLookInBox, FolderBox /* Desktop, computer, and the folder that is listed. */), (TListView, FileList),
              (TEdit, NameEdit))
    TKxPlacesBarOptions FOptions;
    TKxPlacesBarFrm* FBar = nullptr; ///< Owned.
    TImageList FImages;              ///< Of a file and a folder.
    std::string FFolder;             ///< The one whose files are listed; empty: the drives are.
};

} // namespace kx::gallery
