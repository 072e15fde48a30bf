// SPDX-License-Identifier: MIT
// Menu items, and the command numbers by which they are found.

#include "kx/ui/controls/Menus.h"

#include "kx/core/Barrier.h"
#include "kx/core/Lasting.h"
#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/MenusCommands.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <mutex>
#include <unordered_map>

namespace kx {

namespace detail {

namespace {

// The numbers below are those of buttons of dialogs, the numbers above those of the system's own window menu.
constexpr WORD FirstCommand = 0x0100;
constexpr WORD LastCommand = 0xEFFF;

/// The items by their numbers. Every use takes the lock: dialogs may run in other threads, with menus of their own.
struct TCommands {
    std::mutex Lock;
    std::unordered_map<WORD, TMenuItem*> Items;
    WORD Last = FirstCommand - 1;
};

TCommands& Commands() {
    static auto& commands = Lasting<TCommands>(); // menus may outlive static objects
    return commands;
}

} // namespace

WORD RegisterCommand(TMenuItem* item) {
    TCommands& commands = Commands();
    const std::lock_guard lock(commands.Lock);
    if (commands.Items.size() > LastCommand - FirstCommand) {
        throw EMenuError("Too many menu items");
    }
    do {
        commands.Last = commands.Last == LastCommand ? FirstCommand : static_cast<WORD>(commands.Last + 1);
    } while (commands.Items.count(commands.Last) > 0);
    commands.Items[commands.Last] = item;
    return commands.Last;
}

void UnregisterCommand(WORD command) {
    const std::lock_guard lock(Commands().Lock);
    Commands().Items.erase(command);
}

TMenuItem* FindCommand(WORD command) {
    const std::lock_guard lock(Commands().Lock);
    const auto found = Commands().Items.find(command);
    return found == Commands().Items.end() ? nullptr : found->second;
}

TMenuItem* FindSubmenu(HMENU handle) {
    const std::lock_guard lock(Commands().Lock);
    for (const auto& [command, item] : Commands().Items) {
        if (item->FHandle.get() == handle) {
            return item;
        }
    }
    return nullptr;
}

} // namespace detail

const TClass& TMenuItem::StaticClass() {
    static const TClassBuilder<TMenuItem> cls("TMenuItem", TComponent::StaticClass(), [](auto& c) {
        c.Reference("Action", &TMenuItem::Action, &TMenuItem::SetAction);
        c.Property("AutoCheck", &TMenuItem::AutoCheck, &TMenuItem::SetAutoCheck).Default = false;
        c.Property("Break", &TMenuItem::Break, &TMenuItem::SetBreak).Default = mbNone;
        c.Property("Caption", &TMenuItem::Caption, &TMenuItem::SetCaption);
        c.Property("Checked", &TMenuItem::Checked, &TMenuItem::SetChecked).Default = false;
        c.Property("Default", &TMenuItem::Default, &TMenuItem::SetDefault).Default = false;
        c.Property("Enabled", &TMenuItem::Enabled, &TMenuItem::SetEnabled).Default = true;
        c.Property("GroupIndex", &TMenuItem::GroupIndex, &TMenuItem::SetGroupIndex).Default = 0;
        c.Property("Hint", &TMenuItem::Hint, &TMenuItem::SetHint);
        c.Property("ImageIndex", &TMenuItem::ImageIndex, &TMenuItem::SetImageIndex).Default = -1;
        c.Property("RadioItem", &TMenuItem::RadioItem, &TMenuItem::SetRadioItem).Default = false;
        c.Property("ShortCut", &TMenuItem::ShortCut, &TMenuItem::SetShortCut).Default = 0;
        c.Property("Visible", &TMenuItem::Visible, &TMenuItem::SetVisible).Default = true;
        c.Property("OnClick", &TMenuItem::OnClick, &TMenuItem::SetOnClick);
        c.Creatable();
    });
    return cls.Class();
}

TMenuItem::TMenuItem(TComponent* owner) : TComponent(owner), FCommand(detail::RegisterCommand(this)) {}

TMenuItem::~TMenuItem() {
    Destroying();
    if (FParent) {
        Guarded([this] { FParent->Remove(this); }); // this fires the menu's OnChange
    }
    EmptyHandle();
    Clear();
    detail::UnregisterCommand(FCommand);
}

// --- Structure

TMenuItem* TMenuItem::Items(int index) const {
    if (index < 0 || index >= Count()) {
        throw EMenuError("Menu index out of range");
    }
    return FItems[static_cast<size_t>(index)];
}

void TMenuItem::Insert(int index, TMenuItem* item) {
    if (item->FParent || item->FMenu || item == this) {
        throw EMenuError("Menu inserted twice");
    }
    for (const TMenuItem* above = this; above; above = above->FParent) {
        if (above == item) {
            throw EMenuError("Menu inserted twice");
        }
    }
    if (index < 0 || index > Count()) {
        throw EMenuError("Menu index out of range");
    }
    FItems.insert(FItems.begin() + index, item);
    item->FParent = this;
    ItemsChanged();
}

void TMenuItem::Delete(int index) {
    TMenuItem* item = Items(index);
    FItems.erase(FItems.begin() + index);
    item->FParent = nullptr;
    ItemsChanged();
}

void TMenuItem::Remove(TMenuItem* item) {
    const int index = IndexOf(item);
    if (index < 0) {
        throw EMenuError("Sub-menu is not in menu");
    }
    Delete(index);
}

void TMenuItem::Clear() {
    const TAlive alive(*this);
    while (alive && !FItems.empty()) { // handlers hear of each change
        TMenuItem* const item = FItems.back();
        if (item->IsGoing()) {
            CallOut([&] { Remove(item); }); // its destruction goes on without its parent
        } else {
            item->Free();
        }
    }
}

int TMenuItem::IndexOf(const TMenuItem* item) const {
    const auto found = std::find(FItems.begin(), FItems.end(), item);
    return found == FItems.end() ? -1 : static_cast<int>(found - FItems.begin());
}

TMenuItem* TMenuItem::Find(const std::string& caption) const {
    for (TMenuItem* item : FItems) {
        if (SameText(StripHotkey(item->FCaption), StripHotkey(caption))) {
            return item;
        }
    }
    return nullptr;
}

TMenu* TMenuItem::GetParentMenu() const {
    const TMenuItem* root = this;
    while (root->FParent) {
        root = root->FParent;
    }
    return root->FMenu;
}

int TMenuItem::MenuIndex() const { return FParent ? FParent->IndexOf(this) : -1; }

void TMenuItem::SetMenuIndex(int value) {
    if (FParent && value != MenuIndex()) {
        TMenuItem* const parent = FParent;
        const TAlive parentAlive(*parent);
        if (Outlives(*this, [&] { parent->Remove(this); }) && parentAlive && !FParent) {
            parent->Insert(std::clamp(value, 0, parent->Count()), this);
        }
    }
}

TComponent* TMenuItem::GetParentComponent() const {
    if (FParent && FParent->FMenu) {
        return FParent->FMenu;
    }
    return FParent;
}

void TMenuItem::SetParentComponent(TComponent* parent) {
    const TAlive parentAlive(parent);
    if ((FParent && !Outlives(*this, [this] { FParent->Remove(this); })) || !parentAlive) {
        return;
    }
    if (auto* menu = dynamic_cast<TMenu*>(parent)) {
        menu->Items().Add(this);
    } else if (auto* item = dynamic_cast<TMenuItem*>(parent)) {
        item->Add(this);
    }
}

void TMenuItem::GetChildren(const TGetChildProc& proc, TComponent*) {
    for (TMenuItem* item : std::vector<TMenuItem*>(FItems)) {
        proc(item);
    }
}

// --- Look

namespace {

/// How a menu shows the item.
UINT StateOf(const TMenuItem& item) {
    return (item.Checked() ? UINT{MFS_CHECKED} : 0u) | (item.Default() ? UINT{MFS_DEFAULT} : 0u) |
           (item.Enabled() ? UINT{MFS_ENABLED} : UINT{MFS_DISABLED});
}

} // namespace

template <class V> void TMenuItem::Change(V& field, const V& value) {
    if (field == value) {
        return;
    }
    field = value;
    if (FParent) {
        FParent->ItemsChanged();
    }
}

/// Menus are brought up to date while they are closed: to build them anew each time, and to draw the menu bar, which
/// shows nothing of it, would be felt.
void TMenuItem::ChangeState(bool& field, bool value) {
    TMenu* const menu = FParent && !FParent->FMenu ? GetParentMenu() : nullptr;
    if (!menu) {
        return Change(field, value); // it is in no menu, or in the bar
    }
    if (field == value) {
        return;
    }
    field = value;
    if (FVisible && FParent->FHandle) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_STATE;
        info.fState = StateOf(*this);
        const auto self = std::find(FParent->FItems.begin(), FParent->FItems.end(), this);
        const auto before =
            std::count_if(FParent->FItems.begin(), self, [](TMenuItem* item) { return item->FVisible; });
        SetMenuItemInfoW(FParent->FHandle.get(), static_cast<UINT>(before), TRUE, &info);
    }
    if (!menu->IsLoading() && !menu->IsDestroying()) {
        const TNotifyEvent handler = menu->OnChange();
        handler(menu);
    }
}

