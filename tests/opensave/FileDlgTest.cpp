// SPDX-License-Identifier: MIT
// Fixture of the file dialogs.

#include "FileDlgTest.h"

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

struct TPart {
    HWND Window;
    TRect Rect;
    std::string Name() const {
        return ClassOf(Window) + " " + std::to_string(GetDlgCtrlID(Window)) + " (" + std::to_string(Rect.Left) + "," +
               std::to_string(Rect.Top) + ")-(" + std::to_string(Rect.Right) + "," + std::to_string(Rect.Bottom) + ")";
    }
};

/// The part of a control that shows something, in the dialog's client coordinates.
TRect ContentOf(HWND dialog, HWND control) {
    TRect r = RectIn(dialog, control);
    if (ClassOf(control) == "ToolbarWindow32") {
        RECT button{};
        const LRESULT last = SendMessageA(control, TB_BUTTONCOUNT, 0, 0) - 1;
        if (SendMessageA(control, TB_GETITEMRECT, static_cast<WPARAM>(last), reinterpret_cast<LPARAM>(&button))) {
            r.Right = r.Left + button.right;
        }
    } else if (ClassOf(control) == "Static") {
        const TWindowDC dc(control);
        const TSelectObject font(dc.Handle(), reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)));
        RECT text{0, 0, Width(r), 0};
        DrawTextA(dc.Handle(), TextOf(control).c_str(), -1, &text, DT_CALCRECT);
        r.Bottom = r.Top + text.bottom;
    }
    return r;
}

std::vector<TPart> VisibleParts(HWND dialog) {
    std::vector<TPart> parts;
    for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const TRect r = ContentOf(dialog, child);
        // The template child lies behind all others, and the size grip may lie behind a form in its corner.
        const bool isBehind = ClassOf(child) == "#32770" || ClassOf(child) == "ScrollBar";
        if (IsWindowVisible(child) && !isBehind && Width(r) > 0 && Height(r) > 0) {
            parts.push_back({child, r});
        }
    }
    return parts;
}

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

/// The application's or the library's, and not in the place of one of the system's controls.
bool IsForeign(HWND window) { return FindControl(window) && !FindChild(window, "TKxBitBtn"); }

} // namespace

void ExpectCleanLayout(const TKxFileDlgCore& dialog) {
    ExpectPainted(dialog.DlgHandle());
    const TRect client = ClientRectOf(dialog.DlgHandle());
    const std::vector<TPart> parts = VisibleParts(dialog.DlgHandle());
    // The dialog's own controls make room for a form by its size and that of the dialog frame, for which the dialog
    // does not grow.
    const int play = GetSystemMetrics(SM_CXDLGFRAME);
    for (size_t i = 0; i < parts.size(); ++i) {
        const TRect& a = parts[i].Rect;
        EXPECT_TRUE(a.Left >= 0 && a.Top >= 0 && a.Right <= client.Right + play && a.Bottom <= client.Bottom + play)
            << parts[i].Name() << " sticks out of " << client.Right << "x" << client.Bottom;
        for (size_t j = i + 1; j < parts.size(); ++j) {
            const TRect& b = parts[j].Rect;
            const bool isFormA = IsForeign(parts[i].Window);
            const bool isFormB = IsForeign(parts[j].Window);
            if (!isFormA && !isFormB) {
                continue; // the system's own controls overlap here and there
            }
            const int overlap = isFormA && isFormB ? 0 : play;
            EXPECT_FALSE(a.Left + overlap < b.Right && b.Left + overlap < a.Right && a.Top + overlap < b.Bottom &&
                         b.Top + overlap < a.Bottom)
                << parts[i].Name() << " overlaps " << parts[j].Name();
        }
    }
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
