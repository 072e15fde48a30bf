// SPDX-License-Identifier: MIT
// Our headers beside the system's.

#include "UserCode.h"

#include "kx/ui/widgets/ComCtrlsTree.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

void ExpectAllWorks(const TUserResults& results) {
    EXPECT_TRUE(results.WindowWorks);
    EXPECT_TRUE(results.DrawingWorks);
    EXPECT_TRUE(results.ObjectsWork);
    EXPECT_TRUE(results.OursWork);
}

TEST(Headers, GoBehindTheSystemsInOrdinaryCode) {
    ExpectAllWorks(SystemHeadersFirst());
    EXPECT_FALSE(SystemHeadersFirst().Unicode);
}

TEST(Headers, GoBehindMacrosWithParameters) {
    TTreeView tree(nullptr);
    TTreeNode& node = tree.Items().Add(nullptr, "node");
    tree.Items().AddChild(&node, "first");
    tree.Items().AddChild(&node, "second");
    EXPECT_TRUE(WalkBehindSystemHeaders(node));
}

TEST(Headers, GoBeforeTheSystemsInOrdinaryCode) {
    ExpectAllWorks(OurHeadersFirst());
    EXPECT_FALSE(OurHeadersFirst().Unicode);
}

TEST(Headers, GoTogetherWithUnicodePrograms) {
    ExpectAllWorks(UnicodeProgram());
    EXPECT_TRUE(UnicodeProgram().Unicode);
}

TEST(Headers, OfTheCoreGoBeforeTheSystems) { ExpectAllWorks(CoreHeadersFirst()); }

} // namespace
} // namespace kx
