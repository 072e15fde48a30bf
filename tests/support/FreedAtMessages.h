// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "tests/support/Grow.h"
#include "tests/support/TestDriver.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

/// Tells of each message that the control, a T, gets: before the control handles it, or behind.
template <class T> class TTelling : public T {
public:
    explicit TTelling(bool behind, TComponent* owner = nullptr) : T(owner), FBehind(behind) {}

    std::function<void(const TMessage& message)> OnMessage;

protected:
    void WndProc(TMessage& message) override {
        const auto tell = OnMessage; // it may be taken away meanwhile
        if (tell && !FBehind) {
            tell(message);
        }
        T::WndProc(message);
        if (tell && FBehind) {
            tell(message);
        }
    }

private:
    bool FBehind;
};

/// Frees a dialog at each message of a course of events: the first time at the first message, the next time, with a
/// new dialog, at the second one, and so on until the course is over. Each time takes a dialog of its own.
template <class T> class TFreedAtMessages {
public:
    using TCount = std::function<void(const TMessage& message)>;

    /// `make` gives a new dialog each time.
    explicit TFreedAtMessages(std::function<T*()> make) : FMake(std::move(make)) {}

    /// Whose messages: those of the dialog window before the system gets them, or behind (`OnEventHooking`,
    /// `OnEventHook`). `listen` has others told to its second argument.
    TFreedAtMessages& Behind(bool behind) {
        return Listen([behind](T& dialog, const TCount& count) {
            if (behind) {
                dialog.SetOnEventHook([count](TMessage& m) { count(m); });
            } else {
                dialog.SetOnEventHooking([count](TObject*, TMessage& m, bool&) { count(m); });
            }
        });
    }
    TFreedAtMessages& Listen(std::function<void(T& dialog, const TCount& count)> listen) {
        FListen = std::move(listen);
        return *this;
    }
    /// The course: what this does in the shown dialog and what comes of it, until the dialog is idle again or has
    /// closed. Without it: the opening.
    TFreedAtMessages& During(std::function<void(T& dialog)> act) {
        FAct = std::move(act);
        return *this;
    }
    /// Of each kind of message, in turn, the first one or the last one instead of all: those between find the dialog
    /// and the system in the middle of the same things. Which kinds go at their first one differs from course to
    /// course.
    TFreedAtMessages& OfEachKind(bool value = true) {
        FOfEachKind = value;
        return *this;
    }
    /// Looks, each time, at what is left.
    TFreedAtMessages& Check(std::function<void()> check) {
        FCheck = std::move(check);
        return *this;
    }

    void Run() {
        if (FOfEachKind) {
            RunKinds();
            return;
        }
        for (int number = 0; !FOver; ++number) {
            int messages = 0;
            RunOnce([&](const TKind&, int) { return messages++ == number; });
            ASSERT_FALSE(testing::Test::HasFailure()) << "freed at message " << number;
        }
    }

private:
    using TKind = std::pair<UINT, UINT>; ///< The number of a message, and what else tells one from another.

    static constexpr UINT_PTR IdleTimer = 77; ///< It comes behind all painting.

    static TKind KindOf(const TMessage& m) {
        switch (m.Msg) {
        case WM_NOTIFY: return {m.Msg, m.LParamAs<NMHDR>().code};
        case WM_WINDOWPOSCHANGING:
        case WM_WINDOWPOSCHANGED: return {m.Msg, m.LParamAs<WINDOWPOS>().flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)};
        case WM_COMMAND:
        case WM_TIMER:
        case WM_SHOWWINDOW:
        case WM_ACTIVATE: return {m.Msg, static_cast<UINT>(m.WParam)};
        default: return {m.Msg, 0};
        }
    }

    void RunKinds() {
        std::map<TKind, int> counts;
        RunOnce([&](const TKind& kind, int) {
            ++counts[kind];
            return false;
        });
        bool first = counts.size() % 2 != 0;
        for (const auto& [kind, count] : counts) {
            const int number = first ? 0 : count - 1;
            RunOnce([&, due = kind](const TKind& k, int n) { return k == due && n == number; });
            ASSERT_FALSE(testing::Test::HasFailure())
                << "freed at number " << number << " of message " << kind.first << ", " << kind.second;
            first = !first;
        }
    }

    /// `isDue` is asked at each message, the number of those of its kind before given too, whether to free the dialog.
    void RunOnce(const std::function<bool(const TKind& kind, int number)>& isDue) {
        FDialog = FMake();
        T* const running = FDialog;
        FCounting = !FAct;
        FOver = false;
        std::map<TKind, int> seen;
        FListen(*running, [&](const TMessage& m) {
            if (!FDialog || !FCounting) {
                return;
            }
            FOver = FOver || (m.Msg == WM_TIMER && m.WParam == IdleTimer);
            const TKind kind = KindOf(m);
            if (FOver || isDue(kind, seen[kind]++)) {
                FreeIt();
            }
        });
        std::vector<TStep> steps;
        if (!FAct) {
            running->SetOnShow([=](TObject*) { SetTimer(running->DialogWindow(), IdleTimer, 1, nullptr); });
        } else {
            steps.push_back({"the dialog is shown", Shown(*running), [this, running] {
                                 HWND window = running->DialogWindow();
                                 FCounting = true;
                                 FAct(*running);
                                 if (FDialog && running->DialogWindow() == window) {
                                     SetTimer(window, IdleTimer, 1, nullptr);
                                 }
                             }});
        }
        const bool confirmed = RunDialog([&] { return running->Execute(); }, std::move(steps));
        EXPECT_FALSE(confirmed && !FDialog) << "a freed dialog is cancelled";
        EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
        if (FDialog) { // the course has closed it
            EXPECT_TRUE(FAct) << "it ended in another way";
            FOver = true;
            FreeIt();
        }
        if (FCheck) {
            FCheck();
        }
    }
    void FreeIt() { std::exchange(FDialog, nullptr)->Free(); }

    std::function<T*()> FMake;
    std::function<void(T&, const TCount&)> FListen;
    std::function<void(T&)> FAct;
    std::function<void()> FCheck;
    T* FDialog = nullptr;   ///< Null once it is freed.
    bool FCounting = false; ///< The course has begun.
    bool FOver = false;     ///< It has come to its end.
    bool FOfEachKind = false;
};

