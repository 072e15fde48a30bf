// Names that windows.h makes macros of and that functions of ours have too. Here each becomes a function that does what
// the macro did, so that both kinds may be called: `MessageBox(window, ...)` of the system and
// `Application().MessageBox(...)`. Whether the A or the W function is meant is what UNICODE says at this place.
//
// Deliberately without an include guard: it does nothing until windows.h has been included, and works then. Headers of
// ours with one of these names include it first; a source that includes windows.h behind headers of kx/core, and none
// of the other folders, includes it once more.

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

#ifdef TextOut
#undef TextOut
static inline BOOL WINAPI TextOut(HDC dc, int x, int y, LPCTSTR text, int length) {
    return KX_SYSTEM_NAME(TextOut)(dc, x, y, text, length);
}
#endif

#undef KX_SYSTEM_NAME
