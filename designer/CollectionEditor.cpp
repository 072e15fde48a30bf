// SPDX-License-Identifier: MIT
// The items of a component's collection, in a window.

#include "designer/CollectionEditor.h"

#include "designer/CollectionPaths.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

namespace {

std::string TextOf(const TCollectionItem& item) {
    try {
        return IntToStr(item.Index()) + " - " + item.GetDisplayName();
    } catch (const std::exception& error) {
        return IntToStr(item.Index()) + " - (" + error.what() + ")";
    }
}

} // namespace

// --- TCollectionForm

const TClass& TCollectionForm::StaticClass() {
    static const TClassBuilder<TCollectionForm> cls("TCollectionForm", TDesignWindow::StaticClass(), [](auto& c) {
        using T = TCollectionForm;
        c.Method("ItemListClick", &T::ItemListClick);
        c.Method("AddButtonClick", &T::AddButtonClick);
        c.Method("DeleteButtonClick", &T::DeleteButtonClick);
        c.Method("UpButtonClick", &T::UpButtonClick);
        c.Method("DownButtonClick", &T::DownButtonClick);
        c.Method("FormKeyDown", &T::FormKeyDown);
        c.Method("FormClose", &T::FormClose);
    });
    return cls.Class();
}

TCollectionForm::TCollectionForm(TComponent* owner) : TDesignWindow(owner) { InitForm(*this, StaticClass()); }

void TCollectionForm::Edit(TFormDesigner& designer, const TCollection& collection) {
    for (int i = 0; i < Screen().FormCount(); ++i) {
        auto* const open = dynamic_cast<TCollectionForm*>(Screen().Forms(i));
        if (open && open->Shows(collection)) {
            open->Show();
            open->SetFocus(); // to bring it to the front does not make it the active one
            return;
        }
    }
    const TCollectionPlace place = PlaceOf(designer, collection);
    if (!place.Component) {
        return;
    }
    auto* const form = NewForm<TCollectionForm>(&Application());
    form->FDesigner = &designer;
    form->FComponent.Set(place.Component);
    form->FPath = place.Path;
    if (const HWND surface = designer.Form().ParentWindow()) { // in its corner, where no form begins
        constexpr int margin = 24;
        RECT area;
        GetWindowRect(surface, &area);
        form->SetBounds(area.right - form->Width() - margin, area.top + margin, form->Width(), form->Height());
    }
    form->Refresh();
    form->Show();
}

/// The window stays in front of the designer's.
void TCollectionForm::CreateParams(TCreateParams& params) {
    TDesignWindow::CreateParams(params);
    const HWND surface = FDesigner ? FDesigner->Form().ParentWindow() : nullptr;
    params.WndParent = surface ? GetAncestor(surface, GA_ROOT) : params.WndParent;
}

/// Looks where the collection is now: items around it may have moved, and the form may have been read anew; then it is
/// the one at its old place. False: it has gone.
bool TCollectionForm::Find() {
    if (!FDesigner) {
        return false;
    }
    if (!FComponent) {
        FComponent.Set(FDesigner->Form().FindComponent(FComponentName));
    }
    TCollection* atOldPlace = nullptr;
    std::string place;
    if (FComponent) {
        ForEachCollection(*FComponent.Get(), [&](const std::string& path, TCollection& found) {
            atOldPlace = path == FPath ? &found : atOldPlace;
            place = &found == FCollection ? path : place;
        });
    }
    if (place.empty()) {
        FCollection = atOldPlace;
    } else {
        FPath = place;
    }
    return FCollection != nullptr;
}

/// Closes. The window itself goes later, and by then the designer may have gone.
void TCollectionForm::GiveUp() {
    FDesigner = nullptr;
    FComponent.Set(nullptr);
    FCollection = nullptr;
    Close();
}

void TCollectionForm::FormClose(TObject*, TCloseAction& action) {
    action = caFree;
    if (Find() && !SelectedInDesigner().empty()) {
        FDesigner->SelectOne(*FComponent.Get());
    }
    FDesigner = nullptr;
}

// --- What is shown

