// SPDX-License-Identifier: MIT
// What the designer's window remembers: its place, the sizes of its panes, and the grid.

#include "designer/DesignerForm.h"
#include "designer/GridForm.h"
#include "designer/Settings.h"
#include "kx/win/Dpi.h"
#include "kx/win/Monitors.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kx::designer {

namespace {

constexpr const char* WindowSettings = "Window";
constexpr const char* GridSettings = "Grid";
constexpr int GreatestLength = 0x7FFF; // no window is larger or further away

std::optional<TRect> PlaceIn(const TSettings& settings) {
    constexpr int none = GreatestLength + 1;
    const TRect r{settings.Number("Left", -GreatestLength, GreatestLength, none),
                  settings.Number("Top", -GreatestLength, GreatestLength, none),
                  settings.Number("Width", 1, GreatestLength, none),
                  settings.Number("Height", 1, GreatestLength, none)};
    const bool isWhole = r.Left != none && r.Top != none && r.Right != none && r.Bottom != none;
    return isWhole ? std::optional(TRect{r.Left, r.Top, r.Left + r.Right, r.Top + r.Bottom}) : std::nullopt;
}

/// The place itself when the caption of a window there can be reached with the mouse; else the nearest one that a
/// monitor shows whole.
TRect Reachable(const TRect& r) {
    const int caption = SystemMetric(SM_CYCAPTION, SystemDpi());
    const int reach = SystemLength(100);
    const TRect area = MonitorAt(r).Free;
    const int seen = std::min(r.Right, area.Right) - std::max(r.Left, area.Left);
    if (seen >= reach && r.Top >= area.Top && r.Top + caption <= area.Bottom) {
        return r;
    }
    const int width = std::min(Width(r), Width(area));
    const int height = std::min(Height(r), Height(area));
    const int left = std::clamp(r.Left, area.Left, area.Right - width);
    const int top = std::clamp(r.Top, area.Top, area.Bottom - height);
    return {left, top, left + width, top + height};
}

/// The place of the window when it is neither an icon nor as large as the screen.
TRect OrdinaryPlace(const WINDOWPLACEMENT& placement) {
    const TRect r = FromRECT(placement.rcNormalPosition); // of what the system's bars leave to programs
    const TMonitorPlace monitor = MonitorAt(r);
    const int x = monitor.Free.Left - monitor.Whole.Left;
    const int y = monitor.Free.Top - monitor.Whole.Top;
    return {r.Left + x, r.Top + y, r.Right + x, r.Bottom + y};
}

} // namespace

// Lengths are remembered in pixels of the resolution for which the window was designed.

void TDesignerForm::RestorePlace() {
    if (const std::optional<TRect> place = PlaceIn(TSettings(WindowSettings))) {
        SetPosition(poDesigned);
        SetBoundsRect(Reachable({place->Left, place->Top, place->Left + ScaleLength(kx::Width(*place)),
                                 place->Top + ScaleLength(kx::Height(*place))}));
    }
}

/// The panes come last: those of a window as large as the screen may have no room in an ordinary one.
void TDesignerForm::FormShow(TObject*) {
    if (std::exchange(FHasPanes, true)) {
        return;
    }
    const TSettings settings(WindowSettings);
    if (settings.Flag("Maximized", false)) {
        SetWindowState(wsMaximized);
    }
    const auto length = [&](const char* name, int otherwise) {
        const int value = settings.Number(name, 0, GreatestLength, -1);
        return value < 0 ? otherwise : ScaleLength(value);
    };
    LeftPanel->SetWidth(length("LeftPane", LeftPanel->Width()));
    ProjectList->SetHeight(length("ProjectPane", ProjectList->Height()));
    Structure->SetHeight(length("StructurePane", Structure->Height()));
    FitPanes();
}

void TDesignerForm::RememberWindow() const {
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    if (!HandleAllocated() || !GetWindowPlacement(WindowHandle(), &placement)) {
        return;
    }
    const auto unscaled = [this](int length) { return ScaleValue(length, DefaultDpi, Font().PixelsPerInch()); };
    const TRect place = OrdinaryPlace(placement);
    const bool isIcon = placement.showCmd == SW_SHOWMINIMIZED;
    const TSettings settings(WindowSettings);
    settings.SetNumber("Left", place.Left);
    settings.SetNumber("Top", place.Top);
    settings.SetNumber("Width", unscaled(kx::Width(place)));
    settings.SetNumber("Height", unscaled(kx::Height(place)));
    settings.SetFlag("Maximized",
                     isIcon ? (placement.flags & WPF_RESTORETOMAXIMIZED) != 0 : placement.showCmd == SW_SHOWMAXIMIZED);
    settings.SetNumber("LeftPane", unscaled(LeftPanel->Width()));
    settings.SetNumber("ProjectPane", unscaled(ProjectList->Height()));
    settings.SetNumber("StructurePane", unscaled(Structure->Height()));
}

/// Panes that were made large in a large window leave room for the rest in a smaller one.
void TDesignerForm::FitPanes() {
    const int across = ClientWidth() - LeftSplitter->Width() - LeftSplitter->MinSize();
    LeftPanel->SetWidth(std::min(LeftPanel->Width(), std::max(across, 0)));
    int down = LeftPanel->ClientHeight() - 2 * LeftPanel->BorderWidth() - StructureSplitter->MinSize();
    for (int i = 0; i < LeftPanel->ControlCount(); ++i) {
        const TControl* const control = LeftPanel->Controls(i);
        down -= control == ProjectList || control == Structure || control == Inspector ? 0 : control->Height();
    }
    down = std::max(down, 0);
    ProjectList->SetHeight(std::min(ProjectList->Height(), down));
    Structure->SetHeight(std::min(Structure->Height(), down - ProjectList->Height()));
}

void TDesignerForm::PanesResize(TObject*) {
    if (FHasPanes && !IsIconic(WindowHandle())) {
        FitPanes();
    }
}

// --- The grid

void TDesignerForm::RestoreGrid() {
    const TSettings settings(GridSettings);
    const auto length = [&](const char* name, int otherwise) {
        return settings.Number(name, TDesignGrid::Least, TDesignGrid::Greatest, otherwise);
    };
    TDesignGrid grid;
    grid.Size = {length("Width", grid.Size.X), length("Height", grid.Size.Y)};
    grid.IsShown = settings.Flag("Show", grid.IsShown);
    grid.Snaps = settings.Flag("Snap", grid.Snaps);
    Surface->SetGrid(grid);
    Surface->SetUsesGuides(settings.Flag("Guides", Surface->UsesGuides()));
}

void TDesignerForm::SetGrid(const TDesignGrid& value) {
    Surface->SetGrid(value);
    const TSettings settings(GridSettings);
    settings.SetNumber("Width", value.Size.X);
    settings.SetNumber("Height", value.Size.Y);
    settings.SetFlag("Show", value.IsShown);
    settings.SetFlag("Snap", value.Snaps);
}

void TDesignerForm::ToggleGrid() {
    TDesignGrid grid = Surface->Grid();
    grid.IsShown = !grid.IsShown;
    SetGrid(grid);
}

void TDesignerForm::ToggleGuides() {
    Surface->SetUsesGuides(!Surface->UsesGuides());
    TSettings(GridSettings).SetFlag("Guides", Surface->UsesGuides());
}

void TDesignerForm::EditGrid() {
    const std::unique_ptr<TGridForm, TFreeDeleter> form(kx::NewForm<TGridForm>(nullptr));
    form->SetGrid(Surface->Grid());
    if (form->ShowModal() == mrOk) {
        SetGrid(form->Grid());
    }
}

} // namespace kx::designer
