// SPDX-License-Identifier: MIT
// The rows of the inspector: which are shown and where, and how the mouse and the keyboard go through them.

#include "WindowFixture.h"

#include "designer/DialogEditors.h"
#include "tests/ui/WheelLines.h"

namespace kx::test {
namespace {

class InspectorRows : public TDesignerWindowTest {
protected:
    InspectorRows() { Open(); }

    designer::TInspector& Inspector() const { return Window->ObjectInspector(); }
    designer::TInspectorGrid& Grid() const { return Inspector().Grid(); }
    int Row(const std::string& name) const {
        const int row = Grid().FindRow(name);
        EXPECT_GE(row, 0) << name;
        return row;
    }
    std::string Value(const std::string& name) const { return Grid().RowValue(Row(name)); }
    std::string Chosen() const { return Grid().SelectedRow() < 0 ? "" : Grid().RowName(Grid().SelectedRow()); }
    TPoint ValueAt(const std::string& name) const {
        Grid().SelectRow(Row(name));
        const TRect r = Grid().ValueRect(Row(name));
        return Grid().ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2});
    }
    /// Puts the text into the field, without more.
    void Type(const std::string& name, std::string_view text) {
        ClickOn(ValueAt(name));
        Press('A', {VK_CONTROL});
        TypeText(text);
        Settle();
    }
    int Top() const { return Grid().RowRect(0).Top; }
    void Scroll(int command, int position = 0) const {
        SendMessageA(Grid().WindowHandle(), WM_VSCROLL, MAKEWPARAM(command, position), 0);
    }
    bool IsInView(const std::string& name) const {
        const TRect r = Grid().RowRect(Row(name));
        return r.Top >= 0 && r.Bottom <= Grid().ClientHeight();
    }
    /// The control in which the value is edited.
    TWinControl& Field() const {
        for (int i = 0; i < Grid().ControlCount(); ++i) {
            if (Grid().Controls(i)->Visible()) {
                return dynamic_cast<TWinControl&>(*Grid().Controls(i));
            }
        }
        throw Exception("there is no field");
    }
};

// --- Scrolling

TEST_F(InspectorRows, ScrollByTheBar) {
    Grid().SelectRow(0);
    const int height = Grid().RowRect(0).Bottom;
    Scroll(SB_LINEDOWN);
    EXPECT_EQ(Top(), -height);
    Scroll(SB_PAGEDOWN);
    EXPECT_EQ(Top(), -height - Grid().ClientHeight());
    Scroll(SB_PAGEUP);
    Scroll(SB_LINEUP);
    EXPECT_EQ(Top(), 0);
    Scroll(SB_LINEUP);
    EXPECT_EQ(Top(), 0);
    Scroll(SB_THUMBTRACK, 33);
    EXPECT_EQ(Top(), -33);
    Scroll(SB_THUMBTRACK, 30000);
    EXPECT_EQ(Grid().RowRect(Grid().RowCount() - 1).Bottom, Grid().ClientHeight()) << "the last row is at the end";
}

TEST_F(InspectorRows, TheWheelScrollsAsManyRowsAsTheUserHasChosen) {
    Grid().SelectRow(0);
    const int height = Grid().RowRect(0).Bottom;
    const auto turn = [&](int delta) {
        SendMessageA(Grid().WindowHandle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)), 0);
        EXPECT_EQ(Top() % height, 0);
        return -Top() / height;
    };
    ExpectTwoLinesANotch(turn);
    {
        const TWheelLines lines(0);
        EXPECT_EQ(turn(-WHEEL_DELTA), 0);
    }
    const TWheelLines lines(WHEEL_PAGESCROLL);
    const int page = Grid().ClientHeight() / height;
    ASSERT_GT(Grid().RowCount(), 2 * page + 1);
    EXPECT_EQ(turn(-WHEEL_DELTA), page);
    EXPECT_EQ(turn(WHEEL_DELTA), 0);
}

TEST_F(InspectorRows, TheWheelLeavesWhatIsInTheField) {
    ClickOn(At("OkButton"));
    for (const char* name : {"Left", "ModalResult"}) { // one with a list, which the wheel would go through
        ClickOn(ValueAt(name));
        const std::string before = Value(name);
        Scroll(SB_THUMBTRACK, 0);
        SendMessageA(Field().Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
        EXPECT_LT(Top(), 0) << name;
        EXPECT_EQ(Value(name), before);
    }
    EXPECT_EQ(Text(), SampleForm);
    auto& list = dynamic_cast<TComboBox&>(Field());
    list.SetDroppedDown(true);
    const int top = Top();
    SendMessageA(list.Handle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-WHEEL_DELTA)), 0);
    EXPECT_EQ(Top(), top) << "an open list is scrolled itself";
    list.SetDroppedDown(false);
}

