// SPDX-License-Identifier: MIT
#pragma once

#include "FileDlgTest.h"

#include "kx/win/Registry.h"
#include "tests/support/TestKey.h"

#include <string>

namespace kx::test {

inline constexpr const char* Filter = "All|*.*|Text|*.txt|Logs|*.log";

inline TPoint operator+(TPoint a, TPoint b) { return {a.X + b.X, a.Y + b.Y}; }
inline TPoint operator-(TPoint a, TPoint b) { return {a.X - b.X, a.Y - b.Y}; }

/// File dialogs that remember, below a registry key of the test's own.
class Remember : public TFileDlgTest {
protected:
    Remember() {
        Folder.AddFile("inner\\deep.txt");
        Other.AddFile("other.txt");
        RECT area{};
        SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        WorkArea = {area.right - area.left, area.bottom - area.top};
    }

    /// A new dialog that remembers, and says nothing of its folder.
    template <class T> T& New() {
        auto* dialog = new T(Owner.get());
        dialog->SetFilter(Filter);
        dialog->SetRememberKey(Key.Path());
        return *dialog;
    }
    int Number(const char* name) const {
        TRegistry registry;
        return registry.OpenKeyReadOnly(Key.Path()) && registry.ValueExists(name) ? registry.ReadInteger(name) : -1;
    }
    std::string TextAt(const char* name) const {
        TRegistry registry;
        return registry.OpenKeyReadOnly(Key.Path()) ? registry.ReadString(name) : std::string();
    }

    static TPoint SizeOf(const TKxFileDlgCore& dialog) {
        const TRect r = ScreenRectOf(dialog.DlgHandle());
        return {Width(r), Height(r)};
    }
    static int FilterOf(const TKxFileDlgCore& dialog) {
        return static_cast<int>(SendMessageA(GetDlgItem(dialog.DlgHandle(), KxFileTypeId), CB_GETCURSEL, 0, 0)) + 1;
    }
    /// Chooses a filter as the user does.
    static void ChooseFilter(const TKxFileDlgCore& dialog, int index) {
        HWND types = GetDlgItem(dialog.DlgHandle(), KxFileTypeId);
        SendMessageA(types, CB_SETCURSEL, static_cast<WPARAM>(index - 1), 0);
        SendMessageA(dialog.DlgHandle(), WM_COMMAND, MAKEWPARAM(KxFileTypeId, CBN_SELENDOK),
                     reinterpret_cast<LPARAM>(types));
    }
    static void Resize(const TKxFileDlgCore& dialog, int dx, int dy) {
        const TPoint size = SizeOf(dialog);
        SetWindowPos(dialog.DlgHandle(), nullptr, 0, 0, size.X + dx, size.Y + dy,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    /// What the dialog has besides the system's own part: forms, a bar of places.
    static TPoint ExtraOf(TKxFileDlgCore& dialog) {
        return {dialog.CustDlgParams().IncX(), dialog.CustDlgParams().IncY()};
    }
    static int ColumnOf(HWND list, int index) {
        return static_cast<int>(SendMessageA(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(index), 0));
    }

    TTestKey Key;
    TTempFolder Other{"other"};
    TPoint WorkArea{};
};

} // namespace kx::test
