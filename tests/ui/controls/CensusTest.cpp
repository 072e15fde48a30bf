// SPDX-License-Identifier: MIT
// The census sees what comes and what is lost.

#include "tests/support/Cycles.h"

#include "kx/win/Handles.h"

#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <vector>

namespace kx {
namespace {

using namespace test;

TEST(Census, CountsEachKindOfDrawingObject) {
    const TCensus before = GdiCensus();
    {
        std::vector<unique_hpen> pens;
        std::vector<unique_hbitmap> bitmaps;
        for (int i = 0; i < 5; ++i) {
            pens.emplace_back(CreatePen(PS_SOLID, 1, 0x010203));
            bitmaps.emplace_back(CreateBitmap(4, 4, 1, 1, nullptr));
        }
        const unique_hbrush brush(CreateSolidBrush(0x010203));
        const unique_hrgn region(CreateRectRgn(0, 0, 1, 1));
        const unique_hdc context(CreateCompatibleDC(nullptr));
        const TCensus during = GdiCensus();
        EXPECT_NE(Describe(before, during).find("5 more pens: "), std::string::npos) << Describe(before, during);
        EXPECT_NE(Describe(before, during).find("5 more bitmaps: "), std::string::npos);
        EXPECT_NE(Describe(before, during).find("1 more brushes: "), std::string::npos);
        EXPECT_NE(Describe(before, during).find("1 more regions: "), std::string::npos);
        EXPECT_NE(Describe(before, during).find("1 more memory contexts: "), std::string::npos);
    }
    EXPECT_EQ(Describe(before, GdiCensus()), "");
}

TEST(Census, CountsWindowsAndMenus) {
    const TCensus before = UserCensus();
    {
        const unique_hwnd window(
            CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, HInstance(), nullptr));
        CreateWindowExA(0, "BUTTON", "", WS_CHILD, 0, 0, 10, 10, window.get(), nullptr, HInstance(), nullptr);
        const unique_hwnd message(
            CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, HInstance(), nullptr));
        const unique_hmenu menu(CreatePopupMenu());
        const std::string growth = Describe(before, UserCensus());
        EXPECT_NE(growth.find("3 more windows: "), std::string::npos) << growth;
        EXPECT_NE(growth.find("1 more menus: "), std::string::npos) << growth;
    }
    EXPECT_EQ(Describe(before, UserCensus()), "");
}

TEST(Census, CountsHeapBlocksAndThreads) {
    const TCensus heap = HeapCensus();
    // Large ones: a heap may keep small ones in groups, and show a group as one block.
    auto first = std::make_unique<char[]>(300'000);
    auto second = std::make_unique<char[]>(200'000);
    const TCensus more = HeapCensus();
    EXPECT_GE(more[TCensusKind::HeapByte], heap[TCensusKind::HeapByte] + 500'000);
    EXPECT_EQ(more[TCensusKind::HeapBlock], heap[TCensusKind::HeapBlock] + 2);
    first.reset();
    second.reset();
    const TCensus after = HeapCensus();
    EXPECT_EQ(after[TCensusKind::HeapBlock], heap[TCensusKind::HeapBlock]);
    EXPECT_LT(after[TCensusKind::HeapByte], more[TCensusKind::HeapByte])
        << "a heap may give out more than was asked for";

    const TCensus threads = ThreadCensus();
    // Not std::atomic::wait: in this compiler's Windows library a notification between its check and its sleep is lost.
    std::promise<void> stop;
    std::thread thread([&] { stop.get_future().wait(); });
    EXPECT_EQ(Describe(threads, ThreadCensus()).rfind("1 more threads: ", 0), 0u);
    stop.set_value();
    thread.join();
}

TEST(Census, DescribesGrowthAndLossByKind) {
    TCensus before;
    before[TCensusKind::Pen] = 1;
    before[TCensusKind::Font] = 2;
    EXPECT_EQ(Describe(before, before), "");
    TCensus after = before;
    after[TCensusKind::Pen] = 4;
    after[TCensusKind::Font] = 0;
    EXPECT_EQ(Describe(before, after), "3 more pens: 1 -> 4\n2 fewer fonts: 2 -> 0\n");
}

TEST(Census, TellsWhatIsLostEveryTimeFromWhatIsTakenOnce) {
    std::vector<unique_hpen> lost;
    const auto lose = [&] { lost.emplace_back(CreatePen(PS_SOLID, 1, 0x010203)); };
    EXPECT_EQ(LeftBehind(lose, GdiCensus).rfind("1 more pens: ", 0), 0u);
    lost.clear();
    const auto fillCache = [&] {
        if (lost.size() < 3) {
            lose();
        }
    };
    EXPECT_EQ(LeftBehind(fillCache, GdiCensus), "");

    std::vector<std::unique_ptr<char[]>> blocks;
    const auto grow = [&](size_t calls) {
        return [&blocks, calls] {
            if (blocks.size() < calls) {
                blocks.push_back(std::make_unique<char[]>(100'000));
            }
        };
    };
    blocks.reserve(100);
    EXPECT_GE(Growth(10, grow(100))[TCensusKind::HeapByte], 1'000'000);
    blocks.clear();
    EXPECT_LE(Growth(10, grow(10))[TCensusKind::HeapByte], HeapBytePlay) << "in the first calls only";
}

TEST(Census, TakesAllTogether) {
    const TCensus census = TakeCensus();
    EXPECT_GT(census[TCensusKind::HeapBlock], 0);
    EXPECT_GT(census[TCensusKind::Thread], 0);
    EXPECT_GT(census[TCensusKind::Bitmap] + census[TCensusKind::GdiObject], 0);
    EXPECT_EQ(census[TCensusKind::Window], UserCensus()[TCensusKind::Window]);
}

} // namespace
} // namespace kx
