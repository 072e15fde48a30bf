// The keyboard in a system dialog with docked forms.

#include "DockingFixture.h"

#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

class DockedKeys : public Docking {
protected:
    DockedKeys() {
        for (TForm* form : {FLeft.get(), FTop.get(), FRight.get(), FBottom.get()}) {
            auto* const edit = new TEdit(form);
            edit->SetParent(form);
            edit->SetBounds(5, 20, 40, 20);
            Edits.push_back(edit);
        }
    }
    TEdit& BottomEdit() { return *Edits[3]; }
    /// Alt+Z leads to it.
    void LabelBottomEdit() {
        auto* const label = new TLabel(FBottom.get());
        label->SetParent(FBottom.get());
        label->SetCaption("&Zeta");
        label->SetFocusControl(&BottomEdit());
    }
    TCondition EditShown() {
        return [this] { return BottomEdit().HandleAllocated() && IsWindowVisible(BottomEdit().WindowHandle()); };
    }
    HWND NameEdit() {
        constexpr int editId = 1152;
        constexpr int comboId = 1148;
        HWND edit = GetDlgItem(Window(), editId);
        for (HWND inner = edit ? nullptr : GetDlgItem(Window(), comboId); inner; inner = GetWindow(inner, GW_CHILD)) {
            edit = inner;
        }
        return edit;
    }

    /// Presses the key so many times; each time the focus has to go to another window. Returns where it was.
    std::vector<HWND> Walk(int times, std::initializer_list<WORD> held) {
        std::vector<HWND> seen;
        std::vector<TStep> steps{{"the dialog has the focus", [&] { return IsChild(Window(), GetFocus()) != 0; },
                                  [&, held = std::vector<WORD>(held)] { PressTab(seen, !held.empty()); }}};
        for (int i = 0; i < times; ++i) {
            steps.push_back({"the focus has moved, " + IntToStr(i),
                             [&] { return GetFocus() && GetFocus() != seen.back(); },
                             [&, back = held.size() != 0] { PressTab(seen, back); }});
        }
        steps.push_back(Cancel(FDialog));
        RunDialog(FDialog, std::move(steps));
        return seen;
    }
    static void PressTab(std::vector<HWND>& seen, bool back) {
        seen.push_back(GetFocus());
        back ? PressKey(VK_TAB, {VK_SHIFT}) : PressKey(VK_TAB);
    }
    /// The windows of one turn through the dialog.
    static std::vector<HWND> Turn(const std::vector<HWND>& seen) {
        const auto again = std::find(seen.begin() + 1, seen.end(), seen.front());
        return {seen.begin(), again};
    }

    std::vector<TEdit*> Edits; ///< On the left, top, right and bottom form.
};

TEST_F(DockedKeys, TabGoesIntoTheFormsAtAllSidesAndOutAgain) {
    DockByForm(AllSides);
    std::vector<HWND> edits;
    FDialog.SetOnShow([&](TObject*) {
        for (TEdit* edit : Edits) {
            edits.push_back(edit->Handle());
        }
        edits.push_back(GetDlgItem(Window(), IDOK));
        edits.push_back(GetDlgItem(Window(), IDCANCEL));
        edits.push_back(NameEdit());
    });
    const std::vector<HWND> seen = Walk(24, {});
    ASSERT_GT(seen.size(), 20u);
    const std::vector<HWND> turn = Turn(seen);
    EXPECT_LT(turn.size(), seen.size()) << "it comes back to where it began";
    for (HWND window : edits) {
        EXPECT_EQ(std::count(turn.begin(), turn.end(), window), 1) << window;
    }
    edits.clear();
    std::vector<HWND> back = Turn(Walk(24, {VK_SHIFT}));
    ASSERT_EQ(back.size(), turn.size());
}

TEST_F(DockedKeys, AcceleratorsWorkFromTheSystemsControls) {
    LabelBottomEdit();
    DockByForm(AllSides);
    RunDialog(FDialog,
              {{"shown", EditShown(), [&] { ::SetFocus(NameEdit()); }},
               {"the name has the focus", [&] { return GetFocus() == NameEdit(); }, [] { PressKey('Z', {VK_MENU}); }},
               {"the docked edit has it", [&] { return BottomEdit().Focused(); }, [] { TypeText("x"); }},
               {"and takes text", [&] { return BottomEdit().Text() == "x"; }, {}},
               Cancel(FDialog)});
}

TEST_F(DockedKeys, AcceleratorsWorkFromFormToForm) {
    LabelBottomEdit();
    DockByForm(AllSides);
    RunDialog(FDialog,
              {{"shown", EditShown(), [&] { Edits[0]->SetFocus(); }},
               {"the left form has the focus", [&] { return Edits[0]->Focused(); }, [] { PressKey('Z', {VK_MENU}); }},
               {"the bottom form has it", [&] { return BottomEdit().Focused(); }, {}},
               Cancel(FDialog)});
}

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

TEST_F(DockedKeys, ReturnInAFormIsTheDialogsOk) {
    FDialog.SetFileName("letter.txt");
    DockByForm(Bottom);
    EXPECT_TRUE(RunDialog(FDialog,
                          {{"shown", EditShown(), [&] { BottomEdit().SetFocus(); }},
                           {"it has the focus", [&] { return BottomEdit().Focused(); }, [] { PressKey(VK_RETURN); }}}));
    EXPECT_EQ(FDialog.FileName(), FFolder.Path("letter.txt"));
}

} // namespace
} // namespace kx
