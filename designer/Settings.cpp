// SPDX-License-Identifier: MIT
// What the designer remembers from start to start.

#include "designer/Settings.h"

#include "kx/core/SysUtils.h"
#include "kx/win/Registry.h"

namespace kx::designer {

namespace {

std::string& Key() {
    static std::string key = "Software\\kxqdlgs70\\Designer";
    return key;
}

} // namespace

const std::string& SettingsKey() { return Key(); }
void SetSettingsKey(const std::string& value) { Key() = value; }

std::string TSettings::Text(const std::string& name) const {
    try {
        TRegistry registry;
        return registry.OpenKeyReadOnly(FKey) ? registry.ReadString(name) : std::string();
    } catch (const ERegistryException&) {
        return {}; // it is no text
    }
}

int TSettings::Number(const std::string& name, int least, int greatest, int fallback) const {
    const int64_t value = StrToIntDef(Text(name), int64_t{least} - 1);
    return value < least || value > greatest ? fallback : static_cast<int>(value);
}

void TSettings::SetText(const std::string& name, const std::string& value) const {
    try {
        TRegistry registry;
        if (registry.OpenKey(FKey, true)) {
            registry.WriteString(name, value);
        }
    } catch (const ERegistryException&) {
        return; // not remembered
    }
}

void TSettings::SetNumber(const std::string& name, int value) const { SetText(name, IntToStr(value)); }

} // namespace kx::designer
