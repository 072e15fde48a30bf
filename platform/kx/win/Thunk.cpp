// SPDX-License-Identifier: MIT
// A procedure of its own for each object.

#include "kx/win/Thunk.h"

#include "kx/core/Lasting.h"
#include "kx/win/ExclusiveLock.h"
#include "kx/win/Handles.h"
#include "kx/win/System.h"
#include "kx/win/Windows.h"

#include <cstring>
#include <deque>
#include <utility>
#include <vector>

#if !(defined(__i386__) || defined(_M_IX86) || defined(__x86_64__) || (defined(_M_X64) && !defined(_M_ARM64EC)))
#error "Thunks are written for the processors x86 and x64"
#endif

namespace kx {

/// What the code of a thunk works with.
struct TThunk::TSlot {
    void* Object;
    TTarget Target;
    WNDPROC Procedure;
    bool IsMade; ///< Its code was made at run time; else it is one of the program's own procedures.
};

/// All thunks of the process. Slots that are free wait in a queue, so that an address is used again as late as
/// possible.
///
/// A process may be forbidden to make code. Then there are as many thunks as the program holds procedures for them.
class TThunkPool {
public:
    TThunkPool() { AddBuiltIn(std::make_index_sequence<BuiltInCount>()); }
    TThunkPool(const TThunkPool&) = delete;
    TThunkPool& operator=(const TThunkPool&) = delete;
    ~TThunkPool() {
        for (void* const page : FPages) {
            VirtualFree(page, 0, MEM_RELEASE);
        }
    }

    static TThunkPool& Instance() {
        static auto& pool = Lasting<TThunkPool>(); // windows may outlive static objects
        return pool;
    }

    /// Null, with the system's error code set, when there is none left.
    TThunk::TSlot* Take(TThunk::TTarget target, void* object) {
        const TExclusiveLock lock(FLock);
        std::deque<TThunk::TSlot*>* free = &FMade;
        if (!System().DynamicCode) {
            free = &FBuiltIn;
        } else if (FMade.empty() && !AddPage()) {
            if (GetLastError() != ErrorDynamicCodeBlocked) {
                return nullptr;
            }
            free = &FBuiltIn;
        }
        if (free->empty()) {
            SetLastError(ErrorDynamicCodeBlocked);
            return nullptr;
        }
        TThunk::TSlot* const slot = free->front();
        free->pop_front();
        slot->Object = object;
        slot->Target = target;
        ++FUsed;
        return slot;
    }

    void Give(TThunk::TSlot* slot) {
        const TExclusiveLock lock(FLock);
        slot->Target = Dead;
        slot->Object = nullptr;
        --FUsed;
        (slot->IsMade ? FMade : FBuiltIn).push_back(slot);
    }

    size_t Used() {
        const TExclusiveLock lock(FLock);
        return FUsed;
    }

private:
    static constexpr DWORD ErrorDynamicCodeBlocked = 1655; // not in the headers of every compiler
    static constexpr size_t PageSize = 4096;
    static constexpr size_t CodeSize = 16; ///< Of one thunk.
    static constexpr size_t Count = PageSize / CodeSize;
    static constexpr size_t BuiltInCount = TThunk::MaxBuiltIn;

    static LRESULT CALLBACK Dead(void*, UINT, WPARAM, LPARAM) { return 0; }

    /// Does what the code that is made at run time does.
    template <size_t Index> static LRESULT CALLBACK BuiltIn(HWND, UINT message, WPARAM wParam, LPARAM lParam) {
        return BuiltInSlots[Index].Target(BuiltInSlots[Index].Object, message, wParam, lParam);
    }
    static TThunk::TSlot BuiltInSlots[BuiltInCount];

    template <size_t... Index> void AddBuiltIn(std::index_sequence<Index...>) {
        static constexpr WNDPROC procedures[] = {BuiltIn<Index>...};
        for (size_t i = 0; i < BuiltInCount; ++i) {
            BuiltInSlots[i] = {nullptr, Dead, procedures[i], false};
            FBuiltIn.push_back(&BuiltInSlots[i]);
        }
    }

    /// False, with the system's error code set, when that is not possible.
    bool AddPage() {
        auto* const code = static_cast<uint8_t*>(
            VirtualAlloc(nullptr, PageSize + Count * sizeof(TThunk::TSlot), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        if (!code) {
            return false;
        }
        auto* const slots = reinterpret_cast<TThunk::TSlot*>(code + PageSize);
        for (size_t i = 0; i < Count; ++i) {
            uint8_t* const at = code + i * CodeSize;
            slots[i] = {nullptr, Dead, reinterpret_cast<WNDPROC>(at), true};
            Write(at, slots[i]);
        }
        DWORD old;
        if (!VirtualProtect(code, PageSize, PAGE_EXECUTE_READ, &old)) {
            const DWORD error = GetLastError();
            VirtualFree(code, 0, MEM_RELEASE);
            SetLastError(error);
            return false;
        }
        FlushInstructionCache(GetCurrentProcess(), code, PageSize);
        FPages.push_back(code);
        for (size_t i = 0; i < Count; ++i) {
            FMade.push_back(&slots[i]);
        }
        return true;
    }

    /// Where an instruction finds a field: its address, or on 64 bits its distance from the instruction's end.
    static void WriteOperand(uint8_t*& at, const void* field) {
        const auto target = reinterpret_cast<uintptr_t>(field);
        const auto operand =
            static_cast<uint32_t>(sizeof(void*) == 4 ? target : target - reinterpret_cast<uintptr_t>(at + 4));
        std::memcpy(at, &operand, sizeof operand);
        at += sizeof operand;
    }

    static void Write(uint8_t* at, const TThunk::TSlot& slot) {
        const auto bytes = [&at](std::initializer_list<uint8_t> list) {
            for (const uint8_t byte : list) {
                *at++ = byte;
            }
        };
        if constexpr (sizeof(void*) == 4) {
            bytes({0xA1}); // mov eax, [Object]
            WriteOperand(at, &slot.Object);
            bytes({0x89, 0x44, 0x24, 0x04}); // mov [esp+4], eax
        } else {
            bytes({0x48, 0x8B, 0x0D}); // mov rcx, [Object]
            WriteOperand(at, &slot.Object);
        }
        bytes({0xFF, 0x25}); // jmp [Target]
        WriteOperand(at, &slot.Target);
    }

    SRWLOCK FLock = SRWLOCK_INIT;
    std::deque<TThunk::TSlot*> FMade;
    std::deque<TThunk::TSlot*> FBuiltIn;
    std::vector<void*> FPages;
    size_t FUsed = 0;
};

TThunk::TSlot TThunkPool::BuiltInSlots[BuiltInCount];

TThunk::TThunk(TTarget target, void* object) : FSlot(TThunkPool::Instance().Take(target, object)) {
    if (!FSlot) {
        RaiseLastOSError();
    }
}

TThunk::~TThunk() { TThunkPool::Instance().Give(FSlot); }

size_t TThunk::Used() { return TThunkPool::Instance().Used(); }

WNDPROC TThunk::Procedure() const { return FSlot->Procedure; }

} // namespace kx
