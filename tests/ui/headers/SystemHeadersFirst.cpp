#include <windows.h>

#include <windowsx.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

#include "core/Strings.h"
#include "ui/Forms.h"
#include "ui/Graphics.h"

#include "UserCode.h"

#define RESULTS SystemHeadersFirst
#include "UserCode.inc"
