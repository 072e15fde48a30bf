// SPDX-License-Identifier: MIT
// The frame's bare minimum of a dialog, for tests of the frame alone.

#include "FrameDialog.h"

#include "support/WindowTools.h"

namespace kx::test {

// --- TFrameDialog

TFrameDialog::TFrameDialog(TComponent* owner) : TOpenDialog(owner), TKxDlgCore(static_cast<TOpenDialog&>(*this)) {
    SetOptionsEx({ofExNoPlacesBar});
}

TFrameDialog::~TFrameDialog() { CloseShown(); }

bool TFrameDialog::Execute() {
    FFirstTime = true;
    FClosing = false;
    return TOpenDialog::Execute();
}

void TFrameDialog::DoShow() {
    HWND dialog = DialogWindow();
    AttachDialog(dialog);
    FSystemRect = KxWindowRect(dialog);
    FSystemClient = KxClientRect(dialog);
    FSystemChildren.clear();
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        FSystemChildren.push_back({child, RectIn(dialog, child)});
    }
    FParams.SetClientRect(FSystemClient);
    DockForms();
    FCaptions.SetCaptions(dialog);
    TOpenDialog::DoShow();
    FireShow();
}

void TFrameDialog::DoClose() {
    using T = TFrameDialog;
    RunSteps<T>(*this, {&T::LeaveAtLast, &T::DetachDialog, &T::FireInheritedClose});
}

void TFrameDialog::LeaveAtLast() {
    if (TKxDlgCore::IsGoing() && !FClosing) {
        Leave();
    }
}

TKxMsgVerdict TFrameDialog::BeforeSystem(TMessage& message, int&) {
    const TKxMsgVerdict verdict = FOwnCases ? FOwnCases(message) : mvPass;
    if (verdict != mvPass) {
        return verdict;
    }
    switch (message.Msg) {
    case WM_NCPAINT:
        if (FFirstTime) {
            FFirstTime = false;
            KxSetPosition(FDlgHandle, FParams);
        }
        break;
    case WM_SIZE: FParams.OnResizeWindow(message); break;
    case WM_GETMINMAXINFO: return FClosing ? mvSkip : mvPass;
    case WM_DESTROY: Leave(); break;
    default: break;
    }
    return mvPass;
}

/// The system shows the next dialog in the size in which this one goes.
void TFrameDialog::Leave() {
    FClosing = true;
    if (!Outlives(Existence(), [this] { FParams.DisconnectForms(); })) {
        return;
    }
    const TRect r = KxWindowRect(FDlgHandle);
    SetWindowPos(FDlgHandle, nullptr, 0, 0, Width(r) - FParams.IncX(), Height(r) - FParams.IncY(),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void TFrameDialog::AfterSystem(TMessage& message, int) {
    if (FOwnCasesAfter) {
        FOwnCasesAfter(message);
    }
}

// --- Forms

#define FRAME_TEST_CLASS(Name, Parent)                                                                                 \
    const TClass& Name::StaticClass() {                                                                                \
        static const TClassBuilder<Name> cls(#Name, Parent::StaticClass());                                            \
        return cls.Class();                                                                                            \
    }
FRAME_TEST_CLASS(TSideForm, TForm)
FRAME_TEST_CLASS(TLeftForm, TSideForm)
FRAME_TEST_CLASS(TTopForm, TSideForm)
FRAME_TEST_CLASS(TRightForm, TSideForm)
FRAME_TEST_CLASS(TBottomForm, TSideForm)
FRAME_TEST_CLASS(TCentreForm, TSideForm)
#undef FRAME_TEST_CLASS

TSideForm::TSideForm(TColor color, int width, int height) : TForm(&Application()) {
    SetColor(color);
    SetBounds(300, 300, width, height);
}

TMainFormScope::TMainFormScope(const TRect& bounds) {
    Application().CreateForm(&FForm);
    FForm->SetBoundsRect(bounds);
}

TMainFormScope::~TMainFormScope() { FForm->Free(); }

} // namespace kx::test
