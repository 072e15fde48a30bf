// SPDX-License-Identifier: MIT
// Properties that are edited in a window of their own.

#include "designer/DialogEditors.h"

#include "designer/CollectionEditor.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/dialogs/DialogsColor.h"
#include "kx/ui/widgets/ComCtrlsPages.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/win/Windows.h"

#include <commdlg.h>

namespace kx::designer {

// --- TLinesForm

const TClass& TLinesForm::StaticClass() {
    static const TClassBuilder<TLinesForm> cls("TLinesForm", TForm::StaticClass(), [](auto& c) {
        using T = TLinesForm;
        c.Method("LinesMemoChange", &T::LinesMemoChange);
    });
    return cls.Class();
}

TLinesForm::TLinesForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TLinesForm::LinesMemoChange(TObject*) {
    const int count = LinesMemo->Lines().Count();
    CountLabel->SetCaption("&Lines: " + IntToStr(count));
}

// --- TStringsProperty

namespace {

template <class T> T& PartOf(const TPropertyEditor& editor) {
    return dynamic_cast<T&>(*editor.PropInfo().GetObj(editor.Instance()));
}

} // namespace

std::string TStringsProperty::GetValue() const {
    const int count = PartOf<TStrings>(*this).Count();
    return count == 1 ? "(1 line)" : "(" + IntToStr(count) + " lines)";
}

bool TStringsProperty::IsDefault() const { return PartOf<TStrings>(*this).Count() == 0; }

void TStringsProperty::Edit() {
    const std::unique_ptr<TLinesForm, TFreeDeleter> form(NewForm<TLinesForm>(nullptr));
    const auto* const component = dynamic_cast<const TComponent*>(&Instance());
    form->SetCaption((component ? component->Name() + "." : std::string()) + GetName());
    auto& lines = PartOf<TStrings>(*this);
    form->Lines().Lines().Assign(&lines);
    form->LinesMemoChange(nullptr);
    if (form->ShowModal() == mrOk) {
        lines.Assign(&form->Lines().Lines());
        Modified();
    }
}

// --- TPictureProperty

std::string TPictureProperty::GetValue() const {
    const auto* const picture = dynamic_cast<TPicture*>(PropInfo().GetObj(Instance()));
    const auto* const graphic = picture ? picture->Graphic() : dynamic_cast<TGraphic*>(PropInfo().GetObj(Instance()));
    return !graphic || graphic->Empty() ? "(none)" : IntToStr(graphic->Width()) + " x " + IntToStr(graphic->Height());
}

bool TPictureProperty::IsDefault() const { return GetValue() == "(none)"; }

void TPictureProperty::Edit() {
    TOpenDialog dialog(nullptr);
    dialog.SetTitle("Picture for " + GetName());
    dialog.SetFilter("Pictures (*.bmp;*.ico)|*.bmp;*.ico|All files (*.*)|*.*");
    dialog.SetOptions({ofFileMustExist, ofHideReadOnly});
    if (!dialog.Execute()) {
        return;
    }
    if (auto* const picture = dynamic_cast<TPicture*>(PropInfo().GetObj(Instance()))) {
        picture->LoadFromFile(dialog.FileName());
    } else {
        PartOf<TGraphic>(*this).LoadFromFile(dialog.FileName());
    }
    Modified();
}

// --- TColorProperty

TPropertyAttributes TColorProperty::GetAttributes() const {
    return {paMultiSelect, paDialog, paValueList, paRevertable};
}

std::string TColorProperty::GetValue() const {
    const auto value = static_cast<int32_t>(PropInfo().GetOrd(Instance()));
    const std::string* const name = PropInfo().Idents ? PropInfo().Idents->NameOf(value) : nullptr;
    if (name) {
        return *name;
    }
    static constexpr char digits[] = "0123456789ABCDEF";
    constexpr int digitCount = 8;
    std::string text = "$";
    for (int i = digitCount; i-- > 0;) {
        text += digits[(static_cast<uint32_t>(value) >> (4 * i)) & 0xFU];
    }
    return text;
}

void TColorProperty::Edit() {
    TColorDialog dialog(nullptr);
    dialog.SetColor(static_cast<TColor>(PropInfo().GetOrd(Instance())));
    dialog.SetOptions({cdFullOpen});
    if (dialog.Execute()) {
        SetAll([&](TPersistent& object, const TPropInfo& info) {
            info.SetOrd(object, static_cast<int32_t>(dialog.Color()));
        });
    }
}

// --- TFontProperty

TPropertyAttributes TFontProperty::GetAttributes() const {
    return {paMultiSelect, paDialog, paSubProperties, paReadOnly};
}

void TFontProperty::Edit() {
    auto& font = PartOf<TFont>(*this);
    LOGFONTW logFont{};
    GetObjectW(font.Handle(), sizeof logFont, &logFont);
    CHOOSEFONTW choose{};
    choose.lStructSize = sizeof choose;
    choose.hwndOwner = Application().ActiveFormHandle();
    choose.lpLogFont = &logFont;
    choose.rgbColors = static_cast<COLORREF>(ColorToRGB(font.Color()));
    choose.Flags = CF_SCREENFONTS | CF_INITTOLOGFONTSTRUCT | CF_EFFECTS;
    if (!ChooseFontW(&choose)) {
        return;
    }
    const bool colorChanged = choose.rgbColors != static_cast<COLORREF>(ColorToRGB(font.Color()));
    for (const TInstanceProperty& property : Properties()) {
        auto& each = dynamic_cast<TFont&>(*property.Info->GetObj(*property.Instance));
        each.SetName(FromWide(logFont.lfFaceName));
        each.SetHeight(logFont.lfHeight);
        TFontStyles style;
        logFont.lfWeight >= FW_BOLD ? style.Include(fsBold) : style;
        logFont.lfItalic ? style.Include(fsItalic) : style;
        logFont.lfUnderline ? style.Include(fsUnderline) : style;
        logFont.lfStrikeOut ? style.Include(fsStrikeOut) : style;
        each.SetStyle(style);
        each.SetCharset(static_cast<TFontCharset>(logFont.lfCharSet));
        if (colorChanged) {
            each.SetColor(static_cast<TColor>(choose.rgbColors));
        }
    }
    Modified();
}

// --- TShortCutProperty

std::string TShortCutProperty::GetValue() const {
    return ShortCutToText(static_cast<TShortCut>(PropInfo().GetOrd(Instance())));
}

void TShortCutProperty::SetValue(const std::string& value) {
    const TShortCut keys = TextToShortCut(value);
    if (keys == 0 && !value.empty()) {
        throw EPropertyError("'" + value + "' names no keys");
    }
    SetAll([&](TPersistent& object, const TPropInfo& info) { info.SetOrd(object, keys); });
}

void TShortCutProperty::GetValues(const TValueProc& proc) {
    for (const char* keys : {"Ctrl+A", "Ctrl+C", "Ctrl+F", "Ctrl+N", "Ctrl+O", "Ctrl+P", "Ctrl+S", "Ctrl+V", "Ctrl+X",
                             "Ctrl+Y", "Ctrl+Z", "F1", "F2", "F5", "F9", "Ins", "Del"}) {
        proc(keys);
    }
}

// --- Component editors

namespace {

/// Menus and their items: new items, which the structure shows.
class TMenuEditor : public TComponentEditor {
public:
    using TComponentEditor::TComponentEditor;