void TCollectionForm::Refresh() {
    if (!Find()) {
        GiveUp();
        return;
    }
    FComponentName = FComponent->Name();
    SetCaption(FComponentName + FPath);
    TStringList texts;
    for (const TCollectionItem* item : *FCollection) {
        texts.Add(TextOf(*item));
    }
    if (!ItemList->Items().Equals(texts)) {
        const int top = ItemList->TopIndex();
        ItemList->SetItems(texts);
        ItemList->SetTopIndex(std::clamp(top, 0, std::max(texts.Count() - 1, 0)));
    }
    const std::vector<int> selected = SelectedInDesigner();
    for (int i = 0; i < texts.Count(); ++i) {
        const bool isSelected = std::ranges::binary_search(selected, i);
        if (ItemList->Selected(i) != isSelected) {
            ItemList->SetSelected(i, isSelected);
            ItemList->SetItemIndex(i); // from where arrow keys go on
        }
    }
    UpdateButtons();
}

void TCollectionForm::UpdateButtons() {
    const std::vector<int> chosen = Chosen();
    const auto enable = [this](TButton& button, bool value) {
        if (!value && button.Focused()) {
            ItemList->SetFocus(); // keys that go to a disabled button are lost
        }
        button.SetEnabled(value);
    };
    enable(*DeleteButton, !chosen.empty());
    enable(*UpButton, !chosen.empty() && chosen.front() > 0);
    enable(*DownButton, !chosen.empty() && chosen.back() + 1 < ItemList->Items().Count());
}

std::vector<int> TCollectionForm::Chosen() const {
    std::vector<int> chosen;
    for (int i = 0; i < ItemList->Items().Count(); ++i) {
        if (ItemList->Selected(i)) {
            chosen.push_back(i);
        }
    }
    return chosen;
}

/// The items that the inspector shows.
std::vector<int> TCollectionForm::SelectedInDesigner() const {
    std::vector<int> selected;
    const TDesignSelection selection = FDesigner->Selection();
    for (int i = 0; i < FCollection->Count(); ++i) {
        if (std::ranges::find(selection, FCollection->GetItem(i)) != selection.end()) {
            selected.push_back(i);
        }
    }
    return selected;
}

/// Shows these items in the inspector, and the component without any.
void TCollectionForm::Choose(const std::vector<int>& indices) {
    if (!Find()) {
        return;
    }
    TDesignSelection items;
    for (const int index : indices) {
        if (index >= 0 && index < FCollection->Count()) {
            items.push_back(FCollection->GetItem(index));
        }
    }
    FDesigner->Select(items.empty() ? TDesignSelection{FComponent.Get()} : items);
}

void TCollectionForm::ItemListClick(TObject*) { Choose(Chosen()); }

// --- What is done

/// One step that can be undone. False when it has failed; the user has been told then.
bool TCollectionForm::Do(const char* what, const std::function<void(TCollection& items)>& change) {
    if (!Find()) {
        return false;
    }
    bool isDone = false;
    try {
        FDesigner->Do(what, [&, &items = *FCollection] { change(items); });
        isDone = true;
    } catch (const EAbort&) {
        isDone = false;
    } catch (const std::exception& error) {
        Application().MessageBox(error.what(), Caption(), MB_OK | MB_ICONERROR);
    }
    if (FDesigner) {
        Refresh();
    }
    return isDone && FDesigner;
}

void TCollectionForm::AddButtonClick(TObject*) {
    if (Do("Add item", [](TCollection& items) { items.Add(); })) {
        NotifyItemInserted(*FDesigner, *FCollection->GetItem(FCollection->Count() - 1));
        Choose({FCollection->Count() - 1});
    }
}

void TCollectionForm::DeleteButtonClick(TObject*) {
    const std::vector<int> chosen = Chosen();
    if (chosen.empty() || !Find()) {
        return;
    }
    FDesigner->SelectOne(*FComponent.Get()); // nobody shows what goes
    const bool isDone = Do("Delete item", [&](TCollection& items) {
        for (auto index = chosen.rbegin(); index != chosen.rend(); ++index) {
            NotifyItemDeleted(*FDesigner, *items.GetItem(*index));
            items.Delete(*index);
        }
    });
    if (isDone) {
        Choose({std::min(chosen.front(), FCollection->Count() - 1)});
    } else {
        Choose(chosen);
    }
}

