// SPDX-License-Identifier: MIT
// Pages below tabs.

#include "kx/ui/widgets/ComCtrlsPages.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// It, or a control on it, has the focus.
bool HasFocus(const TWinControl& control) {
    const HWND focus = GetFocus();
    return focus && control.HandleAllocated() &&
           (focus == control.WindowHandle() || IsChild(control.WindowHandle(), focus));
}

} // namespace

// --- TTabSheet

const TClass& TTabSheet::StaticClass() {
    static const TClassBuilder<TTabSheet> cls("TTabSheet", TWinControl::StaticClass(), [](auto& c) {
        using T = TTabSheet;
        const auto never = [](const TObject&) { return false; };
        c.Creatable();
        // The page control says where the page is.
        c.Property("Left", &T::Left, &T::SetLeft).Stored = never;
        c.Property("Top", &T::Top, &T::SetTop).Stored = never;
        c.Property("Width", &T::Width, &T::SetWidth).Stored = never;
        c.Property("Height", &T::Height, &T::SetHeight).Stored = never;
        c.Property("Align", &T::Align, &T::SetAlign).Default = alClient;
        c.Property("TabOrder", &T::TabOrder, &T::SetTabOrder).Stored = never;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("PageIndex", &T::PageIndex, &T::SetPageIndex).Stored = never;
        c.Property("TabVisible", &T::TabVisible, &T::SetTabVisible).Default = true;
        c.Property("Visible", static_cast<bool (T::*)() const>(&T::Visible), &T::SetVisible).Stored = never;
        c.Property("OnHide", &T::OnHide, &T::SetOnHide);
        c.Property("OnShow", &T::OnShow, &T::SetOnShow);
    });
    return cls.Class();
}

TTabSheet::TTabSheet(TComponent* owner) : TWinControl(owner) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks, csSetCaption});
    SetAlign(alClient);
    SetVisible(false);
}

TTabSheet::~TTabSheet() {
    if (FPageControl) {
        FPageControl->Remove(*this);
    }
}

void TTabSheet::SetPageControl(TPageControl* value) {
    if (FPageControl == value) {
        return;
    }
    if (FPageControl) {
        FPageControl->Remove(*this);
    }
    TWinControl::SetParent(value);
    if (value) {
        value->Insert(*this);
    }
}

void TTabSheet::SetParent(TWinControl* value) {
    if (auto* const pages = dynamic_cast<TPageControl*>(value)) {
        SetPageControl(pages);
        return;
    }
    if (FPageControl) {
        FPageControl->Remove(*this);
    }
    TWinControl::SetParent(value);
}

TAccessibleInfo TTabSheet::AccessibleInfo() const {
    TAccessibleInfo info = TWinControl::AccessibleInfo();
    info.Role = arPropertyPage;
    return info;
}

void TTabSheet::SetText(const std::string& value) {
    TWinControl::SetText(value);
    if (FPageControl) {
        FPageControl->UpdateTabs();
    }
}

/// What stands on the page keeps its distance from the edges that the page has in the form file, which does not say it.
void TTabSheet::Loaded() {
    if (FPageControl) {
        SetBoundsRect(FPageControl->DisplayRect());
    }
    TWinControl::Loaded();
}

int TTabSheet::PageIndex() const {
    if (!FPageControl) {
        return -1;
    }
    const auto& pages = FPageControl->FPages;
    return static_cast<int>(std::find(pages.begin(), pages.end(), this) - pages.begin());
}

void TTabSheet::SetPageIndex(int value) {
    if (!FPageControl) {
        return;
    }
    auto& pages = FPageControl->FPages;
    static_cast<void>(FPageControl->Pages(value)); // raises the error
    std::erase(pages, this);
    pages.insert(pages.begin() + value, this);
    FPageControl->UpdateTabs();
}

int TTabSheet::TabIndex() const {
    if (!FPageControl || !FTabVisible) {
        return -1;
    }
    const auto& pages = FPageControl->FPages;
    return static_cast<int>(std::count_if(pages.begin(), pages.begin() + PageIndex(),
                                          [](const TTabSheet* page) { return page->FTabVisible; }));
}

void TTabSheet::SetTabVisible(bool value) {
    if (FTabVisible == value) {
        return;
    }
    FTabVisible = value;
    if (!FPageControl) {
        return;
    }
    FPageControl->UpdateTabs();
    if (!value && FPageControl->FActivePage == this) {
        FPageControl->SetActivePage(FPageControl->FindNextPage(this, true, true));
    }
}

// --- TPageControl

const TClass& TPageControl::StaticClass() {
    static const TClassBuilder<TPageControl> cls("TPageControl", TCustomTabControl::StaticClass(), [](auto& c) {
        using T = TPageControl;
        c.Creatable();
        c.Reference("ActivePage", &T::ActivePage, &T::SetActivePage);
        c.Property("HotTrack", &T::HotTrack, &T::SetHotTrack).Default = false;
        c.Property("MultiLine", &T::MultiLine, &T::SetMultiLine).Default = false;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = true;
        c.Property("OnChange", &T::OnChange, &T::SetOnChange);
        c.Property("OnChanging", &T::OnChanging, &T::SetOnChanging);
    });
    return cls.Class();
}

TPageControl::TPageControl(TComponent* owner) : TCustomTabControl(owner) {
    SetControlStyle({csClickEvents, csDoubleClicks}); // controls stand on its pages
}

TPageControl::~TPageControl() {
    for (TTabSheet* page : FPages) {
        page->FPageControl = nullptr;
    }
}

/// System dialogs look for their next control inside windows that say so.
void TPageControl::CreateParams(TCreateParams& params) {
    TCustomTabControl::CreateParams(params);
    params.ExStyle |= WS_EX_CONTROLPARENT;
}

