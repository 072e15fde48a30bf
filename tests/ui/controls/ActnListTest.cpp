// SPDX-License-Identifier: MIT
// Actions and what follows them.

#include "kx/ui/controls/ActnList.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

namespace kx {
namespace {

using namespace test;

class Action : public TFormTest {
protected:
    Action() : Save(Form.get()), Button(new TButton(Form.get())), Item(Form.get()) {
        Button->SetParent(Form.get());
        Save.SetCaption("&Save");
        Save.SetHint("Saves it");
        Save.SetShortCut(ShortCut('S', scCtrl));
        Save.SetOnExecute([this](TObject*) { ++Executed; });
    }

    kx::TAction Save;
    TButton* Button;
    TMenuItem Item;
    int Executed = 0;
};

TEST_F(Action, GivesItsLookToWhateverGetsIt) {
    Button->SetCaption("other");
    Save.SetEnabled(false);
    Save.SetChecked(true);
    Save.SetImageIndex(3);
    Button->SetAction(&Save);
    Item.SetAction(&Save);
    EXPECT_EQ(Button->Caption(), "&Save");
    EXPECT_EQ(Button->Hint(), "Saves it");
    EXPECT_FALSE(Button->Enabled());
    EXPECT_EQ(Item.Caption(), "&Save");
    EXPECT_TRUE(Item.Checked());
    EXPECT_EQ(Item.ImageIndex(), 3);
    EXPECT_EQ(Item.ShortCut(), ShortCut('S', scCtrl));
    EXPECT_FALSE(Item.Enabled());
    EXPECT_EQ(Button->Action(), &Save);
}

TEST_F(Action, IsFollowedInWhatIsStillTheSame) {
    Button->SetAction(&Save);
    Item.SetAction(&Save);
    Button->SetCaption("mine");
    Save.SetCaption("Store");
    Save.SetHint("Stores it");
    Save.SetVisible(false);
    EXPECT_EQ(Button->Caption(), "mine");
    EXPECT_EQ(Item.Caption(), "Store");
    EXPECT_EQ(Button->Hint(), "Stores it");
    EXPECT_FALSE(Button->Visible());
    EXPECT_FALSE(Item.Visible());
    Button->SetAction(nullptr);
    Save.SetHint("unheard");
    EXPECT_EQ(Button->Hint(), "Stores it");
}

TEST_F(Action, IsExecutedByAClickUnlessThereIsAHandler) {
    int clicks = 0;
    Button->SetOnClick([&](TObject*) { ++clicks; });
    Button->SetAction(&Save);
    Item.SetAction(&Save);
    Button->Click();
    Item.Click();
    EXPECT_EQ(Executed, 2) << "getting the action replaced the handler";
    Button->SetOnClick([&](TObject*) { ++clicks; });
    Button->Click();
    EXPECT_EQ(Executed, 2);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Action, IsBroughtUpToDateBeforeItIsExecuted) {
    Save.SetOnUpdate([this](TObject*) { Save.SetEnabled(false); });
    EXPECT_FALSE(Save.Execute());
    EXPECT_EQ(Executed, 0) << "disabled by then";
    EXPECT_FALSE(kx::TAction().Execute()) << "nothing to do";
}

TEST_F(Action, MayGoBeforeWhatFollowsItAndWhileItIsExecuted) {
    auto* const gone = new kx::TAction(Form.get());
    gone->SetOnUpdate([gone](TObject*) { gone->Free(); });
    Button->SetAction(gone);
    Item.SetAction(gone);
    Button->Click();
    EXPECT_EQ(Button->Action(), nullptr);
    EXPECT_EQ(Item.Action(), nullptr);
    Button->Click();
    Button->SetAction(&Save);
    Button->Free();
    Save.SetCaption("nobody follows");
}

TEST_F(Action, ItsListKnowsItAndItsImages) {
    auto images = std::make_unique<TImageList>(Form.get());
    TActionList list;
    list.SetImages(images.get());
    Save.SetActionList(&list);
    EXPECT_EQ(list.ActionCount(), 1);
    EXPECT_EQ(list.Actions(0), &Save);
    EXPECT_THROW(list.Actions(1), EListError);
    images.reset();
    EXPECT_EQ(list.Images(), nullptr);
    {
        kx::TAction other;
        other.SetActionList(&list);
        EXPECT_EQ(list.ActionCount(), 2);
    }
    EXPECT_EQ(list.ActionCount(), 1);
}

TEST_F(Action, OfAFormFileLeavesWhatTheFileSays) {
    RegisterClasses<TButton, kx::TAction, TActionList>();
    const std::string text = "object Form: TForm\r\n"
                             "  object Named: TButton\r\n"
                             "    Action = Go\r\n"
                             "    Caption = 'Own'\r\n"
                             "  end\r\n"
                             "  object Plain: TButton\r\n"
                             "    Action = Go\r\n"
                             "  end\r\n"
                             "  object List: TActionList\r\n"
                             "    object Go: TAction\r\n"
                             "      Caption = 'Go'\r\n"
                             "      Hint = 'Goes'\r\n"
                             "    end\r\n"
                             "  end\r\n"
                             "end\r\n";
    const TFormPtr read(NewForm<TForm>(nullptr));
    ReadFormOver(*read, text);
    const auto& named = dynamic_cast<TButton&>(*read->FindComponent("Named"));
    const auto& plain = dynamic_cast<TButton&>(*read->FindComponent("Plain"));
    const auto& list = dynamic_cast<TActionList&>(*read->FindComponent("List"));
    ASSERT_EQ(list.ActionCount(), 1);
    EXPECT_EQ(plain.Action(), list.Actions(0));
    EXPECT_EQ(named.Caption(), "Own");
    EXPECT_EQ(named.Hint(), "Goes");
    EXPECT_EQ(plain.Caption(), "Go");
}

} // namespace
} // namespace kx
