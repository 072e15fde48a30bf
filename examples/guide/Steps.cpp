// SPDX-License-Identifier: MIT
// From the system's dialog to one of the program's own.

#include "Steps.h"

#include "OptionsForm.h"
#include "PreviewForm.h"
#include "kx/win/Registry.h"

#include <algorithm>
#include <array>

namespace guide {

// [step 1]
void AskForDrawings(TKxOpenDialog& dialog) {
    dialog.SetTitle("Open drawing");
    dialog.SetFilter("Drawings|*.bmp;*.ico|All files|*.*");
    dialog.SetOptions({ofFileMustExist, ofHideReadOnly, ofEnableSizing});
}
// [step 1]

// [step 2]
void DockForms(TKxOpenDialog& dialog) {
    dialog.CustDlgParams().SetRightFormName("PreviewForm");
    dialog.CustDlgParams().SetBottomFormName("OptionsForm");
}
// [step 2]

// [step 3]
void HandleEvents(TKxOpenDialog& dialog) {
    dialog.SetOnSelectionChange([&dialog](TObject*) {
        const std::string folder = IncludeTrailingPathDelimiter(dialog.SelectedFolder());
        PreviewForm->ShowFile(folder + dialog.SelectedFiles());
    });
    dialog.SetOnCanClose([&dialog](TObject*, bool& canClose) {
        canClose = PreviewForm->ShowFile(dialog.FileName()); // else the dialog stays open
        if (!canClose) {
            ShowMessage(dialog.FileName() + "\n\nThis is no drawing.");
        }
    });
    dialog.SetOnFolderCreating([](TObject*, bool& allow) { allow = false; });
}
// [step 3]

// [step 4]
void ChooseControls(TKxOpenDialog& dialog) {
    dialog.DlgItemsCaptions().SetOK("&Load");
    dialog.DlgItemsCaptions().SetFileName("&Drawing:");
    dialog.SetVisibleControls(KxAllOpenDlgControls - TKxOpenDlgControls{dcFileType, dcFileTypeLabel});
}
// [step 4]

// [step 5]
void PlaceDialog(TKxOpenDialog& dialog) {
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().PosParams().SetShiftY(-40); // pixels
    dialog.CustDlgParams().PosParams().SetFitToScreen(true);
}
// [step 5]

// [step 6]
void AddPlaces(TKxOpenDialog& dialog) {
    TKxPlacesBarOptions& bar = dialog.PlacesBar();
    bar.SetNative(false); // the library's bar in the place of the system's
    bar.SetRegistryKey("Software\\Acme\\Drawings\\Places");

    TKxPlace& documents = *bar.Places().Add();
    documents.SetPlaceSpecPath(ftPersonal);
    documents.SetAutoCaption(true); // as the system calls it
    TKxPlace& templates = *bar.Places().Add();
    templates.SetPlaceName("Templates");
    templates.SetPlacePath(ExtractFilePath(Application().ExeName()));
    for (TKxPlace* place : {&documents, &templates}) {
        place->SetPlaceIconDll("Shell32.dll");
        place->SetPlaceIcon(3);
        place->SetPlaceHotIcon(4);
    }
}
// [step 6]

// [step 7]
void AddOpenMenu(TKxOpenDialog& dialog) {
    OptionsForm->OnOpenAs = [&dialog](TObject*) { dialog.CloseDialog(mrOk); };
    dialog.SetOkButtonMenu(OptionsForm->OpenMenu);
}
// [step 7]

// [step 8]
void ChooseFiles(TKxOpenDialog& dialog) {
    dialog.ListViewStyles().SetGridLines(true);
    dialog.ListViewStyles().SetRowSelect(true);
    dialog.ListViewStyles().SetEnableDelete(false);
    dialog.ExtFilter().SetEnabled(true);
    dialog.SetOnIncludeFile([](TObject*, const std::string& fileName, bool& include) {
        include = !ExtractFileName(fileName).starts_with("~");
    });
}
// [step 8]

// [step 9]
constexpr const char* stateKey = "Software\\Acme\\Drawings";

void KeepState(TKxOpenDialog& dialog) {
    dialog.SetRememberKey(stateKey); // folder, filter, size, view style and columns
    OptionsForm->CopyBox->SetChecked(TRegIniFile(stateKey).ReadBool("Options", "Copy", false));
    dialog.SetOnClose([](TObject*) { // also when the user cancels
        TRegIniFile(stateKey).WriteBool("Options", "Copy", OptionsForm->CopyBox->Checked());
    });
}
// [step 9]

void TakeSteps(TKxOpenDialog& dialog, int count) {
    constexpr std::array steps{AskForDrawings, DockForms,   HandleEvents, ChooseControls, PlaceDialog,
                               AddPlaces,      AddOpenMenu, ChooseFiles,  KeepState};
    static_assert(steps.size() == StepCount);
    for (int i = 0; i < std::min(count, StepCount); ++i) {
        steps[static_cast<size_t>(i)](dialog);
    }
}

} // namespace guide
