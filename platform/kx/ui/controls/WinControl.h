// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/Control.h"
#include "kx/win/Themes.h"
#include "kx/win/Thunk.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kx {

class TParentForm;

/// How a window is created.
struct TCreateParams {
    std::string Caption;
    DWORD Style = 0;
    DWORD ExStyle = 0;
    int X = 0;
    int Y = 0;
    int Width = 0;
    int Height = 0;
    HWND WndParent = nullptr;
    std::string BaseClass;    ///< System class whose behaviour the window has ("BUTTON"); empty: a window of our own.
    UINT ClassStyle = 0x0008; ///< CS_DBLCLKS
};

/// A control went while something of it was under way.
KX_EXCEPTION(EControlGone, EAbort);

/// What a control leaves free at the edges of its client area when it places aligned controls; nothing at first.
class TPadding : public TEdges {
    KX_CLASS()
    explicit TPadding(TControl& control) : TEdges(control, 0) {}

protected:
    void Changed() override;
};

/// A control with a window of its own, which may hold other controls. It frees the controls inside it.
///
/// The window is made when it is first needed and may come and go: whatever the user sees of the control is kept over
/// the loss of the window, also when the system destroys it with a foreign parent window.
class TWinControl : public TControl {
    KX_CLASS()

    explicit TWinControl(TComponent* owner = nullptr);
    ~TWinControl() override;

    // --- Window

    /// The window, made now if there is none. @throws EOSError when the system cannot make it.
    /// @throws EInvalidOperation "Control '%s' has no parent window"
    /// Null when a handler freed the control while its window was made.
    HWND Handle();
    bool HandleAllocated() const { return FHandle != nullptr; }
    /// The window as it is now; null when there is none.
    HWND WindowHandle() const { return FHandle; }
    void HandleNeeded();
    /// Destroys the window and makes it again with the current settings.
    void RecreateWnd();

    /// A window that is not the framework's and holds this control; null: none. Set it on controls without a parent.
    HWND ParentWindow() const { return FParentWindow; }
    /// @throws EOSError when the system refuses it; then the control stays where it is.
    virtual void SetParentWindow(HWND value);

    /// Sets parameters by which the window is created; descendants call the inherited method first.
    virtual void CreateParams(TCreateParams& params);

    // --- Controls inside, in Z order from the back to the front

    int ControlCount() const { return static_cast<int>(FControls.size()); }
    TControl* Controls(int index) const; ///< @throws EListError for an index outside [0, ControlCount).
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TControl*>& Controls() const { return FControls; }
    bool ContainsControl(const TControl* control) const; ///< This control, or one anywhere inside it.
    /// The visible control at a point of the client area, graphic or windowed; null when there is none.
    TControl* ControlAtPos(const TPoint& point, bool allowDisabled, bool allowWinControls = false) const;
    void Realign();
    /// Takes the control and all that is in it from sizes in pixels of `from` dots per inch to those of `to`: places,
    /// sizes, limits, margins, fonts of their own, columns, heights of rows. Its images: TCustomForm, TCustomFrame.
    /// @throws EInvalidOperation for values below 1.
    void ScaleForDpi(int to, int from);
    /// Reverses the controls inside from left to right, for forms that are read from right to left: places, alignment
    /// and anchors; with `allLevels` those inside them too. Doing it again brings back what was.
    void FlipChildren(bool allLevels);
    TPadding& Padding() { return FPadding; }
    const TPadding& Padding() const { return FPadding; }
    void SetPadding(const TPadding& value) { FPadding.Assign(&value); }

    // --- Keyboard

    int TabOrder() const; ///< Position among the parent's controls; -1 without a parent.
    void SetTabOrder(int value);
    bool TabStop() const { return FTabStop; }
    void SetTabStop(bool value);
    bool Focused() const;
    bool CanFocus() const; ///< It and all its parents are visible and enabled.
    /// @throws EInvalidOperation "Cannot focus a disabled or invisible window"
    virtual void SetFocus();
    /// The windowed controls inside this one, inner ones too, in tab order.
    void GetTabOrderList(std::vector<TWinControl*>& list) const;
    TWinControl* FindNextControl(TWinControl* current, bool forward, bool checkTabStop, bool checkParent) const;
    void SelectNext(TWinControl* current, bool forward, bool checkTabStop);

