// SPDX-License-Identifier: MIT
// A component of one's own in a designer of one's own.

#include "WindowFixture.h"

#include "examples/own-component/StarRating.h"
#include "examples/own-component/design/StarRatingDesign.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ide/Palette.h"

namespace kx::test {
namespace {

using sample::TStarRating;

class OwnComponent : public TDesignerWindowTest {
protected:
    OwnComponent() {
        static const bool once = [] {
            sample::RegisterStarRating();
            return true;
        }();
        static_cast<void>(once);
        Window->ComponentPalette().ReadPages();
        Open();
    }
    TStarRating& Put() {
        Window->ComponentPalette().Search().SetText("star");
        Settle();
        const TRect r = Window->ComponentPalette().Buttons().ButtonRect(&TStarRating::StaticClass());
        ClickOn(Window->ComponentPalette().Buttons().ClientToScreen({r.Left + 15, r.Top + 15}));
        ClickOn(OnForm(40, 180));
        return The<TStarRating>("StarRating1");
    }
};

TEST_F(OwnComponent, IsOnThePaletteAndGoesToTheForm) {
    TStarRating& rating = Put();
    EXPECT_EQ(rating.Left(), 40);
    EXPECT_EQ(rating.Top(), 176 + 8) << "on the grid";
    EXPECT_THAT(Text(), HasSubstr("object StarRating1: TStarRating\n"));
    Screenshot("designer-own", Window->Handle());
}

TEST_F(OwnComponent, ItsEditorsWork) {
    TStarRating& rating = Put();
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    EXPECT_EQ(grid.RowValue(grid.FindRow("Stars")), "-----");
    GetComponentEditor(rating, Designer())->Edit();
    EXPECT_EQ(rating.Stars(), 5);
    EXPECT_EQ(grid.RowValue(grid.FindRow("Stars")), "*****");
    Designer().Undo();
    EXPECT_EQ(The<TStarRating>("StarRating1").Stars(), 0);
    grid.SelectRow(grid.FindRow("Stars"));
    const TRect r = grid.ValueRect(grid.FindRow("Stars"));
    ClickOn(grid.ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2}));
    Press('A', {VK_CONTROL});
    TypeText("3");
    Press(VK_RETURN);
    EXPECT_EQ(The<TStarRating>("StarRating1").Stars(), 3);
    Press('A', {VK_CONTROL});
    TypeText("6");
    Press(VK_RETURN);
    EXPECT_THAT(grid.Error(), HasSubstr("0 to 5"));
    EXPECT_EQ(The<TStarRating>("StarRating1").Stars(), 3);
}

TEST_F(OwnComponent, ItsOwnClicksDoNothingWhileItIsDesigned) {
    const TStarRating& rating = Put();
    ClickOn(At("StarRating1"));
    EXPECT_EQ(rating.Stars(), 0);
    EXPECT_EQ(PrimaryName(), "StarRating1");
}

} // namespace
} // namespace kx::test
