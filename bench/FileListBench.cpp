// SPDX-License-Identifier: MIT
// Measures the file filter and the styles of the file list.

#include "Benches.h"

#include "Showing.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <memory>
#include <shlobj.h>

namespace kx::bench {

namespace {

constexpr int Names = 1'000;                      ///< Files that there are; longer lists show them again and again.
constexpr int Sizes[] = {1'000, 10'000, 100'000}; ///< Of the lists that are filtered.

/// A folder with files "0.txt", "1.log", "2.txt", ...
class TFiles {
public:
    explicit TFiles(const char* name) {
        char temp[MAX_PATH] = "";
        GetTempPathA(sizeof temp, temp);
        FPath = std::string(temp) + name + IntToStr(static_cast<int>(GetCurrentProcessId()));
        CreateDirectoryA(FPath.c_str(), nullptr);
        for (int i = 0; i < Names; ++i) {
            const unique_hfile file(CreateFileA(Path(i).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
        }
    }
    TFiles(const TFiles&) = delete;
    TFiles& operator=(const TFiles&) = delete;
    ~TFiles() {
        for (int i = 0; i < Names; ++i) {
            DeleteFileA(Path(i).c_str());
        }
        RemoveDirectoryA(FPath.c_str());
    }
    const std::string& Path() const { return FPath; }
    std::string Path(int index) const { return FPath + "\\" + IntToStr(index) + (index % 2 == 0 ? ".txt" : ".log"); }

private:
    std::string FPath;
};

bool IsText(const std::string& name) { return SameText(ExtractFileExt(name), ".txt"); }

/// A list whose items carry item identifier lists, as the shell's has it.
class TList {
public:
    explicit TList(const TFiles& files) {
        for (int i = 0; i < Names; ++i) {
            FNames.push_back(ExtractFileName(files.Path(i)));
            FIds.push_back(CreatePIDLFromPath(files.Path(i)));
            LPITEMIDLIST last = FIds.back().get();
            for (LPITEMIDLIST next = last; next; next = GetNextItemID(next)) {
                last = next;
            }
            FItems.push_back(last);
        }
        FWindow.reset(CreateWindowExA(0, WC_LISTVIEWA, "", WS_POPUP | LVS_LIST | LVS_SHAREIMAGELISTS, 0, 0, 400, 300,
                                      nullptr, nullptr, HInstance(), nullptr));
        ShowWindow(FWindow.get(), SW_SHOWNOACTIVATE);
    }
    HWND Handle() const { return FWindow.get(); }
    void Fill(int count) {
        SendMessageA(Handle(), WM_SETREDRAW, FALSE, 0);
        SendMessageA(Handle(), LVM_DELETEALLITEMS, 0, 0);
        SendMessageA(Handle(), LVM_SETITEMCOUNT, static_cast<WPARAM>(count), 0);
        for (int i = 0; i < count; ++i) {
            LVITEMA item{};
            item.mask = LVIF_TEXT | LVIF_PARAM;
            item.iItem = i;
            item.pszText = FNames[static_cast<size_t>(i % Names)].data();
            item.lParam = reinterpret_cast<LPARAM>(FItems[static_cast<size_t>(i % Names)]);
            SendMessageA(Handle(), LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        }
        SendMessageA(Handle(), WM_SETREDRAW, TRUE, 0);
        UpdateWindow(Handle());
    }

private:
    std::vector<std::string> FNames;
    std::vector<unique_pidl> FIds;
    std::vector<LPITEMIDLIST> FItems;
    unique_hwnd FWindow;
};

/// What a program would write by hand for one list.
void BareLoop(HWND list, const std::string& folder) {
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    std::vector<int> unwanted;
    const auto count = static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        char text[MAX_PATH];
        char path[MAX_PATH];
        LVITEMA item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = i;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(list, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
        SHGetPathFromIDListA(reinterpret_cast<LPCITEMIDLIST>(item.lParam), path);
        const std::string name = folder + "\\" + ExtractFileName(path);
        const DWORD attributes = GetFileAttributesA(name.c_str());
        if ((attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) && !IsText(name)) {
            unwanted.push_back(i);
        }
    }
    for (size_t i = unwanted.size(); i-- > 0;) {
        SendMessageA(list, LVM_DELETEITEM, static_cast<WPARAM>(unwanted[i]), 0);
    }
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list, nullptr, TRUE);
}

/// Microseconds an entry of one pass over a list that is filled anew for it.
double EntryCost(TList& list, int count, const std::function<void()>& pass) {
    list.Fill(count);
    const double start = Now();
    pass();
    return (Now() - start) / count * 1e6;
}

void MeasureFilter(std::vector<TRow>& rows) {
    const TFiles files("kxfilter");
    TList list(files);
    TKxFileFilter filter(nullptr);
    filter.SetEnabled(true);
    filter.SetOnIncludeFile([](TObject*, const std::string& name, bool& include) { include = IsText(name); });
    for (const int count : Sizes) {
        std::vector<double> ours;
        std::vector<double> bare;
        for (int i = 0; i < (count > 10'000 ? 3 : 15); ++i) {
            bare.push_back(EntryCost(list, count, [&] { BareLoop(list.Handle(), files.Path()); }));
            ours.push_back(EntryCost(list, count, [&] { filter.ProcessViaFilter(list.Handle(), files.Path()); }));
        }
        rows.push_back(ComparePairs("filter, an entry of " + IntToStr(count), ours, "a bare loop", bare, "us", 1.10));
    }
    // The system's list takes the longer for a deletion the more entries it has; the pass itself does not.
    filter.SetOnIncludeFile([](TObject*, const std::string& name, bool& include) { include = !name.empty(); });
    std::vector<double> costs[3];
    for (int i = 0; i < 5; ++i) {
        for (size_t size = 0; size < 3; ++size) {
            costs[size].push_back(
                EntryCost(list, Sizes[size], [&] { filter.ProcessViaFilter(list.Handle(), files.Path()); }));
        }
    }
    for (size_t size = 1; size < 3; ++size) {
        rows.push_back(ComparePairs("filter that keeps all, of " + IntToStr(Sizes[size]), costs[size], "of 1,000",
                                    costs[0], "us", 1.3));
    }
}

/// Seconds of entering a folder, by its path in the file name control.
double EnterSeconds(HWND dialog, const std::string& folder) {
    HWND edit = GetDlgItem(dialog, KxFileNameComboId);
    const double start = Now();
    SetWindowTextA(edit, folder.c_str());
    SendMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    return Now() - start;
}

void MeasureFolderChange(std::vector<TRow>& rows) {
    const TFiles one("kxone");
    const TFiles two("kxtwo");
    TKxOpenDialog ours(&Application());
    ours.PlacesBar().SetVisible(false);
    ours.ListViewStyles().SetGridLines(true);
    ours.ListViewStyles().SetRowSelect(true);
    ours.ListViewStyles().SetEnableRename(false);
    ours.ExtFilter().SetEnabled(true);
    ours.SetOnIncludeFile([](TObject*, const std::string& name, bool& include) { include = IsText(name); });
    std::vector<double> bareTimes;
    std::vector<double> ourTimes;
    const auto changes = [&](std::vector<double>& times) {
        return [&](HWND dialog) {
            for (int i = 0; i < 10; ++i) {
                times.push_back(EnterSeconds(dialog, (i % 2 == 0 ? one : two).Path()) * 1e3);
            }
        };
    };
    for (int i = 0; i < 3; ++i) {
        WithShownDialog(ShowBareOpenDialog, changes(bareTimes));
        WithShownDialog([&] { ours.Execute(); }, changes(ourTimes));
    }
    rows.push_back({"folder of 1,000 entered, styles and filter", Median(ourTimes), "the bare dialog",
                    Median(bareTimes), "ms", 1.2});
}

} // namespace

std::vector<TRow> MeasureFileList() {
    std::vector<TRow> rows;
    MeasureFilter(rows);
    MeasureFolderChange(rows);
    return rows;
}

} // namespace kx::bench
