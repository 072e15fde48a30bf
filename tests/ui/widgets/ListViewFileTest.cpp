// SPDX-License-Identifier: MIT
// The items of list views in form files.

#include "kx/ui/widgets/ComCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/ui/BlockFile.h"
#include "tests/ui/ControlFixture.h"

#include <algorithm>
#include <functional>
#include <set>

namespace kx {
namespace {

using namespace test;

constexpr char ListHead[] = "object L: TListView\r\n  Left = 0\r\n  Top = 0\r\n  Width = 250\r\n  Height = 150\r\n";

std::string ListFile(const std::string& name, std::string_view bytes) { return BlockFile(ListHead, name, bytes); }

/// The numbers of an item: image, state, overlay image, further texts, data.
std::string Numbers(std::initializer_list<int> numbers) {
    std::string bytes;
    for (const int number : numbers) {
        bytes += BlockNumber(number);
    }
    return bytes;
}

std::string OldText(const std::string& text) { return static_cast<char>(text.size()) + text; }

std::string WithHead(int count, const std::string& items) {
    return Numbers({static_cast<int>(items.size()) + 8, count}) + items;
}

class ListViewFile : public TControlTest<TListView> {
protected:
    std::string Written() {
        const std::string text = FormTextOf(*Control);
        const size_t items = std::min(text.find("  Items."), text.size() - std::string("end\r\n").size());
        return ListHead + text.substr(items);
    }
};

/// Two items; the first one has two further texts with images.
const std::string OldBlock =
    WithHead(2, Numbers({3, 1, 2, 2, 77}) + OldText("one") + OldText("a") + OldText("") + Numbers({-1, -1, -1, 0, 0}) +
                    OldText("two") + std::string("\5\0\xFF\xFF", 4));

TEST_F(ListViewFile, ItemsComeBackByteForByte) {
    const std::string file = ListFile("Data", OldBlock);
    ReadFormOver(*Control, file);
    ASSERT_EQ(Control->Items().Count(), 2);
    TListItem& first = Control->Items()[0];
    EXPECT_EQ(first.Caption(), "one");
    EXPECT_EQ(first.SubItems().CommaText(), "a,");
    EXPECT_EQ(first.ImageIndex(), 3);
    EXPECT_EQ(first.StateIndex(), 1);
    EXPECT_EQ(Control->Items()[1].Caption(), "two");
    EXPECT_EQ(Control->Items()[1].ImageIndex(), -1);
    EXPECT_EQ(Written(), file);
    Control->HandleNeeded(); // a window changes nothing
    EXPECT_EQ(Written(), file);
    EXPECT_EQ(ItemTexts(Control->Handle()), (std::vector<std::string>{"one", "two"}));
    first.SetCaption("x");
    first.SetCaption("one");
    std::string madeAnew = OldBlock;
    madeAnew.replace(8 + 16, 4, BlockNumber(0)); // the data of a program that is gone
    EXPECT_EQ(Written(), ListFile("Data", madeAnew));
    first.Delete();
    EXPECT_EQ(Written(), ListFile("Data", WithHead(1, Numbers({-1, -1, -1, 0, 0}) + OldText("two"))));
    Control->Items().Clear();
    EXPECT_EQ(Written().find("Items"), std::string::npos);
    ReadFormOver(*Control, file); // into a window
    EXPECT_EQ(ItemTexts(Control->Handle()), (std::vector<std::string>{"one", "two"}));
    Control->Items().Clear();
    EXPECT_EQ(Written().find("Items"), std::string::npos);
}

TEST_F(ListViewFile, EachChangeOfAnItemIsWritten) {
    const std::string file = ListFile("Data", OldBlock);
    const auto changes = [&](auto&& change) {
        ReadFormOver(*Control, file);
        change(Control->Items()[1]);
        const std::string text = Written();
        const TFormPtr form(NewForm<TForm>(nullptr));
        auto* const copy = new TListView(form.get());
        ReadFormOver(*copy, text);
        EXPECT_EQ(copy->Items().Count(), Control->Items().Count());
        return text != file;
    };
    EXPECT_TRUE(changes([](TListItem& item) { item.SetCaption("new"); }));
    EXPECT_TRUE(changes([](TListItem& item) { item.SetImageIndex(4); }));
    EXPECT_TRUE(changes([](TListItem& item) { item.SetStateIndex(4); }));
    EXPECT_TRUE(changes([](TListItem& item) { item.SubItems().Add("b"); }));
    EXPECT_TRUE(changes([](TListItem& item) { item.Delete(); }));
    EXPECT_TRUE(changes([this](TListItem&) { Control->Items().Insert(0).SetCaption("new"); }));
    EXPECT_TRUE(changes([this](TListItem&) { Control->Items().Add(); }));
    EXPECT_FALSE(changes([](TListItem&) {}));
}

TEST_F(ListViewFile, WhatTheUserEditsIsWritten) {
    Control->SetViewStyle(vsList);
    Control->HandleNeeded();
    ReadFormOver(*Control, ListFile("Data", OldBlock));
    char text[] = "typed";
    NMLVDISPINFOA info{};
    info.hdr.hwndFrom = Control->Handle();
    info.hdr.code = LVN_ENDLABELEDITA;
    info.item.iItem = 1;
    info.item.pszText = text;
    EXPECT_TRUE(SendMessageA(Form->Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&info)));
    EXPECT_NE(Written(), ListFile("Data", OldBlock));
    EXPECT_EQ(Control->Items()[1].Caption(), "typed");
}

TEST_F(ListViewFile, OlderBlocksHaveNoImagesAtTheirEnd) {
    const std::string block = WithHead(1, Numbers({0, -1, -1, 1, 0}) + OldText("one") + OldText("a"));
    ReadFormOver(*Control, ListFile("Data", block));
    ASSERT_EQ(Control->Items().Count(), 1);
    EXPECT_EQ(Control->Items()[0].SubItems().CommaText(), "a");
    EXPECT_EQ(Written(), ListFile("Data", block));
    Control->Items()[0].SetImageIndex(1);
    EXPECT_EQ(Written(), ListFile("Data", WithHead(1, Numbers({1, -1, -1, 1, 0}) + OldText("one") + OldText("a") +
                                                          std::string("\xFF\xFF"))));
}

TEST_F(ListViewFile, BlocksOfNewerToolsAreReadAndStayAsTheyAre) {
    const std::string items = Numbers({2, -1, -1, 1, -1, 0}) + BlockText(u"n\u00E4u") + BlockText(u"sub") +
                              BlockNumber(0) + Numbers({0, -1, -1, 0, -1, 0}) + BlockText(u"") + "\1" +
                              std::string(1, '\0');
    const std::string file = ListFile("ItemData", "\3" + WithHead(2, items));
    ReadFormOver(*Control, file);
    ASSERT_EQ(Control->Items().Count(), 2);
    EXPECT_EQ(Control->Items()[0].Caption(), FromWide(L"n\u00E4u"));
    EXPECT_EQ(Control->Items()[0].SubItems().CommaText(), "sub");
    EXPECT_EQ(Control->Items()[0].ImageIndex(), 2);
    EXPECT_EQ(Written(), file);
    Control->Items()[0].SetCaption("new");
    EXPECT_NE(Written().find("Items.Data"), std::string::npos);
    EXPECT_EQ(Written().find("Items.ItemData"), std::string::npos);
}

TEST_F(ListViewFile, BlocksThatNobodyUnderstandsAreKept) {
    const std::string item = Numbers({0, -1, -1, 0, 0}) + OldText("x");
    for (const auto& [name, block] : std::initializer_list<std::pair<std::string, std::string>>{
             {"Data", "\1"},
             {"Data", OldBlock.substr(0, OldBlock.size() - 1)},
             {"Data", OldBlock + "x"},
             {"Data", WithHead(INT32_MAX, item)},
             {"Data", WithHead(1, Numbers({0, -1, -1, INT32_MAX, 0}) + OldText("x"))},
             {"ItemData", "\7" + WithHead(1, Numbers({2, -1, -1, 0, -1, 0}) + BlockText(u"x"))},
             {"ItemData", "\3" + OldBlock}}) {
        ReadFormOver(*Control, ListFile(name, block));
        EXPECT_EQ(Control->Items().Count(), 0) << name << block.size();
        EXPECT_EQ(Written(), ListFile(name, block));
    }
    Control->Items().Add().SetCaption("x");
    EXPECT_EQ(Written(), ListFile("Data", WithHead(1, Numbers({-1, -1, -1, 0, 0}) + OldText("x"))));
}

TEST_F(ListViewFile, TextsThatAreTooLongForTheFileAreCutThere) {
    Control->Items().Add().SetCaption(std::string(300, 'a'));
    ReadFormOver(*Control, Written());
    EXPECT_EQ(Control->Items()[0].Caption(), std::string(255, 'a'));
}

TEST_F(ListViewFile, ItemsAreCopied) {
    ReadFormOver(*Control, ListFile("Data", OldBlock));
    auto* const copy = Add<TListView>(0, 0, 100, 100);
    copy->Items().Add().SetCaption("goes");
    copy->HandleNeeded();
    copy->SetItems(Control->Items());
    ASSERT_EQ(copy->Items().Count(), 2);
    EXPECT_EQ(copy->Items()[0].SubItems().CommaText(), "a,");
    EXPECT_EQ(copy->Items()[0].StateIndex(), 1);
    EXPECT_EQ(ItemTexts(copy->Handle()), (std::vector<std::string>{"one", "two"}));
    copy->SetItems(copy->Items());
    EXPECT_EQ(copy->Items().Count(), 2);
    const auto itemsOf = [](TListView& list) {
        const std::string text = FormTextOf(list);
        return text.substr(text.find("  Items."));
    };
    Control->Items()[0].SetData(Control);
    Control->Items()[0].SetCaption("first"); // so that both are made anew
    copy->SetItems(Control->Items());
    EXPECT_EQ(itemsOf(*copy), itemsOf(*Control)) << "their images too";
    EXPECT_EQ(copy->Items()[0].Data(), Control);
    copy->SetSortType(stText);
    Control->Items()[0].SetCaption("z");
    copy->SetItems(Control->Items());
    EXPECT_EQ(copy->Items()[0].Caption(), "two");
}

/// Whether a form that inherits from another one writes the items of its list.
class InheritedItems : public testing::Test {
protected:
    using TChange = std::function<void(TListItems& items)>;

