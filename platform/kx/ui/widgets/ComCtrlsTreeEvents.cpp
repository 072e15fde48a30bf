// SPDX-License-Identifier: MIT
// Tree views: what the system tells of them, and what they tell.

#include "kx/ui/widgets/ComCtrlsTree.h"

#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

namespace kx {

// --- Notifications

void TTreeView::WndProc(TMessage& message) {
    switch (message.Msg) {
    case CN_NOTIFY: return Notified(message);
    case WM_LBUTTONDOWN: {
        if (!Outlives(*this, [&] { TWinControl::WndProc(message); })) {
            return;
        }
        // The system waits for the release itself, to tell a click from a drag, and nobody gets that message.
        if (GetKeyState(VK_LBUTTON) >= 0 && !Dragging()) {
            Perform(WM_LBUTTONUP, message.WParam & ~WPARAM{MK_LBUTTON}, message.LParam);
        }
        return;
    }
    default: TWinControl::WndProc(message);
    }
}

void TTreeView::Notified(TMessage& message) {
    const auto& info = message.LParamAs<NMTREEVIEWW>(); // laid out as the one of bytes
    const auto& edit = message.LParamAs<NMTVDISPINFOA>().item;
    const auto& editWide = message.LParamAs<NMTVDISPINFOW>().item;
    if (FFilling) {
        return;
    }
    switch (info.hdr.code) {
    case TVN_SELCHANGINGA:
    case TVN_SELCHANGINGW: {
        TTreeNode* const node = NodeOf(info.itemNew.lParam);
        bool may = false;
        message.Result = !(Outlives(*this, [&] { may = CanChange(node); }) && may && (!node || Has(node)));
        break;
    }
    case TVN_SELCHANGEDA:
    case TVN_SELCHANGEDW:
        FSelected = info.itemNew.hItem ? NodeOf(info.itemNew.lParam) : nullptr;
        Change(FSelected);
        break;
    case TVN_ITEMEXPANDINGA:
    case TVN_ITEMEXPANDINGW:
        message.Result = !MaySwitch(*NodeOf(info.itemNew.lParam), info.action == TVE_EXPAND);
        break;
    case TVN_ITEMEXPANDEDA:
    case TVN_ITEMEXPANDEDW: Switched(*NodeOf(info.itemNew.lParam), info.action == TVE_EXPAND); break;
    case TVN_BEGINLABELEDITA:
    case TVN_BEGINLABELEDITW: {
        TTreeNode* const node = NodeOf(edit.lParam);
        bool may = false;
        message.Result = !(Outlives(*this, [&] { may = CanEdit(node); }) && may && Has(node));
        break;
    }
    case TVN_ENDLABELEDITA: // a parent that is not the framework's may ask for texts of this kind
        if (edit.pszText) {
            EditEnded(NodeOf(edit.lParam), edit.pszText);
        }
        break;
    case TVN_ENDLABELEDITW:
        if (editWide.pszText) {
            EditEnded(NodeOf(editWide.lParam), FromWide(editWide.pszText));
        }
        break;
    case TVN_BEGINDRAGA:
    case TVN_BEGINDRAGW:
        if (DragMode() == dmAutomatic &&
            Outlives(*this, [&] { SetSelected(NodeOf(info.itemNew.lParam)); })) { // who is asked sees what is dragged
            BeginDrag(true);
        }
        break;
    case NM_RCLICK:
        message.Result = TRUE;
        RightClicked();
        break;
    default: break;
    }
}

void TTreeView::EditEnded(TTreeNode* node, std::string text) {
    if (Outlives(*this, [&] { Edit(node, text); }) && Has(node)) {
        node->SetText(text);
    }
}

/// The system keeps the release of the right button, from which everybody's context menu comes.
void TTreeView::RightClicked() {
    const DWORD at = GetMessagePos();
    const TPoint point = ScreenToClient({static_cast<int16_t>(LOWORD(at)), static_cast<int16_t>(HIWORD(at))});
    TTreeNode* const node = FRightClickSelect ? GetNodeAt(point.X, point.Y) : nullptr;
    if (!node || Outlives(*this, [&] { SetSelected(node); })) {
        Perform(WM_RBUTTONUP, 0, MAKELPARAM(point.X, point.Y));
    }
}

bool TTreeView::IsEditing() const {
    return HandleAllocated() && SendMessageW(WindowHandle(), TVM_GETEDITCONTROL, 0, 0) != 0;
}

bool TTreeView::WantsKey(uint16_t key, TShiftState shift) {
    return (IsEditing() && (key == VK_RETURN || key == VK_ESCAPE)) || TWinControl::WantsKey(key, shift);
}

// --- Dragging

void TTreeView::DragOver(TObject* source, int x, int y, TDragState state, bool& accept) {
    if (Outlives(*this, [&] { TWinControl::DragOver(source, x, y, state, accept); })) {
        SetDropTarget(state == dsDragLeave || !accept ? nullptr : GetNodeAt(x, y));
    }
}

void TTreeView::DoEndDrag(TObject* target, int x, int y) {
    if (Outlives(*this, [&] { TWinControl::DoEndDrag(target, x, y); })) {
        SetDropTarget(nullptr);
    }
}

// --- Events

bool TTreeView::CanChange(TTreeNode* node) {
    bool allow = true;
    FOnChanging(this, node, allow);
    return allow;
}

void TTreeView::Change(TTreeNode* node) { FOnChange(this, node); }

bool TTreeView::CanExpand(TTreeNode* node) {
    bool allow = true;
    FOnExpanding(this, node, allow);
    return allow;
}

bool TTreeView::CanCollapse(TTreeNode* node) {
    bool allow = true;
    FOnCollapsing(this, node, allow);
    return allow;
}

bool TTreeView::CanEdit(TTreeNode* node) {
    bool allow = true;
    FOnEditing(this, node, allow);
    return allow;
}

void TTreeView::Edit(TTreeNode* node, std::string& text) { FOnEdited(this, node, text); }

void TTreeView::Delete(TTreeNode* node) { FOnDeletion(this, node); }

} // namespace kx
