// SPDX-License-Identifier: MIT
// What the folder dialog asks of the system, and the ways in which systems differ.

#include "FolderDlgTest.h"

#include "kx/win/System.h"
#include "tests/support/Grow.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/NameSpaceTree.h"

#include <cstring>
#include <ole2.h>
#include <shlobj.h>

// What the browsers of different systems need of the dialog.

namespace kx {
namespace {

using namespace test;
using testing::EndsWith;

// --- What the system is asked for

BROWSEINFOA Asked;

/// Stands in for the system's browser: notes what it is to show, and is cancelled at once.
LPITEMIDLIST WINAPI NoteAndCancel(LPBROWSEINFOA info) {
    Asked = *info;
    return nullptr;
}

class FolderRequest : public TFolderDlgTest {
protected:
    FolderRequest() : Patch("SHBrowseForFolderA", reinterpret_cast<void*>(NoteAndCancel)) {}

    UINT FlagsOf(TKxBrowseForFolderFlags options, TKxBrowseForFolderFlagsEx optionsEx) {
        auto& dialog = NewDialog();
        dialog.SetOptions(options);
        dialog.SetOptionsEx(optionsEx);
        Asked = {};
        EXPECT_FALSE(dialog.Execute());
        return Asked.ulFlags;
    }
    HWND OwnerOf(TKxFolderDialog& dialog) {
        Asked = {};
        EXPECT_FALSE(dialog.Execute());
        return Asked.hwndOwner;
    }

    const TImportPatch Patch;
};

TEST_F(FolderRequest, HasTheFlagOfEachOptionAndNoOther) {
    EXPECT_EQ(FlagsOf({}, {}), 0u);
    for (size_t i = 0; i < numOfBrwsFlags; ++i) {
        EXPECT_EQ(FlagsOf({static_cast<TKxBrowseForFolderFlag>(i)}, {}), constFolderOptions[i]) << i;
    }
    for (size_t i = 0; i < numOfBrwsFlagsEx; ++i) {
        EXPECT_EQ(FlagsOf({}, {static_cast<TKxBrowseForFolderFlagEx>(i)}), constFolderOptionsEx[i]) << i;
    }
    EXPECT_EQ(
        FlagsOf({ffBrowseForPrinter, ffDontGoBelowDomain}, {ffIncludeUrls, ffValidate, ffShareable}),
        UINT{BIF_BROWSEFORPRINTER | BIF_DONTGOBELOWDOMAIN | BIF_BROWSEINCLUDEURLS | BIF_VALIDATE | BIF_SHAREABLE});
}

TEST_F(FolderRequest, LeavesTheNewStyleOutInAnApartmentOfManyThreads) {
    const TAssumedSystem windows({.Wine = false});
    EXPECT_EQ(FlagsOf({ffStatusText}, {ffNewDialogStyle, ffEditBox}),
              UINT{BIF_STATUSTEXT | BIF_NEWDIALOGSTYLE | BIF_EDITBOX});
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK) << "the thread has an apartment already";
    EXPECT_EQ(FlagsOf({ffStatusText}, {ffNewDialogStyle, ffEditBox}), UINT{BIF_STATUSTEXT | BIF_EDITBOX});
    {
        const TAssumedSystem wine({.Wine = true});
        EXPECT_EQ(FlagsOf({}, {ffNewDialogStyle}), UINT{BIF_NEWDIALOGSTYLE}) << "its tree needs no OLE";
    }
    CoUninitialize();
    EXPECT_EQ(FlagsOf({}, {ffNewDialogStyle}), UINT{BIF_NEWDIALOGSTYLE});
}

// --- What the system answers

unique_pidl Chosen;
size_t NameLength;

/// Stands in for a browser in which a folder with a name of that length is chosen.
LPITEMIDLIST WINAPI ChooseFolder(LPBROWSEINFOA info) {
    std::memset(info->pszDisplayName, 'x', NameLength);
    info->pszDisplayName[NameLength] = '\0';
    return Chosen.release();
}

TEST_F(FolderRequest, ADisplayNameThatMayBeCutOffIsAskedForOnceMore) {
    const TImportPatch patch("SHBrowseForFolderA", reinterpret_cast<void*>(ChooseFolder));
    auto& dialog = NewDialog();
    const auto nameOfLength = [&](size_t length) {
        NameLength = length;
        Chosen = CreatePIDLFromPath(Folder.Path("alpha"), "");
        EXPECT_TRUE(dialog.Execute());
        EXPECT_EQ(dialog.Folder(), Folder.Path("alpha"));
        return dialog.DispName();
    };
    EXPECT_EQ(nameOfLength(1), "x");
    EXPECT_EQ(nameOfLength(MAX_PATH - 5), std::string(MAX_PATH - 5, 'x'));
    EXPECT_EQ(nameOfLength(MAX_PATH - 4), "alpha") << "a character of four bytes more would not have fitted";
    EXPECT_EQ(nameOfLength(MAX_PATH - 1), "alpha");
    EXPECT_EQ(nameOfLength(0), "alpha");
}

TEST_F(FolderRequest, NamesAnOwnerThatKeepsTheBrowserAboveTheForms) {
    auto& dialog = NewDialog();
    EXPECT_EQ(OwnerOf(dialog), Application().Handle());
    TForm* mainForm = nullptr;
    Application().CreateForm(&mainForm);
    mainForm->HandleNeeded();
    EXPECT_EQ(OwnerOf(dialog), Application().Handle()) << "no form of the application's is seen";
    mainForm->Show();
    ASSERT_TRUE(PumpUntil([&] { return mainForm->Active(); }));
    EXPECT_EQ(OwnerOf(dialog), mainForm->Handle());
    Owner->BringToFront();
    Owner->SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return GetActiveWindow() == Owner->Handle(); }));
    EXPECT_EQ(OwnerOf(dialog), Owner->Handle()) << "the one that the user works with";
    ShowWindow(Application().Handle(), SW_SHOWNA);
    EXPECT_EQ(OwnerOf(dialog), Application().Handle()) << "a window that is seen keeps the browser in front";
    ShowWindow(Application().Handle(), SW_HIDE);
    dialog.SetParentForm(mainForm);
    EXPECT_EQ(OwnerOf(dialog), mainForm->Handle());
    mainForm->Free();
}

