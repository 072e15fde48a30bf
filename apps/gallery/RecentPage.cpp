// SPDX-License-Identifier: MIT
// The page of the open dialog with recent files.

#include "RecentPage.h"

#include "SampleFiles.h"
#include "Tour.h"
#include "VetoForm.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::gallery {

namespace {

constexpr const char* userKey = "Software\\kxqdlgs70\\Gallery\\Recent";
constexpr const char* tourKey = "Software\\kxqdlgs70\\Gallery\\RecentTour";

TListView& ListOf(TKxOpenDialogEx& dialog) {
    return *static_cast<TKxOpenExRecentFrm*>(dialog.CustDlgParams().CustomForm())->ListView1;
}

/// Clicks the tab by messages of the mouse, which wait in the queue.
void ClickTab(TTabControl& tabs, int index) {
    RECT r{};
    SendMessageA(tabs.Handle(), TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&r));
    const LPARAM at = MAKELPARAM((r.left + r.right) / 2, (r.top + r.bottom) / 2);
    PostMessageA(tabs.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(tabs.Handle(), WM_LBUTTONUP, 0, at);
}

} // namespace

const TClass& TRecentPage::StaticClass() {
    static const TClassBuilder<TRecentPage> cls("TRecentPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TRecentPage;
        c.Method("OpenButtonClick", &T::OpenButtonClick);
        c.Method("ForgetButtonClick", &T::ForgetButtonClick);
    });
    return cls.Class();
}

TRecentPage::TRecentPage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    UseKey(userKey);
}

void TRecentPage::UseKey(const char* key) {
    Dialog->SetRecentRegKey(key);
    ShowStored();
}

// --- The dialog

void TRecentPage::OpenButtonClick(TObject*) {
    constexpr int64_t most = 100;
    VetoForm->Attach(*Dialog);
    Dialog->CustDlgParams().SetBottomFormName(EventsBox->Checked() ? "VetoForm" : "");
    TStringList tabs;
    tabs.Add(BrowseEdit->Text());
    tabs.Add(RecentEdit->Text());
    Dialog->SetTabs(tabs);
    Dialog->SetTabIndex(BeginCombo->ItemIndex());
    Dialog->SetRecentCount(static_cast<int>(std::clamp(StrToIntDef(Trim(CountEdit->Text()), 10), int64_t{0}, most)));
    RunDialog(*Dialog);
    if (!LastResult().empty() && RememberBox->Checked()) {
        Remember();
    }
}

void TRecentPage::Remember() {
    Dialog->AddToRecent(LastResult());
    Dialog->SaveToRegistry();
    ShowStored();
}

void TRecentPage::ShowStored() {
    FileList->Items().Clear();
    for (int i = 0; i < Dialog->RecentFiles().Count(); ++i) {
        FileList->Items().Add(IntToStr(i) + " = " + Dialog->RecentFiles()[i]);
    }
}

void TRecentPage::ForgetButtonClick(TObject*) {
    TRegistry().DeleteKey(Dialog->RecentRegKey());
    Dialog->LoadFromRegistry();
    ShowStored();
}

// --- The tour. It leaves the user's own files alone.

void TRecentPage::AddTour(TTour& tour) {
    tour.Then(
        "the page of recent files", [this] { return Showing(); },
        [this] {
            UseKey(tourKey);
            ForgetButtonClick(this);
            OpenButton->Click();
        });
    tour.Then(
        "the dialog with tabs", [this] { return Lists(*Dialog, "City at night.bmp"); },
        [this, &tour] {
            tour.Picture("9-recent-browse");
            SelectFile(*Dialog, "City at night.bmp");
            PressButton(*Dialog, IDOK);
        });
    tour.Then(
        "the remembered file", [this] { return !Dialog->Handle() && FileList->Items().Count() == 1; },
        [this] {
            Dialog->SetFileName(Samples().Path("Letters\\Grüße aus Köln.txt"));
            Dialog->AddToRecent(Dialog->FileName());
            VetoForm->TabBox->SetChecked(true);
            OpenButton->Click();
        });
    tour.Then(
        "the dialog with tabs again", [this] { return IsShown(*Dialog); },
        [this] { ClickTab(*Dialog->TabControl(), 1); });
    AddEndOfTour(tour);
}

void TRecentPage::AddEndOfTour(TTour& tour) {
    tour.Then(
        "the refused tab", [] { return VetoForm->Log().HasRefused("OnTabChanging"); },
        [this] {
            VetoForm->TabBox->SetChecked(false);
            ClickTab(*Dialog->TabControl(), 1);
        });
    tour.Then(
        "the recent files", [this] { return ListOf(*Dialog).Showing(); }, [this] { ListOf(*Dialog).SetItemIndex(1); });
    tour.Then(
        "the recent file", [this] { return TypedName(*Dialog) == Samples().Path("City at night.bmp"); },
        [this, &tour] {
            tour.Picture("9-recent");
            PressReturn(*Dialog);
        });
    tour.Then(
        "the end of the dialog with tabs", [this] { return !Dialog->Handle() && !LastResult().empty(); },
        [this, &tour] {
            tour.Expect("recent files", LastResult(), Samples().Path("City at night.bmp"));
            tour.Picture("9-recent-page");
            ForgetButtonClick(this);
            UseKey(userKey);
        });
}

} // namespace kx::gallery
