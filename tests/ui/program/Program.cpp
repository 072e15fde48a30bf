// SPDX-License-Identifier: MIT
// A program whose end is tested.

#include "kx/ui/controls/Menus.h"
#include "kx/ui/controls/MenusCommands.h"
#include "kx/ui/forms/Forms.h"
#include "kx/ui/forms/Threads.h"
#include "kx/win/Timers.h"
#include "kx/win/Windows.h"

#include <cstdlib>
#include <memory>
#include <string_view>

// A program whose end is looked at. Its argument names what it does; its exit code is 7 when all went well.

namespace kx {

namespace {

constexpr int AllWell = 7;
constexpr int WrongItem = 3;
constexpr int NoTimer = 4;
constexpr int FreedTooEarly = 5;
constexpr int NotAsked = 6;

template <class F> bool PumpFor(ULONGLONG milliseconds, F over) {
    for (const ULONGLONG since = GetTickCount64(); !over() && GetTickCount64() - since < milliseconds;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageA(&message);
        }
    }
    return over();
}

// --- "statics": a static object uses menus and timers at the end of the program

struct TStatic {
    ~TStatic() {
        if (detail::FindCommand(Item->Command()) != Item.get()) {
            std::_Exit(WrongItem);
        }
        Timer->SetInterval(10);
        if (!PumpFor(10'000, [this] { return Fired; })) {
            std::_Exit(NoTimer);
        }
        Item.reset();
        Timer.reset();
        std::_Exit(AllWell);
    }

    std::unique_ptr<TMenuItem> Item;
    std::unique_ptr<TTimer> Timer;
    bool Fired = false;
};

int EndWithStatics() {
    static TStatic object; // goes after whatever menus and timers keep, which comes later
    object.Item = std::make_unique<TMenuItem>(nullptr);
    object.Timer = std::make_unique<TTimer>();
    object.Timer->SetOnTimer([](TObject*) { object.Fired = true; });
    return NotAsked;
}

// --- "threads": what threads do when they are asked to end

/// A thread that ends when it is asked to.
class TWaiting : public TThread {
public:
    explicit TWaiting(std::function<void(TWaiting& self)> asked) : TThread(true), FAsked(std::move(asked)) {}
    ~TWaiting() override {
        EndAndWait();
        if (FIsAsked) {
            std::_Exit(FreedTooEarly);
        }
    }
    void Wake() { SetEvent(FWake.get()); }

    static inline int Count = 0; ///< Of threads that were asked.

protected:
    void Execute() override { WaitForSingleObject(FWake.get(), INFINITE); }
    void DoTerminate() override {}
    void TerminatedSet() override {
        if (!std::exchange(FWasAsked, true)) {
            ++Count;
            FIsAsked = true;
            FAsked(*this);
            FIsAsked = false;
        }
        Wake();
    }

private:
    std::function<void(TWaiting& self)> FAsked;
    unique_handle_object FWake{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    bool FWasAsked = false;
    std::atomic<bool> FIsAsked = false;
};

int EndWithThreads() {
    // Makes a thread and frees another one.
    auto* other = NewThread<TWaiting>([](TWaiting&) {});
    other->Start();
    auto* const maker = NewThread<TWaiting>([&](TWaiting&) {
        NewThread<TWaiting>([](TWaiting&) {})->Free();
        std::exchange(other, nullptr)->Free();
    });
    maker->Start();
    // Ends, and would free itself, while it is still being asked.
    auto* const free = NewThread<TWaiting>([](TWaiting& self) {
        self.Wake();
        PumpFor(500, [] { return false; });
    });
    free->SetFreeOnTerminate(true);
    free->Start();

    Application().Terminate();
    Application().Run();
    maker->Free();
    return TWaiting::Count == 4 ? AllWell : NotAsked;
}

} // namespace

} // namespace kx

int main(int argc, char** argv) {
    const std::string_view what = argc > 1 ? argv[1] : "";
    return what == "statics" ? kx::EndWithStatics() : what == "threads" ? kx::EndWithThreads() : 1;
}
