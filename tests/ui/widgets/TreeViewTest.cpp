// SPDX-License-Identifier: MIT
// Tree views.

#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "tests/ui/ControlFixture.h"

namespace kx {
namespace {

using namespace test;
using TLines = std::vector<std::string>;

/// A tree of two roots, the first with two children, the first of which has one.
class TreeView : public TControlTest<TTreeView> {
protected:
    TreeView() {
        TTreeNodes& items = Control->Items();
        Animals = &items.Add(nullptr, "animals");
        Cats = &items.AddChild(Animals, "cats");
        Lions = &items.AddChild(Cats, "lions");
        Dogs = &items.AddChild(Animals, "dogs");
        Plants = &items.Add(nullptr, "plants");
    }
    ~TreeView() override { ReleaseAt({5, 5}); }

    void LogAll() {
        const auto add = [this](const char* what) {
            return [this, what](TObject*, TTreeNode* node) { Log.push_back(what + NameOf(node)); };
        };
        const auto ask = [this](const char* what) {
            return [this, what](TObject*, TTreeNode* node, bool& allow) {
                Log.push_back(what + NameOf(node));
                allow = Allows;
            };
        };
        Control->SetOnChange(add("change "));
        Control->SetOnChanging(ask("changing "));
        Control->SetOnExpanded(add("expanded "));
        Control->SetOnExpanding(ask("expanding "));
        Control->SetOnCollapsed(add("collapsed "));
        Control->SetOnCollapsing(ask("collapsing "));
        Control->SetOnDeletion(add("deletion "));
    }
    static std::string NameOf(const TTreeNode* node) { return node ? node->Text() : "none"; }
    TLines TakeLog() { return std::exchange(Log, {}); }

    // --- What the window shows

    HTREEITEM Item(UINT which, HTREEITEM from = nullptr) {
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(Control->Handle(), TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(from)));
    }
    TVITEMA Info(HTREEITEM item, UINT mask) {
        TVITEMA info{};
        info.mask = mask | TVIF_HANDLE;
        info.hItem = item;
        info.stateMask = 0xFFFF;
        info.pszText = FText;
        info.cchTextMax = sizeof FText;
        SendMessageA(Control->Handle(), TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&info));
        return info;
    }
    std::string ShownText(HTREEITEM item) { return item ? Info(item, TVIF_TEXT).pszText : "none"; }
    /// All nodes that the window has, those inside in brackets.
    std::string Shown(HTREEITEM parent = nullptr) {
        std::string text;
        for (HTREEITEM item = parent ? Item(TVGN_CHILD, parent) : Item(TVGN_ROOT); item; item = Item(TVGN_NEXT, item)) {
            const std::string inside = Shown2(item);
            text += (text.empty() ? "" : " ") + ShownText(item) + (inside.empty() ? "" : "(" + inside + ")");
        }
        return text;
    }
    std::string Shown2(HTREEITEM parent) { return Item(TVGN_CHILD, parent) ? Shown(parent) : std::string(); }
    TPoint On(TTreeNode* node) {
        const TRect r = node->DisplayRect(true);
        return Control->ClientToScreen({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2});
    }

    TTreeNode* Animals;
    TTreeNode* Cats;
    TTreeNode* Lions;
    TTreeNode* Dogs;
    TTreeNode* Plants;
    TLines Log;
    bool Allows = true;

private:
    char FText[80] = {};
};

// --- Nodes

TEST_F(TreeView, ShowsItsNodesWhereTheyAre) {
    EXPECT_EQ(Control->Items().Count(), 5);
    Show();
    EXPECT_EQ(Shown(), "animals(cats(lions) dogs) plants");
    TTreeNodes& items = Control->Items();
    items.AddFirst(Dogs, "birds");
    items.Add(Cats, "mice");
    items.AddChildFirst(Cats, "tigers");
    items.Insert(Plants, "stones");
    items.AddFirst(nullptr, "air");
    EXPECT_EQ(Shown(), "air animals(birds cats(tigers lions) dogs mice) stones plants");
    EXPECT_EQ(items[2].Text(), "birds");
    EXPECT_THROW(items[10], EListError);
    EXPECT_THROW(items[-1], EListError);
    Lions->SetText("panthers");
    Control->SetBorderStyle(bsNone); // makes the window anew
    EXPECT_EQ(Shown(), "air animals(birds cats(tigers panthers) dogs mice) stones plants");
}

