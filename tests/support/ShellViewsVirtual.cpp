// SPDX-License-Identifier: MIT
// The shell's interfaces of a view with a virtual list. What the library does not ask is not answered.

#include "tests/support/ShellViews.h"

#include <bit>
#include <gtest/gtest.h>
#include <memory>
#include <shlobj.h>
#include <shlwapi.h>

namespace kx::test {

namespace {

constexpr GUID ShellFolderViewId{0x37A378C0, 0xF82D, 0x11CE, {0xAE, 0x65, 0x08, 0x00, 0x2B, 0x2E, 0x12, 0x62}};

std::string NameIn(IShellFolder& folder, LPCITEMIDLIST child) {
    STRRET name{};
    char text[MAX_PATH] = "";
    if (FAILED(folder.GetDisplayNameOf(child, SHGDN_INFOLDER | SHGDN_FORPARSING, &name)) ||
        FAILED(StrRetToBufA(&name, child, text, sizeof text))) {
        return {};
    }
    return text;
}

} // namespace

#ifdef __GNUC__
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor" // as the system declares its interfaces
#endif
#ifdef __clang__
#pragma clang diagnostic ignored "-Wmicrosoft-exception-spec" // some of them as never throwing
#endif

class TVirtualView::TShell final : public IShellBrowser,
                                   public IShellView,
                                   public IFolderView,
                                   public IShellFolderView,
                                   public IShellFolder {
public:
    struct TPidlDeleter {
        void operator()(ITEMIDLIST* pidl) const { CoTaskMemFree(pidl); }
    };
    using TPidl = std::unique_ptr<ITEMIDLIST, TPidlDeleter>;

    TShell(TVirtualView& view, const std::string& path) : FOwner(view) {
        wchar_t wide[MAX_PATH] = L"";
        MultiByteToWideChar(CP_ACP, 0, path.c_str(), -1, wide, MAX_PATH);
        LPITEMIDLIST pidl = nullptr;
        IShellFolder* desktop = nullptr;
        SHParseDisplayName(wide, nullptr, &pidl, 0, nullptr);
        SHGetDesktopFolder(&desktop);
        desktop->BindToObject(pidl, nullptr, IID_IShellFolder, reinterpret_cast<void**>(&FFolder));
        desktop->Release();
        CoTaskMemFree(pidl);
        IEnumIDList* entries = nullptr;
        FFolder->EnumObjects(nullptr, SHCONTF_FOLDERS | SHCONTF_NONFOLDERS, &entries);
        for (LPITEMIDLIST entry = nullptr; entries->Next(1, &entry, nullptr) == S_OK;) {
            Entries.emplace_back(std::bit_cast<ITEMIDLIST*>(entry)); // to Visual C++ it is an unaligned one
        }
        entries->Release();
    }
    ~TShell() { FFolder->Release(); }

    IShellFolder& Folder() const { return *FFolder; }
    void ShowCount() { SendMessageA(FOwner.List(), LVM_SETITEMCOUNT, Entries.size(), 0); }

    std::vector<TPidl> Entries;
    int References = 0;

    // --- IUnknown

    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        *object = id == IID_IShellView      ? static_cast<void*>(static_cast<IShellView*>(this))
                  : id == IID_IFolderView   ? static_cast<void*>(static_cast<IFolderView*>(this))
                  : id == ShellFolderViewId ? static_cast<void*>(static_cast<IShellFolderView*>(this))
                  : id == IID_IShellFolder  ? static_cast<void*>(static_cast<IShellFolder*>(this))
                                            : nullptr;
        References += *object ? 1 : 0;
        return *object ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++References); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--References); }

    // --- What is answered

    STDMETHODIMP QueryActiveShellView(IShellView** view) override {
        return QueryInterface(IID_IShellView, reinterpret_cast<void**>(view));
    }
    STDMETHODIMP GetFolder(REFIID id, void** folder) override { return QueryInterface(id, folder); }
    STDMETHODIMP Item(int index, PITEMID_CHILD* child) override {
        *child = ILClone(Entries.at(static_cast<size_t>(index)).get());
        return S_OK;
    }
    STDMETHODIMP ItemCount(UINT, int* count) override {
        *count = static_cast<int>(Entries.size());
        return S_OK;
    }
    STDMETHODIMP RemoveObject(PUITEMID_CHILD child, UINT* index) override {
        for (size_t i = 0; FOwner.Removes && i < Entries.size(); ++i) {
            if (FFolder->CompareIDs(0, Entries[i].get(), child) == 0) {
                Entries.erase(Entries.begin() + static_cast<ptrdiff_t>(i));
                *index = static_cast<UINT>(i);
                ShowCount();
                return S_OK;
            }
        }
        return E_FAIL;
    }
    STDMETHODIMP GetAttributesOf(UINT count, PCUITEMID_CHILD_ARRAY children, SFGAOF* traits) override {
        const SFGAOF asked = *traits;
        FFolder->GetAttributesOf(count, children, traits);
        if (FOwner.Traits) {
            *traits = FOwner.Traits(NameIn(*FFolder, children[0]), *traits & asked);
        }
        return FOwner.TraitsResult;
    }
    STDMETHODIMP GetDisplayNameOf(PCUITEMID_CHILD child, SHGDNF flags, STRRET* name) override {
        return FFolder->GetDisplayNameOf(child, flags, name);
    }

    // --- What is not

    STDMETHODIMP GetWindow(HWND*) override { return E_NOTIMPL; }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP InsertMenusSB(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenuSB(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    STDMETHODIMP RemoveMenusSB(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusTextSB(LPCWSTR) override { return E_NOTIMPL; }
    STDMETHODIMP EnableModelessSB(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAcceleratorSB(MSG*, WORD) override { return E_NOTIMPL; }
    STDMETHODIMP BrowseObject(PCUIDLIST_RELATIVE, UINT) override { return E_NOTIMPL; }
    STDMETHODIMP GetViewStateStream(DWORD, IStream**) override { return E_NOTIMPL; }
    STDMETHODIMP GetControlWindow(UINT, HWND*) override { return E_NOTIMPL; }
    STDMETHODIMP SendControlMsg(UINT, UINT, WPARAM, LPARAM, LRESULT*) override { return E_NOTIMPL; }
    STDMETHODIMP OnViewWindowActive(IShellView*) override { return E_NOTIMPL; }
    STDMETHODIMP SetToolbarItems(LPTBBUTTONSB, UINT, UINT) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(MSG*) override { return E_NOTIMPL; }
    STDMETHODIMP EnableModeless(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP UIActivate(UINT) override { return E_NOTIMPL; }
    STDMETHODIMP Refresh() override { return E_NOTIMPL; }
    STDMETHODIMP CreateViewWindow(IShellView*, LPCFOLDERSETTINGS, IShellBrowser*, RECT*, HWND*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP DestroyViewWindow() override { return E_NOTIMPL; }
    STDMETHODIMP GetCurrentInfo(LPFOLDERSETTINGS) override { return E_NOTIMPL; }
    STDMETHODIMP AddPropertySheetPages(DWORD, LPFNSVADDPROPSHEETPAGE, LPARAM) override { return E_NOTIMPL; }
    STDMETHODIMP SaveViewState() override { return E_NOTIMPL; }
    STDMETHODIMP SelectItem(PCUITEMID_CHILD, SVSIF) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemObject(UINT, REFIID, void**) override { return E_NOTIMPL; }
    STDMETHODIMP GetCurrentViewMode(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP SetCurrentViewMode(UINT) override { return E_NOTIMPL; }
    STDMETHODIMP Items(UINT, REFIID, void**) override { return E_NOTIMPL; }
    STDMETHODIMP GetSelectionMarkedItem(int*) override { return E_NOTIMPL; }
    STDMETHODIMP GetFocusedItem(int*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemPosition(PCUITEMID_CHILD, POINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetSpacing(POINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDefaultSpacing(POINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetAutoArrange() override { return E_NOTIMPL; }
    STDMETHODIMP SelectItem(int, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP SelectAndPositionItems(UINT, PCUITEMID_CHILD_ARRAY, POINT*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP Rearrange(LPARAM) override { return E_NOTIMPL; }
    STDMETHODIMP GetArrangeParam(LPARAM*) override { return E_NOTIMPL; }
    STDMETHODIMP ArrangeGrid() override { return E_NOTIMPL; }
    STDMETHODIMP AutoArrange() override { return E_NOTIMPL; }
    STDMETHODIMP AddObject(PUITEMID_CHILD, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetObject(PITEMID_CHILD*, UINT) override { return E_NOTIMPL; }
    STDMETHODIMP GetObjectCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP SetObjectCount(UINT, UINT) override { return E_NOTIMPL; }
    STDMETHODIMP UpdateObject(PUITEMID_CHILD, PUITEMID_CHILD, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP RefreshObject(PUITEMID_CHILD, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP SetRedraw(WINBOOL) override { return E_NOTIMPL; }
    STDMETHODIMP GetSelectedCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetSelectedObjects(PCUITEMID_CHILD**, UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP IsDropOnSource(IDropTarget*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDragPoint(POINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetDropPoint(POINT*) override { return E_NOTIMPL; }
    STDMETHODIMP MoveIcons(IDataObject*) override { return E_NOTIMPL; }
    STDMETHODIMP SetItemPos(PCUITEMID_CHILD, POINT*) override { return E_NOTIMPL; }
    STDMETHODIMP IsBkDropTarget(IDropTarget*) override { return E_NOTIMPL; }
    STDMETHODIMP SetClipboard(WINBOOL) override { return E_NOTIMPL; }
    STDMETHODIMP SetPoints(IDataObject*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemSpacing(ITEMSPACING*) override { return E_NOTIMPL; }
    STDMETHODIMP SetCallback(IShellFolderViewCB*, IShellFolderViewCB**) override { return E_NOTIMPL; }
    STDMETHODIMP Select(UINT) override { return E_NOTIMPL; }
    STDMETHODIMP QuerySupport(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP SetAutomationObject(IDispatch*) override { return E_NOTIMPL; }
    STDMETHODIMP ParseDisplayName(HWND, IBindCtx*, LPWSTR, ULONG*, PIDLIST_RELATIVE*, ULONG*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP EnumObjects(HWND, SHCONTF, IEnumIDList**) override { return E_NOTIMPL; }
    STDMETHODIMP BindToObject(PCUIDLIST_RELATIVE, IBindCtx*, REFIID, void**) override { return E_NOTIMPL; }
    STDMETHODIMP BindToStorage(PCUIDLIST_RELATIVE, IBindCtx*, REFIID, void**) override { return E_NOTIMPL; }
    STDMETHODIMP CompareIDs(LPARAM, PCUIDLIST_RELATIVE, PCUIDLIST_RELATIVE) override { return E_NOTIMPL; }
    STDMETHODIMP CreateViewObject(HWND, REFIID, void**) override { return E_NOTIMPL; }
    STDMETHODIMP GetUIObjectOf(HWND, UINT, PCUITEMID_CHILD_ARRAY, REFIID, UINT*, void**) override { return E_NOTIMPL; }
    STDMETHODIMP SetNameOf(HWND, PCUITEMID_CHILD, LPCWSTR, SHGDNF, PITEMID_CHILD*) override { return E_NOTIMPL; }

private:
    TVirtualView& FOwner;
    IShellFolder* FFolder = nullptr;
};

namespace {

LRESULT CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == GetShellBrowserMessage) {
        return GetWindowLongPtrA(window, GWLP_USERDATA);
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeWindow(const char* className, WNDPROC proc, HWND parent) {
    WNDCLASSA cls{};
    cls.lpszClassName = className;
    cls.lpfnWndProc = proc;
    cls.hInstance = HInstance();
    RegisterClassA(&cls); // fails when it is there already
    return CreateWindowExA(0, className, "", parent ? WS_CHILD | WS_VISIBLE : WS_POPUP, 0, 0, 300, 200, parent, nullptr,
                           HInstance(), nullptr);
}

} // namespace

TVirtualView::TVirtualView(const TTempFolder& folder)
    : FShell(new TShell(*this, folder.Path())), FDialog(MakeWindow("KxVirtualViewDialog", DialogProc, nullptr)) {
    HWND view = MakeWindow("SHELLDLL_DefView", DefWindowProcA, FDialog.get());
    FList.reset(CreateWindowExA(0, WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA, 0, 0, 300, 200,
                                view, nullptr, HInstance(), nullptr));
    FListMessages.SetHandler([this](TMessage& message) {
        DeletionsByMessage += message.Msg == LVM_DELETEITEM ? 1 : 0;
        FListMessages.CallPrevious(message);
    });
    FListMessages.Install(FList.get());
    SetWindowLongPtrA(FDialog.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(static_cast<IShellBrowser*>(FShell)));
    FShell->ShowCount();
}

TVirtualView::~TVirtualView() {
    EXPECT_EQ(FShell->References, 0) << "somebody still holds the view";
    delete FShell;
}

void TVirtualView::Forget() { SetWindowLongPtrA(FDialog.get(), GWLP_USERDATA, 0); }

std::vector<std::string> TVirtualView::Names() const {
    std::vector<std::string> names;
    for (const TShell::TPidl& entry : FShell->Entries) {
        names.push_back(NameIn(FShell->Folder(), entry.get()));
    }
    EXPECT_EQ(SendMessageA(List(), LVM_GETITEMCOUNT, 0, 0), static_cast<LRESULT>(names.size()));
    return names;
}

} // namespace kx::test
