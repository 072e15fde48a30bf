// SPDX-License-Identifier: MIT
// The page of the colour dialog.

#include "ColorPage.h"

#include "kx/win/Windows.h"

#include "ChoiceForm.h"
#include "Tour.h"

namespace kx::gallery {

namespace {

// Controls of the system's dialog
constexpr int redEdit = 706;
constexpr int greenEdit = 707;
constexpr int blueEdit = 708;
constexpr int addButton = 712;
constexpr int defineButton = 719;

/// The grey that is as light as the colour.
TColor GrayOf(TColor color) {
    const COLORREF rgb = ColorToRGB(color);
    const int light = (GetRValue(rgb) * 30 + GetGValue(rgb) * 59 + GetBValue(rgb) * 11) / 100;
    return static_cast<TColor>(light * 0x010101);
}

} // namespace

const TClass& TColorPage::StaticClass() {
    static const TClassBuilder<TColorPage> cls("TColorPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TColorPage;
        c.Method("ChooseButtonClick", &T::ChooseButtonClick);
    });
    return cls.Class();
}

TColorPage::TColorPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

// --- The dialog

void TColorPage::ChooseButtonClick(TObject*) {
    FResult.clear();
    ChoiceForm->Attach(*Dialog);
    if (GrayBox->Checked()) {
        const TKxColorQueryEvent log = Dialog->OnCustomColorAdding();
        Dialog->SetOnCustomColorAdding([log](TObject* sender, TColor& color, bool& allow) {
            log(sender, color, allow);
            color = GrayOf(color);
        });
    }
    TColorDialogOptions options{cdAnyColor};
    if (FullBox->Checked()) {
        options.Include(cdFullOpen);
    }
    if (PreventBox->Checked()) {
        options.Include(cdPreventFullOpen);
    }
    Dialog->SetOptions(options);
    Dialog->SetTitle(TitleEdit->Text());
    Dialog->DlgItemsCaptions().SetDefineCustomColor(DefineEdit->Text());
    Dialog->DlgItemsCaptions().SetAddCustomColor(AddEdit->Text());
    Dialog->CustDlgParams().SetBottomFormName(EventsBox->Checked() ? "ChoiceForm" : "");
    Dialog->SetColor(SwatchPanel->Color());
    const bool isConfirmed = Dialog->Execute();
    if (isConfirmed) {
        SwatchPanel->SetColor(Dialog->Color());
    }
    FResult = isConfirmed ? ColorToString(Dialog->Color()) : "nothing";
    Report(Dialog->ClassName() + (isConfirmed ? " returned " + FResult : " was cancelled."));
}

// --- The tour

void TColorPage::AddTour(TTour& tour) {
    tour.Then(
        "the colour page", [this] { return Showing(); },
        [this, &tour] {
            tour.Picture("11-color-page");
            ChooseButton->Click();
        });
    tour.Then(
        "the colour dialog", [this] { return IsShown(*Dialog); },
        [this] {
            ChoiceForm->FirstBox->SetChecked(true);
            PressButton(*Dialog, defineButton);
        });
    tour.Then(
        "the refused full part", [] { return ChoiceForm->Log().HasRefused("OnFullOpening"); },
        [this, &tour] {
            tour.Picture("11-color");
            ChoiceForm->FirstBox->SetChecked(false);
            PressButton(*Dialog, defineButton);
        });
    tour.Then(
        "the full part", [] { return ChoiceForm->Log().Contains("OnFullOpen"); },
        [this] {
            SetDlgItemInt(Dialog->Handle(), redEdit, 200, FALSE);
            SetDlgItemInt(Dialog->Handle(), greenEdit, 100, FALSE);
            SetDlgItemInt(Dialog->Handle(), blueEdit, 0, FALSE);
            PressButton(*Dialog, addButton);
        });
    tour.Then(
        "the added colour", [] { return ChoiceForm->Log().Contains("OnCustomColorAdd: $000064C8"); },
        [this, &tour] {
            tour.Picture("11-color-full");
            PressButton(*Dialog, IDOK);
        });
    tour.Then(
        "the end of the colour dialog", [this] { return !FResult.empty(); },
        [this, &tour] {
            tour.Picture("11-color-result");
            tour.Expect("color dialog", FResult, "$00777777"); // the grey in the place of the colour
        });
}

} // namespace kx::gallery
