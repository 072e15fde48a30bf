// SPDX-License-Identifier: MIT
// Printers that are made for a test.

#include "tests/support/Printers.h"

#include "kx/win/Windows.h"

#include <algorithm>
#include <winspool.h>

namespace kx::test {

namespace {

std::string DefaultPrinter() {
    DWORD size = 0;
    GetDefaultPrinterA(nullptr, &size);
    std::string name(size, '\0');
    if (size == 0 || !GetDefaultPrinterA(name.data(), &size)) {
        return {};
    }
    name.resize(size - 1); // the size counts the NUL
    return name;
}

} // namespace

std::vector<std::string> InstalledPrinters() {
    constexpr DWORD local = PRINTER_ENUM_LOCAL;
    DWORD size = 0;
    DWORD count = 0;
    EnumPrintersA(local, nullptr, 2, nullptr, 0, &size, &count);
    std::vector<BYTE> buffer(size);
    if (size == 0 || !EnumPrintersA(local, nullptr, 2, buffer.data(), size, &size, &count)) {
        return {};
    }
    const auto* const infos = reinterpret_cast<const PRINTER_INFO_2A*>(buffer.data());
    std::vector<std::string> names;
    for (DWORD i = 0; i < count; ++i) {
        names.emplace_back(infos[i].pPrinterName);
    }
    const std::string first = DefaultPrinter();
    std::stable_partition(names.begin(), names.end(), [&](const std::string& name) { return name == first; });
    return names;
}

} // namespace kx::test