void TMenuItem::SetCaption(const std::string& value) { Change(FCaption, value); }

void TMenuItem::SetChecked(bool value) {
    if (Outlives(*this, [&] { ChangeState(FChecked, value); }) && value) {
        ReleaseFellows();
    }
}

/// A checked radio item is the only one of its group.
void TMenuItem::ReleaseFellows() {
    const auto isFellow = [this](const TMenuItem* item) {
        return item != this && item->FRadioItem && item->FChecked && item->FGroupIndex == FGroupIndex;
    };
    const TAlive alive(*this);
    while (alive && FParent && FRadioItem && FChecked) { // handlers hear of each change
        const auto fellow = std::find_if(FParent->FItems.begin(), FParent->FItems.end(), isFellow);
        if (fellow == FParent->FItems.end()) {
            break;
        }
        (*fellow)->SetChecked(false);
    }
}

void TMenuItem::SetDefault(bool value) {
    const auto isOther = [this](const TMenuItem* item) { return item != this && item->FDefault; };
    const TAlive alive(*this);
    while (alive && value && FParent) { // handlers hear of each change
        const auto other = std::find_if(FParent->FItems.begin(), FParent->FItems.end(), isOther);
        if (other == FParent->FItems.end()) {
            break;
        }
        (*other)->SetDefault(false);
    }
    if (alive) {
        Change(FDefault, value);
    }
}

