// SPDX-License-Identifier: MIT
// Fonts, pens and brushes.

#include "kx/graphics/Graphics.h"

#include "kx/win/Dpi.h"
#include "kx/win/Windows.h"

#include <cstring>
#include <mutex>
#include <unordered_map>

namespace kx {

namespace detail {

/// The shared system objects by the bytes of their description. Dialogs may run on threads of their own, so it is
/// locked.
struct TGdiPool {
    std::mutex Lock;
    std::unordered_map<std::string, std::weak_ptr<TGdiHandle>> Handles;
};

namespace {

/// Alive as long as any shared object, whatever the order in which statics go at the end.
const std::shared_ptr<TGdiPool>& Pool() {
    static const auto pool = std::make_shared<TGdiPool>();
    return pool;
}

} // namespace

class TGdiHandle {
public:
    TGdiHandle(std::string key, HGDIOBJ handle) : FPool(Pool()), FKey(std::move(key)), FHandle(handle) {}
    TGdiHandle(const TGdiHandle&) = delete;
    TGdiHandle& operator=(const TGdiHandle&) = delete;
    ~TGdiHandle() {
        DeleteObject(FHandle);
        const std::lock_guard lock(FPool->Lock);
        // Meanwhile another thread may have made a successor under the same key.
        const auto found = FPool->Handles.find(FKey);
        if (found != FPool->Handles.end() && found->second.expired()) {
            FPool->Handles.erase(found);
        }
    }

