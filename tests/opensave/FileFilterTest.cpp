// SPDX-License-Identifier: MIT
// The filter on a list of its own.

#include "FileDlgTest.h"

namespace kx {
namespace {

using namespace test;

/// The filter on the list of a running dialog. The folder holds the folder inner and the files one.txt and two.txt.
class FileFilter : public TFileDlgTest {
protected:
    /// What the list shows after the filter has gone over it.
    std::vector<std::string> Filtered(TKxFileFilter& filter) {
        std::vector<std::string> items;
        auto& dialog = NewDialog();
        Look(dialog, [&] {
            filter.ProcessViaFilter(ListOf(dialog), dialog.SelectedFolder());
            items = ItemTexts(ListOf(dialog));
        });
        return items;
    }

    TKxFileFilter Filter{nullptr};
};

TEST_F(FileFilter, DoesNothingWhileItIsNotEnabled) {
    Filter.SetShowFolders(false);
    Filter.SetOnIncludeFile([](TObject*, const std::string&, bool& include) { include = false; });
    EXPECT_THAT(Filtered(Filter), UnorderedElementsAre("inner", "one.txt", "two.txt"));
}

TEST_F(FileFilter, KeepsAllWithoutAHandler) {
    Filter.SetEnabled(true);
    EXPECT_THAT(Filtered(Filter), UnorderedElementsAre("inner", "one.txt", "two.txt"));
}

TEST_F(FileFilter, TakesOutEveryFolderAndNoFile) {
    Folder.AddFolder("a first");
    Folder.AddFolder("another");
    Filter.SetEnabled(true);
    Filter.SetShowFolders(false);
    EXPECT_THAT(Filtered(Filter), UnorderedElementsAre("one.txt", "two.txt"));
}

TEST_F(FileFilter, LeavesOnlyFoldersWhenEveryFileIsExcluded) {
    for (int i = 0; i < 20; ++i) {
        Folder.AddFile("file" + std::to_string(i));
    }
    Filter.SetEnabled(true);
    Filter.SetOnIncludeFile([](TObject*, const std::string&, bool& include) { include = false; });
    EXPECT_THAT(Filtered(Filter), ElementsAre("inner"));
}

TEST_F(FileFilter, CanEmptyTheList) {
    Filter.SetEnabled(true);
    Filter.SetShowFolders(false);
    Filter.SetOnIncludeFile([](TObject*, const std::string&, bool& include) { include = false; });
    EXPECT_THAT(Filtered(Filter), IsEmpty());
}

TEST_F(FileFilter, AsksForFullPathsOfFilesAndNeverForFolders) {
    std::vector<std::string> asked;
    std::vector<TObject*> senders;
    Filter.SetEnabled(true);
    Filter.SetOnIncludeFile([&](TObject* sender, const std::string& name, bool& include) {
        EXPECT_TRUE(include);
        senders.push_back(sender);
        asked.push_back(name);
        include = ExtractFileName(name) == "two.txt";
    });
    EXPECT_THAT(Filtered(Filter), UnorderedElementsAre("inner", "two.txt"));
    EXPECT_THAT(asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("two.txt")));
    EXPECT_THAT(senders, Each(&Filter));
}

TEST_F(FileFilter, TakesAFolderPathWithATrailingBackslash) {
    std::vector<std::string> asked;
    Filter.SetEnabled(true);
    Filter.SetOnIncludeFile([&](TObject*, const std::string& name, bool&) { asked.push_back(name); });
    auto& dialog = NewDialog();
    Look(dialog, [&] { Filter.ProcessViaFilter(ListOf(dialog), dialog.SelectedFolder() + "\\"); });
    EXPECT_THAT(asked, UnorderedElementsAre(Folder.Path("one.txt"), Folder.Path("two.txt")));
}

/// A dialog with a list to refresh.
class TListOwner : public TComponent, public IKxFileListOwner {
public:
    void RefreshFileList() override { ++Refreshed; }
    int Refreshed = 0;
};

TEST_F(FileFilter, HasItsDialogsListRefreshedWhenFoldersComeOrGo) {
    TListOwner owner;
    TKxFileFilter filter(&owner);
    filter.SetEnabled(true);
    filter.SetOnIncludeFile([](TObject*, const std::string&, bool&) {});
    EXPECT_EQ(owner.Refreshed, 0);
    filter.SetShowFolders(false);
    EXPECT_EQ(owner.Refreshed, 1);
    TComponent other;
    TKxFileFilter(&other).SetShowFolders(false); // an owner without a list is left alone
}

} // namespace
} // namespace kx