    TBrush& Brush() { return FBrush; }
    const TBrush& Brush() const { return FBrush; }
    /// Painted into memory first, so that nothing flickers.
    bool DoubleBuffered() const { return FDoubleBuffered; }
    void SetDoubleBuffered(bool value) { FDoubleBuffered = value; }
    /// Files dropped from the shell arrive as WM_DROPFILES, also after the window was made anew.
    bool AcceptFiles() const { return FAcceptFiles; }
    void SetAcceptFiles(bool value);
    /// Paints the control and the graphic controls inside it on `dc`, at its origin.
    void PaintTo(HDC dc, int x, int y);

    // --- Looks that the system decides

    /// How the theme draws controls of that kind in the window; empty where they are drawn in the classic way, as with
    /// high contrast, where all has the system's colours. It is valid until the next message.
    TTheme Theme(TThemeKind kind) const;
    /// The user needs strong contrasts: all is to be drawn in the system's colours, without effects.
    bool HighContrast() const;
    /// DT_HIDEPREFIX while the letters of captions that keys choose are not to be underlined, else 0: the user has
    /// not used the keyboard yet.
    UINT HiddenPrefix() const;
    bool HidesFocus() const; ///< In the same way, no mark shows which control has the focus.
    /// Behind what is in the window lies the theme's picture, of a page with tabs for instance, and not one colour.
    virtual bool HasThemedBackground() const;

    void SetBounds(int left, int top, int width, int height) override;
    TRect ClientRect() const override;
    TPoint ClientOrigin() const override;
    TPoint ClientToScreen(const TPoint& point) const override;
    TPoint ScreenToClient(const TPoint& point) const override;
    void SetParent(TWinControl* value) override;
    std::string Text() const override;
    void SetText(const std::string& value) override;
    void Invalidate() override;
    void Update() override;
    void WndProc(TMessage& message) override;
    void DefaultHandler(TMessage& message) override;
    void GetChildren(const TGetChildProc& proc, TComponent* root) override;
    void Loaded() override;

    // --- Screen readers

    TAccessibleInfo AccessibleInfo() const override;
    /// The visible controls inside that have no window, in the order in which they are told of.
    virtual std::vector<const TControl*> AccessibleChildren() const;
    bool IsOfSystemClass() const { return FSystemClass; } ///< The window's class is one of the system's.
    bool HasChild(const TControl* control) const;         ///< Compares addresses: the control may have been freed.

    const TNotifyEvent& OnEnter() const { return FOnEnter; }
    void SetOnEnter(TNotifyEvent value) { FOnEnter = std::move(value); }
    const TNotifyEvent& OnExit() const { return FOnExit; }
    void SetOnExit(TNotifyEvent value) { FOnExit = std::move(value); }
    const TMouseWheelEvent& OnMouseWheel() const { return FOnMouseWheel; }
    void SetOnMouseWheel(TMouseWheelEvent value) { FOnMouseWheel = std::move(value); }
    /// For each whole notch towards the user, when OnMouseWheel has not used the turn; OnMouseWheelUp for the others.
    const TMouseWheelUpDownEvent& OnMouseWheelDown() const { return FOnMouseWheelDown; }
    void SetOnMouseWheelDown(TMouseWheelUpDownEvent value) { FOnMouseWheelDown = std::move(value); }
    const TMouseWheelUpDownEvent& OnMouseWheelUp() const { return FOnMouseWheelUp; }
    void SetOnMouseWheelUp(TMouseWheelUpDownEvent value) { FOnMouseWheelUp = std::move(value); }
    const TKeyEvent& OnKeyDown() const { return FOnKeyDown; }
    void SetOnKeyDown(TKeyEvent value) { FOnKeyDown = std::move(value); }
    const TKeyPressEvent& OnKeyPress() const { return FOnKeyPress; }
    void SetOnKeyPress(TKeyPressEvent value) { FOnKeyPress = std::move(value); }
    const TKeyEvent& OnKeyUp() const { return FOnKeyUp; }
    void SetOnKeyUp(TKeyEvent value) { FOnKeyUp = std::move(value); }

protected:
    friend class TControl;
    friend class TApplication;
    friend class TCustomForm;

    // --- Window