// --- OK

class FolderSystems : public TFolderDlgTest {
protected:
    /// What becomes of the new style on Windows: the tree moves into a control of its own before the dialog looks for
    /// it.
    static void ArrangeAsWindows(TKxFolderDialog& dialog) {
        dialog.SetTitle("Windows");
        dialog.SetOnEventHooking([&dialog](TObject*, TMessage& m, bool&) {
            if (m.Msg == WM_SETTEXT && TreeOf(dialog)) {
                EXPECT_TRUE(PutTreeIntoNameSpaceControl(dialog.DialogWindow()));
            }
        });
    }
    static HWND NameSpaceOf(const TKxCustomFolderDialog& dialog) {
        return FindChild(dialog.DialogWindow(), "SHBrowseForFolder ShellNameSpace Control");
    }
    static HWND TreeInside(const TKxCustomFolderDialog& dialog) {
        return FindChild(NameSpaceOf(dialog), "SysTreeView32");
    }
    /// Where a custom form belongs that stands in for `control`, with the tree in it.
    static TRect PlaceOf(HWND browser, HWND control, HWND tree) {
        const TRect at = RectIn(browser, control);
        const TRect client = ClientRectOf(tree);
        const bool scrolls = (GetWindowLongA(tree, GWL_STYLE) & WS_VSCROLL) != 0;
        return {at.Left, at.Top,
                at.Left + client.Right + GetSystemMetrics(SM_CXDLGFRAME) +
                    (scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0),
                at.Top + client.Bottom + GetSystemMetrics(SM_CYDLGFRAME)};
    }
    TFormPtr Custom = MakeForm(clAqua, 40, 30);
};

