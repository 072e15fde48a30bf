// SPDX-License-Identifier: MIT
// Special folders: their names, paths and identifier lists.

#include "kx/frame/KxShellDefs.h"

#include "kx/win/Registry.h"
#include "support/TempFolder.h"
#include "tests/support/ImportPatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <shlobj.h>
#include <vector>

namespace kx {
namespace {

// --- Names

constexpr const char* DesktopKey = R"(\CLSID\{00021400-0000-0000-C000-000000000046})";
constexpr const char* DrivesKey = R"(\SOFTWARE\Classes\CLSID\{20D04FE0-3AEA-1069-A2D8-08002B30309D})";
constexpr const char* PersonalKey = R"(\SOFTWARE\Classes\CLSID\{450D8FBA-AD25-11D0-98A8-0800361B1103})";

/// Gives a key another default value, or none, for the length of a scope.
class TDefaultValue {
public:
    TDefaultValue(HKEY root, const char* key) : FRoot(root), FKey(key) {
        TRegistry registry;
        registry.SetRootKey(FRoot);
        FExisted = registry.KeyExists(FKey);
        registry.OpenKey(FKey, true);
        FHadValue = registry.ValueExists("");
        if (FHadValue) {
            FOld = registry.ReadString("");
        }
    }
    TDefaultValue(const TDefaultValue&) = delete;
    TDefaultValue& operator=(const TDefaultValue&) = delete;
    ~TDefaultValue() {
        TRegistry registry;
        registry.SetRootKey(FRoot);
        if (!FExisted) {
            registry.DeleteKey(FKey);
        } else if (registry.OpenKey(FKey, true)) {
            registry.DeleteValue("");
            if (FHadValue) {
                registry.WriteString("", FOld);
            }
        }
    }

    void Remove() const { Opened().DeleteValue(""); }
    void Set(const std::string& value) const { Opened().WriteString("", value); }
    void SetNumber(int32_t value) const { Opened().WriteInteger("", value); }

private:
    TRegistry& Opened() const {
        FRegistry.SetRootKey(FRoot);
        FRegistry.OpenKey(FKey, true);
        return FRegistry;
    }

