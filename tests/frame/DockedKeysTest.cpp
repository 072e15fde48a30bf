// SPDX-License-Identifier: MIT
// The focus in a system dialog with docked forms.

#include "DockingFixture.h"

#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

using DockedKeys = Docking;

TEST_F(DockedKeys, TheFocusGoesOnFromAControlThatVanishes) {
    const struct {
        const char* What;
        std::function<void(TEdit&)> Deed;
    } deeds[] = {{"disabled", [](TEdit& e) { e.SetEnabled(false); }},
                 {"hidden", [](TEdit& e) { e.SetVisible(false); }},
                 {"freed", [](TEdit& e) { e.Free(); }},
                 {"in a form that is hidden", [](TEdit& e) { GetParentForm(&e)->Hide(); }},
                 {"in a form that is undocked", [](TEdit& e) {
                      TCustomForm* const form = GetParentForm(&e);
                      form->Hide();
                      form->SetParentWindow(nullptr);
                  }}};
    for (const auto& deed : deeds) {
        SCOPED_TRACE(deed.What);
        TFormPtr form = MakeForm<TBottomForm>();
        auto* const edit = new TEdit(form.get());
        edit->SetParent(form.get());
        Params().SetBottomForm(form.get());
        RunDialog(FDialog, {{"shown", [&] { return IsWindowVisible(edit->Handle()) != 0; }, [&] { edit->SetFocus(); }},
                            {"it has the focus", [&] { return edit->Focused(); },
                             [&] {
                                 deed.Deed(*edit);
                                 const HWND focus = GetFocus();
                                 EXPECT_TRUE(IsChild(Window(), focus));
                                 EXPECT_TRUE(IsWindowVisible(focus) && IsWindowEnabled(focus));
                                 EXPECT_EQ(FindControl(focus), nullptr) << "a control of the system's";
                             }},
                            Cancel(FDialog)});
        Params().SetBottomForm(nullptr);
    }
}

/// The Alt key is held for the length of a scope, as far as this thread sees it.
class TAltHeld {
public:
    TAltHeld() {
        GetKeyboardState(FBefore);
        BYTE keys[256];
        std::copy(std::begin(FBefore), std::end(FBefore), keys);
        keys[VK_MENU] = 0x80;
        SetKeyboardState(keys);
    }
    TAltHeld(const TAltHeld&) = delete;
    TAltHeld& operator=(const TAltHeld&) = delete;
    ~TAltHeld() { SetKeyboardState(FBefore); }

private:
    BYTE FBefore[256];
};

class DockedAccelerators : public DockedKeys {
protected:
    DockedAccelerators() {
        auto* const button = new TButton(FForm.get());
        button->SetParent(FForm.get());
        button->SetCaption("&Jump");
        button->SetOnClick([this](TObject*) { ++Clicks; });
        Params().SetBottomForm(FForm.get());
        FDialog.SetOwnCasesAfter([this](TMessage& m) { Afters += m.Msg == WM_MENUCHAR ? 1 : 0; });
        FDialog.SetOnEventHook([this](TMessage& m) {
            if (m.Msg == WM_MENUCHAR) {
                Answers.push_back(HIWORD(m.Result));
            }
        });
    }
    /// As the system asks the dialog for a letter that none of its windows has.
    WORD AskFor(char letter) const {
        return HIWORD(SendMessageW(Window(), WM_MENUCHAR, MAKEWPARAM(letter, MF_POPUP), 0));
    }
    void Inside(const std::function<void()>& deed) {
        RunDialog(FDialog, {{"shown", [&] { return IsWindowVisible(FForm->Handle()) != 0; }, deed}, Cancel(FDialog)});
    }
    TFormPtr FForm = MakeForm<TBottomForm>();
    int Clicks = 0;
    int Afters = 0;
    std::vector<int> Answers; ///< That OnEventHook saw.
};

TEST_F(DockedAccelerators, ThatAFormTakesAreToldOfWithTheirAnswer) {
    Inside([&] {
        const TAltHeld alt;
        EXPECT_EQ(AskFor('j'), MNC_CLOSE);
        EXPECT_EQ(Clicks, 1);
        EXPECT_EQ(Answers, std::vector<int>{MNC_CLOSE});
        EXPECT_EQ(Afters, 0) << "the system is not asked";
    });
}

TEST_F(DockedAccelerators, ThatNoFormHasGoToTheSystem) {
    Inside([&] {
        const TAltHeld alt;
        EXPECT_EQ(AskFor('q'), MNC_IGNORE);
        EXPECT_EQ(Answers, std::vector<int>{MNC_IGNORE});
        EXPECT_EQ(Afters, 1);
        FForm->SetEnabled(false);
        EXPECT_EQ(AskFor('j'), MNC_IGNORE);
        FForm->SetEnabled(true);
        FForm->Hide();
        EXPECT_EQ(AskFor('j'), MNC_IGNORE);
        FForm->Show();
        EXPECT_EQ(Clicks, 0);
    });
}

TEST_F(DockedAccelerators, AreNoneWithoutTheAltKeyOrWithAVeto) {
    Inside([&] {
        AskFor('j');
        EXPECT_EQ(Clicks, 0) << "a letter in an open menu";
        FDialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_MENUCHAR; });
        const TAltHeld alt;
        AskFor('j');
        EXPECT_EQ(Clicks, 0);
        EXPECT_EQ(Answers.size(), 1u);
    });
}

TEST_F(DockedAccelerators, MayFreeTheirForm) {
    Inside([&] {
        const TAltHeld alt;
        for (int i = 0; i < FForm->ComponentCount(); ++i) {
            if (auto* const button = dynamic_cast<TButton*>(FForm->Components(i))) {
                button->SetOnClick([&](TObject*) {
                    ++Clicks;
                    FForm.reset();
                });
                break;
            }
        }
        EXPECT_EQ(AskFor('j'), MNC_CLOSE);
        EXPECT_EQ(Clicks, 1);
        EXPECT_FALSE(FForm);
        EXPECT_EQ(AskFor('j'), MNC_IGNORE);
        EXPECT_EQ(Clicks, 1);
    });
}

} // namespace
} // namespace kx
