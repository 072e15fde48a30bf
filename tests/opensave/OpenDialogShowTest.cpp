// SPDX-License-Identifier: MIT
// Showing the open and the save dialog.

#include "OpenDialogTest.h"

#include "kx/opensave/KxSaveDlg.h"
#include "kx/win/Dpi.h"

#include <commdlg.h>

namespace kx {
namespace {

using namespace test;

class OpenDialogShow : public TOpenDialogTest {
protected:
    TPoint SizeOf(const TKxFileDlgCore& dialog) const {
        const TRect outer = ScreenRectOf(dialog.DlgHandle());
        return {Width(outer), Height(outer)};
    }
};

// --- Open and save

TEST_F(OpenDialogShow, OpensAndReturnsTheChosenFile) {
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt")}));
    EXPECT_EQ(Dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(OpenDialogShow, TheSaveDialogIsTheSystemsToo) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_EQ(TextOf(dialog.DlgHandle()), "Save As");
                              EXPECT_NE(PlacesBarOf(dialog), nullptr);
                          },
                          {EnterFileName(dialog, "new.txt")}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("new.txt"));
}

TEST_F(OpenDialogShow, TheSaveDialogHasTheLibrarysPlaces) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    dialog.PlacesBar().SetNative(false);
    dialog.PlacesBar().Places().Add()->SetPlaceName("a");
    Look(dialog, [&] {
        EXPECT_EQ(PlacesBarOf(dialog), nullptr);
        ASSERT_NE(dialog.PlacesForm(), nullptr);
        EXPECT_EQ(dialog.PlacesForm()->ToolBar1->ButtonCount(), 1);
        ExpectCleanLayout(dialog);
    });
}

TEST_F(OpenDialogShow, TheSaveDialogIsRunByItsPublishedMethod) {
    EXPECT_EQ(TKxOpenDialog::StaticClass().FindMethod("Execute"), nullptr);
    const TMethodInfo* const method = TKxSaveDialog::StaticClass().FindMethod("Execute");
    ASSERT_NE(method, nullptr);
    auto& dialog = NewDialog<TKxSaveDialog>();
    const auto execute = TEvent<void()>::FromTarget(method->Bind(dialog));
    RunDialog(
        [&] {
            execute();
            return true;
        },
        {{"the dialog is shown", Shown(dialog), {}}, EnterFileName(dialog, "new.txt")});
    EXPECT_EQ(dialog.FileName(), Folder.Path("new.txt"));
}

TEST_F(OpenDialogShow, AVetoedNameIsNotSaved) {
    auto& dialog = NewDialog<TKxSaveDialog>();
    int asked = 0;
    dialog.SetOnFilenameEntering([&](TObject* sender, bool& allow) {
        EXPECT_EQ(sender, &dialog);
        ++asked;
        allow = false;
    });
    EXPECT_FALSE(RunDialog(dialog, {EnterFileName(dialog, "new.txt"),
                                    Perform("it stays", [&] { EXPECT_TRUE(IsWindowVisible(dialog.DlgHandle())); }),
                                    Cancel(dialog)}));
    EXPECT_EQ(asked, 1);
}

// --- Sizes

TEST_F(OpenDialogShow, AResizableDialogReopensAsTheUserLeftIt) {
    for (const bool places : {false, true}) {
        auto& dialog = NewDialog<TKxOpenDialog>();
        dialog.PlacesBar().SetNative(!places);
        dialog.CustDlgParams().SetPosition(dpScrCenter);
        TPoint first;
        std::vector<TStep> steps = DragCorner(dialog, 70, 60);
        steps.insert(steps.begin(), Perform("its size", [&] { first = SizeOf(dialog); }));
        steps.push_back(Await("it is larger", [&] { return SizeOf(dialog) == TPoint{first.X + 70, first.Y + 60}; }));
        steps.push_back(Cancel(dialog));
        RunDialog(dialog, steps);
        for (int i = 0; i < 2; ++i) {
            Look(dialog, [&] {
                EXPECT_EQ(SizeOf(dialog), (TPoint{first.X + 70, first.Y + 60}));
                ExpectCleanLayout(dialog);
            });
        }
    }
}

TEST_F(OpenDialogShow, AFixedDialogAlwaysHasTheSystemsSize) {
    auto& system = NewDialog<TKxOpenLiteDialog>();
    system.SetOptions({ofHideReadOnly});
    Dialog.SetOptions({ofHideReadOnly});
    TPoint size;
    Look(system, [&] { size = SizeOf(system); });
    Look(Dialog, [&] {
        EXPECT_EQ(SizeOf(Dialog), size);
        SetWindowPos(Dialog.DlgHandle(), nullptr, 0, 0, 900, 700, SWP_NOMOVE | SWP_NOZORDER);
    });
    Look(Dialog, [&] { EXPECT_EQ(SizeOf(Dialog), size); });
}

