// SPDX-License-Identifier: MIT
// The palette of components.

#include "WindowFixture.h"

#include "designer/ClassIcons.h"
#include "kx/design/KxDlgsReg.h"
#include "kx/ide/Palette.h"
#include "tests/ui/WheelLines.h"

#include <map>

namespace kx::test {
namespace {

class Palette : public TDesignerWindowTest {};

/// The pixels of a class's picture; null is the arrow's.
std::string PictureOf(const TClass* cls) {
    TBitmap bitmap;
    bitmap.SetWidth(designer::ClassIconSize);
    bitmap.SetHeight(designer::ClassIconSize);
    designer::DrawClassIcon(bitmap.Canvas(), {0, 0, bitmap.Width(), bitmap.Height()}, cls);
    std::string pixels;
    for (int i = 0; i < bitmap.Width() * bitmap.Height(); ++i) {
        pixels += IntToStr(bitmap.Canvas().Pixels(i % bitmap.Width(), i / bitmap.Width())) + " ";
    }
    return pixels;
}

TEST_F(Palette, EachComponentHasAPictureOfItsOwn) {
    KxDlgsReg::Register();
    std::map<std::string, std::string> names{{PictureOf(nullptr), "the arrow"}};
    for (const TPalettePage& page : PalettePages()) {
        for (const TClass* cls : page.Classes) {
            const auto [known, isNew] = names.emplace(PictureOf(cls), cls->Name());
            EXPECT_TRUE(isNew) << cls->Name() << " looks like " << known->second;
        }
    }
    EXPECT_GT(names.size(), 40U);
}

TEST_F(Palette, StandsInPages) {
    Window->ComponentPalette().ReadPages();
    const TStrings& tabs = Window->ComponentPalette().Tabs().Tabs();
    ASSERT_GE(tabs.Count(), 5);
    EXPECT_EQ(tabs[0], "Standard");
    EXPECT_EQ(tabs[1], "Additional");
    EXPECT_EQ(tabs[2], "Win32");
    EXPECT_EQ(tabs[3], "System");
    EXPECT_EQ(tabs[4], "Dialogs");
}

TEST_F(Palette, EachComponentOnItHasItsHeader) {
    KxDlgsReg::Register();
    for (const TPalettePage& page : PalettePages()) {
        for (const TClass* cls : page.Classes) {
            EXPECT_THAT(HeaderOf(cls->Name()), testing::EndsWith(".h")) << cls->Name();
        }
    }
}

TEST_F(Palette, EnterInTheSearchFieldPutsTheFirstOneFound) {
    Open();
    Window->Command("FindComponent");
    TypeText("check");
    Settle();
    EXPECT_THAT(Window->ComponentPalette().Buttons().Classes(), ElementsAre(&TCheckBox::StaticClass()));
    Press(VK_RETURN);
    ASSERT_TRUE(Has("CheckBox1"));
    EXPECT_EQ(The("CheckBox1").Left(), 160);
    EXPECT_EQ(Surface().Tool(), nullptr);
    EXPECT_EQ(Window->ComponentPalette().Buttons().Chosen(), nullptr);
    TypeText("xyz"); // of which there is none
    Press(VK_RETURN);
    EXPECT_FALSE(Has("CheckBox2"));
}

TEST_F(Palette, AnotherPageEndsTheSearch) {
    Window->ComponentPalette().ReadPages();
    Window->ComponentPalette().Search().SetText("check");
    TTabControl& tabs = Window->ComponentPalette().Tabs();
    RECT r;
    SendMessageA(tabs.Handle(), TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&r));
    ClickOn(tabs.ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2}));
    EXPECT_EQ(Window->ComponentPalette().Search().Text(), "");
    EXPECT_EQ(Window->ComponentPalette().Buttons().Classes(), PalettePages()[1].Classes);
}

