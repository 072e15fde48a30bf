// SPDX-License-Identifier: MIT
#pragma once

#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/Controls.h"
#include "kx/ui/widgets/ScrolledContent.h"

#include <memory>
#include <vector>

namespace kx {

class TMenuItem;
class TPopupMenu;
class TToolBar;

enum TToolButtonStyle : uint8_t {
    tbsButton,
    tbsCheck,     ///< Stays down until it is clicked again.
    tbsDropDown,  ///< With an arrow beside it that opens the drop-down menu.
    tbsSeparator, ///< A gap; the system draws a line in those of flat bars.
    tbsDivider    ///< A gap with a line in it.
};
KX_ENUM(TToolButtonStyle, "tbsButton", "tbsCheck", "tbsDropDown", "tbsSeparator", "tbsDivider")

/// A button of a tool bar. The bar arranges its buttons; freeing a button takes it off the bar.
///
/// A button put on a bar gets its place by its Left and Top: in front of the first button that does not lie left of or
/// above it. So a new one, whose Left and Top are 0, comes first. Buttons that a form file brings keep the file's
/// order.
///
/// A descendant may draw the button itself by overriding `Paint`, over what the system draws, which a handler of the
/// bar's OnCustomDrawButton can switch off.
class TToolButton : public TGraphicControl {
    KX_CLASS()

    explicit TToolButton(TComponent* owner = nullptr);
    ~TToolButton() override;

    int Index() const; ///< Position on the bar; -1 without a bar.
    TToolBar* ToolBar() const { return FToolBar; }

    bool Down() const { return FDown; }
    void SetDown(bool value); ///< In a group the others are released.
    /// Check buttons beside each other that are grouped: at most one of them is down.
    bool Grouped() const { return FGrouped; }
    void SetGrouped(bool value);
    bool AllowAllUp() const { return FAllowAllUp; } ///< A click on the one button of a group that is down releases it.
    void SetAllowAllUp(bool value) { FAllowAllUp = value; }
    TToolButtonStyle Style() const { return FStyle; }
    void SetStyle(TToolButtonStyle value);
    int ImageIndex() const { return FImageIndex; } ///< In the bar's images; -1: none.
    void SetImageIndex(int value);
    bool Indeterminate() const { return FIndeterminate; } ///< Drawn grayed.
    void SetIndeterminate(bool value);
    bool Marked() const { return FMarked; } ///< Drawn highlighted.
    void SetMarked(bool value);
    bool Wrap() const { return FWrap; } ///< The next button begins a new row.
    void SetWrap(bool value);
    /// Whose click the button's is; not owned. The button takes over the item's caption, hint, image and whether it is
    /// enabled.
    TMenuItem* MenuItem() const { return FMenuItem; }
    void SetMenuItem(TMenuItem* value);
    TPopupMenu* DropdownMenu() const { return FDropdownMenu; } ///< Not owned.
    void SetDropdownMenu(TPopupMenu* value);
    /// Opens the drop-down menu below the button, and returns when it is closed. False when there is none.
    virtual bool CheckMenuDropdown();

    /// What a press of the button does that is not the mouse's.
    virtual void Press() { Clicked(); }
    TAccessibleInfo AccessibleInfo() const override;
    void AccessibleAction() override;

    void SetParent(TWinControl* value) override;
    /// On a bar only a separator's width is its own; all else is the bar's choice.
    void SetBounds(int left, int top, int width, int height) override;
    void Click() override;
    void WndProc(TMessage& message) override;

protected:
    void Paint() override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseEnter() override;
    void MouseLeave() override;
    void TextChanged() override;
    void EnabledChanged() override;
    void VisibleChanged() override;
    bool DialogChar(wchar_t letter) override;
    void Notification(TComponent* component, TOperation operation) override;
    void Clicked(); ///< What the user's click does.

private:
    friend class TToolBar;
    BYTE SystemState() const;
    BYTE SystemStyle() const;
    bool IsGroupCheck() const { return FGrouped && FStyle == tbsCheck; }
    bool IsSeparator() const { return FStyle == tbsSeparator || FStyle == tbsDivider; }
    void SetPressed(bool value);
    void TakeItemsLook();
    void StateChanged();
    void LookChanged();
    void SetField(bool& field, bool value);