TEST_F(OpenDialogShow, AResizableOneWithPlacesIsRoomier) {
    auto& plain = NewDialog<TKxOpenDialog>();
    plain.PlacesBar().SetVisible(false);
    TPoint size;
    Look(plain, [&] { size = SizeOf(plain); });
    ShowPlaces();
    Look(Dialog, [&] {
        EXPECT_EQ(SizeOf(Dialog), (TPoint{size.X + SystemLength(40) + SystemLength(87), size.Y + SystemLength(70)}));
    });
}

TEST_F(OpenDialogShow, AVetoedDestructionKeepsTheSizeFromBefore) {
    TPoint size;
    Look(Dialog, [&] { size = SizeOf(Dialog); });
    Dialog.SetOnEventHooking([](TObject*, TMessage& m, bool& allow) { allow = m.Msg != WM_DESTROY; });
    Look(Dialog, [&] { SetWindowPos(Dialog.DlgHandle(), nullptr, 0, 0, 900, 700, SWP_NOMOVE | SWP_NOZORDER); });
    EXPECT_EQ(Dialog.DlgHandle(), nullptr);
    Dialog.SetOnEventHooking({});
    Look(Dialog, [&] { EXPECT_EQ(SizeOf(Dialog), size); });
}

// --- Events of the showing

TEST_F(OpenDialogShow, OnShowComesWhenAllIsInPlaceAndTheInternalOneAfterIt) {
    std::vector<std::string> log;
    ShowPlaces();
    const TFormPtr form = MakeMarkedForm(clCream, 90, 60);
    Dialog.CustDlgParams().SetRightForm(form.get());
    Dialog.DlgItemsCaptions().SetOK("&Take");
    Dialog.SetOnShow([&](TObject* sender) {
        EXPECT_EQ(sender, &Dialog);
        log.emplace_back("show");
        EXPECT_NE(Dialog.PlacesForm(), nullptr);
        EXPECT_TRUE(form->IsDocked());
        EXPECT_EQ(TextOf(ItemOf(Dialog, IDOK)), "&Take");
        EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), &Dialog);
    });
    Dialog.SetCommonDialogInternalShowEvent([&](TObject*) { log.emplace_back("internal"); });
    Dialog.SetOnClose([&](TObject*) { log.emplace_back("close"); });
    Look(Dialog);
    EXPECT_THAT(log, ElementsAre("show", "internal", "close"));
    EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
}

TEST_F(OpenDialogShow, EachMessageIsReportedOnceTheSystemHasAnswered) {
    std::vector<UINT> asked;
    std::vector<UINT> reported;
    Dialog.SetOnEventHooking([&](TObject*, TMessage& m, bool& allow) {
        asked.push_back(m.Msg);
        allow = m.Msg != WM_APP + 7;
    });
    Dialog.SetOnEventHook([&](TMessage& m) { reported.push_back(m.Msg); });
    Look(Dialog, [&] {
        SendMessageA(Dialog.DlgHandle(), WM_APP + 6, 0, 0);
        SendMessageA(Dialog.DlgHandle(), WM_APP + 7, 0, 0);
    });
    for (const UINT message : {UINT{WM_NCPAINT}, UINT{WM_SHOWWINDOW}, UINT{WM_DESTROY}, UINT{WM_APP + 6}}) {
        EXPECT_THAT(asked, Contains(message));
        EXPECT_THAT(reported, Contains(message));
    }
    EXPECT_THAT(asked, Contains(WM_APP + 7));
    EXPECT_THAT(reported, testing::Not(Contains(WM_APP + 7)));
}

// --- Dialogs inside of others

TEST_F(OpenDialogShow, ADialogInsideAnothersEventLeavesThatIntact) {
    Dialog.ListViewStyles().SetEnableDelete(false);
    Dialog.ExtFilter().SetEnabled(true);
    Dialog.SetOnIncludeFile(
        [](TObject*, const std::string& name, bool& include) { include = ExtractFileName(name) != "two.txt"; });
    auto& inner = NewDialog<TKxSaveDialog>();
    inner.PlacesBar().SetNative(false);
    bool opened = false;
    Dialog.SetOnFolderChange([&](TObject*) {
        if (IsWindowVisible(Dialog.DlgHandle()) && !std::exchange(opened, true)) {
            Look(inner, [&] {
                EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), &inner);
                EXPECT_EQ(ItemCount(ListOf(inner)), 3);
            });
            EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), &Dialog);
        }
    });
    RunDialog(Dialog, [&] { Dialog.SetSelectedFolder(Folder.Path("inner")); },
              {Await("the inner dialog was there", [&] { return opened && !inner.DlgHandle(); }),
               Await("the outer one is shown", Shown(Dialog)),
               Perform("back", [&] { Dialog.SetSelectedFolder(Folder.Path()); }),
               Await("the outer filter works", Lists({"inner", "one.txt"})),
               Perform("Delete",
                       [&] {
                           FocusList();
                           SelectItem(List(), "one.txt");
                           PressKey(VK_DELETE);
                           PressKey(VK_HOME);
                       }),
               Await("it was swallowed",
                     [&] { return ListView_GetNextItem(List(), -1, LVNI_SELECTED) != FindItem(List(), "one.txt"); }),
               Cancel(Dialog)});
    EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
    EXPECT_TRUE(Folder.Contains("one.txt"));
}

