// SPDX-License-Identifier: MIT
// Names of fonts in any script.

#include "kx/graphics/Graphics.h"
#include "kx/win/Windows.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

// Built twice: into a program whose code page is the system's, and into one whose code page is UTF-8.

namespace kx {
namespace {

using namespace test;

/// A face name of 24 characters, of 48 bytes in UTF-8: more bytes than the system has room for characters.
const char* const Face = "Шрифт для русских чертеж";

TEST(FontNames, CountCharactersNotBytes) {
    if (!CodePageHolds(Face)) {
        EXPECT_NE(GetACP(), static_cast<UINT>(CP_UTF8)); // the same with names that this code page has: see Font
        return;
    }
    TFont font;
    font.SetName(FromUtf8(Face));
    LOGFONTW look = {};
    ASSERT_NE(GetObjectW(font.Handle(), sizeof(look), &look), 0);
    EXPECT_STREQ(look.lfFaceName, L"Шрифт для русских чертеж");
    TFont copy;
    copy.SetHandle(font.Handle());
    EXPECT_EQ(copy.Name(), FromUtf8(Face));
}

TEST(FontNames, OfTheSystemAreRead) {
    LOGFONTW look = {};
    look.lfHeight = -12;
    const std::wstring name = ToWide(FromUtf8(CodePageHolds(Face) ? Face : "Schöne Schrift"));
    name.copy(look.lfFaceName, LF_FACESIZE - 1);
    const unique_hfont handle(CreateFontIndirectW(&look));
    TFont font;
    font.SetHandle(handle.get());
    EXPECT_EQ(ToWide(font.Name()), name);
}

} // namespace
} // namespace kx
