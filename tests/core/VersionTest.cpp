// SPDX-License-Identifier: MIT
// The version that programs see.

#include "kx/core/Version.h"

#include <gtest/gtest.h>

#include <string>

using namespace kx;

TEST(Version, OfHeadersAndLibraryIsThatOfTheBuild) {
    EXPECT_EQ(HeaderVersion, LibraryVersion());
    EXPECT_STREQ(KX_TEST_VERSION, LibraryVersionText());
    EXPECT_EQ(LibraryVersionText(), std::to_string(KX_VERSION / 1000000) + "." +
                                        std::to_string(KX_VERSION / 1000 % 1000) + "." +
                                        std::to_string(KX_VERSION % 1000));
}

TEST(Version, ComparesInThePreprocessor) {
#if KX_VERSION >= KX_VERSION_NUMBER(7, 0, 0) && KX_VERSION < KX_VERSION_NUMBER(KX_VERSION_MAJOR + 1, 0, 0)
    constexpr bool inRange = true;
#else
    constexpr bool inRange = false;
#endif
    EXPECT_TRUE(inRange);
    EXPECT_LT(KX_VERSION_NUMBER(7, 0, 999), KX_VERSION_NUMBER(7, 1, 0));
    EXPECT_LT(KX_VERSION_NUMBER(7, 999, 999), KX_VERSION_NUMBER(8, 0, 0));
}
