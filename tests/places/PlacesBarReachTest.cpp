// SPDX-License-Identifier: MIT
// Places on computers that do not answer.

#include "PlacesBarFixture.h"
#include "tests/support/SlowDisk.h"

#include <set>

namespace kx::test {
namespace {

constexpr const char* Share = "\\\\kx-test\\share\\folder";

class PlacesBarReach : public PlacesBar {
protected:
    /// One local place, one of the share.
    void ShowBoth() {
        AddPlaces({"Near", "Far"});
        Options.Places()[0].SetPlacePath(Folder.Path());
        Options.Places()[1].SetPlacePath(Share);
        Show();
        Frm->SetDialog(&Dialog);
        MoveAway();
    }
    std::vector<uint32_t> Picture(int index) const {
        TKxPlaceButton& button = Button(index);
        button.Update();
        const TPoint origin = button.ClientToScreen({0, 0});
        const TWindowDC screen(nullptr);
        return PixelsOf(screen.Handle(), {origin.X, origin.Y, origin.X + button.Width(), origin.Y + button.Height()});
    }

    /// The button has its icon and its caption by now.
    bool IsPainted(int index) const {
        const std::vector<uint32_t> picture = Picture(index);
        return std::set<uint32_t>(picture.begin(), picture.end()).size() > 3;
    }

    TSlowDisk Disk;
};

TEST_F(PlacesBarReach, TheBarIsThereAtOnceAndAPlaceIsFaintUntilItsComputerAnswers) {
    ShowBoth();
    EXPECT_FALSE(Button(1).IsUnreachable()) << "nobody knows yet";
    ASSERT_TRUE(PumpUntil([&] { return IsPainted(0) && IsPainted(1); }));
    const std::vector<uint32_t> here = Picture(0);
    const std::vector<uint32_t> there = Picture(1);
    ASSERT_TRUE(PumpUntil([&] { return Button(1).IsUnreachable(); }));
    EXPECT_FALSE(Button(0).IsUnreachable());
    EXPECT_EQ(Button(1).Hint(), FromUtf8("hint of Far\r\nDieser Ort ist zurzeit nicht erreichbar"));
    EXPECT_TRUE(PumpUntil([&] { return Picture(1) != there; })) << "it is drawn so";
    EXPECT_EQ(Picture(0), here);
    Screenshot("place-unreachable", Host->Handle());

    Disk.Answer(Share, FILE_ATTRIBUTE_DIRECTORY);
    ASSERT_TRUE(PumpUntil([&] { return !Button(1).IsUnreachable(); }));
    EXPECT_EQ(Button(1).Hint(), "hint of Far");
    EXPECT_TRUE(PumpUntil([&] { return Picture(1) == there; }));
}

TEST_F(PlacesBarReach, AnAnswerThatNobodyIsThereShowsAtOnce) {
    Disk.Fail(Share, ERROR_BAD_NETPATH);
    ShowBoth();
    ASSERT_TRUE(PumpUntil([&] { return Button(1).IsUnreachable(); }));
    EXPECT_FALSE(Button(0).IsUnreachable());
}

TEST_F(PlacesBarReach, AFolderThatIsGoneIsNotUnreachable) {
    Disk.Fail(Share, ERROR_PATH_NOT_FOUND);
    ShowBoth();
    ASSERT_TRUE(PumpUntil([&] { return Disk.Asked(Share) == 1; }));
    ClickAt(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return Disk.Asked(Share) == 2; }));
    EXPECT_FALSE(Button(1).IsUnreachable());
    EXPECT_THAT(Dialog.Log, IsEmpty());
}

TEST_F(PlacesBarReach, AClickTriesAgain) {
    Disk.Fail(Share, ERROR_BAD_NETPATH);
    ShowBoth();
    ASSERT_TRUE(PumpUntil([&] { return Button(1).IsUnreachable(); }));
    ClickAt(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return Disk.Asked(Share) == 2; }));
    EXPECT_THAT(Dialog.Log, IsEmpty());
    EXPECT_TRUE(Button(1).IsUnreachable());
    Disk.Answer(Share, FILE_ATTRIBUTE_DIRECTORY);
    ClickAt(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return !Dialog.Log.empty(); }));
    EXPECT_THAT(Dialog.Log, ElementsAre(Share));
    EXPECT_FALSE(Button(1).IsUnreachable());
}

TEST_F(PlacesBarReach, AClickOnAPlaceThatHasVanishedShowsThat) {
    Disk.Answer(Share, FILE_ATTRIBUTE_DIRECTORY);
    ShowBoth();
    Disk.Fail(Share, ERROR_NETNAME_DELETED);
    ClickAt(Middle(1));
    ASSERT_TRUE(PumpUntil([&] { return Button(1).IsUnreachable(); }));
    EXPECT_THAT(Dialog.Log, IsEmpty());
}

TEST_F(PlacesBarReach, AButtonMayGoWhileItsPlaceIsLookedFor) {
    ShowBoth();
    Rebuild();
    EXPECT_EQ(Disk.Asked(Share), 1) << "the new button shares the question";
    Options.Places().Clear();
    Rebuild();
    EXPECT_EQ(Frm->ToolBar1->ButtonCount(), 0);
}

TEST_F(PlacesBarReach, APlaceThatShowsAnotherForgetsTheFirst) {
    Disk.Fail(Share, ERROR_BAD_NETPATH);
    ShowBoth();
    ASSERT_TRUE(PumpUntil([&] { return Button(1).IsUnreachable(); }));
    Button(1).ShowPlace(Options.Places()[0]);
    EXPECT_FALSE(Button(1).IsUnreachable());
    EXPECT_EQ(Button(1).Hint(), "hint of Near");
}

} // namespace
} // namespace kx::test
