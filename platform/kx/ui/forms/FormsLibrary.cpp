// SPDX-License-Identifier: MIT
// The application of a library that programs load and unload.

#include "kx/ui/forms/Forms.h"

#include "kx/core/Lasting.h"
#include "kx/ui/controls/MessageFrames.h"
#include "kx/ui/controls/WindowClasses.h"
#include "kx/ui/forms/FormsThreads.h"
#include "kx/win/ExclusiveLock.h"
#include "kx/win/Module.h"
#include "kx/win/Oleacc.h"
#include "kx/win/ThreadWindow.h"
#include "kx/win/Thunk.h"

#include <atomic>
#include <utility>

namespace kx {

namespace {

/// It is no static object: at the end of the process, when those of a library go, other threads are gone already, and
/// the loader is locked. Nothing may be waited for then, and nothing has to be done.
constinit std::atomic<TApplication*> Existing{nullptr};
SRWLOCK Making = SRWLOCK_INIT;
HMODULE Held = nullptr; ///< Keeps the library from being unloaded.

/// Nobody can call the library's code any more, once its user does not.
bool IsUnused() {
    const bool windowless = TThreadWindow::ReleaseAll();
    detail::ReleaseWindowClasses();
    return windowless && TThunk::Used() == 0 && CountedObjects == 0 && !AreThreadsRunning();
}

} // namespace

TApplication& LibraryApplication() {
    if (TApplication* const application = Existing) {
        return *application;
    }
    const TExclusiveLock lock(Making);
    if (!Existing) {
        Held = Held ? Held : HoldModule().release();
        Existing = new TApplication;
    }
    return *Existing;
}

void EndApplication() {
    if (!Held) {
        return; // it is a program, or has not been used
    }
    if (TApplication* const application = Existing) {
        if (!application->InOwnThread()) {
            throw EInvalidOperation("Only its own thread can end the application");
        }
        if (application->ModalLevel() > 0 || detail::TMessageFrame::Depth() > 0) {
            throw EInvalidOperation("The application cannot end while it shows a dialog or handles a message");
        }
        delete application; // what its components do meanwhile still finds it
        Existing = nullptr;
    }
    if (!IsUnused()) {
        throw EInvalidOperation("Forms, controls or threads of the library are still there");
    }
    SetLastingEnds(true);
    const unique_hmodule module(std::exchange(Held, nullptr));
}

} // namespace kx
