// SPDX-License-Identifier: MIT
#pragma once

#include "DesignFixture.h"

#include "kx/design/KxPBarDsgnForm.h"
#include "kx/places/KxAddPlaceForm.h"

#include <string>
#include <vector>

namespace kx::test {

/// Names of the registry keys below this one.
inline std::vector<std::string> KeysBelow(const std::string& path) {
    TRegistry registry;
    TStringList names;
    if (registry.OpenKeyReadOnly(path)) {
        registry.GetKeyNames(names);
    }
    std::vector<std::string> keys;
    for (int i = 0; i < names.Count(); ++i) {
        keys.push_back(names[i]);
    }
    return keys;
}

inline constexpr const char* Question =
    "Are you sure to store all these places to registry and delete them from DFM file?";

/// A dialog with three places, and the window in which they are edited.
class TPlacesEditorTest : public TDesignTest {
protected:
    TPlacesEditorTest() {
        Dialog->PlacesBar().SetRegistryKey(Key.Path() + "\\Places");
        for (const char* name : {"One", "Two", "Three"}) {
            TKxPlace& place = *Places().Add();
            place.SetPlaceName(name);
            place.SetPlacePath("C:\\");
            place.SetPlaceIconDll("Shell32.dll");
        }
    }
    ~TPlacesEditorTest() override {
        while (auto* const editor = Find<TKxPBarEditFrm>()) {
            editor->Free();
        }
    }

    TKxPlaces& Places() { return Dialog->PlacesBar().Places(); }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (int i = 0; i < Places().Count(); ++i) {
            names.push_back(Places()[i].PlaceName());
        }
        return names;
    }
    static std::vector<std::string> Captions(const TKxPBarEditFrm& editor) {
        std::vector<std::string> captions;
        for (int i = 0; i < editor.ToolBar1->ButtonCount(); ++i) {
            captions.push_back(editor.ToolBar1->Buttons(i)->Caption());
        }
        return captions;
    }
    TKxPBarEditFrm& Open() {
        EditorOf(Dialog->PlacesBar(), "Places")->Edit();
        EXPECT_TRUE(PumpUntil(IsOpen<TKxPBarEditFrm>()));
        return *Find<TKxPBarEditFrm>();
    }
    static int EditorCount() {
        int count = 0;
        for (int i = 0; i < Screen().FormCount(); ++i) {
            count += dynamic_cast<TKxPBarEditFrm*>(Screen().Forms(i)) ? 1 : 0;
        }
        return count;
    }
    static bool IsGone() {
        return PumpUntil([] { return Find<TKxPBarEditFrm>() == nullptr; });
    }
    /// Clicks a place's button.
    static void Select(TKxPBarEditFrm& editor, int index) {
        editor.Update();
        ClickAt(editor.ToolBar1->Buttons(index)->ClientToScreen({40, 20}));
        PumpUntil([&] { return editor.ToolBar1->Buttons(index)->Down(); });
        MoveMouse({5, 5});
    }
    /// Presses a button that shows something modal, and does the steps there.
    static void PressAndDo(TButton& button, std::vector<TStep> steps) {
        RunDialog(
            [&] {
                PressButton(button.Handle());
                return true;
            },
            std::move(steps));
    }
    static TKxAddPlaceFrm& Properties() { return *Find<TKxAddPlaceFrm>(); }
    static TStep InProperties(TAction action) {
        return {"the place's properties", IsOpen<TKxAddPlaceFrm>(), std::move(action)};
    }

    TKxOpenDialog* Dialog = Add<TKxOpenDialog>();
};

} // namespace kx::test
