// SPDX-License-Identifier: MIT
// Our headers in a Unicode program.

#define UNICODE
#define _UNICODE
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <shellapi.h>
#include <shlobj.h>
#include <winspool.h>

#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Registry.h"

#include "UserCode.h"

#define RESULTS UnicodeProgram
#include "UserCode.inc"
