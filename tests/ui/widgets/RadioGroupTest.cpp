// SPDX-License-Identifier: MIT
// Groups of radio buttons, by mouse, keyboard and form file.

#include "kx/ui/widgets/ExtCtrlsRadioGroup.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FormFiles.h"
#include "tests/ui/ControlFixture.h"
#include "tests/ui/FocusPump.h"

#include <cstdlib>

namespace kx::test {
namespace {

/// One that can be told to refuse.
class TStubbornGroup : public TRadioGroup {
public:
    using TRadioGroup::TRadioGroup;
    bool Refuses = false;

protected:
    bool CanModify() const override { return !Refuses; }
};

class RadioGroup : public TControlTest<TStubbornGroup> {
protected:
    RadioGroup() {
        Control->SetOnClick([this](TObject*) { ++Clicks; });
        Control->Items().SetCommaText("red,green,blue");
    }
    /// Indices of the buttons that are checked.
    std::vector<int> Checked() const {
        std::vector<int> checked;
        for (int i = 0; i < Control->ControlCount(); ++i) {
            if (Control->Buttons(i).Checked()) {
                checked.push_back(i);
            }
        }
        return checked;
    }

    int Clicks = 0;
};

TEST_F(RadioGroup, HasAButtonForEachItem) {
    EXPECT_EQ(Control->ItemIndex(), -1);
    EXPECT_THAT(Checked(), IsEmpty());
    ASSERT_EQ(Control->ControlCount(), 3);
    EXPECT_EQ(Control->Buttons(2).Caption(), "blue");
    Control->Items().Add("white");
    ASSERT_EQ(Control->ControlCount(), 4);
    Control->Items().Delete(1);
    ASSERT_EQ(Control->ControlCount(), 3);
    EXPECT_EQ(Control->Buttons(1).Caption(), "blue");
    EXPECT_EQ(ErrorOf<EListError>([&] { Control->Buttons(3); }), "List index out of bounds (3)");
    EXPECT_EQ(ErrorOf<EListError>([&] { Control->Buttons(-1); }), "List index out of bounds (-1)");
    Control->Items().Clear();
    EXPECT_EQ(Control->ControlCount(), 0);
}

TEST_F(RadioGroup, ItemIndexChoosesAButtonAndFiresOnClick) {
    Control->SetItemIndex(1);
    EXPECT_THAT(Checked(), ElementsAre(1));
    EXPECT_EQ(Clicks, 1);
    Control->SetItemIndex(1);
    EXPECT_EQ(Clicks, 1);
    Control->SetItemIndex(2);
    EXPECT_THAT(Checked(), ElementsAre(2));
    Control->SetItemIndex(3);
    EXPECT_EQ(Control->ItemIndex(), -1);
    EXPECT_THAT(Checked(), IsEmpty());
    EXPECT_EQ(Clicks, 3);
    Control->SetItemIndex(-7);
    EXPECT_EQ(Clicks, 3);
}

TEST_F(RadioGroup, ItemsThatGoTakeTheChoiceToTheLastOne) {
    Control->SetItemIndex(2);
    Control->Items().Delete(0);
    EXPECT_EQ(Control->ItemIndex(), 1);
    EXPECT_THAT(Checked(), ElementsAre(1));
    Control->Items().Clear();
    EXPECT_EQ(Control->ItemIndex(), -1);
    EXPECT_EQ(Clicks, 1) << "nobody has chosen";
}

TEST_F(RadioGroup, AClickChooses) {
    Show();
    Click(Control->Buttons(1).Handle());
    ASSERT_TRUE(PumpUntil([&] { return Control->ItemIndex() == 1; }));
    EXPECT_EQ(Clicks, 1);
    EXPECT_THAT(Checked(), ElementsAre(1));
    PressButton(Control->Buttons(1).Handle());
    EXPECT_EQ(Clicks, 1) << "it is chosen already";
    Control->Refuses = true;
    PressButton(Control->Buttons(0).Handle());
    EXPECT_EQ(Control->ItemIndex(), 1);
    EXPECT_THAT(Checked(), ElementsAre(1));
    EXPECT_EQ(Clicks, 1);
}

TEST_F(RadioGroup, ARefusedFirstChoiceLeavesNone) {
    Control->Refuses = true;
    PressButton(Control->Buttons(0).Handle());
    EXPECT_EQ(Control->ItemIndex(), -1);
    EXPECT_THAT(Checked(), IsEmpty());
}

TEST_F(RadioGroup, TheKeyboardComesInByTabAndChoosesByArrows) {
    auto* const edit = Add<TEdit>(220, 10, 50, 20);
    Show();
    edit->SetFocus();
    PressKey(VK_TAB);
    ASSERT_TRUE(FocusPump([&] { return Control->Buttons(0).Focused(); })) << "none is chosen: the first button";
    EXPECT_EQ(Control->ItemIndex(), -1);
    PressKey(VK_SPACE);
    ASSERT_TRUE(FocusPump([&] { return Control->ItemIndex() == 0; }));
    PressKey(VK_DOWN);
    ASSERT_TRUE(FocusPump([&] { return Control->ItemIndex() == 1; }));
    EXPECT_TRUE(Control->Buttons(1).Focused());
    PressKey(VK_UP);
    ASSERT_TRUE(FocusPump([&] { return Control->ItemIndex() == 0; }));
    EXPECT_EQ(Clicks, 3);
    Control->SetItemIndex(2);
    edit->SetFocus();
    PressKey(VK_TAB);
    ASSERT_TRUE(FocusPump([&] { return Control->Buttons(2).Focused(); })) << "the chosen one";
    PressKey(VK_TAB);
    ASSERT_TRUE(FocusPump([&] { return edit->Focused(); })) << "one stop for the whole group";
}

TEST_F(RadioGroup, ButtonsStandInColumnsOfEqualWidth) {
    Control->SetColumns(2);
    Control->Items().Add("white");
    const auto rect = [&](int index) { return Control->Buttons(index).BoundsRect(); };
    EXPECT_EQ(rect(0).Left, 8);
    EXPECT_EQ(rect(1).Left, 8);
    EXPECT_EQ(rect(2).Left, 8 + (200 - 18) / 2);
    EXPECT_EQ(rect(2).Top, rect(0).Top);
    EXPECT_EQ(rect(1).Top, rect(0).Bottom);
    EXPECT_EQ(rect(3).Right, 8 + 2 * ((200 - 18) / 2));
    EXPECT_GE(rect(0).Top, std::abs(Control->Font().Height()));
    EXPECT_LE(rect(1).Bottom, 100);
    Control->SetBounds(0, 0, 118, 60);
    EXPECT_EQ(rect(2).Left, 58);
    EXPECT_LE(rect(1).Bottom, 60);
    Control->SetColumns(0);
    EXPECT_EQ(Control->Columns(), 1);
    EXPECT_EQ(rect(3).Left, 8);
    Control->SetColumns(17);
    EXPECT_EQ(Control->Columns(), 16);
    const int top = rect(0).Top;
    Control->Font().SetHeight(-30);
    EXPECT_GT(rect(0).Top, top);
}

TEST_F(RadioGroup, ADisabledGroupShowsDisabledButtons) {
    Control->SetEnabled(false);
    EXPECT_FALSE(Control->Buttons(0).Enabled());
    Control->Items().Add("white");
    EXPECT_FALSE(Control->Buttons(3).Enabled());
    Control->SetEnabled(true);
    EXPECT_TRUE(Control->Buttons(0).Enabled());
    EXPECT_TRUE(Control->Buttons(3).Enabled());
}

TEST_F(RadioGroup, AHandlerMayFreeIt) {
    Show();
    bool freed = false;
    Control->SetOnClick([&](TObject*) {
        freed = true;
        Control->Free();
    });
    Control->SetItemIndex(1);
    EXPECT_TRUE(freed);
}

constexpr const char* GroupFile = R"(object RadioGroup1: TRadioGroup
  Left = 3
  Top = 4
  Width = 120
  Height = 80
  TabOrder = 1
  Caption = 'Colour'
  Columns = 2
  ItemIndex = 1
  Items.Strings = (
    'red'
    'green')
end
)";

TEST_F(RadioGroup, ComesBackFromTheFormFileWithoutAClick) {
    TRadioGroup group(nullptr);
    group.SetParent(Form.get());
    int clicks = 0;
    group.SetOnClick([&](TObject*) { ++clicks; });
    ReadFormOver(group, GroupFile);
    EXPECT_EQ(group.ItemIndex(), 1);
    EXPECT_TRUE(group.Buttons(1).Checked());
    EXPECT_TRUE(group.Buttons(1).TabStop());
    EXPECT_EQ(group.Buttons(1).Left(), 8 + (120 - 18) / 2);
    EXPECT_EQ(clicks, 0);
    EXPECT_EQ(FormLinesOf(group), GroupFile) << "the buttons are the items";
    ReadFormOver(group, "object RadioGroup1: TRadioGroup\n  ItemIndex = 2\nend\n");
    EXPECT_EQ(group.ItemIndex(), -1) << "there is no such item";
    EXPECT_FALSE(group.Buttons(1).Checked());
}

} // namespace
} // namespace kx::test
