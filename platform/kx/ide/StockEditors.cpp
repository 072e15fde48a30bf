// SPDX-License-Identifier: MIT
// The editors that every kind of property has.

#include "kx/ide/StockEditors.h"

#include "kx/core/GlobalReferences.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

namespace kx {

namespace {

/// One element of a set.
class TSetElementProperty : public TPropertyEditor {
public:
    TSetElementProperty(IDesigner& designer, std::vector<TInstanceProperty> properties, int element)
        : TPropertyEditor(designer, std::move(properties)), FElement(element) {}

    TPropertyAttributes GetAttributes() const override { return {paMultiSelect, paValueList, paRevertable}; }
    std::string GetName() const override { return PropInfo().Enum->NameOf(FElement); }
    std::string GetValue() const override { return BooleanInfo().NameOf(IsIn(Instance(), PropInfo()) ? 1 : 0); }
    void SetValue(const std::string& value) override {
        const std::optional<int> in = BooleanInfo().Find(value);
        if (!in) {
            throw EPropertyError("Invalid property value");
        }
        SetAll([&](TPersistent& object, const TPropInfo& info) {
            const int64_t bits = info.GetOrd(object);
            info.SetOrd(object, *in != 0 ? bits | Bit() : bits & ~Bit());
        });
    }
    void Edit() override { SetValue(BooleanInfo().NameOf(IsIn(Instance(), PropInfo()) ? 0 : 1)); }
    void GetValues(const TValueProc& proc) override {
        for (const std::string& value : BooleanInfo().Values) {
            proc(value);
        }
    }
    bool AllEqual() const override {
        return AllGive([this](TPersistent& object, const TPropInfo& info) { return IsIn(object, info); });
    }
    bool IsDefault() const override {
        return std::all_of(Properties().begin(), Properties().end(), [this](const TInstanceProperty& property) {
            const TPropInfo& info = *property.Info;
            return !info.IsStored(*property.Instance) ||
                   (info.Default && (*info.Default & Bit()) == (info.GetOrd(*property.Instance) & Bit()));
        });
    }

private:
    int64_t Bit() const { return int64_t{1} << FElement; }
    bool IsIn(const TPersistent& object, const TPropInfo& info) const { return (info.GetOrd(object) & Bit()) != 0; }

    int FElement;
};

int64_t OrdOf(const TPersistent& object, const TPropInfo& info) { return info.GetOrd(object); }

/// Name of the component that a reference means: "Button1", "Frame1.Button1", "Form2.Button1".
std::string NameIn(const TComponent& root, const TComponent& component) {
    std::string name = component.Name();
    const TComponent* owner = &component == &root ? nullptr : component.Owner();
    for (; owner && owner != &root && !owner->Name().empty(); owner = owner->Owner()) {
        name = owner->Name() + "." + name;
    }
    return name;
}

/// What a reference means, and the name that it waits for when the component is not there yet.
std::pair<TObject*, std::string> ReferenceOf(const TObject& object, const TPropInfo& info) {
    TObject* const target = info.GetObj(object);
    return {target, target ? std::string() : PendingReference(object, info)};
}

/// The component that the name of a reference means; null when there is none.
TComponent* ComponentNamed(TComponent& root, const std::string& name) {
    if (SameText(name, root.Name())) {
        return &root;
    }
    if (TComponent* const inside = detail::FindNested(&root, name)) {
        return inside;
    }
    const size_t dot = std::min(name.find('.'), name.size());
    const std::string_view rest = std::string_view(name).substr(std::min(dot + 1, name.size()));
    return detail::FindNested(FindGlobalComponent(name.substr(0, dot)), rest);
}

bool IsSingle(const TPropInfo& info) { return info.TypeName() == "Single"; }

template <class T> double TextToFloat(const std::string& text) {
    T number = 0;
    const char* const last = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), last, number);
    if (parsed.ec != std::errc() || parsed.ptr != last) {
        throw EPropertyError("'" + text + "' is not a valid floating point value");
    }
    return static_cast<double>(number);
}

void OfferValues(const TEnumInfo& info, const TPropertyEditor::TValueProc& proc) {
    for (const std::string& value : info.Values) {
        proc(value);
    }
}

} // namespace

// --- TIntegerProperty

TPropertyAttributes TIntegerProperty::GetAttributes() const {
    TPropertyAttributes attributes{paMultiSelect, paRevertable};
    return PropInfo().Idents ? attributes.Include(paValueList) : attributes;
}

std::string TIntegerProperty::GetValue() const {
    const int64_t value = PropInfo().GetOrd(Instance());
    const std::string* name = PropInfo().Idents ? PropInfo().Idents->NameOf(static_cast<int32_t>(value)) : nullptr;
    return name ? *name : IntToStr(value);
}

void TIntegerProperty::SetValue(const std::string& value) {
    const TPropInfo& info = PropInfo();
    const std::optional<int32_t> named = info.Idents ? info.Idents->Find(value) : std::nullopt;
    const int64_t number = named ? *named : StrToInt(value);
    if (number < info.MinValue || number > info.MaxValue) {
        throw EPropertyError("Value must be between " + IntToStr(info.MinValue) + " and " + IntToStr(info.MaxValue));
    }
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetOrd(object, number); });
}