    /// Makes the window and those of the controls inside. Handlers run meanwhile, of OnResize for instance. When one of
    /// them frees the control, an EControlGone leaves this method and all that override it, and ends where the window
    /// was asked for.
    virtual void CreateHandle();
    virtual void CreateWnd(); ///< Makes the window; descendants then fill it. It ends like CreateHandle.
    /// For the making of a window: runs `foreign`, which may free the control. @throws EControlGone when it did.
    template <class F> void MustOutlive(F&& foreign) const {
        if (!Outlives(*this, std::forward<F>(foreign))) {
            throw EControlGone("The control has been freed");
        }
    }
    /// The window is about to go, by us or by the system: descendants keep what only the window knows.
    virtual void SaveWindowState();
    /// The window was destroyed by somebody else: with the foreign window that it was in, or with its owner window.
    virtual void WindowLost() {}
    void DestroyHandle();
    /// Before a key message is translated: true when it has been used up (Tab, Return, accelerators, ...).
    virtual bool PreTranslate(MSG& message);
    /// Paints the part of the window again soon, all of it when null. What does not show is painted anyway when it
    /// comes to be seen, and the system is not troubled with it.
    void InvalidateShown(const RECT* part, bool erase) const;

    // --- Keyboard

    /// A key that dialogs know (Tab, Return, Escape, arrows), offered to the control and those inside; true: taken.
    virtual bool DialogKey(uint16_t key, TShiftState shift);
    bool DialogChar(wchar_t letter) override;
    /// The control wants this key itself; else dialogs use it.
    virtual bool WantsKey(uint16_t key, TShiftState shift);
    /// Gives a message to the window's own procedure.
    using TPassOn = std::function<void(TMessage& message)>;
    /// Offers a key message of `window` to the form and to the control; true: it is used up, or the control is gone. A
    /// character beyond 16 bits comes in two messages: the first is kept until the second is there, and passed on once
    /// the character has been offered and is still wanted.
    bool KeyHandler(HWND window, TMessage& message, const TPassOn& passOn);
    /// A WM_UNICHAR of `window`: the character comes by its number, and is sent to it as others are.
    static void CharHandler(HWND window, TMessage& message);
    /// The first half of a character is being passed on: the text is not one to be shown to anybody.
    bool IsHalfTyped() const { return FHalfTyped; }
    void FocusGained();      ///< Tells the form that the focus came to this control,
    void FocusWent(HWND to); ///< or that it has left it for the window `to`, which may be null.
    virtual void DoEnter();
    virtual void DoExit();
    virtual void KeyDown(uint16_t& key, TShiftState shift);
    virtual void KeyPress(char32_t& key);
    virtual void KeyUp(uint16_t& key, TShiftState shift);

    // --- Painting

    /// Paints the control itself, behind those inside it.
    virtual void PaintWindow(HDC dc);
    /// Fills the client area with what lies behind the controls inside.
    virtual void EraseBackground(HDC dc);
    /// Painted into memory first. A system control that wants it draws itself in its `PaintWindow`.
    virtual bool NeedsBuffer() const;
    /// Colours of a system control in its parent's WM_CTLCOLOR...; the result is the brush of its background.
    virtual HBRUSH ControlColor(HDC dc);

    /// Fires the events of the wheel for a WM_MOUSEWHEEL, before the control does something of its own. True: a handler
    /// has used it, or the control is gone.
    bool MouseWheelUsed(TMessage& message);
    virtual bool DoMouseWheel(TShiftState shift, int wheelDelta, const TPoint& mousePos);

    /// The user has used the keyboard (or the mouse). Windows that are opened next show marks for it (or not).
    static void InputSeen(bool isKey);
    void TakeCues();              ///< Shows the same marks for the keyboard as the windows around.
    void ShowCues(WPARAM hidden); ///< Shows marks for the keyboard, given by UISF_ flags, as far as they are hidden.

    /// Area in which aligned controls are placed.
    virtual void AdjustClientRect(TRect& rect) const { static_cast<void>(rect); }
    virtual void AlignControls();
    void ChangeScale(int to, int from) override;
    virtual TPoint FrameExtent() const; ///< Width and height that the frame adds to the client area.

