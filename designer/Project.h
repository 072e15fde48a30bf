// SPDX-License-Identifier: MIT
#pragma once

#include "designer/Document.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kx::designer {

/// The forms that are designed together: those that a project file names, or all of a folder.
///
/// A project file is a form text: "object Project: TProject", the name of the main form, and the form files with paths
/// relative to its own.
class TProject final : public IProject {
public:
    /// Opens a project file or a folder, or makes a project of a single form file.
    /// @throws EFOpenError, EParserError, EReadError; EDesignError for a project that names a file twice.
    TProject(IDocumentHost& host, const std::string& path);
    TProject(const TProject&) = delete;
    TProject& operator=(const TProject&) = delete;
    ~TProject();

    std::string FileName() const override { return FPath; }
    int ModuleCount() const override { return static_cast<int>(FDocuments.size()); }
    TDocument& Module(int index) override { return *FDocuments.at(static_cast<size_t>(index)); }

    bool HasFile() const { return FHasFile; } ///< Else it stands for a folder, or a single form.
    std::string Folder() const;
    const std::string& MainForm() const { return FMainForm; } ///< Name of a form.
    void SetMainForm(const std::string& value);
    bool IsModified() const { return FModified; }

    /// The forms on which the one in `bytes`, of that document, stands, the first ancestor first. Its class's header
    /// names the ancestor's class; without that it is the one form of the project that has all components that are
    /// inherited. An ancestor that the project does not have is looked for in the folder of the form's file.
    TAncestorFiles AncestorsOf(const TDocument& document, const std::string& bytes) const;
    /// The document of that file; null when it does not belong to the project.
    TDocument* Find(const std::string& path) const;
    TDocument& Add(const std::string& path); ///< @throws EDesignError when it is there already.
    void Remove(TDocument& document);        ///< The file stays.
    void Save();                             ///< @throws EFCreateError and others

private:
    struct TFormFile {
        std::string Path;
        std::string Bytes;
    };
    static std::vector<TFormFile> Ancestors(std::vector<TFormFile> files, const TFormNode& form,
                                            const std::string& named);
    std::optional<TFormFile> AncestorOf(const TFormFile& file) const;
    void ReadFile();
    void ReadFolder();

    IDocumentHost& FHost;
    std::string FPath;
    bool FHasFile = false;
    bool FModified = false;
    std::string FMainForm;
    std::vector<std::unique_ptr<TDocument>> FDocuments;
};

} // namespace kx::designer
