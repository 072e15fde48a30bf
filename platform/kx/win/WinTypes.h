#pragma once

// The system's types by the names that windows.h gives them, without windows.h: a program pays for that file where it
// calls the system, not wherever it shows a dialog. Each is declared as windows.h declares it with STRICT, its default,
// and may be declared again: both may be included, in either order.

#define KX_CALLBACK __stdcall // CALLBACK, for a function that the system calls

struct HBITMAP__;
struct HBRUSH__;
struct HDC__;
struct HFONT__;
struct HHOOK__;
struct HICON__;
struct HINSTANCE__;
struct HKEY__;
struct HMENU__;
struct HPALETTE__;
struct HPEN__;
struct HRGN__;
struct HWND__;
struct _IMAGELIST;

using HANDLE = void*;
using HGLOBAL = HANDLE;
using HBITMAP = HBITMAP__*;
using HBRUSH = HBRUSH__*;
using HDC = HDC__*;
using HFONT = HFONT__*;
using HGDIOBJ = void*;
using HHOOK = HHOOK__*;
using HICON = HICON__*;
using HCURSOR = HICON;
using HIMAGELIST = _IMAGELIST*;
using HINSTANCE = HINSTANCE__*;
using HMODULE = HINSTANCE;
using HKEY = HKEY__*;
using HMENU = HMENU__*;
using HPALETTE = HPALETTE__*;
using HPEN = HPEN__*;
using HRGN = HRGN__*;
using HWND = HWND__*;

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
struct _ITEMIDLIST;
struct _NMTBCUSTOMDRAW;
struct _OFNOTIFYEXA;
struct _TBBUTTON;
struct _devicemodeA;
struct tagCWPRETSTRUCT;
struct tagDRAWITEMSTRUCT;
struct tagLOGFONTW;
struct tagMEASUREITEMSTRUCT;
struct tagMSG;
struct tagNMHEADERA;
struct tagNMLISTVIEW;
struct tagOFNA;
struct tagPDA;
struct tagRECT;
struct tagWINDOWPOS;
using CWPRETSTRUCT = tagCWPRETSTRUCT;
using DEVMODEA = _devicemodeA;
using DRAWITEMSTRUCT = tagDRAWITEMSTRUCT;
using ITEMIDLIST = _ITEMIDLIST;
using LOGFONTW = tagLOGFONTW;
using MEASUREITEMSTRUCT = tagMEASUREITEMSTRUCT;
using MSG = tagMSG;
using NMHEADERA = tagNMHEADERA;
using NMLISTVIEW = tagNMLISTVIEW;
using NMTBCUSTOMDRAW = _NMTBCUSTOMDRAW;
using OFNOTIFYEXA = _OFNOTIFYEXA;
using OPENFILENAMEA = tagOFNA;
using PRINTDLGA = tagPDA;
using RECT = tagRECT;
using TBBUTTON = _TBBUTTON;
using WINDOWPOS = tagWINDOWPOS;
