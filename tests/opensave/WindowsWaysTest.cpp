// SPDX-License-Identifier: MIT
// What the file dialogs of Windows do and those of other systems do not.

#include "OpenDialogTest.h"

#include "kx/win/FileStreams.h"
#include "tests/support/ImportPatch.h"

#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

// --- Where the dialog shows, and how large

/// A dialog that shows like the T, with a form docked into it.
template <class T> class DialogOfWindows : public TFileDlgTest {
protected:
    T& New() {
        T& dialog = NewDialog<T>();
        dialog.CustDlgParams().SetRightForm(Right.get());
        return dialog;
    }
    TRect RectOf(const TKxFileDlgCore& dialog) { return ScreenRectOf(dialog.DlgHandle()); }

    TFormPtr Right = MakeMarkedForm(clCream, 120, 60);
};
using TFileDialogs = testing::Types<TKxOpenLiteDialog, TKxOpenDialog>;
TYPED_TEST_SUITE(DialogOfWindows, TFileDialogs);

TYPED_TEST(DialogOfWindows, AMaximisedOneLeavesTheNextTheSizeOfARestoredOne) {
    TypeParam& dialog = this->New();
    TRect normal;
    Look(dialog, [&] { normal = this->RectOf(dialog); });
    Look(dialog, [&] {
        HWND window = dialog.DlgHandle();
        ShowWindow(window, SW_MAXIMIZE);
        ASSERT_TRUE(IsZoomed(window));
        const TRect client = ClientRectOf(window);
        EXPECT_GE(Width(client), GetSystemMetrics(SM_CXSCREEN) - 20);
        const TRect form = RectIn(window, this->Right->WindowHandle());
        EXPECT_EQ(form.Bottom, client.Bottom);
    });
    Look(dialog, [&] {
        EXPECT_EQ(Width(this->RectOf(dialog)), Width(normal)) << "the size of the screen was not remembered";
        EXPECT_EQ(Height(this->RectOf(dialog)), Height(normal));
        ShowWindow(dialog.DlgHandle(), SW_MAXIMIZE);
        ShowWindow(dialog.DlgHandle(), SW_RESTORE);
        EXPECT_EQ(Width(this->RectOf(dialog)), Width(normal));
        EXPECT_EQ(Height(this->RectOf(dialog)), Height(normal));
    });
}

