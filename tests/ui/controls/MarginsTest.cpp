// SPDX-License-Identifier: MIT
// Margins of aligned controls, and padding around them.

#include "kx/ui/widgets/ExtCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

#include <gmock/gmock.h>

namespace kx {
namespace {

using namespace test;

class Margins : public TFormTest {
protected:
    TPanel* AddAligned(TAlign align, int width = 40, int height = 30) {
        auto* const panel = Add<TPanel>(0, 0, width, height);
        panel->SetAlign(align);
        return panel;
    }
    static void SetMargins(TControl& control, int left, int top, int right, int bottom) {
        control.Margins().SetLeft(left);
        control.Margins().SetTop(top);
        control.Margins().SetRight(right);
        control.Margins().SetBottom(bottom);
        control.SetAlignWithMargins(true);
    }
};

TEST_F(Margins, StayFreeAroundAlignedControls) {
    const TRect area = Form->ClientRect();
    auto* const top = AddAligned(alTop);
    SetMargins(*top, 1, 2, 3, 4);
    EXPECT_EQ(top->BoundsRect(), (TRect{1, 2, area.Right - 3, 32}));
    auto* const bottom = AddAligned(alBottom);
    SetMargins(*bottom, 5, 6, 7, 8);
    EXPECT_EQ(bottom->BoundsRect(), (TRect{5, area.Bottom - 38, area.Right - 7, area.Bottom - 8}));
    const int low = area.Bottom - 38 - 6;
    auto* const left = AddAligned(alLeft);
    SetMargins(*left, 9, 10, 11, 12);
    EXPECT_EQ(left->BoundsRect(), (TRect{9, 36 + 10, 49, low - 12}));
    auto* const right = AddAligned(alRight);
    SetMargins(*right, 13, 14, 15, 16);
    EXPECT_EQ(right->BoundsRect(), (TRect{area.Right - 55, 36 + 14, area.Right - 15, low - 16}));
    auto* const client = AddAligned(alClient);
    EXPECT_EQ(client->BoundsRect(), (TRect{49 + 11, 36, area.Right - 55 - 13, low}));
    SetMargins(*client, 17, 18, 19, 20);
    EXPECT_EQ(client->BoundsRect(), (TRect{60 + 17, 36 + 18, area.Right - 68 - 19, low - 20}));
    client->SetAlignWithMargins(false);
    EXPECT_EQ(client->BoundsRect(), (TRect{60, 36, area.Right - 68, low}));
    client->Margins().SetLeft(100);
    EXPECT_EQ(client->Left(), 60);
}

TEST_F(Margins, AreThreePixelsAtFirstAndNeverLess) {
    auto* const panel = AddAligned(alClient);
    panel->SetAlignWithMargins(true);
    const TRect area = Form->ClientRect();
    EXPECT_EQ(panel->BoundsRect(), (TRect{3, 3, area.Right - 3, area.Bottom - 3}));
    panel->Margins().SetLeft(-5);
    EXPECT_EQ(panel->Left(), 0);
    SetMargins(*panel, 1000, 0, 1000, 0);
    EXPECT_EQ(panel->Width(), 0) << "there is no room";
}

TEST_F(Margins, PaddingStaysFreeAroundAllAlignedControls) {
    auto* const top = AddAligned(alTop);
    auto* const client = AddAligned(alClient);
    auto* const other = Add<TPanel>(2, 2, 20, 20);
    const TRect area = Form->ClientRect();
    Form->Padding().SetLeft(1);
    Form->Padding().SetTop(2);
    Form->Padding().SetRight(3);
    Form->Padding().SetBottom(4);
    EXPECT_EQ(top->BoundsRect(), (TRect{1, 2, area.Right - 3, 32}));
    EXPECT_EQ(client->BoundsRect(), (TRect{1, 32, area.Right - 3, area.Bottom - 4}));
    EXPECT_EQ(other->BoundsRect(), (TRect{2, 2, 22, 22}));
}

TEST_F(Margins, FormFilesHoldThem) {
    const std::string lines = "object P: TPanel\n"
                              "  Left = 0\n"
                              "  Top = 0\n"
                              "  Width = 40\n"
                              "  Height = 30\n"
                              "  AlignWithMargins = True\n"
                              "  Margins.Left = 0\n"
                              "  Margins.Bottom = 7\n"
                              "  Padding.Top = 5\n"
                              "end\n";
    TPanel panel;
    ReadFormOver(panel, lines);
    EXPECT_EQ(panel.Margins().Left(), 0);
    EXPECT_EQ(panel.Margins().Top(), 3);
    EXPECT_EQ(panel.Margins().Bottom(), 7);
    EXPECT_EQ(panel.Padding().Top(), 5);
    panel.Margins().SetRight(4);
    panel.Margins().SetTop(2);
    TPanel copy;
    copy.SetMargins(panel.Margins());
    copy.SetPadding(panel.Padding());
    const std::string written = FormLinesOf(copy);
    EXPECT_NE(written.find("  Margins.Left = 0\n  Margins.Top = 2\n  Margins.Right = 4\n  Margins.Bottom = 7\n"),
              std::string::npos)
        << written;
    EXPECT_NE(written.find("  Padding.Top = 5\n"), std::string::npos) << written;
}

TEST_F(Margins, TakenOverFromAnotherControlTheyActAtOnce) {
    auto* const panel = AddAligned(alClient);
    panel->SetAlignWithMargins(true);
    TPanel other;
    other.Margins().SetLeft(11);
    other.Padding().SetTop(12);
    panel->SetMargins(other.Margins());
    EXPECT_EQ(panel->Left(), 11);
    Form->SetPadding(other.Padding());
    EXPECT_EQ(panel->Top(), 12 + 3);
}

} // namespace
} // namespace kx
