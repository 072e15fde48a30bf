// SPDX-License-Identifier: MIT
// The main window of the form designer.

#include "designer/DesignerForm.h"

#include "designer/ClassFiles.h"
#include "designer/CollectionPaths.h"
#include "designer/Files.h"
#include "designer/Settings.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {
constexpr UINT_PTR RecoveryTimer = 1;
constexpr UINT RecoveryPause = 2000; // milliseconds
} // namespace

const TClass& TDesignerForm::StaticClass() {
    static const TClassBuilder<TDesignerForm> cls("TDesignerForm", TForm::StaticClass(), [](auto& c) {
        using T = TDesignerForm;
        c.Method("CommandClick", &T::CommandClick);
        c.Method("MenuOpens", &T::MenuOpens);
        c.Method("ProjectListClick", &T::ProjectListClick);
        c.Method("FormTabsChange", &T::FormTabsChange);
        c.Method("ViewTabsChange", &T::ViewTabsChange);
        c.Method("TextMemoExit", &T::TextMemoExit);
        c.Method("FormCloseQuery", &T::FormCloseQuery);
        c.Method("FormShow", &T::FormShow);
        c.Method("PanesResize", &T::PanesResize);
    });
    return cls.Class();
}

TDesignerForm::TDesignerForm(TComponent* owner) : TForm(owner) {
    RegisterClasses<TButton, TLabel, TPanel, TListBox, TMemo, TTabControl, TMainMenu, TPopupMenu, TMenuItem,
                    TSplitter>();
    InitForm(*this, StaticClass());
    AddCommands();
    AddArrangeCommands();
    RestorePlace();
    RestoreGrid();
    Palette->ReadPages();
    Palette->Buttons().SetOnChosen([this](TObject*) { Surface->SetTool(Palette->Buttons().Chosen()); });
    Palette->Buttons().SetOnDropWanted([this](TObject*) { DropChosen(); });
    Palette->Buttons().SetOnDragged(
        [this](const TPoint& screen) { Attempt([&] { Surface->DropTool(Surface->ScreenToClient(screen)); }); });
    Surface->SetOnToolUsed([this](TObject*) { Palette->Buttons().SetChosen(Surface->Tool()); });
    Surface->SetOnEdit([this](TObject*) { EditComponent(); });
    Surface->SetOnMenu([this](const TPoint& screen) { ShowFormMenu(screen); });
    Structure->SetOnFailed([this](const std::string& message) { Say(message); });
    SetModuleServices(this);
    // A component that throws while it paints would open a message box each time.
    Application().SetOnException([this](TObject*, const std::exception& error) { Say(error.what()); });
    UpdateAll();
}

TDesignerForm::~TDesignerForm() {
    Destroying();
    Surface->SetDesigner(nullptr);
    Inspector->ShowSelection(nullptr);
    Structure->ShowForm(nullptr);
    FDocument = nullptr;
    FProject.reset();
    SetModuleServices(nullptr);
    Application().SetOnException(nullptr);
}

std::string TDesignerForm::BaseRegistryKey() const { return SettingsKey(); }

void TDesignerForm::WndProc(TMessage& message) {
    TForm::WndProc(message);
    switch (message.Msg) {
    case WM_CREATE: SetTimer(WindowHandle(), RecoveryTimer, RecoveryPause, nullptr); break;
    case WM_TIMER:
        if (message.WParam == RecoveryTimer) {
            for (TDocument* document : OpenDocuments()) {
                document->UpdateRecovery();
            }
        }
        break;
    case WM_ACTIVATEAPP:
        if (message.WParam != 0 && !IsLoading()) {
            Application().QueueCall([this, alive = TAlive(*this)] {
                if (alive) {
                    CheckForChanges();
                }
            });
        }
        break;
    default: break;
    }
}

// --- Messages to the user

void TDesignerForm::Say(const std::string& message) { StatusPanel->SetCaption(" " + message); }

/// Does something that may fail: then a message box says why, and nothing else has happened.
bool TDesignerForm::Attempt(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const EAbort&) {
        return false;
    } catch (const std::exception& error) {
        Say(error.what());
        Application().MessageBox(error.what(), Caption(), MB_OK | MB_ICONERROR);
        return false;
    }
}

// --- Documents

HWND TDesignerForm::FormWindow() { return Surface->Handle(); }

std::vector<TDocument*> TDesignerForm::OpenDocuments() const {
    std::vector<TDocument*> documents;
    for (int i = 0; FProject && i < FProject->ModuleCount(); ++i) {
        if (FProject->Module(i).IsOpen()) {
            documents.push_back(&FProject->Module(i));
        }
    }
    return documents;
}

