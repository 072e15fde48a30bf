// SPDX-License-Identifier: MIT
// A file dialog is freed at each of its messages, whatever it is doing.

#include "OpenDialogExFixture.h"
#include "OpenDialogTest.h"

#include "kx/opensave/KxSaveDlg.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "tests/support/FreedAtMessages.h"
#include "tests/support/Grow.h"
#include "tests/support/TestKey.h"

namespace kx {
namespace {

using namespace test;

/// Dialogs with forms on their sides that are freed in the midst of something.
class FreedDuring : public TOpenDialogTest, public testing::WithParamInterface<TCourse> {
protected:
    /// What all file dialogs can do.
    void Do(const std::string& course, TKxFileDlgCore& dialog) const {
        HWND window = dialog.DlgHandle();
        if (course == "Ok") {
            const TAlive alive(dynamic_cast<TComponent&>(dialog));
            SetWindowTextA(FileNameEditOf(window), "one.txt");
            if (alive) {
                dialog.CloseDialog(mrOk);
            }
        } else if (course == "Navigate") {
            dialog.SetSelectedFolder(Folder.Path("inner"));
        } else if (course == "Up") {
            PressToolButton(dialog, KxCmdUpLevel);
        } else if (course == "TypeAName") {
            dialog.SetFilenameText("two.txt");
        } else if (course == "SetFiles") {
            dialog.SetSelectedFiles("\"one.txt\" \"two.txt\"");
        } else if (course == "ReadFiles") {
            dialog.SelectedFilesList();
        } else if (course == "ReadFolder") {
            dialog.SelectedFolderPidl();
        } else if (course == "Refresh") {
            dialog.RefreshFileList();
        } else if (course == "Title") {
            dialog.SetTitle("Another");
        } else if (course == "VisibleControls") {
            dialog.SetVisibleControls({dcFileName, dcCancelBtn});
        } else if (!DoInAnyDialog(course, dialog, window)) {
            FAIL() << course;
        }
    }
    void ExpectFormsFree() {
        for (const TFormPtr* form : {&Left, &Bottom, &Custom}) {
            EXPECT_FALSE((*form)->Visible());
            EXPECT_EQ((*form)->ParentWindow(), nullptr);
        }
        EXPECT_EQ(TKxCustomOpenDialog::CreationControl(), nullptr);
        EXPECT_THAT(TakeExceptions(), testing::IsEmpty());
    }

    TFormPtr Left = MakeMarkedForm(clMoneyGreen, 80, 50);
    TFormPtr Bottom = MakeMarkedForm(clCream, 80, 50);
    TFormPtr Custom = MakeMarkedForm(clSkyBlue, 80, 50);
};

// --- Lite dialogs

// To free a dialog at a message takes a dialog. So it is the lite open dialog, which opens the fastest, that goes at
// every message of every course before the system gets it. The others do by the same code what it does too: they go at
// one message of each kind, and leave out the courses that run nothing else. Behind the system's answers less of the
// dialog's own work is left to do: there the lite one goes so too, and a full one in one course.

class LiteFreedDuring : public FreedDuring {
protected:
    bool AtEach = !GetParam().Behind;

