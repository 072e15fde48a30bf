// SPDX-License-Identifier: MIT
// What the designer knows of the component.

#include "StarRatingDesign.h"

#include "examples/own-component/StarRating.h"
#include "kx/ide/ComponentEditors.h"
#include "kx/ide/Palette.h"
#include "kx/ide/StockEditors.h"

#include <algorithm>

namespace sample {

namespace {

/// Shows the number of stars as stars; takes both.
class TStarsProperty : public kx::TIntegerProperty {
public:
    using kx::TIntegerProperty::TIntegerProperty;

    kx::TPropertyAttributes GetAttributes() const override { return {kx::paMultiSelect, kx::paValueList}; }
    std::string GetValue() const override { return Shown(PropInfo().GetOrd(Instance())); }
    void SetValue(const std::string& value) override {
        const bool isShown = value.find_first_not_of("*-") == std::string::npos && !value.empty();
        TIntegerProperty::SetValue(isShown ? kx::IntToStr(std::count(value.begin(), value.end(), '*')) : value);
    }
    void GetValues(const TValueProc& proc) override {
        for (int i = 0; i <= TStarRating::MostStars; ++i) {
            proc(Shown(i));
        }
    }

private:
    static std::string Shown(int64_t stars) {
        std::string text(TStarRating::MostStars, '-');
        return text.replace(0, static_cast<size_t>(stars), static_cast<size_t>(stars), '*');
    }
};

/// The commands in the menu of the component.
class TStarRatingEditor : public kx::TComponentEditor {
public:
    using kx::TComponentEditor::TComponentEditor;

    int GetVerbCount() const override { return 2; }
    std::string GetVerb(int index) const override { return index == 0 ? "All stars" : "No stars"; }
    void ExecuteVerb(int index) override {
        static_cast<TStarRating&>(Component()).SetStars(index == 0 ? TStarRating::MostStars : 0);
        Designer().Modified();
    }
};

} // namespace

void RegisterStarRating() {
    const kx::TClass& cls = TStarRating::StaticClass();
    kx::RegisterComponents("Samples", {&cls});
    kx::RegisterHeader("examples/own-component/StarRating.h", {&cls});
    kx::RegisterPropertyEditor(kx::TTypeKind::Integer, &cls, "Stars", kx::MakePropertyEditor<TStarsProperty>);
    kx::RegisterComponentEditor<TStarRatingEditor>(cls);
}

} // namespace sample
