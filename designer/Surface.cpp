// SPDX-License-Identifier: MIT
// Shows the form that is designed.

#include "designer/Surface.h"

#include "designer/Arrange.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {

constexpr int Margin = 16; // around the form
constexpr int IconExtent = 28;
constexpr int ScrollLine = 16;

std::vector<TDesignSurface*>& Surfaces() {
    static std::vector<TDesignSurface*> surfaces;
    return surfaces;
}

} // namespace

/// Gives surfaces the messages of the mouse that the windows inside them would get, whichever loop fetches them: those
/// of controls, of what the system has put into them, and of the frame of the form.
class TDesignSurface::TMouseHook {
public:
    static void Install() {
        if (!Hook()) {
            Hook().reset(SetWindowsHookExA(WH_GETMESSAGE, Proc, nullptr, GetCurrentThreadId()));
        }
    }
    static void Remove() { Hook().reset(); }

private:
    static unique_hhook& Hook() {
        static unique_hhook hook;
        return hook;
    }

    static LRESULT CALLBACK Proc(int code, WPARAM wParam, LPARAM lParam) {
        if (code == HC_ACTION && wParam == PM_REMOVE) {
            auto& message = *reinterpret_cast<MSG*>(lParam);
            const bool isClient = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
            const bool isFrame = message.message >= WM_NCMOUSEMOVE && message.message <= WM_NCMBUTTONDBLCLK;
            for (const TDesignSurface* surface : Surfaces()) {
                if ((isClient || isFrame) && surface->TakesMouseOf(message.hwnd)) {
                    Redirect(message, surface->WindowHandle(), isFrame);
                    break;
                }
            }
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    static void Redirect(MSG& message, HWND surface, bool isFrame) {
        if (isFrame) { // its coordinates are the screen's, and it tells no keys
            message.message += WM_MOUSEMOVE - WM_NCMOUSEMOVE;
            message.wParam = (GetKeyState(VK_SHIFT) < 0 ? WPARAM{MK_SHIFT} : 0) |
                             (GetKeyState(VK_CONTROL) < 0 ? WPARAM{MK_CONTROL} : 0);
        }
        if (message.message != WM_MOUSEWHEEL && message.message != WM_MOUSEHWHEEL) { // theirs are the screen's for all
            POINT point{static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
            MapWindowPoints(isFrame ? nullptr : message.hwnd, surface, &point, 1);
            message.lParam = MAKELPARAM(point.x, point.y);
        }
        message.hwnd = surface;
    }
};

const TClass& TDesignSurface::StaticClass() {
    static const TClassBuilder<TDesignSurface> cls("TDesignSurface", TCustomControl::StaticClass(),
                                                   [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TDesignSurface::TDesignSurface(TComponent* owner) : TCustomControl(owner) {
    SetTabStop(true);
    SetDoubleBuffered(true);
    SetControlStyle({csCaptureMouse, csClickEvents, csDoubleClicks, csOpaque});
    Surfaces().push_back(this);
    TMouseHook::Install();
}

TDesignSurface::~TDesignSurface() {
    Destroying();
    FOverlay.LeaveForm();
    std::erase(Surfaces(), this);
    if (Surfaces().empty()) {
        TMouseHook::Remove();
    }
}

bool TDesignSurface::TakesMouseOf(HWND window) const {
    return HandleAllocated() && window != WindowHandle() && IsChild(WindowHandle(), window);
}

void TDesignSurface::SetDesigner(TFormDesigner* value) {
    CancelDrag();
    FOverlay.LeaveForm();
    FScroll = {0, 0};
    FDesigner = value;
    FormReplaced();
}

void TDesignSurface::FormReplaced() {
    FDrag = TDrag::None;
    ForgetMoved();
    FOverlay.LeaveForm();
    if (FDesigner && HandleAllocated()) {
        TDesignedForm& form = FDesigner->Form();
        form.SetGridSize(ShownGrid());
        form.SetParentWindow(WindowHandle());
        PlaceForm();
        form.SetVisible(true);
    }
    UpdateMarks();
}

void TDesignSurface::CreateParams(TCreateParams& params) {
    TCustomControl::CreateParams(params);
    params.Style |= WS_HSCROLL | WS_VSCROLL | WS_CLIPCHILDREN;
}

void TDesignSurface::CreateWnd() {
    TCustomControl::CreateWnd();
    PlaceForm();
}

void TDesignSurface::Resize() {
    TCustomControl::Resize();
    PlaceForm();
}

TPoint TDesignSurface::FormOrigin() const {
    POINT origin{0, 0};
    MapWindowPoints(FDesigner->Form().WindowHandle(), WindowHandle(), &origin, 1);
    return {origin.x, origin.y};
}

TPoint TDesignSurface::ToForm(const TPoint& point) const {
    const TPoint origin = FormOrigin();
    return {point.X - origin.X, point.Y - origin.Y};
}

void TDesignSurface::PlaceForm() {
    if (!FDesigner || !HandleAllocated()) {
        return;
    }
    TDesignedForm& form = FDesigner->Form();
    const auto limit = [](int& at, int extent, int page) { at = std::clamp(at, 0, std::max(extent - page, 0)); };
    const TPoint extent{form.Width() + 2 * Margin, form.Height() + 2 * Margin};
    limit(FScroll.X, extent.X, ClientWidth());
    limit(FScroll.Y, extent.Y, ClientHeight());
    const auto show = [this](int bar, int whole, int page, int at) {
        SCROLLINFO info{sizeof info, SIF_ALL, 0, std::max(whole - 1, 0), static_cast<UINT>(std::max(page, 0)), at, 0};
        SetScrollInfo(WindowHandle(), bar, &info, TRUE);
    };
    show(SB_HORZ, extent.X, ClientWidth(), FScroll.X);
    show(SB_VERT, extent.Y, ClientHeight(), FScroll.Y);
    const TPoint place{Margin - FScroll.X, Margin - FScroll.Y};
    if (form.Left() != place.X || form.Top() != place.Y) {
        form.SetBounds(place.X, place.Y, form.Width(), form.Height());
    }
    ShowFormMarks();
}

/// Paints the surface again when its handles of the form are others. To paint it for each step of a drag would be felt.
void TDesignSurface::ShowFormMarks() {
    const TDesignedForm& form = FDesigner->Form();
    const TFormLook look{form.BoundsRect(), FDesigner->IsSelected(form), FDesigner->Locked()};
    if (look != FShown) {
        FShown = look;
        Invalidate();
    }
}

void TDesignSurface::Scroll(int bar, int command, int position) {
    const int at = bar == SB_HORZ ? FScroll.X : FScroll.Y;
    const int page = bar == SB_HORZ ? ClientWidth() : ClientHeight();
    switch (command) {
    case SB_LINEUP: ScrollTo(bar, at - ScrollLine); break;
    case SB_LINEDOWN: ScrollTo(bar, at + ScrollLine); break;
    case SB_PAGEUP: ScrollTo(bar, at - page); break;
    case SB_PAGEDOWN: ScrollTo(bar, at + page); break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: ScrollTo(bar, position); break;
    case SB_TOP: ScrollTo(bar, 0); break;
    case SB_BOTTOM: ScrollTo(bar, INT16_MAX); break;
    default: return;
    }
}

void TDesignSurface::ScrollTo(int bar, int position) {
    (bar == SB_HORZ ? FScroll.X : FScroll.Y) = position;
    PlaceForm();
}

/// `delta` is positive upwards, and to the left.
void TDesignSurface::Wheel(int bar, int delta) {
    const bool isAcross = bar == SB_HORZ;
    TMouseWheel& wheel = isAcross ? FWheelAcross : FWheelDown;
    const int lines = wheel.Lines(delta, (isAcross ? ClientWidth() : ClientHeight()) / ScrollLine);
    ScrollTo(bar, (isAcross ? FScroll.X : FScroll.Y) + lines * ScrollLine);
}

void TDesignSurface::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_HSCROLL:
    case WM_VSCROLL:
        if (message.LParam == 0) {
            Scroll(message.Msg == WM_HSCROLL ? SB_HORZ : SB_VERT, LOWORD(message.WParam),
                   static_cast<short>(HIWORD(message.WParam)));
            return;
        }
        break;
    case WM_MOUSEWHEEL:
        Wheel(GetKeyState(VK_SHIFT) < 0 ? SB_HORZ : SB_VERT, static_cast<int16_t>(message.WParamHi()));
        return;
    case WM_MOUSEHWHEEL: // a wheel that tilts, or is one of its own: to the right is positive
        Wheel(SB_HORZ, -static_cast<int16_t>(message.WParamHi()));
        return;
    case WM_CAPTURECHANGED:
        if (message.LParamWindow() != WindowHandle() && !FReleasing) {
            CancelDrag();
        }
        break;
    case WM_LBUTTONUP: { // which gives up the mouse before it tells
        const TFieldScope releasing(*this, FReleasing, true);
        TCustomControl::WndProc(message);
        return;
    }
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP: // Alt in a drag is the drag's: else it would end in the menu
        if (message.WParam == VK_MENU && (FDrag != TDrag::None || FAltIsOurs)) {
            FAltIsOurs = message.Msg == WM_SYSKEYDOWN;
            return;
        }
        break;
    default: break;
    }
    TCustomControl::WndProc(message);
}

void TDesignSurface::SetGrid(const TDesignGrid& value) {
    FGrid = value;
    FSnapping.Grid = value.Snaps ? value.Size : TPoint{0, 0};
    if (FDesigner) {
        FDesigner->Form().SetGridSize(ShownGrid());
    }
}

void TDesignSurface::SetShowsTabOrder(bool value) {
    FShowsTabOrder = value;
    FTabParent = nullptr;
    UpdateMarks();
}

// --- Marks

bool TDesignSurface::CanSize(const TComponent& component) const {
    const auto* const control = dynamic_cast<const TControl*>(&component);
    return control && !FDesigner->Locked() && control->Align() == alNone;
}

std::vector<TRect> TDesignSurface::HandlesOf(const TRect& r) const {
    const int half = ScaleLength(3);
    const auto at = [half](int x, int y) { return TRect{x - half, y - half, x + half, y + half}; };
    const int middleX = (r.Left + r.Right) / 2;
    const int middleY = (r.Top + r.Bottom) / 2;
    return {at(r.Left, r.Top),     at(middleX, r.Top),    at(r.Right, r.Top),   at(r.Right, middleY),
            at(r.Right, r.Bottom), at(middleX, r.Bottom), at(r.Left, r.Bottom), at(r.Left, middleY)};
}

TRect TDesignSurface::PlaceOf(const TComponent& component) const {
    if (!FDesigner || !HandleAllocated()) {
        return {};
    }
    if (&component == &FDesigner->Form()) {
        return FDesigner->Form().BoundsRect();
    }
    TPoint origin = FormOrigin();
    const auto* const control = dynamic_cast<const TControl*>(&component);
    if (!control) {
        const TPoint place = IconPlace(component);
        return {origin.X + place.X, origin.Y + place.Y, origin.X + place.X + IconExtent,
                origin.Y + place.Y + IconExtent};
    }
    const TWinControl* const parent = control->Parent();
    if (!parent) {
        return {};
    }
    const TPoint screen = parent->ClientOrigin();
    POINT corner{screen.X, screen.Y};
    ::ScreenToClient(WindowHandle(), &corner);
    return {corner.x + control->Left(), corner.y + control->Top(), corner.x + control->Left() + control->Width(),
            corner.y + control->Top() + control->Height()};
}

TRect TDesignSurface::PlaceInForm(const TControl& control) const {
    const TPoint origin = FormOrigin();
    const TRect place = PlaceOf(control);
    return {place.Left - origin.X, place.Top - origin.Y, place.Right - origin.X, place.Bottom - origin.Y};
}

TRect TDesignSurface::FormMarks() const {
    constexpr int gap = 4;
    const TRect r = FDesigner->Form().BoundsRect();
    return {r.Left - gap, r.Top - gap, r.Right + gap, r.Bottom + gap};
}

/// Right, corner, below: the form's other corner stays where it is.
bool TDesignSurface::SizesForm(size_t handle) { return handle >= 3 && handle <= 5; }

bool TDesignSurface::IsHiddenInFile(const TControl& control) {
    const TPropInfo* const visible = control.ClassType().FindProperty("Visible");
    return !control.Visible() && visible && visible->IsStored(control);
}

void TDesignSurface::UpdateMarks() {
    if (!FDesigner || !HandleAllocated()) {
        FShown = {};
        Invalidate();
        return;
    }
    TDesignedForm& form = FDesigner->Form();
    if (FDrag == TDrag::None) {
        PlaceForm(); // its size may have changed
    }
    FOverlay.ShowOver(form.Handle(), {0, 0, form.ClientWidth(), form.ClientHeight()}, MarksOf());
    ShowFormMarks();
}

std::vector<TOverlayItem> TDesignSurface::MarksOf() const {
    std::vector<TOverlayItem> items;
    TDesignedForm& form = FDesigner->Form();
    AddGhosts(form, items);
    for (TComponent* component : FDesigner->AllComponents()) {
        if (!dynamic_cast<TControl*>(component) && component->GetParentComponent() == nullptr) {
            const TPoint place = IconPlace(*component);
            items.push_back({FDesigner->IsSelected(*component) ? TOverlayItem::SelectedIcon : TOverlayItem::Icon,
                             {place.X, place.Y, place.X + IconExtent, place.Y + IconExtent},
                             component->Name(),
                             &component->ClassType()});
        }
    }
    if (FDrag == TDrag::None || FDrag == TDrag::Waiting) {
        AddSelection(items);
    } else if (FDrag == TDrag::Band || FDrag == TDrag::Create) {
        items.push_back({TOverlayItem::Outline, BandRect(), {}});
    }
    if (FDrag == TDrag::Move || FDrag == TDrag::Size) {
        for (const TGuide& guide : FGuides) {
            items.push_back({TOverlayItem::Guide,
                             guide.IsVertical ? TRect{guide.At, 0, guide.At + 1, form.ClientHeight()}
                                              : TRect{0, guide.At, form.ClientWidth(), guide.At + 1},
                             {}});
        }
    }
    if (FShowsTabOrder) {
        AddTabOrder(form, items);
    }
    return items;
}

void TDesignSurface::AddSelection(std::vector<TOverlayItem>& items) const {
    const std::vector<TComponent*> selected = FDesigner->SelectedComponents();
    for (const TControl* control : FDesigner->SelectedControls()) {
        const bool canSize = selected.size() == 1 && CanSize(*control);
        const std::vector<TRect> handles = HandlesOf(PlaceInForm(*control));
        for (size_t i = 0; i < handles.size(); ++i) {
            if (canSize || i % 2 == 0) { // of several just the corners
                items.push_back({canSize ? TOverlayItem::Handle : TOverlayItem::DimHandle, handles[i], {}});
            }
        }
    }
}

void TDesignSurface::AddGhosts(TWinControl& parent, std::vector<TOverlayItem>& items) const {
    for (int i = 0; i < parent.ControlCount(); ++i) {
        TControl& control = *parent.Controls(i);
        if (!control.Visible()) {
            if (IsHiddenInFile(control)) {
                items.push_back({TOverlayItem::Ghost, PlaceInForm(control), control.Name()});
            }
        } else if (auto* const windowed = dynamic_cast<TWinControl*>(&control)) {
            AddGhosts(*windowed, items);
        } else if (auto* const image = dynamic_cast<TImage*>(&control);
                   (image && !image->Picture().Graphic()) || dynamic_cast<TPaintBox*>(&control)) {
            items.push_back({TOverlayItem::Empty, PlaceInForm(control), {}}); // nothing of it would be seen
        }
    }
}

void TDesignSurface::AddTabOrder(TWinControl& parent, std::vector<TOverlayItem>& items) const {
    for (int i = 0; i < parent.ControlCount(); ++i) {
        auto* const control = dynamic_cast<TWinControl*>(parent.Controls(i));
        if (!control || !control->Visible() || control->Owner() != &FDesigner->Form()) {
            continue;
        }
        const TRect place = PlaceInForm(*control);
        constexpr int width = 18;
        constexpr int height = 14;
        items.push_back({TOverlayItem::Badge,
                         {place.Left, place.Top, place.Left + width, place.Top + height},
                         IntToStr(control->TabOrder())});
        AddTabOrder(*control, items);
    }
}

/// The surface itself: what is around the form, and the handles of the form.
void TDesignSurface::Paint() {
    TCanvas& canvas = Canvas();
    canvas.Brush().SetColor(clAppWorkSpace);
    canvas.FillRect(ClientRect());
    if (!FDesigner || !FDesigner->Form().HandleAllocated()) {
        return;
    }
    const TDesignedForm& form = FDesigner->Form();
    if (!FDesigner->IsSelected(form)) {
        return;
    }
    const std::vector<TRect> handles = HandlesOf(FormMarks());
    for (size_t i = 0; i < handles.size(); ++i) {
        const bool sizes = SizesForm(i) && !FDesigner->Locked();
        canvas.Brush().SetColor(sizes ? clWhite : clBtnShadow);
        canvas.FillRect(handles[i]);
        canvas.Brush().SetColor(sizes ? clHighlight : clBtnFace);
        canvas.FrameRect(handles[i]);
    }
}

} // namespace kx::designer
