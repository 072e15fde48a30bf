// SPDX-License-Identifier: MIT
#pragma once

#include "kx/places/KxPlaces.h"
#include "kx/win/Registry.h"
#include "support/TempFolder.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/TestKey.h"
#include "tests/support/Texts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kx::test {

/// Captions in the collection's order.
inline std::vector<std::string> CaptionsOf(const TKxPlaces& places) {
    std::vector<std::string> captions;
    for (int i = 0; i < places.Count(); ++i) {
        captions.push_back(places[i].PlaceName());
    }
    return captions;
}

inline TKxPlace& AddPlace(TKxPlaces& places, const std::string& name, const std::string& path = {}) {
    TKxPlace& place = *places.Add();
    place.SetPlaceName(name);
    place.SetPlacePath(path);
    return place;
}

/// A registry key of the test's own, gone at the end.
class PlacesKey : public testing::Test {
protected:
    PlacesKey() { Options.SetRegistryKey(Key); }

    /// The open key of a stored place, made when it is missing.
    std::unique_ptr<TRegistry> Opened(const std::string& name) const {
        auto registry = std::make_unique<TRegistry>();
        EXPECT_TRUE(registry->OpenKey(Key + "\\" + name, true));
        return registry;
    }
    std::vector<std::string> SubKeys() const {
        TRegistry registry;
        TStringList names;
        if (registry.OpenKeyReadOnly(Key)) {
            registry.GetKeyNames(names);
        }
        return TextsOf(names);
    }
    /// What a dialog of a later run would have.
    std::unique_ptr<TKxPlacesBarOptions> Loaded() const {
        auto options = std::make_unique<TKxPlacesBarOptions>();
        options->SetRegistryKey(Key);
        options->LoadFromRegistry();
        return options;
    }
    void SavePlaces(int count) {
        for (int i = 0; i < count; ++i) {
            AddPlace(Options.Places(), "Place " + IntToStr(i), "C:\\folder " + IntToStr(i));
        }
        Options.SaveToRegistry();
    }

private:
    TTestKey FKey;

protected:
    const std::string Key = FKey.Path();
    TKxPlacesBarOptions Options;
};

} // namespace kx::test
