#pragma once

#include "support/DialogDriver.h"
#include "ui/Forms.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

/// Tells of each message that the form gets: before the form handles it, or behind.
class TTellingForm : public TForm {
public:
    explicit TTellingForm(bool behind) : TForm(nullptr), FBehind(behind) {}

    std::function<void(const TMessage& message)> OnMessage;

protected:
    void WndProc(TMessage& message) override {
        const auto tell = OnMessage; // it may be taken away meanwhile
        if (tell && !FBehind) {
            tell(message);
        }
        TForm::WndProc(message);
        if (tell && FBehind) {
            tell(message);
        }
    }

private:
    bool FBehind;
};

/// Frees a dialog at each message of a course of events: the first time at the first message, the next time, with a
/// new dialog, at the second one, and so on until the course is over.
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
    /// Looks, each time, at what is left.
    TFreedAtMessages& Check(std::function<void()> check) {
        FCheck = std::move(check);
        return *this;
    }

    void Run() {
        for (int number = 0; !FOver; ++number) {
            RunOnce(number);
            ASSERT_FALSE(testing::Test::HasFailure()) << "freed at message " << number;
        }
    }

private:
    static constexpr UINT_PTR IdleTimer = 77; ///< It comes behind all painting.

    void RunOnce(int number) {
        FDialog = FMake();
        T* const running = FDialog;
        FCounting = !FAct;
        FMessages = 0;
        FListen(*running, [this, number](const TMessage& m) {
            const bool idle = m.Msg == WM_TIMER && m.WParam == IdleTimer;
            FOver = FOver || (FCounting && idle);
            if (FDialog && FCounting && (FOver || FMessages++ == number)) {
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
    int FMessages = 0;      ///< So many of them have come.
    bool FOver = false;
};

/// What a user, or the application, does in a shown dialog, by name.
struct TCourse {
    const char* Name;
    bool Behind; ///< The dialog is freed when the system has answered a message, else before.

    friend void PrintTo(const TCourse& c, std::ostream* out) { *out << c.Name; }
};

inline std::string CourseName(const testing::TestParamInfo<TCourse>& course) { return course.param.Name; }

/// Has the tests of the suite done with the course, before and behind: suites of their own, since each takes its time.
#define KX_COURSE(suite, course)                                                                                       \
    INSTANTIATE_TEST_SUITE_P(course##Before, suite, testing::Values(TCourse{#course, false}), CourseName);             \
    INSTANTIATE_TEST_SUITE_P(course##Behind, suite, testing::Values(TCourse{#course, true}), CourseName)

/// Frees a dialog of the library at each of the messages that come until it is shown and idle. `behind`: when the
/// system has answered the message, else before. `check` looks at what is left each time.
template <class T>
void FreeAtEachMessage(bool behind, const std::function<T*()>& make, const std::function<void()>& check = {}) {
    TFreedAtMessages<T>(make).Behind(behind).Check(check).Run();
}

} // namespace kx::test
