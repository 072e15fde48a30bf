// SPDX-License-Identifier: MIT
// The one place that finds out which system the program runs on.

#include "kx/win/System.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

std::optional<TSystem>& Assumed() {
    static std::optional<TSystem> assumed;
    return assumed;
}

bool AllowsDynamicCode() {
    using TGetPolicy = BOOL(WINAPI*)(HANDLE process, int policy, void* buffer, SIZE_T size);
    constexpr int dynamicCodePolicy = 2;
    constexpr DWORD prohibit = 1;
    // Since Windows 8. Before that nothing can be forbidden.
    const auto getPolicy = SystemFunction<TGetPolicy>("kernel32.dll", "GetProcessMitigationPolicy");
    DWORD flags = 0;
    return !getPolicy || !getPolicy(GetCurrentProcess(), dynamicCodePolicy, &flags, sizeof(flags)) ||
           (flags & prohibit) == 0;
}

TSystem Find() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
#ifdef _MSC_VER
#pragma warning(suppress : 4996) // Newer systems report an older version here, which is new enough for all questions.
#endif
    if (!GetVersionExA(&version)) {
        version = {};
    }
    return {.Wine = SystemFunction<void*>("ntdll.dll", "wine_get_version") != nullptr,
            .Platform = version.dwPlatformId,
            .Major = version.dwMajorVersion,
            .Minor = version.dwMinorVersion,
            .DynamicCode = AllowsDynamicCode()};
}

} // namespace

void* FindSystemFunction(const char* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name));
}

const TSystem& System() {
    static const TSystem found = Find();
    const std::optional<TSystem>& assumed = Assumed();
    return assumed ? *assumed : found;
}

TAssumedSystem::TAssumedSystem(const TSystem& assumed) : FBefore(Assumed()) { Assumed() = assumed; }

TAssumedSystem::~TAssumedSystem() { Assumed() = FBefore; }

} // namespace kx
