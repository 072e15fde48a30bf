// SPDX-License-Identifier: MIT
// How a control's window is painted, with the controls in it that have none.

#include "kx/ui/controls/WinControl.h"

#include "kx/ui/controls/ControlCanvas.h"
#include "kx/win/Handles.h"
#include "kx/win/PerThread.h"
#include "kx/win/Windows.h"

namespace kx {

namespace {

/// BeginPaint and EndPaint. BeginPaint has frame and background drawn by messages, whose handlers may end the window.
class TPaintScope {
public:
    explicit TPaintScope(HWND window) : FWindow(window) { BeginPaint(window, &FPaint); }
    TPaintScope(const TPaintScope&) = delete;
    TPaintScope& operator=(const TPaintScope&) = delete;
    ~TPaintScope() {
        if (Lives()) {
            EndPaint(FWindow, &FPaint);
        }
    }
    bool Lives() const { return IsWindow(FWindow) != 0; }
    const PAINTSTRUCT& Paint() const { return FPaint; }

private:
    HWND FWindow;
    PAINTSTRUCT FPaint{};
};

/// Restores at the end of a scope what was selected into a context, unless the context has gone.
class TSavedDC {
public:
    explicit TSavedDC(HDC dc) : TSavedDC(TDrawTarget(dc)) {}
    explicit TSavedDC(const TDrawTarget& target) : FTarget(target), FState(SaveDC(target.Handle())) {}
    TSavedDC(const TSavedDC&) = delete;
    TSavedDC& operator=(const TSavedDC&) = delete;
    ~TSavedDC() {
        if (FTarget.Lives()) {
            RestoreDC(FTarget.Handle(), FState);
        }
    }

private:
    TDrawTarget FTarget;
    int FState;
};

/// A picture in memory that is painted in before it is copied to the screen. It is kept from one painting to the next,
/// since making one takes longer than painting most controls.
class TPaintBuffer {
public:
    /// A buffer of at least that size for the length of a scope.
    class TScope {
    public:
        TScope(HDC like, int width, int height) : FBuffer(std::move(*Kept)) { // paintings may nest
            if (!FBuffer || FBuffer->FWidth < width || FBuffer->FHeight < height) {
                FBuffer = std::make_unique<TPaintBuffer>(like, width, height);
            }
        }
        TScope(const TScope&) = delete;
        TScope& operator=(const TScope&) = delete;
        ~TScope() {
            if (FBuffer->FWidth * FBuffer->FHeight <= MostPixelsKept) {
                *Kept = std::move(FBuffer);
            }
        }
        HDC Handle() const { return FBuffer->FDC.get(); }

    private:
        std::unique_ptr<TPaintBuffer> FBuffer;
    };

    TPaintBuffer(HDC like, int width, int height)
        : FWidth(width), FHeight(height), FDC(CreateCompatibleDC(like)),
          FBitmap(CreateCompatibleBitmap(like, width, height)), FSelected(FDC.get(), FBitmap.get()) {}

private:
    static constexpr int MostPixelsKept = 512 * 512;
    static const TPerThread<std::unique_ptr<TPaintBuffer>> Kept;

    int FWidth;
    int FHeight;
    unique_hdc FDC;
    unique_hbitmap FBitmap;
    TSelectObject FSelected;
};

const TPerThread<std::unique_ptr<TPaintBuffer>> TPaintBuffer::Kept;

} // namespace

// --- TWinControl

/// The controls without a window draw on this one's.
void TWinControl::ContextStale() {
    for (TControl* control : FControls) {
        if (dynamic_cast<TGraphicControl*>(control)) {
            control->ContextStale();
        }
    }
}

bool TWinControl::HasGraphicControls() const { return FControls.size() != FTabList.size(); }

bool TWinControl::NeedsBuffer() const { return !FSystemClass && (FDoubleBuffered || HasGraphicControls()); }

/// Whether there is anything of the window outside its client area.
bool TWinControl::HasFrame() const {
    RECT window{};
    RECT client{};
    return !GetWindowRect(FHandle, &window) || !GetClientRect(FHandle, &client) ||
           client.right != window.right - window.left || client.bottom != window.bottom - window.top;
}

void TWinControl::PaintHandler(TMessage& message) {
    if (FSystemClass && !NeedsBuffer()) {
        if (Outlives(*this, [&] { DefaultHandler(message); }) && FHandle && HasGraphicControls()) {
            const TWindowDC dc(FHandle);
            PaintControls(dc.Handle());
        }
        return;
    }
    if (message.WParam) {
        PaintAll(message.WParamDC());
        return;
    }
    const TAlive alive(*this);
    const TPaintScope scope(FHandle);
    if (!alive || !scope.Lives()) {
        return; // the window that was made in its place gets a painting of its own
    }
    if (NeedsBuffer()) {
        PaintBuffered(scope.Paint().hdc, scope.Paint().rcPaint);
    } else {
        PaintAll(scope.Paint().hdc);
    }
}

void TWinControl::PaintBuffered(HDC dc, const RECT& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width <= 0 || height <= 0) {
        return;
    }
    const TDrawTarget target(dc);
    const TPaintBuffer::TScope buffer(dc, width, height);
    const HDC memory = buffer.Handle();
    const TSavedDC unchanged(memory);
    SetWindowOrgEx(memory, area.left, area.top, nullptr);
    IntersectClipRect(memory, area.left, area.top, area.right, area.bottom);
    {
        const TSavedDC saved(memory);
        EraseBackground(memory);
        PaintAll(memory);
    }
    if (target.Lives()) {
        BitBlt(dc, area.left, area.top, width, height, memory, area.left, area.top, SRCCOPY);
    }
}

