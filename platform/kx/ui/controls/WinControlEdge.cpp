// SPDX-License-Identifier: MIT
// The sunken edge of a window of our own, drawn as the theme draws those of the system's controls.

#include "kx/ui/controls/Controls.h"

#include "kx/win/Dpi.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <vsstyle.h>

namespace kx {

/// Windows of the system's classes draw their edges themselves.
bool TWinControl::HasSunkenEdge() const {
    constexpr LONG_PTR frames = WS_BORDER | WS_DLGFRAME | WS_THICKFRAME; // the system draws them around the edge
    return FHandle && !FSystemClass && (GetWindowLongPtrW(FHandle, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) != 0 &&
           (GetWindowLongPtrW(FHandle, GWL_STYLE) & frames) == 0;
}

/// What the edge looks like has changed: the theme, whether the window is enabled, or whether it has the focus.
void TWinControl::EdgeChanged() const {
    if (HasSunkenEdge()) {
        RedrawWindow(FHandle, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
    }
}

/// False: the system is to draw it. Scroll bars and what else is inside the edge are the system's in any case.
bool TWinControl::PaintEdge(TMessage& message) {
    const TTheme theme = HasSunkenEdge() ? Theme(TThemeKind::Edit) : TTheme();
    if (!theme) {
        return false;
    }
    const int dpi = WindowDpi(FHandle);
    const int across = SystemMetric(SM_CXEDGE, dpi);
    const int down = SystemMetric(SM_CYEDGE, dpi);
    RECT window{};
    GetWindowRect(FHandle, &window);
    RECT inside = window;
    InflateRect(&inside, -across, -down);

    const unique_hrgn rest(CreateRectRgnIndirect(&inside));
    constexpr WPARAM all = 1; // in place of a region
    if (message.WParam > all) {
        CombineRgn(rest.get(), rest.get(), reinterpret_cast<HRGN>(message.WParam), RGN_AND);
    }
    message.WParam = reinterpret_cast<WPARAM>(rest.get());
    if (!Outlives(*this, [&] { DefaultHandler(message); }) || !FHandle) {
        return true;
    }

    const TWindowDC dc(FHandle, true);
    const TRect edge{0, 0, window.right - window.left, window.bottom - window.top};
    ExcludeClipRect(dc.Handle(), across, down, edge.Right - across, edge.Bottom - down);
    const int state = !IsWindowEnabled(FHandle) ? ETS_DISABLED : Focused() ? ETS_FOCUSED : ETS_NORMAL;
    theme.Draw(dc.Handle(), EP_EDITTEXT, state, edge);
    const RECT own = ToRECT(theme.Inside(dc.Handle(), EP_EDITTEXT, state, edge));
    FillRect(dc.Handle(), &own, FBrush.Handle()); // a theme's line may be thinner than the edge
    return true;
}

} // namespace kx