    template <class T> void RunCourse() {
        TFreedAtMessages<T>([this] {
            auto& dialog = NewDialog<T>();
            dialog.CustDlgParams().SetLeftForm(Left.get());
            dialog.CustDlgParams().SetBottomForm(Bottom.get());
            return &dialog;
        })
            .Behind(GetParam().Behind)
            .During([this](T& dialog) { Do(GetParam().Name, dialog); })
            .Check([this] { ExpectFormsFree(); })
            .OfEachKind(!AtEach)
            .Run();
        EXPECT_EQ(TKxCustomOpenLiteDialog::Running(), nullptr);
    }
};

TEST_P(LiteFreedDuring, ItIsGoneWithoutATrace) { RunCourse<TKxOpenLiteDialog>(); }

KX_COURSE(LiteFreedDuring, Cancel);
KX_COURSE(LiteFreedDuring, Ok);
KX_COURSE(LiteFreedDuring, Close);
KX_COURSE(LiteFreedDuring, Grow);
KX_COURSE(LiteFreedDuring, Navigate);
KX_COURSE(LiteFreedDuring, Up);
KX_COURSE(LiteFreedDuring, TypeAName);
KX_COURSE(LiteFreedDuring, SetFiles);
KX_COURSE(LiteFreedDuring, ReadFiles);
KX_COURSE(LiteFreedDuring, ReadFolder);
KX_COURSE(LiteFreedDuring, Refresh);
KX_COURSE(LiteFreedDuring, Title);
KX_COURSE(LiteFreedDuring, VisibleControls);

/// The code of save dialogs is that of the open dialogs but for the system's function, which says how it ends.
class SaveLiteFreedDuring : public LiteFreedDuring {
protected:
    SaveLiteFreedDuring() { AtEach = false; }
};

TEST_P(SaveLiteFreedDuring, ItIsGoneWithoutATrace) { RunCourse<TKxSaveLiteDialog>(); }

KX_COURSE_BEFORE(SaveLiteFreedDuring, Ok);

// --- The full dialogs

class FullFreedDuring : public FreedDuring {
protected:
    FullFreedDuring() {
        Item.SetCaption("Item");
        Menu.Items().Add(&Item);
        Bar->SetParent(Owner.get());
        Bar->SetBounds(0, 0, 60, 24);
        Bar->SetAlign(alNone);
    }

    /// With all that a dialog can have: forms, places, a borrowed tool bar, a menu at its OK button, a filter.
    template <class T> T& NewFull() {
        auto& dialog = NewDialog<T>();
        dialog.SetFilter("Text|*.txt|Pictures|*.png");
        dialog.PlacesBar().SetNative(false);
        dialog.PlacesBar().SetRegistryKey(Key.Path());
        TKxPlace& place = *dialog.PlacesBar().Places().Add();
        place.SetPlaceName("Inner");
        place.SetPlacePath(Folder.Path("inner"));
        dialog.CustDlgParams().SetLeftForm(Left.get());
        dialog.CustDlgParams().SetBottomForm(Bottom.get());
        dialog.CustDlgParams().SetCustomForm(Custom.get());
        dialog.ToolBar().SetCustomBar(Bar);
        dialog.SetOkButtonMenu(&Menu);
        dialog.ExtFilter().SetEnabled(true);
        return dialog;
    }

    void DoFull(const std::string& course, TKxCustomOpenDialog& dialog) const {
        if (course == "CustomSelection") {
            dialog.SetSelectionType(stCustom);
        } else if (course == "StandardSelection") {
            dialog.SetSelectionType(stStandard);
        } else if (course == "PlaceClick") {
            ClickAt(dialog.PlacesForm()->ToolBar1->Buttons(0)->ClientToScreen({40, 20}));
        } else if (course == "ViewStyle") {
            dialog.SetFileListViewStyle(lvsReport);
        } else {
            Do(course, dialog);
        }
    }
    void ExpectNoTrace() {
        ExpectFormsFree();
        EXPECT_EQ(Bar->Parent(), Owner.get());
        EXPECT_TRUE(Bar->Visible());
        int forms = 0;
        for (int i = 0; i < Application().ComponentCount(); ++i) {
            forms += dynamic_cast<TForm*>(Application().Components(i)) ? 1 : 0;
        }
        EXPECT_EQ(forms, 0) << "the forms of the places and of the OK button go with the dialog";
    }

    template <class T> TFreedAtMessages<T> Course() {
        TFreedAtMessages<T> course([this] {
            auto& dialog = NewFull<T>();
            const std::string name = GetParam().Name;
            if (name == "StandardSelection" || name == "Show") {
                dialog.SetSelectionType(stCustom);
            }
            return &dialog;
        });
        course.Check([this] { ExpectNoTrace(); }).OfEachKind();
        if (std::string(GetParam().Name) != "Show") {
            course.During([this](T& dialog) { DoFull(GetParam().Name, dialog); });
        }
        return course;
    }

