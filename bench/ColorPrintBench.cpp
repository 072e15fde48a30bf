// SPDX-License-Identifier: MIT
// Measures the first paint of the colour and the print dialog.

#include "Benches.h"

#include "Showing.h"
#include "kx/colorprint/KxColorDlg.h"
#include "kx/colorprint/KxPrintDlg.h"

namespace kx::bench {

std::vector<TRow> MeasureColor() {
    TKxColorDialog dialog(&Application());
    return {CompareFirstPaint(
        "first paint of the colour dialog", ShowBareColorDialog, [&] { dialog.Execute(); }, 1.10)};
}

std::vector<TRow> MeasurePrint() {
    TKxPrintDialog dialog(&Application());
    return {CompareFirstPaint(
        "first paint of the print dialog", ShowBarePrintDialog, [&] { dialog.Execute(); }, 1.10)};
}

} // namespace kx::bench
