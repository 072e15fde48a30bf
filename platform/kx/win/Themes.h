// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Types.h"
#include "kx/win/Handles.h"
#include "kx/win/WinTypes.h"

#include <array>
#include <cstdint>
#include <optional>

namespace kx {

namespace detail {

struct TThemeTraits {
    using THandle = HANDLE;
    static void Close(HANDLE theme);
};

} // namespace detail

/// A theme's data for one kind of controls.
using unique_htheme = unique_handle<detail::TThemeTraits>;

/// Kinds of controls that a theme knows.
enum class TThemeKind : uint8_t { Button, Edit, Header, Tab, ToolBar };

/// How the system's theme draws one kind of controls in a window. Parts and states have the system's numbers, those of
/// vsstyle.h. It is an empty one where the classic drawing is wanted; only that can then be asked.
class TTheme {
public:
    explicit TTheme(HANDLE theme = nullptr) : FTheme(theme) {}
    explicit operator bool() const { return FTheme != nullptr; }

    void Draw(HDC dc, int part, int state, const TRect& rect) const;
    /// The same, and only what lies inside `clip`.
    void Draw(HDC dc, int part, int state, const TRect& rect, const TRect& clip) const;
    /// What is left of the rectangle inside the part's frame.
    TRect Inside(HDC dc, int part, int state, const TRect& rect) const;
    /// The colour of texts on the part; `otherwise` when the theme leaves it open.
    COLORREF TextColor(int part, int state, COLORREF otherwise) const;

private:
    HANDLE FTheme;
};

/// What the system says of the looks of one window: asked when it is needed, and kept until it changes.
class TSystemLook {
public:
    /// Valid until `Changed`. Empty when the user wants no themes, or the program's controls are not those that have
    /// them: version 6 of the common controls, which its manifest asks for.
    TTheme Theme(HWND window, TThemeKind kind);
    /// The user needs strong contrasts: all is to be drawn in the system's colours, without effects.
    bool HighContrast();
    /// Themes, colours or settings are others now.
    void Changed();

private:
    struct TEntry {
        unique_htheme Theme;
        bool Asked = false;
    };
    std::array<TEntry, 5> FThemes; ///< By TThemeKind.
    std::optional<bool> FHighContrast;
};

} // namespace kx
