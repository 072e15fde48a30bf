// SPDX-License-Identifier: MIT
// Reads, keeps and writes a form file.

#include "designer/Document.h"

#include "designer/Files.h"
#include "kx/core/FormText.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

namespace kx::designer {

TDocument::TDocument(IDocumentHost& host, std::string path) : FHost(host), FPath(std::move(path)) {}
TDocument::~TDocument() = default;

std::string TDocument::FormName() const {
    if (FDesigner) {
        return FDesigner->Form().Name();
    }
    try {
        const std::string bytes = ReadWholeFile(FPath);
        TStaticMemoryStream stream(bytes.data(), bytes.size());
        if (TestStreamFormat(stream) == TStreamFormat::Text) { // "object Name: TClass"
            const size_t line = bytes.find_first_of("\r\n");
            const std::string first = bytes.substr(0, line);
            const size_t colon = first.find(':');
            const std::string head = Trim(first.substr(0, colon));
            const size_t blank = head.rfind(' ');
            return colon == std::string::npos || blank == std::string::npos ? std::string() : head.substr(blank + 1);
        }
        return ParseForm(bytes).Name;
    } catch (const Exception&) {
        return {}; // nobody can read it
    }
}

void TDocument::Open() {
    if (FDesigner) {
        return;
    }
    const std::string bytes = ReadWholeFile(FPath);
    TStaticMemoryStream stream(bytes.data(), bytes.size());
    const TStreamFormat format = TestStreamFormat(stream);
    FIsText = format == TStreamFormat::Text || format == TStreamFormat::Unknown;
    FIsResource = format == TStreamFormat::Resource;
    FLineBreak = FIsText ? LineBreakOf(bytes) : "\r\n";
    FDesigner = std::make_unique<TFormDesigner>(bytes, FHost.FormWindow(), FHost.AncestorsOf(*this, bytes));
    FSavedState = FDesigner->State();
    FOnDisk = bytes;
    FHost.DocumentOpened(*this);
}

void TDocument::StartWith(const std::string& text) {
    FDesigner = std::make_unique<TFormDesigner>(text, FHost.FormWindow());
    FSavedState.clear();
    FOnDisk.reset();
    FHost.DocumentOpened(*this);
}

std::string TDocument::FormBytes() const { return FDesigner ? FDesigner->State() : ReadWholeFile(FPath); }

void TDocument::FollowAncestors() {
    if (FDesigner) {
        FDesigner->SetAncestors(FHost.AncestorsOf(*this, FDesigner->State()));
    }
}

void TDocument::Close() { FDesigner.reset(); }

IModuleEditor& TDocument::Editor(int index) {
    if (index != 0 || !FDesigner) {
        throw EListError("List index out of bounds (" + IntToStr(index) + ")");
    }
    return *this;
}

bool TDocument::IsModified() const { return FDesigner && FDesigner->State() != FSavedState; }

std::string TDocument::FileBytes() const {
    const std::string& state = FDesigner->State();
    if (state == FSavedState && FOnDisk) {
        return *FOnDisk; // with the layout that its writer gave it
    }
    if (FIsText) {
        return FormText(state, FLineBreak);
    }
    std::string binary = FDesigner->PlainState();
    if (!FIsResource) {
        return binary;
    }
    TMemoryStream resource;
    WriteResHeader(resource, FDesigner->FormClass(), static_cast<uint32_t>(binary.size()));
    resource.WriteBuffer(binary.data(), binary.size());
    return std::string(resource.Bytes());
}

void TDocument::Save() {
    const std::string bytes = FileBytes();
    WriteWholeFile(FPath, bytes);
    FOnDisk = bytes;
    FSavedState = FDesigner->State();
    DropRecovery();
}

void TDocument::SaveAs(const std::string& path) {
    const std::string recovery = RecoveryPath();
    const std::string before = std::exchange(FPath, path);
    try {
        Save();
        DeleteFileW(ToWide(recovery).c_str());
    } catch (...) {
        FPath = before;
        throw;
    }
}

bool TDocument::IsChangedByOthers() const {
    if (!FDesigner || !FOnDisk) {
        return false;
    }
    try {
        return ReadWholeFile(FPath) != *FOnDisk;
    } catch (const Exception&) {
        return !FileExists(FPath); // held by others for a moment, perhaps
    }
}

void TDocument::IgnoreChangeByOthers() {
    try {
        FOnDisk = ReadWholeFile(FPath);
    } catch (const Exception&) {
        FOnDisk.reset();
    }
    FSavedState.clear(); // whatever the file holds now, it is not this form
}

void TDocument::Reload() {
    const std::string bytes = ReadWholeFile(FPath);
    FDesigner->Replace(bytes, "Reload");
    FOnDisk = bytes;
    FSavedState = FDesigner->State();
    DropRecovery();
}

void TDocument::UpdateRecovery() {
    if (!FDesigner || FDesigner->IsBusy()) {
        return;
    }
    if (!IsModified()) {
        if (!FRecovered.empty()) {
            DropRecovery();
        }
    } else if (FRecovered != FDesigner->State()) {
        try {
            WriteWholeFile(RecoveryPath(), FileBytes());
            FRecovered = FDesigner->State();
        } catch (const Exception&) {
            FRecovered.clear(); // the folder may be read-only
        }
    }
}

bool TDocument::HasRecovery() const { return FileExists(RecoveryPath()); }

void TDocument::Recover() { FDesigner->Replace(ReadWholeFile(RecoveryPath()), "Recover"); }

void TDocument::DropRecovery() {
    FRecovered.clear();
    DeleteFileW(ToWide(RecoveryPath()).c_str());
}

} // namespace kx::designer
