// SPDX-License-Identifier: MIT
// Measures the reading of form files.

#include "Benches.h"

#include "kx/core/FormText.h"

#include <array>
#include <map>
#include <memory>
#include <unordered_map>

namespace kx::bench {

namespace {

/// A component that holds others, with properties of the common kinds.
class TItem : public TComponent {
    KX_CLASS()

    using TComponent::TComponent;

    const std::string& Caption() const { return FCaption; }
    void SetCaption(const std::string& value) { FCaption = value; }
    int Left() const { return FLeft; }
    void SetLeft(int value) { FLeft = value; }
    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value) { FEnabled = value; }
    TItem* Neighbour() const { return FNeighbour; }
    void SetNeighbour(TItem* value) { FNeighbour = value; }

    TComponent* GetParentComponent() const override { return FParent; }
    void SetParentComponent(TComponent* parent) override {
        FParent = static_cast<TItem*>(parent);
        FParent->FChildren.push_back(this);
    }
    void GetChildren(const TGetChildProc& proc, TComponent*) override {
        for (TItem* child : FChildren) {
            proc(child);
        }
    }

private:
    std::string FCaption;
    int FLeft = 0;
    bool FEnabled = true;
    TItem* FNeighbour = nullptr;
    TItem* FParent = nullptr;
    std::vector<TItem*> FChildren;
};

const TClass& TItem::StaticClass() {
    static const TClassBuilder<TItem> cls("TItem", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Caption", &TItem::Caption, &TItem::SetCaption);
        c.Property("Left", &TItem::Left, &TItem::SetLeft);
        c.Property("Enabled", &TItem::Enabled, &TItem::SetEnabled).Default = 1;
        c.Reference("Neighbour", &TItem::Neighbour, &TItem::SetNeighbour);
    });
    return cls.Class();
}

/// A form with that many components.
std::string MakeForm(int components, TStreamFormat format) {
    TItem root;
    root.SetName("Form");
    TItem* panel = nullptr;
    TItem* last = nullptr;
    for (int i = 0; i < components; ++i) {
        auto* const item = new TItem(&root);
        item->SetName("Item" + IntToStr(i));
        item->SetCaption("Component number " + IntToStr(i));
        item->SetLeft(i);
        item->SetEnabled(i % 3 != 0);
        item->SetNeighbour(last);
        if (i % 100 == 0) {
            item->SetParentComponent(&root);
            panel = item;
        } else {
            item->SetParentComponent(panel);
        }
        last = item;
    }
    TMemoryStream stream;
    WriteComponent(stream, root, format);
    return std::string(stream.Bytes());
}

/// The form in either shape, made once.
const std::string& Form(int components, bool text) {
    static std::map<std::pair<int, bool>, std::string> forms;
    std::string& form = forms[{components, text}];
    if (form.empty()) {
        form = MakeForm(components, text ? TStreamFormat::Text : TStreamFormat::Binary);
    }
    return form;
}

double ReadFormSeconds(int components, bool text) {
    const std::string& form = Form(components, text);
    TItem root;
    const double start = Now();
    TStaticMemoryStream source(form.data(), form.size());
    ReadComponent(source, &root);
    return Now() - start;
}

/// The least that any reader of such a form does: it makes the blocks of as many components, keeps an index of their
/// names, looks up all references when all names are known, and goes through all blocks once more.
double BareSeconds(int components) {
    struct TBlock {
        std::array<char, sizeof(TItem)> Fields{};
        std::string Name;
        std::string Caption;
        TBlock* Neighbour = nullptr;
    };
    std::vector<std::unique_ptr<TBlock>> blocks;
    std::vector<std::pair<TBlock*, std::string>> references;
    std::unordered_map<std::string, TBlock*> names;
    const double start = Now();
    for (int i = 0; i < components; ++i) {
        TBlock& block = *blocks.emplace_back(std::make_unique<TBlock>());
        block.Name = "Item" + IntToStr(i);
        block.Caption = "Component number " + IntToStr(i);
        names[block.Name] = &block;
        if (i > 0) {
            references.emplace_back(&block, blocks[static_cast<size_t>(i) - 1]->Name);
        }
    }
    for (const auto& [block, name] : references) {
        block->Neighbour = names[name];
    }
    for (const auto& block : blocks) {
        block->Fields[0] = 1;
    }
    return Now() - start;
}

/// What a component costs, in microseconds: as many are made whatever the size of the forms.
template <typename TSeconds> double PerComponent(int components, TSeconds seconds) {
    constexpr int all = 10'000;
    double sum = 0;
    for (int i = 0; i < all / components; ++i) {
        sum += seconds(components);
    }
    return sum / all * 1e6;
}

/// Linear growth: the cost of a component does not depend on how many there are, save for what the machine's memory
/// costs more as soon as a form outgrows its caches. That is what bare blocks cost more.
void MeasureGrowth(const std::string& what, bool text, std::vector<TRow>& rows) {
    const auto read = [&](int components) { return ReadFormSeconds(components, text); };
    std::vector<double> large, middle, middleInMemory, small, smallInMemory;
    for (int i = 0; i < 15; ++i) {
        large.push_back(PerComponent(10'000, read));
        middle.push_back(PerComponent(1'000, read));
        small.push_back(PerComponent(100, read));
        const double bare = PerComponent(1'000, BareSeconds);
        middleInMemory.push_back(middle.back() + PerComponent(10'000, BareSeconds) - bare);
        smallInMemory.push_back(small.back() + bare - PerComponent(100, BareSeconds));
    }
    const std::string grown = ", grown as bare blocks";
    rows.push_back(ComparePairs(what + ", of 10,000", large, "of 1,000" + grown, middleInMemory, "us", 1.3));
    rows.push_back(ComparePairs(what + ", of 1,000", middle, "of 100" + grown, smallInMemory, "us", 1.3));
}

} // namespace

std::vector<TRow> MeasureForms() {
    RegisterClass(TItem::StaticClass());
    std::vector<TRow> rows;
    MeasureGrowth("component from binary", false, rows);
    MeasureGrowth("component from text", true, rows);
    return rows;
}

} // namespace kx::bench
