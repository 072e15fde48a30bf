// SPDX-License-Identifier: MIT
// Projects and files, as the menus of the designer offer them.

#include "designer/DesignerForm.h"
#include "designer/Files.h"
#include "designer/Settings.h"
#include "designer/Templates.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {

constexpr const char* FormFilter = "Forms (*.dfm)|*.dfm|All files (*.*)|*.*";
constexpr const char* AnyFilter = "Projects and forms (*.kxproj;*.dfm)|*.kxproj;*.dfm|All files (*.*)|*.*";
constexpr const char* ProjectFilter = "Projects (*.kxproj)|*.kxproj";
constexpr const char* RecentSettings = "Recent";
constexpr int MostRecent = 8;

} // namespace

void TDesignerForm::OpenFile() {
    TOpenDialog dialog(this);
    dialog.SetTitle("Open");
    dialog.SetFilter(AnyFilter);
    dialog.SetOptions({ofFileMustExist, ofHideReadOnly});
    if (dialog.Execute()) {
        OpenPath(dialog.FileName());
    }
}

bool TDesignerForm::SaveDocumentAs(TDocument& document) {
    if (!TakeText()) {
        return false;
    }
    TSaveDialog dialog(this);
    dialog.SetTitle("Save " + NameOfFile(document.FileName()) + " as");
    dialog.SetFilter(FormFilter);
    dialog.SetDefaultExt("dfm");
    dialog.SetFileName(document.FileName());
    dialog.SetOptions({ofOverwritePrompt, ofHideReadOnly, ofPathMustExist});
    if (!dialog.Execute()) {
        return false;
    }
    const std::string path = FullPath(dialog.FileName());
    const TDocument* const other = FProject->Find(path);
    const bool saved = Attempt([&] {
        if (other && other != &document) {
            throw EDesignError(NameOfFile(path) + " belongs to the project already");
        }
        document.SaveAs(path);
    });
    UpdateTitle();
    return saved;
}

void TDesignerForm::NewProject() {
    TSaveDialog dialog(this);
    dialog.SetTitle("New project");
    dialog.SetFilter(ProjectFilter);
    dialog.SetDefaultExt("kxproj");
    dialog.SetOptions({ofOverwritePrompt, ofHideReadOnly, ofPathMustExist});
    if (!dialog.Execute() || !CloseAll()) {
        return;
    }
    const std::string path = FullPath(dialog.FileName());
    Attempt([&] {
        DeleteFileW(ToWide(path).c_str()); // the user has agreed to replace it
        auto project = std::make_unique<TProject>(*this, path);
        project->Save();
        SetProject(std::move(project));
        AddRecent(path);
    });
}

void TDesignerForm::NewForm(TFormTemplate kind) {
    TSaveDialog dialog(this);
    dialog.SetTitle("New form");
    dialog.SetFilter(FormFilter);
    dialog.SetDefaultExt("dfm");
    dialog.SetOptions({ofOverwritePrompt, ofHideReadOnly, ofPathMustExist});
    if (FProject) {
        dialog.SetInitialDir(FProject->Folder());
    }
    if (!dialog.Execute()) {
        return;
    }
    const std::string path = FullPath(dialog.FileName());
    Attempt([&] {
        const std::string text = NewFormText(NameOfFile(path), kind);
        if (!FProject) {
            SetProject(std::make_unique<TProject>(*this, path));
        }
        TDocument* document = FProject->Find(path);
        if (document && document->IsOpen()) {
            throw EDesignError(NameOfFile(path) + " is open already");
        }
        document = document ? document : &FProject->Add(path);
        document->StartWith(text);
        document->Save();
        if (FProject->MainForm().empty()) {
            FProject->SetMainForm(document->Designer().Form().Name());
        }
        FocusForm();
    });
    UpdateAll();
}

/// The form leaves the project; its file stays.
void TDesignerForm::RemoveForm() {
    TDocument* const document = FDocument;
    if (document && FProject->HasFile() && CloseDocument(*document)) {
        FProject->Remove(*document);
        UpdateAll();
    }
}

/// The form with which the project opens.
void TDesignerForm::ToggleMainForm() {
    if (FDocument && FProject->HasFile()) {
        const std::string name = FDocument->FormName();
        FProject->SetMainForm(FProject->MainForm() == name ? std::string() : name);
        UpdateMenus();
    }
}

std::vector<std::string> TDesignerForm::RecentPaths() const {
    const TSettings settings(RecentSettings);
    std::vector<std::string> paths;
    for (int i = 1; i <= MostRecent; ++i) {
        const std::string path = settings.Text(IntToStr(i));
        if (!path.empty()) {
            paths.push_back(path);
        }
    }
    return paths;
}

void TDesignerForm::AddRecent(const std::string& path) {
    std::vector<std::string> paths = RecentPaths();
    std::erase_if(paths, [&](const std::string& one) { return SameText(one, path); });
    paths.insert(paths.begin(), path);
    const TSettings settings(RecentSettings);
    for (int i = 0; i < std::min(static_cast<int>(paths.size()), MostRecent); ++i) {
        settings.SetText(IntToStr(i + 1), paths[static_cast<size_t>(i)]);
    }
}

void TDesignerForm::ShowRecent() {
    RecentMenu->Clear();
    for (const std::string& path : RecentPaths()) {
        auto* const item = new TMenuItem(this);
        item->SetCaption(path);
        item->SetOnClick([this, path](TObject*) { OpenPath(path); });
        RecentMenu->Add(item);
    }
    RecentMenu->SetEnabled(RecentMenu->Count() > 0);
}

} // namespace kx::designer
