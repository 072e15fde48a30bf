// SPDX-License-Identifier: MIT
// The page of the save dialog with all that the library adds to it.

#include "SavePage.h"

#include "FilterForm.h"
#include "SampleFiles.h"
#include "SamplePlaces.h"
#include "Tour.h"
#include "VetoForm.h"
#include "kx/win/FileStreams.h"

#include <commdlg.h>
#include <memory>
#include <shlwapi.h>

namespace kx::gallery {

namespace {

constexpr const char* heldName = "Read me first.txt";

/// The answers to a share violation, in the order of the box's lines.
constexpr int32_t shareAnswers[] = {-1, OFN_SHAREWARN, OFN_SHARENOWARN, OFN_SHAREFALLTHROUGH};

std::string ShareEvent(const std::string& fileName) {
    std::string event = "OnShareViolation: ";
    event += ExtractFileName(fileName);
    return event;
}

} // namespace

const TClass& TSavePage::StaticClass() {
    static const TClassBuilder<TSavePage> cls("TSavePage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TSavePage;
        c.Method("SaveButtonClick", &T::SaveButtonClick);
        c.Method("DialogIncludeFile", &T::DialogIncludeFile);
    });
    return cls.Class();
}

TSavePage::TSavePage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    AddSamplePlaces(Dialog->PlacesBar().Places());
}

// --- The dialog

void TSavePage::SaveButtonClick(TObject*) {
    ConnectForms();
    ChooseParts();
    std::unique_ptr<TFileStream> held;
    if (HoldBox->Checked()) {
        held = std::make_unique<TFileStream>(Samples().Path(heldName), fmOpenRead | fmShareExclusive);
    }
    RunDialog(*Dialog, NameEdit->Text());
}

void TSavePage::ConnectForms() {
    VetoForm->Attach(*Dialog);
    Dialog->SetOnShareViolation(
        [this](TObject*, int32_t& result, const std::string& fileName) { ShareViolation(result, fileName); });
    FPattern.clear();
    FilterForm->SetOnFilter([this](const std::string& pattern) {
        FPattern = pattern;
        Dialog->RefreshFileList();
    });
}

void TSavePage::ChooseParts() {
    TOpenOptions options{ofHideReadOnly, ofNoChangeDir};
    if (OverwriteBox->Checked()) {
        options.Include(ofOverwritePrompt);
    }
    if (SizeableBox->Checked()) {
        options.Include(ofEnableSizing);
    }
    Dialog->SetOptions(options);
    Dialog->SetDefaultExt(ExtensionEdit->Text());
    Dialog->DlgItemsCaptions().SetOK(OkEdit->Text());
    Dialog->CustDlgParams().SetTopFormName(FilterBox->Checked() ? "FilterForm" : "");
    Dialog->CustDlgParams().SetBottomFormName(EventsBox->Checked() ? "VetoForm" : "");
    Dialog->ExtFilter().SetEnabled(FilterBox->Checked());
    ChoosePlacesBar(Dialog->PlacesBar(), *PlacesCombo);
}

void TSavePage::DialogIncludeFile(TObject*, const std::string& fileName, bool& include) {
    include = FPattern.empty() || PathMatchSpecA(ExtractFileName(fileName).c_str(), FPattern.c_str());
}

void TSavePage::ShareViolation(int32_t& result, const std::string& fileName) {
    VetoForm->Log().Add(ShareEvent(fileName));
    result = shareAnswers[ShareCombo->ItemIndex()];
}

// --- The tour

void TSavePage::AddTour(TTour& tour) {
    tour.Then(
        "the save page", [this] { return Showing(); },
        [this, &tour] {
            tour.Picture("8-save-page");
            OverwriteBox->SetChecked(false);
            SaveButton->Click();
        });
    tour.Then(
        "the full save dialog", [this] { return Lists(*Dialog, heldName); },
        [this] {
            TypeName(*Dialog, heldName);
            PressReturn(*Dialog);
        });
    tour.Then(
        "the file in use", [] { return VetoForm->Log().Contains(ShareEvent(heldName)); },
        [this] {
            VetoForm->NewFolderBox->SetChecked(true);
            PressToolButton(*Dialog, KxCmdNewFolder);
        });
    tour.Then(
        "the refused folder", [] { return VetoForm->Log().HasRefused("OnFolderCreating"); },
        [this] { TypeName(*Dialog, "Minutes"); });
    tour.Then(
        "the typed name", [this] { return TypedName(*Dialog) == "Minutes"; },
        [this, &tour] {
            tour.Picture("8-save");
            VetoForm->NewFolderBox->SetChecked(false);
            OverwriteBox->SetChecked(true);
            PressReturn(*Dialog);
        });
    tour.Then(
        "the end of the full save dialog", [this] { return !Dialog->Handle() && !LastResult().empty(); },
        [this, &tour] { tour.Expect("save dialog", LastResult(), Samples().Path("Minutes.txt")); });
}

} // namespace kx::gallery
