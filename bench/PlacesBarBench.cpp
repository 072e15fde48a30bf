// SPDX-License-Identifier: MIT
// Measures the making and painting of the places bar.

#include "Benches.h"

#include "kx/places/KxPlacesBarForm.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <shellapi.h>

#include <functional>
#include <memory>

namespace kx::bench {

namespace {

using TFormPtr = std::unique_ptr<TForm, TFreeDeleter>;

constexpr char IconFile[] = "Shell32.dll";
constexpr int Width = 87; ///< Pixels of a button.
constexpr int Height = 49;

double Microseconds(const std::function<void()>& action) {
    const double start = Now();
    action();
    return (Now() - start) * 1e6;
}

void FillPlaces(TKxPlaces& places, int count) {
    for (int i = 0; i < count; ++i) {
        TKxPlace& place = *places.Add();
        place.SetPlaceName("Place " + IntToStr(i));
        place.SetPlaceDesc("Hint of place " + IntToStr(i));
        place.SetPlaceIconDll(IconFile);
        place.SetPlaceIcon(i % 40);
        place.SetPlaceHotIcon(i % 40 + 1);
    }
}

/// What a bar of as many buttons costs without the library: as many plain buttons.
void RebuildPlain(TToolBar& bar, const TKxPlaces& places) {
    bar.BeginUpdate();
    while (bar.ComponentCount() > 0) {
        bar.Components(0)->Free();
    }
    for (int i = places.Count() - 1; i >= 0; --i) {
        auto* const button = new TToolButton(&bar);
        button->SetParent(&bar);
        button->SetStyle(tbsCheck);
        button->SetCaption(places[i].PlaceName());
        button->SetHint(places[i].PlaceDesc());
    }
    bar.EndUpdate();
}

std::unique_ptr<TKxPlacesBarFrm, TFreeDeleter> ShownBar(TKxPlaces& places) {
    std::unique_ptr<TKxPlacesBarFrm, TFreeDeleter> form(NewForm<TKxPlacesBarFrm>(nullptr));
    form->SetBounds(100, 100, 91, 232);
    form->SetPlaces(&places);
    form->Show();
    Application().ProcessMessages();
    return form;
}

TRow MeasureRebuild() {
    TKxPlacesBarOptions options;
    FillPlaces(options.Places(), 200);
    const auto ours = ShownBar(options.Places());
    const auto plain = ShownBar(options.Places());
    std::vector<double> ourTimes;
    std::vector<double> plainTimes;
    for (int i = 0; i < 21; ++i) {
        plainTimes.push_back(Microseconds([&] { RebuildPlain(*plain->ToolBar1, options.Places()); }) / 1e3);
        ourTimes.push_back(Microseconds([&] { options.Places().UpdatePlacesOn(*ours->ToolBar1); }) / 1e3);
    }
    return ComparePairs("bar of 200 places made anew", ourTimes, "plain buttons", plainTimes, "ms", 1.5);
}

/// A window with a system button that its parent draws: the icon above the caption.
class TOwnerDrawn {
public:
    TOwnerDrawn(HWND parent, HICON icon, HFONT font) : FIcon(icon), FFont(font) {
        WNDCLASSA info{};
        info.lpfnWndProc = WindowProc;
        info.hInstance = HInstance();
        info.lpszClassName = "KxBenchOwnerDrawn";
        RegisterClassA(&info);
        FWindow.reset(CreateWindowExA(0, info.lpszClassName, "", WS_CHILD | WS_VISIBLE, 0, 0, Width, 232, parent,
                                      nullptr, HInstance(), nullptr));
        SetWindowLongPtrA(FWindow.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        FButton = CreateWindowExA(0, "BUTTON", "Place 0", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 0, 0, Width, Height,
                                  FWindow.get(), nullptr, HInstance(), nullptr);
    }
    HWND Button() const { return FButton; }

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_DRAWITEM) {
            const auto* const self = reinterpret_cast<TOwnerDrawn*>(GetWindowLongPtrA(window, GWLP_USERDATA));
            const auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
            self->DrawButton(item.hwndItem, item.hDC);
            return TRUE;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    }
    void DrawButton(HWND button, HDC dc) const {
        char caption[64];
        const int length = GetWindowTextA(button, caption, sizeof caption);
        const RECT all{0, 0, Width, Height};
        const TSelectObject font(dc, FFont);
        SIZE size{};
        GetTextExtentPoint32A(dc, caption, length, &size);
        FillRect(dc, &all, GetSysColorBrush(COLOR_BTNSHADOW));
        DrawIconEx(dc, Width / 2 - 16, Height / 2 - 16 - size.cy / 2, FIcon, 32, 32, 0, nullptr, DI_NORMAL);
        SetBkColor(dc, GetSysColor(COLOR_BTNSHADOW));
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        TextOutA(dc, Width / 2 - size.cx / 2, Height - size.cy - 2, caption, length);
    }

    HICON FIcon;
    HFONT FFont;
    unique_hwnd FWindow;
    HWND FButton = nullptr;
};

/// Both are painted by the window's own paint message, on the screen. What a place button shows changes in between, so
/// that it is drawn anew each time and its picture is not just copied once more.
TRow MeasurePainting() {
    TKxPlacesBarOptions options;
    FillPlaces(options.Places(), 1);
    options.Places()[0].SetPlaceHotIcon(0); // the icon of the other button, also while this one is down
    const auto bar = ShownBar(options.Places());
    options.Places().UpdatePlacesOn(*bar->ToolBar1);
    TToolButton& button = *bar->ToolBar1->Buttons(0);
    const auto other = ShownBar(options.Places());
    other->SetLeft(300);
    other->ps1->SetVisible(false);
    const TFont font;
    const unique_hicon icon(ExtractIconA(HInstance(), IconFile, 0));
    const TOwnerDrawn plain(other->Panel1->Handle(), icon.get(), font.Handle());

    const auto paint = [](HWND window) {
        const RECT area{0, 0, Width, Height};
        return Microseconds([&] {
            RedrawWindow(window, &area, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
            GdiFlush();
        });
    };
    std::vector<double> ours;
    std::vector<double> plains;
    for (int i = 0; i < 1000; ++i) {
        // Buttons are painted while the mouse moves; where it rests, the emulator asks the screen about it each time.
        SetCursorPos(10 + i % 2, 10);
        Application().ProcessMessages();
        plains.push_back(paint(plain.Button()));
        button.SetDown(!button.Down());
        ours.push_back(paint(bar->ToolBar1->Handle()));
    }
    return ComparePairs("place button and its bar painted anew", ours, "plain owner-drawn button painted", plains, "us",
                        1.10);
}

} // namespace

std::vector<TRow> MeasurePlacesBar() { return {MeasureRebuild(), MeasurePainting()}; }

} // namespace kx::bench
