// SPDX-License-Identifier: MIT
#pragma once

#include "support/Screen.h"
#include "tests/support/TestDriver.h"

namespace kx::test {

/// Takes the picture docs/pictures/NAME.png of a window: into that file when KX_UPDATE is in the environment, else
/// where tests leave their pictures. A test failure when the window cannot be seen, or when the page lacks the picture.
inline void PagePicture(const std::string& name, HWND window) {
    const std::string page = std::string(KX_TEST_DATA "/../../../docs/pictures/") + name + ".png";
    if (GetEnvironmentVariableA("KX_UPDATE", nullptr, 0) != 0) {
        EXPECT_TRUE(CaptureWindow(window, page)) << "cannot write " << page;
    }
    EXPECT_NE(Screenshot(name, window), "") << "no picture of " << name;
    EXPECT_NE(GetFileAttributesA(page.c_str()), INVALID_FILE_ATTRIBUTES) << "there is no " << page;
}

} // namespace kx::test
