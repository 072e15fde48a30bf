// SPDX-License-Identifier: MIT
#pragma once

#include "designer/DesignedForm.h"
#include "designer/FormTree.h"
#include "designer/UndoStack.h"
#include "kx/ide/Designer.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kx::designer {

KX_EXCEPTION(EDesignError, Exception);

/// A form that is open in the designer: its components, what is selected, and everything that was done to it.
class TFormDesigner final : public IDesigner {
public:
    /// Opens a form of whichever format. `parent` is the window that shows it, or null.
    /// @throws EParserError, EReadError and others for bytes that are no form.
    TFormDesigner(const std::string& bytes, HWND parent, TAncestorFiles ancestors = {});
    TFormDesigner(const TFormDesigner&) = delete;
    TFormDesigner& operator=(const TFormDesigner&) = delete;
    ~TFormDesigner();

    TDesignedForm& Form() const { return *FForm; }
    /// The form file's class and name: the form itself may have got another name, when a second one is open.
    const std::string& FormClass() const { return FForm->FormClassName(); }

    // --- What the form inherits

    const TAncestorFiles& Ancestors() const { return FAncestors; }
    /// They have changed: the form takes over what they bring now. @throws as the constructor: nothing has changed.
    void SetAncestors(TAncestorFiles value);
    /// The component comes from an ancestor: it keeps its name and its place in the tree.
    bool IsInherited(const TComponent& component) const;
    /// @throws EDesignError "Box comes from TBase and cannot be deleted" for those.
    void CheckOwn(const std::vector<TComponent*>& components, const char* what) const;
    std::string AncestorClass() const; ///< Empty for a form that does not inherit.
    /// The form inherits, and nobody knows from which one: what comes from there is shown as boxes.
    bool LacksAncestor() const;

    // --- IDesigner

    TComponent* Root() const override { return FForm.get(); }
    void Modified() override { Record("Change"); }
    TDesignSelection Selection() const override { return FSelection; }
    void Select(const TDesignSelection& selection) override;
    TComponent* CreateComponent(const TClass& cls, TComponent* parent, const TRect& bounds) override;
    std::string UniqueName(const std::string& className) const override;
    std::vector<std::string> MethodsOf(std::type_index signature) const override;
    bool MethodExists(const std::string& name) const override;
    TEventTargetPtr Method(const std::string& name, const TPropInfo& event) override;
    void ShowMethod(const std::string& name) override { FOnShowMethod(name); }

    // --- Selection

    std::vector<TComponent*> SelectedComponents() const;
    std::vector<TControl*> SelectedControls() const; ///< Without the form.
    TComponent* Primary() const;                     ///< The first selected component; null when none is.
    void SelectOne(TComponent& component) { Select({&component}); }
    void SelectAll();
    void SelectParent();
    bool IsSelected(const TComponent& component) const;
    /// Components that the user can deal with, in the order of the file; the form is the first.
    std::vector<TComponent*> AllComponents() const;

    // --- Changes. Each is one step that can be undone; what cannot be done changes nothing.

    /// What was done to the form since the last call is one step. False when nothing has changed.
    bool Record(const std::string& what);
    /// Runs `change`, then records. What it throws comes out, and what it has changed is undone.
    void Do(const std::string& what, const std::function<void()>& change);
    void DeleteSelected();
    void Rename(TComponent& component, const std::string& name); ///< @throws EComponentError
    /// @throws EComponentError for a name that no component of the form can have, taken or not.
    void CheckName(const std::string& name) const;
    /// @throws EDesignError for components that come from an ancestor.
    std::string CopyText(); ///< The selected components as form text; empty when there are none.
    /// Puts components of a form text into the selected container, under new names where those are taken.
    /// @throws EParserError, EDesignError
    void Paste(const std::string& text);
    /// Moves components, in their order, into `parent`: in front of the one inside it that is `before`, which is none
    /// of them; behind all others when that is null. What refers to them stays. @throws EDesignError: nothing has
    /// changed.
    void Place(const std::vector<TComponent*>& components, TComponent& parent, TComponent* before);
    bool CanPlace(const TComponent& component, const TComponent& parent) const;
    void BringToFront();
    void SendToBack();
    /// The whole form anew, of text or binary. @throws EParserError, EReadError: nothing has changed.
    void Replace(const std::string& bytes, const std::string& what);

