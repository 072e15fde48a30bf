// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/ComponentRef.h"
#include "kx/core/Components.h"
#include "kx/graphics/ImgList.h"
#include "kx/ui/controls/ShortCuts.h"

#include <memory>
#include <string>
#include <vector>

// Actions: what a program can do, apart from the buttons and menu items that a user does it by.

namespace kx {

class TActionLink;
class TActionList;

/// How an action presents itself.
struct TActionLook {
    std::string Caption;
    std::string Hint;
    bool Enabled = true;
    bool Visible = true;
    bool Checked = false;
    int ImageIndex = -1;
    TShortCut ShortCut = 0;
};

/// Something that can be executed.
class TBasicAction : public TComponent {
    KX_CLASS()

    explicit TBasicAction(TComponent* owner = nullptr) : TComponent(owner) {}
    ~TBasicAction() override;

    /// Fires OnExecute. False when there is nothing to execute.
    virtual bool Execute();
    /// Fires OnUpdate, which brings the action's state up to date. False when there is no such handler.
    virtual bool Update();

    const TNotifyEvent& OnExecute() const { return FOnExecute; }
    void SetOnExecute(TNotifyEvent value) { FOnExecute = std::move(value); }
    const TNotifyEvent& OnUpdate() const { return FOnUpdate; }
    void SetOnUpdate(TNotifyEvent value) { FOnUpdate = std::move(value); }

protected:
    void TellLinks(const TActionLook& before);

private:
    friend class TActionLink;
    std::vector<TActionLink*> FLinks;
    TNotifyEvent FOnExecute;
    TNotifyEvent FOnUpdate;
};

/// An action with a look, which its controls and menu items follow.
class TCustomAction : public TBasicAction {
    KX_CLASS()

    explicit TCustomAction(TComponent* owner = nullptr) : TBasicAction(owner) {}
    ~TCustomAction() override;

    const TActionLook& Look() const { return FLook; }
    const std::string& Caption() const { return FLook.Caption; }
    void SetCaption(const std::string& value) { Change(FLook.Caption, value); }
    bool Enabled() const { return FLook.Enabled; } ///< A disabled action does not execute.
    void SetEnabled(bool value) { Change(FLook.Enabled, value); }
    bool Visible() const { return FLook.Visible; }
    void SetVisible(bool value) { Change(FLook.Visible, value); }
    bool Checked() const { return FLook.Checked; }
    void SetChecked(bool value) { Change(FLook.Checked, value); }
    const std::string& Hint() const { return FLook.Hint; }
    void SetHint(const std::string& value) { Change(FLook.Hint, value); }
    int ImageIndex() const { return FLook.ImageIndex; } ///< In the list's images; -1: none.
    void SetImageIndex(int value) { Change(FLook.ImageIndex, value); }
    TShortCut ShortCut() const { return FLook.ShortCut; }
    void SetShortCut(TShortCut value) { Change(FLook.ShortCut, value); }

    TActionList* ActionList() const { return FActionList; } ///< Null when it is in none.
    void SetActionList(TActionList* value);

    /// Updates the action first, and executes it if it is then enabled.
    bool Execute() override;
    TComponent* GetParentComponent() const override;
    void SetParentComponent(TComponent* parent) override;

private:
    template <class V> void Change(V& field, const V& value) {
        if (field != value) {
            const TActionLook before = FLook;
            field = value;
            TellLinks(before);
        }
    }

    friend class TActionList;
    TActionLook FLook;
    TActionList* FActionList = nullptr;
};

/// The published action.
class TAction : public TCustomAction {
    KX_CLASS()

    using TCustomAction::TCustomAction;
};

/// Actions of a form, with the images that they have in common. It does not own them.
class TActionList : public TComponent {
    KX_CLASS()

    explicit TActionList(TComponent* owner = nullptr) : TComponent(owner) {}
    ~TActionList() override;

    int ActionCount() const { return static_cast<int>(FActions.size()); }
    TCustomAction* Actions(int index) const; ///< @throws EListError "List index out of bounds (%s)"
    /// All of them, to go through; only as long as none comes or goes.
    const std::vector<TCustomAction*>& Actions() const { return FActions; }
    TImageList* Images() const { return FImages.Get(); } ///< Not owned.
    void SetImages(TImageList* value) { FImages.Set(value); }

    void GetChildren(const TGetChildProc& proc, TComponent* root) override;

private:
    friend class TCustomAction;
    std::vector<TCustomAction*> FActions;
    TComponentRef<TImageList> FImages;
};

/// Ties one control or menu item to its action. Comes loose when either of them goes.
class TActionLink {
public:
    /// Called after the action has changed. `before` is its look before the change.
    using TChangeEvent = TEvent<void(TCustomAction& action, const TActionLook& before)>;

    explicit TActionLink(TChangeEvent onChange) : FOnChange(std::move(onChange)) {}
    TActionLink(const TActionLink&) = delete;
    TActionLink& operator=(const TActionLink&) = delete;
    ~TActionLink() { SetAction(nullptr); }

    TBasicAction* Action() const { return FAction; }
    void SetAction(TBasicAction* value);

private:
    friend class TBasicAction;
    TBasicAction* FAction = nullptr;
    TChangeEvent FOnChange;
};

} // namespace kx
