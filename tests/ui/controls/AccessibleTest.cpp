// SPDX-License-Identifier: MIT
// What controls tell screen readers.

#include "tests/support/FormTest.h"
#include "tests/support/Reader.h"

#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/GridsString.h"
#include "kx/ui/widgets/Splitters.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx {
namespace {

using namespace test;

class Accessible : public TFormTest {
protected:
    TSeen Seen(TWinControl& control) { return TSeen::Of(control.Handle()); }
    TSeen SeenForm() { return Seen(*Form); }
    static bool QueueHasMessages() {
        MSG message;
        return PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != 0;
    }
    template <class T> T* Named(T* control, const std::string& caption) {
        control->SetCaption(caption);
        return control;
    }
};

TEST_F(Accessible, ControlsWithoutWindowsAreChildrenOfTheForm) {
    Form->SetCaption("Options");
    Named(Add<TLabel>(0, 0, 50, 20), "Save && &quit");
    auto* const button = Named(Add<TSpeedButton>(60, 0, 30, 20), "&Bold");
    Add<TImage>(100, 0, 30, 20)->SetHint("A picture|More about it");
    Add<TPaintBox>(100, 30, 30, 20);
    Add<TBevel>(100, 60, 30, 20);
    Add<TSplitter>(100, 90, 5, 20);
    Add<TImage>(200, 0, 30, 20)->SetVisible(false);
    Show();
    const TSeen form = SeenForm();
    ASSERT_TRUE(form);
    EXPECT_EQ(form.Name(), "Options");
    EXPECT_EQ(form.Role(), ROLE_SYSTEM_CLIENT);
    const auto children = form.Children();
    ASSERT_EQ(children.size(), 6u) << "the hidden one is not told of";
    EXPECT_EQ(children[0].Name(), "Save & quit");
    EXPECT_EQ(children[0].Role(), ROLE_SYSTEM_STATICTEXT);
    EXPECT_EQ(children[0].State(), STATE_SYSTEM_READONLY);
    EXPECT_EQ(children[0].ShortCut(), "");
    EXPECT_EQ(children[0].Action(), "");
    EXPECT_EQ(children[1].Name(), "Bold");
    EXPECT_EQ(children[1].Role(), ROLE_SYSTEM_PUSHBUTTON);
    EXPECT_EQ(children[1].State(), 0);
    EXPECT_EQ(children[1].ShortCut(), "Alt+B");
    EXPECT_EQ(children[1].Action(), "Press");
    const TPoint corner = button->ClientToScreen({0, 0});
    EXPECT_EQ(children[1].Rect(), (TRect{corner.X, corner.Y, corner.X + 30, corner.Y + 20}));
    EXPECT_EQ(children[1].Parent().Name(), "Options");
    EXPECT_EQ(children[2].Name(), "A picture");
    EXPECT_EQ(children[2].Role(), ROLE_SYSTEM_GRAPHIC);
    EXPECT_EQ(children[3].Role(), ROLE_SYSTEM_GRAPHIC);
    EXPECT_EQ(children[4].Role(), ROLE_SYSTEM_SEPARATOR);
    EXPECT_EQ(children[5].Role(), ROLE_SYSTEM_SEPARATOR);
    const TPoint inside = Middle(*button);
    EXPECT_EQ(TSeen::AtPoint(form, inside.X, inside.Y).Name(), "Bold");
}

TEST_F(Accessible, ALabelNamesTheControlThatItLeadsTo) {
    auto* const group = Named(Add<TGroupBox>(0, 60, 300, 100), "Who");
    auto* const label = Named(Add<TLabel>(0, 0, 50, 20), "&Name:");
    auto* const edit = Add<TEdit>(10, 20, 100, 20, group);
    edit->SetText("Ann & Bob");
    edit->SetHint("Your name");
    auto* const other = Add<TEdit>(10, 50, 100, 20, group);
    other->SetHint("Your street|The street where you live");
    label->SetFocusControl(edit);
    Show();
    EXPECT_EQ(Seen(*edit).Name(), "Name:") << "and not what is typed";
    EXPECT_EQ(Seen(*edit).ShortCut(), "Alt+N");
    EXPECT_EQ(Seen(*edit).Description(), "Your name");
    EXPECT_EQ(Seen(*edit).Value(), TSeen::Standard(edit->Handle()).Value()) << "as the system has it";
    EXPECT_EQ(Seen(*edit).Role(), TSeen::Standard(edit->Handle()).Role());
    EXPECT_EQ(Seen(*other).Name(), "Your street");
    EXPECT_EQ(Seen(*group).Name(), "Who");
    EXPECT_EQ(Seen(*group).Role(), ROLE_SYSTEM_GROUPING);
    EXPECT_EQ(Seen(*group).Children().size(), 2u);
    label->SetVisible(false);
    EXPECT_EQ(Seen(*edit).Name(), "Your name") << "a label that nobody sees names nothing";
}

TEST_F(Accessible, ContainersHoldWindowsAndControlsWithout) {
    auto* const panel = Named(Add<TPanel>(0, 0, 200, 100), "Area");
    Named(Add<TLabel>(5, 5, 50, 20, panel), "Text");
    auto* const box = Named(Add<TCheckBox>(5, 30, 100, 20, panel), "&Choice");
    Add<TEdit>(5, 60, 50, 20, panel)->SetVisible(false);
    Show();
    const TSeen seen = Seen(*panel);
    EXPECT_EQ(seen.Role(), ROLE_SYSTEM_PANE);
    const auto children = seen.Children();
    ASSERT_EQ(children.size(), 2u);
    EXPECT_EQ(children[0].Name(), "Text");
    EXPECT_EQ(children[1].Window(), box->Handle()) << "a window, which tells of itself";
    EXPECT_EQ(Seen(*box).Name(), "Choice");
    const TPoint inside = Middle(*box);
    EXPECT_EQ(TSeen::AtPoint(seen, inside.X, inside.Y).Window(), box->Handle());
    const TPoint beside = panel->ClientToScreen({150, 90});
    EXPECT_EQ(TSeen::AtPoint(seen, beside.X, beside.Y).Name(), "Area");
    EXPECT_FALSE(TSeen::AtPoint(seen, beside.X + 200, beside.Y));
}

TEST_F(Accessible, StatesFollowTheControl) {
    auto* const button = Named(Add<TSpeedButton>(0, 0, 30, 20), "Bold");
    button->SetGroupIndex(1);
    button->SetAllowAllUp(true);
    auto* const panel = Add<TPanel>(0, 50, 100, 50);
    Named(Add<TSpeedButton>(5, 5, 30, 20, panel), "Inside");
    Show();
    const auto state = [&] { return SeenForm().Child("Bold").State(); };
    EXPECT_EQ(state(), 0);
    button->SetDown(true);
    EXPECT_EQ(state(), STATE_SYSTEM_PRESSED | STATE_SYSTEM_CHECKED);
    button->SetEnabled(false);
    EXPECT_EQ(state(), STATE_SYSTEM_PRESSED | STATE_SYSTEM_CHECKED | STATE_SYSTEM_UNAVAILABLE);
    const TSeen inside = Seen(*panel).Child("Inside");
    EXPECT_EQ(inside.State(), 0);
    panel->SetEnabled(false);
    EXPECT_EQ(inside.State(), STATE_SYSTEM_UNAVAILABLE) << "with all that it is in";
    panel->SetVisible(false);
    EXPECT_NE(inside.State() & STATE_SYSTEM_INVISIBLE, 0);
}

TEST_F(Accessible, ActionsAreDoneOnceTheAskerHasGoneOn) {
    auto* const button = Named(Add<TSpeedButton>(0, 0, 30, 20), "Bold");
    int clicks = 0;
    button->SetOnClick([&](TObject*) { ++clicks; });
    Named(Add<TLabel>(0, 50, 50, 20), "Text");
    Show();
    const TSeen seen = SeenForm().Child("Bold");
    EXPECT_EQ(seen.Do(), S_OK);
    EXPECT_EQ(clicks, 0) << "a handler may take long";
    EXPECT_TRUE(PumpUntil([&] { return clicks == 1; }));
    EXPECT_EQ(SeenForm().Child("Text").Do(), DISP_E_MEMBERNOTFOUND);

    EXPECT_EQ(seen.Do(), S_OK);
    button->SetEnabled(false);
    EXPECT_TRUE(PumpUntil([] { return !QueueHasMessages(); }));
    EXPECT_EQ(clicks, 1) << "meanwhile it may have been disabled";
    button->SetEnabled(true);
    EXPECT_EQ(seen.Do(), S_OK);
    button->Free();
    EXPECT_TRUE(PumpUntil([] { return !QueueHasMessages(); }));
    EXPECT_EQ(clicks, 1) << "or freed";
}

TEST_F(Accessible, AnObjectOutlivesItsControl) {
    auto* const button = Named(Add<TSpeedButton>(0, 0, 30, 20), "Bold");
    auto* const panel = Named(Add<TPanel>(0, 50, 100, 50), "Area");
    Show();
    const TSeen graphic = SeenForm().Child("Bold");
    const TSeen windowed = Seen(*panel);
    button->Free();
    panel->Free();
    for (const TSeen* seen : {&graphic, &windowed}) {
        IAccessible* const object = seen->Object();
        BSTR text = nullptr;
        VARIANT value{};
        LONG number = 7;
        IDispatch* dispatch = nullptr;
        const VARIANT self = seen->Self();
        EXPECT_EQ(object->get_accName(self, &text), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->get_accRole(self, &value), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->get_accState(self, &value), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->get_accChildCount(&number), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(number, 0);
        EXPECT_EQ(object->get_accChild(self, &dispatch), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->get_accParent(&dispatch), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->get_accFocus(&value), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->get_accSelection(&value), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->accHitTest(1, 1, &value), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->accLocation(&number, &number, &number, &number, self), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->accNavigate(NAVDIR_NEXT, self, &value), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->accDoDefaultAction(self), CO_E_OBJNOTCONNECTED);
        EXPECT_EQ(object->accSelect(SELFLAG_TAKEFOCUS, self), CO_E_OBJNOTCONNECTED);
    }
}

TEST_F(Accessible, NumbersAndVariantsThatMeanNothingAreRefused) {
    Named(Add<TLabel>(0, 0, 50, 20), "Text");
    Show();
    const TSeen form = SeenForm();
    IAccessible* const object = form.Object();
    VARIANT child{};
    child.vt = VT_I4;
    BSTR text = nullptr;
    VARIANT value{};
    IDispatch* dispatch = nullptr;
    for (const LONG number : {LONG{2}, LONG{-1}, LONG_MIN, LONG_MAX}) {
        child.lVal = number;
        EXPECT_EQ(object->get_accName(child, &text), E_INVALIDARG) << number;
        EXPECT_EQ(object->get_accRole(child, &value), E_INVALIDARG) << number;
        EXPECT_EQ(object->get_accState(child, &value), E_INVALIDARG) << number;
        EXPECT_EQ(object->get_accChild(child, &dispatch), E_INVALIDARG) << number;
        EXPECT_EQ(object->accDoDefaultAction(child), E_INVALIDARG) << number;
    }
    child.vt = VT_R8;
    child.dblVal = 0;
    EXPECT_EQ(object->get_accName(child, &text), E_INVALIDARG);
    child = {};
    EXPECT_EQ(object->get_accName(child, &text), E_INVALIDARG) << "an empty one";
    EXPECT_EQ(object->get_accName(form.Self(), nullptr), E_INVALIDARG);
    EXPECT_EQ(object->get_accRole(form.Self(), nullptr), E_INVALIDARG);
    EXPECT_EQ(object->get_accChildCount(nullptr), E_INVALIDARG);
}

TEST_F(Accessible, ControlsWithoutWindowsLeadToTheNext) {
    Named(Add<TLabel>(0, 0, 50, 20), "One");
    Named(Add<TLabel>(0, 30, 50, 20), "Two");
    Show();
    const TSeen form = SeenForm();
    const auto from = [](const TSeen& seen, LONG direction) {
        VARIANT value{};
        seen.Object()->accNavigate(direction, seen.Self(), &value);
        std::string name;
        if (value.vt == VT_DISPATCH) {
            BSTR text = nullptr;
            static_cast<IAccessible*>(value.pdispVal)->get_accName(seen.Self(), &text);
            name = FromWide({text, SysStringLen(text)});
            SysFreeString(text);
            value.pdispVal->Release();
        }
        return name;
    };
    EXPECT_EQ(from(form, NAVDIR_FIRSTCHILD), "One");
    EXPECT_EQ(from(form, NAVDIR_LASTCHILD), "Two");
    EXPECT_EQ(from(form.Child("One"), NAVDIR_NEXT), "Two");
    EXPECT_EQ(from(form.Child("Two"), NAVDIR_PREVIOUS), "One");
    EXPECT_EQ(from(form.Child("Two"), NAVDIR_NEXT), "");
    EXPECT_EQ(from(form.Child("One"), NAVDIR_PREVIOUS), "");
}

TEST_F(Accessible, AToolBarsButtonsComeInItsOrder) {
    auto* const bar = Named(Add<TToolBar>(0, 0, 300, 30), "Commands");
    for (const char* caption : {"&Save", "", "&Open"}) { // each comes before those that are there
        auto* const button = new TToolButton(Form.get());
        button->SetCaption(caption);
        button->SetParent(bar);
        button->SetStyle(*caption ? tbsCheck : tbsSeparator);
    }
    int clicks = 0;
    bar->Buttons(2)->SetOnClick([&](TObject*) { ++clicks; });
    Show();
    const TSeen seen = Seen(*bar);
    EXPECT_EQ(seen.Name(), "Commands");
    EXPECT_EQ(seen.Role(), ROLE_SYSTEM_TOOLBAR);
    const auto children = seen.Children();
    ASSERT_EQ(children.size(), 3u);
    EXPECT_EQ(children[0].Name(), "Open");
    EXPECT_EQ(children[1].Role(), ROLE_SYSTEM_SEPARATOR);
    EXPECT_EQ(children[2].Name(), "Save");
    EXPECT_EQ(children[2].Role(), ROLE_SYSTEM_PUSHBUTTON);
    EXPECT_EQ(children[2].State(), 0);
    const TListener listener;
    EXPECT_EQ(children[2].Do(), S_OK);
    EXPECT_TRUE(PumpUntil([&] { return clicks == 1; }));
    EXPECT_EQ(children[2].State(), STATE_SYSTEM_PRESSED | STATE_SYSTEM_CHECKED);
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_STATECHANGE, bar->Handle(), 3); }));
}

