// SPDX-License-Identifier: MIT
#pragma once

// The system's types by the names that windows.h gives them, without windows.h: a program pays for that file where it
// calls the system, not wherever it shows a dialog. Each is declared as windows.h declares it with STRICT, its default,
// and may be declared again: both may be included, in either order.

#define KX_CALLBACK __stdcall // CALLBACK, for a function that the system calls

using HANDLE = void*;
using HGLOBAL = HANDLE;
using HBITMAP = struct HBITMAP__*;
using HBRUSH = struct HBRUSH__*;
using HDC = struct HDC__*;
using HFONT = struct HFONT__*;
using HGDIOBJ = void*;
using HHOOK = struct HHOOK__*;
using HICON = struct HICON__*;
using HCURSOR = HICON;
using HIMAGELIST = struct _IMAGELIST*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HKEY = struct HKEY__*;
using HMENU = struct HMENU__*;
using HPALETTE = struct HPALETTE__*;
using HPEN = struct HPEN__*;
using HRGN = struct HRGN__*;
using HWND = struct HWND__*;

using BOOL = int;
using BYTE = unsigned char;
using WORD = unsigned short;
using DWORD = unsigned long;
using UINT = unsigned int;
using COLORREF = DWORD;
using HRESULT = long;
using REGSAM = DWORD;
using LPCSTR = const char*;
#ifdef _WIN64
using UINT_PTR = unsigned long long;
using LONG_PTR = long long;
#else
using UINT_PTR = unsigned int;
using LONG_PTR = long;
#endif
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;
using WNDPROC = LRESULT(KX_CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

// Records that are passed on by reference. What is inside them, windows.h, commdlg.h, commctrl.h and shlobj.h know.
struct IShellBrowser;
struct IShellFolder;
using CWPRETSTRUCT = struct tagCWPRETSTRUCT;
using DEVMODEA = struct _devicemodeA;
using DRAWITEMSTRUCT = struct tagDRAWITEMSTRUCT;
using ITEMIDLIST = struct _ITEMIDLIST;
using LOGFONTW = struct tagLOGFONTW;
using MEASUREITEMSTRUCT = struct tagMEASUREITEMSTRUCT;
using MSG = struct tagMSG;
using NMHEADERA = struct tagNMHEADERA;
using NMLISTVIEW = struct tagNMLISTVIEW;
using NMTBCUSTOMDRAW = struct _NMTBCUSTOMDRAW;
using OFNOTIFYEXA = struct _OFNOTIFYEXA;
using OPENFILENAMEA = struct tagOFNA;
using PRINTDLGA = struct tagPDA;
using RECT = struct tagRECT;
using TBBUTTON = struct _TBBUTTON;
using WINDOWPOS = struct tagWINDOWPOS;
