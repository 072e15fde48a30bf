// SPDX-License-Identifier: MIT
// Lists of images of one size.

#include "kx/graphics/ImgList.h"

#include "kx/graphics/GraphicsDib.h"
#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx {

// --- TChangeLink

TChangeLink::~TChangeLink() {
    if (FSender) {
        FSender->UnregisterChanges(*this);
    }
}

// --- TImageList

namespace {

COLORREF SystemColorOf(TColor color) {
    return color == clNone ? CLR_NONE : color == clDefault ? CLR_DEFAULT : ColorToRGB(color);
}

UINT StyleFlags(TDrawingStyle style) {
    switch (style) {
    case dsFocus: return ILD_FOCUS;
    case dsSelected: return ILD_SELECTED;
    case dsTransparent: return ILD_TRANSPARENT;
    default: return ILD_NORMAL;
    }
}

[[noreturn]] void InsertFailed() { throw EInvalidOperation("Failed to insert image"); }

} // namespace

const TClass& TImageList::StaticClass() {
    static const TClassBuilder<TImageList> cls("TImageList", TComponent::StaticClass(), [](auto& c) {
        c.Property("BlendColor", &TImageList::BlendColor, &TImageList::SetBlendColor).Default = clNone;
        c.Property("BkColor", &TImageList::BkColor, &TImageList::SetBkColor).Default = clNone;
        c.Property("DrawingStyle", &TImageList::DrawingStyle, &TImageList::SetDrawingStyle).Default = dsNormal;
        c.Property("Height", &TImageList::Height, &TImageList::SetHeight).Default = 16;
        c.Property("ImageType", &TImageList::ImageType, &TImageList::SetImageType).Default = itImage;
        c.Property("Masked", &TImageList::Masked, &TImageList::SetMasked).Default = true;
        c.Property("ShareImages", &TImageList::ShareImages, &TImageList::SetShareImages).Default = false;
        c.Property("Width", &TImageList::Width, &TImageList::SetWidth).Default = 16;
        c.Property("OnChange", &TImageList::OnChange, &TImageList::SetOnChange);
        c.Creatable();
    });
    return cls.Class();
}

TImageList::TImageList(TComponent* owner) : TComponent(owner) {}

TImageList::TImageList(int width, int height) : TComponent(nullptr) { SetSize(width, height); }

TImageList::~TImageList() {
    for (TChangeLink* link : FLinks) {
        link->FSender = nullptr;
    }
    ReleaseList();
}

void TImageList::ReleaseList() const {
    if (FShareImages) {
        FHandle.release();
    } else {
        FHandle.reset();
    }
}

HIMAGELIST TImageList::Handle() const {
    if (!FHandle) {
        FHandle.reset(ImageList_Create(FWidth, FHeight, ILC_COLOR24 | (FMasked ? UINT{ILC_MASK} : 0u), 4, 4));
        if (!FHandle) {
            throw EOutOfMemory("Invalid image list");
        }
        ImageList_SetBkColor(FHandle.get(), SystemColorOf(FBkColor));
    }
    return FHandle.get();
}

void TImageList::SetHandle(HIMAGELIST value) {
    ReleaseList();
    FHandle.reset(value);
    if (value) {
        ImageList_GetIconSize(value, &FWidth, &FHeight);
    }
    Change();
}

void TImageList::SetSize(int width, int height) {
    if (width <= 0 || height <= 0) {
        throw EInvalidOperation("Invalid image size");
    }
    if (width != FWidth || height != FHeight) {
        ReleaseList();
        FWidth = width;
        FHeight = height;
        Change();
    }
}

