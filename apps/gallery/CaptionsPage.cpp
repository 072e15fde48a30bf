// SPDX-License-Identifier: MIT
// The page on which captions are replaced and standard controls hidden.

#include "CaptionsPage.h"

#include "kx/win/Windows.h"

#include "SampleFiles.h"
#include "Tour.h"

#include <array>

namespace kx::gallery {

namespace {

/// Texts to choose from, in the order of the lines of the box.
struct TTexts {
    const char* Ok;
    const char* Cancel;
    const char* Help;
    const char* LookIn;
    const char* FileName;
    const char* FileType;
    const char* ReadOnly;
};
constexpr std::array<TTexts, 4> presets{{
    {"", "", "", "", "", "", ""},
    {"&Take it", "&Leave", "&What now?", "&Where:", "&Called:", "&Kind:", "Only to loo&k at"},
    {"Ü&bernehmen", "&Zurück", "&Hilfe", "&Suchen in:", "&Dateiname:", "Datei&typ:", "&Schreibgeschützt öffnen"},
    {"&Открыть", "От&мена", "&Справка", "&Папка:", "&Имя файла:", "&Тип файлов:", "Только для &чтения"},
}};
constexpr int russian = 3;

} // namespace

const TClass& TCaptionsPage::StaticClass() {
    static const TClassBuilder<TCaptionsPage> cls("TCaptionsPage", TGalleryPage::StaticClass(), [](auto& c) {
        c.Method("TextsChange", &TCaptionsPage::TextsChange);
        c.Method("OpenButtonClick", &TCaptionsPage::OpenButtonClick);
        c.Method("SaveButtonClick", &TCaptionsPage::SaveButtonClick);
    });
    return cls.Class();
}

TCaptionsPage::TCaptionsPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

void TCaptionsPage::TextsChange(TObject*) {
    const TTexts& texts = presets.at(static_cast<size_t>(TextsCombo->ItemIndex()));
    OkEdit->SetText(texts.Ok);
    CancelEdit->SetText(texts.Cancel);
    HelpEdit->SetText(texts.Help);
    LookInEdit->SetText(texts.LookIn);
    FileNameEdit->SetText(texts.FileName);
    FileTypeEdit->SetText(texts.FileType);
    ReadOnlyEdit->SetText(texts.ReadOnly);
}

TKxOpenDlgControls TCaptionsPage::ChosenControls() const {
    TKxOpenDlgControls controls = KxAllOpenDlgControls;
    const auto choose = [&controls](const TCheckBox& box, TKxOpenDlgControl control) {
        if (!box.Checked()) {
            controls.Exclude(control);
        }
    };
    choose(*FolderComboBox, dcFolderCombo);
    choose(*FolderLabelBox, dcFolderLabel);
    choose(*ToolBarBox, dcToolBar);
    choose(*OkBox, dcOkBtn);
    choose(*CancelBox, dcCancelBtn);
    choose(*NameBox, dcFileName);
    choose(*NameLabelBox, dcFileNameLabel);
    choose(*TypeBox, dcFileType);
    choose(*TypeLabelBox, dcFileTypeLabel);
    return controls;
}

void TCaptionsPage::Run(TKxCustomOpenLiteDialog& dialog) {
    TKxOpenDlgCaptions& captions = dialog.DlgItemsCaptions();
    captions.SetOK(OkEdit->Text());
    captions.SetCancel(CancelEdit->Text());
    captions.SetHelp(HelpEdit->Text());
    captions.SetLookIn(LookInEdit->Text());
    captions.SetFileName(FileNameEdit->Text());
    captions.SetFileType(FileTypeEdit->Text());
    captions.SetReadOnlyFlag(ReadOnlyEdit->Text());
    dialog.SetVisibleControls(ChosenControls());
    RunDialog(dialog);
}

void TCaptionsPage::OpenButtonClick(TObject*) { Run(*OpenDialog); }

void TCaptionsPage::SaveButtonClick(TObject*) { Run(*SaveDialog); }

void TCaptionsPage::AddTour(TTour& tour) {
    const std::string name = "Список дел.txt";
    tour.Then("the captions page", {}, [this] {
        TextsCombo->SetItemIndex(russian);
        TextsChange(TextsCombo);
        ToolBarBox->SetChecked(false);
        OpenButton->Click();
    });
    tour.Then(
        "the dialog with other captions", [this, name] { return Lists(*OpenDialog, name); },
        [this, name] { TypeName(*OpenDialog, name); });
    tour.Then(
        "the typed name", [this, name] { return TypedName(*OpenDialog) == name; },
        [this, &tour] {
            tour.Picture("3-captions");
            PressButton(*OpenDialog, IDOK);
        });
    tour.Then(
        "the end of the dialog with other captions", [this] { return !OpenDialog->Handle() && !LastResult().empty(); },
        [this, &tour, name] { tour.Expect("captions", LastResult(), Samples().Path(name)); });
}

} // namespace kx::gallery
