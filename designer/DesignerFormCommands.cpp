// The commands of the designer's menus.

#include "designer/Arrange.h"
#include "designer/DesignerForm.h"
#include "designer/Files.h"
#include "designer/RunForm.h"
#include "designer/Templates.h"
#include "kx/core/FormClass.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ide/StockEditors.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {

constexpr const char* FormFilter = "Forms (*.dfm)|*.dfm|All files (*.*)|*.*";
constexpr const char* AnyFilter = "Projects and forms (*.kxproj;*.dfm)|*.kxproj;*.dfm|All files (*.*)|*.*";
constexpr const char* ProjectFilter = "Projects (*.kxproj)|*.kxproj";
constexpr int MostRecent = 8;

/// What is in the clipboard as text; empty when there is none.
std::string ClipboardText() {
    std::string text;
    if (OpenClipboard(nullptr)) {
        if (const HANDLE data = GetClipboardData(CF_TEXT)) {
            if (const auto* const chars = static_cast<const char*>(GlobalLock(data))) {
                text = chars;
                GlobalUnlock(data);
            }
        }
        CloseClipboard();
    }
    return text;
}

void SetClipboardText(HWND owner, const std::string& text) {
    if (!OpenClipboard(owner)) {
        RaiseLastOSError();
    }
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* const chars = memory ? GlobalLock(memory) : nullptr) {
        memcpy(chars, text.c_str(), text.size() + 1);
        GlobalUnlock(memory);
        SetClipboardData(CF_TEXT, memory);
    }
    CloseClipboard();
}

/// In a field for text the usual keys are the field's own.
bool EditsText() {
    const HWND focus = GetFocus();
    return focus && (SendMessageA(focus, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) != 0;
}

} // namespace

void TDesignerForm::AddCommands() {
    const auto form = [this](auto work) {
        return [this, work] {
            if (TFormDesigner* const designer = Current()) {
                Attempt([&] { work(*designer); });
            }
        };
    };
    // In a field for text Ctrl+C and the like are about the text.
    const auto text = [](UINT message, std::function<void()> otherwise) {
        return [message, otherwise = std::move(otherwise)] {
            EditsText() ? static_cast<void>(SendMessageA(GetFocus(), message, 0, message == EM_SETSEL ? -1 : 0))
                        : otherwise();
        };
    };
    FCommands = {
        {"NewProject", [this] { NewProject(); }},
        {"NewForm", [this] { NewForm(); }},
        {"OpenFile", [this] { OpenFile(); }},
        {"Save",
         [this] {
             if (FDocument) {
                 SaveDocument(*FDocument);
             }
             if (FProject && FProject->HasFile() && FProject->IsModified()) {
                 Attempt([this] { FProject->Save(); });
             }
         }},
        {"SaveAs",
         [this] {
             if (FDocument) {
                 SaveDocumentAs(*FDocument);
             }
         }},
        {"SaveAll",
         [this] {
             for (TDocument* document : OpenDocuments()) {
                 if (document->IsModified() && !SaveDocument(*document)) {
                     return;
                 }
             }
             if (FProject && FProject->HasFile()) {
                 Attempt([this] { FProject->Save(); });
             }
         }},
        {"CloseForm",
         [this] {
             if (FDocument) {
                 CloseDocument(*FDocument);
             }
         }},
        {"Exit", [this] { Close(); }},
        {"Undo", text(WM_UNDO, form([](TFormDesigner& designer) { designer.Undo(); }))},
        {"Redo", form([](TFormDesigner& designer) { designer.Redo(); })},
        {"Cut", text(WM_CUT, [this] { Cut(); })},
        {"Copy", text(WM_COPY, form([this](TFormDesigner& designer) {
                          if (const std::string copied = designer.CopyText(); !copied.empty()) {
                              SetClipboardText(Handle(), copied);
                          }
                      }))},
        {"Paste", text(WM_PASTE, [this] { Paste(); })},
        {"Delete", text(WM_CLEAR, form([](TFormDesigner& designer) { designer.DeleteSelected(); }))},
        {"SelectAll", text(EM_SETSEL, form([](TFormDesigner& designer) { designer.SelectAll(); }))},
        {"SelectParent", form([](TFormDesigner& designer) { designer.SelectParent(); })},
        {"BringToFront", form([](TFormDesigner& designer) { designer.BringToFront(); })},
        {"SendToBack", form([](TFormDesigner& designer) { designer.SendToBack(); })},
        {"LockControls", form([this](TFormDesigner& designer) {
             designer.SetLocked(!designer.Locked());
             Surface->UpdateMarks();
         })},
        {"ViewForm", [this] { SetView(FormView); }},
        {"ViewText", [this] { SetView(TextView_); }},
        {"ViewClass", [this] { SetView(ClassView); }},
        {"ShowInspector", [this] { Inspector->Grid().SetFocus(); }},
        {"FindComponent", [this] { Palette->Search().SetFocus(); }},
        {"ShowGrid", [this] { Surface->SetShowsGrid(!Surface->ShowsGrid()); }},
        {"ShowGuides", [this] { Surface->SetUsesGuides(!Surface->UsesGuides()); }},
        {"ShowTabOrder", [this] { Surface->SetShowsTabOrder(!Surface->ShowsTabOrder()); }},
        {"Run", [this] { RunAt(96); }},
        {"Run96", [this] { RunAt(96); }},
        {"Run120", [this] { RunAt(120); }},
        {"Run144", [this] { RunAt(144); }},
        {"Run192", [this] { RunAt(192); }},
        {"Keys",
         [this] {
             Application().MessageBox("On the form:\n"
                                      "Arrows\tselect the neighbour\n"
                                      "Ctrl+arrows\tmove by a pixel\n"
                                      "Shift+arrows\tsize by a pixel\n"
                                      "Ctrl+Shift+arrows\tmove by the grid\n"
                                      "Tab\tselects the next component\n"
                                      "Esc\tselects what it is in\n"
                                      "Enter\tedits the component\n"
                                      "Shift+click\tadds to the selection\n"
                                      "Ctrl+drag\tselects inside a component\n"
                                      "Alt while dragging\tdoes not snap",
                                      "Keys", MB_OK | MB_ICONINFORMATION);
         }},
        {"About",
         [this] {
             Application().MessageBox("The form designer of kxqdlgs70.", Caption(), MB_OK | MB_ICONINFORMATION);
         }},
    };
}