TEST_F(FolderSystems, OkIsToldInBothParameters) {
    auto& dialog = NewDialog();
    std::vector<std::pair<WPARAM, LPARAM>> told;
    dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == BFFM_ENABLEOK) {
            told.emplace_back(m.WParam, m.LParam);
        }
    });
    Look(dialog, [&] {
        dialog.SetOk(false);
        dialog.SetOk(true);
    });
    EXPECT_THAT(told, ElementsAre(std::pair<WPARAM, LPARAM>(0, 0), std::pair<WPARAM, LPARAM>(1, 1)));
}

TEST_F(FolderSystems, WhatWasSaidOfOneSelectionDoesNotMeetTheNext) {
    auto& dialog = NewDialog();
    dialog.SetOnSelectionChange([&](TObject*) {
        if (dialog.SelFolder() == Folder.Path("alpha")) {
            dialog.SetOk(false);
        }
    });
    RunDialog(dialog,
              [&] {
                  SelectTreeItem(TreeOf(dialog), "alpha");
                  SelectTreeItem(TreeOf(dialog), "beta");
              },
              {Perform("the second one may be chosen",
                       [&] {
                           EXPECT_EQ(dialog.SelFolder(), Folder.Path("beta"));
                           EXPECT_TRUE(IsWindowEnabled(ItemOf(dialog, IDOK)));
                           SelectTreeItem(TreeOf(dialog), "alpha");
                       }),
               Perform("the first one may not",
                       [&] {
                           EXPECT_FALSE(IsWindowEnabled(ItemOf(dialog, IDOK)));
                           SelectTreeItem(TreeOf(dialog), "beta");
                       }),
               Press(dialog, IDOK)});
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
}

TEST_F(FolderSystems, OnWindowsNothingIsToldTwiceOrWithoutNeed) {
    const TAssumedSystem windows({.Wine = false});
    auto& dialog = NewDialog();
    dialog.SetOptions({ffStatusText});
    int selections = 0;
    int refusals = 0;
    int texts = 0;
    dialog.SetOnEventHooking([&](TObject*, TMessage& m, bool&) {
        refusals += m.Msg == BFFM_ENABLEOK && m.LParam == 0 ? 1 : 0; // the browser below has a say of its own
        texts += m.Msg == BFFM_SETSTATUSTEXTA ? 1 : 0;
    });
    RunDialog(dialog,
              [&] {
                  EXPECT_EQ(texts, 0);
                  dialog.SetOnSelectionChange([&](TObject*) {
                      ++selections;
                      dialog.SetOk(false);
                  });
                  SelectTreeItem(TreeOf(dialog), "alpha");
              },
              {Perform("OK is refused once a selection",
                       [&] {
                           EXPECT_GT(selections, 0);
                           EXPECT_EQ(refusals, selections);
                       }),
               Cancel(dialog)});
}

// --- The first selection

TEST_F(FolderSystems, TheFirstSelectionIsMadeAgainOnceTheTreeIsBuilt) {
    for (const bool byList : {false, true}) {
        auto& dialog = NewDialog();
        int sent = 0;
        int changes = 0;
        dialog.SetOnEventHook([&](TMessage& m) {
            if (m.Msg == BFFM_SETSELECTIONA) {
                ++sent;
                EXPECT_EQ(m.WParam, byList && sent <= 2 ? WPARAM{FALSE} : WPARAM{TRUE});
            }
        });
        dialog.SetOnSelectionChange([&](TObject*) { ++changes; });
        dialog.SetOnShow([&](TObject*) {
            if (byList) {
                dialog.SetSelPidl(CreatePIDLFromPath(Folder.Path("beta\\inner")).get());
            } else {
                dialog.SetSelFolder(Folder.Path("beta\\inner"));
            }
            EXPECT_EQ(sent, 1);
        });
        RunDialog(dialog,
                  {Await("it is made again", [&] { return sent == 2; }),
                   Perform("one made later is not",
                           [&] {
                               EXPECT_EQ(dialog.SelFolder(), Folder.Path("beta\\inner"));
                               EXPECT_EQ(changes, 1);
                               dialog.SetSelFolder(Folder.Path("alpha"));
                               EXPECT_EQ(sent, 3);
                           }),
                   Perform("and stays", [&] { EXPECT_EQ(dialog.SelFolder(), Folder.Path("alpha")); }), Cancel(dialog)});
        EXPECT_EQ(sent, 3);
    }
}

