// SPDX-License-Identifier: MIT
// What screen readers ask of the objects of controls beyond their names.

#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"
#include "tests/support/Reader.h"

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

class AccessibleObject : public TFormTest {
protected:
    static TSeen Seen(TWinControl& control) { return TSeen::Of(control.Handle()); }
    template <class T> T* Named(T* control, const std::string& caption) {
        control->SetCaption(caption);
        return control;
    }
    static VARIANT Number(LONG number) {
        VARIANT value{};
        value.vt = VT_I4;
        value.lVal = number;
        return value;
    }
    /// The number that a way leads to; 0: it leads nowhere.
    static LONG Way(const TSeen& seen, LONG direction, LONG from) {
        VARIANT value{};
        const HRESULT result = seen.Object()->accNavigate(direction, Number(from), &value);
        EXPECT_EQ(result == S_OK, value.vt == VT_I4) << direction << " from " << from;
        return result == S_OK ? value.lVal : 0;
    }
    static bool QueueIsEmpty() {
        MSG message;
        return !PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    }
};

TEST_F(AccessibleObject, GivesTheFocusToAControlThatCanHaveIt) {
    auto* const first = Add<TEdit>(0, 0, 100, 20);
    auto* const second = Add<TEdit>(0, 30, 100, 20);
    Show();
    first->SetFocus();
    const TSeen seen = Seen(*second);
    EXPECT_EQ(seen.Object()->accSelect(SELFLAG_NONE, seen.Self()), S_FALSE);
    EXPECT_EQ(seen.Object()->accSelect(SELFLAG_TAKESELECTION, seen.Self()), S_FALSE);
    EXPECT_TRUE(first->Focused());
    EXPECT_EQ(seen.Object()->accSelect(SELFLAG_TAKEFOCUS, seen.Self()), S_OK);
    EXPECT_TRUE(second->Focused());
    first->SetEnabled(false);
    EXPECT_EQ(Seen(*first).Object()->accSelect(SELFLAG_TAKEFOCUS, seen.Self()), S_FALSE);
    EXPECT_TRUE(second->Focused());
}

