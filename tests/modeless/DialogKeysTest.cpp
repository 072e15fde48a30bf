// SPDX-License-Identifier: MIT
// The keyboard in every kind of dialog, blocking or not, with a form at each of its sides.

#include "DialogKinds.h"
#include "ModelessTest.h"

#include "tests/support/BusyForm.h"
#include "tests/ui/FocusPump.h"

#include <algorithm>
#include <tuple>

namespace kx {
namespace {

using namespace test;

constexpr const char* Sides[] = {"left", "top", "right", "bottom"};

class DialogKeys : public TModelessTest, public testing::WithParamInterface<std::tuple<TDialogKind, bool>> {
protected:
    DialogKeys()
        : Component(std::get<0>(GetParam()).Make(Main, Folder)), Dialog(dynamic_cast<ICommonDialog*>(Component)) {
        Runner->SetDialog(Dialog);
        TKxCustDlgParams& params = Dialog->GetCustDlgParams();
        params.SetLeftForm(Left());
        params.SetTopForm(Top());
        params.SetRightForm(Right());
        params.SetBottomForm(Bottom());
    }

    TBusyForm* Left() const { return Forms[0].get(); }
    TBusyForm* Top() const { return Forms[1].get(); }
    TBusyForm* Right() const { return Forms[2].get(); }
    TBusyForm* Bottom() const { return Forms[3].get(); }
    HWND Window() const { return Component->DialogWindow(); }
    HWND Item(int id) const { return ItemOf(*Component, id); }

    /// Shows the dialog, clicks into the left form, and carries out the steps. Whether the dialog was confirmed.
    bool Run(std::vector<TStep> steps) {
        const auto click = [this] { Click(Left()->First->WindowHandle()); };
        // Before that a click would come too early: the dialog gives the focus to its first control last of all.
        const auto ready = [this] {
            return Shown(*Component)() && Bottom()->IsDocked() && IsChild(Window(), FocusNow());
        };
        steps.insert(steps.begin(), {"all is shown and the dialog has the focus", ready, click});
        const bool blocks = std::get<1>(GetParam());
        return RunDialog(
            [&] {
                if (blocks) {
                    return Component->Execute();
                }
                Runner->Show();
                return FocusPump([this] { return !Results.empty(); }) && Results.back();
            },
            std::move(steps));
    }
    /// In whatever thread.
    static HWND FocusNow() {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        return GetGUIThreadInfo(0, &info) ? info.hwndFocus : nullptr;
    }
    /// The dialog's thread has to do that.
    void FocusItem(int id) const { SendMessageW(Window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(id)), TRUE); }
    static void AddLabel(TForm& form, const std::string& caption, TWinControl& control) {
        auto* const label = new TLabel(&form);
        label->SetParent(&form);
        label->SetCaption(caption);
        label->SetFocusControl(&control);
    }
    /// A step once the control has the focus.
    static TStep Once(const TWinControl& control, TAction action) {
        return {"the control has the focus", [&control] { return control.Focused(); }, std::move(action)};
    }

    /// Presses Tab each time the focus has moved on, till it is where it began. `turn` are the windows that it was on.
    static bool GoesRound(std::vector<HWND>& turn, bool back) {
        constexpr size_t most = 60; // more than any dialog has
        HWND focus = FocusNow();
        const std::string kind = ClassOf(focus);
        const bool isOnItsWay = kind == "SHELLDLL_DefView" || kind == "ComboBoxEx32"; // they give it to what is inside
        if (!focus || isOnItsWay || (!turn.empty() && focus == turn.back())) {
            return false;
        }
        if ((!turn.empty() && focus == turn.front()) || turn.size() == most) {
            return true;
        }
        turn.push_back(focus);
        back ? PressKey(VK_TAB, {VK_SHIFT}) : PressKey(VK_TAB);
        return false;
    }
    std::vector<std::string> NamesOf(const std::vector<HWND>& windows) const {
        std::vector<std::string> names;
        for (HWND window : windows) {
            names.push_back(NameOf(window));
        }
        return names;
    }
    std::string NameOf(HWND window) const {
        for (size_t i = 0; i < std::size(Sides); ++i) {
            int number = 1;
            for (const TWinControl* stop :
                 std::initializer_list<TWinControl*>{Forms[i]->First, Forms[i]->Second, Forms[i]->Button}) {
                if (stop->WindowHandle() == window) {
                    return Sides[i] + IntToStr(number);
                }
                ++number;
            }
        }
        return ClassOf(window) + " " + IntToStr(GetDlgCtrlID(window));
    }

