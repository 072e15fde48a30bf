// SPDX-License-Identifier: MIT
// The tree of components.

#include "WindowFixture.h"

#include <commctrl.h>

namespace kx::test {
namespace {

class Structure : public TDesignerWindowTest {
protected:
    Structure() { Open(); }

    designer::TStructure& Tree() const { return Window->ComponentTree(); }
    /// A point of the component's row, on the screen, so many parts of ten from its top.
    TPoint Row(const std::string& name, int tenths = 5) const {
        TTreeNode* const node = Tree().NodeOf(name);
        EXPECT_NE(node, nullptr) << name;
        const TRect r = node->DisplayRect(true);
        return Tree().ClientToScreen({r.Left + 12, r.Top + (r.Bottom - r.Top) * tenths / 10});
    }
    void DragRow(const std::string& name, const std::string& to, int tenths) {
        const TPoint from = Row(name);
        const TPoint target = Row(to, tenths);
        DragFrom(from, target.X - from.X, target.Y - from.Y);
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const TComponent* component : Designer().AllComponents()) {
            names.push_back(component->Name());
        }
        return names;
    }
};

TEST_F(Structure, ShowsEachComponentBelowTheOneThatItIsIn) {
    ASSERT_NE(Tree().NodeOf("OkButton"), nullptr);
    EXPECT_EQ(Tree().NodeOf("OkButton")->Text(), "OkButton: TButton");
    EXPECT_EQ(Tree().NodeOf("OkButton")->Parent(), Tree().NodeOf("Box"));
    EXPECT_EQ(Tree().NodeOf("Gauge")->Text(), "Gauge: TFuelGauge");
    EXPECT_EQ(Tree().NodeOf("Box")->Parent(), Tree().Items().GetFirstNode());
    EXPECT_TRUE(Tree().NodeOf("Box")->Expanded());
}

TEST_F(Structure, SelectsBothWays) {
    ClickOn(Row("OkButton"));
    EXPECT_EQ(PrimaryName(), "OkButton");
    ClickOn(At("NameEdit"));
    EXPECT_EQ(Tree().Selected(), Tree().NodeOf("NameEdit"));
    EXPECT_EQ(PrimaryName(), "NameEdit");
}

TEST_F(Structure, CtrlAddsToTheSelectionAndTakesAway) {
    const auto ctrlClick = [this](const char* name) {
        keybd_event(VK_CONTROL, 0, 0, 0);
        ClickAt(Row(name));
        Settle();
        keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
        Settle();
    };
    ClickOn(Row("OkButton"));
    ctrlClick("NameEdit");
    ctrlClick("Gauge");
    ctrlClick("NameEdit");
    EXPECT_THAT(Designer().SelectedComponents(), ElementsAre(&The("OkButton"), &The("Gauge")));
    EXPECT_EQ(Tree().Selected(), Tree().NodeOf("OkButton"));
}

TEST_F(Structure, ARowDraggedOntoAContainerMovesIntoIt) {
    DragRow("NameEdit", "Box", 5);
    EXPECT_EQ(The("NameEdit").Parent(), &The("Box"));
    EXPECT_THAT(Names(), ElementsAre(Designer().Form().Name(), "NameLabel", "Box", "OkButton", "NameEdit", "Gauge"));
    EXPECT_EQ(The<TLabel>("NameLabel").FocusControl(), &The("NameEdit")) << "references stay";
    EXPECT_EQ(Tree().NodeOf("NameEdit")->Parent(), Tree().NodeOf("Box"));
    EXPECT_EQ(PrimaryName(), "NameEdit");
    EXPECT_EQ(Designer().Steps().UndoText(), "Move");
    Designer().Undo();
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Structure, ARowDraggedToTheEdgeOfAnotherGoesThere) {
    DragRow("Gauge", "NameLabel", 1);
    EXPECT_THAT(Names(), ElementsAre(Designer().Form().Name(), "Gauge", "NameLabel", "NameEdit", "Box", "OkButton"));
    DragRow("Gauge", "NameEdit", 9);
    EXPECT_THAT(Names(), ElementsAre(Designer().Form().Name(), "NameLabel", "NameEdit", "Gauge", "Box", "OkButton"));
    DragRow("OkButton", "NameLabel", 1);
    EXPECT_THAT(Names(), ElementsAre(Designer().Form().Name(), "OkButton", "NameLabel", "NameEdit", "Gauge", "Box"));
    EXPECT_EQ(The("OkButton").Parent(), &Designer().Form());
    EXPECT_THAT(Text(), HasSubstr("  object Gauge: TFuelGauge\n    Left = 230\n    Top = 60\n    Width = 60\n"
                                  "    Height = 60\n    Level = 75\n  end\n"));
    while (Designer().CanUndo()) {
        Designer().Undo();
    }
    EXPECT_EQ(Text(), SampleForm);
}

TEST_F(Structure, TheEdgesOfAContainerAreBesideIt) {
    DragRow("Gauge", "Box", 1);
    EXPECT_THAT(Names(), ElementsAre(Designer().Form().Name(), "NameLabel", "NameEdit", "Gauge", "Box", "OkButton"));
    Designer().CreateComponent(TPanel::StaticClass(), &Designer().Form(), {220, 150, 310, 230});
    DragRow("Gauge", "Panel1", 9); // with nothing in it
    EXPECT_THAT(Names(),
                ElementsAre(Designer().Form().Name(), "NameLabel", "NameEdit", "Box", "OkButton", "Panel1", "Gauge"));
    DragRow("Gauge", "Box", 9); // above what is in it
    EXPECT_EQ(The("Gauge").Parent(), &The("Box"));
}

TEST_F(Structure, WhatADropWouldDoIsShown) {
    const TPoint from = Row("Gauge");
    const TPoint to = Row("Box");
    const auto target = [this] { return SendMessageA(Tree().Handle(), TVM_GETNEXTITEM, TVGN_DROPHILITE, 0); };
    PressAt(from);
    MoveMouse({from.X, from.Y - 6});
    MoveMouse({from.X, from.Y - 12});
    MoveMouse(to);
    EXPECT_TRUE(Until([&] { return target() != 0; })) << "the component that it would go into";
    ReleaseAt(to);
    Settle();
    EXPECT_EQ(target(), 0);
}

TEST_F(Structure, SeveralSelectedOnesAreBold) {
    const auto isBold = [this](const char* name) {
        TVITEMA item{};
        item.mask = TVIF_HANDLE | TVIF_STATE;
        item.stateMask = TVIS_BOLD;
        const TRect r = Tree().NodeOf(name)->DisplayRect(true);
        TVHITTESTINFO hit{};
        hit.pt = {r.Left + 1, r.Top + 1};
        item.hItem =
            reinterpret_cast<HTREEITEM>(SendMessageA(Tree().Handle(), TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
        SendMessageA(Tree().Handle(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        return (item.state & TVIS_BOLD) != 0;
    };
    Designer().SelectOne(The("OkButton"));
    EXPECT_FALSE(isBold("OkButton")) << "the one is marked as the chosen one";
    Designer().Select({&The("OkButton"), &The("Gauge")});
    EXPECT_TRUE(isBold("OkButton"));
    EXPECT_TRUE(isBold("Gauge"));
    EXPECT_FALSE(isBold("Box"));
    Designer().SelectOne(The("Gauge"));
    EXPECT_FALSE(isBold("OkButton"));
}

TEST_F(Structure, StaysWhereItIsReadWhenTheFormGrows) {
    for (int i = 0; i < 30; ++i) {
        Designer().CreateComponent(TButton::StaticClass(), &Designer().Form(), {5, 5, 80, 30});
    }
    Designer().SelectOne(The("Button20"));
    Tree().SetTopItem(Tree().NodeOf("Button15"));
    ASSERT_EQ(Tree().TopItem(), Tree().NodeOf("Button15"));
    Designer().Rename(The("Button25"), "Fresh");
    EXPECT_EQ(Tree().TopItem(), Tree().NodeOf("Button15"));
}

TEST_F(Structure, WhatCannotGoThereStays) {
    DragRow("Box", "OkButton", 5); // into itself
    EXPECT_EQ(Text(), SampleForm);
    DragRow("Box", "Box", 5);
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Designer().CanUndo());
    EXPECT_THAT(Names(), ElementsAre(Designer().Form().Name(), "NameLabel", "NameEdit", "Box", "OkButton", "Gauge"));
}

TEST_F(Structure, ItemsOfMenusStayAmongMenus) {
    TComponent* const menu =
        Designer().CreateComponent(TPopupMenu::StaticClass(), &Designer().Form(), {200, 10, 200, 10});
    TComponent* const first = Designer().CreateComponent(TMenuItem::StaticClass(), menu, {});
    TComponent* const second = Designer().CreateComponent(TMenuItem::StaticClass(), menu, {});
    EXPECT_FALSE(Designer().CanPlace(*first, The("Box")));
    EXPECT_FALSE(Designer().CanPlace(*first, Designer().Form()));
    EXPECT_FALSE(Designer().CanPlace(*menu, The("Box")));
    EXPECT_FALSE(Designer().CanPlace(The("OkButton"), *menu));
    EXPECT_TRUE(Designer().CanPlace(*menu, Designer().Form()));
    ASSERT_TRUE(Designer().CanPlace(*second, *first));
    Designer().Place({second}, *menu, first);
    EXPECT_EQ(The<TMenuItem>("MenuItem2").MenuIndex(), 0);
    Designer().Place({&The<TComponent>("MenuItem2")}, The<TComponent>("MenuItem1"), nullptr);
    EXPECT_EQ(The<TMenuItem>("MenuItem2").Parent(), &The<TMenuItem>("MenuItem1"));
    Designer().Place({&The<TComponent>("MenuItem2")}, The<TComponent>("PopupMenu1"), nullptr);
    EXPECT_EQ(The<TMenuItem>("MenuItem2").MenuIndex(), 1);
}

TEST_F(Structure, RowsThatTheUserHasClosedStayClosed) {
    Tree().NodeOf("Box")->SetExpanded(false);
    The("Gauge").SetLeft(10);
    Designer().CreateComponent(TButton::StaticClass(), &Designer().Form(), {5, 5, 80, 30});
    ASSERT_NE(Tree().NodeOf("Button1"), nullptr);
    EXPECT_FALSE(Tree().NodeOf("Box")->Expanded());
}

TEST_F(Structure, TheSplittersSizeThePanes) {
    auto& splitter = dynamic_cast<TSplitter&>(*Window->FindComponent("StructureSplitter"));
    const int height = Tree().Height();
    const TPoint at = splitter.ClientToScreen({100, 2});
    DragFrom(at, 0, 40);
    EXPECT_EQ(Tree().Height(), height + 40);
    auto& left = dynamic_cast<TSplitter&>(*Window->FindComponent("LeftSplitter"));
    const int width = Tree().Width();
    DragFrom(left.ClientToScreen({2, 300}), 30, 0);
    EXPECT_EQ(Tree().Width(), width + 30);
}

} // namespace
} // namespace kx::test
