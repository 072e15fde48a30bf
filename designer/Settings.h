// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::designer {

/// The key of the user's registry, below HKEY_CURRENT_USER, in which the designer remembers what it is told.
const std::string& SettingsKey();
/// Takes another key, from the next window on: that of a designer with settings of its own.
void SetSettingsKey(const std::string& value);

/// A group of settings: the values of a key below SettingsKey. A value that is not there, or is not what it should be,
/// reads as the fallback. What cannot be written is not remembered, and that is no error.
class TSettings {
public:
    explicit TSettings(const std::string& group) : FKey(SettingsKey() + "\\" + group) {}

    std::string Text(const std::string& name) const; ///< Empty in place of a fallback.
    int Number(const std::string& name, int least, int greatest, int fallback) const;
    bool Flag(const std::string& name, bool fallback) const { return Number(name, 0, 1, fallback) != 0; }

    void SetText(const std::string& name, const std::string& value) const;
    void SetNumber(const std::string& name, int value) const;
    void SetFlag(const std::string& name, bool value) const { SetNumber(name, value); }

private:
    std::string FKey;
};

} // namespace kx::designer
