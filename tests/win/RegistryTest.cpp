// SPDX-License-Identifier: MIT
// Registry keys and values.

#include "kx/win/Registry.h"
#include "kx/win/Windows.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Texts.h"

#include <gmock/gmock.h>
#include <vector>

namespace kx {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

/// A key of the test's own, deleted at the end.
class Registry : public testing::Test {
protected:
    Registry() : Root("Software\\KxTests\\Process" + IntToStr(GetCurrentProcessId())) {
        Reg.DeleteKey(Root);
        EXPECT_TRUE(Reg.OpenKey(Root, true));
    }
    ~Registry() override {
        Reg.CloseKey();
        Reg.DeleteKey(Root);
        EXPECT_FALSE(Reg.KeyExists(Root));
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\KxTests");
    }

    std::vector<std::string> KeyNames() const {
        TStringList names;
        Reg.GetKeyNames(names);
        return TextsOf(names);
    }
    std::vector<std::string> ValueNames() const {
        TStringList names;
        Reg.GetValueNames(names);
        return TextsOf(names);
    }
    void PutRaw(const char* name, DWORD type, const std::string& bytes) const {
        RegSetValueExA(Reg.CurrentKey(), name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                       static_cast<DWORD>(bytes.size()));
    }

    const std::string Root;
    TRegistry Reg;
};

// --- Keys

TEST_F(Registry, ALeadingBackslashLeadsToTheRoot) {
    EXPECT_EQ(Reg.CurrentPath(), Root);
    EXPECT_TRUE(Reg.OpenKey("\\" + Root + "\\a", true));
    EXPECT_EQ(Reg.CurrentPath(), Root + "\\a");
    EXPECT_TRUE(Reg.OpenKey("b", true)) << "below the open key";
    EXPECT_EQ(Reg.CurrentPath(), Root + "\\a\\b");
    EXPECT_TRUE(Reg.KeyExists("\\" + Root + "\\a\\b"));
    EXPECT_FALSE(Reg.KeyExists("b"));
    Reg.CloseKey();
    EXPECT_EQ(Reg.CurrentPath(), "");
    EXPECT_EQ(Reg.CurrentKey(), nullptr);
    EXPECT_TRUE(Reg.KeyExists(Root + "\\a\\b")) << "no open key: below the root";
    EXPECT_TRUE(Reg.OpenKey(Root + "\\a\\", false)) << "a backslash at the end does no harm";
}

TEST_F(Registry, AKeyThatIsMissingIsMadeOnlyWhenThatIsAllowed) {
    EXPECT_FALSE(Reg.OpenKey("missing", false));
    EXPECT_EQ(Reg.CurrentPath(), Root) << "the open key stays";
    EXPECT_FALSE(Reg.OpenKeyReadOnly("missing"));
    EXPECT_FALSE(Reg.KeyExists("missing"));
    EXPECT_TRUE(Reg.OpenKey("missing\\below", true));
    EXPECT_EQ(Reg.CurrentPath(), Root + "\\missing\\below");
}

TEST_F(Registry, AnEmptyNameIsTheOpenKey) {
    EXPECT_TRUE(Reg.OpenKey("", true));
    EXPECT_EQ(Reg.CurrentPath(), Root);
    EXPECT_TRUE(Reg.OpenKey("", false));
    EXPECT_EQ(Reg.CurrentPath(), Root);
    Reg.WriteInteger("here", 1);
    EXPECT_FALSE(Reg.DeleteKey("")) << "which is never deleted by that name";
    EXPECT_TRUE(Reg.ValueExists("here"));
}

TEST_F(Registry, NothingIsDeletedByANameOfBackslashesAlone) {
    Reg.CreateKey("\\" + Root + "\\kept");
    for (const char* name : {"\\", "\\\\", "\\\\\\"}) {
        // Were these obeyed, they would take all keys of the user: the key of the test stands for them.
        TRegistry inKey;
        inKey.SetRootKey(Reg.CurrentKey());
        EXPECT_FALSE(inKey.DeleteKey(name)) << name;
        EXPECT_TRUE(Reg.KeyExists("kept")) << name;
    }
}

TEST_F(Registry, WhileTheRootIsOpenOnlyNamesFromTheRootAreDeleted) {
    Reg.CreateKey("kept");
    TRegistry inKey;
    inKey.SetRootKey(Reg.CurrentKey());
    for (const char* name : {"", "\\", "\\\\"}) {
        if (inKey.OpenKey(name, false)) { // not with two backslashes, as some systems see it
            EXPECT_FALSE(inKey.DeleteKey("kept")) << name;
        }
    }
    EXPECT_TRUE(Reg.KeyExists("kept"));
    EXPECT_TRUE(inKey.DeleteKey("\\kept"));
    EXPECT_FALSE(Reg.KeyExists("kept"));
}

TEST_F(Registry, ReadOnlyKeysRefuseToBeWritten) {
    Reg.WriteString("text", "old");
    ASSERT_TRUE(Reg.OpenKeyReadOnly("\\" + Root));
    EXPECT_EQ(Reg.ReadString("text"), "old");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.WriteString("text", "new"); }), "Failed to set data for 'text'");
    EXPECT_EQ(Reg.ReadString("text"), "old");
    Reg.SetAccess(KEY_READ);
    ASSERT_TRUE(Reg.OpenKey("\\" + Root, false));
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.WriteInteger("n", 1); }), "Failed to set data for 'n'");
    Reg.SetAccess(KEY_ALL_ACCESS);
}

