// SPDX-License-Identifier: MIT
// How controls look where the system's theme draws them.

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/win/Windows.h"
#include "tests/support/SystemLooks.h"
#include "tests/ui/LooksTest.h"

#include <uxtheme.h>
#include <vsstyle.h>

#include <algorithm>
#include <set>

namespace kx {
namespace {

using namespace test;

class Themed : public TLooksTest {
protected:
    /// What the theme draws, on the form's colour.
    std::vector<uint32_t> Part(const wchar_t* kind, int part, int state, int width, int height) {
        const TPicture32 picture(width, height);
        picture.Fill(GetSysColor(COLOR_BTNFACE));
        const HTHEME theme = OpenThemeData(Form->Handle(), kind);
        const RECT all{0, 0, width, height};
        EXPECT_GE(DrawThemeBackground(theme, picture.Handle(), part, state, &all, nullptr), 0);
        CloseThemeData(theme);
        return picture.Pixels();
    }
    TThemed Theme;
};

TEST_F(Themed, AGroupBoxHasItsFrameAndAGapForItsCaption) {
    auto* const box = Add<TGroupBox>(20, 20, 180, 100);
    Show();
    const auto whole = [&] {
        const int half = box->Canvas().TextHeight("0") / 2 - 1;
        const TPicture32 picture(180, 100);
        picture.Fill(GetSysColor(COLOR_BTNFACE));
        const HTHEME theme = OpenThemeData(Form->Handle(), L"BUTTON");
        const RECT frame{0, half, 180, 100};
        DrawThemeBackground(theme, picture.Handle(), BP_GROUPBOX, box->Enabled() ? GBS_NORMAL : GBS_DISABLED, &frame,
                            nullptr);
        CloseThemeData(theme);
        return picture.Pixels();
    };
    EXPECT_EQ(Seen(*box), whole());
    box->SetCaption("Choice");
    const auto captioned = Seen(*box);
    EXPECT_NE(captioned, whole());
    const auto row = static_cast<size_t>(180 * (box->Canvas().TextHeight("0") / 2 - 1));
    const auto expected = whole();
    EXPECT_EQ(captioned[row + 4], expected[row + 4]) << "the frame left of the caption";
    EXPECT_EQ(captioned[row + 100], expected[row + 100]) << "and right of it";
    int framed = 0;
    for (size_t x = 8; x < 20; ++x) {
        framed += captioned[row + x] == expected[row + x];
    }
    EXPECT_LT(framed, 6) << "no frame behind the letters";
    box->SetCaption("");
    box->SetEnabled(false);
    EXPECT_EQ(Seen(*box), whole());
    {
        const TUnthemed unthemed;
        EXPECT_NE(Seen(*box), whole());
    }
    EXPECT_EQ(Seen(*box), whole()) << "the theme is back";
}

TEST_F(Themed, TheCaptionOfAGroupBoxHasTheColourOfItsFontElseTheThemes) {
    auto* const box = Add<TGroupBox>(20, 20, 180, 100);
    box->SetCaption("MMMM");
    box->Font().SetColor(clRed);
    Show();
    const auto has = [&](uint32_t color) {
        const auto pixels = Seen({28, 20, 60, 34});
        return std::find(pixels.begin(), pixels.end(), color) != pixels.end();
    };
    EXPECT_TRUE(has(0xFF0000));
    box->Font().SetColor(clWindowText);
    EXPECT_FALSE(has(0xFF0000));
    box->Font().SetColor(clRed);
    box->SetEnabled(false);
    box->Invalidate();
    EXPECT_FALSE(has(0xFF0000));
    const COLORREF gray = GetSysColor(COLOR_GRAYTEXT);
    EXPECT_TRUE(has(static_cast<uint32_t>(RGB(GetBValue(gray), GetGValue(gray), GetRValue(gray)))));
}

TEST_F(Themed, ASpeedButtonIsAPushButton) {
    auto* const button = Add<TSpeedButton>(20, 20, 60, 24);
    button->SetGroupIndex(1);
    button->SetAllowAllUp(true);
    Show();
    const auto part = [&](int state) { return Part(L"BUTTON", BP_PUSHBUTTON, state, 60, 24); };
    EXPECT_EQ(Seen(*button), part(PBS_NORMAL));
    MoveMouse(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return Seen(*button) == part(PBS_HOT); }));
    PressAt(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return Seen(*button) == part(PBS_PRESSED); }));
    ReleaseAt(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return button->Down(); }));
    MoveMouse({5, 5});
    EXPECT_TRUE(PumpUntil([&] { return !button->MouseInControl(); }));
    EXPECT_EQ(Seen(*button), part(PBS_PRESSED)) << "it stays down";
    button->SetDown(false);
    button->SetEnabled(false);
    EXPECT_EQ(Seen(*button), part(PBS_DISABLED));
}

