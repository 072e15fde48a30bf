// SPDX-License-Identifier: MIT
#pragma once

#include "FileDlgTest.h"

#include "kx/opensave/KxOpenDlg.h"
#include "kx/places/KxPlacesBar.h"

namespace kx::test {

/// A full open dialog.
class TOpenDialogTest : public TFileDlgTest {
protected:
    /// Has the dialog show the library's places bar.
    void ShowPlaces() { Dialog.PlacesBar().SetNative(false); }
    TKxPlace& AddPlace(const std::string& caption, const std::string& path = {});
    TKxPlaceButton& PlaceButton(int index) const;
    /// Clicks a place of the bar with the mouse.
    void ClickPlace(int index) const { ClickAt(PlaceButton(index).ClientToScreen({40, 20})); }
    /// The captions of the places on the bar.
    std::vector<std::string> ShownPlaces() const;
    /// The place that is down; -1: none.
    int PlaceDown() const;

    HWND List() const { return ListOf(Dialog); }
    std::vector<std::string> ListedNames() const { return ItemTexts(List()); }
    TCondition Lists(std::vector<std::string> names) const;
    /// Gives the file list the focus, as a click does.
    void FocusList() const { SetFocus(List()); }

    TKxOpenDialog& Dialog = NewDialog<TKxOpenDialog>();
};

} // namespace kx::test
