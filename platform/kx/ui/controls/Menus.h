// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/core/Components.h"
#include "kx/core/Types.h"
#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/ControlTypes.h"
#include "kx/ui/controls/ShortCuts.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <memory>
#include <string>
#include <vector>

namespace kx {

class TActionLink;
class TBasicAction;
class TMenu;
class TMenuItem;

namespace detail {
TMenuItem* FindSubmenu(HMENU handle);
}

KX_EXCEPTION(EMenuError, Exception);

// --- Items

/// Whether a menu item begins a new column: without or with a line in front of it.
enum TMenuBreak : uint8_t { mbNone, mbBreak, mbBarBreak };
KX_ENUM(TMenuBreak, "mbNone", "mbBreak", "mbBarBreak")

/// An entry of a menu, with the entries of its own submenu. An item frees the items below it.
///
/// Each item has a command number of its own, unique in the process, by which its owner window's WM_COMMAND finds it.
class TMenuItem : public TComponent {
    KX_CLASS()

    explicit TMenuItem(TComponent* owner = nullptr);
    ~TMenuItem() override;

    int Count() const { return static_cast<int>(FItems.size()); }
    TMenuItem* Items(int index) const; ///< @throws EMenuError "Menu index out of range"
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TMenuItem*>& Items() const { return FItems; }
    TMenuItem* operator[](int index) const { return Items(index); }
    /// The item goes to the end, or to `index`. @throws EMenuError "Menu inserted twice", "Menu index out of range"
    void Add(TMenuItem* item) { Insert(Count(), item); }
    void Insert(int index, TMenuItem* item);
    void Delete(int index);       ///< Takes the item out without freeing it.
    void Remove(TMenuItem* item); ///< The same. @throws EMenuError "Sub-menu is not in menu"
    void Clear();                 ///< Frees all items.
    int IndexOf(const TMenuItem* item) const;
    TMenuItem* Find(const std::string& caption) const; ///< Among its own items, without accelerator marks.
    TMenuItem* Parent() const { return FParent; }
    TMenu* GetParentMenu() const; ///< The menu that the item is in; null when it is in none.
    int MenuIndex() const;        ///< Position in its parent; -1 without one.
    void SetMenuIndex(int value);
    bool IsLine() const { return FCaption == "-"; } ///< A separator.

    /// Number that the item's WM_COMMAND carries.
    WORD Command() const { return FCommand; }
    /// The submenu. Made on first use, with one entry per visible item; owned by the item.
    HMENU Handle();

    const std::string& Caption() const { return FCaption; } ///< "-" is a separator; "&" marks the accelerator.
    void SetCaption(const std::string& value);
    bool Checked() const { return FChecked; }
    void SetChecked(bool value); ///< A radio item releases its fellows of the same group.
    bool Default() const { return FDefault; }
    void SetDefault(bool value); ///< Takes the mark from the item that had it.
    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value);
    bool Visible() const { return FVisible; }
    void SetVisible(bool value);
    bool RadioItem() const { return FRadioItem; }
    void SetRadioItem(bool value);
    uint8_t GroupIndex() const { return FGroupIndex; }
    void SetGroupIndex(uint8_t value);
    TShortCut ShortCut() const { return FShortCut; }
    void SetShortCut(TShortCut value);
    bool AutoCheck() const { return FAutoCheck; } ///< A click turns `Checked` over; a radio item it only checks.
    void SetAutoCheck(bool value) { FAutoCheck = value; }
    TMenuBreak Break() const { return FBreak; }
    void SetBreak(TMenuBreak value);
    const std::string& Hint() const { return FHint; }
    void SetHint(const std::string& value) { FHint = value; }
    int ImageIndex() const { return FImageIndex; } ///< In the menu's images; -1: none.
    void SetImageIndex(int value);

    /// What choosing the item does when it has no OnClick. It follows the action as controls do. Not owned.
    TBasicAction* Action() const;
    void SetAction(TBasicAction* value);

    const TNotifyEvent& OnClick() const { return FOnClick; }
    void SetOnClick(TNotifyEvent value) { FOnClick = std::move(value); }
    /// What choosing the item does; nothing while it is disabled. Items with a submenu are clicked before it opens.
    virtual void Click();

    TComponent* GetParentComponent() const override;
    void SetParentComponent(TComponent* parent) override;
    void GetChildren(const TGetChildProc& proc, TComponent* root) override;

    /// Whether the item shows an image of its menu's `Images`.
    bool ShowsImage() const;

private:
    friend class TMenu;
    friend TMenuItem* detail::FindSubmenu(HMENU handle);
    template <class V> void Change(V& field, const V& value);
    void ChangeState(bool& field, bool value); ///< The same, when the menu need not be built anew.
    void ReleaseFellows();
    void EmptyHandle();
    void AppendTo(HMENU menu);
    void ItemsChanged(); ///< Has the submenu, and what shows it, follow the items again.

