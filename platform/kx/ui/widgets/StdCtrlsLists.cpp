// SPDX-License-Identifier: MIT
// List boxes and combo boxes.

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>

namespace kx {

// --- Items

namespace detail {

void TControlItems::InsertIntoWindow(int index, const std::string& text) {
    if (FControl.HandleAllocated()) {
        SendMessageW(FControl.WindowHandle(), FMessages.Insert, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(ToWide(text).c_str()));
    }
}

void TControlItems::Insert(int index, const std::string& text) {
    FItems.Insert(index, text);
    InsertIntoWindow(index, text);
}

int TControlItems::Add(const std::string& text) {
    const int index = FItems.Add(text);
    InsertIntoWindow(index, text);
    return index;
}

void TControlItems::Put(int index, const std::string& text) {
    TObject* const object = FItems.GetObject(index);
    Delete(index);
    Insert(index, text);
    FItems.PutObject(index, object);
}

void TControlItems::Delete(int index) {
    FItems.Delete(index);
    if (FControl.HandleAllocated()) {
        SendMessageW(FControl.WindowHandle(), FMessages.Delete, static_cast<WPARAM>(index), 0);
    }
}

void TControlItems::Clear() {
    FItems.Clear();
    if (FControl.HandleAllocated()) {
        const std::string text = FControl.Text();
        SendMessageW(FControl.WindowHandle(), FMessages.Reset, 0, 0);
        if (FMessages.Reset == CB_RESETCONTENT) {
            FControl.SetText(text); // the system has emptied the edit as well
        }
    }
}

void TControlItems::SetSorted(bool value) {
    if (Sorted() != value) {
        FItems.SetSorted(value);
        if (FControl.HandleAllocated()) {
            FillWindow();
        }
    }
}

void TControlItems::FillWindow() {
    SendMessageW(FControl.WindowHandle(), FMessages.Reset, 0, 0);
    for (int i = 0; i < FItems.Count(); ++i) {
        InsertIntoWindow(i, FItems.Get(i));
    }
}

void TControlItems::SetUpdateState(bool updating) {
    if (FControl.HandleAllocated()) {
        SendMessageW(FControl.WindowHandle(), WM_SETREDRAW, !updating, 0);
        if (!updating) {
            FControl.Invalidate();
        }
    }
}

} // namespace detail

// --- TListBox

const TClass& TListBox::StaticClass() {
    static const TClassBuilder<TListBox> cls("TListBox", TWinControl::StaticClass(), [](auto& c) {
        using T = TListBox;
        c.Creatable();
        c.Property("BorderStyle", &T::BorderStyle, &T::SetBorderStyle).Default = bsSingle;
        c.SubObject("Items", &T::Items, &T::SetItems);
        c.Property("MultiSelect", &T::MultiSelect, &T::SetMultiSelect).Default = false;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("Sorted", &T::Sorted, &T::SetSorted).Default = false;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
    });
    return cls.Class();
}

TListBox::TListBox(TComponent* owner)
    : TWinControl(owner), FItems(*this, {LB_INSERTSTRING, LB_DELETESTRING, LB_RESETCONTENT}) {
    SetControlStyle({csDoubleClicks});
    SetColor(clWindow);
    SetTabStop(true);
    SetBoundsFields(0, 0, 121, 97);
}

void TListBox::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = "LISTBOX";
    params.Style |= WS_VSCROLL | LBS_NOTIFY | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT;
    params.Style |= FMultiSelect ? DWORD{LBS_EXTENDEDSEL} : 0;
    params.ExStyle |= FBorderStyle == bsSingle ? DWORD{WS_EX_CLIENTEDGE} : 0;
}

void TListBox::CreateWnd() {
    TWinControl::CreateWnd();
    FItems.FillWindow();
    if (FMultiSelect) {
        for (const int index : FSelection) {
            SendMessageW(WindowHandle(), LB_SETSEL, TRUE, index);
        }
    } else {
        SetItemIndex(FItemIndex);
    }
}

void TListBox::SaveWindowState() {
    TWinControl::SaveWindowState();
    FItemIndex = ItemIndex();
    FSelection.clear();
    for (int i = 0; FMultiSelect && i < FItems.Count(); ++i) {
        if (Selected(i)) {
            FSelection.push_back(i);
        }
    }
}

void TListBox::WndProc(TMessage& message) {
    if (message.Msg == CN_COMMAND) {
        if (message.WParamHi() == LBN_SELCHANGE) {
            Click();
        } else if (message.WParamHi() == LBN_DBLCLK) {
            DblClick();
        }
        return;
    }
    TWinControl::WndProc(message);
}

int TListBox::ItemIndex() const {
    if (!HandleAllocated()) {
        return FItemIndex;
    }
    return static_cast<int>(SendMessageW(WindowHandle(), FMultiSelect ? LB_GETCARETINDEX : LB_GETCURSEL, 0, 0));
}

void TListBox::SetItemIndex(int value) {
    FItemIndex = value;
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), FMultiSelect ? LB_SETCARETINDEX : LB_SETCURSEL, static_cast<WPARAM>(value), 0);
    }
}

