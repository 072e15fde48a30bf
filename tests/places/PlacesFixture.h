#pragma once

#include "kx/places/KxPlaces.h"
#include "kx/win/Registry.h"
#include "support/TempFolder.h"

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

/// Message of the registry error that `f` raises.
template <class F> std::string RegistryErrorOf(F&& f) {
    try {
        f();
    } catch (const ERegistryException& e) {
        return e.Message();
    }
    return "nothing raised";
}

/// A registry key of the test's own, gone at the end.
class PlacesKey : public testing::Test {
protected:
    PlacesKey() : Key("Software\\KxTests\\Places" + IntToStr(GetCurrentProcessId())) {
        TRegistry().DeleteKey(Key);
        Options.SetRegistryKey(Key);
    }
    ~PlacesKey() override {
        TRegistry().DeleteKey(Key);
        RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\KxTests");
    }

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
        std::vector<std::string> list;
        for (int i = 0; i < names.Count(); ++i) {
            list.push_back(names[i]);
        }
        return list;
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

    const std::string Key;
    TKxPlacesBarOptions Options;
};

} // namespace kx::test
