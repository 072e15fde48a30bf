// SPDX-License-Identifier: MIT
// Counts what the process holds: windows, drawing objects, memory, threads.

#include "tests/support/Census.h"

#include "kx/win/Handles.h"
#include "tests/support/HeapCount.h"

#include <tlhelp32.h>

#include <malloc.h>

#include <cstring>
#include <iterator>
#include <tuple>

namespace kx::test {

namespace {

constexpr const char* KindNames[] = {"pens",         "brushes",     "fonts",           "bitmaps",
                                     "regions",      "palettes",    "window contexts", "memory contexts",
                                     "metafiles",    "GDI objects", "windows",         "menus",
                                     "USER objects", "heap blocks", "heap bytes",      "threads"};
static_assert(std::size(KindNames) == std::tuple_size_v<decltype(TCensus::Counts)>);

void CountObject(TCensus& census, DWORD type) {
    switch (type) {
    case OBJ_PEN:
    case OBJ_EXTPEN: ++census[TCensusKind::Pen]; break;
    case OBJ_BRUSH: ++census[TCensusKind::Brush]; break;
    case OBJ_FONT: ++census[TCensusKind::Font]; break;
    case OBJ_BITMAP: ++census[TCensusKind::Bitmap]; break;
    case OBJ_REGION: ++census[TCensusKind::Region]; break;
    case OBJ_PAL: ++census[TCensusKind::Palette]; break;
    case OBJ_DC: ++census[TCensusKind::WindowContext]; break;
    case OBJ_MEMDC: ++census[TCensusKind::MemoryContext]; break;
    case OBJ_METADC:
    case OBJ_ENHMETADC:
    case OBJ_METAFILE:
    case OBJ_ENHMETAFILE: ++census[TCensusKind::Metafile]; break;
    default: break;
    }
}

/// Wine knows an object by the low word of its handle, Windows does not, but counts by itself.
bool KnowsLowWords() {
    static const bool knows = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    return knows;
}

template <class H> H LowHandle(uintptr_t value) {
    return reinterpret_cast<H>(value); // NOLINT(performance-no-int-to-ptr)
}

BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    // A thread's first window brings one of the input method with it, which comes and goes as it likes.
    char className[8] = {};
    GetClassNameA(window, className, sizeof(className));
    if (process == GetCurrentProcessId() && std::strcmp(className, "IME") != 0) {
        ++*reinterpret_cast<long*>(count);
    }
    return TRUE;
}

BOOL CALLBACK CountTopLevel(HWND window, LPARAM count) {
    CountWindow(window, count);
    return EnumChildWindows(window, CountWindow, count) || TRUE;
}

} // namespace

TCensus GdiCensus() {
    GdiFlush();
    TCensus census;
    if (!KnowsLowWords()) {
        census[TCensusKind::GdiObject] = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
        return census;
    }
    for (uintptr_t i = 1; i <= 0xFFFF; ++i) {
        CountObject(census, GetObjectType(LowHandle<HGDIOBJ>(i)));
    }
    return census;
}

TCensus UserCensus() {
    TCensus census;
    long windows = 0;
    const auto count = reinterpret_cast<LPARAM>(&windows);
    EnumWindows(CountTopLevel, count);
    for (HWND window = nullptr; (window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
        CountTopLevel(window, count);
    }
    census[TCensusKind::Window] = windows;
    if (!KnowsLowWords()) {
        census[TCensusKind::UserObject] = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
        return census;
    }
    for (uintptr_t i = 0x20; i <= 0xFFFF; i += 2) {
        if (IsMenu(LowHandle<HMENU>(i))) {
            ++census[TCensusKind::Menu];
        }
    }
    return census;
}

TCensus HeapCensus() {
    TCensus census;
    if (GuardedHeap) {
        const THeapCount count = GuardedHeap();
        census[TCensusKind::HeapBlock] = count.Blocks;
        census[TCensusKind::HeapByte] = count.Bytes;
    }
    _HEAPINFO entry = {};
    while (_heapwalk(&entry) == _HEAPOK) {
        if (entry._useflag == _USEDENTRY) {
            ++census[TCensusKind::HeapBlock];
            census[TCensusKind::HeapByte] += static_cast<long>(entry._size);
        }
    }
    return census;
}

TCensus ThreadCensus() {
    TCensus census;
    const unique_hfile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Thread32First(snapshot.get(), &entry); more; more = Thread32Next(snapshot.get(), &entry)) {
        if (entry.th32OwnerProcessID == GetCurrentProcessId()) {
            ++census[TCensusKind::Thread];
        }
    }
    return census;
}

TCensus TakeCensus() { return HeapCensus() + GdiCensus() + UserCensus() + ThreadCensus(); }

TCensus operator+(const TCensus& a, const TCensus& b) {
    TCensus sum;
    for (size_t i = 0; i < sum.Counts.size(); ++i) {
        sum.Counts[i] = a.Counts[i] + b.Counts[i];
    }
    return sum;
}

std::string Describe(const TCensus& before, const TCensus& after) {
    std::string text;
    for (size_t i = 0; i < before.Counts.size(); ++i) {
        const long growth = after.Counts[i] - before.Counts[i];
        if (growth != 0) {
            text += std::to_string(growth > 0 ? growth : -growth) + (growth > 0 ? " more " : " fewer ") + KindNames[i] +
                    ": " + std::to_string(before.Counts[i]) + " -> " + std::to_string(after.Counts[i]) + "\n";
        }
    }
    return text;
}

} // namespace kx::test
