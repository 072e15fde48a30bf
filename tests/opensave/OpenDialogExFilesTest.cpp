// SPDX-License-Identifier: MIT
// The list of recent files.

#include "OpenDialogExFixture.h"

#include "tests/support/FormFiles.h"

#include <algorithm>

// The list of recent files, in the component and in the registry.

namespace kx {
namespace {

using namespace test;

class RecentFiles : public TExDlgTest {
protected:
    /// What the list view of the dialog, which need not be shown, lists: the full names.
    static std::vector<std::string> Listed(TKxOpenDialogEx& dialog) {
        std::vector<std::string> names;
        TListItems& items = RecentList(dialog).Items();
        for (int i = 0; i < items.Count(); ++i) {
            names.push_back(items[i].SubItems()[1]);
        }
        return names;
    }
    static void SetFiles(TKxOpenDialogEx& dialog, std::initializer_list<const char*> names) {
        TStringList files;
        for (const char* name : names) {
            files.Add(name);
        }
        dialog.SetRecentFiles(files);
    }
    void WriteValues(int count) const {
        for (int i = 0; i < count; ++i) {
            WriteValue(IntToStr(i), "C:\\old" + IntToStr(i));
        }
    }
};

// --- The list

TEST_F(RecentFiles, AreListedWithNameFolderAndFullName) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\data\\a.txt", "b.txt", "\\\\server\\share\\c.txt", "D:d.txt", "C:\\folder\\", ""});
    TListItems& items = RecentList(dialog).Items();
    ASSERT_EQ(items.Count(), 6);
    const auto texts = [&](int i) {
        return items[i].Caption() + "|" + items[i].SubItems()[0] + "|" + items[i].SubItems()[1];
    };
    EXPECT_EQ(texts(0), "a.txt|C:\\data\\|C:\\data\\a.txt");
    EXPECT_EQ(texts(1), "b.txt||b.txt");
    EXPECT_EQ(texts(2), "c.txt|\\\\server\\share\\|\\\\server\\share\\c.txt");
    EXPECT_EQ(texts(3), "d.txt|D:|D:d.txt");
    EXPECT_EQ(texts(4), "|C:\\folder\\|C:\\folder\\");
    EXPECT_EQ(texts(5), "||");
}

TEST_F(RecentFiles, AddToRecentTakesTheFileNameOfTheDialogNotItsArgument) {
    TKxOpenDialogEx dialog;
    dialog.SetFileName("C:\\data\\chosen.txt");
    dialog.AddToRecent("C:\\data\\other.txt");
    EXPECT_THAT(TextsOf(dialog.RecentFiles()), ElementsAre("C:\\data\\chosen.txt"));
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\data\\chosen.txt"));
}

TEST_F(RecentFiles, AddToRecentPutsANewFileInFront) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a", "C:\\b"});
    dialog.SetFileName("C:\\c");
    dialog.AddToRecent("");
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\c", "C:\\a", "C:\\b"));
}

TEST_F(RecentFiles, AddToRecentDoesNotMoveAFileThatIsInTheList) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a", "C:\\b", "C:\\c"});
    dialog.SetFileName("C:\\c");
    dialog.AddToRecent(dialog.FileName());
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\a", "C:\\b", "C:\\c"));
}

TEST_F(RecentFiles, AddToRecentTellsNamesApartByCase) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a.TXT"});
    dialog.SetFileName("C:\\A.txt");
    dialog.AddToRecent(dialog.FileName());
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\A.txt", "C:\\a.TXT"));
}

TEST_F(RecentFiles, AddToRecentDropsTheLastOfAFullList) {
    TKxOpenDialogEx dialog;
    dialog.SetRecentCount(2);
    SetFiles(dialog, {"C:\\a", "C:\\b"});
    dialog.SetFileName("C:\\c");
    dialog.AddToRecent(dialog.FileName());
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\c", "C:\\a"));
}

TEST_F(RecentFiles, AddToRecentWithoutAFileAddsNothing) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a"});
    dialog.AddToRecent("C:\\b");
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\a"));
}

TEST_F(RecentFiles, AddToRecentAfterARunRemembersWhatWasChosen) {
    auto& dialog = NewRecent({"two.txt"});
    ASSERT_TRUE(RunDialog(dialog, {EnterFileName(dialog, "one.txt")}));
    EXPECT_THAT(TextsOf(dialog.RecentFiles()), ElementsAre(Folder.Path("two.txt"))) << "nothing by itself";
    dialog.AddToRecent(dialog.FileName());
    EXPECT_THAT(TextsOf(dialog.RecentFiles()), ElementsAre(Folder.Path("one.txt"), Folder.Path("two.txt")));
}

