#include "ui/ActnList.h"

#include "ui/Controls.h"

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
    const TNotifyEvent handler = FOnExecute; // which may free the action
    handler(this);
    return static_cast<bool>(handler);
}

bool TBasicAction::Update() {
    const TNotifyEvent handler = FOnUpdate;
    handler(this);
    return static_cast<bool>(handler);
}

void TBasicAction::TellLinks(const TActionLook& before) {
    // What follows the action may let go of it meanwhile, or go.
    const std::vector<TActionLink*> links = FLinks;
    for (TActionLink* link : links) {
        if (std::find(FLinks.begin(), FLinks.end(), link) != FLinks.end()) {
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
    // The handler of the update may free the action, which then is executed no more.
    TActionLink alive({});
    alive.SetAction(this);
    Update();
    return alive.Action() && Enabled() && TBasicAction::Execute();
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

void TActionList::SetImages(TImageList* value) {
    if (FImages) {
        RemoveFreeNotification(FImages);
    }
    FImages = value;
    if (value) {
        FreeNotification(value);
    }
}

void TActionList::GetChildren(const TGetChildProc& proc, TComponent*) {
    for (TCustomAction* action : std::vector<TCustomAction*>(FActions)) {
        proc(action);
    }
}

void TActionList::Notification(TComponent* component, TOperation operation) {
    TComponent::Notification(component, operation);
    if (operation == opRemove && component == FImages) {
        FImages = nullptr;
    }
}

// --- What follows an action

namespace {

/// Sets what the action changed, where the client had the same as the action before.
template <class Get, class Set, class V> void Follow(const V& before, const V& now, Get&& get, Set&& set) {
    if (before != now && get() == before) {
        set(now);
    }
}

/// The part of the look that controls and menu items have in common.
template <class Client> void FollowLook(Client& client, const TActionLook& before, const TActionLook& now) {
    Follow(
        before.Caption, now.Caption, [&] { return client.Caption(); }, [&](auto& v) { client.SetCaption(v); });
    Follow(
        before.Hint, now.Hint, [&] { return client.Hint(); }, [&](auto& v) { client.SetHint(v); });
    Follow(
        before.Enabled, now.Enabled, [&] { return client.Enabled(); }, [&](auto& v) { client.SetEnabled(v); });
    Follow(
        before.Visible, now.Visible, [&] { return client.Visible(); }, [&](auto& v) { client.SetVisible(v); });
}

/// Takes the common part over at once; with `checkDefaults` where the client has nothing of its own.
template <class Client> void TakeLook(Client& client, const TActionLook& look, bool checkDefaults) {
    if (!checkDefaults || client.Caption().empty() || client.Caption() == client.Name()) {
        client.SetCaption(look.Caption);
    }
    if (!checkDefaults || client.Hint().empty()) {
        client.SetHint(look.Hint);
    }
    if (!checkDefaults || client.Enabled()) {
        client.SetEnabled(look.Enabled);
    }
    if (!checkDefaults || client.Visible()) {
        client.SetVisible(look.Visible);
    }
    if (!checkDefaults) {
        client.SetOnClick({}); // a click executes the action
    }
}

} // namespace

// --- TControl

TBasicAction* TControl::Action() const { return FActionLink ? FActionLink->Action() : nullptr; }

void TControl::SetAction(TBasicAction* value) {
    if (!value) {
        FActionLink.reset();
        return;
    }
    FActionLink = std::make_unique<TActionLink>(
        [this](TCustomAction& action, const TActionLook& before) { FollowLook(*this, before, action.Look()); });
    FActionLink->SetAction(value);
    ActionChange(value, IsLoading());
}

void TControl::ActionChange(TObject* sender, bool checkDefaults) {
    if (const auto* const action = dynamic_cast<TCustomAction*>(sender)) {
        TakeLook(*this, action->Look(), checkDefaults);
    }
}

// --- TMenuItem

TBasicAction* TMenuItem::Action() const { return FActionLink ? FActionLink->Action() : nullptr; }

void TMenuItem::SetAction(TBasicAction* value) {
    if (!value) {
        FActionLink.reset();
        return;
    }
    FActionLink = std::make_unique<TActionLink>([this](TCustomAction& action, const TActionLook& before) {
        const TActionLook now = action.Look();
        FollowLook(*this, before, now);
        Follow(
            before.Checked, now.Checked, [&] { return Checked(); }, [&](auto& v) { SetChecked(v); });
        Follow(
            before.ImageIndex, now.ImageIndex, [&] { return ImageIndex(); }, [&](auto& v) { SetImageIndex(v); });
        Follow(
            before.ShortCut, now.ShortCut, [&] { return ShortCut(); }, [&](auto& v) { SetShortCut(v); });
    });
    FActionLink->SetAction(value);
    if (const auto* const action = dynamic_cast<TCustomAction*>(value)) {
        const bool checkDefaults = IsLoading();
        TakeLook(*this, action->Look(), checkDefaults);
        if (!checkDefaults || !Checked()) {
            SetChecked(action->Checked());
        }
        if (!checkDefaults || ImageIndex() == -1) {
            SetImageIndex(action->ImageIndex());
        }
        if (!checkDefaults || ShortCut() == 0) {
            SetShortCut(action->ShortCut());
        }
    }
}

} // namespace kx
