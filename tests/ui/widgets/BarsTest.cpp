// SPDX-License-Identifier: MIT
// Status bars and progress bars.

#include "kx/ui/widgets/ComCtrlsBars.h"
#include "tests/support/FormFiles.h"
#include "tests/ui/ControlFixture.h"

namespace kx {
namespace {

using namespace test;

// --- Progress bars

class ProgressBar : public TControlTest<TProgressBar> {
protected:
    LRESULT Ask(UINT message, WPARAM wParam = 0) { return SendMessageA(Control->Handle(), message, wParam, 0); }
};

TEST_F(ProgressBar, ShowsItsPositionInItsRange) {
    Control->SetRange(-50, 100000);
    Control->SetPosition(70000);
    Show();
    EXPECT_EQ(Ask(PBM_GETRANGE, TRUE), -50);
    EXPECT_EQ(Ask(PBM_GETRANGE, FALSE), 100000);
    EXPECT_EQ(Ask(PBM_GETPOS), 70000);
    Control->SetPosition(200000);
    EXPECT_EQ(Control->Position(), 100000);
    EXPECT_EQ(Ask(PBM_GETPOS), 100000);
    Control->SetMax(500);
    EXPECT_EQ(Control->Position(), 500);
    EXPECT_EQ(Ask(PBM_GETPOS), 500);
    Control->SetMin(600 - 300);
    Control->SetPosition(0);
    EXPECT_EQ(Control->Position(), 300);
    Control->SetSmooth(true); // makes the window anew
    EXPECT_EQ(Ask(PBM_GETPOS), 300);
}

TEST_F(ProgressBar, StepsAndStaysInItsRange) {
    Control->StepIt();
    EXPECT_EQ(Control->Position(), 10);
    Control->SetStep(25);
    Control->StepIt();
    EXPECT_EQ(Control->Position(), 35);
    Control->StepBy(-100);
    EXPECT_EQ(Control->Position(), 0);
    Control->SetMax(INT32_MAX);
    Control->SetPosition(INT32_MAX - 1);
    Control->StepBy(INT32_MAX);
    EXPECT_EQ(Control->Position(), INT32_MAX);
}

TEST_F(ProgressBar, ARangeThatIsNoneIsAnError) {
    EXPECT_THROW(Control->SetMin(101), EInvalidOperation);
    EXPECT_THROW(Control->SetMax(-1), EInvalidOperation);
    EXPECT_EQ(Control->Min(), 0);
    EXPECT_EQ(Control->Max(), 100);
    Control->SetMin(100);
    EXPECT_EQ(Control->Position(), 100);
}

TEST_F(ProgressBar, AnUprightOneHasItsSidesExchanged) {
    Control->SetBounds(10, 10, 150, 20);
    Show();
    Control->SetOrientation(pbVertical);
    EXPECT_EQ(Control->BoundsRect(), (TRect{10, 10, 30, 160}));
    EXPECT_NE(GetWindowLongA(Control->Handle(), GWL_STYLE) & PBS_VERTICAL, 0);
    Control->SetOrientation(pbVertical);
    EXPECT_EQ(Control->Width(), 20);
}

TEST_F(ProgressBar, ComesBackFromAFormFile) {
    // The least position comes before the greatest one that allows it.
    ReadFormOver(*Control, "object P: TProgressBar\n Left = 1\n Top = 2\n Width = 20\n Height = 90\n Min = 200\n"
                           " Max = 300\n Orientation = pbVertical\n Position = 250\n Smooth = True\n Step = 5\nend\n");
    EXPECT_EQ(Control->Min(), 200);
    EXPECT_EQ(Control->Max(), 300);
    EXPECT_EQ(Control->Position(), 250);
    EXPECT_EQ(Control->Width(), 20);
    const std::string text = FormTextOf(*Control);
    EXPECT_NE(text.find("  Min = 200\r\n  Max = 300\r\n  Orientation = pbVertical\r\n  Position = 250\r\n"
                        "  Smooth = True\r\n  Step = 5\r\n"),
              std::string::npos)
        << text;
}

// --- Status bars

class StatusBar : public TFormTest {
protected:
    std::string PartText(int part) {
        const auto length = LOWORD(SendMessageA(Bar->Handle(), SB_GETTEXTLENGTHA, static_cast<WPARAM>(part), 0));
        std::string text(length, '\0');
        SendMessageA(Bar->Handle(), SB_GETTEXTA, static_cast<WPARAM>(part), reinterpret_cast<LPARAM>(text.data()));
        return text;
    }
    int PartStyle(int part) {
        return HIWORD(SendMessageA(Bar->Handle(), SB_GETTEXTLENGTHA, static_cast<WPARAM>(part), 0));
    }
    std::vector<int> Edges() {
        std::vector<int> edges(static_cast<size_t>(SendMessageA(Bar->Handle(), SB_GETPARTS, 0, 0)));
        SendMessageA(Bar->Handle(), SB_GETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
        return edges;
    }
    TStatusPanel& AddPanel(const std::string& text, int width) {
        TStatusPanel& panel = Bar->Panels().Add();
        panel.SetText(text);
        panel.SetWidth(width);
        return panel;
    }

    TStatusBar* Bar = Add<TStatusBar>(0, 0, 100, 19);
};

TEST_F(StatusBar, LiesAtTheBottomAndFollowsTheForm) {
    Show();
    EXPECT_EQ(Bar->BoundsRect(), (TRect{0, Form->ClientHeight() - 19, Form->ClientWidth(), Form->ClientHeight()}));
    Form->SetWidth(500);
    EXPECT_EQ(Bar->Width(), Form->ClientWidth());
    EXPECT_EQ(Bar->Height(), 19);
    EXPECT_EQ(RectIn(Form->Handle(), Bar->Handle()), Bar->BoundsRect());
}

TEST_F(StatusBar, ShowsItsPanels) {
    AddPanel("first", 80);
    Show();
    AddPanel("second", 60).SetBevel(pbNone);
    AddPanel("third", 30).SetBevel(pbRaised);
    EXPECT_EQ(Edges(), (std::vector<int>{80, 140, -1}));
    EXPECT_EQ(PartText(0), "first");
    EXPECT_EQ(PartText(1), "second");
    EXPECT_EQ(PartStyle(0), 0);
    EXPECT_EQ(PartStyle(1), SBT_NOBORDERS);
    EXPECT_EQ(PartStyle(2), SBT_POPOUT);
    Bar->Panels()[1].SetText("new");
    EXPECT_EQ(PartText(1), "new");
    Bar->Panels()[0].SetWidth(10);
    EXPECT_EQ(Edges(), (std::vector<int>{10, 70, -1}));
    Bar->Panels().Delete(0);
    EXPECT_EQ(Edges(), (std::vector<int>{60, -1}));
    EXPECT_EQ(PartText(0), "new");
    Bar->Panels().Clear();
    EXPECT_EQ(Edges(), std::vector<int>{-1});
    EXPECT_EQ(PartText(0), "");
}

TEST_F(StatusBar, TextsStandWhereTheirPanelWantsThem) {
    AddPanel("left", 80);
    AddPanel("right", 80).SetAlignment(taRightJustify);
    AddPanel("middle", 80).SetAlignment(taCenter);
    Show();
    EXPECT_EQ(PartText(1), "\t\tright"); // as the system has it
    EXPECT_EQ(PartText(2), "\tmiddle");
    Bar->SetBiDiMode(bdRightToLeft);
    EXPECT_EQ(PartText(0), "\t\tleft");
    EXPECT_EQ(PartText(1), "right");
}

TEST_F(StatusBar, OneTextShowsInPlaceOfThePanels) {
    AddPanel("panel", 80);
    Bar->SetSimpleText("simple");
    Show();
    EXPECT_FALSE(SendMessageA(Bar->Handle(), SB_ISSIMPLE, 0, 0));
    Bar->SetSimplePanel(true);
    EXPECT_TRUE(SendMessageA(Bar->Handle(), SB_ISSIMPLE, 0, 0));
    Bar->SetSizeGrip(false); // makes the window anew
    EXPECT_TRUE(SendMessageA(Bar->Handle(), SB_ISSIMPLE, 0, 0));
    EXPECT_EQ(GetWindowLongA(Bar->Handle(), GWL_STYLE) & SBARS_SIZEGRIP, 0);
    Bar->SetSimplePanel(false);
    EXPECT_EQ(PartText(0), "panel");
}

TEST_F(StatusBar, ThePanelsThatWantItAreDrawnByTheProgram) {
    AddPanel("one", 80);
    TStatusPanel& drawn = AddPanel("two", 80);
    std::vector<std::string> log;
    Bar->SetOnDrawPanel([&](TStatusBar* bar, TStatusPanel* panel, const TRect& rect) {
        EXPECT_EQ(bar, Bar);
        EXPECT_TRUE(bar->Canvas().HandleAllocated());
        EXPECT_GE(rect.Left, 80);
        log.push_back(panel->Text());
    });
    Show();
    Bar->Update();
    EXPECT_TRUE(log.empty());
    drawn.SetStyle(psOwnerDraw);
    Bar->Update();
    EXPECT_TRUE(PumpUntil([&] { return !log.empty(); }));
    EXPECT_EQ(log.front(), "two");
    EXPECT_FALSE(Bar->Canvas().HandleAllocated());
}

TEST_F(StatusBar, ComesBackFromAFormFile) {
    ReadFormOver(*Bar,
                 "object B: TStatusBar\n Panels = <\n  item\n   Alignment = taCenter\n   Text = 'a'\n"
                 "   Width = 70\n  end\n  item\n   Bevel = pbRaised\n   Style = psOwnerDraw\n   Width = 50\n  end>\n"
                 " SimplePanel = True\n SimpleText = 's'\n SizeGrip = False\nend\n");
    EXPECT_EQ(Bar->Panels().Count(), 2);
    EXPECT_EQ(Bar->Panels()[1].Bevel(), pbRaised);
    const std::string text = FormTextOf(*Bar);
    EXPECT_NE(
        text.find("  Panels = <\r\n    item\r\n      Alignment = taCenter\r\n      Text = 'a'\r\n      Width = 70\r\n"
                  "    end\r\n    item\r\n      Bevel = pbRaised\r\n      Style = psOwnerDraw\r\n"
                  "      Width = 50\r\n    end>\r\n  SimplePanel = True\r\n  SimpleText = 's'\r\n"
                  "  SizeGrip = False\r\n"),
        std::string::npos)
        << text;
    EXPECT_EQ(text.find("Align "), std::string::npos) << "at the bottom by default";
}

} // namespace
} // namespace kx
