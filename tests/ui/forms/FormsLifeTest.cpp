// SPDX-License-Identifier: MIT
// Forms that go, or lose their windows, while something of them is under way.

#include "tests/ui/HostDialog.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsPageScroller.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"
#include "tests/support/TestForms.h"

namespace kx {
namespace {

using namespace test;

[[noreturn]] void ThrowAlways(TObject*) { throw Exception("thrown"); }

// --- Release

TEST(Release, AFormStaysAsLongAsAHandlerOfItRuns) {
    TComponent owner;
    auto* const form = NewForm<TForm>(&owner);
    auto* const button = new TButton(form);
    button->SetParent(form);
    const TAlive alive(*form);
    bool livedInside = false;
    button->SetOnClick([&](TObject*) {
        form->Release();
        Application().ProcessMessages(); // as a dialog does that the handler shows
        livedInside = static_cast<bool>(alive);
    });
    form->Show();
    SendMessageA(button->Handle(), BM_CLICK, 0, 0);
    EXPECT_TRUE(livedInside);
    EXPECT_TRUE(PumpUntil([&] { return !alive; }));
}

TEST(Release, AFormStaysThroughALoopOfTheSystemThatItsHandlerStarts) {
    TComponent owner;
    auto* const form = NewForm<TForm>(&owner);
    auto* const button = new TButton(form);
    button->SetParent(form);
    const TAlive alive(*form);
    bool livedInside = false;
    button->SetOnClick([&](TObject*) {
        form->Release();
        MessageBoxA(nullptr, "text", "Release", MB_OK);
        livedInside = static_cast<bool>(alive);
    });
    form->Show();
    bool queueRan = false;
    RunDialog(
        [&] {
            SendMessageA(button->Handle(), BM_CLICK, 0, 0);
            return true;
        },
        {{"the box is shown", [] { return ShownMessageBox() != nullptr; },
          [&] { Application().QueueCall([&] { queueRan = true; }); }},
         {"the queue has run", [&] { return queueRan; }, [] { SendMessageA(ShownMessageBox(), WM_CLOSE, 0, 0); }}});
    EXPECT_TRUE(livedInside);
    EXPECT_TRUE(PumpUntil([&] { return !alive; }));
}

TEST(Release, AFormThatAnOuterHandlerReleasedStaysWhileInnerMessagesEnd) {
    TComponent owner;
    auto* const outer = NewForm<TForm>(&owner);
    auto* const inner = NewForm<TForm>(&owner);
    auto* const button = new TButton(outer);
    button->SetParent(outer);
    const TAlive outerAlive(*outer);
    const TAlive innerAlive(*inner);
    bool innerGone = false;
    bool outerLived = false;
    outer->Show();
    inner->Show();
    button->SetOnClick([&](TObject*) {
        outer->Release();
        PostMessageA(inner->Handle(), WM_CLOSE, 0, 0);
        Application().ProcessMessages();
        Application().ProcessMessages();
        innerGone = !innerAlive;
        outerLived = static_cast<bool>(outerAlive);
    });
    inner->SetOnClose([](TObject*, TCloseAction& action) { action = caFree; });
    SendMessageA(button->Handle(), BM_CLICK, 0, 0);
    EXPECT_TRUE(innerGone) << "the message that released it was done";
    EXPECT_TRUE(outerLived);
    EXPECT_TRUE(PumpUntil([&] { return !outerAlive; }));
}

TEST(Release, OutsideOfAllMessagesAFormGoesWithTheNextOnes) {
    TComponent owner;
    auto* const form = NewForm<TForm>(&owner);
    form->Release();
    EXPECT_EQ(owner.ComponentCount(), 1);
    Application().ProcessMessages();
    EXPECT_EQ(owner.ComponentCount(), 0);
}

// --- Windows that others destroy

TEST(ModalForms, AModalFormWhoseOwnerWindowGoesEndsWithCancel) {
    const TFormPtr owner(NewForm<TForm>(nullptr));
    owner->Show();
    ASSERT_TRUE(PumpUntil([&] { return owner->Active(); }));
    const TFormPtr modal(NewForm<TForm>(nullptr));
    int hidden = 0;
    modal->SetOnHide([&](TObject*) { ++hidden; });
    modal->SetOnShow([&](TObject*) {
        Application().QueueCall([&] {
            EXPECT_EQ(GetWindow(modal->Handle(), GW_OWNER), owner->Handle());
            DestroyWindow(owner->WindowHandle());
        });
    });
    EXPECT_EQ(modal->ShowModal(), mrCancel);
    EXPECT_FALSE(modal->Visible());
    EXPECT_FALSE(modal->IsModal());
    EXPECT_EQ(hidden, 1);
    EXPECT_EQ(Application().ModalLevel(), 0);
    modal->SetOnShow([&](TObject*) { modal->SetModalResult(mrOk); });
    EXPECT_EQ(modal->ShowModal(), mrOk) << "it can be shown again";
}

TEST(ModalForms, AModalFormWhoseOwnerFormIsFreedEndsWithCancel) {
    auto* owner = NewForm<TForm>(nullptr);
    owner->Show();
    ASSERT_TRUE(PumpUntil([&] { return owner->Active(); }));
    const TFormPtr modal(NewForm<TForm>(nullptr));
    modal->SetOnShow([&](TObject*) { Application().QueueCall([&] { std::exchange(owner, nullptr)->Free(); }); });
    EXPECT_EQ(modal->ShowModal(), mrCancel);
    EXPECT_EQ(owner, nullptr);
}

TEST(ModalForms, AModalFormThatIsFreedWhenIdleEndsWithCancel) {
    auto* modal = NewForm<TForm>(nullptr);
    const TIdleEvent before = Application().OnIdle();
    Application().SetOnIdle([&](TObject*, bool&) {
        if (modal && modal->Visible()) {
            std::exchange(modal, nullptr)->Free();
        }
    });
    EXPECT_EQ(modal->ShowModal(), mrCancel);
    Application().SetOnIdle(before);
    EXPECT_EQ(modal, nullptr);
    EXPECT_EQ(Application().ModalLevel(), 0);
}

TEST(ModalForms, AFormThatIsFreedInOnModalBeginEndsWithCancel) {
    auto* modal = NewForm<TForm>(nullptr);
    Application().SetOnModalBegin([&](TObject*) { std::exchange(modal, nullptr)->Free(); });
    EXPECT_EQ(modal->ShowModal(), mrCancel);
    Application().SetOnModalBegin({});
    EXPECT_EQ(Application().ModalLevel(), 0);
}

TEST(WindowLost, AFormWhoseWindowIsDestroyedIsHiddenAndCanBeShownAgain) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    int hidden = 0;
    form->SetOnHide([&](TObject*) { ++hidden; });
    form->Show();
    DestroyWindow(form->WindowHandle());
    EXPECT_FALSE(form->Visible());
    EXPECT_EQ(hidden, 1);
    form->Show();
    EXPECT_TRUE(IsWindowVisible(form->WindowHandle()));
}

TEST(WindowLost, AFormWhoseWindowCannotBeMadeIsNotVisible) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    THostDialog host;
    form->SetParentWindow(host.Window); // without a window, so that nobody tells of the host's end
    host.Destroy();
    EXPECT_THROW(form->Show(), EOSError);
    EXPECT_FALSE(form->Visible());
    form->SetParentWindow(nullptr);
    int shown = 0;
    form->SetOnShow([&](TObject*) { ++shown; });
    form->Show();
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(IsWindowVisible(form->WindowHandle()));
}

