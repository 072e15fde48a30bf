// SPDX-License-Identifier: MIT
// What is done to a form, and how it is undone.

#include "designer/FormDesigner.h"

#include "designer/PropertyValues.h"
#include "kx/core/FormText.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/ComCtrlsPages.h"

#include <algorithm>

namespace kx::designer {

namespace {

/// The form into which components are being read one by one: they may refer to any component of it.
TComponent* ReadInto = nullptr;

TComponent* FindInForm(const std::string& name) { return ReadInto ? ReadInto->FindComponent(name) : nullptr; }

/// References of what is read while this lives find the components of the form.
class TReadingInto {
public:
    explicit TReadingInto(TComponent& form) {
        ReadInto = &form;
        RegisterFindGlobalComponentProc(FindInForm);
    }
    TReadingInto(const TReadingInto&) = delete;
    TReadingInto& operator=(const TReadingInto&) = delete;
    ~TReadingInto() {
        UnregisterFindGlobalComponentProc(FindInForm);
        ReadInto = nullptr;
    }
};

/// Every class of it is there, and nothing in it has to do with an ancestor.
bool IsPlain(const TFormNode& node) {
    return node.Flags == TFilerFlags() && !node.Name.empty() && GetClass(node.ClassName) &&
           std::ranges::all_of(node.Children, IsPlain);
}

/// Gives each component inside a name that nobody has, where its own is taken, and has references follow.
void RenameTaken(TFormNode& node, const std::function<bool(const std::string&)>& isTaken,
                 std::vector<std::pair<std::string, std::string>>& renamed, std::vector<std::string>& used) {
    const auto isUsed = [&](const std::string& name) {
        return isTaken(name) || std::ranges::any_of(used, [&](const std::string& one) { return SameText(one, name); });
    };
    if (!IsValidIdent(node.Name) || isUsed(node.Name)) {
        const std::string name = FirstFreeName(node.ClassName, isUsed);
        renamed.emplace_back(node.Name, name);
        node.Name = name;
    }
    used.push_back(node.Name);
    for (TFormNode& child : node.Children) {
        RenameTaken(child, isTaken, renamed, used);
    }
}

/// The value is the name of a component that has got another one.
void RenameReferences(TFormNode& node, const std::vector<std::pair<std::string, std::string>>& renamed) {
    for (TFormProperty& property : node.Properties) {
        if (property.Value.empty() || property.Value[0] != static_cast<char>(vaIdent)) {
            continue;
        }
        for (const auto& [from, to] : renamed) {
            if (property.Value.substr(2) == from) {
                property.Value = std::string(1, static_cast<char>(vaIdent)) + static_cast<char>(to.size()) + to;
            }
        }
    }
    for (TFormNode& child : node.Children) {
        RenameReferences(child, renamed);
    }
}

} // namespace

// --- Recording

bool TFormDesigner::Record(const std::string& what) {
    if (FBusy > 0 || !FUndo.Add(Write(), what)) {
        return false;
    }
    FOnChanged();
    NotifyItemsModified(*this);
    return true;
}

void TFormDesigner::Do(const std::string& what, const std::function<void()>& change) {
    try {
        const TChange underWay(*this);
        change();
    } catch (...) {
        if (const std::string now = Write(); FBusy == 0 && now != FUndo.State()) {
            GoTo(now, FUndo.State());
        }
        throw;
    }
    Record(what);
}

void TFormDesigner::Undo() {
    if (FUndo.CanUndo()) {
        Step(&TUndoStack::Undo);
    }
}

void TFormDesigner::Redo() {
    if (FUndo.CanRedo()) {
        Step(&TUndoStack::Redo);
    }
}

void TFormDesigner::Step(const std::string& (TUndoStack::*go)()) {
    const std::string from = FUndo.State();
    GoTo(from, (FUndo.*go)());
    FOnChanged();
    NotifyItemsModified(*this);
}

/// Brings the form from the state that it is in into one that it has had: by what differs when that can be done in
/// place, else by reading it.
void TFormDesigner::GoTo(const std::string& from, const std::string& state) {
    const std::vector<std::string> selected = SelectedNames();
    bool isThere = false;
    try {
        const TChange underWay(*this);
        isThere = Follow(Difference(ParseForm(from), ParseForm(state))) && Write() == state;
    } catch (const std::exception&) {
        isThere = false; // a setter refuses: the values have to come in the order of the file
    }
    if (!isThere) {
        Load(state);
        SelectNames(selected);
    } else if (FSelection.empty()) {
        SelectOne(*FForm);
    }
}

bool TFormDesigner::Follow(const TFormDifference& difference) {
    const bool canInsert =
        std::ranges::all_of(difference.Insertions, [](const auto& one) { return IsPlain(one.Node); });
    if (!difference.IsWhole || !canInsert) {
        return false;
    }
    for (const std::string& name : difference.Deletions) {
        TComponent* const component = Find(name);
        if (!component || component == FForm.get() || !Free(*component)) {
            return false;
        }
    }
    for (const auto& rename : difference.Renames) {
        TComponent* const component = Find(rename.From);
        if (!component) {
            return false;
        }
        component->SetName(rename.To);
    }
    for (const auto& insertion : difference.Insertions) {
        TComponent* const parent = Find(insertion.Parent);
        if (!parent) {
            return false;
        }
        Insert(*parent, insertion.Node, insertion.Index);
    }
    for (const auto& change : difference.Changes) {
        TComponent* const component = Find(change.Component);
        if (!component || !SetPropertyValue(*FForm, *component, change.Property, change.Value)) {
            return false;
        }
    }
    return true;
}

void TFormDesigner::Replace(const std::string& bytes, const std::string& what) {
    const std::vector<std::string> selected = SelectedNames();
    Load(bytes);
    SelectNames(selected);
    Record(what);
}

/// Everything that is shown of the old form goes with it.
void TFormDesigner::Load(const std::string& bytes) {
    const std::string name = FForm->Name();
    FForm->SetName(""); // or the new one would have to be called otherwise
    TDesignedFormPtr form;
    try {
        form = ReadForm(bytes, FParent, FAncestors);
    } catch (...) {
        FForm->SetName(name);
        throw;
    }
    NotifyDesignerClosed(*this, true);
    FSelection = {form.get()};
    std::swap(FForm, form);
    form->SetOnSized(nullptr);
    FForm->SetGridSize(form->GridSize());
    FOnFormReplaced();
    form.reset();
    FOnSelectionChanged();
    NotifySelectionChanged(*this, FSelection);
    WatchSize();
}

/// Packages may size the form itself, as a preview does. They know the form, and not its designer.
void TFormDesigner::WatchSize() {
    FForm->SetOnSized([this] { Record("Size"); });
}

// --- Components come and go

TWinControl* TFormDesigner::ContainerFor(TComponent* wanted) const {
    for (TComponent* component = wanted; component; component = component->GetParentComponent()) {
        if (AcceptsControls(*component)) {
            return static_cast<TWinControl*>(component);
        }
    }
    return FForm.get();
}

TComponent* TFormDesigner::CreateComponent(const TClass& cls, TComponent* parent, const TRect& bounds) {
    constexpr int smallest = 4;
    TComponent* created = nullptr;
    Do("Insert", [&] {
        const std::string name = UniqueName(cls.Name());
        std::unique_ptr<TComponent, TFreeDeleter> component(cls.Create(FForm.get()));
        component->SetName(name);
        if (auto* const control = dynamic_cast<TControl*>(component.get())) {
            const bool hasSize = Width(bounds) >= smallest && Height(bounds) >= smallest;
            control->SetBounds(bounds.Left, bounds.Top, hasSize ? Width(bounds) : control->Width(),
                               hasSize ? Height(bounds) : control->Height());
            TWinControl* const container = ContainerFor(parent);
            auto* const wanted = dynamic_cast<TWinControl*>(parent);
            if (wanted && dynamic_cast<TPageControl*>(wanted) && dynamic_cast<TTabSheet*>(control)) {
                control->SetParentComponent(wanted); // which holds nothing else
            } else {
                control->SetParentComponent(container);
            }
            if (control->Parent() == nullptr) {
                throw EDesignError("A " + cls.Name() + " cannot be put into a " + container->FormClassName());
            }
        } else {
            component->SetDesignInfo(static_cast<int32_t>(static_cast<uint32_t>(bounds.Left) & 0xFFFFU) |
                                     static_cast<int32_t>(static_cast<uint32_t>(bounds.Top) << 16U));
            component->SetParentComponent(parent);
        }
        created = component.release();
    });
    NotifyItemInserted(*this, *created);
    SelectOne(*created);
    return created;
}

/// Reads the component that a node tells of, with all inside it, into the form. `index` is its place in the parent.
void TFormDesigner::Insert(TComponent& parent, const TFormNode& node, size_t index) {
    const TReadingInto reading(*FForm);
    TGlobalLoading loading;
    InsertInside(parent, node);
    loading.NotifyLoaded();
    std::vector<TComponent*> siblings;
    parent.GetChildren([&](TComponent* child) { siblings.push_back(child); }, FForm.get());
    // It has come to the front; those that stood before it go there again.
    TComponent* const inserted = Find(node.Name);
    std::erase(siblings, inserted);
    for (size_t i = index; i < siblings.size(); ++i) {
        if (auto* const control = dynamic_cast<TControl*>(siblings[i])) {
            control->BringToFront();
        }
    }
    if (inserted) {
        NotifyItemInserted(*this, *inserted);
    }
}

void TFormDesigner::InsertInside(TComponent& parent, const TFormNode& node) {
    std::unique_ptr<TComponent, TFreeDeleter> component(FindClass(node.ClassName).Create(FForm.get()));
    component->SetName(node.Name);
    component->SetParentComponent(&parent);
    TFormNode alone = node;
    alone.Children.clear();
    const std::string binary = FormBinary(alone);
    TStaticMemoryStream stream(binary.data(), binary.size());
    ReadComponent(stream, component.get(), [](TReader& reader) { reader.SetKeepsUnknown(true); });
    TComponent& inserted = *component.release();
    for (const TFormNode& child : node.Children) {
        InsertInside(inserted, child);
    }
}

/// Those who know of the component and of what is inside it hear of its end.
void TFormDesigner::Forget(TComponent& component) {
    std::vector<TComponent*> inside;
    component.GetChildren([&](TComponent* child) { inside.push_back(child); }, FForm.get());
    for (TComponent* child : inside) {
        Forget(*child);
    }
    NotifyItemDeleted(*this, component);
    std::erase(FSelection, &component);
}

bool TFormDesigner::Free(TComponent& component) {
    if (IsInherited(component)) {
        return false;
    }
    Forget(component);
    // Items of collections may be selected too; they go with their component.
    std::erase_if(FSelection, [](TPersistent* object) { return dynamic_cast<TComponent*>(object) == nullptr; });
    component.Free();
    return true;
}

/// The selected components that are not inside another selected one, without the form.
std::vector<TComponent*> TFormDesigner::Outermost() const {
    std::vector<TComponent*> outermost;
    for (TComponent* component : SelectedComponents()) {
        bool isInside = component == FForm.get();
        for (const TComponent* parent = component->GetParentComponent(); parent && !isInside;
             parent = parent->GetParentComponent()) {
            isInside = parent != FForm.get() && IsSelected(*parent);
        }
        if (!isInside) {
            outermost.push_back(component);
        }
    }
    return outermost;
}

void TFormDesigner::DeleteSelected() {
    const std::vector<TComponent*> components = Outermost();
    if (components.empty()) {
        return;
    }
    CheckOwn(components, "deleted");
    TComponent* const parent = components.front()->GetParentComponent();
    Do("Delete", [&] {
        for (TComponent* component : components) {
            Free(*component);
        }
    });
    FSelection.clear();
    SelectOne(parent ? *parent : *FForm);
}

void TFormDesigner::Rename(TComponent& component, const std::string& name) {
    CheckName(name);
    CheckOwn({&component}, "renamed");
    Do("Rename", [&] { component.SetName(name); });
}

// --- The clipboard

std::string TFormDesigner::CopyText() {
    CheckOwn(Outermost(), "copied");
    std::string text;
    TFormNode form = Tree();
    for (const TComponent* component : Outermost()) {
        if (const TFormNode* const node = FindNode(form, component->Name())) {
            text += FormText(FormBinary(*node));
        }
    }
    return text;
}

void TFormDesigner::Paste(const std::string& text) {
    TFormNode wrapper = ParseForm(FormBinaryOfText("object Pasted: TPasted\n" + text + "\nend\n"));
    if (wrapper.Children.empty()) {
        throw EDesignError("The clipboard holds no components");
    }
    TComponent* const primary = Primary();
    TComponent* container = ContainerFor(primary);
    std::vector<std::pair<std::string, std::string>> renamed;
    std::vector<std::string> used;
    for (TFormNode& node : wrapper.Children) {
        RenameTaken(
            node, [this](const std::string& name) { return Find(name) != nullptr; }, renamed, used);
    }
    RenameReferences(wrapper, renamed);

    TFormNode form = Tree();
    TFormNode* const parent = &NodeOf(form, *container);
    std::vector<std::string> names;
    for (TFormNode& node : wrapper.Children) {
        names.push_back(node.Name);
        parent->Children.push_back(node);
    }
    // The whole form is read with the new components in it: whatever they hold comes as from a file.
    Load(FormBinary(form));
    Record("Paste");
    SelectNames(names);
}

// --- Order and parents

/// The node of a component; one that the file does not speak of, as an ancestor brings it, gets one.
TFormNode& TFormDesigner::NodeOf(TFormNode& form, const TComponent& component) const {
    if (&component == FForm.get()) {
        return form;
    }
    if (TFormNode* const node = FindNode(form, component.Name())) {
        return *node;
    }
    const TComponent* const parent = component.GetParentComponent();
    TFormNode node;
    node.Flags.Include(ffInherited);
    node.ClassName = component.FormClassName();
    node.Name = component.Name();
    return NodeOf(form, parent ? *parent : *FForm).Children.emplace_back(std::move(node));
}

bool TFormDesigner::CanPlace(const TComponent& component, const TComponent& parent) const {
    for (const TComponent* around = &parent; around; around = around->GetParentComponent()) {
        if (around == &component) {
            return false; // into itself
        }
    }
    const TComponent* const now = component.GetParentComponent();
    const bool hasForm = !now || now == FForm.get();
    if (&component == FForm.get() || IsInherited(component)) {
        return false;
    }
    if (dynamic_cast<const TControl*>(&component) && (hasForm || AcceptsControls(*now))) {
        return AcceptsControls(parent);
    }
    if (dynamic_cast<const TMenuItem*>(&component)) {
        return dynamic_cast<const TMenuItem*>(&parent) || dynamic_cast<const TMenu*>(&parent);
    }
    // Pages and the like stay among what holds such items.
    return hasForm ? &parent == FForm.get()
                   : &parent.ClassType() == &now->ClassType() || &parent.ClassType() == &component.ClassType();
}

void TFormDesigner::Place(const std::vector<TComponent*>& components, TComponent& parent, TComponent* before) {
    TFormNode form = Tree();
    std::vector<TFormNode> moved;
    for (const TComponent* component : components) {
        if (!CanPlace(*component, parent)) {
            throw EDesignError(component->Name() + " cannot be put into " + parent.Name());
        }
        TFormNode* around = nullptr;
        const TFormNode* const node = FindNode(form, component->Name(), &around);
        if (!node || !around) { // it went along with one that it is in
            continue;
        }
        moved.push_back(*node);
        around->Children.erase(around->Children.begin() + (node - around->Children.data()));
    }
    TFormNode* const target = &NodeOf(form, parent);
    const auto at =
        before ? std::ranges::find(target->Children, before->Name(), &TFormNode::Name) : target->Children.end();
    target->Children.insert(at, moved.begin(), moved.end());
    // The form is read in its new order: no component can put another one at a place among its neighbours.
    const std::vector<std::string> selected = SelectedNames();
    const std::string wanted = FormBinary(form);
    Load(wanted);
    if (Write() != wanted) {
        Load(FUndo.State());
        SelectNames(selected);
        throw EDesignError(moved.front().Name + " cannot be put there");
    }
    Record("Move");
    SelectNames(selected);
}

void TFormDesigner::BringToFront() {
    Do("Bring to front", [this] {
        for (TControl* control : SelectedControls()) {
            control->BringToFront();
        }
    });
}

void TFormDesigner::SendToBack() {
    Do("Send to back", [this] {
        for (TControl* control : SelectedControls()) {
            control->SendToBack();
        }
    });
}

} // namespace kx::designer
