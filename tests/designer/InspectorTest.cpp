// SPDX-License-Identifier: MIT
// Properties and events are edited in the inspector.

#include "WindowFixture.h"

namespace kx::test {
namespace {

using designer::TInspectorGrid;

class Inspector : public TDesignerWindowTest {
protected:
    Inspector() { Open(); }

    TInspectorGrid& Grid() const { return Window->ObjectInspector().Grid(); }
    int Row(const std::string& name) const {
        const int row = Grid().FindRow(name);
        EXPECT_GE(row, 0) << name;
        return row;
    }
    std::string Value(const std::string& name) const { return Grid().RowValue(Row(name)); }
    TPoint ValueAt(const std::string& name) const {
        Grid().SelectRow(Row(name));
        const TRect r = Grid().ValueRect(Row(name));
        return Grid().ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2});
    }
    /// Clicks the value, types the text over it and presses Return.
    void Enter(const std::string& name, std::string_view text) {
        ClickOn(ValueAt(name));
        Press('A', {VK_CONTROL});
        TypeText(text);
        Press(VK_RETURN);
    }
    void SelectOnForm(const std::string& name) { ClickOn(At(name)); }
    /// A point of the row's name, on the screen.
    TPoint NameAt(const std::string& name, int x = 30) const {
        const TRect r = Grid().RowRect(Row(name));
        return Grid().ClientToScreen({x, r.Top + 8});
    }
    TWinControl& Field() const {
        for (int i = 0; i < Grid().ControlCount(); ++i) {
            if (Grid().Controls(i)->Visible()) {
                return dynamic_cast<TWinControl&>(*Grid().Controls(i));
            }
        }
        throw Exception("there is no field");
    }
    /// How many pixels of the rows have the colour there.
    int CountOf(int color, const TRect& r) const {
        const HWND window = Grid().WindowHandle();
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        const HDC dc = GetDC(window);
        int count = 0;
        for (int y = r.Top; y < r.Bottom; ++y) {
            for (int x = r.Left; x < r.Right; ++x) {
                count += GetPixel(dc, x, y) == GetSysColor(color);
            }
        }
        ReleaseDC(window, dc);
        return count;
    }
};

TEST_F(Inspector, ShowsThePropertiesOfWhatIsSelected) {
    SelectOnForm("OkButton");
    EXPECT_EQ(Value("Caption"), "OK");
    EXPECT_EQ(Value("ModalResult"), "mrOk");
    EXPECT_EQ(Value("Enabled"), "True");
    EXPECT_EQ(Value("Anchors"), "[akLeft,akTop]");
    EXPECT_EQ(Value("Font"), "(TFont)");
    EXPECT_EQ(Grid().FindRow("OnClick"), -1);
    EXPECT_THAT(Grid().RowHint(Row("ModalResult")), testing::StartsWith("ModalResult: "));
    EXPECT_THAT(Grid().RowHint(Row("Width")), testing::EndsWith(" of TControl"));
    EXPECT_TRUE(Grid().RowIsBold(Row("ModalResult")));
    EXPECT_FALSE(Grid().RowIsBold(Row("Enabled")));
    EXPECT_EQ(Window->ObjectInspector().Components().Text(), "OkButton: TButton");
    Screenshot("designer-inspector", Window->Handle());
}

TEST_F(Inspector, WhatIsTypedIsSet) {
    SelectOnForm("OkButton");
    Enter("Left", "24");
    EXPECT_EQ(The("OkButton").Left(), 24);
    EXPECT_EQ(Designer().Steps().UndoText(), "Left");
    Enter("Cursor", "crHelp");
    EXPECT_EQ(The("OkButton").Cursor(), crHelp);
    Designer().Undo();
    Designer().Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Inspector, TheCaptionIsSeenLetterByLetter) {
    SelectOnForm("OkButton");
    ClickOn(ValueAt("Caption"));
    Press('A', {VK_CONTROL});
    TypeText("ye");
    Settle();
    EXPECT_EQ(The("OkButton").Caption(), "ye") << "before Return";
}

