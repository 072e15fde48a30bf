// SPDX-License-Identifier: MIT
// Controls that draw themselves, for users who need strong contrasts.

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/win/Windows.h"
#include "tests/support/SystemLooks.h"
#include "tests/ui/LooksTest.h"

#include <algorithm>
#include <array>
#include <uxtheme.h>

namespace kx {
namespace {

using namespace test;

class HighContrast : public TLooksTest {
protected:
    static bool Has(const std::vector<uint32_t>& pixels, int systemColor) {
        const COLORREF color = GetSysColor(systemColor);
        const auto rgb = static_cast<uint32_t>(RGB(GetBValue(color), GetGValue(color), GetRValue(color)));
        return std::find(pixels.begin(), pixels.end(), rgb) != pixels.end();
    }
    static constexpr double Readable = 4.5; // what the guidelines ask for
    TUnthemed Unthemed;
};

TEST_F(HighContrast, AllCaptionsCanBeReadEnabledOrNot) {
    auto* const label = Add<TLabel>(20, 10, 100, 20);
    auto* const box = Add<TGroupBox>(20, 40, 120, 60);
    auto* const panel = Add<TPanel>(20, 110, 120, 30);
    auto* const button = Add<TSpeedButton>(20, 150, 120, 26);
    auto* const flat = Add<TSpeedButton>(20, 180, 120, 26);
    label->SetCaption("Label");
    box->SetCaption("Group box");
    panel->SetCaption("Panel");
    button->SetCaption("Button");
    flat->SetCaption("Flat");
    flat->SetFlat(true);
    Show();
    const THighContrast highContrast;
    const auto captions = [&] {
        return std::vector<std::pair<std::string, std::vector<uint32_t>>>{
            {"label", Seen(*label)},
            {"group box", Seen({28, 40, 70, 53})},
            {"panel", Seen(*panel, 3)},
            {"speed button", Seen(*button, 4)},
            {"flat speed button", Seen(*flat, 4)},
        };
    };
    for (const auto& [name, pixels] : captions()) {
        EXPECT_GE(ContrastIn(pixels), Readable) << name;
    }
    Screenshot("high-contrast", Form->Handle());
    for (TControl* const control : std::initializer_list<TControl*>{label, box, panel, button, flat}) {
        control->SetEnabled(false);
        control->Invalidate();
    }
    for (const auto& [name, pixels] : captions()) {
        EXPECT_GE(ContrastIn(pixels), Readable) << name;
        EXPECT_TRUE(Has(pixels, COLOR_GRAYTEXT)) << name;
        EXPECT_FALSE(Has(pixels, COLOR_BTNHIGHLIGHT)) << name << " is not engraved";
    }
    Screenshot("high-contrast-disabled", Form->Handle());
}

TEST_F(HighContrast, AButtonThatIsDownCanBeRead) {
    auto* const button = Add<TSpeedButton>(20, 150, 120, 26);
    button->SetCaption("Button");
    button->SetGroupIndex(1);
    button->SetDown(true);
    Show();
    const THighContrast highContrast;
    EXPECT_GE(ContrastIn(Seen(*button, 4)), Readable);
    button->SetFlat(true);
    EXPECT_GE(ContrastIn(Seen(*button, 4)), Readable);
}

TEST_F(HighContrast, TheCellsAndLinesOfAGridHaveTheSystemsColours) {
    auto* const grid = Add<TStringGrid>(20, 20, 330, 130);
    grid->SetBorderStyle(bsNone);
    grid->SetCells(1, 0, "Fixed");
    grid->SetCells(1, 1, "Chosen");
    grid->SetCells(2, 1, "Cell");
    TGridOptions options = grid->Options();
    grid->SetOptions(options.Include(goDrawFocusSelected));
    Show();
    const auto cell = [&](int col, int row) {
        const TRect r = grid->CellRect(col, row);
        return Seen({r.Left + 21, r.Top + 21, r.Right + 19, r.Bottom + 19});
    };
    const auto line = [&](int col, int row) {
        const TRect r = grid->CellRect(col, row);
        return Seen({r.Right + 20, r.Top + 20, r.Right + 21, r.Bottom + 20})[0];
    };
    EXPECT_EQ(line(1, 0), 0x000000u);
    EXPECT_EQ(line(2, 1), 0xC0C0C0u);
    const THighContrast highContrast;
    for (const auto& [col, row] : {std::pair{1, 0}, std::pair{1, 1}, std::pair{2, 1}}) {
        EXPECT_GE(ContrastIn(cell(col, row)), Readable) << col << "," << row;
    }
    EXPECT_TRUE(Has(cell(1, 1), COLOR_HIGHLIGHT));
    EXPECT_TRUE(Has(cell(1, 1), COLOR_HIGHLIGHTTEXT));
    EXPECT_EQ(line(1, 0), 0xFFFFFFu) << "the colour of texts";
    EXPECT_EQ(line(2, 1), 0x808080u) << "of shadows";
    Screenshot("high-contrast-grid", Form->Handle());
}

TEST_F(HighContrast, LeavesThemesOutEvenWhereTheSystemHasOneForIt) {
    auto* const grid = Add<TStringGrid>(20, 20, 330, 80);
    auto* const button = Add<TSpeedButton>(20, 110, 120, 26);
    auto* const box = Add<TGroupBox>(150, 110, 120, 60);
    grid->SetBorderStyle(bsNone);
    Show();
    const auto all = [&] { return std::array{Seen(*grid), Seen(*button), Seen(*box)}; };
    const auto plain = all();
    const THighContrastSetting on;
    TellThemeChanged();
    const auto classic = all();
    EXPECT_NE(classic[0], plain[0]) << "lines of another colour";
    SetThemeAppProperties(STAP_ALLOW_NONCLIENT | STAP_ALLOW_CONTROLS);
    const TThemed themed;
    EXPECT_EQ(all(), classic);
}

TEST_F(HighContrast, ComesAndGoesWithTheSystemsMessage) {
    auto* const label = Add<TLabel>(20, 10, 100, 20);
    label->SetCaption("Label");
    label->SetEnabled(false);
    Show();
    const auto engraved = Seen(*label);
    {
        const THighContrastSetting on;
        SendMessageW(Form->Handle(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
        EXPECT_NE(Seen(*label), engraved);
    }
    SendMessageW(Form->Handle(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    EXPECT_EQ(Seen(*label), engraved);
}

} // namespace
} // namespace kx