TEST_F(Accessible, ChangesOfControlsWithoutWindowsAreTold) {
    Named(Add<TLabel>(0, 0, 50, 20), "One");
    auto* const label = Named(Add<TLabel>(0, 30, 50, 20), "Two");
    Show();
    const TListener listener;
    label->SetCaption("Three");
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_NAMECHANGE, Form->Handle(), 2); }));
    EXPECT_FALSE(listener.Heard(EVENT_OBJECT_NAMECHANGE, Form->Handle(), 1));
    label->SetEnabled(false);
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_STATECHANGE, Form->Handle(), 2); }));
}

class AccessibleGrid : public Accessible {
protected:
    AccessibleGrid() {
        Grid->SetColCount(4);
        Grid->SetRowCount(5);
        Grid->SetCells(1, 0, "Price");
        Grid->SetCells(0, 2, "Pears");
        Grid->SetCells(1, 2, "3.50");
    }
    static LONG Number(int col, int row) { return row * 4 + col + 1; }
    TSeen Cell(int col, int row) {
        return std::move(Seen(*Grid).Children()[static_cast<size_t>(Number(col, row) - 1)]);
    }

    TStringGrid* Grid = Add<TStringGrid>(0, 0, 320, 200);
};

TEST_F(AccessibleGrid, CellsAreKnownByTheirHeaders) {
    Show();
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(grid.Role(), ROLE_SYSTEM_TABLE);
    EXPECT_EQ(grid.Children().size(), 20u);
    EXPECT_EQ(Cell(1, 0).Role(), ROLE_SYSTEM_COLUMNHEADER);
    EXPECT_EQ(Cell(1, 0).Name(), "Price");
    EXPECT_EQ(Cell(0, 2).Role(), ROLE_SYSTEM_ROWHEADER);
    EXPECT_EQ(Cell(0, 2).Name(), "Pears");
    EXPECT_EQ(Cell(1, 2).Role(), ROLE_SYSTEM_CELL);
    EXPECT_EQ(Cell(1, 2).Name(), "Price, Pears");
    EXPECT_EQ(Cell(1, 2).Value(), "3.50");
    EXPECT_EQ(Cell(1, 3).Name(), "Price");
    EXPECT_EQ(Cell(2, 2).Name(), "Pears");
    const TRect rect = Grid->CellRect(1, 2);
    const TPoint corner = Grid->ClientToScreen({rect.Left, rect.Top});
    EXPECT_EQ(Cell(1, 2).Rect(), (TRect{corner.X, corner.Y, corner.X + Width(rect), corner.Y + Height(rect)}));
    EXPECT_EQ(TSeen::AtPoint(grid, corner.X + 3, corner.Y + 3).Number(), Number(1, 2));
}