    int GetVerbCount() const override { return 2; }
    std::string GetVerb(int index) const override { return index == 0 ? "New item" : "New line"; }
    void ExecuteVerb(int index) override {
        TComponent* const item = Designer().CreateComponent(TMenuItem::StaticClass(), &Component(), {});
        if (auto* const created = dynamic_cast<TMenuItem*>(item)) {
            created->SetCaption(index == 0 ? created->Name() : "-");
            Designer().Modified();
        }
    }
};

/// Page controls and their pages.
class TPagesEditor : public TComponentEditor {
public:
    using TComponentEditor::TComponentEditor;

    int GetVerbCount() const override { return 3; }
    std::string GetVerb(int index) const override {
        static constexpr const char* verbs[] = {"Next page", "Previous page", "New page"};
        return verbs[index];
    }
    void ExecuteVerb(int index) override {
        TPageControl* const pages = Pages();
        if (!pages) {
            return;
        }
        if (index < 2) {
            pages->SelectNextPage(index == 0);
            Designer().Modified();
        } else if (auto* const page =
                       dynamic_cast<TTabSheet*>(Designer().CreateComponent(TTabSheet::StaticClass(), pages, {}))) {
            pages->SetActivePage(page);
            Designer().Modified();
        }
    }

private:
    TPageControl* Pages() const {
        auto* const page = dynamic_cast<TTabSheet*>(&Component());
        return page ? page->PageControl() : dynamic_cast<TPageControl*>(&Component());
    }
};

} // namespace

void RegisterDialogEditors() {
    RegisterPropertyEditor(TStrings::StaticClass(), nullptr, {}, MakePropertyEditor<TStringsProperty>);
    RegisterCollectionEditor();
    RegisterPropertyEditor(TPicture::StaticClass(), nullptr, {}, MakePropertyEditor<TPictureProperty>);
    RegisterPropertyEditor(TGraphic::StaticClass(), nullptr, {}, MakePropertyEditor<TPictureProperty>);
    RegisterPropertyEditor(TFont::StaticClass(), nullptr, {}, MakePropertyEditor<TFontProperty>);
    RegisterPropertyEditor("TColor", nullptr, {}, MakePropertyEditor<TColorProperty>);
    RegisterPropertyEditor(TTypeKind::Integer, &TMenuItem::StaticClass(), "ShortCut",
                           MakePropertyEditor<TShortCutProperty>);
    RegisterComponentEditor<TMenuEditor>(TMenu::StaticClass());
    RegisterComponentEditor<TMenuEditor>(TMenuItem::StaticClass());
    RegisterComponentEditor<TPagesEditor>(TPageControl::StaticClass());
    RegisterComponentEditor<TPagesEditor>(TTabSheet::StaticClass());
}

} // namespace kx::designer
