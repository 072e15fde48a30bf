#pragma once

#include "kx/core/Delegate.h"
#include "kx/core/TypInfo.h"
#include "kx/win/WinTypes.h"

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

} // namespace kx
