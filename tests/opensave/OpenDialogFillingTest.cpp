// SPDX-License-Identifier: MIT
// When the filter is asked about which files.

#include "OpenDialogFillingTest.h"

#include <algorithm>

namespace kx {
namespace {

using namespace test;

// --- Each file once a filling

TEST_F(OpenDialogFilling, AsksAboutEachFileOnce) {
    RunDialog(Dialog, {{"the first folder is filtered", Lists({"inner", "one.txt", "two.txt"}),
                        [&] {
                            EXPECT_THAT(TakeAsked(), UnorderedElementsAre("one.txt", "three.log", "two.txt"));
                            PaintNow(List());
                            SendMessageA(List(), WM_SETREDRAW, TRUE, 0); // as a shell does between two parts
                            PaintNow(List());
                            EXPECT_THAT(TakeAsked(), IsEmpty());
                            Dialog.SetSelectedFolder(Folder.Path("inner"));
                        }},
                       {"the next one is filtered", Lists({"deep.txt"}),
                        [&] {
                            EXPECT_THAT(TakeAsked(), ElementsAre("deep.txt"));
                            Dialog.SetSelectedFolder(Folder.Path());
                        }},
                       {"so is the first one again", Lists({"inner", "one.txt", "two.txt"}),
                        [&] { EXPECT_THAT(TakeAsked(), UnorderedElementsAre("one.txt", "three.log", "two.txt")); }},
                       Cancel(Dialog)});
}

TEST_F(OpenDialogFilling, AsksAgainWhenTheFolderIsReadAgain) {
    const auto all = UnorderedElementsAre("one.txt", "three.log", "two.txt");
    Dialog.SetFilter("All|*.*|Texts|*.txt");
    RunDialog(Dialog, {{"the folder is filtered", Lists({"inner", "one.txt", "two.txt"}),
                        [&] {
                            EXPECT_THAT(TakeAsked(), all);
                            SendMessageA(List(), WM_KEYDOWN, VK_F5, 0);
                        }},
                       {"by F5", [&] { return Asked.size() >= 3; },
                        [&] {
                            PaintNow(List());
                            EXPECT_THAT(TakeAsked(), all);
                            Dialog.RefreshFileList();
                            EXPECT_THAT(ListedNames(), UnorderedElementsAre("inner", "one.txt", "two.txt"))
                                << "at once";
                            EXPECT_THAT(TakeAsked(), all);
                            Dialog.ExtFilter().SetShowFolders(false);
                            EXPECT_THAT(ListedNames(), UnorderedElementsAre("one.txt", "two.txt")) << "at once";
                            EXPECT_THAT(TakeAsked(), all);
                            ChooseInCombo(ItemOf(Dialog, KxFileTypeId), 1, CBN_SELENDOK);
                        }},
                       {"by another type", [&] { return Asked.size() >= 2; },
                        [&] {
                            PaintNow(List());
                            EXPECT_THAT(TakeAsked(), UnorderedElementsAre("one.txt", "two.txt"));
                        }},
                       Cancel(Dialog)});
}

/// Keeps from the dialog what its list gets when it is filled, but for one message.
class TSecretFilling {
public:
    TSecretFilling(HWND list, UINT told)
        : FMessages(list, [this, list, told](TMessage& message) {
              const UINT fillings[] = {WM_KEYDOWN,      WM_SETREDRAW,    LVM_DELETEALLITEMS,
                                       LVM_INSERTITEMA, LVM_INSERTITEMW, LVM_SETITEMCOUNT};
              const bool isSecret =
                  std::find(std::begin(fillings), std::end(fillings), message.Msg) != std::end(fillings);
              if (isSecret && message.Msg != told) {
                  message.Result = SendPastAll(list, message.Msg, message.WParam, message.LParam);
              } else {
                  FMessages.CallPrevious(message);
              }
          }) {}

private:
    TSubclass FMessages;
};

TEST_F(OpenDialogFilling, AsksAgainWhateverTellsThatTheFolderIsReadAgain) {
    Dialog.SetFilter("All|*.*|Texts|*.txt");
    std::unique_ptr<TSecretFilling> secret;
    const auto tell = [&](UINT message) {
        TakeAsked();
        secret = std::make_unique<TSecretFilling>(List(), message);
    };
    const auto pressF5 = [&] { SendMessageA(List(), WM_KEYDOWN, VK_F5, 0); };
    const auto isAskedAgain = [&](size_t files) {
        return [&, files] { return Asked.size() >= files && Lists({"inner", "one.txt", "two.txt"})(); };
    };
    RunDialog(Dialog, {{"the folder is filtered", Lists({"inner", "one.txt", "two.txt"}),
                        [&] {
                            tell(WM_KEYDOWN);
                            pressF5();
                        }},
                       {"the key tells of it", isAskedAgain(3),
                        [&] {
                            tell(LVM_DELETEALLITEMS);
                            pressF5();
                        }},
                       {"the emptying does", isAskedAgain(3),
                        [&] {
                            tell(WM_NULL);
                            ChooseInCombo(ItemOf(Dialog, KxFileTypeId), 1, CBN_SELENDOK);
                        }},
                       {"another type does", isAskedAgain(2), [&] { secret.reset(); }},
                       Cancel(Dialog)});
}

TEST_F(OpenDialogFilling, AsksAboutFilesThatComeLater) {
    RunDialog(Dialog, {{"the folder is filtered", Lists({"inner", "one.txt", "two.txt"}),
                        [&] {
                            TakeAsked();
                            TellOf(Folder.AddFile("late.txt"));
                            TellOf(Folder.AddFile("late.log"));
                        }},
                       {"they are filtered", Lists({"inner", "one.txt", "two.txt", "late.txt"}),
                        [&] { EXPECT_THAT(TakeAsked(), UnorderedElementsAre("late.txt", "late.log")); }},
                       Cancel(Dialog)});
}

TEST_F(OpenDialogFilling, EnablingTheFilterWaitsForTheNextFilling) {
    Dialog.ExtFilter().SetEnabled(false);
    RunDialog(Dialog, {{"the folder is shown", Lists({"inner", "one.txt", "two.txt", "three.log"}),
                        [&] { TellOf(Folder.AddFile("late.log")); }},
                       {"more comes", Lists({"inner", "one.txt", "two.txt", "three.log", "late.log"}),
                        [&] {
                            Dialog.ExtFilter().SetEnabled(true);
                            PaintNow(List());
                            EXPECT_THAT(Asked, IsEmpty());
                            SendMessageA(List(), WM_KEYDOWN, VK_F5, 0);
                        }},
                       Await("it is filtered", Lists({"inner", "one.txt", "two.txt"})),
                       Cancel(Dialog)});
}

// --- Never seen unfiltered, never in the shell's way

TEST_F(OpenDialogFilling, WhatIsPaintedIsFiltered) {
    Look(Dialog, [&] {
        Dialog.SetSelectedFolder(Folder.Path("inner"));
        Dialog.SetSelectedFolder(Folder.Path());
        PaintNow(List());
        EXPECT_THAT(ListedNames(), UnorderedElementsAre("inner", "one.txt", "two.txt"));
        Dialog.ExtFilter().SetShowFolders(false);
        InsertUnseen(List()); // counts as a folder
        PaintNow(List());
        EXPECT_THAT(ListedNames(), UnorderedElementsAre("one.txt", "two.txt"));
    });
}

TEST_F(OpenDialogFilling, NothingIsTakenOutWhileANameIsTyped) {
    Dialog.ExtFilter().SetShowFolders(false);
    const auto edit = [&] { return reinterpret_cast<HWND>(SendMessageA(List(), LVM_GETEDITCONTROL, 0, 0)); };
    RunDialog(Dialog, {Await("the folder is filtered", Lists({"one.txt", "two.txt"})),
                       Perform("a new folder",
                               [&] {
                                   FocusList();
                                   PressToolButton(Dialog, KxCmdNewFolder);
                               }),
                       {"its name is asked for", [&] { return edit() != nullptr; },
                        [&] {
                            for (int i = 0; i < 3; ++i) {
                                SendMessageA(List(), WM_SETREDRAW, TRUE, 0);
                                PaintNow(List());
                                SendMessageA(List(), KxListRefilledMessage, 0, 0);
                            }
                            ASSERT_TRUE(edit());
                            EXPECT_THAT(ListedNames(), testing::SizeIs(3));
                            SetWindowTextA(edit(), "abc");
                            SendMessageA(edit(), WM_KEYDOWN, VK_RETURN, 0);
                        }},
                       Await("it has the name", [&] { return Folder.Contains("abc"); }),
                       Await("the list is filtered again", Lists({"one.txt", "two.txt"})),
                       Cancel(Dialog)});
    EXPECT_TRUE(Folder.Contains("one.txt"));
    EXPECT_TRUE(Folder.Contains("two.txt"));
    EXPECT_TRUE(Folder.Contains("three.log"));
    EXPECT_TRUE(Folder.Contains("inner"));
}

TEST_F(OpenDialogFilling, NothingIsTakenOutWhenTheHandlerHasANameTyped) {
    bool armed = false;
    Dialog.SetOnIncludeFile([&](TObject*, const std::string& name, bool& include) {
        Asked.push_back(ExtractFileName(name));
        include = ExtractFileName(name) != "one.txt";
        if (!include && std::exchange(armed, false)) {
            FocusList();
            SendMessageA(List(), LVM_EDITLABELA, static_cast<WPARAM>(FindItem(List(), "two.txt")), 0);
        }
    });
    RunDialog(Dialog, {{"the list is filtered", Lists({"inner", "two.txt", "three.log"}),
                        [&] {
                            TakeAsked();
                            armed = true;
                            SendMessageA(List(), WM_KEYDOWN, VK_F5, 0);
                        }},
                       {"a name is being typed", [&] { return IsEdited(); },
                        [&] {
                            PaintNow(List());
                            EXPECT_THAT(ListedNames(), testing::SizeIs(4));
                            EXPECT_TRUE(IsEdited());
                            SendMessageA(List(), LVM_CANCELEDITLABEL, 0, 0);
                        }},
                       Await("the list is filtered again", Lists({"inner", "two.txt", "three.log"})),
                       Cancel(Dialog)});
    EXPECT_THAT(Asked, UnorderedElementsAre("one.txt", "three.log", "two.txt"));
}

TEST_F(OpenDialogFilling, AHandlerMayLetEntriesComeAndGo) {
    bool came = false;
    Dialog.SetOnIncludeFile([&](TObject*, const std::string& name, bool& include) {
        Asked.push_back(ExtractFileName(name));
        include = SameText(ExtractFileExt(name), ".txt");
        if (!std::exchange(came, true)) {
            TellOf(Folder.AddFile("came.txt")); // comes in front of the others
        }
    });
    RunDialog(Dialog,
              {Await("the list is filtered", Lists({"inner", "one.txt", "two.txt", "came.txt"})), Cancel(Dialog)});
    EXPECT_THAT(Asked, UnorderedElementsAre("one.txt", "three.log", "two.txt", "came.txt"));
}

TEST_F(OpenDialogFilling, AHandlerMayHaveOneEntryTakeThePlaceOfAnother) {
    bool exchanged = false;
    Dialog.SetOnIncludeFile([&](TObject*, const std::string& name, bool& include) {
        include = SameText(ExtractFileExt(name), ".txt");
        if (ExtractFileName(name) == "two.txt" && !std::exchange(exchanged, true)) { // the last one
            TellOf(Folder.AddFile("came.txt"));                                      // comes in front of the others
            DeleteFileA(name.c_str());
            SHChangeNotify(SHCNE_DELETE, SHCNF_PATHA | SHCNF_FLUSH, name.c_str(), nullptr);
            EXPECT_THAT(ListedNames(), ElementsAre("came.txt", "inner", "one.txt", "three.log"));
        }
    });
    RunDialog(Dialog, {Await("what is wanted stays, and the rest goes", Lists({"came.txt", "inner", "one.txt"})),
                       Cancel(Dialog)});
}

TEST_F(OpenDialogFilling, AHandlerMayGoToAnotherFolder) {
    bool armed = false;
    Folder.AddFile("inner\\deep.log");
    Dialog.SetOnIncludeFile([&](TObject*, const std::string& name, bool& include) {
        Asked.push_back(ExtractFileName(name));
        include = SameText(ExtractFileExt(name), ".txt");
        if (std::exchange(armed, false)) {
            Dialog.SetSelectedFolder(Folder.Path("inner"));
            Asked.clear();
        }
    });
    RunDialog(Dialog, {{"the list is filtered", Lists({"inner", "one.txt", "two.txt"}),
                        [&] {
                            armed = true;
                            SendMessageA(List(), WM_KEYDOWN, VK_F5, 0);
                        }},
                       Await("the other one is filtered", Lists({"deep.txt"})),
                       Cancel(Dialog)});
    EXPECT_THAT(Asked, UnorderedElementsAre("deep.txt", "deep.log")) << "and no more about the one that was left";
}

} // namespace
} // namespace kx