void TMenuItem::SetEnabled(bool value) { ChangeState(FEnabled, value); }

void TMenuItem::SetVisible(bool value) { Change(FVisible, value); }

void TMenuItem::SetRadioItem(bool value) {
    if (Outlives(*this, [&] { Change(FRadioItem, value); })) {
        ReleaseFellows();
    }
}

void TMenuItem::SetGroupIndex(uint8_t value) {
    if (Outlives(*this, [&] { Change(FGroupIndex, value); })) {
        ReleaseFellows();
    }
}

void TMenuItem::SetBreak(TMenuBreak value) { Change(FBreak, value); }

void TMenuItem::SetShortCut(TShortCut value) { Change(FShortCut, value); }

void TMenuItem::SetImageIndex(int value) { Change(FImageIndex, value); }

bool TMenuItem::ShowsImage() const {
    const TMenu* menu = GetParentMenu();
    return menu && menu->Images() && FImageIndex >= 0 && FImageIndex < menu->Images()->Count();
}

void TMenuItem::Click() {
    if (FEnabled && FAutoCheck && !Outlives(*this, [this] { SetChecked(FRadioItem || !FChecked); })) {
        return;
    }
    if (FEnabled && !FOnClick && Action()) {
        Action()->Execute();
    } else if (FEnabled) {
        const TNotifyEvent handler = FOnClick; // a copy: the handler may free the item
        handler(this);
    }
}

// --- The system's menu

/// Takes all entries out of the submenu. The system would destroy submenus that are left in it along with it.
void TMenuItem::EmptyHandle() {
    while (FHandle && RemoveMenu(FHandle.get(), 0, MF_BYPOSITION)) {
    }
}

HMENU TMenuItem::Handle() {
    if (!FHandle) {
        FHandle.reset(FMenu ? FMenu->NewHandle() : CreatePopupMenu());
        if (!FHandle) {
            throw EOutOfMemory("Out of system resources");
        }
        for (TMenuItem* item : FItems) {
            item->AppendTo(FHandle.get());
        }
    }
    return FHandle.get();
}

void TMenuItem::AppendTo(HMENU menu) {
    if (!FVisible) {
        return;
    }
    std::string text = FCaption;
    const std::string shortCut = FItems.empty() ? ShortCutToText(FShortCut) : std::string();
    if (!shortCut.empty()) {
        text += '\t' + shortCut;
    }
    std::wstring wide = ToWide(text);
    MENUITEMINFOW info = {};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
    info.fType = (IsLine() ? UINT{MFT_SEPARATOR} : UINT{MFT_STRING}) | (FRadioItem ? UINT{MFT_RADIOCHECK} : 0u) |
                 (FBreak == mbBreak      ? UINT{MFT_MENUBREAK}
                  : FBreak == mbBarBreak ? UINT{MFT_MENUBARBREAK}
                                         : 0u);
    info.fState = StateOf(*this);
    info.wID = FCommand;
    info.hSubMenu = FItems.empty() ? nullptr : Handle();
    info.dwTypeData = wide.data();
    if (ShowsImage()) {
        info.fMask |= MIIM_BITMAP;
        info.hbmpItem = HBMMENU_CALLBACK;
    }
    InsertMenuItemW(menu, static_cast<UINT>(GetMenuItemCount(menu)), TRUE, &info);
}

void TMenuItem::ItemsChanged() {
    EmptyHandle();
    if (IsDestroying()) {
        return;
    }
    for (TMenuItem* item : FItems) {
        if (FHandle) {
            item->AppendTo(FHandle.get());
        }
    }
    // The first item makes its parent's entry a submenu, the last one takes that away.
    if (FParent) {
        FParent->ItemsChanged();
    } else if (FMenu) {
        FMenu->MenuChanged();
    }
}

} // namespace kx
