// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Strings.h"
#include "kx/core/SystemNames.h"
#include "kx/ui/controls/Controls.h"
#include "kx/win/Subclass.h"

namespace kx {

enum TTextLayout : uint8_t { tlTop, tlCenter, tlBottom };
KX_ENUM(TTextLayout, "tlTop", "tlCenter", "tlBottom")

/// Where dots stand for what a label has no room for: in the middle of a path, at the end, or at the end of a word.
enum TEllipsisPosition : uint8_t { epNone, epPathEllipsis, epEndEllipsis, epWordEllipsis };
KX_ENUM(TEllipsisPosition, "epNone", "epPathEllipsis", "epEndEllipsis", "epWordEllipsis")

/// Text on a form. Its accelerator moves the focus to `FocusControl`.
class TLabel : public TGraphicControl {
    KX_CLASS()

    explicit TLabel(TComponent* owner = nullptr);

    TAlignment Alignment() const { return FAlignment; }
    void SetAlignment(TAlignment value) { Change(FAlignment, value); }
    bool AutoSize() const { return FAutoSize; } ///< The size follows the text.
    void SetAutoSize(bool value) { Change(FAutoSize, value); }
    TEllipsisPosition EllipsisPosition() const { return FEllipsisPosition; }
    void SetEllipsisPosition(TEllipsisPosition value) { Change(FEllipsisPosition, value); }
    TWinControl* FocusControl() const { return FFocusControl; } ///< Not owned.
    void SetFocusControl(TWinControl* value);
    TTextLayout Layout() const { return FLayout; }
    void SetLayout(TTextLayout value) { Change(FLayout, value); }
    bool ShowAccelChar() const { return FShowAccelChar; }
    void SetShowAccelChar(bool value) { Change(FShowAccelChar, value); }
    bool Transparent() const { return FTransparent; }
    void SetTransparent(bool value) { Change(FTransparent, value); }
    bool WordWrap() const { return FWordWrap; }
    void SetWordWrap(bool value) { Change(FWordWrap, value); }

    void Loaded() override;
    TAccessibleInfo AccessibleInfo() const override;

protected:
    void Paint() override;
    void TextChanged() override;
    void FontChanged() override;
    bool DialogChar(wchar_t letter) override;
    const TWinControl* LabelledControl() const override { return FFocusControl; }
    void Notification(TComponent* component, TOperation operation) override;

private:
    template <class V> void Change(V& field, V value) {
        if (field != value) {
            field = value;
            AdjustBounds();
            Invalidate();
        }
    }
    void AdjustBounds();
    UINT TextFormat() const;

    TAlignment FAlignment = taLeftJustify;
    TTextLayout FLayout = tlTop;
    TEllipsisPosition FEllipsisPosition = epNone;
    TWinControl* FFocusControl = nullptr;
    bool FAutoSize = true;
    bool FShowAccelChar = true;
    bool FTransparent = false;
    bool FWordWrap = false;
};

enum TEditCharCase : uint8_t { ecNormal, ecUpperCase, ecLowerCase };
KX_ENUM(TEditCharCase, "ecNormal", "ecUpperCase", "ecLowerCase")

/// What one-line and many-line edits have in common. Positions and lengths of the selection are bytes of `Text`, from
/// 0; those inside a character count as its beginning, those outside the text as its nearest end. Nothing is selected
/// without a window; who selects makes it.
class TCustomEdit : public TWinControl {
    KX_CLASS()

    explicit TCustomEdit(TComponent* owner = nullptr);

    int SelStart() const;
    void SetSelStart(int value);
    int SelLength() const;
    void SetSelLength(int value);
    std::string SelText() const;
    void SetSelText(const std::string& value); ///< Replaces the selection.
    void SelectAll();
    void Clear() { SetText(""); }
    bool Modified() const; ///< The user changed the text since it was set.
    void SetModified(bool value);

    bool AutoSelect() const { return FAutoSelect; } ///< All text is selected when the focus comes by the keyboard.
    void SetAutoSelect(bool value) { FAutoSelect = value; }
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value) { Change(FBorderStyle, value); }
    TEditCharCase CharCase() const { return FCharCase; }
    void SetCharCase(TEditCharCase value) { Change(FCharCase, value); }
    bool HideSelection() const { return FHideSelection; }
    void SetHideSelection(bool value) { Change(FHideSelection, value); }
    /// Characters that the user can type, as UTF-16 counts them: under UTF-8 a text of `MaxLength` characters takes up
    /// to three times as many bytes. 0: as many as the system allows. What the program sets is not limited.
    int MaxLength() const { return FMaxLength; }
    void SetMaxLength(int value);
    bool ReadOnly() const { return FReadOnly; }
    void SetReadOnly(bool value);
    /// Shown for each character; 0: the text shows. A byte that is no character of its own in the code page stands for
    /// the system's usual one.
    char PasswordChar() const { return FPasswordChar; }
    void SetPasswordChar(char value);

