// SPDX-License-Identifier: MIT
#ifndef TESTS_HOST_PLUGIN_H
#define TESTS_HOST_PLUGIN_H

/* What the libraries offer to the programs that load them. C can include it. */

#include <windows.h>

/* What has been seen while a dialog was shown */
#define PLUGIN_SHOWN 1  /* the dialog, as its owner's */
#define PLUGIN_DOCKED 2 /* its form, made from the form file in the library */
#define PLUGIN_PLACES 4 /* its bar of places */
#define PLUGIN_THROWN 8 /* the exception of a handler, in the sink of the library */
#define PLUGIN_ALL (PLUGIN_SHOWN | PLUGIN_DOCKED | PLUGIN_PLACES)

typedef void (*TPluginInside)(HWND dialog, void* data);

/* Shows an open dialog, cancels it once it is there, and returns what was seen. `fails`: its OnShow throws. `inside`,
   if not null, is called while it is shown. */
typedef int (*TPluginShow)(HWND owner, int fails, TPluginInside inside, void* data);
/* Ends the library; 0 when it cannot end. */
typedef int (*TPluginEnd)(void);
/* Shows a dialog without blocking, and returns when it is there. */
typedef int (*TPluginBrowse)(HWND owner);
/* Makes a form that nobody owns, or frees it. */
typedef void (*TPluginKeepForm)(int keeps);

#endif
