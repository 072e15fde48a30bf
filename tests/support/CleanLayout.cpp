// SPDX-License-Identifier: MIT
// Looks at where the parts of a dialog are.

#include "CleanLayout.h"

#include "kx/ui/controls/Controls.h"
#include "kx/win/Handles.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace kx::test {

namespace {

/// The part of a control that shows something, in the dialog's client coordinates.
TRect ContentOf(HWND dialog, HWND control) {
    TRect r = RectIn(dialog, control);
    if (ClassOf(control) == "ToolbarWindow32") {
        RECT button{};
        const LRESULT last = SendMessageA(control, TB_BUTTONCOUNT, 0, 0) - 1;
        if (SendMessageA(control, TB_GETITEMRECT, static_cast<WPARAM>(last), reinterpret_cast<LPARAM>(&button))) {
            r.Right = r.Left + button.right;
        }
    } else if (ClassOf(control) == "Static") {
        const TWindowDC dc(control);
        const TSelectObject font(dc.Handle(), reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)));
        RECT text{0, 0, Width(r), 0};
        DrawTextA(dc.Handle(), TextOf(control).c_str(), -1, &text, DT_CALCRECT);
        r.Bottom = r.Top + text.bottom;
    }
    return r;
}

/// The application's or the library's, and not in the place of one of the system's controls.
bool IsForeign(HWND window) { return FindControl(window) && !FindChild(window, "TKxBitBtn"); }

} // namespace

std::string TPart::Name() const {
    return ClassOf(Window) + " " + std::to_string(GetDlgCtrlID(Window)) + " (" + std::to_string(Rect.Left) + "," +
           std::to_string(Rect.Top) + ")-(" + std::to_string(Rect.Right) + "," + std::to_string(Rect.Bottom) + ")";
}

std::vector<TPart> VisibleParts(HWND dialog) {
    std::vector<TPart> parts;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const TRect r = ContentOf(dialog, child);
        // The template child lies behind all others, and the size grip may lie behind a form in its corner.
        const bool isBehind = ClassOf(child) == "#32770" || ClassOf(child) == "ScrollBar";
        if (IsWindowVisible(child) && !isBehind && Width(r) > 0 && Height(r) > 0) {
            parts.push_back({child, r});
        }
    }
    return parts;
}

void ExpectCleanLayout(HWND dialog) {
    const TRect client = ClientRectOf(dialog);
    const std::vector<TPart> parts = VisibleParts(dialog);
    // The dialog's own controls make room for a form by its size and that of the dialog frame, for which the dialog
    // does not grow.
    const int play = GetSystemMetrics(SM_CXDLGFRAME);
    for (size_t i = 0; i < parts.size(); ++i) {
        const TRect& a = parts[i].Rect;
        EXPECT_TRUE(a.Left >= 0 && a.Top >= 0 && a.Right <= client.Right + play && a.Bottom <= client.Bottom + play)
            << parts[i].Name() << " sticks out of " << client.Right << "x" << client.Bottom;
        for (size_t j = i + 1; j < parts.size(); ++j) {
            const TRect& b = parts[j].Rect;
            const bool isFormA = IsForeign(parts[i].Window);
            const bool isFormB = IsForeign(parts[j].Window);
            if (!isFormA && !isFormB) {
                continue; // the system's own controls overlap here and there
            }
            const int overlap = isFormA && isFormB ? 0 : play;
            EXPECT_FALSE(a.Left + overlap < b.Right && b.Left + overlap < a.Right && a.Top + overlap < b.Bottom &&
                         b.Top + overlap < a.Bottom)
                << parts[i].Name() << " overlaps " << parts[j].Name();
        }
    }
}

} // namespace kx::test
