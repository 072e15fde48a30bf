// SPDX-License-Identifier: MIT
// A library of icons, made for tests.

#include "IconLibrary.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

namespace kx::test {

namespace {

constexpr int IconExtent = 32;

void Append(std::vector<uint8_t>& bytes, const void* data, size_t length) {
    const auto* const first = static_cast<const uint8_t*>(data);
    bytes.insert(bytes.end(), first, first + length);
}

/// Picture and mask of an icon as a resource holds them.
std::vector<uint8_t> IconImage(TColor color) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = IconExtent;
    header.biHeight = 2 * IconExtent;
    header.biPlanes = 1;
    header.biBitCount = 24;
    std::vector<uint8_t> bytes;
    Append(bytes, &header, sizeof header);
    const auto value = static_cast<COLORREF>(color);
    const uint8_t pixel[] = {GetBValue(value), GetGValue(value), GetRValue(value)};
    for (int i = 0; i < IconExtent * IconExtent; ++i) {
        Append(bytes, pixel, sizeof pixel);
    }
    bytes.resize(bytes.size() + IconExtent * IconExtent / 8); // nothing is transparent
    return bytes;
}

/// A group of that one picture.
std::vector<uint8_t> IconGroup(WORD id, DWORD imageSize) {
    const WORD head[] = {0, 1, 1};
    const uint8_t extent[] = {IconExtent, IconExtent, 0, 0};
    const WORD planesAndBits[] = {1, 24};
    std::vector<uint8_t> bytes;
    Append(bytes, head, sizeof head);
    Append(bytes, extent, sizeof extent);
    Append(bytes, planesAndBits, sizeof planesAndBits);
    Append(bytes, &imageSize, sizeof imageSize);
    Append(bytes, &id, sizeof id);
    return bytes;
}

/// A library without anything in it: headers, and a section of a few bytes.
std::string EmptyLibrary() {
    constexpr DWORD alignment = 0x1000;
    constexpr DWORD fileAlignment = 0x200;
    IMAGE_DOS_HEADER dos{};
    dos.e_magic = IMAGE_DOS_SIGNATURE;
    dos.e_lfanew = sizeof dos;
    IMAGE_NT_HEADERS32 nt{};
    nt.Signature = IMAGE_NT_SIGNATURE;
    nt.FileHeader.Machine = IMAGE_FILE_MACHINE_I386;
    nt.FileHeader.NumberOfSections = 1;
    nt.FileHeader.SizeOfOptionalHeader = sizeof nt.OptionalHeader;
    nt.FileHeader.Characteristics = IMAGE_FILE_EXECUTABLE_IMAGE | IMAGE_FILE_32BIT_MACHINE | IMAGE_FILE_DLL;
    nt.OptionalHeader.Magic = IMAGE_NT_OPTIONAL_HDR32_MAGIC;
    nt.OptionalHeader.ImageBase = 0x10000000;
    nt.OptionalHeader.SectionAlignment = alignment;
    nt.OptionalHeader.FileAlignment = fileAlignment;
    nt.OptionalHeader.MajorOperatingSystemVersion = 4;
    nt.OptionalHeader.MajorSubsystemVersion = 4;
    nt.OptionalHeader.SizeOfImage = 2 * alignment;
    nt.OptionalHeader.SizeOfHeaders = fileAlignment;
    nt.OptionalHeader.Subsystem = IMAGE_SUBSYSTEM_WINDOWS_GUI;
    nt.OptionalHeader.NumberOfRvaAndSizes = IMAGE_NUMBEROF_DIRECTORY_ENTRIES;
    IMAGE_SECTION_HEADER section{};
    std::memcpy(section.Name, ".rdata", 6);
    section.Misc.VirtualSize = 16;
    section.VirtualAddress = alignment;
    section.SizeOfRawData = fileAlignment;
    section.PointerToRawData = fileAlignment;
    section.Characteristics = IMAGE_SCN_CNT_INITIALIZED_DATA | IMAGE_SCN_MEM_READ;
    std::vector<uint8_t> bytes;
    Append(bytes, &dos, sizeof dos);
    Append(bytes, &nt, sizeof nt);
    Append(bytes, &section, sizeof section);
    bytes.resize(2 * fileAlignment);
    return {bytes.begin(), bytes.end()};
}

} // namespace

TColor IconColor(int icon) {
    // neighbours differ much, and none is a colour of the system's scheme
    return static_cast<TColor>(RGB(20 + icon, (icon * 83) % 256, 255 - (icon * 29) % 200));
}

std::string MakeIconLibrary(const TTempFolder& folder, const std::string& name, int count, int first) {
    std::string path = folder.AddFile(name, EmptyLibrary());
    const HANDLE update = BeginUpdateResourceA(path.c_str(), TRUE);
    EXPECT_NE(update, nullptr);
    for (int i = 0; i < count; ++i) {
        const auto id = static_cast<WORD>(i + 1);
        std::vector<uint8_t> image = IconImage(IconColor(first + i));
        std::vector<uint8_t> group = IconGroup(id, static_cast<DWORD>(image.size()));
        EXPECT_TRUE(UpdateResourceA(update, reinterpret_cast<LPCSTR>(RT_ICON), MAKEINTRESOURCEA(id), 0, image.data(),
                                    static_cast<DWORD>(image.size())));
        EXPECT_TRUE(UpdateResourceA(update, reinterpret_cast<LPCSTR>(RT_GROUP_ICON), MAKEINTRESOURCEA(id), 0,
                                    group.data(), static_cast<DWORD>(group.size())));
    }
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    return path;
}

} // namespace kx::test
