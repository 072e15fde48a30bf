// SPDX-License-Identifier: MIT
// The page on which forms are docked to the sides and the dialog is placed.

#include "DockingPage.h"

#include "kx/win/Windows.h"

#include "AccessForm.h"
#include "FavouritesForm.h"
#include "FilterForm.h"
#include "PreviewForm.h"
#include "ReferenceForm.h"
#include "SampleFiles.h"
#include "Tour.h"

#include <algorithm>

namespace kx::gallery {

namespace {

/// A shift in pixels; a text that is no number counts as none.
int ShiftOf(const TEdit& edit) {
    constexpr int64_t farthest = 4000;
    return static_cast<int>(std::clamp(StrToIntDef(Trim(edit.Text()), 0), -farthest, farthest));
}

} // namespace

const TClass& TDockingPage::StaticClass() {
    static const TClassBuilder<TDockingPage> cls("TDockingPage", TGalleryPage::StaticClass(), [](auto& c) {
        c.Method("SideClick", &TDockingPage::SideClick);
        c.Method("PositionChange", &TDockingPage::PositionChange);
        c.Method("ReferenceClick", &TDockingPage::ReferenceClick);
        c.Method("OpenButtonClick", &TDockingPage::OpenButtonClick);
        c.Method("DialogFolderChange", &TDockingPage::DialogFolderChange);
        c.Method("DialogSelectionChange", &TDockingPage::DialogSelectionChange);
    });
    return cls.Class();
}

TDockingPage::TDockingPage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    SideClick(this);
}

void TDockingPage::SideClick(TObject*) {
    Sketch->SetSides({LeftBox->Checked(), TopBox->Checked(), RightBox->Checked(), BottomBox->Checked()});
}

void TDockingPage::PositionChange(TObject*) {
    if (PositionCombo->ItemIndex() == dpFormCenter) {
        ReferenceBox->SetChecked(true);
        ReferenceClick(ReferenceBox);
    }
}

void TDockingPage::ReferenceClick(TObject*) { ReferenceForm->SetVisible(ReferenceBox->Checked()); }

void TDockingPage::ConnectForms() {
    FavouritesForm->SetOnNavigate([this](const std::string& folder) { Dialog->SetSelectedFolder(folder); });
    FilterForm->SetOnFilter([this](const std::string& pattern) {
        // A pattern in place of a name makes the dialog list what matches it.
        Dialog->SetFilenameText(pattern);
        Dialog->CloseDialog(mrOk);
        Dialog->SetFilenameText("");
    });
    AccessForm->SetOnEncodingChange([](TEncoding encoding) { PreviewForm->SetEncoding(encoding); });
    PreviewForm->ShowFile({});
}

void TDockingPage::OpenButtonClick(TObject*) {
    ConnectForms();
    TKxCustDlgParams& params = Dialog->CustDlgParams();
    params.SetLeftFormName(LeftBox->Checked() ? "FavouritesForm" : "");
    params.SetTopFormName(TopBox->Checked() ? "FilterForm" : "");
    params.SetRightFormName(RightBox->Checked() ? "PreviewForm" : "");
    params.SetBottomFormName(BottomBox->Checked() ? "AccessForm" : "");
    // The lines of the box stand in the order of the rules.
    params.SetPosition(static_cast<TKxDlgPosition>(PositionCombo->ItemIndex()));
    params.PosParams().SetShiftX(ShiftOf(*ShiftXEdit));
    params.PosParams().SetShiftY(ShiftOf(*ShiftYEdit));
    params.PosParams().SetFitToScreen(FitBox->Checked());
    params.Icon().LoadFromFile(Samples().Path("Gallery.ico"));
    Dialog->PlacesBar().SetVisible(PlacesBox->Checked());
    RunDialog(*Dialog);
    if (!LastResult().empty() && BottomBox->Checked()) {
        Report("    encoding: " + AccessForm->EncodingName() + (AccessForm->ReadOnly() ? ", read-only" : ""));
    }
}

void TDockingPage::DialogFolderChange(TObject*) {
    FavouritesForm->SetCurrentFolder(ExcludeTrailingPathDelimiter(Dialog->SelectedFolder()));
    PreviewForm->ShowFile({});
}

void TDockingPage::DialogSelectionChange(TObject*) { PreviewForm->ShowSelection(*Dialog); }

void TDockingPage::AddTour(TTour& tour) {
    const std::string name = "Alpine lake.bmp";
    tour.Then("the docking page", {}, [this] {
        PositionCombo->SetItemIndex(dpMainFormCenter);
        ShiftXEdit->SetText("90");
        ShiftYEdit->SetText("60");
        OpenButton->Click();
    });
    tour.Then(
        "the dialog with docked forms", [this, name] { return Lists(*Dialog, name); },
        [] { FavouritesForm->Choose("Drawings"); });
    tour.Then(
        "the favourite folder", [this] { return ShowsFolder(*Dialog, Samples().Path("Drawings")); },
        [] { FavouritesForm->Choose("Samples"); });
    tour.Then(
        "the samples again", [this, name] { return Lists(*Dialog, name); },
        [this, name] { SelectFile(*Dialog, name); });
    tour.Then(
        "the preview of the picture", [] { return PreviewForm->ShowsPicture(); },
        [this, &tour] {
            tour.Picture("2-docking");
            PressButton(*Dialog, IDOK);
        });
    tour.Then(
        "the end of the dialog with docked forms", [this] { return !Dialog->Handle() && !LastResult().empty(); },
        [this, &tour, name] { tour.Expect("docking", LastResult(), Samples().Path(name)); });
}

} // namespace kx::gallery
