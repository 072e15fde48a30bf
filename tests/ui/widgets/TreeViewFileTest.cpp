// SPDX-License-Identifier: MIT
#include "kx/ui/widgets/ComCtrlsTree.h"
#include "tests/support/FormFiles.h"
#include "tests/ui/BlockFile.h"
#include "tests/ui/ControlFixture.h"

#include <algorithm>

namespace kx {
namespace {

using namespace test;

constexpr char TreeHead[] = "object T: TTreeView\r\n  Left = 0\r\n  Top = 0\r\n  Width = 121\r\n  Height = 97\r\n";

std::string TreeFile(const std::string& name, std::string_view bytes) { return BlockFile(TreeHead, name, bytes); }

std::string Number(int32_t number) { return BlockNumber(number); }

std::string NodeBytes(int image, int selected, int state, int children, const std::u16string& text) {
    return Number(30 + static_cast<int>(2 * text.size())) + Number(image) + Number(selected) + Number(state) +
           Number(-1) + Number(-1) + Number(0) + Number(children) + '\1' + BlockText(text);
}

std::string OldNodeBytes(int image, int children, const std::string& text) {
    return Number(25 + static_cast<int>(text.size())) + Number(image) + Number(0) + Number(-1) + Number(-1) +
           Number(0) + Number(children) + static_cast<char>(text.size()) + text;
}

class TreeViewFile : public TControlTest<TTreeView> {
protected:
    std::string Written() {
        const std::string text = FormTextOf(*Control);
        const size_t items = std::min(text.find("  Items."), text.size() - std::string("end\r\n").size());
        return TreeHead + text.substr(items);
    }
};

const std::string NewBlock = std::string("\3") + Number(2) + NodeBytes(1, 2, -1, 1, u"root") +
                             NodeBytes(0, 0, 3, 0, u"\u00E4") + NodeBytes(0, 0, -1, 0, u"");

TEST_F(TreeViewFile, NodesComeBackByteForByte) {
    ReadFormOver(*Control, TreeFile("NodeData", NewBlock));
    ASSERT_EQ(Control->Items().Count(), 3);
    EXPECT_EQ(Control->Items()[0].Text(), "root");
    EXPECT_EQ(Control->Items()[0].ImageIndex(), 1);
    EXPECT_EQ(Control->Items()[0].SelectedIndex(), 2);
    EXPECT_EQ(Control->Items()[1].Parent(), &Control->Items()[0]);
    EXPECT_EQ(Control->Items()[1].StateIndex(), 3);
    EXPECT_EQ(Control->Items()[2].Level(), 0);
    const std::string file = TreeFile("NodeData", NewBlock);
    EXPECT_EQ(Written(), file);
    Control->HandleNeeded(); // a window changes nothing
    EXPECT_EQ(Written(), file);
    Control->Items()[2].SetText("x");
    Control->Items()[2].SetText("");
    EXPECT_EQ(Written(), file) << "made anew";
    Control->Items()[1].Delete();
    EXPECT_EQ(Written(), TreeFile("NodeData", std::string("\3") + Number(2) + NodeBytes(1, 2, -1, 0, u"root") +
                                                  NodeBytes(0, 0, -1, 0, u"")));
    Control->Items().Clear();
    EXPECT_EQ(Written().find("Items"), std::string::npos);
}

TEST_F(TreeViewFile, NodesOfOlderToolsAreReadAndStayAsTheyAre) {
    const std::string block = Number(1) + OldNodeBytes(5, 1, "old") + OldNodeBytes(0, 0, "child");
    ReadFormOver(*Control, TreeFile("Data", block));
    ASSERT_EQ(Control->Items().Count(), 2);
    EXPECT_EQ(Control->Items()[0].Text(), "old");
    EXPECT_EQ(Control->Items()[0].ImageIndex(), 5);
    EXPECT_EQ(Control->Items()[1].Level(), 1);
    EXPECT_EQ(Written(), TreeFile("Data", block));
    Control->Items()[0].SetText("new");
    EXPECT_NE(Written().find("Items.NodeData"), std::string::npos);
    EXPECT_EQ(Written().find("Items.Data"), std::string::npos);
}

TEST_F(TreeViewFile, BlocksThatNobodyUnderstandsAreKept) {
    std::string tooLong = NewBlock;
    tooLong += "x";
    std::string tooDeep = std::string("\3") + Number(1);
    for (int i = 0; i < 1000; ++i) {
        tooDeep += NodeBytes(0, 0, 0, 1, u"");
    }
    for (const std::string& block :
         {std::string("\7"), std::string("\3"), NewBlock.substr(0, NewBlock.size() - 1), tooLong, tooDeep,
          std::string("\3") + Number(1) + Number(-5), std::string("\3") + Number(1) + NodeBytes(0, 0, 0, -1, u""),
          std::string("\3") + Number(INT32_MAX)}) {
        ReadFormOver(*Control, TreeFile("NodeData", block));
        EXPECT_EQ(Control->Items().Count(), 0) << block.size();
        EXPECT_EQ(Written(), TreeFile("NodeData", block));
    }
    Control->Items().Add(nullptr, "new");
    EXPECT_EQ(Written(), TreeFile("NodeData", std::string("\3") + Number(1) + NodeBytes(0, 0, -1, 0, u"new")));
}

TEST_F(TreeViewFile, NodesAreCopiedWithAllThatIsInside) {
    ReadFormOver(*Control, TreeFile("NodeData", NewBlock));
    auto* const copy = Add<TTreeView>(0, 0, 100, 100);
    copy->Items().Add(nullptr, "goes");
    copy->SetItems(Control->Items());
    ASSERT_EQ(copy->Items().Count(), 3);
    EXPECT_EQ(copy->Items()[1].StateIndex(), 3);
    EXPECT_EQ(copy->Items()[1].Parent()->Text(), "root");
}

} // namespace
} // namespace kx
