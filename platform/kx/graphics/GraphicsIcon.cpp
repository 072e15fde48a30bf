// SPDX-License-Identifier: MIT
// Icons and the files that they come from.

#include "kx/core/Streams.h"
#include "kx/graphics/GraphicsDib.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace kx {

using detail::TImageInfo;

namespace {

[[noreturn]] void InvalidIcon() { throw EInvalidImage("Icon image is not valid"); }

// --- Icon files: a directory of pictures, then the pictures, each a bitmap with twice its height (colours above, mask
// below in file order) or a PNG file.

#pragma pack(push, 2)
struct TIconDir {
    WORD Reserved = 0;
    WORD Type = 1;
    WORD Count = 0;
};
struct TIconDirEntry {
    BYTE Width = 0; ///< 0 stands for 256.
    BYTE Height = 0;
    BYTE ColorCount = 0;
    BYTE Reserved = 0;
    WORD Planes = 0;
    WORD BitCount = 0;
    DWORD Size = 0;
    DWORD Offset = 0;
};
#pragma pack(pop)
static_assert(sizeof(TIconDir) == 6 && sizeof(TIconDirEntry) == 16);

int Side(BYTE value) { return value == 0 ? 256 : value; }

/// The pictures of an icon file, checked to lie inside it.
std::vector<TIconDirEntry> ReadDirectory(const std::vector<uint8_t>& file) {
    TIconDir dir;
    if (file.size() < sizeof(dir)) {
        InvalidIcon();
    }
    std::memcpy(&dir, file.data(), sizeof(dir));
    if (dir.Reserved != 0 || dir.Type != 1 || dir.Count == 0 ||
        dir.Count > (file.size() - sizeof(dir)) / sizeof(TIconDirEntry)) {
        InvalidIcon();
    }
    std::vector<TIconDirEntry> entries(dir.Count);
    std::memcpy(entries.data(), file.data() + sizeof(dir), entries.size() * sizeof(TIconDirEntry));
    for (const TIconDirEntry& entry : entries) {
        if (entry.Offset > file.size() || entry.Size > file.size() - entry.Offset ||
            entry.Size < sizeof(BITMAPINFOHEADER)) {
            InvalidIcon();
        }
    }
    return entries;
}

/// Bits per pixel of a picture, read where the directory leaves it out.
int BitCount(const std::vector<uint8_t>& file, const TIconDirEntry& entry) {
    BITMAPINFOHEADER header = {};
    std::memcpy(&header, file.data() + entry.Offset, sizeof(header));
    return header.biSize == sizeof(header) ? header.biBitCount : std::max<int>(entry.BitCount, 32);
}

/// The picture that is nearest in size; of several, the one with the most colours.
const TIconDirEntry& BestEntry(const std::vector<uint8_t>& file, const std::vector<TIconDirEntry>& entries, int width,
                               int height) {
    const auto distance = [&](const TIconDirEntry& entry) {
        return std::abs(Side(entry.Width) - width) + std::abs(Side(entry.Height) - height);
    };
    return *std::min_element(entries.begin(), entries.end(), [&](const auto& a, const auto& b) {
        const int da = distance(a);
        const int db = distance(b);
        return da != db ? da < db : BitCount(file, a) > BitCount(file, b);
    });
}

constexpr int MaxSide = 1024;

/// A number of a PNG file, highest byte first.
uint32_t PngNumber(const std::vector<uint8_t>& png, size_t offset) {
    uint32_t number = 0;
    for (size_t i = 0; i < 4; ++i) {
        number = number << 8 | png[offset + i];
    }
    return number;
}

bool IsPng(const std::vector<uint8_t>& picture) {
    static constexpr uint8_t signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    return std::equal(std::begin(signature), std::end(signature), picture.begin());
}

/// The system trusts what a picture says about its size. Of at least the size of a bitmap's header.
void CheckPicture(const std::vector<uint8_t>& picture) {
    if (IsPng(picture)) { // behind its signature the length and the name of its header, then width and height
        const uint32_t width = PngNumber(picture, 16);
        const uint32_t height = PngNumber(picture, 20);
        if (width == 0 || width > MaxSide || height == 0 || height > MaxSide) {
            InvalidIcon();
        }
        return;
    }
    BITMAPINFOHEADER header = {};
    std::memcpy(&header, picture.data(), sizeof(header));
    const int64_t rows = header.biHeight / 2;
    const int64_t colors = header.biBitCount <= 8 ? int64_t{1} << header.biBitCount : 0;
    const int64_t used = header.biClrUsed != 0 ? std::min<int64_t>(header.biClrUsed, colors) : colors;
    const auto rowSize = [&](int64_t bits) { return (header.biWidth * bits + 31) / 32 * 4; };
    // Later headers begin with the same fields. Earlier ones, of 12 bytes, are not used in icons.
    if (header.biSize < sizeof(header) || header.biSize > sizeof(BITMAPV5HEADER) || header.biWidth <= 0 ||
        header.biWidth > MaxSide || rows <= 0 || rows > MaxSide || header.biCompression != BI_RGB ||
        header.biSize + static_cast<uint64_t>(used * 4 + rows * (rowSize(header.biBitCount) + rowSize(1))) >
            picture.size()) {
        InvalidIcon();
    }
}

unique_hicon CreateFromFile(const std::vector<uint8_t>& file, int width, int height) {
    const std::vector<TIconDirEntry> entries = ReadDirectory(file);
    const TIconDirEntry& entry = BestEntry(file, entries, width, height);
    std::vector<uint8_t> picture(file.begin() + static_cast<ptrdiff_t>(entry.Offset),
                                 file.begin() + static_cast<ptrdiff_t>(entry.Offset + entry.Size));
    CheckPicture(picture);
    unique_hicon icon(CreateIconFromResourceEx(picture.data(), entry.Size, TRUE, 0x00030000, width, height, 0));
    if (!icon) {
        InvalidIcon();
    }
    return icon;
}

/// The two pictures that make up an icon.
struct TIconPictures {
    unique_hbitmap Color; ///< None in a black and white icon, whose mask has them both, one above the other.
    unique_hbitmap Mask;
    int Width = 0;
    int Height = 0;