TEST_F(InspectorRows, TheChosenOneIsScrolledIntoView) {
    ClickOn(At("OkButton"));
    const std::string last = Grid().RowName(Grid().RowCount() - 1);
    ASSERT_FALSE(IsInView(last));
    Grid().SelectRow(Row(last));
    EXPECT_TRUE(IsInView(last));
    const std::string first = Grid().RowName(0);
    ASSERT_FALSE(IsInView(first));
    Grid().SelectRow(0);
    EXPECT_TRUE(IsInView(first));
}

TEST_F(InspectorRows, AFilterShowsItsFirstRow) {
    Scroll(SB_THUMBTRACK, 30000);
    ASSERT_LT(Top(), 0);
    Inspector().Filter().SetText("t"); // many, but fewer
    EXPECT_EQ(Top(), 0);
}

// --- Which are shown

TEST_F(InspectorRows, PartsStayWithWhatTheFilterFinds) {
    ClickOn(At("NameLabel"));
    Grid().Expand(Row("Font"), true);
    Inspector().Filter().SetText("font");
    Settle();
    EXPECT_GE(Grid().FindRow("Font.Size"), 0);
    EXPECT_EQ(Grid().FindRow("Width"), -1);
    EXPECT_EQ(Chosen(), "Font") << "the row that was expanded";
}

TEST_F(InspectorRows, TheSameRowIsChosenForTheNextComponent) {
    ClickOn(At("OkButton"));
    EXPECT_EQ(Chosen(), "Caption") << "the one that is wanted first";
    ClickOn(ValueAt("Left"));
    ClickOn(At("NameEdit"));
    EXPECT_EQ(Chosen(), "Left");
    EXPECT_EQ(Field().Text(), "80");
}

TEST_F(InspectorRows, TheChosenRowOfTheNextComponentIsInView) {
    ClickOn(At("OkButton"));
    Grid().SelectRow(Row("Width"));
    Scroll(SB_THUMBTRACK, 0);
    ASSERT_FALSE(IsInView("Width"));
    ClickOn(At("NameEdit"));
    EXPECT_EQ(Chosen(), "Width");
    EXPECT_TRUE(IsInView("Width"));
}

TEST_F(InspectorRows, TabsShowPropertiesOrEvents) {
    ClickOn(At("OkButton"));
    Type("Left", "24");
    RECT r;
    SendMessageA(Inspector().Tabs().Handle(), TCM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&r));
    ClickOn(Inspector().Tabs().ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2}));
    EXPECT_TRUE(Grid().ShowsEvents());
    EXPECT_EQ(Value("OnClick"), "OkButtonClick");
    EXPECT_EQ(Grid().FindRow("Left"), -1);
    EXPECT_EQ(The("OkButton").Left(), 24) << "what was typed is not lost";
    SendMessageA(Inspector().Tabs().Handle(), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&r));
    ClickOn(Inspector().Tabs().ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2}));
    EXPECT_EQ(Grid().FindRow("OnClick"), -1);
}

TEST_F(InspectorRows, APartThatIsChangedMakesTheWholeBold) {
    ClickOn(At("OkButton"));
    EXPECT_FALSE(Grid().RowIsBold(Row("Constraints")));
    The("OkButton").Constraints().SetMinWidth(10);
    Designer().Record("MinWidth");
    EXPECT_TRUE(Grid().RowIsBold(Row("Constraints")));
}

TEST_F(InspectorRows, TheHintFollowsTheRow) {
    ClickOn(At("OkButton"));
    Grid().SelectRow(Row("Width"));
    std::string hint;
    for (int i = 0; i < Inspector().ControlCount(); ++i) {
        const std::string caption = Inspector().Controls(i)->Caption();
        hint = caption.starts_with(" Width") ? caption : hint;
    }
    EXPECT_EQ(hint, " " + Grid().RowHint(Row("Width")));
}

// --- An error

