// SPDX-License-Identifier: MIT
// Dialogs with everything docked, at the resolution of the screen.

#include "kx/graphics/ImgList.h"
#include "kx/places/KxPlacesBar.h"
#include "kx/ui/StandardClasses.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Dpi.h"
#include "tests/modeless/DialogKinds.h"
#include "tests/support/CleanLayout.h"
#include "tests/support/DialogTest.h"

#include <algorithm>

namespace kx {
namespace {

using namespace test;

struct TPicture : TBitmap {
    explicit TPicture(TColor color) : TBitmap(16, 16) {
        Canvas().Brush().SetColor(clFuchsia);
        Canvas().FillRect({0, 0, 16, 16});
        Canvas().Brush().SetColor(color);
        Canvas().Ellipse({1, 1, 15, 15});
    }
};

/// Stands left or right.
class TSideForm : public TForm {
    KX_CLASS()

    explicit TSideForm(TComponent* owner = nullptr, bool scaled = true) : TForm(owner) {
        InitForm(*this, StaticClass());
        SetScaled(scaled);
        ZoomButton->SetGlyph(TPicture(clBlue));
        TurnButton->SetGlyph(TPicture(clGreen));
    }

    KX_FIELDS(TSideForm, (TSpeedButton, ZoomButton, TurnButton))
};

const TClass& TSideForm::StaticClass() {
    static const TClassBuilder<TSideForm> cls("TSideForm", TForm::StaticClass());
    return cls.Class();
}

/// Stands above or below.
class TWideForm : public TForm {
    KX_CLASS()

    explicit TWideForm(TComponent* owner = nullptr, bool scaled = true) : TForm(owner) {
        InitForm(*this, StaticClass());
        SetScaled(scaled);
        auto* const images = new TImageList(this);
        for (const TColor color : {clBlue, clGreen}) {
            const TPicture picture(color);
            images->AddMasked(&picture, clFuchsia);
        }
        Bar->SetImages(images);
        for (const char* layer : {"Walls", "Doors"}) {
            TListItem& item = LayerList->Items().Add();
            item.SetCaption(layer);
            item.SubItems().Add("240 mm");
        }
    }