TEST_F(Inspector, AWrongValueIsToldBesideTheRowAndTheOldOneStays) {
    SelectOnForm("OkButton");
    for (const char* wrong : {"abc", "99999999999", "1.5", ""}) {
        Enter("Width", wrong);
        EXPECT_THAT(Grid().Error(), testing::Not(IsEmpty())) << wrong;
        EXPECT_EQ(The("OkButton").Width(), 75) << wrong;
        EXPECT_FALSE(Designer().CanUndo());
    }
    Screenshot("designer-error", Window->Handle());
    Enter("Width", "60");
    EXPECT_THAT(Grid().Error(), IsEmpty());
    EXPECT_EQ(The("OkButton").Width(), 60);
    Designer().Undo();
    Enter("Width", "abc");
    Press(VK_ESCAPE);
    EXPECT_THAT(Grid().Error(), IsEmpty());
    EXPECT_EQ(Value("Width"), "75");
    Enter("Name", "nameedit");
    EXPECT_THAT(Grid().Error(), HasSubstr("nameedit"));
    Press(VK_ESCAPE);
    Enter("Name", "2nd");
    EXPECT_THAT(Grid().Error(), testing::Not(IsEmpty()));
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Inspector, SetsAndPartsAreExpanded) {
    SelectOnForm("NameLabel");
    Grid().SelectRow(Row("Font"));
    const TRect r = Grid().RowRect(Row("Font"));
    ClickOn(Grid().ClientToScreen({8, (r.Top + r.Bottom) / 2}));
    EXPECT_THAT(Grid().RowHint(Row("Font.Size")), testing::StartsWith("Font.Size: "));
    Enter("Font.Size", "14");
    EXPECT_EQ(The("NameLabel").Font().Size(), 14);
    EXPECT_EQ(Value("ParentFont"), "False") << "follows";
    Grid().Expand(Row("Anchors"), true);
    Enter("Anchors.akRight", "True");
    EXPECT_EQ(The("NameLabel").Anchors(), (TAnchors{akLeft, akTop, akRight}));
    Designer().Undo();
    Designer().Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Inspector, SeveralComponentsAreEditedAtOnce) {
    Designer().Select({&The("OkButton"), &The("NameEdit")});
    Settle();
    EXPECT_EQ(Value("Left"), "") << "they differ";
    EXPECT_EQ(Value("Enabled"), "True");
    EXPECT_EQ(Grid().FindRow("Name"), -1);
    EXPECT_EQ(Grid().FindRow("ModalResult"), -1) << "an edit has none";
    Enter("Width", "60");
    EXPECT_EQ(The("OkButton").Width(), 60);
    EXPECT_EQ(The("NameEdit").Width(), 60);
    Designer().Undo();
    EXPECT_EQ(Text(), SampleForm) << "one step";
}

TEST_F(Inspector, ADoubleClickOnAnEventMakesItsHandler) {
    SelectOnForm("NameEdit");
    Grid().SetShowsEvents(true);
    const TRect r = Grid().RowRect(Row("OnChange"));
    DoubleClickAt(Grid().ClientToScreen({30, (r.Top + r.Bottom) / 2}));
    Settle();
    EXPECT_EQ(Value("OnChange"), "NameEditChange");
    EXPECT_THAT(Text(), HasSubstr("OnChange = NameEditChange"));
    Enter("OnEnter", "class");
    EXPECT_THAT(Grid().Error(), HasSubstr("class"));
    Press(VK_ESCAPE);
    Enter("OnEnter", "OkButtonClick");
    EXPECT_EQ(Value("OnEnter"), "OkButtonClick") << "the same signature";
    Enter("OnKeyPress", "OkButtonClick");
    EXPECT_THAT(Grid().Error(), HasSubstr("another kind"));
}

TEST_F(Inspector, AFilterLeavesJustWhatIsLookedFor) {
    SelectOnForm("OkButton");
    Window->ObjectInspector().Filter().SetText("wid");
    Settle();
    ASSERT_EQ(Grid().RowCount(), 1);
    EXPECT_EQ(Grid().RowName(0), "Width");
}

TEST_F(Inspector, TheListOfComponentsSelects) {
    TComboBox& list = Window->ObjectInspector().Components();
    const int index = list.Items().IndexOf("NameEdit: TEdit");
    ASSERT_GE(index, 0);
    ChooseInCombo(list.Handle(), index);
    Settle();
    EXPECT_EQ(PrimaryName(), "NameEdit");
}

TEST_F(Inspector, KeepsNothingOfADeletedComponent) {
    SelectOnForm("OkButton");
    ClickOn(ValueAt("Left"));
    TypeText("7");
    Designer().DeleteSelected();
    Settle();
    EXPECT_FALSE(Has("OkButton"));
    EXPECT_EQ(Value("Name"), "Box");
}

// --- The mouse on a name, and what is seen

