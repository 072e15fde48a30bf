// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Windows.h"

namespace kx::guard {

/// From now on malloc, new and their kinds work on the page heap.
void GuardHeap();

/// From now on hard faults (access violations, illegal instructions, divisions by zero, ...) are reported when they
/// touch the heap's blocks, or have code of this program on their stack, even when somebody handles them: inside window
/// procedures the system does so without a word. A call of std::terminate is reported too.
void GuardFaults();

/// From now on calls by the program that hand a dead window, menu, drawing context or drawing object to the system are
/// reported. Null is no dead handle. Functions that are the way to ask whether a handle lives are not watched.
void GuardHandles();

/// From now on a C++ exception that leaves a callback (a window procedure, a hook, an enumeration, a timer) is
/// reported: one that is thrown in the program's code, called by the system, and not caught on this side of the
/// system's frames.
///
/// Seen is, in 64-bit programs, an exception that the program catches beyond the system's frames, and one that the
/// system swallows; the latter when its thread throws again, or, on the main thread, when the test ends. In 32-bit
/// programs such an exception cannot pass: it ends the program, which FaultGuard reports. Not seen is an exception that
/// the system swallows as the last one of a thread other than the main one.
void GuardThrows();

/// To be told of each exception of the thread.
void NoteThrow(const EXCEPTION_POINTERS& exception);

/// Reports an exception of the calling thread that was thrown and never caught by the program.
void CheckSwallowedThrow();

} // namespace kx::guard
