// SPDX-License-Identifier: MIT
// What dialogs keep.

#include "Recipes.h"

namespace cookbook {

// [remember]
void RememberPerPurpose(TKxOpenDialog& drawings, TKxSaveDialog& tables) {
    drawings.SetRememberKey("Software\\Acme\\Editor\\Open drawing");
    tables.SetRememberKey("Software\\Acme\\Editor\\Save table");
}
// [remember]

// [places]
void OfferPlaces(TKxOpenDialog& dialog, const std::string& folder) {
    TKxPlacesBarOptions& bar = dialog.PlacesBar();
    bar.SetNative(false);
    bar.SetRegistryKey("Software\\Acme\\Editor\\Places");
    bar.SetAllowDelete(false); // the user may add, change and move places
    TKxPlace& place = *bar.Places().Add();
    place.SetPlaceName("Project");
    place.SetPlacePath(folder);
}
// [places]

// [recent]
void OpenRecent(TKxOpenDialogEx& dialog) {
    dialog.SetRecentCount(8);
    dialog.SetRecentRegKey("Software\\Acme\\Editor"); // reads the list
    dialog.Tabs().SetText("Folders\r\nRecent files");
    if (dialog.Execute()) {
        dialog.AddToRecent(dialog.FileName());
        dialog.SaveToRegistry();
    }
}
// [recent]

} // namespace cookbook