TEST_F(Registry, ChangingTheRootClosesTheKey) {
    Reg.SetRootKey(HKEY_CURRENT_USER);
    EXPECT_EQ(Reg.CurrentPath(), Root) << "it is the root already";
    Reg.SetRootKey(HKEY_CLASSES_ROOT);
    EXPECT_EQ(Reg.CurrentKey(), nullptr);
    EXPECT_TRUE(Reg.OpenKeyReadOnly("\\CLSID"));
    Reg.SetRootKey(HKEY_CURRENT_USER);
}

TEST_F(Registry, DeletesKeysWithAllThatIsBelowThem) {
    Reg.CreateKey("a\\b\\c");
    Reg.CreateKey("a\\d");
    Reg.CreateKey("e");
    EXPECT_TRUE(Reg.HasSubKeys());
    EXPECT_TRUE(Reg.DeleteKey("a"));
    EXPECT_THAT(KeyNames(), ElementsAre("e"));
    EXPECT_FALSE(Reg.DeleteKey("a"));
    EXPECT_TRUE(Reg.DeleteKey("\\" + Root + "\\e"));
    EXPECT_FALSE(Reg.HasSubKeys());
}

TEST_F(Registry, ListsKeysInTheRegistrysOrder) {
    for (const char* name : {"Place_10", "Place_2", "Place_1", "Place_0", "other"}) {
        Reg.CreateKey(name);
    }
    EXPECT_THAT(KeyNames(), ElementsAre("other", "Place_0", "Place_1", "Place_10", "Place_2"));
    TStringList names;
    names.Add("what was there");
    Reg.GetKeyNames(names);
    EXPECT_EQ(names.Count(), 5);
    Reg.CloseKey();
    Reg.GetKeyNames(names);
    EXPECT_EQ(names.Count(), 0);
}

TEST_F(Registry, NamesMayHave255Characters) {
    const std::string longName(255, 'k');
    Reg.CreateKey(longName);
    EXPECT_THAT(KeyNames(), ElementsAre(longName));
    ASSERT_TRUE(Reg.OpenKey(longName, false));
    Reg.WriteString(longName, longName);
    EXPECT_THAT(ValueNames(), ElementsAre(longName));
    EXPECT_EQ(Reg.ReadString(longName), longName);
    ASSERT_TRUE(Reg.OpenKey("\\" + Root, false));
    EXPECT_TRUE(Reg.DeleteKey(longName));
}

TEST_F(Registry, ReportsAKeyThatCannotBeMade) {
    const std::string name(100000, 'x');
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.CreateKey(name); }), "Failed to create key " + name);
    EXPECT_FALSE(Reg.OpenKey(name, true));
    EXPECT_EQ(Reg.CurrentPath(), Root);
}

