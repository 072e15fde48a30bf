// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"

#include <cstdint>
#include <string>

namespace kx {

/// The icon of that index in a program, a library or an icon file; empty when there is none, or none that can be
/// drawn. The file is opened anew each time.
/// @throws ERangeError for a negative index.
unique_hicon ExtractPlaceIcon(const std::string& file, int32_t index);

} // namespace kx