/// What a user, or the application, does in a shown dialog, by name.
struct TCourse {
    const char* Name;
    bool Behind; ///< The dialog is freed when the system has answered a message, else before.

    friend void PrintTo(const TCourse& c, std::ostream* out) { *out << c.Name; }
};

/// Does what can be done in each dialog: "Cancel", "Ok", "Close" and "Grow". False: the course is another one.
template <class T> bool DoInAnyDialog(const std::string& course, T& dialog, HWND window) {
    if (course == "Cancel") {
        dialog.CloseDialog(mrCancel);
    } else if (course == "Ok") {
        dialog.CloseDialog(mrOk);
    } else if (course == "Close") {
        SendMessageA(window, WM_CLOSE, 0, 0);
    } else if (course == "Grow") {
        Grow(window);
    } else {
        return false;
    }
    return true;
}

inline std::string CourseName(const testing::TestParamInfo<TCourse>& course) { return course.param.Name; }

/// Has the tests of the suite done with the course, the dialogs freed before the system gets their messages.
#define KX_COURSE_BEFORE(suite, course)                                                                                \
    INSTANTIATE_TEST_SUITE_P(course##Before, suite, testing::Values(TCourse{#course, false}), CourseName)
/// Before and behind: suites of their own, since each takes its time.
#define KX_COURSE(suite, course)                                                                                       \
    KX_COURSE_BEFORE(suite, course);                                                                                   \
    INSTANTIATE_TEST_SUITE_P(course##Behind, suite, testing::Values(TCourse{#course, true}), CourseName)

/// Frees a dialog of the library at each of the messages that come until it is shown and idle. `behind`: when the
/// system has answered the message, else before. `check` looks at what is left each time.
template <class T>
void FreeAtEachMessage(bool behind, const std::function<T*()>& make, const std::function<void()>& check = {}) {
    TFreedAtMessages<T>(make).Behind(behind).Check(check).Run();
}

} // namespace kx::test