    const TNotifyEvent& OnChange() const { return FOnChange; } ///< The text changed, by the user or the program.
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void CreateWnd() override;
    void SaveWindowState() override;
    void TextChanged() override { FModified = false; } ///< A window tells by itself; see `DoChange`.
    void DoEnter() override;
    virtual void DoChange();
    bool IsCreating() const { return FCreating; } ///< The window gets the text that it is made with: nothing changes.
    template <class V> void Change(V& field, V value) {
        if (field != value) {
            field = value;
            RecreateWnd();
        }
    }

private:
    void Changed();
    void Paste(TMessage& message); ///< As far as MaxLength leaves room, in whole characters.

    TBorderStyle FBorderStyle = bsSingle;
    TEditCharCase FCharCase = ecNormal;
    int FMaxLength = 0;
    char FPasswordChar = 0;
    bool FAutoSelect = true;
    bool FHideSelection = true;
    bool FReadOnly = false;
    bool FModified = false; ///< While there is no window.
    bool FCreating = false;
    bool FPasting = false;
    bool FPasted = false; ///< What is being pasted has changed the text.
    TNotifyEvent FOnChange;
};

/// One line of text.
class TEdit : public TCustomEdit {
    KX_CLASS()

    explicit TEdit(TComponent* owner = nullptr) : TCustomEdit(owner) {}
};

namespace detail {
class TMemoLines;

/// The system cuts off what an edit has no room for wherever that is: takes away the half of a character that it may
/// have left before the caret.
void RemoveHalfCharacter(HWND edit);
} // namespace detail

/// Lines of text.
class TMemo : public TCustomEdit {
    KX_CLASS()

    explicit TMemo(TComponent* owner = nullptr);
    ~TMemo() override;

    /// The text as the program sees it, without regard to where words wrap. A change puts the caret behind it.
    TStrings& Lines();
    const TStrings& Lines() const;
    void SetLines(const TStrings& value);
    TScrollStyle ScrollBars() const { return FScrollBars; }
    void SetScrollBars(TScrollStyle value) { Change(FScrollBars, value); }
    bool WordWrap() const { return FWordWrap; }
    void SetWordWrap(bool value) { Change(FWordWrap, value); }
    bool WantReturns() const { return FWantReturns; } ///< Return makes a line, instead of pressing the default button.
    void SetWantReturns(bool value) { FWantReturns = value; }
    bool WantTabs() const { return FWantTabs; } ///< Tab is a character, instead of moving the focus.
    void SetWantTabs(bool value) { FWantTabs = value; }

    std::string Text() const override;
    void SetText(const std::string& value) override;
    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void CreateWnd() override;
    void TextChanged() override;

private:
    std::unique_ptr<detail::TMemoLines> FLines;
    TScrollStyle FScrollBars = ssNone;
    bool FWordWrap = true;
    bool FWantReturns = true;
    bool FWantTabs = false;
};

/// What push buttons, check boxes and radio buttons have in common.
class TButtonControl : public TWinControl {
    KX_CLASS()

    explicit TButtonControl(TComponent* owner = nullptr);

    void WndProc(TMessage& message) override;

protected:
    HBRUSH ControlColor(HDC dc) override;
    bool DialogChar(wchar_t letter) override;
    /// Pressed, by the mouse, the keyboard or an accelerator.
    virtual void Pressed() { Click(); }

private:
    bool FGettingFocus = false; ///< Radio buttons of some systems say meanwhile that they are clicked.
};

class TButton : public TButtonControl {
    KX_CLASS()

    explicit TButton(TComponent* owner = nullptr);

    bool Default() const { return FDefault; } ///< Return presses it, unless another button has the focus.
    void SetDefault(bool value);
    bool Cancel() const { return FCancel; } ///< Escape presses it.
    void SetCancel(bool value) { FCancel = value; }
    TModalResult ModalResult() const { return FModalResult; } ///< Given to the form by a click.
    void SetModalResult(TModalResult value) { FModalResult = value; }

    void Click() override;
    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    bool DialogKey(uint16_t key, TShiftState shift) override;
    bool WantsKey(uint16_t key, TShiftState shift) override;
    void FocusChanged(TWinControl* focused) override;
    /// Shows whether Return presses the button now.
    virtual void SetButtonStyle(bool isDefault);

private:
    void SetActive(bool value);

    bool FDefault = false;
    bool FCancel = false;
    bool FActive = false; ///< Return presses it now.
    TModalResult FModalResult = mrNone;
};