    explicit TIconPictures(HICON icon) {
        ICONINFO info = {};
        if (!GetIconInfo(icon, &info)) {
            InvalidIcon();
        }
        Color.reset(info.hbmColor);
        Mask.reset(info.hbmMask);
        const TImageInfo image(Color ? Color.get() : Mask.get());
        Width = image.Width();
        Height = Color ? image.Height() : image.Height() / 2;
    }
};

/// Whether any of these 32-bit pixels is not fully transparent, that is, whether their fourth byte means anything.
bool HasAlpha(const std::vector<uint8_t>& pixels, size_t start) {
    for (size_t i = start + 3; i < pixels.size(); i += 4) {
        if (pixels[i] != 0) {
            return true;
        }
    }
    return false;
}

/// An icon file with the one picture that the handle shows.
std::vector<uint8_t> WriteFile(HICON icon) {
    const TIconPictures pictures(icon);
    const HBITMAP color = pictures.Color ? pictures.Color.get() : pictures.Mask.get();
    WORD bits = pictures.Color ? WORD{32} : WORD{1};
    size_t pixelStart = 0;
    std::vector<uint8_t> picture = detail::WriteDib(color, bits, pixelStart);
    if (pictures.Color) {
        if (!HasAlpha(picture, pixelStart)) {
            bits = 24;
            picture = detail::WriteDib(color, bits, pixelStart);
        }
        size_t maskStart = 0;
        const std::vector<uint8_t> mask = detail::WriteDib(pictures.Mask.get(), 1, maskStart);
        picture.insert(picture.end(), mask.begin() + static_cast<ptrdiff_t>(maskStart), mask.end());
    }
    // In the file, as in the black and white picture, the header counts the rows of both. Rows run from the bottom up,
    // so the lower picture of the black and white one, its colours, comes first, as it should.
    BITMAPINFOHEADER header = {};
    std::memcpy(&header, picture.data(), sizeof(header));
    header.biHeight = pictures.Height * 2;
    header.biSizeImage = 0;
    std::memcpy(picture.data(), &header, sizeof(header));

    TIconDir dir;
    dir.Count = 1;
    TIconDirEntry entry;
    entry.Width = static_cast<BYTE>(pictures.Width);
    entry.Height = static_cast<BYTE>(pictures.Height);
    entry.ColorCount = static_cast<BYTE>(bits == 1 ? 2 : 0);
    entry.Planes = 1;
    entry.BitCount = bits;
    entry.Size = static_cast<DWORD>(picture.size());
    entry.Offset = sizeof(dir) + sizeof(entry);
    std::vector<uint8_t> file(sizeof(dir) + sizeof(entry));
    std::memcpy(file.data(), &dir, sizeof(dir));
    std::memcpy(file.data() + sizeof(dir), &entry, sizeof(entry));
    file.insert(file.end(), picture.begin(), picture.end());
    return file;
}

} // namespace

