// SPDX-License-Identifier: MIT
// The form with a place's properties.

#include "kx/places/KxAddPlaceForm.h"

#include "kx/places/KxPlaceIcons.h"
#include "kx/places/KxPlacesStrings.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <iterator>
#include <shellapi.h>

namespace kx {

namespace {

enum TTargetType { ttPath, ttSpecFolder, ttRegistry };

/// How many icons are kept while the form shows. A library may have more icons than the system has handles.
constexpr size_t MaxKeptIcons = 1000;

} // namespace

const TClass& TKxAddPlaceFrm::StaticClass() {
    static const TClassBuilder<TKxAddPlaceFrm> cls("TKxAddPlaceFrm", TForm::StaticClass(), [](auto& c) {
        using T = TKxAddPlaceFrm;
        c.Method("FormCreate", &T::FormCreate);
        c.Method("FormShow", &T::FormShow);
        c.Method("btnShowIconsClick", &T::btnShowIconsClick);
        c.Method("btnBrowseLibClick", &T::btnBrowseLibClick);
        c.Method("dg1DrawCell", &T::dg1DrawCell);
        c.Method("dg2DrawCell", &T::dg2DrawCell);
        c.Method("IconGridMouseDown", &T::IconGridMouseDown);
        c.Method("IconGridSelectCell", &T::IconGridSelectCell);
        c.Method("chkClick", &T::chkClick);
        c.Method("chkAutoCapClick", &T::chkAutoCapClick);
        c.Method("Button1Click", &T::Button1Click);
        c.Method("Button2Click", &T::Button2Click);
    });
    return cls.Class();
}

TKxAddPlaceFrm::TKxAddPlaceFrm(TComponent* owner) : TForm(owner) {
    InitForm(*this, StaticClass());
    FNormal.Grid = dg1;
    FHot.Grid = dg2;
}

TKxAddPlaceFrm::~TKxAddPlaceFrm() { SetPlaces(nullptr); }

void TKxAddPlaceFrm::FormCreate(TObject*) { SetPlace(nullptr); }

void TKxAddPlaceFrm::FormShow(TObject*) { SetCaption(FPlace ? "Places Bar item" : "New Places Bar item"); }

// --- The place

void TKxAddPlaceFrm::SetPlaces(TKxPlaces* value) {
    if (FPlaces) {
        FPlaces->Unwatch(*this);
    }
    FPlaces = value;
    if (FPlaces) {
        FPlaces->Watch(*this);
    }
}

void TKxAddPlaceFrm::SetPlace(TKxPlace* value) {
    FPlace = value;
    FPlaceAlive.reset();
    if (value) {
        FPlaceAlive.emplace(*value);
    }
}

void TKxAddPlaceFrm::PlacesChanged() {
    if (FPlaceAlive && !*FPlaceAlive) {
        SetPlaces(nullptr);
        PlacesGone();
    }
}

void TKxAddPlaceFrm::PlacesGone() {
    FPlaces = nullptr;
    SetPlace(nullptr);
    SetModalResult(mrCancel);
}

void TKxAddPlaceFrm::InitControls() {
    if (!FPlace) {
        return;
    }
    eShort->SetText(FPlace->GetPlaceName());
    eHint->SetText(FPlace->PlaceDesc());
    if (FPlace->AutoCaption()) { // else the check mark stays: a form that is used again keeps what is not set again
        chkAutoCap->SetChecked(true);
    }
    InitTarget();
    eIconLib->SetText(FPlace->PlaceIconDll());
    // A message box may tell of missing icons, and the place may go while it is open.
    if (Outlives(*this, [this] { btnShowIconsClick(btnShowIcons); }) && FPlace) {
        ChooseIcons(FPlace->PlaceIcon(), FPlace->PlaceHotIcon());
    }
}

void TKxAddPlaceFrm::ChooseIcons(int32_t normal, int32_t hot) {
    FNormal.SetIndex(normal);
    FHot.SetIndex(hot);
}

void TKxAddPlaceFrm::InitTarget() {
    if (FPlace->PlaceSpecPath() != ftNone) {
        cbTargetType->SetItemIndex(ttSpecFolder);
        OfferSpecFolders();
        const auto at = std::find(KxOfferedFolders.begin(), KxOfferedFolders.end(), FPlace->PlaceSpecPath()) -
                        KxOfferedFolders.begin();
        ePath->SetItemIndex(at == std::ssize(KxOfferedFolders) ? -1 : static_cast<int>(at));
        return;
    }
    const bool inRegistry = !FPlace->PlaceRegPath().empty();
    cbTargetType->SetItemIndex(inRegistry ? ttRegistry : ttPath);
    ePath->SetStyle(csSimple);
    ePath->SetText(inRegistry ? FPlace->PlaceRegPath() : FPlace->PlacePath());
}

void TKxAddPlaceFrm::OfferSpecFolders() {
    ePath->SetStyle(csDropDownList);
    ePath->Items().Clear();
    GetSpecFolders(ePath->Items());
}

void TKxAddPlaceFrm::chkClick(TObject*) {
    if (cbTargetType->ItemIndex() == ttSpecFolder) {
        OfferSpecFolders();
    } else {
        ePath->SetStyle(csSimple);
    }
}

void TKxAddPlaceFrm::chkAutoCapClick(TObject*) { eShort->SetEnabled(!chkAutoCap->Checked()); }

TKxSpecShellFolder TKxAddPlaceFrm::ChosenSpecFolder() const {
    const int index = ePath->ItemIndex();
    if (index < 0 || index >= static_cast<int>(KxOfferedFolders.size())) {
        RaiseRangeError();
    }
    return KxOfferedFolders[static_cast<size_t>(index)];
}

void TKxAddPlaceFrm::Button1Click(TObject*) {
    if (!FPlaces) {
        return;
    }
    if (!FPlace) {
        FPlace = FPlaces->Add();
    }
    FPlace->SetPlaceName(eShort->Text());
    FPlace->SetPlaceDesc(eHint->Text());
    FPlace->SetAutoCaption(chkAutoCap->Checked());
    const int type = cbTargetType->ItemIndex();
    FPlace->SetPlaceSpecPath(type == ttSpecFolder ? ChosenSpecFolder() : ftNone);
    FPlace->SetPlaceRegPath(type == ttRegistry ? ePath->Text() : "");
    FPlace->SetPlacePath(type == ttSpecFolder || type == ttRegistry ? "" : ePath->Text());
    FPlace->SetPlaceIconDll(eIconLib->Text());
    FPlace->SetPlaceIcon(FNormal.Index());
    FPlace->SetPlaceHotIcon(FHot.Index());
    SetModalResult(mrOk);
}

void TKxAddPlaceFrm::Button2Click(TObject*) { SetModalResult(mrCancel); }

// --- Icons

void TKxAddPlaceFrm::SetIconLib(const std::string& value) {
    FIcons.clear();
    FIconLib = value;
    dg1->Invalidate();
    dg2->Invalidate();
}

void TKxAddPlaceFrm::btnShowIconsClick(TObject*) {
    const std::string file = eIconLib->Text();
    const int count = static_cast<int>(ExtractIconExA(file.c_str(), -1, nullptr, nullptr, 0));
    if (count < 1) {
        const bool there = Outlives(*this, [] {
            Application().MessageBox(LoadPlacesString(SKxFileWithoutIcons), "New place - Icon library", MB_ICONSTOP);
        });
        if (there) {
            FNormal.SetCount(0);
            FHot.SetCount(0);
        }
        return;
    }
    SetIconLib(file);
    FNormal.SetCount(count);
    FHot.SetCount(count);
}

void TKxAddPlaceFrm::btnBrowseLibClick(TObject*) {
    TOpenDialog dialog(this);
    dialog.SetFilter(LoadPlacesString(SKxIconFileFilter));
    dialog.SetTitle(LoadPlacesString(SKxIconFileTitle));
    dialog.SetFileName(eIconLib->Text());
    if (dialog.Execute()) {
        eIconLib->SetText(dialog.FileName());
    }
}

void TKxAddPlaceFrm::TIconChoice::SetIndex(int32_t value) {
    Given = value;
    Missing.reset();
    if (value >= 0 && value < Grid->ColCount()) {
        Grid->SetCol(value);
        Grid->SetLeftCol(value);
    } else {
        Missing = value;
    }
}

void TKxAddPlaceFrm::TIconChoice::SetCount(int value) {
    Grid->SetColCount(value);
    if (value == 0) {
        Missing = Given; // an index that the user took from another file means nothing in this one
    } else if (Missing && *Missing < value) {
        SetIndex(*Missing);
    } else {
        Missing.reset(); // only the columns of the new file can be chosen
    }
}

/// A press on the current column chooses it too, although the selection does not change.
void TKxAddPlaceFrm::IconGridMouseDown(TObject* sender, TMouseButton button, TShiftState, int x, int y) {
    TIconChoice& choice = ChoiceOf(sender);
    int col = -1;
    int row = -1;
    choice.Grid->MouseToCell(x, y, col, row);
    if (button == mbLeft && col >= 0 && row >= 0) {
        choice.Missing.reset();
    }
}

void TKxAddPlaceFrm::IconGridSelectCell(TObject* sender, int, int, bool&) { ChoiceOf(sender).Missing.reset(); }

void TKxAddPlaceFrm::dg1DrawCell(TObject*, int col, int row, const TRect& rect, TGridDrawState state) {
    DrawIconCell(*dg1, col, row, rect, state);
}

void TKxAddPlaceFrm::dg2DrawCell(TObject*, int col, int row, const TRect& rect, TGridDrawState state) {
    DrawIconCell(*dg2, col, row, rect, state);
}

void TKxAddPlaceFrm::DrawIconCell(TDrawGrid& grid, int col, int row, const TRect& rect, TGridDrawState state) {
    if (row != 0 || FIconLib.empty()) {
        return;
    }
    TCanvas& canvas = grid.Canvas();
    if (state.Contains(gdFocused)) {
        canvas.Brush().SetColor(clActiveCaption);
        canvas.FillRect(rect);
    }
    const TIcon& icon = IconAt(col);
    if (!icon.Empty()) {
        canvas.Draw(rect.Left + (rect.Right - rect.Left) / 2 - icon.Width() / 2,
                    rect.Top + (rect.Bottom - rect.Top) / 2 - icon.Height() / 2, icon);
    }
}

/// Extracting an icon opens the library anew. That takes too long to be done whenever a cell is drawn.
const TIcon& TKxAddPlaceFrm::IconAt(int index) {
    if (const auto found = FIcons.find(index); found != FIcons.end()) {
        return found->second;
    }
    if (FIcons.size() >= MaxKeptIcons) {
        FIcons.clear();
    }
    unique_hicon extracted = ExtractPlaceIcon(FIconLib, index);
    TIcon& icon = FIcons[index];
    icon.SetHandle(extracted.release());
    return icon;
}

} // namespace kx
