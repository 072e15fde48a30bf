// SPDX-License-Identifier: MIT
#pragma once

#include "kx/places/KxPlaces.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <map>
#include <optional>
#include <string>

namespace kx {

/// The dialog in which a place of the places bar is made or changed. Whoever opens it sets the places; to change a
/// place, also that place, and then calls `InitControls`. When `ShowModal` returns mrOk, the place has been written.
/// Nothing that the user enters is validated.
///
/// A form may be shown for several places, one after the other. A control that is not set again keeps what it shows.
class TKxAddPlaceFrm : public TForm, private IKxPlacesWatcher {
    KX_CLASS()

    explicit TKxAddPlaceFrm(TComponent* owner = nullptr);
    ~TKxAddPlaceFrm() override;

    // --- Components, owned by the form

    KX_FIELDS(TKxAddPlaceFrm, (TButton, Button1 /* OK */, Button2 /* Cancel */),
              (TLabel, Label1, Label2, Label3, Label6, Label4, Label5, Label7, Label8),
              (TEdit, eShort /* The caption. */, eHint, eIconLib /* Name of the file with the icons. */),
              (TDrawGrid, dg1 /* Icons to choose the normal one from; column = index in the file. */,
               dg2 /* The same of the icon of a hot or pressed button. */),
              (TPanel, Panel1), (TBevel, Bevel1), (TSpeedButton, btnShowIcons, btnBrowseLib), (TImage, Image1),
              (TComboBox, ePath /* The target: a path, a special folder, or where the registry holds a path. */,
               cbTargetType /* What ePath holds: 0 a path, 1 a special folder, 2 a registry value. */),
              (TCheckBox, chkAutoCap))

    // --- Settings

    const std::string& IconLib() const { return FIconLib; } ///< File whose icons the grids show; empty: they show none.
    void SetIconLib(const std::string& value);
    /// Where a new place goes. Not owned: when the places go, or the place to be changed, the form is cancelled and
    /// forgets both.
    TKxPlaces* Places() const { return FPlaces; }
    void SetPlaces(TKxPlaces* value);
    TKxPlace* Place() const { return FPlace; } ///< The place to be changed; null: a new one is made. Not owned.
    void SetPlace(TKxPlace* value);

    /// Shows what the place holds; does nothing without one. A message box tells when its icon file has no icons.
    void InitControls();
    /// Chooses icons of the file. An icon that the file does not have stays chosen until the user takes another.
    void ChooseIcons(int32_t normal, int32_t hot);

    // --- Handlers

    void FormCreate(TObject* sender);
    void FormShow(TObject* sender);
    /// Loads the icons of the file in eIconLib into the grids, or tells that it has none.
    void btnShowIconsClick(TObject* sender);
    void btnBrowseLibClick(TObject* sender);
    /// @throws ERangeError for a negative column.
    void dg1DrawCell(TObject* sender, int col, int row, const TRect& rect, TGridDrawState state);
    void dg2DrawCell(TObject* sender, int col, int row, const TRect& rect, TGridDrawState state);
    void IconGridMouseDown(TObject* sender, TMouseButton button, TShiftState shift, int x, int y);
    void IconGridSelectCell(TObject* sender, int col, int row, bool& canSelect);
    void chkClick(TObject* sender);
    void chkAutoCapClick(TObject* sender);
    /// Writes the place, a new one if there is none; without places it writes nothing.
    /// @throws ERangeError when a special folder is wanted and none is chosen.
    void Button1Click(TObject* sender);
    void Button2Click(TObject* sender);

private:
    void PlacesChanged() override;
    void PlacesGone() override;

    /// The icon chosen in a grid. One without a column in the grid stays chosen until the user takes another. So a user
    /// who changes a place's caption while its icon file is missing does not lose the icon.
    struct TIconChoice {
        TDrawGrid* Grid = nullptr;
        int32_t Given = 0;              ///< The icon of the place, before the user took another.
        std::optional<int32_t> Missing; ///< The chosen icon, when it has no column.

        int32_t Index() const { return Missing.value_or(Grid->Col()); }
        void SetIndex(int32_t value); ///< Makes its column the first that is seen.
        void SetCount(int value);
    };

    void InitTarget();
    void OfferSpecFolders();
    TKxSpecShellFolder ChosenSpecFolder() const;
    TIconChoice& ChoiceOf(TObject* grid) { return grid == dg1 ? FNormal : FHot; }
    void DrawIconCell(TDrawGrid& grid, int col, int row, const TRect& rect, TGridDrawState state);
    const TIcon& IconAt(int index);

    std::string FIconLib;
    TKxPlaces* FPlaces = nullptr;
    TKxPlace* FPlace = nullptr;
    std::optional<TAlive> FPlaceAlive; ///< Of FPlace.
    TIconChoice FNormal;
    TIconChoice FHot;
    std::map<int, TIcon> FIcons; ///< Those of `FIconLib` that have been drawn.
};

} // namespace kx
