// SPDX-License-Identifier: MIT
// Streams of files and resources.

#include "kx/win/FileStreams.h"
#include "kx/core/Strings.h"
#include "kx/win/Windows.h"
#include "support/TempFolder.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

TEST(FileStream, WritesReadsAndSeeks) {
    const TTempFolder folder;
    const std::string name = folder.Path("data.bin");
    {
        TFileStream file(name, fmCreate);
        EXPECT_EQ(file.FileName(), name);
        file.WriteBuffer("0123456789", 10);
        EXPECT_EQ(file.Size(), 10);
        EXPECT_EQ(file.Position(), 10);
        file.SetPosition(3);
        char digits[4] = {};
        file.ReadBuffer(digits, 3);
        EXPECT_STREQ(digits, "345");
        EXPECT_EQ(file.Seek(-2, TSeekOrigin::End), 8);
        EXPECT_EQ(file.Read(digits, 4), 2u);
        EXPECT_EQ(file.Read(digits, 4), 0u);
        EXPECT_THROW(file.ReadBuffer(digits, 1), EReadError);
        file.SetSize(4);
        EXPECT_EQ(file.Size(), 4);
        EXPECT_THROW(file.Seek(-1, TSeekOrigin::Beginning), EStreamError);
    }
    TFileStream file(name, fmOpenRead);
    EXPECT_EQ(file.Size(), 4);
    EXPECT_EQ(file.Write("x", 1), 0u);
    EXPECT_THROW(file.WriteBuffer("x", 1), EWriteError);
    EXPECT_THROW(file.SetSize(1), EStreamError);
}

TEST(FileStream, NamesTheFileAndTheReasonWhenItCannotBeOpened) {
    const TTempFolder folder;
    const std::string missing = folder.Path("missing.txt");
    const std::string opening = ErrorOf<EFOpenError>([&] { TFileStream(missing, fmOpenRead); });
    EXPECT_EQ(opening.rfind("Cannot open file \"" + missing + "\". ", 0), 0u) << opening;
    EXPECT_GT(opening.size(), missing.size() + 25) << "the system's reason is missing";
    const std::string nowhere = folder.Path("no\\such\\folder.txt");
    const std::string creating = ErrorOf<EFCreateError>([&] { TFileStream(nowhere, fmCreate); });
    EXPECT_EQ(creating.rfind("Cannot create file \"" + nowhere + "\". ", 0), 0u) << creating;
}

TEST(FileStream, SharesTheFileAsTheModeSays) {
    const TTempFolder folder;
    const std::string name = folder.AddFile("shared.txt", "text");
    {
        TFileStream reader(name, fmOpenRead | fmShareDenyWrite);
        TFileStream another(name, fmOpenRead | fmShareDenyWrite);
        EXPECT_THROW(TFileStream(name, fmOpenReadWrite | fmShareDenyNone), EFOpenError);
    }
    {
        TFileStream alone(name, fmOpenRead | fmShareExclusive);
        EXPECT_THROW(TFileStream(name, fmOpenRead | fmShareDenyNone), EFOpenError);
    }
    {
        TFileStream reader(name, fmOpenRead | fmShareDenyNone);
        TFileStream writer(name, fmOpenWrite | fmShareDenyNone);
        writer.WriteBuffer("TEXT", 4);
    }
    TFileStream created(name, fmCreate);
    EXPECT_EQ(created.Size(), 0);
    EXPECT_THROW(TFileStream(name, fmOpenRead | fmShareDenyNone), EFOpenError);
}

TEST(FileStream, ReachesFilesWhoseNamesAreNotAscii) {
    const TTempFolder folder;
    const std::string name = folder.AddFile("größe.txt", "abc");
    EXPECT_TRUE(FileExists(name));
    TFileStream file(name, fmOpenRead);
    EXPECT_EQ(file.Size(), 3);
}

TEST(FileStream, CopiesWholeStreams) {
    const TTempFolder folder;
    TMemoryStream source(std::string(100000, 'x'));
    TFileStream file(folder.Path("copy.bin"), fmCreate);
    EXPECT_EQ(file.CopyFrom(source, 0), 100000);
    EXPECT_EQ(file.Size(), 100000);
}

TEST(ResourceStream, ReadsAndDoesNotWrite) {
    TResourceStream resource(HInstance(), "SAMPLE", RT_RCDATA);
    EXPECT_EQ(resource.Size(), 126);
    char magic[2] = {};
    resource.ReadBuffer(magic, 2);
    EXPECT_EQ(std::string(magic, 2), "BM");
    EXPECT_THROW(resource.WriteBuffer("x", 1), EWriteError);
    EXPECT_EQ(ErrorOf<EResNotFound>([] { TResourceStream(HInstance(), "NoSuchThing", RT_RCDATA); }),
              "Resource NoSuchThing not found");
    EXPECT_EQ(ErrorOf<EResNotFound>([] { TResourceStream(HInstance(), 99, RT_RCDATA); }), "Resource 99 not found");
}

TEST(Files, AreNoFoldersAndFoldersAreNoFiles) {
    const TTempFolder folder;
    const std::string file = folder.AddFile("a.txt");
    const std::string inner = folder.AddFolder("b");
    EXPECT_TRUE(FileExists(file));
    EXPECT_FALSE(FileExists(inner));
    EXPECT_FALSE(DirectoryExists(file));
    EXPECT_TRUE(DirectoryExists(inner));
    for (const std::string& missing : {folder.Path("c"), std::string()}) {
        EXPECT_FALSE(FileExists(missing));
        EXPECT_FALSE(DirectoryExists(missing));
    }
}

TEST(Files, HoldTheTextsOfLists) {
    const TTempFolder folder;
    const std::string name = folder.Path("list.txt");
    TStringList list;
    list.Add("one");
    list.Add("");
    list.Add("three");
    SaveToFile(list, name);
    TStringList again;
    LoadFromFile(again, name);
    EXPECT_TRUE(again.Equals(list));
    EXPECT_THROW(LoadFromFile(again, folder.Path("none.txt")), EFOpenError);
    EXPECT_TRUE(again.Equals(list));
}

} // namespace
} // namespace kx
