// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx::gallery {

/// A folder of files to open: texts in several scripts and encodings, pictures, an icon. It is made in the folder for
/// temporary files and removed, with whatever has come into it, when the object goes.
///
/// @throws EOSError when the folder cannot be made, EFCreateError for a file.
class TSampleFiles {
public:
    TSampleFiles();
    TSampleFiles(const TSampleFiles&) = delete;
    TSampleFiles& operator=(const TSampleFiles&) = delete;
    ~TSampleFiles();

    const std::string& Folder() const { return FFolder; } ///< Full path without a backslash at the end.
    /// Full path of an entry.
    std::string Path(const std::string& name) const { return FFolder + "\\" + name; }

private:
    std::string FFolder;
};

/// Those of this run, made on first use.
const TSampleFiles& Samples();

// --- The pictures

void SaveLakePicture(const std::string& path);
void SaveCityPicture(const std::string& path);
void SaveChartPicture(const std::string& path);
void SaveIcon(const std::string& path);

} // namespace kx::gallery
