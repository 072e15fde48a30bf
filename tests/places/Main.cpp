// SPDX-License-Identifier: MIT
// The test program, which writes to the registry beside itself when it is told to.

#include "Writer.h"

#include <gtest/gtest.h>

#include <string_view>

// The test program, which is also the second process of those tests that need one.
int main(int argc, char** argv) {
    if (argc == 4 && std::string_view(argv[1]) == kx::test::WriterOption) {
        return kx::test::RunWriter(argv[2], argv[3]);
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
