// SPDX-License-Identifier: MIT
#pragma once

#include "kx/frame/KxDlgParams.h"
#include "kx/frame/KxShellDefs.h"
#include "kx/opensave/KxFileDlgControls.h"

#include <string>
#include <string_view>

namespace kx {

/// What a WM_COMMAND of the dialog window means to the library.
enum class TKxFileDlgCommand : uint8_t { Other, Ok, NewFolder, Desktop, UpLevel, LastFolder, FileNameChanged };

/// The window of a running system file dialog, not owned, and what can be read from it and done to it. For a null
/// window everything reads as empty and nothing is done.
class TKxFileDlgWindow {
public:
    explicit TKxFileDlgWindow(HWND dialog) : FDialog(dialog) {}

    HWND Item(int controlId) const;

    // --- File name control

    /// The classic edit or the newer combo box, whichever the dialog has.
    HWND GetEdit() const;
    int GetEditCtrlId() const; ///< 1152 or 1148; 1152 for a null window.
    bool EditHasFocus() const; ///< The control, or the edit inside it.
    std::string GetFNameText() const;
    void SetFNameText(const std::string& text) const;

    // --- Selection and folder

    std::string GetSelFiles() const; ///< As the file name control shows it: several names each in double quotes.
    std::string GetSelPath() const;
    unique_pidl GetSelPathPidl() const;
    /// Navigates to `path` by way of the file name control, whose text is put back afterwards. Does nothing when `path`
    /// is no existing directory.
    void SetSelPath(const std::string& path) const;
    /// Has the system read the shown folder again. The file name is left as it was, the selection is lost.
    void RefreshFileList() const;

    HWND GetDVHandle() const;     ///< The shell view; null before the system has made it.
    HWND GetLVHandle() const;     ///< The file list inside the shell view.
    HWND ListPlaceholder() const; ///< The control whose place the file list takes.

    // --- Controls

    /// Shows or hides every standard control but the file list. Nothing is laid out again.
    void ShowControls(TKxOpenDlgControls visible) const;
    /// Shows the file list in that size, or hides it and takes the focus from it.
    void ShowFileList(bool show, int width, int height) const;
    void SetTitle(std::string_view text) const; ///< At most 511 bytes of it.

    /// The controls make a few pixels too much room, and so may reach under a docked form: keeps them from painting
    /// over it.
    void ClipUnderForms() const;

    // --- Geometry, in pixels

    /// Left and top of the file list's place in client coordinates; Right and Bottom are its width and height, each
    /// with the system's frame metric added.
    TRect SelectionRect() const;
    /// Moves the controls below the file list and the forms docked right and bottom when the file name control overlaps
    /// the list.
    void PushLowerControls(const TKxCustDlgParams& params) const;

    /// The first match in a fixed order decides.
    TKxFileDlgCommand CommandOf(const TMessage& message) const;

private:
    TKxFileDlgCommand CommandOfButton(WORD id) const;

    HWND FDialog;
};

/// Child enumeration callback: shows (`show` not 0) or hides the first navigation tool bar that it finds.
BOOL KX_CALLBACK KxSrvShowToolBar(HWND window, LPARAM show);

} // namespace kx
