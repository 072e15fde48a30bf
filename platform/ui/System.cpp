// The one place that finds out which system the program runs on.

#include "ui/System.h"

#include "ui/Windows.h"

namespace kx {

namespace {

std::optional<TSystem>& Assumed() {
    static std::optional<TSystem> assumed;
    return assumed;
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
    return {.Wine = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr,
            .Platform = version.dwPlatformId,
            .Major = version.dwMajorVersion,
            .Minor = version.dwMinorVersion};
}

} // namespace

const TSystem& System() {
    static const TSystem found = Find();
    const std::optional<TSystem>& assumed = Assumed();
    return assumed ? *assumed : found;
}

TAssumedSystem::TAssumedSystem(const TSystem& assumed) : FBefore(Assumed()) { Assumed() = assumed; }

TAssumedSystem::~TAssumedSystem() { Assumed() = FBefore; }

} // namespace kx
