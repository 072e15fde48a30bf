// SPDX-License-Identifier: MIT
// Fixture of the full open dialog.

#include "OpenDialogTest.h"

#include <algorithm>

namespace kx::test {

TKxPlace& TOpenDialogTest::AddPlace(const std::string& caption, const std::string& path) {
    TKxPlace& place = *Dialog.PlacesBar().Places().Add();
    place.SetPlaceName(caption);
    place.SetPlacePath(path);
    place.SetPlaceIconDll("Shell32.dll");
    place.SetPlaceIcon(3);
    place.SetPlaceHotIcon(4);
    return place;
}

TKxPlaceButton& TOpenDialogTest::PlaceButton(int index) const {
    return dynamic_cast<TKxPlaceButton&>(*Dialog.PlacesForm()->ToolBar1->Buttons(index));
}

std::vector<std::string> TOpenDialogTest::ShownPlaces() const {
    std::vector<std::string> captions;
    for (int i = 0; i < Dialog.PlacesForm()->ToolBar1->ButtonCount(); ++i) {
        captions.push_back(PlaceButton(i).Caption());
    }
    return captions;
}

int TOpenDialogTest::PlaceDown() const {
    for (int i = 0; i < Dialog.PlacesForm()->ToolBar1->ButtonCount(); ++i) {
        if (PlaceButton(i).Down()) {
            return i;
        }
    }
    return -1;
}

TCondition TOpenDialogTest::Lists(std::vector<std::string> names) const {
    std::sort(names.begin(), names.end());
    return [this, names] {
        std::vector<std::string> listed = ListedNames();
        std::sort(listed.begin(), listed.end());
        return listed == names;
    };
}

} // namespace kx::test
