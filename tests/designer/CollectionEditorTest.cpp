// SPDX-License-Identifier: MIT
// The window in which the items of a collection are edited.

#include "CollectionFixture.h"

#include "kx/ide/ComponentEditors.h"
#include "kx/ui/widgets/ComCtrlsBars.h"

namespace kx::test {
namespace {

using designer::TCollectionForm;

constexpr const char* BarForm = "object OrderForm: TOrderForm\n"
                                "  Left = 300\n"
                                "  Top = 200\n"
                                "  Caption = 'Order'\n"
                                "  ClientHeight = 240\n"
                                "  ClientWidth = 320\n"
                                "  object OkButton: TButton\n"
                                "    Left = 8\n"
                                "    Top = 16\n"
                                "    Width = 75\n"
                                "    Height = 25\n"
                                "    Caption = 'OK'\n"
                                "    TabOrder = 0\n"
                                "  end\n"
                                "  object Bar: TStatusBar\n"
                                "    Left = 0\n"
                                "    Top = 221\n"
                                "    Width = 320\n"
                                "    Height = 19\n"
                                "    Panels = <\n"
                                "      item\n"
                                "        Text = 'one'\n"
                                "        Width = 60\n"
                                "      end\n"
                                "      item\n"
                                "        Text = 'two'\n"
                                "        Width = 70\n"
                                "      end\n"
                                "      item\n"
                                "        Text = 'three'\n"
                                "        Width = 80\n"
                                "      end>\n"
                                "  end\n"
                                "end\n";

class CollectionEditor : public TCollectionEditorTest {
protected:
    void OpenBar() {
        Open(BarForm);
        Designer().SelectOne(The("Bar"));
        Settle();
        Grid().EditRow(Grid().FindRow("Panels"));
        Settle();
        ASSERT_NE(Items(), nullptr);
    }
    TStatusBar& Bar() const { return The<TStatusBar>("Bar"); }
};

TEST_F(CollectionEditor, OpensFromTheInspectorAndByADoubleClick) {
    OpenBar();
    EXPECT_EQ(Value("Panels"), "(3 items)");
    EXPECT_TRUE(Grid().RowIsBold(Grid().FindRow("Panels")));
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - two\",\"2 - three\"");
    EXPECT_EQ(Items()->Caption(), "Bar.Panels");
    EXPECT_EQ(GetWindow(Items()->Handle(), GW_OWNER), Window->Handle()) << "it stays in front";
    EXPECT_FALSE(Designer().CanUndo());
    Screenshot("designer-collection", Window->Handle());
    TCollectionForm* const first = Items();
    DoubleClickAt(At("Bar"));
    Settle();
    EXPECT_THAT(ShownWindows(), ElementsAre(first)) << "the same one";
    EXPECT_EQ(GetComponentEditor(Bar(), Designer())->GetVerb(0), "Panels...");
    EXPECT_EQ(GetComponentEditor(The("OkButton"), Designer())->GetVerbCount(), 0);
}

TEST_F(CollectionEditor, AnEmptyCollectionIsTheDefault) {
    Open(SampleForm);
    TComponent* const bar =
        Designer().CreateComponent(TStatusBar::StaticClass(), &Designer().Form(), {0, 200, 320, 219});
    EXPECT_EQ(Value("Panels"), "(0 items)");
    EXPECT_FALSE(Grid().RowIsBold(Grid().FindRow("Panels")));
    dynamic_cast<TStatusBar&>(*bar).Panels().Add();
    Designer().Record("Add");
    EXPECT_EQ(Value("Panels"), "(1 item)");
    EXPECT_TRUE(Grid().RowIsBold(Grid().FindRow("Panels")));
}

TEST_F(CollectionEditor, ItemsAreAddedDeletedAndMoved) {
    OpenBar();
    EXPECT_FALSE(Button("DeleteButton").Enabled());
    EXPECT_FALSE(Button("UpButton").Enabled());
    EXPECT_FALSE(Button("DownButton").Enabled());
    Push("AddButton");
    EXPECT_EQ(Bar().Panels().Count(), 4);
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - two\",\"2 - three\",\"3 - TStatusPanel\"");
    EXPECT_THAT(Chosen(), ElementsAre(3));
    EXPECT_EQ(Designer().Steps().UndoText(), "Add item");
    EXPECT_TRUE(Button("UpButton").Enabled());
    EXPECT_FALSE(Button("DownButton").Enabled());
    Push("UpButton");
    EXPECT_EQ(Bar().Panels()[3].Text(), "three");
    EXPECT_THAT(Chosen(), ElementsAre(2)) << "it goes along";
    Push("DownButton");
    EXPECT_EQ(Bar().Panels()[2].Text(), "three");
    EXPECT_THAT(Chosen(), ElementsAre(3));
    ChooseLine(0);
    EXPECT_FALSE(Button("UpButton").Enabled());
    Push("DeleteButton");
    EXPECT_EQ(Lines(), "\"0 - two\",\"1 - three\",\"2 - TStatusPanel\"");
    EXPECT_THAT(Chosen(), ElementsAre(0));
    EXPECT_EQ(Designer().Steps().UndoText(), "Delete item");
    EXPECT_THAT(Text(), HasSubstr("    Panels = <\n      item\n        Text = 'two'\n        Width = 70\n      end\n"
                                  "      item\n        Text = 'three'\n        Width = 80\n      end\n"
                                  "      item\n        Width = 50\n      end>\n"));
    EXPECT_EQ(Designer().Steps().Position(), 4U);
    UndoAll();
    EXPECT_EQ(Text(), BarForm);
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - two\",\"2 - three\"");
    while (Designer().CanRedo()) {
        Designer().Redo();
    }
    EXPECT_EQ(Lines(), "\"0 - two\",\"1 - three\",\"2 - TStatusPanel\"");
}

