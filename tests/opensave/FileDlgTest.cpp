// SPDX-License-Identifier: MIT
// Fixture of the file dialogs.

#include "FileDlgTest.h"

#include "tests/support/CleanLayout.h"

#include <algorithm>

namespace kx::test {

namespace {

constexpr TColor LineColor = clNavy; ///< Of the lines on marked forms.

} // namespace

// --- Forms

TMarkedForm::TMarkedForm(TComponent* owner, TColor color, int width, int height) : TForm(owner) {
    SetColor(color);
    SetBounds(30, 40, width, height);
}

void TMarkedForm::Paint() {
    TForm::Paint();
    const TRect r = ClientRect();
    TCanvas& canvas = Canvas();
    canvas.Pen().SetColor(LineColor);
    canvas.MoveTo(0, 0);
    canvas.LineTo(r.Right, r.Bottom);
    canvas.MoveTo(r.Right - 1, 0);
    canvas.LineTo(-1, r.Bottom);
    canvas.MoveTo(0, 0);
    canvas.LineTo(r.Right - 1, 0);
    canvas.LineTo(r.Right - 1, r.Bottom - 1);
    canvas.LineTo(0, r.Bottom - 1);
    canvas.LineTo(0, 0);
}

const TClass& TPreviewForm::StaticClass() {
    static const TClassBuilder<TPreviewForm> cls("TPreviewForm", TForm::StaticClass());
    return cls.Class();
}

TFormPtr MakeMarkedForm(TColor color, int width, int height) {
    return TFormPtr(new TMarkedForm(nullptr, color, width, height));
}

// --- Dialog windows

HWND NavigationBarOf(const TKxFileDlgCore& dialog) {
    for (HWND child = GetWindow(dialog.DlgHandle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (ClassOf(child) == "ToolbarWindow32" && SendMessageA(child, TB_COMMANDTOINDEX, 40961, 0) >= 0) {
            return child;
        }
    }
    return nullptr;
}

HWND PlacesBarOf(const TKxFileDlgCore& dialog) { return FindChild(dialog.DlgHandle(), "ToolbarWindow32", 1184); }

HWND ListOf(const TKxFileDlgCore& dialog) { return FileListOf(dialog.DlgHandle()); }

void PressToolButton(const TKxFileDlgCore& dialog, WORD command) {
    SendMessageA(dialog.DlgHandle(), WM_COMMAND, command, reinterpret_cast<LPARAM>(NavigationBarOf(dialog)));
}

namespace {

/// What no child covers of `window`, in its client coordinates.
unique_hrgn UncoveredOf(HWND window) {
    const TRect client = ClientRectOf(window);
    unique_hrgn uncovered(CreateRectRgn(0, 0, client.Right, client.Bottom));
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child)) {
            const TRect r = RectIn(window, child);
            const unique_hrgn covered(CreateRectRgn(r.Left, r.Top, r.Right, r.Bottom));
            CombineRgn(uncovered.get(), uncovered.get(), covered.get(), RGN_DIFF);
        }
    }
    return uncovered;
}

/// The pixels of a fine grid over what no child covers of `window` have one of the colours.
void ExpectColors(HWND window, std::initializer_list<COLORREF> colors) {
    const TRect client = ClientRectOf(window);
    const unique_hrgn uncovered = UncoveredOf(window);
    const LONG step = std::max<LONG>(3, client.Right / 150); // each pixel costs
    const TWindowDC dc(window);
    for (LONG y = 1; y < client.Bottom; y += step) {
        for (LONG x = 1; x < client.Right; x += step) {
            if (!PtInRegion(uncovered.get(), x, y)) {
                continue;
            }
            const COLORREF pixel = GetPixel(dc.Handle(), x, y);
            const bool isOnScreen = pixel != CLR_INVALID;
            if (isOnScreen && std::find(colors.begin(), colors.end(), pixel) == colors.end()) {
                ADD_FAILURE() << "the pixel at " << x << "," << y << " of " << TextOf(window) << " (" << client.Right
                              << "x" << client.Bottom << ") is 0x" << std::hex << pixel;
                return;
            }
        }
    }
}

/// What the dialog and the forms in it show has been painted, all of it.
void ExpectPainted(HWND dialog) {
    RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); // what is invalid, nothing else
    ExpectColors(dialog, {GetSysColor(COLOR_3DFACE)});
    for (const TPart& part : VisibleParts(dialog)) {
        if (const auto* form = dynamic_cast<TMarkedForm*>(FindControl(part.Window))) {
            ExpectColors(part.Window, {ColorToRGB(form->Color()), ColorToRGB(LineColor)});
        }
    }
}

} // namespace

void ExpectCleanLayout(const TKxFileDlgCore& dialog) {
    ExpectPainted(dialog.DlgHandle());
    ExpectCleanLayout(dialog.DlgHandle());
}

std::vector<TStep> DragCorner(const TKxFileDlgCore& dialog, int dx, int dy) {
    const auto isSizing = [] {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        return GetGUIThreadInfo(GetCurrentThreadId(), &info) && (info.flags & GUI_INMOVESIZE) != 0;
    };
    const auto from = std::make_shared<TPoint>();
    return {{"the corner can be taken", [=] { return !isSizing(); }, // an earlier drag may not have ended yet
             [=, &dialog] {
                 // The frame's inner corner: the outermost pixels of a window that was sized before are the desktop's
                 // under Wine 10 till it is shown anew.
                 const TRect client = ClientRectOf(dialog.DlgHandle());
                 POINT corner{client.Right, client.Bottom};
                 ClientToScreen(dialog.DlgHandle(), &corner);
                 *from = {corner.x, corner.y};
                 PressAt(*from);
             }},
            {"the dialog is being sized", isSizing,
             [=] {
                 for (int i = 1; i <= 5; ++i) {
                     MoveMouse({from->X + dx * i / 5, from->Y + dy * i / 5});
                 }
             }},
            {"the moves have been taken in", MouseInputTaken, [=] {
                 ReleaseAt({from->X + dx, from->Y + dy});
             }}};
}

void LogNavigation(TKxFileDlgCore& dialog, const TObject& sender, std::vector<std::string>& log,
                   const std::string& veto) {
    const auto note = [component = &sender, names = &log](const char* name) {
        return TNotifyEvent([=](TObject* who) {
            EXPECT_EQ(who, component);
            names->emplace_back(name);
        });
    };
    const auto ask = [component = &sender, names = &log, veto](const char* name) {
        return TKxCtrlQueryEvent([=](TObject* who, bool& allow) {
            EXPECT_EQ(who, component);
            EXPECT_TRUE(allow);
            names->emplace_back(name);
            allow = veto != name;
        });
    };
    dialog.SetOnUpLevelNavigating(ask("up?"));
    dialog.SetOnUpLevelNavigate(note("up"));
    dialog.SetOnDesktopNavigating(ask("desktop?"));
    dialog.SetOnDesktopNavigate(note("desktop"));
    dialog.SetOnLastFolderNavigating(ask("back?"));
    dialog.SetOnLastFolderNavigate(note("back"));
    dialog.SetOnFolderCreating(ask("folder?"));
    dialog.SetOnFilenameEntering(ask("enter?"));
    dialog.SetOnFilenameChange(note("change"));
}

// --- The fixture

TFileDlgTest::TFileDlgTest() {
    Folder.AddFile("one.txt");
    Folder.AddFile("two.txt");
    Folder.AddFile("inner\\deep.txt");
}

} // namespace kx::test
