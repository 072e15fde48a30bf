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
#include <winspool.h>

#include "kx/core/Strings.h"
#include "kx/graphics/Graphics.h"
#include "kx/ui/dialogs/DialogsPrint.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/ComCtrlsTree.h"

#include "UserCode.h"

#define RESULTS SystemHeadersFirst
#include "UserCode.inc"

bool kx::test::WalkBehindSystemHeaders(const TTreeNode& node) {
    HWND desktop = GetDesktopWindow();
    HWND top = GetFirstChild(desktop);
    return node.GetFirstChild() && node.GetFirstChild()->GetNextSibling() &&
           node.GetFirstChild()->GetNextSibling()->GetPrevSibling() == node.GetFirstChild() &&
           top == GetTopWindow(desktop) && GetNextSibling(top) == GetWindow(top, GW_HWNDNEXT) && !GetPrevSibling(top);
}
