// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/widgets/ComCtrls.h"

namespace kx {

class TPageControl;

/// A page of a page control. Its caption is the tab's text. It fills the area below the tabs while its tab is chosen,
/// and is hidden otherwise. Its parent is the page control; another one's child it can be only without a page control.
class TTabSheet : public TWinControl {
    KX_CLASS()

    explicit TTabSheet(TComponent* owner = nullptr);
    ~TTabSheet() override;

    TPageControl* PageControl() const { return FPageControl; }
    void SetPageControl(TPageControl* value); ///< Becomes its last page.
    int PageIndex() const;                    ///< Among all pages; -1 without a page control.
    /// Moves the page. @throws EListError for an index outside the page control.
    void SetPageIndex(int value);
    int TabIndex() const; ///< Among the pages whose tabs can be seen; -1 when its own cannot.
    bool TabVisible() const { return FTabVisible; }
    void SetTabVisible(bool value); ///< Without its tab the page cannot be chosen by the user.

    const TNotifyEvent& OnShow() const { return FOnShow; } ///< The page has been chosen.
    void SetOnShow(TNotifyEvent value) { FOnShow = std::move(value); }
    const TNotifyEvent& OnHide() const { return FOnHide; } ///< Another page has been chosen.
    void SetOnHide(TNotifyEvent value) { FOnHide = std::move(value); }

    void SetParent(TWinControl* value) override;
    void SetText(const std::string& value) override;
    TAccessibleInfo AccessibleInfo() const override;

protected:
    void Loaded() override;

private:
    friend class TPageControl;
    virtual void DoShow() { FOnShow(this); }
    virtual void DoHide() { FOnHide(this); }

    TPageControl* FPageControl = nullptr;
    bool FTabVisible = true;
    TNotifyEvent FOnShow;
    TNotifyEvent FOnHide;
};

/// Pages of controls, one of which is seen, below a row of tabs to choose them by.
class TPageControl : public TCustomTabControl {
    KX_CLASS()

    explicit TPageControl(TComponent* owner = nullptr);
    ~TPageControl() override;

    int PageCount() const { return static_cast<int>(FPages.size()); }
    TTabSheet* Pages(int index) const; ///< @throws EListError for an index outside [0, PageCount).
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TTabSheet*>& Pages() const { return FPages; }
    TTabSheet* ActivePage() const { return FActivePage; } ///< Null when no page is chosen.
    /// Chooses a page of this control, or with null none. Does not fire OnChange.
    void SetActivePage(TTabSheet* value);
    int ActivePageIndex() const;        ///< Among all pages; -1 when none is chosen.
    void SetActivePageIndex(int value); ///< An index outside the pages chooses none.
    /// The page behind `page`, or before it, around the end; null when there is none. With `checkTabVisible` only one
    /// whose tab can be seen.
    TTabSheet* FindNextPage(TTabSheet* page, bool goForward, bool checkTabVisible) const;
    /// Chooses the next page whose tab can be seen, and fires OnChanging and OnChange as the user's choice does.
    void SelectNextPage(bool goForward);

    void SetTabIndex(int value) override;
    void CreateParams(TCreateParams& params) override;
    void GetChildren(const TGetChildProc& proc, TComponent* root) override;

protected:
    void Loaded() override;
    void Change() override;
    void AlignControls() override; ///< Hidden pages get the size too that they will have.
    /// Ctrl+Tab goes to the next page, with Shift to the one before.
    bool DialogKey(uint16_t key, TShiftState shift) override;

private:
    friend class TTabSheet;
    void Insert(TTabSheet& page);
    void Remove(TTabSheet& page);
    void UpdateTabs();
    TTabSheet* PageOfTab(int tabIndex) const;
    void ChangeActivePage(TTabSheet* page);
    void FocusPage(TTabSheet& page);

    std::vector<TTabSheet*> FPages;
    TTabSheet* FActivePage = nullptr;
    bool FSizing = false; ///< Hidden pages get their size.
};

} // namespace kx
