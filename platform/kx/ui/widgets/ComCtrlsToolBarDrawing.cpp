// SPDX-License-Identifier: MIT
// How tool bars and their buttons are drawn.

#include "kx/core/Barrier.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- Edges

void TToolBar::FrameChanged() {
    if (HandleAllocated()) {
        SetWindowPos(WindowHandle(), nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    }
    Arrange();
}

TPoint TToolBar::FrameExtent() const {
    TPoint extent = TWinControl::FrameExtent();
    const auto edge = [this](TEdgeBorder side) { return FEdgeBorders.Contains(side) ? EdgeSize() : 0; };
    extent.X += edge(ebLeft) + edge(ebRight);
    extent.Y += edge(ebTop) + edge(ebBottom);
    return extent;
}

void TToolBar::NonClientSize(TMessage& message) {
    RECT& r = message.LParamAs<RECT>(); // both forms of the message begin with this rectangle
    const auto edge = [this](TEdgeBorder side) { return FEdgeBorders.Contains(side) ? EdgeSize() : 0; };
    r.left += edge(ebLeft);
    r.top += edge(ebTop);
    r.right -= edge(ebRight);
    r.bottom -= edge(ebBottom);
}

void TToolBar::PaintEdges() {
    if (!HandleAllocated() || EdgeSize() == 0 || FEdgeBorders.IsEmpty()) {
        return;
    }
    const UINT inner[] = {0, BDR_RAISEDINNER, BDR_SUNKENINNER};
    const UINT outer[] = {0, BDR_RAISEDOUTER, BDR_SUNKENOUTER};
    UINT sides = 0;
    const auto add = [&](TEdgeBorder side, UINT flag) { sides |= FEdgeBorders.Contains(side) ? flag : 0; };
    add(ebLeft, BF_LEFT);
    add(ebTop, BF_TOP);
    add(ebRight, BF_RIGHT);
    add(ebBottom, BF_BOTTOM);
    const HDC dc = GetWindowDC(WindowHandle());
    RECT r{0, 0, Width(), Height()};
    DrawEdge(dc, &r, inner[FEdgeInner] | outer[FEdgeOuter], sides);
    ReleaseDC(WindowHandle(), dc);
}

// --- Drawing and messages

void TToolBar::SetOnCustomDraw(TTBCustomDrawEvent value) {
    FOnCustomDraw = std::move(value);
    Invalidate();
}

void TToolBar::SetOnCustomDrawButton(TTBCustomDrawBtnEvent value) {
    FOnCustomDrawButton = std::move(value);
    Invalidate();
}

bool TToolBar::CustomDraw(const TRect& rect) {
    bool defaultDraw = true;
    FOnCustomDraw(this, rect, defaultDraw);
    return defaultDraw;
}

bool TToolBar::CustomDrawButton(TToolButton* button, TCustomDrawState state) {
    bool defaultDraw = true;
    FOnCustomDrawButton(this, button, state, defaultDraw);
    return defaultDraw;
}

void TToolBar::PaintWindow(HDC dc) {
    TMessage paint{WM_PAINT, reinterpret_cast<WPARAM>(dc), 0, 0};
    DefaultHandler(paint);
}

LRESULT TToolBar::CustomDrawNotification(const NMTBCUSTOMDRAW& info) {
    const HDC dc = info.nmcd.hdc;
    const auto run = [&](auto draw) {
        FCanvas->SetHandle(dc);
        FCanvas->Font().Assign(&Font());
        bool defaultDraw = false;
        if (Outlives(*this, [&] { defaultDraw = Guarded(true, draw); })) {
            FCanvas->SetHandle(nullptr);
        }
        return defaultDraw;
    };
    if (info.nmcd.dwDrawStage == CDDS_PREPAINT) {
        return run([&] { return CustomDraw(ClientRect()); }) ? CDRF_NOTIFYITEMDRAW : CDRF_SKIPDEFAULT;
    }
    if (info.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
        return CDRF_DODEFAULT;
    }
    auto* const button = reinterpret_cast<TToolButton*>(info.nmcd.lItemlParam);
    if (!RectVisible(dc, &info.nmcd.rc) || std::find(FButtons.begin(), FButtons.end(), button) == FButtons.end()) {
        return CDRF_SKIPDEFAULT;
    }
    static constexpr struct {
        UINT System;
        TCustomDrawStateFlag Ours;
    } flags[] = {{CDIS_SELECTED, cdsSelected}, {CDIS_GRAYED, cdsGrayed}, {CDIS_DISABLED, cdsDisabled},
                 {CDIS_CHECKED, cdsChecked},   {CDIS_FOCUS, cdsFocused}, {CDIS_DEFAULT, cdsDefault},
                 {CDIS_HOT, cdsHot},           {CDIS_MARKED, cdsMarked}, {CDIS_INDETERMINATE, cdsIndeterminate}};
    TCustomDrawState state;
    for (const auto& flag : flags) {
        if (info.nmcd.uItemState & flag.System) {
            state.Include(flag.Ours);
        }
    }
    return run([&] { return CustomDrawButton(button, state); }) ? CDRF_DODEFAULT : CDRF_SKIPDEFAULT;
}

void TToolBar::HotChanged(TToolButton& button, bool hot) {
    if (HandleAllocated() && !FRefill && FFlat) {
        SendMessageW(WindowHandle(), TB_SETHOTITEM, hot ? static_cast<WPARAM>(button.Index()) : static_cast<WPARAM>(-1),
                     0);
    }
}

void TToolBar::WndProc(TMessage& message) {
    switch (message.Msg) {
    case CN_NOTIFY:
        if (message.LParamAs<NMHDR>().code == NM_CUSTOMDRAW) {
            message.Result = CustomDrawNotification(message.LParamAs<NMTBCUSTOMDRAW>());
        }
        return;
    case CN_COMMAND: { // a program, or a tool for the disabled, pressed a button of the system's
        const auto index = SendMessageW(WindowHandle(), TB_COMMANDTOINDEX, message.WParamLo(), 0);
        if (index >= 0 && index < ButtonCount()) {
            Buttons(static_cast<int>(index))->Press();
        }
        return;
    }
    case WM_NCCALCSIZE:
        DefaultHandler(message);
        NonClientSize(message);
        return;
    case WM_NCPAINT:
        DefaultHandler(message);
        PaintEdges();
        return;
    default: TWinControl::WndProc(message);
    }
}

} // namespace kx
