// SPDX-License-Identifier: MIT
// Ordinary Win32 code before our headers.

#include <windows.h>

#include <windowsx.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

#include "kx/core/Strings.h"
#include "kx/graphics/Graphics.h"
#include "kx/ui/forms/Forms.h"

#include "UserCode.h"

#define RESULTS SystemHeadersFirst
#include "UserCode.inc"