TEST_F(RecentFiles, AreCopiedAndTrimmedWhenTheyAreSet) {
    TKxOpenDialogEx dialog;
    dialog.SetRecentCount(2);
    TStringList files;
    files.SetCommaText("C:\\a,C:\\b,C:\\c");
    dialog.SetRecentFiles(files);
    files.Clear();
    EXPECT_THAT(TextsOf(dialog.RecentFiles()), ElementsAre("C:\\a", "C:\\b"));
    dialog.SetRecentFiles(dialog.RecentFiles());
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\a", "C:\\b"));
}

TEST_F(RecentFiles, ARecentCountOfZeroEmptiesTheListAndTheListView) {
    auto& dialog = NewRecent({"one.txt", "two.txt"});
    dialog.SetTabIndex(1);
    Look(dialog, [&] {
        EXPECT_EQ(ItemCount(RecentList(dialog).WindowHandle()), 2);
        dialog.SetRecentCount(0);
        EXPECT_THAT(TextsOf(dialog.RecentFiles()), IsEmpty());
        EXPECT_EQ(ItemCount(RecentList(dialog).WindowHandle()), 0);
    });
}

TEST_F(RecentFiles, ANegativeRecentCountIsLikeZero) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a", "C:\\b"});
    dialog.SetRecentCount(-1);
    EXPECT_EQ(dialog.RecentCount(), -1);
    EXPECT_THAT(Listed(dialog), IsEmpty());
    dialog.SetRecentCount(INT32_MIN);
    WriteValues(2);
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(dialog), IsEmpty());
}

TEST_F(RecentFiles, ChangedInPlaceShowWithTheNextRun) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.RecentFiles().Add(Folder.Path("two.txt"));
    EXPECT_THAT(Listed(dialog), ElementsAre(Folder.Path("one.txt")));
    Look(dialog, [&] { EXPECT_THAT(Listed(dialog), ElementsAre(Folder.Path("one.txt"), Folder.Path("two.txt"))); });
}

TEST_F(RecentFiles, ThatChangeInTheShownDialogAreShownAtOnce) {
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetTabIndex(1);
    Look(dialog, [&] {
        HWND list = RecentList(dialog).WindowHandle();
        dialog.SetFilenameText("typed");
        RecentList(dialog).SetItemIndex(0);
        SetFiles(dialog, {"C:\\new.txt", "C:\\newer.txt"});
        EXPECT_THAT(ItemTexts(list), ElementsAre("new.txt", "newer.txt"));
        EXPECT_EQ(RecentList(dialog).Selected(), nullptr);
        EXPECT_EQ(dialog.FilenameText(), Folder.Path("one.txt")) << "what was chosen stays chosen";
    });
}

// --- The registry

TEST_F(RecentFiles, AreStoredAsTextsNamedByTheirIndex) {
    const std::string name = FromUtf8("C:\\Grüße.txt");
    TKxOpenDialogEx dialog;
    dialog.SetRecentRegKey(Key);
    SetFiles(dialog, {name.c_str(), "C:\\b"});
    EXPECT_THAT(StoredValues(), IsEmpty()) << "only SaveToRegistry writes";
    dialog.SaveToRegistry();
    EXPECT_THAT(StoredValues(), ElementsAre("0=" + name, "1=C:\\b"));
    TRegistry registry;
    ASSERT_TRUE(registry.OpenKeyReadOnly(Key + "\\RecentFiles"));
    EXPECT_EQ(registry.GetDataType("0"), TRegDataType::String);
    EXPECT_EQ(registry.GetDataSize("1"), 5);
}

TEST_F(RecentFiles, AreReadWhenTheKeyIsSet) {
    WriteValues(2);
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\forgotten"});
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(TextsOf(dialog.RecentFiles()), ElementsAre("C:\\old0", "C:\\old1"));
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\old0", "C:\\old1"));
    WriteValue("0", "C:\\other");
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\old0", "C:\\old1"));
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\other", "C:\\old1"));
}

TEST_F(RecentFiles, OfFiveStoredOnesARecentCountOfThreeYieldsTheFirstThree) {
    WriteValues(5);
    TKxOpenDialogEx dialog;
    dialog.SetRecentCount(3);
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\old0", "C:\\old1", "C:\\old2"));
}

