// SPDX-License-Identifier: MIT
// The form in the place of the file list.

#include "ChoiceForm.h"

namespace kx::gallery {

const TClass& TChoiceForm::StaticClass() {
    static const TClassBuilder<TChoiceForm> cls("TChoiceForm", TForm::StaticClass());
    return cls.Class();
}

TChoiceForm::TChoiceForm(TComponent* owner) : TForm(owner) {
    InitForm(*this, StaticClass());
    FLog = NewForm<TEventLogForm>(this);
    FLog->SetAlign(alClient);
    FLog->SetParent(LogPanel);
    FLog->Show();
    FWidth = Width();
    FHeight = Height();
}

void TChoiceForm::Begin(const std::string& first, const std::string& second) {
    FLog->Clear();
    SetBounds(Left(), Top(), FWidth, FHeight); // the dialog of before gave it another size
    FirstBox->SetCaption(first);
    SecondBox->SetCaption(second);
}

void TChoiceForm::Attach(TKxColorDialog& dialog) {
    Begin("Opening the &full part", "&Adding a colour");
    dialog.SetOnFullOpening([this](TObject*, bool& allow) { FLog->Answer("OnFullOpening", *FirstBox, allow); });
    dialog.SetOnFullOpen([this](TObject*) { FLog->Add("OnFullOpen"); });
    dialog.SetOnCustomColorAdding([this](TObject*, TColor& color, bool& allow) {
        FLog->Answer("OnCustomColorAdding: " + ColorToString(color), *SecondBox, allow);
    });
    dialog.SetOnCustomColorAdd(
        [this](TObject*, TColor color) { FLog->Add("OnCustomColorAdd: " + ColorToString(color)); });
    dialog.SetOnCanClose([this](TObject*, bool& allow) { FLog->Answer("OnCanClose", *CloseBox, allow); });
}

void TChoiceForm::Attach(TKxPrintDialog& dialog) {
    Begin("&Another printer", "Its p&roperties");
    dialog.SetOnPrinterChanging([this](TObject*, bool& allow) { FLog->Answer("OnPrinterChanging", *FirstBox, allow); });
    dialog.SetOnPrinterChange([this, &dialog](TObject*) { FLog->Add("OnPrinterChange: " + dialog.SelectedDevice()); });
    dialog.SetOnPrinterSetupShowing(
        [this](TObject*, bool& allow) { FLog->Answer("OnPrinterSetupShowing", *SecondBox, allow); });
    dialog.SetOnPrinterSetupShow([this](TObject*) { FLog->Add("OnPrinterSetupShow"); });
    dialog.SetOnCopiesChange([this](TObject*) { FLog->Add("OnCopiesChange"); });
    dialog.SetOnCanClose([this](TObject*, bool& allow) { FLog->Answer("OnCanClose", *CloseBox, allow); });
}

} // namespace kx::gallery