// --- Values

TEST_F(Registry, StringsComeBackAsTheyWereWritten) {
    for (const std::string& text :
         {std::string(), std::string("text"), std::string(65536, 'x'), std::string("C:\\Ordner\\\xE4\xF6.txt")}) {
        Reg.WriteString("value", text);
        EXPECT_EQ(Reg.ReadString("value"), text);
        EXPECT_EQ(Reg.GetDataType("value"), TRegDataType::String);
        EXPECT_EQ(Reg.GetDataSize("value"), static_cast<int>(text.size() + 1));
    }
    Reg.WriteString("", "the default value");
    EXPECT_EQ(Reg.ReadString(""), "the default value");
    Reg.WriteExpandString("path", "%TEMP%");
    EXPECT_EQ(Reg.ReadString("path"), "%TEMP%");
    EXPECT_EQ(Reg.GetDataType("path"), TRegDataType::ExpandString);
}

TEST_F(Registry, AMissingStringReadsAsEmpty) {
    EXPECT_EQ(Reg.ReadString("missing"), "");
    EXPECT_FALSE(Reg.ValueExists("missing"));
    EXPECT_EQ(Reg.GetDataSize("missing"), -1);
    EXPECT_EQ(Reg.GetDataType("missing"), TRegDataType::Unknown);
    Reg.CloseKey();
    EXPECT_EQ(Reg.ReadString("missing"), "");
}

TEST_F(Registry, StringsNeedNoZeroAtTheirEnd) {
    PutRaw("open", REG_SZ, "abc");
    EXPECT_EQ(Reg.ReadString("open"), "abc");
    PutRaw("inner", REG_SZ, std::string("ab\0cd\0", 6));
    EXPECT_EQ(Reg.ReadString("inner"), "ab");
    PutRaw("none", REG_SZ, "");
    EXPECT_EQ(Reg.ReadString("none"), "");
}

TEST_F(Registry, IntegersAreThirtyTwoBits) {
    for (const int32_t value : {0, 1, -1976, INT32_MAX, INT32_MIN}) {
        Reg.WriteInteger("n", value);
        EXPECT_EQ(Reg.ReadInteger("n"), value);
        EXPECT_EQ(Reg.GetDataType("n"), TRegDataType::Integer);
        EXPECT_EQ(Reg.ReadBool("n"), value != 0);
    }
    Reg.WriteBool("yes", true);
    EXPECT_EQ(Reg.ReadInteger("yes"), 1);
}

TEST_F(Registry, AMissingIntegerIsAnError) {
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadInteger("IconHot"); }), "Failed to get data for 'IconHot'");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadBool("AutoCaption"); }),
              "Failed to get data for 'AutoCaption'");
    Reg.CloseKey();
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadInteger("IconHot"); }), "Failed to get data for 'IconHot'");
}

TEST_F(Registry, AValueOfAnotherTypeIsAnError) {
    Reg.WriteString("text", "12");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadInteger("text"); }), "Invalid data type for 'text'");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadBool("text"); }), "Invalid data type for 'text'");
    Reg.WriteInteger("number", 12);
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadString("number"); }), "Invalid data type for 'number'");
    PutRaw("short", REG_DWORD, "ab");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadInteger("short"); }), "Invalid data type for 'short'");
    PutRaw("long", REG_DWORD, "abcdefgh");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadInteger("long"); }), "Invalid data type for 'long'");
    PutRaw("list", REG_MULTI_SZ, std::string("a\0b\0\0", 5));
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadString("list"); }), "Invalid data type for 'list'");
    EXPECT_EQ(Reg.GetDataType("list"), TRegDataType::Unknown);
}