    using TFormOwner = std::unique_ptr<TBusyForm, TFreeDeleter>;
    const TFormOwner Forms[4] = {TFormOwner(new TBusyForm), TFormOwner(new TBusyForm), TFormOwner(new TBusyForm),
                                 TFormOwner(new TBusyForm)};
    TCommonDialog* Component;
    ICommonDialog* Dialog;
};

TEST_P(DialogKeys, TabGoesThroughTheFormsAndTheDialogBothWays) {
    std::vector<HWND> onwards;
    std::vector<HWND> back;
    std::vector<std::string> names;
    std::vector<std::string> namesBack;
    EXPECT_FALSE(Run({Once(*Left()->First, {}),
                      {"Tab comes back", [&] { return GoesRound(onwards, false); }, [&] { names = NamesOf(onwards); }},
                      {"Shift+Tab comes back", [&] { return GoesRound(back, true); },
                       [&] {
                           std::reverse(back.begin() + 1, back.end());
                           namesBack = NamesOf(back);
                       }},
                      Cancel(*Component)}));
    for (const char* side : Sides) {
        const std::vector<std::string> stops{side + IntToStr(1), side + IntToStr(2), side + IntToStr(3)};
        EXPECT_NE(std::search(names.begin(), names.end(), stops.begin(), stops.end()), names.end())
            << "through all of the form, in its order: " << testing::PrintToString(names);
        EXPECT_EQ(std::count(names.begin(), names.end(), stops[0]), 1) << testing::PrintToString(names);
    }
    for (const int id : {IDOK, IDCANCEL}) {
        EXPECT_EQ(std::count(names.begin(), names.end(), "Button " + IntToStr(id)), 1) << testing::PrintToString(names);
    }
    EXPECT_EQ(namesBack, names) << "Shift+Tab goes the same way back";
}

TEST_P(DialogKeys, AcceleratorsLeadIntoTheFormsAndOut) {
    AddLabel(*Bottom(), "&Zeta", *Bottom()->Second);
    const auto pressZ = [] { PressKey('Z', {VK_MENU}); };
    EXPECT_FALSE(Run({Once(*Left()->First, [&] { FocusItem(IDCANCEL); }),
                      {"the button has it", [&] { return FocusNow() == Item(IDCANCEL); }, pressZ},
                      Once(*Bottom()->Second, [&] { Left()->First->SetFocus(); }), //
                      Once(*Left()->First, pressZ),                                //
                      Once(*Bottom()->Second, [&] {
                          SetWindowTextW(Item(IDCANCEL), L"&Quit");
                          PressKey('Q', {VK_MENU});
                      })}));
}

TEST_P(DialogKeys, ReturnInAnEditOfAFormIsOk) {
    EXPECT_TRUE(Run({Once(*Left()->First, [] { PressKey(VK_RETURN); })}));
}

TEST_P(DialogKeys, ReturnOnAButtonOfAFormPressesItAndEscapeCancels) {
    int clicks = 0;
    Top()->Button->SetOnClick([&](TObject*) { ++clicks; });
    EXPECT_FALSE(Run({Once(*Left()->First, [&] { Top()->Button->SetFocus(); }),
                      Once(*Top()->Button, [] { PressKey(VK_RETURN); }),
                      {"it is pressed", [&] { return clicks == 1; }, [] { PressKey(VK_ESCAPE); }}}));
    EXPECT_EQ(clicks, 1);
}

TEST_P(DialogKeys, TheKeyboardStaysInTheDialogWhenItsFormIsHidden) {
    AddLabel(*Left(), "&Yak", *Left()->Second);
    HWND after = nullptr;
    EXPECT_FALSE(
        Run({Once(*Left()->First,
                  [&] {
                      Left()->Hide();
                      after = FocusNow();
                      EXPECT_TRUE(IsChild(Window(), after)) << ClassOf(after);
                      EXPECT_TRUE(IsWindowVisible(after) && IsWindowEnabled(after)) << ClassOf(after);
                      PressKey('Y', {VK_MENU}); // leads to nobody now
                      PressKey(VK_TAB);
                  }),
             {"Tab goes on", [&] { return FocusNow() && FocusNow() != after; }, [] { PressKey(VK_ESCAPE); }}}));
}

std::string NameOfKind(const testing::TestParamInfo<DialogKeys::ParamType>& info) {
    const bool blocks = std::get<1>(info.param);
    return std::get<0>(info.param).Name + std::string(blocks ? "" : "Modeless");
}

INSTANTIATE_TEST_SUITE_P(All, DialogKeys, testing::Combine(testing::ValuesIn(DialogKinds), testing::Bool()),
                         NameOfKind);

} // namespace
} // namespace kx
