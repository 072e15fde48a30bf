#define UNICODE
#define _UNICODE
#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <shellapi.h>
#include <shlobj.h>

#include "ui/Dialogs.h"
#include "ui/Forms.h"
#include "ui/Registry.h"
#include "ui/StdCtrls.h"

#include "UserCode.h"

#define RESULTS UnicodeProgram
#include "UserCode.inc"