TEST_F(Themed, AFlatSpeedButtonIsOneOfAToolBar) {
    auto* const button = Add<TSpeedButton>(20, 20, 60, 24);
    button->SetFlat(true);
    button->SetGroupIndex(1);
    button->SetAllowAllUp(true);
    Show();
    const auto part = [&](int state) { return Part(L"TOOLBAR", TP_BUTTON, state, 60, 24); };
    EXPECT_EQ(Seen(*button), part(TS_NORMAL));
    MoveMouse(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return Seen(*button) == part(TS_HOT); }));
    ASSERT_NE(part(TS_HOT), part(TS_NORMAL));
    PressAt(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return Seen(*button) == part(TS_PRESSED); }));
    ReleaseAt(Middle(*button));
    EXPECT_TRUE(PumpUntil([&] { return button->Down() && Seen(*button) == part(TS_HOTCHECKED); }));
    MoveMouse({5, 5});
    EXPECT_TRUE(PumpUntil([&] { return Seen(*button) == part(TS_CHECKED); }));
    button->SetDown(false);
    button->SetEnabled(false);
    EXPECT_EQ(Seen(*button), part(TS_DISABLED));
}

TEST_F(Themed, WhatIsDisabledIsGrayAndNotEngraved) {
    auto* const label = Add<TLabel>(20, 20, 100, 20);
    auto* const button = Add<TSpeedButton>(20, 60, 100, 24);
    label->SetCaption("Label");
    label->SetEnabled(false);
    button->SetFlat(true);
    button->SetCaption("Button");
    button->SetEnabled(false);
    Show();
    const auto colors = [&](TControl& control) {
        const auto pixels = Seen(control);
        return std::set<uint32_t>(pixels.begin(), pixels.end());
    };
    const auto rgb = [](int index) {
        const COLORREF color = GetSysColor(index);
        return static_cast<uint32_t>(RGB(GetBValue(color), GetGValue(color), GetRValue(color)));
    };
    const std::set<uint32_t> plain{rgb(COLOR_BTNFACE), rgb(COLOR_GRAYTEXT)};
    EXPECT_EQ(colors(*label), plain);
    EXPECT_EQ(colors(*button), plain);
    const TUnthemed unthemed;
    const std::set<uint32_t> engraved{rgb(COLOR_BTNFACE), rgb(COLOR_BTNHIGHLIGHT), rgb(COLOR_BTNSHADOW)};
    EXPECT_EQ(colors(*label), engraved);
    EXPECT_EQ(colors(*button), engraved);
}

/// The page of a page control, with a control on it.
class ThemedPage : public Themed {
protected:
    ThemedPage() {
        Page->SetCaption("Page");
        Page->SetPageControl(Pages);
        Form->SetColor(clAqua); // the theme's page has not this colour
        Pages->SetParentColor(true);
    }
    ~ThemedPage() override { Form->DestroyComponents(); }
    TPageControl* Pages = Add<TPageControl>(20, 20, 300, 200);
    TTabSheet* Page = new TTabSheet(Form.get());
};

