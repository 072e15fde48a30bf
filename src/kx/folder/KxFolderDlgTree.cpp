// SPDX-License-Identifier: MIT
// The tree of the folder dialog, and the application's form in its place.

#include "kx/folder/KxFolderDlg.h"

#include "kx/core/Barrier.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

/// Activates a form that is part of a foreign window: the system activates top-level windows alone.
struct TFormAccess : TForm {
    static void ActivateDocked(TForm& form) { (form.*(&TFormAccess::Activate))(); }
};

} // namespace

/// The folder tree; null when there is none.
HWND TKxCustomFolderDialog::FindTree() const {
    HWND tree = FindWindowExA(FDlgHandle, nullptr, WC_TREEVIEWA, nullptr);
    if (!tree) { // in the new style of Windows it is inside another control
        HWND holder = FindWindowExA(FDlgHandle, nullptr, "SHBrowseForFolder ShellNameSpace Control", nullptr);
        return holder ? FindWindowExA(holder, nullptr, WC_TREEVIEWA, nullptr) : nullptr;
    }
    if (tree != GetWindow(FDlgHandle, GW_CHILD)) {
        return tree;
    }
    // Windows has the tree behind its first child; Wine's browser in the new style has it in front of all others.
    HWND behind = FindWindowExA(FDlgHandle, tree, WC_TREEVIEWA, nullptr);
    return behind ? behind : tree;
}

/// The browser's child that shows the tree: the tree itself, or what it is in.
HWND TKxCustomFolderDialog::ControlOf(HWND tree) const {
    HWND parent = GetAncestor(tree, GA_PARENT);
    return parent == FDlgHandle ? tree : parent;
}

void TKxCustomFolderDialog::MeasureTree(HWND tree) {
    const TRect outer = KxRectIn(FDlgHandle, ControlOf(tree));
    const TRect client = KxClientRect(tree);
    int32_t width = CheckedAdd(client.Right, GetSystemMetrics(SM_CXDLGFRAME));
    if ((GetWindowLongA(tree, GWL_STYLE) & WS_VSCROLL) != 0) {
        width = CheckedAdd(width, GetSystemMetrics(SM_CXVSCROLL));
    }
    // Deliberate: a horizontal scroll bar is not counted, where one would expect its height to be added.
    const int32_t height = CheckedAdd(client.Bottom, GetSystemMetrics(SM_CYDLGFRAME));
    FSelRect = {outer.Left, outer.Top, CheckedAdd(outer.Left, width), CheckedAdd(outer.Top, height)};
}

/// A browser in the new style arranges its controls anew when it is resized. The custom form, or one that comes later,
/// stays in the tree's place.
void TKxCustomFolderDialog::FollowTree() {
    HWND tree = FindTree();
    const TRect before = FSelRect;
    if (tree) {
        MeasureTree(tree);
    }
    if (FSelRect == before) {
        return;
    }
    KxInFormsThread([this] {
        TForm* const form = FParams.CustomForm();
        if (form && form->ParentWindow() == FDlgHandle) {
            form->SetBounds(FSelRect.Left, FSelRect.Top, Width(FSelRect), Height(FSelRect));
        }
    });
}

void TKxCustomFolderDialog::RefreshSelCtrl() {
    if (FSelType == stCustom) {
        if (Outlives(*this, [this] { ShowStdSelectionCtrl(false); })) {
            ShowCustSelectionCtrl(true);
        }
    } else if (Outlives(*this, [this] { ShowCustSelectionCtrl(false); })) {
        ShowStdSelectionCtrl(true);
    }
}

void TKxCustomFolderDialog::ShowCustSelectionCtrl(bool show) {
    if (!show) {
        if (FDlgHandle) {
            FParams.HideCustomForm();
        }
        return;
    }
    KxInFormsThread([this] {
        TForm* form = FParams.CustomForm();
        if (!FDlgHandle || !form) {
            return;
        }
        // Its handlers may free or replace the form, and free the dialog.
        const TAlive alive(*this);
        const TAlive formAlive(*form);
        const auto isWanted = [&] { return alive && formAlive && FDlgHandle && FParams.CustomForm() == form; };
        form->SetParent(nullptr);
        if (isWanted()) {
            form->SetParentWindow(FDlgHandle);
        }
        if (isWanted()) {
            form->SetBounds(FSelRect.Left, FSelRect.Top, Width(FSelRect), Height(FSelRect));
        }
        if (isWanted()) {
            form->Show();
        }
        if (isWanted()) {
            TFormAccess::ActivateDocked(*form);
        }
    });
}

void TKxCustomFolderDialog::ShowStdSelectionCtrl(bool show) {
    if (!FDlgHandle) {
        return;
    }
    if (HWND tree = FindTree()) {
        HWND control = ControlOf(tree);
        const bool isShown = (GetWindowLongA(control, GWL_STYLE) & WS_VISIBLE) != 0;
        if (isShown != show) { // showing what is shown would cost as much as the first time
            ShowWindow(control, show ? SW_SHOW : SW_HIDE);
        }
        return;
    }
    MessageBoxA(FDlgHandle,
                show ? "Could not show window. Child SysTreeView32 not found."
                     : "Could not hide window. Child SysTreeView32 not found.",
                "Error", MB_OK | MB_ICONERROR);
}

} // namespace kx