    void Notification(TComponent* component, TOperation operation) override;
    void FontChanged() override;
    void ColorChanged() override;
    void EnabledChanged() override;
    void VisibleChanged() override;
    void ShowHintChanged() override;
    void BiDiModeChanged() override;
    void SetZOrder(bool front) override;
    HWND MessageWindow() const override { return FHandle; }
    void ContextStale() override;
    /// Moves a window into another one; null: onto the screen. @throws EOSError when the system refuses it.
    static void ChangeParent(HWND window, HWND parent);
    /// Stores the parent window and carries the change out. When that fails and no window has moved, all is as before.
    void ChangeParentWindow(HWND value, const std::function<void()>& carryOut);
    static HMENU NextControlId(); ///< A number for a child window that no dialog uses for a control of its own.
    /// Told when a control of the same form got the focus; descendants call the inherited method for those inside.
    virtual void FocusChanged(TWinControl* focused);

private:
    class TSystemCall;

    static LRESULT KX_CALLBACK MainWndProc(void* self, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT KX_CALLBACK InitialWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void RegisterWindow(HWND window);
    void MakeHandle(); ///< Calls CreateHandle.
    void WindowDestroyed();
    void ForgetSystemCall();
    void LeaveWindow();      ///< Loses a window whose procedure is at work. It is destroyed later.
    void LeaveBusyWindows(); ///< The same for the controls inside, as far as their procedures are at work.
    void CreateChildHandles();
    void AttachControl(TControl* control);
    void DetachControl(TControl* control);
    std::vector<TWinControl*> WindowOrder(); ///< The Z order that the windows inside are to have, the front first.
    std::vector<HWND> WantedOrder();         ///< The same as windows, of the controls that have one.
    void ArrangeWindows();                   ///< Brings the windows inside into that order.
    void ArrangeAllWindows();                ///< The same on all levels, where the order has changed.
    void ParentSettingChanged();
    void GiveUpFocus();

    void PaintHandler(TMessage& message);
    void PaintAll(HDC dc);
    void PaintBuffered(HDC dc, const RECT& area);
    void PaintControls(HDC dc);
    bool HasGraphicControls() const;
    const TControl* LabelInside(const TWinControl& control) const;
    bool AnswerAccessible(TMessage& message);
    void DoAccessibleAction(const TMessage& message);
    void SystemChanged(TMessage& message);
    void TellInside(const TMessage& message, bool windows);
    TSystemLook& SystemLook() const;
    void CuesWanted(const TMessage& message);
    void CuesChanged(TMessage& message);
    bool MeasureItem(TMessage& message);
    TControl* MouseTarget(const TMessage& message) const;
    bool GraphicMouseMessage(TMessage& message);
    void MouseOver(TControl* graphic, const TMessage& message);
    void MouseGone();
    bool SetCursorHandler(const TMessage& message) const;
    bool ContextMenuInside(TMessage& message);
    void OfferKeyDown(uint16_t& key);
    void OfferKeyUp(uint16_t& key);
    DWORD BiDiExStyle() const;
    bool HasFrame() const;
    bool HasSunkenEdge() const;
    void EdgeChanged() const;
    bool PaintEdge(TMessage& message);
    bool KeepsKey(const MSG& message);
    bool IsPageKey(uint16_t key) const;
    static bool ChoosesPage(TParentForm& form);
    template <class K> bool Offer(TWinControl* preview, K& key, void (TWinControl::*member)(K&));
    bool OfferChar(HWND window, TMessage& message, TWinControl* preview, const TPassOn& passOn);
    void FixTabOrder();
    void FocusReceived(TMessage& message);
    void FocusLost(TMessage& message);
    void GetDlgCode(TMessage& message);
    void WindowPosChanged(TMessage& message);
    void PlaceAligned(TAlign side, TRect& rest);
    TWinControl* TopParent();

    HWND FHandle = nullptr;
    HWND FParentWindow = nullptr;
    WNDPROC FDefWndProc = nullptr;
    std::unique_ptr<TThunk> FThunk;
    TSystemCall* FSystemCall = nullptr; ///< The outermost one under way for the window.
    std::vector<TControl*> FControls;
    std::vector<TWinControl*> FTabList;
    std::vector<HWND> FLastOrder; ///< The windows inside in the Z order that they were last brought into.
    TBrush FBrush;
    mutable std::unique_ptr<TSystemLook> FSystemLook; ///< Null until the window is drawn by it.
    TControl* FMouseControl = nullptr;                ///< Graphic control that the mouse is over.
    bool FSystemClass = false;                        ///< The window is of a system class and paints itself.
    bool FTabStop = false;
    bool FDoubleBuffered = false;
    bool FAcceptFiles = false;
    bool FIsMouseIn = false;
    uint8_t FHiddenCues = 0; ///< Marks for the keyboard that are not shown: UISF_ flags.
    bool FAligning = false;
    bool FDestroyingWindow = false; ///< DestroyHandle is destroying the window.
    int FWantedTabOrder = -1;       ///< Of the form file.

    wchar_t FFirstHalf = 0; ///< Of a character whose other half is yet to come.
    bool FHalfTyped = false;
    int FWheelRest = 0; ///< What the wheel was turned by beyond whole notches.
    TPadding FPadding{*this};

    TNotifyEvent FOnEnter;
    TNotifyEvent FOnExit;
    TMouseWheelEvent FOnMouseWheel;
    TMouseWheelUpDownEvent FOnMouseWheelDown;
    TMouseWheelUpDownEvent FOnMouseWheelUp;
    TKeyEvent FOnKeyDown;
    TKeyPressEvent FOnKeyPress;
    TKeyEvent FOnKeyUp;
};

/// A control without a window: its parent's window shows it.
class TGraphicControl : public TControl {
    KX_CLASS()