    KX_FIELDS(TWideForm, (TToolBar, Bar), (TListView, LayerList))
};

const TClass& TWideForm::StaticClass() {
    static const TClassBuilder<TWideForm> cls("TWideForm", TForm::StaticClass());
    return cls.Class();
}

// --- What holds of a form

/// The font that the control shows its text in.
HFONT FontOf(TControl& control) {
    const auto* const window = dynamic_cast<TWinControl*>(&control);
    const LRESULT font = window ? SendMessageW(window->WindowHandle(), WM_GETFONT, 0, 0) : 0;
    return font != 0 ? reinterpret_cast<HFONT>(font) : control.Font().Handle();
}

TPoint ExtentOf(TControl& control, const std::string& text) {
    const TWindowDC dc(nullptr);
    const TSelectObject selected(dc.Handle(), FontOf(control));
    RECT r{};
    DrawTextA(dc.Handle(), text.c_str(), -1, &r, DT_CALCRECT);
    return {r.right, r.bottom};
}

/// What is left of a control for its text, beside marks, edges and pictures.
TPoint RoomIn(TControl& control) {
    const auto less = [&](int width, int height) {
        return TPoint{control.Width() - control.ScaleLength(width), control.Height() - control.ScaleLength(height)};
    };
    if (dynamic_cast<TCheckBox*>(&control) || dynamic_cast<TRadioButton*>(&control)) {
        return less(13 + 3, 0);
    }
    if (const auto* const combo = dynamic_cast<TComboBox*>(&control)) {
        const auto height = SendMessageW(combo->WindowHandle(), CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
        return {less(17 + 6, 0).X, static_cast<int32_t>(height)};
    }
    if (const auto* const button = dynamic_cast<TSpeedButton*>(&control)) {
        return {control.Width() - button->Glyph().Width() - control.ScaleLength(4 + 4), control.Height()};
    }
    if (dynamic_cast<TLabel*>(&control)) {
        return less(0, 0);
    }
    return less(6, 6);
}

std::string TextIn(TControl& control) {
    if (const auto* const memo = dynamic_cast<TMemo*>(&control)) {
        return memo->Lines().Count() > 0 ? memo->Lines()[0] : "";
    }
    return dynamic_cast<TToolButton*>(&control) ? "" : control.Text(); // those show pictures alone
}

/// The control has the size and the place of the same one on a form that was not scaled, in pixels of the resolution.
/// Anchored to the right or the bottom, it keeps its distance from there.
void ExpectScaled(const TControl& control, const TControl& plain, int dpi) {
    const TWinControl& form = *control.Parent();
    const TWinControl& plainForm = *plain.Parent();
    const TAnchors anchors = control.Anchors();
    const auto scaled = [dpi](int length) { return ScaleValue(length, dpi, DefaultDpi); };
    const std::string& name = control.Name();
    EXPECT_EQ(control.Left(), scaled(plain.Left())) << name;
    EXPECT_EQ(control.Top(), scaled(plain.Top())) << name;
    const int right = form.ClientRect().Right - control.BoundsRect().Right;
    const int plainRight = plainForm.ClientRect().Right - plain.BoundsRect().Right;
    if (anchors.Contains(akRight)) {
        EXPECT_NEAR(right, scaled(plainRight), 2) << name;
    } else if (!dynamic_cast<const TLabel*>(&control)) { // its size is that of its text
        EXPECT_EQ(control.Width(), scaled(plain.Width())) << name;
    }
    const int bottom = form.ClientRect().Bottom - control.BoundsRect().Bottom;
    const int plainBottom = plainForm.ClientRect().Bottom - plain.BoundsRect().Bottom;
    if (anchors.Contains(akBottom)) {
        EXPECT_NEAR(bottom, scaled(plainBottom), 2) << name;
    } else {
        EXPECT_NEAR(control.Height(), scaled(plain.Height()), 1) << name; // a combo box's height is its own
    }
}

bool Overlap(const TRect& a, const TRect& b) {
    return a.Left < b.Right && b.Left < a.Right && a.Top < b.Bottom && b.Top < a.Bottom;
}

/// All of the controls on it are there, with readable texts.
void ExpectWellPlaced(TWinControl& form, TWinControl& plain, int dpi) {
    for (int i = 0; i < form.ControlCount(); ++i) {
        TControl& control = *form.Controls(i);
        const std::string what = form.Name() + "." + control.Name();
        const TRect r = control.BoundsRect();
        const TRect client = form.ClientRect();
        EXPECT_TRUE(r.Left >= 0 && r.Top >= 0 && r.Right <= client.Right && r.Bottom <= client.Bottom) << what;
        for (int j = i + 1; j < form.ControlCount(); ++j) {
            EXPECT_FALSE(Overlap(r, form.Controls(j)->BoundsRect()))
                << what << " overlaps " << form.Controls(j)->Name();
        }
        LOGFONTW font{};
        GetObjectW(FontOf(control), sizeof font, &font);
        EXPECT_EQ(font.lfHeight, ScaleValue(-11, dpi, DefaultDpi)) << what;
        const std::string text = TextIn(control);
        const TPoint extent = ExtentOf(control, text);
        const TPoint room = RoomIn(control);
        EXPECT_TRUE(text.empty() || (extent.X <= room.X && extent.Y <= room.Y))
            << what << ": " << text << " takes " << extent.X << "x" << extent.Y << " of " << room.X << "x" << room.Y;
        if (control.Align() == alNone && !dynamic_cast<TToolBar*>(&form)) { // else others arrange it
            ExpectScaled(control, *plain.Controls(i), dpi);
        }
        if (auto* const inner = dynamic_cast<TWinControl*>(&control)) {
            ExpectWellPlaced(*inner, dynamic_cast<TWinControl&>(*plain.Controls(i)), dpi);
        }
    }
}

/// Pictures, columns and rows follow the resolution.
void ExpectReadable(const TSideForm& form, int dpi) {
    EXPECT_EQ(form.ZoomButton->Glyph().Width(), ScaleValue(16, dpi, DefaultDpi));
}
void ExpectReadable(const TWideForm& form, int dpi) {
    EXPECT_EQ(form.Bar->Images()->Width(), ScaleValue(16, dpi, DefaultDpi));
    HWND list = form.LayerList->WindowHandle();
    EXPECT_EQ(SendMessageW(list, LVM_GETCOLUMNWIDTH, 0, 0), ScaleValue(90, dpi, DefaultDpi));
    RECT row{LVIR_BOUNDS, 0, 0, 0};
    SendMessageW(list, LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    EXPECT_GE(row.bottom - row.top, ScaleValue(11, dpi, DefaultDpi));
}

// --- Dialogs

TKxCustomOpenDialog& OpenDialogOf(TCommonDialog& dialog) { return dynamic_cast<TKxCustomOpenDialog&>(dialog); }

void ShowSystemPlaces(TCommonDialog& dialog) { OpenDialogOf(dialog).PlacesBar().SetNative(true); }
void ShowNewFolders(TCommonDialog& dialog) {
    dynamic_cast<TKxFolderDialog&>(dialog).SetOptionsEx({ffNewDialogStyle, ffEditBox});
}
void ShowStatus(TCommonDialog& dialog) {
    auto& folder = dynamic_cast<TKxFolderDialog&>(dialog);
    folder.SetOptions({ffStatusText});
    folder.SetStatusText("Where the drawings lie");
}
void ShowAllColors(TCommonDialog& dialog) { dynamic_cast<TKxColorDialog&>(dialog).SetOptions({cdFullOpen}); }
void ShowRecentFiles(TCommonDialog& dialog) {
    auto& open = dynamic_cast<TKxOpenDialogEx&>(dialog);
    open.RecentFiles().Add("C:\\Drawings\\Groundplan.txt");
    open.SetTabIndex(1);
}

/// How a dialog is looked at.
struct TLook {
    const char* Name;
    const char* Kind; ///< One of the kinds of dialogs.
    size_t Docked;    ///< How many forms it takes.
    void (*Prepare)(TCommonDialog& dialog) = nullptr;
    bool IsShort = false; ///< Some of the dialog's own controls lie beyond its edge.
};

constexpr TLook Looks[] = {
    {"OpenLite", "OpenLite", 4},
    {"SaveLite", "SaveLite", 4},
    {"Open", "Open", 4},
    {"OpenSystemPlaces", "Open", 4, ShowSystemPlaces},
    {"Save", "Save", 4},
    {"OpenEx", "OpenEx", 1},
    {"OpenExRecent", "OpenEx", 1, ShowRecentFiles},
    {"Folder", "Folder", 4, ShowStatus},
    {"FolderNew", "Folder", 0, ShowNewFolders},
    {"Color", "Color", 1, nullptr, true},
    {"ColorFull", "Color", 1, ShowAllColors},
    {"Print", "Print", 4},
};
static_assert(std::ranges::all_of(DialogKinds, [](const TDialogKind& kind) {
    const auto isOfIt = [&](const TLook& look) { return std::string_view(look.Kind) == kind.Name; };
    return std::ranges::any_of(Looks, isOfIt);
}));

class DialogScale : public TDialogTest, public testing::WithParamInterface<TLook> {
protected:
    static void SetUpTestSuite() { RegisterStandardClasses(); }
    DialogScale() {
        for (const TDialogKind& kind : DialogKinds) {
            if (std::string_view(GetParam().Kind) == kind.Name) {
                Dialog = kind.Make(Owner.get(), Folder);
            }
        }
        auto& params = dynamic_cast<ICommonDialog&>(*Dialog).GetCustDlgParams();
        if (params.CanLeft()) {
            params.SetLeftForm(Left.get());
        }
        if (params.CanTop()) {
            params.SetTopForm(Top.get());
        }
        if (params.CanRight()) {
            params.SetRightForm(Right.get());
        }
        params.SetBottomForm(Bottom.get());
        params.SetPosition(dpScrCenter);
        if (auto* const open = dynamic_cast<TKxCustomOpenDialog*>(Dialog)) {
            Dress(*open);
        }
        if (GetParam().Prepare) {
            GetParam().Prepare(*Dialog);
        }
    }
    void Dress(TKxCustomOpenDialog& open) {
        open.SetFilter("Text files|*.txt|All files|*.*");
        open.PlacesBar().SetNative(false);
        for (const char* name : {"Drawings", "Surveyor's letters"}) {
            TKxPlace& place = *open.PlacesBar().Places().Add();
            place.SetPlaceName(name);
            place.SetPlacePath(Folder.Path());
            place.SetPlaceIconDll("Shell32.dll");
            place.SetPlaceIcon(3);
        }
        Menu.Items().Add(new TMenuItem(&Menu));
        open.SetOkButtonMenu(&Menu);
    }

    /// The forms that the dialog has taken.
    std::vector<TForm*> Docked() const {
        std::vector<TForm*> docked;
        for (const TFormPtr* form : {&Left, &Top, &Right, &Bottom}) {
            if ((*form)->IsDocked()) {
                docked.push_back(form->get());
            }
        }
        return docked;
    }

    static bool IsNarrow() { return GetParam().IsShort; } ///< A wide form has no room in the dialog.

    const int Dpi = SystemDpi();
    TTempFolder Folder{"scale"};
    TPopupMenu Menu;
    TFormPtr Left{NewForm<TSideForm>(nullptr)};
    TFormPtr Top{NewForm<TWideForm>(nullptr)};
    TFormPtr Right{NewForm<TSideForm>(nullptr)};
    TFormPtr Bottom{IsNarrow() ? TFormPtr(NewForm<TSideForm>(nullptr)) : TFormPtr(NewForm<TWideForm>(nullptr))};
    TCommonDialog* Dialog = nullptr;
};

TEST_P(DialogScale, EverythingFits) {
    const TFormPtr side(NewForm<TSideForm>(nullptr, false));
    const TFormPtr wide(NewForm<TWideForm>(nullptr, false));
    Look(*Dialog, [&] {
        HWND dialog = Dialog->DialogWindow();
        const TRect outer = ScreenRectOf(dialog);
        EXPECT_TRUE(outer.Left >= 0 && outer.Top >= 0 && outer.Right <= GetSystemMetrics(SM_CXSCREEN) &&
                    outer.Bottom <= GetSystemMetrics(SM_CYSCREEN));
        if (!GetParam().IsShort) {
            ExpectCleanLayout(dialog);
        }
        EXPECT_EQ(Docked().size(), GetParam().Docked);
        for (TForm* form : Docked()) {
            const auto* const sideForm = dynamic_cast<TSideForm*>(form);
            TForm& plain = sideForm ? *side : *wide;
            EXPECT_EQ(form->PixelsPerInch(), Dpi);
            const bool isBeside = form == Left.get() || form == Right.get();
            EXPECT_EQ(isBeside ? form->Width() : form->Height(),
                      ScaleValue(isBeside ? plain.Width() : plain.Height(), Dpi, DefaultDpi));
            ExpectWellPlaced(*form, plain, Dpi);
            sideForm ? ExpectReadable(*sideForm, Dpi) : ExpectReadable(dynamic_cast<TWideForm&>(*form), Dpi);
        }
        Screenshot(std::string(GetParam().Name) + "-" + IntToStr(Dpi), Dialog->DialogWindow());
    });
}

INSTANTIATE_TEST_SUITE_P(All, DialogScale, testing::ValuesIn(Looks),
                         [](const auto& look) { return std::string(look.param.Name); });

} // namespace
} // namespace kx
