// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "tests/support/BusyForm.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/Grow.h"
#include "tests/support/TestDriver.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

/// Something that a handler of a docked form does to others or to itself.
enum class TDeed { FreeForm, ReleaseForm, FreeOtherForm, FreeDialog };

/// An event of a docked form, or of a control in it, and a deed in it.
struct TDeedIn {
    const char* Event;
    TDeed Deed;

    friend void PrintTo(const TDeedIn& d, std::ostream* out) { *out << d.Name(); }
    std::string Name() const {
        static constexpr const char* deeds[] = {"FreesItself", "ReleasesItself", "FreesAnotherForm", "FreesTheDialog"};
        return std::string(Event) + deeds[static_cast<int>(Deed)];
    }
};

/// Each deed in each of the events.
inline std::vector<TDeedIn> AllDeeds(std::initializer_list<const char*> events = {"OnShow", "OnHide", "OnResize",
                                                                                  "OnEnter", "OnExit", "OnClick"}) {
    std::vector<TDeedIn> all;
    for (const char* event : events) {
        for (const TDeed deed : {TDeed::FreeForm, TDeed::ReleaseForm, TDeed::FreeOtherForm, TDeed::FreeDialog}) {
            all.push_back({event, deed});
        }
    }
    return all;
}

/// Docks two forms into a dialog of class T and has one of them do its deed in its event, when the user shows the
/// dialog, makes it larger, goes into the form and out of it, presses its button and cancels the dialog.
template <class T> class TDockedDeeds {
public:
    using TDock = std::function<void(T& dialog, TForm* acting, TForm* other)>;

    /// `dock` gives both forms to the dialog; `dialog` is freed by the deed or by this.
    TDockedDeeds(T* dialog, const TDock& dock) : FDialog(dialog) { dock(*dialog, FActing, FOther); }
    TDockedDeeds(const TDockedDeeds&) = delete;
    TDockedDeeds& operator=(const TDockedDeeds&) = delete;
    ~TDockedDeeds() {
        Free(FDialog);
        Free(FActing);
        Free(FOther);
    }

    /// Runs the dialog and carries out steps meanwhile.
    using TShow = std::function<void(T& dialog, std::vector<TStep> steps)>;

    void Run(const TDeedIn& deed) {
        Run(deed, [this](T& dialog, std::vector<TStep> steps) {
            const auto execute = [&] {
                const bool confirmed = dialog.Execute();
                if (!FDialog) { // perhaps before it was shown
                    PumpUntil([this] { return FUsed; });
                }
                return confirmed;
            };
            EXPECT_FALSE(RunDialog(execute, std::move(steps)));
        });
    }
    void Run(const TDeedIn& deed, const TShow& show) {
        const TExceptionLog exceptions;
        SetDeed(deed);
        const std::string event = deed.Event;
        std::vector<TStep> steps;
        FUsed = deed.Deed == TDeed::FreeDialog && (event == "OnShow" || event == "OnResize"); // before it is shown
        if (!FUsed) {
            steps.push_back(
                {"the dialog is shown", [this] { return !FDialog || Shown(*FDialog)(); }, [this] { UseIt(); }});
        }
        show(*FDialog, std::move(steps));
        Application().ProcessMessages(); // a released form goes now
        EXPECT_TRUE(FDone) << "the event never came";
        EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
        EXPECT_EQ(exceptions.Messages(), std::vector<std::string>{});
        EXPECT_EQ(FDialog == nullptr, deed.Deed == TDeed::FreeDialog);
        EXPECT_EQ(FActing == nullptr, deed.Deed == TDeed::FreeForm || deed.Deed == TDeed::ReleaseForm);
        for (TForm* const form : {static_cast<TForm*>(FActing), static_cast<TForm*>(FOther)}) {
            if (form) {
                EXPECT_FALSE(form->Visible());
                EXPECT_EQ(form->ParentWindow(), nullptr);
            }
        }
    }

private:
    template <class O> static void Free(O*& object) {
        if (object) {
            std::exchange(object, nullptr)->Free();
        }
    }

    void SetDeed(const TDeedIn& deed) {
        const auto act = [this, deed](TObject*) {
            if (std::exchange(FDone, true)) {
                return;
            }
            switch (deed.Deed) {
            case TDeed::FreeForm: Free(FActing); break;
            case TDeed::ReleaseForm: std::exchange(FActing, nullptr)->Release(); break;
            case TDeed::FreeOtherForm: Free(FOther); break;
            case TDeed::FreeDialog: Free(FDialog); break;
            }
        };
        const std::string event = deed.Event;
        if (event == "OnShow") {
            FActing->SetOnShow(act);
        } else if (event == "OnHide") {
            FActing->SetOnHide(act);
        } else if (event == "OnResize") {
            FActing->SetOnResize(act);
        } else if (event == "OnEnter") {
            FActing->First->SetOnEnter(act);
        } else if (event == "OnExit") {
            FActing->First->SetOnExit(act);
        } else {
            FActing->Button->SetOnClick(act);
        }
    }

    /// Each piece, if the one before has left the dialog and the form.
    void UseIt() {
        FUsed = true;
        const auto piece = [this](const auto& work) {
            if (FDialog && FActing && FDialog->DialogWindow()) {
                work();
            }
        };
        piece([this] { Grow(FDialog->DialogWindow()); });
        piece([this] { SetFocus(FActing->First->WindowHandle()); });
        piece([this] { SetFocus(FActing->Second->WindowHandle()); });
        piece([this] { SendMessageA(FActing->Button->WindowHandle(), BM_CLICK, 0, 0); });
        piece([this] { SetFocus(GetDlgItem(FDialog->DialogWindow(), IDOK)); });
        if (FDialog && FDialog->DialogWindow()) {
            PostMessageA(FDialog->DialogWindow(), WM_COMMAND, IDCANCEL, 0);
        }
    }

    T* FDialog;
    TBusyForm* FActing = new TBusyForm;
    TForm* FOther = new TBusyForm;
    bool FDone = false; ///< The deed.
    bool FUsed = false; ///< UseIt() was there.
};

} // namespace kx::test
