// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <memory>
#include <string>

namespace kx::test {

/// A registry key of the test's own below HKEY_CURRENT_USER, gone at the end of the scope with all that is in it.
class TTestKey {
public:
    TTestKey() : FPath("Software\\KxTests\\Process" + IntToStr(GetCurrentProcessId())) { TRegistry().DeleteKey(FPath); }
    TTestKey(const TTestKey&) = delete;
    TTestKey& operator=(const TTestKey&) = delete;
    ~TTestKey() {
        TRegistry().DeleteKey(FPath);
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\KxTests"); // unless another process has one
    }

    const std::string& Path() const { return FPath; }

    void Write(const char* name, int value) const { Opened()->WriteInteger(name, value); }
    void Write(const char* name, const std::string& value) const { Opened()->WriteString(name, value); }

private:
    std::unique_ptr<TRegistry> Opened() const {
        auto registry = std::make_unique<TRegistry>();
        registry->OpenKey(FPath, true);
        return registry;
    }

    std::string FPath;
};

} // namespace kx::test
