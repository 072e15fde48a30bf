// SPDX-License-Identifier: MIT
// Measures the form designer.

#include "Benches.h"

#include "designer/DesignerForm.h"
#include "designer/Files.h"
#include "designer/Settings.h"
#include "designer/StandardPackage.h"
#include "kx/core/Barrier.h"
#include "kx/core/SysUtils.h"
#include "kx/win/Handles.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"
#include "support/Programs.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>

namespace kx::bench {

namespace {

/// Settings of the designer's that begin empty, and leave those of the user alone.
class TOwnSettings {
public:
    TOwnSettings() { designer::SetSettingsKey(Key); }
    TOwnSettings(const TOwnSettings&) = delete;
    TOwnSettings& operator=(const TOwnSettings&) = delete;
    ~TOwnSettings() { TRegistry().DeleteKey(Key); }

private:
    static constexpr const char* Key = "Software\\kxqdlgs70\\Bench";
};

using TDesigner = std::unique_ptr<designer::TDesignerForm, TFreeDeleter>;

TDesigner ShowDesigner() {
    TDesigner form(NewForm<designer::TDesignerForm>(nullptr));
    form->SetPosition(poDesigned);
    form->SetBounds(0, 0, 1000, 720);
    form->Show();
    RedrawWindow(form->Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    return form;
}

/// A form with so many buttons, in rows of ten.
std::string FormWithButtons(int count) {
    std::string text = "object Main: TMain\n  ClientWidth = 600\n  ClientHeight = 400\n";
    for (int i = 0; i < count; ++i) {
        text += "  object Button" + IntToStr(i) + ": TButton\n    Left = " + IntToStr(8 + i % 10 * 56) +
                "\n    Top = " + IntToStr(8 + i / 10 * 30) + "\n    Width = 50\n    Height = 24\n  end\n";
    }
    return text + "end\n";
}

void Repaint(HWND window) { RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); }

/// The windows of the controls by 8 pixels to and fro, all at once.
void MoveBare(const std::vector<TControl*>& controls, int way) {
    HDWP moves = BeginDeferWindowPos(static_cast<int>(controls.size()));
    for (TControl* control : controls) {
        const HWND window = dynamic_cast<TWinControl&>(*control).WindowHandle();
        moves = DeferWindowPos(moves, window, nullptr, control->Left() + way, control->Top(), 0, 0,
                               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    EndDeferWindowPos(moves);
}

TRow MeasureDrag() {
    const test::TTempFolder folder("bench");
    const TDesigner form = ShowDesigner();
    form->OpenPath(folder.AddFile("Main.dfm", FormWithButtons(40)));
    designer::TFormDesigner& open = form->Document()->Designer();
    TDesignSelection selection;
    for (int i = 0; i < 20; ++i) {
        selection.push_back(open.Form().FindComponent("Button" + IntToStr(i)));
    }
    open.Select(selection);
    form->Command("ShowGuides");
    Repaint(form->Handle());

    const designer::TDesignSurface& surface = form->DesignSurface();
    const HWND window = surface.WindowHandle();
    const TRect first = surface.PlaceOf(*open.SelectedControls().front());
    const TPoint from{first.Left + 20, first.Top + 12};
    const auto at = [&](int way) { return MAKELPARAM(from.X + way, from.Y); };
    const std::vector<TControl*> controls = open.SelectedControls();
    const int left = controls.front()->Left();
    std::vector<double> ours, bare;
    constexpr int steps = 200;
    for (int i = 0; i < steps; ++i) {
        const int way = i % 2 == 0 ? 16 : 8;
        if (i == 0) {
            SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, at(0));
            SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, at(8));
            Repaint(window);
        }
        double start = Now();
        SendMessageA(window, WM_MOUSEMOVE, MK_LBUTTON, at(way));
        Repaint(window);
        ours.push_back((Now() - start) * 1e6);
        if (controls.front()->Left() != left + way) {
            throw Exception("the controls do not move");
        }
    }
    SendMessageA(window, WM_KEYDOWN, VK_ESCAPE, 0);
    SendMessageA(window, WM_LBUTTONUP, 0, at(0));
    Repaint(window);
    for (int i = 0; i < steps; ++i) {
        const double start = Now();
        MoveBare(controls, i % 2 == 0 ? 8 : -8);
        Repaint(window);
        bare.push_back((Now() - start) * 1e6);
    }
    return ComparePairs("designer: drag step of 20 controls", ours, "the same windows by bare calls", bare, "us", 1.5);
}

/// The largest form of the library: the one in which a place is set up.
std::string LargestForm() {
    const HMODULE module = GetModuleHandleA(nullptr);
    const HRSRC found = FindResourceA(module, "TKXADDPLACEFRM", reinterpret_cast<LPCSTR>(RT_RCDATA));
    const auto* const bytes = static_cast<const char*>(LockResource(LoadResource(module, found)));
    return {bytes, SizeofResource(module, found)};
}

struct TSearch {
    DWORD Process;
    HWND Found;
};

BOOL CALLBACK FindDesigner(HWND window, LPARAM lParam) {
    auto& search = *reinterpret_cast<TSearch*>(lParam);
    DWORD owner = 0;
    char name[64] = "";
    GetWindowThreadProcessId(window, &owner);
    GetClassNameA(window, name, sizeof name);
    if (owner == search.Process && IsWindowVisible(window) && std::string_view(name) == "TDesignerForm") {
        search.Found = window;
    }
    return TRUE;
}

bool WaitsForPaint(HWND window) { return IsWindowVisible(window) && GetUpdateRect(window, nullptr, FALSE); }

BOOL CALLBACK FindUnpainted(HWND window, LPARAM lParam) {
    auto& waits = *reinterpret_cast<bool*>(lParam);
    waits = waits || WaitsForPaint(window);
    return TRUE;
}

/// The main window of a designer that another process runs, once it and all in it is painted; else null.
HWND PaintedWindowOf(DWORD process) {
    TSearch search{process, nullptr};
    EnumWindows(FindDesigner, reinterpret_cast<LPARAM>(&search));
    if (!search.Found) {
        return nullptr;
    }
    bool waits = WaitsForPaint(search.Found);
    EnumChildWindows(search.Found, FindUnpainted, reinterpret_cast<LPARAM>(&waits));
    return waits ? nullptr : search.Found;
}

/// Milliseconds from the start of the program until its window is painted.
double StartOfProgram() {
    const double begin = Now();
    const test::TStartedProgram program = test::StartProgram("..\\apps\\designer\\designer.exe");
    constexpr double longest = 30; // seconds
    HWND window = nullptr;
    while (!window && Now() - begin < longest) {
        window = PaintedWindowOf(program.Id);
        Sleep(5);
    }
    const double took = (Now() - begin) * 1e3;
    if (!window) {
        TerminateProcess(program.Process.get(), 1);
        throw Exception("the designer does not show its window");
    }
    PostMessageA(window, WM_CLOSE, 0, 0);
    WaitForSingleObject(program.Process.get(), 10'000);
    return took;
}

TRow Against(const std::string& what, const std::vector<double>& milliseconds, double goal) {
    return {what, Median(milliseconds), "what is wanted", goal, "ms", 1.0};
}

} // namespace

std::vector<TRow> MeasureDesigner() {
    designer::RegisterStandardPackage();
    const TOwnSettings settings;
    std::vector<TRow> rows{MeasureDrag()};
    std::vector<double> programs, starts, opens;
    const test::TTempFolder folder("bench");
    const std::string path = folder.AddFile("Place.dfm", LargestForm());
    constexpr int rounds = 9;
    for (int i = 0; i < rounds; ++i) {
        programs.push_back(StartOfProgram());
        double start = Now();
        const TDesigner form = ShowDesigner();
        starts.push_back((Now() - start) * 1e3);
        start = Now();
        form->OpenPath(path);
        Repaint(form->Handle());
        opens.push_back((Now() - start) * 1e3);
    }
    // What else the machine does only adds to it: the shortest counts.
    rows.push_back({"designer: from its start to its window", *std::ranges::min_element(programs), "what is wanted",
                    1000, "ms", 1.0});
    rows.push_back(Against("designer: its window", starts, 1000));
    rows.push_back(Against("designer: the largest form opens", opens, 100));
    return rows;
}

} // namespace kx::bench