void TCollectionForm::Move(int by) {
    std::vector<int> chosen = Chosen();
    const int count = ItemList->Items().Count();
    if (chosen.empty() || chosen.front() + by < 0 || chosen.back() + by >= count) {
        return;
    }
    Do("Move item", [&](TCollection& items) {
        for (size_t i = 0; i < chosen.size(); ++i) { // the foremost one first, or it would be in the way
            int& index = chosen[by < 0 ? i : chosen.size() - 1 - i];
            items.GetItem(index)->SetIndex(index + by);
            index += by;
        }
    });
}

void TCollectionForm::FormKeyDown(TObject*, uint16_t& key, TShiftState shift) {
    const bool ctrl = shift.Contains(ssCtrl);
    switch (key) {
    case VK_INSERT: AddButtonClick(this); break;
    case VK_DELETE: DeleteButtonClick(this); break;
    case VK_ESCAPE: Close(); break;
    case VK_UP:
    case VK_DOWN:
        if (!ctrl) {
            return;
        }
        Move(key == VK_UP ? -1 : 1);
        break;
    case 'Z':
    case 'Y':
        if (!ctrl || !FDesigner) {
            return;
        }
        key == 'Z' ? FDesigner->Undo() : FDesigner->Redo();
        break;
    default: return;
    }
    key = 0;
}

// --- What happens to the form

void TCollectionForm::ItemDeleted(IDesigner& designer, TPersistent& item) {
    if (&designer != FDesigner) {
        return;
    }
    bool isInside = &item == FComponent.Get();
    ForEachCollection(
        item, [&](const std::string&, const TCollection& found) { isInside = isInside || &found == FCollection; });
    if (isInside) {
        GiveUp();
    }
}

void TCollectionForm::ItemsModified(IDesigner& designer) {
    if (&designer != FDesigner) {
        return;
    }
    Refresh();
    if (const std::vector<int> chosen = std::exchange(FChosenBefore, {}); !chosen.empty()) {
        Choose(chosen);
    }
}

void TCollectionForm::SelectionChanged(IDesigner& designer, const TDesignSelection&) {
    if (&designer != FDesigner) {
        return;
    }
    if (FComponent) { // else it is the new form's
        FChosenBefore.clear();
    }
    Refresh();
}

void TCollectionForm::DesignerClosed(IDesigner& designer, bool goingDormant) {
    if (&designer != FDesigner) {
        return;
    }
    if (!goingDormant) {
        GiveUp();
        return;
    }
    FChosenBefore = FCollection ? SelectedInDesigner() : std::vector<int>();
    FComponent.Set(nullptr);
    FCollection = nullptr;
}

// --- Editors

std::string TCollectionProperty::GetValue() const {
    const auto& collection = dynamic_cast<const TCollection&>(*PropInfo().GetObj(Instance()));
    return collection.Count() == 1 ? "(1 item)" : "(" + IntToStr(collection.Count()) + " items)";
}

void TCollectionProperty::Edit() {
    if (auto* const designer = dynamic_cast<TFormDesigner*>(&Designer())) {
        TCollectionForm::Edit(*designer, dynamic_cast<const TCollection&>(*PropInfo().GetObj(Instance())));
    }
}

namespace {

/// Components with collections: a command for each.
class TCollectionVerbs : public TComponentEditor {
public:
    TCollectionVerbs(TComponent& component, IDesigner& designer)
        : TComponentEditor(component, designer),
          FEditors(GetPropertyEditors(designer, {&component}, [](const TPropInfo& info) {
              return info.Kind == TTypeKind::SubObject && info.Class &&
                     info.Class().InheritsFrom(TCollection::StaticClass());
          })) {}

    int GetVerbCount() const override { return static_cast<int>(FEditors.size()); }
    std::string GetVerb(int index) const override { return FEditors.at(static_cast<size_t>(index))->GetName() + "..."; }
    void ExecuteVerb(int index) override { FEditors.at(static_cast<size_t>(index))->Edit(); }

private:
    std::vector<TPropertyEditorPtr> FEditors;
};

} // namespace

void RegisterCollectionEditor() {
    RegisterPropertyEditor(TCollection::StaticClass(), nullptr, {}, MakePropertyEditor<TCollectionProperty>);
    RegisterComponentEditor<TCollectionVerbs>(TComponent::StaticClass());
}

} // namespace kx::designer
