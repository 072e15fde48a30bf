// SPDX-License-Identifier: MIT
// The open dialog with everything docked, at every size.

#include "OpenDialogTest.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"

#include <map>

namespace kx {
namespace {

using namespace test;

enum TBar { NoBar, OwnBar, SystemBar };

/// What the dialog shows.
struct TLook {
    const char* Name;
    TBar Places;
    bool ToolBar;
    bool Forms;
    bool CustomForm;
    bool Sizeable;
};

class OpenDialogLayout : public TOpenDialogTest, public testing::WithParamInterface<TLook> {
protected:
    OpenDialogLayout() {
        const TLook& look = GetParam();
        Dialog.PlacesBar().SetVisible(look.Places != NoBar);
        Dialog.PlacesBar().SetNative(look.Places == SystemBar);
        AddPlace("Folder", Folder.Path());
        AddPlace("Inner", Folder.Path("inner"));
        Dialog.SetFilter("Text files|*.txt|All files|*.*");
        Dialog.CustDlgParams().SetPosition(dpScrCenter);
        if (!look.Sizeable) {
            Dialog.SetOptions({ofHideReadOnly});
        }
        if (look.ToolBar) {
            auto* const bar = new TToolBar(Owner.get());
            bar->SetParent(Owner.get());
            bar->SetAlign(alNone);
            bar->SetBounds(0, 0, 24, 26);
            (new TToolButton(bar))->SetParent(bar);
            Dialog.ToolBar().SetCustomBar(bar);
            Item = new TMenuItem(&Menu);
            Menu.Items().Add(Item);
            Dialog.SetOkButtonMenu(&Menu);
        }
        if (look.Forms) {
            Dialog.CustDlgParams().SetLeftForm(Left.get());
            Dialog.CustDlgParams().SetTopForm(Top.get());
            Dialog.CustDlgParams().SetRightForm(Right.get());
            Dialog.CustDlgParams().SetBottomForm(Bottom.get());
        }
        if (look.CustomForm) {
            Dialog.CustDlgParams().SetCustomForm(Custom.get());
            Dialog.SetSelectionType(stCustom);
        }
    }

    void Check(const char* size) {
        ExpectCleanLayout(Dialog);
        Screenshot(std::string("open_") + GetParam().Name + "_" + size, Dialog.DlgHandle());
        // The list, or what stands in its place, ends above the file name, and left of what is docked right.
        const TRect list = Dialog.CustDlgParams().CustomForm()
                               ? Custom->BoundsRect()
                               : RectIn(Dialog.DlgHandle(), ItemOf(Dialog, KxShellViewId));
        const TRect name = RectIn(Dialog.DlgHandle(), Dialog.EditHandle());
        EXPECT_LE(list.Bottom, name.Top);
        EXPECT_GT(Height(list), 60);
        if (GetParam().Places == OwnBar) {
            const TRect bar = RectIn(Dialog.DlgHandle(), Dialog.PlacesForm()->WindowHandle());
            EXPECT_LE(bar.Right, list.Left);
            const TRect type = RectIn(Dialog.DlgHandle(), ItemOf(Dialog, KxFileTypeId));
            EXPECT_EQ(Height(bar), type.Bottom - RectIn(Dialog.DlgHandle(), ItemOf(Dialog, KxListPlaceholderId)).Top);
        }
    }
    void Resize(int width, int height) { SetWindowPos(Dialog.DlgHandle(), nullptr, 0, 0, width, height, SWP_NOZORDER); }

    TFormPtr Left = MakeMarkedForm(clMoneyGreen, 70, 60);
    TFormPtr Top = MakeMarkedForm(clSkyBlue, 60, 40);
    TFormPtr Right = MakeMarkedForm(clCream, 80, 60);
    TFormPtr Bottom = MakeMarkedForm(clSilver, 60, 50);
    TFormPtr Custom = MakeMarkedForm(clWhite, 60, 60);
    TPopupMenu Menu;
    TMenuItem* Item = nullptr;
};

TEST_P(OpenDialogLayout, IsCleanAtEverySize) {
    Look(Dialog, [&] {
        Check("first");
        if (!GetParam().Sizeable) {
            return;
        }
        Resize(1280, 1024);
        Check("full");
        Resize(10, 10);
        Check("smallest");
    });
}

/// Where everything in the dialog is, hidden things left out.
std::map<std::string, TRect> PlacesIn(HWND dialog) {
    std::map<std::string, TRect> places;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child)) {
            places[ClassOf(child) + " " + std::to_string(GetDlgCtrlID(child))] = ScreenRectOf(child);
        }
    }
    places["the dialog"] = ScreenRectOf(dialog);
    return places;
}

TEST_P(OpenDialogLayout, DoesNotChangeAfterTheFirstPainting) {
    std::map<std::string, TRect> painted;
    Dialog.SetOnEventHook([&](TMessage& m) {
        if (m.Msg == WM_PAINT && painted.empty()) {
            painted = PlacesIn(Dialog.DlgHandle());
        }
    });
    Dialog.ListViewStyles().SetGridLines(true);
    const auto styled = [&] {
        return (SendMessageA(List(), LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_GRIDLINES) != 0;
    };
    RunDialog(Dialog,
              {Await("it is painted, and its list has its styles", [&] { return !painted.empty() && styled(); }),
               Perform("nothing has moved", [&] { EXPECT_EQ(PlacesIn(Dialog.DlgHandle()), painted); }),
               Cancel(Dialog)});
}

INSTANTIATE_TEST_SUITE_P(All, OpenDialogLayout,
                         testing::Values(TLook{"plain", NoBar, false, false, false, true},
                                         TLook{"plain_fixed", NoBar, false, false, false, false},
                                         TLook{"tool_bar", NoBar, true, false, false, true},
                                         TLook{"forms", NoBar, true, true, false, true},
                                         TLook{"places", OwnBar, false, false, false, true},
                                         TLook{"places_fixed", OwnBar, false, false, false, false},
                                         TLook{"places_tool_bar", OwnBar, true, false, false, true},
                                         TLook{"places_forms", OwnBar, true, true, false, true},
                                         TLook{"places_forms_fixed", OwnBar, true, true, false, false},
                                         TLook{"places_custom", OwnBar, false, false, true, true},
                                         TLook{"all", OwnBar, true, true, true, true},
                                         TLook{"all_fixed", OwnBar, true, true, true, false},
                                         TLook{"system_places", SystemBar, true, false, false, true},
                                         TLook{"system_places_forms", SystemBar, true, true, false, true},
                                         TLook{"system_places_all", SystemBar, true, true, true, true}),
                         [](const auto& look) { return std::string(look.param.Name); });

} // namespace
} // namespace kx