    TToolBar* FToolBar = nullptr;
    TMenuItem* FMenuItem = nullptr;
    TPopupMenu* FDropdownMenu = nullptr;
    int FImageIndex = -1;
    WORD FCommand = 0;   ///< By which the system knows it.
    BYTE FToldState = 0; ///< As the system knows it.
    TToolButtonStyle FStyle = tbsButton;
    bool FDown = false;
    bool FGrouped = false;
    bool FAllowAllUp = false;
    bool FIndeterminate = false;
    bool FMarked = false;
    bool FWrap = false;
    bool FRowEnd = false; ///< As the bar has arranged it.
    bool FHeld = false;   ///< The left button went down here.
    bool FPressed = false;
};

enum TEdgeBorder : uint8_t { ebLeft, ebTop, ebRight, ebBottom };
KX_ENUM(TEdgeBorder, "ebLeft", "ebTop", "ebRight", "ebBottom")
using TEdgeBorders = TSet<TEdgeBorder>;
enum TEdgeStyle : uint8_t { esNone, esRaised, esLowered };
KX_ENUM(TEdgeStyle, "esNone", "esRaised", "esLowered")

enum TCustomDrawStateFlag : uint8_t {
    cdsSelected,
    cdsGrayed,
    cdsDisabled,
    cdsChecked,
    cdsFocused,
    cdsDefault,
    cdsHot,
    cdsMarked,
    cdsIndeterminate
};
KX_ENUM(TCustomDrawStateFlag, "cdsSelected", "cdsGrayed", "cdsDisabled", "cdsChecked", "cdsFocused", "cdsDefault",
        "cdsHot", "cdsMarked", "cdsIndeterminate")
using TCustomDrawState = TSet<TCustomDrawStateFlag>;

/// Before the bar, or a button of it, is drawn; a handler that sets `defaultDraw` to false keeps the system from it.
/// The bar's `Canvas` draws on what is being painted.
using TTBCustomDrawEvent = TEvent<void(TToolBar* sender, const TRect& rect, bool& defaultDraw)>;
using TTBCustomDrawBtnEvent =
    TEvent<void(TToolBar* sender, TToolButton* button, TCustomDrawState state, bool& defaultDraw)>;

/// A bar of buttons, in rows when it is not wide enough. The system draws it.
class TToolBar : public TWinControl, public IScrolledContent {
    KX_CLASS()

    explicit TToolBar(TComponent* owner = nullptr);
    ~TToolBar() override;

    int ButtonCount() const { return static_cast<int>(FButtons.size()); }
    TToolButton* Buttons(int index) const; ///< @throws EListError for an index outside [0, ButtonCount).
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TToolButton*>& Buttons() const { return FButtons; }
    int RowCount() const { return FRowCount; }
    /// Pixels of all rows and the edges: what AutoSize makes the height. In a page scroller the bar may be higher.
    int RowsHeight() const { return FRowsHeight; }
    int ContentHeight() const override { return FAutoSize ? FRowsHeight : -1; }
    /// The buttons are not arranged until EndUpdate, so that many changes are as quick as one. They nest.
    void BeginUpdate();
    void EndUpdate();

    int ButtonWidth() const { return FButtonWidth; } ///< Pixels; more where images or captions need it.
    void SetButtonWidth(int value);
    int ButtonHeight() const { return FButtonHeight; }
    void SetButtonHeight(int value);
    bool AutoSize() const { return FAutoSize; } ///< The height follows the rows.
    void SetAutoSize(bool value);
    TEdgeBorders EdgeBorders() const { return FEdgeBorders; } ///< Sides that have an edge.
    void SetEdgeBorders(TEdgeBorders value);
    TEdgeStyle EdgeInner() const { return FEdgeInner; }
    void SetEdgeInner(TEdgeStyle value);
    TEdgeStyle EdgeOuter() const { return FEdgeOuter; }
    void SetEdgeOuter(TEdgeStyle value);
    bool Flat() const { return FFlat; } ///< Only the button under the mouse has a frame.
    void SetFlat(bool value);
    bool ShowCaptions() const { return FShowCaptions; }
    void SetShowCaptions(bool value);
    bool Wrapable() const { return FWrapable; } ///< Buttons that do not fit begin a new row.
    void SetWrapable(bool value);
    bool List() const { return FList; } ///< Captions stand beside the images.
    void SetList(bool value);
    int Indent() const { return FIndent; } ///< Pixels in front of the first button of a row.
    void SetIndent(int value);
    TImageList* Images() const { return FImages; } ///< Not owned; so are the other two.
    void SetImages(TImageList* value) { SetImageField(FImages, value); }
    TImageList* HotImages() const { return FHotImages; } ///< Of the button under the mouse.
    void SetHotImages(TImageList* value) { SetImageField(FHotImages, value); }
    TImageList* DisabledImages() const { return FDisabledImages; }
    void SetDisabledImages(TImageList* value) { SetImageField(FDisabledImages, value); }
    TCanvas& Canvas() { return *FCanvas; } ///< In the custom-draw events only.
    /// The button that the keyboard acts on while the bar has the focus; null: none.
    TToolButton* KeyButton() const { return FKeyButton; }

