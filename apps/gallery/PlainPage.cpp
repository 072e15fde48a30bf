// SPDX-License-Identifier: MIT
// The page of the dialogs as the system has them.

#include "PlainPage.h"

#include "kx/win/Windows.h"

#include "SampleFiles.h"
#include "Tour.h"

namespace kx::gallery {

const TClass& TPlainPage::StaticClass() {
    static const TClassBuilder<TPlainPage> cls("TPlainPage", TGalleryPage::StaticClass(), [](auto& c) {
        c.Method("OpenButtonClick", &TPlainPage::OpenButtonClick);
        c.Method("SaveButtonClick", &TPlainPage::SaveButtonClick);
    });
    return cls.Class();
}

TPlainPage::TPlainPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

void TPlainPage::OpenButtonClick(TObject*) { Run(*OpenDialog); }

void TPlainPage::SaveButtonClick(TObject*) { Run(*SaveDialog); }

void TPlainPage::Run(TOpenDialog& dialog) {
    TOpenOptions options;
    const auto choose = [&options](const TCheckBox& box, TOpenOption option) {
        if (box.Checked()) {
            options.Include(option);
        }
    };
    choose(*SeveralBox, ofAllowMultiSelect);
    choose(*MustExistBox, ofFileMustExist);
    choose(*OverwriteBox, ofOverwritePrompt);
    choose(*HelpBox, ofShowHelp);
    choose(*SizeableBox, ofEnableSizing);
    choose(*KeepFolderBox, ofNoChangeDir);
    if (!ReadOnlyBox->Checked()) {
        options.Include(ofHideReadOnly);
    }
    dialog.SetOptions(options);
    dialog.SetOptionsEx(PlacesBox->Checked() ? TOpenOptionsEx{} : TOpenOptionsEx{ofExNoPlacesBar});
    dialog.SetTitle(TitleEdit->Text());
    dialog.SetDefaultExt(ExtensionEdit->Text());
    RunDialog(dialog, NameEdit->Text());
}

void TPlainPage::AddTour(TTour& tour) {
    const std::string name = "Alpine lake.bmp";
    tour.Then("the plain page", {}, [this] {
        TitleEdit->SetText("Open a picture");
        OpenButton->Click();
    });
    tour.Then(
        "the plain dialog with its files", [this, name] { return Lists(*OpenDialog, name); },
        [this, name] {
            MoveDialog(*OpenDialog, 330, 280);
            SelectFile(*OpenDialog, name);
        });
    tour.Then(
        "the selected name", [this, name] { return TypedName(*OpenDialog) == name; },
        [this, &tour] {
            tour.Picture("1-plain");
            PressButton(*OpenDialog, IDOK);
        });
    tour.Then(
        "the end of the plain dialog", [this] { return !OpenDialog->Handle() && !LastResult().empty(); },
        [this, &tour, name] { tour.Expect("plain", LastResult(), Samples().Path(name)); });
}

} // namespace kx::gallery
