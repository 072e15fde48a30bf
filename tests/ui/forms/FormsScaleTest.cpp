// SPDX-License-Identifier: MIT
// Forms that were designed at another resolution than the screen's.

#include "kx/graphics/ImgList.h"
#include "kx/ui/StandardClasses.h"
#include "kx/ui/forms/Frames.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsBars.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/Grids.h"
#include "kx/ui/widgets/ScrollBoxes.h"
#include "kx/ui/widgets/Splitters.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Dpi.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

/// Half the resolution of the screen: everything becomes twice as large.
std::string HalfOf(int dpi) { return "  PixelsPerInch = " + IntToStr(dpi / 2) + "\n"; }

class FormScale : public testing::Test {
protected:
    FormScale() {
        RegisterStandardClasses();
        RegisterClasses<TImageList>();
    }
    /// A form of that file which is complete, for a screen of twice the resolution.
    void Read(const std::string& inside, const std::string& properties = {}) {
        Form.reset(new TForm(nullptr));
        ReadFormOver(*Form, "object Form1: TForm\n  Left = 30\n  Top = 40\n  ClientHeight = 100\n  ClientWidth = 200\n"
                            "  Font.Height = -11\n" +
                                HalfOf(SystemDpi()) + properties + inside + "end\n");
        Complete();
    }
    void Complete() { Form->AfterConstruction(); }
    /// The component of that name.
    template <class T> T& The(const std::string& name) { return dynamic_cast<T&>(*Form->FindComponent(name)); }

    TFormPtr Form;
};

TRect Bounds(const TControl& control) { return control.BoundsRect(); }

constexpr char Button[] = "  object Button1: TButton\n    Left = 10\n    Top = 20\n    Width = 75\n    Height = 25\n"
                          "  end\n";

TEST_F(FormScale, TheClientAreaAndTheControlsTakeTheResolutionOfTheScreen) {
    Read(Button);
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 400, 200}));
    EXPECT_EQ(Form->Left(), 30) << "a form's place is the screen's";
    EXPECT_EQ(Form->Top(), 40);
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{20, 40, 170, 90}));
    EXPECT_EQ(Form->PixelsPerInch(), SystemDpi());
    EXPECT_EQ(Form->Font().Height(), -22);
    EXPECT_EQ(Form->Font().PixelsPerInch(), SystemDpi());
    EXPECT_EQ(The<TButton>("Button1").Font().Height(), -22);
    EXPECT_TRUE(The<TButton>("Button1").ParentFont());
    EXPECT_TRUE(Form->HasFinalSizes());
    Form->Show();
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 400, 200})) << "once only";
}

TEST_F(FormScale, SmallerScreensMakeItSmaller) {
    Form.reset(new TForm(nullptr));
    ReadFormOver(*Form, "object Form1: TForm\n  ClientHeight = 150\n  ClientWidth = 301\n  Font.Height = -15\n"
                        "  PixelsPerInch = " +
                            IntToStr(SystemDpi() * 3 / 2) + "\n" + Button + "end\n");
    Complete();
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 201, 100})) << "rounded";
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{7, 13, 57, 30}));
    EXPECT_EQ(Form->Font().Height(), -10);
}

TEST_F(FormScale, AConstructorSeesTheSizesOfTheFileAndOnCreateTheFinalOnes) {
    Form.reset(new TForm(nullptr));
    int created = 0;
    Form->SetOnCreate([&](TObject*) { created = Form->ClientWidth(); });
    ReadFormOver(*Form,
                 "object Form1: TForm\n  ClientHeight = 100\n  ClientWidth = 200\n" + HalfOf(SystemDpi()) + "end\n");
    EXPECT_EQ(Form->ClientWidth(), 200);
    EXPECT_FALSE(Form->HasFinalSizes());
    Complete();
    EXPECT_EQ(created, 400);
}

TEST_F(FormScale, OneThatIsNotScaledStaysAsItIs) {
    Read(Button, "  Scaled = False\n");
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 200, 100}));
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{10, 20, 85, 45}));
    EXPECT_EQ(Form->Font().Height(), -11);
    EXPECT_EQ(Form->PixelsPerInch(), SystemDpi() / 2);
    Form->Show();
    EXPECT_EQ(Form->ClientRect(), (TRect{0, 0, 200, 100}));
}

