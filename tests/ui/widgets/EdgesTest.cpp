// SPDX-License-Identifier: MIT
// The sunken edges of windows of our own, where the system's theme draws those of its controls.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"
#include "tests/support/SystemLooks.h"
#include "tests/ui/LooksTest.h"

#include <uxtheme.h>
#include <vsstyle.h>

namespace kx {
namespace {

using namespace test;

using TPixels = std::vector<uint32_t>;

constexpr int EdgeWidth = 2;

/// The outer pixels of a picture of that width, as many from each side, by rows.
TPixels EdgeOf(const TPixels& pixels, int width, int depth = EdgeWidth) {
    const int height = static_cast<int>(pixels.size()) / width;
    TPixels edge;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (x < depth || y < depth || x >= width - depth || y >= height - depth) {
                edge.push_back(pixels[static_cast<size_t>(y * width + x)]);
            }
        }
    }
    return edge;
}

/// A panel in which the program has asked for a frame too.
class TFramedPanel : public TPanel {
public:
    using TPanel::TPanel;
    void CreateParams(TCreateParams& params) override {
        TPanel::CreateParams(params);
        params.Style |= WS_BORDER;
    }
};

/// Notes in which states edges are drawn: themes may draw several states alike.
class TEdgeStates {
public:
    TEdgeStates() : FDraws("DrawThemeBackground", reinterpret_cast<void*>(Draw)) { Seen().clear(); }
    /// Those since it was asked last, each once if drawn several times on end.
    static std::vector<int> Taken() {
        std::vector<int> states = std::exchange(Seen(), {});
        states.erase(std::unique(states.begin(), states.end()), states.end());
        return states;
    }

private:
    static std::vector<int>& Seen() {
        static std::vector<int> states;
        return states;
    }
    static HRESULT WINAPI Draw(HTHEME theme, HDC dc, int part, int state, const RECT* rect, const RECT* clip) {
        if (part == EP_EDITTEXT) {
            Seen().push_back(state);
        }
        const auto draw = reinterpret_cast<decltype(&DrawThemeBackground)>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"uxtheme.dll"), "DrawThemeBackground")));
        return draw(theme, dc, part, state, rect, clip);
    }
    TImportPatch FDraws;
};

class Edges : public TLooksTest {
protected:
    Edges() {
        Panel->SetBorderStyle(bsSingle);
        Panel->SetBevelOuter(bvNone);
    }
    TPixels SeenWhole(TControl& control) {
        const TRect r = control.BoundsRect();
        return Seen(r);
    }
    TPixels Edge(TControl& control, int depth = EdgeWidth) {
        return EdgeOf(SeenWhole(control), control.Width(), depth);
    }
    /// The edge that the system draws in the classic way, in its colours of the moment.
    static TPixels ClassicEdge(TControl& control) {
        const TPicture32 picture(control.Width(), control.Height());
        RECT all{0, 0, picture.Width, picture.Height};
        DrawEdge(picture.Handle(), &all, EDGE_SUNKEN, BF_RECT);
        return EdgeOf(picture.Pixels(), picture.Width);
    }
    /// The theme's edge of an edit around a control of that size, and the control's colour where the theme's line ends.
    TPixels EditEdge(TWinControl& control, int state = ETS_NORMAL) {
        const TPicture32 picture(control.Width(), control.Height());
        picture.Fill(0x00FF00);
        const RECT all{0, 0, picture.Width, picture.Height};
        RECT inside{};
        const HTHEME theme = OpenThemeData(Form->Handle(), L"EDIT");
        EXPECT_GE(DrawThemeBackground(theme, picture.Handle(), EP_EDITTEXT, state, &all, nullptr), 0);
        EXPECT_GE(GetThemeBackgroundContentRect(theme, picture.Handle(), EP_EDITTEXT, state, &all, &inside), 0);
        CloseThemeData(theme);
        const unique_hbrush brush(CreateSolidBrush(static_cast<COLORREF>(ColorToRGB(control.Color()))));
        FillRect(picture.Handle(), &inside, brush.get());
        return EdgeOf(picture.Pixels(), picture.Width);
    }
    TScrollBox* Box = Add<TScrollBox>(20, 20, 100, 60);
    TPanel* Panel = Add<TPanel>(140, 20, 100, 60);
    TStringGrid* Grid = Add<TStringGrid>(20, 100, 200, 100);
};

TEST_F(Edges, AreThoseOfAnEditWhereAThemeDraws) {
    const TThemed theme;
    Panel->SetColor(clYellow);
    Show();
    for (TWinControl* const control : std::initializer_list<TWinControl*>{Box, Panel, Grid}) {
        EXPECT_EQ(Edge(*control), EditEdge(*control)) << control->ClassName();
        EXPECT_NE(Edge(*control), ClassicEdge(*control)) << control->ClassName();
    }
    Screenshot("themed-edges", Form->Handle());
    Panel->SetColor(clLime);
    EXPECT_EQ(Edge(*Panel), EditEdge(*Panel)) << "the colour reaches up to the theme's line";
    Panel->SetBorderStyle(bsNone);
    EXPECT_THAT(Edge(*Panel), Each(0x00FF00u)) << "no edge";
}

#ifdef KX_TEST_UTF8
TEST_F(Edges, LookLikeAnEditOfTheSystem) {
    ASSERT_TRUE(IsThemeActive());
    auto* const edit = Add<TEdit>(20, 200, Grid->Width(), Grid->Height());
    Show();
    EXPECT_EQ(Edge(*Grid, 1), Edge(*edit, 1));
    EXPECT_NE(Edge(*Grid, 1), EdgeOf(ClassicEdge(*Grid), Grid->Width(), 1));
}
#endif

