// SPDX-License-Identifier: MIT
// Makes the files and folders that the pages open.

#include "SampleFiles.h"

#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <string_view>

namespace kx::gallery {

namespace {

constexpr std::string_view readMe =
    "These files were made for the gallery's dialogs.\r\n"
    "\r\n"
    "Select one of them in a dialog and look at its preview: pictures are scaled to the\r\n"
    "room they find, texts are read in the encoding chosen below the file list.\r\n"
    "\r\n"
    "The folder goes when the gallery is closed.\r\n";

constexpr std::string_view greetings = "Grüße aus Köln\r\n"
                                       "\r\n"
                                       "Liebe Zoë,\r\n"
                                       "schöne Grüße vom Rhein! Das Café am Fluß hat noch geöffnet,\r\n"
                                       "und die Brücke ist wieder frei.\r\n"
                                       "\r\n"
                                       "Dein Jürgen\r\n";

constexpr std::string_view toDo = "Список дел\r\n"
                                  "\r\n"
                                  "1. Проверить чертежи\r\n"
                                  "2. Позвонить в мастерскую\r\n"
                                  "3. Отправить письмо\r\n";

constexpr std::string_view order = "注文書\r\n"
                                   "\r\n"
                                   "品名: 写真立て\r\n"
                                   "数量: 12\r\n";

constexpr std::string_view offer = "Angebot Nr. 118\r\n"
                                   "\r\n"
                                   "3 Türen, Eiche, geölt\r\n"
                                   "2 Fenster, dreifach verglast\r\n";

void SaveText(const std::string& path, std::string_view text) {
    TFileStream file(path, fmCreate);
    file.WriteBuffer(text.data(), text.size());
}

/// The text in the code page of Western European Windows.
std::string ToWestern(std::string_view utf8) {
    std::wstring wide(utf8.size(), L'\0');
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(),
                                          static_cast<int>(wide.size()));
    std::string bytes(static_cast<size_t>(units), '\0');
    WideCharToMultiByte(1252, 0, wide.data(), units, bytes.data(), units, nullptr, nullptr);
    return bytes;
}

void MakeFolder(const std::string& path) {
    if (CreateDirectoryA(path.c_str(), nullptr) == 0) {
        RaiseLastOSError();
    }
}

/// A new folder that no other running gallery uses.
std::string MakeOwnFolder() {
    std::string folder(MAX_PATH + 1, '\0');
    folder.resize(GetTempPathA(static_cast<DWORD>(folder.size()), folder.data()));
    folder = IncludeTrailingPathDelimiter(folder) + "Gallery samples";
    std::string candidate = folder;
    for (int number = 2; CreateDirectoryA(candidate.c_str(), nullptr) == 0; ++number) {
        if (GetLastError() != ERROR_ALREADY_EXISTS) {
            RaiseLastOSError();
        }
        candidate = folder + " " + IntToStr(number);
    }
    return candidate;
}

void RemoveFolder(const std::string& folder) {
    WIN32_FIND_DATAA entry;
    const HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string_view name = entry.cFileName;
            if (name == "." || name == "..") {
                continue;
            }
            const std::string path = folder + "\\" + entry.cFileName;
            const bool isLink = (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !isLink) {
                RemoveFolder(path);
            } else if (DeleteFileA(path.c_str()) == 0) {
                RemoveDirectoryA(path.c_str()); // a link to a folder
            }
        } while (FindNextFileA(search, &entry) != 0);
        FindClose(search);
    }
    RemoveDirectoryA(folder.c_str());
}

} // namespace

TSampleFiles::TSampleFiles() : FFolder(MakeOwnFolder()) {
    MakeFolder(Path("Drawings"));
    SaveChartPicture(Path("Drawings\\Sales by quarter.bmp"));
    SaveLakePicture(Path("Drawings\\Lake, first draft.bmp"));
    MakeFolder(Path("Letters"));
    SaveText(Path("Letters\\Grüße aus Köln.txt"), ToWestern(greetings));
    SaveText(Path("Letters\\Список дел.txt"), toDo);
    SaveText(Path("Letters\\注文書.txt"), order);
    MakeFolder(Path("Müller & Söhne"));
    SaveText(Path("Müller & Söhne\\Angebot für Türen.txt"), offer);
    MakeFolder(Path("Чертежи"));
    SaveCityPicture(Path("Чертежи\\Город ночью.bmp"));

    SaveLakePicture(Path("Alpine lake.bmp"));
    SaveCityPicture(Path("City at night.bmp"));
    SaveChartPicture(Path("Sales by quarter.bmp"));
    SaveIcon(Path("Gallery.ico"));
    SaveText(Path("Read me first.txt"), readMe);
    SaveText(Path("Grüße aus Köln.txt"), ToWestern(greetings));
    SaveText(Path("Список дел.txt"), toDo);
}

TSampleFiles::~TSampleFiles() { RemoveFolder(FFolder); }

const TSampleFiles& Samples() {
    static const TSampleFiles files;
    return files;
}

} // namespace kx::gallery