TEST_F(FormScale, AFormWithoutAFileHasTheSizesThatItIsGiven) {
    Form.reset(NewForm<TForm>(nullptr));
    Form->SetBounds(1, 2, 300, 200);
    Form->Show();
    EXPECT_EQ(Bounds(*Form), (TRect{1, 2, 301, 202}));
    EXPECT_EQ(Form->PixelsPerInch(), SystemDpi());
}

TEST_F(FormScale, ResolutionsThatCannotBeCountAsTheLeast) {
    for (const char* value : {"0", "-5", "-2147483648"}) {
        Form.reset(new TForm(nullptr));
        ReadFormOver(*Form,
                     std::string("object Form1: TForm\n  ClientHeight = 2\n  ClientWidth = 3\n  PixelsPerInch = ") +
                         value + "\nend\n");
        Complete();
        EXPECT_EQ(Form->ClientWidth(), 3 * SystemDpi()) << value;
    }
}

TEST_F(FormScale, FontsOfTheirOwnAreScaledAndOthersFollow) {
    Read("  object Panel1: TPanel\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n    Font.Height = -20\n"
         "    ParentFont = False\n    object Label1: TLabel\n      Left = 1\n      Top = 2\n      Width = 5\n"
         "      Height = 6\n      AutoSize = False\n    end\n    object Label2: TLabel\n      Left = 1\n      Top = 2\n"
         "      Width = 5\n      Height = 6\n      AutoSize = False\n      Font.Height = -9\n      ParentFont = False\n"
         "    end\n  end\n");
    EXPECT_EQ(The<TPanel>("Panel1").Font().Height(), -40);
    EXPECT_EQ(The<TLabel>("Label1").Font().Height(), -40);
    EXPECT_TRUE(The<TLabel>("Label1").ParentFont());
    EXPECT_EQ(The<TLabel>("Label2").Font().Height(), -18);
    EXPECT_EQ(Bounds(The<TLabel>("Label2")), (TRect{2, 4, 12, 16}));
}

TEST_F(FormScale, ALabelThatTakesTheSizeOfItsTextTakesThatOfTheScaledFont) {
    Read("  object Label1: TLabel\n    Left = 1\n    Top = 2\n    Width = 500\n    Height = 6\n    Caption = "
         "'Measured'\n"
         "  end\n");
    TLabel byHand(nullptr);
    byHand.SetCaption("Measured");
    byHand.SetParent(Form.get());
    EXPECT_EQ(kx::Width(Bounds(The<TLabel>("Label1"))), byHand.Width());
    EXPECT_EQ(kx::Height(Bounds(The<TLabel>("Label1"))), byHand.Height());
}

TEST_F(FormScale, LimitsMarginsAndPaddingGoAlong) {
    Read("  object Panel1: TPanel\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n    AlignWithMargins = "
         "True\n"
         "    Margins.Left = 1\n    Margins.Top = 2\n    Margins.Right = 4\n    Margins.Bottom = 5\n"
         "    Padding.Left = 6\n    Padding.Top = 7\n    Padding.Right = 8\n    Padding.Bottom = 9\n"
         "    Constraints.MinWidth = 45\n    Constraints.MinHeight = 35\n    Constraints.MaxWidth = 60\n"
         "    Constraints.MaxHeight = 61\n    BorderWidth = 3\n  end\n");
    auto& panel = The<TPanel>("Panel1");
    EXPECT_EQ(Bounds(panel), (TRect{0, 0, 100, 80}));
    EXPECT_EQ(panel.Margins().Inside({0, 0, 100, 100}), (TRect{2, 4, 92, 90}));
    EXPECT_EQ(panel.Padding().Inside({0, 0, 100, 100}), (TRect{12, 14, 84, 82}));
    EXPECT_EQ(panel.Constraints().MinWidth(), 90);
    EXPECT_EQ(panel.Constraints().MinHeight(), 70);
    EXPECT_EQ(panel.Constraints().MaxWidth(), 120);
    EXPECT_EQ(panel.Constraints().MaxHeight(), 122);
    EXPECT_EQ(panel.BorderWidth(), 6);
}

