// SPDX-License-Identifier: MIT
// The page on which the steps of the user are told, and refused.

#include "NavigationPage.h"

#include "kx/win/Windows.h"

#include "EventLogForm.h"
#include "SampleFiles.h"
#include "Tour.h"

namespace kx::gallery {

namespace {

// Commands of the buttons in the dialog's tool bar
constexpr int upLevelButton = 40961;
constexpr int newFolderButton = 40962;
constexpr int desktopButton = 40965;

} // namespace

const TClass& TNavigationPage::StaticClass() {
    static const TClassBuilder<TNavigationPage> cls("TNavigationPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TNavigationPage;
        c.Method("OpenButtonClick", &T::OpenButtonClick);
        c.Method("DialogCanClose", &T::DialogCanClose);
        c.Method("DialogFolderChange", &T::DialogFolderChange);
        c.Method("DialogSelectionChange", &T::DialogSelectionChange);
        c.Method("DialogDesktopNavigate", &T::DialogDesktopNavigate);
        c.Method("DialogDesktopNavigating", &T::DialogDesktopNavigating);
        c.Method("DialogUpLevelNavigate", &T::DialogUpLevelNavigate);
        c.Method("DialogUpLevelNavigating", &T::DialogUpLevelNavigating);
        c.Method("DialogLastFolderNavigate", &T::DialogLastFolderNavigate);
        c.Method("DialogLastFolderNavigating", &T::DialogLastFolderNavigating);
        c.Method("DialogFolderCreating", &T::DialogFolderCreating);
        c.Method("DialogFilenameChange", &T::DialogFilenameChange);
        c.Method("DialogFilenameEntering", &T::DialogFilenameEntering);
        c.Method("DialogEventHook", &T::DialogEventHook);
        c.Method("DialogEventHooking", &T::DialogEventHooking);
    });
    return cls.Class();
}

TNavigationPage::TNavigationPage(TComponent* owner) : TGalleryPage(owner) { InitForm(*this, StaticClass()); }

void TNavigationPage::OpenButtonClick(TObject*) {
    EventLogForm->Clear();
    FMessageCount = 0;
    RunDialog(*Dialog);
    EventList->Items().Assign(&EventLogForm->Events());
    if (CountBox->Checked()) {
        Report("    " + IntToStr(FMessageCount) + " messages");
    }
}

void TNavigationPage::Log(const std::string& event) { EventLogForm->Add(event); }

void TNavigationPage::DialogCanClose(TObject*, bool& canClose) {
    EventLogForm->Answer("OnCanClose", *CloseBox, canClose);
}

void TNavigationPage::DialogFolderChange(TObject*) {
    Log("OnFolderChange: " + ExtractFileName(ExcludeTrailingPathDelimiter(Dialog->SelectedFolder())));
}

void TNavigationPage::DialogSelectionChange(TObject*) { Log("OnSelectionChange: " + Dialog->SelectedFiles()); }

void TNavigationPage::DialogDesktopNavigate(TObject*) { Log("OnDesktopNavigate"); }

void TNavigationPage::DialogDesktopNavigating(TObject*, bool& allow) {
    EventLogForm->Answer("OnDesktopNavigating", *DesktopBox, allow);
}

void TNavigationPage::DialogUpLevelNavigate(TObject*) { Log("OnUpLevelNavigate"); }

void TNavigationPage::DialogUpLevelNavigating(TObject*, bool& allow) {
    EventLogForm->Answer("OnUpLevelNavigating", *UpLevelBox, allow);
}

void TNavigationPage::DialogLastFolderNavigate(TObject*) { Log("OnLastFolderNavigate"); }

void TNavigationPage::DialogLastFolderNavigating(TObject*, bool& allow) {
    EventLogForm->Answer("OnLastFolderNavigating", *LastFolderBox, allow);
}

void TNavigationPage::DialogFolderCreating(TObject*, bool& allow) {
    EventLogForm->Answer("OnFolderCreating", *NewFolderBox, allow);
}

void TNavigationPage::DialogFilenameChange(TObject*) { Log("OnFilenameChange: " + Dialog->FilenameText()); }

void TNavigationPage::DialogFilenameEntering(TObject*, bool& allow) {
    EventLogForm->Answer("OnFilenameEntering", *NameBox, allow);
}

void TNavigationPage::DialogEventHook(TMessage&) { ++FMessageCount; }

void TNavigationPage::DialogEventHooking(TObject*, TMessage& message, bool& allow) {
    if (IsMoveCommand(message)) {
        EventLogForm->Answer("OnEventHooking: move", *PinBox, allow);
    }
}

void TNavigationPage::AddTour(TTour& tour) {
    const std::string name = "注文書.txt";
    const auto hasRefused = [](const char* event) { return EventLogForm->HasRefused(event); };

    tour.Then("the navigation page", {}, [this] {
        UpLevelBox->SetChecked(true);
        NewFolderBox->SetChecked(true);
        PinBox->SetChecked(true);
        OpenButton->Click();
    });
    tour.Then(
        "the dialog with its log", [this] { return Lists(*Dialog, "Müller & Söhne"); },
        [this] {
            SendMessageA(Dialog->DialogWindow(), WM_SYSCOMMAND, SC_MOVE, 0);
            PressToolButton(*Dialog, newFolderButton);
            Dialog->SetSelectedFolder(Samples().Path("Müller & Söhne"));
        });
    tour.Then(
        "the folder with umlauts", [this] { return Lists(*Dialog, "Angebot für Türen.txt"); },
        [this] { PressToolButton(*Dialog, upLevelButton); });
    tour.Then(
        "the refusals",
        [hasRefused] {
            return hasRefused("OnEventHooking: move") && hasRefused("OnFolderCreating") &&
                   hasRefused("OnUpLevelNavigating");
        },
        [this, &tour] {
            tour.Picture("4-navigation");
            UpLevelBox->SetChecked(false);
            PressToolButton(*Dialog, upLevelButton);
        });
    tour.Then(
        "the folder above", [this] { return ShowsFolder(*Dialog, Samples().Folder()); },
        [this] { PressToolButton(*Dialog, desktopButton); });
    tour.Then(
        "the desktop", [this] { return EventLogForm->Contains("OnDesktopNavigate") && IsShown(*Dialog); },
        [this] { Dialog->SetSelectedFolder(Samples().Path("Letters")); });
    tour.Then(
        "the letters", [this, name] { return Lists(*Dialog, name); },
        [this, name] {
            NameBox->SetChecked(true);
            TypeName(*Dialog, name);
            PressReturn(*Dialog);
        });
    tour.Then(
        "the refused name", [hasRefused] { return hasRefused("OnFilenameEntering"); },
        [this] {
            NameBox->SetChecked(false);
            CloseBox->SetChecked(true);
            PressReturn(*Dialog);
        });
    tour.Then(
        "the refused end", [hasRefused] { return hasRefused("OnCanClose"); },
        [this] {
            CloseBox->SetChecked(false);
            PressReturn(*Dialog);
        });
    tour.Then(
        "the end of the dialog with its log", [this] { return !Dialog->Handle() && !LastResult().empty(); },
        [this, &tour, name] { tour.Expect("navigation", LastResult(), Samples().Path("Letters\\" + name)); });
}

} // namespace kx::gallery