TEST_F(FolderSystems, TheFirstSelectionIsScrolledIntoSight) {
    for (int i = 10; i < 70; ++i) {
        Folder.AddFolder("sub" + std::to_string(i));
    }
    auto& dialog = NewDialog();
    const auto isSeen = [&](const std::string& item) {
        HWND tree = TreeOf(dialog);
        RECT r{};
        *reinterpret_cast<HTREEITEM*>(&r) = FindTreeItem(tree, item);
        return SendMessageA(tree, TVM_GETITEMRECT, FALSE, reinterpret_cast<LPARAM>(&r)) != 0 && r.top >= 0 &&
               r.bottom <= ClientRectOf(tree).Bottom;
    };
    dialog.SetOnShow([&](TObject*) {
        dialog.SetSelFolder(Folder.Path("beta\\inner"));
        SendMessageA(TreeOf(dialog), WM_VSCROLL, SB_BOTTOM, 0); // as if the tree went on being built
        EXPECT_FALSE(isSeen("inner"));
    });
    RunDialog(dialog, {Await("it is seen", [&] { return isSeen("inner"); }), Cancel(dialog)});
}

TEST_F(FolderSystems, ADialogWithoutAFirstSelectionIsLeftAlone) {
    auto& dialog = NewDialog();
    int sent = 0;
    dialog.SetOnEventHook([&](TMessage& m) { sent += m.Msg == BFFM_SETSELECTIONA ? 1 : 0; });
    dialog.SetSelFolder(Folder.Path("alpha")); // before the showing: merely kept
    Look(dialog);
    EXPECT_EQ(sent, 0);
}

// --- The tree inside a control

TEST_F(FolderSystems, ACustomFormStandsInPlaceOfTheControlWithTheTree) {
    auto& dialog = NewDialog();
    ArrangeAsWindows(dialog);
    Custom->SetBorderStyle(bsNone);
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    dialog.SetSelectionType(stCustom);
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*Custom); },
                        [&] {
                            ASSERT_TRUE(TreeInside(dialog));
                            EXPECT_FALSE(IsWindowVisible(NameSpaceOf(dialog)));
                            EXPECT_EQ(RectIn(dialog.DialogWindow(), Custom->Handle()),
                                      PlaceOf(dialog.DialogWindow(), NameSpaceOf(dialog), TreeInside(dialog)));
                            dialog.SetSelectionType(stStandard);
                            EXPECT_TRUE(IsWindowVisible(TreeInside(dialog)));
                            EXPECT_FALSE(Custom->Visible());
                            dialog.SetSelectionType(stCustom);
                            EXPECT_FALSE(IsWindowVisible(NameSpaceOf(dialog)));
                            EXPECT_EQ(ShownMessageBox(), nullptr);
                            dialog.SetSelectionType(stStandard);
                            ClickTreeItem(TreeInside(dialog), "beta");
                        }},
                       Await("the click", [&] { return dialog.SelFolder() == Folder.Path("beta"); }),
                       Press(dialog, IDOK)});
    EXPECT_EQ(dialog.Folder(), Folder.Path("beta"));
}

