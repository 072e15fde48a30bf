#include "places/KxPlacesBarForm.h"

#include "core/Filer.h"

namespace kx {

namespace {

constexpr int LookInCombo = 1137; ///< Of the system's file dialogs.

// Numbers of texts of the shell's library
constexpr UINT DeleteText = 33553;
constexpr UINT PropertiesText = 33555;

const char DeleteQuestion[] = "Wollen Sie diesen Verzeichnis-Shortcut wirklich löschen ?";

} // namespace

const TClass& TKxPlacesBarFrm::StaticClass() {
    using T = TKxPlacesBarFrm;
    static const TClassBuilder<T> cls("TKxPlacesBarFrm", TForm::StaticClass(), [](auto& c) {
        c.Field("pop1", &T::pop1);
        c.Field("Deleteplace1", &T::Deleteplace1);
        c.Field("Changeplace1", &T::Changeplace1);
        c.Field("Panel1", &T::Panel1);
        c.Field("ps1", &T::ps1);
        c.Field("ToolBar1", &T::ToolBar1);
        c.Method("FormCreate", &T::FormCreate);
        c.Method("ToolBar1CustomDrawButton", &T::ToolBar1CustomDrawButton);
        c.Method("Deleteplace1Click", &T::Deleteplace1Click);
    });
    return cls.Class();
}

TKxPlacesBarFrm::TKxPlacesBarFrm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TKxPlacesBarFrm::FormCreate(TObject*) {
    const auto take = [](TMenuItem& item, UINT id) {
        const std::string text = LoadShellText(id);
        if (!text.empty()) {
            item.SetCaption(text + "...");
        }
    };
    take(*Deleteplace1, DeleteText);
    take(*Changeplace1, PropertiesText);
    ToolBar1->SetOnCustomDrawButton({this, &TKxPlacesBarFrm::ToolBar1CustomDrawButton, "ToolBar1CustomDrawButton"});
}

void TKxPlacesBarFrm::ToolBar1CustomDrawButton(TToolBar*, TToolButton*, TCustomDrawState, bool& defaultDraw) {
    defaultDraw = false; // the buttons draw themselves
}

// --- Navigation

void TKxPlacesBarFrm::OnFolderClick(int index) {
    if (!FDialog || !FPlaces) {
        return;
    }
    const TKxPlace& place = (*FPlaces)[index];
    switch (place.PlaceSpecPath()) {
    case ftNone:
        OpenPath(place.PlaceRegPath().empty() ? place.PlacePath() : ExtractRegStringValue(place.PlaceRegPath()));
        break;
    case ftDesktop: OpenInLookIn(GetSpecFolderName(ftDesktop)); break;
    case ftDrives: OpenInLookIn(GetSpecFolderName(ftDrives)); break;
    case ftPersonal: OpenSpecialFolder(CSIDL_PERSONAL); break;
    default:
        // Deliberate: the favorites for every other special folder too, where one would expect that folder.
        OpenSpecialFolder(CSIDL_FAVORITES);
    }
}

/// Opens a folder that has no path, as the user does: by picking it in the "look in" box.
void TKxPlacesBarFrm::OpenInLookIn(const std::string& name) {
    const HWND dialog = FDialog->GetCommonDialogHandle();
    FDialog->SetSelPath(FDialog->GetSelPath()); // whose handlers may free the form
    const HWND combo = GetDlgItem(dialog, LookInCombo);
    SendMessageA(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name.c_str()));
    for (const int code : {CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}) {
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(LookInCombo, code), reinterpret_cast<LPARAM>(combo));
    }
}

void TKxPlacesBarFrm::OpenSpecialFolder(int csidl) {
    unique_pidl pidl;
    SHGetSpecialFolderLocation(FDialog->GetCommonDialogHandle(), csidl, pidl.put());
    FDialog->SetSelPath(GetPathFromPIDL(pidl.get()));
}

void TKxPlacesBarFrm::OpenPath(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return;
    }
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) {
        FDialog->SetSelPath(path);
        return;
    }
    IKxPlacesHost& dialog = *FDialog;
    const TAliveGuard alive(*this);
    dialog.SetSelPath(ExtractFilePath(path));
    if (alive) {
        dialog.SetFNameText(ExtractFileName(path));
    }
}

// --- Menu

/// The button under the point at which the menu was opened; null when there is none.
TKxPlaceButton* TKxPlacesBarFrm::ButtonOfMenu() const {
    auto* const button = dynamic_cast<TKxPlaceButton*>(FindDragTarget(pop1->PopupPoint(), true));
    return button && button->ToolBar() == ToolBar1 ? button : nullptr;
}

void TKxPlacesBarFrm::Deleteplace1Click(TObject*) {
    TKxPlaceButton* const button = ButtonOfMenu();
    if (!button || !FPlaces) {
        return;
    }
    const std::string text = FormTextToAnsi(DeleteQuestion) + "\rPlace: " + button->Caption();
    const TAliveGuard alive(*this);
    const TAliveGuard buttonAlive(*button);
    const int answer = Application().MessageBox(text, "Place bar", MB_YESNO | MB_ICONQUESTION);
    if (answer == IDYES && alive && buttonAlive) {
        FPlaces->Delete(button->Index());
        button->Free();
    }
}

} // namespace kx
