// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Delegate.h"
#include "kx/core/Types.h"
#include "kx/win/WinTypes.h"

namespace kx {

/// A window message on its way through the window procedures, and its result.
struct TMessage {
    UINT Msg = 0;
    WPARAM WParam = 0;
    LPARAM LParam = 0;
    LRESULT Result = 0;

    uint16_t WParamLo() const { return static_cast<uint16_t>(WParam & 0xFFFF); }
    uint16_t WParamHi() const { return static_cast<uint16_t>((WParam >> 16) & 0xFFFF); }
    uint16_t LParamLo() const { return static_cast<uint16_t>(LParam & 0xFFFF); }
    uint16_t LParamHi() const { return static_cast<uint16_t>((LParam >> 16) & 0xFFFF); }

    /// The point that mouse messages carry in LParam, with its sign.
    TPoint Pos() const { return {static_cast<int16_t>(LParamLo()), static_cast<int16_t>(LParamHi())}; }

    HWND LParamWindow() const { return reinterpret_cast<HWND>(LParam); }
    HWND WParamWindow() const { return reinterpret_cast<HWND>(WParam); }
    HDC WParamDC() const { return reinterpret_cast<HDC>(WParam); }
    template <class T> T& LParamAs() const { return *reinterpret_cast<T*>(LParam); }
};

/// Two words as a message parameter.
inline LPARAM MakeLParam(int lo, int hi) {
    return static_cast<LPARAM>(static_cast<uint32_t>(static_cast<uint16_t>(lo)) |
                               (static_cast<uint32_t>(static_cast<uint16_t>(hi)) << 16));
}

/// Sees a message of a window, may change it, and answers it.
using TWndMethod = TEvent<void(TMessage& message)>;

} // namespace kx
