// SPDX-License-Identifier: MIT
// Measures the first paint of the open dialog, and what a message costs.

#include "Benches.h"

#include "HandWritten.h"
#include "Showing.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/opensave/KxOpenLite.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"

#include <cstdio>

namespace kx::bench {

namespace {

/// A form as applications dock them: 20 controls of the common kinds.
std::unique_ptr<TForm> DockedForm(int width, int height) {
    auto form = std::make_unique<TForm>();
    form->SetBounds(0, 0, width, height);
    for (int i = 0; i < 20; ++i) {
        TWinControl* control = nullptr;
        switch (i % 4) {
        case 0: control = new TButton(form.get()); break;
        case 1: control = new TEdit(form.get()); break;
        case 2: control = new TCheckBox(form.get()); break;
        default: control = new TComboBox(form.get()); break;
        }
        control->SetParent(form.get());
        control->SetBounds(4 + i % 5 * (width / 5), 4 + i / 5 * (height / 4), width / 5 - 6, height / 4 - 6);
    }
    return form;
}

/// One for each side of a dialog.
struct TDockedForms {
    std::unique_ptr<TForm> Left = DockedForm(180, 200);
    std::unique_ptr<TForm> Top = DockedForm(400, 90);
    std::unique_ptr<TForm> Right = DockedForm(180, 200);
    std::unique_ptr<TForm> Bottom = DockedForm(400, 90);

    template <class T> void DockInto(T& dialog) const {
        dialog.CustDlgParams().SetLeftForm(Left.get());
        dialog.CustDlgParams().SetTopForm(Top.get());
        dialog.CustDlgParams().SetRightForm(Right.get());
        dialog.CustDlgParams().SetBottomForm(Bottom.get());
    }
};

/// Four places of the shell in the library's own bar.
void AddPlaces(TKxOpenDialog& dialog) {
    dialog.PlacesBar().SetNative(false);
    for (const TKxSpecShellFolder folder : {ftDesktop, ftDrives, ftPersonal, ftFavorites}) {
        TKxPlace& place = *dialog.PlacesBar().Places().Add();
        place.SetPlaceSpecPath(folder);
        place.SetAutoCaption(true);
        place.SetPlaceIconDll("Shell32.dll");
        place.SetPlaceIcon(3);
        place.SetPlaceHotIcon(4);
    }
}

/// Nanoseconds of one sent null message.
double NullMessageCost(HWND window) {
    constexpr int messages = 500;
    const double start = Now();
    for (int i = 0; i < messages; ++i) {
        SendMessageA(window, WM_NULL, 0, 0);
    }
    return (Now() - start) / messages * 1e9;
}

LRESULT CALLBACK PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace

void ShowFullDialog() {
    const TDockedForms forms;
    TKxOpenDialog dialog(&Application());
    forms.DockInto(dialog);
    AddPlaces(dialog);
    dialog.Execute();
}

std::vector<TRow> MeasureFirstPaint() {
    constexpr const char* byHand = "the same, written by hand";
    TKxOpenLiteDialog plain(&Application());
    const TDockedForms forms;
    TKxOpenLiteDialog docked(&Application());
    forms.DockInto(docked);
    TKxOpenDialog full(&Application());
    forms.DockInto(full);
    AddPlaces(full);
    const auto handWritten = [](bool places) { return [places] { ShowHandWrittenDialog(places); }; };
    return {CompareFirstPaint(
                "first paint, nothing docked", ShowBareOpenDialog, [&] { plain.Execute(); }, 1.10),
            CompareFirstPaint(
                "first paint, four forms of 20 controls", handWritten(false), [&] { docked.Execute(); }, 1.10, byHand),
            CompareFirstPaint(
                "first paint, four forms and places", handWritten(true), [&] { full.Execute(); }, 1.15, byHand)};
}

std::vector<TRow> MeasureNullMessage() {
    LONG_PTR unsubclassed = 0;
    WithShownDialog(ShowBareOpenDialog, [&](HWND dialog) { unsubclassed = GetWindowLongPtrA(dialog, GWLP_WNDPROC); });
    // In one dialog and in turn: a message takes some microseconds more or less from dialog to dialog and from second
    // to second, more than what is measured.
    std::vector<double> bare;
    std::vector<double> through;
    std::vector<double> system;
    TKxOpenLiteDialog ours(&Application());
    WithShownDialog([&] { ours.Execute(); },
                    [&](HWND dialog) {
                        for (int round = 0; round < 101; ++round) {
                            const LONG_PTR pipeline = SetWindowLongPtrA(dialog, GWLP_WNDPROC, unsubclassed);
                            const double base = NullMessageCost(dialog);
                            SetWindowSubclass(dialog, PassOn, 2, 0);
                            system.push_back(NullMessageCost(dialog) - base);
                            RemoveWindowSubclass(dialog, PassOn, 2);
                            SetWindowLongPtrA(dialog, GWLP_WNDPROC, pipeline);
                            through.push_back(NullMessageCost(dialog) - base);
                            bare.push_back(base);
                        }
                    });
    std::printf("  null message: %.0f ns to the bare window\n", Median(bare));
    TKxOpenDialog full(&Application());
    full.SetOnEventHooking([](TObject*, TMessage&, bool&) {});
    full.SetOnEventHook([](TMessage&) {});
    // Its hooks go with the dialog: two dialogs in turn.
    std::vector<double> withEvents;
    for (int pair = 0; pair < 41; ++pair) {
        const auto costOf = [](const std::function<void()>& show) {
            std::vector<double> costs;
            WithShownDialog(show, [&](HWND dialog) {
                for (int round = 0; round < 9; ++round) {
                    costs.push_back(NullMessageCost(dialog));
                }
            });
            return Median(costs);
        };
        const double base = costOf(ShowBareOpenDialog);
        withEvents.push_back(costOf([&] { full.Execute(); }) - base);
    }
    return {{"null message, added by the pipeline", Median(through), "added by SetWindowSubclass", Median(system), "ns",
             1.0},
            {"null message, added with all events", Median(withEvents), "a microsecond", 1000, "ns", 1.0}};
}

} // namespace kx::bench
