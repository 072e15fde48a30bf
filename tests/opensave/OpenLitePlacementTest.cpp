// SPDX-License-Identifier: MIT
// Where the lite dialogs stand.

#include "FileDlgTest.h"

namespace kx {
namespace {

using namespace test;

TPoint CentreOf(const TRect& r) { return {(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2}; }

class TMainTestForm : public TForm {
    KX_CLASS()

    explicit TMainTestForm(TComponent* owner) : TForm(owner) { SetBounds(500, 300, 400, 333); }
};

const TClass& TMainTestForm::StaticClass() {
    static const TClassBuilder<TMainTestForm> cls("TMainTestForm", TForm::StaticClass());
    return cls.Class();
}

class LitePlacement : public TFileDlgTest {
protected:
    /// Screen rectangle at which a dialog with these parameters shows.
    template <class Set> TRect Shown(Set set, TComponent* owner) {
        TRect rect;
        TKxOpenLiteDialog dialog(owner);
        dialog.SetInitialDir(Folder.Path());
        set(dialog.CustDlgParams());
        Look(dialog, [&] {
            rect = ScreenRectOf(dialog.DlgHandle());
            ExpectCleanLayout(dialog);
        });
        return rect;
    }
    template <class Set> TRect Shown(Set set) { return Shown(set, Owner.get()); }

    TRect SystemsPlace() {
        return Shown([](TKxCustDlgParams&) {});
    }
    TRect ScreenCentred(const TRect& r) {
        const int left = (GetSystemMetrics(SM_CXSCREEN) - Width(r)) / 2;
        const int top = (GetSystemMetrics(SM_CYSCREEN) - Height(r)) / 2;
        return {left, top, left + Width(r), top + Height(r)};
    }
};

TEST_F(LitePlacement, StaysWhereTheSystemPutsIt) {
    TRect system;
    TOpenDialog plain(Owner.get());
    Look(plain, [&] { system = ScreenRectOf(plain.DialogWindow()); });
    const TRect ours = SystemsPlace();
    EXPECT_EQ(ours.Left, system.Left);
    EXPECT_EQ(ours.Top, system.Top);
}

TEST_F(LitePlacement, ShiftsMoveTheDialogOnceWhateverThePosition) {
    const TRect system = SystemsPlace();
    const TRect shifted = Shown([](TKxCustDlgParams& p) {
        p.PosParams().SetShiftX(10);
        p.PosParams().SetShiftY(-7);
    });
    EXPECT_EQ(shifted, (TRect{system.Left + 10, system.Top - 7, system.Right + 10, system.Bottom - 7}));
}

TEST_F(LitePlacement, CentresOnTheScreen) {
    const TRect r = Shown([](TKxCustDlgParams& p) { p.SetPosition(dpScrCenter); });
    EXPECT_EQ(r, ScreenCentred(r));
}

TEST_F(LitePlacement, CentresWithItsDockedForms) {
    const TFormPtr right = MakeMarkedForm(clCream, 201, 50);
    const TRect r = Shown([&](TKxCustDlgParams& p) {
        p.SetPosition(dpScrCenter);
        p.SetRightForm(right.get());
    });
    EXPECT_EQ(r, ScreenCentred(r));
}

TEST_F(LitePlacement, CentresOverItsOwner) {
    const TRect r = Shown([](TKxCustDlgParams& p) { p.SetPosition(dpOwnerCenter); });
    EXPECT_EQ(CentreOf(r), CentreOf(ScreenRectOf(Owner->Handle())));
}

TEST_F(LitePlacement, CentresOverTheMainForm) {
    TMainTestForm* form = nullptr;
    Application().CreateForm(&form);
    const TFormPtr guard(form);
    ASSERT_EQ(Application().MainForm(), form);
    form->Show();
    const TPoint centre = CentreOf(ScreenRectOf(form->Handle()));
    EXPECT_EQ(CentreOf(Shown([](TKxCustDlgParams& p) { p.SetPosition(dpMainFormCenter); })), centre);
    // An owner that is no form, or no reference form: the main form stands in.
    TComponent owner;
    EXPECT_EQ(CentreOf(Shown([](TKxCustDlgParams& p) { p.SetPosition(dpOwnerCenter); }, &owner)), centre);
    EXPECT_EQ(CentreOf(Shown([](TKxCustDlgParams& p) { p.SetPosition(dpFormCenter); })), centre);
}

TEST_F(LitePlacement, CentresOverAChosenForm) {
    const TFormPtr form = MakeMarkedForm(clCream, 300, 200);
    form->SetBounds(600, 500, 301, 202);
    form->Show();
    const TRect r = Shown([&](TKxCustDlgParams& p) {
        p.SetPosition(dpFormCenter);
        p.PosParams().SetForm(form.get());
    });
    EXPECT_EQ(CentreOf(r), CentreOf(ScreenRectOf(form->Handle())));
}

TEST_F(LitePlacement, CentresOverAFormChosenByName) {
    const TFormPtr form(new TPreviewForm(&Application()));
    form->SetBounds(600, 400, 301, 202);
    form->Show();
    const TRect r = Shown([&](TKxCustDlgParams& p) {
        p.SetPosition(dpFormCenter);
        p.PosParams().SetFormName("PreviewForm");
    });
    EXPECT_EQ(CentreOf(r), CentreOf(ScreenRectOf(form->Handle())));
}

TEST_F(LitePlacement, WithoutAnyFormItIsCentredOnTheScreen) {
    ASSERT_EQ(Application().MainForm(), nullptr);
    TComponent owner;
    for (const TKxDlgPosition position : {dpMainFormCenter, dpOwnerCenter, dpFormCenter}) {
        const TRect r = Shown([&](TKxCustDlgParams& p) { p.SetPosition(position); }, &owner);
        EXPECT_EQ(r, ScreenCentred(r));
    }
}

TEST_F(LitePlacement, IsFittedToTheScreenWhenWanted) {
    const auto push = [](TKxCustDlgParams& p) {
        p.PosParams().SetShiftX(3000);
        p.PosParams().SetShiftY(-3000);
    };
    const TRect outside = Shown(push);
    EXPECT_GT(outside.Left, GetSystemMetrics(SM_CXSCREEN));
    const TRect fitted = Shown([&](TKxCustDlgParams& p) {
        push(p);
        p.PosParams().SetFitToScreen(true);
    });
    EXPECT_EQ(fitted.Right, GetSystemMetrics(SM_CXSCREEN));
    EXPECT_EQ(fitted.Top, 0);
}

TEST_F(LitePlacement, IsPlacedOncePerShowing) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().PosParams().SetShiftX(25);
    TRect first;
    Look(dialog, [&] {
        first = ScreenRectOf(dialog.DlgHandle());
        // A new frame and a new size do not move it again.
        SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
        EXPECT_EQ(ScreenRectOf(dialog.DlgHandle()), first);
    });
    Look(dialog, [&] { EXPECT_EQ(ScreenRectOf(dialog.DlgHandle()), first); });
}

} // namespace
} // namespace kx