// --- TIcon

const TClass& TIcon::StaticClass() {
    static const TClassBuilder<TIcon> cls("TIcon", TGraphic::StaticClass());
    return cls.Class();
}

TIcon::TIcon() : FWantedWidth(GetSystemMetrics(SM_CXICON)), FWantedHeight(GetSystemMetrics(SM_CYICON)) {}

TIcon::~TIcon() = default;

int TIcon::Width() const { return FImage ? TIconPictures(Handle()).Width : FWantedWidth; }

int TIcon::Height() const { return FImage ? TIconPictures(Handle()).Height : FWantedHeight; }

void TIcon::SetWantedSize(int width, int height) {
    if (width <= 0 || height <= 0 || (FImage && FImage->File.empty())) {
        throw EInvalidOperation("Cannot change the size of an icon");
    }
    if (FImage && (width != FWantedWidth || height != FWantedHeight)) {
        auto image = std::make_shared<TImage>();
        image->Handle = CreateFromFile(FImage->File, width, height);
        image->File = FImage->File;
        FImage = std::move(image);
    }
    FWantedWidth = width;
    FWantedHeight = height;
    Changed();
}

void TIcon::SetHandle(HICON value) {
    if (value == Handle()) {
        return;
    }
    FImage.reset();
    if (value) {
        FImage = std::make_shared<TImage>();
        FImage->Handle.reset(value);
    }
    Changed();
}

HICON TIcon::ReleaseHandle() {
    if (!FImage) {
        return nullptr;
    }
    const bool shared = FImage.use_count() > 1;
    const HICON icon = shared ? CopyIcon(FImage->Handle.get()) : FImage->Handle.release();
    FImage.reset();
    Changed();
    return icon;
}

void TIcon::LoadFromStream(TStream& stream) {
    const int64_t available = std::max<int64_t>(stream.Size() - stream.Position(), 0);
    auto image = std::make_shared<TImage>();
    image->File.resize(static_cast<size_t>(available));
    stream.ReadBuffer(image->File.data(), image->File.size());
    image->Handle = CreateFromFile(image->File, FWantedWidth, FWantedHeight);
    FImage = std::move(image);
    Changed();
}

void TIcon::SaveToStream(TStream& stream) const {
    if (!FImage) {
        throw EInvalidOperation("An empty icon cannot be stored");
    }
    const std::vector<uint8_t> file = FImage->File.empty() ? WriteFile(Handle()) : FImage->File;
    stream.WriteBuffer(file.data(), file.size());
}

void TIcon::ReadData(TStream& stream) { LoadFromStream(stream); }

void TIcon::WriteData(TStream& stream) const { SaveToStream(stream); }

void TIcon::Draw(TCanvas& canvas, const TRect& rect) const {
    if (FImage) {
        DrawIconEx(canvas.Handle(), rect.Left, rect.Top, Handle(), kx::Width(rect), kx::Height(rect), 0, nullptr,
                   DI_NORMAL);
    }
}

void TIcon::Assign(const TPersistent* source) {
    const auto* icon = dynamic_cast<const TIcon*>(source);
    if (source && !icon) {
        TGraphic::Assign(source);
        return;
    }
    FImage = icon ? icon->FImage : nullptr;
    Changed();
}

} // namespace kx
