// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/ide/Designer.h"

#include <functional>
#include <memory>
#include <optional>

namespace kx {

enum TPropertyAttribute {
    paValueList,     ///< `GetValues` tells the values, which the user may choose from.
    paSubProperties, ///< `GetProperties` tells properties below this one.
    paDialog,        ///< `Edit` shows a dialog.
    paAutoUpdate,    ///< Each character that the user types is set at once.
    paMultiSelect,   ///< It can be edited for several objects at once.
    paSortList,      ///< The values are shown in alphabetical order.
    paReadOnly,      ///< The user cannot type a value.
    paRevertable     ///< It can be set back to its default.
};
using TPropertyAttributes = TSet<TPropertyAttribute>;

/// A property of one object.
struct TInstanceProperty {
    TPersistent* Instance;
    const TPropInfo* Info;
};

class TPropertyEditor;
/// Property editors are shared: the inspector shows one while a window that the editor has opened may keep it too.
using TPropertyEditorPtr = std::shared_ptr<TPropertyEditor>;

/// How the user sees and changes a property in the inspector: of one object, or the same one of several. The objects
/// live no longer than the designer: whoever keeps an editor gives it up when that closes or the object is deleted.
class TPropertyEditor : public std::enable_shared_from_this<TPropertyEditor> {
public:
    using TValueProc = std::function<void(const std::string& value)>;
    using TPropertyProc = std::function<void(const TPropertyEditorPtr& editor)>;

    /// `properties` are of one name and type, and not empty.
    TPropertyEditor(IDesigner& designer, std::vector<TInstanceProperty> properties)
        : FDesigner(designer), FProperties(std::move(properties)) {}
    TPropertyEditor(const TPropertyEditor&) = delete;
    TPropertyEditor& operator=(const TPropertyEditor&) = delete;
    virtual ~TPropertyEditor() = default;

    IDesigner& Designer() const { return FDesigner; }
    int PropCount() const { return static_cast<int>(FProperties.size()); }
    TPersistent& Instance(int index = 0) const { return *FProperties.at(static_cast<size_t>(index)).Instance; }
    const TPropInfo& PropInfo(int index = 0) const { return *FProperties.at(static_cast<size_t>(index)).Info; }

    virtual TPropertyAttributes GetAttributes() const { return {paMultiSelect, paRevertable}; }
    virtual std::string GetName() const { return PropInfo().Name; }
    virtual std::string GetValue() const { return "(Unknown)"; } ///< The text in the inspector.
    /// Sets the value that the text means, for all objects, and tells the designer. @throws Exception that says what is
    /// wrong with the text; nothing has changed then, save for what a setter refuses behind others.
    virtual void SetValue(const std::string&) {}
    virtual void Edit() {}                              ///< A click on "...", or a double click.
    virtual void GetValues(const TValueProc&) {}        ///< See paValueList.
    virtual void GetProperties(const TPropertyProc&) {} ///< See paSubProperties.
    /// All objects have the same value; else the inspector shows none.
    virtual bool AllEqual() const;
    /// The form file will not say it.
    virtual bool IsDefault() const;

protected:
    /// Tells the designer.
    void Modified() { FDesigner.Modified(); }

    const std::vector<TInstanceProperty>& Properties() const { return FProperties; }
    /// True when `get(instance, info)` gives the same for all.
    template <class F> bool AllGive(F get) const {
        const auto first = get(Instance(), PropInfo());
        for (const TInstanceProperty& property : FProperties) {
            if (get(*property.Instance, *property.Info) != first) {
                return false;
            }
        }
        return true;
    }
    /// `set(instance, info)` for all, then `Modified`; also when `set` throws behind objects that it has changed. A
    /// component that goes meanwhile is left out.
    template <class F> void SetAll(F set) {
        const std::vector<TInstanceProperty> properties = FProperties;
        const std::vector<TAlive> alive = Lives();
        bool isChanged = false;
        try {
            for (size_t i = 0; i < properties.size(); ++i) {
                if (alive[i]) {
                    set(*properties[i].Instance, *properties[i].Info);
                    isChanged = true;
                }
            }
        } catch (...) {
            if (isChanged) {
                Modified();
            }
            throw;
        }
        Modified();
    }

private:
    std::vector<TAlive> Lives() const;

    IDesigner& FDesigner;
    std::vector<TInstanceProperty> FProperties;
};

using TPropertyEditorMaker =
    std::function<TPropertyEditorPtr(IDesigner& designer, std::vector<TInstanceProperty> properties)>;

/// Makes editors of that class. A property whose editor is `HiddenProperty` is not shown in the inspector.
template <class TEditor>
TPropertyEditorPtr MakePropertyEditor(IDesigner& designer, std::vector<TInstanceProperty> properties) {
    return std::make_shared<TEditor>(designer, std::move(properties));
}
inline const TPropertyEditorMaker HiddenProperty;

/// The type that a registration is for: a class, which stands for its descendants too, or the name that
/// `TPropInfo::TypeName` tells, or a kind of types.
class TPropertyType {
public:
    TPropertyType(const TClass& cls) : FClass(&cls) {}       // NOLINT(google-explicit-constructor)
    TPropertyType(const char* typeName) : FName(typeName) {} // NOLINT(google-explicit-constructor)
    TPropertyType(TTypeKind kind) : FKind(kind) {}           // NOLINT(google-explicit-constructor)

    /// How closely it fits the property's type: 0 not at all.
    int Fit(const TPropInfo& property) const;

private:
    const TClass* FClass = nullptr;
    std::string FName;
    std::optional<TTypeKind> FKind;
};

/// From now on properties of that type get this editor: those of `holder` and its descendants, or of any class when it
/// is null; those of that name, or of any name when it is empty. Of several that fit, the most specific one holds: the
/// one for the nearest holder, then the one with a name, then the one for the nearest type; of equal ones the later.
void RegisterPropertyEditor(const TPropertyType& type, const TClass* holder, const std::string& name,
                            TPropertyEditorMaker make);

/// The editors of the properties that all selected objects have in common, by name, type and editor, in the published
/// order of the first object's class; without those that are hidden for one of them, and for several objects without
/// those that do not have paMultiSelect. One that throws while it is made or asked is left out, and that is reported.
/// `wanted` chooses among the properties; empty: all.
std::vector<TPropertyEditorPtr> GetPropertyEditors(IDesigner& designer, const TDesignSelection& selection,
                                                   const std::function<bool(const TPropInfo&)>& wanted = {});

} // namespace kx
