// SPDX-License-Identifier: MIT
// Edits the places of a places bar at design time.

#include "kx/design/KxPBarDsgnForm.h"

#include "kx/core/Barrier.h"
#include "kx/design/KxServices.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/places/KxAddPlaceForm.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// Where the host keeps the window's bounds; empty without a host.
std::string BoundsKey() {
    return ModuleServices() ? ModuleServices()->BaseRegistryKey() + "\\Property Editors\\KXQD\\PlacesEditor"
                            : std::string();
}

} // namespace

const TClass& TKxPBarEditFrm::StaticClass() {
    using T = TKxPBarEditFrm;
    static const TClassBuilder<T> cls("TKxPBarEditFrm", TDesignWindow::StaticClass(), [](auto& c) {
        c.Method("FormCreate", &T::FormCreate);
        c.Method("FormDestroy", &T::FormDestroy);
        c.Method("FormClose", &T::FormClose);
        c.Method("btnEditClick", &T::btnEditClick);
        c.Method("Button1Click", &T::Button1Click);
        c.Method("Button2Click", &T::Button2Click);
        c.Method("Button3Click", &T::Button3Click);
        c.Method("Button4Click", &T::Button4Click);
    });
    return cls.Class();
}

TKxPBarEditFrm::TKxPBarEditFrm(TComponent* owner) : TDesignWindow(owner) { InitForm(*this, StaticClass()); }

TKxPBarEditFrm::~TKxPBarEditFrm() { SetPlaces(nullptr); }

void TKxPBarEditFrm::SetPlaces(TKxPlaces* value) {
    if (FPlaces) {
        FPlaces->Unwatch(*this);
    }
    FPlaces = value;
    if (FPlaces) {
        FPlaces->Watch(*this);
    }
}

void TKxPBarEditFrm::PlacesGone() {
    FPlaces = nullptr;
    GiveUp();
}

/// Closes. The window itself goes later, and by then the designer and the places may have gone.
void TKxPBarEditFrm::GiveUp() {
    Prop.reset();
    StorageModule = nullptr;
    SetPlaces(nullptr);
    Close();
}

void TKxPBarEditFrm::RefreshBar() {
    if (FPlaces) {
        FPlaces->UpdatePlacesOn(*ToolBar1);
    }
}

TToolButton* TKxPBarEditFrm::PressedButton() const {
    for (int i = 0; i < ToolBar1->ButtonCount(); ++i) {
        if (ToolBar1->Buttons(i)->Down()) {
            return ToolBar1->Buttons(i);
        }
    }
    return nullptr;
}

void TKxPBarEditFrm::Modified() {
    if (Prop) {
        Prop->Designer().Modified();
    }
}

// --- Handlers

/// The form file has the outer size that goes with a frame of 4 pixels and a caption of 19. What is inside keeps its
/// room in a thicker frame.
void TKxPBarEditFrm::GrowByFrame() {
    constexpr TPoint designedClient{174, 206};
    const int dx = std::max(designedClient.X - ClientWidth(), 0);
    const int dy = std::max(designedClient.Y - ClientHeight(), 0);
    Constraints().SetMaxWidth(Constraints().MaxWidth() + dx);
    Constraints().SetMinWidth(Constraints().MinWidth() + dx);
    Constraints().SetMinHeight(Constraints().MinHeight() + dy);
    SetHeight(Height() + dy);
}

void TKxPBarEditFrm::FormCreate(TObject*) {
    GrowByFrame();
    if (!BoundsKey().empty()) {
        LoadFormPosFromRegistry(*this, BoundsKey());
    }
}

void TKxPBarEditFrm::FormDestroy(TObject*) {
    if (!BoundsKey().empty()) {
        SaveFormPosInRegistry(*this, BoundsKey());
    }
}

void TKxPBarEditFrm::FormClose(TObject*, TCloseAction& action) { action = caFree; }

/// Shows the form for a place, and makes the bar anew whatever came of it. `prepare` fills the form.
template <class F> void TKxPBarEditFrm::EditPlace(F prepare) {
    const TAlive alive(*this);
    bool confirmed = false;
    {
        const std::unique_ptr<TKxAddPlaceFrm, TFreeDeleter> form(NewForm<TKxAddPlaceFrm>(nullptr));
        form->SetPlaces(FPlaces);
        prepare(*form);
        confirmed = form->Places() && form->ShowModal() == mrOk; // a message box may have told of missing icons
    }
    if (alive && confirmed) {
        Modified();
    }
    if (alive) {
        RefreshBar();
    }
}

void TKxPBarEditFrm::btnEditClick(TObject*) {
    const TToolButton* const button = PressedButton();
    if (FPlaces && button) {
        EditPlace([&](TKxAddPlaceFrm& form) {
            form.SetPlace(FPlaces->GetItem(button->Index()));
            form.InitControls();
        });
    }
}

void TKxPBarEditFrm::Button1Click(TObject*) {
    if (FPlaces) {
        EditPlace([](TKxAddPlaceFrm& form) {
            form.SetPlace(nullptr);
            form.btnShowIconsClick(nullptr);
        });
    }
}

void TKxPBarEditFrm::Button2Click(TObject*) {
    TToolButton* const button = PressedButton();
    if (FPlaces && button) {
        FPlaces->Delete(button->Index());
        button->Hide();
        button->Free();
        Modified();
    }
}

void TKxPBarEditFrm::Button3Click(TObject*) { Close(); }

void TKxPBarEditFrm::Button4Click(TObject*) {
    auto* const options = FPlaces ? dynamic_cast<TKxPlacesBarOptions*>(FPlaces->GetOwner()) : nullptr;
    if (!options) {
        return;
    }
    if (options->RegistryKey().empty()) {
        Application().MessageBox("RegistryKey property is empty. Set this property before.", "Error",
                                 MB_OK | MB_ICONERROR);
        return;
    }
    const TAlive alive(*this);
    const int answer =
        Application().MessageBox("Are you sure to store all these places to registry and delete them from DFM file?",
                                 "Confirm", MB_YESNO | MB_ICONQUESTION);
    if (answer == IDYES && alive && FPlaces) {
        if (!options->SaveToRegistry()) {
            Application().MessageBox("The places could not be stored to registry. They stay in the DFM file.", "Error",
                                     MB_OK | MB_ICONERROR);
            return;
        }
        FPlaces->Clear();
        Modified();
        RefreshBar();
    }
}

// --- What the designers tell

void TKxPBarEditFrm::ItemDeleted(IDesigner&, TPersistent& item) {
    auto* const dialog = dynamic_cast<TKxCustomOpenDialog*>(&item); // a save dialog is one too
    if (dialog && &dialog->PlacesBar().Places() == FPlaces) {
        GiveUp();
    }
}

void TKxPBarEditFrm::ItemsModified(IDesigner&) {
    if (!IsDestroying()) {
        RefreshBar();
    }
}

void TKxPBarEditFrm::DesignerClosed(IDesigner& designer, bool) {
    if (designer.Root() == StorageModule) {
        GiveUp();
    }
}

TKxPBarEditFrm* FindPlacesEditor(const TKxPlaces& places) {
    for (int i = 0; i < Screen().FormCount(); ++i) {
        auto* const editor = dynamic_cast<TKxPBarEditFrm*>(Screen().Forms(i));
        if (editor && editor->Places() == &places) {
            return editor;
        }
    }
    return nullptr;
}

} // namespace kx
