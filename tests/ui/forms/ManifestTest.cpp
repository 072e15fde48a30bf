// SPDX-License-Identifier: MIT
// What the manifest tells Windows.

#include "kx/win/Windows.h"

#include <gmock/gmock.h>

#include <string>

// What a program that carries the manifest tells Windows. Its code page shows which programs those are.

namespace kx {
namespace {

std::string Manifest() {
    const HMODULE program = GetModuleHandleA(nullptr);
    const HRSRC found = FindResourceA(program, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(24)); // RT_MANIFEST
    if (!found) {
        return {};
    }
    return {static_cast<const char*>(LockResource(LoadResource(program, found))), SizeofResource(program, found)};
}

TEST(Manifest, TellsWindowsWhatItWouldGuessOtherwise) {
    const std::string text = Manifest();
    ASSERT_EQ(text.empty(), GetACP() != CP_UTF8);
    if (text.empty()) {
        return; // a program without it, in the system's code page
    }
    using testing::HasSubstr;
    EXPECT_THAT(text, HasSubstr("UTF-8</activeCodePage>"));
    EXPECT_THAT(text, HasSubstr("level=\"asInvoker\"")) << "else a 32-bit \"setup\" asks for the administrator";
    EXPECT_THAT(text, HasSubstr(">true</dpiAware>")) << "else the system stretches the windows";
    EXPECT_THAT(text, HasSubstr(">system</dpiAwareness>")) << "else a dialog may switch the process over";
    for (const char* system : {"35138b9a-5d96-4fbd-8e2d-a2440225f93a", "4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38",
                               "1f676c76-80e1-4239-95bb-83d0f6d0da78", "8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a"}) {
        EXPECT_THAT(text, HasSubstr(std::string("<supportedOS Id=\"{") + system + "}\"/>"));
    }
}

} // namespace
} // namespace kx
