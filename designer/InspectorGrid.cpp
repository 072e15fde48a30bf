// SPDX-License-Identifier: MIT
// The rows of the inspector.

#include "designer/InspectorGrid.h"

#include "kx/core/Collections.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

const TClass& TInspectorGrid::StaticClass() {
    static const TClassBuilder<TInspectorGrid> cls("TInspectorGrid", TCustomControl::StaticClass(),
                                                   [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TInspectorGrid::TInspectorGrid(TComponent* owner) : TCustomControl(owner) {
    SetTabStop(true);
    SetDoubleBuffered(true);
    SetControlStyle({csCaptureMouse, csClickEvents, csDoubleClicks, csOpaque});
    FEdit.SetBorderStyle(bsNone);
    FEdit.SetVisible(false);
    FEdit.SetParent(this);
    FEdit.SetOnChange([this](TObject*) { FieldChanged(); });
    FEdit.SetOnKeyDown([this](TObject*, uint16_t& key, TShiftState shift) { FieldKey(key, shift); });
    FEdit.SetOnExit([this](TObject*) { Commit(); });
    FCombo.SetVisible(false);
    FCombo.SetParent(this);
    FCombo.SetDropDownCount(16);
    FCombo.SetOnChange([this](TObject*) {
        FieldChanged();
        if (FCombo.ItemIndex() >= 0 && !FFilling) {
            Commit(); // chosen, not typed
        }
    });
    FCombo.SetOnKeyDown([this](TObject*, uint16_t& key, TShiftState shift) { FieldKey(key, shift); });
    FCombo.SetOnExit([this](TObject*) { Commit(); });
    const auto swallow = [](TObject*, char32_t& key) {
        if (key == '\r' || key == '\x1B') {
            key = 0; // or the system beeps
        }
    };
    FEdit.SetOnKeyPress(swallow);
    FCombo.SetOnKeyPress(swallow);
    const auto wheel = [this](TObject*, TShiftState, int delta, const TPoint&, bool& handled) {
        handled = !FCombo.DroppedDown(); // a closed list would go on to its next value
        if (handled) {
            Wheel(delta);
        }
    };
    FEdit.SetOnMouseWheel(wheel);
    FCombo.SetOnMouseWheel(wheel);
    RegisterDesignNotification(*this);
}

TInspectorGrid::~TInspectorGrid() {
    Destroying();
    UnregisterDesignNotification(*this);
    FEdit.SetOnExit(nullptr);
    FCombo.SetOnExit(nullptr);
}

void TInspectorGrid::CreateParams(TCreateParams& params) {
    TCustomControl::CreateParams(params);
    params.Style |= WS_VSCROLL | WS_CLIPCHILDREN;
}

// --- Rows

void TInspectorGrid::Drop() {
    FRows.clear();
    FSelected = -1;
    FEdited = false;
    FError.clear();
    Invalidate();
}

void TInspectorGrid::ShowSelection(TFormDesigner* designer) {
    FDesigner = designer;
    FError.clear();
    FEdited = false;
    Build();
}

void TInspectorGrid::SetShowsEvents(bool value) {
    if (FShowsEvents != value) {
        Commit();
        FShowsEvents = value;
        FTop = 0;
        Build();
    }
}

void TInspectorGrid::SetFilter(const std::string& value) {
    FFilter = UpperCase(value);
    FTop = 0;
    Build();
}

void TInspectorGrid::AddRow(const TPropertyEditorPtr& editor, int level, const std::string& around) {
    std::string name = NameOf(*editor);
    if (level == 0 && UpperCase(name).find(FFilter) == std::string::npos) {
        return;
    }
    const std::string path = around + name;
    const bool canExpand = AttributesOf(*editor).Contains(paSubProperties);
    const bool isExpanded = canExpand && FExpanded.count(path) > 0;
    FRows.push_back({editor, std::move(name), path, level, canExpand, isExpanded});
    if (isExpanded) {
        try {
            editor->GetProperties([&](const TPropertyEditorPtr& inner) { AddRow(inner, level + 1, path + "."); });
        } catch (const std::exception& error) {
            FError = error.what(); // what it has named until then is shown
        }
    }
}

void TInspectorGrid::Build() {
    FRows.clear();
    FSelected = -1;
    if (FDesigner) {
        auto editors = GetPropertyEditors(*FDesigner, FDesigner->Selection(), [this](const TPropInfo& info) {
            return (info.Kind == TTypeKind::Event) == FShowsEvents;
        });
        std::ranges::stable_sort(editors, {},
                                 [](const TPropertyEditorPtr& editor) { return UpperCase(NameOf(*editor)); });
        for (const TPropertyEditorPtr& editor : editors) {
            AddRow(editor, 0, {});
        }
    }
    UpdateScroll();
    for (int i = 0; i < RowCount(); ++i) {
        if (FRows[static_cast<size_t>(i)].Path == FWanted) {
            FSelected = i;
        }
    }
    ScrollToSelected();
    ShowField();
    Invalidate();
}

void TInspectorGrid::UpdateValues() {
    if (FRows.empty()) {
        Build();
        return;
    }
    if (!FEdited) {
        ShowField();
    }
    Invalidate();
}

std::string TInspectorGrid::NameOf(const TPropertyEditor& editor) {
    try {
        return editor.GetName();
    } catch (const std::exception&) {
        return editor.PropInfo().Name;
    }
}

TPropertyAttributes TInspectorGrid::AttributesOf(const TPropertyEditor& editor) {
    try {
        return editor.GetAttributes();
    } catch (const std::exception&) {
        return {paReadOnly};
    }
}

std::string TInspectorGrid::ValueOf(const TPropertyEditor& editor) const {
    try {
        return editor.AllEqual() ? editor.GetValue() : std::string();
    } catch (const std::exception& error) {
        return std::string("(") + error.what() + ")";
    }
}

std::string TInspectorGrid::RowValue(int row) const { return ValueOf(*FRows.at(static_cast<size_t>(row)).Editor); }

namespace {

/// The form file tells the value, or that of a part.
bool IsChanged(TPropertyEditor& editor) {
    const TPropInfo& info = editor.PropInfo();
    const TObject* const part = info.Kind == TTypeKind::SubObject ? info.GetObj(editor.Instance()) : nullptr;
    if (const auto* const collection = dynamic_cast<const TCollection*>(part)) {
        return collection->Count() > 0;
    }
    const bool hasParts = part && editor.GetAttributes().Contains(paSubProperties);
    if (editor.IsDefault() || !hasParts) {
        return !editor.IsDefault();
    }
    bool isChanged = false;
    editor.GetProperties([&](const TPropertyEditorPtr& inner) { isChanged = isChanged || IsChanged(*inner); });
    return isChanged;
}

} // namespace

bool TInspectorGrid::RowIsBold(int row) const {
    try {
        return IsChanged(*FRows.at(static_cast<size_t>(row)).Editor);
    } catch (const std::exception&) {
        return false;
    }
}

std::string TInspectorGrid::RowHint(int row) const {
    const TRow& one = FRows.at(static_cast<size_t>(row));
    const TPropInfo& info = one.Editor->PropInfo();
    const std::string introduced = info.Introduced ? " of " + info.Introduced->Name() : std::string();
    return one.Path + ": " + info.TypeName() + introduced;
}

int TInspectorGrid::FindRow(const std::string& name) const {
    for (int i = 0; i < RowCount(); ++i) {
        if (SameText(FRows[static_cast<size_t>(i)].Path, name)) {
            return i;
        }
    }
    return -1;
}

void TInspectorGrid::Expand(int row, bool value) {
    const TRow& one = FRows.at(static_cast<size_t>(row));
    if (one.CanExpand && one.IsExpanded != value) {
        const std::string path = one.Path;
        value ? static_cast<void>(FExpanded.insert(path)) : static_cast<void>(FExpanded.erase(path));
        FWanted = path;
        Build();
    }
}

// --- Places

TRect TInspectorGrid::RowRect(int row) const {
    // The row below which an error is told is twice as high.
    const int extra = !FError.empty() && FSelected >= 0 && row > FSelected ? RowHeight() : 0;
    const int top = row * RowHeight() + extra - FTop;
    const int height = !FError.empty() && row == FSelected ? 2 * RowHeight() : RowHeight();
    return {0, top, ClientWidth(), top + height};
}

int TInspectorGrid::Split() const { return ClientWidth() * FNameShare / 100; }

TRect TInspectorGrid::ValueRect(int row) const {
    const TRect r = RowRect(row);
    return {Split() + 1, r.Top, r.Right, r.Top + RowHeight() - 1};
}

TRect TInspectorGrid::ButtonRect(int row) const {
    const TRect r = ValueRect(row);
    return {r.Right - ButtonWidth(), r.Top, r.Right, r.Bottom};
}

int TInspectorGrid::RowAt(int y) const {
    for (int i = 0; i < RowCount(); ++i) {
        const TRect r = RowRect(i);
        if (y >= r.Top && y < r.Bottom) {
            return i;
        }
    }
    return -1;
}

bool TInspectorGrid::HasList(int row) const {
    return AttributesOf(*FRows[static_cast<size_t>(row)].Editor).Contains(paValueList);
}

void TInspectorGrid::UpdateScroll() {
    if (!HandleAllocated()) {
        return;
    }
    const int whole = (RowCount() + (FError.empty() ? 0 : 1)) * RowHeight();
    FTop = std::clamp(FTop, 0, std::max(whole - ClientHeight(), 0));
    SCROLLINFO info{sizeof info, SIF_ALL, 0, std::max(whole - 1, 0), static_cast<UINT>(std::max(ClientHeight(), 0)),
                    FTop,        0};
    SetScrollInfo(WindowHandle(), SB_VERT, &info, TRUE);
}

void TInspectorGrid::Scroll(int to) {
    FTop = to;
    UpdateScroll();
    PlaceField();
    Invalidate();
}

void TInspectorGrid::Wheel(int delta) {
    Scroll(FTop + FWheel.Lines(delta, ClientHeight() / RowHeight()) * RowHeight());
}

void TInspectorGrid::ScrollToSelected() {
    const TRect r = FSelected < 0 ? TRect{} : RowRect(FSelected);
    if (r.Top < 0) {
        Scroll(FTop + r.Top);
    } else if (r.Bottom > ClientHeight()) {
        Scroll(FTop + r.Bottom - ClientHeight());
    }
}

void TInspectorGrid::Resize() {
    TCustomControl::Resize();
    UpdateScroll();
    PlaceField();
    Invalidate();
}

void TInspectorGrid::WndProc(TMessage& message) {
    switch (message.Msg) {
    case WM_VSCROLL:
        if (message.LParam == 0) {
            switch (LOWORD(message.WParam)) {
            case SB_LINEUP: Scroll(FTop - RowHeight()); break;
            case SB_LINEDOWN: Scroll(FTop + RowHeight()); break;
            case SB_PAGEUP: Scroll(FTop - ClientHeight()); break;
            case SB_PAGEDOWN: Scroll(FTop + ClientHeight()); break;
            case SB_THUMBTRACK: Scroll(static_cast<short>(HIWORD(message.WParam))); break;
            default: break;
            }
            return;
        }
        break;
    case WM_MOUSEWHEEL: Wheel(static_cast<int16_t>(message.WParamHi())); return;
    default: break;
    }
    TCustomControl::WndProc(message);
}

// --- The field

TWinControl* TInspectorGrid::Field() {
    if (FSelected < 0) {
        return nullptr;
    }
    return HasList(FSelected) ? static_cast<TWinControl*>(&FCombo) : &FEdit;
}

void TInspectorGrid::PlaceField() {
    const TWinControl* const field = Field();
    FEdit.SetVisible(field == &FEdit);
    FCombo.SetVisible(field == &FCombo);
    if (!field) {
        return;
    }
    const TRect r = ValueRect(FSelected);
    const bool hasDialog = AttributesOf(*FRows[static_cast<size_t>(FSelected)].Editor).Contains(paDialog);
    const int right = hasDialog ? r.Right - ButtonWidth() : r.Right;
    if (field == &FEdit) {
        FEdit.SetBounds(r.Left + 3, r.Top + 2, right - r.Left - 4, RowHeight() - 4);
    } else {
        FCombo.SetBounds(r.Left - 1, r.Top - 1, right - r.Left + 2, RowHeight());
    }
}

void TInspectorGrid::ShowField() {
    PlaceField();
    if (FSelected < 0) {
        return;
    }
    const TFieldScope filling(*this, FFilling, true);
    const TRow& row = FRows[static_cast<size_t>(FSelected)];
    const TPropertyAttributes attributes = AttributesOf(*row.Editor);
    const std::string value = ValueOf(*row.Editor);
    if (attributes.Contains(paValueList)) {
        std::vector<std::string> values;
        try {
            row.Editor->GetValues([&](const std::string& one) { values.push_back(one); });
        } catch (const std::exception& error) {
            FError = error.what(); // what it has offered until then can be chosen
        }
        if (attributes.Contains(paSortList)) {
            std::ranges::sort(values, {}, [](const std::string& one) { return UpperCase(one); });
        }
        FCombo.Items().Clear();
        for (const std::string& one : values) {
            FCombo.Items().Add(one);
        }
        FCombo.SetText(value);
    } else {
        FEdit.SetReadOnly(attributes.Contains(paReadOnly));
        FEdit.SetText(value);
    }
    FEdited = false;
}

void TInspectorGrid::SelectRow(int row) {
    if (row == FSelected || row < 0 || row >= RowCount()) {
        return;
    }
    const std::string path = FRows[static_cast<size_t>(row)].Path;
    if (FEdited && !Commit()) {
        Revert();
    }
    const int now = FindRow(path);
    FSelected = now;
    if (now < 0) {
        return;
    }
    FWanted = path;
    ScrollToSelected();
    ShowField();
    Invalidate();
    FOnRowSelected(this);
}

void TInspectorGrid::FieldChanged() {
    if (FFilling || FSelected < 0) {
        return;
    }
    FEdited = true;
    if (AttributesOf(*FRows[static_cast<size_t>(FSelected)].Editor).Contains(paAutoUpdate)) {
        Commit();
    }
}

bool TInspectorGrid::Commit() {
    TWinControl* const field = Field();
    if (!FEdited || !field || !FDesigner) {
        return true;
    }
    const TPropertyEditorPtr editor = FRows[static_cast<size_t>(FSelected)].Editor; // it may lose its row
    const std::string text = field->Text();
    FEdited = false;
    try {
        SetValueText(*editor, text);
        FError.clear();
    } catch (const EAbort&) {
        return false;
    } catch (const std::exception& error) {
        FError = error.what();
        FEdited = true;
        if (const TRect r = RowRect(FSelected); r.Bottom > ClientHeight()) {
            FTop += r.Bottom - ClientHeight();
        }
    }
    UpdateScroll();
    PlaceField();
    Invalidate();
    return !FEdited;
}

void TInspectorGrid::SetValueText(TPropertyEditor& editor, const std::string& text) {
    const TFieldScope filling(*this, FFilling, AttributesOf(editor).Contains(paAutoUpdate));
    if (ValueOf(editor) == text && editor.AllEqual()) {
        return;
    }
    FDesigner->Do(editor.GetName(), [&] { editor.SetValue(text); });
}

void TInspectorGrid::Revert() {
    FError.clear();
    FEdited = false;
    UpdateScroll();
    ShowField();
    Invalidate();
}

void TInspectorGrid::EditRow(int row) {
    if (row < 0 || row >= RowCount() || !FDesigner) {
        return;
    }
    const TPropertyEditorPtr editor = FRows[static_cast<size_t>(row)].Editor;
    FError.clear();
    try {
        FDesigner->Do(editor->GetName(), [&] { editor->Edit(); });
    } catch (const EAbort&) {
        return;
    } catch (const std::exception& error) {
        FError = error.what();
    }
    UpdateScroll();
    UpdateValues();
}

} // namespace kx::designer
