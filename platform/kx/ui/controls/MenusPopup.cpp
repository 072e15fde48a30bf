// SPDX-License-Identifier: MIT
// Menus as a whole: their messages, images and short cuts, and menus that pop up.

#include "kx/ui/controls/Menus.h"

#include "kx/core/Barrier.h"
#include "kx/ui/controls/ControlHost.h"
#include "kx/ui/controls/MenusCommands.h"
#include "kx/ui/controls/MessageFrames.h"
#include "kx/win/ThreadWindow.h"
#include "kx/win/Windows.h"

namespace kx {

// --- TMenu

const TClass& TMenu::StaticClass() {
    static const TClassBuilder<TMenu> cls("TMenu", TComponent::StaticClass(), [](auto& c) {
        c.Reference("Images", &TMenu::Images, &TMenu::SetImages);
        c.Property("OnChange", &TMenu::OnChange, &TMenu::SetOnChange);
    });
    return cls.Class();
}

TMenu::TMenu(TComponent* owner) : TComponent(owner), FItems(new TMenuItem(this)) {
    FItems->FMenu = this;
    FImageChangeLink.SetOnChange([this](TObject*) { FItems->ItemsChanged(); });
}

TMenu::~TMenu() {
    Destroying();
    FItems->Free();
}

void TMenu::SetImages(TImageList* value) {
    if (value == FImages) {
        return;
    }
    if (FImages) {
        FImages->UnregisterChanges(FImageChangeLink);
    }
    FImages = value;
    if (value) {
        value->RegisterChanges(FImageChangeLink);
        value->FreeNotification(this);
    }
    FItems->ItemsChanged();
}

void TMenu::Notification(TComponent* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == opRemove && component == FImages) {
        FImages = nullptr; // the list lets go of its links itself
        FItems->ItemsChanged();
    }
}

void TMenu::GetChildren(const TGetChildProc& proc, TComponent* root) { FItems->GetChildren(proc, root); }

void TMenu::MenuChanged() {
    if (IsLoading() || IsDestroying()) {
        return;
    }
    if (FWindowHandle) {
        DrawMenuBar(FWindowHandle);
    }
    const TNotifyEvent handler = FOnChange;
    handler(this);
}

