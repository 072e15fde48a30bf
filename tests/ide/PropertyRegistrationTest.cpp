// SPDX-License-Identifier: MIT
// Which editor a property gets, and what becomes of editors that fail.

#include "PropertyEditorsFixture.h"

#include "kx/ui/widgets/StdCtrls.h"

#include <set>

namespace kx::test {
namespace {

/// Shows a mark in place of the value: which registration it was made by.
template <int Mark> class TMarkProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    std::string GetValue() const override { return "mark " + IntToStr(Mark); }
};
template <int Mark> constexpr auto MakeMark = MakePropertyEditor<TMarkProperty<Mark>>;

/// A part of a component.
class TShape : public TPersistent {
    KX_CLASS()
};
class TRoundShape : public TShape {
    KX_CLASS()
};
const TClass& TShape::StaticClass() {
    static const TClassBuilder<TShape> cls("TShape", TPersistent::StaticClass());
    return cls.Class();
}
const TClass& TRoundShape::StaticClass() {
    static const TClassBuilder<TRoundShape> cls("TRoundShape", TShape::StaticClass());
    return cls.Class();
}

class TPart : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
};
const TClass& TPart::StaticClass() {
    static const TClassBuilder<TPart> cls("TPart", TComponent::StaticClass());
    return cls.Class();
}

/// Has a property of each of the tests below, so that they do not touch one another. Setters refuse the value "no",
/// and one frees another component.
class TDrawing : public TComponent {
    KX_CLASS()
    explicit TDrawing(TComponent* owner) : TComponent(owner) { Living.insert(this); }
    ~TDrawing() override { Living.erase(this); }

    const std::string& Title() const { return FTitle; }
    void SetTitle(const std::string& value) {
        ASSERT_TRUE(Living.contains(this));
        if (value == "no" || value == Refused) {
            throw EPropertyError("No such title");
        }
        FTitle = value;
        if (Freed) {
            std::exchange(Freed, nullptr)->Free();
        }
    }
    TColor Ink() const { return FInk; }
    void SetInk(TColor value) { FInk = value; }
    TRoundShape& Shape() { return FShape; }
    const std::string& Note() const { return FNote; }
    void SetNote(const std::string& value) { FNote = value; }
    const std::string& Frame() const { return FFrame; }
    void SetFrame(const std::string& value) { FFrame = value; }

    std::string Refused;
    TComponent* Freed = nullptr;

private:
    static inline std::set<const TDrawing*> Living;
    std::string FTitle = "drawing";
    TColor FInk = clRed;
    TRoundShape FShape;
    std::string FNote;
    std::string FFrame;
};
class TSketch : public TDrawing {
    KX_CLASS()
    using TDrawing::TDrawing;
};
/// Has properties of the same names as TPainting, of types that are nearly the same.
class TSculpture : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    TPart& Pen() { return FPen; }
    TColor Tint() const { return FTint; }
    void SetTint(TColor value) { FTint = value; }

private:
    TPart FPen{nullptr};
    TColor FTint = clRed;
};
const TClass& TSculpture::StaticClass() {
    using T = TSculpture;
    static const TClassBuilder<T> cls("TSculpture", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.SubObject("Pen", &T::Pen, nullptr);
        c.Property("Tint", &T::Tint, &T::SetTint);
    });
    return cls.Class();
}

/// Has properties of the same names as TDrawing, of other types.
class TPainting : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    int Title() const { return FTitle; }
    void SetTitle(int value) { FTitle = value; }
    const std::string& Note() const { return FNote; }
    void SetNote(const std::string& value) { FNote = value; }
    const std::string& Frame() const { return FFrame; }
    void SetFrame(const std::string& value) { FFrame = value; }
    int Tint() const { return FTint; }
    void SetTint(int value) { FTint = value; }
    TPart* Pen() const { return FPen; }
    void SetPen(TPart* value) { FPen = value; }

private:
    TPart* FPen = nullptr;
    int FTint = 0;
    int FTitle = 3;
    std::string FNote;
    std::string FFrame;
};