TEST_F(Inspector, AClickOnANameGoesIntoItsField) {
    SelectOnForm("OkButton");
    Grid().SelectRow(Row("Left"));
    ClickOn(NameAt("Height"));
    EXPECT_EQ(Grid().RowName(Grid().SelectedRow()), "Height");
    EXPECT_TRUE(Field().Focused());
    EXPECT_EQ(dynamic_cast<TEdit&>(Field()).SelText(), "25") << "to be typed over";
    ClickOn(NameAt("Hint", 8)); // where others have their box
    EXPECT_TRUE(Field().Focused());
    ClickAt(NameAt("Height"), mbRight);
    Settle();
    EXPECT_EQ(Grid().RowName(Grid().SelectedRow()), "Hint") << "the other button chooses nothing";
}

TEST_F(Inspector, WhatWasTypedIsTakenWhenTheFocusGoes) {
    SelectOnForm("OkButton");
    ClickOn(ValueAt("Left"));
    Press('A', {VK_CONTROL});
    TypeText("24");
    Settle();
    Window->ObjectInspector().Filter().SetFocus();
    EXPECT_EQ(The("OkButton").Left(), 24);
    ClickOn(ValueAt("Cursor"));
    Press('A', {VK_CONTROL});
    TypeText("crhelp");
    Settle();
    Window->ObjectInspector().Filter().SetFocus();
    EXPECT_EQ(The("OkButton").Cursor(), crHelp);
}

TEST_F(Inspector, ToShowSeveralComponentsChangesNoneOfThem) {
    SelectOnForm("OkButton");
    ClickOn(ValueAt("Caption")); // whose letters are taken as they come
    Designer().Select({&The("OkButton"), &The("NameLabel")});
    Settle();
    EXPECT_EQ(Field().Text(), "") << "they differ";
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer().CanUndo());
}

TEST_F(Inspector, TheSplitLeavesRoomOnBothSidesAndShowsThatItMoves) {
    const int y = 50;
    const auto isPointer = [](LPCSTR shape) {
        return Until([=] { return GetCursor() == LoadCursorA(nullptr, shape); });
    };
    MoveMouse(Grid().ClientToScreen({40, y}));
    EXPECT_TRUE(isPointer(IDC_ARROW));
    MoveMouse(Grid().ClientToScreen({Grid().ValueRect(0).Left - 1, y}));
    EXPECT_TRUE(isPointer(IDC_SIZEWE));
    for (const int beside : {-3, 3}) {
        const int left = Grid().ValueRect(0).Left;
        DragFrom(Grid().ClientToScreen({left - 1 + beside, y}), 30, 0);
        EXPECT_GT(Grid().ValueRect(0).Left, left + 20) << "it need not be met to the pixel";
    }
    DragFrom(Grid().ClientToScreen({Grid().ValueRect(0).Left - 1, y}), 2000, 0);
    EXPECT_GT(Width(Grid().ValueRect(0)), 20) << "something of the values stays";
}

TEST_F(Inspector, RowsLookAsTheyAre) {
    SelectOnForm("NameLabel");
    Grid().SelectRow(Row("Color"));
    const auto value = [this](const char* name) { return Grid().ValueRect(Row(name)); };
    EXPECT_GT(CountOf(COLOR_GRAYTEXT, value("Anchors")), 10) << "it cannot be typed";
    EXPECT_EQ(CountOf(COLOR_GRAYTEXT, value("Align")), 0);
    const TRect row = Grid().RowRect(Row("Anchors"));
    const TRect box{6, row.Top + 6, 11, row.Top + 9}; // the upper half of the sign in the box
    EXPECT_GT(CountOf(COLOR_WINDOWTEXT, box), 0) << "a plus";
    Grid().Expand(Row("Anchors"), true);
    EXPECT_EQ(CountOf(COLOR_WINDOWTEXT, box), 0) << "a minus";
    const TRect color = Grid().RowRect(Row("Color"));
    Grid().SelectRow(Row("Color"));
    const TRect name{2, Grid().RowRect(Row("Color")).Top + 1, 14, Grid().RowRect(Row("Color")).Top + 15};
    EXPECT_EQ(CountOf(COLOR_HIGHLIGHT, name), Width(name) * Height(name)) << Height(color);
    const TRect button{value("Color").Right - 18, value("Color").Top + 2, value("Color").Right - 2,
                       value("Color").Bottom - 2};
    EXPECT_LT(CountOf(COLOR_WINDOW, button), Width(button) * Height(button) / 2) << "its button with dots";
}

} // namespace
} // namespace kx::test