TEST_F(FormScale, AnchoredAndAlignedControlsStandAsTheyWereDesigned) {
    Read("  object Button1: TButton\n    Left = 115\n    Top = 65\n    Width = 75\n    Height = 25\n"
         "    Anchors = [akRight, akBottom]\n  end\n  object Panel1: TPanel\n    Left = 0\n    Top = 0\n    Width = "
         "200\n"
         "    Height = 30\n    Align = alTop\n  end\n  object Edit1: TEdit\n    Left = 5\n    Top = 35\n    Width = "
         "190\n"
         "    Height = 21\n    Anchors = [akLeft, akTop, akRight]\n  end\n");
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{230, 130, 380, 180}));
    EXPECT_EQ(Bounds(The<TPanel>("Panel1")), (TRect{0, 0, 400, 60}));
    EXPECT_EQ(Bounds(The<TEdit>("Edit1")), (TRect{10, 70, 390, 112}));
    Form->SetClientSize(500, 300); // and keep their distances from there
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{330, 230, 480, 280}));
    EXPECT_EQ(kx::Width(Bounds(The<TEdit>("Edit1"))), 480);
}

TEST_F(FormScale, TheyStandSoAsWellWhenACompleteFormIsScaled) {
    Read("  object Panel1: TPanel\n    Left = 0\n    Top = 0\n    Width = 200\n    Height = 100\n"
         "    Anchors = [akLeft, akTop, akRight, akBottom]\n    object Button1: TButton\n      Left = 115\n"
         "      Top = 65\n      Width = 75\n      Height = 25\n      Anchors = [akRight, akBottom]\n    end\n  end\n");
    Form->ScaleForDpi(SystemDpi() / 2, SystemDpi());
    EXPECT_EQ(Bounds(The<TPanel>("Panel1")), (TRect{0, 0, 200, 100}));
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{115, 65, 190, 90}));
    Form->SetClientSize(250, 150);
    EXPECT_EQ(Bounds(The<TPanel>("Panel1")), (TRect{0, 0, 250, 150}));
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{165, 115, 240, 140}));
}