// --- Nothing leaves a destructor

TEST(Destructors, AMenuThatThrowsLosesTheItemNevertheless) {
    TExceptionLog log;
    TComponent owner;
    TMainMenu menu(&owner);
    auto* const item = new TMenuItem(&owner);
    menu.Items().Add(item);
    menu.SetOnChange(ThrowAlways);
    item->Free();
    EXPECT_EQ(menu.Items().Count(), 0);
    EXPECT_THAT(log.Messages(), ElementsAre("thrown"));
    menu.SetOnChange({});
}

TEST(Destructors, AMenuThatThrowsLosesItsImagesNevertheless) {
    TExceptionLog log;
    TMainMenu menu(nullptr);
    auto* const images = new TImageList(16, 16);
    menu.SetImages(images);
    menu.SetOnChange(ThrowAlways);
    images->Free();
    EXPECT_EQ(menu.Images(), nullptr);
    EXPECT_THAT(log.Messages(), ElementsAre("thrown"));
    menu.SetOnChange({});
}

TEST(Destructors, AMenuMayGoWhenItHearsOfAnItemsEnd) {
    TComponent owner;
    auto* menu = new TMainMenu(&owner);
    auto* const item = new TMenuItem(menu);
    menu->Items().Add(item);
    menu->SetOnChange([&](TObject*) { std::exchange(menu, nullptr)->Free(); });
    item->Free();
    EXPECT_EQ(owner.ComponentCount(), 0);
}