TEST_F(CollectionEditor, KeysDoTheSame) {
    OpenBar();
    Items()->Items().SetFocus();
    Press(VK_INSERT);
    ASSERT_EQ(Bar().Panels().Count(), 4);
    Press(VK_UP, {VK_CONTROL});
    EXPECT_EQ(Bar().Panels()[3].Text(), "three");
    Press(VK_DOWN, {VK_CONTROL});
    Press(VK_DOWN, {VK_CONTROL});
    EXPECT_EQ(Bar().Panels()[2].Text(), "three") << "the last one stays the last one";
    Press(VK_UP);
    EXPECT_THAT(Chosen(), ElementsAre(2)) << "alone they choose";
    Press(VK_DOWN);
    Press(VK_DELETE);
    EXPECT_EQ(Bar().Panels().Count(), 3);
    Press('Z', {VK_CONTROL});
    EXPECT_EQ(Bar().Panels().Count(), 4);
    Press('Y', {VK_CONTROL});
    EXPECT_EQ(Bar().Panels().Count(), 3);
    UndoAll();
    EXPECT_EQ(Text(), BarForm);
    Press(VK_ESCAPE);
    EXPECT_EQ(Items(), nullptr);
}

TEST_F(CollectionEditor, SeveralItemsAreMovedAndDeletedAtOnce) {
    OpenBar();
    ChooseLine(1);
    ChooseLine(2, {VK_CONTROL});
    ASSERT_THAT(Chosen(), ElementsAre(1, 2));
    EXPECT_THAT(Window->Status(), HasSubstr("2 items are selected"));
    Push("UpButton");
    EXPECT_EQ(Lines(), "\"0 - two\",\"1 - three\",\"2 - one\"");
    EXPECT_THAT(Chosen(), ElementsAre(0, 1));
    Push("DownButton");
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - two\",\"2 - three\"");
    Push("DeleteButton");
    EXPECT_EQ(Lines(), "\"0 - one\"");
    UndoAll();
    EXPECT_EQ(Text(), BarForm);
}