TEST_F(ThemedPage, LiesBehindWhatIsOnIt) {
    auto* const label = Add<TLabel>(100, 10, 80, 20, Page);
    auto* const panel = Add<TPanel>(10, 40, 100, 40, Page);
    auto* const box = Add<TGroupBox>(10, 90, 100, 60, Page);
    auto* const flat = Add<TSpeedButton>(120, 40, 40, 24, Page);
    flat->SetFlat(true);
    flat->SetTransparent(false);
    label->SetCaption(" ");
    label->SetAutoSize(false);
    label->SetBounds(100, 10, 80, 20);
    panel->SetBevelOuter(bvNone);
    Show();
    const auto empty = [&] { return Seen(*Page)[5 + 5 * static_cast<size_t>(Page->Width())]; };
    const uint32_t page = empty();
    EXPECT_NE(page, 0x00FFFFu);
    const auto inside = [&](TControl& control) {
        const auto pixels = Seen(control);
        return pixels[pixels.size() / 2 + static_cast<size_t>(control.Width() / 2)];
    };
    for (TControl* const control : std::initializer_list<TControl*>{label, panel, box, flat}) {
        EXPECT_EQ(inside(*control), page) << control->ClassName();
        EXPECT_EQ(Seen(*control)[0], page) << control->ClassName();
    }
    Page->SetColor(clYellow); // what the program chooses shows
    for (TControl* const control : std::initializer_list<TControl*>{label, panel, box, flat}) {
        EXPECT_EQ(inside(*control), 0xFFFF00u) << control->ClassName();
    }
    EXPECT_EQ(empty(), 0xFFFF00u);
    Page->SetParentColor(true);
    EXPECT_EQ(empty(), page);
    panel->SetColor(clLime);
    EXPECT_EQ(inside(*panel), 0x00FF00u);
    const TUnthemed unthemed;
    EXPECT_EQ(empty(), 0x00FFFFu) << "in the classic way, one colour goes through";
    EXPECT_EQ(inside(*label), 0x00FFFFu);
}

TEST_F(ThemedPage, LiesBehindTheCaptionsThatTheSystemDraws) {
    auto* const check = Add<TCheckBox>(10, 10, 100, 20, Page);
    Show();
    const uint32_t page = Seen(*Page)[100 + 100 * static_cast<size_t>(Page->Width())];
    const TPicture32 picture(100, 20);
    const auto asked = [&] {
        picture.Fill(0x123456);
        return SendMessageW(Page->Handle(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(picture.Handle()),
                            reinterpret_cast<LPARAM>(check->Handle()));
    };
    EXPECT_EQ(asked(), reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH)));
    EXPECT_EQ(picture.Pixels()[1000], page);
    EXPECT_EQ(GetBkMode(picture.Handle()), TRANSPARENT);
    check->SetColor(clLime);
    EXPECT_EQ(asked(), reinterpret_cast<LRESULT>(check->Brush().Handle()));
    EXPECT_EQ(picture.Pixels()[1000], 0x563412u) << "the system fills it";
}

