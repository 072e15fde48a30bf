#include "FormBench.h"

#include "kx/core/FormText.h"

#include <map>

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

/// What a component costs, in microseconds: as many are read whatever the size of the forms.
double PerComponent(int components, bool text) {
    constexpr int all = 10'000;
    double seconds = 0;
    for (int i = 0; i < all / components; ++i) {
        seconds += ReadFormSeconds(components, text);
    }
    return seconds / all * 1e6;
}

} // namespace

std::vector<TRow> MeasureForms() {
    RegisterClass(TItem::StaticClass());
    std::vector<TRow> rows;
    for (const bool text : {false, true}) {
        std::vector<double> large;
        std::vector<double> middle;
        std::vector<double> small;
        for (int i = 0; i < 15; ++i) {
            large.push_back(PerComponent(10'000, text));
            middle.push_back(PerComponent(1'000, text));
            small.push_back(PerComponent(100, text));
        }
        // Linear growth: the cost of one component does not depend on how many there are.
        const std::string what = std::string("component from ") + (text ? "text" : "binary");
        rows.push_back(ComparePairs(what + ", of 10,000", large, "of 1,000", middle, "us", 1.3));
        rows.push_back(ComparePairs(what + ", of 1,000", middle, "of 100", small, "us", 1.3));
    }
    return rows;
}

} // namespace kx::bench
