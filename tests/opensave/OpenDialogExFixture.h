// SPDX-License-Identifier: MIT
#pragma once

#include "FileDlgTest.h"

#include "kx/opensave/KxOpenDlgEx.h"
#include "kx/win/Registry.h"
#include "tests/support/TestKey.h"

#include <algorithm>
#include <string>
#include <vector>

namespace kx::test {

/// Dialogs with recent files, and a registry key of the test's own, gone at the end.
class TExDlgTest : public TFileDlgTest {
protected:
    /// A dialog whose recent files are these names, in the test's folder.
    TKxOpenDialogEx& NewRecent(std::initializer_list<const char*> names) {
        auto& dialog = NewDialog<TKxOpenDialogEx>();
        TStringList files;
        for (const char* name : names) {
            files.Add(Folder.Path(name));
        }
        dialog.SetRecentFiles(files);
        return dialog;
    }

    static HWND TabsOf(const TKxOpenDialogEx& dialog) { return dialog.TabControl()->WindowHandle(); }

    static TKxOpenExRecentFrm& RecentForm(TKxOpenDialogEx& dialog) {
        return dynamic_cast<TKxOpenExRecentFrm&>(*dialog.CustDlgParams().CustomForm());
    }
    static TListView& RecentList(TKxOpenDialogEx& dialog) { return *RecentForm(dialog).ListView1; }

    /// Middle of a tab on the screen.
    static TPoint TabAt(const TKxOpenDialogEx& dialog, int index) {
        RECT r{};
        SendMessageA(TabsOf(dialog), TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&r));
        return dialog.TabControl()->ClientToScreen({(r.left + r.right) / 2, (r.top + r.bottom) / 2});
    }
    /// Middle of a recent file's name on the screen.
    static TPoint FileAt(TKxOpenDialogEx& dialog, int index) {
        return ItemCenter(RecentList(dialog).WindowHandle(), index);
    }

    /// Steps that click a tab and see its content.
    static TStep ClickTab(TKxOpenDialogEx& dialog, int index) {
        return {"tab " + IntToStr(index) + " can be clicked", Shown(dialog),
                [&dialog, index] { ClickAt(TabAt(dialog, index)); }};
    }
    static TStep AwaitRecent(TKxOpenDialogEx& dialog) {
        return Await("the recent files are shown",
                     [&dialog] { return IsWindowVisible(RecentList(dialog).WindowHandle()) != 0; });
    }
    static TStep AwaitFolder(TKxOpenDialogEx& dialog) {
        return Await("the folder's files are shown", [&dialog] { return IsWindowVisible(ListOf(dialog)) != 0; });
    }

    /// Writes a value of the section of recent files.
    void WriteValue(const std::string& name, const std::string& value) const {
        TRegIniFile(Key).WriteString("RecentFiles", name, value);
    }
    /// The section's values as "name=text", sorted by name.
    std::vector<std::string> StoredValues() const {
        TStringList values;
        TRegIniFile(Key).ReadSectionValues("RecentFiles", values);
        std::vector<std::string> texts = TextsOf(values);
        std::sort(texts.begin(), texts.end());
        return texts;
    }

private:
    TTestKey FKey;

protected:
    const std::string Key = FKey.Path();
};

} // namespace kx::test
