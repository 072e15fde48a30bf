// SPDX-License-Identifier: MIT
// What a dialog remembers, in the registry.

#include "kx/frame/KxDlgMemory.h"

#include "kx/core/SysUtils.h"
#include "support/TempFolder.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/SlowDisk.h"
#include "tests/support/TestKey.h"
#include "tests/support/Texts.h"

#include <gmock/gmock.h>

#include <climits>

namespace kx::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DlgMemory : public testing::Test {
protected:
    /// A key with a value of each kind, all of them sensible.
    void WriteAll() const {
        Key.Write("Folder", Folder.Path());
        Key.Write("FilterIndex", 3);
        Key.Write("Width", 500);
        Key.Write("Height", 400);
        Key.Write("ViewStyle", 2);
        Key.Write("ColumnWidths", "135,0,32767");
    }
    std::vector<std::string> ValueNames() const {
        TRegistry registry;
        TStringList names;
        if (registry.OpenKeyReadOnly(Key.Path())) {
            registry.GetValueNames(names);
        }
        names.Sort();
        return TextsOf(names);
    }
    TKxDlgMemory Read() const { return TKxDlgMemory(Key.Path()); }

    TTestKey Key;
    TTempFolder Folder{"memory"};
};

void ExpectNothing(const TKxDlgMemory& memory) {
    EXPECT_EQ(memory.Folder, "");
    EXPECT_EQ(memory.Filter, std::nullopt);
    EXPECT_EQ(memory.Size, std::nullopt);
    EXPECT_EQ(memory.ViewStyle, std::nullopt);
    EXPECT_THAT(memory.Columns, IsEmpty());
}

TEST_F(DlgMemory, AKeyThatIsNotThereHoldsNothingAndIsNotMade) {
    ExpectNothing(Read());
    EXPECT_TRUE(Read().IsOn());
    EXPECT_FALSE(TRegistry().KeyExists(Key.Path()));
}

TEST_F(DlgMemory, AnEmptyKeyOrOneOfBackslashesIsOff) {
    for (const char* key : {"", "\\", "\\\\\\"}) {
        TKxDlgMemory memory(key);
        EXPECT_FALSE(memory.IsOn()) << key;
        memory.Size = TPoint{100, 100};
        memory.Keep(true);
        EXPECT_FALSE(TRegistry().ValueExists("Width"));
    }
}

TEST_F(DlgMemory, ReadsWhatTheKeyHolds) {
    WriteAll();
    for (const std::string& key : {Key.Path(), '\\' + Key.Path() + '\\'}) {
        const TKxDlgMemory memory(key);
        EXPECT_EQ(memory.Folder, Folder.Path());
        EXPECT_EQ(memory.Filter, 3);
        EXPECT_EQ(memory.Size, (TPoint{500, 400}));
        EXPECT_EQ(memory.ViewStyle, 2);
        EXPECT_THAT(memory.Columns, ElementsAre(135, 0, 32767));
    }
}

TEST_F(DlgMemory, ValuesOfAnotherTypeAreNothing) {
    Key.Write("Folder", 1);
    Key.Write("FilterIndex", "3");
    Key.Write("Width", "500");
    Key.Write("Height", "400");
    Key.Write("ViewStyle", "2");
    Key.Write("ColumnWidths", 135);
    ExpectNothing(Read());
}

TEST_F(DlgMemory, ABrokenValueCostsNothingButItself) {
    WriteAll();
    Key.Write("FilterIndex", "none");
    EXPECT_EQ(Read().Filter, std::nullopt);
    EXPECT_EQ(Read().Size, (TPoint{500, 400}));
    EXPECT_EQ(Read().ViewStyle, 2);
    EXPECT_EQ(Read().Folder, Folder.Path());
}

TEST_F(DlgMemory, ValuesThatMakeNoSenseAreNothing) {
    WriteAll();
    Key.Write("FilterIndex", -1);
    Key.Write("ViewStyle", -1);
    EXPECT_EQ(Read().Filter, std::nullopt);
    EXPECT_EQ(Read().ViewStyle, std::nullopt);
    for (const int broken : {0, -5, 32768, INT_MAX, INT_MIN}) {
        Key.Write("Width", broken);
        Key.Write("Height", 400);
        EXPECT_EQ(Read().Size, std::nullopt) << broken;
        Key.Write("Width", 500);
        Key.Write("Height", broken);
        EXPECT_EQ(Read().Size, std::nullopt) << broken;
    }
    for (const char* broken : {"135,-1", "135,32768", "135,x", ",", "99999999999999999999", "135,,45"}) {
        Key.Write("ColumnWidths", broken);
        EXPECT_THAT(Read().Columns, IsEmpty()) << broken;
    }
}

