#pragma once

#include "kx/win/Registry.h"

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

private:
    std::string FPath;
};

} // namespace kx::test
