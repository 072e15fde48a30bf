// SPDX-License-Identifier: MIT
// One fault of each kind, for the test that sees each of them reported.

#include "kx/win/Windows.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>

// Each test commits the fault that it is named for, by a function whose name the report has to tell.

namespace kx {
namespace {

/// Hides from the compiler, which would warn, what a pointer points to.
template <class T> [[gnu::noinline]] T* Hidden(T* pointer) {
    asm volatile("" : "+r"(pointer));
    return pointer;
}

struct TThing {
    int First = 1;
    int Second = 2;
    char Name[20] = "thing";
};

[[gnu::noinline]] TThing* MakeThing() { return new TThing; }
[[gnu::noinline]] void FreeThing(TThing* thing) { delete thing; }
[[gnu::noinline]] int ReadThing(const TThing* thing) { return *Hidden(&thing->Second); }

TThing* MakeFreedThing() {
    TThing* thing = MakeThing();
    FreeThing(thing);
    return Hidden(thing);
}

TEST(Heap, IsUsedWell) {
    TThing* thing = MakeThing();
    EXPECT_EQ(ReadThing(thing), 2);
    FreeThing(thing);
    const std::string text(100'000, 'x');
    void* memory = std::realloc(std::calloc(3, 5), 5000);
    EXPECT_EQ(static_cast<char*>(memory)[14], 0);
    std::free(memory);
    struct alignas(64) TAligned {
        char Bytes[65];
    };
    auto* aligned = Hidden(new TAligned);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(aligned) % 64, 0u);
    delete aligned;
    delete[] Hidden(new std::string[3]);
    std::free(_strdup("of the runtime library"));
}

TEST(Heap, FreedBlockIsRead) { EXPECT_EQ(ReadThing(MakeFreedThing()), 2); }

TEST(Heap, FreedBlockIsReadByTheSystem) {
    volatile size_t length = std::strlen(Hidden(MakeFreedThing()->Name));
    static_cast<void>(length);
}

TEST(Heap, FreedBlockIsReadInAThread) {
    std::thread([] { ReadThing(MakeFreedThing()); }).join();
}

LRESULT CALLBACK FaultyProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER) {
        KillTimer(window, 1);
        PostQuitMessage(ReadThing(MakeFreedThing()));
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeWindow(WNDPROC proc) {
    HWND window = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 10, 10, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc));
    return window;
}

void DispatchOne() {
    MSG message;
    GetMessageA(&message, nullptr, 0, 0);
    DispatchMessageA(&message);
}

TEST(Heap, FreedBlockIsReadInAWindowProcedure) {
    SetTimer(MakeWindow(FaultyProc), 1, 1, nullptr);
    DispatchOne();
}

VOID CALLBACK FaultyTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    ReadThing(MakeFreedThing());
}

TEST(Heap, FreedBlockIsReadInATimer) {
    SetTimer(nullptr, 1, 1, FaultyTimer);
    DispatchOne();
}

[[gnu::noinline]] void WriteByte(char* at) { *Hidden(at) = 1; }

[[gnu::noinline]] char* MakePage() { return new char[4096]; }

TEST(Heap, WriteBehindABlock) { WriteByte(MakePage() + 4096); }
TEST(Heap, WriteBeforeABlock) { WriteByte(MakePage() - 1); }

TEST(Heap, WriteJustBehindABlock) {
    TThing* thing = MakeThing();
    WriteByte(reinterpret_cast<char*>(thing) + sizeof(TThing));
    FreeThing(thing);
}

TEST(Heap, WriteJustBeforeABlock) {
    TThing* thing = MakeThing();
    WriteByte(reinterpret_cast<char*>(thing) - 1);
    FreeThing(thing);
}

TEST(Heap, WriteJustBehindABlockThatIsKept) { WriteByte(reinterpret_cast<char*>(MakeThing()) + sizeof(TThing)); }

TEST(Heap, DoubleFree) { FreeThing(MakeFreedThing()); }

[[gnu::noinline]] void FreeByMalloc(void* memory) { std::free(memory); }

TEST(Heap, NewIsGivenToFree) { FreeByMalloc(Hidden(MakeThing())); }
TEST(Heap, ArrayIsGivenToDelete) { FreeThing(reinterpret_cast<TThing*>(Hidden(new char[sizeof(TThing)]))); }
TEST(Heap, BlockOfAnotherSize) { FreeThing(reinterpret_cast<TThing*>(Hidden(::operator new(3)))); }
TEST(Heap, MiddleOfABlockIsFreed) { FreeByMalloc(Hidden(MakeThing()->Name)); }
TEST(Heap, StaticMemoryIsFreed) {
    static TThing thing;
    FreeByMalloc(Hidden(&thing));
}

[[gnu::noinline]] int ReadNowhere(const int* at) { return *Hidden(at); }