TEST_F(TreeView, NodesKnowTheirPlace) {
    EXPECT_EQ(Lions->Level(), 2);
    EXPECT_EQ(Plants->Level(), 0);
    EXPECT_EQ(Dogs->Index(), 1);
    EXPECT_EQ(Plants->Index(), 1);
    EXPECT_EQ(Animals->Count(), 2);
    EXPECT_EQ(&(*Animals)[1], Dogs);
    EXPECT_THROW((*Animals)[2], EListError);
    EXPECT_EQ(Lions->Parent(), Cats);
    EXPECT_EQ(Animals->Parent(), nullptr);
    EXPECT_EQ(Cats->GetNextSibling(), Dogs);
    EXPECT_EQ(Dogs->GetNextSibling(), nullptr);
    EXPECT_EQ(Dogs->GetPrevSibling(), Cats);
    EXPECT_EQ(Cats->GetPrevSibling(), nullptr);
    EXPECT_EQ(Animals->GetFirstChild(), Cats);
    EXPECT_EQ(Animals->GetLastChild(), Dogs);
    EXPECT_EQ(Lions->GetNext(), Dogs);
    EXPECT_EQ(Dogs->GetNext(), Plants);
    EXPECT_EQ(Plants->GetNext(), nullptr);
    EXPECT_TRUE(Lions->HasAsParent(Animals));
    EXPECT_FALSE(Lions->HasAsParent(Dogs));
}

TEST_F(TreeView, NodesGoWithThoseInsideThem) {
    Show();
    LogAll();
    Cats->Delete();
    EXPECT_EQ(TakeLog(), (TLines{"deletion lions", "deletion cats"}));
    EXPECT_EQ(Shown(), "animals(dogs) plants");
    Animals->Expand(false);
    Dogs->Delete();
    EXPECT_FALSE(Animals->Expanded());
    EXPECT_FALSE(Animals->HasChildren());
    EXPECT_EQ(Info(Item(TVGN_ROOT), TVIF_CHILDREN).cChildren, 0);
    Control->Items().Clear();
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(Control->Items().GetFirstNode(), nullptr);
}

TEST_F(TreeView, NodesCanBeMoved) {
    Show();
    Cats->Expand(false);
    Control->SetSelected(Lions);
    Cats->MoveTo(*Plants, naAddChild);
    EXPECT_EQ(Shown(), "animals(dogs) plants(cats(lions))");
    EXPECT_TRUE(Cats->Expanded());
    EXPECT_EQ(Control->Selected(), Lions);
    Dogs->MoveTo(*Cats, naInsert);
    EXPECT_EQ(Shown(), "animals plants(dogs cats(lions))");
    EXPECT_FALSE(Animals->HasChildren());
    Dogs->MoveTo(*Animals, naAdd);
    EXPECT_EQ(Shown(), "animals plants(cats(lions)) dogs");
    Dogs->MoveTo(*Animals, naAddFirst);
    Lions->MoveTo(*Plants, naAddChildFirst);
    EXPECT_EQ(Shown(), "dogs animals plants(lions cats)");
    EXPECT_THROW(Plants->MoveTo(*Lions, naAddChild), EInvalidOperation);
    EXPECT_THROW(Plants->MoveTo(*Plants, naAdd), EInvalidOperation);
}