    const TTBCustomDrawEvent& OnCustomDraw() const { return FOnCustomDraw; }
    void SetOnCustomDraw(TTBCustomDrawEvent value);
    const TTBCustomDrawBtnEvent& OnCustomDrawButton() const { return FOnCustomDrawButton; }
    void SetOnCustomDrawButton(TTBCustomDrawBtnEvent value);

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;
    void GetChildren(const TGetChildProc& proc, TComponent* root) override;
    void Loaded() override;
    TAccessibleInfo AccessibleInfo() const override;
    std::vector<const TControl*> AccessibleChildren() const override;

protected:
    void ChangeScale(int to, int from) override;
    void CreateWnd() override;
    void PaintWindow(HDC dc) override;
    bool NeedsBuffer() const override { return true; }
    void AlignControls() override { Arrange(); }
    TPoint FrameExtent() const override;
    void FontChanged() override;
    void Notification(TComponent* component, TOperation operation) override;
    void DoEnter() override;
    void DoExit() override;
    void KeyDown(uint16_t& key, TShiftState shift) override;
    bool WantsKey(uint16_t key, TShiftState shift) override;
    TPoint KeyboardMenuPoint() const override;
    virtual bool CustomDraw(const TRect& rect);
    virtual bool CustomDrawButton(TToolButton* button, TCustomDrawState state);

private:
    friend class TToolButton;
    void AddButton(TToolButton& button);
    void RemoveButton(TToolButton& button);
    int PlaceFor(const TToolButton& button) const;
    TBBUTTON SystemButton(TToolButton& button, std::wstring& text) const;
    void InsertIntoWindow(TToolButton& button, int index);
    TPoint CaptionedExtent(const TPoint& image) const;
    void FillWindow();
    void UpdateButton(TToolButton& button); ///< Brings the system's button in line with ours.
    void UpdateState(TToolButton& button);
    void ApplyImages();
    void ApplySizes();
    void Arrange();
    TPoint ButtonExtent() const;
    void FindRows(int width);
    void PlaceButtons();
    void AdjustHeight(int bottom);
    void Restyle();
    void FrameChanged();
    void SetImageField(TImageList*& field, TImageList* value);
    void NonClientSize(TMessage& message);
    void PaintEdges();
    LRESULT CustomDrawNotification(const NMTBCUSTOMDRAW& info);
    void HotChanged(TToolButton& button, bool hot);
    void SetKeyButton(TToolButton* value);
    TToolButton* NextKeyButton(int from, int step) const;
    void ReleaseFellows(const TToolButton& button);
    int EdgeSize() const { return (FEdgeInner != esNone) + (FEdgeOuter != esNone); }

    std::vector<TToolButton*> FButtons;
    TToolButton* FKeyButton = nullptr;
    std::unique_ptr<TCanvas> FCanvas;
    TChangeLink FImageLink;
    TImageList* FImages = nullptr;
    TImageList* FHotImages = nullptr;
    TImageList* FDisabledImages = nullptr;
    int FButtonWidth = 23;
    int FButtonHeight = 22;
    int FIndent = 0;
    int FRowCount = 0;
    int FRowsHeight = 0;
    int FUpdateCount = 0;
    WORD FLastCommand = 0;
    TEdgeBorders FEdgeBorders{ebTop};
    TEdgeStyle FEdgeInner = esRaised;
    TEdgeStyle FEdgeOuter = esLowered;
    bool FAutoSize = false;
    bool FFlat = false;
    bool FShowCaptions = false;
    bool FWrapable = true;
    bool FList = false;
    bool FArranging = false;
    bool FRefill = false; ///< The system's buttons are not ours any more.
    TTBCustomDrawEvent FOnCustomDraw;
    TTBCustomDrawBtnEvent FOnCustomDrawButton;
};

} // namespace kx
