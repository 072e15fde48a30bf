// SPDX-License-Identifier: MIT
#pragma once

#include "kx/places/KxPlaces.h"
#include "kx/places/KxPlacesBar.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ExtCtrls.h"

#include <string>
#include <vector>

namespace kx {

/// The file dialog that a places bar is in, as far as the bar needs it.
class IKxPlacesHost {
public:
    virtual HWND GetCommonDialogHandle() const = 0; ///< The system's dialog window.
    virtual std::string GetSelPath() const = 0;     ///< The shown folder.
    virtual void SetSelPath(const std::string& path) = 0;
    virtual void SetFNameText(const std::string& text) = 0; ///< Of the file name control.

protected:
    ~IKxPlacesHost() = default;
};

/// The library's own places bar: a column of buttons that scrolls. A click on a button navigates the dialog to its
/// place, a menu deletes a place or opens its properties, and files and folders dropped on the bar become places. All
/// of this changes the collection of places at once.
///
/// The dialog makes the form, puts it into its window, sets what the application allows, hands itself and its places
/// over and has these make their buttons (`TKxPlaces::UpdatePlacesOn`).
class TKxPlacesBarFrm : public TForm, public IKxPlacesBar {
    KX_CLASS()

    explicit TKxPlacesBarFrm(TComponent* owner = nullptr);

    KX_FIELDS(TKxPlacesBarFrm, (TPopupMenu, pop1), (TMenuItem, Deleteplace1, Changeplace1), (TPanel, Panel1),
              (TPageScroller, ps1), (TToolBar, ToolBar1))

    /// Not owned: whoever frees the dialog frees the form before, or sets null. The same holds for the places.
    IKxPlacesHost* Dialog() const { return FDialog; }
    void SetDialog(IKxPlacesHost* value) { FDialog = value; }
    TKxPlaces* Places() const override { return FPlaces; }
    void SetPlaces(TKxPlaces* value) { FPlaces = value; }

    void FormCreate(TObject* sender);
    void ToolBar1CustomDrawButton(TToolBar* sender, TToolButton* button, TCustomDrawState state, bool& defaultDraw);
    /// Navigates the dialog to the place at `index`; for a place that is a file, to its folder, with its name in the
    /// file name control. Does nothing without a dialog, and for a path that is not there.
    /// @throws EListError when there is no such place.
    void OnFolderClick(int index) override;
    void Deleteplace1Click(TObject* sender);
    void Changeplace1Click(TObject* sender);
    /// Files and folders were dropped on the bar: asks for a place for each.
    void WMDropFiles(TMessage& message);

    void WndProc(TMessage& message) override;

private:
    TKxPlaceButton* ButtonOfMenu() const;
    void OpenInLookIn(TKxSpecShellFolder folder);
    void OpenSpecialFolder(TKxSpecShellFolder folder);
    void OpenPath(int index, const std::string& path);
    void AddDropped(const std::vector<std::string>& names);

    IKxPlacesHost* FDialog = nullptr;
    TKxPlaces* FPlaces = nullptr;
};

} // namespace kx