    static bool AreWritten(std::string_view ancestors, std::string_view own, const TChange& change = {}) {
        RegisterClasses<TListView>();
        const TFormPtr ancestor(NewForm<TForm>(nullptr));
        const TFormPtr descendant(NewForm<TForm>(nullptr));
        for (const auto& [form, block] : {std::pair(ancestor.get(), ancestors), std::pair(descendant.get(), own)}) {
            ReadFormOver(*form, "object F: TForm\r\n" + ListFile("Data", block) + "end\r\n");
        }
        if (change) {
            change(dynamic_cast<TListView&>(*descendant->FindComponent("L")).Items());
        }
        TMemoryStream stream;
        WriteComponent(stream, *descendant, TStreamFormat::Text, ancestor.get());
        return std::string(stream.Bytes()).find("Items.Data") != std::string::npos;
    }
    static bool AreWrittenAfter(const TChange& change) { return AreWritten(OldBlock, OldBlock, change); }
};

TEST_F(InheritedItems, AreNotWrittenAgain) {
    EXPECT_FALSE(AreWritten(OldBlock, OldBlock));
    EXPECT_FALSE(AreWrittenAfter([](TListItems& items) { items[0].SetImageIndex(items[0].ImageIndex()); }));
    EXPECT_TRUE(AreWrittenAfter([](TListItems& items) { items[1].SetCaption("other"); }));
    EXPECT_TRUE(AreWrittenAfter([](TListItems& items) { items[1].SetImageIndex(7); }));
    EXPECT_TRUE(AreWrittenAfter([](TListItems& items) { items[1].SetStateIndex(7); }));
    EXPECT_TRUE(AreWrittenAfter([](TListItems& items) { items[0].SubItems().Put(0, "other"); }));
    const auto with = [](const std::string& old, const std::string& other) {
        std::string block = OldBlock;
        return block.replace(block.find(old), old.size(), other);
    };
    EXPECT_TRUE(AreWritten(OldBlock, with(Numbers({3, 1, 2}), Numbers({3, 1, 9})))) << "another overlay image";
    EXPECT_TRUE(AreWritten(OldBlock, with(std::string("\5\0", 2) + "\xFF", std::string("\6\0", 2) + "\xFF")))
        << "another image of a further text";
}

TEST_F(InheritedItems, InABlockThatNobodyUnderstandsTheyAreNotEither) {
    EXPECT_FALSE(AreWritten("abc", "abc"));
    EXPECT_TRUE(AreWritten("abc", "abcd"));
}

// --- Sorting

class ListViewSorting : public TControlTest<TListView> {
protected:
    void Fill(std::initializer_list<const char*> captions) {
        for (const char* caption : captions) {
            Control->Items().Add().SetCaption(caption);
        }
    }
    /// The captions, which those of the window are to be too.
    std::string Order() {
        std::string order;
        for (int i = 0; i < Control->Items().Count(); ++i) {
            order += Control->Items()[i].Caption();
        }
        if (Control->HandleAllocated()) {
            std::string shown;
            for (const std::string& text : ItemTexts(Control->Handle())) {
                shown += text;
            }
            EXPECT_EQ(shown, order);
        }
        return order;
    }
};

TEST_F(ListViewSorting, ByTheCaptionsInAnyLetterCase) {
    Fill({"b", "C", "a"});
    EXPECT_EQ(Order(), "bCa");
    Control->SetSortType(stText);
    EXPECT_EQ(Order(), "abC");
    Show();
    Fill({"B", "0"});
    EXPECT_EQ(Order(), "0abBC");
    Control->Items()[4].SetCaption("A");
    EXPECT_EQ(Order(), "0aAbB");
    Control->Items()[1].SetCaption("z");
    EXPECT_EQ(Order(), "0AbBz");
    Control->SetSortType(stNone);
    Fill({"1"});
    Control->SetSortType(stNone);
    EXPECT_EQ(Order(), "0AbBz1");
    EXPECT_TRUE(Control->AlphaSort());
    EXPECT_EQ(Order(), "01AbBz");
}

TEST_F(ListViewSorting, TheSelectionAndTheFurtherTextsGoAlong) {
    Control->SetViewStyle(vsReport);
    Control->Columns().Add();
    Control->Columns().Add();
    Fill({"b", "a"});
    Control->Items()[0].SubItems().Add("of b");
    Show();
    int changes = 0;
    Control->SetItemIndex(0);
    Control->SetOnSelectItem([&](TObject*, TListItem*, bool) { ++changes; });
    Control->SetSortType(stBoth);
    EXPECT_EQ(Order(), "ab");
    EXPECT_EQ(Control->ItemIndex(), 1);
    EXPECT_EQ(changes, 0);
    char text[20];
    LVITEMA item{};
    item.iSubItem = 1;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(Control->Handle(), LVM_GETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(text, "of b");
    EXPECT_EQ(Control->Items()[1].SubItems()[0], "of b");
}

TEST_F(ListViewSorting, WithinAnUpdateItWaitsForTheEnd) {
    Control->SetSortType(stText);
    int compared = 0;
    Control->SetOnCompare([&](TObject*, TListItem* a, TListItem* b, int, int& compare) {
        ++compared;
        compare = CompareText(a->Caption(), b->Caption());
    });
    Show();
    Control->Items().BeginUpdate();
    Fill({"c", "a", "b"});
    EXPECT_EQ(compared, 0);
    Control->Items().EndUpdate();
    EXPECT_EQ(Order(), "abc");
    compared = 0;
    Control->Items().BeginUpdate();
    Control->Items().EndUpdate();
    EXPECT_EQ(compared, 0);
    Control->Items().BeginUpdate();
    Control->Items().BeginUpdate();
    Control->Items()[0].SetCaption("z");
    Control->Items().EndUpdate();
    EXPECT_EQ(compared, 0) << "they nest";
    ValidateRect(Control->Handle(), nullptr);
    Control->Items().EndUpdate();
    EXPECT_EQ(Order(), "bcz");
    EXPECT_TRUE(GetUpdateRect(Control->Handle(), nullptr, FALSE));
}

TEST_F(ListViewSorting, AnItemThatStaysInItsPlaceIsComparedWithThoseBesideIt) {
    int compared = 0;
    Control->SetOnCompare([&](TObject*, TListItem* a, TListItem* b, int, int& compare) {
        ++compared;
        compare = CompareText(a->Caption(), b->Caption());
    });
    Fill({"a", "b", "b", "b", "c", "d", "e", "f", "g", "h"});
    Control->SetSortType(stText);
    compared = 0;
    Control->Items()[2].SetCaption("b");
    Control->Items()[7].SetCaption("fa");
    EXPECT_EQ(compared, 4);
}

TEST_F(ListViewSorting, AHandlerComparesByTheDataOfTheProgram) {
    int numbers[] = {3, 1, 2};
    Control->SetOnCompare([](TObject*, TListItem* a, TListItem* b, int data, int& compare) {
        const auto number = [](const TListItem* item) { return item->Data() ? *static_cast<int*>(item->Data()) : 0; };
        compare = (number(a) - number(b)) * (data == 1 ? -1 : 1);
    });
    Control->SetSortType(stData);
    for (int& number : numbers) {
        TListItem& item = Control->Items().Add();
        item.SetCaption(std::to_string(number));
        item.SetData(&number);
    }
    EXPECT_EQ(Order(), "123");
    Control->Items()[0].SetCaption("x");
    EXPECT_EQ(Order(), "x23") << "the caption does not count";
    EXPECT_TRUE(Control->CustomSort(1));
    EXPECT_EQ(Order(), "32x");
}

TEST_F(ListViewSorting, EqualItemsKeepTheirOrder) {
    for (int i = 0; i < 100; ++i) {
        Control->Items().Add().SetCaption(i % 2 ? "a" : "A");
        Control->Items()[i].SetImageIndex(i);
    }
    Control->SetSortType(stText);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(Control->Items()[i].ImageIndex(), i);
    }
}

TEST_F(ListViewSorting, AnyHandlerLeavesEachItemOnce) {
    for (int i = 0; i < 100; ++i) {
        Control->Items().Add().SetCaption(std::to_string(i));
    }
    unsigned random = 1;
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int& compare) {
        random = random * 1103515245 + 12345;
        compare = static_cast<int>((random >> 16) % 3) - 1;
    });
    EXPECT_TRUE(Control->AlphaSort());
    std::set<std::string> captions;
    for (int i = 0; i < 100; ++i) {
        captions.insert(Control->Items()[i].Caption());
    }
    EXPECT_EQ(captions.size(), 100u);
    Control->SetOnCompare([](TObject*, TListItem*, TListItem*, int, int&) { throw EConvertError("no"); });
    EXPECT_THROW(Control->AlphaSort(), EConvertError);
    EXPECT_EQ(Control->Items().Count(), 100);
}

