// SPDX-License-Identifier: MIT
// The version of the library.

#include "kx/core/Version.h"

namespace kx {

int LibraryVersion() noexcept { return HeaderVersion; }

#define KX_TEXT_OF(value) #value
#define KX_VERSION_TEXT(major, minor, patch) KX_TEXT_OF(major) "." KX_TEXT_OF(minor) "." KX_TEXT_OF(patch)

const char* LibraryVersionText() noexcept {
    return KX_VERSION_TEXT(KX_VERSION_MAJOR, KX_VERSION_MINOR, KX_VERSION_PATCH);
}

} // namespace kx