TEST_F(DlgMemory, ASizeWithoutOneOfItsNumbersIsNone) {
    Key.Write("Width", 500);
    EXPECT_EQ(Read().Size, std::nullopt);
    Key.Write("Height", 400);
    EXPECT_EQ(Read().Size, (TPoint{500, 400}));
}

TEST_F(DlgMemory, WhatWasSeenIsKeptInAnyCaseAndWhatWasChosenWhenItWasConfirmed) {
    TKxDlgMemory memory = Read();
    memory.Folder = Folder.Path();
    memory.Filter = 2;
    memory.Size = TPoint{610, 420};
    memory.ViewStyle = 3;
    memory.Columns = {10, 20};
    memory.Keep(false);
    EXPECT_THAT(ValueNames(), ElementsAre("ColumnWidths", "Height", "ViewStyle", "Width"));
    EXPECT_EQ(Read().Size, (TPoint{610, 420}));
    EXPECT_EQ(Read().ViewStyle, 3);
    EXPECT_THAT(Read().Columns, ElementsAre(10, 20));
    memory.Keep(true);
    EXPECT_THAT(ValueNames(), ElementsAre("ColumnWidths", "FilterIndex", "Folder", "Height", "ViewStyle", "Width"));
    EXPECT_EQ(Read().Folder, Folder.Path());
    EXPECT_EQ(Read().Filter, 2);
}

TEST_F(DlgMemory, NothingLeavesTheValuesAsTheyAre) {
    WriteAll();
    TKxDlgMemory memory(Key.Path());
    memory.Folder.clear();
    memory.Filter.reset();
    memory.Size.reset();
    memory.ViewStyle.reset();
    memory.Columns.clear();
    memory.Keep(true);
    EXPECT_EQ(Read().Folder, Folder.Path());
    EXPECT_EQ(Read().Filter, 3);
    EXPECT_EQ(Read().Size, (TPoint{500, 400}));
    EXPECT_EQ(Read().ViewStyle, 2);
    EXPECT_THAT(Read().Columns, ElementsAre(135, 0, 32767));
}

TEST_F(DlgMemory, AKeyThatCannotBeOpenedIsPassedOver) {
    constexpr size_t tooLong = 300; // characters in the name of a key
    TKxDlgMemory memory(Key.Path() + '\\' + std::string(tooLong, 'k'));
    ExpectNothing(memory);
    memory.Size = TPoint{500, 400};
    memory.Keep(true);
    EXPECT_THAT(ValueNames(), IsEmpty());
}

TEST_F(DlgMemory, AFolderThatHasGoneIsNone) {
    TKxDlgMemory memory;
    EXPECT_FALSE(memory.IsOn());
    EXPECT_EQ(memory.ExistingFolder(), "");
    memory.Folder = Folder.Path();
    EXPECT_EQ(memory.ExistingFolder(), Folder.Path());
    memory.Folder = Folder.Path("nothing");
    EXPECT_EQ(memory.ExistingFolder(), "");
    memory.Folder = Folder.AddFile("file.txt");
    EXPECT_EQ(memory.ExistingFolder(), "");
    TSlowDisk disk;
    memory.Folder = R"(\\kx-test\share)";
    disk.Fail(memory.Folder, ERROR_BAD_NETPATH);
    EXPECT_EQ(memory.ExistingFolder(), "");
    disk.Answer(memory.Folder, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(memory.ExistingFolder(), memory.Folder);
}

TEST_F(DlgMemory, ASizeFitsTheScreen) {
    RECT area{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    const TPoint most{area.right - area.left, area.bottom - area.top};
    HWND window = GetDesktopWindow();
    EXPECT_EQ(KxFitSize(window, {300, 200}), (TPoint{300, 200}));
    EXPECT_EQ(KxFitSize(window, {32767, 200}), (TPoint{most.X, 200}));
    EXPECT_EQ(KxFitSize(window, {300, 32767}), (TPoint{300, most.Y}));
}

} // namespace
} // namespace kx::test
