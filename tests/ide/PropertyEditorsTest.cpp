// SPDX-License-Identifier: MIT
// How properties are shown and changed in an inspector.

#include "PropertyEditorsFixture.h"

#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/StdCtrls.h"

namespace kx::test {
namespace {

class PropertyEditors : public TPropertyEditorsTest {};

TEST_F(PropertyEditors, AnIntegerIsANumberInItsRange) {
    auto* const edit = Add<TEdit>();
    const auto editor = Editor({edit}, "Width");
    edit->SetWidth(121);
    EXPECT_EQ(editor->GetValue(), "121");
    editor->SetValue("77");
    EXPECT_EQ(edit->Width(), 77);
    EXPECT_EQ(Designer.ModifiedCount, 1);
    EXPECT_EQ(ErrorOf<EConvertError>([&] { editor->SetValue("wide"); }), "'wide' is not a valid integer value");
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { editor->SetValue("99999999999"); }),
              "Value must be between -2147483648 and 2147483647");
    EXPECT_EQ(edit->Width(), 77);
    EXPECT_EQ(Designer.ModifiedCount, 1);
    EXPECT_THAT(Values(*editor), IsEmpty());
}

TEST_F(PropertyEditors, AnIdentifierStandsForItsNumber) {
    auto* const edit = Add<TEdit>();
    const auto editor = Editor({edit}, "Color");
    EXPECT_EQ(editor->GetValue(), "clWindow");
    EXPECT_TRUE(editor->GetAttributes().Contains(paValueList));
    EXPECT_THAT(Values(*editor), IsSupersetOf({"clWindow", "clBtnFace", "clRed"}));
    editor->SetValue("CLRED");
    EXPECT_EQ(edit->Color(), clRed);
    editor->SetValue("$00010203");
    EXPECT_EQ(editor->GetValue(), "66051");
}

TEST_F(PropertyEditors, AnEnumerationIsChosenByNameAndEditGoesToTheNext) {
    auto* const edit = Add<TEdit>();
    const auto editor = Editor({edit}, "Align");
    EXPECT_EQ(editor->GetValue(), "alNone");
    EXPECT_TRUE(editor->IsDefault());
    EXPECT_THAT(Values(*editor), IsSupersetOf({"alNone", "alTop", "alClient"}));
    editor->SetValue("altop");
    EXPECT_EQ(edit->Align(), alTop);
    EXPECT_FALSE(editor->IsDefault());
    editor->Edit();
    EXPECT_EQ(edit->Align(), alBottom);
    const std::string last = Values(*editor).back();
    editor->SetValue(last);
    editor->Edit();
    EXPECT_EQ(edit->Align(), alNone);
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { editor->SetValue("alNowhere"); }), "Invalid property value");
}

TEST_F(PropertyEditors, ASetHasItsElementsBelow) {
    auto* const edit = Add<TEdit>();
    const auto editor = Editor({edit}, "Anchors");
    EXPECT_EQ(editor->GetValue(), "[akLeft,akTop]");
    EXPECT_THAT(SubNames(*editor), ElementsAre("akLeft", "akTop", "akRight", "akBottom"));
    const auto right = Sub(*editor, "akRight");
    EXPECT_EQ(right->GetValue(), "False");
    EXPECT_TRUE(right->IsDefault());
    right->SetValue("true");
    EXPECT_EQ(editor->GetValue(), "[akLeft,akTop,akRight]");
    EXPECT_FALSE(right->IsDefault());
    EXPECT_TRUE(Sub(*editor, "akLeft")->IsDefault());
    right->Edit();
    EXPECT_EQ(editor->GetValue(), "[akLeft,akTop]");
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { right->SetValue("maybe"); }), "Invalid property value");
    editor->SetValue("[akBottom]");
    EXPECT_EQ(edit->Anchors(), TAnchors{akBottom});
}

TEST_F(PropertyEditors, ASubObjectHasItsPropertiesBelow) {
    auto* const edit = Add<TEdit>();
    const auto font = Editor({edit}, "Font");
    EXPECT_EQ(font->GetValue(), "(TFont)");
    EXPECT_TRUE(font->GetAttributes().Contains(paReadOnly));
    EXPECT_THAT(SubNames(*font), IsSupersetOf({"Name", "Height", "Color", "Style"}));
    Sub(*font, "Height")->SetValue("-19");
    EXPECT_EQ(edit->Font().Height(), -19);
}

TEST_F(PropertyEditors, AReferenceIsAComponentOfTheForm) {
    auto* const edit = Add<TEdit>();
    auto* const menu = Add<TPopupMenu>();
    const auto editor = Editor({edit}, "PopupMenu");
    EXPECT_EQ(editor->GetValue(), "");
    EXPECT_TRUE(editor->IsDefault());
    EXPECT_THAT(Values(*editor), ElementsAre("PopupMenu1"));
    editor->SetValue("popupmenu1");
    EXPECT_EQ(edit->PopupMenu(), menu);
    EXPECT_EQ(editor->GetValue(), "PopupMenu1");
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { editor->SetValue("Edit1"); }), "Invalid property value");
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { editor->SetValue("Nobody"); }), "Invalid property value");
    EXPECT_EQ(edit->PopupMenu(), menu);
    editor->SetValue("");
    EXPECT_EQ(edit->PopupMenu(), nullptr);
}

