// SPDX-License-Identifier: MIT
// The page of the folder dialog.

#include "FolderPage.h"

#include "kx/win/Windows.h"

#include "EventLogForm.h"
#include "FolderChoiceForm.h"
#include "FolderVetoForm.h"
#include "SampleFiles.h"
#include "Tour.h"

namespace kx::gallery {

namespace {

/// Lines of the box of roots.
enum : int { rootSamples, rootDesktop, rootDrives, rootPersonal };

bool HoldsFiles(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &entry);
    bool found = false;
    if (search != INVALID_HANDLE_VALUE) {
        do {
            found = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
        } while (!found && FindNextFileA(search, &entry) != 0);
        FindClose(search);
    }
    return found;
}

} // namespace

const TClass& TFolderPage::StaticClass() {
    static const TClassBuilder<TFolderPage> cls("TFolderPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TFolderPage;
        c.Method("BrowseButtonClick", &T::BrowseButtonClick);
        c.Method("DialogSelectionChange", &T::DialogSelectionChange);
        c.Method("DialogCanClose", &T::DialogCanClose);
        c.Method("DialogEventHooking", &T::DialogEventHooking);
    });
    return cls.Class();
}

TFolderPage::TFolderPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

// --- The dialog

void TFolderPage::BrowseButtonClick(TObject*) {
    EventLogForm->Clear();
    ApplyTexts();
    ApplyBrowser();
    ApplyForms();
    const bool isConfirmed = Dialog->Execute();
    FLastFolder = isConfirmed ? Dialog->Folder() : std::string();
    if (!isConfirmed) {
        Report(Dialog->ClassName() + " was cancelled.");
    } else if (FLastFolder.empty()) {
        Report(Dialog->ClassName() + " returned something that is no folder of the disk.");
    } else {
        Report(Dialog->ClassName() + " returned\r\n    " + FLastFolder);
    }
}

void TFolderPage::ApplyTexts() {
    Dialog->SetTitle(TitleEdit->Text());
    Dialog->SetText(TextEdit->Text());
    Dialog->SetStatusText(StatusEdit->Text());
    Dialog->DlgItemsCaptions().SetOK(OkEdit->Text());
    Dialog->DlgItemsCaptions().SetCancel(CancelEdit->Text());
}

void TFolderPage::ApplyBrowser() {
    switch (RootCombo->ItemIndex()) {
    case rootDesktop: Dialog->SetSpecialIniFolder(ftDesktop); break;
    case rootDrives: Dialog->SetSpecialIniFolder(ftDrives); break;
    case rootPersonal: Dialog->SetSpecialIniFolder(ftPersonal); break;
    default: Dialog->SetInitialDir(Samples().Folder()); break;
    }
    TKxBrowseForFolderFlags options{ffStatusText};
    if (DisksBox->Checked()) {
        options.Include(ffReturnOnlyFSDirs);
    }
    Dialog->SetOptions(options);
    TKxBrowseForFolderFlagsEx optionsEx;
    const auto choose = [&optionsEx](const TCheckBox& box, TKxBrowseForFolderFlagEx option) {
        if (box.Checked()) {
            optionsEx.Include(option);
        }
    };
    choose(*FilesBox, ffIncludeFiles);
    choose(*NewStyleBox, ffNewDialogStyle);
    choose(*NameBox, ffEditBox);
    Dialog->SetOptionsEx(optionsEx);
}

void TFolderPage::ApplyForms() {
    TKxCustDlgParams& params = Dialog->CustDlgParams();
    params.SetRightFormName(EventsBox->Checked() ? "EventLogForm" : "");
    params.SetBottomFormName(VetoesBox->Checked() ? "FolderVetoForm" : "");
    params.SetCustomForm(FolderChoiceForm);
    params.Icon().LoadFromFile(Samples().Path("Gallery.ico"));
    FolderChoiceForm->SetOnChoose([this](const std::string& folder) { Dialog->SetSelFolder(folder); });
    FolderVetoForm->ChoiceBox->SetChecked(ChoiceBox->Checked());
    FolderVetoForm->SetOnChoiceClick(
        [this](TObject*) { Dialog->SetSelectionType(FolderVetoForm->ChoiceBox->Checked() ? stCustom : stStandard); });
    Dialog->SetSelectionType(ChoiceBox->Checked() ? stCustom : stStandard);
}

