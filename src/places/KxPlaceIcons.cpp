#include "places/KxPlaceIcons.h"

#include "ui/Forms.h"

#include <shellapi.h>

namespace kx {

unique_hicon ExtractPlaceIcon(const std::string& file, int32_t index) {
    if (index < 0) {
        RaiseRangeError();
    }
    const auto instance = reinterpret_cast<HINSTANCE>(Application().Handle());
    const HICON icon = ExtractIconA(instance, file.c_str(), static_cast<UINT>(index));
    const auto noIconFile = reinterpret_cast<HICON>(UINT_PTR{1});
    return unique_hicon(icon == noIconFile ? nullptr : icon);
}

} // namespace kx
