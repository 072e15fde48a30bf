// SPDX-License-Identifier: MIT
// Names that windows.h makes macros of and that functions of ours have too. Both kinds may be called, the system's
// `MessageBox(window, ...)` and `Application().MessageBox(...)`, wherever a source includes windows.h:
//
// Before our headers, or among them: here each macro becomes a function that does what the macro did. Whether the A or
// the W function is meant is what UNICODE says at this place.
//
// Behind them: the macro makes `MessageBoxA` of our name too, and our class has that one as well. Only a descendant
// that overrides such a function includes this file once more, behind windows.h.
//
// Deliberately without an include guard: it does nothing until windows.h has been included, and works then. Headers of
// ours with one of these names include it first.

#ifndef KX_AS_SYSTEM_NAMES
/// In a class that has the function `name`: the same under the names of the system's two functions.
#define KX_AS_SYSTEM_NAMES(result, name, parameters, arguments, qualifiers)                                            \
    result name##A parameters qualifiers { return name arguments; }                                                    \
    result name##W parameters qualifiers { return name arguments; }
#endif

#ifdef UNICODE
#define KX_SYSTEM_NAME(name) name##W
#else
#define KX_SYSTEM_NAME(name) name##A
#endif

#ifdef DrawText
#undef DrawText
static inline int WINAPI DrawText(HDC dc, LPCTSTR text, int length, LPRECT rect, UINT format) {
    return KX_SYSTEM_NAME(DrawText)(dc, text, length, rect, format);
}
#endif

#ifdef GetObject
#undef GetObject
static inline int WINAPI GetObject(HANDLE object, int size, LPVOID buffer) {
    return KX_SYSTEM_NAME(GetObject)(object, size, buffer);
}
#endif

#ifdef LoadIcon
#undef LoadIcon
static inline HICON WINAPI LoadIcon(HINSTANCE module, LPCTSTR name) { return KX_SYSTEM_NAME(LoadIcon)(module, name); }
#endif

#ifdef MessageBox
#undef MessageBox
static inline int WINAPI MessageBox(HWND owner, LPCTSTR text, LPCTSTR caption, UINT type) {
    return KX_SYSTEM_NAME(MessageBox)(owner, text, caption, type);
}
#endif

#ifdef RegisterClass
#undef RegisterClass
static inline ATOM WINAPI RegisterClass(const WNDCLASS* windowClass) {
    return KX_SYSTEM_NAME(RegisterClass)(windowClass);
}
#endif

#ifdef SetForm
#undef SetForm
static inline BOOL WINAPI SetForm(HANDLE printer, LPTSTR name, DWORD level, LPBYTE form) {
    return KX_SYSTEM_NAME(SetForm)(printer, name, level, form);
}
#endif

#ifdef SetPrinter
#undef SetPrinter
static inline BOOL WINAPI SetPrinter(HANDLE printer, DWORD level, LPBYTE settings, DWORD command) {
    return KX_SYSTEM_NAME(SetPrinter)(printer, level, settings, command);
}
#endif

#ifdef TextOut
#undef TextOut
static inline BOOL WINAPI TextOut(HDC dc, int x, int y, LPCTSTR text, int length) {
    return KX_SYSTEM_NAME(TextOut)(dc, x, y, text, length);
}
#endif

// Those of windowsx.h have parameters: behind our headers, ours would be called as (node.GetFirstChild)().

#ifdef GetFirstChild
#undef GetFirstChild
static inline HWND GetFirstChild(HWND window) { return GetTopWindow(window); }
#endif

#ifdef GetNextSibling
#undef GetNextSibling
static inline HWND GetNextSibling(HWND window) { return GetWindow(window, GW_HWNDNEXT); }
#endif

#ifdef GetPrevSibling
#undef GetPrevSibling
static inline HWND GetPrevSibling(HWND window) { return GetWindow(window, GW_HWNDPREV); }
#endif

#undef KX_SYSTEM_NAME