TEST_F(FolderSystems, AControlWithoutATreeIsReported) {
    auto& dialog = NewDialog();
    ArrangeAsWindows(dialog);
    std::string text;
    RunDialog(dialog,
              [&] {
                  DestroyWindow(TreeInside(dialog));
                  dialog.SetSelectionType(stCustom);
              },
              {AnswerBox(IDOK, [&](const std::string& shown) { text = shown; }), Cancel(dialog)});
    EXPECT_EQ(text, "Could not hide window. Child SysTreeView32 not found.");
}

TEST_F(FolderSystems, ACustomFormFollowsTheTreeWhenTheNewStyleIsResized) {
    auto& dialog = NewDialog();
    dialog.SetOptionsEx({ffNewDialogStyle});
    Custom->SetBorderStyle(bsNone);
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    dialog.SetSelectionType(stCustom);
    RunDialog(dialog, {{"the form is painted", [&] { return IsPainted(*Custom); },
                        [&] {
                            HWND browser = dialog.DialogWindow();
                            const TRect placed = RectIn(browser, Custom->Handle());
                            Grow(browser, 70, 50);
                            const TRect grown = RectIn(browser, Custom->Handle());
                            EXPECT_EQ(grown, PlaceOf(browser, TreeOf(dialog), TreeOf(dialog)));
                            EXPECT_EQ(Width(grown), Width(placed) + 70);
                            EXPECT_EQ(Height(grown), Height(placed) + 50);
                        }},
                       Cancel(dialog)});
}

TEST_F(FolderSystems, ACustomFormThatComesAfterTheNewStyleWasResizedHasTheTreesPlace) {
    auto& dialog = NewDialog();
    dialog.SetOptionsEx({ffNewDialogStyle});
    Custom->SetBorderStyle(bsNone);
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    Look(dialog, [&] {
        HWND browser = dialog.DialogWindow();
        const TRect own = Custom->BoundsRect();
        Grow(browser);
        EXPECT_EQ(Custom->BoundsRect(), own) << "the tree is shown";
        dialog.SetSelectionType(stCustom);
        EXPECT_EQ(RectIn(browser, Custom->Handle()), PlaceOf(browser, TreeOf(dialog), TreeOf(dialog)));
        Custom->SetParentWindow(nullptr);
        const TRect elsewhere = Custom->BoundsRect();
        Grow(browser);
        EXPECT_EQ(Custom->BoundsRect(), elsewhere) << "the application has taken it out";
    });
}

TEST_F(FolderSystems, ATreeInFrontOfAllIsNotTheOneWhereThereIsAnotherBehindIt) {
    auto& dialog = NewDialog();
    dialog.CustDlgParams().SetCustomForm(Custom.get());
    Look(dialog, [&] {
        HWND browser = dialog.DialogWindow();
        HWND tree = TreeOf(dialog);
        const unique_hwnd front(CreateWindowExA(0, WC_TREEVIEWA, "", WS_CHILD | WS_VISIBLE, 0, 0, 9, 9, browser,
                                                nullptr, HInstance(), nullptr));
        SetWindowPos(front.get(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        ASSERT_EQ(GetWindow(browser, GW_CHILD), front.get());
        dialog.SetSelectionType(stCustom);
        EXPECT_TRUE(IsWindowVisible(front.get()));
        EXPECT_FALSE(IsWindowVisible(tree));
    });
}

// --- Long names

TEST_F(FolderSystems, ADisplayNameThatTheSystemsBufferDoesNotHoldIsWhole) {
    std::string outerName;
    std::string name;
    for (int i = 0; i < 100; ++i) {
        outerName += FromUtf8("é");
    }
    for (int i = 0; i < 60; ++i) {
        name += FromUtf8("ü");
    }
    Folder.AddFolder(ToUtf8(outerName + "\\" + name));
    auto& dialog = NewDialog();
    dialog.SetInitialDir(Folder.Path(ToUtf8(outerName)));
    EXPECT_TRUE(RunDialog(dialog, {Choose(dialog, name)}));
    EXPECT_THAT(dialog.DispName(), EndsWith(name));
}

} // namespace
} // namespace kx