bool TListBox::Selected(int index) const {
    if (!HandleAllocated()) {
        return FMultiSelect ? std::find(FSelection.begin(), FSelection.end(), index) != FSelection.end()
                            : FItemIndex == index;
    }
    return SendMessageW(WindowHandle(), LB_GETSEL, static_cast<WPARAM>(index), 0) > 0;
}

void TListBox::SetSelected(int index, bool value) {
    if (index < 0 || index >= FItems.Count()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    if (FMultiSelect) {
        SendMessageW(Handle(), LB_SETSEL, value, index);
    } else {
        SetItemIndex(value ? index : -1);
    }
}

int TListBox::SelCount() const {
    int count = 0;
    for (int i = 0; i < FItems.Count(); ++i) {
        count += Selected(i) ? 1 : 0;
    }
    return count;
}

void TListBox::SetBorderStyle(TBorderStyle value) {
    if (FBorderStyle != value) {
        FBorderStyle = value;
        RecreateWnd();
    }
}

void TListBox::SetMultiSelect(bool value) {
    if (FMultiSelect != value) {
        const bool had = HandleAllocated();
        if (!Outlives(*this, [this] { DestroyHandle(); })) { // this saves the selection in the old way
            return;
        }
        FMultiSelect = value;
        if (had) {
            HandleNeeded();
        }
    }
}

int TListBox::TopIndex() const {
    return HandleAllocated() ? static_cast<int>(SendMessageW(WindowHandle(), LB_GETTOPINDEX, 0, 0)) : 0;
}

void TListBox::SetTopIndex(int value) { SendMessageW(Handle(), LB_SETTOPINDEX, static_cast<WPARAM>(value), 0); }

int TListBox::ItemAtPos(const TPoint& point) const {
    for (int i = TopIndex(); HandleAllocated() && i < FItems.Count(); ++i) {
        RECT r{};
        SendMessageW(WindowHandle(), LB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&r));
        if (PtInRect(&r, ToPOINT(point))) {
            return i;
        }
    }
    return -1;
}

// --- TComboBox

const TClass& TComboBox::StaticClass() {
    static const TClassBuilder<TComboBox> cls("TComboBox", TWinControl::StaticClass(), [](auto& c) {
        using T = TComboBox;
        c.Creatable();
        c.Property("Style", &T::Style, &T::SetStyle).Default = csDropDown;
        c.Property("ItemHeight", &T::ItemHeight, &T::SetItemHeight).Default = 16;
        c.Property("DropDownCount", &T::DropDownCount, &T::SetDropDownCount).Default = 8;
        c.Property("MaxLength", &T::MaxLength, &T::SetMaxLength).Default = 0;
        c.Property("ParentColor", &T::ParentColor, &T::SetParentColor).Default = false;
        c.Property("Sorted", &T::Sorted, &T::SetSorted).Default = false;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("Text", &T::Text, &T::SetText);
        c.SubObject("Items", &T::Items, &T::SetItems);
        c.Property("ItemIndex", &T::ItemIndex, &T::SetItemIndex).Default = -1;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
        c.Property("OnDrawItem", &T::OnDrawItem, &T::SetOnDrawItem);
        c.Property("OnDropDown", &T::OnDropDown, &T::SetOnDropDown);
        c.Property("OnMeasureItem", &T::OnMeasureItem, &T::SetOnMeasureItem);
    });
    return cls.Class();
}

TComboBox::TComboBox(TComponent* owner)
    : TWinControl(owner), FItems(*this, {CB_INSERTSTRING, CB_DELETESTRING, CB_RESETCONTENT}),
      FCanvas(std::make_unique<TCanvas>()) {
    SetControlStyle({csDoubleClicks, csSetCaption});
    SetColor(clWindow);
    SetTabStop(true);
    SetBoundsFields(0, 0, 145, 21);
}

void TComboBox::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = "COMBOBOX";
    params.Height += DropDownHeight();
    constexpr DWORD styles[] = {CBS_DROPDOWN, CBS_SIMPLE, CBS_DROPDOWNLIST, CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED,
                                CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE};
    params.Style |= styles[FStyle] | WS_VSCROLL | CBS_HASSTRINGS | CBS_AUTOHSCROLL;
}

void TComboBox::CreateWnd() {
    const std::string text = TControl::Text();
    TWinControl::CreateWnd();
    FItems.FillWindow();
    SendMessageW(WindowHandle(), CB_LIMITTEXT, static_cast<WPARAM>(FMaxLength), 0);
    WatchEdit();
    RECT r; // the system chose the height
    GetWindowRect(WindowHandle(), &r);
    SetBoundsFields(Left(), Top(), r.right - r.left, r.bottom - r.top);
    if (FItemIndex >= 0) {
        SetItemIndex(FItemIndex);
    } else {
        SetText(text);
    }
}

void TComboBox::SaveWindowState() {
    TWinControl::SaveWindowState();
    FItemIndex = ItemIndex();
    if (FItemIndex >= 0 && FItems.Get(FItemIndex) != TControl::Text()) {
        FItemIndex = -1; // the user has typed something else since
    }
}

