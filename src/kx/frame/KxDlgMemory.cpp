// SPDX-License-Identifier: MIT
// What a dialog remembers from one showing to the next.

#include "kx/frame/KxDlgMemory.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Monitors.h"
#include "kx/win/PathKind.h"
#include "kx/win/Registry.h"

#include <algorithm>
#include <climits>

namespace kx {

namespace {

constexpr int MostPixels = 32767; ///< The system's own limit for windows and columns.

/// A number of the key from 0 to `most`, as far as it is one.
std::optional<int> ReadNumber(const TRegistry& key, const char* name, int most) {
    try {
        const int value = key.ReadInteger(name);
        return value >= 0 && value <= most ? std::optional(value) : std::nullopt;
    } catch (const ERegistryException&) {
        return std::nullopt;
    }
}

std::string ReadText(const TRegistry& key, const char* name) {
    try {
        return key.ReadString(name);
    } catch (const ERegistryException&) {
        return {};
    }
}

/// "135,90,45"; nothing when one of them is no width.
std::vector<int> WidthsOf(const std::string& text) {
    TStringList texts;
    texts.SetCommaText(text);
    std::vector<int> widths;
    for (int i = 0; i < texts.Count(); ++i) {
        const int64_t width = StrToIntDef(texts[i], -1);
        if (width < 0 || width > MostPixels) {
            return {};
        }
        widths.push_back(static_cast<int>(width));
    }
    return widths;
}

std::string TextOf(const std::vector<int>& widths) {
    TStringList texts;
    for (const int width : widths) {
        texts.Add(IntToStr(width));
    }
    return texts.CommaText();
}

} // namespace

TKxDlgMemory::TKxDlgMemory(const std::string& key) : FKey(KeyFromRoot(key)) {
    TRegistry registry;
    if (FKey.empty() || !registry.OpenKeyReadOnly(FKey)) {
        return;
    }
    Folder = ReadText(registry, "Folder");
    Filter = ReadNumber(registry, "FilterIndex", INT_MAX);
    const std::optional<int> width = ReadNumber(registry, "Width", MostPixels);
    const std::optional<int> height = ReadNumber(registry, "Height", MostPixels);
    if (width.value_or(0) > 0 && height.value_or(0) > 0) {
        Size = TPoint{*width, *height};
    }
    ViewStyle = ReadNumber(registry, "ViewStyle", INT_MAX);
    Columns = WidthsOf(ReadText(registry, "ColumnWidths"));
}

void TKxDlgMemory::Keep(bool confirmed) const {
    TRegistry registry;
    if (FKey.empty() || !registry.OpenKey(FKey, true)) {
        return;
    }
    if (Size) {
        registry.WriteInteger("Width", Size->X);
        registry.WriteInteger("Height", Size->Y);
    }
    if (ViewStyle) {
        registry.WriteInteger("ViewStyle", *ViewStyle);
    }
    if (!Columns.empty()) {
        registry.WriteString("ColumnWidths", TextOf(Columns));
    }
    if (confirmed && !Folder.empty()) {
        registry.WriteString("Folder", Folder);
    }
    if (confirmed && Filter) {
        registry.WriteInteger("FilterIndex", *Filter);
    }
}

std::string TKxDlgMemory::ExistingFolder() const { return KindOfPath(Folder) == pkFolder ? Folder : std::string(); }

TPoint KxFitSize(HWND window, TPoint size) {
    const TRect area = MonitorOf(window).Free;
    return {std::min(size.X, Width(area)), std::min(size.Y, Height(area))};
}

} // namespace kx
