#include "core/Classes.h"

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <mmsystem.h>
#include <shellapi.h>
#include <shlobj.h>

#include "ui/ComCtrls.h"
#include "ui/Forms.h"

#include "UserCode.h"

#define RESULTS CoreHeadersFirst
#include "UserCode.inc"
