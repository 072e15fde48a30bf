// SPDX-License-Identifier: MIT
#pragma once

#include "kx/design/KxCustDlgDsgn.h"
#include "kx/design/KxDlgsReg.h"
#include "kx/design/KxServices.h"
#include "kx/frame/KxCommonDialog.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/ide/StockEditors.h"
#include "kx/opensave/KxOpenDlg.h"
#include "tests/ide/TestDesigner.h"
#include "tests/ide/TestHost.h"
#include "tests/support/DialogTest.h"
#include "tests/support/TestKey.h"

#include <string>
#include <vector>

namespace kx::test {

/// The library's dialogs in a form designer: a form that is being designed, Form1, with dialogs on it; other designed
/// forms; a project that holds them all.
class TDesignTest : public TDialogTest {
protected:
    TDesignTest() : Host(Key.Path()) {
        static const bool registered = [] {
            RegisterStockEditors();
            KxDlgsReg::Register();
            return true;
        }();
        static_cast<void>(registered);
        Host.AddModule("Form1");
        MoveMouse({5, 5}); // no hint is to show
    }

    /// A new dialog on the designed form, as Form1's KxOpenDialog1.
    template <class T> T* Add() { return static_cast<T*>(Designer.CreateComponent(T::StaticClass(), nullptr, {})); }
    TComponent* Add(const TClass& cls) { return Designer.CreateComponent(cls, nullptr, {}); }

    /// A form that is open in a designer of its own, and belongs to the project.
    TForm& AddForm(const std::string& name, int width = 100, int height = 60, TColor color = clTeal) {
        TFormPtr form = MakeForm(color, width, height);
        form->SetName(name);
        form->SetDesigning(true);
        Host.AddModule(name);
        FForms.push_back(std::move(form));
        return *FForms.back();
    }

    static TKxCustDlgParams& ParamsOf(TComponent& dialog) { return KxGetDlgParams(dialog); }
    /// Of the library's dialog, as the system shows it.
    static TCommonDialog& AsCommon(TComponent& dialog) { return dynamic_cast<TCommonDialog&>(dialog); }
    static TCondition IsRunning(TComponent& dialog) { return Shown(AsCommon(dialog)); }

    TPropertyEditorPtr EditorOf(TPersistent& object, const std::string& property) {
        for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer, {&object})) {
            if (editor->GetName() == property) {
                return editor;
            }
        }
        return nullptr;
    }
    static std::vector<std::string> ValuesOf(TPropertyEditor& editor) {
        std::vector<std::string> values;
        editor.GetValues([&](const std::string& value) { values.push_back(value); });
        return values;
    }
    void ExecuteVerb(TComponent& component, int verb) { GetComponentEditor(component, Designer)->ExecuteVerb(verb); }

    /// The first form of that class on the screen; null when there is none.
    template <class T> static T* Find() {
        for (int i = 0; i < Screen().FormCount(); ++i) {
            if (auto* const form = dynamic_cast<T*>(Screen().Forms(i))) {
                return form;
            }
        }
        return nullptr;
    }
    template <class T> static TCondition IsOpen() {
        return [] {
            const T* const form = Find<T>();
            return form && form->Active();
        };
    }

    TTestKey Key;
    TTestHost Host;
    TTestDesigner Designer;

private:
    std::vector<TFormPtr> FForms;
};

} // namespace kx::test
