// SPDX-License-Identifier: MIT
// Fixture of the folder dialog.

#include "FolderDlgTest.h"

namespace kx::test {

const TClass& TPaneForm::StaticClass() {
    static const TClassBuilder<TPaneForm> cls("TPaneForm", TForm::StaticClass());
    return cls.Class();
}

TPaneForm::TPaneForm(TComponent* owner) : TForm(owner) {
    SetColor(clSkyBlue);
    SetBounds(30, 40, 130, 90);
}

// --- The running browser

HWND TreeOf(HWND browser) { return FindChild(browser, "SysTreeView32"); }

HWND TreeOf(const TKxCustomFolderDialog& dialog) { return TreeOf(dialog.DialogWindow()); }

namespace {

HTREEITEM NextItem(HWND tree, WPARAM which, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(item)));
}

std::string TreeText(HWND tree, HTREEITEM item) {
    char text[MAX_PATH] = "";
    TVITEMA record{};
    record.mask = TVIF_TEXT;
    record.hItem = item;
    record.pszText = text;
    record.cchTextMax = sizeof text;
    SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&record));
    return text;
}

std::vector<HTREEITEM> TreeItems(HWND tree) {
    std::vector<HTREEITEM> items;
    for (HTREEITEM item = NextItem(tree, TVGN_ROOT, nullptr); item; item = NextItem(tree, TVGN_NEXTVISIBLE, item)) {
        items.push_back(item);
    }
    return items;
}

} // namespace

std::vector<std::string> TreeTexts(HWND tree) {
    std::vector<std::string> texts;
    for (HTREEITEM item : TreeItems(tree)) {
        texts.push_back(TreeText(tree, item));
    }
    return texts;
}

HTREEITEM FindTreeItem(HWND tree, const std::string& text) {
    for (HTREEITEM item : TreeItems(tree)) {
        if (TreeText(tree, item) == text) {
            return item;
        }
    }
    return nullptr;
}

void ClickTreeItem(HWND tree, const std::string& text) {
    RECT r{};
    HTREEITEM item = FindTreeItem(tree, text);
    ASSERT_TRUE(item) << text << " is not in the tree";
    SendMessageA(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
    *reinterpret_cast<HTREEITEM*>(&r) = item;
    ASSERT_TRUE(SendMessageA(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&r)));
    POINT at{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
    ClientToScreen(tree, &at);
    ClickAt(FromPOINT(at));
}

void SelectTreeItem(HWND tree, const std::string& text) {
    HTREEITEM item = FindTreeItem(tree, text);
    ASSERT_TRUE(item) << text << " is not in the tree";
    SendMessageA(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

// --- The fixture

namespace {

/// Listing the folder changes no time of it from now on. Wine's item lists carry a folder's last access, to two
/// seconds, and its browser does not find a folder whose list differs in that: the first listing of a new folder would
/// do it.
void SettleAccessTime(const std::string& folder) {
    constexpr ULONGLONG minute = 60 * 10'000'000ULL;
    const unique_hfile handle(CreateFileA(folder.c_str(), FILE_WRITE_ATTRIBUTES,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    const ULONGLONG later = (ULONGLONG{time.dwHighDateTime} << 32) + time.dwLowDateTime + minute;
    time = {static_cast<DWORD>(later), static_cast<DWORD>(later >> 32)};
    EXPECT_TRUE(SetFileTime(handle.get(), nullptr, &time, nullptr)) << folder;
}

} // namespace

TFolderDlgTest::TFolderDlgTest() {
    Folder.AddFolder("alpha");
    Folder.AddFolder("beta\\inner");
    Folder.AddFile("letter.txt");
    for (const std::string& folder : {ExtractFileDir(Folder.Path()), Folder.Path(), Folder.Path("alpha"),
                                      Folder.Path("beta"), Folder.Path("beta\\inner")}) {
        SettleAccessTime(folder);
    }
}

TFolderDlgTest::~TFolderDlgTest() {
    EXPECT_EQ(TKxCustomFolderDialog::Running(), nullptr);
    EXPECT_EQ(ActiveDialog(), nullptr);
}

TKxFolderDialog& TFolderDlgTest::NewDialog() {
    auto* dialog = new TKxFolderDialog(Owner.get());
    dialog->SetInitialDir(Folder.Path());
    return *dialog;
}

TStep TFolderDlgTest::Choose(const TKxCustomFolderDialog& dialog, const std::string& item) {
    return {item + " can be chosen",
            [&dialog, item] { return Shown(dialog)() && FindTreeItem(TreeOf(dialog), item) != nullptr; },
            [&dialog, item] {
                SelectTreeItem(TreeOf(dialog), item);
                PressButton(ItemOf(dialog, IDOK));
            }};
}

} // namespace kx::test
