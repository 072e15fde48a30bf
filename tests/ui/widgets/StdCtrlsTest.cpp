// SPDX-License-Identifier: MIT
// Buttons, boxes and lists.

#include "kx/ui/widgets/StdCtrls.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/win/CodePage.h"
#include "kx/win/Handles.h"
#include "tests/ui/ControlFixture.h"

#include <algorithm>
#include <map>
#include <vector>

namespace kx {
namespace {

using namespace test;

class ListBox : public TControlTest<TListBox> {};

TEST_F(ListBox, ItemsAndSelectionAreTheSameWithAndWithoutAWindow) {
    Control->Items().SetCommaText("a,b,c");
    Control->SetItemIndex(1);
    EXPECT_TRUE(Control->Selected(1));
    Show();
    EXPECT_EQ(Control->ItemIndex(), 1);
    Control->Items().Insert(0, "first");
    Control->Items().Delete(3);
    Control->Items().Put(1, "A");
    EXPECT_EQ(Control->Items().CommaText(), "first,A,b");
    char text[20];
    SendMessageA(Control->Handle(), LB_GETTEXT, 1, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "A");
    EXPECT_EQ(SendMessageA(Control->Handle(), LB_GETCOUNT, 0, 0), 3);
    EXPECT_THROW(Control->Items().Get(3), EStringListError);
}

TEST_F(ListBox, SortedItemsAreSortedInTheWindowToo) {
    Show();
    Control->Items().SetCommaText("c,a,b");
    Control->SetSorted(true);
    EXPECT_EQ(Control->Items().CommaText(), "a,b,c");
    EXPECT_EQ(Control->Items().Add("aa"), 1);
    char text[20];
    SendMessageA(Control->Handle(), LB_GETTEXT, 1, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "aa");
}

TEST_F(ListBox, MultiSelectKeepsItsSelectionOverALossOfTheWindow) {
    Control->SetMultiSelect(true);
    Control->Items().SetCommaText("a,b,c,d");
    Show();
    Control->SetSelected(1, true);
    Control->SetSelected(3, true);
    EXPECT_EQ(Control->SelCount(), 2);
    Control->RecreateWnd();
    EXPECT_TRUE(Control->Selected(1));
    EXPECT_FALSE(Control->Selected(2));
    EXPECT_TRUE(Control->Selected(3));
    EXPECT_THROW(Control->SetSelected(4, true), EListError);
}

TEST_F(ListBox, AClickOnAnItemIsAClick) {
    Control->Items().SetCommaText("a,b,c");
    int clicks = 0;
    int doubles = 0;
    Control->SetOnClick([&](TObject*) { ++clicks; });
    Control->SetOnDblClick([&](TObject*) { ++doubles; });
    Show();
    RECT r;
    SendMessageA(Control->Handle(), LB_GETITEMRECT, 2, reinterpret_cast<LPARAM>(&r));
    DoubleClickAt(Control->ClientToScreen({r.left + 5, r.top + 3}));
    EXPECT_TRUE(PumpUntil([&] { return doubles == 1; }));
    EXPECT_EQ(Control->ItemIndex(), 2);
    EXPECT_EQ(Control->ItemAtPos({r.left + 5, r.top + 3}), 2);
    EXPECT_GE(clicks, 1);
}

class ComboBox : public TControlTest<TComboBox> {};

TEST_F(ComboBox, TheCharactersOfItsEditComeWholeAndAreOffered) {
    Show();
    std::string keys;
    Control->SetOnKeyPress([&](TObject*, char32_t& key) { keys += TextOfCharacter(key); });
    HWND edit = FindWindowExA(Control->Handle(), nullptr, "EDIT", nullptr);
    SendMessageW(edit, WM_CHAR, L'a', 0);
    SendMessageW(edit, WM_CHAR, 0x416, 0);
    SendMessageW(edit, WM_CHAR, L'b', 0);
    wchar_t text[20] = {};
    GetWindowTextW(edit, text, 20);
    EXPECT_STREQ(text, L"a\u0416b");
    EXPECT_EQ(keys, CodePageHolds("Ж") ? "aЖb" : "a?b");
}

TEST_F(ComboBox, ChangingTheStyleKeepsItemsAndText) {
    Show();
    Control->Items().SetCommaText("alpha,beta,gamma");
    Control->SetText("beta");
    Control->SetStyle(csDropDownList);
    EXPECT_EQ(Control->ItemIndex(), 1);
    EXPECT_EQ(Control->Text(), "beta");
    EXPECT_EQ(GetWindowLongA(Control->Handle(), GWL_STYLE) & 3, CBS_DROPDOWNLIST);
    Control->SetStyle(csSimple);
    EXPECT_EQ(TextOf(Control->Handle()), "beta");
    Control->Items().Clear();
    Control->SetText("free text");
    EXPECT_EQ(Control->Text(), "free text");
    Control->SetStyle(csDropDown);
    EXPECT_EQ(Control->Text(), "free text");
    EXPECT_EQ(Control->ItemIndex(), -1);
}

TEST_F(ComboBox, ATextSetBeforeThereIsAWindowTakesTheChoiceAway) {
    TForm form;
    auto* const box = new TComboBox(&form);
    box->SetParent(&form);
    box->Items().Add("one");
    box->Items().Add("two");
    box->SetItemIndex(1);
    box->SetText("two");
    EXPECT_EQ(box->ItemIndex(), 1);
    box->SetText("three");
    EXPECT_EQ(box->ItemIndex(), -1);
    form.HandleNeeded();
    box->HandleNeeded();
    EXPECT_EQ(box->Text(), "three");
}

TEST_F(ComboBox, ChangingTheStyleKeepsPlaceSizeFocusAndMaximum) {
    auto* const other = new TEdit(Form.get());
    other->SetParent(Form.get());
    Control->SetStyle(csSimple);
    Control->SetBounds(168, 72, 217, 21);
    Control->SetMaxLength(5);
    Show();
    EXPECT_EQ(Control->BoundsRect(), (TRect{168, 72, 385, 93}));
    Control->SetFocus();
    for (const TComboBoxStyle style :
         {csDropDownList, csSimple, csOwnerDrawFixed, csDropDown, csOwnerDrawVariable, csDropDownList, csSimple}) {
        Control->SetStyle(style);
        EXPECT_EQ(Control->Left(), 168);
        EXPECT_EQ(Control->Top(), 72);
        EXPECT_EQ(Control->Width(), 217);
        EXPECT_NEAR(Control->Height(), 21, 4) << style;
        EXPECT_EQ(RectIn(Form->Handle(), Control->Handle()), Control->BoundsRect());
        const HWND focus = ::GetFocus();
        EXPECT_TRUE(focus == Control->Handle() || IsChild(Control->Handle(), focus)) << style;
        EXPECT_EQ(Control->TabOrder(), 0);
    }
    TypeText("abcdefg");
    EXPECT_TRUE(PumpUntil([&] { return Control->Text() == "abcde"; }));
}

TEST_F(ComboBox, OwnerDrawnItemsAreDrawnAndMeasuredByTheProgram) {
    Control->Items().SetCommaText("low,high");
    Control->SetStyle(csOwnerDrawVariable);
    Control->SetItemHeight(20);
    Control->SetOnMeasureItem([](TWinControl*, int index, int& height) { height += index * 30; });
    Control->SetOnDrawItem([&](TWinControl*, int index, const TRect& rect, TOwnerDrawState) {
        Control->Canvas().Brush().SetColor(index == 0 ? clRed : clLime);
        Control->Canvas().FillRect(rect);
    });
    Control->SetItemIndex(1);
    Show();
    EXPECT_EQ(SendMessageA(Control->Handle(), CB_GETITEMHEIGHT, 0, 0), 20);
    EXPECT_EQ(SendMessageA(Control->Handle(), CB_GETITEMHEIGHT, 1, 0), 50);
    const auto color = [&] {
        Control->Update();
        const TWindowDC dc(Control->Handle());
        return GetPixel(dc.Handle(), 10, Control->Height() / 2);
    };
    EXPECT_EQ(color(), COLORREF{clLime});
    Control->SetItemIndex(0);
    EXPECT_EQ(color(), COLORREF{clRed});
    Control->SetStyle(csDropDownList);
    EXPECT_EQ(Control->Text(), "low");
    EXPECT_NE(color(), COLORREF{clRed});
    Control->SetStyle(csOwnerDrawFixed);
    Control->SetItemHeight(33);
    EXPECT_EQ(SendMessageA(Control->Handle(), CB_GETITEMHEIGHT, 1, 0), 33);
    EXPECT_EQ(Control->ItemIndex(), 0);
    EXPECT_EQ(color(), COLORREF{clRed});
}

TEST_F(ComboBox, ChoosingAnItemChangesTheTextBeforeOnChange) {
    Control->Items().SetCommaText("alpha,beta");
    std::string text;
    Control->SetOnChange([&](TObject*) { text = Control->Text(); });
    Show();
    ASSERT_TRUE(ChooseInCombo(Control->Handle(), 1));
    EXPECT_EQ(text, "beta");
}

TEST_F(ComboBox, TheListDropsDown) {
    int drops = 0;
    Control->SetStyle(csDropDownList);
    Control->SetOnDropDown([&](TObject*) {
        ++drops;
        Control->Items().SetCommaText("x,y,z");
    });
    Show();
    const int height = Control->Height();
    Control->SetDroppedDown(true);
    EXPECT_TRUE(Control->DroppedDown());
    EXPECT_EQ(drops, 1);
    RECT r;
    SendMessageA(Control->Handle(), CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&r));
    const auto item = SendMessageA(Control->Handle(), CB_GETITEMHEIGHT, 0, 0);
    EXPECT_GE(r.bottom - r.top, height + 3 * item);
    Control->SetDroppedDown(false);
    EXPECT_EQ(Control->Height(), height);
}

class CheckBox : public TControlTest<TCheckBox> {};

TEST_F(CheckBox, TogglesAndGoesThroughItsThreeStates) {
    int clicks = 0;
    Control->SetOnClick([&](TObject*) { ++clicks; });
    Show();
    Click(Control->Handle());
    ASSERT_TRUE(PumpUntil([&] { return Control->Checked(); }));
    EXPECT_EQ(SendMessageA(Control->Handle(), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(clicks, 1);
    Control->SetAllowGrayed(true);
    Control->SetChecked(false);
    SendMessageA(Control->Handle(), BM_CLICK, 0, 0);
    EXPECT_EQ(Control->State(), cbGrayed);
    SendMessageA(Control->Handle(), BM_CLICK, 0, 0);
    EXPECT_EQ(Control->State(), cbChecked);
    EXPECT_EQ(clicks, 4);
}

class TabControl : public TControlTest<TTabControl> {};

TEST_F(TabControl, AClickOnATabAsksAndChanges) {
    Control->Tabs().Add("one");
    Control->Tabs().Add("two");
    EXPECT_EQ(Control->TabIndex(), 0);
    bool allow = false;
    int changing = 0;
    int changes = 0;
    Control->SetOnChanging([&](TObject*, bool& allowChange) {
        ++changing;
        allowChange = allow;
    });
    Control->SetOnChange([&](TObject*) { ++changes; });
    Show();
    RECT r;
    SendMessageA(Control->Handle(), TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&r));
    const int middle = (r.top + r.bottom) / 2;
    ClickAt(Control->ClientToScreen({r.left + 4, middle}));
    ASSERT_TRUE(PumpUntil([&] { return changing == 1; }));
    EXPECT_EQ(Control->TabIndex(), 0);
    EXPECT_EQ(changes, 0);
    allow = true;
    ClickAt(Control->ClientToScreen({r.right - 4, middle})); // too far away to be a double click
    ASSERT_TRUE(PumpUntil([&] { return changes == 1; }));
    EXPECT_EQ(Control->TabIndex(), 1);
    Control->SetTabIndex(0);
    EXPECT_EQ(changes, 1) << "the program's own change is no event";
    EXPECT_GT(Control->DisplayRect().Top, 10);
}

TEST_F(TabControl, TabsReplacedInTheWindowKeepTheChosenOne) {
    Control->Tabs().SetCommaText("one,two,three");
    Control->SetTabIndex(1);
    Show();
    TStringList other;
    other.SetCommaText("uno,due");
    Control->SetTabs(other);
    EXPECT_EQ(SendMessageA(Control->Handle(), TCM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(Control->TabIndex(), 1);
    Control->Tabs().Clear();
    EXPECT_EQ(Control->TabIndex(), -1);
    Control->SetTabs(other);
    EXPECT_EQ(Control->TabIndex(), 0);
}

class Image : public TControlTest<TImage> {};

TEST_F(Image, ShowsStretchesAndFollowsItsPicture) {
    Control->Picture().Bitmap().SetSize(20, 10);
    Control->Picture().Bitmap().Canvas().Brush().SetColor(clRed);
    Control->Picture().Bitmap().Canvas().FillRect({0, 0, 20, 10});
    Form->SetColor(clWhite);
    Show();
    Form->Repaint();
    const auto pixel = [&](int x, int y) {
        const TWindowDC dc(Form->Handle());
        return GetPixel(dc.Handle(), x, y);
    };
    EXPECT_EQ(pixel(12, 12), COLORREF{0x0000FF});
    EXPECT_EQ(pixel(100, 50), COLORREF{0xFFFFFF});
    Control->SetStretch(true);
    Form->Repaint();
    EXPECT_EQ(pixel(200, 100), COLORREF{0x0000FF});
    Control->SetAutoSize(true);
    EXPECT_EQ(Control->Width(), 20);
    EXPECT_EQ(Control->Height(), 10);
}

TEST_F(Image, ProportionalItKeepsThePicturesProportions) {
    const auto fill = [&](int width, int height) {
        TBitmap& bitmap = Control->Picture().Bitmap();
        bitmap.SetSize(width, height);
        bitmap.Canvas().Brush().SetColor(clRed);
        bitmap.Canvas().FillRect({0, 0, width, height});
    };
    Form->SetColor(clWhite);
    Show();
    // The picture's rectangle in the control's coordinates
    const auto painted = [&] {
        Form->Repaint();
        const TWindowDC dc(Form->Handle());
        const auto isRed = [&](int x, int y) { return GetPixel(dc.Handle(), 10 + x, 10 + y) == COLORREF{0x0000FF}; };
        TRect r{0, 0, 0, 0};
        for (int x = 0; x < 200; ++x) {
            for (int y = 0; y < 100; ++y) {
                if (isRed(x, y)) {
                    r = r.Right == 0 ? TRect{x, y, x + 1, y + 1}
                                     : TRect{std::min(r.Left, x), std::min(r.Top, y), std::max(r.Right, x + 1),
                                             std::max(r.Bottom, y + 1)};
                }
            }
        }
        return r;
    };
    fill(400, 100);
    Control->SetProportional(true);
    EXPECT_EQ(painted(), (TRect{0, 0, 200, 50}));
    Control->SetCenter(true);
    EXPECT_EQ(painted(), (TRect{0, 25, 200, 75}));
    fill(20, 200);
    EXPECT_EQ(painted(), (TRect{95, 0, 105, 100}));
    fill(20, 40);
    EXPECT_EQ(painted(), (TRect{90, 30, 110, 70})) << "a picture with room enough has its own size";
    Control->SetStretch(true);
    EXPECT_EQ(painted(), (TRect{75, 0, 125, 100}));
    fill(100, 10);
    EXPECT_EQ(painted(), (TRect{0, 40, 200, 60}));
    Control->SetProportional(false);
    EXPECT_EQ(painted(), (TRect{0, 0, 200, 100}));
    Control->SetStretch(false);
    Control->SetCenter(false);
    EXPECT_EQ(painted(), (TRect{0, 0, 100, 10}));
}

TEST_F(Image, EachSettingIsPaintedAtOnce) {
    Control->Picture().Bitmap().SetSize(200, 10);
    Control->Picture().Bitmap().Canvas().Brush().SetColor(clRed);
    Control->Picture().Bitmap().Canvas().FillRect({0, 0, 200, 10});
    Show();
    const auto repaints = [&](auto&& set) {
        Form->Update();
        set();
        return GetUpdateRect(Form->Handle(), nullptr, FALSE) != 0;
    };
    EXPECT_TRUE(repaints([&] { Control->SetCenter(true); }));
    EXPECT_TRUE(repaints([&] { Control->SetProportional(true); }));
    Control->SetProportional(false);
    EXPECT_TRUE(repaints([&] { Control->SetStretch(true); }));
    Form->Repaint();
    const TWindowDC dc(Form->Handle());
    EXPECT_EQ(GetPixel(dc.Handle(), 15, 105), COLORREF{0x0000FF}) << "it is stretched from above to below only";
}

TEST_F(Image, APictureOfNoSizeGivesItNoSize) {
    Control->SetAutoSize(true);
    EXPECT_EQ(Control->Width(), 200);
    Control->Picture().Bitmap().SetSize(30, 0);
    EXPECT_EQ(Control->BoundsRect(), (TRect{10, 10, 210, 110}));
    Control->Picture().Bitmap().SetSize(30, 20);
    EXPECT_EQ(Control->BoundsRect(), (TRect{10, 10, 40, 30}));
}

TEST_F(Image, PicturesThatComeLaterAreTransparentToo) {
    Control->Picture().Bitmap().SetSize(20, 10);
    EXPECT_FALSE(Control->Picture().Graphic()->Transparent());
    Control->SetTransparent(true);
    EXPECT_TRUE(Control->Picture().Graphic()->Transparent());
    TPicture other;
    other.Bitmap().SetSize(5, 5);
    Control->SetPicture(other);
    EXPECT_TRUE(Control->Picture().Graphic()->Transparent());
}

} // namespace
} // namespace kx