void TImageList::ChangeScale(int to, int from) {
    const int width = std::max(ScaleValue(FWidth, to, from), 1);
    const int height = std::max(ScaleValue(FHeight, to, from), 1);
    if (FShareImages || (width == FWidth && height == FHeight)) {
        return;
    }
    TImageList scaled(width, height);
    scaled.SetMasked(FMasked);
    for (int i = 0; i < Count(); ++i) {
        TBitmap image(FWidth, FHeight);
        TBitmap mask;
        mask.SetMonochrome(true);
        mask.SetSize(FWidth, FHeight);
        ImageList_DrawEx(Handle(), i, image.Canvas().Handle(), 0, 0, 0, 0, CLR_NONE, CLR_NONE, ILD_TRANSPARENT);
        ImageList_DrawEx(Handle(), i, mask.Canvas().Handle(), 0, 0, 0, 0, CLR_NONE, CLR_NONE, ILD_MASK);
        image.Stretch(width, height);
        mask.Stretch(width, height);
        scaled.AddPair(TPair(image, FMasked ? &mask : nullptr));
    }
    for (size_t i = 0; i < FOverlays.size(); ++i) {
        scaled.Overlay(FOverlays[i], static_cast<int>(i) + 1);
    }
    TakeOver(scaled);
}

void TImageList::TakeOver(TImageList& other) {
    ReleaseList();
    FWidth = other.FWidth;
    FHeight = other.FHeight;
    FMasked = other.FMasked;
    FOverlays = other.FOverlays;
    FHandle = std::move(other.FHandle);
    Change();
}

void TImageList::SetMasked(bool value) {
    if (value != FMasked) {
        ReleaseList();
        FMasked = value;
        Change();
    }
}

int TImageList::Count() const { return FHandle ? ImageList_GetImageCount(FHandle.get()) : 0; }

void TImageList::SetBkColor(TColor value) {
    if (value != FBkColor) {
        FBkColor = value;
        if (FHandle) {
            ImageList_SetBkColor(FHandle.get(), SystemColorOf(value));
        }
        Change();
    }
}

void TImageList::SetBlendColor(TColor value) {
    if (value != FBlendColor) {
        FBlendColor = value;
        Change();
    }
}

void TImageList::SetDrawingStyle(TDrawingStyle value) {
    if (value != FDrawingStyle) {
        FDrawingStyle = value;
        Change();
    }
}

void TImageList::SetImageType(TImageType value) {
    if (value != FImageType) {
        FImageType = value;
        Change();
    }
}

// --- Images

void TImageList::TPair::ClearHoles() {
    const HDC dc = Color.Canvas().Handle();
    // The mask's white comes out black and clears what it meets.
    ::SetTextColor(dc, 0xFFFFFF);
    ::SetBkColor(dc, 0);
    BitBlt(dc, 0, 0, Color.Width(), Color.Height(), Mask.Canvas().Handle(), 0, 0, SRCAND);
}

TImageList::TPair::TPair(const TBitmap& image, const TBitmap* mask) {
    Color.Assign(&image);
    Color.SetPixelFormat(pf24bit);
    if (mask) {
        Mask.Assign(mask);
        Mask.SetMonochrome(true);
    } else {
        Mask.Canvas().Brush().SetColor(clBlack);
        Mask.SetMonochrome(true);
        Mask.SetSize(Color.Width(), Color.Height());
    }
    ClearHoles();
}

TImageList::TPair::TPair(const TBitmap& image, TColor maskColor) {
    Color.Assign(&image);
    Color.SetPixelFormat(pf24bit);
    Mask.Assign(&Color);
    Mask.Mask(maskColor == clDefault ? Color.Canvas().Pixels(0, Color.Height() - 1) : maskColor);
    ClearHoles();
}

void TImageList::CheckImage(const TBitmap& image) const {
    if (image.Width() < FWidth || image.Height() < FHeight) {
        throw EInvalidOperation("Invalid image size");
    }
}

/// An image that shows nothing: transparent, or black in a list without masks.
std::unique_ptr<TImageList::TPair> TImageList::EmptyPair() const {
    TBitmap image(FWidth, FHeight);
    image.Canvas().Brush().SetColor(clBlack);
    image.Canvas().FillRect({0, 0, FWidth, FHeight});
    return std::make_unique<TPair>(image, clBlack);
}

int TImageList::AddPair(const TPair& pair) {
    const int index = ImageList_Add(Handle(), pair.Color.Handle(), FMasked ? pair.Mask.Handle() : nullptr);
    if (index < 0) {
        InsertFailed();
    }
    Change();
    return index;
}

