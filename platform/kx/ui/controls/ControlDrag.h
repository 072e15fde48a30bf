// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Objects.h"
#include "kx/ui/controls/ControlTypes.h"
#include "kx/win/WinTypes.h"

namespace kx {

class TControl;
namespace detail {
class TDragSession;
}

enum TDragMode : uint8_t {
    dmManual,   ///< Dragging begins when the program calls `BeginDrag`.
    dmAutomatic ///< Dragging begins when the user presses the left button on the control and moves the mouse.
};
KX_ENUM(TDragMode, "dmManual", "dmAutomatic")

enum TDragState : uint8_t { dsDragEnter, dsDragLeave, dsDragMove };
KX_ENUM(TDragState, "dsDragEnter", "dsDragLeave", "dsDragMove")

/// What is dragged, where the control alone does not say enough. A handler of OnStartDrag makes one; the drag owns it
/// from then on, and frees it after OnEndDrag.
class TDragObject : public TObject {
    KX_CLASS()

    TControl* Control() const { return FControl; } ///< The control that is dragged.
    /// The pointer to show; by default the control's DragCursor, or crNoDrop.
    virtual TCursor GetDragCursor(bool accepted) const;

private:
    friend class detail::TDragSession;
    TControl* FControl = nullptr;
};

/// `source` is the dragged control, or the drag object that OnStartDrag made. Coordinates are client coordinates of the
/// sender.
using TDragOverEvent = TEvent<void(TObject* sender, TObject* source, int x, int y, TDragState state, bool& accept)>;
using TDragDropEvent = TEvent<void(TObject* sender, TObject* source, int x, int y)>;
/// `object` is null: the control itself is what is dragged. A handler may put a new drag object there.
using TStartDragEvent = TEvent<void(TObject* sender, TDragObject*& object)>;
/// `target` is the control that took what was dragged, with the place in its client coordinates; null when none did.
using TEndDragEvent = TEvent<void(TObject* sender, TObject* target, int x, int y)>;

namespace detail {

/// The drag of a thread, from `BeginDrag` to its end. Controls report here what may concern it.
class TDragSession {
public:
    TDragSession(TControl& control, const TPoint& start, int threshold);
    TDragSession(const TDragSession&) = delete;
    TDragSession& operator=(const TDragSession&) = delete;
    ~TDragSession();

    static void Begin(TControl& control, bool immediate, int threshold);
    static void End(const TControl& control, bool drop);
    static bool IsDragging(const TControl& control);

    static void ButtonPressed(TControl& control);
    static void ButtonReleased();             ///< The press will not become a drag any more.
    static bool MouseMoved(WPARAM mouseKeys); ///< True when a drag began by this move.
    static void ControlGone(const TControl& control);

private:
    bool IsCurrent() const;
    bool FarEnough(const TPoint& mouse) const;
    void Start();
    template <class F> void OrFinish(F&& f);
    void DragTo(const TPoint& mouse);
    bool Over(TControl& target, TDragState state);
    void Finish(bool drop);
    void CloseDown(); ///< Gives mouse, keyboard and pointer back.
    TObject* Source() const;
    TCursor Cursor() const;

    static HWND Window();
    static LRESULT KX_CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT KX_CALLBACK KeyboardProc(int code, WPARAM wParam, LPARAM lParam);
    void Received(UINT message, WPARAM wParam, LPARAM lParam);

    TControl* FControl; ///< Null once it is freed.
    TControl* FTarget = nullptr;
    TDragObject* FObject = nullptr; ///< Owned.
    TPoint FStart;
    TPoint FMouse;
    int FThreshold;
    HHOOK FKeyboard = nullptr;
    bool FActive = false; ///< Else the mouse has not moved far enough yet.
    bool FAccepted = false;
    bool FButtonHeld = false;
};

} // namespace detail

} // namespace kx
