// SPDX-License-Identifier: MIT
// The Z order of the windows in a control.

#include "kx/ui/controls/Controls.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

TWinControl* TWinControl::TopParent() {
    TWinControl* top = this;
    while (top->Parent()) {
        top = top->Parent();
    }
    return top;
}

std::vector<TWinControl*> TWinControl::WindowOrder() {
    if (TopParent()->FParentWindow) {
        return FTabList; // a foreign dialog moves the focus in Z order, which is to be that of the tabs
    }
    std::vector<TWinControl*> order;
    for (auto i = FControls.rbegin(); i != FControls.rend(); ++i) {
        if (auto* const control = dynamic_cast<TWinControl*>(*i)) {
            order.push_back(control);
        }
    }
    return order;
}

std::vector<HWND> TWinControl::WantedOrder() {
    std::vector<HWND> wanted;
    for (const TWinControl* control : WindowOrder()) {
        if (control->FHandle) {
            wanted.push_back(control->FHandle);
        }
    }
    return wanted;
}

void TWinControl::ArrangeWindows() {
    if (!FHandle || FTabList.empty()) {
        return;
    }
    const std::vector<HWND> wanted = WantedOrder();
    FLastOrder = wanted;
    std::vector<HWND> order = DirectChildren(FHandle);
    HWND above = HWND_TOP;
    for (size_t i = 0; i < wanted.size(); ++i) {
        if (i >= order.size() || order[i] != wanted[i]) {
            SetWindowPos(wanted[i], above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
            std::erase(order, wanted[i]);
            order.insert(order.begin() + static_cast<ptrdiff_t>(std::min(i, order.size())), wanted[i]);
        }
        above = wanted[i];
    }
}

void TWinControl::ArrangeAllWindows() {
    if (WantedOrder() != FLastOrder) {
        ArrangeWindows();
    }
    for (TWinControl* control : FTabList) {
        control->ArrangeAllWindows();
    }
}

void TWinControl::SetZOrder(bool front) {
    TControl::SetZOrder(front);
    if (Parent()) {
        Parent()->ArrangeWindows();
    } else if (FHandle) {
        SetWindowPos(FHandle, front ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
}

} // namespace kx