TEST_F(TreeView, ImagesAreThoseOfTheNode) {
    Show();
    Cats->SetImageIndex(3);
    Cats->SetSelectedIndex(4);
    Cats->SetStateIndex(2);
    const TVITEMA info = Info(Item(TVGN_CHILD, Item(TVGN_ROOT)), TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE);
    EXPECT_EQ(info.iImage, 3);
    EXPECT_EQ(info.iSelectedImage, 4);
    EXPECT_EQ(info.state & TVIS_STATEIMAGEMASK, INDEXTOSTATEIMAGEMASK(2u));
    {
        TImageList images(nullptr);
        Control->SetImages(&images);
        Control->SetStateImages(&images);
        EXPECT_EQ(SendMessageA(Control->Handle(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0),
                  reinterpret_cast<LRESULT>(images.Handle()));
        Control->SetStateImages(nullptr);
    }
    EXPECT_EQ(Control->Images(), nullptr) << "the list has gone";
    EXPECT_EQ(SendMessageA(Control->Handle(), TVM_GETIMAGELIST, TVSIL_NORMAL, 0), 0);
}

TEST_F(TreeView, TheNodesAreSortedByTheirTexts) {
    Control->Items().Add(nullptr, "Beer");
    Show();
    Control->SetSelected(Lions);
    Control->SetSortType(stText);
    EXPECT_EQ(Shown(), "animals(cats(lions) dogs) Beer plants");
    EXPECT_EQ(Control->Selected(), Lions);
    EXPECT_EQ(ShownText(Item(TVGN_CARET)), "lions");
}

// --- Selection

TEST_F(TreeView, AskBeforeAndTellAfterASelection) {
    Show();
    LogAll();
    Control->SetSelected(Dogs);
    EXPECT_EQ(TakeLog(), (TLines{"changing dogs", "change dogs"}));
    EXPECT_EQ(ShownText(Item(TVGN_CARET)), "dogs");
    Control->SetSelected(Dogs);
    EXPECT_EQ(TakeLog(), TLines{});
    Allows = false;
    Plants->SetSelected(true);
    EXPECT_EQ(TakeLog(), TLines{"changing plants"});
    EXPECT_EQ(Control->Selected(), Dogs);
    EXPECT_EQ(ShownText(Item(TVGN_CARET)), "dogs");
    Allows = true;
    Dogs->SetSelected(false);
    EXPECT_EQ(Control->Selected(), nullptr);
    EXPECT_EQ(Item(TVGN_CARET), nullptr);
}

TEST_F(TreeView, AClickSelectsAndIsAClick) {
    Show();
    int clicks = 0;
    Control->SetOnClick([&](TObject*) { ++clicks; });
    LogAll();
    ClickAt(On(Plants));
    EXPECT_TRUE(PumpUntil([&] { return clicks == 1; }));
    EXPECT_EQ(TakeLog(), (TLines{"changing plants", "change plants"}));
    EXPECT_TRUE(Plants->Selected());
    Allows = false;
    ClickAt(On(Animals));
    EXPECT_TRUE(PumpUntil([&] { return clicks == 2; }));
    EXPECT_TRUE(Plants->Selected());
}

TEST_F(TreeView, TheRightButtonSelectsWhenItShall) {
    Show();
    Control->SetSelected(Animals);
    const auto rightClick = [&](TTreeNode* node) {
        bool asked = false;
        Control->SetOnContextPopup([&](TObject*, const TPoint&, bool& handled) { asked = handled = true; });
        ClickAt(On(node), mbRight);
        return PumpUntil([&] { return asked; });
    };
    ASSERT_TRUE(rightClick(Plants));
    EXPECT_TRUE(Animals->Selected());
    Control->SetRightClickSelect(true);
    Control->SetSelected(Plants);
    ASSERT_TRUE(rightClick(Animals)); // elsewhere, or it would be a double click
    EXPECT_TRUE(Animals->Selected());
}

TEST_F(TreeView, TheSelectionSurvivesARecreationAndGoesToTheNextNode) {
    Show();
    Control->SetSelected(Cats);
    LogAll();
    Control->SetHideSelection(false); // makes the window anew
    EXPECT_EQ(Control->Selected(), Cats);
    EXPECT_EQ(ShownText(Item(TVGN_CARET)), "cats");
    EXPECT_EQ(TakeLog(), TLines{});
    Cats->Delete();
    EXPECT_EQ(Control->Selected(), Dogs);
    EXPECT_EQ(TakeLog(), (TLines{"deletion lions", "change dogs", "deletion cats"}));
    Dogs->Delete();
    EXPECT_EQ(Control->Selected(), Animals);
    Animals->Delete();
    EXPECT_EQ(Control->Selected(), Plants);
    TakeLog();
    Control->Items().Clear();
    EXPECT_EQ(TakeLog(), (TLines{"change none", "deletion plants"}));
}

// --- Expanding

TEST_F(TreeView, ExpandingAsksAndTellsEveryTime) {
    Show();
    LogAll();
    for (int turn = 0; turn < 2; ++turn) { // the system tells only the first time
        Animals->Expand(false);
        EXPECT_EQ(TakeLog(), (TLines{"expanding animals", "expanded animals"}));
        EXPECT_NE(Info(Item(TVGN_ROOT), TVIF_STATE).state & TVIS_EXPANDED, 0u);
        EXPECT_FALSE(Cats->Expanded());
        Animals->Collapse(false);
        EXPECT_EQ(TakeLog(), (TLines{"collapsing animals", "collapsed animals"}));
        EXPECT_EQ(Info(Item(TVGN_ROOT), TVIF_STATE).state & TVIS_EXPANDED, 0u);
    }
    Allows = false;
    Animals->SetExpanded(true);
    EXPECT_FALSE(Animals->Expanded());
    EXPECT_EQ(TakeLog(), TLines{"expanding animals"});
    Allows = true;
    Plants->Expand(false); // nothing inside
    EXPECT_FALSE(Plants->Expanded());
    EXPECT_EQ(TakeLog(), TLines{});
    Control->FullExpand();
    EXPECT_TRUE(Animals->Expanded() && Cats->Expanded());
    Control->FullCollapse();
    EXPECT_FALSE(Animals->Expanded() || Cats->Expanded());
}

TEST_F(TreeView, TheUserExpandsByTheKeyboard) {
    Show();
    Control->SetFocus();
    Control->SetSelected(Animals);
    LogAll();
    Allows = false;
    PressKey(VK_RIGHT);
    EXPECT_TRUE(PumpUntil([&] { return !Log.empty(); }));
    EXPECT_EQ(TakeLog(), TLines{"expanding animals"});
    EXPECT_FALSE(Animals->Expanded());
    Allows = true;
    PressKey(VK_RIGHT);
    EXPECT_TRUE(PumpUntil([&] { return Animals->Expanded(); }));
    EXPECT_EQ(TakeLog(), (TLines{"expanding animals", "expanded animals"}));
    Control->SetRowSelect(true); // makes the window anew
    EXPECT_NE(Info(Item(TVGN_ROOT), TVIF_STATE).state & TVIS_EXPANDED, 0u);
    Control->SetFocus();
    PressKey(VK_LEFT);
    EXPECT_TRUE(PumpUntil([&] { return !Animals->Expanded(); }));
}

TEST_F(TreeView, ChildrenMayComeWhenTheyAreAskedFor) {
    Show();
    Plants->SetHasChildren(true);
    EXPECT_TRUE(Plants->HasChildren());
    EXPECT_EQ(Info(Item(TVGN_NEXT, Item(TVGN_ROOT)), TVIF_CHILDREN).cChildren, 1);
    Control->SetOnExpanding([](TObject* sender, TTreeNode* node, bool&) {
        dynamic_cast<TTreeView&>(*sender).Items().AddChild(node, "roses");
    });
    Plants->Expand(false);
    EXPECT_TRUE(Plants->Expanded());
    EXPECT_EQ(Shown(), "animals(cats(lions) dogs) plants(roses)");
}

TEST_F(TreeView, ASelectionInsideGoesToTheNodeThatIsCollapsed) {
    Show();
    Control->FullExpand();
    Control->SetSelected(Lions);
    LogAll();
    Animals->Collapse(false);
    EXPECT_EQ(Control->Selected(), Animals);
    EXPECT_EQ(ShownText(Item(TVGN_CARET)), "animals");
}

TEST_F(TreeView, NodesCanBeBroughtIntoView) {
    Show();
    EXPECT_EQ(Lions->DisplayRect(true), TRect{});
    Lions->MakeVisible();
    EXPECT_TRUE(Animals->Expanded() && Cats->Expanded());
    const TRect r = Lions->DisplayRect(true);
    EXPECT_NE(r, TRect{});
    EXPECT_EQ(Control->GetNodeAt(r.Left + 2, r.Top + 2), Lions);
    EXPECT_EQ(Control->GetNodeAt(2, 95), nullptr);
    EXPECT_EQ(Control->TopItem(), Animals);
}

// --- Editing

TEST_F(TreeView, TheUserEditsTexts) {
    Show();
    Control->SetOnEdited([&](TObject*, TTreeNode* node, std::string& text) {
        Log.push_back(node->Text() + " becomes " + text);
        text += "!";
    });
    ASSERT_TRUE(Plants->EditText());
    ASSERT_TRUE(Control->IsEditing());
    TypeText("trees");
    PressKey(VK_RETURN);
    EXPECT_TRUE(PumpUntil([&] { return !Control->IsEditing(); }));
    EXPECT_EQ(Plants->Text(), "trees!");
    EXPECT_EQ(TakeLog(), TLines{"plants becomes trees"});
    EXPECT_EQ(ShownText(Item(TVGN_NEXT, Item(TVGN_ROOT))), "trees!");
    ASSERT_TRUE(Plants->EditText());
    TypeText("x");
    PressKey(VK_ESCAPE);
    EXPECT_TRUE(PumpUntil([&] { return !Control->IsEditing(); }));
    EXPECT_EQ(Plants->Text(), "trees!");
    Control->SetOnEditing([](TObject*, TTreeNode*, bool& allow) { allow = false; });
    EXPECT_FALSE(Plants->EditText());
    Control->SetOnEditing({});
    Control->SetReadOnly(true);
    EXPECT_FALSE(Plants->EditText());
}

// --- Dragging

TEST_F(TreeView, ANodeIsDraggedOntoAnotherOne) {
    Form->SetBorderStyle(bsNone);
    Control->SetDragMode(dmAutomatic);
    Show();
    Animals->Expand(false);
    TTreeNode* target = nullptr;
    Control->SetOnDragOver([](TObject*, TObject*, int, int, TDragState, bool& accept) { accept = true; });
    Control->SetOnDragDrop([&](TObject* sender, TObject* source, int x, int y) {
        EXPECT_EQ(source, sender);
        target = Control->GetNodeAt(x, y);
    });
    PressAt(On(Dogs));
    const TPoint from = On(Dogs);
    MoveMouse({from.X + 10, from.Y + 1});
    ASSERT_TRUE(PumpUntil([&] { return Control->Dragging(); }));
    EXPECT_TRUE(Dogs->Selected()) << "what is dragged";
    MoveMouse(On(Cats));
    EXPECT_TRUE(PumpUntil([&] { return Control->DropTarget() == Cats; }));
    EXPECT_EQ(ShownText(Item(TVGN_DROPHILITE)), "cats");
    ReleaseAt(On(Cats));
    EXPECT_TRUE(PumpUntil([&] { return target != nullptr; }));
    EXPECT_EQ(target, Cats);
    EXPECT_EQ(Control->DropTarget(), nullptr);
    EXPECT_EQ(Item(TVGN_DROPHILITE), nullptr);
}

// --- Foreign code

TEST_F(TreeView, HandlersMayFreeTheTree) {
    Show();
    Control->SetOnChanging([this](TObject*, TTreeNode*, bool&) { Control->Free(); });
    Control->SetSelected(Plants);
    SUCCEED();
}

TEST_F(TreeView, HandlersMayDeleteTheNode) {
    Show();
    Control->SetOnExpanding([](TObject*, TTreeNode* node, bool&) { node->Delete(); });
    Animals->Expand(true);
    EXPECT_EQ(Shown(), "plants");
    Control->SetFocus();
    Control->Items().AddChild(Plants, "roses");
    Control->SetSelected(Plants);
    PressKey(VK_RIGHT);
    EXPECT_TRUE(PumpUntil([&] { return Control->Items().Count() == 0; }));
    Control->Items().Add(nullptr, "new");
    Control->SetOnChanging([](TObject*, TTreeNode* node, bool&) { node->Delete(); });
    Control->SetSelected(Control->Items().GetFirstNode());
    EXPECT_EQ(Control->Selected(), nullptr);
}

} // namespace
} // namespace kx