    std::string FCaption;
    std::string FHint;
    bool FChecked = false;
    bool FDefault = false;
    bool FEnabled = true;
    bool FVisible = true;
    bool FRadioItem = false;
    bool FAutoCheck = false;
    TMenuBreak FBreak = mbNone;
    uint8_t FGroupIndex = 0;
    TShortCut FShortCut = 0;
    int FImageIndex = -1;
    WORD FCommand = 0;
    std::unique_ptr<TActionLink> FActionLink; ///< Null until there is an action.
    TNotifyEvent FOnClick;
    TMenuItem* FParent = nullptr;
    TMenu* FMenu = nullptr; ///< Set in a menu's root item only.
    std::vector<TMenuItem*> FItems;
    unique_hmenu FHandle;
};

// --- Menus

/// What main menus and popup menus have in common: a root item, which holds the others.
class TMenu : public TComponent {
    KX_CLASS()

    explicit TMenu(TComponent* owner = nullptr);
    ~TMenu() override;

    TMenuItem& Items() { return *FItems; }
    const TMenuItem& Items() const { return *FItems; }
    HMENU Handle() { return FItems->Handle(); }
    TImageList* Images() const { return FImages; } ///< Not owned.
    void SetImages(TImageList* value);

    TMenuItem* FindShortCut(TShortCut shortCut) const; ///< Null when no item has it.
    /// For a WM_KEYDOWN or WM_SYSKEYDOWN of the menu's form: clicks the item of that shortcut. The items above it are
    /// clicked before, from the top, so that they can bring their submenus up to date as if these opened. False when no
    /// item has the shortcut, or when the item or one above it is disabled.
    bool IsShortCut(WPARAM wParam, LPARAM lParam);

    /// Window that shows the menu; it is told to draw its menu bar again after changes.
    void SetWindowHandle(HWND value) { FWindowHandle = value; }

    void GetChildren(const TGetChildProc& proc, TComponent* root) override;

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

protected:
    void Notification(TComponent* component, TOperation operation) override;
    virtual void MenuChanged();
    virtual HMENU NewHandle() const;

private:
    friend class TMenuItem;
    TMenuItem* FItems; ///< Owned as a component.
    TImageList* FImages = nullptr;
    TChangeLink FImageChangeLink;
    HWND FWindowHandle = nullptr;
    TNotifyEvent FOnChange;
};

/// The menu bar of a form.
class TMainMenu : public TMenu {
    KX_CLASS()

    explicit TMainMenu(TComponent* owner = nullptr) : TMenu(owner) {}

protected:
    HMENU NewHandle() const override;
};

enum TPopupAlignment : uint8_t { paLeft, paRight, paCenter };
KX_ENUM(TPopupAlignment, "paLeft", "paRight", "paCenter")

enum TTrackButton : uint8_t { tbRightButton, tbLeftButton };
KX_ENUM(TTrackButton, "tbRightButton", "tbLeftButton")

/// A menu that opens anywhere on the screen. Its commands go to a hidden window of the calling thread, so that it works
/// over windows of the system too; they arrive, as the system does it, after `Popup` has returned.
class TPopupMenu : public TMenu {
    KX_CLASS()

    explicit TPopupMenu(TComponent* owner = nullptr) : TMenu(owner) {}

    /// Opens the menu at a point of the screen and returns when it has closed. OnPopup runs before, and may free the
    /// menu.
    virtual void Popup(int x, int y);
    /// Screen coordinates of the last `Popup`; (-1, -1) at first.
    const TPoint& PopupPoint() const { return FPopupPoint; }
    void CloseMenu(); ///< Closes the menu that is open in the calling thread, whichever it is.

    /// The component whose menu it was the last time; not owned.
    TComponent* PopupComponent() const { return FPopupComponent.Get(); }
    void SetPopupComponent(TComponent* value) { FPopupComponent.Set(value); }
    /// Reading order while it is open: with bdRightToLeft the menu opens to the left. Controls that open it set theirs.
    TBiDiMode BiDiMode() const { return FBiDiMode; }
    void SetBiDiMode(TBiDiMode value) { FBiDiMode = value; }
    TPopupAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TPopupAlignment value) { FAlignment = value; }
    TTrackButton TrackButton() const { return FTrackButton; }
    void SetTrackButton(TTrackButton value) { FTrackButton = value; }
    bool AutoPopup() const { return FAutoPopup; } ///< Opens by itself on a right click on its control.
    void SetAutoPopup(bool value) { FAutoPopup = value; }

    const TNotifyEvent& OnPopup() const { return FOnPopup; }
    void SetOnPopup(TNotifyEvent value) { FOnPopup = std::move(value); }

protected:
    virtual void DoPopup();

private:
    TPoint FPopupPoint{-1, -1};
    TComponentRef<TComponent> FPopupComponent;
    TBiDiMode FBiDiMode = bdLeftToRight;
    TPopupAlignment FAlignment = paLeft;
    TTrackButton FTrackButton = tbRightButton;
    bool FAutoPopup = true;
    TNotifyEvent FOnPopup;
};

/// For the window procedure of a window that owns menus: handles WM_COMMAND of menu items, WM_INITMENUPOPUP, and
/// measuring and drawing of item images, for items of `menu`, or of any menu when that is null. WM_MENUSELECT puts the
/// item's long hint into `Application().Hint`. False leaves the message to the caller.
bool DispatchMenuMessage(TMenu* menu, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

} // namespace kx
