// SPDX-License-Identifier: MIT
// Tool bars.

#include "kx/ui/widgets/ComCtrlsToolBar.h"

#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

const TClass& TToolBar::StaticClass() {
    static const TClassBuilder<TToolBar> cls("TToolBar", TWinControl::StaticClass(), [](auto& c) {
        using T = TToolBar;
        c.Creatable();
        c.Property("Align", &T::Align, &T::SetAlign).Default = alTop;
        c.Property("AutoSize", &T::AutoSize, &T::SetAutoSize).Default = false;
        c.Property("ButtonHeight", &T::ButtonHeight, &T::SetButtonHeight).Default = 22;
        c.Property("ButtonWidth", &T::ButtonWidth, &T::SetButtonWidth).Default = 23;
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Reference("DisabledImages", &T::DisabledImages, &T::SetDisabledImages);
        c.Property("EdgeBorders", &T::EdgeBorders, &T::SetEdgeBorders).Default = TEdgeBorders{ebTop}.Bits();
        c.Property("EdgeInner", &T::EdgeInner, &T::SetEdgeInner).Default = esRaised;
        c.Property("EdgeOuter", &T::EdgeOuter, &T::SetEdgeOuter).Default = esLowered;
        c.Property("Flat", &T::Flat, &T::SetFlat).Default = false;
        c.Reference("HotImages", &T::HotImages, &T::SetHotImages);
        c.Reference("Images", &T::Images, &T::SetImages);
        c.Property("Indent", &T::Indent, &T::SetIndent).Default = 0;
        c.Property("List", &T::List, &T::SetList).Default = false;
        c.Property("ShowCaptions", &T::ShowCaptions, &T::SetShowCaptions).Default = false;
        c.Property("Wrapable", &T::Wrapable, &T::SetWrapable).Default = true;
        c.Property("OnCustomDraw", &T::OnCustomDraw, &T::SetOnCustomDraw);
        c.Property("OnCustomDrawButton", &T::OnCustomDrawButton, &T::SetOnCustomDrawButton);
    });
    return cls.Class();
}

TToolBar::TToolBar(TComponent* owner) : TWinControl(owner), FCanvas(std::make_unique<TCanvas>()) {
    SetControlStyle({csAcceptsControls, csCaptureMouse, csClickEvents, csDoubleClicks});
    SetBoundsFields(0, 0, 150, 29);
    SetAlign(alTop);
    FImageLink.SetOnChange([this](TObject*) {
        ApplySizes();
        Invalidate();
    });
}

TToolBar::~TToolBar() {
    Destroying();
    for (TToolButton* button : FButtons) {
        button->FToolBar = nullptr;
    }
}

void TToolBar::Notification(TComponent* component, TOperation operation) {
    TWinControl::Notification(component, operation);
    if (operation != opRemove) {
        return;
    }
    bool lost = false;
    for (TImageList** field : {&FImages, &FHotImages, &FDisabledImages}) {
        if (*field == component) {
            *field = nullptr;
            lost = true;
        }
    }
    if (lost) {
        ApplyImages();
    }
}

void TToolBar::Loaded() {
    if (Outlives(*this, [this] { TWinControl::Loaded(); })) {
        FrameChanged(); // arranges the buttons
    }
}

/// Form files list the buttons in the bar's order, which may differ from the order of their creation.
void TToolBar::GetChildren(const TGetChildProc& proc, TComponent* root) {
    const auto buttons = FButtons;
    for (TToolButton* button : buttons) {
        if (button->Owner() == root) {
            proc(button);
        }
    }
    TWinControl::GetChildren(
        [&](TComponent* child) {
            if (std::find(buttons.begin(), buttons.end(), child) == buttons.end()) {
                proc(child);
            }
        },
        root);
}

// --- Buttons