void TDesignerForm::DocumentOpened(TDocument& document) {
    TFormDesigner& designer = document.Designer();
    const auto isShown = [this, &document] { return FDocument == &document; };
    designer.SetOnChanged([this, isShown] {
        if (isShown()) {
            Surface->UpdateMarks();
            Structure->ShowForm(Current());
            Inspector->UpdateValues();
            RefreshView();
            UpdateTitle();
        } else {
            UpdateTabs(); // which tell what is not saved
        }
    });
    designer.SetOnSelectionChanged([this, isShown] {
        if (isShown()) {
            SelectionShown();
        }
    });
    designer.SetOnFormReplaced([this, isShown] {
        if (isShown()) {
            Surface->FormReplaced();
            Structure->ShowForm(Current());
        }
    });
    designer.SetOnShowMethod([this](const std::string& name) { Say("Handler: " + name); });
    ShowDocument(document);
}

void TDesignerForm::SelectionShown() {
    Surface->UpdateMarks();
    Structure->UpdateSelection();
    Inspector->ShowSelection(Current());
    const TDesignSelection selected = Current()->Selection();
    if (selected.size() == 1) {
        Say(TitleOf(*Current(), *selected.front()));
    } else {
        const bool isComponents = Current()->SelectedComponents().size() == selected.size();
        Say(IntToStr(static_cast<int64_t>(selected.size())) + (isComponents ? " components" : " items") +
            " are selected");
    }
}

void TDesignerForm::ShowDocument(TDocument& document) {
    if (FDocument == &document && Surface->Designer() == Current()) {
        return;
    }
    if (FDocument && FDocument != &document && !TakeText()) {
        UpdateTabs();
        return;
    }
    if (TFormDesigner* const before = Current()) {
        before->Form().SetVisible(false);
    }
    FDocument = &document;
    FView = FormView;
    Attempt([&] { document.FollowAncestors(); });
    Surface->SetDesigner(Current());
    UpdateAll();
}

void TDesignerForm::ShowNone() {
    Surface->SetDesigner(nullptr);
    Inspector->ShowSelection(nullptr);
    Structure->ShowForm(nullptr);
    FDocument = nullptr;
    FView = FormView;
    UpdateAll();
}

void TDesignerForm::OpenDocument(TDocument& document) {
    if (document.IsOpen()) {
        ShowDocument(document);
        return;
    }
    if (Attempt([&] { document.Open(); })) {
        OfferRecovery(document);
        TellOfMissingAncestor(document);
    } else {
        UpdateTabs();
    }
}

/// Keys go to the form that the user has asked for.
void TDesignerForm::FocusForm() {
    if (Active() && Surface->CanFocus()) {
        Surface->SetFocus();
    }
}

/// What a session that ended badly has left.
void TDesignerForm::OfferRecovery(TDocument& document) {
    if (!document.HasRecovery()) {
        return;
    }
    const int answer =
        Application().MessageBox("There are changes to " + NameOfFile(document.FileName()) +
                                     " that were not saved when the designer ended.\n\n" + "Do you want them back?",
                                 Caption(), MB_YESNO | MB_ICONQUESTION);
    if (answer == IDYES) {
        Attempt([&] { document.Recover(); });
    } else {
        document.DropRecovery();
    }
}

void TDesignerForm::TellOfMissingAncestor(const TDocument& document) {
    if (!document.Designer().LacksAncestor()) {
        return;
    }
    const std::string& cls = document.Designer().FormClass();
    const std::string base = BaseInCode(document.FileName(), cls);
    const std::string message = cls + " inherits from " + (base.empty() ? "another form" : base) +
                                ", whose form file is neither in the project nor in the folder of " +
                                NameOfFile(document.FileName()) +
                                ".\n\nWhat comes from there is shown as boxes. Saving loses nothing of it.";
    Say(message.substr(0, message.find('\n')));
    Application().MessageBox(message, Caption(), MB_OK | MB_ICONINFORMATION);
}

bool TDesignerForm::OpenPath(const std::string& path) {
    if (FProject) {
        if (TDocument* const known = FProject->Find(FullPath(path))) {
            OpenDocument(*known);
            return known->IsOpen();
        }
        if (HasExtension(path, ".dfm")) {
            TDocument& document = FProject->Add(FullPath(path));
            OpenDocument(document);
            FocusForm();
            if (!document.IsOpen()) {
                FProject->Remove(document);
            }
            UpdateAll();
            return FProject->Find(FullPath(path)) != nullptr;
        }
    }
    std::unique_ptr<TProject> project;
    if (!CloseAll() || !Attempt([&] { project = std::make_unique<TProject>(*this, path); })) {
        return false;
    }
    SetProject(std::move(project));
    AddRecent(FProject->FileName());
    if (FProject->ModuleCount() > 0) {
        int first = 0;
        for (int i = 0; i < FProject->ModuleCount(); ++i) {
            if (!FProject->MainForm().empty() && FProject->Module(i).FormName() == FProject->MainForm()) {
                first = i;
            }
        }
        OpenDocument(FProject->Module(first));
        FocusForm();
        return FProject->Module(first).IsOpen();
    }
    return true;
}

void TDesignerForm::SetProject(std::unique_ptr<TProject> project) {
    ShowNone();
    FProject = std::move(project);
    UpdateAll();
}