TYPED_TEST(DialogOfWindows, IsPlacedOnceMoreWhenTheSystemPutsItWhereItWas) {
    TypeParam& dialog = this->New();
    const auto shownAt = [&](UINT movedAt) {
        dialog.SetOnEventHook([&dialog, movedAt](TMessage& message) {
            if (message.Msg == movedAt) {
                dialog.SetOnEventHook(nullptr);
                SetWindowPos(dialog.DlgHandle(), nullptr, 3, 5, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
            }
        });
        TRect shown;
        Look(dialog, [&] {
            shown = this->RectOf(dialog);
            ExpectCleanLayout(dialog);
        });
        return TPoint{shown.Left, shown.Top};
    };
    const TPoint left{3, 5};
    EXPECT_EQ(shownAt(WM_SHOWWINDOW), left) << "nothing was asked of the place";
    dialog.CustDlgParams().PosParams().SetShiftX(10);
    EXPECT_EQ(shownAt(WM_SHOWWINDOW), (TPoint{13, 5})) << "but to shift it from where the system puts it";
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    dialog.CustDlgParams().PosParams().SetShiftX(11);
    const TPoint centre = shownAt(WM_NULL);
    EXPECT_NE(centre, left);
    EXPECT_EQ(shownAt(WM_SHOWWINDOW), centre);
    EXPECT_EQ(shownAt(WM_PAINT), left) << "once it is painted it goes where it is moved";
}

TYPED_TEST(DialogOfWindows, IsInItsPlaceBeforeItIsSeen) {
    TypeParam& dialog = this->New();
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    TRect unseen;
    dialog.SetOnEventHook([&](const TMessage& message) {
        if (message.Msg == WM_SHOWWINDOW && message.WParam && !IsWindowVisible(dialog.DlgHandle())) {
            unseen = this->RectOf(dialog);
        }
    });
    Look(dialog, [&] { EXPECT_EQ(this->RectOf(dialog), unseen); });
}

TYPED_TEST(DialogOfWindows, IsPlacedByItsFirstPaintingWhenNothingElseTellsOfItsShowing) {
    TypeParam& dialog = this->New();
    dialog.CustDlgParams().SetPosition(dpScrCenter);
    TRect told;
    Look(dialog, [&] { told = this->RectOf(dialog); });
    bool painted = false;
    TPoint before;
    dialog.SetOnEventHooking([&](TObject*, TMessage& message, bool& allow) {
        allow = message.Msg != WM_SHOWWINDOW;
        if (message.Msg == WM_NCPAINT && !std::exchange(painted, true)) {
            before = {this->RectOf(dialog).Left, this->RectOf(dialog).Top};
        }
    });
    Look(dialog, [&] {
        EXPECT_EQ(this->RectOf(dialog), told);
        ExpectCleanLayout(dialog);
    });
    EXPECT_NE(before, (TPoint{told.Left, told.Top})) << "it was in its place already";
}

// --- The dialog of the old style

TYPED_TEST(DialogOfWindows, OfTheOldStyleIsTakenOverItselfAndNotItsOwner) {
    TypeParam& dialog = this->New();
    dialog.SetOptions({ofOldStyleDialog, ofHideReadOnly});
    dialog.SetTitle("An old dialog");
    const TRect ownerRect = ScreenRectOf(this->Owner->Handle());
    Look(dialog, [&] {
        HWND window = dialog.DlgHandle();
        EXPECT_EQ(window, dialog.DialogWindow());
        EXPECT_EQ(TextOf(window), "An old dialog");
        EXPECT_EQ(GetAncestor(this->Right->WindowHandle(), GA_ROOT), window);
        EXPECT_EQ(dialog.GetCommonDialogHandle(), window);
        const TRect ok = RectIn(window, ItemOf(dialog, IDOK));
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
        EXPECT_EQ(RectIn(window, ItemOf(dialog, IDOK)), ok) << "the name above the list is where it belongs";
    });
    EXPECT_EQ(ScreenRectOf(this->Owner->Handle()), ownerRect);
    EXPECT_EQ(TextOf(this->Owner->Handle()), "Owner");
    EXPECT_FALSE(this->Right->Visible());
    EXPECT_FALSE(RunDialog(dialog, [&] { dialog.CloseDialog(mrCancel); }));
}

TYPED_TEST(DialogOfWindows, OfTheOldStyleNeedsNoOwner) {
    this->Owner.reset();
    TypeParam dialog;
    dialog.SetInitialDir(this->Folder.Path());
    dialog.SetOptions({ofOldStyleDialog, ofHideReadOnly});
    Look(dialog, [&] { EXPECT_EQ(dialog.DlgHandle(), dialog.DialogWindow()); });
}

// --- The OK button's caption

TYPED_TEST(DialogOfWindows, KeepsTheCaptionOfOkWhenTheSystemGivesItAnother) {
    TypeParam& dialog = this->New();
    const auto notify = [&](UINT code) {
        OFNOTIFYA notification{};
        notification.hdr.hwndFrom = dialog.DlgHandle();
        notification.hdr.code = code;
        SendMessageA(dialog.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
    };
    const auto okAfter = [&](const std::function<void()>& happening) {
        SetWindowTextA(ItemOf(dialog, IDOK), "&Open");
        happening();
        return TextOf(ItemOf(dialog, IDOK));
    };
    const auto nameCommand = [&](HWND control) {
        SendMessageA(dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(1148, CBN_SETFOCUS), reinterpret_cast<LPARAM>(control));
    };
    dialog.DlgItemsCaptions().SetOK("&Take it");
    Look(dialog, [&] {
        for (const UINT code : {CDN_SELCHANGE, CDN_FOLDERCHANGE, CDN_TYPECHANGE}) {
            EXPECT_EQ(okAfter([&] { notify(code); }), "&Take it") << static_cast<int>(code);
        }
        EXPECT_EQ(okAfter([&] { notify(CDN_HELP); }), "&Open");
        EXPECT_EQ(okAfter([&] { nameCommand(dialog.EditHandle()); }), "&Take it");
        EXPECT_EQ(okAfter([&] { nameCommand(ItemOf(dialog, 1136)); }), "&Open");
        dialog.DlgItemsCaptions().SetOK("");
        EXPECT_EQ(okAfter([&] { notify(CDN_SELCHANGE); }), "&Open") << "the system's own";
    });
}

// --- Files that others hold

class SharingOnWindows : public TOpenDialogTest {
protected:
    SharingOnWindows() {
        Dialog.SetOnCanClose([this](TObject*, bool& canClose) {
            ++Asked;
            canClose = CanClose;
        });
        Dialog.SetOnShareViolation([this](TObject*, int32_t& result, const std::string&) {
            ++Violations;
            result = OFN_SHAREFALLTHROUGH;
        });
    }
    /// Sends a notification of the system; true when it is answered by 1.
    bool Notify(UINT code) const {
        std::string name = Folder.Path("one.txt");
        OFNOTIFYA notification{};
        notification.hdr.hwndFrom = Dialog.DlgHandle();
        notification.hdr.code = code;
        notification.pszFile = name.data();
        return SendMessageA(Dialog.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification)) == 1;
    }
    bool IsRefused() const { return Notify(CDN_FILEOK); }

    int Asked = 0;
    int Violations = 0;
    bool CanClose = false;
};

TEST_F(SharingOnWindows, TheSecondQuestionAboutAHeldFileHasTheAnswerOfTheFirst) {
    Look(Dialog, [&] {
        Notify(CDN_SHAREVIOLATION);
        EXPECT_TRUE(IsRefused());
        CanClose = true; // would be the answer now
        EXPECT_TRUE(IsRefused());
        EXPECT_EQ(Asked, 1);
        EXPECT_FALSE(IsRefused()) << "a third question is a new one";
        EXPECT_EQ(Asked, 2);
        Notify(CDN_SHAREVIOLATION);
        EXPECT_FALSE(IsRefused());
        CanClose = false;
        EXPECT_FALSE(IsRefused());
        EXPECT_EQ(Asked, 3);
    });
    EXPECT_EQ(Violations, 2);
}

TEST_F(SharingOnWindows, TheAnswerIsForgottenWhenTheUserGoesOn) {
    Look(Dialog, [&] {
        const std::pair<const char*, std::function<void()>> ways[] = {
            {"selection", [&] { Notify(CDN_SELCHANGE); }},
            {"violation", [&] { Notify(CDN_SHAREVIOLATION); }},
            {"ok", [&] {
                 Dialog.SetFilenameText("");
                 SendMessageA(Dialog.DlgHandle(), WM_COMMAND, IDOK, 0);
             }}};
        for (const auto& [name, goOn] : ways) {
            Asked = 0;
            Notify(CDN_SHAREVIOLATION);
            EXPECT_TRUE(IsRefused());
            goOn();
            EXPECT_TRUE(IsRefused());
            EXPECT_EQ(Asked, 2) << name;
        }
    });
}

TEST_F(SharingOnWindows, AHandlerThatFailsRefusesBothTimes) {
    Dialog.SetOnCanClose([this](TObject*, bool&) {
        ++Asked;
        throw Exception("from the handler");
    });
    Look(Dialog, [&] {
        Notify(CDN_SHAREVIOLATION);
        EXPECT_TRUE(IsRefused());
        EXPECT_TRUE(IsRefused());
    });
    EXPECT_EQ(Asked, 1);
    EXPECT_THAT(TakeExceptions(), ElementsAre("from the handler"));
}

class TSharingDialog : public TKxOpenDialog {
public:
    using TKxOpenDialog::TKxOpenDialog;
    std::vector<std::string> Violations;

protected:
    void DoShareViolation(int32_t& result, const std::string& fileName) override {
        Violations.push_back(fileName);
        result = OFN_SHARENOWARN;
    }
};

TEST_F(SharingOnWindows, ADescendantIsAskedWithoutAHandler) {
    const unique_hfile held(
        CreateFileA(Folder.Path("one.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    auto& dialog = NewDialog<TSharingDialog>();
    EXPECT_FALSE(
        RunDialog(dialog, {EnterFileName(dialog, "one.txt"),
                           Await("it was asked", [&] { return !dialog.Violations.empty(); }), test::Cancel(dialog)}));
    EXPECT_THAT(dialog.Violations, ElementsAre(Folder.Path("one.txt")));
}

DWORD Attributes;

DWORD WINAPI GiveAttributes(LPCWSTR) { return Attributes; }

TEST(FilesElsewhere, AreNotOpened) {
    const TTempFolder folder;
    const std::string name = folder.AddFile("stored elsewhere.txt");
    const unique_hfile held(CreateFileA(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(FileIsHeldByOthers(name));
    EXPECT_FALSE(FileIsHeldByOthers(folder.Path("missing.txt")));
    EXPECT_FALSE(FileIsHeldByOthers(folder.AddFile("free.txt")));
    const TImportPatch patch("GetFileAttributesW", reinterpret_cast<void*>(GiveAttributes));
    constexpr DWORD recallOnOpen = 0x40000;
    constexpr DWORD recallOnDataAccess = 0x400000;
    for (const DWORD elsewhere : {DWORD{FILE_ATTRIBUTE_OFFLINE}, recallOnOpen, recallOnDataAccess}) {
        Attributes = FILE_ATTRIBUTE_ARCHIVE | elsewhere;
        EXPECT_FALSE(FileIsHeldByOthers(name)) << elsewhere;
    }
    Attributes = FILE_ATTRIBUTE_ARCHIVE;
    EXPECT_TRUE(FileIsHeldByOthers(name));
}

} // namespace
} // namespace kx
