// SPDX-License-Identifier: MIT
#pragma once

#include "Report.h"

namespace kx::bench {

/// Time from the call to the first paint: with nothing docked against the bare dialog; with four docked forms of 20
/// controls, and of the full dialog with these forms and its own places bar, against the same written by hand. The
/// dialogs of each row are opened in turn.
std::vector<TRow> MeasureFirstPaint();

/// The full dialog with four docked forms and its places bar, which are made for this showing.
void ShowFullDialog();

/// Memory of a program that shows the full dialog, against one that shows the same written by hand. Both are this
/// program again, called with "shows" and "ours" or another word; it ends with its KB then.
std::vector<TRow> MeasureMemory();
int ShowForMemory(const std::string& dialog);

/// Cost of one sent null message through a dialog's pipeline, beyond what the bare window takes: without events against
/// the same for a procedure installed by SetWindowSubclass, and in the full dialog with its hooks and events.
std::vector<TRow> MeasureNullMessage();

/// Reading forms of 100, 1,000 and 10,000 components, from binary and from text: what one of them costs.
std::vector<TRow> MeasureForms();

/// Saving and loading the places of a places bar: 1,000 of them against the bare registry calls that move the same
/// values, and one of 1,000 against one of 100, beyond what the registry's own time grows.
std::vector<TRow> MeasurePlaces();

/// The library's places bar: making the buttons of 200 places against plain tool buttons, and painting one button
/// against a system button that its owner draws with the same icon and caption.
std::vector<TRow> MeasurePlacesBar();

/// The full dialog's file list: the filter's pass over 1,000, 10,000 and 100,000 entries, half of which it takes out,
/// against a bare loop that asks the file system the same questions and deletes the same entries; and a change of
/// folder with forced styles and the filter on, against the bare dialog's.
std::vector<TRow> MeasureFileList();

/// The folder dialog with nothing docked against the bare browser: time from the call to the first paint.
std::vector<TRow> MeasureFolderDialog();

/// First paint of the colour and of the print dialog with nothing docked, beside that of the system's alone.
std::vector<TRow> MeasureColor();
std::vector<TRow> MeasurePrint();

/// The form designer: a step of dragging twenty selected controls against the same windows moved by bare calls; until
/// its window shows, in this process and in the program from its start, and until the largest form of the library is
/// open in it.
std::vector<TRow> MeasureDesigner();

} // namespace kx::bench