TEST_F(AccessibleGrid, TheCurrentCellHasTheFocusAndTheSelection) {
    Show();
    Grid->SetFocus();
    const TListener listener;
    Grid->SetSelection({1, 2, 2, 3});
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_FOCUS, Grid->Handle(), Number(2, 3)); }));
    EXPECT_TRUE(listener.Heard(EVENT_OBJECT_SELECTION, Grid->Handle(), Number(2, 3)));
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(grid.Focus().Number(), Number(2, 3));
    EXPECT_EQ(grid.Selection(), (std::vector<LONG>{Number(1, 2), Number(2, 2), Number(1, 3), Number(2, 3)}));
    constexpr LONG can = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    EXPECT_EQ(Cell(2, 3).State(), can | STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED);
    EXPECT_EQ(Cell(1, 2).State(), can | STATE_SYSTEM_SELECTED);
    EXPECT_EQ(Cell(3, 3).State(), can);
    EXPECT_EQ(Cell(1, 2).Do(), S_OK);
    EXPECT_TRUE(PumpUntil([&] { return Grid->Col() == 1 && Grid->Row() == 2; }));
    EXPECT_EQ(grid.Selection(), std::vector<LONG>{Number(1, 2)});
    EXPECT_EQ(grid.Value(), "3.50");
}

