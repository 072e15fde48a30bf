// SPDX-License-Identifier: MIT
/* A program in C that loads a library, shows its dialog, and unloads it, again and again.

   Arguments: the library, one that does the same without what is tested, and how often. The exit code tells what was
   left behind; 0: nothing. */

#include "../plugin/Plugin.h"

#include <tlhelp32.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { Fine, Usage, NotLoaded, NotShown, NotEnded, StillLoaded, NoClass, ClassLeft, WindowLeft, ThreadLeft, IndexLeft,
       MemoryLeft };

typedef struct {
    long blocks, bytes, windows, threads;
    DWORD tls, fls;
} TCensus;

/* Classes that the library must have had while it was used */
static const char* const classes[] = {"TApplication", "TPluginForm"};

static HWND owner;
static int warm = 10;

static void CountHeaps(TCensus* census) {
    HANDLE heaps[64];
    DWORD count = GetProcessHeaps(64, heaps);
    DWORD i;
    for (i = 0; i < count && i < 64; ++i) {
        PROCESS_HEAP_ENTRY entry;
        memset(&entry, 0, sizeof entry);
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry)) {
            if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) {
                ++census->blocks;
                census->bytes += (long)entry.cbData;
            }
        }
        HeapUnlock(heaps[i]);
    }
}

static BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    char name[8] = "";
    GetWindowThreadProcessId(window, &process);
    GetClassNameA(window, name, sizeof name);
    if (process == GetCurrentProcessId() && strcmp(name, "IME") != 0) {
        ++*(long*)count;
    }
    return TRUE;
}

static void CountWindows(TCensus* census) {
    HWND window = NULL;
    EnumWindows(CountWindow, (LPARAM)&census->windows);
    while ((window = FindWindowExA(HWND_MESSAGE, window, NULL, NULL)) != NULL) {
        CountWindow(window, (LPARAM)&census->windows);
    }
}

static void CountThreads(TCensus* census) {
    THREADENTRY32 entry;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    BOOL more;
    entry.dwSize = sizeof entry;
    for (more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        census->threads += entry.th32OwnerProcessID == GetCurrentProcessId();
    }
    CloseHandle(snapshot);
}

/* The next index that is free tells whether one has been lost. */
static void LookAtIndexes(TCensus* census) {
    census->tls = TlsAlloc();
    census->fls = FlsAlloc(NULL);
    TlsFree(census->tls);
    FlsFree(census->fls);
}

static TCensus Take(void) {
    TCensus census;
    memset(&census, 0, sizeof census);
    CountHeaps(&census);
    CountWindows(&census);
    CountThreads(&census);
    LookAtIndexes(&census);
    return census;
}

static int HasClass(HMODULE library, const char* name) {
    WNDCLASSA info;
    return GetClassInfoA(library, name, &info) && info.hInstance == library;
}

static void Pump(void) {
    MSG message;
    while (PeekMessageW(&message, NULL, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
    }
}

/* Once: load, show, end, unload. `known`: its classes are those above. */
static int Cycle(const char* path, int fails, int known) {
    size_t i;
    HMODULE library = LoadLibraryA(path);
    TPluginShow show = (TPluginShow)(void*)GetProcAddress(library, "PluginShow");
    TPluginEnd end = (TPluginEnd)(void*)GetProcAddress(library, "PluginEnd");
    if (!library || !show || !end) {
        return NotLoaded;
    }
    if (show(owner, fails, NULL, NULL) != (PLUGIN_ALL | (fails ? PLUGIN_THROWN : 0))) {
        return NotShown;
    }
    for (i = 0; known && i < sizeof classes / sizeof *classes; ++i) {
        if (!HasClass(library, classes[i])) {
            return NoClass;
        }
    }
    if (!end()) {
        return NotEnded;
    }
    Pump();
    FreeLibrary(library);
    if (GetModuleHandleA(strrchr(path, '\\') + 1)) {
        return StillLoaded;
    }
    for (i = 0; i < sizeof classes / sizeof *classes; ++i) {
        if (HasClass(library, classes[i])) {
            return ClassLeft;
        }
    }
    return IsWindowEnabled(owner) ? Fine : WindowLeft;
}

static int Cycles(const char* path, int count, int known, TCensus* growth) {
    TCensus before, after;
    int i;
    memset(&before, 0, sizeof before);
    for (i = 0; i < warm + count; ++i) {
        int result = Cycle(path, i % 2, known);
        if (result != Fine) {
            return result;
        }
        if (i == warm - 1) {
            before = Take();
        }
    }
    after = Take();
    growth->blocks = after.blocks - before.blocks;
    growth->bytes = after.bytes - before.bytes;
    growth->windows = after.windows - before.windows;
    growth->threads = after.threads - before.threads;
    growth->tls = after.tls - before.tls;
    growth->fls = after.fls - before.fls;
    printf("%d times %s: %ld blocks, %ld bytes, %ld windows, %ld threads, TLS %lu, FLS %lu\n", count, path,
           growth->blocks, growth->bytes, growth->windows, growth->threads, (unsigned long)growth->tls,
           (unsigned long)growth->fls);
    fflush(stdout);
    return Fine;
}

int main(int argc, char** argv) {
    TCensus bare, ours;
    int count, result;
    if (argc != 4 || (count = atoi(argv[3])) < 1) {
        return Usage;
    }
    owner = CreateWindowExA(0, "STATIC", "A program in C", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 300, NULL,
                            NULL, NULL, NULL);
    Pump();
    result = Cycles(argv[2], count, 0, &bare);
    if (result != Fine) {
        return 100 + result;
    }
    result = Cycles(argv[1], count, 1, &ours);
    if (result != Fine) {
        return result;
    }
    if (ours.windows > 0) {
        return WindowLeft;
    }
    if (ours.threads > 0) {
        return ThreadLeft;
    }
    if (ours.tls > bare.tls || ours.fls > bare.fls) {
        return IndexLeft;
    }
    /* What the runtime library loses with every library in C++ is not ours. */
    return ours.blocks > bare.blocks + count / 2 || ours.bytes > bare.bytes + 64 * count ? MemoryLeft : Fine;
}