TEST_F(Edges, TellWhetherTheWindowIsEnabledAndHasTheFocus) {
    const TThemed theme;
    const TEdgeStates states;
    auto* const other = Add<TEdit>(250, 100, 50, 20);
    other->SetTabOrder(0);
    Box->Hide();
    Panel->Hide();
    Grid->SetFixedCols(0); // a cell of a header has the same number as an edit's edge
    Grid->SetFixedRows(0);
    Show();
    Form->SetActiveControl(other);
    const auto drawn = [&] {
        Seen(*Grid);
        return states.Taken();
    };
    ASSERT_FALSE(drawn().empty());
    Grid->SetFocus();
    EXPECT_EQ(drawn(), std::vector<int>{ETS_FOCUSED});
    other->SetFocus();
    EXPECT_EQ(drawn(), std::vector<int>{ETS_NORMAL});
    Grid->SetEnabled(false);
    EXPECT_EQ(drawn(), std::vector<int>{ETS_DISABLED});
    Grid->SetEnabled(true);
    EXPECT_EQ(drawn(), std::vector<int>{ETS_NORMAL});
    EXPECT_TRUE(drawn().empty()) << "nothing has changed";
}

TEST_F(Edges, AreTheClassicOnesWithoutAThemeAndWithHighContrast) {
    const TUnthemed unthemed;
    Show();
    const TPixels classic = Edge(*Grid);
    EXPECT_EQ(classic, ClassicEdge(*Grid));
    const TThemed theme;
    const THighContrast highContrast;
    SetThemeAppProperties(STAP_ALLOW_NONCLIENT | STAP_ALLOW_CONTROLS); // as with the system's own themes for it
    SendMessageW(Form->Handle(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    TellThemeChanged();
    ASSERT_TRUE(Grid->HighContrast());
    for (TWinControl* const control : std::initializer_list<TWinControl*>{Box, Panel, Grid}) {
        EXPECT_EQ(Edge(*control), ClassicEdge(*control)) << control->ClassName();
    }
    EXPECT_NE(ClassicEdge(*Grid), classic) << "in other colours";
    Screenshot("high-contrast-edges", Form->Handle());
}

TEST_F(Edges, FollowTheUsersChoiceAtOnce) {
    const TThemed theme;
    Show();
    const auto all = [&](bool themed) {
        for (TWinControl* const control : std::initializer_list<TWinControl*>{Box, Panel, Grid}) {
            EXPECT_EQ(Edge(*control), themed ? EditEdge(*control) : ClassicEdge(*control)) << control->ClassName();
        }
    };
    all(true);
    {
        const TUnthemed unthemed;
        all(false);
    }
    all(true);
    const THighContrastSetting on;
    SendMessageW(Form->Handle(), WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    all(false);
}

TEST_F(Edges, LeaveScrollBarsToTheSystem) {
    const TThemed theme;
    Show();
    const TPixels before = SeenWhole(*Grid);
    {
        const TWindowDC dc(Grid->Handle(), true);
        const unique_hbrush red(CreateSolidBrush(RGB(255, 0, 0)));
        const RECT all{0, 0, Grid->Width(), Grid->Height()};
        FillRect(dc.Handle(), &all, red.get());
    }
    ASSERT_NE(SeenWhole(*Grid), before);
    RedrawWindow(Grid->Handle(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
    EXPECT_EQ(SeenWhole(*Grid), before);
}

TEST_F(Edges, ArePaintedWithTheRestOfThePartThatTheSystemAsksFor) {
    const TThemed theme;
    Show();
    const TPixels before = SeenWhole(*Grid);
    RECT r{};
    GetWindowRect(Grid->Handle(), &r);
    RECT bar{r.right - EdgeWidth - 10, r.top + EdgeWidth, r.right - EdgeWidth, r.top + EdgeWidth + 10};
    const auto fill = [&](const RECT& screen) {
        RECT own = screen;
        OffsetRect(&own, -r.left, -r.top);
        const TWindowDC dc(Grid->Handle(), true);
        const unique_hbrush red(CreateSolidBrush(RGB(255, 0, 0)));
        FillRect(dc.Handle(), &own, red.get());
    };
    fill(bar);
    const TPixels spoilt = SeenWhole(*Grid);
    ASSERT_NE(spoilt, before);
    const unique_hrgn corner(CreateRectRgn(r.left, r.top, r.left + 1, r.top + 1));
    SendMessageW(Grid->Handle(), WM_NCPAINT, reinterpret_cast<WPARAM>(corner.get()), 0);
    EXPECT_EQ(SeenWhole(*Grid), spoilt) << "not asked for";
    const unique_hrgn asked(CreateRectRgnIndirect(&bar));
    SendMessageW(Grid->Handle(), WM_NCPAINT, reinterpret_cast<WPARAM>(asked.get()), 0);
    EXPECT_EQ(SeenWhole(*Grid), before);
    EXPECT_EQ(GetRgnBox(asked.get(), &r), SIMPLEREGION);
    EXPECT_TRUE(EqualRect(&r, &bar)) << "the region is the system's";
}

TEST_F(Edges, InsideAFrameAreTheSystems) {
    auto* const framed = Add<TFramedPanel>(250, 20, 100, 60);
    framed->SetBorderStyle(bsSingle);
    Show();
    const TPixels classic = Edge(*framed, 3);
    const TThemed theme;
    EXPECT_EQ(Edge(*framed, 3), classic);
}

} // namespace
} // namespace kx