TEST_F(Themed, AWindowThatThemesLookThroughToShowsItsColour) {
    Form->SetColor(clAqua);
    Add<TLabel>(200, 10, 20, 20); // so that the form is painted into memory first
    Show();
    const TPicture32 picture(50, 50);
    picture.Fill(0);
    SendMessageW(Form->Handle(), WM_ERASEBKGND, reinterpret_cast<WPARAM>(picture.Handle()), 0);
    SendMessageW(Form->Handle(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(picture.Handle()), PRF_CLIENT);
    EXPECT_THAT(picture.Pixels(), Each(0x00FFFFu));
}

class ThemedGrid : public Themed {
protected:
    ThemedGrid() { Grid->SetBorderStyle(bsNone); }
    std::vector<uint32_t> Cell(int col, int row) {
        const TRect r = Grid->CellRect(col, row);
        return Seen({r.Left + 20, r.Top + 20, r.Right + 20, r.Bottom + 20});
    }
    TStringGrid* Grid = Add<TStringGrid>(20, 20, 330, 130);
};

TEST_F(ThemedGrid, ItsFixedCellsAreThoseOfAHeader) {
    Show();
    const auto header = Part(L"HEADER", HP_HEADERITEM, HIS_NORMAL, 64, 24);
    EXPECT_EQ(Cell(1, 0), header);
    Grid->SetCells(1, 0, "Name");
    EXPECT_NE(Cell(1, 0), header);
    EXPECT_EQ(Cell(1, 0)[2], header[2]) << "the caption covers nothing but itself";
    EXPECT_EQ(Cell(1, 0)[64 * 4 + 40], header[64 * 4 + 40]);
    Grid->SetFixedColor(clRed);
    const auto own = Cell(2, 0);
    EXPECT_EQ(own[64 * 12 + 32], 0xFF0000u) << "the program's colour goes before";
    Grid->SetFixedColor(clBtnFace);
    Grid->SetDefaultDrawing(false);
    EXPECT_NE(Cell(2, 0), header) << "the program draws";
}

TEST_F(Themed, TheLineBetweenButtonsOfAToolBarIsTheThemes) {
    auto* const bar = Add<TToolBar>(0, 0, 400, 30);
    bar->SetEdgeBorders({});
    auto* const line = new TToolButton(Form.get());
    line->SetStyle(tbsDivider);
    line->SetWidth(8);
    line->SetParent(bar);
    Show();
    const auto themed = Seen(*line);
    EXPECT_EQ(themed, Part(L"TOOLBAR", TP_SEPARATOR, TS_NORMAL, line->Width(), line->Height()));
    {
        const TUnthemed unthemed;
        EXPECT_NE(Seen(*line), themed);
    }
    bar->SetParent(nullptr);
    delete bar;
}

TEST_F(Themed, AllOfThemTogether) {
    auto* const pages = Add<TPageControl>(10, 10, 380, 280);
    auto* const page = new TTabSheet(Form.get());
    page->SetCaption("&Page");
    page->SetPageControl(pages);
    auto* const other = new TTabSheet(Form.get());
    other->SetCaption("&Other");
    other->SetPageControl(pages);
    auto* const group = Add<TRadioGroup>(8, 8, 120, 80, page);
    group->SetCaption("&Radio group");
    group->Items().Add("One");
    group->Items().Add("Two");
    auto* const box = Add<TGroupBox>(140, 8, 120, 80, page);
    box->SetCaption("Disabled box");
    box->SetEnabled(false);
    auto* const check = Add<TCheckBox>(8, 96, 100, 17, page);
    check->SetCaption("&Check");
    auto* const panel = Add<TPanel>(140, 96, 120, 30, page);
    panel->SetCaption("Panel");
    auto* const label = Add<TLabel>(270, 12, 50, 13, page);
    label->SetCaption("&Label");
    auto* const gray = Add<TLabel>(270, 32, 50, 13, page);
    gray->SetCaption("Disabled");
    gray->SetEnabled(false);
    int left = 8;
    for (const bool flat : {false, true}) {
        for (const int state : {0, 1, 2}) {
            auto* const button = Add<TSpeedButton>(left, 134, 56, 24, page);
            button->SetFlat(flat);
            button->SetCaption(flat ? "Flat" : "Speed");
            button->SetGroupIndex(left);
            button->SetDown(state == 1);
            button->SetEnabled(state != 2);
            left += 60;
        }
    }
    auto* const push = Add<TButton>(270, 96, 75, 25, page);
    push->SetCaption("Push");
    auto* const grid = Add<TStringGrid>(8, 164, 350, 80, page);
    grid->SetCells(1, 0, "Name");
    grid->SetCells(0, 1, "Row");
    grid->SetCells(2, 1, "Cell");
    Show();
    Form->Update();
    RedrawWindow(Form->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    EXPECT_FALSE(
        Screenshot(IsThemeActive() && GetACP() == CP_UTF8 ? "themed-program" : "themed", Form->Handle()).empty());
    const TUnthemed unthemed;
    RedrawWindow(Form->Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    EXPECT_FALSE(Screenshot("unthemed", Form->Handle()).empty());
    Form->DestroyComponents();
}

} // namespace
} // namespace kx
