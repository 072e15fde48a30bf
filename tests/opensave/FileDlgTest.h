// SPDX-License-Identifier: MIT
#pragma once

#include "kx/opensave/KxOpenLite.h"
#include "tests/support/DialogTest.h"
#include "tests/support/Texts.h"

#include <string>
#include <vector>

namespace kx::test {

/// A form for docking: of one colour, framed and crossed from corner to corner, so that a picture shows whether all of
/// it is there.
class TMarkedForm : public TForm {
public:
    TMarkedForm(TComponent* owner, TColor color, int width, int height);

protected:
    void Paint() override;
};

/// A marked form that docking finds by its name, "previewform" in any letter case.
class TPreviewForm : public TMarkedForm {
    KX_CLASS()

    explicit TPreviewForm(TComponent* owner) : TMarkedForm(owner, clSkyBlue, 130, 90) {}
};

TFormPtr MakeMarkedForm(TColor color, int width, int height);

HWND NavigationBarOf(const TKxFileDlgCore& dialog);
HWND PlacesBarOf(const TKxFileDlgCore& dialog);
HWND ListOf(const TKxFileDlgCore& dialog);
/// Sends a command of the navigation tool bar as a click on its button does.
void PressToolButton(const TKxFileDlgCore& dialog, WORD command);

/// Steps that drag the lower right corner of the dialog by so many pixels.
std::vector<TStep> DragCorner(const TKxFileDlgCore& dialog, int dx, int dy);

/// Has every event of the navigation bar and the file name noted in `log`, which outlives the dialog's running; `veto`
/// names the query that says no. `sender` is the dialog component.
void LogNavigation(TKxFileDlgCore& dialog, const TObject& sender, std::vector<std::string>& log,
                   const std::string& veto = {});

/// Every visible part of the dialog lies inside its client area, none overlaps a docked form, and all is painted.
void ExpectCleanLayout(const TKxFileDlgCore& dialog);

/// A folder with two text files and a folder, for dialogs of files.
class TFileDlgTest : public TDialogTest {
protected:
    TFileDlgTest();

    /// A new dialog, owned by `Owner`, that starts in the folder.
    template <class T = TKxOpenLiteDialog> T& NewDialog() {
        auto* dialog = new T(Owner.get());
        dialog->SetInitialDir(Folder.Path());
        return *dialog;
    }

    TTempFolder Folder{"lite"};
};

} // namespace kx::test
