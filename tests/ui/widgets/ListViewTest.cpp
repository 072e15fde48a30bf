// SPDX-License-Identifier: MIT
// List views.

#include "kx/ui/widgets/ComCtrls.h"
#include "tests/ui/ControlFixture.h"

namespace kx {
namespace {

using namespace test;

class ListView : public TControlTest<TListView> {};

TEST_F(ListView, ItemsShowTheirTextsInTheColumns) {
    Control->SetViewStyle(vsReport);
    Control->Columns().Add().SetCaption("Name");
    Control->Columns().Add().SetCaption("Folder");
    TListItem& first = Control->Items().Add();
    first.SetCaption("a.txt");
    Show();
    first.SubItems().Add("C:\\");
    first.SubItems().Add("not shown");
    TListItem& second = Control->Items().Insert(0);
    second.SetCaption("b.txt");
    EXPECT_EQ(ItemTexts(Control->Handle()), (std::vector<std::string>{"b.txt", "a.txt"}));
    EXPECT_EQ(first.Index(), 1);
    char text[40];
    LVITEMA item{};
    item.iSubItem = 1;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(Control->Handle(), LVM_GETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(text, "C:\\");
    second.Delete();
    EXPECT_EQ(Control->Items().Count(), 1);
    Control->Items().Clear();
    EXPECT_EQ(ItemCount(Control->Handle()), 0);
}

TEST_F(ListView, SelectionFiresAndSurvivesARecreation) {
    std::vector<std::string> log;
    for (const char* name : {"a", "b", "c"}) {
        Control->Items().Add().SetCaption(name);
    }
    Control->SetOnSelectItem(
        [&](TObject*, TListItem* item, bool selected) { log.push_back((selected ? "+" : "-") + item->Caption()); });
    Show();
    Control->SetItemIndex(1);
    ASSERT_TRUE(SelectItem(Control->Handle(), "c"));
    EXPECT_EQ(log, (std::vector<std::string>{"+b", "-b", "+c"}));
    EXPECT_EQ(Control->Selected()->Caption(), "c");
    Control->SetViewStyle(vsList); // makes the window anew
    EXPECT_EQ(log.size(), 3u);
    EXPECT_EQ(Control->ItemIndex(), 2);
    EXPECT_THROW(Control->Items()[3], EListError);
}

TEST_F(ListView, ADoubleClickComesBehindTheSelection) {
    Control->SetViewStyle(vsReport);
    Control->Columns().Add().SetCaption("Name");
    Control->Items().Add().SetCaption("a");
    Control->Items().Add().SetCaption("b");
    std::vector<std::string> log;
    Control->SetOnSelectItem([&](TObject*, TListItem* item, bool) { log.push_back("select " + item->Caption()); });
    Control->SetOnDblClick([&](TObject*) { log.push_back("double click " + Control->Selected()->Caption()); });
    Show();
    DoubleClickAt(ItemCenter(Control->Handle(), 1));
    ASSERT_TRUE(PumpUntil([&] { return log.size() == 2; }));
    EXPECT_EQ(log, (std::vector<std::string>{"select b", "double click b"}));
}

TEST_F(ListView, MayBeFreedByADoubleClick) {
    Control->Items().Add().SetCaption("a");
    bool freed = false;
    Control->SetOnDblClick([&](TObject*) {
        Control->Free();
        freed = true;
    });
    Show();
    DoubleClickAt(ItemCenter(Control->Handle(), 0));
    EXPECT_TRUE(PumpUntil([&] { return freed; }));
}

/// A report of two items with three texts each.
class Report : public ListView {
protected:
    Report() {
        Control->SetViewStyle(vsReport);
        for (const char* caption : {"Name", "Size", "Folder"}) {
            Control->Columns().Add().SetCaption(caption);
        }
        for (const char* name : {"a", "b"}) {
            TListItem& item = Control->Items().Add();
            item.SetCaption(name);
            item.SubItems().Add(std::string(name) + "1");
            item.SubItems().Add(std::string(name) + "2");
        }
    }
    /// What the window shows in a row.
    std::string Row(int index) {
        std::string row;
        for (int column = 0; column < Header(); ++column) {
            char text[40];
            LVITEMA item{};
            item.iSubItem = column;
            item.pszText = text;
            item.cchTextMax = sizeof text;
            SendMessageA(Control->Handle(), LVM_GETITEMTEXTA, static_cast<WPARAM>(index),
                         reinterpret_cast<LPARAM>(&item));
            row += (column > 0 ? "," : "") + std::string(text);
        }
        return row;
    }
    HWND HeaderWindow() { return reinterpret_cast<HWND>(SendMessageA(Control->Handle(), LVM_GETHEADER, 0, 0)); }
    int Header() { return static_cast<int>(SendMessageA(HeaderWindow(), HDM_GETITEMCOUNT, 0, 0)); }
    int ShownWidth(int column) {
        return static_cast<int>(SendMessageA(Control->Handle(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column), 0));
    }
    std::string ShownCaption(int column) {
        char text[40];
        LVCOLUMNA info{};
        info.mask = LVCF_TEXT;
        info.pszText = text;
        info.cchTextMax = sizeof text;
        SendMessageA(Control->Handle(), LVM_GETCOLUMNA, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&info));
        return text;
    }
    /// Drags the right edge of a column as the user does.
    void DragEdge(int column, int by) {
        RECT r;
        SendMessageA(HeaderWindow(), HDM_GETITEMRECT, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(&r));
        const TRect header = ScreenRectOf(HeaderWindow());
        const TPoint edge{header.Left + r.right - 1, (header.Top + header.Bottom) / 2};
        const int before = ShownWidth(column);
        Drag(edge, {edge.X + by, edge.Y});
        ASSERT_TRUE(PumpUntil([&] { return ShownWidth(column) == before + by && !GetCapture(); }));
    }
};

TEST_F(Report, AChangedColumnLeavesTextsAndWidthsAlone) {
    Show();
    DragEdge(1, 30);
    EXPECT_EQ(Control->Columns()[1].Width(), 80);
    Control->Columns()[0].SetCaption("Title");
    Control->Columns()[2].SetWidth(60);
    Control->Columns()[1].SetAlignment(taRightJustify);
    EXPECT_EQ(Row(0), "a,a1,a2");
    EXPECT_EQ(Row(1), "b,b1,b2");
    EXPECT_EQ(ShownWidth(0), 50);
    EXPECT_EQ(ShownWidth(1), 80);
    EXPECT_EQ(ShownWidth(2), 60);
    EXPECT_EQ(ShownCaption(0), "Title");
    EXPECT_EQ(ShownCaption(1), "Size");
    LVCOLUMNA info{};
    info.mask = LVCF_FMT;
    SendMessageA(Control->Handle(), LVM_GETCOLUMNA, 1, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(info.fmt & LVCFMT_JUSTIFYMASK, LVCFMT_RIGHT);
}

TEST_F(Report, AColumnAddedMovedOrDeletedLeavesTextsAndWidthsAlone) {
    Control->Items()[0].SubItems().Add("a3");
    Show();
    DragEdge(0, 20);
    DragEdge(2, 40);
    Control->Columns().Add().SetCaption("Date");
    EXPECT_EQ(Row(0), "a,a1,a2,a3");
    EXPECT_EQ(Row(1), "b,b1,b2,");
    EXPECT_EQ(ShownWidth(0), 70);
    EXPECT_EQ(ShownWidth(2), 90);
    Control->Columns()[2].SetIndex(1);
    EXPECT_EQ(ShownCaption(1), "Folder");
    EXPECT_EQ(ShownWidth(1), 90) << "the width goes with its column";
    EXPECT_EQ(ShownWidth(2), 50);
    EXPECT_EQ(Row(0), "a,a1,a2,a3") << "texts belong to places";
    Control->Columns().Delete(0);
    EXPECT_EQ(Header(), 3);
    EXPECT_EQ(Row(1), "b,b1,b2");
    EXPECT_EQ(ShownWidth(0), 90);
    EXPECT_EQ(Control->Columns()[0].Width(), 90);
    Control->Columns().Clear();
    EXPECT_EQ(Header(), 0);
    Control->Columns().Add();
    EXPECT_EQ(Row(1), "b");
}

TEST_F(Report, DraggedWidthsSurviveARecreation) {
    Show();
    DragEdge(1, 30);
    Control->SetGridLines(true); // makes the window anew
    EXPECT_EQ(ShownWidth(1), 80);
    EXPECT_EQ(Row(0), "a,a1,a2");
    Control->SetViewStyle(vsList);
    Control->SetViewStyle(vsReport);
    EXPECT_EQ(ShownWidth(1), 80);
}

TEST_F(Report, ChangesOfColumnsAreNoChangesOfItems) {
    int changes = 0;
    Show();
    Control->SetOnChange([&](TObject*, TListItem*, TItemChange) { ++changes; });
    Control->Columns().Add();
    Control->Columns()[0].SetWidth(20);
    EXPECT_EQ(changes, 0);
    Control->Items()[0].SetCaption("other");
    EXPECT_GT(changes, 0);
}

TEST_F(ListView, ImagesShow) {
    auto* const large = new TImageList(Form.get());
    auto* const small = new TImageList(Form.get());
    auto* const button = Add<TListView>(0, 0, 10, 10);
    Control->Items().Add().SetCaption("a");
    Control->Items()[0].SetImageIndex(3);
    Show();
    Control->SetLargeImages(large);
    Control->SetSmallImages(small);
    const auto shown = [&](WPARAM which) {
        return reinterpret_cast<HIMAGELIST>(SendMessageA(Control->Handle(), LVM_GETIMAGELIST, which, 0));
    };
    EXPECT_EQ(shown(LVSIL_NORMAL), large->Handle());
    EXPECT_EQ(shown(LVSIL_SMALL), small->Handle());
    LVITEMA item{};
    item.mask = LVIF_IMAGE;
    SendMessageA(Control->Handle(), LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(item.iImage, 3);
    button->Free();
    EXPECT_EQ(Control->LargeImages(), large);
    EXPECT_EQ(shown(LVSIL_NORMAL), large->Handle());
    Control->SetSmallImages(large);
    Control->SetSmallImages(nullptr);
    EXPECT_EQ(shown(LVSIL_SMALL), nullptr);
    large->Free(); // which serves as one of the lists still
    EXPECT_EQ(Control->LargeImages(), nullptr);
    EXPECT_EQ(shown(LVSIL_NORMAL), nullptr);
}

TEST_F(ListView, AnItemMayBeSelectedBeforeThereIsAWindow) {
    Control->Items().Add().SetCaption("a");
    Control->Items().Add().SetCaption("b");
    Control->Items()[1].SetSelected(true);
    EXPECT_TRUE(Control->Items()[1].Selected());
    EXPECT_EQ(Control->ItemIndex(), 1);
    Show();
    EXPECT_EQ(Control->ItemIndex(), 1);
    EXPECT_EQ(SendMessageA(Control->Handle(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED), 1);
}

TEST_F(ListView, StateImagesShow) {
    auto* const images = new TImageList(Form.get());
    Control->SetStateImages(images);
    Control->Items().Add().SetCaption("a");
    Control->Items()[0].SetStateIndex(1);
    Show();
    const auto state = [&] { return SendMessageA(Control->Handle(), LVM_GETITEMSTATE, 0, LVIS_STATEIMAGEMASK) >> 12; };
    EXPECT_EQ(state(), 2);
    Control->Items()[0].SetStateIndex(40);
    EXPECT_EQ(state(), 15) << "the greatest that there is";
    Control->Items()[0].SetStateIndex(-9);
    EXPECT_EQ(state(), 0);
    Control->Items()[0].SetStateIndex(2);
    Control->Items()[0].SetStateIndex(-1);
    EXPECT_EQ(state(), 0);
    EXPECT_NE(SendMessageA(Control->Handle(), LVM_GETIMAGELIST, LVSIL_STATE, 0), 0);
    images->Free();
    EXPECT_EQ(Control->StateImages(), nullptr);
    EXPECT_EQ(SendMessageA(Control->Handle(), LVM_GETIMAGELIST, LVSIL_STATE, 0), 0);
}

} // namespace
} // namespace kx
