// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ide/Designer.h"
#include "kx/ide/Palette.h"
#include "kx/ui/forms/Forms.h"
#include "tests/support/TestForms.h"

#include <map>
#include <string>
#include <vector>

namespace kx::test {

/// Names of the classes on a page of the palette, in its order; none without such a page.
inline std::vector<std::string> PaletteClasses(const std::string& page) {
    std::vector<std::string> names;
    for (const TPalettePage& each : PalettePages()) {
        for (const TClass* cls : each.Classes) {
            if (each.Name == page) {
                names.push_back(cls->Name());
            }
        }
    }
    return names;
}

/// A designer without windows: a form in design state, and what was told of it.
class TTestDesigner : public IDesigner {
public:
    explicit TTestDesigner(TForm* form = nullptr) : FForm(form ? form : NewForm<TForm>(nullptr)) {
        FForm->SetName("Form1");
        FForm->SetDesigning(true);
    }
    TTestDesigner(const TTestDesigner&) = delete;
    TTestDesigner& operator=(const TTestDesigner&) = delete;
    virtual ~TTestDesigner() = default;

    TForm& Form() const { return *FForm; }
    int ModifiedCount = 0;
    bool Tells = true;              ///< Those who listen hear of changes.
    std::vector<std::string> Shown; ///< Methods.

    TComponent* Root() const override { return FForm.get(); }
    void Modified() override {
        ++ModifiedCount;
        if (Tells) {
            NotifyItemsModified(*this);
        }
    }
    TDesignSelection Selection() const override { return FSelection; }
    void Select(const TDesignSelection& selection) override { FSelection = selection; }
    TComponent* CreateComponent(const TClass& cls, TComponent*, const TRect&) override {
        TComponent* const component = cls.Create(FForm.get());
        component->SetName(UniqueName(cls.Name()));
        component->SetDesigning(true);
        return component;
    }
    std::string UniqueName(const std::string& className) const override {
        for (int i = 1;; ++i) {
            std::string name = className.substr(1) + IntToStr(i);
            if (!FForm->FindComponent(name)) {
                return name;
            }
        }
    }
    std::vector<std::string> MethodsOf(std::type_index signature) const override {
        std::vector<std::string> names;
        for (const auto& [name, method] : FMethods) {
            if (method.Signature == signature) {
                names.push_back(name);
            }
        }
        return names;
    }
    bool MethodExists(const std::string& name) const override { return FMethods.count(name) > 0; }
    TEventTargetPtr Method(const std::string& name, const TPropInfo& event) override {
        const auto found = FMethods.find(name);
        if (found != FMethods.end() && found->second.Signature != event.Signature) {
            throw EPropertyError(name + " belongs to another kind of event");
        }
        if (found == FMethods.end()) {
            FMethods.emplace(name, TMethod{event.Signature, std::make_shared<TMethodName>(name)});
        }
        return FMethods.at(name).Target;
    }
    void ShowMethod(const std::string& name) override { Shown.push_back(name); }

private:
    struct TMethod {
        std::type_index Signature;
        TEventTargetPtr Target;
    };

    TFormPtr FForm;
    TDesignSelection FSelection;
    std::map<std::string, TMethod> FMethods;
};

} // namespace kx::test
