// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/graphics/Graphics.h"
#include "kx/ui/controls/Accessible.h"
#include "kx/ui/controls/ControlDrag.h"
#include "kx/ui/controls/ControlTypes.h"
#include "kx/win/Messages.h"

#include <memory>
#include <optional>
#include <string>

namespace kx {

class TActionLink;
class TBasicAction;
class TControl;
class TPopupMenu;
class TWinControl;
class TCustomForm;

/// Least and greatest size, in pixels; 0: no limit. The least one wins.
struct TSizeLimits {
    int MinWidth = 0;
    int MinHeight = 0;
    int MaxWidth = 0;
    int MaxHeight = 0;

    void Apply(int& width, int& height) const; ///< Brings a size within the limits.
};

/// Least and greatest size of a control.
class TSizeConstraints : public TPersistent {
    KX_CLASS()

    explicit TSizeConstraints(TControl& control) : FControl(control) {}

    int MinWidth() const { return FLimits.MinWidth; }
    void SetMinWidth(int value) { Change(FLimits.MinWidth, value); }
    int MinHeight() const { return FLimits.MinHeight; }
    void SetMinHeight(int value) { Change(FLimits.MinHeight, value); }
    int MaxWidth() const { return FLimits.MaxWidth; }
    void SetMaxWidth(int value) { Change(FLimits.MaxWidth, value); }
    int MaxHeight() const { return FLimits.MaxHeight; }
    void SetMaxHeight(int value) { Change(FLimits.MaxHeight, value); }

    const TSizeLimits& Limits() const { return FLimits; }
    void Assign(const TPersistent* source) override;

private:
    friend class TControl;
    void Change(int& field, int value);
    void ChangeScale(int to, int from);
    TControl& FControl;
    TSizeLimits FLimits;
};

/// Pixels at the four edges of a control.
class TEdges : public TPersistent {
    KX_CLASS()

    TEdges(TControl& control, int width)
        : FControl(control), FLeft(width), FTop(width), FRight(width), FBottom(width) {}

    int Left() const { return FLeft; }
    void SetLeft(int value) { Change(FLeft, value); }
    int Top() const { return FTop; }
    void SetTop(int value) { Change(FTop, value); }
    int Right() const { return FRight; }
    void SetRight(int value) { Change(FRight, value); }
    int Bottom() const { return FBottom; }
    void SetBottom(int value) { Change(FBottom, value); }

    TRect Inside(const TRect& r) const; ///< The rectangle without its edges. @throws EIntOverflow
    void Assign(const TPersistent* source) override;

protected:
    TControl& Control() const { return FControl; }
    virtual void Changed() {}

private:
    friend class TControl;
    friend class TWinControl;
    void Change(int& field, int value);
    void ChangeScale(int to, int from); ///< The controls are not arranged.
    TControl& FControl;
    int FLeft;
    int FTop;
    int FRight;
    int FBottom;
};

/// What an aligned control leaves free around itself; 3 pixels at first.
class TMargins : public TEdges {
    KX_CLASS()
    explicit TMargins(TControl& control) : TEdges(control, 3) {}

protected:
    void Changed() override;
};

/// Everything that is seen: a rectangle in its parent's client area, with text, font, colour and mouse events.
/// All sizes are pixels of the screen. Those that a form file brings are scaled when the form is complete.
class TControl : public TComponent {
    KX_CLASS()

    explicit TControl(TComponent* owner = nullptr);
    ~TControl() override;

    // --- Place, in client coordinates of the parent (of the screen for top-level windows)

    int Left() const { return FLeft; }
    void SetLeft(int value) { SetBounds(value, FTop, FWidth, FHeight); }
    int Top() const { return FTop; }
    void SetTop(int value) { SetBounds(FLeft, value, FWidth, FHeight); }
    int Width() const { return FWidth; }
    void SetWidth(int value) { SetBounds(FLeft, FTop, value, FHeight); }
    int Height() const { return FHeight; }
    void SetHeight(int value) { SetBounds(FLeft, FTop, FWidth, value); }
    /// @throws EIntOverflow when the right or the bottom edge lies beyond 32 bits.
    virtual void SetBounds(int left, int top, int width, int height);
    TRect BoundsRect() const { return {FLeft, FTop, FLeft + FWidth, FTop + FHeight}; }
    void SetBoundsRect(const TRect& r) { SetBounds(r.Left, r.Top, kx::Width(r), kx::Height(r)); }

