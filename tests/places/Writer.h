// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::test {

// Another process that saves places, in which this program runs with that option, a registry key and a tag.

inline constexpr const char* WriterOption = "--write-places";
inline constexpr int WriterPlaces = 40;
inline constexpr int WriterRounds = 12;

/// Saves its places a number of times to the key: "tag 0", "tag 1", ... with paths that begin with the tag. Registry
/// errors on the way are part of it; the exit code is 0 unless something else goes wrong.
int RunWriter(const std::string& key, const std::string& tag);

} // namespace kx::test