TEST_F(InspectorRows, AnErrorHasALineBelowItsRow) {
    ClickOn(At("OkButton"));
    const int height = Height(Grid().RowRect(0));
    Type("Color", "loud");
    const TRect next = Grid().RowRect(Row("Color") + 1);
    Press(VK_RETURN);
    ASSERT_THAT(Grid().Error(), testing::Not(IsEmpty()));
    EXPECT_EQ(Height(Grid().RowRect(Row("Color"))), 2 * height);
    EXPECT_EQ(Height(Grid().RowRect(Row("Color") + 1)), height);
    EXPECT_EQ(Grid().RowRect(Row("Color") + 1).Top, next.Top + height);
    EXPECT_EQ(Field().Text(), "loud");
    Press(VK_ESCAPE);
    EXPECT_EQ(Grid().RowRect(Row("Color") + 1), next);
    EXPECT_EQ(Field().Text(), "clBtnFace");
}

TEST_F(InspectorRows, AnErrorInTheLastRowIsScrolledIntoView) {
    ClickOn(At("OkButton"));
    const std::string last = Grid().RowName(Grid().RowCount() - 1);
    ASSERT_EQ(last, "Width");
    Type(last, "wide");
    Press(VK_RETURN);
    ASSERT_THAT(Grid().Error(), testing::Not(IsEmpty()));
    EXPECT_TRUE(IsInView(last));
    Scroll(SB_THUMBTRACK, 30000);
    EXPECT_TRUE(IsInView(last)) << "its line is a part of what is scrolled";
}

TEST_F(InspectorRows, AWrongValueIsGivenUpWhenTheUserGoesOn) {
    ClickOn(At("OkButton"));
    Type("Left", "far");
    ClickOn(ValueAt("Top"));
    EXPECT_THAT(Grid().Error(), IsEmpty());
    EXPECT_EQ(Chosen(), "Top");
    EXPECT_EQ(Value("Left"), "8");
    Type("Left", "24");
    ClickOn(ValueAt("Top"));
    EXPECT_EQ(Value("Left"), "24") << "a right one is taken";
}

TEST_F(InspectorRows, AnotherChangeLeavesWhatIsBeingTyped) {
    ClickOn(At("OkButton"));
    Type("Left", "24");
    The("NameEdit").SetTop(20);
    Designer().Record("Move");
    EXPECT_EQ(Field().Text(), "24");
    Press(VK_RETURN);
    EXPECT_EQ(The("OkButton").Left(), 24);
}

// --- Fields

TEST_F(InspectorRows, TheLettersOfOtherValuesAreTakenTogether) {
    ClickOn(At("OkButton"));
    Type("Left", "24");
    EXPECT_EQ(The("OkButton").Left(), 8) << "before Return";
    EXPECT_FALSE(Designer().CanUndo());
    Press(VK_RETURN);
    EXPECT_EQ(Designer().Steps().Position(), 1U);
    Press(VK_RETURN);
    EXPECT_EQ(Designer().Steps().Position(), 1U);
}

TEST_F(InspectorRows, WhatCannotBeTypedIsReadOnly) {
    ClickOn(At("OkButton"));
    Type("Font", "x");
    EXPECT_EQ(Field().Text(), "(TFont)");
    ClickOn(ValueAt("Left"));
    EXPECT_FALSE(dynamic_cast<TEdit&>(Field()).ReadOnly());
}

TEST_F(InspectorRows, NamesToChooseFromAreSorted) {
    ClickOn(At("NameLabel"));
    ClickOn(ValueAt("FocusControl"));
    auto& list = dynamic_cast<TComboBox&>(Field());
    TStringList sorted;
    sorted.Assign(&list.Items());
    sorted.Sort();
    EXPECT_GE(list.Items().Count(), 3);
    EXPECT_EQ(list.Items().CommaText(), sorted.CommaText());
    ASSERT_GE(list.Items().IndexOf("OkButton"), 0);
    ChooseInCombo(list.Handle(), list.Items().IndexOf("OkButton"));
    Settle();
    EXPECT_EQ(The<TLabel>("NameLabel").FocusControl(), &The("OkButton")) << "taken at once";
}

TEST_F(InspectorRows, ArrowsGoThroughTheRows) {
    ClickOn(At("OkButton"));
    ClickOn(ValueAt("Left"));
    const int row = Grid().SelectedRow();
    Press(VK_DOWN);
    EXPECT_EQ(Grid().SelectedRow(), row + 1);
    Press(VK_UP);
    Press(VK_UP);
    EXPECT_EQ(Grid().SelectedRow(), row - 1);
    EXPECT_TRUE(Field().Focused());
    ClickOn(ValueAt("ModalResult"));
    const int withList = Grid().SelectedRow();
    Press(VK_DOWN, {VK_MENU});
    EXPECT_EQ(Grid().SelectedRow(), withList) << "it opens the list";
    EXPECT_TRUE(dynamic_cast<TComboBox&>(Field()).DroppedDown());
    Press(VK_DOWN, {VK_MENU});
}

