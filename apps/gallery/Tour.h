// SPDX-License-Identifier: MIT
#pragma once

#include "support/DialogDriver.h"
#include "support/WindowTools.h"

#include <string>

namespace kx {
class TToolBar;
} // namespace kx

namespace kx::gallery {

using namespace kx::test;

/// The gallery's walk through its own pages. A step may open a dialog: the next steps then run inside that dialog.
class TTour : public TDialogDriver {
public:
    /// `folder` receives the pictures; it is made if it is not there.
    explicit TTour(const std::string& folder);

    /// Runs the application and the steps, and ends it. False when a step was not done, or a result was not the
    /// expected one.
    bool Walk();

    /// Writes name.png into the folder: the main window with the dialog in front of it, once all is painted.
    void Picture(const std::string& name);
    /// Prints "page: result", and that it is wrong when it is not the expected one.
    void Expect(const std::string& page, const std::string& result, const std::string& expected);

protected:
    std::string PicturePath() const override { return FFolder + "failed.png"; }

private:
    std::string FFolder;
    bool FFailed = false;
};

/// Prints a line on standard output, in UTF-8.
void PrintLine(const std::string& line);

void PressButton(const TCommonDialog& dialog, int id);

// --- The running file dialog, as a user sees it. `dialog` is shown.

bool Lists(const TOpenDialog& dialog, const std::string& name);
void SelectFile(const TOpenDialog& dialog, const std::string& name); ///< In the file list.
void TypeName(const TOpenDialog& dialog, const std::string& name);   ///< Into the file name control.
std::string TypedName(const TOpenDialog& dialog);
void PressReturn(const TOpenDialog& dialog); ///< The focus stays where it is.
/// Moves the dialog to a place inside the main window, in pixels from its corner.
void MoveDialog(const TOpenDialog& dialog, int x, int y);
void PressToolButton(const TOpenDialog& dialog, int command); ///< Of the dialog's tool bar.

// --- Controls of the library

void ClickToolButton(TToolBar& bar, const std::string& caption); ///< By messages of the mouse, which wait in the queue.
void ChooseLastInMenu();

} // namespace kx::gallery