TToolButton* TToolBar::Buttons(int index) const {
    if (index < 0 || index >= ButtonCount()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return FButtons[static_cast<size_t>(index)];
}

int TToolBar::PlaceFor(const TToolButton& button) const {
    if (button.IsLoading() || IsLoading()) {
        return ButtonCount();
    }
    const auto liesBefore = [&](const TToolButton* other) {
        const int bottom = other->Top() + other->Height();
        return bottom <= button.Top() || (other->Top() <= button.Top() && other->Left() < button.Left());
    };
    return static_cast<int>(std::find_if_not(FButtons.begin(), FButtons.end(), liesBefore) - FButtons.begin());
}

void TToolBar::AddButton(TToolButton& button) {
    const int index = PlaceFor(button);
    FButtons.insert(FButtons.begin() + index, &button);
    button.FToolBar = this;
    button.FCommand = FLastCommand = static_cast<WORD>(FLastCommand % 0x7FFF + 1);
    if (FUpdateCount > 0) {
        FRefill = true;
    } else if (HandleAllocated()) {
        InsertIntoWindow(button, index);
    }
    Arrange();
}

void TToolBar::InsertIntoWindow(TToolButton& button, int index) {
    std::wstring text;
    TBBUTTON info = SystemButton(button, text);
    SendMessageW(WindowHandle(), TB_INSERTBUTTONW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    if (FShowCaptions) {
        ApplySizes();
    }
}

void TToolBar::RemoveButton(TToolButton& button) {
    const int index = button.Index();
    if (FKeyButton == &button) {
        FKeyButton = nullptr;
    }
    FButtons.erase(FButtons.begin() + index);
    button.FToolBar = nullptr;
    if (FUpdateCount > 0) {
        FRefill = true;
    } else if (HandleAllocated()) {
        SendMessageW(WindowHandle(), TB_DELETEBUTTON, static_cast<WPARAM>(index), 0);
    }
    Arrange();
}

void TToolBar::BeginUpdate() { ++FUpdateCount; }

void TToolBar::EndUpdate() {
    if (--FUpdateCount == 0) {
        if (std::exchange(FRefill, false)) {
            FillWindow();
        }
        Arrange();
    }
}

void TToolBar::ReleaseFellows(const TToolButton& button) {
    const int index = button.Index();
    const auto release = [&](int from, int step) {
        for (int i = from; i >= 0 && i < ButtonCount() && Buttons(i)->IsGroupCheck(); i += step) {
            Buttons(i)->SetDown(false);
        }
    };
    release(index - 1, -1);
    release(index + 1, 1);
}

// --- Window

void TToolBar::CreateParams(TCreateParams& params) {
    TWinControl::CreateParams(params);
    params.BaseClass = TOOLBARCLASSNAMEA;
    params.Style |= CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
    params.Style |= FFlat ? DWORD{TBSTYLE_FLAT} : 0;
    params.Style |= FList ? DWORD{TBSTYLE_LIST} : 0;
    if (TabStop()) {
        params.ExStyle &= ~static_cast<DWORD>(WS_EX_CONTROLPARENT); // system dialogs would not stop at it
    }
}

void TToolBar::CreateWnd() {
    TWinControl::CreateWnd();
    MustOutlive([this] { SendMessageW(WindowHandle(), TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0); });
    MustOutlive([this] { SendMessageW(WindowHandle(), TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_DRAWDDARROWS); });
    MustOutlive([this] { SendMessageW(WindowHandle(), TB_SETINDENT, static_cast<WPARAM>(FIndent), 0); });
    MustOutlive([this] { ApplyImages(); });
    MustOutlive([this] { FillWindow(); });
    Arrange();
}

/// `text` holds the caption until the system has copied it.
TBBUTTON TToolBar::SystemButton(TToolButton& button, std::wstring& text) const {
    button.FToldState = button.SystemState();
    TBBUTTON info{};
    info.iBitmap = button.IsSeparator() ? button.Width() : button.FImageIndex < 0 ? I_IMAGENONE : button.FImageIndex;
    info.idCommand = button.FCommand;
    info.fsState = button.FToldState;
    info.fsStyle = button.SystemStyle();
    info.dwData = reinterpret_cast<DWORD_PTR>(&button);
    info.iString = -1;
    if (FShowCaptions && !button.IsSeparator()) {
        text = ToWide(button.Caption());
        info.iString = reinterpret_cast<INT_PTR>(text.c_str());
    }
    return info;
}

void TToolBar::FillWindow() {
    if (!HandleAllocated()) {
        return;
    }
    std::vector<std::wstring> texts(FButtons.size());
    std::vector<TBBUTTON> infos;
    for (TToolButton* button : FButtons) {
        infos.push_back(SystemButton(*button, texts[infos.size()]));
    }
    // A descendant hears of each message. It may free the bar, or have another window made, which has its buttons then.
    const TAlive alive(*this);
    HWND window = WindowHandle();
    const auto isThere = [&] { return alive && WindowHandle() == window; };
    const auto send = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        return isThere() ? SendMessageW(window, message, wParam, lParam) : 0;
    };
    send(WM_SETREDRAW, FALSE, 0);
    for (auto i = send(TB_BUTTONCOUNT, 0, 0); i-- > 0;) {
        send(TB_DELETEBUTTON, static_cast<WPARAM>(i), 0);
    }
    send(TB_ADDBUTTONSW, infos.size(), reinterpret_cast<LPARAM>(infos.data()));
    send(WM_SETREDRAW, TRUE, 0);
    if (isThere()) {
        ApplySizes();
    }
}

void TToolBar::UpdateButton(TToolButton& button) {
    if (FUpdateCount > 0) {
        FRefill = true;
    } else if (HandleAllocated()) {
        const int index = button.Index();
        SendMessageW(WindowHandle(), TB_DELETEBUTTON, static_cast<WPARAM>(index), 0);
        InsertIntoWindow(button, index);
    }
    Arrange();
}

void TToolBar::UpdateState(TToolButton& button) {
    button.FToldState = button.SystemState();
    if (HandleAllocated() && !FRefill) {
        SendMessageW(WindowHandle(), TB_SETSTATE, button.FCommand, button.FToldState);
    }
}

void TToolBar::ApplyImages() {
    if (!HandleAllocated()) {
        return;
    }
    const auto set = [this](UINT message, TImageList* images) {
        return Outlives(*this, [=, this] {
            SendMessageW(WindowHandle(), message, 0, reinterpret_cast<LPARAM>(images ? images->Handle() : nullptr));
        });
    };
    if (set(TB_SETIMAGELIST, FImages) && set(TB_SETHOTIMAGELIST, FHotImages) &&
        set(TB_SETDISABLEDIMAGELIST, FDisabledImages) && Outlives(*this, [this] { ApplySizes(); })) {
        Arrange();
    }
}

/// Sets the sizes of images and buttons, which the system takes only once it has images and buttons.
void TToolBar::ApplySizes() {
    if (HandleAllocated()) {
        const TPoint image = FImages ? TPoint{FImages->Width(), FImages->Height()} : TPoint{};
        const TPoint least = FShowCaptions ? CaptionedExtent(image) : TPoint{};
        HWND window = WindowHandle();
        const TPoint size{std::max(FButtonWidth, least.X), std::max(FButtonHeight, least.Y)};
        SendMessageW(window, TB_SETBITMAPSIZE, 0, MakeLParam(image.X, image.Y));
        if (IsWindow(window)) { // a descendant may have had it made anew: the new window has got its sizes by then
            SendMessageW(window, TB_SETBUTTONSIZE, 0, MakeLParam(size.X, size.Y));
        }
    }
}

/// Size of a button that shows its image and the longest caption.
TPoint TToolBar::CaptionedExtent(const TPoint& image) const {
    constexpr int gap = 4;
    const TWindowDC dc(WindowHandle());
    TCanvas canvas;
    canvas.SetHandle(dc.Handle());
    canvas.Font().Assign(&Font());
    TPoint text;
    for (const TToolButton* button : FButtons) {
        TRect r{};
        canvas.DrawText(button->IsSeparator() ? std::string() : button->Caption(), r, DT_CALCRECT | DT_SINGLELINE);
        text = {std::max(text.X, r.Right), std::max(text.Y, r.Bottom)};
    }
    if (FList) {
        return {image.X + text.X + 3 * gap, std::max(image.Y, text.Y) + 2 * gap};
    }
    return {std::max(image.X, text.X) + 2 * gap, image.Y + text.Y + 2 * gap};
}

// --- Arranging

TPoint TToolBar::ButtonExtent() const {
    if (!HandleAllocated() || FButtons.empty()) {
        return {FButtonWidth, FButtonHeight};
    }
    const auto size = static_cast<DWORD>(SendMessageW(WindowHandle(), TB_GETBUTTONSIZE, 0, 0));
    return {LOWORD(size), HIWORD(size)};
}

/// Decides which buttons end a row.
void TToolBar::FindRows(int width) {
    constexpr int arrowWidth = 15;
    const TPoint extent = ButtonExtent();
    TToolButton* last = nullptr; // the last one in the row so far
    int right = FIndent;
    FRowCount = FButtons.empty() ? 0 : 1;
    for (TToolButton* button : FButtons) {
        button->FRowEnd = false;
        if (!button->Visible()) {
            continue;
        }
        const int own =
            button->IsSeparator() ? button->Width() : extent.X + (button->FStyle == tbsDropDown ? arrowWidth : 0);
        if (last && (last->FWrap || (FWrapable && right + own > width))) {
            last->FRowEnd = true;
            right = FIndent;
            ++FRowCount;
        }
        right += own;
        last = button;
    }
}

void TToolBar::Arrange() {
    if (FArranging || FUpdateCount > 0 || IsLoading() || IsDestroying()) {
        return;
    }
    const TFieldScope arranging(*this, FArranging, true);
    const int width = ClientWidth();
    FindRows(width);
    if (HandleAllocated() && !FRefill) {
        bool changed = false;
        for (TToolButton* button : FButtons) {
            if (button->FToldState != button->SystemState()) {
                UpdateState(*button);
                changed = true;
            }
        }
        if (changed) {
            ApplySizes(); // this has the system find the places anew
        }
    }
    PlaceButtons();
}

void TToolBar::PlaceButtons() {
    const TPoint extent = ButtonExtent();
    int left = FIndent;
    int top = 0;
    int bottom = 0;
    for (size_t i = 0; i < FButtons.size(); ++i) {
        TToolButton& button = *FButtons[i];
        RECT r{left, top, left + (button.IsSeparator() ? button.Width() : extent.X), top + extent.Y};
        if (HandleAllocated()) {
            SendMessageW(WindowHandle(), TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&r));
        }
        if (button.Visible()) {
            button.SetBoundsFields(r.left, r.top, r.right - r.left, r.bottom - r.top);
            bottom = std::max<int>(bottom, r.bottom);
            left = button.FRowEnd ? FIndent : r.right;
            top = button.FRowEnd ? r.bottom : r.top;
        }
    }
    Invalidate();
    AdjustHeight(bottom);
}

