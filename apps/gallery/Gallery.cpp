// SPDX-License-Identifier: MIT
// gallery                 shows what the library can do
// gallery --tour FOLDER   walks through all pages, leaves pictures in FOLDER, prints what the dialogs returned, and
//                         fails when that is not what was chosen

#include "AccessForm.h"
#include "ChoiceForm.h"
#include "EventLogForm.h"
#include "FavouritesForm.h"
#include "FilterForm.h"
#include "FolderChoiceForm.h"
#include "FolderVetoForm.h"
#include "GalleryForm.h"
#include "KindsForm.h"
#include "NoteForm.h"
#include "PreviewForm.h"
#include "ReferenceForm.h"
#include "SampleFiles.h"
#include "Tour.h"
#include "VetoForm.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Windows.h"

#include <cstdlib>
#include <string_view>

namespace kx::gallery {

namespace {

constexpr int usageError = 2;

void CreateForms(TGalleryForm*& mainForm) {
    RegisterClasses<TPanel, TLabel, TGroupBox, TButton, TMenuItem, TToolButton>();
    TApplication& application = Application();
    application.Initialize();
    application.SetTitle("Gallery");
    application.Icon().LoadFromFile(Samples().Path("Gallery.ico"));
    application.CreateForm(&mainForm);
    application.CreateForm(&FavouritesForm);
    application.CreateForm(&FilterForm);
    application.CreateForm(&PreviewForm);
    application.CreateForm(&AccessForm);
    application.CreateForm(&EventLogForm);
    application.CreateForm(&ReferenceForm);
    application.CreateForm(&KindsForm);
    application.CreateForm(&VetoForm);
    application.CreateForm(&FolderVetoForm);
    application.CreateForm(&FolderChoiceForm);
    application.CreateForm(&ChoiceForm);
    application.CreateForm(&NoteForm);
    FavouritesForm->Add("Samples", Samples().Folder());
    for (const char* folder : {"Drawings", "Letters", "Müller & Söhne", "Чертежи"}) {
        FavouritesForm->Add(folder, Samples().Path(folder));
    }
}

int Run(const char* tourFolder) {
    TGalleryForm* mainForm = nullptr;
    CreateForms(mainForm);
    if (!tourFolder) {
        Application().Run();
        return EXIT_SUCCESS;
    }
    mainForm->SetPosition(poDesigned);
    const auto place = [mainForm](int length) { return mainForm->ScaleLength(length); };
    mainForm->SetBounds(place(50), place(60), place(1180), place(900));
    TTour tour(tourFolder);
    mainForm->AddTour(tour);
    return tour.Walk() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

} // namespace kx::gallery

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    using namespace kx;
    using namespace kx::gallery;
    const bool isTour = __argc == 3 && std::string_view(__argv[1]) == "--tour";
    if (__argc != 1 && !isTour) {
        PrintLine("usage: gallery [--tour FOLDER]");
        return usageError;
    }
    try {
        return gallery::Run(isTour ? __argv[2] : nullptr);
    } catch (const std::exception& e) {
        PrintLine(std::string("gallery: ") + e.what());
        Application().ShowException(e);
        return EXIT_FAILURE;
    }
}