void TImageList::ReplacePair(int index, const TPair& pair) {
    if (index < 0 || index >= Count() ||
        !ImageList_Replace(Handle(), index, pair.Color.Handle(), FMasked ? pair.Mask.Handle() : nullptr)) {
        InsertFailed();
    }
    Change();
}

int TImageList::Add(const TBitmap* image, const TBitmap* mask) {
    if (!image) {
        return AddPair(*EmptyPair());
    }
    CheckImage(*image);
    return AddPair(TPair(*image, mask));
}

int TImageList::AddMasked(const TBitmap* image, TColor maskColor) {
    if (!image) {
        return AddPair(*EmptyPair());
    }
    CheckImage(*image);
    return AddPair(TPair(*image, maskColor));
}

void TImageList::Replace(int index, const TBitmap* image, const TBitmap* mask) {
    if (!image) {
        ReplacePair(index, *EmptyPair());
        return;
    }
    CheckImage(*image);
    ReplacePair(index, TPair(*image, mask));
}

void TImageList::ReplaceMasked(int index, const TBitmap* image, TColor maskColor) {
    if (!image) {
        ReplacePair(index, *EmptyPair());
        return;
    }
    CheckImage(*image);
    ReplacePair(index, TPair(*image, maskColor));
}

int TImageList::AddIcon(const TIcon& icon) {
    const int index = icon.Empty() ? -1 : ImageList_ReplaceIcon(Handle(), -1, icon.Handle());
    if (index < 0) {
        InsertFailed();
    }
    Change();
    return index;
}

void TImageList::ReplaceIcon(int index, const TIcon& icon) {
    if (index < 0 || index >= Count() || icon.Empty() || ImageList_ReplaceIcon(Handle(), index, icon.Handle()) < 0) {
        InsertFailed();
    }
    Change();
}

void TImageList::Delete(int index) {
    if (index < 0 || index >= Count() || !ImageList_Remove(Handle(), index)) {
        InsertFailed();
    }
    Change();
}

void TImageList::Clear() {
    if (Count() > 0) {
        ImageList_RemoveAll(Handle());
        Change();
    }
}

// --- Drawing

void TImageList::Draw(TCanvas& canvas, int x, int y, int index, TDrawingStyle style, TImageType type, bool enabled,
                      int overlay) const {
    if (index < 0 || index >= Count()) {
        return;
    }
    if (!enabled) {
        DrawDisabled(canvas, x, y, index);
        return;
    }
    if (type == itMask) {
        DrawMask(canvas, x, y, index);
        return;
    }
    const UINT flags = StyleFlags(style) | static_cast<UINT>(INDEXTOOVERLAYMASK(overlay));
    ImageList_DrawEx(Handle(), index, canvas.Handle(), x, y, 0, 0, SystemColorOf(FBkColor), SystemColorOf(FBlendColor),
                     flags);
}

/// White where the image is transparent, black elsewhere. The system's own drawing of masks differs between systems,
/// and its mask bitmap may be in use; that of an icon made from the image is free.
void TImageList::DrawMask(TCanvas& canvas, int x, int y, int index) const {
    const unique_hicon icon(ImageList_GetIcon(Handle(), index, ILD_NORMAL));
    ICONINFO info{};
    if (!icon || !GetIconInfo(icon.get(), &info)) {
        return;
    }
    const unique_hbitmap color(info.hbmColor);
    const unique_hbitmap mask(info.hbmMask);
    const HDC dc = canvas.Handle();
    const unique_hdc source(CreateCompatibleDC(dc));
    const TSelectObject selected(source.get(), mask.get());
    const COLORREF text = ::SetTextColor(dc, clBlack);
    const COLORREF background = ::SetBkColor(dc, clWhite);
    BitBlt(dc, x, y, FWidth, FHeight, source.get(), 0, 0, SRCCOPY);
    ::SetTextColor(dc, text);
    ::SetBkColor(dc, background);
}

