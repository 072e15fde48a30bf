// Pages below tabs.

#include "kx/ui/widgets/ComCtrlsPages.h"

#include <algorithm>

namespace kx {

// --- TTabSheet

const TClass& TTabSheet::StaticClass() {
    static const TClassBuilder<TTabSheet> cls("TTabSheet", TWinControl::StaticClass(), [](auto& c) {
        using T = TTabSheet;
        const auto never = [](const TObject&) { return false; };
        c.Creatable();
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

void TTabSheet::SetText(const std::string& value) {
    TWinControl::SetText(value);
    if (FPageControl) {
        FPageControl->UpdateTabs();
    }
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

/// Shows the page before it hides the other, so that nothing behind them is seen in between.
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
    TTabSheet* const page = FindNextPage(FActivePage, goForward, true);
    const TAlive alive(*this);
    if (page && CanChange() && alive) {
        TCustomTabControl::SetTabIndex(page->TabIndex());
        Change();
    }
}

void TPageControl::Change() {
    const TAlive alive(*this);
    ChangeActivePage(PageOfTab(TabIndex()));
    if (alive) {
        TCustomTabControl::Change();
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
