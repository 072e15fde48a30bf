// SPDX-License-Identifier: MIT
// Controls with a window: what they show, and how they align what is in them.

#include "kx/ui/controls/Controls.h"
#include "kx/ui/controls/ParentForm.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

const TClass& TWinControl::StaticClass() {
    static const TClassBuilder<TWinControl> cls("TWinControl", TControl::StaticClass(), [](auto& c) {
        using T = TWinControl;
        c.Property("TabOrder", &T::TabOrder, &T::SetTabOrder).Default = -1;
        c.Property("TabStop", &T::TabStop, &T::SetTabStop).Default = false;
        c.Property("DoubleBuffered", &T::DoubleBuffered, &T::SetDoubleBuffered).Default = false;
        c.SubObject("Padding", &T::Padding, &T::SetPadding);
        c.Property("OnEnter", &T::OnEnter, &T::SetOnEnter);
        c.Property("OnExit", &T::OnExit, &T::SetOnExit);
        c.Property("OnMouseWheel", &T::OnMouseWheel, &T::SetOnMouseWheel);
        c.Property("OnMouseWheelDown", &T::OnMouseWheelDown, &T::SetOnMouseWheelDown);
        c.Property("OnMouseWheelUp", &T::OnMouseWheelUp, &T::SetOnMouseWheelUp);
        c.Property("OnKeyDown", &T::OnKeyDown, &T::SetOnKeyDown);
        c.Property("OnKeyPress", &T::OnKeyPress, &T::SetOnKeyPress);
        c.Property("OnKeyUp", &T::OnKeyUp, &T::SetOnKeyUp);
    });
    return cls.Class();
}

TWinControl::TWinControl(TComponent* owner) : TControl(owner) { FBrush.SetColor(Color()); }

TWinControl::~TWinControl() {
    Destroying();
    TWinControl::SetParent(nullptr); // this also destroys the window
    DestroyHandle();
    while (!FControls.empty()) {
        TControl* const control = FControls.back();
        if (control->IsGoing()) {
            control->TControl::SetParent(nullptr); // its destruction goes on without its parent
        } else {
            control->Free();
        }
    }
}

// --- Controls inside