void TDesignerForm::AddArrangeCommands() {
    const auto add = [this](const char* name, auto work) {
        FCommands[name] = [this, work] {
            if (TFormDesigner* const designer = Current()) {
                Attempt([&] { work(*designer); });
            }
        };
    };
    add("AlignLeft", [](TFormDesigner& d) { AlignSelected(d, TEdge::Left); });
    add("AlignRight", [](TFormDesigner& d) { AlignSelected(d, TEdge::Right); });
    add("AlignTop", [](TFormDesigner& d) { AlignSelected(d, TEdge::Top); });
    add("AlignBottom", [](TFormDesigner& d) { AlignSelected(d, TEdge::Bottom); });
    add("AlignMiddle", [](TFormDesigner& d) { AlignSelected(d, TEdge::HorizontalMiddle); });
    add("AlignCenter", [](TFormDesigner& d) { AlignSelected(d, TEdge::VerticalMiddle); });
    add("CenterHorizontally", [](TFormDesigner& d) { CenterSelected(d, true); });
    add("CenterVertically", [](TFormDesigner& d) { CenterSelected(d, false); });
    add("SpaceHorizontally", [](TFormDesigner& d) { SpaceSelected(d, true); });
    add("SpaceVertically", [](TFormDesigner& d) { SpaceSelected(d, false); });
    add("SameWidth", [](TFormDesigner& d) { SizeSelected(d, true, false); });
    add("SameHeight", [](TFormDesigner& d) { SizeSelected(d, false, true); });
    add("SameSize", [](TFormDesigner& d) { SizeSelected(d, true, true); });
    add("ToGrid", [this](TFormDesigner& d) { MoveSelectedToGrid(d, Surface->GridSize()); });
}

