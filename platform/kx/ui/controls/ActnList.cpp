// SPDX-License-Identifier: MIT
// Actions and the lists that they are in.

#include "kx/ui/controls/ActnList.h"

#include <algorithm>

namespace kx {

// --- TActionLink

void TActionLink::SetAction(TBasicAction* value) {
    if (FAction) {
        std::erase(FAction->FLinks, this);
    }
    FAction = value;
    if (value) {
        value->FLinks.push_back(this);
    }
}

// --- TBasicAction

const TClass& TBasicAction::StaticClass() {
    static const TClassBuilder<TBasicAction> cls("TBasicAction", TComponent::StaticClass());
    return cls.Class();
}

TBasicAction::~TBasicAction() {
    for (TActionLink* link : FLinks) {
        link->FAction = nullptr;
    }
}

bool TBasicAction::Execute() {
    const TNotifyEvent handler = FOnExecute; // a copy: the handler may free the action
    handler(this);
    return static_cast<bool>(handler);
}

bool TBasicAction::Update() {
    const TNotifyEvent handler = FOnUpdate;
    handler(this);
    return static_cast<bool>(handler);
}

void TBasicAction::TellLinks(const TActionLook& before) {
    // A control that follows the action may meanwhile let go of it, go itself, or free it.
    const TAlive alive(*this);
    const std::vector<TActionLink*> links = FLinks;
    for (TActionLink* link : links) {
        if (alive && std::find(FLinks.begin(), FLinks.end(), link) != FLinks.end()) {
            const TActionLink::TChangeEvent handler = link->FOnChange;
            handler(static_cast<TCustomAction&>(*this), before);
        }
    }
}

// --- TCustomAction

const TClass& TCustomAction::StaticClass() {
    static const TClassBuilder<TCustomAction> cls("TCustomAction", TBasicAction::StaticClass());
    return cls.Class();
}

TCustomAction::~TCustomAction() {
    Destroying();
    SetActionList(nullptr);
}

void TCustomAction::SetActionList(TActionList* value) {
    if (FActionList) {
        std::erase(FActionList->FActions, this);
    }
    FActionList = value;
    if (value) {
        value->FActions.push_back(this);
    }
}

bool TCustomAction::Execute() {
    return Outlives(*this, [this] { Update(); }) && Enabled() && TBasicAction::Execute();
}

TComponent* TCustomAction::GetParentComponent() const { return FActionList; }

void TCustomAction::SetParentComponent(TComponent* parent) {
    if (auto* const list = dynamic_cast<TActionList*>(parent)) {
        SetActionList(list);
    }
}

// --- TAction

const TClass& TAction::StaticClass() {
    static const TClassBuilder<TAction> cls("TAction", TCustomAction::StaticClass(), [](auto& c) {
        using T = TAction;
        c.Creatable();
        c.Property("Caption", &T::Caption, &T::SetCaption);
        c.Property("Checked", &T::Checked, &T::SetChecked).Default = false;
        c.Property("Enabled", &T::Enabled, &T::SetEnabled).Default = true;
        c.Property("Hint", &T::Hint, &T::SetHint);
        c.Property("ImageIndex", &T::ImageIndex, &T::SetImageIndex).Default = -1;
        c.Property("ShortCut", &T::ShortCut, &T::SetShortCut).Default = 0;
        c.Property("Visible", &T::Visible, &T::SetVisible).Default = true;
        c.Property("OnExecute", &T::OnExecute, &T::SetOnExecute);
        c.Property("OnUpdate", &T::OnUpdate, &T::SetOnUpdate);
    });
    return cls.Class();
}

// --- TActionList

const TClass& TActionList::StaticClass() {
    static const TClassBuilder<TActionList> cls("TActionList", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Reference("Images", &TActionList::Images, &TActionList::SetImages);
    });
    return cls.Class();
}

TActionList::~TActionList() {
    Destroying();
    for (TCustomAction* action : FActions) {
        action->FActionList = nullptr;
    }
}

TCustomAction* TActionList::Actions(int index) const {
    if (index < 0 || index >= ActionCount()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return FActions[static_cast<size_t>(index)];
}

void TActionList::GetChildren(const TGetChildProc& proc, TComponent*) {
    for (TCustomAction* action : std::vector<TCustomAction*>(FActions)) {
        proc(action);
    }
}

} // namespace kx
