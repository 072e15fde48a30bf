// SPDX-License-Identifier: MIT
// The icons of places.

#include "kx/places/KxPlaceIcons.h"

#include "kx/ui/forms/Forms.h"
#include "kx/win/Windows.h"

#include <shellapi.h>

namespace kx {

namespace {

/// Of the noise in a broken file the system may make an icon that it can neither measure nor draw.
bool IsIcon(HICON icon) {
    ICONINFO info{};
    if (!GetIconInfo(icon, &info)) {
        return false;
    }
    const unique_hbitmap color(info.hbmColor);
    const unique_hbitmap mask(info.hbmMask);
    return true;
}

} // namespace

unique_hicon ExtractPlaceIcon(const std::string& file, int32_t index) {
    if (index < 0) {
        RaiseRangeError();
    }
    const auto instance = reinterpret_cast<HINSTANCE>(Application().Handle());
    const HICON icon = ExtractIconA(instance, file.c_str(), static_cast<UINT>(index));
    const auto noIconFile = reinterpret_cast<HICON>(UINT_PTR{1});
    unique_hicon owned(icon == noIconFile ? nullptr : icon);
    return IsIcon(owned.get()) ? std::move(owned) : unique_hicon();
}

} // namespace kx
