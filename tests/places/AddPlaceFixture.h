// SPDX-License-Identifier: MIT
#pragma once

#include "kx/places/KxAddPlaceForm.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kx::test {

/// The dialog of a place's properties, and a collection for the places.
class AddPlaceForm : public testing::Test {
protected:
    AddPlaceForm() : Form(NewForm<TKxAddPlaceFrm>(&Application())), Places(nullptr) { Form->SetPlaces(&Places); }

    /// Shows the dialog, does the steps in it and returns how it was closed.
    TModalResult ShowModal(std::vector<TStep> steps) {
        steps.insert(steps.begin(), {"the form", [this] { return Form->Active(); }, [] { MoveMouse({5, 5}); }});
        TModalResult result = mrNone;
        RunDialog(
            [&] {
                result = Form->ShowModal();
                return true;
            },
            std::move(steps));
        return result;
    }
    /// Shows it as it is, beside the test.
    void Show() {
        Form->Show();
        ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
        MoveMouse({5, 5});
        Form->Update();
    }
    void Edit(TKxPlace& place) {
        Form->SetPlace(&place);
        Form->InitControls();
    }
    /// Clicks a control that holds text and types over what is in it.
    static std::vector<TStep> Enter(TWinControl& control, const std::string& text) {
        const auto hasFocus = [&control] { return control.Focused() || IsChild(control.Handle(), GetFocus()); };
        return {Perform("click " + control.Name(), [&control] { Click(control.Handle()); }),
                {"the focus in " + control.Name(), hasFocus,
                 [text] {
                     PressKey(VK_END);
                     PressKey(VK_HOME, {VK_SHIFT});
                     TypeText(text);
                 }},
                {text + " in " + control.Name(), [&control, text] { return control.Text() == text; }, {}}};
    }
    /// Chooses an item of a drop-down list by the keyboard.
    static std::vector<TStep> Pick(TComboBox& combo, int index) {
        return {{"focus " + combo.Name(), {}, [&combo] { combo.SetFocus(); }},
                {"the focus in " + combo.Name(), [&combo] { return combo.Focused(); },
                 [index] {
                     PressKey(VK_HOME);
                     for (int i = 0; i < index; ++i) {
                         PressKey(VK_DOWN);
                     }
                 }},
                {"the choice in " + combo.Name(), [&combo, index] { return combo.ItemIndex() == index; }, {}}};
    }
    TStep PressOk() {
        return Perform("OK", [this] { Click(Form->Button1->Handle()); });
    }
    TStep PressCancel() {
        return Perform("Cancel", [this] { Click(Form->Button2->Handle()); });
    }
    static std::vector<TStep> Joined(std::initializer_list<std::vector<TStep>> parts) {
        std::vector<TStep> steps;
        for (const auto& part : parts) {
            steps.insert(steps.end(), part.begin(), part.end());
        }
        return steps;
    }
    static TPoint CellOf(TDrawGrid& grid, int col) {
        const TRect r = grid.CellRect(col, 0);
        return grid.ClientToScreen({(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2});
    }

    std::unique_ptr<TKxAddPlaceFrm, TFreeDeleter> Form;
    TKxPlaces Places;
};

} // namespace kx::test
