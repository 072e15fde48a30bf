// SPDX-License-Identifier: MIT
// The page of a dialog that does not block the program.

#include "ModelessPage.h"

#include "kx/win/Windows.h"

#include "PreviewForm.h"
#include "SampleFiles.h"
#include "SamplePlaces.h"
#include "Tour.h"

namespace kx::gallery {

const TClass& TModelessPage::StaticClass() {
    static const TClassBuilder<TModelessPage> cls("TModelessPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TModelessPage;
        c.Method("ShowButtonClick", &T::ShowButtonClick);
        c.Method("NoteButtonClick", &T::NoteButtonClick);
        c.Method("DialogSelectionChange", &T::DialogSelectionChange);
        c.Method("RunnerDialogClosed", &T::RunnerDialogClosed);
    });
    return cls.Class();
}

TModelessPage::TModelessPage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    AddSamplePlaces(Dialog->PlacesBar().Places());
}

void TModelessPage::ShowButtonClick(TObject*) {
    if (Runner->Closed()) {
        PreviewForm->ShowFile({});
        Dialog->CustDlgParams().SetRightFormName(PreviewBox->Checked() ? "PreviewForm" : "");
        ChoosePlacesBar(Dialog->PlacesBar(), *PlacesCombo);
        Dialog->SetInitialDir(Samples().Folder());
        Dialog->SetFileName({});
    }
    Runner->Show();
}

void TModelessPage::NoteButtonClick(TObject*) { NotesMemo->Lines().Add(SelectedLabel->Caption()); }

void TModelessPage::DialogSelectionChange(TObject*) {
    TThread::Synchronize([this] { SelectionChanged(); });
}

void TModelessPage::SelectionChanged() {
    SelectedLabel->SetCaption(Dialog->SelectedFiles());
    NoteButton->SetEnabled(!SelectedLabel->Caption().empty());
    if (PreviewForm->IsDocked()) {
        PreviewForm->ShowSelection(*Dialog);
    }
}

void TModelessPage::RunnerDialogClosed(TObject*, bool dialogResult) {
    Report(dialogResult ? "The open dialog returned\r\n    " + Dialog->FileName() : "The open dialog was cancelled.");
    SelectedLabel->SetCaption({});
    NoteButton->SetEnabled(false);
}

// --- The tour

void TModelessPage::AddTour(TTour& tour) {
    const std::string first = "Alpine lake.bmp";
    const std::string second = "Sales by quarter.bmp";
    const auto write = [this](const char* text) {
        for (const char* c = text; *c; ++c) {
            PostMessageA(NotesMemo->Handle(), WM_CHAR, static_cast<WPARAM>(*c), 0);
        }
    };
    tour.Then(
        "the page of the modeless dialog", [this] { return Showing(); }, [this] { ShowButton->Click(); });
    tour.Then(
        "the modeless dialog", [this, first] { return Lists(*Dialog, first) && Dialog->PlacesForm(); },
        [this, first] {
            MoveDialog(*Dialog, 260, 330);
            SelectFile(*Dialog, first);
        });
    tour.Then(
        "the first file's preview",
        [this, first] { return SelectedLabel->Caption() == first && PreviewForm->ShowsPicture(); },
        [this, write] {
            NoteButton->Click();
            NotesMemo->SetFocus();
            NotesMemo->SetSelStart(static_cast<int>(NotesMemo->Text().size()));
            write("goes on page 3");
        });
    tour.Then(
        "the note", [this] { return NotesMemo->Lines().Count() == 2 && NotesMemo->Lines()[1] == "goes on page 3"; },
        [this] { ShowButton->Click(); }); // brings it to the front
    tour.Then(
        "the dialog beside the note", [this] { return IsShown(*Dialog); },
        [this, &tour, second] {
            tour.Picture("13-modeless");
            SelectFile(*Dialog, second);
        });
    tour.Then(
        "the second file", [this, second] { return SelectedLabel->Caption() == second; },
        [this] {
            NoteButton->Click();
            PreviewBox->SetChecked(false); // for the next time
            ShowButton->Click();           // brings it to the front
        });
    tour.Then(
        "the dialog in front", [this] { return NotesMemo->Lines().Count() == 3 && IsShown(*Dialog); },
        [this, &tour] {
            tour.Picture("13-modeless-second");
            PressButton(*Dialog, IDOK);
        });
    tour.Then(
        "the end of the modeless dialog", [this] { return Runner->Closed(); },
        [this, &tour, second] {
            tour.Expect("modeless dialog", Runner->DialogResult() ? Dialog->FileName() : "nothing",
                        Samples().Path(second));
        });
}

} // namespace kx::gallery