const TClass& TDrawing::StaticClass() {
    using T = TDrawing;
    static const TClassBuilder<T> cls("TDrawing", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Title", &T::Title, &T::SetTitle);
        c.Property("Ink", &T::Ink, &T::SetInk);
        c.SubObject("Shape", &T::Shape, nullptr);
        c.Property("Note", &T::Note, &T::SetNote);
        c.Property("Frame", &T::Frame, &T::SetFrame);
    });
    return cls.Class();
}
const TClass& TSketch::StaticClass() {
    static const TClassBuilder<TSketch> cls("TSketch", TDrawing::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}
const TClass& TPainting::StaticClass() {
    using T = TPainting;
    static const TClassBuilder<T> cls("TPainting", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Title", &T::Title, &T::SetTitle);
        c.Property("Note", &T::Note, &T::SetNote);
        c.Property("Frame", &T::Frame, &T::SetFrame);
        c.Property("Tint", &T::Tint, &T::SetTint);
        c.Reference("Pen", &T::Pen, &T::SetPen);
    });
    return cls.Class();
}

class PropertyRegistration : public TPropertyEditorsTest {
protected:
    std::vector<std::string> NamesOf(const TDesignSelection& selection,
                                     const std::function<bool(const TPropInfo&)>& wanted = {}) {
        std::vector<std::string> names;
        for (const TPropertyEditorPtr& editor : GetPropertyEditors(Designer, selection, wanted)) {
            names.push_back(editor->GetName());
        }
        return names;
    }

    TDrawing* Drawing = Add<TDrawing>();
};

TEST_F(PropertyRegistration, EachKindHasAnEditor) {
    const auto kind = [&](TTypeKind value) { return [value](const TPropInfo& info) { return info.Kind == value; }; };
    auto* const edit = Add<TEdit>();
    const auto is = [&]<class T>(TTypeKind value, T*) {
        const auto editors = GetPropertyEditors(Designer, {edit}, kind(value));
        return !editors.empty() && dynamic_cast<T*>(editors.back().get());
    };
    EXPECT_TRUE(is(TTypeKind::Integer, static_cast<TIntegerProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::Char, static_cast<TCharProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::Enumeration, static_cast<TEnumProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::Set, static_cast<TSetProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::String, static_cast<TStringProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::SubObject, static_cast<TClassProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::Reference, static_cast<TComponentProperty*>(nullptr)));
    EXPECT_TRUE(is(TTypeKind::Event, static_cast<TMethodProperty*>(nullptr)));
    EXPECT_NE(dynamic_cast<TComponentNameProperty*>(Editor({edit}, "Name").get()), nullptr);
    EXPECT_NE(dynamic_cast<TCaptionProperty*>(Editor({Add<TButton>()}, "Caption").get()), nullptr);
}

TEST_F(PropertyRegistration, TheEditorsComeInThePublishedOrderAndOnlyThoseWanted) {
    EXPECT_THAT(NamesOf({Drawing}), ElementsAre("Name", "Tag", "Title", "Ink", "Shape", "Note", "Frame"));
    EXPECT_THAT(NamesOf({Drawing}, [](const TPropInfo& info) { return info.Name == "Ink" || info.Name == "Title"; }),
                ElementsAre("Title", "Ink"));
}

