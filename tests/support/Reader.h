// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <oleacc.h>

#include <string>
#include <vector>

// What a screen reader gets to know.

namespace kx::test {

/// An object, or a part of one, as a screen reader has it from the system.
class TSeen {
public:
    TSeen() = default;
    static TSeen Of(HWND window);                        ///< What the window says of its client area.
    static TSeen Standard(HWND window);                  ///< What the system itself says of it.
    static TSeen AtPoint(const TSeen& in, int x, int y); ///< What it finds at a point of the screen.

    explicit operator bool() const { return static_cast<bool>(FObject.get()); }
    IAccessible* Object() const { return FObject.get(); }
    LONG Number() const { return FNumber; } ///< CHILDID_SELF, or that of a part.

    std::string Name() const { return Text(&IAccessible::get_accName); }
    std::string Value() const { return Text(&IAccessible::get_accValue); }
    std::string Description() const { return Text(&IAccessible::get_accDescription); }
    std::string ShortCut() const { return Text(&IAccessible::get_accKeyboardShortcut); }
    std::string Action() const { return Text(&IAccessible::get_accDefaultAction); }
    LONG Role() const { return Figure(&IAccessible::get_accRole); }
    LONG State() const { return Figure(&IAccessible::get_accState); }
    TRect Rect() const;  ///< On the screen.
    HWND Window() const; ///< Whose object it is.
    HRESULT Do() const { return FObject.get()->accDoDefaultAction(Self()); }
    TSeen Parent() const;
    TSeen Focus() const;
    std::vector<LONG> Selection() const;        ///< Numbers of the parts.
    std::vector<TSeen> Children() const;        ///< As the system's library lists them.
    TSeen Child(const std::string& name) const; ///< The first of that name; none: empty.
    VARIANT Self() const;

private:
    using TTextOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
    using TFigureOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, VARIANT*);
    static TSeen From(const TSeen& parent, const VARIANT& value); ///< Takes the value over.
    std::string Text(TTextOf get) const;
    LONG Figure(TFigureOf get) const;

    unique_com<IAccessible> FObject;
    LONG FNumber = CHILDID_SELF;
};

/// An event that a screen reader was told of.
struct THeard {
    DWORD Event;
    HWND Window;
    LONG Object;
    LONG Number;
    friend bool operator==(const THeard&, const THeard&) = default;
};

/// Hears, while it lives, what the windows of this thread tell of their client areas. The message loop brings it.
class TListener {
public:
    TListener();
    TListener(const TListener&) = delete;
    TListener& operator=(const TListener&) = delete;
    ~TListener();

    bool Heard(DWORD event, HWND window, LONG number) const;

private:
    HWINEVENTHOOK FHook;
};

} // namespace kx::test
