// SPDX-License-Identifier: MIT
// The commands of the designer's menus.

#include "designer/Arrange.h"
#include "designer/ClipboardText.h"
#include "designer/DesignerForm.h"
#include "designer/RunForm.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ide/StockEditors.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {

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
        {"NewForm", [this] { NewForm(TFormTemplate::Window); }},
        {"NewDialog", [this] { NewForm(TFormTemplate::Dialog); }},
        {"NewDockedForm", [this] { NewForm(TFormTemplate::Docked); }},
        {"RemoveForm", [this] { RemoveForm(); }},
        {"MainForm", [this] { ToggleMainForm(); }},
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
        {"CopyClass", [this] { CopyClass(); }},
        {"WriteClass", [this] { WriteClass(); }},
        {"ShowInspector", [this] { Inspector->Grid().SetFocus(); }},
        {"FindComponent", [this] { Palette->Search().SetFocus(); }},
        {"ShowGrid", [this] { ToggleGrid(); }},
        {"Grid", [this] { EditGrid(); }},
        {"ShowGuides", [this] { ToggleGuides(); }},
        {"ShowTabOrder", [this] { Surface->SetShowsTabOrder(!Surface->ShowsTabOrder()); }},
        {"Run", [this] { RunAt(96); }},
        {"Run96", [this] { RunAt(96); }},
        {"Run120", [this] { RunAt(120); }},
        {"Run144", [this] { RunAt(144); }},
        {"Run192", [this] { RunAt(192); }},
        {"Keys",
         [] {
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
    add("ToGrid", [this](TFormDesigner& d) { MoveSelectedToGrid(d, Surface->Grid().Size); });
}

void TDesignerForm::CommandClick(TObject* sender) {
    const std::string name = dynamic_cast<TComponent&>(*sender).Name(); // "SaveItem", "CopyClassButton"
    const std::string_view suffix = dynamic_cast<TMenuItem*>(sender) ? "Item" : "Button";
    Command(name.substr(0, name.size() - suffix.size()));
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
    const TFormDesigner* const designer = Current();
    Item("Undo").SetCaption(designer && designer->CanUndo() ? "&Undo " + designer->Steps().UndoText() : "&Undo");
    Item("Redo").SetCaption(designer && designer->CanRedo() ? "&Redo " + designer->Steps().RedoText() : "&Redo");
}

/// The menu item of a command
TMenuItem& TDesignerForm::Item(const std::string& command) const {
    return dynamic_cast<TMenuItem&>(*FindComponent(command + "Item"));
}

void TDesignerForm::UpdateMenus() {
    const TFormDesigner* const designer = Current();
    for (const auto& [name, work] : FCommands) {
        static constexpr std::array always{"NewProject",    "NewForm",       "NewDialog", "NewDockedForm", "OpenFile",
                                           "Exit",          "ShowInspector", "Keys",      "About",         "ShowGuides",
                                           "FindComponent", "ShowGrid",      "Grid"};
        const bool isFree = std::ranges::find(always, name) != always.end();
        Item(name).SetEnabled(isFree || designer);
    }
    const bool inProject = designer && FProject->HasFile();
    Item("RemoveForm").SetEnabled(inProject);
    Item("MainForm").SetEnabled(inProject);
    Item("MainForm").SetChecked(inProject && FProject->MainForm() == FDocument->FormName());
    Item("Undo").SetEnabled(designer && designer->CanUndo());
    Item("Redo").SetEnabled(designer && designer->CanRedo());
    Item("LockControls").SetChecked(designer && designer->Locked());
    Item("ShowGrid").SetChecked(Surface->Grid().IsShown);
    Item("ShowGuides").SetChecked(Surface->UsesGuides());
    Item("ShowTabOrder").SetChecked(Surface->ShowsTabOrder());
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
            designer->Do(editor->GetVerb(0), [&] { editor->Edit(); });
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
                        Attempt([&] {
                            const auto verbs = GetComponentEditor(*now->Primary(), *now);
                            now->Do(verbs->GetVerb(i), [&] { verbs->ExecuteVerb(i); });
                        });
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
                                                            {"Te&xt", "ViewText"}};
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
            FRunning.reset(MakeRunningForm(designer->State(), dotsPerInch, designer->Ancestors()));
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

} // namespace kx::designer
