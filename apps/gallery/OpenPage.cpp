// SPDX-License-Identifier: MIT
// The page of the open dialog with all that the library adds to it.

#include "OpenPage.h"

#include "KindsForm.h"
#include "PreviewForm.h"
#include "SampleFiles.h"
#include "SamplePlaces.h"
#include "Tour.h"
#include "VetoForm.h"
#include "kx/dropdown/KxDropDownButton.h"
#include "kx/win/Windows.h"

namespace kx::gallery {

namespace {

constexpr int firstStyle = 1; // line of the box of views: the styles, in their order, behind "as the system shows it"

/// The button in the place of the dialog's OK button; null when there is none.
TKxBitBtn* OkButtonWithMenu(const TKxOpenDialog& dialog) {
    const TRect r = KxWindowRect(GetDlgItem(dialog.DialogWindow(), IDOK));
    return dynamic_cast<TKxBitBtn*>(FindVCLWindow({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2}));
}

/// Adds a picture of four files, 16 pixels wide and high.
void AddViewsGlyph(TImageList& images) {
    constexpr int size = 16;
    TBitmap glyph;
    glyph.SetSize(size, size);
    TCanvas& canvas = glyph.Canvas();
    const auto fill = [&canvas](const TRect& place, TColor color) {
        canvas.Brush().SetColor(color);
        canvas.FillRect(place);
    };
    fill({0, 0, size, size}, clFuchsia); // the transparent colour
    for (const int x : {2, 9}) {
        for (const int y : {1, 9}) {
            fill({x, y, x + 5, y + 5}, (x < 9) == (y < 9) ? clNavy : clTeal);
            fill({x, y + 6, x + 5, y + 7}, clGray);
        }
    }
    images.AddMasked(&glyph, clFuchsia);
}

} // namespace

const TClass& TOpenPage::StaticClass() {
    static const TClassBuilder<TOpenPage> cls("TOpenPage", TGalleryPage::StaticClass(), [](auto& c) {
        using T = TOpenPage;
        c.Method("OpenButtonClick", &T::OpenButtonClick);
        c.Method("ViewsButtonClick", &T::ViewsButtonClick);
        c.Method("ViewItemClick", &T::ViewItemClick);
        c.Method("OpenItemClick", &T::OpenItemClick);
        c.Method("DialogShow", &T::DialogShow);
        c.Method("DialogIncludeFile", &T::DialogIncludeFile);
    });
    return cls.Class();
}

TOpenPage::TOpenPage(TComponent* owner) : TGalleryPage(owner) {
    InitForm(*this, StaticClass());
    auto* const glyphs = new TImageList(this); // takes the resolution of the screen with the page
    AddViewsGlyph(*glyphs);
    ViewBar->SetImages(glyphs);
    AddSamplePlaces(Dialog->PlacesBar().Places());
}

// --- The dialog

void TOpenPage::OpenButtonClick(TObject*) {
    ConnectForms();
    ChooseParts();
    ChooseStyles();
    FHow.clear();
    RunDialog(*Dialog);
    if (!LastResult().empty() && !FHow.empty()) {
        Report("    chosen in the button's menu: " + FHow);
    }
}

void TOpenPage::ConnectForms() {
    VetoForm->Attach(*Dialog);
    VetoForm->SetOnSelect([this](TObject*) { PreviewForm->ShowSelection(*Dialog); });
    PreviewForm->ShowFile({});
    KindsForm->SetOnKindsChange([this](TObject*) {
        Dialog->ExtFilter().SetShowFolders(KindsForm->ShowsFolders()); // which has the files listed anew
    });
}

void TOpenPage::ChooseParts() {
    TKxCustDlgParams& params = Dialog->CustDlgParams();
    params.SetRightFormName(PreviewBox->Checked() ? "PreviewForm" : "");
    params.SetTopFormName(KindsBox->Checked() ? "KindsForm" : "");
    params.SetBottomFormName(EventsBox->Checked() ? "VetoForm" : "");
    Dialog->ExtFilter().SetEnabled(KindsBox->Checked());
    ChoosePlacesBar(Dialog->PlacesBar(), *PlacesCombo);
    Dialog->ToolBar().SetCustomBar(LendBox->Checked() ? ViewBar : nullptr);
    Dialog->ToolBar().SetFlat(FlatBox->Checked());
    Dialog->SetOkButtonMenu(MenuBox->Checked() ? OpenMenu : nullptr);
}

void TOpenPage::ChooseStyles() {
    TKxListViewStyles& styles = Dialog->ListViewStyles();
    styles.SetGridLines(GridBox->Checked());
    styles.SetRowSelect(RowBox->Checked());
    styles.SetHotTrack(HotTrackBox->Checked());
    styles.SetEnableRename(RenameBox->Checked());
    styles.SetEnableDelete(DeleteBox->Checked());
    styles.SetPopupOnEmpty(EmptyMenuBox->Checked());
    styles.SetPopupOnSelection(FileMenuBox->Checked());
}

void TOpenPage::DialogShow(TObject*) {
    if (ViewCombo->ItemIndex() >= firstStyle) {
        Dialog->SetFileListViewStyle(static_cast<TKxListViewStyle>(ViewCombo->ItemIndex() - firstStyle));
    }
}

void TOpenPage::DialogIncludeFile(TObject*, const std::string& fileName, bool& include) {
    include = KindsForm->Shows(fileName);
}

void TOpenPage::ViewsButtonClick(TObject*) { ViewsButton->CheckMenuDropdown(); }

void TOpenPage::ViewItemClick(TObject* sender) {
    if (Dialog->DialogWindow()) {
        Dialog->SetFileListViewStyle(static_cast<TKxListViewStyle>(static_cast<TMenuItem*>(sender)->Tag()));
    } else {
        Report("The dialog borrows this tool bar.");
    }
}

void TOpenPage::OpenItemClick(TObject* sender) {
    FHow = static_cast<TMenuItem*>(sender)->Caption();
    Dialog->CloseDialog(mrOk);
}

// --- The tour

void TOpenPage::AddTour(TTour& tour) {
    const std::string name = "Sales by quarter.bmp";
    tour.Then(
        "the open page", [this] { return Showing(); },
        [this, &tour] {
            tour.Picture("7-open-page");
            ViewCombo->SetItemIndex(firstStyle + lvsSmallIcon);
            OpenButton->Click();
        });
    tour.Then(
        "the full dialog", [this, name] { return Lists(*Dialog, name) && Dialog->PlacesForm(); },
        [this, &tour] {
            tour.Expect("chosen view", Dialog->SelectionStyle() == vsSmallIcon ? "small icons" : "another",
                        "small icons");
            ClickToolButton(*Dialog->PlacesForm()->ToolBar1, "Drawings");
        });
    tour.Then(
        "the folder of the place", [this] { return ShowsFolder(*Dialog, Samples().Path("Drawings")); },
        [this] { ClickToolButton(*Dialog->PlacesForm()->ToolBar1, "Samples"); });
    tour.Then(
        "the samples again", [this, name] { return Lists(*Dialog, name); },
        [this] { ClickToolButton(*ViewBar, "Views"); });
    tour.Then(
        "the menu of views", [] { return ShownMenu() != nullptr; },
        [&tour] {
            tour.Picture("7-open-views");
            ChooseLastInMenu();
        });
    tour.Then(
        "the details", [this] { return Dialog->FileListViewStyle() == lvsReport; },
        [] {
            VetoForm->StyleBox->SetChecked(true);
            KindsForm->Pictures().SetChecked(false);
        });
    RefuseInTour(tour);
    tour.Then(
        "the pictures again", [this, name] { return Lists(*Dialog, name); },
        [this, name] { SelectFile(*Dialog, name); });
    tour.Then(
        "the preview in the full dialog", [] { return PreviewForm->ShowsPicture(); },
        [this, &tour] {
            tour.Picture("7-open");
            OkButtonWithMenu(*Dialog)->ShowDropDownMenu();
        });
    tour.Then(
        "the menu of the OK button", [] { return ShownMenu() != nullptr; },
        [&tour] {
            tour.Picture("7-open-menu");
            ChooseLastInMenu();
        });
    tour.Then(
        "the end of the full dialog", [this] { return !Dialog->Handle() && !LastResult().empty(); },
        [this, &tour, name] {
            tour.Expect("open dialog", LastResult(), Samples().Path(name));
            tour.Expect("menu of its button", FHow, "Open a copy");
        });
}

/// Without pictures in the list, and with the view style refused.
void TOpenPage::RefuseInTour(TTour& tour) {
    tour.Then(
        "the list without pictures",
        [this] { return Lists(*Dialog, "Read me first.txt") && !Lists(*Dialog, "Alpine lake.bmp"); },
        [this, &tour] {
            tour.Picture("7-open-filtered");
            IconsItem->Click();
        });
    tour.Then(
        "the refused view", [] { return VetoForm->Log().HasRefused("OnSelectionStyleChanging: icons"); },
        [this, &tour] {
            tour.Expect("refused view", Dialog->SelectionStyle() == vsReport ? "details" : "icons", "details");
            VetoForm->StyleBox->SetChecked(false);
            KindsForm->Pictures().SetChecked(true);
        });
}

} // namespace kx::gallery
