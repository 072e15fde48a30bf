// SPDX-License-Identifier: MIT
// The application's tool bar in the running dialog.

#include "kx/opensave/KxToolBarLoan.h"

#include "kx/frame/KxWhileAlive.h"

#include <algorithm>

namespace kx {

namespace {

/// Puts the bar back where it was, as it was. The application hears of each step.
void GiveBack(TToolBar* bar, const TComponentRef<TWinControl>& home, bool visible, const TRect& rect) {
    KxWhileAlive(
        *bar, [=] { bar->SetVisible(visible); }, [=] { bar->SetParentWindow(nullptr); },
        [=, &home] { bar->SetParent(home.Get()); }, [=] { bar->SetBoundsRect(rect); });
}

} // namespace

void TKxToolBarLoan::Take() {
    FTB = KxFindToolbar(FDialog.DlgHandle());
    if (FTBOptions.Flat()) {
        MakeFlatButtons(FTB);
    }
    KxInFormsThread([this] { Borrow(); });
}

void TKxToolBarLoan::Borrow() {
    TToolBar* const bar = FTBOptions.CustomBar();
    if (!bar || !FTB) {
        return;
    }
    FBorrowedBar.Set(bar);
    TComponentRef<TWinControl> home; // kept here as well: the dialog and its fields may go meanwhile
    home.Set(bar->Parent());
    const bool visible = bar->Visible();
    const TRect before = bar->BoundsRect();
    FTBPrevParent.Set(bar->Parent());
    FTBPrevVisible = visible;
    FTBPrevRect = before;
    HWND dialog = FDialog.DlgHandle();
    const TRect r = KxRectIn(dialog, FTB);
    const TAlive barAlive(*bar);
    const TAlive there(FDialog.Existence());
    KxWhileAlive(
        {barAlive, there}, [=] { bar->SetParent(nullptr); }, [=] { bar->SetParentWindow(dialog); },
        [=] { bar->SetTop(CheckedSub(CheckedSub(CheckedAdd(r.Top, Height(r) / 2), bar->Height() / 2), 1)); },
        [=] { bar->SetLeft(r.Left); }, // the first painting puts it at the bar's right edge
        [=] { bar->Show(); });
    if (barAlive && !there) { // the dialog gave the bar back in the middle of a step, whose rest took it away again
        GiveBack(bar, home, visible, before);
    }
}

void TKxToolBarLoan::Place() {
    if (!FBorrowedBar.IsSet()) { // this question need not wait for the application's thread
        return;
    }
    KxInFormsThread([this] {
        if (TToolBar* const bar = FBorrowedBar.Get()) {
            const int32_t left = CheckedAdd(KxRectIn(FDialog.DlgHandle(), FTB).Right, 1);
            const int32_t room = std::max(CheckedSub(FDialog.OwnRight(), left), 0);
            bar->SetBounds(left, bar->Top(), std::min(Width(FTBPrevRect), room), bar->Height());
        }
    });
}

void TKxToolBarLoan::Return() {
    KxInFormsThread([this] {
        TToolBar* const bar = FBorrowedBar.Get();
        if (!bar) {
            return;
        }
        // The bar's former state is read first: the application hears of each step, and may free the dialog.
        FBorrowedBar.Set(nullptr);
        TComponentRef<TWinControl> home;
        home.Set(FTBPrevParent.Get());
        GiveBack(bar, home, FTBPrevVisible, FTBPrevRect);
    });
}

} // namespace kx
