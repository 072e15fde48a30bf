// SPDX-License-Identifier: MIT
// The buttons of a places bar: their looks, their mouse, and the bar made of them.

#include "kx/places/KxPlacesBar.h"

#include "kx/core/Updates.h"
#include "kx/places/KxPlaceIcons.h"
#include "kx/places/KxPlaces.h"
#include "kx/places/KxPlacesStrings.h"
#include "kx/win/PathKind.h"
#include "kx/win/Timers.h"
#include "kx/win/Windows.h"

#include <exception>

namespace kx {

const TClass& TKxPlaceButton::StaticClass() {
    using T = TKxPlaceButton;
    static const TClassBuilder<T> cls("TKxPlaceButton", TToolButton::StaticClass(), [](auto& c) {
        c.Property("IconDll", &T::IconDll, &T::SetIconDll);
        c.Property("IconIndex", &T::IconIndex, &T::SetIconIndex);
        c.Property("IconSelIndex", &T::IconSelIndex, &T::SetIconSelIndex);
    });
    return cls.Class();
}

struct TKxPlaceButton::TSearch {
    explicit TSearch(const std::string& path) : Question(path) { Timer.SetInterval(100); }

    TPathQuestion Question;
    TTimer Timer;
};

TKxPlaceButton::TKxPlaceButton(TComponent* owner) : TToolButton(owner) {
    SetOnMouseDown({this, &TKxPlaceButton::MouseDown1});
    SetOnMouseMove({this, &TKxPlaceButton::MouseMove1});
    SetOnMouseUp({this, &TKxPlaceButton::MouseUp1});
    SetOnDragOver({this, &TKxPlaceButton::BTNOnDragOver});
    SetOnStartDrag({this, &TKxPlaceButton::BTNOnStartDrag});
    SetOnEndDrag({this, &TKxPlaceButton::BTNOnEndDrag});
    SetDragCursor(crDrag);
    SetDragMode(dmManual);
}

TKxPlaceButton::~TKxPlaceButton() = default;

/// The form of the bar: the tool bar is in a scroller, which is in a panel, which is on the form.
IKxPlacesBar* TKxPlaceButton::Bar() const {
    TWinControl* holder = ToolBar();
    for (int level = 0; holder && level < 3; ++level) {
        holder = holder->Parent();
    }
    return dynamic_cast<IKxPlacesBar*>(holder);
}

// --- What it shows

void TKxPlaceButton::TPlaceIcon::Take(const std::string& file, int32_t index) {
    SetHandle(nullptr);
    FSize = {};
    FFile = file;
    FIndex = index;
}

bool TKxPlaceButton::TPlaceIcon::Load() {
    if (FIndex >= 0) {
        SetHandle(ExtractPlaceIcon(FFile, std::exchange(FIndex, -1)).release());
        FSize = {Width(), Height()};
    }
    return !Empty();
}

void TKxPlaceButton::LoadIcon(TPlaceIcon& icon, int32_t& field, int32_t index) {
    if (index < 0) {
        RaiseRangeError();
    }
    icon.Take(FIconDll, index);
    FLook = {};
    field = index;
    Invalidate();
}

void TKxPlaceButton::SetIconDll(const std::string& value) {
    FIconDll = value;
    int32_t first = 0;
    LoadIcon(FIco, first, first);
}

void TKxPlaceButton::SetIconIdx(int32_t value) { LoadIcon(FIco, FIcon, value); }

void TKxPlaceButton::SetIconSelIdx(int32_t value) { LoadIcon(FIcoSel, FIconSel, value); }

void TKxPlaceButton::ShowPlace(const TKxPlace& place) {
    SetCaption(place.GetPlaceName());
    FPlaceHint = place.PlaceDesc();
    SetHint(FPlaceHint);
    FUnreachable = false;
    FSearch.reset();
    const std::string path = place.PlaceSpecPath() == ftNone ? place.FolderPath() : std::string();
    if (TPathQuestion::IsSlow(path)) {
        FSearch = std::make_unique<TSearch>(path);
        FSearch->Timer.SetOnTimer({this, &TKxPlaceButton::SearchTick});
    }
    FIconDll = place.PlaceIconDll(); // the setter would extract an icon that is replaced at once
    FIco.Clear();
    FIcoSel.Clear();
    FLook = {};
    std::exception_ptr error;
    const auto set = [&](void (TKxPlaceButton::*setter)(int32_t), int32_t index) {
        try {
            (this->*setter)(index);
        } catch (const ERangeError&) {
            error = std::current_exception();
        }
    };
    set(&TKxPlaceButton::SetIconIdx, place.PlaceIcon());
    set(&TKxPlaceButton::SetIconSelIdx, place.PlaceHotIcon());
    if (error) {
        std::rethrow_exception(error);
    }
}

// --- Whether the place can be reached

void TKxPlaceButton::SearchTick(TObject*) {
    const TPathQuestion& question = FSearch->Question;
    if (question.IsAnswered()) {
        const bool unreachable = question.Answer(0) == pkUnreachable;
        FSearch.reset();
        SetUnreachable(unreachable);
    } else if (question.IsOverdue()) {
        SetUnreachable(true); // so far
    }
}

void TKxPlaceButton::SetUnreachable(bool value) {
    if (FUnreachable == value) {
        return;
    }
    FUnreachable = value;
    SetHint(value ? FPlaceHint + (FPlaceHint.empty() ? "" : "\r\n") + LoadPlacesString(SKxPlaceUnreachable)
                  : FPlaceHint);
    Invalidate();
}

// --- Painting

void TKxPlaceButton::TextChanged() {
    FLook = {};
    TToolButton::TextChanged();
}

TKxPlaceButton::TLook TKxPlaceButton::Look() {
    return {Width(),
            Height(),
            Down()    ? TFrame::Sunken
            : IsHot() ? TFrame::Raised
                      : TFrame::None,
            static_cast<TColor>(ColorToRGB(clBtnShadow)),
            static_cast<TColor>(ColorToRGB(clHighlightText)),
            FUnreachable,
            Canvas().Font().Handle()};
}

void TKxPlaceButton::Paint() {
    if (!ToolBar() || Width() <= 0 || Height() <= 0) {
        return;
    }
    const TLook look = Look();
    if (look != FLook) {
        FLook = look;
        DrawAll();
    }
    BitBlt(Canvas().Handle(), 0, 0, Width(), Height(), OffScr.Canvas().Handle(), 0, 0, SRCCOPY);
}

/// Deliberate: in the same way whatever the theme, where one would expect the button of a themed tool bar.
void TKxPlaceButton::DrawAll() {
    OffScr.SetSize(Width(), Height());
    TCanvas& canvas = OffScr.Canvas();
    canvas.Brush().SetColor(FLook.Background);
    canvas.Font().SetColor(FLook.Text);
    canvas.FillRect(ClientRect());
    const TPoint extent = canvas.TextExtent(Caption());
    const bool isSameFont = FLook.Font == canvas.Font().Handle();
    DrawIcon(canvas, isSameFont ? extent.Y : Canvas().TextHeight(Caption()));
    DrawFrame(canvas);
    DrawCaption(canvas, extent);
    if (FLook.IsFaint) {
        MakeFaint(canvas);
    }
}

/// Lays the background over all but the frame, so that half of it shows through.
void TKxPlaceButton::MakeFaint(TCanvas& canvas) {
    constexpr BLENDFUNCTION half{AC_SRC_OVER, 0, 128, 0};
    TBitmap background;
    background.SetSize(1, 1);
    background.Canvas().Brush().SetColor(FLook.Background);
    background.Canvas().FillRect({0, 0, 1, 1});
    GdiAlphaBlend(canvas.Handle(), 1, 1, Width() - 2, Height() - 2, background.Canvas().Handle(), 0, 0, 1, 1, half);
}

void TKxPlaceButton::DrawIcon(TCanvas& canvas, int textHeight) {
    TPlaceIcon& icon = FLook.Frame == TFrame::Sunken ? FIcoSel : FIco;
    if (icon.Load()) {
        const TPoint& size = icon.Size();
        const int left = Width() / 2 - size.X / 2;
        const int top = Height() / 2 - size.Y / 2 - textHeight / 2;
        canvas.StretchDraw({left, top, left + size.X, top + size.Y}, icon);
    }
}

bool TKxPlaceButton::IsHot() const {
    if (ToolBar()->KeyButton() == this) {
        return true;
    }
    POINT mouse;
    const RECT client = ToRECT(ClientRect());
    // To find out whose control is under the mouse takes long, and only one of the painted buttons can be under it.
    return GetCursorPos(&mouse) && PtInRect(&client, ToPOINT(ScreenToClient(FromPOINT(mouse)))) &&
           FindDragTarget(FromPOINT(mouse), true) == this;
}

void TKxPlaceButton::DrawFrame(TCanvas& canvas) {
    const int right = Width() - 1;
    const int bottom = Height() - 1;
    const auto line = [&](const TPoint& from, const TPoint& to) { // the last point is left out
        canvas.MoveTo(from.X, from.Y);
        canvas.LineTo(to.X, to.Y);
    };
    if (FLook.Frame == TFrame::Sunken) {
        canvas.Pen().SetColor(clBlack);
        line({0, 0}, {right, 0});
        line({0, 0}, {0, bottom + 1});
        canvas.Pen().SetColor(clWhite);
        line({right, 0}, {right, bottom + 1});
        line({right, bottom}, {0, bottom});
    } else if (FLook.Frame == TFrame::Raised) {
        canvas.Pen().SetColor(clBlack);
        line({0, bottom}, {right, bottom});
        line({right, 0}, {right, bottom + 1});
        canvas.Pen().SetColor(clWhite);
        line({0, 0}, {right, 0});
        line({0, 0}, {0, bottom});
    }
}

namespace {

/// Deliberate: the shortest beginning of the text that is wider than `width`, where one would expect the longest that
/// is not. The caption's rectangle cuts off the excess.
std::string TooWideBeginning(const TCanvas& canvas, const std::string& text, int width) {
    for (size_t end = 0;; end = NextCharacter(text, end)) {
        std::string beginning = text.substr(0, end);
        if (canvas.TextWidth(beginning) > width) {
            return beginning;
        }
        if (end == text.size()) {
            return text.substr(0, NextCharacter(text, 0));
        }
    }
}

} // namespace

void TKxPlaceButton::DrawCaption(TCanvas& canvas, const TPoint& extent) {
    const std::string caption = Caption();
    if (extent.X <= Width() - 4) {
        canvas.TextOut(Width() / 2 - extent.X / 2, Height() - extent.Y - 2, caption);
        return;
    }
    const std::string dots = "...";
    const int left = 3;
    const int top = Height() - extent.Y - 2;
    // Deliberate: the text begins two pixels above its rectangle, where one would expect it inside.
    canvas.TextRect({left, top, left + Width() - 4, top + extent.Y}, left, top - 2,
                    TooWideBeginning(canvas, caption, Width() - canvas.TextWidth(dots) - 6) + dots);
}

// --- Mouse

/// Deliberate: a press alone does nothing, where one would expect the button to go down.
void TKxPlaceButton::MouseDown1(TObject*, TMouseButton, TShiftState, int, int) {}

void TKxPlaceButton::MouseMove1(TObject*, TShiftState shift, int, int) {
    if (shift.Contains(ssLeft) && Bar()) {
        BeginDrag(false);
    }
}

void TKxPlaceButton::MouseUp1(TObject*, TMouseButton button, TShiftState, int, int) {
    IKxPlacesBar* const bar = button == mbLeft ? Bar() : nullptr;
    if (bar) {
        bar->OnFolderClick(Index());
    }
}

/// Without the mouse a press is all that a click is.
void TKxPlaceButton::Press() {
    if (!Outlives(*this, [this] { TToolButton::Press(); })) {
        return;
    }
    if (IKxPlacesBar* const bar = Bar()) {
        bar->OnFolderClick(Index());
    }
}

// --- Drag and drop

void TKxPlaceButton::BTNOnStartDrag(TObject*, TDragObject*& object) { object = nullptr; }

void TKxPlaceButton::BTNOnDragOver(TObject* sender, TObject* source, int, int, TDragState, bool& accept) {
    accept = source != sender && dynamic_cast<TKxPlaceButton*>(source);
}

namespace {

/// Moves the place at `from` to `to`, and the places between by one towards the gap. Their contents move, while the
/// items of the collection stay.
void MovePlace(TKxPlaces& places, int from, int to) {
    TKxPlace moved(nullptr);
    moved.Assign(&places[from]);
    TKxPlace& end = places[to];
    const int step = to < from ? -1 : 1;
    for (int i = from; i != to; i += step) {
        places[i].Assign(&places[i + step]);
    }
    end.Assign(&moved);
}

} // namespace

void TKxPlaceButton::BTNOnEndDrag(TObject* sender, TObject* target, int, int) {
    auto* const over = dynamic_cast<TKxPlaceButton*>(target);
    IKxPlacesBar* const bar = Bar();
    TKxPlaces* const places = bar ? bar->Places() : nullptr;
    const bool isOfThisBar = over && over->ToolBar() == ToolBar();
    if (!isOfThisBar || over == sender || !places) {
        return;
    }
    MovePlace(*places, Index(), over->Index());
    places->UpdatePlacesOn(*ToolBar()); // this frees the button itself
}

// --- Building the bar

void TKxPlaces::UpdatePlacesOn(TToolBar& toolBar) const {
    std::exception_ptr error;  // kept until all buttons are made: they have to match the places
    AsOneUpdate(toolBar, [&] { // so that the bar arranges its buttons once
        while (toolBar.ComponentCount() > 0) {
            toolBar.Components(0)->Free();
        }
        // Deliberate: from the last to the first, where one would expect the other way round: a new button comes before
        // those that are there.
        for (int i = Count() - 1; i >= 0; --i) {
            auto* const button = new TKxPlaceButton(&toolBar);
            button->SetParent(&toolBar);
            button->SetStyle(tbsCheck);
            button->SetAllowAllUp(true);
            button->SetGrouped(true);
            try {
                button->ShowPlace(*GetItem(i));
            } catch (const ERangeError&) {
                error = std::current_exception();
            }
        }
    });
    if (error) {
        std::rethrow_exception(error);
    }
}

} // namespace kx
