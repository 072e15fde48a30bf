// SPDX-License-Identifier: MIT
// What paths name, asked without waiting long.

#include "kx/win/PathKind.h"

#include "kx/core/Lasting.h"
#include "kx/win/ExclusiveLock.h"
#include "kx/win/Handles.h"
#include "kx/win/Module.h"
#include "kx/win/Windows.h"

#include <atomic>
#include <unordered_map>
#include <utility>

namespace kx {

namespace {

/// Errors that say nothing about the path, but that nobody could be asked.
bool IsNoAnswer(DWORD error) {
    switch (error) {
    case ERROR_NOT_READY:
    case ERROR_REM_NOT_LIST:
    case ERROR_BAD_NETPATH:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_UNEXP_NET_ERR:
    case ERROR_NETNAME_DELETED:
    case ERROR_BAD_NET_NAME:
    case ERROR_SEM_TIMEOUT:
    case ERROR_CONNECTION_UNAVAIL:
    case ERROR_NO_NET_OR_BAD_PATH:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_HOST_UNREACHABLE: return true;
    default: return false;
    }
}

TPathKind Look(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        return attributes & FILE_ATTRIBUTE_DIRECTORY ? pkFolder : pkFile;
    }
    return IsNoAnswer(GetLastError()) ? pkUnreachable : pkNothing;
}

bool IsDrive(std::string_view path) {
    return path.size() >= 3 && path[1] == ':' && (path[2] == '\\' || path[2] == '/');
}

bool IsShare(std::string_view path) { return path.starts_with("\\\\") || path.starts_with("//"); }

} // namespace

struct TPathQuestion::TState {
    explicit TState(std::wstring path) : Path(std::move(path)) {}

    const std::wstring Path;
    const ULONGLONG Asked = GetTickCount64();
    std::atomic<TPathKind> Kind{pkUnreachable};
    const unique_handle_object Answered{CreateEventW(nullptr, TRUE, FALSE, nullptr)};

    bool IsAnswered() const { return WaitForSingleObject(Answered.get(), 0) == WAIT_OBJECT_0; }
    void Answer() {
        Kind = Look(Path);
        SetEvent(Answered.get());
    }
};

/// The questions that wait for their answers, by their paths, and the threads that look.
class TPathQuestion::TWorkers {
public:
    static TWorkers& All() {
        static auto& all = Lasting<TWorkers>(); // threads may outlive static objects
        return all;
    }

    std::shared_ptr<TState> Ask(const std::wstring& path) {
        const TExclusiveLock lock(FLock);
        std::shared_ptr<TState>& state = FOpen[path];
        if (state && !state->IsAnswered()) {
            return state;
        }
        state = std::make_shared<TState>(path);
        auto work = std::make_unique<TWork>(TWork{state, nullptr});
        // The thread may be stuck for long: its code has to stay, whoever unloads the module.
        work->Module = HoldModule().release();
        const unique_handle_object thread(CreateThread(nullptr, 0, Run, work.get(), 0, nullptr));
        if (thread) {
            static_cast<void>(work.release());
            return state;
        }
        FreeLibrary(work->Module);
        SetEvent(state->Answered.get()); // nobody looks
        std::shared_ptr<TState> unanswered = state;
        FOpen.erase(path);
        return unanswered;
    }

private:
    struct TWork {
        std::shared_ptr<TState> State;
        HMODULE Module;
    };

    static DWORD KX_CALLBACK Run(void* parameter) {
        auto* const work = static_cast<TWork*>(parameter);
        const HMODULE module = work->Module;
        SetThreadErrorMode(SEM_FAILCRITICALERRORS, nullptr); // no box that asks for a disk
        work->State->Answer();
        All().Close(*work->State);
        delete work;
        FreeLibraryAndExitThread(module, 0);
    }

    void Close(const TState& state) {
        const TExclusiveLock lock(FLock);
        const auto found = FOpen.find(state.Path);
        if (found != FOpen.end() && found->second.get() == &state) { // else somebody has asked anew
            FOpen.erase(found);
        }
    }

    SRWLOCK FLock = SRWLOCK_INIT;
    std::unordered_map<std::wstring, std::shared_ptr<TState>> FOpen;
};

bool TPathQuestion::IsSlow(const std::string& path) {
    if (!IsDrive(path)) {
        return IsShare(path);
    }
    const UINT type = GetDriveTypeW((ToWide(std::string_view(path).substr(0, 2)) + L"\\").c_str());
    return type != DRIVE_FIXED && type != DRIVE_RAMDISK && type != DRIVE_NO_ROOT_DIR;
}

TPathQuestion::TPathQuestion(const std::string& path) {
    if (IsSlow(path)) {
        FState = TWorkers::All().Ask(ToWide(path));
    } else {
        FState = std::make_shared<TState>(ToWide(path));
        FState->Answer();
    }
}

bool TPathQuestion::IsAnswered() const { return FState->IsAnswered(); }

bool TPathQuestion::IsOverdue() const { return !IsAnswered() && GetTickCount64() - FState->Asked >= PathPatience; }

TPathKind TPathQuestion::Answer(unsigned patience) const {
    const ULONGLONG waited = GetTickCount64() - FState->Asked;
    const auto wait = static_cast<DWORD>(waited < patience ? patience - waited : 0);
    return WaitForSingleObject(FState->Answered.get(), wait) == WAIT_OBJECT_0 ? FState->Kind.load() : pkUnreachable;
}

TPathKind KindOfPath(const std::string& path) { return TPathQuestion(path).Answer(); }

} // namespace kx
