// SPDX-License-Identifier: MIT
// The page of the print dialog.

#include "PrintPage.h"

#include "kx/win/Windows.h"

#include "ChoiceForm.h"
#include "Tour.h"

namespace kx::gallery {

namespace {

// Controls of the system's dialog
constexpr int propertiesButton = 1025;
constexpr int printerCombo = 1139;
constexpr int copiesEdit = 1154;

/// Lines of the box of sides
enum TSide { sdNone, sdLeft, sdTop, sdRight, sdBottom };

HWND PrinterBox(const TKxPrintDialog& dialog) { return GetDlgItem(dialog.Handle(), printerCombo); }

std::string ShownPrinter(const TKxPrintDialog& dialog) {
    char name[256] = "";
    GetWindowTextA(PrinterBox(dialog), name, sizeof(name));
    return name;
}

/// The window of the printer's properties; null when it is not open.
HWND PropertiesWindow(const TKxPrintDialog& dialog) {
    HWND popup = GetLastActivePopup(dialog.Handle());
    return popup != dialog.Handle() && IsWindowVisible(popup) ? popup : nullptr;
}

} // namespace

const TClass& TPrintPage::StaticClass() {
    static const TClassBuilder<TPrintPage> cls("TPrintPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TPrintPage;
        c.Method("PrintButtonClick", &T::PrintButtonClick);
    });
    return cls.Class();
}

TPrintPage::TPrintPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

// --- The dialog

void TPrintPage::PrintButtonClick(TObject*) {
    FResult.clear();
    ChoiceForm->Attach(*Dialog);
    ChooseParts();
    ChooseCaptions();
    const bool isConfirmed = Dialog->Execute();
    FResult = isConfirmed ? Chosen() : "nothing";
    Report(Dialog->ClassName() + (isConfirmed ? " returned " + FResult : " was cancelled."));
}

void TPrintPage::ChooseParts() {
    TPrintDialogOptions options{poWarning};
    const auto choose = [&options](const TCheckBox& box, TPrintDialogOption option) {
        if (box.Checked()) {
            options.Include(option);
        }
    };
    choose(*PagesBox, poPageNums);
    choose(*SelectionBox, poSelection);
    choose(*FileBox, poPrintToFile);
    Dialog->SetOptions(options);
    Dialog->SetTitle(TitleEdit->Text());
    const int side = SideCombo->ItemIndex();
    const auto formAt = [side](TSide wanted) { return std::string(side == wanted ? "ChoiceForm" : ""); };
    TKxCustDlgParams& params = Dialog->CustDlgParams();
    params.SetLeftFormName(formAt(sdLeft));
    params.SetTopFormName(formAt(sdTop));
    params.SetRightFormName(formAt(sdRight));
    params.SetBottomFormName(formAt(sdBottom));
}

void TPrintPage::ChooseCaptions() {
    const bool isOwn = CaptionsBox->Checked();
    const auto own = [isOwn](const char* text) { return std::string(isOwn ? text : ""); }; // empty: the system's
    TKxPrintDlgCaptions& captions = Dialog->DlgItemsCaptions();
    captions.SetOK(OkEdit->Text());
    captions.SetGroupPrinter(own("Sent to"));
    captions.SetGroupRange(own("How much"));
    captions.SetGroupCopies(own("How often"));
    captions.SetPrnProperties(own("&Set up..."));
    captions.SetRngAll(own("&Everything"));
    captions.SetCopNumber(own("&Copies:"));
}

std::string TPrintPage::Chosen() const {
    std::string text = Dialog->Printer().Device() + ", copies: " + IntToStr(Dialog->Copies());
    if (Dialog->PrintRange() == prPageNums) {
        text += ", pages " + IntToStr(Dialog->FromPage()) + " to " + IntToStr(Dialog->ToPage());
    } else if (Dialog->PrintRange() == prSelection) {
        text += ", the selection";
    }
    return Dialog->PrintToFile() ? text + ", to a file" : text;
}

// --- The tour

/// As a user who goes to the other line with the keyboard.
void TPrintPage::ChangePrinterInTour() {
    SendMessageA(PrinterBox(*Dialog), CB_SETCURSEL, SendMessageA(PrinterBox(*Dialog), CB_GETCURSEL, 0, 0) == 0 ? 1 : 0,
                 0);
    SendMessageA(Dialog->Handle(), WM_COMMAND, MAKEWPARAM(printerCombo, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(PrinterBox(*Dialog)));
}

void TPrintPage::AddTour(TTour& tour) {
    tour.Then(
        "the print page", [this] { return Showing(); },
        [this, &tour] {
            tour.Picture("12-print-page");
            PrintButton->Click();
        });
    tour.Then(
        "the print dialog", [this] { return IsShown(*Dialog); },
        [this] {
            ChoiceForm->FirstBox->SetChecked(true);
            ChangePrinterInTour();
        });
    tour.Then(
        "the refused printer", [] { return ChoiceForm->Log().HasRefused("OnPrinterChanging"); },
        [this, &tour] {
            tour.Expect("refused printer", ShownPrinter(*Dialog), Dialog->SelectedDevice());
            tour.Picture("12-print");
            ChoiceForm->FirstBox->SetChecked(false);
            ChangePrinterInTour();
        });
    tour.Then(
        "the other printer",
        [this] { return ChoiceForm->Log().Contains("OnPrinterChange: " + Dialog->SelectedDevice()); },
        [this] { PressButton(*Dialog, propertiesButton); });
    tour.Then(
        "the printer's properties", [this] { return PropertiesWindow(*Dialog) != nullptr; },
        [this, &tour] {
            tour.Picture("12-print-properties");
            PostMessageA(PropertiesWindow(*Dialog), WM_COMMAND, IDCANCEL, 0);
        });
    tour.Then(
        "the end of the properties", [] { return ChoiceForm->Log().Contains("OnPrinterSetupShow"); },
        [this, &tour] {
            SetDlgItemInt(Dialog->Handle(), copiesEdit, 3, FALSE);
            tour.Picture("12-print-copies");
            PressButton(*Dialog, IDOK);
        });
    tour.Then(
        "the end of the print dialog", [this] { return !FResult.empty(); },
        [this, &tour] { tour.Expect("print dialog", FResult, Dialog->SelectedDevice() + ", copies: 3"); });
}

} // namespace kx::gallery
