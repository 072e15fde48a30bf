// SPDX-License-Identifier: MIT
// Reports calls with dead handles.

#include "tests/guard/Guards.h"

#include "kx/win/Windows.h"
#include "tests/guard/Imports.h"
#include "tests/guard/Report.h"

#include <cstdio>
#include <iterator>
#include <type_traits>

namespace kx::guard {

namespace {

decltype(&GetDeviceCaps) SystemGetDeviceCaps = nullptr; ///< The program's own is watched.

/// HWND_TOPMOST, HBMMENU_CALLBACK and the like, and colours of the system in place of a brush.
bool IsNumber(const void* handle) {
    const auto number = reinterpret_cast<LONG_PTR>(handle);
    return number >= -3 && number <= 0x1F;
}

bool IsDead(HWND window) { return window != HWND_BROADCAST && IsWindow(window) == 0; }
bool IsDead(HMENU menu) { return IsMenu(menu) == 0; }
bool IsDeadObject(HGDIOBJ object) { return GetObjectType(object) == 0; }
/// A drawing object of one kind.
template <class T> bool IsDead(T* object) { return IsDeadObject(object); }

bool IsDead(HDC context) {
    switch (GetObjectType(context)) {
    case OBJ_METADC:
    case OBJ_ENHMETADC: return false;
    // The system may keep a released context, which then has no device. Of a device's numbers this is one that takes no
    // time: for its size Wine asks its server.
    case OBJ_DC:
    case OBJ_MEMDC: return SystemGetDeviceCaps(context, PLANES) == 0;
    default: return true;
    }
}

template <class T>
constexpr bool IsHandle = std::is_same_v<T, HWND> || std::is_same_v<T, HMENU> || std::is_same_v<T, HDC> ||
                          std::is_same_v<T, HBITMAP> || std::is_same_v<T, HBRUSH> || std::is_same_v<T, HFONT> ||
                          std::is_same_v<T, HPALETTE> || std::is_same_v<T, HPEN> || std::is_same_v<T, HRGN>;

[[gnu::noinline]] void ReportDead(const char* function, const void* handle) {
    char text[200];
    std::snprintf(text, sizeof(text), "dead handle: %p is given to %s", handle, function);
    TTrace trace;
    trace.Capture(0);
    Report(text, trace);
}

/// A function of the system whose parameters are looked at. The type of a parameter says what it is; among those that
/// take a drawing object of any kind, whose type says nothing, `TakesObject` the first of no type is one.
template <int Number, bool TakesObject, class F> struct TWatched;

template <int Number, bool TakesObject, class R, class... A> struct TWatched<Number, TakesObject, R(WINAPI*)(A...)> {
    static inline const char* Name = nullptr;
    static inline R(WINAPI* System)(A...) = nullptr;

    static TImport Import(const char* name) {
        Name = name;
        return {name, reinterpret_cast<void*>(Call), reinterpret_cast<void**>(&System)};
    }

private:
    static R WINAPI Call(A... arguments) {
        {
            const TKeepLastError keep;
            bool mayBeObject = TakesObject;
            (Check(arguments, mayBeObject), ...);
        }
        return System(arguments...);
    }

    template <class T> static void Check(const T& argument, bool& mayBeObject) {
        if constexpr (IsHandle<T>) {
            if (!IsNumber(argument) && IsDead(argument)) {
                ReportDead(Name, argument);
            }
        } else if constexpr (std::is_same_v<T, HGDIOBJ>) {
            if (mayBeObject && !IsNumber(argument) && IsDeadObject(argument)) {
                ReportDead(Name, argument);
            }
            mayBeObject = false;
        }
    }
};

} // namespace

// Not among them: IsWindow, IsMenu, GetObjectType and GetWindowThreadProcessId, which ask whether a handle lives;
// CreateWindowEx, whose menu may be a number of any size.
void GuardHandles() {
    SystemGetDeviceCaps = reinterpret_cast<decltype(&GetDeviceCaps)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("gdi32.dll"), "GetDeviceCaps")));
    static const TImport imports[] = {
#define KX_WATCH(name) TWatched<__COUNTER__, false, decltype(&::name)>::Import(#name),
#define KX_WATCH_OBJECT(name) TWatched<__COUNTER__, true, decltype(&::name)>::Import(#name),
#include "tests/guard/WatchedFunctions.inc"
#undef KX_WATCH
#undef KX_WATCH_OBJECT
    };
    ReplaceImports(imports);
}

} // namespace kx::guard
