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

void TProject::ReadFolder() {
    WIN32_FIND_DATAA found;
    std::vector<std::string> names;
    const HANDLE search = FindFirstFileA((FPath + "\\*.dfm").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && HasExtension(found.cFileName, ".dfm")) {
                names.emplace_back(found.cFileName);
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    std::ranges::sort(names, {}, [](const std::string& name) { return UpperCase(name); });
    for (const std::string& name : names) {
        FDocuments.push_back(std::make_unique<TDocument>(FHost, FPath + "\\" + name));
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

} // namespace

const TDocument* TProject::AncestorOf(const TDocument& document, const std::string& bytes) const {
    const std::optional<TFormNode> form = TreeOf(bytes);
    if (!form || !form->Flags.Contains(ffInherited)) {
        return nullptr;
    }
    const std::string named = BaseInCode(document.FileName(), form->ClassName);
    const TDocument* found = nullptr;
    for (const auto& other : FDocuments) {
        std::optional<TFormNode> tree;
        try {
            tree = other.get() == &document ? std::nullopt : TreeOf(other->FormBytes());
        } catch (const Exception&) {
            continue; // its file is not there
        }
        if (!tree) {
            continue;
        }
        if (!named.empty() && tree->ClassName == named) {
            return other.get();
        }
        if (named.empty() && Brings(*tree, *form)) {
            if (found) {
                return nullptr; // two: nobody can tell
            }
            found = other.get();
        }
    }
    return found;
}

TAncestorFiles TProject::AncestorsOf(const TDocument& document, const std::string& bytes) const {
    TAncestorFiles files;
    std::vector<const TDocument*> passed{&document};
    for (const TDocument* ancestor = AncestorOf(document, bytes); ancestor;) {
        if (std::ranges::find(passed, ancestor) != passed.end()) {
            return {}; // in a circle
        }
        passed.push_back(ancestor);
        files.insert(files.begin(), ancestor->FormBytes());
        ancestor = AncestorOf(*ancestor, files.front());
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

void TProject::SaveAs(const std::string& path) {
    const std::string before = std::exchange(FPath, path);
    const bool hadFile = std::exchange(FHasFile, true);
    try {
        Save();
    } catch (...) {
        FPath = before;
        FHasFile = hadFile;
        throw;
    }
}

} // namespace kx::designer
