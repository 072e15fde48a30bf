#pragma once

#include "GalleryPage.h"
#include "places/KxPlacesBarForm.h"
#include "ui/ComCtrls.h"
#include "ui/ExtCtrls.h"
#include "ui/ImgList.h"
#include "ui/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// The library's places bar beside a list of files, which it navigates. The registry keeps its places.
class TPlacesPage : public TGalleryPage, public IKxPlacesHost {
    KX_CLASS()

    explicit TPlacesPage(TComponent* owner = nullptr);
    ~TPlacesPage() override;

    void AddTour(TTour& tour) override;

    HWND GetCommonDialogHandle() const override { return WindowHandle(); }
    std::string GetSelPath() const override { return FFolder; }
    /// Lists the folder's files; a path that is none is reported.
    void SetSelPath(const std::string& path) override;
    void SetFNameText(const std::string& text) override { NameEdit->SetText(text); }

    void UpButtonClick(TObject* sender);
    void OpenButtonClick(TObject* sender);
    void ResetButtonClick(TObject* sender);
    void FileListSelectItem(TObject* sender, TListItem* item, bool selected);

private:
    void LoadPlaces();
    void AddSamplePlaces();
    void AddEntry(const WIN32_FIND_DATAA& entry);
    void ClickPlace(const std::string& caption);
    void TryRegistry(TTour& tour);

    TPanel* BarPanel = nullptr;
    TEdit* FolderEdit = nullptr;
    TListView* FileList = nullptr;
    TEdit* NameEdit = nullptr;
    TKxPlacesBarOptions FOptions;
    TKxPlacesBarFrm* FBar = nullptr; ///< Owned.
    TImageList FImages;              ///< Of a file and a folder.
    std::string FFolder;             ///< The one whose files are listed.
};

} // namespace kx::gallery