enum TCheckBoxState : uint8_t { cbUnchecked, cbChecked, cbGrayed };
KX_ENUM(TCheckBoxState, "cbUnchecked", "cbChecked", "cbGrayed")

class TCheckBox : public TButtonControl {
    KX_CLASS()

    explicit TCheckBox(TComponent* owner = nullptr);

    bool AllowGrayed() const { return FAllowGrayed; }
    void SetAllowGrayed(bool value) { FAllowGrayed = value; }
    bool Checked() const { return FState == cbChecked; }
    void SetChecked(bool value) { SetState(value ? cbChecked : cbUnchecked); }
    TCheckBoxState State() const { return FState; }
    void SetState(TCheckBoxState value); ///< A change fires OnClick.

    void CreateParams(TCreateParams& params) override;

protected:
    void CreateWnd() override;
    void Pressed() override;

private:
    TCheckBoxState FState = cbUnchecked;
    bool FAllowGrayed = false;
};

/// One of several choices: those in one parent. Choosing one releases the others.
class TRadioButton : public TButtonControl {
    KX_CLASS()

    explicit TRadioButton(TComponent* owner = nullptr);

    bool Checked() const { return FChecked; }
    void SetChecked(bool value); ///< Choosing it fires OnClick.

    void CreateParams(TCreateParams& params) override;

protected:
    void CreateWnd() override;
    void DoEnter() override;
    void Pressed() override { SetChecked(true); }

private:
    void ReleaseSiblings();

    bool FChecked = false;
};

/// A frame with a caption around other controls.
class TGroupBox : public TCustomControl {
    KX_CLASS()

    explicit TGroupBox(TComponent* owner = nullptr);

    TAccessibleInfo AccessibleInfo() const override;

protected:
    void Paint() override;
    void TextChanged() override { Invalidate(); }
    void EnabledChanged() override;
    bool DialogChar(wchar_t letter) override;
    void AdjustClientRect(TRect& rect) const override;

private:
    void PaintThemedFrame(const TTheme& theme, const TRect& frame, const TRect& caption);
};

namespace detail {

/// The items of a list box or combo box. They are kept here; the window shows them while it exists.
class TControlItems : public TStrings {
public:
    struct TMessages {
        UINT Insert, Delete, Reset;
    };
    TControlItems(TWinControl& control, const TMessages& messages) : FControl(control), FMessages(messages) {}

    int Count() const override { return FItems.Count(); }
    std::string Get(int index) const override { return FItems.Get(index); }
    void Put(int index, const std::string& text) override;
    TObject* GetObject(int index) const override { return FItems.GetObject(index); }
    void PutObject(int index, TObject* object) override { FItems.PutObject(index, object); }
    void Clear() override;
    void Delete(int index) override;
    void Insert(int index, const std::string& text) override;
    int Add(const std::string& text) override;
    int IndexOf(const std::string& text) const override { return FItems.IndexOf(text); }

    bool Sorted() const { return FItems.Sorted(); }
    void SetSorted(bool value);
    void FillWindow(); ///< Puts all items into a new window.

protected:
    void SetUpdateState(bool updating) override;

private:
    void InsertIntoWindow(int index, const std::string& text);

    TWinControl& FControl;
    TMessages FMessages;
    TStringList FItems;
};

} // namespace detail

/// A list of texts to choose from.
class TListBox : public TWinControl {
    KX_CLASS()

    explicit TListBox(TComponent* owner = nullptr);

    TStrings& Items() { return FItems; }
    const TStrings& Items() const { return FItems; }
    void SetItems(const TStrings& value) { FItems.Assign(&value); }
    int ItemIndex() const; ///< The chosen item, with MultiSelect the focused one; -1: none.
    void SetItemIndex(int value);
    bool Selected(int index) const;
    void SetSelected(int index, bool value); ///< @throws EListError for an index outside the list.
    int SelCount() const;
    TBorderStyle BorderStyle() const { return FBorderStyle; }
    void SetBorderStyle(TBorderStyle value);
    bool MultiSelect() const { return FMultiSelect; }
    void SetMultiSelect(bool value);
    bool Sorted() const { return FItems.Sorted(); }
    void SetSorted(bool value) { FItems.SetSorted(value); }
    int TopIndex() const;
    void SetTopIndex(int value);
    int ItemAtPos(const TPoint& point) const; ///< In client coordinates; -1 when there is none.

    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void CreateWnd() override;
    void SaveWindowState() override;

private:
    detail::TControlItems FItems;
    std::vector<int> FSelection; ///< While there is no window.
    int FItemIndex = -1;         ///< While there is no window.
    TBorderStyle FBorderStyle = bsSingle;
    bool FMultiSelect = false;
};

