// SPDX-License-Identifier: MIT
#pragma once

// Binary blocks of form files that hold the items of a control.

#include "kx/core/Filer.h"
#include "kx/core/Streams.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kx::detail {

/// Takes numbers off the front of a block, which holds them with their low bytes first. @throws EReadError at its end.
class TBlock {
public:
    explicit TBlock(std::string_view bytes) : FBytes(bytes) {}

    std::string_view Take(size_t count) {
        if (count > FBytes.size()) {
            throw EReadError("The block is cut off");
        }
        const std::string_view taken = FBytes.substr(0, count);
        FBytes.remove_prefix(count);
        return taken;
    }
    uint8_t Byte() { return static_cast<uint8_t>(Take(1)[0]); }
    int32_t Number() {
        uint32_t number = 0;
        for (const char byte : Take(4)) {
            number = number >> 8 | static_cast<uint32_t>(static_cast<unsigned char>(byte)) << 24;
        }
        return static_cast<int32_t>(number);
    }
    /// A text behind a byte with its length: in UTF-16, or of the code page in blocks of older tools.
    std::string Text(bool isOld);
    size_t Rest() const { return FBytes.size(); }
    bool IsAtEnd() const { return FBytes.empty(); }

private:
    std::string_view FBytes;
};

inline void AddNumber(std::string& bytes, int32_t number) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<char>(static_cast<uint32_t>(number) >> shift & 0xFF));
    }
}

/// All that the stream holds.
inline std::string BytesOf(TStream& stream) {
    std::string bytes(static_cast<size_t>(stream.Size()), '\0');
    stream.SetPosition(0);
    stream.ReadBuffer(bytes.data(), bytes.size());
    return bytes;
}

} // namespace kx::detail
