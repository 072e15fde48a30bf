// The palette of components.

#include "WindowFixture.h"

#include "designer/ClassIcons.h"
#include "kx/design/KxDlgsReg.h"
#include "kx/ide/Palette.h"

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