TEST_F(Palette, TheArrowAndWhatIsBesideThePictures) {
    Open();
    designer::TPaletteButtons& buttons = Window->ComponentPalette().Buttons();
    const auto clickAt = [&](const TClass* cls, int dx) {
        const TRect r = buttons.ButtonRect(cls);
        ClickOn(buttons.ClientToScreen({r.Left + 15 + dx, r.Top + 15}));
    };
    const TClass* const last = buttons.Classes().back();
    clickAt(last, 0);
    EXPECT_EQ(Surface().Tool(), last);
    clickAt(nullptr, 0);
    EXPECT_EQ(Surface().Tool(), nullptr);
    clickAt(last, 30); // where there is none
    EXPECT_EQ(Surface().Tool(), nullptr);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Palette, PicturesForWhichThereIsNoRoomAreScrolled) {
    KxDlgsReg::Register();
    Open();
    designer::TPaletteButtons& buttons = Window->ComponentPalette().Buttons();
    EXPECT_EQ(buttons.ScrollRect(true), (TRect{0, 0, 0, 0}));
    Window->ComponentPalette().Search().SetText("t"); // all of them
    const TClass* const first = buttons.Classes().front();
    const TClass* const last = buttons.Classes().back();
    ASSERT_GT(buttons.Classes().size(), 40U);
    const auto isShown = [&](const TClass* cls) {
        const TRect r = buttons.ButtonRect(cls);
        return r.Right > 0 && r.Right <= buttons.ScrollRect(false).Left;
    };
    const auto click = [&](const TRect& r) {
        ClickOn(buttons.ClientToScreen({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2}));
    };
    EXPECT_TRUE(isShown(first));
    EXPECT_FALSE(isShown(last));
    for (size_t i = 0; i < 2 * buttons.Classes().size(); ++i) { // as often as one likes
        click(buttons.ScrollRect(true));
    }
    Screenshot("designer-palette", Window->Handle());
    EXPECT_FALSE(isShown(first));
    EXPECT_TRUE(isShown(last));
    EXPECT_TRUE(isShown(nullptr)) << "the arrow stays";
    EXPECT_EQ(Surface().Tool(), nullptr) << "to scroll chooses nothing";
    click(buttons.ButtonRect(last));
    EXPECT_EQ(Surface().Tool(), last);
    const TRect before = buttons.ButtonRect(last);
    click(buttons.ScrollRect(false));
    EXPECT_FALSE(isShown(last));
    click(buttons.ScrollRect(true));
    EXPECT_EQ(buttons.ButtonRect(last), before);
    Window->ComponentPalette().Search().SetText("");
    EXPECT_TRUE(isShown(buttons.Classes().front()) || buttons.ScrollRect(true).Right == 0);
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Palette, NothingIsScrolledWhereThereIsNoPicture) {
    designer::TPaletteButtons& buttons = Window->ComponentPalette().Buttons();
    Window->ComponentPalette().Search().SetText("no such component");
    ASSERT_TRUE(buttons.Classes().empty());
    buttons.SetAlign(alNone);
    for (const int width : {100, 40, 20, 1}) { // the arrow's is 30
        buttons.SetWidth(width);
        EXPECT_EQ(buttons.ScrollRect(true), (TRect{0, 0, 0, 0})) << width;
        EXPECT_EQ(buttons.ButtonRect(nullptr).Left, 2) << width;
    }
}

TEST_F(Palette, TheWheelScrollsAsManyPicturesAsTheUserHasChosen) {
    KxDlgsReg::Register();
    Window->ComponentPalette().Search().SetText("t"); // all of them
    designer::TPaletteButtons& buttons = Window->ComponentPalette().Buttons();
    // How many pictures are scrolled away then
    const auto turn = [&](int delta) {
        SendMessageA(buttons.Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
        int away = 0;
        while (buttons.ButtonRect(buttons.Classes().at(static_cast<size_t>(away))).Right == 0) {
            ++away;
        }
        return away;
    };
    ExpectTwoLinesANotch(turn);
    const TWheelLines lines(WHEEL_PAGESCROLL);
    const int page = turn(-WHEEL_DELTA);
    EXPECT_GT(page, 10);
    EXPECT_EQ(buttons.ButtonRect(buttons.Classes().at(static_cast<size_t>(page))).Left,
              buttons.ButtonRect(nullptr).Right)
        << "the first of what was behind the last one";
}

TEST_F(Palette, WhatIsDroppedBesideTheSurfaceGoesNowhere) {
    Open();
    Designer().Form().SetClientSize(1500, 1200);
    for (const UINT bar :
         {UINT{WM_VSCROLL}, UINT{WM_HSCROLL}}) { // parts of the form are below the palette and the inspector now
        SendMessageA(Surface().WindowHandle(), bar, SB_BOTTOM, 0);
    }
    const std::string before = Text();
    designer::TPaletteButtons& buttons = Window->ComponentPalette().Buttons();
    const TRect r = buttons.ButtonRect(&TCheckBox::StaticClass());
    const TPoint from = buttons.ClientToScreen({r.Left + 15, r.Top + 15});
    const TPoint to = CenterOf(Window->ObjectInspector().Handle());
    DragFrom(from, to.X - from.X, to.Y - from.Y);
    EXPECT_EQ(Text(), before);
}

TEST_F(Palette, ADoubleClickPutsTheComponentIntoTheMiddle) {
    Open();
    const TRect r = Window->ComponentPalette().Buttons().ButtonRect(&TCheckBox::StaticClass());
    DoubleClickAt(Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15}));
    Settle();
    ASSERT_TRUE(Has("CheckBox1"));
    EXPECT_EQ(The("CheckBox1").Left(), 160);
    EXPECT_EQ(The("CheckBox1").Top(), 120);
    EXPECT_EQ(Surface().Tool(), nullptr);
}

} // namespace
} // namespace kx::test
