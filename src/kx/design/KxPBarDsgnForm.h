// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/ide/DesignWindows.h"
#include "kx/ide/PropertyEditors.h"
#include "kx/places/KxPlaces.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx {

/// The modeless window in which the places of a dialog's places bar are edited at design time. It closes when the
/// dialog or its form goes from the designer. It is 182 pixels wide with a frame of 4 pixels, and wider with a thicker
/// one: there is always room for its buttons.
class TKxPBarEditFrm : public TDesignWindow, private IKxPlacesWatcher {
    KX_CLASS()

    explicit TKxPBarEditFrm(TComponent* owner = nullptr);
    ~TKxPBarEditFrm() override;

    // --- Components, owned by the form

    KX_FIELDS(TKxPBarEditFrm, (TPageScroller, ps1),
              (TButton, btnEdit, Button1 /* Add */, Button2 /* Delete */, Button3 /* Close */,
               Button4 /* To the registry */),
              (TToolBar, ToolBar1))

    // --- Settings

    TPropertyEditorPtr Prop;             ///< The property editor that opened the window: its designer hears of changes.
    TComponent* StorageModule = nullptr; ///< The root of that designer. Not owned; only compared.
    TKxPlaces* Places() const { return FPlaces; } ///< The places that are edited; not owned. Null when they have gone.
    void SetPlaces(TKxPlaces* value);

    /// Makes the buttons of the places anew.
    void RefreshBar();

    // --- Handlers

    void FormCreate(TObject* sender);
    void FormDestroy(TObject* sender);
    void FormClose(TObject* sender, TCloseAction& action);
    void btnEditClick(TObject* sender);
    void Button1Click(TObject* sender);
    void Button2Click(TObject* sender);
    void Button3Click(TObject* sender);
    void Button4Click(TObject* sender);

protected:
    void ItemDeleted(IDesigner& designer, TPersistent& item) override;
    void ItemsModified(IDesigner& designer) override;
    void DesignerClosed(IDesigner& designer, bool goingDormant) override;

private:
    void PlacesChanged() override {}
    void PlacesGone() override;
    void GiveUp();
    void GrowByFrame();

    TToolButton* PressedButton() const; ///< The first one; null when none is down.
    template <class F> void EditPlace(F prepare);
    void Modified();

    TKxPlaces* FPlaces = nullptr;
};

/// The open editor of these very places; null when there is none.
TKxPBarEditFrm* FindPlacesEditor(const TKxPlaces& places);

} // namespace kx
