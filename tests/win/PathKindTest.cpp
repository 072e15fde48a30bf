// SPDX-License-Identifier: MIT
// What paths name.

#include "kx/win/PathKind.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"
#include "support/TempFolder.h"
#include "tests/support/SlowDisk.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

constexpr const char* Share = "\\\\kx-test\\share\\folder";

TEST(PathKind, TellsFoldersFilesAndNothing) {
    TTempFolder folder;
    const std::string file = folder.AddFile("a.txt", "a");
    EXPECT_EQ(KindOfPath(folder.Path()), pkFolder);
    EXPECT_EQ(KindOfPath(file), pkFile);
    EXPECT_EQ(KindOfPath(file + ".gone"), pkNothing);
    EXPECT_EQ(KindOfPath(""), pkNothing);
    EXPECT_EQ(KindOfPath("."), pkFolder);
    const TPathQuestion question(file);
    EXPECT_TRUE(question.IsAnswered());
    EXPECT_EQ(question.Answer(0), pkFile);
}

TEST(PathKind, OneMayHaveToWaitForSharesAndDrivesThatAreNotFixed) {
    EXPECT_TRUE(TPathQuestion::IsSlow(Share));
    EXPECT_TRUE(TPathQuestion::IsSlow("//kx-test/share"));
    EXPECT_FALSE(TPathQuestion::IsSlow("C:\\windows"));
    EXPECT_FALSE(TPathQuestion::IsSlow("c:/windows"));
    EXPECT_FALSE(TPathQuestion::IsSlow("Q:\\there is no such drive"));
    EXPECT_FALSE(TPathQuestion::IsSlow("relative\\name"));
    EXPECT_FALSE(TPathQuestion::IsSlow(""));
}

TEST(PathKind, AShareThatDoesNotAnswerIsUnreachableUntilItDoes) {
    TSlowDisk disk;
    const TPathQuestion question(Share);
    EXPECT_FALSE(question.IsAnswered());
    EXPECT_EQ(question.Answer(10), pkUnreachable);
    EXPECT_FALSE(question.IsAnswered());
    disk.Answer(Share, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(question.Answer(INFINITE), pkFolder);
    EXPECT_TRUE(question.IsAnswered());
    EXPECT_EQ(question.Answer(0), pkFolder);
}

TEST(PathKind, WhoeverAsksTheSameSharesTheQuestionAndThePatience) {
    TSlowDisk disk;
    const TPathQuestion first(Share);
    EXPECT_EQ(first.Answer(400), pkUnreachable);
    const ULONGLONG begin = GetTickCount64();
    const TPathQuestion second(Share);
    EXPECT_EQ(second.Answer(400), pkUnreachable);
    EXPECT_LT(GetTickCount64() - begin, 300u) << "one has waited already";
    const TPathQuestion other(std::string(Share) + "2");
    disk.Answer(Share, FILE_ATTRIBUTE_NORMAL);
    disk.Answer(std::string(Share) + "2", FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(first.Answer(INFINITE), pkFile);
    EXPECT_EQ(second.Answer(INFINITE), pkFile);
    EXPECT_EQ(other.Answer(INFINITE), pkFolder);
    EXPECT_EQ(disk.Asked(Share), 1);
}

TEST(PathKind, WhoAsksLaterGetsANewAnswer) {
    TSlowDisk disk;
    disk.Answer(Share, FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(TPathQuestion(Share).Answer(INFINITE), pkFolder);
    disk.Forget(Share);
    EXPECT_EQ(TPathQuestion(Share).Answer(10), pkUnreachable);
}

TEST(PathKind, ErrorsOfTheWayAreNoAnswer) {
    TSlowDisk disk;
    const std::string path = "C:\\some path";
    for (const int error : {ERROR_BAD_NETPATH, ERROR_BAD_NET_NAME, ERROR_NOT_READY, ERROR_NETWORK_UNREACHABLE}) {
        disk.Fail(path, static_cast<DWORD>(error));
        EXPECT_EQ(KindOfPath(path), pkUnreachable) << error;
    }
    for (const int error : {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_INVALID_NAME}) {
        disk.Fail(path, static_cast<DWORD>(error));
        EXPECT_EQ(KindOfPath(path), pkNothing) << error;
    }
}

TEST(PathKind, AComputerThatIsNotThereHasNothing) {
    const TPathKind kind = KindOfPath("\\\\kx-no-such-computer\\share");
    EXPECT_TRUE(kind == pkNothing || kind == pkUnreachable) << kind;
}

} // namespace
} // namespace kx