TEST_F(CollectionEditor, TheChosenItemShowsInTheInspector) {
    OpenBar();
    ChooseLine(1);
    EXPECT_EQ(Value("Text"), "two");
    EXPECT_EQ(Value("Width"), "70");
    EXPECT_EQ(Window->ObjectInspector().Components().Text(), "Bar.Panels[1]: TStatusPanel");
    EXPECT_THAT(Window->Status(), HasSubstr("Bar.Panels[1]: TStatusPanel"));
    Grid().SelectRow(Grid().FindRow("Text"));
    const TRect r = Grid().ValueRect(Grid().FindRow("Text"));
    ClickOn(Grid().ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2}));
    Press('A', {VK_CONTROL});
    TypeText("zwei");
    Press(VK_RETURN);
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - zwei\",\"2 - three\"") << "the window follows";
    EXPECT_THAT(Text(), HasSubstr("Text = 'zwei'"));
    EXPECT_THAT(Chosen(), ElementsAre(1));
    Designer().Undo();
    EXPECT_EQ(Text(), BarForm);
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - two\",\"2 - three\"");
    EXPECT_THAT(Chosen(), ElementsAre(1));
    EXPECT_EQ(Value("Text"), "two") << "of the item that stands there now";
    ClickOn(At("OkButton"));
    EXPECT_THAT(Chosen(), IsEmpty());
    EXPECT_EQ(Value("Caption"), "OK");
}

TEST_F(CollectionEditor, AnUndoElsewhereLeavesTheChosenItem) {
    OpenBar();
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    ChooseLine(1);
    Designer().Undo();
    EXPECT_EQ(The("OkButton").Left(), 8);
    EXPECT_THAT(Chosen(), ElementsAre(1));
    EXPECT_EQ(Value("Text"), "two");
}

TEST_F(CollectionEditor, FollowsTheComponentAndTheForm) {
    OpenBar();
    Designer().Rename(Bar(), "Footer");
    EXPECT_EQ(Items()->Caption(), "Footer.Panels");
    std::string text = Text();
    text.replace(text.find("'two'"), 5, "'2'");
    Designer().Replace(text, "Text");
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - 2\",\"2 - three\"") << "of the form that was read anew";
    The<TStatusBar>("Footer").Panels().Add();
    Designer().Record("Add");
    EXPECT_EQ(Items()->Items().Items().Count(), 4);
    text.erase(text.find("  object Footer"), text.rfind("end\n") - text.find("  object Footer"));
    Designer().Replace(text, "Text");
    Settle();
    EXPECT_EQ(Items(), nullptr) << "the component is not there any more";
}

TEST_F(CollectionEditor, ClosesWithItsComponent) {
    OpenBar();
    ChooseLine(2);
    Designer().SelectOne(Bar());
    Designer().DeleteSelected();
    Settle();
    EXPECT_EQ(Items(), nullptr);
    Designer().Undo();
    EXPECT_EQ(Text(), BarForm);
}

TEST_F(CollectionEditor, ClosesWithItsForm) {
    OpenBar();
    ChooseLine(2);
    Window->Command("CloseForm");
    Settle();
    EXPECT_EQ(Items(), nullptr);
}

TEST_F(CollectionEditor, ClosedByTheUserItLeavesTheComponentSelected) {
    OpenBar();
    ChooseLine(2);
    SendMessageA(Items()->Handle(), WM_CLOSE, 0, 0);
    Settle();
    EXPECT_EQ(Items(), nullptr);
    EXPECT_EQ(PrimaryName(), "Bar");
    Designer().Undo();
}

// --- The window beside the form

TEST_F(CollectionEditor, StandsInTheCornerWhereNoFormBegins) {
    OpenBar();
    const TRect surface = ScreenRectOf(Surface().WindowHandle());
    const TRect window = ScreenRectOf(Items()->Handle());
    EXPECT_LE(window.Right, surface.Right);
    EXPECT_GE(window.Top, surface.Top);
    EXPECT_GT(window.Left, ScreenRectOf(Designer().Form().WindowHandle()).Left + 300);
    EXPECT_EQ(window.Top, surface.Top + 24);
}

TEST_F(CollectionEditor, AskedForAgainItGetsTheKeys) {
    OpenBar();
    Surface().SetFocus();
    ASSERT_FALSE(Items()->Active());
    Grid().EditRow(Grid().FindRow("Panels"));
    Settle();
    EXPECT_TRUE(Items()->Active());
}

TEST_F(CollectionEditor, ClosedWhileSomethingElseIsSelectedItLeavesThat) {
    OpenBar();
    ClickOn(At("OkButton"));
    Items()->Close();
    Settle();
    EXPECT_EQ(PrimaryName(), "OkButton");
}

