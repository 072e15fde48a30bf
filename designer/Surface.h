// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"
#include "designer/Overlay.h"
#include "designer/Snapping.h"
#include "kx/win/MouseWheel.h"

#include <memory>
#include <optional>
#include <vector>

namespace kx::designer {

/// The place where a form is designed: shows the form as a window, with its grid and handles, and gets all that the
/// mouse does in it. The controls of the form get nothing of that. Keys go to the surface, which takes the focus.
class TDesignSurface : public TCustomControl {
    KX_CLASS()

    explicit TDesignSurface(TComponent* owner = nullptr);
    ~TDesignSurface() override;

    TFormDesigner* Designer() const { return FDesigner; }
    /// Not owned; null shows nothing. Before a designer ends it is taken away here.
    void SetDesigner(TFormDesigner* value);
    void FormReplaced(); ///< The designer has another form object.
    void UpdateMarks();  ///< What is selected, or its place, has changed.

    /// The class whose component the next click or drag puts on the form; null: none, clicks select.
    const TClass* Tool() const { return FTool; }
    void SetTool(const TClass* value) { FTool = value; }
    void DropTool(const TPoint& point); ///< Puts its component there; outside of the form it does nothing.

    bool ShowsTabOrder() const { return FShowsTabOrder; }
    /// Numbers show the order in which Tab goes through the controls; a click on the next control gives it the next
    /// one.
    void SetShowsTabOrder(bool value);
    const TDesignGrid& Grid() const { return FGrid; }
    void SetGrid(const TDesignGrid& value);
    bool UsesGuides() const { return FSnapping.UseGuides; }
    void SetUsesGuides(bool value) { FSnapping.UseGuides = value; }

    const TOverlay& Overlay() const { return FOverlay; }
    /// The component at a point of the surface; the form itself where there is no other. Null outside of the form.
    TComponent* ComponentAt(const TPoint& point) const;
    /// Where the component is, in client coordinates of the surface; of an icon its picture.
    TRect PlaceOf(const TComponent& component) const;

    void WndProc(TMessage& message) override;
    void CreateParams(TCreateParams& params) override;

    const TNotifyEvent& OnToolUsed() const { return FOnToolUsed; }
    void SetOnToolUsed(TNotifyEvent value) { FOnToolUsed = std::move(value); }
    /// The selected component is to be edited: a double click.
    void SetOnEdit(TNotifyEvent value) { FOnEdit = std::move(value); }
    /// A menu is wanted, at that point of the screen.
    void SetOnMenu(TEvent<void(const TPoint& screen)> value) { FOnMenu = std::move(value); }

protected:
    void Paint() override;
    void CreateWnd() override;
    void Resize() override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    void DblClick() override;
    void KeyDown(uint16_t& key, TShiftState shift) override;
    bool WantsKey(uint16_t key, TShiftState shift) override;

private:
    class TMouseHook;
    enum class TDrag : uint8_t { None, Waiting, Move, Size, Band, Create };
    struct TMoved {
        TComponent* Component;
        TAlive Alive;
        TRect Before; ///< Its bounds, or its place as an icon.
    };

    bool TakesMouseOf(HWND window) const;
    TPoint FormOrigin() const; ///< Corner of the form's client area.
    TPoint ToForm(const TPoint& point) const;
    TRect PlaceInForm(const TControl& control) const; ///< In client coordinates of the form.
    TRect FormMarks() const;                          ///< What the handles of the form stand around.
    static bool SizesForm(size_t handle);
    static bool IsHiddenInFile(const TControl& control); ///< By its own Visible; pages are hidden by their class.
    void PlaceForm();
    void ShowFormMarks();
    void Scroll(int bar, int command, int position);
    void ScrollTo(int bar, int position);
    void Wheel(int bar, int delta);
    TPoint ShownGrid() const { return FGrid.IsShown ? FGrid.Size : TPoint{0, 0}; }
    std::vector<TOverlayItem> MarksOf() const;
    void AddSelection(std::vector<TOverlayItem>& items) const;
    void AddGhosts(TWinControl& parent, std::vector<TOverlayItem>& items) const;
    void AddTabOrder(TWinControl& parent, std::vector<TOverlayItem>& items) const;
    TControl* ControlIn(TWinControl& parent, const TPoint& point, bool hidden) const;
    TControl* OwnControlAt(const TPoint& formPoint) const;
    TComponent* IconAt(const TPoint& formPoint) const;
    int HandleAt(const TPoint& point) const; ///< 0 to 7 around, clockwise from the upper left; -1: none.
    std::vector<TRect> HandlesOf(const TRect& r) const;
    bool CanSize(const TComponent& component) const;

    void Press(const TPoint& point, TShiftState shift);
    void GiveTabOrder(TControl& control);
    void StartMoved();
    void ForgetMoved();
    void DragTo(const TPoint& point, TShiftState shift);
    void MoveTo(const TPoint& formPoint, bool snap);
    void SizeTo(const TPoint& formPoint, bool snap);
    void EndDrag();
    void CancelDrag();
    void SelectInBand(bool add);
    void CreateInBand();
    TRect BandRect() const; ///< In client coordinates of the form.
    std::vector<TRect> Neighbours(const TWinControl* parent) const;
    void ShowCursorAt(const TPoint& point) const;
    void ArrowKey(uint16_t key, TShiftState shift);
    void SelectNextComponent(bool forward);
    void SelectNearest(int dx, int dy);

    TFormDesigner* FDesigner = nullptr;
    TOverlay FOverlay;
    const TClass* FTool = nullptr;
    TDesignGrid FGrid;
    TSnapping FSnapping;
    bool FShowsTabOrder = false;
    int FNextTab = 0;
    const TWinControl* FTabParent = nullptr; ///< Compared only.
    TPoint FScroll{0, 0};
    TMouseWheel FWheelAcross;
    TMouseWheel FWheelDown;
    /// What the surface itself shows of the form.
    struct TFormLook {
        TRect Bounds;
        bool Selected = false;
        bool Locked = false;
        bool operator==(const TFormLook&) const = default;
    };
    TFormLook FShown;

    TDrag FDrag = TDrag::None;
    TPoint FPressed{0, 0}; ///< Of the surface; what follows is of the form.
    TPoint FDragFrom{0, 0};
    TPoint FDragAt{0, 0};
    int FHandle = -1;
    bool FAddsToSelection = false;
    bool FReleasing = false; ///< The left button has just been released.
    bool FAltIsOurs = false; ///< Alt went down in a drag, and is still down.
    std::vector<TMoved> FMoved;
    std::optional<TFormDesigner::TChange> FChange; ///< As long as something is being moved or sized.
    TWinControl* FContainer = nullptr;             ///< Of a band or a new component, while it is dragged.
    std::vector<TGuide> FGuides;

    TNotifyEvent FOnToolUsed;
    TNotifyEvent FOnEdit;
    TEvent<void(const TPoint&)> FOnMenu;
};

} // namespace kx::designer