TEST_F(RecentFiles, SavedOverALongerListLeaveItsRestBehindThem) {
    WriteValues(5);
    TKxOpenDialogEx dialog;
    dialog.SetRecentRegKey(Key);
    SetFiles(dialog, {"C:\\new0", "C:\\new1", "C:\\new2"});
    dialog.SaveToRegistry();
    EXPECT_THAT(StoredValues(), ElementsAre("0=C:\\new0", "1=C:\\new1", "2=C:\\new2", "3=C:\\old3", "4=C:\\old4"));
    TKxOpenDialogEx other;
    other.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(other), ElementsAre("C:\\new0", "C:\\new1", "C:\\new2", "C:\\old3", "C:\\old4"));
}

TEST_F(RecentFiles, EndAtTheFirstGap) {
    WriteValues(5);
    TRegIniFile(Key).DeleteKey("RecentFiles", "2");
    TKxOpenDialogEx dialog;
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\old0", "C:\\old1"));
    WriteValue("1", "");
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\old0"));
}

TEST_F(RecentFiles, OfAKeyThatIsMissingAreNoneAndReadingMakesNoKey) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a"});
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(dialog), IsEmpty());
    EXPECT_FALSE(TRegistry().KeyExists(Key));
}

TEST_F(RecentFiles, OfAKeyWithoutTheSectionAreNone) {
    TRegistry().CreateKey(Key);
    TKxOpenDialogEx dialog;
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(dialog), IsEmpty());
    EXPECT_FALSE(TRegistry().KeyExists(Key + "\\RecentFiles"));
}

TEST_F(RecentFiles, KeyMayBeginWithABackslash) {
    TKxOpenDialogEx dialog;
    dialog.SetRecentRegKey("\\" + Key);
    SetFiles(dialog, {"C:\\a"});
    dialog.SaveToRegistry();
    EXPECT_THAT(StoredValues(), ElementsAre("0=C:\\a"));
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\a"));
}

TEST_F(RecentFiles, OfADialogWithoutAKeyAreKeptNowhere) {
    const bool wasThere = TRegistry().KeyExists("RecentFiles");
    ASSERT_FALSE(wasThere);
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a"});
    dialog.SaveToRegistry();
    EXPECT_FALSE(TRegistry().KeyExists("RecentFiles"));
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), IsEmpty());
}

TEST_F(RecentFiles, AKeyThatCannotBeMadeWritesNothingAndTellsNothing) {
    TKxOpenDialogEx dialog;
    SetFiles(dialog, {"C:\\a"});
    dialog.SetRecentRegKey(Key + "\\" + std::string(300, 'x')); // longer than a key's name may be
    SetFiles(dialog, {"C:\\a"});
    dialog.SaveToRegistry();
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\a"));
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), IsEmpty());
}

TEST_F(RecentFiles, OfAWrongTypeEndTheListLikeAGap) {
    WriteValues(4);
    TRegistry registry;
    ASSERT_TRUE(registry.OpenKey(Key + "\\RecentFiles", false));
    registry.WriteInteger("2", 5);
    TKxOpenDialogEx dialog;
    dialog.SetRecentRegKey(Key);
    EXPECT_THAT(Listed(dialog), ElementsAre("C:\\old0", "C:\\old1"));
    registry.WriteBinaryData("0", "\x01\x02\x03", 3);
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), IsEmpty());
}

