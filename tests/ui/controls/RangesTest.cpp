// SPDX-License-Identifier: MIT
// Lists of the framework in range-for, and what can be read of const objects.

#include "kx/ui/controls/ActnList.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/Buttons.h"
#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ComCtrlsBars.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace kx {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

/// What `of` says of each item, in the order in which range-for meets them.
template <class List, class Of> std::vector<std::string> ValuesOf(const List& list, Of of) {
    std::vector<std::string> all;
    for (auto&& item : list) {
        all.push_back(of(item));
    }
    return all;
}
std::string NameOf(const TComponent* component) { return component->Name(); }

class Ranges : public testing::Test {
protected:
    template <class T> T& Add(const std::string& name) {
        auto* const control = new T(Form.get());
        control->SetName(name);
        if constexpr (std::is_base_of_v<TControl, T>) {
            control->SetParent(Form.get());
        }
        return *control;
    }
    TFormPtr Form{NewForm<TForm>(nullptr)};
};

TEST_F(Ranges, GoThroughComponentsAndControls) {
    Add<TButton>("First");
    Add<TPopupMenu>("Menu");
    Add<TLabel>("Second");
    EXPECT_THAT(ValuesOf(Form->Components(), NameOf), ElementsAre("First", "Menu", "Second"));
    // Controls without a window are painted behind the others, and come first.
    EXPECT_THAT(ValuesOf(Form->Controls(), NameOf), testing::UnorderedElementsAre("First", "Second"));
    for (int i = 0; i < Form->ControlCount(); ++i) {
        EXPECT_EQ(Form->Controls()[static_cast<size_t>(i)], Form->Controls(i));
    }
}

TEST_F(Ranges, GoThroughFormsPagesButtonsMenusAndActions) {
    Form->Show();
    const std::vector<TCustomForm*>& forms = Screen().Forms();
    EXPECT_EQ(std::count(forms.begin(), forms.end(), Form.get()), 1);
    auto& pages = Add<TPageControl>("Pages");
    auto& bar = Add<TToolBar>("Bar");
    auto& menu = Add<TPopupMenu>("Menu");
    auto& actions = Add<TActionList>("Actions");
    for (const char* name : {"a", "b"}) {
        auto* const page = new TTabSheet(Form.get());
        page->SetName(std::string("Page") + name);
        page->SetPageControl(&pages);
        auto* const button = new TToolButton(Form.get());
        button->SetName(std::string("Button") + name);
        button->SetParent(&bar);
        auto* const item = new TMenuItem(Form.get());
        item->SetName(std::string("Item") + name);
        menu.Items().Add(item);
        auto* const action = new kx::TAction(Form.get());
        action->SetName(std::string("Action") + name);
        action->SetActionList(&actions);
    }
    EXPECT_THAT(ValuesOf(pages.Pages(), NameOf), ElementsAre("Pagea", "Pageb"));
    EXPECT_THAT(ValuesOf(bar.Buttons(), NameOf), testing::UnorderedElementsAre("Buttona", "Buttonb"));
    EXPECT_EQ(bar.Buttons()[0], bar.Buttons(0));
    EXPECT_THAT(ValuesOf(menu.Items().Items(), NameOf), ElementsAre("Itema", "Itemb"));
    EXPECT_THAT(ValuesOf(actions.Actions(), NameOf), ElementsAre("Actiona", "Actionb"));
}

TEST_F(Ranges, GoThroughItemsColumnsPanelsAndNodes) {
    auto& list = Add<TListView>("List");
    EXPECT_THAT(ValuesOf(list.Items(), [](const TListItem& item) { return item.Caption(); }), IsEmpty());
    for (const char* text : {"one", "two"}) {
        list.Columns().Add().SetCaption(text);
        list.Items().Add().SetCaption(text);
    }
    for (TListItem& item : list.Items()) {
        item.SetCaption(item.Caption() + "!");
    }
    EXPECT_THAT(ValuesOf(list.Items(), [](const TListItem& item) { return item.Caption(); }),
                ElementsAre("one!", "two!"));
    EXPECT_THAT(ValuesOf(list.Columns(), [](const TListColumn& column) { return column.Caption(); }),
                ElementsAre("one", "two"));

    auto& bar = Add<TStatusBar>("Status");
    bar.Panels().Add().SetText("left");
    bar.Panels().Insert(0).SetText("first");
    EXPECT_THAT(ValuesOf(bar.Panels(), [](const TStatusPanel& panel) { return panel.Text(); }),
                ElementsAre("first", "left"));
    EXPECT_EQ(bar.Panels().GetItem(1), &bar.Panels()[1]);
    EXPECT_EQ(bar.Panels().FindItemID(bar.Panels()[1].ID()), &bar.Panels()[1]);

    auto& tree = Add<TTreeView>("Tree");
    const auto textOf = [](const TTreeNode& node) { return node.Text(); };
    EXPECT_THAT(ValuesOf(tree.Items(), textOf), IsEmpty());
    TTreeNode& root = tree.Items().Add(nullptr, "root");
    tree.Items().AddChild(&tree.Items().AddChild(&root, "child"), "grandchild");
    tree.Items().AddChild(&root, "second");
    tree.Items().Add(nullptr, "last");
    EXPECT_THAT(ValuesOf(tree.Items(), textOf), ElementsAre("root", "child", "grandchild", "second", "last"));
    EXPECT_THAT(ValuesOf(root, textOf), ElementsAre("child", "second")) << "the children alone";
    EXPECT_THAT(ValuesOf(root[1], textOf), IsEmpty());
}

TEST_F(Ranges, GoThroughTexts) {
    auto& memo = Add<TMemo>("Memo");
    auto& box = Add<TComboBox>("Box");
    memo.Lines().SetCommaText("one,two");
    box.Items().SetCommaText("three,four");
    const auto same = [](const std::string& text) { return text; };
    EXPECT_THAT(ValuesOf(std::as_const(memo).Lines(), same), ElementsAre("one", "two"));
    EXPECT_THAT(ValuesOf(std::as_const(box).Items(), same), ElementsAre("three", "four"));
}

// --- Const objects

/// Each is a list of the standard library's algorithms, too.
static_assert(std::forward_iterator<TListItems::TIterator>);
static_assert(std::forward_iterator<TListColumns::TIterator>);
static_assert(std::forward_iterator<TTreeNodes::TIterator>);
static_assert(std::forward_iterator<TTreeNode::TIterator>);

TEST_F(Ranges, ConstObjectsCanBeRead) {
    auto& memo = Add<TMemo>("Memo");
    memo.SetText("a text");
    memo.Constraints().SetMinWidth(7);
    const TMemo& known = memo;
    EXPECT_EQ(known.Constraints().MinWidth(), 7);
    EXPECT_EQ(known.Lines().Text(), "a text\r\n");
    EXPECT_EQ(known.SelStart(), 0);
    EXPECT_EQ(known.SelLength(), 0);
    EXPECT_EQ(known.SelText(), "");
    EXPECT_FALSE(known.HandleAllocated()) << "to look is no reason for a window";
    memo.SetSelStart(2);
    memo.SetSelLength(3);
    EXPECT_EQ(known.SelText(), "tex");
    const TListView& list = Add<TListView>("List");
    EXPECT_EQ(list.Items().Count() + list.Columns().Count(), 0);
    const TImage& image = Add<TImage>("Image");
    EXPECT_EQ(image.Picture().Graphic(), nullptr);
    const TForm& form = *Form;
    EXPECT_TRUE(form.Icon().Empty());
    EXPECT_EQ(form.HorzScrollBar().Position(), 0);
}

} // namespace
} // namespace kx
