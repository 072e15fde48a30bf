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
    // What follows the action may let go of it meanwhile, or go, or free it.
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

// A client tells of its changes, and may be freed by those who hear of them, with its action. So the looks are copies,
// and each step says whether the client lives on.

/// Sets what the action changed, where the client had the same as the action before.
template <class Client, class Get, class Set, class V>
bool Follow(const Client& client, const V& before, const V& now, Get&& get, Set&& set) {
    return before == now || get() != before || Outlives(client, [&] { set(now); });
}

/// The part of the look that controls and menu items have in common.
template <class Client> bool FollowLook(Client& c, const TActionLook& before, const TActionLook& now) {
    return Follow(
               c, before.Caption, now.Caption, [&] { return c.Caption(); }, [&](auto& v) { c.SetCaption(v); }) &&
           Follow(
               c, before.Hint, now.Hint, [&] { return c.Hint(); }, [&](auto& v) { c.SetHint(v); }) &&
           Follow(
               c, before.Enabled, now.Enabled, [&] { return c.Enabled(); }, [&](auto& v) { c.SetEnabled(v); }) &&
           Follow(
               c, before.Visible, now.Visible, [&] { return c.Visible(); }, [&](auto& v) { c.SetVisible(v); });
}

/// Does a step of taking a look over, where it is wanted.
template <class Client, class F> bool Take(const Client& client, bool wanted, F&& step) {
    return !wanted || Outlives(client, std::forward<F>(step));
}

/// Takes the common part over at once; with `checkDefaults` where the client has nothing of its own.
template <class Client> bool TakeLook(Client& c, const TActionLook& look, bool checkDefaults) {
    const bool all = !checkDefaults;
    return Take(c, all || c.Caption().empty() || c.Caption() == c.Name(), [&] { c.SetCaption(look.Caption); }) &&
           Take(c, all || c.Hint().empty(), [&] { c.SetHint(look.Hint); }) &&
           Take(c, all || c.Enabled(), [&] { c.SetEnabled(look.Enabled); }) &&
           Take(c, all || c.Visible(), [&] { c.SetVisible(look.Visible); }) &&
           Take(c, all, [&] { c.SetOnClick({}); }); // a click executes the action
}

} // namespace

// --- TControl

TBasicAction* TControl::Action() const { return FActionLink ? FActionLink->Action() : nullptr; }

void TControl::SetAction(TBasicAction* value) {
    if (!value) {
        FActionLink.reset();
        return;
    }
    FActionLink = std::make_unique<TActionLink>([this](TCustomAction& action, const TActionLook& before) {
        const TActionLook now = action.Look();
        FollowLook(*this, before, now);
    });
    FActionLink->SetAction(value);
    ActionChange(value, IsLoading());
}

void TControl::ActionChange(TObject* sender, bool checkDefaults) {
    if (const auto* const action = dynamic_cast<TCustomAction*>(sender)) {
        const TActionLook look = action->Look();
        TakeLook(*this, look, checkDefaults);
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
        static_cast<void>(
            FollowLook(*this, before, now) &&
            Follow(
                *this, before.Checked, now.Checked, [&] { return Checked(); }, [&](auto& v) { SetChecked(v); }) &&
            Follow(
                *this, before.ImageIndex, now.ImageIndex, [&] { return ImageIndex(); },
                [&](auto& v) { SetImageIndex(v); }) &&
            Follow(
                *this, before.ShortCut, now.ShortCut, [&] { return ShortCut(); }, [&](auto& v) { SetShortCut(v); }));
    });
    FActionLink->SetAction(value);
    if (const auto* const action = dynamic_cast<TCustomAction*>(value)) {
        const bool all = !IsLoading();
        const TActionLook look = action->Look();
        static_cast<void>(TakeLook(*this, look, !all) &&
                          Take(*this, all || !Checked(), [&] { SetChecked(look.Checked); }) &&
                          Take(*this, all || ImageIndex() == -1, [&] { SetImageIndex(look.ImageIndex); }) &&
                          Take(*this, all || ShortCut() == 0, [&] { SetShortCut(look.ShortCut); }));
    }
}

} // namespace kx
