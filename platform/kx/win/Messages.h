#pragma once

#include "kx/core/Delegate.h"
#include "kx/win/Windows.h"

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

/// Notifications that a control's parent gets (WM_COMMAND, WM_NOTIFY, WM_CTLCOLOR..., WM_DRAWITEM, ...) come back to
/// the control under their own number plus this one.
constexpr UINT CN_BASE = 0xBC00;
constexpr UINT CN_COMMAND = CN_BASE + WM_COMMAND;
constexpr UINT CN_NOTIFY = CN_BASE + WM_NOTIFY;
constexpr UINT CN_DRAWITEM = CN_BASE + WM_DRAWITEM;
constexpr UINT CN_MEASUREITEM = CN_BASE + WM_MEASUREITEM;
constexpr UINT CN_HSCROLL = CN_BASE + WM_HSCROLL;
constexpr UINT CN_VSCROLL = CN_BASE + WM_VSCROLL;
constexpr UINT CN_CTLCOLORMSGBOX = CN_BASE + WM_CTLCOLORMSGBOX;
constexpr UINT CN_CTLCOLORSTATIC = CN_BASE + WM_CTLCOLORSTATIC;

} // namespace kx
