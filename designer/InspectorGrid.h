// SPDX-License-Identifier: MIT
#pragma once

#include "designer/FormDesigner.h"
#include "kx/ide/PropertyEditors.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/MouseWheel.h"

#include <set>
#include <string>
#include <vector>

namespace kx::designer {

/// The properties, or the events, of what is selected, one below the other, with a field to edit the chosen one.
class TInspectorGrid : public TCustomControl, private IDesignNotification {
    KX_CLASS()

    explicit TInspectorGrid(TComponent* owner = nullptr);
    ~TInspectorGrid() override;

    /// Shows what is selected in the designer; null shows nothing.
    void ShowSelection(TFormDesigner* designer);
    void UpdateValues(); ///< Some have changed.
    bool ShowsEvents() const { return FShowsEvents; }
    void SetShowsEvents(bool value);
    /// Shows just the properties whose names contain the text, in any letter case.
    void SetFilter(const std::string& value);

    int RowCount() const { return static_cast<int>(FRows.size()); }
    std::string RowName(int row) const { return FRows.at(static_cast<size_t>(row)).Name; }
    std::string RowValue(int row) const;        ///< Empty when several objects differ.
    bool RowIsBold(int row) const;              ///< The form file tells the value.
    std::string RowHint(int row) const;         ///< What kind of value it is.
    int FindRow(const std::string& name) const; ///< -1 when it is not shown.
    TRect RowRect(int row) const;               ///< In client coordinates; its value is in the right part.
    TRect ValueRect(int row) const;
    int SelectedRow() const { return FSelected; }
    void SelectRow(int row);
    void Expand(int row, bool value);
    /// What is wrong with the text that was typed last; it stands below the row.
    const std::string& Error() const { return FError; }

    /// Sets the value that is in the field. False: it is wrong, and the field and the old value stay.
    bool Commit();
    void Revert();         ///< Shows the value again that holds.
    void EditRow(int row); ///< What a double click does.

    void WndProc(TMessage& message) override;
    void CreateParams(TCreateParams& params) override;

    /// Told when the row for which hints are shown is another one.
    void SetOnRowSelected(TNotifyEvent value) { FOnRowSelected = std::move(value); }

protected:
    void Paint() override;
    void Resize() override;
    void MouseDown(TMouseButton button, TShiftState shift, int x, int y) override;
    void MouseMove(TShiftState shift, int x, int y) override;
    void MouseUp(TMouseButton button, TShiftState shift, int x, int y) override;
    void DblClick() override;
    void KeyDown(uint16_t& key, TShiftState shift) override;
    bool WantsKey(uint16_t key, TShiftState shift) override;

private:
    int RowHeight() const { return ScaleLength(20); }
    int Indent() const { return ScaleLength(12); }
    int FirstIndent() const { return ScaleLength(16); } ///< Room for the box that expands.
    int ButtonWidth() const { return ScaleLength(20); }

    struct TRow {
        TPropertyEditorPtr Editor;
        std::string Name;
        std::string Path; ///< With the names of those around it.
        int Level;
        bool CanExpand;
        bool IsExpanded;
    };

    void ItemDeleted(IDesigner&, TPersistent&) override { Drop(); }
    void ItemInserted(IDesigner&, TPersistent&) override {}
    void ItemsModified(IDesigner&) override {}
    void SelectionChanged(IDesigner&, const TDesignSelection&) override {}
    void DesignerClosed(IDesigner&, bool) override { Drop(); }

    void Drop(); ///< The objects go, and what is known of them.
    void Build();
    void AddRow(const TPropertyEditorPtr& editor, int level, const std::string& around);
    int RowAt(int y) const;
    int Split() const; ///< Where the values begin.
    TRect ButtonRect(int row) const;
    bool HasList(int row) const;
    void PlaceField();
    void ShowField();
    void FieldChanged();
    void FieldKey(uint16_t& key, TShiftState shift);
    void SetValueText(TPropertyEditor& editor, const std::string& text);
    void Choose(int row, int y);
    void UpdateScroll();
    void Scroll(int to);
    void Wheel(int delta);
    void ScrollToSelected();
    std::string ValueOf(const TPropertyEditor& editor) const;
    static std::string NameOf(const TPropertyEditor& editor);               ///< Of one that throws: the property's.
    static TPropertyAttributes AttributesOf(const TPropertyEditor& editor); ///< Of one that throws: read-only.
    TWinControl* Field();

    TFormDesigner* FDesigner = nullptr;
    std::vector<TRow> FRows;
    std::set<std::string> FExpanded; ///< Paths.
    std::string FFilter;
    std::string FWanted = "Caption"; ///< The row that is selected when there is one of that name.
    std::string FError;
    bool FShowsEvents = false;
    bool FFilling = false;
    bool FEdited = false; ///< The field holds what the user has typed.
    int FSelected = -1;
    int FTop = 0; ///< Pixels that are scrolled away.
    TMouseWheel FWheel;
    int FNameShare = 45; ///< Of a hundred.
    bool FDragsSplit = false;
    TEdit FEdit;
    TComboBox FCombo;
    TNotifyEvent FOnRowSelected;
};

} // namespace kx::designer
