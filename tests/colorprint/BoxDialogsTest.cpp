// SPDX-License-Identifier: MIT
// What the colour and the print dialog have in common, once for each.

#include "BoxDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "tests/support/Printers.h"

// What the colour and the print dialog have in common.

namespace kx {
namespace {

using namespace test;

bool IsOk(const TMessage& m) { return m.Msg == WM_COMMAND && m.WParam == IDOK; }

template <class T> class BoxDialog : public TDialogTest {
protected:
    void SetUp() override {
        ASSERT_GE(InstalledPrinters().size(), 2u) << NoPrinters;
        Dialog.CustDlgParams().SetBottomForm(Bottom.get());
    }

    TFormPtr Bottom = MakeForm(clMoneyGreen, 50, 77);
    T& Dialog = *new T(Owner.get());
};
using TBoxDialogs = testing::Types<TKxColorDialog, TKxPrintDialog>;
TYPED_TEST_SUITE(BoxDialog, TBoxDialogs);

// --- Showing

TYPED_TEST(BoxDialog, ATitleReplacesTheSystemsAndAnEmptyOneDoesNot) {
    auto& dialog = this->Dialog;
    std::string system;
    Look(dialog, [&] { system = TextOf(dialog.DialogWindow()); });
    EXPECT_NE(system, "");
    dialog.SetTitle("Drawing");
    Look(dialog, [&] { EXPECT_EQ(TextOf(dialog.DialogWindow()), "Drawing"); });
}

TYPED_TEST(BoxDialog, OnShowComesWhenAllIsDoneBetweenTheInheritedOneAndTheInternalNotification) {
    auto& dialog = this->Dialog;
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.SetTitle("Complete");
    std::vector<std::string> log;
    TRect place;
    static_cast<TCommonDialog&>(dialog).SetOnShow(Note(log, dialog, "inherited"));
    dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &dialog);
        log.emplace_back("show");
        EXPECT_EQ(TextOf(dialog.Handle()), "Complete");
        EXPECT_EQ(GetParent(this->Bottom->WindowHandle()), dialog.Handle());
        EXPECT_EQ(dialog.GetCommonDialogHandle(), dialog.Handle());
        EXPECT_FALSE(IsWindowVisible(dialog.Handle()));
        place = ScreenRectOf(dialog.Handle());
    });
    dialog.SetCommonDialogInternalShowEvent(Note(log, dialog, "internal"));
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.Handle()), place); });
    EXPECT_THAT(log, ElementsAre("inherited", "show", "internal"));
    EXPECT_EQ(dialog.GetCommonDialogHandle(), nullptr);
}

TYPED_TEST(BoxDialog, IsPlacedWithItsForm) {
    auto& dialog = this->Dialog;
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().PosParams().SetShiftX(11);
    dialog.CustDlgParams().PosParams().SetShiftY(-7);
    Look(dialog, [&] {
        const TRect r = ScreenRectOf(dialog.Handle());
        EXPECT_EQ(r.Left, (GetSystemMetrics(SM_CXSCREEN) - Width(r)) / 2 + 11);
        EXPECT_EQ(r.Top, (GetSystemMetrics(SM_CYSCREEN) - Height(r)) / 2 - 7);
    });
}

// --- Closing and messages

TYPED_TEST(BoxDialog, OnCanCloseMayKeepItOpen) {
    auto& dialog = this->Dialog;
    int asked = 0;
    int reported = 0;
    dialog.SetOnCanClose([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        EXPECT_TRUE(allow);
        allow = ++asked > 1;
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += IsOk(m) ? 1 : 0; });
    EXPECT_TRUE(RunDialog(dialog, {ClickItem(dialog, IDOK),
                                   {"it has been asked", [&] { return asked == 1; },
                                    [&] {
                                        EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
                                        EXPECT_EQ(reported, 0);
                                    }},
                                   ClickItem(dialog, IDOK)}));
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(reported, 1);
}