TTabSheet* TPageControl::Pages(int index) const {
    if (index < 0 || index >= PageCount()) {
        throw EListError("List index out of bounds (" + IntToStr(index) + ")");
    }
    return FPages[static_cast<size_t>(index)];
}

void TPageControl::Insert(TTabSheet& page) {
    FPages.push_back(&page);
    page.FPageControl = this;
    UpdateTabs();
    if (!FActivePage && !IsLoading()) {
        SetActivePage(&page);
    }
}

void TPageControl::Remove(TTabSheet& page) {
    TTabSheet* const next = FActivePage == &page ? FindNextPage(&page, true, true) : FActivePage;
    if (FActivePage == &page) {
        FActivePage = nullptr;
    }
    std::erase(FPages, &page);
    page.FPageControl = nullptr;
    if (!IsDestroying()) {
        UpdateTabs();
        SetActivePage(next == &page ? nullptr : next);
    }
}

/// The tabs show the captions of the pages that have one, and which of them is chosen.
void TPageControl::UpdateTabs() {
    TStringList texts;
    for (const TTabSheet* page : FPages) {
        if (page->FTabVisible) {
            texts.Add(page->Caption());
        }
    }
    TabTexts().Assign(&texts);
    TCustomTabControl::SetTabIndex(FActivePage ? FActivePage->TabIndex() : -1);
}

TTabSheet* TPageControl::PageOfTab(int tabIndex) const {
    for (TTabSheet* page : FPages) {
        if (page->FTabVisible && page->TabIndex() == tabIndex) {
            return page;
        }
    }
    return nullptr;
}

void TPageControl::SetTabIndex(int value) { SetActivePage(PageOfTab(value)); }

void TPageControl::SetActivePage(TTabSheet* value) {
    if (!value || value->FPageControl == this) {
        const TAlive alive(*this);
        ChangeActivePage(value);
        if (alive) {
            TCustomTabControl::SetTabIndex(FActivePage ? FActivePage->TabIndex() : -1);
        }
    }
}

/// Gives the focus to the first control of the page that takes it, else to the tabs.
void TPageControl::FocusPage(TTabSheet& page) {
    if (TWinControl* const first = page.FindNextControl(nullptr, true, true, false)) {
        first->SetFocus();
    } else if (CanFocus()) {
        SetFocus();
    }
}

/// Shows the page before it hides the other, so that nothing behind them is seen in between. A focus on the one goes to
/// the other.
void TPageControl::ChangeActivePage(TTabSheet* page) {
    TTabSheet* const old = FActivePage;
    if (old == page) {
        return;
    }
    FActivePage = page;
    const TAlive alive(*this);
    const TAlive pageAlive(page);
    const TAlive oldAlive(old);
    if (page) {
        page->BringToFront();
        page->SetVisible(true);
    }
    if (page && old && pageAlive && oldAlive && alive && HasFocus(*old)) {
        FocusPage(*page);
    }
    if (old && oldAlive) {
        old->SetVisible(false);
    }
    if (old && oldAlive && alive) {
        old->DoHide();
    }
    if (page && pageAlive && alive && FActivePage == page) {
        page->DoShow();
    }
}

int TPageControl::ActivePageIndex() const { return FActivePage ? FActivePage->PageIndex() : -1; }

void TPageControl::SetActivePageIndex(int value) {
    SetActivePage(value >= 0 && value < PageCount() ? Pages(value) : nullptr);
}

TTabSheet* TPageControl::FindNextPage(TTabSheet* page, bool goForward, bool checkTabVisible) const {
    const int count = PageCount();
    const int start = page && page->FPageControl == this ? page->PageIndex() : (goForward ? -1 : count);
    for (int step = 1; step <= count; ++step) {
        const int index = ((start + (goForward ? step : -step)) % count + count) % count;
        TTabSheet* const next = Pages(index);
        if (next != page && (!checkTabVisible || next->FTabVisible)) {
            return next;
        }
    }
    return nullptr;
}

void TPageControl::SelectNextPage(bool goForward) {
    if (TTabSheet* const page = FindNextPage(FActivePage, goForward, true)) {
        Choose(page->TabIndex());
    }
}

bool TPageControl::DialogKey(uint16_t key, TShiftState shift) {
    if (TCustomTabControl::DialogKey(key, shift)) { // pages inside the page come first
        return true;
    }
    if (key != VK_TAB || !shift.Contains(ssCtrl) || shift.Contains(ssAlt) || !HasFocus(*this)) {
        return false;
    }
    SelectNextPage(!shift.Contains(ssShift));
    return true;
}

void TPageControl::Change() {
    const TAlive alive(*this);
    ChangeActivePage(PageOfTab(TabIndex()));
    if (alive) {
        TCustomTabControl::Change();
    }
}

void TPageControl::AlignControls() {
    const TAlive alive(*this);
    TCustomTabControl::AlignControls();
    if (!alive || FSizing || IsLoading() || IsDestroying()) {
        return;
    }
    const TFieldScope sizing(*this, FSizing, true);
    const TRect area = DisplayRect();
    for (size_t i = 0; alive && i < FPages.size(); ++i) {
        if (!FPages[i]->Visible()) {
            FPages[i]->SetBoundsRect(area);
        }
    }
}

void TPageControl::GetChildren(const TGetChildProc& proc, TComponent*) {
    for (TTabSheet* page : std::vector<TTabSheet*>(FPages)) {
        proc(page);
    }
}

void TPageControl::Loaded() {
    TCustomTabControl::Loaded();
    if (!FActivePage) {
        SetActivePage(FindNextPage(nullptr, true, true));
    }
    UpdateTabs();
}

} // namespace kx
