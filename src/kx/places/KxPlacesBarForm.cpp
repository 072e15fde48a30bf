// SPDX-License-Identifier: MIT
// The form with the bar of places in a dialog: navigation, the bar's menu, and drops.

#include "kx/places/KxPlacesBarForm.h"

#include "kx/places/KxAddPlaceForm.h"
#include "kx/places/KxPlacesStrings.h"
#include "kx/win/PathKind.h"
#include "kx/win/Windows.h"

#include <shellapi.h>

#include <exception>
#include <memory>
#include <shlobj.h>

namespace kx {

namespace {

constexpr int LookInCombo = 1137; ///< Of the system's file dialogs.

// Numbers of texts of the shell's library
constexpr UINT DeleteText = 33553;
constexpr UINT PropertiesText = 33555;

} // namespace

const TClass& TKxPlacesBarFrm::StaticClass() {
    using T = TKxPlacesBarFrm;
    static const TClassBuilder<T> cls("TKxPlacesBarFrm", TForm::StaticClass(), [](auto& c) {
        c.Method("FormCreate", &T::FormCreate);
        c.Method("ToolBar1CustomDrawButton", &T::ToolBar1CustomDrawButton);
        c.Method("Deleteplace1Click", &T::Deleteplace1Click);
        c.Method("Changeplace1Click", &T::Changeplace1Click);
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
    ToolBar1->SetTabStop(true); // for the keyboard; it has no window yet
    ToolBar1->SetOnCustomDrawButton({this, &TKxPlacesBarFrm::ToolBar1CustomDrawButton, "ToolBar1CustomDrawButton"});
}

void TKxPlacesBarFrm::ToolBar1CustomDrawButton(TToolBar*, TToolButton*, TCustomDrawState, bool& defaultDraw) {
    defaultDraw = false; // the buttons draw themselves
}

void TKxPlacesBarFrm::WndProc(TMessage& message) {
    if (message.Msg == WM_DROPFILES) {
        WMDropFiles(message);
    } else {
        TForm::WndProc(message);
    }
}

// --- Navigation

void TKxPlacesBarFrm::OnFolderClick(int index) {
    if (!FDialog || !FPlaces) {
        return;
    }
    const TKxPlace& place = (*FPlaces)[index];
    switch (place.PlaceSpecPath()) {
    case ftNone: OpenPath(index, place.FolderPath()); break;
    case ftDesktop: OpenInLookIn(ftDesktop); break;
    case ftDrives: OpenInLookIn(ftDrives); break;
    case ftPersonal: OpenSpecialFolder(ftPersonal); break;
    default:
        // Deliberate: every other special folder leads to the favorites, where one would expect it to lead to itself.
        OpenSpecialFolder(ftFavorites);
    }
}

namespace {

/// Asks the dialog's browser itself for a folder. This is needed where the "look in" box keeps no texts, or other texts
/// than the shell's name for the folder: there the folder's entry is not found.
void BrowseTo(HWND dialog, TKxSpecShellFolder folder) {
    IShellBrowser* const browser = KxShellBrowserOf(dialog);
    unique_pidl pidl;
    FindSpecialFolder(dialog, folder, pidl);
    if (browser && pidl) {
        browser->BrowseObject(pidl.get(), SBSP_ABSOLUTE | SBSP_DEFBROWSER);
    }
}

} // namespace

/// Opens a folder that has no path, as the user does: by picking it in the "look in" box.
void TKxPlacesBarFrm::OpenInLookIn(TKxSpecShellFolder folder) {
    const std::wstring name = ToWide(GetSpecFolderName(folder));
    const HWND dialog = FDialog->GetCommonDialogHandle();
    FDialog->SetSelPath(FDialog->GetSelPath()); // its handlers may free the form
    const HWND combo = GetDlgItem(dialog, LookInCombo);
    const LRESULT entry =
        SendMessageW(combo, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(name.c_str()));
    for (const int code : {CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}) {
        SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(LookInCombo, code), reinterpret_cast<LPARAM>(combo));
    }
    if (entry == CB_ERR) {
        BrowseTo(dialog, folder);
    }
}

void TKxPlacesBarFrm::OpenSpecialFolder(TKxSpecShellFolder folder) {
    unique_pidl pidl;
    FindSpecialFolder(FDialog->GetCommonDialogHandle(), folder, pidl);
    FDialog->SetSelPath(GetPathFromPIDL(pidl.get()));
}

void TKxPlacesBarFrm::OpenPath(int index, const std::string& path) {
    const TPathKind kind = KindOfPath(path);
    if (index < ToolBar1->ButtonCount()) {
        if (auto* const button = dynamic_cast<TKxPlaceButton*>(ToolBar1->Buttons(index))) {
            button->SetUnreachable(kind == pkUnreachable);
        }
    }
    if (kind == pkFolder) {
        FDialog->SetSelPath(path);
        return;
    }
    if (kind != pkFile) {
        return;
    }
    IKxPlacesHost& dialog = *FDialog;
    const TAlive alive(*this);
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
    const std::string text = LoadPlacesString(SKxConfirmPlaceDelete) + "\rPlace: " + button->Caption();
    const TAlive alive(*this);
    const TAlive buttonAlive(*button);
    const int answer = Application().MessageBox(text, "Place bar", MB_YESNO | MB_ICONQUESTION);
    if (answer == IDYES && alive && buttonAlive) {
        FPlaces->Delete(button->Index());
        button->Free();
    }
}

void TKxPlacesBarFrm::Changeplace1Click(TObject*) {
    TKxPlaceButton* const button = ButtonOfMenu();
    if (!button || !FPlaces) {
        return;
    }
    // Deliberate: the form stays with the application, where one would expect it to be freed here.
    auto* const form = NewForm<TKxAddPlaceFrm>(&Application());
    form->SetPlaces(FPlaces);
    form->SetPlace(FPlaces->GetItem(button->Index()));
    const TAlive alive(*this);
    const TAlive buttonAlive(*button);
    form->InitControls(); // may show a message box
    if (alive && form->Place() && form->ShowModal() == mrOk && alive && buttonAlive) {
        button->ShowPlace(*FPlaces->GetItem(button->Index()));
        button->Repaint();
    }
}

// --- Drops

namespace {

std::vector<std::string> DroppedNames(HDROP drop) {
    std::vector<std::string> names(DragQueryFileA(drop, 0xFFFFFFFF, nullptr, 0));
    for (UINT i = 0; i < names.size(); ++i) {
        const UINT length = DragQueryFileA(drop, i, nullptr, 0);
        names[i].resize(length + 1); // with room for its end
        names[i].resize(DragQueryFileA(drop, i, names[i].data(), length + 1));
    }
    return names;
}

/// Proposes a place for a file or folder in the form, which may have shown another place before.
void Propose(TKxAddPlaceFrm& form, const std::string& name) {
    form.cbTargetType->SetItemIndex(0);
    form.chkClick(form.cbTargetType); // a list of special folders, if it is still shown, would not take the path
    form.ePath->Items().Clear();
    GetSpecFolders(form.ePath->Items());
    form.ePath->SetText(name);
    form.eShort->SetText(ExtractFileName(name));
    form.eHint->SetText(ExtractFileName(name));
    form.eIconLib->SetText("Shell32.dll");
    form.btnShowIconsClick(form.btnShowIcons);
    const bool isFolder = KindOfPath(name) == pkFolder;
    form.ChooseIcons(isFolder ? 3 : 0, isFolder ? 4 : 0);
}

} // namespace

/// Shows the properties of a new place for each name; those that the user confirms add themselves to the places.
void TKxPlacesBarFrm::AddDropped(const std::vector<std::string>& names) {
    const TAlive alive(*this);
    auto* const form = NewForm<TKxAddPlaceFrm>(&Application());
    const TAlive formAlive(*form);
    const auto release = [&formAlive](TKxAddPlaceFrm* f) {
        if (formAlive) {
            f->Free();
        }
    };
    const std::unique_ptr<TKxAddPlaceFrm, decltype(release)> owned(form, release);
    for (size_t i = 0; i < names.size() && alive && formAlive; ++i) {
        Propose(*form, names[i]);
        if (!alive || !formAlive) {
            return;
        }
        form->SetPlaces(FPlaces);
        form->SetPlace(nullptr);
        Application().CancelHint();
        form->ShowModal();
    }
}

void TKxPlacesBarFrm::WMDropFiles(TMessage& message) {
    message.Result = 0;
    if (!FPlaces) {
        return;
    }
    const TAlive alive(*this);
    std::exception_ptr error; // kept until the bar shows the places that were made
    try {
        // Deliberate: the drop's handle is not released (DragFinish), where one would expect that.
        AddDropped(DroppedNames(reinterpret_cast<HDROP>(message.WParam)));
    } catch (...) {
        error = std::current_exception();
    }
    if (alive) {
        FPlaces->UpdatePlacesOn(*ToolBar1);
    }
    if (error) {
        std::rethrow_exception(error);
    }
}

} // namespace kx