TEST_F(InspectorRows, CtrlEnterEdits) {
    ClickOn(At("NameEdit"));
    Grid().SetShowsEvents(true);
    ClickOn(ValueAt("OnChange"));
    Press(VK_RETURN, {VK_CONTROL});
    EXPECT_EQ(Value("OnChange"), "NameEditChange");
}

TEST_F(InspectorRows, KeysWorkWithoutAField) {
    ClickOn(At("NameLabel"));
    Grid().SelectRow(Row("Font"));
    Grid().SetFocus();
    Press(VK_ADD);
    EXPECT_GE(Grid().FindRow("Font.Size"), 0);
    Grid().SetFocus();
    Press(VK_SUBTRACT);
    EXPECT_EQ(Grid().FindRow("Font.Size"), -1);
    Grid().SetFocus();
    const int row = Grid().SelectedRow();
    Press(VK_DOWN);
    EXPECT_EQ(Grid().SelectedRow(), row + 1);
    Grid().SetFocus();
    Press(VK_UP);
    EXPECT_EQ(Grid().SelectedRow(), row);
    Grid().SetShowsEvents(true);
    Grid().SelectRow(Row("OnClick"));
    Grid().SetFocus();
    Press(VK_RETURN);
    EXPECT_EQ(Value("OnClick"), "NameLabelClick");
}

TEST_F(InspectorRows, TheBoxExpandsAndClosesAtItsIndent) {
    ClickOn(At("NameLabel"));
    const auto clickName = [this](const std::string& name, int x) {
        Grid().SelectRow(Row(name));
        const TRect r = Grid().RowRect(Row(name));
        ClickOn(Grid().ClientToScreen({x, r.Top + 8}));
    };
    clickName("Font", 8);
    ASSERT_GE(Grid().FindRow("Font.Style"), 0);
    clickName("Font.Style", 20);
    ASSERT_GE(Grid().FindRow("Font.Style.fsBold"), 0);
    clickName("Font.Style", 40); // its name
    EXPECT_GE(Grid().FindRow("Font.Style.fsBold"), 0);
    clickName("Font.Style", 20);
    EXPECT_EQ(Grid().FindRow("Font.Style.fsBold"), -1);
    clickName("Font", 8);
    EXPECT_EQ(Grid().FindRow("Font.Style"), -1);
}

TEST_F(InspectorRows, TheButtonWithDotsOpensTheWindow) {
    Designer().CreateComponent(TListBox::StaticClass(), &Designer().Form(), {16, 160, 116, 220});
    Settle();
    Grid().SelectRow(Row("Items"));
    const TRect r = Grid().ValueRect(Row("Items"));
    EXPECT_LT(Field().Left() + Field().Width(), r.Right - 15) << "it leaves room for the button";
    bool isShown = false;
    TTestDriver driver({{"the lines", [] { return FormOfClass("TLinesForm") != nullptr; },
                         [&] {
                             isShown = true;
                             FormOfClass("TLinesForm")->Close();
                         }}});
    driver.Run([&] {
        ClickOn(Grid().ClientToScreen({r.Right - 8, (r.Top + r.Bottom) / 2}));
        return true;
    });
    EXPECT_TRUE(isShown);
}

TEST_F(InspectorRows, TheSplitIsDragged) {
    const TRect before = Grid().ValueRect(0);
    const TPoint from = Grid().ClientToScreen({before.Left - 1, 100});
    DragFrom(from, 30, 0);
    EXPECT_NEAR(Grid().ValueRect(0).Left, before.Left + 30, 3);
    EXPECT_EQ(Grid().ValueRect(0).Right, before.Right);
    MoveMouse({from.X - 20, from.Y});
    Settle();
    EXPECT_NEAR(Grid().ValueRect(0).Left, before.Left + 30, 3) << "it has been let go";
    DragFrom(Grid().ClientToScreen({Grid().ValueRect(0).Left - 1, 100}), -2000, 0);
    EXPECT_GT(Grid().ValueRect(0).Left, 20) << "something of the names stays";
}

} // namespace
} // namespace kx::test