TEST_F(AccessibleGrid, WhatTheUserTypesIsTold) {
    Grid->SetOptions({goEditing});
    Show();
    Grid->SetFocus();
    Grid->SetSelection({1, 2, 1, 2});
    const TListener listener;
    TypeText("7");
    EXPECT_TRUE(PumpUntil([&] { return Grid->Cells(1, 2) == "7"; }));
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_VALUECHANGE, Grid->Handle(), Number(1, 2)); }));
}

TEST_F(AccessibleGrid, CellsOutOfSightSaySo) {
    Grid->SetRowCount(1000);
    Show();
    constexpr LONG unseen = STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
    EXPECT_EQ(Cell(1, 1).State() & unseen, 0);
    EXPECT_EQ(Cell(1, 900).State() & unseen, unseen);
    Grid->SetTopRow(898);
    EXPECT_EQ(Cell(1, 900).State() & unseen, 0);
}

TEST_F(AccessibleGrid, VeryManyCellsAreNotAllCounted) {
    Grid->SetRowCount(INT_MAX);
    Grid->SetCells(1, INT_MAX - 1, "the last");
    Show();
    Grid->SetFocus();
    LONG count = 0;
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(grid.Object()->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 1'000'000);
    const TListener listener;
    Grid->SetRow(INT_MAX - 1);
    EXPECT_TRUE(PumpUntil([&] { return listener.Heard(EVENT_OBJECT_VALUECHANGE, Grid->Handle(), CHILDID_SELF); }));
    EXPECT_EQ(grid.Value(), "the last") << "what the grid itself tells";
    EXPECT_EQ(grid.Focus().Number(), CHILDID_SELF);
    EXPECT_EQ(grid.Selection(), std::vector<LONG>{});
}

TEST_F(AccessibleGrid, WithoutCellsThereIsNothingInIt) {
    Grid->SetFixedCols(0);
    Grid->SetFixedRows(0);
    Grid->SetColCount(0);
    Grid->SetRowCount(0);
    Show();
    const TSeen grid = Seen(*Grid);
    EXPECT_EQ(grid.Children().size(), 0u);
    EXPECT_EQ(grid.Selection(), std::vector<LONG>{});
    EXPECT_EQ(grid.Value(), "");
}

} // namespace
} // namespace kx