bool TDesignerForm::CloseDocument(TDocument& document) {
    if (!document.IsOpen()) {
        return true;
    }
    if (!MayClose(document)) {
        return false;
    }
    document.DropRecovery();
    const bool wasShown = FDocument == &document;
    if (wasShown) {
        ShowNone();
    }
    document.Close();
    if (wasShown && !OpenDocuments().empty()) {
        ShowDocument(*OpenDocuments().front());
    }
    UpdateAll();
    return true;
}

/// Asks about what is not saved. False: the document stays open.
bool TDesignerForm::MayClose(TDocument& document) {
    if (FDocument == &document && !TakeText()) {
        return false;
    }
    if (!document.IsModified()) {
        return true;
    }
    const int answer = Application().MessageBox("Save the changes to " + NameOfFile(document.FileName()) + "?",
                                                Caption(), MB_YESNOCANCEL | MB_ICONQUESTION);
    return answer == IDNO || (answer == IDYES && SaveDocument(document));
}

bool TDesignerForm::CloseAll() {
    for (TDocument* document : OpenDocuments()) {
        if (!CloseDocument(*document)) {
            return false;
        }
    }
    if (FProject && FProject->IsModified()) {
        return Attempt([&] { FProject->Save(); });
    }
    return true;
}

void TDesignerForm::FormCloseQuery(TObject*, bool& canClose) {
    canClose = CloseAll();
    if (canClose) {
        RememberWindow();
    }
}

bool TDesignerForm::SaveDocument(TDocument& document) {
    if (FDocument == &document && !TakeText()) {
        return false;
    }
    if (document.IsChangedByOthers()) {
        const int answer = Application().MessageBox(NameOfFile(document.FileName()) +
                                                        " has been changed by another program.\n\nOverwrite it?",
                                                    Caption(), MB_YESNO | MB_ICONWARNING);
        if (answer != IDYES) {
            return false;
        }
        document.IgnoreChangeByOthers();
    }
    const bool saved = Attempt([&] { document.Save(); });
    if (saved) {
        Say("Saved " + document.FileName());
    }
    UpdateTitle();
    return saved;
}

void TDesignerForm::CheckForChanges() {
    if (FChecking) {
        return;
    }
    const TFieldScope checking(*this, FChecking, true);
    for (TDocument* document : OpenDocuments()) {
        if (!document->IsChangedByOthers()) {
            continue;
        }
        const int answer = Application().MessageBox(
            NameOfFile(document->FileName()) + " has been changed by another program.\n\nRead it again?" +
                (document->IsModified() ? " Your own changes can be got back by Undo." : ""),
            Caption(), MB_YESNO | MB_ICONQUESTION);
        if (answer != IDYES || !Attempt([&] { document->Reload(); })) {
            document->IgnoreChangeByOthers();
        }
        UpdateTitle();
    }
}

// --- What is shown

void TDesignerForm::UpdateAll() {
    UpdateTabs();
    UpdateView();
    Structure->ShowForm(Current());
    Inspector->ShowSelection(Current());
    UpdateTitle();
}

void TDesignerForm::UpdateTitle() {
    std::string title = "Form designer";
    if (FDocument) {
        title = NameOfFile(FDocument->FileName()) + (FDocument->IsModified() ? "*" : "") + " - " + title;
    } else if (FProject) {
        title = NameOfFile(FProject->FileName()) + " - " + title;
    }
    SetCaption(title);
    UpdateTabs();
    UpdateMenus();
}

void TDesignerForm::UpdateTabs() {
    const TFieldScope refreshing(*this, FRefreshing, true);
    TStringList tabs;
    int chosen = -1;
    for (TDocument* document : OpenDocuments()) {
        if (document == FDocument) {
            chosen = tabs.Count();
        }
        tabs.Add(NameOfFile(document->FileName()) + (document->IsModified() ? "*" : ""));
    }
    if (!FormTabs->Tabs().Equals(tabs)) {
        FormTabs->SetTabs(tabs);
    }
    FormTabs->SetTabIndex(chosen);
    TStringList files;
    int current = -1;
    for (int i = 0; FProject && i < FProject->ModuleCount(); ++i) {
        if (&FProject->Module(i) == FDocument) {
            current = i;
        }
        files.Add(RelativePath(FProject->Folder(), FProject->Module(i).FileName()));
    }
    if (!ProjectList->Items().Equals(files)) {
        ProjectList->SetItems(files);
    }
    if (ProjectList->ItemIndex() != current) {
        ProjectList->SetItemIndex(current);
    }
}

void TDesignerForm::ProjectListClick(TObject*) {
    const int index = ProjectList->ItemIndex();
    if (!FRefreshing && FProject && index >= 0 && index < FProject->ModuleCount()) {
        OpenDocument(FProject->Module(index));
    }
}

void TDesignerForm::FormTabsChange(TObject*) {
    const std::vector<TDocument*> documents = OpenDocuments();
    const int index = FormTabs->TabIndex();
    if (index >= 0 && index < static_cast<int>(documents.size())) {
        ShowDocument(*documents[static_cast<size_t>(index)]);
    }
}

} // namespace kx::designer