TEST_F(FormScale, EverythingElseInPixelsGoesAlong) {
    Read(
        "  BorderWidth = 4\n"
        "  object ListView1: TListView\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n    Columns = <\n"
        "      item\n        Width = 30\n      end\n      item\n        Width = -1\n      end>\n  end\n"
        "  object TreeView1: TTreeView\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n    Indent = 21\n  "
        "end\n"
        "  object StatusBar1: TStatusBar\n    Left = 0\n    Top = 81\n    Width = 200\n    Height = 19\n    Panels = "
        "<\n"
        "      item\n        Width = 60\n      end>\n  end\n"
        "  object ToolBar1: TToolBar\n    Left = 0\n    Top = 0\n    Width = 200\n    Height = 29\n    ButtonHeight = "
        "24\n"
        "    ButtonWidth = 25\n    Indent = 3\n    object Separator1: TToolButton\n      Left = 3\n      Top = 0\n"
        "      Width = 10\n      Style = tbsSeparator\n    end\n  end\n"
        "  object PageScroller1: TPageScroller\n    Left = 0\n    Top = 40\n    Width = 50\n    Height = 20\n"
        "    ButtonSize = 14\n    Margin = 2\n  end\n"
        "  object Splitter1: TSplitter\n    Left = 0\n    Top = 0\n    Width = 3\n    Height = 40\n    Align = alNone\n"
        "    MinSize = 33\n  end\n"
        "  object SpeedButton1: TSpeedButton\n    Left = 0\n    Top = 0\n    Width = 23\n    Height = 22\n    Margin = "
        "5\n"
        "    Spacing = 7\n  end\n"
        "  object SpeedButton2: TSpeedButton\n    Left = 0\n    Top = 0\n    Width = 23\n    Height = 22\n"
        "    Spacing = -1\n  end\n"
        "  object ComboBox1: TComboBox\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 22\n    Style = "
        "csOwnerDrawFixed\n    ItemHeight = 17\n  end\n"
        "  object DrawGrid1: TDrawGrid\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n"
        "    DefaultColWidth = 40\n    DefaultRowHeight = 18\n    ColWidths = (\n      40\n      7\n      40\n      "
        "40\n"
        "      40)\n  end\n"
        "  object ScrollBox1: TScrollBox\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n"
        "    AutoScroll = False\n    HorzScrollBar.Range = 300\n    HorzScrollBar.Increment = 9\n    "
        "VertScrollBar.Margin = 6\n    "
        "VertScrollBar.Range = 200\n"
        "    VertScrollBar.Position = 30\n  end\n");
    EXPECT_EQ(Form->BorderWidth(), 8);
    EXPECT_EQ(The<TListView>("ListView1").Columns()[0].Width(), 60);
    EXPECT_EQ(The<TListView>("ListView1").Columns()[1].Width(), -1) << "as wide as its texts";
    EXPECT_EQ(The<TTreeView>("TreeView1").Indent(), 42);
    EXPECT_EQ(The<TStatusBar>("StatusBar1").Panels()[0].Width(), 120);
    const auto& bar = The<TToolBar>("ToolBar1");
    EXPECT_EQ(bar.ButtonWidth(), 50);
    EXPECT_EQ(bar.ButtonHeight(), 48);
    EXPECT_EQ(bar.Indent(), 6);
    EXPECT_EQ(The<TToolButton>("Separator1").Width(), 20);
    EXPECT_EQ(The<TPageScroller>("PageScroller1").ButtonSize(), 28);
    EXPECT_EQ(The<TPageScroller>("PageScroller1").Margin(), 4);
    EXPECT_EQ(The<TSplitter>("Splitter1").MinSize(), 66);
    EXPECT_EQ(The<TSpeedButton>("SpeedButton1").Margin(), 10);
    EXPECT_EQ(The<TSpeedButton>("SpeedButton1").Spacing(), 14);
    EXPECT_EQ(The<TSpeedButton>("SpeedButton2").Margin(), -1) << "in the middle";
    EXPECT_EQ(The<TSpeedButton>("SpeedButton2").Spacing(), -1);
    EXPECT_EQ(The<TComboBox>("ComboBox1").ItemHeight(), 34);
    const auto& grid = The<TDrawGrid>("DrawGrid1");
    EXPECT_EQ(grid.DefaultColWidth(), 80);
    EXPECT_EQ(grid.DefaultRowHeight(), 36);
    EXPECT_EQ(grid.ColWidths(1), 14);
    EXPECT_EQ(grid.ColWidths(2), 80);
    auto& box = The<TScrollBox>("ScrollBox1");
    EXPECT_EQ(box.HorzScrollBar().Range(), 600);
    EXPECT_EQ(box.HorzScrollBar().Increment(), 18);
    EXPECT_EQ(box.VertScrollBar().Margin(), 12);
    EXPECT_EQ(box.VertScrollBar().Position(), 60);
}

TEST_F(FormScale, TabsLeaveRoomAroundTheirTexts) {
    Read("  object Tabs1: TTabControl\n    Left = 0\n    Top = 0\n    Width = 200\n    Height = 60\n"
         "    Tabs.Strings = (\n      'One')\n  end\n");
    auto& tabs = The<TTabControl>("Tabs1");
    const TWindowDC dc(tabs.Handle());
    const TSelectObject font(dc.Handle(), reinterpret_cast<HFONT>(SendMessageW(tabs.Handle(), WM_GETFONT, 0, 0)));
    SIZE text{};
    GetTextExtentPoint32W(dc.Handle(), L"One", 3, &text);
    RECT tab{};
    SendMessageW(tabs.Handle(), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&tab));
    EXPECT_GE(tab.right - tab.left, text.cx + 2 * 12);
}