void TImageList::DrawDisabled(TCanvas& canvas, int x, int y, int index) const {
    // Everything of the image that is not white, as black on white.
    TBitmap shape(FWidth, FHeight);
    ImageList_DrawEx(Handle(), index, shape.Canvas().Handle(), 0, 0, 0, 0, 0xFFFFFF, 0, ILD_NORMAL);
    shape.SetMonochrome(true); // white is the brush's colour

    constexpr DWORD paintWhereSet = 0x00E20746; // the brush where the source has ones, the old pixels elsewhere
    const HDC dc = canvas.Handle();
    const HDC source = shape.Canvas().Handle();
    const COLORREF text = ::SetTextColor(dc, 0xFFFFFF);
    const COLORREF background = ::SetBkColor(dc, 0);
    const auto paint = [&](TColor color, int offset) {
        TBrush brush;
        brush.SetColor(color);
        const TSelectObject selected(dc, brush.Handle());
        BitBlt(dc, CheckedAdd(x, offset), CheckedAdd(y, offset), FWidth, FHeight, source, 0, 0, paintWhereSet);
    };
    paint(clBtnHighlight, 1);
    paint(clBtnShadow, 0);
    ::SetTextColor(dc, text);
    ::SetBkColor(dc, background);
}

bool TImageList::Overlay(int index, int overlay) {
    const bool isOverlay = overlay >= 1 && overlay <= static_cast<int>(FOverlays.size()); // the system has 15
    if (!isOverlay || index < 0 || index >= Count() || !ImageList_SetOverlayImage(Handle(), index, overlay)) {
        return false;
    }
    FOverlays[static_cast<size_t>(overlay - 1)] = index;
    return true;
}

bool TImageList::GetBitmap(int index, TBitmap& bitmap) const {
    if (index < 0 || index >= Count()) {
        return false;
    }
    bitmap.SetSize(FWidth, FHeight);
    bitmap.Canvas().FillRect({0, 0, FWidth, FHeight});
    Draw(bitmap.Canvas(), 0, 0, index);
    return true;
}

bool TImageList::GetIcon(int index, TIcon& icon) const {
    if (index < 0 || index >= Count()) {
        return false;
    }
    icon.SetHandle(ImageList_GetIcon(Handle(), index, ILD_NORMAL));
    return !icon.Empty();
}

// --- Changes

void TImageList::RegisterChanges(TChangeLink& link) {
    if (link.FSender) {
        link.FSender->UnregisterChanges(link);
    }
    link.FSender = this;
    FLinks.push_back(&link);
}

void TImageList::UnregisterChanges(TChangeLink& link) {
    if (link.FSender == this) {
        std::erase(FLinks, &link);
        link.FSender = nullptr;
    }
}

void TImageList::EndUpdate() {
    if (--FUpdateCount == 0 && FChangedWhileUpdating) {
        FChangedWhileUpdating = false;
        Change();
    }
}

void TImageList::Change() {
    if (FUpdateCount > 0) {
        FChangedWhileUpdating = true;
        return;
    }
    // A handler may take links away, or free them, or the list.
    const TAlive alive(*this);
    const std::vector<TChangeLink*> links = FLinks;
    for (TChangeLink* link : links) {
        if (alive && std::find(FLinks.begin(), FLinks.end(), link) != FLinks.end()) {
            const TNotifyEvent handler = link->FOnChange;
            handler(this);
        }
    }
    if (alive) {
        FOnChange(this);
    }
}

void TImageList::Assign(const TPersistent* source) {
    const auto* list = dynamic_cast<const TImageList*>(source);
    if (source && !list) {
        TComponent::Assign(source);
        return;
    }
    if (list == this) {
        return;
    }
    ReleaseList();
    if (list) {
        FWidth = list->FWidth;
        FHeight = list->FHeight;
        FMasked = list->FMasked;
        FBkColor = list->FBkColor;
        FBlendColor = list->FBlendColor;
        FDrawingStyle = list->FDrawingStyle;
        FImageType = list->FImageType;
        if (list->FHandle) {
            FHandle.reset(ImageList_Duplicate(list->FHandle.get()));
        }
        FShareImages = false;
    }
    Change();
}

} // namespace kx
