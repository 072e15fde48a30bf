// SPDX-License-Identifier: MIT
// The forms that belong together.

#include "designer/Project.h"

#include "designer/ClassFiles.h"
#include "designer/Files.h"
#include "kx/core/FormText.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <optional>

namespace kx::designer {

namespace {

/// What a project file holds.
class TProjectFile : public TComponent {
    KX_CLASS()

    explicit TProjectFile(TComponent* owner = nullptr) : TComponent(owner) {}

    const std::string& MainForm() const { return FMainForm; }
    void SetMainForm(const std::string& value) { FMainForm = value; }
    TStrings& Forms() { return FForms; }
    void SetForms(const TStrings& value) { FForms.Assign(&value); }

private:
    std::string FMainForm;
    TStringList FForms;
};

const TClass& TProjectFile::StaticClass() {
    static const TClassBuilder<TProjectFile> cls("TProject", TComponent::StaticClass(), [](auto& c) {
        using T = TProjectFile;
        c.Creatable();
        c.Property("MainForm", &T::MainForm, &T::SetMainForm);
        c.SubObject("Forms", &T::Forms, &T::SetForms);
    });
    return cls.Class();
}

} // namespace

TProject::TProject(IDocumentHost& host, const std::string& path) : FHost(host), FPath(FullPath(path)) {
    if (DirectoryExists(FPath)) {
        ReadFolder();
    } else if (HasExtension(FPath, ".kxproj")) {
        FHasFile = true;
        if (FileExists(FPath)) {
            ReadFile();
        }
    } else {
        FDocuments.push_back(std::make_unique<TDocument>(FHost, FPath));
    }
}

TProject::~TProject() = default;

std::string TProject::Folder() const { return DirectoryExists(FPath) ? FPath : FolderOfFile(FPath); }

void TProject::ReadFile() {
    const std::string bytes = ReadWholeFile(FPath);
    TStaticMemoryStream stream(bytes.data(), bytes.size());
    TProjectFile file;
    ReadComponent(stream, &file);
    FMainForm = file.MainForm();
    for (const std::string& form : file.Forms()) {
        const std::string path = JoinPath(Folder(), form);
        if (Find(path)) {
            throw EDesignError("The project " + NameOfFile(FPath) + " names the form file " + form + " twice");
        }
        FDocuments.push_back(std::make_unique<TDocument>(FHost, path));
    }
}

namespace {

/// The paths of the form files in a folder, in alphabetical order.
std::vector<std::string> FormFilesIn(const std::string& folder) {
    WIN32_FIND_DATAW found;
    std::vector<std::string> paths;
    const HANDLE search = FindFirstFileW(ToWide(folder + "\\*.dfm").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = FromWide(found.cFileName);
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && HasExtension(name, ".dfm")) {
                paths.push_back(folder + "\\" + name);
            }
        } while (FindNextFileW(search, &found));
        FindClose(search);
    }
    std::ranges::sort(paths, {}, [](const std::string& path) { return UpperCase(path); });
    return paths;
}

} // namespace

void TProject::ReadFolder() {
    for (const std::string& path : FormFilesIn(FPath)) {
        FDocuments.push_back(std::make_unique<TDocument>(FHost, path));
    }
}

void TProject::SetMainForm(const std::string& value) {
    FModified = FModified || FMainForm != value;
    FMainForm = value;
}

TDocument* TProject::Find(const std::string& path) const {
    for (const auto& document : FDocuments) {
        if (SameText(document->FileName(), path)) {
            return document.get();
        }
    }
    return nullptr;
}

