// SPDX-License-Identifier: MIT
// Items that cannot be made, named or known, in the window of their collection.

#include "CollectionFixture.h"

namespace kx::test {
namespace {

using designer::TCollectionForm;

/// A component whose collection takes two items, and whose items have collections of their own.
class TShelf : public TCollection {
    KX_CLASS()
    TShelf();
};
class TBox : public TCollectionItem {
    KX_CLASS()
    explicit TBox(TCollection* collection) : TCollectionItem(collection) {
        if (collection && collection->Count() > 2) {
            throw EInvalidOperation("the shelf is full");
        }
    }
    std::string GetDisplayName() const override {
        if (Throws) {
            throw EInvalidOperation("no name today");
        }
        return "box";
    }
    TShelf& Shelf() {
        if (!FShelf) {
            FShelf = std::make_unique<TShelf>();
        }
        return *FShelf;
    }
    void SetShelf(const TShelf& value) { Shelf().Assign(&value); }
    static inline bool Throws = false;

private:
    std::unique_ptr<TShelf> FShelf;
};
const TClass& TBox::StaticClass() {
    static const TClassBuilder<TBox> cls("TBox", TCollectionItem::StaticClass(),
                                         [](auto& c) { c.SubObject("Shelf", &TBox::Shelf, &TBox::SetShelf); });
    return cls.Class();
}
const TClass& TShelf::StaticClass() {
    static const TClassBuilder<TShelf> cls("TShelf", TCollection::StaticClass());
    return cls.Class();
}
TShelf::TShelf() : TCollection(TBox::StaticClass(), [](TCollection* collection) { return new TBox(collection); }) {}

class TCupboard : public TCustomControl {
    KX_CLASS()
    explicit TCupboard(TComponent* owner) : TCustomControl(owner) { SetBounds(0, 0, 40, 20); }
    TShelf& Shelf() { return FShelf; }
    void SetShelf(const TShelf& value) { FShelf.Assign(&value); }

private:
    TShelf FShelf;
};
const TClass& TCupboard::StaticClass() {
    static const TClassBuilder<TCupboard> cls("TCupboard", TCustomControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("Shelf", &TCupboard::Shelf, &TCupboard::SetShelf);
    });
    return cls.Class();
}

class Cupboards : public TCollectionEditorTest {
protected:
    Cupboards() { RegisterClass(TCupboard::StaticClass()); }
    ~Cupboards() override { TBox::Throws = false; }
    TCupboard& OpenCupboard(int boxes) {
        Open(SampleForm);
        auto& cupboard = dynamic_cast<TCupboard&>(
            *Designer().CreateComponent(TCupboard::StaticClass(), &Designer().Form(), {20, 160, 80, 190}));
        for (int i = 0; i < boxes; ++i) {
            cupboard.Shelf().Add();
        }
        Designer().Record("Boxes");
        DoubleClickAt(At("Cupboard1"));
        Settle();
        EXPECT_NE(Items(), nullptr);
        return cupboard;
    }
};

TEST_F(Cupboards, AnItemThatCannotBeMadeIsToldOfAndNothingHasChanged) {
    OpenCupboard(2);
    const std::string before = Text();
    EXPECT_EQ(AnswerTo([this] { Push("AddButton"); }, IDOK), "the shelf is full");
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(designer::WriteForm(Designer().Form()), Designer().State());
    EXPECT_EQ(Lines(), "\"0 - box\",\"1 - box\"");
    ChooseLine(0);
    Push("DeleteButton");
    EXPECT_EQ(Lines(), "\"0 - box\"") << "the window works on";
}

TEST_F(Cupboards, AnItemWithoutANameIsShownAllTheSame) {
    TBox::Throws = true;
    OpenCupboard(1);
    EXPECT_EQ(Lines(), "\"0 - (no name today)\"");
}

TEST_F(Cupboards, AnItemsOwnCollectionGoesWithIt) {
    OpenCupboard(2);
    ChooseLine(1);
    TCollectionForm* const outer = Items();
    EXPECT_EQ(Value("Shelf"), "(0 items)");
    Grid().EditRow(Grid().FindRow("Shelf"));
    Settle();
    ASSERT_EQ(ShownWindows().size(), 2U);
    TCollectionForm* const inner = ShownWindows()[ShownWindows()[0] == outer ? 1 : 0];
    EXPECT_EQ(inner->Caption(), "Cupboard1.Shelf[1].Shelf");
    PressButton(dynamic_cast<TButton&>(*inner->FindComponent("AddButton")).Handle());
    Settle();
    EXPECT_EQ(inner->Items().Items().Count(), 1);
    EXPECT_EQ(Window->ObjectInspector().Components().Text(), "Cupboard1.Shelf[1].Shelf[0]: TBox");
    Designer().Select({The<TCupboard>("Cupboard1").Shelf().GetItem(1)});
    PressButton(dynamic_cast<TButton&>(*outer->FindComponent("UpButton")).Handle());
    Settle();
    EXPECT_EQ(inner->Caption(), "Cupboard1.Shelf[0].Shelf");
    EXPECT_EQ(inner->Items().Items().Count(), 1);
    PressButton(dynamic_cast<TButton&>(*outer->FindComponent("DeleteButton")).Handle());
    Settle();
    EXPECT_THAT(ShownWindows(), ElementsAre(outer));
    while (Designer().CanUndo()) {
        Designer().Undo();
    }
    EXPECT_EQ(Text(), SampleForm);
}

} // namespace
} // namespace kx::test
