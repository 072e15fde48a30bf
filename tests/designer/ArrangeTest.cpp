// SPDX-License-Identifier: MIT
// Snapping, aligning and spacing.

#include "designer/Arrange.h"
#include "DesignerFixture.h"
#include "designer/Files.h"
#include "designer/Snapping.h"
#include "designer/UndoStack.h"

namespace kx::test {
namespace {

using namespace designer;

TEST(Snapping, GoesToTheNearestPointOfTheGrid) {
    EXPECT_EQ(ToGrid(11, 8), 8);
    EXPECT_EQ(ToGrid(12, 8), 16);
    EXPECT_EQ(ToGrid(-3, 8), 0);
    EXPECT_EQ(ToGrid(-5, 8), -8);
    EXPECT_EQ(ToGrid(7, 1), 7);
    EXPECT_EQ(ToGrid(7, 0), 7);
}

TEST(Snapping, EdgesOfOthersComeBeforeTheGrid) {
    TSnapping snapping;
    snapping.Others = {{10, 100, 50, 120}};
    std::vector<TGuide> guides;
    // Its left edge is 3 pixels from the other one's, its top 4.
    TPoint way = SnapMove(snapping, {13, 124, 33, 140}, &guides);
    EXPECT_EQ(way, (TPoint{-3, -4}));
    ASSERT_EQ(guides.size(), 2U);
    EXPECT_TRUE(guides[0].IsVertical);
    EXPECT_EQ(guides[0].At, 10);
    EXPECT_FALSE(guides[1].IsVertical);
    EXPECT_EQ(guides[1].At, 120);
    guides.clear();
    way = SnapMove(snapping, {15, 125, 37, 139}, &guides);
    EXPECT_EQ(way, (TPoint{1, 3})) << "5 pixels are too far: the grid";
    EXPECT_TRUE(guides.empty());
    way = SnapMove(snapping, {31, 200, 53, 216}, nullptr);
    EXPECT_EQ(way.X, -3) << "the right edges meet";
    snapping.UseGuides = false;
    way = SnapMove(snapping, {13, 124, 33, 140}, &guides);
    EXPECT_EQ(way, (TPoint{3, 4}));
}

TEST(Snapping, AnEdgeThatIsDraggedMeetsOthers) {
    TSnapping snapping;
    snapping.Others = {{10, 100, 50, 120}};
    std::vector<TGuide> guides;
    EXPECT_EQ(SnapEdge(snapping, 47, true, &guides), 50);
    EXPECT_EQ(guides.size(), 1U);
    EXPECT_EQ(SnapEdge(snapping, 60, true, nullptr), 64);
    EXPECT_EQ(SnapEdge(snapping, 97, false, nullptr), 100);
}

TEST(UndoStack, KeepsWhatEachStepHasChanged) {
    TUndoStack stack;
    stack.Start("abcdef");
    EXPECT_FALSE(stack.Add("abcdef", "none"));
    EXPECT_TRUE(stack.Add("abXdef", "one"));
    EXPECT_TRUE(stack.Add("ab", "two"));
    EXPECT_TRUE(stack.Add("abab", "three"));
    EXPECT_TRUE(stack.Add("", "four"));
    EXPECT_EQ(stack.UndoText(), "four");
    for (const char* state : {"abab", "ab", "abXdef", "abcdef"}) {
        ASSERT_TRUE(stack.CanUndo());
        EXPECT_EQ(stack.Undo(), state);
    }
    EXPECT_FALSE(stack.CanUndo());
    EXPECT_EQ(stack.RedoText(), "one");
    for (const char* state : {"abXdef", "ab", "abab", ""}) {
        ASSERT_TRUE(stack.CanRedo());
        EXPECT_EQ(stack.Redo(), state);
    }
    EXPECT_FALSE(stack.CanRedo());
}

TEST(DesignerFiles, PathsAreSeenFromAFolder) {
    EXPECT_EQ(RelativePath("C:\\a\\b", "C:\\a\\b\\c.dfm"), "c.dfm");
    EXPECT_EQ(RelativePath("C:\\a\\b", "C:\\a\\b\\sub\\c.dfm"), "sub\\c.dfm");
    EXPECT_EQ(RelativePath("C:\\a\\b", "C:\\a\\c.dfm"), "..\\c.dfm");
    EXPECT_EQ(RelativePath("C:\\a\\b", "C:\\a\\bc\\d.dfm"), "..\\bc\\d.dfm");
    EXPECT_EQ(RelativePath("C:\\a", "D:\\c.dfm"), "D:\\c.dfm");
    EXPECT_EQ(JoinPath("C:\\a\\b", "..\\c.dfm"), "C:\\a\\c.dfm");
    EXPECT_EQ(JoinPath("C:\\a\\b", "D:\\c.dfm"), "D:\\c.dfm");
    EXPECT_EQ(NameOfFile("C:\\a/c.dfm"), "c.dfm");
    EXPECT_EQ(FolderOfFile("C:\\a\\c.dfm"), "C:\\a");
    EXPECT_TRUE(HasExtension("a.DFM", ".dfm"));
    EXPECT_FALSE(HasExtension(".dfm", ".dfm"));
}

/// Three buttons: at (10, 10) of 20 x 10, at (50, 32) of 40 x 20, at (150, 40) of 30 x 30.
class Arrange : public TDesignerTest {
protected:
    Arrange() {
        for (const TRect& r : {TRect{10, 10, 30, 20}, TRect{50, 32, 90, 52}, TRect{150, 40, 180, 70}}) {
            Designer->CreateComponent(TButton::StaticClass(), &Designer->Form(), r);
        }
        Designer->Select({&The("Button2"), &The("Button1"), &The("Button3")});
        FBefore = Text();
    }
    /// The step can be undone as one.
    ~Arrange() override {
        Designer->Undo();
        EXPECT_EQ(Text(), FBefore);
    }
    TRect R(int button) const { return The("Button" + IntToStr(button)).BoundsRect(); }

private:
    std::string FBefore;
};

TEST_F(Arrange, EdgesFollowTheFirstSelected) {
    AlignSelected(*Designer, TEdge::Left);
    EXPECT_EQ(R(1), (TRect{50, 10, 70, 20}));
    EXPECT_EQ(R(3), (TRect{50, 40, 80, 70}));
}
TEST_F(Arrange, RightEdges) {
    AlignSelected(*Designer, TEdge::Right);
    EXPECT_EQ(R(1).Right, 90);
    EXPECT_EQ(R(3), (TRect{60, 40, 90, 70}));
}
TEST_F(Arrange, Tops) {
    AlignSelected(*Designer, TEdge::Top);
    EXPECT_EQ(R(1), (TRect{10, 32, 30, 42}));
    EXPECT_EQ(R(3).Top, 32);
}
TEST_F(Arrange, Bottoms) {
    AlignSelected(*Designer, TEdge::Bottom);
    EXPECT_EQ(R(1), (TRect{10, 42, 30, 52}));
    EXPECT_EQ(R(3).Bottom, 52);
}
TEST_F(Arrange, Axes) {
    AlignSelected(*Designer, TEdge::HorizontalMiddle);
    EXPECT_EQ(R(1), (TRect{60, 10, 80, 20}));
    EXPECT_EQ(R(3).Left, 55);
}
TEST_F(Arrange, Rows) {
    AlignSelected(*Designer, TEdge::VerticalMiddle);
    EXPECT_EQ(R(1).Top, 37);
    EXPECT_EQ(R(3).Top, 27);
}
TEST_F(Arrange, SpacesAreEqual) {
    SpaceSelected(*Designer, true);
    EXPECT_EQ(R(1).Left, 10);
    EXPECT_EQ(R(2), (TRect{70, 32, 110, 52}));
    EXPECT_EQ(R(3).Left, 150);
}
TEST_F(Arrange, SpacesDownwards) {
    SpaceSelected(*Designer, false);
    EXPECT_EQ(R(1).Top, 10);
    EXPECT_EQ(R(2).Top, 20);
    EXPECT_EQ(R(3).Top, 40);
}
TEST_F(Arrange, Sizes) {
    SizeSelected(*Designer, true, false);
    EXPECT_EQ(R(1), (TRect{10, 10, 50, 20}));
    EXPECT_EQ(R(3), (TRect{150, 40, 190, 70}));
}
TEST_F(Arrange, Heights) {
    SizeSelected(*Designer, false, true);
    EXPECT_EQ(R(1), (TRect{10, 10, 30, 30}));
}
TEST_F(Arrange, TheMiddleOfTheParent) {
    CenterSelected(*Designer, true);
    EXPECT_EQ(R(1).Left, 75) << "they are 170 wide together, in 320";
    EXPECT_EQ(R(3).Right, 245);
    EXPECT_EQ(R(1).Top, 10);
}
TEST_F(Arrange, TheGrid) {
    MoveSelectedToGrid(*Designer, {8, 8});
    EXPECT_EQ(R(1), (TRect{8, 8, 28, 18}));
    EXPECT_EQ(R(2), (TRect{48, 32, 88, 52}));
}
TEST_F(Arrange, AlignedControlsStay) {
    The("Button1").SetAlign(alTop);
    Designer->Record("Align");
    const TRect before = R(1);
    AlignSelected(*Designer, TEdge::Left);
    EXPECT_EQ(R(1), before);
    EXPECT_EQ(R(3).Left, 50);
    Designer->Undo();
}

} // namespace
} // namespace kx::test
