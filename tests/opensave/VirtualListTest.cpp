// SPDX-License-Identifier: MIT
// The filter on lists that keep no items.

#include "FileDlgTest.h"

#include "tests/support/ShellViews.h"

namespace kx {
namespace {

using namespace test;

/// The filter on the lists of newer shells, whose entries belong to the shell view. The folder holds the folder inner
/// and the files one.txt and two.txt.
class VirtualList : public TFileDlgTest {
protected:
    VirtualList() { Filter.SetEnabled(true); }

    /// Lets no file in but text files, and notes which it was asked about.
    void FilterTexts() {
        Folder.AddFile("three.log");
        Filter.SetOnIncludeFile([this](TObject*, const std::string& name, bool& include) {
            Asked.push_back(name);
            include = SameText(ExtractFileExt(name), ".txt");
        });
    }
    /// What the view shows after the filter has gone over its list.
    std::vector<std::string> Filtered(TVirtualView& view) {
        EXPECT_TRUE(Filter.ProcessViaFilter(view.List(), Folder.Path()));
        EXPECT_EQ(view.DeletionsByMessage, 0);
        return view.Names();
    }

    TKxFileFilter Filter{nullptr};
    std::vector<std::string> Asked;
};

TEST_F(VirtualList, IsFilteredByItsView) {
    FilterTexts();
    TVirtualView view(Folder);
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("inner", "one.txt", "two.txt"));
    EXPECT_THAT(Asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("three.log"), Folder.Path("two.txt")));
}

TEST_F(VirtualList, LosesItsFolders) {
    Folder.AddFolder("another");
    Filter.SetShowFolders(false);
    TVirtualView view(Folder);
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("one.txt", "two.txt"));
}

TEST_F(VirtualList, CanBeEmptied) {
    Filter.SetShowFolders(false);
    Filter.SetOnIncludeFile([](TObject*, const std::string&, bool& include) { include = false; });
    TVirtualView view(Folder);
    EXPECT_THAT(Filtered(view), IsEmpty());
}

TEST_F(VirtualList, StaysAsItIsWhenItsViewRemovesNothing) {
    FilterTexts();
    Filter.SetShowFolders(false);
    TVirtualView view(Folder);
    view.Removes = false;
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("inner", "one.txt", "two.txt", "three.log"));
}

TEST_F(VirtualList, StaysAsItIsWithoutItsView) {
    FilterTexts();
    Filter.SetShowFolders(false);
    TVirtualView view(Folder);
    view.Forget();
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("inner", "one.txt", "two.txt", "three.log"));
    EXPECT_THAT(Asked, IsEmpty());
}

TEST_F(VirtualList, KeepsWhatTheShellKnowsNothingOf) {
    FilterTexts();
    Filter.SetShowFolders(false);
    TVirtualView view(Folder);
    view.TraitsResult = E_FAIL;
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("inner", "one.txt", "two.txt", "three.log"));
    EXPECT_THAT(Asked, IsEmpty());
}

TEST_F(VirtualList, ShowsArchivesAsFilesAndWhatHasNoPathAsFolders) {
    FilterTexts();
    Folder.AddFile("packed.zip");
    TVirtualView view(Folder);
    view.Traits = [](const std::string& name, SFGAOF traits) -> SFGAOF {
        return name == "packed.zip" ? static_cast<SFGAOF>(SFGAO_FOLDER | SFGAO_STREAM | SFGAO_FILESYSTEM)
               : name == "two.txt"  ? traits & ~static_cast<SFGAOF>(SFGAO_FILESYSTEM)
                                    : traits;
    };
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("inner", "one.txt", "two.txt"));
    EXPECT_THAT(Asked,
                UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("three.log"), Folder.Path("packed.zip")));
    Filter.SetShowFolders(false);
    EXPECT_THAT(Filtered(view), ElementsAre("one.txt"));
}

TEST_F(VirtualList, OfAnyShellIsFilteredByItsView) {
    FilterTexts();
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        {
            const TFeignedVirtualList feigned(ListOf(dialog));
            EXPECT_TRUE(Filter.ProcessViaFilter(ListOf(dialog), dialog.SelectedFolder()));
        }
        EXPECT_THAT(ItemTexts(ListOf(dialog)), UnorderedElementsAre("inner", "one.txt", "two.txt"));
    });
    EXPECT_THAT(Asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("three.log"), Folder.Path("two.txt")));
}

// --- Names, of either kind of list

/// While this lives, the shell shows no extensions.
class THiddenExtensions {
public:
    THiddenExtensions() { Set(1); }
    THiddenExtensions(const THiddenExtensions&) = delete;
    THiddenExtensions& operator=(const THiddenExtensions&) = delete;
    ~THiddenExtensions() { Set(0); }

private:
    static void Set(DWORD value) {
        RegSetKeyValueA(HKEY_CURRENT_USER, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\Advanced)",
                        "HideFileExt", REG_DWORD, &value, sizeof value);
    }
};

TEST_F(VirtualList, NamesFilesWithExtensionsThatAreNotShown) {
    FilterTexts();
    const THiddenExtensions hidden;
    TVirtualView view(Folder);
    EXPECT_THAT(Filtered(view), testing::SizeIs(3));
    EXPECT_THAT(Asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("three.log"), Folder.Path("two.txt")));
    Asked.clear();
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        EXPECT_THAT(ItemTexts(ListOf(dialog)), UnorderedElementsAre("inner", "one", "two", "three"));
        EXPECT_TRUE(Filter.ProcessViaFilter(ListOf(dialog), dialog.SelectedFolder()));
        EXPECT_THAT(ItemTexts(ListOf(dialog)), UnorderedElementsAre("inner", "one", "two"));
    });
    EXPECT_THAT(Asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("three.log"), Folder.Path("two.txt")));
}

TEST_F(VirtualList, NamesFilesOfMoreBytesThanAPathHasCharacters) {
    std::string name;
    for (int i = 0; i < 80; ++i) {
        name += "\u6587";
    }
    name += ".log";
    if (!CodePageHolds(name)) {
        GTEST_SKIP() << "the code page has no such characters";
    }
    FilterTexts();
    const std::string path = Folder.AddFile(name);
    EXPECT_GT(path.size(), size_t{MAX_PATH});
    TVirtualView view(Folder);
    EXPECT_THAT(Filtered(view), UnorderedElementsAre("inner", "one.txt", "two.txt"));
    EXPECT_THAT(Asked, testing::Contains(path));
    Asked.clear();
    auto& dialog = NewDialog();
    Look(dialog, [&] {
        EXPECT_TRUE(Filter.ProcessViaFilter(ListOf(dialog), dialog.SelectedFolder()));
        EXPECT_THAT(ItemTexts(ListOf(dialog)), UnorderedElementsAre("inner", "one.txt", "two.txt"));
    });
    EXPECT_THAT(Asked, testing::Contains(path));
}

} // namespace
} // namespace kx