    HGDIOBJ Handle() const { return FHandle; }

private:
    std::shared_ptr<TGdiPool> FPool;
    std::string FKey;
    HGDIOBJ FHandle;
};

namespace {

/// The shared object described by `description`, a structure of the system without stray bytes.
template <class D>
std::shared_ptr<TGdiHandle> SharedGdiHandle(char kind, const D& description, HGDIOBJ (*create)(const D&)) {
    std::string key(1, kind);
    key.append(reinterpret_cast<const char*>(&description), sizeof(description));
    TGdiPool& pool = *Pool();
    const std::lock_guard lock(pool.Lock);
    std::weak_ptr<TGdiHandle>& entry = pool.Handles[key];
    if (auto shared = entry.lock()) {
        return shared;
    }
    const HGDIOBJ handle = create(description);
    if (!handle) {
        pool.Handles.erase(key);
        throw EOutOfMemory("Out of system resources");
    }
    auto shared = std::make_shared<TGdiHandle>(key, handle);
    entry = shared;
    return shared;
}

} // namespace

} // namespace detail

// --- TGraphicsObject

const TClass& TGraphicsObject::StaticClass() {
    static const TClassBuilder<TGraphicsObject> cls("TGraphicsObject", TPersistent::StaticClass());
    return cls.Class();
}

TGraphicsObject::~TGraphicsObject() = default;

void TGraphicsObject::Changed() { FOnChange(this); }

template <class F> void TGraphicsObject::ChangeLook(F&& change) {
    const auto old = std::move(FShared);
    FShared.reset();
    change();
    Changed();
}

HGDIOBJ TGraphicsObject::SharedHandle(COLORREF color) const {
    if (FShared && FSharedColor != color) {
        const_cast<TGraphicsObject*>(this)->ChangeLook([] {}); // the system's colours have changed
    }
    if (!FShared) {
        FShared = CreateShared();
        FSharedColor = color;
    }
    return FShared->Handle();
}

// --- TFont

const TClass& TFont::StaticClass() {
    static const TClassBuilder<TFont> cls("TFont", TGraphicsObject::StaticClass(), [](auto& c) {
        c.Property("Charset", &TFont::Charset, &TFont::SetCharset).MaxValue = 255;
        c.Property("Color", &TFont::Color, &TFont::SetColor);
        c.Property("Height", &TFont::Height, &TFont::SetHeight);
        c.Property("Name", &TFont::Name, &TFont::SetName);
        c.Property("Pitch", &TFont::Pitch, &TFont::SetPitch).Default = fpDefault;
        // Height says the same more exactly.
        c.Property("Size", &TFont::Size, &TFont::SetSize).Stored = [](const TObject&) { return false; };
        c.Property("Style", &TFont::Style, &TFont::SetStyle);
    });
    return cls.Class();
}

TFont::TFont()
    : FName("MS Sans Serif"), FHeight(-MulDiv(8, SystemDpi(), 72)), FPixelsPerInch(SystemDpi()),
      FCharset(static_cast<TFontCharset>(DEFAULT_CHARSET)) {}

template <class V> void TFont::Change(V& field, const V& value) {
    if (!(field == value)) {
        ChangeLook([&] { field = value; });
    }
}

void TFont::SetColor(TColor value) { Change(FColor, value); }

void TFont::SetName(const std::string& value) {
    if (!value.empty()) {
        Change(FName, value);
    }
}

void TFont::SetHeight(int value) { Change(FHeight, value); }

int TFont::Size() const { return -MulDiv(FHeight, 72, FPixelsPerInch); }

void TFont::SetSize(int value) { SetHeight(-MulDiv(value, FPixelsPerInch, 72)); }

void TFont::ChangeScale(int to, int from) {
    FPixelsPerInch = to;
    SetHeight(ScaleValue(FHeight, to, from));
}

void TFont::SetStyle(TFontStyles value) { Change(FStyle, value); }

void TFont::SetPitch(TFontPitch value) { Change(FPitch, value); }

void TFont::SetCharset(TFontCharset value) { Change(FCharset, value); }

bool TFont::Equals(const TFont& other) const {
    return FColor == other.FColor && FName == other.FName && FHeight == other.FHeight &&
           FPixelsPerInch == other.FPixelsPerInch && FStyle == other.FStyle && FPitch == other.FPitch &&
           FCharset == other.FCharset;
}

void TFont::Assign(const TPersistent* source) {
    const auto* font = dynamic_cast<const TFont*>(source);
    if (!font) {
        TGraphicsObject::Assign(source);
    } else if (!Equals(*font)) {
        ChangeLook([&] {
            FColor = font->FColor;
            FName = font->FName;
            FHeight = font->FHeight;
            FPixelsPerInch = font->FPixelsPerInch;
            FStyle = font->FStyle;
            FPitch = font->FPitch;
            FCharset = font->FCharset;
        });
    }
}

LOGFONTW TFont::LogFont() const {
    LOGFONTW font = {};
    font.lfHeight = FHeight;
    font.lfWeight = FStyle.Contains(fsBold) ? FW_BOLD : FW_NORMAL;
    font.lfItalic = FStyle.Contains(fsItalic);
    font.lfUnderline = FStyle.Contains(fsUnderline);
    font.lfStrikeOut = FStyle.Contains(fsStrikeOut);
    font.lfCharSet = FCharset;
    // "Default" is the name of whatever font fits.
    if (!SameText(FName, "Default")) {
        ToWide(FName).copy(font.lfFaceName, LF_FACESIZE - 1);
    }
    const int pitch = FPitch == fpVariable ? VARIABLE_PITCH : FPitch == fpFixed ? FIXED_PITCH : DEFAULT_PITCH;
    font.lfPitchAndFamily = static_cast<BYTE>(pitch);
    return font;
}

void TFont::SetLogFont(const LOGFONTW& value) {
    ChangeLook([&] {
        FHeight = value.lfHeight;
        FStyle = {};
        if (value.lfWeight >= FW_BOLD) {
            FStyle.Include(fsBold);
        }
        if (value.lfItalic) {
            FStyle.Include(fsItalic);
        }
        if (value.lfUnderline) {
            FStyle.Include(fsUnderline);
        }
        if (value.lfStrikeOut) {
            FStyle.Include(fsStrikeOut);
        }
        FCharset = static_cast<TFontCharset>(value.lfCharSet);
        FName = FromWide({value.lfFaceName, wcsnlen(value.lfFaceName, LF_FACESIZE)});
        const int pitch = value.lfPitchAndFamily & 3;
        FPitch = pitch == VARIABLE_PITCH ? fpVariable : pitch == FIXED_PITCH ? fpFixed : fpDefault;
    });
}

void TFont::SetHandle(HFONT value) {
    LOGFONTW font = {};
    if (!GetObjectW(value, sizeof(font), &font)) {
        throw EInvalidOperation("Invalid font handle");
    }
    SetLogFont(font);
}

std::shared_ptr<detail::TGdiHandle> TFont::CreateShared() const {
    return detail::SharedGdiHandle<LOGFONTW>(
        'F', LogFont(), [](const LOGFONTW& font) -> HGDIOBJ { return CreateFontIndirectW(&font); });
}

// --- TPen

const TClass& TPen::StaticClass() {
    static const TClassBuilder<TPen> cls("TPen", TGraphicsObject::StaticClass(), [](auto& c) {
        c.Property("Color", &TPen::Color, &TPen::SetColor).Default = clBlack;
        c.Property("Mode", &TPen::Mode, &TPen::SetMode).Default = pmCopy;
        c.Property("Style", &TPen::Style, &TPen::SetStyle).Default = psSolid;
        c.Property("Width", &TPen::Width, &TPen::SetWidth).Default = 1;
    });
    return cls.Class();
}

template <class V> void TPen::Change(V& field, const V& value) {
    if (field != value) {
        ChangeLook([&] { field = value; });
    }
}

void TPen::SetColor(TColor value) { Change(FColor, value); }

void TPen::SetMode(TPenMode value) { Change(FMode, value); }

void TPen::SetStyle(TPenStyle value) { Change(FStyle, value); }

void TPen::SetWidth(int value) {
    if (value >= 0) {
        Change(FWidth, value);
    }
}

void TPen::Assign(const TPersistent* source) {
    const auto* pen = dynamic_cast<const TPen*>(source);
    if (!pen) {
        TGraphicsObject::Assign(source);
        return;
    }
    ChangeLook([&] {
        FColor = pen->FColor;
        FMode = pen->FMode;
        FStyle = pen->FStyle;
        FWidth = pen->FWidth;
    });
}

std::shared_ptr<detail::TGdiHandle> TPen::CreateShared() const {
    LOGPEN pen = {};
    pen.lopnStyle = FStyle; // the system numbers its styles in the same order
    pen.lopnWidth.x = FWidth;
    pen.lopnColor = ColorToRGB(FColor);
    return detail::SharedGdiHandle<LOGPEN>('P', pen, [](const LOGPEN& p) -> HGDIOBJ { return CreatePenIndirect(&p); });
}

// --- TBrush

const TClass& TBrush::StaticClass() {
    static const TClassBuilder<TBrush> cls("TBrush", TGraphicsObject::StaticClass(), [](auto& c) {
        c.Property("Color", &TBrush::Color, &TBrush::SetColor).Default = clWhite;
        c.Property("Style", &TBrush::Style, &TBrush::SetStyle).Default = bsSolid;
    });
    return cls.Class();
}

void TBrush::SetLook(TColor color, TBrushStyle style) {
    if (color != FColor || style != FStyle) {
        ChangeLook([&] {
            FColor = color;
            FStyle = style;
        });
    }
}

void TBrush::SetColor(TColor value) { SetLook(value, FStyle == bsClear ? bsSolid : FStyle); }

void TBrush::SetStyle(TBrushStyle value) { SetLook(FColor, value); }

void TBrush::Assign(const TPersistent* source) {
    const auto* brush = dynamic_cast<const TBrush*>(source);
    if (!brush) {
        TGraphicsObject::Assign(source);
        return;
    }
    SetLook(brush->FColor, brush->FStyle);
}

std::shared_ptr<detail::TGdiHandle> TBrush::CreateShared() const {
    LOGBRUSH brush = {};
    switch (FStyle) {
    case bsSolid:
        brush.lbStyle = BS_SOLID;
        brush.lbColor = ColorToRGB(FColor);
        break;
    case bsClear: brush.lbStyle = BS_HOLLOW; break;
    default: // the hatches, in the system's order
        brush.lbStyle = BS_HATCHED;
        brush.lbColor = ColorToRGB(FColor);
        brush.lbHatch = static_cast<ULONG_PTR>(FStyle - bsHorizontal);
    }
    return detail::SharedGdiHandle<LOGBRUSH>('B', brush,
                                             [](const LOGBRUSH& b) -> HGDIOBJ { return CreateBrushIndirect(&b); });
}

} // namespace kx
