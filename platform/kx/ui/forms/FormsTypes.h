// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Delegate.h"
#include "kx/core/TypInfo.h"
#include "kx/win/WinTypes.h"

#include <exception>
#include <vector>

namespace kx {

enum TBorderIcon : uint8_t { biSystemMenu, biMinimize, biMaximize, biHelp };
KX_ENUM(TBorderIcon, "biSystemMenu", "biMinimize", "biMaximize", "biHelp")
using TBorderIcons = TSet<TBorderIcon>;

/// Where a form shows first.
enum TPosition : uint8_t {
    poDesigned,       ///< Where the form file puts it.
    poDefault,        ///< Place and size are the system's choice.
    poDefaultPosOnly, ///< The place is the system's choice.
    poDefaultSizeOnly,
    poScreenCenter,  ///< In the middle of the monitor that DefaultMonitor names,
    poDesktopCenter, ///< or of the first monitor.
    poMainFormCenter,
    poOwnerFormCenter
};
KX_ENUM(TPosition, "poDesigned", "poDefault", "poDefaultPosOnly", "poDefaultSizeOnly", "poScreenCenter",
        "poDesktopCenter", "poMainFormCenter", "poOwnerFormCenter")

/// The monitor in whose middle a form with poScreenCenter shows first.
enum TDefaultMonitor : uint8_t {
    dmDesktop,   ///< The first one.
    dmPrimary,   ///< The same.
    dmMainForm,  ///< That of the program's main form,
    dmActiveForm ///< or of the form that is active; the first one when there is no such form.
};
KX_ENUM(TDefaultMonitor, "dmDesktop", "dmPrimary", "dmMainForm", "dmActiveForm")

enum TWindowState : uint8_t { wsNormal, wsMinimized, wsMaximized };
KX_ENUM(TWindowState, "wsNormal", "wsMinimized", "wsMaximized")

enum TFormStyle : uint8_t { fsNormal, fsStayOnTop };
KX_ENUM(TFormStyle, "fsNormal", "fsStayOnTop")

enum TCloseAction : uint8_t { caNone, caHide, caFree, caMinimize };
using TCloseEvent = TEvent<void(TObject* sender, TCloseAction& action)>;
using TShortCutEvent = TEvent<void(MSG& message, bool& handled)>;
using TCloseQueryEvent = TEvent<void(TObject* sender, bool& canClose)>;

/// Windows that were disabled, to be enabled again.
using TTaskWindowList = std::vector<HWND>;

using TExceptionEvent = TEvent<void(TObject* sender, const std::exception& e)>;
using TMessageEvent = TEvent<void(MSG& message, bool& handled)>;
/// Help is wanted: a HELP_ command and its data. A handler that sets `callHelp` to false has shown it.
using THelpEvent = TEvent<void(uint16_t command, LPARAM data, bool& callHelp)>;
using TIdleEvent = TEvent<void(TObject* sender, bool& done)>;

} // namespace kx