TEST_F(AccessibleObject, LeavesToTheSystemWhatItsControlsDo) {
    auto* const box = Named(Add<TCheckBox>(0, 0, 100, 20), "Choice");
    auto* const edit = Add<TEdit>(0, 30, 100, 20);
    auto* const panel = Add<TPanel>(0, 60, 100, 20);
    Show();
    EXPECT_EQ(Seen(*box).Do(), TSeen::Standard(box->Handle()).Do());
    const TSeen seen = Seen(*edit);
    const BSTR text = SysAllocString(L"new");
    EXPECT_EQ(seen.Object()->put_accValue(seen.Self(), text),
              TSeen::Standard(edit->Handle()).Object()->put_accValue(seen.Self(), text));
    const TSeen area = Seen(*panel);
    EXPECT_EQ(area.Object()->put_accValue(area.Self(), text), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(area.Do(), DISP_E_MEMBERNOTFOUND);
    SysFreeString(text);
    edit->SetFocus();
    EXPECT_NE(seen.State() & STATE_SYSTEM_FOCUSED, 0) << "the system knows that";
    EXPECT_EQ(Seen(*box).Role(), TSeen::Standard(box->Handle()).Role());
}

TEST_F(AccessibleObject, TellsWhichControlInsideHasTheFocus) {
    auto* const panel = Named(Add<TPanel>(0, 0, 200, 100), "Area");
    auto* const inner = Named(Add<TPanel>(10, 10, 100, 60, panel), "Inner");
    auto* const edit = Add<TEdit>(5, 5, 50, 20, inner);
    auto* const other = Add<TEdit>(0, 150, 50, 20);
    Show();
    edit->SetFocus();
    EXPECT_EQ(TSeen::Of(Form->Handle()).Focus().Window(), panel->Handle()) << "the next step on the way";
    EXPECT_EQ(Seen(*panel).Focus().Window(), inner->Handle());
    EXPECT_EQ(Seen(*inner).Focus().Window(), edit->Handle());
    other->SetFocus();
    EXPECT_FALSE(Seen(*panel).Focus());
    VARIANT value{};
    BSTR text = nullptr;
    LONG place = 0;
    const TSeen seen = Seen(*panel);
    IAccessible* const object = seen.Object();
    EXPECT_EQ(object->get_accName(Number(1), &text), E_INVALIDARG) << "a window tells of itself";
    EXPECT_EQ(object->get_accRole(Number(1), &value), E_INVALIDARG);
    EXPECT_EQ(object->get_accState(Number(1), &value), E_INVALIDARG);
    EXPECT_EQ(object->accLocation(&place, &place, &place, &place, Number(1)), E_INVALIDARG);
    EXPECT_EQ(object->accDoDefaultAction(Number(1)), E_INVALIDARG);
}

TEST_F(AccessibleObject, HasTheNameOfALabelWhereverThatIs) {
    auto* const group = Named(Add<TGroupBox>(0, 0, 200, 60), "Labels");
    auto* const label = Named(Add<TLabel>(5, 20, 50, 20, group), "&Total:");
    auto* const box = Add<TCheckBox>(0, 100, 100, 20);
    label->SetFocusControl(box);
    Show();
    EXPECT_EQ(Seen(*box).Name(), "Total:") << "where it has no caption of its own";
    box->SetCaption("Sum");
    EXPECT_EQ(Seen(*box).Name(), "Sum");
}

TEST_F(AccessibleObject, HasTheNameThatTheSystemFindsWhereItHasNone) {
    auto* const list = Add<TListBox>(0, 0, 100, 60);
    Show();
    SetWindowTextW(list->Handle(), L"Fruit");
    EXPECT_EQ(TSeen::Standard(list->Handle()).Name(), "Fruit");
    EXPECT_EQ(Seen(*list).Name(), "Fruit");
}

TEST_F(AccessibleObject, FindsTheUppermostAtAPoint) {
    auto* const below = Named(Add<TSpeedButton>(0, 0, 60, 40), "Below");
    Named(Add<TSpeedButton>(20, 0, 60, 40), "Above");
    auto* const hidden = Add<TPanel>(0, 50, 60, 40);
    Named(Add<TSpeedButton>(0, 50, 60, 40), "Behind");
    hidden->SetVisible(false);
    Show();
    hidden->HandleNeeded();
    const TSeen form = TSeen::Of(Form->Handle());
    const TPoint both = below->ClientToScreen({30, 20});
    EXPECT_EQ(TSeen::AtPoint(form, both.X, both.Y).Name(), "Above");
    const TPoint one = below->ClientToScreen({10, 20});
    EXPECT_EQ(TSeen::AtPoint(form, one.X, one.Y).Name(), "Below");
    const TPoint behind = below->ClientToScreen({10, 70});
    EXPECT_EQ(TSeen::AtPoint(form, behind.X, behind.Y).Name(), "Behind") << "what is hidden covers nothing";
    const TPoint corner = Form->ClientToScreen({Form->ClientWidth() - 1, Form->ClientHeight() - 1});
    EXPECT_TRUE(TSeen::AtPoint(form, corner.X, corner.Y));
    EXPECT_FALSE(TSeen::AtPoint(form, corner.X + 1, corner.Y));
    EXPECT_FALSE(TSeen::AtPoint(form, corner.X, corner.Y + 1));
}

TEST_F(AccessibleObject, IsWhereItsControlIsSeen) {
    auto* const panel = Add<TPanel>(30, 40, 100, 60);
    Show();
    EXPECT_EQ(Seen(*panel).Rect(), ScreenRectOf(panel->Handle()));
    const TPoint corner = Form->ClientToScreen({0, 0});
    EXPECT_EQ(TSeen::Of(Form->Handle()).Rect(),
              (TRect{corner.X, corner.Y, corner.X + Form->ClientWidth(), corner.Y + Form->ClientHeight()}));
}

TEST_F(AccessibleObject, OffersNoMoreInterfacesThanItHas) {
    Named(Add<TLabel>(0, 0, 50, 20), "Text");
    auto* const bar = Add<TPanel>(0, 50, 50, 20);
    Show();
    const TSeen form = TSeen::Of(Form->Handle());
    void* found = form.Object();
    EXPECT_EQ(form.Object()->QueryInterface(__uuidof(IEnumVARIANT), &found), E_NOINTERFACE)
        << "the system's does not know what the form does";
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(form.Object()->QueryInterface(__uuidof(IAccessible), nullptr), E_POINTER);
    EXPECT_EQ(form.Object()->get_accHelp(form.Self(), nullptr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Seen(*bar).Window(), bar->Handle());
    EXPECT_EQ(SendMessageW(bar->Handle(), WM_GETOBJECT, 0, OBJID_SIZEGRIP), 0) << "only what it knows";
}

TEST_F(AccessibleObject, ALabelInASystemsControlIsAChildOfIt) {
    auto* const edit = Add<TEdit>(0, 0, 200, 20);
    Show();
    const size_t before = Seen(*edit).Children().size();
    Named(Add<TLabel>(5, 2, 50, 16, edit), "Inside");
    const auto children = Seen(*edit).Children();
    EXPECT_EQ(children.size(), before + 1);
    EXPECT_EQ(children.front().Name(), "Inside");
}

TEST_F(AccessibleObject, NothingIsDoneInWhatIsHiddenMeanwhile) {
    auto* const panel = Add<TPanel>(0, 0, 200, 100);
    auto* const button = Named(Add<TSpeedButton>(0, 0, 30, 20, panel), "Bold");
    int clicks = 0;
    button->SetOnClick([&](TObject*) { ++clicks; });
    Show();
    const TSeen seen = Seen(*panel).Child("Bold");
    EXPECT_EQ(seen.Do(), S_OK);
    panel->SetVisible(false);
    EXPECT_TRUE(PumpUntil(QueueIsEmpty));
    EXPECT_EQ(clicks, 0);
}

/// Says wrong things of itself.
class TWrongParts : public TPanel, public IAccessibleParts {
public:
    using TPanel::TPanel;
    TAccessibleInfo AccessibleInfo() const override {
        if (Fails) {
            throw Exception("no info");
        }
        return TPanel::AccessibleInfo();
    }
    int AccessiblePartCount() const override { return 2; }
    TAccessibleInfo AccessiblePart(int) const override { return {}; }
    TRect AccessiblePartRect(int part) const override { return {0, 0, 10, part}; }
    int AccessiblePartAt(const TPoint&) const override { return 2; }
    int FocusedPart() const override { return 2; }
    void AccessiblePartAction(int) override {}

    bool Fails = false;
};

TEST_F(AccessibleObject, WithstandsControlsThatSayWrongThings) {
    auto* const panel = Add<TWrongParts>(0, 0, 100, 50);
    panel->SetTabStop(true);
    Show();
    panel->SetFocus();
    const TSeen seen = Seen(*panel);
    const TPoint middle = Middle(*panel);
    EXPECT_EQ(TSeen::AtPoint(seen, middle.X, middle.Y).Number(), CHILDID_SELF) << "there is no such part";
    EXPECT_EQ(seen.Focus().Number(), CHILDID_SELF);
    EXPECT_NE(seen.Children()[0].State() & STATE_SYSTEM_INVISIBLE, 0) << "a part without height";
    EXPECT_EQ(seen.Children()[1].State() & STATE_SYSTEM_INVISIBLE, 0);
    panel->Fails = true;
    TExceptionLog exceptions;
    BSTR text = nullptr;
    EXPECT_EQ(seen.Object()->get_accName(seen.Self(), &text), E_FAIL);
    EXPECT_EQ(exceptions.Take(), std::vector<std::string>{"no info"});
    panel->Fails = false;
    EXPECT_EQ(seen.Role(), ROLE_SYSTEM_PANE);
}

class AccessibleGridParts : public AccessibleObject {
protected:
    AccessibleGridParts() {
        Grid->SetColCount(3);
        Grid->SetRowCount(4);
    }
    static LONG Cell(int col, int row) { return row * 3 + col + 1; }
    static size_t At(int col, int row) { return static_cast<size_t>(Cell(col, row) - 1); } ///< Among the children.

    TStringGrid* Grid = Add<TStringGrid>(0, 0, 320, 200);
};

TEST_F(AccessibleGridParts, LeadFromOneToTheNext) {
    Show();
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(Way(grid, NAVDIR_FIRSTCHILD, CHILDID_SELF), 1);
    EXPECT_EQ(Way(grid, NAVDIR_LASTCHILD, CHILDID_SELF), 12);
    EXPECT_EQ(Way(grid, NAVDIR_NEXT, 1), 2);
    EXPECT_EQ(Way(grid, NAVDIR_NEXT, 11), 12);
    EXPECT_EQ(Way(grid, NAVDIR_NEXT, 12), 0);
    EXPECT_EQ(Way(grid, NAVDIR_PREVIOUS, 2), 1);
    EXPECT_EQ(Way(grid, NAVDIR_PREVIOUS, 1), 0);
    EXPECT_EQ(Way(grid, NAVDIR_FIRSTCHILD, 5), 0) << "there is nothing in a cell";
    EXPECT_EQ(Way(grid, NAVDIR_UP, 5), 0);
    IDispatch* child = nullptr;
    EXPECT_EQ(grid.Object()->get_accChild(Number(5), &child), S_FALSE) << "it is known by its number";
}

TEST_F(AccessibleGridParts, StandBeforeControlsInside) {
    auto* const label = Named(Add<TLabel>(200, 150, 50, 20, Grid), "Sum");
    Show();
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(grid.Child("Sum").Role(), ROLE_SYSTEM_STATICTEXT);
    EXPECT_EQ(Way(grid, NAVDIR_NEXT, 11), 12);
    LONG count = 0;
    grid.Object()->get_accChildCount(&count);
    EXPECT_EQ(count, 13);
    const TListener listener;
    label->SetCaption("Total");
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_NAMECHANGE, Grid->Handle(), 13); }));
    label->SetVisible(false);
    label->SetCaption("Sum of all");
    Grid->SetFocus();
    Grid->SetRow(3);
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_SELECTION, Grid->Handle(), Cell(1, 3)); }));
    EXPECT_FALSE(listener.Heard(EVENT_OBJECT_NAMECHANGE, Grid->Handle(), -1)) << "nobody sees it";
}