    /// The inside without frame and scroll bars; Left and Top are 0.
    virtual TRect ClientRect() const { return {0, 0, FWidth, FHeight}; }
    int ClientWidth() const { return ClientRect().Right; }
    virtual void SetClientWidth(int value) { SetClientSize(value, ClientHeight()); }
    int ClientHeight() const { return ClientRect().Bottom; }
    virtual void SetClientHeight(int value) { SetClientSize(ClientWidth(), value); }
    void SetClientSize(int width, int height);
    virtual TPoint ClientOrigin() const; ///< Screen coordinates of the client area's origin.
    virtual TPoint ClientToScreen(const TPoint& point) const;
    virtual TPoint ScreenToClient(const TPoint& point) const;

    TAlign Align() const { return FAlign; }
    void SetAlign(TAlign value);
    TAnchors Anchors() const { return FAnchors; }
    void SetAnchors(TAnchors value);
    TSizeConstraints& Constraints() { return FConstraints; }
    const TSizeConstraints& Constraints() const { return FConstraints; }
    void SetConstraints(const TSizeConstraints& value) { FConstraints.Assign(&value); }
    TMargins& Margins() { return FMargins; }
    const TMargins& Margins() const { return FMargins; }
    void SetMargins(const TMargins& value) { FMargins.Assign(&value); }
    bool AlignWithMargins() const { return FAlignWithMargins; } ///< Aligned, the control keeps its margins free.
    void SetAlignWithMargins(bool value);

    /// A length in pixels of DefaultDpi, in those of the control; its font tells which they are.
    int ScaleLength(int length) const;

    // --- Family

    TWinControl* Parent() const { return FParent; }
    virtual void SetParent(TWinControl* value);
    TComponent* GetParentComponent() const override;
    void SetParentComponent(TComponent* parent) override;
    void BringToFront() { SetZOrder(true); }
    void SendToBack() { SetZOrder(false); }

    // --- Look

    bool Visible() const { return FVisible; }
    virtual void SetVisible(bool value);
    void Show() { SetVisible(true); }
    void Hide() { SetVisible(false); }
    virtual bool Enabled() const { return FEnabled; }
    virtual void SetEnabled(bool value);
    bool Showing() const; ///< Visible, and all its parents too.

    TColor Color() const { return FColor; }
    void SetColor(TColor value);
    bool ParentColor() const { return FParentColor; } ///< The colour follows the parent's.
    void SetParentColor(bool value);
    TFont& Font() { return *FFont; }
    const TFont& Font() const { return *FFont; }
    void SetFont(const TFont& value) { FFont->Assign(&value); }
    bool ParentFont() const { return FParentFont; } ///< The font follows the parent's.
    void SetParentFont(bool value);

    TBiDiMode BiDiMode() const { return FBiDiMode; }
    void SetBiDiMode(TBiDiMode value);
    bool ParentBiDiMode() const { return FParentBiDiMode; } ///< The reading order follows the parent's.
    void SetParentBiDiMode(bool value);
    bool UseRightToLeftReading() const { return FBiDiMode != bdLeftToRight; }
    bool UseRightToLeftAlignment() const { return FBiDiMode == bdRightToLeft; }
    bool UseRightToLeftScrollBar() const { return FBiDiMode == bdRightToLeft || FBiDiMode == bdRightToLeftNoAlign; }
    /// DT_ flags with the one for the control's reading order.
    UINT DrawTextBiDiModeFlags(UINT flags) const;
    TAlignment BiDiAlignment(TAlignment alignment) const; ///< Left and right swapped when texts stand right.

    /// Caption or contents, whatever the control shows as its text.
    virtual std::string Text() const { return FText; }
    virtual void SetText(const std::string& value);
    std::string Caption() const { return Text(); }
    void SetCaption(const std::string& value) { SetText(value); }
    void SetName(const std::string& value) override;

