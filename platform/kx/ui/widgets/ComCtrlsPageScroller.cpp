// SPDX-License-Identifier: MIT
// Page scrollers.

#include "kx/ui/widgets/ComCtrlsPageScroller.h"

#include "kx/win/ReflectedMessages.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

namespace {

/// Posted to itself when the window inside has been made anew.
constexpr UINT WM_ATTACH = WM_APP + 1;

} // namespace

const TClass& TPageScroller::StaticClass() {
    static const TClassBuilder<TPageScroller> cls("TPageScroller", TWinControl::StaticClass(), [](auto& c) {
        using T = TPageScroller;
        c.Creatable();
        c.Property("AutoScroll", &T::AutoScroll, &T::SetAutoScroll).Default = true;
        c.Property("ButtonSize", &T::ButtonSize, &T::SetButtonSize).Default = 12;
        c.Reference("Control", &T::Control, &T::SetControl);
        c.Property("DragScroll", &T::DragScroll, &T::SetDragScroll).Default = true;
        c.Property("Margin", &T::Margin, &T::SetMargin).Default = 0;
        c.Property("Orientation", &T::Orientation, &T::SetOrientation).Default = soHorizontal;
        c.Property("Position", &T::Position, &T::SetPosition).Default = 0;
        c.Property("OnScroll", &T::OnScroll, &T::SetOnScroll);
    });
    return cls.Class();
}

TPageScroller::TPageScroller(TComponent* owner) : TWinControl(owner) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks});
    SetBoundsFields(0, 0, 150, 45);
}

void TPageScroller::Notification(TComponent* component, TOperation operation) {
    TWinControl::Notification(component, operation);
    if (operation == opRemove && component == FControl) {
        FControl = nullptr;
        FContent = 0;
        if (!IsDestroying()) {
            RecreateWnd(); // an old window would keep its arrows
        }
    }
}

void TPageScroller::Loaded() {
    if (Outlives(*this, [this] { TWinControl::Loaded(); })) {
        FContent = Extent();
        AttachWindow();
    }
}

// --- Window

void TPageScroller::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = WC_PAGESCROLLERA;
    params.Style |= FOrientation == soVertical ? PGS_VERT : PGS_HORZ;
    params.Style |= FAutoScroll ? PGS_AUTOSCROLL : 0;
    params.Style |= FDragScroll ? PGS_DRAGNDROP : 0;
}

void TPageScroller::CreateHandle() {
    const int position = FPosition;
    TWinControl::CreateHandle(); // the windows inside too
    MustOutlive([this] { AttachWindow(); });
    SetPosition(position);
}

void TPageScroller::CreateWnd() {
    FAttached = nullptr;
    TWinControl::CreateWnd();
    SendMessageW(WindowHandle(), PGM_SETBUTTONSIZE, 0, FButtonSize);
    SendMessageW(WindowHandle(), PGM_SETBORDER, 0, FMargin);
    ColorChanged();
}

void TPageScroller::SaveWindowState() {
    FPosition = Position();
    TWinControl::SaveWindowState();
}

void TPageScroller::AttachWindow() {
    if (!HandleAllocated() || IsDestroying()) {
        return;
    }
    const HWND window = FControl && FControl->Parent() == this ? FControl->WindowHandle() : nullptr;
    if (window != FAttached) {
        FAttached = window;
        FMeasuredSize = {-1, -1};
    }
    ContentChanged();
}

int TPageScroller::Extent() const {
    return !FControl ? 0 : FOrientation == soVertical ? FControl->Height() : FControl->Width();
}

int TPageScroller::Content() const {
    const auto* const content = dynamic_cast<const IScrolledContent*>(FControl);
    const int height = content && FOrientation == soVertical ? content->ContentHeight() : -1;
    return height >= 0 ? height : FContent;
}

/// The system looks at the sizes, and which arrows are needed, only when it is given its child.
void TPageScroller::ContentChanged() {
    constexpr int mostTurns = 3; // another size across the scroller may change the length of the content
    for (int turn = 0; turn < mostTurns && !FMeasuring; ++turn) {
        const TPoint size{Content(), FOrientation == soVertical ? Height() : Width()};
        if (size == FMeasuredSize) {
            break;
        }
        FMeasuredSize = size;
        const auto give = [this, scroller = WindowHandle(), content = FAttached, position = Position()] {
            const TFieldScope measuring(*this, FMeasuring, true);
            SendMessageW(scroller, PGM_SETCHILD, 0, 0);
            SendMessageW(scroller, PGM_SETCHILD, 0, reinterpret_cast<LPARAM>(content)); // it gets another size
            SendMessageW(scroller, PGM_RECALCSIZE, 0, 0); // for systems on which the same child changes nothing
            SendMessageW(scroller, PGM_SETPOS, 0, position);
        };
        if (!Outlives(*this, give) || !HandleAllocated()) {
            break;
        }
        FGiven = Extent();
    }
}

