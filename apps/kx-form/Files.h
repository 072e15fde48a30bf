// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::tool {

/// The standard streams carry bytes: line ends stay what they are.
void UseBytes();

/// The bytes of a file; "-" is the standard input. @throws EStreamError
std::string ReadFile(const std::string& name);

/// Puts a file in the place of the one of that name, whole or not at all; "-" is the standard output.
/// @throws EStreamError
void WriteFile(const std::string& name, const std::string& bytes);

} // namespace kx::tool
