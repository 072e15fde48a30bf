// SPDX-License-Identifier: MIT
// The main window: the list of pages, the page, and what the dialogs returned.

#include "GalleryForm.h"

#include "Tour.h"

namespace kx::gallery {

const TClass& TGalleryForm::StaticClass() {
    static const TClassBuilder<TGalleryForm> cls("TGalleryForm", TForm::StaticClass(), [](auto& c) {
        c.Method("PageListChange", &TGalleryForm::PageListChange);
    });
    return cls.Class();
}

TGalleryForm::TGalleryForm(TComponent* owner) : TForm(owner) {
    InitForm(*this, StaticClass());
    FPages = CreatePages(this);
    for (TGalleryPage* page : FPages) {
        page->SetOnReport([this](const std::string& text) { Report(text); });
        page->Hide();
        page->SetAlign(alClient);
        page->SetParent(PagePanel);
        PageList->Add(page->Caption());
    }
    PageList->SetItemIndex(0);
}

void TGalleryForm::PageListChange(TObject*) {
    TGalleryPage* page = FPages.at(static_cast<size_t>(PageList->ItemIndex()));
    TitleLabel->SetCaption(page->Caption());
    HintLabel->SetCaption(page->Hint());
    page->Show();
    if (FPage) {
        FPage->Hide();
    }
    FPage = page;
}

void TGalleryForm::Report(const std::string& text) { OutputMemo->Lines().Add(text); }

void TGalleryForm::AddTour(TTour& tour) {
    for (size_t i = 0; i < FPages.size(); ++i) {
        tour.Then(
            "the main window", [this] { return Showing(); },
            [this, i] { PageList->SetItemIndex(static_cast<int>(i)); });
        FPages[i]->AddTour(tour);
    }
}

} // namespace kx::gallery
