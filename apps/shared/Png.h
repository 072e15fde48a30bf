#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kx {

/// A picture file in the PNG format, 8 bits per channel, without an alpha channel and without compression.
/// `pixels` holds rows from top to bottom, `stride` bytes apart, each pixel as the bytes blue, green, red and one that
/// is ignored. @throws ERangeError for a width or height below 1 or above 32767.
std::vector<uint8_t> EncodePng(int width, int height, const uint8_t* pixels, size_t stride);

} // namespace kx