TEST_F(PropertyEditors, AnEventIsTheNameOfItsHandler) {
    auto* const button = Add<TButton>();
    const auto editor = Editor({button}, "OnClick");
    EXPECT_EQ(editor->GetValue(), "");
    editor->Edit();
    EXPECT_EQ(editor->GetValue(), "Button1Click");
    EXPECT_THAT(Designer.Shown, ElementsAre("Button1Click"));
    EXPECT_THAT(Values(*editor), ElementsAre("Button1Click"));
    EXPECT_THAT(Values(*Editor({button}, "OnKeyDown")), IsEmpty());
    editor->SetValue("Confirm");
    EXPECT_EQ(editor->GetValue(), "Confirm");
    EXPECT_THAT(Values(*editor), ElementsAre("Button1Click", "Confirm"));
    EXPECT_THROW(Editor({button}, "OnKeyDown")->SetValue("Confirm"), EPropertyError);
    editor->SetValue("");
    EXPECT_EQ(editor->GetValue(), "");
    EXPECT_EQ(button->OnClick().Target(), nullptr) << "and no handler without a name";
    EXPECT_FALSE(Designer.MethodExists(""));
    Editor({&Designer.Form()}, "OnShow")->Edit();
    EXPECT_EQ(Designer.Shown.back(), "FormShow");
}

TEST_F(PropertyEditors, SeveralObjectsShowWhatTheyHaveInCommon) {
    auto* const edit = Add<TEdit>();
    auto* const button = Add<TButton>();
    edit->SetTop(5);
    button->SetTop(6);
    const TDesignSelection both{edit, button};
    EXPECT_EQ(Editor(both, "MaxLength"), nullptr);
    EXPECT_EQ(Editor(both, "Name"), nullptr) << "two components of one name cannot be";
    const auto top = Editor(both, "Top");
    EXPECT_FALSE(top->AllEqual());
    top->SetValue("40");
    EXPECT_TRUE(top->AllEqual());
    EXPECT_EQ(edit->Top(), 40);
    EXPECT_EQ(button->Top(), 40);
    EXPECT_EQ(Designer.ModifiedCount, 1);
    EXPECT_THAT(GetPropertyEditors(Designer, {}), IsEmpty());
}

// --- Registration

class TLoudProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    std::string GetValue() const override { return TStringProperty::GetValue() + "!"; }
};
class TLouderProperty : public TStringProperty {
public:
    using TStringProperty::TStringProperty;
    std::string GetValue() const override { return TStringProperty::GetValue() + "!!"; }
};

/// Classes of this test's own, so that what is registered for them touches nothing else.
class TSpeaker : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    const std::string& Words() const { return FWords; }
    void SetWords(const std::string& value) { FWords = value; }
    const std::string& Secret() const { return FSecret; }
    void SetSecret(const std::string& value) { FSecret = value; }

private:
    std::string FWords = "hello";
    std::string FSecret;
};
class TLoudSpeaker : public TSpeaker {
    KX_CLASS()
    using TSpeaker::TSpeaker;
};

const TClass& TSpeaker::StaticClass() {
    static const TClassBuilder<TSpeaker> cls("TSpeaker", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Words", &TSpeaker::Words, &TSpeaker::SetWords);
        c.Property("Secret", &TSpeaker::Secret, &TSpeaker::SetSecret);
    });
    return cls.Class();
}
const TClass& TLoudSpeaker::StaticClass() {
    static const TClassBuilder<TLoudSpeaker> cls("TLoudSpeaker", TSpeaker::StaticClass(),
                                                 [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TEST_F(PropertyEditors, TheMostSpecificRegistrationHoldsAndTheLaterOfEqualOnes) {
    auto* const speaker = Add<TSpeaker>();
    auto* const loud = Add<TLoudSpeaker>();
    EXPECT_EQ(Editor({speaker}, "Words")->GetValue(), "hello");
    RegisterPropertyEditor("string", &TSpeaker::StaticClass(), "Words", MakePropertyEditor<TLoudProperty>);
    RegisterPropertyEditor("string", &TSpeaker::StaticClass(), {}, MakePropertyEditor<TStringProperty>);
    EXPECT_EQ(Editor({speaker}, "Words")->GetValue(), "hello!") << "a name is more specific than none";
    EXPECT_EQ(Editor({loud}, "Words")->GetValue(), "hello!") << "descendants inherit it";
    RegisterPropertyEditor("string", &TLoudSpeaker::StaticClass(), {}, MakePropertyEditor<TLouderProperty>);
    EXPECT_EQ(Editor({loud}, "Words")->GetValue(), "hello!!") << "the nearer class is more specific";
    EXPECT_EQ(Editor({speaker}, "Words")->GetValue(), "hello!");
    RegisterPropertyEditor("string", &TSpeaker::StaticClass(), "words", MakePropertyEditor<TLouderProperty>);
    EXPECT_EQ(Editor({speaker}, "Words")->GetValue(), "hello!!") << "the later one";
}

TEST_F(PropertyEditors, AHiddenPropertyIsNotShown) {
    auto* const speaker = Add<TSpeaker>();
    EXPECT_NE(Editor({speaker}, "Secret"), nullptr);
    RegisterPropertyEditor("string", &TSpeaker::StaticClass(), "Secret", HiddenProperty);
    EXPECT_EQ(Editor({speaker}, "Secret"), nullptr);
    EXPECT_NE(Editor({speaker}, "Words"), nullptr);
}

} // namespace
} // namespace kx::test
