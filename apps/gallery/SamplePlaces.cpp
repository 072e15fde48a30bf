// SPDX-License-Identifier: MIT
// Makes the places of the sample places bars.

#include "SamplePlaces.h"

#include "SampleFiles.h"
#include "kx/ui/forms/Forms.h"

namespace kx::gallery {

void AddSamplePlaces(TKxPlaces& places) {
    struct TSamplePlace {
        const char* Caption;
        const char* Hint;
        std::string Path;
        TKxSpecShellFolder Folder; ///< Where there is no path.
        std::string IconFile;
        int Icon;
    };
    const std::string program = Application().ExeName();
    const std::string shell = "Shell32.dll";
    places.Clear();
    for (const TSamplePlace& sample :
         {TSamplePlace{"Samples", "All samples", Samples().Folder(), ftNone, program, 0},
          TSamplePlace{"Drawings", "A folder", Samples().Path("Drawings"), ftNone, program, 1},
          TSamplePlace{"Alpine lake", "A file: its folder, and its name", Samples().Path("Alpine lake.bmp"), ftNone,
                       program, 2},
          TSamplePlace{"Documents", "A special folder of the shell", {}, ftPersonal, program, 3},
          TSamplePlace{"Desktop", "Picked in the folder box", {}, ftDesktop, shell, 34},
          TSamplePlace{"Computer", "Picked in the folder box", {}, ftDrives, shell, 15}}) {
        TKxPlace& place = *places.Add();
        place.SetPlaceName(sample.Caption);
        place.SetPlaceDesc(sample.Hint);
        place.SetPlacePath(sample.Path);
        place.SetPlaceSpecPath(sample.Folder);
        place.SetPlaceIconDll(sample.IconFile);
        place.SetPlaceIcon(sample.Icon);
        place.SetPlaceHotIcon(sample.Icon);
    }
}

void ChoosePlacesBar(TKxPlacesBarOptions& bar, const TComboBox& choice) {
    enum TBarChoice { bcNone, bcSystem };
    bar.SetVisible(choice.ItemIndex() != bcNone);
    bar.SetNative(choice.ItemIndex() == bcSystem);
}

} // namespace kx::gallery