void TToolBar::AdjustHeight(int bottom) {
    const int height = bottom + FrameExtent().Y;
    const bool changed = height != std::exchange(FRowsHeight, height);
    if (!FAutoSize || Align() == alLeft || Align() == alRight || Align() == alClient) {
        return;
    }
    if (dynamic_cast<IContentScroller*>(Parent())) {
        if (changed) {
            RequestAlign(); // the parent asks for the height
        }
    } else if (bottom > 0) {
        SetBounds(Left(), Top(), Width(), height);
    }
}

void TToolBar::FontChanged() {
    if (Outlives(*this, [this] { TWinControl::FontChanged(); }) && HandleAllocated()) {
        ApplySizes();
        Arrange();
    }
}

// --- Settings

/// Makes the window anew: the system takes a style only then.
void TToolBar::Restyle() {
    if (HandleAllocated()) {
        RecreateWnd();
    } else {
        Arrange();
    }
}

void TToolBar::SetButtonWidth(int value) {
    FButtonWidth = std::max(value, 1);
    ApplySizes();
    Arrange();
}

void TToolBar::SetButtonHeight(int value) {
    FButtonHeight = std::max(value, 1);
    ApplySizes();
    Arrange();
}

void TToolBar::SetAutoSize(bool value) {
    FAutoSize = value;
    Arrange();
}