TEST_F(CollectionEditor, WhatIsChosenInAFormThatIsReadAnewIsForgottenWithTheNextChoice) {
    OpenBar();
    ChooseLine(1);
    Designer().Replace(Text(), "Text"); // the same, so that nobody hears of a change
    ClickOn(At("OkButton"));
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    EXPECT_EQ(PrimaryName(), "OkButton");
    EXPECT_THAT(Chosen(), IsEmpty());
}

TEST_F(CollectionEditor, PackagesHearOfItsItems) {
    struct TListener final : IDesignNotification {
        TListener() { RegisterDesignNotification(*this); }
        ~TListener() { UnregisterDesignNotification(*this); }
        void ItemDeleted(IDesigner&, TPersistent& item) override { Deleted.push_back(&item); }
        void ItemInserted(IDesigner&, TPersistent& item) override { Inserted.push_back(&item); }
        void ItemsModified(IDesigner&) override {}
        void SelectionChanged(IDesigner&, const TDesignSelection&) override {}
        void DesignerClosed(IDesigner&, bool) override {}
        std::vector<TPersistent*> Deleted, Inserted;
    };
    OpenBar();
    TListener listener;
    PressButton(Button("AddButton").Handle());
    TPersistent* const item = Bar().Panels().GetItem(3);
    EXPECT_THAT(listener.Inserted, ElementsAre(item));
    PressButton(Button("DeleteButton").Handle());
    EXPECT_THAT(listener.Deleted, ElementsAre(item));
}

// --- Many items, the last one, and none

TEST_F(CollectionEditor, TheListStaysWhereItIsRead) {
    OpenBar();
    for (int i = 0; i < 40; ++i) {
        Bar().Panels().Add();
    }
    Designer().Record("Add");
    Items()->Items().SetTopIndex(15);
    Bar().Panels()[0].SetText("first");
    Designer().Record("Text");
    EXPECT_EQ(Items()->Items().TopIndex(), 15);
}

TEST_F(CollectionEditor, DeletingGoesOnFromTheEndUntilNothingIsLeft) {
    OpenBar();
    Items()->Items().SetFocus();
    ChooseLine(2);
    Press(VK_DELETE);
    EXPECT_THAT(Chosen(), ElementsAre(1)) << "the new last one";
    Press(VK_DELETE);
    Press(VK_DELETE);
    EXPECT_EQ(Bar().Panels().Count(), 0);
    EXPECT_EQ(PrimaryName(), "Bar");
    EXPECT_FALSE(Button("DeleteButton").Enabled());
    Press(VK_DELETE); // does nothing
    Press(VK_INSERT);
    EXPECT_EQ(Lines(), "\"0 - TStatusPanel\"");
    UndoAll();
    EXPECT_EQ(Text(), BarForm);
}

TEST_F(CollectionEditor, ArrowsGoOnFromTheItemThatIsSelectedElsewhere) {
    OpenBar();
    Items()->Items().SetFocus();
    Designer().Select({Bar().Panels().GetItem(1)});
    Press(VK_DOWN);
    EXPECT_THAT(Chosen(), ElementsAre(2));
    Press(VK_UP, {VK_CONTROL});
    Press(VK_UP, {VK_CONTROL});
    Press(VK_UP, {VK_CONTROL});
    EXPECT_EQ(Lines(), "\"0 - three\",\"1 - one\",\"2 - two\"") << "the first one stays the first one";
    TypeText("zy"); // without Ctrl it is no command
    Settle();
    EXPECT_EQ(Lines(), "\"0 - three\",\"1 - one\",\"2 - two\"");
}

TEST_F(CollectionEditor, AButtonThatCannotBeUsedAnyMoreGivesTheKeysToTheList) {
    OpenBar();
    ChooseLine(1);
    Button("UpButton").SetFocus();
    Press(VK_SPACE);
    EXPECT_EQ(Lines(), "\"0 - two\",\"1 - one\",\"2 - three\"");
    EXPECT_TRUE(Items()->Items().Focused());
    Press(VK_DOWN, {VK_CONTROL});
    EXPECT_EQ(Lines(), "\"0 - one\",\"1 - two\",\"2 - three\"");
}

} // namespace
} // namespace kx::test