TEST_F(FormScale, ImagesAndGlyphsAreStretchedPixelByPixel) {
    TForm source(nullptr);
    auto* const images = new TImageList(&source);
    images->SetName("ImageList1");
    TBitmap picture(32, 16);
    for (const auto& [x, color] : {std::pair{0, clRed}, {8, clLime}, {16, clBlue}, {24, clFuchsia}}) {
        picture.Canvas().Brush().SetColor(color);
        picture.Canvas().FillRect({x, 0, x + 8, 16});
    }
    images->AddMasked(&picture, clFuchsia);
    images->Overlay(1, 2);
    auto* const button = new TSpeedButton(&source);
    button->SetName("SpeedButton1");
    button->SetParent(&source);
    button->SetNumGlyphs(2);
    button->SetGlyph(picture);
    source.SetPixelsPerInch(SystemDpi() / 2);
    Form.reset(new TForm(nullptr));
    ReadFormOver(*Form, FormTextOf(source));
    Complete();

    auto& scaled = The<TImageList>("ImageList1");
    EXPECT_EQ(scaled.Width(), 32);
    EXPECT_EQ(scaled.Height(), 32);
    ASSERT_EQ(scaled.Count(), 2);
    TBitmap drawn(32, 32);
    drawn.Canvas().Brush().SetColor(clYellow);
    drawn.Canvas().FillRect({0, 0, 32, 32});
    scaled.Draw(drawn.Canvas(), 0, 0, 1);
    EXPECT_EQ(drawn.Canvas().Pixels(15, 31), clBlue);
    EXPECT_EQ(drawn.Canvas().Pixels(16, 0), clYellow) << "transparent there";
    const TBitmap& glyph = The<TSpeedButton>("SpeedButton1").Glyph();
    EXPECT_EQ(glyph.Width(), 64);
    EXPECT_EQ(glyph.Height(), 32);
    EXPECT_EQ(const_cast<TBitmap&>(glyph).Canvas().Pixels(31, 31), clLime);
}

TEST_F(FormScale, HandlersOfSizesWaitForOnCreate) {
    Form.reset(new TForm(nullptr));
    std::vector<std::string> log;
    const auto* const text =
        "  object Panel1: TPanel\n    Left = 0\n    Top = 0\n    Width = 50\n    Height = 40\n  end\n";
    Form->SetOnCreate([&](TObject*) { log.emplace_back("create"); });
    Form->SetOnResize([&](TObject*) { log.emplace_back("resize"); });
    Form->SetOnConstrainedResize([&](TObject*, int&, int&, int&, int&) { log.emplace_back("limits"); });
    ReadFormOver(*Form, "object Form1: TForm\n  ClientHeight = 100\n  ClientWidth = 200\n" + HalfOf(SystemDpi()) +
                            text + "end\n");
    log.clear(); // what the file itself brought about
    The<TPanel>("Panel1").SetOnResize([&](TObject*) { log.emplace_back("panel"); });
    Complete();
    EXPECT_EQ(log, (std::vector<std::string>{"create"}));
}

TEST_F(FormScale, AFormOnAnotherOneIsScaledOnce) {
    const std::string page = "object Page: TForm\n  ClientHeight = 50\n  ClientWidth = 60\n  BorderStyle = bsNone\n" +
                             HalfOf(SystemDpi()) + Button + "end\n";
    for (const bool complete : {true, false}) { // when it is put there
        Form.reset(new TForm(nullptr));
        ReadFormOver(*Form, "object Form1: TForm\n  ClientHeight = 100\n  ClientWidth = 200\n" + HalfOf(SystemDpi()) +
                                "end\n");
        const TFormPtr inner(new TForm(nullptr));
        ReadFormOver(*inner, page);
        if (complete) {
            inner->AfterConstruction();
        }
        inner->SetParent(Form.get());
        Complete();
        inner->Show();
        Form->Show();
        EXPECT_EQ(inner->ClientRect(), (TRect{0, 0, 120, 100})) << complete;
        EXPECT_EQ(Bounds(*inner->Controls(0)), (TRect{20, 40, 170, 90})) << complete;
        EXPECT_TRUE(inner->HasFinalSizes());
    }
}

TEST_F(FormScale, AFormThatIsReadAgainIsScaledAgain) {
    Read(Button);
    ReadFormOver(
        *Form,
        "object Form1: TForm\n" + HalfOf(SystemDpi()) +
            "  object Button2: TButton\n    Left = 3\n    Top = 4\n    Width = 20\n    Height = 10\n  end\nend\n");
    EXPECT_EQ(Bounds(The<TButton>("Button2")), (TRect{6, 8, 46, 28}));
}

// --- Screens of different resolutions

class FormOnScreens : public FormScale {
protected:
    /// The system tells that the form is on a screen of that resolution now, and where it is to be there.
    void MoveToScreen(int dpi, const TRect& bounds) {
        RECT r = ToRECT(bounds);
        SendMessageA(Form->Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&r));
    }
};

