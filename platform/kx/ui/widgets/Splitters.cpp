// SPDX-License-Identifier: MIT
// Splitters.

#include "kx/ui/widgets/Splitters.h"

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

const TClass& TSplitter::StaticClass() {
    static const TClassBuilder<TSplitter> cls("TSplitter", TGraphicControl::StaticClass(), [](auto& c) {
        using T = TSplitter;
        c.Creatable();
        c.Property("Align", &T::Align, &T::SetAlign).Default = alLeft;
        c.Property("AutoSnap", &T::AutoSnap, &T::SetAutoSnap).Default = true;
        c.Property("Beveled", &T::Beveled, &T::SetBeveled).Default = false;
        c.Property("Cursor", &T::Cursor, &T::SetCursor).Default = crHSplit;
        c.Property("MinSize", &T::MinSize, &T::SetMinSize).Default = 30;
        c.Property("ResizeStyle", &T::ResizeStyle, &T::SetResizeStyle).Default = rsPattern;
        c.Property("OnCanResize", &T::OnCanResize, &T::SetOnCanResize);
        c.Property("OnMoved", &T::OnMoved, &T::SetOnMoved);
    });
    return cls.Class();
}

TSplitter::TSplitter(TComponent* owner) : TGraphicControl(owner) {
    SetControlStyle({csCaptureMouse, csOpaque});
    SetBoundsFields(0, 0, 3, 100);
    SetAlign(alLeft);
    SetCursor(crHSplit);
}

TSplitter::~TSplitter() {
    Destroying();
    ShowLine(false);
}

void TSplitter::SetBeveled(bool value) {
    FBeveled = value;
    Invalidate();
}

void TSplitter::SetMinSize(int value) { FMinSize = std::max(value, 1); }

TAccessibleInfo TSplitter::AccessibleInfo() const {
    TAccessibleInfo info = TGraphicControl::AccessibleInfo();
    info.Role = arSeparator;
    return info;
}

void TSplitter::Paint() {
    TCanvas& canvas = Canvas();
    canvas.Brush().SetColor(Color());
    canvas.FillRect({0, 0, Width(), Height()});
    if (FBeveled) {
        RECT edge{0, 0, Width(), Height()};
        DrawEdge(canvas.Handle(), &edge, BDR_RAISEDINNER, IsUpright() ? BF_LEFT | BF_RIGHT : BF_TOP | BF_BOTTOM);
    }
}

// --- The control beside

/// The one on the side that the splitter is aligned to
TControl* TSplitter::ControlBeside() const {
    TPoint at{Left(), Top()};
    switch (Align()) {
    case alLeft: --at.X; break;
    case alRight: at.X += Width(); break;
    case alTop: --at.Y; break;
    case alBottom: at.Y += Height(); break;
    default: return nullptr;
    }
    for (int i = 0; Parent() && i < Parent()->ControlCount(); ++i) {
        TControl* const control = Parent()->Controls(i);
        RECT bounds = ToRECT(control->BoundsRect());
        if (bounds.left == bounds.right) { // has been made to disappear
            (Align() == alLeft ? bounds.left : bounds.right) += Align() == alLeft ? -1 : 1;
        }
        if (bounds.top == bounds.bottom) {
            (Align() == alTop ? bounds.top : bounds.bottom) += Align() == alTop ? -1 : 1;
        }
        if (control != this && control->Visible() && control->Enabled() && control->Align() == Align() &&
            PtInRect(&bounds, ToPOINT(at))) {
            return control;
        }
    }
    return nullptr;
}

int TSplitter::SizeOf(const TControl& control) const { return IsUpright() ? control.Width() : control.Height(); }

/// What the other aligned controls, and MinSize, leave to the one beside
int TSplitter::GreatestSize(const TControl& control) const {
    const TAlign sides[] = {IsUpright() ? alLeft : alTop, IsUpright() ? alRight : alBottom};
    int64_t rest = (IsUpright() ? Parent()->ClientWidth() : Parent()->ClientHeight()) - FMinSize;
    for (int i = 0; i < Parent()->ControlCount(); ++i) {
        const TControl& other = *Parent()->Controls(i);
        if (&other != &control && other.Visible() && (other.Align() == sides[0] || other.Align() == sides[1])) {
            rest -= SizeOf(other);
        }
    }
    return static_cast<int>(std::clamp<int64_t>(rest, 0, INT32_MAX));
}

bool TSplitter::CanResize(int& newSize) {
    bool accept = true;
    FOnCanResize(this, newSize, accept);
    return accept;
}