TEST_F(PropertyRegistration, ANearerTypeIsMoreSpecificThanAFartherOneAndANameThanAKind) {
    RegisterPropertyEditor(TRoundShape::StaticClass(), &TDrawing::StaticClass(), {}, MakeMark<1>);
    RegisterPropertyEditor(TShape::StaticClass(), &TDrawing::StaticClass(), {}, MakeMark<2>);
    RegisterPropertyEditor(TTypeKind::SubObject, &TDrawing::StaticClass(), {}, MakeMark<3>);
    EXPECT_EQ(Editor({Drawing}, "Shape")->GetValue(), "mark 1");
    RegisterPropertyEditor("TColor", &TDrawing::StaticClass(), {}, MakeMark<4>);
    RegisterPropertyEditor(TTypeKind::Integer, &TDrawing::StaticClass(), {}, MakeMark<5>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 4");
    RegisterPropertyEditor("tcolor", &TDrawing::StaticClass(), {}, MakeMark<6>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 6") << "in any letter case";
    RegisterPropertyEditor(TTypeKind::Integer, &TDrawing::StaticClass(), "Ink", MakeMark<7>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 7") << "the property's name comes before its type";
    RegisterPropertyEditor("TColor", nullptr, "Ink", MakeMark<8>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 7") << "and the class that has it before both";
    RegisterPropertyEditor("TColor", &TComponent::StaticClass(), "Ink", MakeMark<9>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 7");
    RegisterPropertyEditor("string", &TDrawing::StaticClass(), "Ink", MakeMark<10>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 7") << "it is no string";
    RegisterPropertyEditor("TColor", &TSketch::StaticClass(), "Ink", MakeMark<11>);
    EXPECT_EQ(Editor({Drawing}, "Ink")->GetValue(), "mark 7") << "nor is it a sketch's";
    EXPECT_EQ(Editor({Add<TSketch>()}, "Ink")->GetValue(), "mark 11");
}

TEST_F(PropertyRegistration, APackageThatRegistersTwiceChangesNothing) {
    const auto before = NamesOf({Drawing});
    RegisterStockEditors();
    EXPECT_EQ(NamesOf({Drawing}), before);
    EXPECT_NE(dynamic_cast<TStringProperty*>(Editor({Drawing}, "Title").get()), nullptr);
}

TEST_F(PropertyRegistration, AMakerMayRefuse) {
    RegisterPropertyEditor("string", &TSketch::StaticClass(), "Note",
                           [](IDesigner&, const std::vector<TInstanceProperty>&) { return nullptr; });
    EXPECT_EQ(Editor({Add<TSketch>()}, "Note"), nullptr);
    EXPECT_NE(Editor({Drawing}, "Note"), nullptr);
}

// --- Several objects

TEST_F(PropertyRegistration, SeveralObjectsShareAPropertyOfOneTypeOnly) {
    auto* const painting = Add<TPainting>();
    for (const TDesignSelection& both : {TDesignSelection{Drawing, painting}, TDesignSelection{painting, Drawing}}) {
        EXPECT_NE(Editor(both, "Note"), nullptr);
        EXPECT_EQ(Editor(both, "Title"), nullptr) << "a text and a number";
        EXPECT_EQ(Editor(both, "Ink"), nullptr) << "one has none";
    }
    EXPECT_EQ(Editor({Drawing, painting}, "Note")->PropCount(), 2);
    EXPECT_EQ(&Editor({Drawing, painting}, "Note")->Instance(1), painting);
}

TEST_F(PropertyRegistration, SeveralObjectsShareNoPropertyOfTypesThatHaveOneEditor) {
    RegisterPropertyEditor(TPart::StaticClass(), nullptr, "Pen", MakeMark<13>);
    const TDesignSelection both{Add<TPainting>(), Add<TSculpture>()};
    EXPECT_EQ(Editor({both[0]}, "Pen")->GetValue(), Editor({both[1]}, "Pen")->GetValue());
    EXPECT_EQ(Editor(both, "Pen"), nullptr) << "a reference and a part";
    EXPECT_EQ(Editor(both, "Tint"), nullptr) << "a number and a colour";
}

TEST_F(PropertyRegistration, WhatOneObjectHidesSeveralDoNotShow) {
    auto* const sketch = Add<TSketch>();
    RegisterPropertyEditor("string", &TSketch::StaticClass(), "Title", HiddenProperty);
    EXPECT_NE(Editor({Drawing}, "Title"), nullptr);
    EXPECT_EQ(Editor({sketch}, "Title"), nullptr);
    EXPECT_EQ(Editor({Drawing, sketch}, "Title"), nullptr);
    EXPECT_EQ(Editor({sketch, Drawing}, "Title"), nullptr);
}

TEST_F(PropertyRegistration, AnEditorForOneClassIsNotGivenObjectsOfAnother) {
    RegisterPropertyEditor("string", &TPainting::StaticClass(), "Frame", MakeMark<12>);
    auto* const painting = Add<TPainting>();
    EXPECT_EQ(Editor({painting, Add<TPainting>()}, "Frame")->GetValue(), "mark 12");
    EXPECT_EQ(Editor({painting, Drawing}, "Frame"), nullptr);
    EXPECT_EQ(Editor({Drawing, painting}, "Frame"), nullptr);
}

TEST_F(PropertyRegistration, AnEditorThatSaysNothingShowsNoValue) {
    RegisterPropertyEditor("string", &TSketch::StaticClass(), "Frame", MakePropertyEditor<TPropertyEditor>);
    auto* const sketch = Add<TSketch>();
    const auto one = Editor({sketch}, "Frame");
    EXPECT_EQ(one->GetValue(), "(Unknown)");
    EXPECT_EQ(one->GetAttributes(), (TPropertyAttributes{paMultiSelect, paRevertable}));
    EXPECT_TRUE(one->AllEqual());
    EXPECT_FALSE(Editor({sketch, Add<TSketch>()}, "Frame")->AllEqual());
    one->SetValue("gold");
    one->Edit();
    EXPECT_EQ(sketch->Frame(), "");
    EXPECT_THAT(Values(*one), IsEmpty());
    EXPECT_THAT(SubNames(*one), IsEmpty());
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

// --- Failures

TEST_F(PropertyRegistration, AValueThatTheFirstObjectRefusesChangesNothing) {
    auto* const other = Add<TDrawing>();
    const auto both = Editor({Drawing, other}, "Title");
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { both->SetValue("no"); }), "No such title");
    EXPECT_EQ(Drawing->Title(), "drawing");
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

TEST_F(PropertyRegistration, TheDesignerHearsOfWhatWasChangedBeforeAnObjectRefused) {
    auto* const other = Add<TDrawing>();
    other->Refused = "new";
    const auto both = Editor({Drawing, other}, "Title");
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { both->SetValue("new"); }), "No such title");
    EXPECT_EQ(Drawing->Title(), "new");
    EXPECT_EQ(other->Title(), "drawing");
    EXPECT_EQ(Designer.ModifiedCount, 1);
}

TEST_F(PropertyRegistration, AComponentThatGoesInAnEditIsLeftOut) {
    auto* const other = Add<TDrawing>();
    auto* const third = Add<TDrawing>();
    Drawing->Freed = other;
    const auto all = Editor({Drawing, other, third}, "Title");
    all->SetValue("new");
    EXPECT_EQ(Drawing->Title(), "new");
    EXPECT_EQ(third->Title(), "new");
    EXPECT_EQ(Designer.ModifiedCount, 1);
}

TEST_F(PropertyRegistration, AnEditorMayGoWhenTheDesignerHearsOfItsChange) {
    /// Ends the editors, as an inspector that shows other properties does.
    class TForgetful : public IDesignNotification {
    public:
        TForgetful() { RegisterDesignNotification(*this); }
        virtual ~TForgetful() { UnregisterDesignNotification(*this); }
        void ItemDeleted(IDesigner&, TPersistent&) override {}
        void ItemInserted(IDesigner&, TPersistent&) override {}
        void ItemsModified(IDesigner&) override { Editor.reset(); }
        void SelectionChanged(IDesigner&, const TDesignSelection&) override {}
        void DesignerClosed(IDesigner&, bool) override {}
        TPropertyEditorPtr Editor;
    };
    TForgetful inspector;
    auto* const button = Add<TButton>();
    for (const char* name : {"Caption", "Width", "OnClick"}) {
        inspector.Editor = Editor({button}, name);
        TPropertyEditor& editor = *inspector.Editor;
        std::string(name) == "OnClick" ? editor.Edit() : editor.SetValue("12");
        EXPECT_EQ(inspector.Editor, nullptr) << name;
    }
    EXPECT_EQ(button->Width(), 12);
    EXPECT_THAT(Designer.Shown, ElementsAre("Button1Click"));
}

} // namespace
} // namespace kx::test