void TWinControl::PaintAll(HDC dc) {
    const TDrawTarget target(dc);
    const bool outlived = Outlives(*this, [&] {
        const TSavedDC saved(target);
        PaintWindow(dc);
    });
    if (outlived && target.Lives()) {
        PaintControls(dc);
    }
}

void TWinControl::PaintControls(HDC dc) {
    const TAlive alive(*this);
    const TDrawTarget target(dc);
    for (size_t i = 0; alive && target.Lives() && i < FControls.size(); ++i) {
        auto* const control = dynamic_cast<TGraphicControl*>(FControls[i]);
        const RECT bounds = ToRECT(FControls[i]->BoundsRect());
        if (control && control->Visible() && RectVisible(dc, &bounds)) {
            const TSavedDC saved(target);
            POINT origin;
            GetWindowOrgEx(dc, &origin);
            SetWindowOrgEx(dc, origin.x - bounds.left, origin.y - bounds.top, nullptr);
            IntersectClipRect(dc, 0, 0, control->Width(), control->Height());
            Guarded([&] { control->PaintOn(dc); }); // when one fails, the others are painted all the same
        }
    }
}

void TWinControl::PaintTo(HDC dc, int x, int y) {
    const TSavedDC saved(dc);
    POINT origin;
    GetWindowOrgEx(dc, &origin);
    SetWindowOrgEx(dc, origin.x - x, origin.y - y, nullptr);
    IntersectClipRect(dc, 0, 0, ClientWidth(), ClientHeight());
    EraseBackground(dc);
    PaintAll(dc);
}

void TWinControl::PaintWindow(HDC) {}

bool TWinControl::HasThemedBackground() const { return Parent() && ParentColor() && Parent()->HasThemedBackground(); }

void TWinControl::EraseBackground(HDC dc) {
    if (HasThemedBackground()) {
        POINT corner{};
        MapWindowPoints(FHandle, Parent()->FHandle, &corner, 1);
        const TSavedDC saved(dc);
        POINT origin;
        GetWindowOrgEx(dc, &origin);
        SetWindowOrgEx(dc, origin.x + corner.x, origin.y + corner.y, nullptr);
        Parent()->EraseBackground(dc);
        return;
    }
    const RECT client = ToRECT(ClientRect());
    FillRect(dc, &client, FBrush.Handle());
}

HBRUSH TWinControl::ControlColor(HDC dc) {
    SetTextColor(dc, static_cast<COLORREF>(ColorToRGB(Font().Color())));
    SetBkColor(dc, static_cast<COLORREF>(ColorToRGB(Color())));
    return FBrush.Handle();
}

// --- TGraphicControl

const TClass& TGraphicControl::StaticClass() {
    static const TClassBuilder<TGraphicControl> cls("TGraphicControl", TControl::StaticClass());
    return cls.Class();
}

TGraphicControl::TGraphicControl(TComponent* owner)
    : TControl(owner), FCanvas(std::make_unique<TControlCanvas>(*this)) {}

TGraphicControl::~TGraphicControl() = default;

TCanvas& TGraphicControl::Canvas() { return *FCanvas; }

void TGraphicControl::ContextStale() { static_cast<TControlCanvas&>(*FCanvas).LetGo(); }

void TGraphicControl::PaintOn(HDC dc) {
    const TControlCanvas::TScope scope(*FCanvas, dc);
    Paint();
}

// --- TCustomControl

const TClass& TCustomControl::StaticClass() {
    static const TClassBuilder<TCustomControl> cls("TCustomControl", TWinControl::StaticClass());
    return cls.Class();
}

TCustomControl::TCustomControl(TComponent* owner)
    : TWinControl(owner), FCanvas(std::make_unique<TControlCanvas>(*this)) {}

TCustomControl::~TCustomControl() = default;

TCanvas& TCustomControl::Canvas() { return *FCanvas; }

void TCustomControl::ContextStale() {
    static_cast<TControlCanvas&>(*FCanvas).LetGo();
    TWinControl::ContextStale();
}

void TCustomControl::PaintWindow(HDC dc) {
    const TControlCanvas::TScope scope(*FCanvas, dc);
    Paint();
}

} // namespace kx
