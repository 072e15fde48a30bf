// SPDX-License-Identifier: MIT
// Measures the places in the registry.

#include "Benches.h"

#include "kx/places/KxPlaces.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <algorithm>
#include <array>
#include <functional>

namespace kx::bench {

namespace {

const std::string Key = "Software\\KxBench\\Places";

constexpr std::array<const char*, 5> Texts = {"Name", "Path", "RegPath", "IconDll", "Hint"};
constexpr std::array<const char*, 4> Numbers = {"Icon", "IconHot", "SpecFolder", "AutoCaption"};

std::vector<std::string> SubKeys(HKEY key) {
    std::vector<std::string> names;
    char name[256];
    DWORD length = sizeof name;
    while (RegEnumKeyExA(key, static_cast<DWORD>(names.size()), name, &length, nullptr, nullptr, nullptr, nullptr) ==
           ERROR_SUCCESS) {
        names.emplace_back(name, length);
        length = sizeof name;
    }
    return names;
}

/// Writes the same keys and values as saving does, with what the system offers and nothing around it.
void SaveBare(int count) {
    unique_hkey base;
    RegCreateKeyExA(HKEY_CURRENT_USER, Key.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, base.put(), nullptr);
    for (const std::string& name : SubKeys(base.get())) {
        RegDeleteKeyA(base.get(), name.c_str());
    }
    for (int i = 0; i < count; ++i) {
        const std::string text = "C:\\folder " + IntToStr(i);
        unique_hkey key;
        RegCreateKeyExA(HKEY_CURRENT_USER, (Key + "\\Place_" + IntToStr(i)).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, key.put(), nullptr);
        for (const char* name : Texts) {
            RegSetValueExA(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                           static_cast<DWORD>(text.size() + 1));
        }
        for (const char* name : Numbers) {
            RegSetValueExA(key.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&i), sizeof i);
        }
    }
}

/// Reads every value that loading reads, as often as it does, into the same kinds of strings and numbers.
std::vector<std::string> LoadBare() {
    unique_hkey base;
    RegOpenKeyExA(HKEY_CURRENT_USER, Key.c_str(), 0, KEY_READ, base.put());
    std::vector<std::string> texts;
    for (const std::string& name : SubKeys(base.get())) {
        unique_hkey key;
        RegOpenKeyExA(HKEY_CURRENT_USER, (Key + '\\' + name).c_str(), 0, KEY_READ, key.put());
        const auto read = [&key, &texts](const char* value) {
            char text[256];
            DWORD size = sizeof text;
            RegQueryValueExA(key.get(), value, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
            texts.emplace_back(text, size);
        };
        read("Name");
        read("SpecFolder");
        std::for_each(Texts.begin(), Texts.end(), read);
        std::for_each(Numbers.begin(), Numbers.end(), read);
    }
    return texts;
}

double Milliseconds(const std::function<void()>& action) {
    const double start = Now();
    action();
    return (Now() - start) * 1e3;
}

struct TTimes {
    std::vector<double> Save, SaveBare, Load, LoadBare;
};

/// Ours and the bare calls in turn, so that what happens on the machine meanwhile meets both.
TTimes TimesOf(int count) {
    TKxPlacesBarOptions options;
    options.SetRegistryKey(Key);
    for (int i = 0; i < count; ++i) {
        TKxPlace& place = *options.Places().Add();
        const std::string text = "C:\\folder " + IntToStr(i);
        place.SetPlaceName(text);
        place.SetPlacePath(text);
        place.SetPlaceRegPath(text);
        place.SetPlaceIconDll(text);
        place.SetPlaceDesc(text);
    }
    TTimes times;
    options.SaveToRegistry(); // every measured one deletes as many as it writes
    for (int i = 0; i < 9; ++i) {
        times.SaveBare.push_back(Milliseconds([&] { SaveBare(count); }));
        times.Save.push_back(Milliseconds([&] { options.SaveToRegistry(); }));
        times.LoadBare.push_back(Milliseconds([] { LoadBare(); }));
        times.Load.push_back(Milliseconds([] {
            TKxPlacesBarOptions loaded;
            loaded.SetRegistryKey(Key);
            loaded.LoadFromRegistry();
        }));
    }
    TRegistry().DeleteKey("Software\\KxBench");
    return times;
}

} // namespace

std::vector<TRow> MeasurePlaces() {
    constexpr int many = 1'000;
    constexpr int few = 100;
    const TTimes ofMany = TimesOf(many);
    const TTimes ofFew = TimesOf(few);
    // The registry itself takes longer for a key among many than for one among few; ours may grow as much.
    const auto growth = [&](const std::string& what, const std::vector<double> TTimes::*ours,
                            const std::vector<double> TTimes::*bare) -> TRow {
        const auto perPlace = [](const std::vector<double>& times, int count) { return Median(times) / count * 1e3; };
        const double grown = perPlace(ofMany.*bare, many) / perPlace(ofFew.*bare, few);
        return {what,
                perPlace(ofMany.*ours, many),
                "of 100, grown as the bare calls",
                perPlace(ofFew.*ours, few) * grown,
                "us",
                1.3};
    };
    return {
        {"saving 1,000 places", Median(ofMany.Save), "bare registry calls", Median(ofMany.SaveBare), "ms", 1.10},
        {"loading 1,000 places", Median(ofMany.Load), "bare registry calls", Median(ofMany.LoadBare), "ms", 1.10},
        growth("place saved, of 1,000", &TTimes::Save, &TTimes::SaveBare),
        growth("place loaded, of 1,000", &TTimes::Load, &TTimes::LoadBare),
    };
}

} // namespace kx::bench
