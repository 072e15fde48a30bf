// SPDX-License-Identifier: MIT
// Shows handles, lines and icons over a form.

#include "designer/Overlay.h"

#include "designer/ClassIcons.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {

int NameHeight() { return SystemLength(15); } // the font of the names is the system's

TRect GhostNameRect(const TOverlayItem& item) {
    const TRect& r = item.Bounds;
    const int longest = SystemLength(90);
    return {r.Left, r.Top, std::min(r.Right, r.Left + longest), std::min(r.Bottom, r.Top + NameHeight())};
}

class TRegion {
public:
    TRegion() : FHandle(CreateRectRgn(0, 0, 0, 0)) {}
    void Add(const TRect& r) {
        const unique_hrgn part(CreateRectRgn(r.Left, r.Top, r.Right, r.Bottom));
        CombineRgn(FHandle.get(), FHandle.get(), part.get(), RGN_OR);
    }
    void AddFrame(const TRect& r) {
        Add({r.Left, r.Top, r.Right, r.Top + 1});
        Add({r.Left, r.Bottom - 1, r.Right, r.Bottom});
        Add({r.Left, r.Top, r.Left + 1, r.Bottom});
        Add({r.Right - 1, r.Top, r.Right, r.Bottom});
    }
    HRGN Release() { return FHandle.release(); }

private:
    unique_hrgn FHandle;
};

} // namespace

TRect IconNameRect(const TOverlayItem& icon) {
    const TRect& r = icon.Bounds;
    const int reach = SystemLength(24); // how far the name may stand out on both sides
    return {r.Left - reach, r.Bottom, r.Right + reach, r.Bottom + NameHeight()};
}

const TClass& TOverlay::StaticClass() {
    static const TClassBuilder<TOverlay> cls("TOverlay", TCustomControl::StaticClass());
    return cls.Class();
}

TOverlay::TOverlay(TComponent* owner) : TCustomControl(owner) {}
TOverlay::~TOverlay() = default;

void TOverlay::ShowOver(HWND form, const TRect& client, std::vector<TOverlayItem> items) {
    const bool isNew = ParentWindow() != form || !HandleAllocated();
    if (!isNew && items == FItems && BoundsRect() == client) {
        return;
    }
    FItems = std::move(items);
    SetBoundsRect(client);
    if (isNew) {
        SetParentWindow(form);
    }
    HandleNeeded();
    ApplyRegion();
    SetWindowPos(WindowHandle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    Invalidate();
}

void TOverlay::LeaveForm() {
    FItems.clear();
    if (HandleAllocated()) {
        DestroyHandle();
    }
    SetParentWindow(nullptr);
}

void TOverlay::ApplyRegion() {
    TRegion region;
    for (const TOverlayItem& item : FItems) {
        switch (item.Kind) {
        case TOverlayItem::Empty:
        case TOverlayItem::Outline: region.AddFrame(item.Bounds); break;
        case TOverlayItem::Ghost:
            region.AddFrame(item.Bounds);
            region.Add(GhostNameRect(item));
            break;
        case TOverlayItem::Icon:
        case TOverlayItem::SelectedIcon:
            region.Add(item.Bounds);
            region.Add(IconNameRect(item));
            break;
        default: region.Add(item.Bounds);
        }
    }
    SetWindowRgn(WindowHandle(), region.Release(), TRUE); // the system owns it now
}

void TOverlay::Paint() {
    TCanvas& canvas = Canvas();
    canvas.Font().SetName("Tahoma");
    canvas.Font().SetSize(7);
    const auto fill = [&canvas](const TRect& r, TColor color) {
        canvas.Brush().SetColor(color);
        canvas.FillRect(r);
    };
    const auto text = [&](const TRect& r, TColor color, const std::string& what, UINT format) {
        canvas.Font().SetColor(color);
        TRect area = r;
        canvas.DrawText(what, area, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX | format);
    };
    for (const TOverlayItem& item : FItems) {
        const TRect& r = item.Bounds;
        switch (item.Kind) {
        case TOverlayItem::Handle:
            fill(r, clWhite);
            fill({r.Left + 1, r.Top + 1, r.Right - 1, r.Bottom - 1}, clHighlight);
            break;
        case TOverlayItem::DimHandle: fill(r, clBtnShadow); break;
        case TOverlayItem::Empty:
        case TOverlayItem::Outline:
            canvas.Brush().SetColor(item.Kind == TOverlayItem::Empty ? clBtnShadow : clHighlight);
            canvas.FrameRect(r);
            break;
        case TOverlayItem::Guide: fill(r, clRed); break;
        case TOverlayItem::Ghost:
            canvas.Brush().SetColor(clBtnShadow);
            canvas.FrameRect(r);
            fill(GhostNameRect(item), clBtnFace);
            canvas.Brush().SetColor(clBtnShadow);
            canvas.FrameRect(GhostNameRect(item));
            canvas.Brush().SetColor(clBtnFace);
            text(GhostNameRect(item), clGrayText, item.Text, DT_CENTER);
            break;
        case TOverlayItem::Icon:
        case TOverlayItem::SelectedIcon: {
            const bool isSelected = item.Kind == TOverlayItem::SelectedIcon;
            fill(r, clBtnFace);
            canvas.Brush().SetColor(isSelected ? clHighlight : clBtnShadow);
            canvas.FrameRect(r);
            DrawClassIcon(canvas, {r.Left + 2, r.Top + 2, r.Right - 2, r.Bottom - 2}, item.Class);
            fill(IconNameRect(item), isSelected ? clHighlight : clBtnFace);
            text(IconNameRect(item), isSelected ? clHighlightText : clBtnText, item.Text, DT_CENTER);
            break;
        }
        case TOverlayItem::Badge:
            fill(r, clHighlight);
            text(r, clHighlightText, item.Text, DT_CENTER);
            break;
        }
    }
}

} // namespace kx::designer
