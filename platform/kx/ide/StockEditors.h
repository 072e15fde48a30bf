// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ide/PropertyEditors.h"

namespace kx {

/// Whole numbers; identifiers where the type has them.
class TIntegerProperty : public TPropertyEditor {
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    void GetValues(const TValueProc& proc) override;
    bool AllEqual() const override;
};

/// One character: itself, or its number behind a number sign.
class TCharProperty : public TIntegerProperty {
public:
    using TIntegerProperty::TIntegerProperty;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
};

/// Values by name. `Edit` goes on to the next one.
class TEnumProperty : public TIntegerProperty {
public:
    using TIntegerProperty::TIntegerProperty;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    void Edit() override;
    void GetValues(const TValueProc& proc) override;
};

/// Sets; below them each element, False or True.
class TSetProperty : public TIntegerProperty {
public:
    using TIntegerProperty::TIntegerProperty;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    void GetProperties(const TPropertyProc& proc) override;
};

class TFloatProperty : public TPropertyEditor {
public:
    using TPropertyEditor::TPropertyEditor;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    bool AllEqual() const override;
};

class TStringProperty : public TPropertyEditor {
public:
    using TPropertyEditor::TPropertyEditor;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    bool AllEqual() const override;
};

/// A caption: the form shows each letter at once.
class TCaptionProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    TPropertyAttributes GetAttributes() const override;
};

/// The name of a component; of one at a time.
class TComponentNameProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    TPropertyAttributes GetAttributes() const override { return {}; }
};

/// An object that the instance owns: its class in brackets, its properties below.
class TClassProperty : public TPropertyEditor {
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override;
    void GetProperties(const TPropertyProc& proc) override;
    bool AllEqual() const override { return true; } // the properties below tell for themselves
};

/// A reference to a component, by name; offered are those of the form that are of the property's class. A component of
/// another form is named as in form files, "Form2.Button1", and may be one that is not there yet.
class TComponentProperty : public TPropertyEditor {
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    void GetValues(const TValueProc& proc) override;
    bool AllEqual() const override;
    bool IsDefault() const override;
};

/// An event, by the name of its handler; offered are the methods of the event's signature. `Edit` makes the handler.
class TMethodProperty : public TPropertyEditor {
public:
    using TPropertyEditor::TPropertyEditor;
    TPropertyAttributes GetAttributes() const override;
    std::string GetValue() const override;
    void SetValue(const std::string& value) override;
    void Edit() override;
    void GetValues(const TValueProc& proc) override;
    bool AllEqual() const override;

    /// What a handler is called when the user gives no name: the component and the event, "Button1Click".
    std::string DefaultName() const;
};

/// Registers an editor for each kind of property. Once.
void RegisterStockEditors();

} // namespace kx