TEST_F(ListViewSorting, AHandlerMayChangeTheListOrFreeIt) {
    Fill({"c", "b", "a"});
    Show();
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int& compare) {
        compare = 1;
        Control->Items().Clear();
    });
    EXPECT_FALSE(Control->AlphaSort());
    EXPECT_EQ(Control->Items().Count(), 0);
    Control->SetOnCompare(nullptr);
    Fill({"c", "b", "a"});
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int& compare) {
        compare = 1;
        if (Control->Items().Count() == 3) {
            Control->Items().Add();
        }
    });
    EXPECT_FALSE(Control->AlphaSort());
    EXPECT_EQ(Control->Items()[0].Caption(), "c");
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int& compare) {
        compare = 1;
        if (Control->Items().Count() == 4) {
            Control->Items().Delete(3);
        }
    });
    EXPECT_FALSE(Control->AlphaSort());
    EXPECT_EQ(Order(), "cba");
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int& compare) {
        compare = -1;
        Control->Items().Clear();
    });
    Control->SetSortType(stText);
    EXPECT_EQ(Control->Items().Count(), 0);
    Control->SetOnCompare(nullptr);
    Fill({"a", "b", "c"});
    int compared = 0;
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int&) {
        ++compared;
        Control->Items().Clear();
    });
    Control->Items()[1].SetCaption("x");
    EXPECT_EQ(compared, 1) << "there is nothing to compare any more";
    Control->SetSortType(stNone);
    Control->SetOnCompare(nullptr);
    Fill({"c", "b", "a"});
    Control->SetSortType(stText);
    Control->SetOnCompare([&](TObject*, TListItem*, TListItem*, int, int&) { Control->Free(); });
    Control->Items()[1].SetCaption("x");
    EXPECT_EQ(Form->ControlCount(), 0);
}

