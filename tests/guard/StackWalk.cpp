// SPDX-License-Identifier: MIT
// Walks stacks and names their frames.

#include "tests/guard/StackWalk.h"

#include <algorithm>

extern "C" const char __ImageBase[]; // NOLINT(bugprone-reserved-identifier): the linker's name

namespace kx::guard {

namespace {

const IMAGE_OPTIONAL_HEADER& OurHeader() {
    const LONG offset = reinterpret_cast<const IMAGE_DOS_HEADER*>(OurFile())->e_lfanew;
    return reinterpret_cast<const IMAGE_NT_HEADERS*>(OurFile() + offset)->OptionalHeader;
}

#ifdef _WIN64

/// What the unwind table says of the code at `pc`. The program's own table is searched here: the system's search takes
/// longer than all the rest.
RUNTIME_FUNCTION* FunctionAt(DWORD64 pc, DWORD64& base) {
    if (!IsOurCode(reinterpret_cast<const void*>(pc))) { // NOLINT(performance-no-int-to-ptr)
        return RtlLookupFunctionEntry(pc, &base, nullptr);
    }
    base = reinterpret_cast<DWORD64>(OurFile());
    const IMAGE_DATA_DIRECTORY& table = OurHeader().DataDirectory[IMAGE_DIRECTORY_ENTRY_EXCEPTION];
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    auto* first = reinterpret_cast<RUNTIME_FUNCTION*>(base + table.VirtualAddress);
    auto* last = first + table.Size / sizeof(RUNTIME_FUNCTION);
    const DWORD offset = static_cast<DWORD>(pc - base);
    auto* next = std::upper_bound(
        first, last, offset, [](DWORD at, const RUNTIME_FUNCTION& function) { return at < function.BeginAddress; });
    return next != first && offset < (next - 1)->EndAddress ? next - 1 : nullptr;
}

/// The register, if any, from which the function's frame is found. Its value has to lie on the stack.
const DWORD64* FrameRegister(const CONTEXT& context, DWORD64 base, const RUNTIME_FUNCTION& function) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const BYTE* info = reinterpret_cast<const BYTE*>(base + function.UnwindData);
    const int number = info[3] & 15;
    return number == 0 ? nullptr : &context.Rax + number;
}

#endif

} // namespace

const char* OurFile() { return __ImageBase; }

bool IsOurCode(const void* address) {
    const auto offset = reinterpret_cast<uintptr_t>(address) - reinterpret_cast<uintptr_t>(OurFile());
    return offset < OurHeader().SizeOfImage;
}

const char* ModuleOf(const void* address) {
    MEMORY_BASIC_INFORMATION memory;
    if (VirtualQuery(address, &memory, sizeof(memory)) == 0 || memory.Type != MEM_IMAGE) {
        return nullptr;
    }
    return static_cast<const char*>(memory.AllocationBase);
}

// The system keeps them in the thread's block: NT_TIB::StackBase and StackLimit.
void TStackWalk::ReadLimits() {
#ifdef _WIN64
    asm volatile("movq %%gs:8, %0\n\tmovq %%gs:16, %1" : "=&r"(FBase), "=r"(FLimit));
#else
    asm volatile("movl %%fs:4, %0\n\tmovl %%fs:8, %1" : "=&r"(FBase), "=r"(FLimit));
#endif
}

#ifdef _WIN64

TStackWalk::TStackWalk() {
    ReadLimits();
    RtlCaptureContext(&FContext);
    FAddress = reinterpret_cast<void*>(FContext.Rip); // NOLINT(performance-no-int-to-ptr)
    Next();
}

TStackWalk::TStackWalk(const CONTEXT& context)
    : FContext(context), FAddress(reinterpret_cast<void*>(context.Rip)) { // NOLINT(performance-no-int-to-ptr)
    ReadLimits();
}

uintptr_t TStackWalk::StackPointer() const { return FContext.Rsp; }

bool TStackWalk::Next() {
    const DWORD64 before = FContext.Rsp;
    if (!OnStack(before)) {
        return false;
    }
    DWORD64 base = 0;
    RUNTIME_FUNCTION* function = FunctionAt(FContext.Rip, base);
    if (!function) {                                              // a function without a frame
        FContext.Rip = *reinterpret_cast<const DWORD64*>(before); // NOLINT(performance-no-int-to-ptr)
        FContext.Rsp += sizeof(DWORD64);
    } else {
        const DWORD64* frame = FrameRegister(FContext, base, *function);
        if (frame && !OnStack(*frame)) {
            return false;
        }
        void* data = nullptr;
        DWORD64 establisher = 0;
        RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, FContext.Rip, function, &FContext, &data, &establisher, nullptr);
    }
    FAddress = reinterpret_cast<void*>(FContext.Rip - 1); // NOLINT(performance-no-int-to-ptr)
    return FContext.Rip != 0 && FContext.Rsp > before && FContext.Rsp < FBase;
}

#else

// NOLINTBEGIN(performance-no-int-to-ptr)
TStackWalk::TStackWalk() {
    ReadLimits();
    FContext.Ebp = reinterpret_cast<DWORD>(__builtin_frame_address(0));
    FAddress = nullptr;
    Next();
}

TStackWalk::TStackWalk(const CONTEXT& context) : FContext(context), FAddress(reinterpret_cast<void*>(context.Eip)) {
    ReadLimits();
}

uintptr_t TStackWalk::StackPointer() const { return FContext.Ebp; }

bool TStackWalk::Next() {
    const DWORD frame = FContext.Ebp;
    if (frame % sizeof(DWORD) != 0 || !OnStack(frame) || !OnStack(frame + sizeof(DWORD))) {
        return false;
    }
    const auto* words = reinterpret_cast<const DWORD*>(frame);
    FContext.Ebp = words[0];
    FAddress = reinterpret_cast<void*>(words[1] - 1);
    return words[1] != 0 && FContext.Ebp > frame;
}
// NOLINTEND(performance-no-int-to-ptr)

#endif

[[gnu::noinline]] void TTrace::Capture(size_t skipped) {
    TStackWalk walk;
    Collect(walk, skipped + 1); // this function
}

void TTrace::Capture(const CONTEXT& context) {
    TStackWalk walk(context);
    Collect(walk, 0);
}

void TTrace::Collect(TStackWalk& walk, size_t skipped) {
    Count = 0;
    do {
        if (skipped > 0) {
            --skipped;
        } else {
            Frames[Count++] = walk.Address();
        }
    } while (Count < Depth && walk.Next());
}

} // namespace kx::guard