TEST(Destructors, AToolBarThatThrowsLosesTheButtonNevertheless) {
    TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const bar = new TToolBar(form.get());
    bar->SetAutoSize(true);
    bar->SetParent(form.get());
    std::vector<TToolButton*> buttons;
    for (int i = 0; i < 4; ++i) {
        buttons.push_back(new TToolButton(form.get()));
        buttons.back()->SetParent(bar);
        buttons.back()->SetWrap(true);
    }
    form->Show();
    bar->SetOnResize(ThrowAlways);
    buttons[3]->Free();
    EXPECT_EQ(bar->ButtonCount(), 3);
    EXPECT_THAT(log.Messages(), ElementsAre("thrown"));
    bar->SetOnResize({});
    const int height = bar->Height();
    buttons[2]->Free();
    EXPECT_LT(bar->Height(), height) << "it is arranged still";
}

/// Cannot make its window any more.
class TFailingScroller : public TPageScroller {
    KX_CLASS()
    using TPageScroller::TPageScroller;
    bool Fails = false;

protected:
    void CreateWnd() override {
        if (Fails) {
            throw Exception("thrown");
        }
        TPageScroller::CreateWnd();
    }
};

const TClass& TFailingScroller::StaticClass() {
    static const TClassBuilder<TFailingScroller> cls("TFailingScroller", TPageScroller::StaticClass());
    return cls.Class();
}

TEST(Destructors, AScrollerThatThrowsLosesItsContentNevertheless) {
    TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const scroller = new TFailingScroller(form.get());
    scroller->SetParent(form.get());
    auto* const content = new TPanel(nullptr);
    content->SetBounds(0, 0, 400, 40);
    scroller->SetControl(content);
    form->Show();
    scroller->Fails = true;
    content->Free(); // has the window made anew, without its arrows
    EXPECT_EQ(scroller->Control(), nullptr);
    EXPECT_EQ(scroller->ControlCount(), 0);
    EXPECT_THAT(log.Messages(), ElementsAre("thrown"));
    scroller->Fails = false;
    EXPECT_NE(scroller->Handle(), nullptr);
}

TEST(Destructors, ANeighbourThatThrowsStopsNoControlFromGoing) {
    TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const upper = new TLabel(form.get());
    auto* const lower = new TLabel(form.get());
    for (TLabel* label : {upper, lower}) {
        label->SetAutoSize(false);
        label->SetHeight(20);
        label->SetAlign(label == upper ? alTop : alClient);
        label->SetParent(form.get());
    }
    form->Show();
    lower->SetOnResize(ThrowAlways);
    upper->Free();
    EXPECT_EQ(form->ControlCount(), 1);
    EXPECT_EQ(lower->Top(), 0);
    EXPECT_THAT(log.Messages(), ElementsAre("thrown"));
}

// --- Flags of what is under way

TEST(Alignment, AHandlerThatThrowsDoesNotTurnItOff) {
    TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const label = new TLabel(form.get());
    label->SetAutoSize(false);
    label->SetAlign(alTop);
    label->SetParent(form.get());
    form->Show();
    label->SetOnResize(ThrowAlways);
    form->SetClientSize(500, 200);
    EXPECT_THAT(log.Messages(), ElementsAre("thrown"));
    label->SetOnResize({});
    form->SetClientSize(400, 200);
    EXPECT_EQ(label->Width(), 400);
}

