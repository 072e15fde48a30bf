// SPDX-License-Identifier: MIT
// The editors of each kind of property, at the edges of what they show and take.

#include "PropertyEditorsFixture.h"

#include "kx/core/Collections.h"
#include "kx/core/GlobalReferences.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"

#include <limits>

namespace kx::test {
namespace {

/// Something that a property can refer to by what it can do.
class IVoice {
public:
    virtual int Volume() const = 0;

protected:
    ~IVoice() = default;
};

enum TMood { mdCalm, mdGlad, mdAngry };
KX_ENUM(TMood, "mdCalm", "mdGlad", "mdAngry")
using TMoods = TSet<TMood>;

class TVoice : public TComponent, public IVoice {
    KX_CLASS()
    using TComponent::TComponent;
    int Volume() const override { return 11; }
};
const TClass& TVoice::StaticClass() {
    static const TClassBuilder<TVoice> cls("TVoice", TComponent::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

template <class V, class T> V ValueOf(V T::*);
template <auto Member> using TValueOf = decltype(ValueOf(Member));

/// Has a property of each kind.
class TKinds : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;

    char Letter = 'A';
    uint8_t Small = 7;
    int64_t Large = 5;
    TMood Mood = mdCalm;
    TMoods Moods{mdGlad};
    float Ratio = 0.1F;
    double Size = 0;
    std::string Words;
    IVoice* Voice = nullptr;
    TComponent* Friend = nullptr;
    TNotifyEvent OnTurn;
    TNotifyEvent Turned;
    TCollection& Items() { return FItems; }
    bool Says = true; ///< The form file is to hold Words and Moods.

    template <auto Member> auto Get() const { return this->*Member; }
    template <auto Member> void Set(TValueOf<Member> value) { this->*Member = value; }

private:
    TCollection FItems{TCollectionItem::StaticClass(), [](TCollection* list) { return new TCollectionItem(list); }};
};
const TClass& TKinds::StaticClass() {
    using T = TKinds;
    static const TClassBuilder<T> cls("TKinds", TComponent::StaticClass(), [](auto& c) {
        const auto says = [](const TObject& object) { return dynamic_cast<const T&>(object).Says; };
        c.Creatable();
        c.Property("Letter", &T::Get<&T::Letter>, &T::Set<&T::Letter>);
        c.Property("Small", &T::Get<&T::Small>, &T::Set<&T::Small>).Default = 7;
        c.Property("Large", &T::Get<&T::Large>, &T::Set<&T::Large>);
        c.Property("Mood", &T::Get<&T::Mood>, &T::Set<&T::Mood>).Default = mdCalm;
        TPropInfo& moods = c.Property("Moods", &T::Get<&T::Moods>, &T::Set<&T::Moods>);
        moods.Default = TMoods{mdGlad}.Bits();
        moods.Stored = says;
        c.Property("Ratio", &T::Get<&T::Ratio>, &T::Set<&T::Ratio>);
        c.Property("Size", &T::Get<&T::Size>, &T::Set<&T::Size>);
        c.Property("Words", &T::Get<&T::Words>, &T::Set<&T::Words>).Stored = says;
        c.Interface("Voice", &T::Get<&T::Voice>, &T::Set<&T::Voice>);
        c.Reference("Friend", &T::Get<&T::Friend>, &T::Set<&T::Friend>);
        c.Property("OnTurn", &T::Get<&T::OnTurn>, &T::Set<&T::OnTurn>);
        c.Property("Turned", &T::Get<&T::Turned>, &T::Set<&T::Turned>);
        c.SubObject("Items", &T::Items, nullptr);
    });
    return cls.Class();
}

class PropertyKinds : public TPropertyEditorsTest {
protected:
    TPropertyEditorPtr Of(const std::string& name) { return Editor({Kinds}, name); }
    TPropertyEditorPtr OfBoth(const std::string& name) { return Editor({Kinds, Other}, name); }
    /// What the editor says of a text that it refuses; nothing has changed then.
    std::string Refusal(TPropertyEditor& editor, const std::string& value) {
        const std::string before = editor.GetValue();
        const int modified = Designer.ModifiedCount;
        std::string message = ErrorOf<Exception>([&] { editor.SetValue(value); });
        EXPECT_EQ(editor.GetValue(), before) << value;
        EXPECT_EQ(Designer.ModifiedCount, modified) << value;
        return message;
    }

    TKinds* Kinds = Add<TKinds>();
    TKinds* Other = Add<TKinds>();
};

TEST_F(PropertyKinds, EachSaysWhatTheInspectorMayDoWithIt) {
    using A = TPropertyAttributes;
    const A plain{paMultiSelect, paRevertable};
    const A chosen{paMultiSelect, paValueList, paSortList, paRevertable};
    EXPECT_EQ(Of("Small")->GetAttributes(), plain);
    EXPECT_EQ(Of("Large")->GetAttributes(), plain);
    EXPECT_EQ(Of("Letter")->GetAttributes(), plain);
    EXPECT_EQ(Of("Ratio")->GetAttributes(), plain);
    EXPECT_EQ(Of("Words")->GetAttributes(), plain);
    EXPECT_EQ(Of("Mood")->GetAttributes(), chosen);
    EXPECT_EQ(Of("Voice")->GetAttributes(), chosen);
    EXPECT_EQ(Of("Friend")->GetAttributes(), chosen);
    EXPECT_EQ(Of("OnTurn")->GetAttributes(), chosen);
    EXPECT_EQ(Of("Moods")->GetAttributes(), (A{paMultiSelect, paSubProperties, paReadOnly, paRevertable}));
    EXPECT_EQ(Sub(*Of("Moods"), "mdCalm")->GetAttributes(), (A{paMultiSelect, paValueList, paRevertable}));
    EXPECT_EQ(Of("Items")->GetAttributes(), (A{paMultiSelect, paSubProperties, paReadOnly}));
    EXPECT_EQ(Of("Name")->GetAttributes(), A());
    auto* const edit = Add<TEdit>();
    EXPECT_EQ(Editor({edit}, "Color")->GetAttributes(), (A{paMultiSelect, paRevertable, paValueList}));
    EXPECT_EQ(Editor({Add<TLabel>()}, "Caption")->GetAttributes(), (A{paMultiSelect, paAutoUpdate, paRevertable}));
}

TEST_F(PropertyKinds, ANumberGoesFromTheFirstToTheLastOfItsType) {
    const auto byte = Of("Small");
    byte->SetValue("255");
    EXPECT_EQ(Kinds->Small, 255);
    EXPECT_EQ(Refusal(*byte, "256"), "Value must be between 0 and 255");
    EXPECT_EQ(Refusal(*byte, "-1"), "Value must be between 0 and 255");
    byte->SetValue("0");
    EXPECT_EQ(Kinds->Small, 0);
    EXPECT_EQ(Refusal(*byte, ""), "'' is not a valid integer value");
    EXPECT_FALSE(byte->IsDefault());
    byte->SetValue("7");
    EXPECT_TRUE(byte->IsDefault());

    const auto large = Of("Large");
    large->SetValue("9223372036854775807");
    EXPECT_EQ(Kinds->Large, INT64_MAX);
    EXPECT_EQ(large->GetValue(), "9223372036854775807");
    large->SetValue("-9223372036854775808");
    EXPECT_EQ(Kinds->Large, INT64_MIN);
    EXPECT_EQ(Refusal(*large, "9223372036854775808"), "'9223372036854775808' is not a valid integer value");
    Kinds->Large = 0;
    EXPECT_FALSE(large->IsDefault()) << "without a default every value is written";
}

TEST_F(PropertyKinds, ACharacterIsItselfOrItsNumber) {
    const auto letter = Of("Letter");
    const auto shown = [&](int character) {
        Kinds->Letter = static_cast<char>(character);
        return letter->GetValue();
    };
    EXPECT_EQ(shown(' '), "#32");
    EXPECT_EQ(shown('!'), "!");
    EXPECT_EQ(shown('~'), "~");
    EXPECT_EQ(shown(127), "#127");
    EXPECT_EQ(shown(228), "#228");
    EXPECT_EQ(shown(0), "#0");
    letter->SetValue("z");
    EXPECT_EQ(Kinds->Letter, 'z');
    letter->SetValue("#65");
    EXPECT_EQ(Kinds->Letter, 'A');
    letter->SetValue("#");
    EXPECT_EQ(Kinds->Letter, '#');
    letter->SetValue("\xE4");
    EXPECT_EQ(letter->GetValue(), "#228");
    letter->SetValue("#255");
    EXPECT_EQ(letter->GetValue(), "#255");
    EXPECT_EQ(Refusal(*letter, "#256"), "Value must be between 0 and 255");
    EXPECT_EQ(Refusal(*letter, "ab"), "Invalid property value");
    EXPECT_EQ(Refusal(*letter, ""), "Invalid property value");
    EXPECT_EQ(Refusal(*letter, "#x"), "'x' is not a valid integer value");
    OfBoth("Letter")->SetValue("q");
    EXPECT_EQ(Other->Letter, 'q');
}

TEST_F(PropertyKinds, AnEnumerationThatHoldsANamelessValueShowsItsNumber) {
    const auto mood = Of("Mood");
    Kinds->Mood = static_cast<TMood>(3);
    EXPECT_EQ(mood->GetValue(), "3");
    Kinds->Mood = mdAngry;
    EXPECT_EQ(mood->GetValue(), "mdAngry");
    EXPECT_EQ(Refusal(*mood, "2"), "Invalid property value");
    EXPECT_THAT(Values(*mood), ElementsAre("mdCalm", "mdGlad", "mdAngry"));
    Other->Mood = mdGlad;
    OfBoth("Mood")->Edit();
    EXPECT_EQ(Kinds->Mood, mdCalm) << "behind the last comes the first";
    EXPECT_EQ(Other->Mood, mdCalm) << "all go on from the first object's";
    EXPECT_EQ(Designer.ModifiedCount, 1);
}

TEST_F(PropertyKinds, AnElementOfASetChangesNoOtherElement) {
    Other->Moods = TMoods{mdAngry};
    const auto both = OfBoth("Moods");
    EXPECT_FALSE(both->AllEqual());
    const auto calm = Sub(*both, "mdCalm");
    EXPECT_EQ(calm->GetValue(), "False");
    EXPECT_TRUE(calm->AllEqual());
    EXPECT_FALSE(Sub(*both, "mdGlad")->AllEqual());
    EXPECT_THAT(Values(*calm), ElementsAre("False", "True"));
    calm->SetValue("True");
    EXPECT_EQ(Kinds->Moods, (TMoods{mdCalm, mdGlad}));
    EXPECT_EQ(Other->Moods, (TMoods{mdCalm, mdAngry}));
    EXPECT_EQ(Designer.ModifiedCount, 1);
    calm->SetValue("True");
    EXPECT_EQ(Kinds->Moods, (TMoods{mdCalm, mdGlad}));
    calm->Edit();
    EXPECT_EQ(Kinds->Moods, TMoods{mdGlad});
    EXPECT_EQ(Other->Moods, TMoods{mdAngry});
    EXPECT_EQ(Refusal(*Of("Moods"), "[mdGlad,mdBored]"), "Invalid property element: mdBored");
    both->SetValue("[mdCalm]");
    EXPECT_EQ(Other->Moods, TMoods{mdCalm});
}

TEST_F(PropertyKinds, AnElementIsDefaultWhenTheFormFileDoesNotTellIt) {
    const auto is = [&](const char* element) { return Sub(*Of("Moods"), element)->IsDefault(); };
    EXPECT_TRUE(is("mdGlad"));
    EXPECT_TRUE(is("mdCalm"));
    Kinds->Moods = TMoods{mdCalm};
    EXPECT_FALSE(is("mdGlad"));
    EXPECT_FALSE(is("mdCalm"));
    EXPECT_TRUE(is("mdAngry"));
    EXPECT_FALSE(Of("Moods")->IsDefault());
    EXPECT_FALSE(Sub(*OfBoth("Moods"), "mdGlad")->IsDefault()) << "one of two";
    Kinds->Says = false;
    EXPECT_TRUE(is("mdGlad"));
    EXPECT_TRUE(Of("Moods")->IsDefault());
}

TEST_F(PropertyKinds, AFloatingPointNumberIsTheShortestTextOfItsType) {
    const auto ratio = Of("Ratio");
    EXPECT_EQ(ratio->GetValue(), "0.1") << "without the noise that a Single has as a Double";
    ratio->SetValue("0.7");
    EXPECT_EQ(Kinds->Ratio, 0.7F);
    EXPECT_EQ(ratio->GetValue(), "0.7");
    EXPECT_EQ(Refusal(*ratio, "1e39"), "'1e39' is not a valid floating point value") << "too large for a Single";
    const auto size = Of("Size");
    EXPECT_TRUE(size->IsDefault());
    size->SetValue("1e39");
    EXPECT_EQ(Kinds->Size, 1e39);
    EXPECT_FALSE(size->IsDefault());
    size->SetValue("-0.1");
    EXPECT_EQ(size->GetValue(), "-0.1");
    for (const char* text : {"", "1.5x", " 1", "one", "1,5", "1e999"}) {
        EXPECT_EQ(Refusal(*size, text), "'" + std::string(text) + "' is not a valid floating point value");
    }
    EXPECT_FALSE(OfBoth("Size")->AllEqual());
    OfBoth("Size")->SetValue("2");
    EXPECT_TRUE(OfBoth("Size")->AllEqual());
    EXPECT_EQ(Other->Size, 2);
}

TEST_F(PropertyKinds, ATextIsDefaultWhenItIsEmptyOrNotStored) {
    const auto words = Of("Words");
    EXPECT_TRUE(words->IsDefault());
    words->SetValue("hello");
    EXPECT_FALSE(words->IsDefault());
    EXPECT_FALSE(OfBoth("Words")->AllEqual());
    EXPECT_FALSE(OfBoth("Words")->IsDefault()) << "one of two";
    Kinds->Says = false;
    EXPECT_TRUE(words->IsDefault());
    OfBoth("Words")->SetValue("both");
    EXPECT_EQ(Other->Words, "both");
    EXPECT_TRUE(OfBoth("Words")->AllEqual());
}

TEST_F(PropertyKinds, APartIsShownByItsClass) {
    EXPECT_EQ(Of("Items")->GetValue(), "(TCollection)");
    EXPECT_FALSE(Of("Items")->IsDefault());
    EXPECT_TRUE(OfBoth("Items")->AllEqual());
    auto* const first = Add<TEdit>();
    auto* const second = Add<TEdit>();
    second->Font().SetHeight(-20);
    const auto height = Sub(*Editor({first, second}, "Font"), "Height");
    EXPECT_FALSE(height->AllEqual());
    height->SetValue("-30");
    EXPECT_EQ(first->Font().Height(), -30);
    EXPECT_EQ(second->Font().Height(), -30);
}

TEST_F(PropertyKinds, AnInterfaceIsAComponentThatHasIt) {
    auto* const voice = Add<TVoice>();
    const auto editor = Of("Voice");
    EXPECT_TRUE(editor->IsDefault());
    EXPECT_THAT(Values(*editor), testing::Contains("Voice1"));
    editor->SetValue("VOICE1");
    EXPECT_EQ(Kinds->Voice, voice);
    EXPECT_EQ(editor->GetValue(), "Voice1");
    EXPECT_FALSE(editor->IsDefault());
    EXPECT_EQ(Refusal(*editor, "Kinds1"), "Invalid class typecast: Voice cannot be set to TKinds");
    editor->SetValue("");
    EXPECT_EQ(Kinds->Voice, nullptr);
}

// --- References

TEST_F(PropertyKinds, OfferedAreTheComponentsOfTheFormAndTheFormItself) {
    (new TVoice(&Designer.Form()))->SetDesigning(true); // it has no name
    EXPECT_THAT(Values(*Of("Friend")), ElementsAre("Form1", "Kinds1", "Kinds2"));
    Of("Friend")->SetValue("FORM1");
    EXPECT_EQ(Kinds->Friend, &Designer.Form());
    EXPECT_EQ(Of("Friend")->GetValue(), "Form1");
    EXPECT_FALSE(OfBoth("Friend")->AllEqual());
    OfBoth("Friend")->SetValue("Kinds2");
    EXPECT_TRUE(OfBoth("Friend")->AllEqual());
    EXPECT_EQ(Other->Friend, Other);
}

TComponent* SecondForm = nullptr; // no window: those are found without further ado
TComponent* FindSecondForm(const std::string& name) {
    return SecondForm && SameText(name, SecondForm->Name()) ? SecondForm : nullptr;
}

TEST_F(PropertyKinds, AComponentInsideAnotherOrOfAnotherFormIsNamedByItsPath) {
    auto* const inner = new TVoice(Other);
    inner->SetName("Inner");
    auto* const innermost = new TVoice(inner);
    innermost->SetName("Innermost");
    const auto editor = Of("Friend");
    Kinds->Friend = innermost;
    EXPECT_EQ(editor->GetValue(), "Kinds2.Inner.Innermost");
    editor->SetValue("kinds2.inner");
    EXPECT_EQ(Kinds->Friend, inner);
    EXPECT_EQ(editor->GetValue(), "Kinds2.Inner");

    TComponent second(&Application()); // which has no name
    second.SetName("Second");
    auto* const voice = new TVoice(&second);
    voice->SetName("Voice1");
    EXPECT_EQ(Refusal(*editor, "Second.Voice1"), "Invalid property value");
    SecondForm = &second;
    RegisterFindGlobalComponentProc(FindSecondForm);
    editor->SetValue("Second.Voice1");
    EXPECT_EQ(Kinds->Friend, voice);
    EXPECT_EQ(editor->GetValue(), "Second.Voice1");
    EXPECT_EQ(Refusal(*editor, "Second.Nobody"), "Invalid property value");
    editor->SetValue("second");
    EXPECT_EQ(Kinds->Friend, &second);
    EXPECT_EQ(editor->GetValue(), "Second");
    Kinds->Friend = nullptr;
    UnregisterFindGlobalComponentProc(FindSecondForm);
    SecondForm = nullptr;
}

TEST_F(PropertyKinds, AReferenceToAFormThatIsNotOpenShowsItsNameAndCanBeGivenUp) {
    const TPropInfo& info = GetPropInfo(*Kinds, "Friend");
    detail::AddPendingReference({TAlive(*Kinds), [this] { return Kinds; }, &info, "Later.Menu1"});
    const auto editor = Of("Friend");
    EXPECT_EQ(editor->GetValue(), "Later.Menu1");
    EXPECT_FALSE(editor->IsDefault());
    EXPECT_FALSE(OfBoth("Friend")->IsDefault());
    EXPECT_FALSE(OfBoth("Friend")->AllEqual());
    editor->SetValue("");
    EXPECT_EQ(editor->GetValue(), "");
    EXPECT_TRUE(editor->IsDefault());
    EXPECT_EQ(PendingReference(*Kinds, info), "");
    EXPECT_EQ(Designer.ModifiedCount, 1);
}

// --- Events

TEST_F(PropertyKinds, AHandlerIsNamedAfterTheComponentAndTheEvent) {
    EXPECT_TRUE(Of("OnTurn")->IsDefault());
    Of("OnTurn")->Edit();
    EXPECT_EQ(Of("OnTurn")->GetValue(), "Kinds1Turn");
    EXPECT_FALSE(Of("OnTurn")->IsDefault());
    Of("Turned")->Edit();
    EXPECT_EQ(Of("Turned")->GetValue(), "Kinds1Turned");
    Designer.Form().SetName("Main");
    Editor({&Designer.Form()}, "OnClick")->Edit();
    EXPECT_EQ(Designer.Shown.back(), "FormClick");
}

TEST_F(PropertyKinds, AHandlerThatIsThereIsShownAndNotChanged) {
    Of("OnTurn")->SetValue("Turn");
    Designer.ModifiedCount = 0;
    Of("OnTurn")->Edit();
    EXPECT_EQ(Of("OnTurn")->GetValue(), "Turn");
    EXPECT_EQ(Designer.ModifiedCount, 0);
    EXPECT_THAT(Designer.Shown, ElementsAre("Turn"));
    const auto both = OfBoth("OnTurn");
    EXPECT_FALSE(both->AllEqual());
    both->Edit();
    EXPECT_EQ(Of("OnTurn")->GetValue(), "Kinds1Turn") << "they get one handler";
    EXPECT_TRUE(both->AllEqual());
    EXPECT_EQ(Designer.ModifiedCount, 1);
}

} // namespace
} // namespace kx::test