TEST_F(RecentFiles, MayBeVeryLong) {
    const std::string name = "C:\\" + std::string(65'536, 'x') + ".txt";
    auto& dialog = NewRecent({"one.txt"});
    dialog.SetRecentRegKey(Key);
    TStringList files;
    files.Add(name);
    files.Add(Folder.Path("one.txt"));
    dialog.SetRecentFiles(files);
    dialog.SaveToRegistry();
    dialog.LoadFromRegistry();
    EXPECT_THAT(Listed(dialog), ElementsAre(name, Folder.Path("one.txt")));
    dialog.SetTabIndex(1);
    EXPECT_TRUE(RunDialog(
        dialog, [&] { ClickAt(FileAt(dialog, 0)); },
        {{"the long name is there", [&] { return dialog.FilenameText() == name; }, [&] { ClickAt(FileAt(dialog, 1)); }},
         {"the short name is there", [&] { return dialog.FilenameText() == Folder.Path("one.txt"); },
          [&] { PressButton(ItemOf(dialog, IDOK)); }}}));
    EXPECT_EQ(dialog.FileName(), Folder.Path("one.txt"));
}

TEST_F(RecentFiles, MayBeThousands) {
    constexpr int count = 2000;
    TKxOpenDialogEx dialog;
    dialog.SetRecentCount(count);
    TStringList files;
    for (int i = 0; i < count + 5; ++i) {
        files.Add("C:\\files\\" + IntToStr(i));
    }
    dialog.SetRecentFiles(files);
    dialog.SetRecentRegKey(Key);
    dialog.SetRecentFiles(files);
    dialog.SaveToRegistry();
    dialog.LoadFromRegistry();
    EXPECT_EQ(dialog.RecentFiles().Count(), count);
    EXPECT_EQ(Listed(dialog).back(), "C:\\files\\1999");
}

// --- Form files

/// A form whose file brings a dialog, and handlers for it.
class THost : public TForm {
    KX_CLASS()

    explicit THost(TComponent* owner) : TForm(owner) {}

    KX_FIELDS(THost, (TKxOpenDialogEx, Dialog))
    std::vector<std::string> Log;

    void TabChange(TObject*) { Log.emplace_back("change"); }
    void TabChanging(TObject*, bool&) { Log.emplace_back("changing"); }
};

const TClass& THost::StaticClass() {
    static const TClassBuilder<THost> cls("THost", TForm::StaticClass(), [](auto& c) {
        c.Method("TabChange", &THost::TabChange);
        c.Method("TabChanging", &THost::TabChanging);
    });
    return cls.Class();
}

std::unique_ptr<THost, TFreeDeleter> ReadHost(const std::string& properties) {
    std::unique_ptr<THost, TFreeDeleter> host(new THost(nullptr));
    const std::string text = "object Host: THost\n  object Dialog: TKxOpenDialogEx\n" + properties + "  end\nend\n";
    ReadFormOver(*host, text);
    return host;
}

TEST_F(RecentFiles, OfTheRegistryAreReadWithTheForm) {
    WriteValues(5);
    const auto host = ReadHost(
        "    RecentFiles.Strings = (\n      'C:\\a')\n    RecentCount = 3\n    RecentRegKey = '" + Key + "'\n");
    ASSERT_NE(host->Dialog, nullptr);
    EXPECT_THAT(Listed(*host->Dialog), ElementsAre("C:\\old0", "C:\\old1", "C:\\old2"));
}

TEST_F(RecentFiles, OfAWrongTypeDoNotKeepTheFormFromLoading) {
    TRegistry registry;
    ASSERT_TRUE(registry.OpenKey(Key + "\\RecentFiles", true));
    registry.WriteInteger("0", 1);
    const auto host = ReadHost("    RecentRegKey = '" + Key + "'\n    TabIndex = 1\n");
    EXPECT_THAT(Listed(*host->Dialog), IsEmpty());
    EXPECT_EQ(host->Dialog->TabIndex(), 1);
}

TEST_F(RecentFiles, OfAFormFileAreListedAndTrimmed) {
    const auto host = ReadHost("    RecentFiles.Strings = (\n      'C:\\a'\n      'C:\\b'\n      'C:\\c')\n"
                               "    RecentCount = 2\n");
    EXPECT_THAT(Listed(*host->Dialog), ElementsAre("C:\\a", "C:\\b"));
    const auto first = ReadHost("    RecentCount = 1\n    RecentFiles.Strings = (\n      'C:\\a'\n      'C:\\b')\n");
    EXPECT_THAT(Listed(*first->Dialog), ElementsAre("C:\\a"));
}

TEST_F(RecentFiles, DialogOfAFormFileHasItsTabsAndHandlers) {
    const auto host = ReadHost("    InitialDir = '" + Folder.Path() +
                               "'\n    OnTabChange = TabChange\n    OnTabChanging = TabChanging\n"
                               "    Tabs.Strings = (\n      'Browse'\n      'Recent')\n    TabIndex = 1\n");
    TKxOpenDialogEx& dialog = *host->Dialog;
    EXPECT_THAT(TextsOf(dialog.Tabs()), ElementsAre("Browse", "Recent"));
    EXPECT_EQ(dialog.TabIndex(), 1);
    RunDialog(dialog, {AwaitRecent(dialog), ClickTab(dialog, 0), AwaitFolder(dialog), Cancel(dialog)});
    EXPECT_THAT(host->Log, ElementsAre("change", "changing", "change"));
}

TEST_F(RecentFiles, DialogComesThroughAFormFileAsItWas) {
    const std::string properties = "    OnTabChange = TabChange\n"
                                   "    OnTabChanging = TabChanging\n"
                                   "    RecentFiles.Strings = (\n"
                                   "      'C:\\a'\n"
                                   "      'C:\\b')\n"
                                   "    RecentCount = 4\n"
                                   "    Tabs.Strings = (\n"
                                   "      'Browse'\n"
                                   "      'Recent')\n"
                                   "    TabIndex = 1\n";
    const auto host = ReadHost(properties);
    std::string text = FormTextOf(*host);
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    EXPECT_NE(text.find(properties), std::string::npos) << text;
}

} // namespace
} // namespace kx