void TIntegerProperty::GetValues(const TValueProc& proc) {
    if (PropInfo().Idents) {
        for (const TIdentInfo::TEntry& entry : PropInfo().Idents->Entries) {
            proc(entry.Name);
        }
    }
}

bool TIntegerProperty::AllEqual() const { return AllGive(OrdOf); }

// --- TCharProperty

std::string TCharProperty::GetValue() const {
    const int64_t value = PropInfo().GetOrd(Instance());
    constexpr int64_t firstPrintable = 33;
    constexpr int64_t lastPrintable = 126;
    return value >= firstPrintable && value <= lastPrintable ? std::string(1, static_cast<char>(value))
                                                             : "#" + IntToStr(value);
}

void TCharProperty::SetValue(const std::string& value) {
    if (value.size() == 1) {
        const auto character = static_cast<unsigned char>(value[0]);
        SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetOrd(object, character); });
    } else if (value.starts_with('#')) {
        TIntegerProperty::SetValue(value.substr(1));
    } else {
        throw EPropertyError("Invalid property value");
    }
}

// --- TEnumProperty

TPropertyAttributes TEnumProperty::GetAttributes() const {
    return {paMultiSelect, paValueList, paSortList, paRevertable};
}

std::string TEnumProperty::GetValue() const {
    const int64_t value = PropInfo().GetOrd(Instance());
    const bool isNamed = value >= 0 && value < static_cast<int64_t>(PropInfo().Enum->Values.size());
    return isNamed ? PropInfo().Enum->NameOf(value) : IntToStr(value);
}

void TEnumProperty::SetValue(const std::string& value) {
    const std::optional<int> ordinal = PropInfo().Enum->Find(value);
    if (!ordinal) {
        throw EPropertyError("Invalid property value");
    }
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetOrd(object, *ordinal); });
}

void TEnumProperty::Edit() {
    const auto count = static_cast<int64_t>(PropInfo().Enum->Values.size());
    const int64_t next = (PropInfo().GetOrd(Instance()) + 1) % count;
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetOrd(object, next); });
}

void TEnumProperty::GetValues(const TValueProc& proc) { OfferValues(*PropInfo().Enum, proc); }

// --- TSetProperty

TPropertyAttributes TSetProperty::GetAttributes() const {
    return {paMultiSelect, paSubProperties, paReadOnly, paRevertable};
}

std::string TSetProperty::GetValue() const {
    return SetToString(*PropInfo().Enum, static_cast<uint32_t>(PropInfo().GetOrd(Instance())));
}

void TSetProperty::SetValue(const std::string& value) {
    const uint32_t bits = StringToSet(*PropInfo().Enum, value);
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetOrd(object, bits); });
}

void TSetProperty::GetProperties(const TPropertyProc& proc) {
    const auto count = static_cast<int>(PropInfo().Enum->Values.size());
    for (int element = 0; element < count; ++element) {
        proc(std::make_shared<TSetElementProperty>(Designer(), Properties(), element));
    }
}

// --- TFloatProperty

std::string TFloatProperty::GetValue() const {
    char text[64];
    const double value = PropInfo().GetFloat(Instance());
    // The shortest text that means this value: of a Single as one, or its noise would show.
    const auto end = IsSingle(PropInfo()) ? std::to_chars(text, text + sizeof(text), static_cast<float>(value))
                                          : std::to_chars(text, text + sizeof(text), value);
    return {text, end.ptr};
}

void TFloatProperty::SetValue(const std::string& value) {
    const double number = IsSingle(PropInfo()) ? TextToFloat<float>(value) : TextToFloat<double>(value);
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetFloat(object, number); });
}

bool TFloatProperty::AllEqual() const {
    return AllGive([](const TPersistent& object, const TPropInfo& info) { return info.GetFloat(object); });
}

// --- TStringProperty

std::string TStringProperty::GetValue() const { return PropInfo().GetStr(Instance()); }

void TStringProperty::SetValue(const std::string& value) {
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetStr(object, value); });
}

bool TStringProperty::AllEqual() const {
    return AllGive([](const TPersistent& object, const TPropInfo& info) { return info.GetStr(object); });
}

TPropertyAttributes TCaptionProperty::GetAttributes() const { return {paMultiSelect, paAutoUpdate, paRevertable}; }

// --- TClassProperty

TPropertyAttributes TClassProperty::GetAttributes() const { return {paMultiSelect, paSubProperties, paReadOnly}; }

std::string TClassProperty::GetValue() const { return "(" + PropInfo().TypeName() + ")"; }

void TClassProperty::GetProperties(const TPropertyProc& proc) {
    TDesignSelection objects;
    for (const TInstanceProperty& property : Properties()) {
        auto* const object = dynamic_cast<TPersistent*>(property.Info->GetObj(*property.Instance));
        if (!object) {
            return;
        }
        objects.push_back(object);
    }
    for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer(), objects)) {
        proc(editor);
    }
}