TControl* TWinControl::Controls(int index) const {
    if (index < 0 || index >= ControlCount()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return FControls[static_cast<size_t>(index)];
}

bool TWinControl::ContainsControl(const TControl* control) const {
    while (control && control != this) {
        control = control->Parent();
    }
    return control != nullptr;
}

void TWinControl::AttachControl(TControl* control) {
    FControls.push_back(control);
    if (auto* const windowed = dynamic_cast<TWinControl*>(control)) {
        FTabList.push_back(windowed);
    }
}

void TWinControl::DetachControl(TControl* control) {
    if (control->Visible()) {
        const RECT r = ToRECT(control->BoundsRect());
        InvalidateShown(&r, true);
    }
    std::erase(FControls, control);
    std::erase(FTabList, control); // compares addresses; holds only windowed controls
    if (FMouseControl == control) {
        FMouseControl = nullptr;
    }
}

bool TWinControl::HasChild(const TControl* control) const {
    return std::find(FControls.begin(), FControls.end(), control) != FControls.end();
}

void TWinControl::GetChildren(const TGetChildProc& proc, TComponent* root) {
    // By index, since handlers that run meanwhile may add controls.
    for (size_t i = 0; i < FControls.size(); ++i) {
        if (FControls[i]->Owner() == root) {
            proc(FControls[i]);
        }
    }
}

TControl* TWinControl::ControlAtPos(const TPoint& point, bool allowDisabled, bool allowWinControls) const {
    const auto find = [&](bool windowed) -> TControl* {
        for (auto i = FControls.rbegin(); i != FControls.rend(); ++i) {
            TControl* const control = *i;
            const RECT bounds = ToRECT(control->BoundsRect());
            if ((dynamic_cast<TWinControl*>(control) != nullptr) == windowed && control->Visible() &&
                (allowDisabled || control->Enabled()) && PtInRect(&bounds, ToPOINT(point))) {
                return control;
            }
        }
        return nullptr;
    };
    if (allowWinControls) {
        if (TControl* const control = find(true)) { // windows lie above controls that have none
            return control;
        }
    }
    return find(false);
}

void TWinControl::Notification(TComponent* component, TOperation operation) {
    TControl::Notification(component, operation);
}

void TWinControl::Loaded() {
    TControl::Loaded();
    FixTabOrder();
    for (TControl* control : FControls) {
        control->UpdateAnchorBase();
    }
    AlignControls();
}

// --- Place

TPoint TWinControl::FrameExtent() const {
    TCreateParams params;
    const_cast<TWinControl*>(this)->CreateParams(params);
    constexpr DWORD frames = WS_BORDER | WS_DLGFRAME | WS_THICKFRAME;
    constexpr DWORD edges = WS_EX_CLIENTEDGE | WS_EX_STATICEDGE | WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE;
    if ((params.Style & frames) == 0 && (params.ExStyle & edges) == 0) {
        return {}; // the system is not asked: it may measure the font of captions for its answer
    }
    RECT r{};
    AdjustWindowRectEx(&r, params.Style & ~static_cast<DWORD>(WS_HSCROLL | WS_VSCROLL), FALSE, params.ExStyle);
    return {static_cast<int32_t>(r.right - r.left), static_cast<int32_t>(r.bottom - r.top)};
}

TRect TWinControl::ClientRect() const {
    if (FHandle && !IsIconic(FHandle)) {
        RECT r;
        GetClientRect(FHandle, &r);
        return FromRECT(r);
    }
    const TPoint frame = FrameExtent();
    return {0, 0, std::max(Width() - frame.X, 0), std::max(Height() - frame.Y, 0)};
}

TPoint TWinControl::ClientOrigin() const {
    POINT origin{0, 0};
    ::ClientToScreen(const_cast<TWinControl*>(this)->Handle(), &origin);
    return FromPOINT(origin);
}

// Inside a mirrored window, coordinates count from its right edge to the left.

TPoint TWinControl::ClientToScreen(const TPoint& point) const {
    const TPoint origin = ClientOrigin();
    return {IsMirrored(FHandle) ? CheckedSub(origin.X, point.X) : CheckedAdd(origin.X, point.X),
            CheckedAdd(origin.Y, point.Y)};
}

TPoint TWinControl::ScreenToClient(const TPoint& point) const {
    const TPoint origin = ClientOrigin();
    return {IsMirrored(FHandle) ? CheckedSub(origin.X, point.X) : CheckedSub(point.X, origin.X),
            CheckedSub(point.Y, origin.Y)};
}

void TWinControl::SetBounds(int left, int top, int width, int height) {
    if (!FHandle || IsIconic(FHandle)) {
        const bool resized = width != Width() || height != Height();
        if (Outlives(*this, [&] { TControl::SetBounds(left, top, width, height); }) && resized) {
            AlignControls();
        }
        return;
    }
    const std::optional<TRect> bounds = LimitedBounds(left, top, width, height);
    if (bounds && FHandle && BoundsRect() != *bounds) {
        // In a window that is not the framework's the erasing waits for the painting: else each docked form that is
        // placed would have everything erased once more that the forms before it have uncovered.
        const UINT flags = SWP_NOZORDER | SWP_NOACTIVATE | (FParentWindow ? SWP_DEFERERASE : 0u);
        const auto place = [&] {
            SetWindowPos(FHandle, nullptr, left, top, kx::Width(*bounds), kx::Height(*bounds), flags);
        };
        if (Outlives(*this, place)) {
            UpdateAnchorBase();
            RequestAlign();
        }
    }
}

void TWinControl::WindowPosChanged(TMessage& message) {
    const auto& pos = message.LParamAs<WINDOWPOS>();
    if (!Outlives(*this, [&] { DefaultHandler(message); }) || !FHandle || IsIconic(FHandle)) {
        return;
    }
    const bool moved = (pos.flags & SWP_NOMOVE) == 0;
    const bool sized = (pos.flags & SWP_NOSIZE) == 0;
    const int left = moved ? pos.x : Left();
    const int top = moved ? pos.y : Top();
    const int width = sized ? pos.cx : Width();
    const int height = sized ? pos.cy : Height();
    const bool resized = width != Width() || height != Height();
    SetBoundsFields(left, top, width, height);
    if (resized || (pos.flags & SWP_FRAMECHANGED)) {
        if (Outlives(*this, [this] { AlignControls(); }) && resized) {
            Resize();
        }
    }
}

void TWinControl::FlipChildren(bool allLevels) {
    const TAlive alive(*this);
    {
        const TFieldScope aligning(*this, FAligning, true); // they are placed once, when all are reversed
        const int width = ClientWidth();
        const std::vector<TControl*> inside = FControls;
        for (TControl* control : inside) {
            if (!alive || !HasChild(control)) {
                continue; // a handler has removed it
            }
            control->FAlign = control->FAlign == alLeft    ? alRight
                              : control->FAlign == alRight ? alLeft
                                                           : control->FAlign;
            if (control->FAnchors.Contains(akLeft) != control->FAnchors.Contains(akRight)) {
                const bool left = control->FAnchors.Contains(akLeft);
                left ? control->FAnchors.Exclude(akLeft) : control->FAnchors.Exclude(akRight);
                left ? control->FAnchors.Include(akRight) : control->FAnchors.Include(akLeft);
            }
            auto* const windowed = allLevels ? dynamic_cast<TWinControl*>(control) : nullptr;
            const auto flip = [&] { control->SetLeft(width - control->Left() - control->Width()); };
            if (Outlives(*control, flip) && alive && windowed && HasChild(control) &&
                windowed->ControlStyle().Contains(csAcceptsControls)) {
                windowed->FlipChildren(true);
            }
        }
    }
    if (alive) {
        for (TControl* control : FControls) {
            control->UpdateAnchorBase(); // as if the program had placed them so
        }
        AlignControls();
    }
}

// --- Aligning

void TWinControl::Realign() { AlignControls(); }

void TWinControl::AlignControls() {
    if (FAligning || IsLoading() || IsDestroying() || FControls.empty()) {
        return;
    }
    const TFieldScope aligning(*this, FAligning, true);
    const TAlive alive(*this);
    TRect rest = ClientRect();
    const TRect client = rest;
    AdjustClientRect(rest);
    rest = FPadding.Inside(rest);
    for (const TAlign side : {alTop, alBottom, alLeft, alRight, alClient}) {
        if (alive) {
            PlaceAligned(side, rest);
        }
    }
    for (size_t i = 0; alive && i < FControls.size(); ++i) { // handlers may add or remove controls
        if (FControls[i]->Align() == alNone) {
            FControls[i]->AnchoredBounds(client);
        }
    }
}

/// Places the controls of one side into what is left of the client area, and takes their place off it.
void TWinControl::PlaceAligned(TAlign side, TRect& rest) {
    std::vector<TControl*> list;
    for (TControl* control : FControls) {
        if (control->Align() == side && control->Visible()) {
            list.push_back(control);
        }
    }
    // The control nearest to the edge goes there first.
    std::stable_sort(list.begin(), list.end(), [side](const TControl* a, const TControl* b) {
        switch (side) {
        case alTop: return a->Top() < b->Top();
        case alBottom: return a->Top() + a->Height() > b->Top() + b->Height();
        case alLeft: return a->Left() < b->Left();
        case alRight: return a->Left() + a->Width() > b->Left() + b->Width();
        default: return false;
        }
    });
    const TAlive alive(*this);
    for (TControl* control : list) {
        if (!alive || !HasChild(control)) {
            continue; // a handler has removed it
        }
        const bool hasMargins = control->AlignWithMargins();
        const TRect free = hasMargins ? control->Margins().Inside(rest) : rest;
        const int width = std::max(kx::Width(free), 0);
        const int height = std::max(kx::Height(free), 0);
        TRect place{free.Left, free.Top, free.Left + width, free.Top + height};
        switch (side) {
        case alTop: place.Bottom = CheckedAdd(place.Top, control->Height()); break;
        case alBottom:
            place.Top = CheckedSub(free.Bottom, control->Height());
            place.Bottom = free.Bottom;
            break;
        case alLeft: place.Right = CheckedAdd(place.Left, control->Width()); break;
        case alRight:
            place.Left = CheckedSub(free.Right, control->Width());
            place.Right = free.Right;
            break;
        default: break;
        }
        if (!Outlives(*control, [&] { control->SetBoundsRect(place); })) {
            continue; // the control has gone and takes no place
        }
        const TRect margins{free.Left - rest.Left, free.Top - rest.Top, rest.Right - free.Right,
                            rest.Bottom - free.Bottom};
        switch (side) { // the control may be smaller or larger than the place that it was given
        case alTop: rest.Top = CheckedAdd(free.Top, CheckedAdd(control->Height(), margins.Bottom)); break;
        case alBottom: rest.Bottom = CheckedSub(free.Bottom, CheckedAdd(control->Height(), margins.Top)); break;
        case alLeft: rest.Left = CheckedAdd(free.Left, CheckedAdd(control->Width(), margins.Right)); break;
        case alRight: rest.Right = CheckedSub(free.Right, CheckedAdd(control->Width(), margins.Left)); break;
        default: break;
        }
    }
}

// --- Look

/// Moves the focus elsewhere, which runs the handlers of its going and coming.
void TWinControl::GiveUpFocus() {
    if (TParentForm* const form = ParentFormOf(this); form && form != this) {
        form->FocusLeaves(*this);
    }
}

void TWinControl::VisibleChanged() {
    const TAlive alive(*this);
    if (FHandle && !Visible()) {
        GiveUpFocus();
    }
    if (alive && FHandle) {
        ShowWindow(FHandle, Visible() ? SW_SHOWNA : SW_HIDE);
    }
    if (alive) {
        RequestAlign();
    }
}

void TWinControl::EnabledChanged() {
    const TAlive alive(*this);
    if (FHandle && !Enabled()) {
        GiveUpFocus();
    }
    if (alive && FHandle) {
        EnableWindow(FHandle, Enabled());
    }
}

void TWinControl::FontChanged() {
    const TAlive alive(*this);
    if (FHandle && FSystemClass) {
        SendMessageW(FHandle, WM_SETFONT, reinterpret_cast<WPARAM>(Font().Handle()), TRUE); // may resize it
    }
    if (alive) {
        Invalidate();
        ParentSettingChanged();
    }
}

void TWinControl::ColorChanged() {
    FBrush.SetColor(Color());
    Invalidate();
    EdgeChanged();
    ParentSettingChanged();
}

void TWinControl::ShowHintChanged() { ParentSettingChanged(); }

DWORD TWinControl::BiDiExStyle() const {
    return (UseRightToLeftReading() ? DWORD{WS_EX_RTLREADING} : 0) | (UseRightToLeftAlignment() ? WS_EX_RIGHT : 0) |
           (UseRightToLeftScrollBar() ? WS_EX_LEFTSCROLLBAR : 0);
}

void TWinControl::BiDiModeChanged() {
    const TAlive alive(*this);
    if (FSystemClass) {
        RecreateWnd(); // the system's controls look at these bits when they are made
    } else if (FHandle) {
        constexpr DWORD all = WS_EX_RTLREADING | WS_EX_RIGHT | WS_EX_LEFTSCROLLBAR;
        const auto style = static_cast<DWORD>(GetWindowLongA(FHandle, GWL_EXSTYLE));
        SetWindowLongA(FHandle, GWL_EXSTYLE, static_cast<LONG>((style & ~all) | BiDiExStyle()));
        SetWindowPos(FHandle, nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    }
    if (alive) {
        Invalidate();
        ParentSettingChanged();
    }
}

void TWinControl::ParentSettingChanged() {
    const TAlive alive(*this);
    for (size_t i = 0; alive && i < FControls.size(); ++i) {
        FControls[i]->ParentSettingsChanged();
    }
}

std::string TWinControl::Text() const { return FHandle ? WindowText(FHandle) : TControl::Text(); }

void TWinControl::SetText(const std::string& value) {
    if (!FHandle) {
        TControl::SetText(value);
    } else if (Text() != value) {
        SetWindowTextW(FHandle, ToWide(value).c_str());
    }
}

void TWinControl::Invalidate() { InvalidateShown(nullptr, !ControlStyle().Contains(csOpaque)); }

void TWinControl::InvalidateShown(const RECT* part, bool erase) const {
    if (FHandle && IsWindowVisible(FHandle)) {
        InvalidateRect(FHandle, part, erase);
    }
}

void TWinControl::Update() {
    if (FHandle) {
        UpdateWindow(FHandle);
    }
}

} // namespace kx