TEST_F(OpenDialogShow, ASecondExecuteOfAShownDialogIsRefused) {
    Look(Dialog, [&] {
        EXPECT_THROW(Dialog.Execute(), EInvalidOperation);
        EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), &Dialog);
    });
}

// --- Files that others hold

class OpenDialogSharing : public OpenDialogShow {
protected:
    OpenDialogSharing()
        : Held(CreateFileA(Folder.Path("one.txt").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {}

    /// The system's own notification, as it sends it.
    LRESULT Notify() const {
        OFNOTIFYA notification{};
        notification.hdr.hwndFrom = Dialog.DlgHandle();
        notification.hdr.code = static_cast<UINT>(CDN_SHAREVIOLATION);
        std::string name = Folder.Path("one.txt");
        notification.pszFile = name.data();
        return SendMessageA(Dialog.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notification));
    }
    void Answer(int32_t answer) {
        Dialog.SetOnShareViolation([this, answer](TObject* sender, int32_t& result, const std::string& name) {
            EXPECT_EQ(sender, &Dialog);
            EXPECT_EQ(result, -1);
            EXPECT_EQ(name, Folder.Path("one.txt"));
            ++Asked;
            result = answer;
        });
    }

    unique_hfile Held;
    int Asked = 0;
};

TEST_F(OpenDialogSharing, TheAnswerGoesToTheSystem) {
    Look(Dialog, [&] {
        const LRESULT own = Notify();
        Answer(-1);
        EXPECT_EQ(Notify(), own) << "no answer leaves it to the system";
        for (const int32_t answer : {OFN_SHAREFALLTHROUGH, OFN_SHARENOWARN, OFN_SHAREWARN, 4711}) {
            Answer(answer);
            EXPECT_EQ(Notify(), answer);
        }
    });
    EXPECT_EQ(Asked, 5);
}

TEST_F(OpenDialogSharing, AHeldFileIsTakenWhenTheHandlerSaysSo) {
    Answer(OFN_SHAREFALLTHROUGH);
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt")}));
    EXPECT_EQ(Asked, 1);
}

TEST_F(OpenDialogSharing, AHeldFileIsRefusedWithoutAWord) {
    Answer(OFN_SHARENOWARN);
    EXPECT_FALSE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt"), Await("it was asked", [&] { return Asked == 1; }),
                                    Perform("no box", [] { EXPECT_EQ(ShownMessageBox(), nullptr); }), Cancel(Dialog)}));
}

TEST_F(OpenDialogSharing, AHeldFileIsRefusedWithAMessage) {
    Answer(OFN_SHAREWARN);
    EXPECT_FALSE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt"),
                                    AnswerBox(IDOK,
                                              [&](const std::string& text) {
                                                  EXPECT_THAT(text, testing::HasSubstr(Folder.Path("one.txt")));
                                              }),
                                    Cancel(Dialog)}));
    EXPECT_EQ(Asked, 1);
}

TEST_F(OpenDialogSharing, AFileThatNobodyHoldsIsNotAskedAbout) {
    Held.reset();
    Answer(OFN_SHARENOWARN);
    EXPECT_TRUE(RunDialog(Dialog, {EnterFileName(Dialog, "one.txt")}));
    EXPECT_EQ(Asked, 0);
}

TEST(OpenDialogClasses, KnowTheirPartsAndNoListAtFirst) {
    TKxOpenDialog dialog;
    EXPECT_EQ(dialog.PlacesBar().Dlg(), &dialog);
    EXPECT_EQ(dialog.ExtFilter().GetOwner(), &dialog);
    EXPECT_EQ(dialog.CustDlgParams().Dlg(), &dialog);
    EXPECT_EQ(dialog.FileListViewStyle(), lvsIcon);
    EXPECT_EQ(dialog.EditHandle(), nullptr);
}

} // namespace
} // namespace kx
