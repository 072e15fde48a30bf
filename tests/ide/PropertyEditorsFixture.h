// SPDX-License-Identifier: MIT
#pragma once

#include "TestDesigner.h"

#include "kx/ide/StockEditors.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kx::test {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

/// Components on a designed form, and the editors of their properties.
class TPropertyEditorsTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        static const bool registered = [] {
            RegisterStockEditors();
            return true;
        }();
        static_cast<void>(registered);
    }

    template <class T> T* Add() { return static_cast<T*>(Designer.CreateComponent(T::StaticClass(), nullptr, {})); }
    TPropertyEditorPtr Editor(const TDesignSelection& selection, const std::string& name) {
        for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer, selection)) {
            if (editor->GetName() == name) {
                return editor;
            }
        }
        return nullptr;
    }
    static std::vector<std::string> Values(TPropertyEditor& editor) {
        std::vector<std::string> values;
        editor.GetValues([&](const std::string& value) { values.push_back(value); });
        return values;
    }
    static std::vector<std::string> SubNames(TPropertyEditor& editor) {
        std::vector<std::string> names;
        editor.GetProperties([&](const TPropertyEditorPtr& sub) { names.push_back(sub->GetName()); });
        return names;
    }
    static TPropertyEditorPtr Sub(TPropertyEditor& editor, const std::string& name) {
        TPropertyEditorPtr found;
        editor.GetProperties([&](const TPropertyEditorPtr& sub) { found = sub->GetName() == name ? sub : found; });
        return found;
    }

    TTestDesigner Designer;
};

} // namespace kx::test
