// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/Types.h"
#include "kx/ui/controls/ControlTypes.h"
#include "kx/ui/forms/FormsTypes.h"
#include "kx/win/WinTypes.h"

#include <unordered_map>
#include <vector>

namespace kx {

class TCustomForm;
class TScreen;
class TWinControl;

TScreen& Screen();

/// The screen, and the forms on it.
class TScreen : public TComponent {
    KX_CLASS()

    TScreen();
    ~TScreen() override;

    int Width() const;
    int Height() const;
    TRect BoundsRect() const { return {0, 0, Width(), Height()}; } ///< Of the first monitor.

    int FormCount() const { return static_cast<int>(FForms.size()); }
    TCustomForm* Forms(int index) const; ///< @throws EListError for an index outside [0, FormCount).
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TCustomForm*>& Forms() const { return FForms; }
    TCustomForm* ActiveForm() const { return FActiveForm; }
    TWinControl* ActiveControl() const { return FActiveControl; }

    TCursor Cursor() const { return FCursor; } ///< Of the whole program; crDefault: each control's own.
    void SetCursor(TCursor value);
    HCURSOR Cursors(TCursor cursor) const; ///< The system's pointer of that number; not owned.

private:
    friend class TApplication;
    friend class TCustomForm;
    std::vector<TCustomForm*> FForms;
    TCustomForm* FActiveForm = nullptr;
    TWinControl* FActiveControl = nullptr;
    TCursor FCursor = crDefault;
    std::unordered_map<int, HCURSOR> FCursors;
};

// --- Windows of the thread while a modal dialog runs

/// Disables all enabled, visible top-level windows of the calling thread but `except`, and returns them.
TTaskWindowList DisableTaskWindows(HWND except);
void EnableTaskWindows(const TTaskWindowList& windows);

} // namespace kx
