// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Handles.h"

#include <memory>
#include <string>

// The buttons of a places bar.

namespace kx {

class TKxPlace;
class TKxPlaces;

/// What place buttons need of their bar. The form that holds the scroller with their tool bar implements it.
class IKxPlacesBar {
public:
    /// Navigates to the place at `index`.
    virtual void OnFolderClick(int index) = 0;
    /// The places that the buttons show, in the same order; null: none.
    virtual TKxPlaces* Places() const = 0;

protected:
    ~IKxPlacesBar() = default;
};

/// A button for one place: its icon above its caption, sunken while it is down and raised while the mouse is over it.
/// A click navigates. Dragging the button onto another one puts its place there. The button draws all of itself: its
/// tool bar must not draw anything of the button.
///
/// It keeps copies of what it shows of the place: when the places change, the bar is rebuilt.
///
/// A place on another computer, or on a drive that may be asleep, is looked for by another thread. As long as it cannot
/// be reached its icon and caption are faint and its hint says so; a click tries again.
class TKxPlaceButton : public TToolButton {
    KX_CLASS()

    explicit TKxPlaceButton(TComponent* owner = nullptr);
    ~TKxPlaceButton() override;

    /// File that the icons are taken from: a program, a library or an icon file. A file without icons gives none.
    const std::string& IconDll() const { return FIconDll; }
    /// Deliberate: takes the file's first icon, where one would expect that of `IconIndex`, which is set afterwards.
    void SetIconDll(const std::string& value);
    int32_t IconIndex() const { return FIcon; }
    void SetIconIndex(int32_t value) { SetIconIdx(value); }
    int32_t IconSelIndex() const { return FIconSel; } ///< Of the icon while the button is down.
    void SetIconSelIndex(int32_t value) { SetIconSelIdx(value); }
    /// Take the icon of that index from the file, which is read anew. @throws ERangeError for a negative index.
    void SetIconIdx(int32_t value);
    void SetIconSelIdx(int32_t value);

    /// Takes over caption, hint and icons. @throws ERangeError for a negative icon index, with all else taken over.
    void ShowPlace(const TKxPlace& place);
    bool IsUnreachable() const { return FUnreachable; }
    void SetUnreachable(bool value);
    void Press() override;

protected:
    void Paint() override;
    void TextChanged() override;

private:
    /// An icon that is taken from its file when it is drawn for the first time: the file may be far away, and most bars
    /// have places that nobody scrolls to. It knows its size, which the system takes long to tell.
    class TPlaceIcon : public TIcon {
    public:
        void Take(const std::string& file, int32_t index);
        void Clear() { Take({}, -1); }
        bool Load(); ///< False when the file has no such icon.
        const TPoint& Size() const { return FSize; }

    private:
        std::string FFile;
        int32_t FIndex = -1; ///< Of the icon to be taken; -1: none.
        TPoint FSize;
    };

    enum class TFrame : uint8_t { None, Sunken, Raised };

    /// All that a picture of the button depends on, but for its caption and icons.
    struct TLook {
        int Width = 0;
        int Height = 0;
        TFrame Frame = TFrame::None;
        TColor Background = clBlack;
        TColor Text = clBlack;
        bool IsFaint = false;
        HFONT Font = nullptr; ///< The icon's place depends on it.
        bool operator==(const TLook&) const = default;
    };

    struct TSearch;

    IKxPlacesBar* Bar() const;
    void SearchTick(TObject* sender);
    void LoadIcon(TPlaceIcon& icon, int32_t& field, int32_t index);
    TLook Look();
    void DrawAll();
    void MakeFaint(TCanvas& canvas);
    void DrawIcon(TCanvas& canvas, int textHeight);
    void DrawFrame(TCanvas& canvas);
    void DrawCaption(TCanvas& canvas, const TPoint& extent);
    bool IsHot() const;

    void MouseDown1(TObject* sender, TMouseButton button, TShiftState shift, int x, int y);
    void MouseMove1(TObject* sender, TShiftState shift, int x, int y);
    void MouseUp1(TObject* sender, TMouseButton button, TShiftState shift, int x, int y);
    void BTNOnStartDrag(TObject* sender, TDragObject*& object);
    void BTNOnDragOver(TObject* sender, TObject* source, int x, int y, TDragState state, bool& accept);
    void BTNOnEndDrag(TObject* sender, TObject* target, int x, int y);

    TBitmap OffScr; ///< The button is drawn here before it is copied to the screen, and drawn anew when it has changed.
    TLook FLook;    ///< Of what `OffScr` shows; without size: it is out of date.
    TPlaceIcon FIco;
    TPlaceIcon FIcoSel;
    std::string FIconDll;
    std::string FPlaceHint;
    std::unique_ptr<TSearch> FSearch; ///< For the place, as long as nobody knows whether it can be reached.
    bool FUnreachable = false;
    int32_t FIcon = 0;
    int32_t FIconSel = 0;
};

} // namespace kx