TEST(Alignment, AControlThatGoesWhileItIsPlacedTakesNoPlace) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    std::vector<TLabel*> labels;
    for (int i = 0; i < 3; ++i) {
        labels.push_back(new TLabel(form.get()));
        labels.back()->SetAutoSize(false);
        labels.back()->SetHeight(20);
        labels.back()->SetTop(20 * i);
        labels.back()->SetAlign(alTop);
        labels.back()->SetParent(form.get());
    }
    form->Show();
    labels[1]->SetOnResize([](TObject* sender) { sender->Free(); });
    form->SetClientSize(500, 200);
    EXPECT_EQ(labels[2]->Top(), 20);
    EXPECT_EQ(labels[2]->Width(), 500);
}

TEST(Alignment, AToolBarThatThrowsIsArrangedAgain) {
    TExceptionLog log;
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const bar = new TToolBar(form.get());
    bar->SetAutoSize(true);
    bar->SetParent(form.get());
    form->Show();
    bar->SetOnResize(ThrowAlways);
    const auto add = [&] {
        auto* const button = new TToolButton(form.get());
        button->SetParent(bar);
        button->SetWrap(true);
    };
    add();
    add();
    bar->SetOnResize({});
    const int height = bar->Height();
    add();
    EXPECT_GT(bar->Height(), height);
}

// --- Parents

TEST(Parents, AControlThatCannotMoveKeepsItsWindow) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const outer = new TPanel(form.get());
    outer->SetParent(form.get());
    auto* const inner = new TPanel(form.get());
    inner->SetParent(outer);
    auto* const edit = new TEdit(form.get());
    edit->SetParent(outer);
    form->Show();
    edit->SetFocus();
    const HWND window = outer->WindowHandle();
    EXPECT_THROW(outer->SetParent(inner), EInvalidOperation);
    EXPECT_THROW(outer->SetParent(outer), EInvalidOperation);
    EXPECT_EQ(outer->WindowHandle(), window);
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(outer->Parent(), form.get());
    EXPECT_TRUE(edit->Focused());
}

TEST(Parents, AControlThatIsMovedBackWhileItLeavesStaysWhereItIsPut) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const third = new TPanel(form.get());
    third->SetParent(form.get());
    auto* const label = new TLabel(form.get());
    label->SetAutoSize(false);
    label->SetAlign(alTop);
    label->SetParent(form.get());
    auto* const rest = new TLabel(form.get());
    rest->SetAutoSize(false);
    rest->SetAlign(alClient);
    rest->SetParent(form.get());
    const TFormPtr other(NewForm<TForm>(nullptr));
    rest->SetOnResize([&](TObject*) {
        rest->SetOnResize({});
        label->SetParent(third);
    });
    label->SetParent(other.get());
    EXPECT_EQ(label->Parent(), third);
    EXPECT_EQ(other->ControlCount(), 0);
    EXPECT_EQ(third->ControlCount(), 1);
}

TEST(Parents, AControlThatGoesGetsNoParentAnyMore) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const label = new TLabel(form.get());
    label->SetAutoSize(false);
    label->SetAlign(alTop);
    label->SetParent(form.get());
    auto* const rest = new TLabel(form.get());
    rest->SetAutoSize(false);
    rest->SetAlign(alClient);
    rest->SetParent(form.get());
    const TFormPtr other(NewForm<TForm>(nullptr));
    rest->SetOnResize([&](TObject*) { label->SetParent(other.get()); });
    label->Free();
    EXPECT_EQ(other->ControlCount(), 0);
    EXPECT_EQ(form->ControlCount(), 1);
}

// --- The screen

TEST(ActiveControl, OfTheScreenIsForgottenWhenItGoes) {
    const TFormPtr form(NewForm<TForm>(nullptr));
    auto* const edit = new TEdit(form.get());
    edit->SetParent(form.get());
    form->Show();
    edit->SetFocus();
    ASSERT_EQ(Screen().ActiveControl(), edit);
    edit->Free();
    EXPECT_EQ(Screen().ActiveControl(), nullptr);
}

} // namespace
} // namespace kx