    HKEY FRoot;
    const char* FKey;
    bool FExisted = false;
    bool FHadValue = false;
    std::string FOld;
    mutable TRegistry FRegistry;
};

class SpecFolderName : public testing::Test {
protected:
    TDefaultValue FDesktop{HKEY_CLASSES_ROOT, DesktopKey};
    TDefaultValue FDrives{HKEY_CURRENT_USER, DrivesKey};
    TDefaultValue FPersonal{HKEY_CURRENT_USER, PersonalKey};
};

/// The shell's own text, or, where it has none, as in Wine, the fixed one.
std::string ShellTextOr(UINT id, const std::string& fixed) {
    const unique_hmodule shell(LoadLibraryA("SHELL32.DLL"));
    char text[254];
    return LoadStringA(shell.get(), id, text, sizeof text) > 0 ? text : fixed;
}

TEST_F(SpecFolderName, RecentIsFixedAndFontsHasNone) {
    EXPECT_EQ(GetSpecFolderName(ftRecent), "Recent");
    EXPECT_EQ(GetSpecFolderName(ftFavorites), "Favorites");
    EXPECT_EQ(GetSpecFolderName(ftFonts), "");
    EXPECT_EQ(GetSpecFolderName(ftNone), "");
    EXPECT_EQ(GetSpecFolderName(ftTemplates), "");
}

TEST_F(SpecFolderName, ComesFromTheRegistryFirst) {
    FDesktop.Set("Schreibtisch");
    FDrives.Set("Arbeitsplatz");
    FPersonal.Set("Eigene Dateien");
    EXPECT_EQ(GetSpecFolderName(ftDesktop), "Schreibtisch");
    EXPECT_EQ(GetSpecFolderName(ftDrives), "Arbeitsplatz");
    EXPECT_EQ(GetSpecFolderName(ftPersonal), "Eigene Dateien");
}

TEST_F(SpecFolderName, FallsBackToTheFixedNamesInTheirOrder) {
    FDesktop.Remove();
    FDrives.Remove();
    FPersonal.Remove();
    TStringList names;
    names.Add("before");
    GetSpecFolders(names);
    ASSERT_EQ(names.Count(), 5);
    EXPECT_EQ(names[0], "before");
    EXPECT_EQ(names[1], ShellTextOr(4162, "Desktop"));
    EXPECT_EQ(names[2], ShellTextOr(9216, "My Computer"));
    EXPECT_EQ(names[3], ShellTextOr(9100, "My Documents"));
    EXPECT_EQ(names[4], "Favorites");
}

/// Stands in for a shell whose library has the texts.
int WINAPI TextOfNumber(HINSTANCE library, UINT id, LPSTR text, int size) {
    EXPECT_EQ(library, GetModuleHandleA("shell32.dll"));
    const std::string whole = "text " + IntToStr(id);
    const int length = std::min(static_cast<int>(whole.size()), size - 1);
    std::copy_n(whole.begin(), length, text);
    text[length] = 0;
    return length;
}

TEST_F(SpecFolderName, ComesFromTheShellWhenTheRegistryHasNone) {
    const test::TImportPatch patch("LoadStringA", reinterpret_cast<void*>(TextOfNumber));
    FDesktop.Remove();
    FDrives.Set("");
    FPersonal.SetNumber(7);
    EXPECT_EQ(GetSpecFolderName(ftDesktop), "text 4162");
    EXPECT_EQ(GetSpecFolderName(ftDrives), "text 9216");
    EXPECT_EQ(GetSpecFolderName(ftPersonal), "text 9100");
    EXPECT_EQ(GetSpecFolderName(ftFavorites), "Favorites");
    FDrives.Set("Arbeitsplatz");
    EXPECT_EQ(GetSpecFolderName(ftDrives), "Arbeitsplatz");
}

TEST_F(SpecFolderName, AnEmptyOrForeignValueCountsAsMissing) {
    FDrives.Set("");
    FPersonal.SetNumber(7);
    EXPECT_EQ(GetSpecFolderName(ftDrives), ShellTextOr(9216, "My Computer"));
    EXPECT_EQ(GetSpecFolderName(ftPersonal), ShellTextOr(9100, "My Documents"));
}

TEST(SpecFolderNameKeys, LookingUpNamesCreatesNoKey) {
    const TRegistry registry;
    const bool before = registry.KeyExists(PersonalKey);
    GetSpecFolderName(ftPersonal);
    EXPECT_EQ(registry.KeyExists(PersonalKey), before);
}

TEST(SpecFolders, AreKnownToTheShell) {
    for (const TKxSpecShellFolder folder : {ftDesktop, ftDrives, ftPersonal, ftDesktopDir, ftRecent}) {
        unique_pidl pidl;
        EXPECT_EQ(
            SHGetSpecialFolderLocation(nullptr, constFolders[folder], reinterpret_cast<LPITEMIDLIST*>(pidl.put())),
            S_OK)
            << KxTypeInfo(folder).NameOf(folder);
        EXPECT_TRUE(pidl);
    }
}

// --- Item identifier lists

/// A list of items of these sizes, each filled with its number.
std::vector<BYTE> ListOf(std::initializer_list<WORD> sizes) {
    std::vector<BYTE> list;
    BYTE number = 0;
    for (const WORD size : sizes) {
        ++number;
        list.push_back(static_cast<BYTE>(size & 0xFF));
        list.push_back(static_cast<BYTE>(size >> 8));
        list.resize(list.size() + size - 2, number);
    }
    list.resize(list.size() + 2);
    return list;
}

LPCITEMIDLIST AsPidl(const std::vector<BYTE>& list) { return reinterpret_cast<LPCITEMIDLIST>(list.data()); }

size_t AllocationOf(const unique_pidl& pidl) {
    unique_com<IMalloc> allocator;
    EXPECT_EQ(SHGetMalloc(allocator.put()), S_OK);
    return allocator.get()->GetSize(pidl.get());
}

TEST(Pidl, NextItemWalksTheListAndStopsInFrontOfItsTerminator) {
    const auto list = ListOf({20, 30});
    const LPITEMIDLIST second = GetNextItemID(AsPidl(list));
    ASSERT_EQ(reinterpret_cast<const BYTE*>(second), list.data() + 20);
    EXPECT_EQ(GetNextItemID(second), nullptr);
}

TEST(Pidl, NextItemOfNothingIsNothing) {
    const auto empty = ListOf({});
    EXPECT_EQ(GetNextItemID(nullptr), nullptr);
    EXPECT_EQ(GetNextItemID(AsPidl(empty)), nullptr);
}

TEST(Pidl, SizeCountsAllItemsAndTheTerminator) {
    EXPECT_EQ(GetPIDLSize(nullptr), 0);
    EXPECT_EQ(GetPIDLSize(AsPidl(ListOf({}))), 2);
    EXPECT_EQ(GetPIDLSize(AsPidl(ListOf({20, 30}))), 52);
    EXPECT_EQ(GetPIDLSize(AsPidl(ListOf({0x8001, 3, 2}))), 0x8001 + 3 + 2 + 2);
}

TEST(Pidl, ACopyOfTwoItemsIsTheFirstOneInTheAllocationOfBoth) {
    const auto list = ListOf({20, 30});
    const unique_pidl copy = CreatePIDLCopy(AsPidl(list));
    ASSERT_TRUE(copy);
    EXPECT_EQ(GetPIDLSize(copy.get()), 22);
    EXPECT_EQ(std::memcmp(copy.get(), list.data(), 20), 0);
    EXPECT_EQ(GetNextItemID(copy.get()), nullptr);
    EXPECT_GE(AllocationOf(copy), 52u);
    // The second item is there but for its length.
    EXPECT_EQ(std::memcmp(reinterpret_cast<const BYTE*>(copy.get()) + 22, list.data() + 22, 30), 0);
}

TEST(Pidl, ACopyOfOneItemIsWhole) {
    const auto list = ListOf({20});
    const unique_pidl copy = CreatePIDLCopy(AsPidl(list));
    ASSERT_TRUE(copy);
    EXPECT_EQ(std::memcmp(copy.get(), list.data(), list.size()), 0);
}

TEST(Pidl, ACopyOfTheEmptyListIsEmptyAndOfNothingNothing) {
    const auto empty = ListOf({});
    const unique_pidl copy = CreatePIDLCopy(AsPidl(empty));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy.get()->mkid.cb, 0);
    EXPECT_FALSE(CreatePIDLCopy(nullptr));
}

TEST(Pidl, OfAFolderLeadsBackToItsPath) {
    const test::TTempFolder folder;
    const unique_pidl pidl = CreatePIDLFromPath(folder.Path());
    ASSERT_TRUE(pidl);
    EXPECT_TRUE(SameText(GetPathFromPIDL(pidl.get()), folder.Path()));
}

TEST(Pidl, OfAFileLeadsBackToItsPath) {
    const test::TTempFolder folder;
    const std::string file = folder.AddFile("drawing.txt", "x");
    EXPECT_TRUE(SameText(GetPathFromPIDL(CreatePIDLFromPath(file).get()), file));
}

TEST(Pidl, IsAllocatedByTheShell) {
    const test::TTempFolder folder;
    const unique_pidl pidl = CreatePIDLFromPath(folder.Path());
    unique_com<IMalloc> allocator;
    ASSERT_EQ(SHGetMalloc(allocator.put()), S_OK);
    EXPECT_EQ(allocator.get()->DidAlloc(pidl.get()), 1);
    const unique_pidl copy = CreatePIDLCopy(pidl.get());
    EXPECT_EQ(allocator.get()->DidAlloc(copy.get()), 1);
}

TEST(Pidl, OfAFolderThatDoesNotExistIsAnError) {
    const test::TTempFolder folder;
    try {
        CreatePIDLFromPath(folder.Path("missing"));
        FAIL() << "no error";
    } catch (const EOSError& e) {
        EXPECT_EQ(e.Message(), "Error parsing folder name to PIDL(does folder exist?)");
        EXPECT_EQ(e.ErrorCode(), 0x80070002u);
    }
}

TEST(Pidl, PathOfWhatIsNoFileIsEmpty) {
    unique_pidl drives;
    ASSERT_EQ(SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, reinterpret_cast<LPITEMIDLIST*>(drives.put())), S_OK);
    EXPECT_EQ(GetPathFromPIDL(drives.get()), "");
    EXPECT_EQ(GetPathFromPIDL(nullptr), "");
}

} // namespace
} // namespace kx
