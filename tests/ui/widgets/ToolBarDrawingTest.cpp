// SPDX-License-Identifier: MIT
// How tool bars and their buttons look.

#include "tests/ui/ToolBarFixture.h"

#include "tests/support/FormFiles.h"
#include "tests/support/ImportPatch.h"

#include <algorithm>

namespace kx::test {
namespace {

// --- Drawing

TEST_F(ToolBar, ABarWhoseDrawingIsSwitchedOffShowsOnlyWhatItsButtonsPaint) {
    MakeColumn();
    Bar->SetColor(clBlue);
    auto* const painted = Add<TPaintedButton>();
    TToolButton* const plain = Add("plain");
    Bar->SetOnCustomDrawButton(
        [](TToolBar*, TToolButton*, TCustomDrawState, bool& defaultDraw) { defaultDraw = false; });
    Show();
    EXPECT_EQ(ColorIn(*painted), COLORREF{clLime});
    EXPECT_EQ(ColorIn(*plain), COLORREF{clBlue}) << "nothing";
    painted->SetDown(true);
    EXPECT_EQ(ColorIn(*painted), COLORREF{clRed});
}

TEST_F(ToolBar, AButtonPaintsItselfAnewWhenTheMouseComesAndGoes) {
    MakeColumn();
    auto* const button = Add<TPaintedButton>();
    auto* const other = Append<TPaintedButton>();
    Bar->SetOnCustomDrawButton([](TToolBar*, TToolButton*, TCustomDrawState, bool& draw) { draw = false; });
    MoveMouse({5, 5});
    Show();
    const int before = button->Paints;
    const int others = other->Paints;
    MoveMouse(Middle(*button));
    ASSERT_TRUE(PumpUntil([&] { return button->Paints > before; }));
    Bar->Update();
    const int hot = button->Paints;
    EXPECT_EQ(other->Paints, others) << "the other one is left alone";
    MoveMouse({5, 5});
    ASSERT_TRUE(PumpUntil([&] { return button->Paints > hot; }));
}

TEST_F(ToolBar, TheCustomDrawHandlerIsToldTheButtonsState) {
    Bar->SetFlat(true);
    TToolButton* const first = Append("a");
    TToolButton* const second = Append("b");
    first->SetStyle(tbsCheck);
    first->SetDown(true);
    second->SetEnabled(false);
    TCustomDrawState states[2];
    Bar->SetOnCustomDrawButton([&](TToolBar* bar, TToolButton* button, TCustomDrawState state, bool&) {
        states[button->Index()] = state;
        EXPECT_TRUE(bar->Canvas().HandleAllocated());
    });
    int bars = 0;
    Bar->SetOnCustomDraw([&](TToolBar*, const TRect& rect, bool&) {
        ++bars;
        EXPECT_EQ(rect, Bar->ClientRect());
    });
    MoveMouse({5, 5});
    Show();
    EXPECT_TRUE(states[0].Contains(cdsChecked));
    EXPECT_TRUE(states[1].Contains(cdsDisabled));
    EXPECT_FALSE(states[0].Contains(cdsHot));
    EXPECT_GT(bars, 0);
    MoveMouse(Middle(*first));
    EXPECT_TRUE(PumpUntil([&] { return states[0].Contains(cdsHot); }));
}

TEST_F(ToolBar, EdgesTakeRoomFromTheClientArea) {
    Bar->SetAlign(alNone);
    Bar->SetBounds(0, 0, 100, 40);
    Bar->SetEdgeBorders({ebTop, ebLeft});
    EXPECT_EQ(Bar->ClientRect(), (TRect{0, 0, 98, 38}));
    Show();
    EXPECT_EQ(Bar->ClientRect(), (TRect{0, 0, 98, 38}));
    Bar->SetEdgeInner(esNone);
    EXPECT_EQ(Bar->ClientRect(), (TRect{0, 0, 99, 39}));
    Bar->SetEdgeBorders({});
    EXPECT_EQ(Bar->ClientRect(), (TRect{0, 0, 100, 40}));
}

TEST_F(ToolBar, LooksAsAToolBarShould) {
    TImageList images(16, 16);
    TBitmap picture(16 * 3, 16);
    for (int i = 0; i < 3; ++i) {
        picture.Canvas().Brush().SetColor(i == 0 ? clRed : i == 1 ? clGreen : clBlue);
        picture.Canvas().Ellipse({i * 16 + 1, 1, i * 16 + 15, 15});
    }
    images.AddMasked(&picture, clDefault);
    Bar->SetFlat(true);
    Bar->SetImages(&images);
    Bar->SetShowCaptions(true);
    Bar->SetAutoSize(true);
    Bar->SetEdgeBorders({ebTop, ebBottom});
    TPopupMenu menu(nullptr);
    const char* const captions[] = {"Open", "Save", "", "Print", "Help"};
    for (int i = 0; i < 5; ++i) {
        TToolButton* const button = Append(captions[i]);
        button->SetImageIndex(i % 3);
        button->SetStyle(i == 2 ? tbsDivider : i == 3 ? tbsDropDown : tbsCheck);
    }
    Bar->Buttons(3)->SetDropdownMenu(&menu);
    Bar->Buttons(1)->SetDown(true);
    Bar->Buttons(4)->SetEnabled(false);
    Show();
    EXPECT_GE(Bar->Height(), 16 + 13);
    EXPECT_GT(Bar->Buttons(0)->Width(), 23) << "captions have room";
    EXPECT_EQ(SystemRect(4), Bar->Buttons(4)->BoundsRect());
    MoveMouse(Middle(*Bar->Buttons(0)));
    Application().ProcessMessages();
    EXPECT_NE(Screenshot("toolbar", Form->Handle()), "");
}

TEST_F(ToolBar, AFormFileBringsTheBarBackAsItWas) {
    RegisterClasses<TToolBar, TToolButton>();
    MakeColumn();
    Bar->SetName("Bar");
    const char* const names[] = {"Third", "Second", "First"};
    for (const char* name : names) {
        auto* const button = new TToolButton(Form.get());
        button->SetName(name);
        button->SetStyle(tbsCheck);
        button->SetParent(Bar);
    }
    Bar->Buttons(1)->SetDown(true);
    const TFormPtr copy(new TForm);
    ReadFormOver(*copy, FormTextOf(*Form));
    auto* const bar = dynamic_cast<TToolBar*>(copy->FindComponent("Bar"));
    ASSERT_NE(bar, nullptr);
    ASSERT_EQ(bar->ButtonCount(), 3);
    EXPECT_EQ(bar->Buttons(0)->Name(), "First");
    EXPECT_EQ(bar->Buttons(2)->Name(), "Third");
    EXPECT_TRUE(bar->Buttons(1)->Down());
    EXPECT_TRUE(bar->Flat());
    EXPECT_EQ(bar->Buttons(1)->Top(), 49);
    EXPECT_EQ(bar->Height(), 147);
}

std::vector<std::wstring> Measured;

int WINAPI DrawTextNoted(HDC dc, LPCWSTR text, int length, LPRECT rect, UINT format) {
    Measured.emplace_back(text, static_cast<size_t>(length));
    return DrawTextExW(dc, const_cast<LPWSTR>(text), length, rect, format, nullptr);
}

/// As text that is not Unicode, the system would measure them in a code page that need not be the process's.
TEST_F(ToolBar, CaptionsAreMeasuredAsTheLettersThatTheyShow) {
    Add(FromUtf8("Größe"));
    Add("x");
    Show();
    Measured.clear();
    const TImportPatch patch("DrawTextW", reinterpret_cast<void*>(DrawTextNoted));
    Bar->SetShowCaptions(true);
    EXPECT_NE(std::find(Measured.begin(), Measured.end(), ToWide(FromUtf8("Größe"))), Measured.end());
    TBitmap bitmap;
    bitmap.Canvas().Font().Assign(&Bar->Font());
    EXPECT_GT(Bar->Buttons(0)->Width(), bitmap.Canvas().TextWidth(FromUtf8("Größe")));
    EXPECT_EQ(Bar->Buttons(1)->Width(), Bar->Buttons(0)->Width()) << "the widest counts";
}

} // namespace
} // namespace kx::test