    TTestKey Key;
    TPopupMenu Menu;
    TMenuItem Item{nullptr};
    TToolBar* Bar = new TToolBar(Owner.get());
};

class OpenFreedDuring : public FullFreedDuring {};

TEST_P(OpenFreedDuring, ItIsGoneWithoutATrace) { Course<TKxOpenDialog>().Behind(GetParam().Behind).Run(); }

KX_COURSE(OpenFreedDuring, Cancel);
KX_COURSE_BEFORE(OpenFreedDuring, Ok);
KX_COURSE_BEFORE(OpenFreedDuring, Grow);
KX_COURSE_BEFORE(OpenFreedDuring, Navigate);
KX_COURSE_BEFORE(OpenFreedDuring, Refresh);
KX_COURSE_BEFORE(OpenFreedDuring, VisibleControls);
KX_COURSE_BEFORE(OpenFreedDuring, CustomSelection);
KX_COURSE_BEFORE(OpenFreedDuring, StandardSelection);
KX_COURSE_BEFORE(OpenFreedDuring, PlaceClick);
KX_COURSE_BEFORE(OpenFreedDuring, ViewStyle);

class SaveFreedDuring : public FullFreedDuring {};

TEST_P(SaveFreedDuring, ItIsGoneWithoutATrace) { Course<TKxSaveDialog>().Behind(GetParam().Behind).Run(); }

KX_COURSE_BEFORE(SaveFreedDuring, Ok);

// --- At the messages of others than the dialog: a form docked to its side, the custom form, the borrowed tool bar

class FreedAtAPartsMessage : public FullFreedDuring {
protected:
    FreedAtAPartsMessage() {
        Left.reset(new TTelling<TForm>(GetParam().Behind));
        Left->SetBounds(0, 0, 80, 50);
        Custom.reset(new TTelling<TForm>(GetParam().Behind));
        Telling->SetParent(Owner.get());
        Telling->SetBounds(0, 0, 60, 24);
        Bar = Telling;
    }
    void FreeAtMessagesOf(std::function<void(const TMessage&)>& part) {
        Course<TKxOpenDialog>()
            .Listen([&](TKxOpenDialog& dialog, const auto& count) {
                part = count;
                dialog.SetOnEventHook([count](TMessage& m) { // else nobody would hear of the end of the course
                    if (m.Msg == WM_TIMER) {
                        count(m);
                    }
                });
            })
            .Run();
        part = nullptr;
    }

    TTelling<TToolBar>* Telling = new TTelling<TToolBar>(false, Owner.get());
};

TEST_P(FreedAtAPartsMessage, OfADockedForm) { FreeAtMessagesOf(dynamic_cast<TTelling<TForm>&>(*Left).OnMessage); }

TEST_P(FreedAtAPartsMessage, OfTheCustomForm) { FreeAtMessagesOf(dynamic_cast<TTelling<TForm>&>(*Custom).OnMessage); }

/// It tells before alone.
TEST_P(FreedAtAPartsMessage, OfTheBorrowedToolBar) { FreeAtMessagesOf(Telling->OnMessage); }

KX_COURSE_BEFORE(FreedAtAPartsMessage, Show);
KX_COURSE_BEFORE(FreedAtAPartsMessage, Cancel);
KX_COURSE_BEFORE(FreedAtAPartsMessage, Grow);
KX_COURSE_BEFORE(FreedAtAPartsMessage, CustomSelection);
KX_COURSE_BEFORE(FreedAtAPartsMessage, StandardSelection);

// --- The dialog with recent files

class ExFreedDuring : public TExDlgTest, public testing::WithParamInterface<TCourse> {};

TEST_P(ExFreedDuring, ItIsGoneWithoutATrace) {
    const std::string course = GetParam().Name;
    TFreedAtMessages<TKxOpenDialogEx>([this] {
        return &NewRecent({"one.txt", "two.txt"});
    })
        .Behind(GetParam().Behind)
        .During([&](TKxOpenDialogEx& dialog) {
            if (course == "Tab") {
                ClickAt(TabAt(dialog, 1));
            } else if (course == "Cancel") {
                dialog.CloseDialog(mrCancel);
            } else {
                const TAlive alive(dialog);
                dialog.RefreshList();
                if (alive) {
                    Grow(dialog.DlgHandle());
                }
            }
        })
        .Check([this] { EXPECT_THAT(TakeExceptions(), testing::IsEmpty()); })
        .OfEachKind()
        .Run();
}

KX_COURSE_BEFORE(ExFreedDuring, Tab);
KX_COURSE_BEFORE(ExFreedDuring, Cancel);
KX_COURSE_BEFORE(ExFreedDuring, Grow);

} // namespace
} // namespace kx