namespace {

/// What `read` reads; nothing of a file that is not there.
template <class F> std::string BytesOf(F read) {
    try {
        return read();
    } catch (const Exception&) {
        return {};
    }
}

/// The form as data, whatever the format of its file; empty when it cannot be read.
std::optional<TFormNode> TreeOf(const std::string& bytes) {
    try {
        TStaticMemoryStream stream(bytes.data(), bytes.size());
        const TStreamFormat format = TestStreamFormat(stream);
        if (format == TStreamFormat::Resource) {
            TMemoryStream text;
            ObjectResourceToText(stream, text);
            return ParseForm(FormBinaryOfText(std::string(text.Bytes())));
        }
        return ParseForm(format == TStreamFormat::Text ? FormBinaryOfText(bytes) : bytes);
    } catch (const Exception&) {
        return std::nullopt;
    }
}

/// `form` has all that `node` inherits, each of its class.
bool Brings(TFormNode& form, const TFormNode& node) {
    return std::ranges::all_of(node.Children, [&](const TFormNode& child) {
        const TFormNode* const known = FindNode(form, child.Name);
        const bool isBrought = known && known != &form && SameText(known->ClassName, child.ClassName);
        return (!child.Flags.Contains(ffInherited) || isBrought) && Brings(form, child);
    });
}

bool InheritsComponents(const TFormNode& node) {
    return std::ranges::any_of(node.Children, [](const TFormNode& child) {
        return child.Flags.Contains(ffInherited) || InheritsComponents(child);
    });
}

} // namespace

/// Those of the files that may be the form's ancestor: of the class that is `named`, or, without a name, with all that
/// is inherited.
std::vector<TProject::TFormFile> TProject::Ancestors(std::vector<TFormFile> files, const TFormNode& form,
                                                     const std::string& named) {
    std::erase_if(files, [&](const TFormFile& file) {
        std::optional<TFormNode> tree = TreeOf(file.Bytes);
        return !tree || !(named.empty() ? Brings(*tree, form) : tree->ClassName == named);
    });
    return files;
}

/// Looked for in the project first, then among the other form files beside the form's own.
std::optional<TProject::TFormFile> TProject::AncestorOf(const TFormFile& file) const {
    const std::optional<TFormNode> form = TreeOf(file.Bytes);
    if (!form || !form->Flags.Contains(ffInherited)) {
        return std::nullopt; // most forms: no code is read for them
    }
    const std::string named = BaseInCode(file.Path, form->ClassName);
    if (named.empty() && !InheritsComponents(*form)) {
        return std::nullopt;
    }
    std::vector<TFormFile> files;
    for (const auto& document : FDocuments) {
        if (!SameText(document->FileName(), file.Path)) {
            files.push_back({document->FileName(), BytesOf([&] { return document->FormBytes(); })});
        }
    }
    files = Ancestors(std::move(files), *form, named);
    if (files.empty()) {
        for (const std::string& path : FormFilesIn(FolderOfFile(file.Path))) {
            if (!Find(path) && !SameText(path, file.Path)) {
                files.push_back({path, BytesOf([&] { return ReadWholeFile(path); })});
            }
        }
        files = Ancestors(std::move(files), *form, named);
    }
    const bool isKnown = files.size() == 1 || (!named.empty() && !files.empty()); // of two nobody can tell
    return isKnown ? std::optional(std::move(files.front())) : std::nullopt;
}

TAncestorFiles TProject::AncestorsOf(const TDocument& document, const std::string& bytes) const {
    TAncestorFiles files;
    std::vector<std::string> passed{document.FileName()};
    for (std::optional<TFormFile> ancestor = AncestorOf({document.FileName(), bytes}); ancestor;
         ancestor = AncestorOf(*ancestor)) {
        if (std::ranges::find(passed, ancestor->Path) != passed.end()) {
            return {}; // in a circle
        }
        passed.push_back(ancestor->Path);
        files.insert(files.begin(), ancestor->Bytes);
    }
    return files;
}

TDocument& TProject::Add(const std::string& path) {
    if (Find(path)) {
        throw EDesignError(NameOfFile(path) + " belongs to the project already");
    }
    FModified = FHasFile;
    return *FDocuments.emplace_back(std::make_unique<TDocument>(FHost, path));
}

void TProject::Remove(TDocument& document) {
    std::erase_if(FDocuments, [&](const auto& one) { return one.get() == &document; });
    FModified = FHasFile;
}

void TProject::Save() {
    TProjectFile file;
    file.SetName("Project");
    file.SetMainForm(FMainForm);
    for (const auto& document : FDocuments) {
        file.Forms().Add(RelativePath(Folder(), document->FileName()));
    }
    TMemoryStream stream;
    WriteComponent(stream, file, TStreamFormat::Text);
    WriteWholeFile(FPath, std::string(stream.Bytes()));
    FModified = false;
}

} // namespace kx::designer
