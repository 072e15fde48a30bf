// SPDX-License-Identifier: MIT
// The page of scripts and resolutions.

#include "ScriptsPage.h"

#include "NoteForm.h"
#include "SampleFiles.h"
#include "Tour.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

namespace kx::gallery {

const TClass& TScriptsPage::StaticClass() {
    static const TClassBuilder<TScriptsPage> cls("TScriptsPage", TGalleryPage::StaticClass(), [](auto& c) {
        c.Method("OpenButtonClick", &TScriptsPage::OpenButtonClick);
        c.Method("DialogSelectionChange", &TScriptsPage::DialogSelectionChange);
    });
    return cls.Class();
}

TScriptsPage::TScriptsPage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    ScaleLabel->SetCaption(Format("This screen has %s dots per inch.", {IntToStr(SystemDpi())}));
}

void TScriptsPage::OpenButtonClick(TObject*) {
    Dialog->SetTitle(TitleEdit->Text());
    Dialog->DlgItemsCaptions().SetOK(OkEdit->Text());
    Dialog->DlgItemsCaptions().SetCancel(CancelEdit->Text());
    Dialog->DlgItemsCaptions().SetFileName(NameEdit->Text());
    NoteForm->NoteMemo->SetText(NoteMemo->Text());
    NoteForm->FileLabel->SetCaption("");
    RunDialog(*Dialog);
    NoteMemo->SetText(NoteForm->NoteMemo->Text());
}

void TScriptsPage::DialogSelectionChange(TObject*) {
    NoteForm->FileLabel->SetCaption(ExtractFileName(Dialog->SelectedFiles()));
}

// --- The tour

void TScriptsPage::AddTour(TTour& tour) {
    tour.Then(
        "the page of scripts", [this] { return Showing(); },
        [this, &tour] {
            tour.Picture("14-scripts-page");
            OpenButton->Click();
        });
    tour.Then(
        "the dialog in other scripts", [this] { return Lists(*Dialog, "City at night.bmp"); },
        [this] {
            NoteForm->NoteMemo->SetText("");
            NoteForm->NoteMemo->SetFocus();
            for (const wchar_t unit :
                 std::wstring(L"\u041F\u0440\u0438\u0432\u0435\u0442, \u03BA\u03CC\u03C3\u03BC\u03B5!")) {
                PostMessageW(NoteForm->NoteMemo->Handle(), WM_CHAR, unit, 0);
            }
            SelectFile(*Dialog, "City at night.bmp");
        });
    tour.Then(
        "the note", [] { return NoteForm->NoteMemo->Text().ends_with("!") && !NoteForm->FileLabel->Caption().empty(); },
        [this, &tour] {
            tour.Picture("14-scripts");
            PressReturn(*Dialog);
        });
    tour.Then(
        "the end of the dialog in other scripts", [this] { return !Dialog->Handle() && !LastResult().empty(); },
        [this, &tour] {
            tour.Expect("scripts", LastResult() + " " + NoteMemo->Text(),
                        Samples().Path("City at night.bmp") +
                            " \u041F\u0440\u0438\u0432\u0435\u0442, \u03BA\u03CC\u03C3\u03BC\u03B5!");
        });
}

} // namespace kx::gallery
