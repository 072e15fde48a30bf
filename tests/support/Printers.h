// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace kx::test {

/// Names of the installed printers, the default one first. Tests that print need two; tools/wine-run sets them up.
std::vector<std::string> InstalledPrinters();

/// For the failure of a test that finds fewer.
inline constexpr const char* NoPrinters =
    "two printers must be installed, one of them the default one: tools/wine-run has them in its prefixes";

} // namespace kx::test