/// The system takes a new window's height as that of the open list, and makes the closed box as high as its edit.
int TComboBox::DropDownHeight() const {
    const int itemHeight = IsOwnerDrawn() ? FItemHeight : std::abs(Font().Height()) + 4;
    return FStyle == csSimple ? 0 : FDropDownCount * itemHeight + 2;
}

void TComboBox::WndProc(TMessage& message) {
    switch (message.Msg) {
    case CN_COMMAND: Notified(message.WParamHi()); return;
    case CN_DRAWITEM:
        DrawItemNotification(message.LParamAs<DRAWITEMSTRUCT>());
        message.Result = TRUE;
        return;
    case CN_MEASUREITEM:
        MeasureItemNotification(message.LParamAs<MEASUREITEMSTRUCT>());
        message.Result = TRUE;
        return;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX: // its own parts ask
        message.Result = reinterpret_cast<LRESULT>(ControlColor(message.WParamDC()));
        return;
    case WM_DESTROY: // may come while an item is drawn
        FCanvas->SetHandle(nullptr);
        break;
    }
    TWinControl::WndProc(message);
}

void TComboBox::Notified(int code) {
    const TAlive alive(*this);
    switch (code) {
    case CBN_EDITCHANGE:
        if (!IsHalfTyped()) {
            DoChange();
        }
        break;
    case CBN_SELCHANGE:
        if (HasEdit() && ItemIndex() >= 0) {
            // The edit takes over the text only after this notification.
            SetWindowTextW(WindowHandle(), ToWide(FItems.Get(ItemIndex())).c_str());
        }
        if (alive) {
            Click();
        }
        if (alive) {
            DoChange();
        }
        break;
    case CBN_DBLCLK: DblClick(); break;
    case CBN_DROPDOWN: DoDropDown(); break;
    case CBN_SETFOCUS:
        FocusGained(); // its edit has the focus
        break;
    case CBN_KILLFOCUS: FocusWent(::GetFocus()); break;
    default: break;
    }
}

/// The keys go to the edit inside: watches them, since their events are the combo box's.
void TComboBox::WatchEdit() {
    const HWND edit = !HasEdit() ? nullptr : FindWindowExW(WindowHandle(), nullptr, L"EDIT", nullptr);
    if (!edit) {
        return;
    }
    FEdit.SetHandler([this](TMessage& message) {
        switch (message.Msg) {
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
        case WM_KEYUP:
        case WM_SYSKEYUP:
        case WM_CHAR:
        case WM_SYSCHAR: {
            const TAlive alive(*this);
            const auto passOn = [this](TMessage& half) { FEdit.CallPrevious(half); };
            if (!KeyHandler(FEdit.Handle(), message, passOn) && alive) {
                FEdit.CallPrevious(message);
            }
            break;
        }
        case WM_UNICHAR: CharHandler(FEdit.Handle(), message); break;
        case WM_PASTE: {
            const HWND window = FEdit.Handle();
            FEdit.CallPrevious(message);
            detail::RemoveHalfCharacter(window);
            break;
        }
        default: FEdit.CallPrevious(message);
        }
    });
    FEdit.Install(edit);
}

void TComboBox::DoChange() { FOnChange(this); }
void TComboBox::DoDropDown() { FOnDropDown(this); }

bool TComboBox::WantsKey(uint16_t key, TShiftState) { return DroppedDown() && (key == VK_RETURN || key == VK_ESCAPE); }

int TComboBox::ItemIndex() const {
    return HandleAllocated() ? static_cast<int>(SendMessageW(WindowHandle(), CB_GETCURSEL, 0, 0)) : FItemIndex;
}

void TComboBox::SetItemIndex(int value) {
    FItemIndex = value;
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), CB_SETCURSEL, static_cast<WPARAM>(value), 0);
    } else if (value >= 0 && value < FItems.Count()) {
        TControl::SetText(FItems.Get(value));
    }
}

void TComboBox::SetText(const std::string& value) {
    const int index = FItems.IndexOf(value);
    if (!HasEdit()) {
        SetItemIndex(index);
    } else {
        if (HandleAllocated() || (FItemIndex >= 0 && FItemIndex < FItems.Count() && FItems.Get(FItemIndex) != value)) {
            FItemIndex = -1;
        }
        TWinControl::SetText(value);
    }
}

void TComboBox::SetStyle(TComboBoxStyle value) {
    if (FStyle != value) {
        FStyle = value;
        RecreateWnd();
    }
}

bool TComboBox::DroppedDown() const {
    return HandleAllocated() && SendMessageW(WindowHandle(), CB_GETDROPPEDSTATE, 0, 0) != 0;
}

void TComboBox::SetDroppedDown(bool value) { SendMessageW(Handle(), CB_SHOWDROPDOWN, value, 0); }

void TComboBox::SetMaxLength(int value) {
    FMaxLength = std::max(value, 0);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), CB_LIMITTEXT, static_cast<WPARAM>(FMaxLength), 0);
    }
}

void TComboBox::SelectAll() { SendMessageW(Handle(), CB_SETEDITSEL, 0, MAKELPARAM(0, 0xFFFF)); }

} // namespace kx
