// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/graphics/Graphics.h"
#include "kx/win/Handles.h"

#include <array>
#include <vector>

namespace kx {

class TImageList;

/// Tells somebody of an image list's changes. Belongs to whoever wants to know; comes off the list when it is freed.
class TChangeLink {
public:
    TChangeLink() = default;
    TChangeLink(const TChangeLink&) = delete;
    TChangeLink& operator=(const TChangeLink&) = delete;
    ~TChangeLink();

    TImageList* Sender() const { return FSender; } ///< Null while it is registered nowhere.
    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

private:
    friend class TImageList;
    TImageList* FSender = nullptr;
    TNotifyEvent FOnChange;
};

enum TDrawingStyle : uint8_t { dsFocus, dsSelected, dsNormal, dsTransparent };
KX_ENUM(TDrawingStyle, "dsFocus", "dsSelected", "dsNormal", "dsTransparent")

/// What is drawn of an image; its mask is black where the image shows and white elsewhere.
enum TImageType : uint8_t { itImage, itMask };
KX_ENUM(TImageType, "itImage", "itMask")

/// Pictures of one size, drawn by their index.
class TImageList : public TComponent {
    KX_CLASS()

    explicit TImageList(TComponent* owner = nullptr);
    /// Without owner, with images of that size.
    TImageList(int width, int height);
    ~TImageList() override;

    int Width() const { return FWidth; } ///< Pixels, 16 at first. Setting a size removes all images.
    void SetWidth(int value) { SetSize(value, FHeight); }
    int Height() const { return FHeight; }
    void SetHeight(int value) { SetSize(FWidth, value); }
    void SetSize(int width, int height);
    /// From images for `from` dots per inch to such for `to`, both above 0. Each pixel becomes the nearest one of
    /// before. Shared images stay as they are.
    void ChangeScale(int to, int from);
    int Count() const;

    /// A bitmap of several images' width adds them all; returns the first one's index. `image` null: an empty image.
    /// `mask` is white where the image is transparent; null: nowhere.
    /// @throws EInvalidOperation "Invalid image size", "Failed to insert image"
    int Add(const TBitmap* image, const TBitmap* mask);
    /// Transparent where the image has `maskColor`; with clDefault, where it has the colour of its lower left pixel.
    virtual int AddMasked(const TBitmap* image, TColor maskColor);
    int AddIcon(const TIcon& icon);
    /// @throws EInvalidOperation "Failed to insert image" for an index outside the list; so do the others.
    void Replace(int index, const TBitmap* image, const TBitmap* mask);
    void ReplaceMasked(int index, const TBitmap* image, TColor maskColor);
    void ReplaceIcon(int index, const TIcon& icon);
    virtual void Delete(int index);
    void Clear();

    /// Draws image `index`; nothing for an index outside the list. A disabled image is embossed in shadow and highlight
    /// colours. `overlay` is the number of an overlay image (1 to 4); 0: none.
    void Draw(TCanvas& canvas, int x, int y, int index, TDrawingStyle style, TImageType type = itImage,
              bool enabled = true, int overlay = 0) const;
    void Draw(TCanvas& canvas, int x, int y, int index, bool enabled = true) const {
        Draw(canvas, x, y, index, FDrawingStyle, FImageType, enabled);
    }
    /// Makes image `index` overlay number `overlay` (1 to 4).
    bool Overlay(int index, int overlay);

    /// Draws image `index` into the bitmap, which takes the images' size. False for an index outside the list.
    bool GetBitmap(int index, TBitmap& bitmap) const;
    bool GetIcon(int index, TIcon& icon) const;

    bool Masked() const { return FMasked; }
    void SetMasked(bool value);                 ///< Removes all images, like a new size.
    TColor BkColor() const { return FBkColor; } ///< Behind the images; clNone: what is there already.
    void SetBkColor(TColor value);
    TColor BlendColor() const { return FBlendColor; } ///< Of images drawn with focus or selected.
    void SetBlendColor(TColor value);
    TDrawingStyle DrawingStyle() const { return FDrawingStyle; }
    void SetDrawingStyle(TDrawingStyle value);
    TImageType ImageType() const { return FImageType; }
    void SetImageType(TImageType value);

    /// The system's list, made on first use. Owned, unless `ShareImages`.
    HIMAGELIST Handle() const;
    void SetHandle(HIMAGELIST value);
    bool HandleAllocated() const { return static_cast<bool>(FHandle); }
    bool ShareImages() const { return FShareImages; }
    void SetShareImages(bool value) { FShareImages = value; }

    void RegisterChanges(TChangeLink& link);
    void UnregisterChanges(TChangeLink& link);

    void BeginUpdate() { ++FUpdateCount; } ///< Holds back notifications until `EndUpdate`. They nest.
    void EndUpdate();

    void Assign(const TPersistent* source) override;
    void DefineProperties(TFiler& filer) override; ///< Streams the images as "Bitmap".

    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(TNotifyEvent value) { FOnChange = std::move(value); }

protected:
    virtual void Change();

private:
    /// An image as the system wants it: its colours, black where it is transparent, and a mask, white there. Copies,
    /// which no context has selected.
    struct TPair {
        TBitmap Color;
        TBitmap Mask;
        TPair(const TBitmap& image, const TBitmap* mask);
        TPair(const TBitmap& image, TColor maskColor);

    private:
        void ClearHoles();
    };
    void CheckImage(const TBitmap& image) const;
    std::unique_ptr<TPair> EmptyPair() const;
    int AddPair(const TPair& pair);
    void ReplacePair(int index, const TPair& pair);
    void ReleaseList() const;
    void TakeOver(TImageList& other); ///< Images, their size and whether they are masked.
    void DrawMask(TCanvas& canvas, int x, int y, int index) const;
    void DrawDisabled(TCanvas& canvas, int x, int y, int index) const;
    void ReadData(TStream& stream);
    void WriteData(TStream& stream) const;

    int FWidth = 16;
    int FHeight = 16;
    bool FMasked = true;
    bool FShareImages = false;
    TColor FBkColor = clNone;
    TColor FBlendColor = clNone;
    TDrawingStyle FDrawingStyle = dsNormal;
    TImageType FImageType = itImage;
    mutable unique_himagelist FHandle;            ///< Let go, not freed, while the images are shared.
    std::array<int, 4> FOverlays{-1, -1, -1, -1}; ///< Which images they are; -1: none.
    std::vector<TChangeLink*> FLinks;
    int FUpdateCount = 0;
    bool FChangedWhileUpdating = false;
    TNotifyEvent FOnChange;
};

} // namespace kx