TYPED_TEST(BoxDialog, OnCanCloseIsNotAskedWhenItIsCancelled) {
    auto& dialog = this->Dialog;
    dialog.SetOnCanClose([](TObject*, bool& allow) {
        ADD_FAILURE();
        allow = false;
    });
    EXPECT_FALSE(RunDialog(dialog, {ClickItem(dialog, IDCANCEL)}));
}

TYPED_TEST(BoxDialog, CanBeClosedAsIfAButtonWasPressed) {
    auto& dialog = this->Dialog;
    bool allow = false;
    dialog.SetOnCanClose([&](TObject*, bool& canClose) { canClose = allow; });
    EXPECT_TRUE(RunDialog(dialog, [&] {
        dialog.CloseDialog(3);
        dialog.CloseDialog(mrOk);
        EXPECT_TRUE(IsWindowVisible(dialog.Handle()));
        allow = true;
        dialog.CloseDialog(mrOk);
    }));
    EXPECT_FALSE(RunDialog(dialog, [&] { dialog.CloseDialog(mrCancel); }));
    dialog.CloseDialog(mrOk); // not shown: nothing happens
}

TYPED_TEST(BoxDialog, AVetoedOkIsNeitherPassedOnNorReported) {
    auto& dialog = this->Dialog;
    int vetoed = 0;
    int reported = 0;
    dialog.SetOnEventHooking([&](TObject* sender, TMessage& m, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        if (IsOk(m)) {
            ++vetoed;
            allow = false;
            m.Result = 4711;
        }
    });
    dialog.SetOnEventHook([&](TMessage& m) { reported += IsOk(m) ? 1 : 0; });
    dialog.SetOnCanClose([](TObject*, bool&) { ADD_FAILURE(); });
    EXPECT_FALSE(RunDialog(dialog, {ClickItem(dialog, IDOK),
                                    {"it has been vetoed", [&] { return vetoed == 1; },
                                     [&] { EXPECT_EQ(SendMessageA(dialog.Handle(), WM_COMMAND, IDOK, 0), 4711); }},
                                    ClickItem(dialog, IDCANCEL)}));
    EXPECT_EQ(vetoed, 2);
    EXPECT_EQ(reported, 0);
}

TYPED_TEST(BoxDialog, MessagesAreReportedOnceTheSystemHasAnswered) {
    auto& dialog = this->Dialog;
    LRESULT result = 0;
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == DM_GETDEFID) {
            result = m.Result;
            m.Result = 99;
        }
    });
    Look(dialog, [&] { EXPECT_EQ(SendMessageA(dialog.Handle(), DM_GETDEFID, 0, 0), 99); });
    EXPECT_EQ(result, MAKELONG(IDOK, DC_HASDEFID));
}

TYPED_TEST(BoxDialog, AVetoedDestructionUndocksTheFormAllTheSame) {
    auto& dialog = this->Dialog;
    dialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    int closed = 0;
    dialog.SetOnClose([&](TObject*) { ++closed; });
    Look(dialog);
    EXPECT_EQ(closed, 1);
    EXPECT_FALSE(this->Bottom->IsDocked());
    EXPECT_EQ(dialog.Handle(), nullptr);
    dialog.SetOnEventHooking({});
    Look(dialog, [&] { EXPECT_TRUE(IsWindowVisible(this->Bottom->WindowHandle())); });
    EXPECT_EQ(closed, 2);
}

TYPED_TEST(BoxDialog, ContextMenusAreNotTracked) {
    auto& dialog = this->Dialog;
    TPopupMenu menu;
    this->Bottom->SetPopupMenu(&menu);
    int reported = 0;
    dialog.SetOnEventHook([&](TMessage& m) { reported += m.Msg == WM_CONTEXTMENU ? 1 : 0; });
    Look(dialog, [&] {
        const TPoint centre = CenterOf(this->Bottom->Handle());
        SendMessageA(dialog.Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(this->Bottom->Handle()),
                     MakeLParam(centre.X, centre.Y));
    });
    EXPECT_EQ(reported, 1);
}

} // namespace
} // namespace kx