void TDesignerForm::CommandClick(TObject* sender) {
    const std::string item = dynamic_cast<TMenuItem&>(*sender).Name(); // "SaveItem"
    constexpr size_t suffix = 4;
    Command(item.substr(0, item.size() - suffix));
}

void TDesignerForm::Command(const std::string& name) {
    const auto found = FCommands.find(name);
    if (found == FCommands.end()) {
        throw EDesignError("There is no command " + name);
    }
    found->second();
}

/// Before a menu opens: what can be done now, and what is switched on.
void TDesignerForm::MenuOpens(TObject*) {
    UpdateMenus();
    ShowRecent();
}

void TDesignerForm::UpdateMenus() {
    const TFormDesigner* const designer = Current();
    const auto item = [this](const char* name) -> TMenuItem& {
        return dynamic_cast<TMenuItem&>(*FindComponent(std::string(name) + "Item"));
    };
    for (const auto& [name, work] : FCommands) {
        static constexpr std::array always{"NewProject", "NewForm", "OpenFile",   "Exit",          "ShowInspector",
                                           "Keys",       "About",   "ShowGuides", "FindComponent", "ShowGrid"};
        const bool isFree = std::ranges::find(always, name) != always.end();
        item(name.c_str()).SetEnabled(isFree || designer);
    }
    item("Undo").SetCaption(designer && designer->CanUndo() ? "&Undo " + designer->Steps().UndoText() : "&Undo");
    item("Redo").SetCaption(designer && designer->CanRedo() ? "&Redo " + designer->Steps().RedoText() : "&Redo");
    item("Redo").SetEnabled(designer && designer->CanRedo());
    item("LockControls").SetChecked(designer && designer->Locked());
    item("ShowGrid").SetChecked(Surface->ShowsGrid());
    item("ShowGuides").SetChecked(Surface->UsesGuides());
    item("ShowTabOrder").SetChecked(Surface->ShowsTabOrder());
}

// --- Files

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
        DeleteFileA(path.c_str()); // the user has agreed to replace it
        auto project = std::make_unique<TProject>(*this, path);
        project->Save();
        SetProject(std::move(project));
        AddRecent(path);
    });
}

void TDesignerForm::NewForm() {
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
        const std::string text = NewFormText(NameOfFile(path));
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
    });
    UpdateAll();
}

std::vector<std::string> TDesignerForm::RecentPaths() const {
    TRegIniFile registry("Software\\kxqdlgs70\\Designer");
    std::vector<std::string> paths;
    for (int i = 1; i <= MostRecent; ++i) {
        const std::string path = registry.ReadString("Recent", IntToStr(i), "");
        if (!path.empty()) {
            paths.push_back(path);
        }
    }
    return paths;
}

