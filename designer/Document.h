// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"
#include "kx/ide/Projects.h"

#include <memory>
#include <optional>
#include <string>

namespace kx::designer {

class TDocument;

/// What documents ask of the designer's window.
class IDocumentHost {
public:
    /// Shows the document, which is open.
    virtual void ShowDocument(TDocument& document) = 0;
    virtual HWND FormWindow() = 0; ///< Inside which forms are read; null while there is none.
    /// The document has been opened; its designer tells the host what happens from now on.
    virtual void DocumentOpened(TDocument& document) = 0;
    /// The files of the forms on which the one in `bytes` stands, the first ancestor first; empty when it inherits
    /// nothing, or from a form that nobody knows.
    virtual TAncestorFiles AncestorsOf(const TDocument& document, const std::string& bytes) = 0;

protected:
    ~IDocumentHost() = default;
};

/// A form file, and the form in it once it is open.
class TDocument final : public IModule, private IModuleEditor {
public:
    /// `path` is a full path; the file need not be there yet.
    TDocument(IDocumentHost& host, std::string path);
    TDocument(const TDocument&) = delete;
    TDocument& operator=(const TDocument&) = delete;
    ~TDocument();

    // --- IModule

    TModuleKind Kind() const override { return mdForm; }
    std::string FileName() const override { return FPath; }
    std::string FormName() const override;
    /// @throws EFOpenError, EParserError, EReadError: the file is left alone.
    void Open() override;
    int EditorCount() const override { return FDesigner ? 1 : 0; }
    IModuleEditor& Editor(int index) override;

    // --- The form

    bool IsOpen() const { return FDesigner != nullptr; }
    std::string FormBytes() const; ///< Of the form as it is now, open or not. @throws EFOpenError
    void FollowAncestors();        ///< Takes over what they bring now. @throws as Open
    TFormDesigner& Designer() const { return *FDesigner; } ///< Of an open document.
    void Close();                                          ///< What is not saved is lost.
    /// A new form, which has no file yet. @throws as Open
    void StartWith(const std::string& text);

    const std::string& LineBreak() const { return FLineBreak; } ///< Of the file, or of one that is still to come.
    bool IsModified() const;                                    ///< The file does not hold the form as it is.
    /// Writes the file in the format that it had. @throws EFCreateError and others: the file is as before.
    void Save();
    void SaveAs(const std::string& path);
    /// The file is not what was read or written here last.
    bool IsChangedByOthers() const;
    void IgnoreChangeByOthers(); ///< The next save may overwrite it.
    void Reload();               ///< Takes what the file holds now, as one step that can be undone. @throws as Open

    // --- A copy of what is not saved, for the next start after a crash

    std::string RecoveryPath() const { return FPath + ".~recover"; }
    /// Writes the copy when something has changed since, and deletes it when nothing is left to save. Fails silently.
    void UpdateRecovery();
    bool HasRecovery() const;
    void Recover(); ///< Takes the copy as an unsaved change. @throws as Open
    void DropRecovery();

private:
    void Show() override { FHost.ShowDocument(*this); }
    std::string FileBytes() const; ///< The form as it is, in the format of the file.

    IDocumentHost& FHost;
    std::string FPath;
    std::unique_ptr<TFormDesigner> FDesigner;
    std::string FSavedState;            ///< What the file holds, in the binary form.
    std::optional<std::string> FOnDisk; ///< Its bytes; empty when there is no file yet.
    bool FIsText = true;
    bool FIsResource = false;
    std::string FLineBreak = "\r\n";
    std::string FRecovered; ///< The state that the copy holds.
};

} // namespace kx::designer
