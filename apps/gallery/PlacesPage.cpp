// SPDX-License-Identifier: MIT
// The page of the places bar.

#include "PlacesPage.h"

#include "SampleFiles.h"
#include "SamplePlaces.h"
#include "Tour.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <shellapi.h>
#include <shlobj.h>
#include <vector>

namespace kx::gallery {

namespace {

constexpr const char* registryKey = "Software\\kxqdlgs70\\Gallery\\Places";
constexpr const char* tourKey = "Software\\kxqdlgs70\\Gallery\\Tour";

constexpr const char* samplesName = "Gallery samples"; // how the folder's name begins

enum TEntryImage { imFile, imFolder };

struct TFindTraits {
    using THandle = HANDLE;
    static void Close(HANDLE find) { FindClose(find); }
};

bool IsFolder(const WIN32_FIND_DATAA& entry) { return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

/// What is in the folder, the folders first; null when it is none.
std::unique_ptr<std::vector<WIN32_FIND_DATAA>> EntriesOf(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    const HANDLE found = FindFirstFileA((IncludeTrailingPathDelimiter(folder) + "*").c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE) {
        return nullptr;
    }
    const unique_handle<TFindTraits> find(found);
    auto entries = std::make_unique<std::vector<WIN32_FIND_DATAA>>();
    do {
        const std::string name = entry.cFileName;
        if (name != "." && name != "..") {
            entries->push_back(entry);
        }
    } while (FindNextFileA(find.get(), &entry) != 0);
    std::sort(entries->begin(), entries->end(), [](const WIN32_FIND_DATAA& a, const WIN32_FIND_DATAA& b) {
        return IsFolder(a) != IsFolder(b) ? IsFolder(a) : CompareText(a.cFileName, b.cFileName) < 0;
    });
    return entries;
}

/// The drives, as entries.
std::unique_ptr<std::vector<WIN32_FIND_DATAA>> Drives() {
    char names[4 * 26 + 1] = "";
    GetLogicalDriveStringsA(sizeof names, names);
    auto entries = std::make_unique<std::vector<WIN32_FIND_DATAA>>();
    for (const char* name = names; *name; name += std::strlen(name) + 1) {
        WIN32_FIND_DATAA& entry = entries->emplace_back();
        entry.dwFileAttributes = FILE_ATTRIBUTE_DIRECTORY;
        std::string(name).copy(entry.cFileName, MAX_PATH - 1);
    }
    return entries;
}

std::string DesktopFolder() {
    unique_pidl pidl;
    SHGetSpecialFolderLocation(nullptr, CSIDL_DESKTOPDIRECTORY, reinterpret_cast<LPITEMIDLIST*>(pidl.put()));
    return GetPathFromPIDL(pidl.get());
}

} // namespace

const TClass& TLookInBox::StaticClass() {
    static const TClassBuilder<TLookInBox> cls("TLookInBox", TComboBox::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

void TLookInBox::CreateWnd() {
    constexpr LONG_PTR lookInId = 1137;
    TComboBox::CreateWnd();
    SetWindowLongPtrA(WindowHandle(), GWLP_ID, lookInId);
}

const TClass& TPlacesPage::StaticClass() {
    static const TClassBuilder<TPlacesPage> cls("TPlacesPage", TGalleryPage::StaticClass(), [](auto& c) {
        c.Method("FolderBoxClick", &TPlacesPage::FolderBoxClick);
        c.Method("UpButtonClick", &TPlacesPage::UpButtonClick);
        c.Method("OpenButtonClick", &TPlacesPage::OpenButtonClick);
        c.Method("ResetButtonClick", &TPlacesPage::ResetButtonClick);
        c.Method("FileListSelectItem", &TPlacesPage::FileListSelectItem);
    });
    return cls.Class();
}

TPlacesPage::TPlacesPage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    FImages.SetSize(GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON)); // as the shell's icons are
    for (const DWORD attributes : {DWORD{FILE_ATTRIBUTE_NORMAL}, DWORD{FILE_ATTRIBUTE_DIRECTORY}}) {
        SHFILEINFOA info{};
        if (SHGetFileInfoA("sample", attributes, &info, sizeof info,
                           SHGFI_USEFILEATTRIBUTES | SHGFI_ICON | SHGFI_SMALLICON) != 0) {
            TIcon image;
            image.SetHandle(info.hIcon);
            FImages.AddIcon(image);
        }
    }
    FileList->SetSmallImages(&FImages);
    LoadPlaces();
    FBar = NewForm<TKxPlacesBarFrm>(this);
    FBar->SetDialog(this);
    FBar->SetPlaces(&FOptions.Places());
    FBar->SetAlign(alClient);
    FBar->SetParent(BarPanel);
    FBar->Show();
    FOptions.Places().UpdatePlacesOn(*FBar->ToolBar1);
    SetSelPath(Samples().Folder());
}

TPlacesPage::~TPlacesPage() {
    FBar->Free(); // it shows the places
    FileList->SetSmallImages(nullptr);
    Guarded([this] { FOptions.SaveToRegistry(); });
}

// --- Places

void TPlacesPage::LoadPlaces() {
    FOptions.SetRegistryKey(registryKey);
    if (!TRegistry().KeyExists(registryKey)) {
        AddSamplePlaces(FOptions.Places());
        return;
    }
    FOptions.LoadFromRegistry();
    const std::string program = Application().ExeName();
    for (int i = 0; i < FOptions.Places().Count(); ++i) { // samples and program may be somewhere else in each run
        TKxPlace& place = FOptions.Places()[i];
        if (SameText(ExtractFileName(place.PlaceIconDll()), ExtractFileName(program))) {
            place.SetPlaceIconDll(program);
        }
        const std::string name = ExtractFileName(place.PlacePath());
        if (name.starts_with(samplesName)) {
            place.SetPlacePath(Samples().Folder());
        } else if (place.PlacePath().find(samplesName) != std::string::npos) {
            place.SetPlacePath(Samples().Path(name));
        }
    }
}

void TPlacesPage::ResetButtonClick(TObject*) {
    AddSamplePlaces(FOptions.Places());
    FOptions.Places().UpdatePlacesOn(*FBar->ToolBar1);
}

// --- Files

void TPlacesPage::SetSelPath(const std::string& path) {
    const auto entries = path.empty() ? Drives() : EntriesOf(path);
    if (!entries) {
        Report("There is no folder \"" + path + "\".");
        return;
    }
    FFolder = path;
    ShowFolderInBox();
    NameEdit->SetText("");
    FileList->Items().BeginUpdate();
    FileList->Items().Clear();
    for (const WIN32_FIND_DATAA& entry : *entries) {
        AddEntry(entry);
    }
    FileList->Items().EndUpdate();
}

void TPlacesPage::ShowFolderInBox() {
    TStrings& items = FolderBox->Items();
    items.BeginUpdate();
    items.Clear();
    items.Add(GetSpecFolderName(ftDesktop));
    items.Add(GetSpecFolderName(ftDrives));
    const bool isDesktop = SameText(FFolder, DesktopFolder());
    if (!FFolder.empty() && !isDesktop) {
        items.Add(FFolder);
    }
    items.EndUpdate();
    FolderBox->SetItemIndex(isDesktop ? 0 : items.Count() - 1);
}

void TPlacesPage::FolderBoxClick(TObject*) {
    if (FolderBox->ItemIndex() == 0) {
        SetSelPath(DesktopFolder());
    } else if (FolderBox->ItemIndex() == 1) {
        SetSelPath("");
    }
}

void TPlacesPage::AddEntry(const WIN32_FIND_DATAA& entry) {
    constexpr int64_t kilobyte = 1024;
    TListItem& item = FileList->Items().Add();
    item.SetCaption(entry.cFileName);
    item.SetImageIndex(IsFolder(entry) ? imFolder : imFile);
    item.SubItems().Add(IsFolder(entry) ? "" : IntToStr((entry.nFileSizeLow + kilobyte - 1) / kilobyte) + " KB");
    item.SubItems().Add(IsFolder(entry) ? "Folder" : UpperCase(ExtractFileExt(entry.cFileName)));
}

void TPlacesPage::FileListSelectItem(TObject*, TListItem* item, bool selected) {
    if (selected) {
        NameEdit->SetText(item->Caption());
    }
}

void TPlacesPage::UpButtonClick(TObject*) {
    const std::string folder = ExcludeTrailingPathDelimiter(FFolder);
    const bool isDrive = SameText(folder, ExtractFileDrive(folder));
    SetSelPath(isDrive ? "" : IncludeTrailingPathDelimiter(ExtractFilePath(folder)));
}

void TPlacesPage::OpenButtonClick(TObject*) {
    const std::string path = (FFolder.empty() ? "" : IncludeTrailingPathDelimiter(FFolder)) + NameEdit->Text();
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (NameEdit->Text().empty() || attributes == INVALID_FILE_ATTRIBUTES) {
        Report("No file is chosen.");
    } else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        SetSelPath(path);
    } else {
        Report("Chosen: " + path);
    }
}

// --- The tour

/// Keeps the places apart from those of the user, and reads them back.
void TPlacesPage::TryRegistry(TTour& tour) {
    FOptions.SetRegistryKey(tourKey);
    FOptions.SaveToRegistry();
    TKxPlacesBarOptions stored;
    stored.SetRegistryKey(tourKey);
    stored.LoadFromRegistry();
    FOptions.SetRegistryKey(registryKey);
    TRegistry().DeleteKey(tourKey);
    std::string captions;
    for (int i = 0; i < stored.Places().Count(); ++i) {
        captions += (i == 0 ? "" : ", ") + stored.Places()[i].PlaceName();
    }
    tour.Expect("places in the registry", captions, "Samples, Drawings, Alpine lake, Documents, Desktop, Computer");
}

void TPlacesPage::AddTour(TTour& tour) {
    // What the user keeps in the bar is put back at the end.
    const auto kept = std::make_shared<TKxPlaces>(nullptr);
    tour.Then(
        "the places page", [this] { return Showing() && FileList->Items().Count() > 0; },
        [this, kept] {
            kept->Assign(&FOptions.Places());
            ResetButtonClick(this);
            ClickToolButton(*FBar->ToolBar1, "Drawings");
        });
    tour.Then(
        "the folder of the place", [this] { return SameText(FFolder, Samples().Path("Drawings")); },
        [this, &tour] {
            tour.Picture("6-places-folder");
            ClickToolButton(*FBar->ToolBar1, "Alpine lake");
        });
    tour.Then(
        "the file of the place", [this] { return !NameEdit->Text().empty(); },
        [this, &tour, kept] {
            tour.Picture("6-places");
            tour.Expect("places bar", IncludeTrailingPathDelimiter(FFolder) + NameEdit->Text(),
                        Samples().Path("Alpine lake.bmp"));
            TryRegistry(tour);
            ClickToolButton(*FBar->ToolBar1, "Computer");
        });
    tour.Then(
        "the drives", [this] { return FFolder.empty(); },
        [this, &tour] {
            tour.Picture("6-places-computer");
            tour.Expect("folder box", FolderBox->Text(), GetSpecFolderName(ftDrives));
            tour.Expect("the computer's first drive", FileList->Items()[0].Caption(), "C:\\");
            ClickToolButton(*FBar->ToolBar1, "Desktop");
        });
    tour.Then(
        "the desktop", [this] { return SameText(FFolder, DesktopFolder()); },
        [this, &tour, kept] {
            tour.Expect("folder box", FolderBox->Text(), GetSpecFolderName(ftDesktop));
            FOptions.SetPlaces(*kept);
            FOptions.Places().UpdatePlacesOn(*FBar->ToolBar1);
        });
}

} // namespace kx::gallery