/// The owner-drawn ones are drop-down lists that OnDrawItem draws, with items of one height or of their own.
enum TComboBoxStyle : uint8_t { csDropDown, csSimple, csDropDownList, csOwnerDrawFixed, csOwnerDrawVariable };
KX_ENUM(TComboBoxStyle, "csDropDown", "csSimple", "csDropDownList", "csOwnerDrawFixed", "csOwnerDrawVariable")

/// How an owner-drawn item is to be drawn; odComboBoxEdit: in the closed combo box.
enum TOwnerDrawStateFlag : uint8_t {
    odSelected,
    odGrayed,
    odDisabled,
    odChecked,
    odFocused,
    odDefault,
    odComboBoxEdit
};
KX_ENUM(TOwnerDrawStateFlag, "odSelected", "odGrayed", "odDisabled", "odChecked", "odFocused", "odDefault",
        "odComboBoxEdit")
using TOwnerDrawState = TSet<TOwnerDrawStateFlag>;

/// Draws an item on the control's `Canvas`, whose font and brush are those of the item's state and with which the
/// rectangle is filled already.
using TDrawItemEvent = TEvent<void(TWinControl* control, int index, const TRect& rect, TOwnerDrawState state)>;
using TMeasureItemEvent = TEvent<void(TWinControl* control, int index, int& height)>;

/// A text, or a choice among texts. Changing the style keeps the items, the text and the focus.
class TComboBox : public TWinControl {
    KX_CLASS()

    explicit TComboBox(TComponent* owner = nullptr);

    TStrings& Items() { return FItems; }
    const TStrings& Items() const { return FItems; }
    void SetItems(const TStrings& value) { FItems.Assign(&value); }
    int ItemIndex() const; ///< -1: none.
    void SetItemIndex(int value);
    TComboBoxStyle Style() const { return FStyle; }
    void SetStyle(TComboBoxStyle value);
    int ItemHeight() const { return FItemHeight; } ///< Pixels of an owner-drawn item.
    void SetItemHeight(int value);
    TCanvas& Canvas() { return *FCanvas; }               ///< In OnDrawItem only.
    int DropDownCount() const { return FDropDownCount; } ///< Items that the open list shows.
    void SetDropDownCount(int value) { FDropDownCount = value; }
    bool DroppedDown() const;
    void SetDroppedDown(bool value);
    int MaxLength() const { return FMaxLength; } ///< As of an edit.
    void SetMaxLength(int value);
    bool Sorted() const { return FItems.Sorted(); }
    void SetSorted(bool value) { FItems.SetSorted(value); }
    void SelectAll();

    const TNotifyEvent& OnChange() const { return FOnChange; } ///< The user chose an item or changed the text.
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }
    const TNotifyEvent& OnDropDown() const { return FOnDropDown; }
    void SetOnDropDown(TNotifyEvent value) { FOnDropDown = std::move(value); }
    const TDrawItemEvent& OnDrawItem() const { return FOnDrawItem; }
    void SetOnDrawItem(TDrawItemEvent value);
    const TMeasureItemEvent& OnMeasureItem() const { return FOnMeasureItem; } ///< With csOwnerDrawVariable.
    void SetOnMeasureItem(TMeasureItemEvent value) { FOnMeasureItem = std::move(value); }

    /// Without an edit: chooses the item of that text, in any letter case, or none.
    void SetText(const std::string& value) override;
    void CreateParams(TCreateParams& params) override;
    void WndProc(TMessage& message) override;

protected:
    void ChangeScale(int to, int from) override;
    void CreateWnd() override;
    void SaveWindowState() override;
    void TextChanged() override {}
    bool WantsKey(uint16_t key, TShiftState shift) override;
    virtual void DoChange();
    virtual void DoDropDown();
    virtual void DrawItem(int index, const TRect& rect, TOwnerDrawState state);
    virtual void MeasureItem(int index, int& height);

private:
    void Notified(int code);
    int DropDownHeight() const;
    bool HasEdit() const { return FStyle == csDropDown || FStyle == csSimple; }
    bool IsOwnerDrawn() const { return FStyle == csOwnerDrawFixed || FStyle == csOwnerDrawVariable; }
    void DrawItemNotification(const DRAWITEMSTRUCT& item);
    void MeasureItemNotification(MEASUREITEMSTRUCT& item);
    void WatchEdit();

    detail::TControlItems FItems;
    int FItemIndex = -1; ///< While there is no window.
    TComboBoxStyle FStyle = csDropDown;
    TSubclass FEdit; ///< The window inside in which the user types.
    std::unique_ptr<TCanvas> FCanvas;
    int FItemHeight = 16;
    int FDropDownCount = 8;
    int FMaxLength = 0;
    TNotifyEvent FOnChange;
    TNotifyEvent FOnDropDown;
    TDrawItemEvent FOnDrawItem;
    TMeasureItemEvent FOnMeasureItem;
};

} // namespace kx