    const std::string& Hint() const { return FHint; } ///< "short|long".
    void SetHint(const std::string& value) { FHint = value; }
    bool ShowHint() const { return FShowHint; }
    void SetShowHint(bool value);
    bool ParentShowHint() const { return FParentShowHint; }
    void SetParentShowHint(bool value);

    int HelpContext() const { return FHelpContext; } ///< Number of a topic in the program's help; 0: none.
    void SetHelpContext(int value) { FHelpContext = value; }
    const std::string& HelpKeyword() const { return FHelpKeyword; } ///< With htKeyword, the topic; empty: none.
    void SetHelpKeyword(const std::string& value) { FHelpKeyword = value; }
    THelpType HelpType() const { return FHelpType; }
    void SetHelpType(THelpType value) { FHelpType = value; }
    /// The control, or the nearest one around it, that has a topic of its type; null: none has.
    const TControl* NearestHelp() const;
    /// The control's topic, or that of the nearest control around it that has one; 0: none has.
    int NearestHelpContext() const;

    /// What a click does when there is no OnClick. The control follows the action's caption, hint and state as long as
    /// its own are the same. Not owned.
    TBasicAction* Action() const;
    void SetAction(TBasicAction* value);

    TCursor Cursor() const { return FCursor; }
    void SetCursor(TCursor value);
    TPopupMenu* PopupMenu() const { return FPopupMenu; } ///< Not owned.
    void SetPopupMenu(TPopupMenu* value);

    TControlStyle ControlStyle() const { return FControlStyle; }

    // --- Drag and drop

    TCursor DragCursor() const { return FDragCursor; } ///< Over a target that accepts the control.
    void SetDragCursor(TCursor value) { FDragCursor = value; }
    TDragMode DragMode() const { return FDragMode; }
    void SetDragMode(TDragMode value) { FDragMode = value; }
    /// The user drags the control from now on. When not `immediate`, dragging begins once the mouse has moved by more
    /// than `threshold` pixels with the left button held, counted from where the button went down; until then
    /// everything goes its usual way, so that a click stays a click. -1: the system's threshold. The press that becomes
    /// a drag brings neither OnClick nor OnMouseUp. While another drag is on, or about to begin, nothing happens.
    void BeginDrag(bool immediate, int threshold = -1);
    /// Ends the drag of this control, if there is one: with `drop` where the mouse is, else without effect.
    void EndDrag(bool drop);
    bool Dragging() const; ///< The user is dragging this control.

    virtual void Invalidate(); ///< Paints again soon.
    virtual void Update();     ///< Paints now what is invalid.
    void Repaint() {
        Invalidate();
        Update();
    }
    void Refresh() { Repaint(); }

    // --- Messages

    // Texts in messages are UTF-16, since all windows are Unicode windows.