TEST_F(Registry, BinaryDataMustFit) {
    const char data[] = {0, 1, 2, 3, 4};
    Reg.WriteBinaryData("bytes", data, sizeof(data));
    EXPECT_EQ(Reg.GetDataType("bytes"), TRegDataType::Binary);
    char buffer[8] = {9, 9, 9, 9, 9, 9, 9, 9};
    EXPECT_EQ(Reg.ReadBinaryData("bytes", buffer, sizeof(buffer)), 5u);
    EXPECT_EQ(std::string(buffer, 5), std::string(data, 5));
    EXPECT_EQ(buffer[5], 9);
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadBinaryData("bytes", buffer, 4); }),
              "Failed to get data for 'bytes'");
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.ReadBinaryData("none", buffer, 4); }),
              "Failed to get data for 'none'");
    Reg.WriteBinaryData("empty", nullptr, 0);
    EXPECT_EQ(Reg.ReadBinaryData("empty", buffer, 0), 0u);
}

TEST_F(Registry, ListsAndDeletesValues) {
    EXPECT_THAT(ValueNames(), IsEmpty());
    Reg.WriteInteger("b", 1);
    Reg.WriteString("a", "text");
    EXPECT_THAT(ValueNames(), ElementsAre("a", "b"));
    EXPECT_TRUE(Reg.DeleteValue("a"));
    EXPECT_FALSE(Reg.DeleteValue("a"));
    EXPECT_THAT(ValueNames(), ElementsAre("b"));
}

TEST_F(Registry, WritingWithoutAnOpenKeyIsAnError) {
    Reg.CloseKey();
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.WriteString("text", "x"); }), "Failed to set data for 'text'");
    EXPECT_FALSE(Reg.DeleteValue("text"));
}

TEST_F(Registry, WritingToAKeyThatIsGoneIsAnError) {
    ASSERT_TRUE(Reg.OpenKey("gone", true));
    TRegistry other;
    EXPECT_TRUE(other.DeleteKey(Root + "\\gone"));
    EXPECT_EQ(ErrorOf<ERegistryException>([&] { Reg.WriteInteger("n", 1); }), "Failed to set data for 'n'");
    EXPECT_EQ(Reg.ReadString("n"), "");
}

// --- TRegIniFile

TEST_F(Registry, AnIniFilesSectionsAreKeysAndItsIdentsStringValues) {
    TRegIniFile ini(Root + "\\ini");
    EXPECT_EQ(ini.FileName(), Root + "\\ini");
    ini.WriteString("RecentFiles", "0", "C:\\a.txt");
    ini.WriteInteger("Window", "Left", -12);
    ini.WriteBool("Window", "Open", true);

    ASSERT_TRUE(Reg.OpenKey("ini\\RecentFiles", false));
    EXPECT_EQ(Reg.ReadString("0"), "C:\\a.txt");
    EXPECT_EQ(Reg.GetDataType("0"), TRegDataType::String);
    ASSERT_TRUE(Reg.OpenKey("\\" + Root + "\\ini\\Window", false));
    EXPECT_EQ(Reg.ReadString("Left"), "-12");
    EXPECT_EQ(Reg.ReadString("Open"), "1");

    EXPECT_EQ(ini.ReadString("RecentFiles", "0", "none"), "C:\\a.txt");
    EXPECT_EQ(ini.ReadInteger("Window", "Left", 5), -12);
    EXPECT_TRUE(ini.ReadBool("Window", "Open", false));
}

TEST_F(Registry, AnIniFileFallsBack) {
    TRegIniFile ini(Root + "\\ini");
    EXPECT_EQ(ini.ReadString("None", "x", "fallback"), "fallback");
    EXPECT_FALSE(ini.KeyExists("None")) << "reading makes no section";
    ini.WriteString("S", "text", "not a number");
    ini.WriteString("S", "huge", "99999999999");
    ini.WriteString("S", "empty", "");
    EXPECT_EQ(ini.ReadString("S", "missing", "fallback"), "fallback");
    EXPECT_EQ(ini.ReadString("S", "empty", "fallback"), "");
    EXPECT_EQ(ini.ReadInteger("S", "text", 7), 7);
    EXPECT_EQ(ini.ReadInteger("S", "huge", 7), 7);
    EXPECT_EQ(ini.ReadInteger("S", "missing", 7), 7);
    EXPECT_TRUE(ini.ReadBool("S", "missing", true));
}

