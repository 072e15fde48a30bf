// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Strings.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <memory>
#include <vector>

namespace kx {

/// Radio buttons in a frame, one for each text, of which one at most is chosen.
class TRadioGroup : public TGroupBox {
    KX_CLASS()

    explicit TRadioGroup(TComponent* owner = nullptr);
    ~TRadioGroup() override;

    TStrings& Items() { return *FItems; }
    const TStrings& Items() const { return *FItems; }
    void SetItems(const TStrings& value) { FItems->Assign(&value); }
    int ItemIndex() const { return FItemIndex; } ///< -1: none is chosen.
    /// An index outside the items chooses none. A change fires OnClick, unless the form is being read.
    void SetItemIndex(int value);
    int Columns() const { return FColumns; }
    void SetColumns(int value);             ///< 1 to 16; others are taken to the nearest of them.
    TRadioButton& Buttons(int index) const; ///< @throws EListError for an index outside the items.

    void GetChildren(const TGetChildProc& proc, TComponent* root) override; ///< Without the buttons.
    void SetBounds(int left, int top, int width, int height) override;
    void CreateParams(TCreateParams& params) override;

protected:
    void Loaded() override;
    void FontChanged() override;
    void EnabledChanged() override;
    /// Whether the user may choose another button now.
    virtual bool CanModify() const { return true; }

private:
    void ItemsChanged();
    void ArrangeButtons();
    void UpdateTabStops();
    void CheckChosen();
    void ButtonClicked(TObject* sender);

    std::unique_ptr<TStringList> FItems;
    std::vector<TRadioButton*> FButtons; ///< Owned as components.
    int FItemIndex = -1;
    int FColumns = 1;
    bool FUpdating = false; ///< The buttons follow ItemIndex, not the other way round.
};

} // namespace kx
