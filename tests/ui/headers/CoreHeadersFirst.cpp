// SPDX-License-Identifier: MIT
// Ordinary Win32 code behind the headers of the core.

#include "kx/core/Classes.h"

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <shellapi.h>
#include <shlobj.h>
#include <winspool.h>

#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrls.h"

#include "UserCode.h"

#define RESULTS CoreHeadersFirst
#include "UserCode.inc"
