#include "ui/Thunk.h"

#include <cstring>
#include <deque>

namespace kx {

/// What the code of a thunk works with.
struct TThunk::TSlot {
    void* Object;
    TTarget Target;
    uint8_t* Code;
};

/// All thunks of the process. Slots that are free wait in a queue, so that an address is used again as late as
/// possible.
class TThunkPool {
public:
    static TThunkPool& Instance() {
        static auto* const pool = new TThunkPool; // never freed: windows may outlive static objects
        return *pool;
    }

    TThunk::TSlot* Take(TThunk::TTarget target, void* object) {
        AcquireSRWLockExclusive(&FLock);
        if (FFree.empty()) {
            AddPage();
        }
        TThunk::TSlot* slot = nullptr;
        if (!FFree.empty()) {
            slot = FFree.front();
            FFree.pop_front();
            slot->Object = object;
            slot->Target = target;
        }
        ReleaseSRWLockExclusive(&FLock);
        return slot;
    }

    void Give(TThunk::TSlot* slot) {
        AcquireSRWLockExclusive(&FLock);
        slot->Target = Dead;
        slot->Object = nullptr;
        FFree.push_back(slot);
        ReleaseSRWLockExclusive(&FLock);
    }

private:
    static constexpr size_t PageSize = 4096;
    static constexpr size_t CodeSize = 16; ///< Of one thunk.
    static constexpr size_t Count = PageSize / CodeSize;

    static LRESULT CALLBACK Dead(void*, UINT, WPARAM, LPARAM) { return 0; }

    void AddPage() {
        auto* const code = static_cast<uint8_t*>(
            VirtualAlloc(nullptr, PageSize + Count * sizeof(TThunk::TSlot), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        if (!code) {
            return;
        }
        auto* const slots = reinterpret_cast<TThunk::TSlot*>(code + PageSize);
        for (size_t i = 0; i < Count; ++i) {
            slots[i] = {nullptr, Dead, code + i * CodeSize};
            Write(slots[i].Code, slots[i]);
        }
        DWORD old;
        if (!VirtualProtect(code, PageSize, PAGE_EXECUTE_READ, &old)) {
            VirtualFree(code, 0, MEM_RELEASE);
            return;
        }
        FlushInstructionCache(GetCurrentProcess(), code, PageSize);
        for (size_t i = 0; i < Count; ++i) {
            FFree.push_back(&slots[i]);
        }
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
    std::deque<TThunk::TSlot*> FFree;
};

TThunk::TThunk(TTarget target, void* object) : FSlot(TThunkPool::Instance().Take(target, object)) {
    if (!FSlot) {
        RaiseLastOSError();
    }
}

TThunk::~TThunk() { TThunkPool::Instance().Give(FSlot); }

WNDPROC TThunk::Procedure() const { return reinterpret_cast<WNDPROC>(FSlot->Code); }

} // namespace kx