void TToolBar::SetWrapable(bool value) {
    FWrapable = value;
    Arrange();
}

void TToolBar::SetFlat(bool value) {
    if (FFlat != value) {
        FFlat = value;
        Restyle();
    }
}

void TToolBar::SetList(bool value) {
    if (FList != value) {
        FList = value;
        Restyle();
    }
}

void TToolBar::SetShowCaptions(bool value) {
    if (FShowCaptions != value) {
        FShowCaptions = value;
        Restyle();
    }
}

void TToolBar::SetIndent(int value) {
    if (FIndent != value) {
        FIndent = std::max(value, 0);
        Restyle();
    }
}

void TToolBar::SetImageField(TImageList*& field, TImageList* value) {
    if (field == value) {
        return;
    }
    if (field) {
        RemoveFreeNotification(field);
    }
    field = value;
    if (value) {
        FreeNotification(value);
        if (&field == &FImages) {
            value->RegisterChanges(FImageLink);
        }
    }
    ApplyImages();
}

void TToolBar::SetEdgeBorders(TEdgeBorders value) {
    FEdgeBorders = value;
    FrameChanged();
}

void TToolBar::SetEdgeInner(TEdgeStyle value) {
    FEdgeInner = value;
    FrameChanged();
}

void TToolBar::SetEdgeOuter(TEdgeStyle value) {
    FEdgeOuter = value;
    FrameChanged();
}

} // namespace kx
