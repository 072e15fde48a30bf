// SPDX-License-Identifier: MIT
// Ordinary Win32 code behind our headers.

#include "kx/core/Strings.h"
#include "kx/graphics/Graphics.h"
#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/forms/Forms.h"

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>
#include <windowsx.h>
#include <winspool.h>

#include "UserCode.h"

#define RESULTS OurHeadersFirst
#include "UserCode.inc"
