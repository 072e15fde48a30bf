// SPDX-License-Identifier: MIT
// Labels.

#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "tests/ui/ControlFixture.h"

#include <algorithm>
#include <map>
#include <vector>

namespace kx {
namespace {

using namespace test;

class Label : public TControlTest<TLabel> {};

TEST_F(Label, TheSizeFollowsTheText) {
    Control->SetCaption("short");
    const int width = Control->Width();
    Control->SetCaption("a much longer text");
    EXPECT_GT(Control->Width(), width);
    EXPECT_LT(Control->Height(), 30);
    Control->Font().SetHeight(-40);
    EXPECT_GE(Control->Height(), 40);
    const int right = Control->Left() + Control->Width();
    Control->SetAlignment(taRightJustify);
    Control->SetCaption("x");
    EXPECT_EQ(Control->Left() + Control->Width(), right);
    Control->SetAutoSize(false);
    Control->SetCaption("a much longer text again");
    EXPECT_LT(Control->Width(), 100);
}

TEST_F(Label, TheHeightFollowsWordsThatWrap) {
    Control->SetText("many words that need several lines of this label");
    const int oneLine = Control->Height();
    EXPECT_GT(Control->Width(), 100);
    Control->SetAutoSize(false);
    Control->SetWidth(60);
    Control->SetWordWrap(true);
    Control->SetAutoSize(true);
    EXPECT_EQ(Control->Width(), 60);
    EXPECT_GE(Control->Height(), 3 * oneLine);
    Control->SetWordWrap(false);
    Control->SetText("");
    EXPECT_EQ(Control->Width(), 0);
    EXPECT_EQ(Control->Height(), oneLine);
}

class EllipsisLabel : public TControlTest<TLabel> {
protected:
    /// The label's ink, row by row.
    std::vector<bool> Ink() {
        Form->Repaint();
        std::vector<bool> ink;
        const TWindowDC dc(Form->Handle());
        for (int y = 0; y < Control->Height(); ++y) {
            for (int x = 0; x < Control->Width(); ++x) {
                ink.push_back(GetPixel(dc.Handle(), Control->Left() + x, Control->Top() + y) != COLORREF{0xFFFFFF});
            }
        }
        return ink;
    }
};

TEST_F(EllipsisLabel, ShowsByDotsThatThereIsMore) {
    Form->SetColor(clWhite);
    Control->SetAutoSize(false);
    Control->SetBounds(10, 10, 60, 20);
    Control->SetCaption("HHHHH\\HHHHH HHHH\\HHHHH");
    Show();
    std::map<TEllipsisPosition, std::vector<bool>> ink;
    for (const TEllipsisPosition position : {epNone, epPathEllipsis, epEndEllipsis, epWordEllipsis}) {
        Control->SetEllipsisPosition(position);
        ink[position] = Ink();
    }
    EXPECT_NE(ink[epNone], ink[epEndEllipsis]);
    EXPECT_NE(ink[epNone], ink[epWordEllipsis]);
    EXPECT_NE(ink[epNone], ink[epPathEllipsis]);
    EXPECT_NE(ink[epPathEllipsis], ink[epEndEllipsis]);
    Control->SetCaption("H");
    EXPECT_EQ((Control->SetEllipsisPosition(epNone), Ink()), (Control->SetEllipsisPosition(epEndEllipsis), Ink()));
    Control->SetCaption("HHHHHHHHHHHHHHHH");
    Control->SetAutoSize(true);
    EXPECT_GT(Control->Width(), 60) << "the whole text has room";
}

class LabelInk : public EllipsisLabel {
protected:
    LabelInk() {
        Form->SetColor(clWhite);
        Control->SetParentColor(true);
        Control->SetAutoSize(false);
        Control->SetText("I&I");
    }
    /// The rows with the first and the last ink; -1 without any.
    std::pair<int, int> Rows() {
        const std::vector<bool> ink = Ink();
        std::pair<int, int> rows{-1, -1};
        for (size_t i = 0; i < ink.size(); ++i) {
            if (ink[i]) {
                const int row = static_cast<int>(i) / Control->Width();
                rows = {rows.first < 0 ? row : rows.first, row};
            }
        }
        return rows;
    }
    size_t Amount() {
        const std::vector<bool> ink = Ink();
        return static_cast<size_t>(std::count(ink.begin(), ink.end(), true));
    }
};

TEST_F(LabelInk, TheTextIsAtTheTopInTheMiddleOrAtTheBottom) {
    Show();
    const auto [top, topEnd] = Rows();
    EXPECT_GE(top, 0);
    EXPECT_LT(topEnd, 30);
    Control->SetLayout(tlCenter);
    const auto [middle, middleEnd] = Rows();
    EXPECT_NEAR(middle - top, (Control->Height() - topEnd) * 0.5, 4);
    Control->SetLayout(tlBottom);
    const auto [bottom, bottomEnd] = Rows();
    EXPECT_GT(bottomEnd, Control->Height() - 10);
    EXPECT_NEAR(bottom - middle, middle - top, 1);
}

TEST_F(LabelInk, DisabledItHasAShade) {
    Form->SetColor(clBlack); // the ink is what is not white
    Control->SetColor(clWhite);
    Show();
    const size_t enabled = Amount();
    EXPECT_GT(enabled, 0u);
    Control->SetEnabled(false);
    Control->SetColor(clSilver);
    Form->Repaint();
    const TWindowDC dc(Form->Handle());
    bool hasShade = false;
    for (int y = 0; y < 30; ++y) {
        for (int x = 0; x < 30; ++x) {
            const auto at = [&](int dx) {
                return GetPixel(dc.Handle(), Control->Left() + x + dx, Control->Top() + y + dx);
            };
            hasShade = hasShade || (at(0) == static_cast<COLORREF>(ColorToRGB(clBtnShadow)) &&
                                    at(1) == static_cast<COLORREF>(ColorToRGB(clBtnHighlight)));
        }
    }
    EXPECT_TRUE(hasShade) << "one pixel right of the text and below it";
}

TEST_F(LabelInk, AmpersandsMarkALetterOrAreText) {
    Show();
    const size_t marked = Amount();
    Control->SetShowAccelChar(false);
    EXPECT_NE(Amount(), marked);
    Control->SetText("II");
    EXPECT_NE(Amount(), marked) << "the letter was underlined";
}

TEST_F(LabelInk, WhatIsBehindShowsThrough) {
    Control->SetText("");
    Show();
    Control->SetColor(clBlack);
    EXPECT_EQ(Amount(), static_cast<size_t>(Control->Width() * Control->Height()));
    Control->SetTransparent(true);
    EXPECT_EQ(Amount(), 0u);
}

} // namespace
} // namespace kx