    bool CanUndo() const { return FUndo.CanUndo(); }
    bool CanRedo() const { return FUndo.CanRedo(); }
    void Undo();
    void Redo();
    const TUndoStack& Steps() const { return FUndo; }
    /// In the binary form; numbers have the spelling of the text from which they came.
    const std::string& State() const { return FUndo.State(); }
    /// The same as a file may hold it: with plain numbers.
    std::string PlainState() { return WriteForm(*FForm, FAncestor.get(), TFormNumbers::Plain); }
    /// While one of these lives a change is under way, and the form may be half changed: nothing is recorded.
    class TChange {
    public:
        explicit TChange(TFormDesigner& designer) : FDesigner(designer) { ++FDesigner.FBusy; }
        TChange(const TChange&) = delete;
        TChange& operator=(const TChange&) = delete;
        ~TChange() { --FDesigner.FBusy; }

    private:
        TFormDesigner& FDesigner;
    };
    bool IsBusy() const { return FBusy > 0; }

    bool Locked() const { return FLocked; } ///< The mouse and the keyboard move and size nothing.
    void SetLocked(bool value) { FLocked = value; }

    /// What takes a new control that is wanted there: the component itself, or the nearest around it that holds
    /// controls.
    TWinControl* ContainerFor(TComponent* wanted) const;

    /// The form is another object now.
    void SetOnFormReplaced(TEvent<void()> value) { FOnFormReplaced = std::move(value); }
    void SetOnChanged(TEvent<void()> value) { FOnChanged = std::move(value); }
    void SetOnSelectionChanged(TEvent<void()> value) { FOnSelectionChanged = std::move(value); }
    void SetOnShowMethod(TEvent<void(const std::string&)> value) { FOnShowMethod = std::move(value); }

private:
    void Step(const std::string& (TUndoStack::*go)());
    void GoTo(const std::string& from, const std::string& state);
    bool Follow(const TFormDifference& difference);
    void Insert(TComponent& parent, const TFormNode& node, size_t index);
    void InsertInside(TComponent& parent, const TFormNode& node);
    void Load(const std::string& bytes);
    void WatchSize();
    void ReadAncestor();
    std::string Write() { return WriteForm(*FForm, FAncestor.get()); }
    TFormNode Tree() { return ParseForm(Write()); }
    TFormNode& NodeOf(TFormNode& form, const TComponent& component) const;
    void Forget(TComponent& component);
    bool Free(TComponent& component);
    TComponent* Find(const std::string& name) const;
    std::vector<TComponent*> Outermost() const;
    std::vector<std::string> SelectedNames() const;
    void SelectNames(const std::vector<std::string>& names);
    std::map<std::string, std::type_index> Methods() const;

    HWND FParent;
    TAncestorFiles FAncestors;
    TDesignedFormPtr FForm;
    TDesignedFormPtr FAncestor; ///< The ancestors alone; null without any.
    TUndoStack FUndo;
    TDesignSelection FSelection;
    std::map<std::string, std::type_index> FNewMethods; ///< Made here, and perhaps bound to no event yet.
    bool FLocked = false;
    int FBusy = 0; ///< Changes that are under way and will be recorded as one.

    TEvent<void()> FOnFormReplaced;
    TEvent<void()> FOnChanged;
    TEvent<void()> FOnSelectionChanged;
    TEvent<void(const std::string&)> FOnShowMethod;
};

/// The component can hold controls that the user puts into it.
bool AcceptsControls(const TComponent& component);
/// The class's name without its T, with the first number that makes it a name which nobody has.
std::string FirstFreeName(const std::string& className, const std::function<bool(const std::string& name)>& isTaken);

} // namespace kx::designer
