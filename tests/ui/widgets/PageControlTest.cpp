// SPDX-License-Identifier: MIT
// Pages below tabs, by mouse, keyboard and form file.

#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FormFiles.h"
#include "tests/ui/ControlFixture.h"
#include "tests/ui/FocusPump.h"

namespace kx::test {
namespace {

class PageControl : public TControlTest<TPageControl> {
protected:
    PageControl() { Control->SetName("PageControl1"); }

    TTabSheet& AddPage(const std::string& caption) {
        auto* const page = new TTabSheet(Form.get());
        page->SetCaption(caption);
        page->SetPageControl(Control);
        return *page;
    }
    TEdit& AddEdit(TTabSheet& page) {
        auto* const edit = new TEdit(Form.get());
        edit->SetParent(&page);
        return *edit;
    }
    std::vector<std::string> Pages() const {
        std::vector<std::string> captions;
        for (int i = 0; i < Control->PageCount(); ++i) {
            captions.push_back(Control->Pages(i)->Caption());
        }
        return captions;
    }
    /// The texts on the tabs that are seen.
    std::vector<std::string> Tabs() const {
        std::vector<std::string> texts;
        const auto count = static_cast<int>(SendMessageA(Control->Handle(), TCM_GETITEMCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            char text[100] = "";
            TCITEMA item{};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            item.cchTextMax = sizeof text;
            SendMessageA(Control->Handle(), TCM_GETITEMA, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
            texts.emplace_back(text);
        }
        return texts;
    }
    TPoint OnTab(int tab, int right = 0) const {
        RECT r;
        SendMessageA(Control->Handle(), TCM_GETITEMRECT, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&r));
        return Control->ClientToScreen({r.left + 5 + right, (r.top + r.bottom) / 2});
    }
};

TEST_F(PageControl, ShowsTheFirstPageBelowTheTabs) {
    TTabSheet& one = AddPage("One");
    TTabSheet& two = AddPage("Two");
    EXPECT_EQ(Control->ActivePage(), &one);
    Show();
    EXPECT_THAT(Tabs(), ElementsAre("One", "Two"));
    EXPECT_EQ(one.BoundsRect(), Control->DisplayRect());
    EXPECT_TRUE(one.Showing());
    EXPECT_FALSE(two.Showing());
    EXPECT_EQ(one.Parent(), Control);
    EXPECT_EQ(one.PageControl(), Control);
    two.SetCaption("Zwei");
    EXPECT_THAT(Tabs(), ElementsAre("One", "Zwei"));
    EXPECT_EQ(Control->ActivePage(), &one);
    EXPECT_EQ(Control->TabIndex(), 0);
}

TEST_F(PageControl, TheProgramsChoiceTellsThePagesOnly) {
    TTabSheet& one = AddPage("One");
    TTabSheet& two = AddPage("Two");
    Show();
    std::vector<std::string> events;
    one.SetOnHide([&](TObject*) { events.emplace_back("hide one"); });
    two.SetOnShow([&](TObject* sender) { events.emplace_back(sender == &two ? "show two" : "?"); });
    Control->SetOnChange([&](TObject*) { events.emplace_back("change"); });
    Control->SetOnChanging([&](TObject*, bool&) { events.emplace_back("changing"); });
    Control->SetActivePage(&two);
    EXPECT_THAT(events, ElementsAre("hide one", "show two"));
    EXPECT_EQ(Control->ActivePageIndex(), 1);
    EXPECT_EQ(Control->TabIndex(), 1);
    EXPECT_TRUE(two.Showing());
    EXPECT_FALSE(one.Showing());
    Control->SetActivePage(&two);
    EXPECT_EQ(events.size(), 2U);
    Control->SetActivePage(nullptr);
    EXPECT_EQ(Control->ActivePageIndex(), -1);
    EXPECT_EQ(Control->TabIndex(), -1);
    EXPECT_FALSE(two.Showing());
    Control->SetActivePageIndex(0);
    EXPECT_EQ(Control->ActivePage(), &one);
    Control->SetActivePageIndex(2);
    EXPECT_EQ(Control->ActivePage(), nullptr);
    Control->SetTabIndex(1);
    EXPECT_EQ(Control->ActivePage(), &two);
    TPageControl other(nullptr);
    TTabSheet foreign(nullptr);
    foreign.SetPageControl(&other);
    Control->SetActivePage(&foreign);
    EXPECT_EQ(Control->ActivePage(), &two) << "another one's page";
}

TEST_F(PageControl, AClickOnATabAsksAndShowsItsPage) {
    AddPage("One");
    TTabSheet& two = AddPage("Two");
    bool allow = false;
    int changing = 0;
    TTabSheet* atChange = nullptr;
    Control->SetOnChanging([&](TObject*, bool& allowChange) {
        ++changing;
        allowChange = allow;
    });
    Control->SetOnChange([&](TObject*) { atChange = Control->ActivePage(); });
    Show();
    ClickAt(OnTab(1));
    ASSERT_TRUE(PumpUntil([&] { return changing == 1; }));
    EXPECT_EQ(Control->ActivePageIndex(), 0);
    EXPECT_EQ(atChange, nullptr);
    allow = true;
    ClickAt(OnTab(1, 15)); // too far away to be a double click
    ASSERT_TRUE(PumpUntil([&] { return atChange == &two; }));
    EXPECT_TRUE(two.Showing());
}

TEST_F(PageControl, ArrowKeysOnTheTabsChoosePages) {
    AddPage("One");
    AddPage("Two");
    Show();
    Control->SetFocus();
    PressKey(VK_RIGHT);
    ASSERT_TRUE(FocusPump([&] { return Control->ActivePageIndex() == 1; }));
    PressKey(VK_LEFT);
    ASSERT_TRUE(FocusPump([&] { return Control->ActivePageIndex() == 0; }));
}

TEST_F(PageControl, CtrlTabGoesAroundThePagesWithATab) {
    TEdit& first = AddEdit(AddPage("One"));
    AddPage("Hidden").SetTabVisible(false);
    TEdit& last = AddEdit(AddPage("Three"));
    int changes = 0;
    Control->SetOnChange([&](TObject*) { ++changes; });
    auto* const outside = Add<TEdit>(10, 200, 50, 20);
    Show();
    first.SetFocus();
    PressKey(VK_TAB, {VK_CONTROL});
    ASSERT_TRUE(FocusPump([&] { return last.Focused(); }));
    EXPECT_EQ(Control->ActivePageIndex(), 2);
    PressKey(VK_TAB, {VK_CONTROL});
    ASSERT_TRUE(FocusPump([&] { return first.Focused(); }));
    PressKey(VK_TAB, {VK_CONTROL, VK_SHIFT});
    ASSERT_TRUE(FocusPump([&] { return last.Focused(); }));
    EXPECT_EQ(changes, 3);
    outside->SetFocus();
    PressKey(VK_TAB, {VK_CONTROL});
    PressKey('X');
    ASSERT_TRUE(FocusPump([&] { return outside->Text() == "x"; }));
    EXPECT_EQ(Control->ActivePageIndex(), 2) << "the focus is elsewhere";
}

TEST_F(PageControl, CtrlTabBelongsToTheInnerPages) {
    TTabSheet& one = AddPage("One");
    AddPage("Two");
    auto* const inner = Add<TPageControl>(0, 0, 150, 60, &one);
    for (int i = 0; i < 2; ++i) {
        auto* const page = new TTabSheet(Form.get());
        page->SetPageControl(inner);
    }
    Show();
    inner->SetFocus();
    PressKey(VK_TAB, {VK_CONTROL});
    ASSERT_TRUE(FocusPump([&] { return inner->ActivePageIndex() == 1; }));
    EXPECT_EQ(Control->ActivePageIndex(), 0);
}

TEST_F(PageControl, TheFocusOfAPageGoesToTheNextOneOrToTheTabs) {
    TEdit& edit = AddEdit(AddPage("One"));
    AddPage("Empty");
    Show();
    edit.SetFocus();
    Control->SetActivePageIndex(1);
    EXPECT_TRUE(Control->Focused());
    auto* const outside = Add<TEdit>(10, 200, 50, 20);
    outside->SetFocus();
    Control->SetActivePageIndex(0);
    EXPECT_TRUE(outside->Focused()) << "a focus elsewhere stays";
}

TEST_F(PageControl, AltAndALetterChooseATab) {
    AddPage("&One");
    AddPage("&Two");
    auto* const edit = Add<TEdit>(10, 200, 50, 20);
    int changes = 0;
    Control->SetOnChange([&](TObject*) { ++changes; });
    Show();
    edit->SetFocus();
    PressKey('T', {VK_MENU});
    ASSERT_TRUE(FocusPump([&] { return Control->ActivePageIndex() == 1; }));
    EXPECT_EQ(changes, 1);
    Control->SetOnChanging([](TObject*, bool& allowChange) { allowChange = false; });
    PressKey('O', {VK_MENU});
    PressKey('X');
    ASSERT_TRUE(FocusPump([&] { return edit->Text() == "x"; }));
    EXPECT_EQ(Control->ActivePageIndex(), 1);
}

TEST_F(PageControl, APageWithoutItsTabIsLeft) {
    TTabSheet& one = AddPage("One");
    TTabSheet& two = AddPage("Two");
    TTabSheet& three = AddPage("Three");
    Show();
    Control->SetActivePage(&two);
    two.SetTabVisible(false);
    EXPECT_EQ(Control->ActivePage(), &three);
    EXPECT_EQ(Control->TabIndex(), 1);
    EXPECT_THAT(Tabs(), ElementsAre("One", "Three"));
    EXPECT_EQ(two.TabIndex(), -1);
    EXPECT_EQ(two.PageIndex(), 1);
    EXPECT_EQ(three.TabIndex(), 1);
    Control->SetActivePage(&two); // the program may show it
    EXPECT_TRUE(two.Showing());
    EXPECT_EQ(Control->TabIndex(), -1);
    two.SetTabVisible(true);
    EXPECT_EQ(Control->TabIndex(), 1);
    for (TTabSheet* page : {&one, &two, &three}) {
        page->SetTabVisible(false);
    }
    EXPECT_EQ(Control->ActivePage(), nullptr);
}

TEST_F(PageControl, PageIndexMovesAPage) {
    TTabSheet& one = AddPage("One");
    AddPage("Two");
    AddPage("Three");
    Show();
    one.SetPageIndex(2);
    EXPECT_THAT(Pages(), ElementsAre("Two", "Three", "One"));
    EXPECT_THAT(Tabs(), ElementsAre("Two", "Three", "One"));
    EXPECT_EQ(Control->ActivePage(), &one);
    EXPECT_EQ(Control->TabIndex(), 2);
    EXPECT_EQ(one.PageIndex(), 2);
    one.SetPageIndex(0);
    EXPECT_THAT(Pages(), ElementsAre("One", "Two", "Three"));
    EXPECT_EQ(ErrorOf<EListError>([&] { one.SetPageIndex(3); }), "List index out of bounds (3)");
    EXPECT_EQ(ErrorOf<EListError>([&] { one.SetPageIndex(-1); }), "List index out of bounds (-1)");
    EXPECT_THAT(Pages(), ElementsAre("One", "Two", "Three"));
    TTabSheet loose(nullptr);
    loose.SetPageIndex(5);
    EXPECT_EQ(loose.PageIndex(), -1);
    EXPECT_EQ(loose.TabIndex(), -1);
}

TEST_F(PageControl, FindsTheNextPageAroundTheEnd) {
    TTabSheet& one = AddPage("One");
    TTabSheet& two = AddPage("Two");
    TTabSheet& three = AddPage("Three");
    two.SetTabVisible(false);
    EXPECT_EQ(Control->FindNextPage(&one, true, false), &two);
    EXPECT_EQ(Control->FindNextPage(&one, true, true), &three);
    EXPECT_EQ(Control->FindNextPage(&three, true, true), &one);
    EXPECT_EQ(Control->FindNextPage(&one, false, true), &three);
    EXPECT_EQ(Control->FindNextPage(nullptr, true, true), &one);
    EXPECT_EQ(Control->FindNextPage(nullptr, false, true), &three);
    three.SetTabVisible(false);
    EXPECT_EQ(Control->FindNextPage(&one, true, true), nullptr);
}

TEST_F(PageControl, APageThatGoesLeavesTheNextOne) {
    TTabSheet& one = AddPage("One");
    TTabSheet& two = AddPage("Two");
    TTabSheet& three = AddPage("Three");
    Show();
    Control->SetActivePage(&two);
    two.Free();
    EXPECT_EQ(Control->ActivePage(), &three);
    EXPECT_THAT(Tabs(), ElementsAre("One", "Three"));
    EXPECT_TRUE(three.Showing());
    three.SetParent(Form.get());
    EXPECT_EQ(three.PageControl(), nullptr);
    EXPECT_EQ(Control->ActivePage(), &one);
    EXPECT_EQ(three.Parent(), Form.get());
    three.SetParent(Control);
    EXPECT_THAT(Pages(), ElementsAre("One", "Three"));
    one.SetPageControl(nullptr);
    three.SetPageControl(nullptr);
    EXPECT_EQ(Control->ActivePage(), nullptr);
    EXPECT_EQ(Control->PageCount(), 0);
    EXPECT_THAT(Tabs(), IsEmpty());
    EXPECT_EQ(ErrorOf<EListError>([&] { Control->Pages(0); }), "List index out of bounds (0)");
    one.SetPageControl(Control);
    Control->Free();
    EXPECT_EQ(Form->FindComponent("PageControl1"), nullptr);
}

TEST_F(PageControl, AHandlerMayFreeThePages) {
    TTabSheet& one = AddPage("One");
    TTabSheet& two = AddPage("Two");
    Show();
    one.SetOnHide([&](TObject*) { Control->Free(); });
    Control->SetActivePage(&two);
}

TEST_F(PageControl, KeepsItsPagesInANewWindow) {
    AddPage("One");
    TTabSheet& two = AddPage("Two");
    Show();
    Control->SetActivePage(&two);
    const HWND before = Control->Handle();
    Control->SetHotTrack(true);
    Control->HandleNeeded();
    EXPECT_NE(Control->Handle(), before);
    EXPECT_THAT(Tabs(), ElementsAre("One", "Two"));
    EXPECT_EQ(Control->TabIndex(), 1);
    EXPECT_TRUE(IsWindowVisible(two.Handle()));
}

constexpr const char* PagesFile = R"(object PageControl1: TPageControl
  Left = 0
  Top = 0
  Width = 200
  Height = 100
  TabOrder = 1
  ActivePage = Second
  object First: TTabSheet
    Caption = 'Eins'
  end
  object Hidden: TTabSheet
    Caption = 'Zwei'
    TabVisible = False
  end
  object Second: TTabSheet
    Caption = 'Drei'
    object Edit1: TEdit
      Left = 0
      Top = 0
      Width = 50
      Height = 21
      Color = clWindow
      TabOrder = 0
    end
  end
end
)";

TEST_F(PageControl, PagesComeBackFromTheFormFile) {
    RegisterClasses<TPageControl, TTabSheet, TEdit>();
    auto* const pages = new TPageControl(nullptr);
    pages->SetParent(Form.get());
    int shown = 0;
    pages->SetOnChange([&](TObject*) { ++shown; });
    ReadFormOver(*pages, PagesFile);
    ASSERT_EQ(pages->PageCount(), 3);
    EXPECT_EQ(pages->Pages(0)->Caption(), "Eins");
    EXPECT_EQ(pages->Pages(1)->Name(), "Hidden");
    EXPECT_FALSE(pages->Pages(1)->TabVisible());
    EXPECT_EQ(pages->ActivePage(), pages->Pages(2));
    EXPECT_EQ(pages->TabIndex(), 1);
    EXPECT_EQ(shown, 0);
    Show();
    EXPECT_TRUE(pages->ActivePage()->Controls(0)->Showing());
    EXPECT_EQ(FormLinesOf(*pages), PagesFile);
    pages->Free();
}

TEST_F(PageControl, AnchoredControlsKeepTheirDistanceOnPagesThatAreNotSeenYet) {
    RegisterClasses<TPageControl, TTabSheet, TEdit>();
    auto* const pages = new TPageControl(nullptr);
    pages->SetParent(Form.get());
    const auto page = [](const std::string& name, const std::string& edit) {
        return "  object " + name + ": TTabSheet\n    Caption = '" + name + "'\n    object " + edit +
               ": TEdit\n      Left = 130\n      Top = 40\n      Width = 50\n      Height = 21\n"
               "      Anchors = [akRight, akBottom]\n    end\n  end\n";
    };
    ReadFormOver(*pages, "object PageControl1: TPageControl\n  Width = 200\n  Height = 100\n" + page("A", "EditA") +
                             page("B", "EditB") + "end\n");
    Show();
    for (int i = 0; i < 2; ++i) {
        pages->SetActivePageIndex(i);
        EXPECT_EQ(pages->Pages(i)->Controls(0)->BoundsRect(), (TRect{130, 40, 180, 61})) << i;
        EXPECT_EQ(pages->Pages(i)->BoundsRect(), pages->DisplayRect());
    }
    pages->SetBounds(0, 0, 230, 110);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(pages->Pages(i)->Controls(0)->BoundsRect(), (TRect{160, 50, 210, 71})) << i;
    }
    pages->Free();
}

TEST_F(PageControl, WithoutAnActivePageTheFormFileShowsTheFirstTab) {
    RegisterClasses<TPageControl, TTabSheet>();
    auto* const pages = new TPageControl(nullptr);
    pages->SetParent(Form.get());
    ReadFormOver(*pages, "object PageControl1: TPageControl\n"
                         "  object A: TTabSheet\n    TabVisible = False\n  end\n"
                         "  object B: TTabSheet\n  end\n"
                         "end\n");
    EXPECT_EQ(pages->ActivePage(), pages->Pages(1));
    pages->Free();
}

} // namespace
} // namespace kx::test
