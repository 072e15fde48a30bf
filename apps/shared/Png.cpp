#include "shared/Png.h"

#include "kx/core/SysUtils.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kx {

namespace {

constexpr int MaxSide = 32767;

std::array<uint32_t, 256> MakeCrcTable() {
    std::array<uint32_t, 256> table{};
    for (uint32_t n = 0; n < table.size(); ++n) {
        uint32_t value = n;
        for (int bit = 0; bit < 8; ++bit) {
            value = (value & 1U) != 0 ? 0xEDB88320U ^ (value >> 1) : value >> 1;
        }
        table[n] = value;
    }
    return table;
}

uint32_t Crc(const uint8_t* data, size_t size) {
    static const std::array<uint32_t, 256> table = MakeCrcTable();
    uint32_t crc = 0xFFFFFFFFU;
    for (size_t i = 0; i < size; ++i) {
        crc = table[(crc ^ data[i]) & 0xFFU] ^ (crc >> 8);
    }
    return crc ^ 0xFFFFFFFFU;
}

uint32_t Adler(const std::vector<uint8_t>& data) {
    uint32_t a = 1;
    uint32_t b = 0;
    for (const uint8_t byte : data) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    return (b << 16) | a;
}

void PutBigEndian(std::vector<uint8_t>& out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) {
        out.push_back(static_cast<uint8_t>(value >> shift));
    }
}

void PutChunk(std::vector<uint8_t>& out, std::string_view type, const std::vector<uint8_t>& data) {
    PutBigEndian(out, static_cast<uint32_t>(data.size()));
    const size_t start = out.size();
    out.insert(out.end(), type.begin(), type.end());
    out.insert(out.end(), data.begin(), data.end());
    PutBigEndian(out, Crc(out.data() + start, out.size() - start));
}

/// A zlib stream of stored blocks.
std::vector<uint8_t> Store(const std::vector<uint8_t>& data) {
    constexpr size_t blockSize = 65535;
    std::vector<uint8_t> out{0x78, 0x01};
    for (size_t at = 0; at < data.size(); at += blockSize) {
        const size_t size = std::min(blockSize, data.size() - at);
        const auto length = static_cast<uint16_t>(size);
        const auto inverse = static_cast<uint16_t>(~size);
        out.push_back(at + size == data.size() ? 1 : 0);
        out.push_back(static_cast<uint8_t>(length));
        out.push_back(static_cast<uint8_t>(length >> 8));
        out.push_back(static_cast<uint8_t>(inverse));
        out.push_back(static_cast<uint8_t>(inverse >> 8));
        out.insert(out.end(), data.begin() + static_cast<ptrdiff_t>(at),
                   data.begin() + static_cast<ptrdiff_t>(at + size));
    }
    PutBigEndian(out, Adler(data));
    return out;
}

/// Rows of red, green, blue, each behind the byte of its filter: none.
std::vector<uint8_t> Rows(int width, int height, const uint8_t* pixels, size_t stride) {
    const auto columns = static_cast<size_t>(width);
    std::vector<uint8_t> rows;
    rows.reserve(static_cast<size_t>(height) * (columns * 3 + 1));
    for (int y = 0; y < height; ++y) {
        const uint8_t* pixel = pixels + static_cast<size_t>(y) * stride;
        rows.push_back(0);
        for (size_t x = 0; x < columns; ++x, pixel += 4) {
            rows.push_back(pixel[2]);
            rows.push_back(pixel[1]);
            rows.push_back(pixel[0]);
        }
    }
    return rows;
}

} // namespace

std::vector<uint8_t> EncodePng(int width, int height, const uint8_t* pixels, size_t stride) {
    if (width < 1 || width > MaxSide || height < 1 || height > MaxSide) {
        throw ERangeError(Format("A picture cannot be %s x %s pixels", {IntToStr(width), IntToStr(height)}));
    }
    std::vector<uint8_t> out{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<uint8_t> header;
    PutBigEndian(header, static_cast<uint32_t>(width));
    PutBigEndian(header, static_cast<uint32_t>(height));
    header.insert(header.end(), {8, 2, 0, 0, 0}); // 8 bits, true colour, no interlacing
    PutChunk(out, "IHDR", header);
    PutChunk(out, "IDAT", Store(Rows(width, height, pixels, stride)));
    PutChunk(out, "IEND", {});
    return out;
}

} // namespace kx
