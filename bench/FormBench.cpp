#include "FormBench.h"

#include "Report.h"
#include "core/FormText.h"

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

} // namespace

double ReadFormSeconds(int components, bool text) {
    RegisterClass(TItem::StaticClass());
    const std::string& form = Form(components, text);
    TItem root;
    const double start = Now();
    TStaticMemoryStream source(form.data(), form.size());
    ReadComponent(source, &root);
    return Now() - start;
}

} // namespace kx::bench
