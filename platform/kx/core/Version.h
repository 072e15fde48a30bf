// SPDX-License-Identifier: MIT
#pragma once

// The version of the library, and the only place where it is written: the build reads it here. Versions are semantic
// (https://semver.org): programs that were written for 7.x compile and work with every later 7.y.

/// A change after which some programs have to be changed raises the first number,
#define KX_VERSION_MAJOR 7
/// what is new for programs the second one,
#define KX_VERSION_MINOR 0
/// and what is only mended the third one.
#define KX_VERSION_PATCH 0

/// One number to compare: `#if KX_VERSION >= KX_VERSION_NUMBER(7, 1, 0)`.
#define KX_VERSION_NUMBER(major, minor, patch) ((major)*1000000 + (minor)*1000 + (patch))
#define KX_VERSION KX_VERSION_NUMBER(KX_VERSION_MAJOR, KX_VERSION_MINOR, KX_VERSION_PATCH)

namespace kx {

/// The version of the headers, as KX_VERSION.
inline constexpr int HeaderVersion = KX_VERSION;

/// The version of the library that the program runs with, as KX_VERSION: with a library in a DLL it may be another than
/// HeaderVersion.
int LibraryVersion() noexcept;

/// The same as a text: "7.0.0".
const char* LibraryVersionText() noexcept;

} // namespace kx