TEST_F(Registry, AnIniFileWithoutANameStandsAtTheRoot) {
    TRegIniFile ini;
    EXPECT_FALSE(ini.OpenKey(Root + "\\missing", false));
    EXPECT_TRUE(ini.OpenKey("\\" + Root, false));
    ini.WriteString("Sec", "id", "x");
    EXPECT_THAT(KeyNames(), ElementsAre("Sec"));
}

TEST_F(Registry, AnIniFileListsAndErases) {
    TRegIniFile ini(Root);
    ini.WriteString("One", "b", "2");
    ini.WriteString("One", "a", "1");
    ini.WriteString("Two", "c", "3");
    TStringList list;
    ini.ReadSections(list);
    EXPECT_THAT(TextsOf(list), ElementsAre("One", "Two"));
    ini.ReadSection("One", list);
    EXPECT_THAT(TextsOf(list), ElementsAre("a", "b"));
    ini.ReadSectionValues("One", list);
    EXPECT_THAT(TextsOf(list), ElementsAre("a=1", "b=2"));
    ini.DeleteKey("One", "a");
    ini.DeleteKey("One", "missing");
    ini.DeleteKey("Missing", "a");
    ini.ReadSection("One", list);
    EXPECT_THAT(TextsOf(list), ElementsAre("b"));
    ini.EraseSection("One");
    ini.EraseSection("Missing");
    ini.ReadSections(list);
    EXPECT_THAT(TextsOf(list), ElementsAre("Two"));
    ini.ReadSection("One", list);
    EXPECT_EQ(list.Count(), 0);
}

// --- The two registries of a 64-bit Windows

/// Below a key that programs of 32 and of 64 bits have apart. Where there is one registry only, all of it holds too.
class RegistryView : public testing::Test {
protected:
    static constexpr REGSAM Other = sizeof(void*) == 4 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;

    RegistryView() : Root("Software\\Classes\\CLSID\\KxTests" + IntToStr(GetCurrentProcessId())) {}
    ~RegistryView() override {
        for (const REGSAM view : {REGSAM{0}, Other}) {
            TRegistry(KEY_ALL_ACCESS | view).DeleteKey(Root);
            EXPECT_FALSE(TRegistry(KEY_ALL_ACCESS | view).KeyExists(Root));
        }
    }

    const std::string Root;
};

TEST_F(RegistryView, AllThatIsDoneWithKeysKeepsToIt) {
    TRegistry reg(KEY_ALL_ACCESS | Other);
    reg.CreateKey(Root + "\\a\\b");
    unique_hkey own;
    const bool apart = RegOpenKeyExA(HKEY_CURRENT_USER, Root.c_str(), 0, KEY_READ, own.put()) == ERROR_FILE_NOT_FOUND;
    EXPECT_EQ(TRegistry().KeyExists(Root), !apart);
    EXPECT_TRUE(reg.KeyExists(Root + "\\a"));
    EXPECT_TRUE(reg.OpenKeyReadOnly(Root + "\\a"));
    EXPECT_TRUE(reg.KeyExists("b"));
    reg.CloseKey();
    EXPECT_TRUE(reg.DeleteKey(Root + "\\a"));
    EXPECT_FALSE(reg.KeyExists(Root + "\\a"));
    EXPECT_TRUE(reg.KeyExists(Root));
    if (apart) {
        TRegistry().CreateKey(Root);
        EXPECT_TRUE(reg.DeleteKey(Root));
        EXPECT_TRUE(TRegistry().KeyExists(Root)) << "that of the other registry was deleted";
    }
}

TEST_F(RegistryView, SectionsOfAnIniFileKeepToIt) {
    TRegIniFile ini(Root, KEY_ALL_ACCESS | Other);
    ini.WriteString("section", "name", "value");
    EXPECT_EQ(ini.ReadString("section", "name", ""), "value");
    TStringList names;
    ini.ReadSection("section", names);
    EXPECT_THAT(TextsOf(names), ElementsAre("name"));
    ini.ReadSectionValues("section", names);
    EXPECT_THAT(TextsOf(names), ElementsAre("name=value"));
    ini.EraseSection("section");
    EXPECT_EQ(ini.ReadString("section", "name", "none"), "none");
}

} // namespace
} // namespace kx