TEST_F(ListViewSorting, AListFromAFormFileIsSorted) {
    const std::string block =
        WithHead(2, Numbers({0, -1, -1, 0, 0}) + OldText("b") + Numbers({0, -1, -1, 0, 0}) + OldText("a"));
    std::string file = ListFile("Data", block);
    file.insert(file.find("  Items."), "  SortType = stText\r\n");
    ReadFormOver(*Control, file);
    EXPECT_EQ(Order(), "ab");
    const std::string stood = file.substr(file.find("  Items."));
    EXPECT_NE(FormTextOf(*Control).find(stood), std::string::npos) << "as it stood";
    ReadFormOver(*Control, "object L: TListView SortType = stBoth end"); // as a file that inherits from it
    EXPECT_NE(FormTextOf(*Control).find(stood), std::string::npos);
    Control->SetOnCompare([](TObject*, TListItem* a, TListItem* b, int, int& compare) {
        compare = -CompareText(a->Caption(), b->Caption());
    });
    Control->AlphaSort();
    EXPECT_EQ(Order(), "ba");
    Control->SetOnCompare(nullptr);
    Control->AlphaSort();
    EXPECT_EQ(FormTextOf(*Control).find(stood), std::string::npos) << "the program has sorted it";
}

} // namespace
} // namespace kx