void TFolderPage::DialogSelectionChange(TObject*) {
    const std::string& folder = Dialog->SelFolder();
    EventLogForm->Add("OnSelectionChange: " + (folder.empty() ? "no folder" : ExtractFileName(folder)));
    Dialog->SetStatusText(folder);
    FolderChoiceForm->ShowChosen(folder);
    if (FolderVetoForm->EmptyBox->Checked()) {
        Dialog->SetOk(HoldsFiles(folder));
    }
}

void TFolderPage::DialogCanClose(TObject*, bool& canClose) {
    EventLogForm->Answer("OnCanClose", *FolderVetoForm->CloseBox, canClose);
}

void TFolderPage::DialogEventHooking(TObject*, TMessage& message, bool& allowDispatch) {
    if (IsMoveCommand(message)) {
        EventLogForm->Answer("OnEventHooking: move", *FolderVetoForm->MoveBox, allowDispatch);
    }
}

// --- The tour

void TFolderPage::AddTour(TTour& tour) {
    tour.Then(
        "the page of the folder dialog", [this] { return Showing(); }, [this] { BrowseButton->Click(); });
    tour.Then(
        "the folder dialog", [this] { return IsShown(*Dialog); },
        [this] {
            FolderVetoForm->CloseBox->SetChecked(true);
            Dialog->SetSelFolder(Samples().Path("Drawings"));
            ::SetFocus(FindWindowExA(Dialog->DialogWindow(), nullptr, WC_TREEVIEWA, nullptr)); // it shows the selection
            Dialog->CloseDialog(mrOk);
        });
    tour.Then(
        "the refused closing", [] { return EventLogForm->HasRefused("OnCanClose"); },
        [&tour] {
            tour.Picture("10-folder");
            FolderVetoForm->CloseBox->SetChecked(false);
            FolderVetoForm->ChoiceBox->SetChecked(true);
            FolderVetoForm->ChoiceBoxClick(FolderVetoForm->ChoiceBox);
        });
    tour.Then(
        "the form in place of the tree", [] { return FolderChoiceForm->Showing(); },
        [] { FolderChoiceForm->Choose("Letters"); });
    tour.Then(
        "the folder chosen there", [this] { return Dialog->SelFolder() == Samples().Path("Letters"); },
        [this, &tour] {
            tour.Picture("10-folder-custom");
            Dialog->CloseDialog(mrOk);
        });
    AddEndOfTour(tour);
}

void TFolderPage::AddEndOfTour(TTour& tour) {
    tour.Then(
        "the end of the folder dialog", [this] { return !Dialog->DialogWindow() && !FLastFolder.empty(); },
        [this, &tour] {
            tour.Expect("folder", FLastFolder, Samples().Path("Letters"));
            tour.Picture("10-folder-page");
            NewStyleBox->SetChecked(true);
            BrowseButton->Click();
        });
    tour.Then(
        "the folder dialog in the new style", [this] { return IsShown(*Dialog); },
        [this] { Dialog->SetSelFolder(Samples().Path("Drawings")); });
    tour.Then(
        "the folder selected there", [this] { return Dialog->SelFolder() == Samples().Path("Drawings"); },
        [this, &tour] {
            tour.Picture("10-folder-new-style");
            Dialog->CloseDialog(mrOk);
        });
    tour.Then(
        "the end of the folder dialog in the new style", [this] { return !Dialog->DialogWindow(); },
        [this, &tour] {
            tour.Expect("folder, new style", FLastFolder, Samples().Path("Drawings"));
            NewStyleBox->SetChecked(false);
        });
}

} // namespace kx::gallery