void TDesignerForm::AddRecent(const std::string& path) {
    try {
        std::vector<std::string> paths = RecentPaths();
        std::erase_if(paths, [&](const std::string& one) { return SameText(one, path); });
        paths.insert(paths.begin(), path);
        TRegIniFile registry("Software\\kxqdlgs70\\Designer");
        for (int i = 0; i < std::min(static_cast<int>(paths.size()), MostRecent); ++i) {
            registry.WriteString("Recent", IntToStr(i + 1), paths[static_cast<size_t>(i)]);
        }
    } catch (const Exception&) {
        return; // the user's settings cannot be written
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

// --- The form

void TDesignerForm::Cut() {
    if (TFormDesigner* const designer = Current()) {
        Attempt([&] {
            const std::string copied = designer->CopyText();
            if (!copied.empty()) {
                SetClipboardText(Handle(), copied);
                designer->DeleteSelected();
            }
        });
    }
}

void TDesignerForm::Paste() {
    if (TFormDesigner* const designer = Current()) {
        Attempt([&] { designer->Paste(ClipboardText()); });
    }
}

/// A double click: the component's own editor, else the handler of its first event.
void TDesignerForm::EditComponent() {
    TFormDesigner* const designer = Current();
    TComponent* const component = designer ? designer->Primary() : nullptr;
    if (!component) {
        return;
    }
    Attempt([&] {
        const std::unique_ptr<TComponentEditor> editor = GetComponentEditor(*component, *designer);
        if (editor->GetVerbCount() > 0) {
            editor->Edit();
            return;
        }
        const char* const event = component == &designer->Form() ? "OnCreate" : "OnClick";
        const TPropInfo* const info = component->ClassType().FindProperty(event);
        if (info && info->Kind == TTypeKind::Event) {
            designer->Do(event, [&] {
                std::make_shared<TMethodProperty>(*designer, std::vector<TInstanceProperty>{{component, info}})->Edit();
            });
        }
    });
}

/// The menu of what is selected: its own commands first.
void TDesignerForm::ShowFormMenu(const TPoint& screen) {
    TFormDesigner* const designer = Current();
    if (!designer) {
        return;
    }
    FormMenu->Items().Clear();
    const auto add = [this](const std::string& caption, std::function<void()> work) {
        auto* const item = new TMenuItem(FormMenu);
        item->SetCaption(caption);
        item->SetOnClick([work = std::move(work)](TObject*) { work(); });
        FormMenu->Items().Add(item);
    };
    TComponent* const component = designer->SelectedComponents().size() == 1 ? designer->Primary() : nullptr;
    if (component) {
        // The component may go before its menu does, so its editor is asked for again.
        const std::string name = component->Name();
        Attempt([&] {
            const std::unique_ptr<TComponentEditor> editor = GetComponentEditor(*component, *designer);
            for (int i = 0; i < editor->GetVerbCount(); ++i) {
                add(editor->GetVerb(i), [this, i] {
                    if (TFormDesigner* const now = Current(); now && now->Primary()) {
                        Attempt([&] { GetComponentEditor(*now->Primary(), *now)->ExecuteVerb(i); });
                    }
                });
            }
        });
        if (FormMenu->Items().Count() > 0) {
            add("-", [] {});
        }
    }
    const std::pair<const char*, const char*> commands[] = {{"Cu&t", "Cut"},
                                                            {"&Copy", "Copy"},
                                                            {"&Paste", "Paste"},
                                                            {"&Delete", "Delete"},
                                                            {"-", ""},
                                                            {"Bring to &front", "BringToFront"},
                                                            {"Send to &back", "SendToBack"},
                                                            {"-", ""},
                                                            {"Tab &order", "ShowTabOrder"},
                                                            {"&Lock controls", "LockControls"},
                                                            {"-", ""},
                                                            {"&Text", "ViewText"}};
    for (const auto& [caption, command] : commands) {
        add(caption, [this, command = std::string(command)] {
            if (!command.empty()) {
                Command(command);
            }
        });
    }
    FormMenu->Popup(screen.X, screen.Y);
}

void TDesignerForm::RunAt(int dotsPerInch) {
    if (!TakeText()) {
        return;
    }
    if (TFormDesigner* const designer = Current()) {
        Attempt([&] {
            FRunning.reset();
            FRunning.reset(MakeRunningForm(designer->State(), dotsPerInch));
            FRunning->Show();
        });
    }
}

/// Puts the chosen component into the middle of the selected container.
void TDesignerForm::DropChosen() {
    TFormDesigner* const designer = Current();
    const TClass* const cls = Palette->Buttons().Chosen();
    if (!designer || !cls) {
        return;
    }
    Palette->Buttons().SetChosen(nullptr);
    Surface->SetTool(nullptr);
    Attempt([&] {
        const auto* const around = dynamic_cast<TControl*>(designer->Primary());
        const TPoint middle = around ? TPoint{around->ClientWidth() / 2, around->ClientHeight() / 2} : TPoint{};
        designer->CreateComponent(*cls, designer->Primary(), {middle.X, middle.Y, middle.X, middle.Y});
    });
}

void TDesignerForm::ShowClass() {
    std::string text;
    try {
        const std::string& state = Current()->State();
        TStaticMemoryStream stream(state.data(), state.size());
        const TFormClass cls = FormClassOf(stream);
        text = FormClassDeclaration(cls) + "\n" + FormClassDefinition(cls);
    } catch (const Exception& error) {
        text = "// " + error.Message();
    }
    TextMemo->SetText(text);
}

} // namespace kx::designer