TEST_F(FormOnScreens, TheFormFollowsAndTakesThePlaceThatTheSystemSuggests) {
    Read(Button);
    Form->Show();
    const int dpi = SystemDpi();
    MoveToScreen(dpi * 3 / 2, {11, 22, 611, 422});
    EXPECT_EQ(Bounds(*Form), (TRect{11, 22, 611, 422}));
    EXPECT_EQ(Form->PixelsPerInch(), dpi * 3 / 2);
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{30, 60, 255, 135}));
    EXPECT_EQ(Form->Font().Height(), -33);
    EXPECT_EQ(The<TButton>("Button1").Font().Height(), -33);
    MoveToScreen(dpi, {0, 0, 410, 230});
    EXPECT_EQ(Bounds(*Form), (TRect{0, 0, 410, 230}));
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{20, 40, 170, 90}));
}

TEST_F(FormOnScreens, OneThatIsNotScaledStaysAsItIs) {
    Read(Button, "  Scaled = False\n");
    Form->Show();
    const TRect before = Bounds(*Form);
    MoveToScreen(SystemDpi() * 3, {11, 22, 611, 422});
    EXPECT_EQ(Bounds(*Form), before);
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{10, 20, 85, 45}));
}

TEST_F(FormOnScreens, HandlersMayFreeTheForm) {
    Form.reset(new TForm(nullptr));
    auto* const form = new TForm(nullptr);
    auto* const panel = new TPanel(form);
    panel->SetBounds(0, 0, 10, 10);
    panel->SetParent(form);
    form->Show();
    panel->SetOnResize([form](TObject*) { form->Free(); });
    RECT r{1, 2, 300, 200};
    const HWND window = form->Handle();
    SendMessageA(window, WM_DPICHANGED, MAKEWPARAM(SystemDpi() * 2, SystemDpi() * 2), reinterpret_cast<LPARAM>(&r));
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(FormOnScreens, TheOwnerOfImagesMayBeFreedByTheirChange) {
    auto* const form = new TForm(nullptr);
    auto* const images = new TImageList(form);
    form->Show();
    images->SetOnChange([form](TObject*) { form->Free(); });
    RECT r{1, 2, 300, 200};
    const HWND window = form->Handle();
    SendMessageA(window, WM_DPICHANGED, MAKEWPARAM(SystemDpi() * 2, SystemDpi() * 2), reinterpret_cast<LPARAM>(&r));
    EXPECT_FALSE(IsWindow(window));
}

// --- What is scaled by hand

TEST_F(FormScale, LengthsAreThoseOfTheResolutionThatAControlHas) {
    Read(Button);
    EXPECT_EQ(The<TButton>("Button1").ScaleLength(100), ScaleValue(100, SystemDpi(), DefaultDpi));
    Form->ScaleForDpi(192, SystemDpi());
    EXPECT_EQ(The<TButton>("Button1").ScaleLength(100), 200);
    EXPECT_EQ(Form->ScaleLength(-3), -6);
}

TEST_F(FormScale, ScaleForDpiTakesNoSenselessResolutions) {
    Read(Button);
    EXPECT_THROW(Form->ScaleForDpi(0, 96), EInvalidOperation);
    EXPECT_THROW(Form->ScaleForDpi(96, 0), EInvalidOperation);
    EXPECT_THROW(Form->ScaleForDpi(-96, 96), EInvalidOperation);
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{20, 40, 170, 90}));
    The<TButton>("Button1").ScaleForDpi(48, 96);
    EXPECT_EQ(Bounds(The<TButton>("Button1")), (TRect{10, 20, 85, 45}));
}

TEST(ScaledValues, AreRoundedAndKeptWithin32Bits) {
    EXPECT_EQ(ScaleValue(3, 144, 96), 5);
    EXPECT_EQ(ScaleValue(-3, 144, 96), -5);
    EXPECT_EQ(ScaleValue(1, 96, 192), 1);
    EXPECT_EQ(ScaleValue(-1, 96, 192), -1);
    EXPECT_EQ(ScaleValue(1, 95, 192), 0);
    EXPECT_EQ(ScaleValue(INT32_MAX, 192, 96), INT32_MAX);
    EXPECT_EQ(ScaleValue(INT32_MIN, 192, 96), INT32_MIN);
    EXPECT_EQ(ScaleValue(INT32_MAX, 96, 96), INT32_MAX);
}

} // namespace
} // namespace kx