/// The control inside, or the scroller itself, has another size.
void TPageScroller::AlignControls() {
    if (FMeasuring || IsLoading()) {
        return;
    }
    if (Extent() != FGiven) {
        FContent = Extent();
    }
    AttachWindow();
}

void TPageScroller::ColorChanged() {
    TWinControl::ColorChanged();
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), PGM_SETBKCOLOR, 0, static_cast<LPARAM>(ColorToRGB(Color())));
    }
}

// --- Settings

void TPageScroller::SetControl(TWinControl* value) {
    if (FControl == value) {
        return;
    }
    if (FControl) {
        RemoveFreeNotification(FControl);
    }
    FControl = value;
    if (value) {
        FreeNotification(value);
        if (!Outlives(*this, [&] { value->SetParent(this); }) || FControl != value) {
            return;
        }
    }
    FContent = Extent();
    FMeasuredSize = {-1, -1};
    AttachWindow();
}

void TPageScroller::SetStyleFlag(bool& field, bool value, DWORD flag) {
    field = value;
    if (HandleAllocated()) {
        const auto style = static_cast<DWORD>(GetWindowLongA(WindowHandle(), GWL_STYLE));
        SetWindowLongA(WindowHandle(), GWL_STYLE, static_cast<LONG>(value ? style | flag : style & ~flag));
    }
}

void TPageScroller::SetAutoScroll(bool value) { SetStyleFlag(FAutoScroll, value, PGS_AUTOSCROLL); }
void TPageScroller::SetDragScroll(bool value) { SetStyleFlag(FDragScroll, value, PGS_DRAGNDROP); }

void TPageScroller::SetButtonSize(int value) {
    FButtonSize = std::max(value, 1);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), PGM_SETBUTTONSIZE, 0, FButtonSize);
    }
}

void TPageScroller::SetMargin(int value) {
    FMargin = std::max(value, 0);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), PGM_SETBORDER, 0, FMargin);
        FMeasuredSize = {-1, -1};
        AttachWindow();
    }
}

void TPageScroller::SetOrientation(TPageScrollerOrientation value) {
    if (FOrientation != value) {
        FOrientation = value;
        FContent = Extent();
        RecreateWnd();
    }
}

int TPageScroller::Position() const {
    return HandleAllocated() ? static_cast<int>(SendMessageW(WindowHandle(), PGM_GETPOS, 0, 0)) : FPosition;
}

void TPageScroller::SetPosition(int value) {
    FPosition = std::max(value, 0);
    if (HandleAllocated()) {
        SendMessageW(WindowHandle(), PGM_SETPOS, 0, FPosition);
    }
}

// --- Messages

void TPageScroller::WndProc(TMessage& message) {
    switch (message.Msg) {
    case CN_NOTIFY:
        switch (message.LParamAs<NMHDR>().code) {
        case PGN_CALCSIZE: {
            auto& info = message.LParamAs<NMPGCALCSIZE>();
            (info.dwFlag == PGF_CALCWIDTH ? info.iWidth : info.iHeight) = Content();
            break;
        }
        case PGN_SCROLL: ScrollNotification(message); break;
        default: break;
        }
        return;
    case WM_PARENTNOTIFY:
        if (LOWORD(message.WParam) == WM_CREATE) {
            PostMessageW(WindowHandle(), WM_ATTACH, 0, 0); // the window is not complete yet
        }
        break;
    case WM_ATTACH: AttachWindow(); return;
    default: break;
    }
    TWinControl::WndProc(message);
}

void TPageScroller::ScrollNotification(TMessage& message) {
    auto& info = message.LParamAs<NMPGSCROLL>();
    TShiftState shift;
    const auto add = [&](int key, TShiftStateFlag flag) {
        if (info.fwKeys & key) {
            shift.Include(flag);
        }
    };
    add(PGK_SHIFT, ssShift);
    add(PGK_CONTROL, ssCtrl);
    add(PGK_MENU, ssAlt);
    const bool back = info.iDir == PGF_SCROLLUP || info.iDir == PGF_SCROLLLEFT;
    int delta = back ? -info.iScroll : info.iScroll;
    Scroll(shift, info.iXpos, info.iYpos, FOrientation, delta);
    info.iScroll = back ? -delta : delta;
}

void TPageScroller::Scroll(TShiftState shift, int x, int y, TPageScrollerOrientation orientation, int& delta) {
    FOnScroll(this, shift, x, y, orientation, delta);
}

} // namespace kx