    explicit TGraphicControl(TComponent* owner = nullptr);
    ~TGraphicControl() override;

    /// Draws in the control's coordinates; outside `Paint` directly on the screen.
    TCanvas& Canvas();

    /// Paints the control on `dc`, whose origin is the control's corner.
    void PaintOn(HDC dc);

protected:
    void ContextStale() override;
    virtual void Paint() {}

    // What the system says of the looks of the window that the control is in, as for TWinControl; without a window,
    // the classic looks.

    TTheme Theme(TThemeKind kind) const { return Parent() ? Parent()->Theme(kind) : TTheme(); }
    bool HighContrast() const { return Parent() && Parent()->HighContrast(); }
    UINT HiddenPrefix() const { return Parent() ? Parent()->HiddenPrefix() : 0; }
    bool HasThemedBackground() const { return Parent() && ParentColor() && Parent()->HasThemedBackground(); }

private:
    std::unique_ptr<TCanvas> FCanvas;
};

/// A control with a window that paints itself.
class TCustomControl : public TWinControl {
    KX_CLASS()

    explicit TCustomControl(TComponent* owner = nullptr);
    ~TCustomControl() override;

    TCanvas& Canvas(); ///< Draws in client coordinates; outside `Paint` directly on the screen.

protected:
    void ContextStale() override;
    void PaintWindow(HDC dc) override;
    virtual void Paint() {}

private:
    std::unique_ptr<TCanvas> FCanvas;
};

// --- Finding controls

TWinControl* FindControl(HWND window); ///< The control whose window that is; null for foreign windows.
/// The control at a point of the screen, graphic or windowed; null over foreign windows. Disabled ones are passed over,
/// so that their parent is found, unless they are allowed.
TControl* FindDragTarget(const TPoint& screenPoint, bool allowDisabled);
TWinControl* FindVCLWindow(const TPoint& screenPoint); ///< The innermost windowed control at that point.
/// Hands a notification (WM_COMMAND, WM_NOTIFY, ...) that a foreign parent window got to the control that it is about.
/// False when that is none of ours.
bool ReflectMessage(TMessage& message);
/// Hands a message that the system sends to top-level windows only to the controls, of all threads, that are in windows
/// which are not the framework's.
void TellDockedControls(UINT message, WPARAM wParam, LPARAM lParam);
/// The windows directly inside a window, in Z order from the front. EnumChildWindows would bring all that is inside
/// them as well, which some systems look up window by window.
std::vector<HWND> DirectChildren(HWND parent);

TShiftState KeyDataToShiftState();                        ///< Keys held at the time of the message being handled.
TShiftState KeysToShiftState(WPARAM mouseKeys);           ///< Of a mouse message.
bool IsAccel(wchar_t letter, const std::string& caption); ///< `letter` stands behind "&" in the caption; any case.

std::string GetShortHint(const std::string& hint); ///< Before the "|".
std::string GetLongHint(const std::string& hint);  ///< Behind the "|", or all of it.

} // namespace kx