TEST(Faults, NullIsRead) { ReadNowhere(nullptr); }
[[gnu::noinline]] int Divide(int by) { return 10 / *Hidden(&by); }
TEST(Faults, DivisionByZero) { EXPECT_EQ(Divide(0), 0); }

LRESULT CALLBACK NullProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_TIMER ? ReadNowhere(nullptr) : DefWindowProcA(window, message, wParam, lParam);
}

TEST(Faults, NullIsReadInAWindowProcedure) {
    HWND window = MakeWindow(NullProc);
    SetTimer(window, 1, 1, nullptr);
    DispatchOne();
    DestroyWindow(window);
}

[[gnu::noinline]] void ThrowNow() { throw std::runtime_error("thrown in a callback"); }

LRESULT CALLBACK ThrowingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_USER) {
        ThrowNow();
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

BOOL CALLBACK CatchingEnumeration(HWND, LPARAM) {
    try {
        ThrowNow();
    } catch (const std::exception&) {
        return FALSE;
    }
    return TRUE;
}

TEST(Throws, AreCaughtInACallback) {
    EXPECT_THROW(ThrowNow(), std::runtime_error);
    EnumWindows(CatchingEnumeration, 0);
}

TEST(Throws, LeaveAWindowProcedure) {
    HWND window = MakeWindow(ThrowingProc);
    try {
        SendMessageA(window, WM_USER, 0, 0);
    } catch (const std::exception&) {
        SetLastError(0);
    }
}

BOOL CALLBACK ThrowingEnumeration(HWND, LPARAM) {
    ThrowNow();
    return TRUE;
}

TEST(Throws, LeaveAnEnumeration) {
    try {
        EnumWindows(ThrowingEnumeration, 0);
    } catch (const std::exception&) {
        SetLastError(0);
    }
}

VOID CALLBACK ThrowingTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    KillTimer(nullptr, timer);
    ThrowNow();
}

TEST(Throws, LeaveATimer) {
    SetTimer(nullptr, 1, 1, ThrowingTimer);
    DispatchOne();
}

[[gnu::noinline]] void CannotThrow() noexcept { ThrowNow(); }

TEST(Throws, LeaveANoexceptFunction) { CannotThrow(); }

[[gnu::noinline]] HWND MakeDeadWindow() {
    HWND window = MakeWindow(DefWindowProcA);
    DestroyWindow(window);
    return window;
}

TEST(Handles, AreUsedWell) {
    HWND window = MakeWindow(DefWindowProcA);
    SetWindowTextA(window, "text");
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    InvalidateRect(nullptr, nullptr, FALSE);
    HDC context = GetDC(nullptr);
    HBRUSH brush = CreateSolidBrush(0);
    HGDIOBJ old = SelectObject(context, brush);
    SelectObject(context, old);
    const RECT place = {0, 0, 0, 0};
    FillRect(context, &place, reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1));
    DeleteObject(brush);
    ReleaseDC(nullptr, context);
    HMENU menu = CreatePopupMenu();
    AppendMenuA(menu, MF_STRING, 5, "item");
    DestroyMenu(menu);
    DestroyWindow(window);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_FALSE(IsMenu(menu));
    EXPECT_EQ(GetObjectType(brush), 0u);
}

[[gnu::noinline]] void UseWindow(HWND window) { SetWindowTextA(window, "text"); }
TEST(Handles, DeadWindow) { UseWindow(MakeDeadWindow()); }
[[gnu::noinline]] void UseParent(HWND window) { SetParent(MakeWindow(DefWindowProcA), window); }
TEST(Handles, DeadWindowAsAnotherArgument) { UseParent(MakeDeadWindow()); }

[[gnu::noinline]] void UseContext(HDC context) { SetBkMode(context, TRANSPARENT); }
TEST(Handles, DeadContext) {
    HDC context = CreateCompatibleDC(nullptr);
    DeleteDC(context);
    UseContext(context);
}
TEST(Handles, ReleasedContext) {
    HDC context = GetDC(nullptr);
    ReleaseDC(nullptr, context);
    UseContext(context);
}

[[gnu::noinline]] void UseMenu(HMENU menu) { AppendMenuA(menu, MF_STRING, 5, "item"); }
TEST(Handles, DeadMenu) {
    HMENU menu = CreatePopupMenu();
    DestroyMenu(menu);
    UseMenu(menu);
}

[[gnu::noinline]] void DeletePen(HPEN pen) { DeleteObject(pen); }
TEST(Handles, PenIsDeletedTwice) {
    HPEN pen = CreatePen(PS_SOLID, 1, 0x123456);
    DeletePen(pen);
    DeletePen(pen);
}

TEST(Outside, BehindTheLastTest) {
    static TThing* thing = MakeThing();
    FreeThing(thing);
    std::atexit([] { FreeThing(Hidden(thing)); });
}

} // namespace
} // namespace kx
