// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/ImportPatch.h"

#include "kx/win/ExclusiveLock.h"
#include "kx/win/Windows.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace kx::test {

/// While it lives, the attributes of a path of a share are asked for in vain until the test says what they are, as
/// those of a computer that is off. Paths of drives are looked at as ever, unless the test answers for them. Whoever
/// still waits at its end is told that nobody is there.
class TSlowDisk {
public:
    TSlowDisk() { The = this; }
    TSlowDisk(const TSlowDisk&) = delete;
    TSlowDisk& operator=(const TSlowDisk&) = delete;
    ~TSlowDisk() {
        const TExclusiveLock lock(Lock);
        FEnds = true;
        while (FWaiting > 0) {
            WakeAllConditionVariable(&FChanged);
            SleepConditionVariableSRW(&FChanged, &Lock, INFINITE, 0);
        }
        The = nullptr;
    }

    void Answer(const std::string& path, DWORD attributes) { Set(path, {attributes, 0}); }
    void Fail(const std::string& path, DWORD error) { Set(path, {INVALID_FILE_ATTRIBUTES, error}); }
    void Forget(const std::string& path) { ///< From now on one waits for this answer, too.
        const TExclusiveLock lock(Lock);
        FAnswers.erase(ToWide(path));
    }
    int Asked(const std::string& path) { ///< How often somebody has looked at the path.
        const TExclusiveLock lock(Lock);
        return FAsked[ToWide(path)];
    }

private:
    struct TFacts {
        DWORD Attributes;
        DWORD Error;
    };

    void Set(const std::string& path, TFacts facts) {
        const TExclusiveLock lock(Lock);
        FAnswers[ToWide(path)] = facts;
        WakeAllConditionVariable(&FChanged);
    }

    static DWORD WINAPI Ask(const wchar_t* path) {
        std::optional<TFacts> facts;
        {
            const TExclusiveLock lock(Lock);
            facts = The ? The->Wait(path) : TFacts{INVALID_FILE_ATTRIBUTES, ERROR_BAD_NETPATH};
        }
        if (!facts) {
            // By another name than the one that is patched.
            WIN32_FILE_ATTRIBUTE_DATA data{};
            return GetFileAttributesExW(path, GetFileExInfoStandard, &data) ? data.dwFileAttributes
                                                                            : INVALID_FILE_ATTRIBUTES;
        }
        SetLastError(facts->Error);
        return facts->Attributes;
    }

    /// Nothing: the disk is to be asked.
    std::optional<TFacts> Wait(const std::wstring& path) {
        ++FAsked[path];
        if (!path.starts_with(L"\\\\") && !FAnswers.contains(path)) {
            return std::nullopt;
        }
        ++FWaiting;
        while (!FEnds && !FAnswers.contains(path)) {
            SleepConditionVariableSRW(&FChanged, &Lock, INFINITE, 0);
        }
        --FWaiting;
        WakeAllConditionVariable(&FChanged);
        const auto found = FAnswers.find(path);
        return found == FAnswers.end() ? TFacts{INVALID_FILE_ATTRIBUTES, ERROR_BAD_NETPATH} : found->second;
    }

    static inline SRWLOCK Lock = SRWLOCK_INIT;
    static inline TSlowDisk* The = nullptr;
    CONDITION_VARIABLE FChanged = CONDITION_VARIABLE_INIT;
    std::unordered_map<std::wstring, TFacts> FAnswers;
    std::unordered_map<std::wstring, int> FAsked;
    int FWaiting = 0;
    bool FEnds = false;
    TImportPatch FPatch{"GetFileAttributesW", reinterpret_cast<void*>(&Ask)}; // behind what it uses
};

} // namespace kx::test