/// The size that the control may get in place of `size`; false: none. Handlers run.
bool TSplitter::Accepts(int& size) {
    if (size < FMinSize) {
        size = FAutoSnap ? 0 : FMinSize;
    }
    size = std::min(size, FGreatest);
    bool accepts = false;
    return Outlives(*this, [&] { accepts = CanResize(size); }) && accepts && size >= 0;
}

void TSplitter::ResizeTo(int size) {
    TControl* const control = ControlBeside();
    if (!control || SizeOf(*control) == size) {
        return;
    }
    const int by = size - SizeOf(*control);
    TRect r = control->BoundsRect();
    switch (Align()) {
    case alLeft: r.Right += by; break;
    case alRight: r.Left -= by; break;
    case alTop: r.Bottom += by; break;
    default: r.Top -= by; break;
    }
    if (!Outlives(*this, [&] { control->SetBoundsRect(r); })) {
        return;
    }
    FOnMoved(this);
}

// --- Dragging

void TSplitter::MouseDown(TMouseButton button, TShiftState shift, int x, int y) {
    if (!Outlives(*this, [&] { TGraphicControl::MouseDown(button, shift, x, y); })) {
        return;
    }
    const TControl* const control = button == mbLeft ? ControlBeside() : nullptr;
    if (control) {
        FDragging = true;
        FFrom = {x, y};
        FSizeAtFirst = FNewSize = SizeOf(*control);
        FGreatest = GreatestSize(*control);
        ShowLine(true);
    }
}

void TSplitter::MouseMove(TShiftState shift, int x, int y) {
    if (Outlives(*this, [&] { TGraphicControl::MouseMove(shift, x, y); }) && FDragging && shift.Contains(ssLeft)) {
        Drag(x, y);
    }
}

void TSplitter::Drag(int x, int y) {
    // A control that goes along takes the splitter, and so the coordinates, with it.
    const int already = FResizeStyle == rsUpdate ? FNewSize - FSizeAtFirst : 0;
    const int moved = IsUpright() ? x - FFrom.X : y - FFrom.Y;
    const bool grows = Align() == alLeft || Align() == alTop;
    int size = FSizeAtFirst + already + (grows ? moved : -moved);
    if (!Accepts(size) || !FDragging || size == FNewSize) {
        return;
    }
    ShowLine(false);
    FNewSize = size;
    if (FResizeStyle == rsUpdate) {
        ResizeTo(size);
    } else {
        ShowLine(true);
    }
}

void TSplitter::MouseUp(TMouseButton button, TShiftState shift, int x, int y) {
    const bool ends = FDragging && button == mbLeft;
    const int size = FNewSize;
    if (ends) {
        StopDragging();
        if (!Outlives(*this, [&] { ResizeTo(size); })) {
            return;
        }
    }
    TGraphicControl::MouseUp(button, shift, x, y);
}

void TSplitter::StopDragging() {
    ShowLine(false);
    FDragging = false;
}

void TSplitter::WndProc(TMessage& message) {
    if (message.Msg == WM_CANCELMODE) {
        StopDragging();
    }
    TGraphicControl::WndProc(message);
}

namespace {

unique_hbrush DottedBrush() {
    constexpr WORD dots[] = {0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA};
    const unique_hbitmap bitmap(CreateBitmap(8, 8, 1, 1, dots));
    return unique_hbrush(CreatePatternBrush(bitmap.get()));
}

} // namespace

/// Inverts what is below the line, which shows it, and again, which takes it off.
void TSplitter::ShowLine(bool on) {
    if (FResizeStyle == rsNone || FResizeStyle == rsUpdate || !Parent() || !Parent()->HandleAllocated() ||
        on == (FLine != TRect{})) {
        return;
    }
    if (on) {
        const int by = (Align() == alLeft || Align() == alTop ? 1 : -1) * (FNewSize - FSizeAtFirst);
        FLine = BoundsRect();
        (IsUpright() ? FLine.Left : FLine.Top) += by;
        (IsUpright() ? FLine.Right : FLine.Bottom) += by;
    }
    const HWND window = Parent()->WindowHandle();
    const HDC dc = GetDCEx(window, nullptr, DCX_CACHE | DCX_CLIPSIBLINGS | DCX_LOCKWINDOWUPDATE);
    const unique_hbrush dotted = DottedBrush();
    const HGDIOBJ old = SelectObject(dc, dotted.get());
    PatBlt(dc, FLine.Left, FLine.Top, kx::Width(FLine), kx::Height(FLine),
           FResizeStyle == rsPattern ? PATINVERT : DSTINVERT);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    if (!on) {
        FLine = {};
    }
}

} // namespace kx