    /// Handles a message as if it had been sent to the control.
    LRESULT Perform(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    virtual void WndProc(TMessage& message);
    /// What happens to messages that nobody handles.
    virtual void DefaultHandler(TMessage& message);

    bool MouseCapture() const;
    void SetMouseCapture(bool value);
    virtual void Click(); ///< Fires OnClick.

    const TNotifyEvent& OnClick() const { return FOnClick; }
    void SetOnClick(TNotifyEvent value) { FOnClick = std::move(value); }
    const TNotifyEvent& OnDblClick() const { return FOnDblClick; }
    void SetOnDblClick(TNotifyEvent value) { FOnDblClick = std::move(value); }
    const TMouseEvent& OnMouseDown() const { return FOnMouseDown; }
    void SetOnMouseDown(TMouseEvent value) { FOnMouseDown = std::move(value); }
    const TMouseMoveEvent& OnMouseMove() const { return FOnMouseMove; }
    void SetOnMouseMove(TMouseMoveEvent value) { FOnMouseMove = std::move(value); }
    const TMouseEvent& OnMouseUp() const { return FOnMouseUp; }
    void SetOnMouseUp(TMouseEvent value) { FOnMouseUp = std::move(value); }
    const TNotifyEvent& OnMouseEnter() const { return FOnMouseEnter; }
    void SetOnMouseEnter(TNotifyEvent value) { FOnMouseEnter = std::move(value); }
    const TNotifyEvent& OnMouseLeave() const { return FOnMouseLeave; }
    void SetOnMouseLeave(TNotifyEvent value) { FOnMouseLeave = std::move(value); }
    const TNotifyEvent& OnResize() const { return FOnResize; }
    void SetOnResize(TNotifyEvent value) { FOnResize = std::move(value); }
    const TConstrainedResizeEvent& OnConstrainedResize() const { return FOnConstrainedResize; }
    void SetOnConstrainedResize(TConstrainedResizeEvent value) { FOnConstrainedResize = std::move(value); }
    const TContextPopupEvent& OnContextPopup() const { return FOnContextPopup; }
    void SetOnContextPopup(TContextPopupEvent value) { FOnContextPopup = std::move(value); }
    const TDragOverEvent& OnDragOver() const { return FOnDragOver; }
    void SetOnDragOver(TDragOverEvent value) { FOnDragOver = std::move(value); }
    const TDragDropEvent& OnDragDrop() const { return FOnDragDrop; }
    void SetOnDragDrop(TDragDropEvent value) { FOnDragDrop = std::move(value); }
    const TStartDragEvent& OnStartDrag() const { return FOnStartDrag; }
    void SetOnStartDrag(TStartDragEvent value) { FOnStartDrag = std::move(value); }
    const TEndDragEvent& OnEndDrag() const { return FOnEndDrag; }
    void SetOnEndDrag(TEndDragEvent value) { FOnEndDrag = std::move(value); }

    void Loaded() override;

    // --- Screen readers

    /// What is told of the control: what it shows. Its name is its caption, else that of the label that leads to it,
    /// else its hint.
    virtual TAccessibleInfo AccessibleInfo() const;
    /// Does what the info names as the action, as if the user had done it.
    virtual void AccessibleAction() {}

protected:
    friend class TWinControl;
    friend class TCustomForm;
    friend class TMargins;
    friend class TSizeConstraints;
    friend class detail::TDragSession;

    void Notification(TComponent* component, TOperation operation) override;
    void SetControlStyle(TControlStyle value) { FControlStyle = value; }

    /// The control got the action `sender`, and takes over from it what there is for controls; with `checkDefaults`
    /// only what it has no setting of its own for.
    virtual void ActionChange(TObject* sender, bool checkDefaults);

    // What descendants do when something changed
    virtual void TextChanged();
    virtual void FontChanged();
    virtual void ColorChanged();
    virtual void EnabledChanged() { Invalidate(); }
    virtual void VisibleChanged();
    virtual void ShowHintChanged() {}
    virtual void BiDiModeChanged() { Invalidate(); }

    /// Tells screen readers that something has happened to the control, or to a part of it. What the user hears of a
    /// window's focus, text, and whether it is enabled, the system tells itself.
    void TellAccessible(TAccessibleEvent event, int part = -1) const;
    /// The control that the accelerator of this one leads to: what this one says is that one's name.
    virtual const TWinControl* LabelledControl() const { return nullptr; }

    // Fire their events
    virtual void DblClick();
    virtual void MouseDown(TMouseButton button, TShiftState shift, int x, int y);
    virtual void MouseMove(TShiftState shift, int x, int y);
    virtual void MouseUp(TMouseButton button, TShiftState shift, int x, int y);
    virtual void MouseEnter();
    virtual void MouseLeave();
    virtual void Resize();
    virtual void ConstrainedResize(TSizeLimits& limits);
    virtual void DoContextPopup(const TPoint& position, bool& handled);
    /// Something is dragged over this control; `accept` is false at first, true when there is a handler to change it.
    virtual void DragOver(TObject* source, int x, int y, TDragState state, bool& accept);
    virtual void DragDrop(TObject* source, int x, int y);
    virtual void DoStartDrag(TDragObject*& object);
    virtual void DoEndDrag(TObject* target, int x, int y);

    /// Opens a menu below the control, under its left edge, or where it is read from right to left, under its right
    /// one. Returns when the menu is closed; its handlers may have freed the control.
    void OpenBelow(TPopupMenu& menu);
    bool IsMirroredWindow() const; ///< The window that shows the control has the system's layout from right to left.
    /// Where a menu that the keyboard asks for shows, in client coordinates.
    virtual TPoint KeyboardMenuPoint() const { return {0, 0}; }
    /// The letter behind "&" in the caption was pressed with Alt; `true` when the control took it.
    virtual bool DialogChar(wchar_t letter);
    virtual void SetZOrder(bool front);
    /// Window that gets the control's mouse messages; null when there is none.
    virtual HWND MessageWindow() const;
    /// The control moves, or its window goes: a canvas that holds on to a context of it gives it back.
    virtual void ContextStale() {}
    void RequestAlign(); ///< The parent arranges its controls again.
    /// Takes all that is measured in pixels from those of `from` dots per inch to those of `to`. Descendants that have
    /// more of it call the inherited method first. Handlers of sizes may run and free the control.
    virtual void ChangeScale(int to, int from);
    virtual void ScaleBounds(int to, int from); ///< The part of ChangeScale that places the control.
    void ScaleFont(int to, int from);           ///< ParentFont stays what it is.
    /// The control, or the form that it is on, is not complete: handlers of its size would come too early.
    bool IsIncomplete() const;
    void SetBoundsFields(int left, int top, int width, int height);
    /// The limits that the constraints and OnConstrainedResize set. Its handler may free the control.
    TSizeLimits SizeLimits();
    /// The rectangle that these bounds come to, with a size that the control may have; none: the control has gone.
    std::optional<TRect> LimitedBounds(int left, int top, int width, int height);
    void UpdateAnchorBase();
    /// Takes over the parent's font, colour, hint setting and reading order where it follows them.
    void ParentSettingsChanged();

private:
    static TControl*& CaptureControl(); ///< The one of this thread that took the mouse last.

    void MouseMessage(TMessage& message);
    void ButtonDown(TMessage& message, TMouseButton button, bool isDouble);
    void ButtonUp(TMessage& message, TMouseButton button);
    void ContextMenu(TMessage& message);
    void OwnFontChanged();
    void CheckParent(TWinControl* value) const; ///< @throws EInvalidOperation for a parent that it cannot have.
    void AnchoredBounds(const TRect& parentClient);

    int FLeft = 0;
    int FTop = 0;
    int FWidth = 0;
    int FHeight = 0;
    TWinControl* FParent = nullptr;
    TControlStyle FControlStyle{csCaptureMouse, csClickEvents, csDoubleClicks, csSetCaption};
    TAlign FAlign = alNone;
    TAnchors FAnchors{akLeft, akTop};
    TRect FAnchorBase;        ///< Bounds when the program set them last,
    TPoint FAnchorParentSize; ///< and the parent's client size at that time.
    TSizeConstraints FConstraints{*this};
    TMargins FMargins{*this};
    std::unique_ptr<TFont> FFont;
    TColor FColor = clBtnFace;
    TCursor FCursor = crDefault;
    TCursor FDragCursor = crDrag;
    TDragMode FDragMode = dmManual;
    TBiDiMode FBiDiMode = bdLeftToRight;
    int FHelpContext = 0;
    THelpType FHelpType = htContext;
    std::string FHelpKeyword;
    std::string FText;
    std::string FHint;
    TPopupMenu* FPopupMenu = nullptr;
    std::unique_ptr<TActionLink> FActionLink; ///< Null until there is an action.
    bool FVisible = true;
    bool FEnabled = true;
    bool FParentColor = true;
    bool FParentFont = true;
    bool FShowHint = false;
    bool FParentShowHint = true;
    bool FParentBiDiMode = true;
    bool FFollowing = false; ///< A value is being taken over from the parent.
    bool FAlignWithMargins = false;
    bool FClicked = false; ///< The left button went down here.

    TNotifyEvent FOnClick;
    TNotifyEvent FOnDblClick;
    TMouseEvent FOnMouseDown;
    TMouseMoveEvent FOnMouseMove;
    TMouseEvent FOnMouseUp;
    TNotifyEvent FOnMouseEnter;
    TNotifyEvent FOnMouseLeave;
    TNotifyEvent FOnResize;
    TConstrainedResizeEvent FOnConstrainedResize;
    TContextPopupEvent FOnContextPopup;
    TDragOverEvent FOnDragOver;
    TDragDropEvent FOnDragDrop;
    TStartDragEvent FOnStartDrag;
    TEndDragEvent FOnEndDrag;
};

} // namespace kx