TEST_F(AccessibleGridParts, ThatHaveGoneMeanwhileAreNotPressed) {
    Grid->SetFixedCols(0);
    Grid->SetFixedRows(0);
    Show();
    EXPECT_EQ(Seen(*Grid).Object()->accDoDefaultAction(Number(Cell(2, 3))), S_OK);
    Grid->SetColCount(0);
    EXPECT_TRUE(PumpUntil(QueueIsEmpty));
    EXPECT_EQ(Grid->Row(), 0);
}

TEST_F(AccessibleGridParts, FixedCellsCannotBeChosen) {
    Show();
    Grid->SetFocus();
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(grid.Object()->accDoDefaultAction(Number(Cell(0, 2))), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(grid.Children()[0].Role(), ROLE_SYSTEM_COLUMNHEADER) << "the corner";
    const TRect corner = Grid->CellRect(0, 0);
    EXPECT_EQ(Width(grid.Children()[0].Rect()), Width(corner));
    EXPECT_EQ(grid.Object()->accDoDefaultAction(Number(Cell(2, 2))), S_OK);
    Grid->SetFixedRows(3);
    EXPECT_TRUE(PumpUntil(QueueIsEmpty));
    EXPECT_EQ(Grid->Row(), 3) << "it was a common cell when it was asked for";
}

TEST_F(AccessibleGridParts, AreNamedByTheHeaderNextToThem) {
    Grid->SetFixedRows(2);
    Grid->SetCells(1, 0, "Prices");
    Grid->SetCells(1, 1, "net");
    Grid->SetCells(1, 2, "3.50");
    Show();
    const auto cells = Seen(*Grid).Children();
    EXPECT_EQ(cells[At(1, 2)].Name(), "net");
    EXPECT_EQ(cells[At(1, 2)].Value(), "3.50");
    Grid->SetFixedRows(0);
    Grid->SetFixedCols(0);
    EXPECT_EQ(Seen(*Grid).Children()[At(1, 2)].Name(), "3.50") << "without headers by what is in them";
}

TEST_F(AccessibleGridParts, EndWhereTheGridDoes) {
    Grid->SetDefaultColWidth(100);
    Grid->SetWidth(260);
    Show();
    const TRect shown = ScreenRectOf(Grid->Handle());
    const auto cells = Seen(*Grid).Children();
    EXPECT_GT(Width(cells[At(2, 1)].Rect()), 0);
    EXPECT_LE(cells[At(2, 1)].Rect().Right, shown.Right);
    const TListener listener;
    Add<TEdit>(0, 250, 50, 20)->SetFocus();
    Grid->SetRow(2);
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_SELECTION, Grid->Handle(), Cell(1, 2)); }));
    EXPECT_FALSE(listener.Heard(EVENT_OBJECT_FOCUS, Grid->Handle(), Cell(1, 2))) << "another control has the focus";
    EXPECT_EQ(cells[At(1, 2)].State() & STATE_SYSTEM_FOCUSED, 0);
}

} // namespace
} // namespace kx