// --- TComponentProperty

TPropertyAttributes TComponentProperty::GetAttributes() const {
    return {paMultiSelect, paValueList, paSortList, paRevertable};
}

std::string TComponentProperty::GetValue() const {
    const auto [target, awaited] = ReferenceOf(Instance(), PropInfo());
    const auto* const component = dynamic_cast<const TComponent*>(target);
    return component ? NameIn(*Designer().Root(), *component) : awaited;
}

void TComponentProperty::SetValue(const std::string& value) {
    TComponent* const root = Designer().Root();
    TComponent* component = nullptr;
    if (!value.empty()) {
        component = ComponentNamed(*root, value);
        if (!component || (PropInfo().Class && !component->InheritsFrom(PropInfo().Class()))) {
            throw EPropertyError("Invalid property value");
        }
    }
    SetAll([&](TPersistent& object, const TPropInfo& each) {
        each.SetObj(object, component);
        DropPendingReference(object, each);
    });
}

void TComponentProperty::GetValues(const TValueProc& proc) {
    const auto offer = [&](const TComponent& component) {
        if (!component.Name().empty() && (!PropInfo().Class || component.InheritsFrom(PropInfo().Class()))) {
            proc(component.Name());
        }
    };
    const TComponent& root = *Designer().Root();
    offer(root);
    for (int i = 0; i < root.ComponentCount(); ++i) {
        offer(*root.Components(i));
    }
}

bool TComponentProperty::AllEqual() const { return AllGive(ReferenceOf); }

bool TComponentProperty::IsDefault() const {
    return TPropertyEditor::IsDefault() &&
           std::all_of(Properties().begin(), Properties().end(), [](const TInstanceProperty& property) {
               return ReferenceOf(*property.Instance, *property.Info).second.empty();
           });
}

// --- TMethodProperty

TPropertyAttributes TMethodProperty::GetAttributes() const {
    return {paMultiSelect, paValueList, paSortList, paRevertable};
}

std::string TMethodProperty::GetValue() const {
    const TEventTargetPtr target = PropInfo().GetEvent(Instance());
    return target ? target->MethodName() : std::string();
}

void TMethodProperty::SetValue(const std::string& value) {
    const TEventTargetPtr target = value.empty() ? nullptr : Designer().Method(value, PropInfo());
    SetAll([&](TPersistent& object, const TPropInfo& each) { each.SetEvent(object, target); });
}

void TMethodProperty::Edit() {
    IDesigner& designer = Designer(); // the editor may go when the designer hears of the change
    std::string name = GetValue();
    if (name.empty() || !AllEqual()) {
        name = DefaultName();
        SetValue(name);
    }
    designer.ShowMethod(name);
}

void TMethodProperty::GetValues(const TValueProc& proc) {
    for (const std::string& name : Designer().MethodsOf(PropInfo().Signature)) {
        proc(name);
    }
}

bool TMethodProperty::AllEqual() const {
    return AllGive([](const TPersistent& object, const TPropInfo& info) {
        const TEventTargetPtr target = info.GetEvent(object);
        return target ? target->MethodName() : std::string();
    });
}

std::string TMethodProperty::DefaultName() const {
    const auto* const component = dynamic_cast<const TComponent*>(&Instance());
    const std::string object = !component                       ? Instance().ClassName().substr(1)
                               : component == Designer().Root() ? "Form"
                                                                : component->Name();
    const std::string& event = GetName();
    return object + (event.starts_with("On") ? event.substr(2) : event);
}

void RegisterStockEditors() {
    const auto add = [](TTypeKind kind, TPropertyEditorMaker make) {
        RegisterPropertyEditor(kind, nullptr, {}, std::move(make));
    };
    add(TTypeKind::Integer, MakePropertyEditor<TIntegerProperty>);
    add(TTypeKind::Int64, MakePropertyEditor<TIntegerProperty>);
    add(TTypeKind::Char, MakePropertyEditor<TCharProperty>);
    add(TTypeKind::Enumeration, MakePropertyEditor<TEnumProperty>);
    add(TTypeKind::Set, MakePropertyEditor<TSetProperty>);
    add(TTypeKind::Float, MakePropertyEditor<TFloatProperty>);
    add(TTypeKind::String, MakePropertyEditor<TStringProperty>);
    add(TTypeKind::SubObject, MakePropertyEditor<TClassProperty>);
    add(TTypeKind::Reference, MakePropertyEditor<TComponentProperty>);
    add(TTypeKind::Interface, MakePropertyEditor<TComponentProperty>);
    add(TTypeKind::Event, MakePropertyEditor<TMethodProperty>);
    RegisterPropertyEditor(TTypeKind::String, nullptr, "Caption", MakePropertyEditor<TCaptionProperty>);
    RegisterPropertyEditor(TTypeKind::String, &TComponent::StaticClass(), "Name",
                           MakePropertyEditor<TComponentNameProperty>);
}

} // namespace kx