namespace {

/// The first item below `parent`, in the order of the menu, that `matches`.
template <class F> TMenuItem* FindItem(TMenuItem& parent, F&& matches) {
    for (int i = 0; i < parent.Count(); ++i) {
        if (matches(*parent[i])) {
            return parent[i];
        }
        if (TMenuItem* found = FindItem(*parent[i], matches)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

TMenuItem* TMenu::FindShortCut(TShortCut shortCut) const {
    return shortCut == 0 ? nullptr
                         : FindItem(*FItems, [=](const TMenuItem& item) { return item.ShortCut() == shortCut; });
}

bool TMenu::IsShortCut(WPARAM wParam, LPARAM lParam) {
    const TShortCut shortCut = ShortCutFromKeyMessage(wParam, lParam);
    // Each click may change the menu, so the way down to the item is looked for again after each. A click that ends the
    // menu has used the key up.
    const TAlive alive(*this);
    for (int depth = 1; alive; ++depth) {
        std::vector<TMenuItem*> path;
        for (TMenuItem* item = FindShortCut(shortCut); item && item != FItems; item = item->Parent()) {
            path.insert(path.begin(), item);
        }
        if (path.empty()) {
            return false;
        }
        for (const TMenuItem* item : path) {
            if (!item->Enabled()) {
                return false;
            }
        }
        if (depth >= static_cast<int>(path.size())) {
            path.back()->Click();
            return true;
        }
        path[static_cast<size_t>(depth - 1)]->Click();
    }
    return true;
}

HMENU TMenu::NewHandle() const { return CreatePopupMenu(); }

// --- TMainMenu

const TClass& TMainMenu::StaticClass() {
    static const TClassBuilder<TMainMenu> cls("TMainMenu", TMenu::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

HMENU TMainMenu::NewHandle() const { return CreateMenu(); }

// --- Messages of windows that own menus

namespace {

/// The item that a message is about; null when it is none of `menu`'s.
TMenuItem* ItemOf(const TMenu* menu, UINT command) {
    TMenuItem* item = detail::FindCommand(static_cast<WORD>(command));
    return item && (!menu || item->GetParentMenu() == menu) ? item : nullptr;
}

bool MeasureImage(const TMenu* menu, MEASUREITEMSTRUCT& measure) {
    const TMenuItem* item = measure.CtlType == ODT_MENU ? ItemOf(menu, measure.itemID) : nullptr;
    if (!item || !item->ShowsImage()) {
        return false;
    }
    measure.itemWidth = static_cast<UINT>(item->GetParentMenu()->Images()->Width());
    measure.itemHeight = static_cast<UINT>(item->GetParentMenu()->Images()->Height());
    return true;
}

bool DrawImage(const TMenu* menu, const DRAWITEMSTRUCT& draw) {
    const TMenuItem* item = draw.CtlType == ODT_MENU ? ItemOf(menu, draw.itemID) : nullptr;
    if (!item || !item->ShowsImage()) {
        return false;
    }
    TCanvas canvas;
    canvas.SetHandle(draw.hDC);
    item->GetParentMenu()->Images()->Draw(canvas, draw.rcItem.left, draw.rcItem.top, item->ImageIndex(),
                                          item->Enabled());
    return true;
}

/// The item of `menu` whose submenu that is; a menu's own root is none.
TMenuItem* OwnerOf(const TMenu* menu, HMENU submenu) {
    TMenuItem* item = detail::FindSubmenu(submenu);
    return item && item->Parent() && (!menu || item->GetParentMenu() == menu) ? item : nullptr;
}

void ShowHint(const TMenu* menu, WPARAM wParam, LPARAM lParam) {
    const auto flags = HIWORD(wParam);
    const TMenuItem* item = nullptr;
    if (flags & MF_POPUP) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_ID;
        if (flags != 0xFFFF && GetMenuItemInfoW(reinterpret_cast<HMENU>(lParam), LOWORD(wParam), TRUE, &info)) {
            item = ItemOf(menu, info.wID);
        }
    } else {
        item = ItemOf(menu, LOWORD(wParam));
    }
    ControlHost().MenuItemSelected(item ? item->Hint() : std::string());
}

} // namespace

bool DispatchMenuMessage(TMenu* menu, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    switch (message) {
    case WM_COMMAND: {
        TMenuItem* item = lParam == 0 && HIWORD(wParam) == 0 ? ItemOf(menu, LOWORD(wParam)) : nullptr;
        if (!item) {
            return false;
        }
        result = 0;
        item->Click();
        return true;
    }
    case WM_INITMENUPOPUP:
        if (TMenuItem* item = OwnerOf(menu, reinterpret_cast<HMENU>(wParam))) {
            item->Click();
        }
        return false;
    case WM_MENUSELECT: ShowHint(menu, wParam, lParam); return false;
    case WM_MEASUREITEM: result = TRUE; return MeasureImage(menu, *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
    case WM_DRAWITEM: result = TRUE; return DrawImage(menu, *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    default: return false;
    }
}

// --- TPopupMenu

namespace {

LRESULT CALLBACK PopupOwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const detail::TMessageFrame frame;
    const bool handled = Guarded(true, [&] {
        LRESULT ignored = 0;
        return DispatchMenuMessage(nullptr, message, wParam, lParam, ignored);
    });
    if (handled) {
        return message == WM_MEASUREITEM || message == WM_DRAWITEM;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

/// Owns the popup menus of a thread while they are open. Commands may arrive as long as the thread has a message loop.
constexpr TThreadWindow PopupOwner(L"KxPopupMenuOwner", PopupOwnerProc);

} // namespace

const TClass& TPopupMenu::StaticClass() {
    static const TClassBuilder<TPopupMenu> cls("TPopupMenu", TMenu::StaticClass(), [](auto& c) {
        c.Property("Alignment", &TPopupMenu::Alignment, &TPopupMenu::SetAlignment).Default = paLeft;
        c.Property("AutoPopup", &TPopupMenu::AutoPopup, &TPopupMenu::SetAutoPopup).Default = true;
        c.Property("TrackButton", &TPopupMenu::TrackButton, &TPopupMenu::SetTrackButton).Default = tbRightButton;
        c.Property("OnPopup", &TPopupMenu::OnPopup, &TPopupMenu::SetOnPopup);
        c.Creatable();
    });
    return cls.Class();
}

void TPopupMenu::DoPopup() {
    const TNotifyEvent handler = FOnPopup;
    handler(this);
}

void TPopupMenu::Popup(int x, int y) {
    FPopupPoint = {x, y};
    if (!Outlives(*this, [this] { DoPopup(); })) {
        return;
    }
    static const UINT alignments[] = {TPM_LEFTALIGN, TPM_RIGHTALIGN, TPM_CENTERALIGN};
    static const UINT buttons[] = {TPM_RIGHTBUTTON, TPM_LEFTBUTTON};
    UINT alignment = alignments[FAlignment];
    if (FBiDiMode != bdLeftToRight) {
        // With this flag the system takes left for right, which is wanted with bdRightToLeft only.
        const bool swaps = FBiDiMode != bdRightToLeft && FAlignment != paCenter;
        alignment = TPM_LAYOUTRTL | (swaps ? alignment ^ TPM_RIGHTALIGN : alignment);
    }
    // The menu may go while it is open; nothing of it is used behind this.
    TrackPopupMenu(Handle(), alignment | buttons[FTrackButton], x, y, 0, PopupOwner.Handle(), nullptr);
}

void TPopupMenu::CloseMenu() { EndMenu(); }

} // namespace kx
