// SPDX-License-Identifier: MIT
// The C++ class that belongs to a form file.

#include "FormFixture.h"

#include "kx/core/FormClass.h"
#include "kx/core/FormEvents.h"

namespace kx::sample {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TFormClass ClassOf(std::string_view form) {
    TMemoryStream stream(form);
    return FormClassOf(stream);
}

std::vector<std::string> FieldsOf(const TFormClass& cls) {
    std::vector<std::string> fields;
    for (const TFormClass::TField& field : cls.Fields) {
        fields.push_back(field.ClassName + " " + field.Name);
    }
    return fields;
}

std::vector<std::string> HandlersOf(const TFormClass& cls) {
    std::vector<std::string> handlers;
    for (const TFormClass::THandler& handler : cls.Handlers) {
        handlers.push_back(handler.Name + "(" + handler.Parameters + ")" + (handler.IsKnown ? "" : "?"));
    }
    return handlers;
}

constexpr char SearchForm[] = "object SearchForm: TSearchForm\n"
                              "  OnlyOne = alNone\n"
                              "  OnEmpty = True\n"
                              "  OnCloseQuery = FormCloseQuery\n"
                              "  object SearchEdit: TSearchEdit\n"
                              "    OnKeyPress = SearchEditKeyPress\n"
                              "  end\n"
                              "  object TPanel\n"
                              "    object GoButton: TSearchButton\n"
                              "      OnClick = Go\n"
                              "      OnDblClick = go\n"
                              "    end\n"
                              "  end\n"
                              "end\n";

TEST(FormClass, HoldsAFieldForEachNamedComponentAndAMethodForEachHandler) {
    const TFormClass cls = ClassOf(SearchForm);
    EXPECT_EQ(cls.Name, "TSearchForm");
    EXPECT_EQ(cls.FormName, "SearchForm");
    EXPECT_EQ(cls.Ancestor, "TForm");
    EXPECT_FALSE(cls.IsInherited);
    EXPECT_THAT(FieldsOf(cls), ElementsAre("TSearchEdit SearchEdit", "TSearchButton GoButton"));
    EXPECT_THAT(HandlersOf(cls),
                ElementsAre("FormCloseQuery(TObject* sender, bool& canClose)",
                            "SearchEditKeyPress(TObject* sender, char32_t& key)", "Go(TObject* sender)"));
}

TEST(FormClass, IsTheSameFromEveryFormat) {
    const std::string binary = ToBinary(SearchForm);
    TMemoryStream text(SearchForm);
    TMemoryStream resource;
    ObjectTextToResource(text, resource);
    const std::string expected = FormClassDefinition(ClassOf(SearchForm));
    EXPECT_EQ(FormClassDefinition(ClassOf(binary)), expected);
    EXPECT_EQ(FormClassDefinition(ClassOf(resource.Bytes())), expected);
    EXPECT_EQ(ErrorOf<EInvalidImage>([] { ClassOf("no form"); }), "Invalid stream format: no form");
}

TEST(FormClass, IsDeclaredAsUsersWriteIt) {
    EXPECT_EQ(FormClassDeclaration(ClassOf(SearchForm)),
              "class TSearchForm : public TForm {\n"
              "    KX_CLASS()\n"
              "\n"
              "    explicit TSearchForm(TComponent* owner = nullptr);\n"
              "\n"
              "    void FormCloseQuery(TObject* sender, bool& canClose);\n"
              "    void SearchEditKeyPress(TObject* sender, char32_t& key);\n"
              "    void Go(TObject* sender);\n"
              "\n"
              "private:\n"
              "    KX_FIELDS(TSearchForm,\n"
              "              (TSearchEdit, SearchEdit),\n"
              "              (TSearchButton, GoButton))\n"
              "};\n"
              "\n"
              "inline TSearchForm* SearchForm = nullptr;\n");
}

TEST(FormClass, IsDefinedAsUsersWriteIt) {
    EXPECT_EQ(FormClassDefinition(ClassOf(SearchForm)),
              "const TClass& TSearchForm::StaticClass() {\n"
              "    static const TClassBuilder<TSearchForm> cls(\"TSearchForm\", TForm::StaticClass(), [](auto& c) {\n"
              "        c.Method(\"FormCloseQuery\", &TSearchForm::FormCloseQuery);\n"
              "        c.Method(\"SearchEditKeyPress\", &TSearchForm::SearchEditKeyPress);\n"
              "        c.Method(\"Go\", &TSearchForm::Go);\n"
              "    });\n"
              "    return cls.Class();\n"
              "}\n"
              "\n"
              "TSearchForm::TSearchForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }\n"
              "\n"
              "void TSearchForm::FormCloseQuery(TObject* sender, bool& canClose) {\n"
              "}\n"
              "\n"
              "void TSearchForm::SearchEditKeyPress(TObject* sender, char32_t& key) {\n"
              "}\n"
              "\n"
              "void TSearchForm::Go(TObject* sender) {\n"
              "}\n");
}

TEST(FormClass, OfAFormWithNothingInsideHasNoTable) {
    const TFormClass cls = ClassOf("object TBare end");
    EXPECT_EQ(FormClassDeclaration(cls), "class TBare : public TForm {\n"
                                         "    KX_CLASS()\n"
                                         "\n"
                                         "    explicit TBare(TComponent* owner = nullptr);\n"
                                         "};\n");
    EXPECT_EQ(FormClassDefinition(cls),
              "const TClass& TBare::StaticClass() {\n"
              "    static const TClassBuilder<TBare> cls(\"TBare\", TForm::StaticClass());\n"
              "    return cls.Class();\n"
              "}\n"
              "\n"
              "TBare::TBare(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }\n");
}

TEST(FormClass, LeavesToAncestorsAndFramesWhatTheyBring) {
    const TFormClass cls = ClassOf("inherited Later: TLaterForm\n"
                                   "  inherited Base: TButton\n"
                                   "    OnClick = BaseClick\n"
                                   "    object Own: TButton end\n"
                                   "  end\n"
                                   "  inline Frame: TSearchFrame\n"
                                   "    inherited Inner: TButton\n"
                                   "      OnClick = FrameInnerClick\n"
                                   "    end\n"
                                   "    object Deep: TPanel\n"
                                   "      object Deeper: TButton end\n"
                                   "    end\n"
                                   "  end\n"
                                   "end");
    EXPECT_TRUE(cls.IsInherited);
    EXPECT_THAT(FieldsOf(cls), ElementsAre("TButton Own", "TSearchFrame Frame"));
    EXPECT_THAT(HandlersOf(cls), ElementsAre("BaseClick(TObject* sender)", "FrameInnerClick(TObject* sender)"));
    EXPECT_THAT(FormClassDeclaration(cls), HasSubstr("put the class in TForm's place.\nclass TLaterForm"));
    EXPECT_THAT(FormClassDeclaration(ClassOf(SearchForm)), Not(HasSubstr("inherits")));
}

TEST(FormClass, OfARegisteredClassHasThatOnesAncestor) {
    RegisterSampleClasses();
    EXPECT_EQ(ClassOf("object B: TButton end").Ancestor, TButton::StaticClass().Parent()->Name());
}

TEST(FormClass, KnowsHandlersOfPartsAndItems) {
    EXPECT_THAT(HandlersOf(ClassOf("object F: TNobodysForm\n"
                                   "  Filter.OnIncludeFile = Include\n"
                                   "  Bar.OnlyOne = alNone\n"
                                   "  Sections = <\n"
                                   "    item [2]\n"
                                   "      OnClick = SectionClick\n"
                                   "      Parts = <\n"
                                   "        item\n"
                                   "          OnKeyUp = PartKeyUp\n"
                                   "        end>\n"
                                   "    end>\n"
                                   "  OnShow = Shown\n"
                                   "end")),
                ElementsAre("Include(TObject* sender, const std::string& fileName, bool& includeFile)",
                            "SectionClick(TObject* sender)",
                            "PartKeyUp(TObject* sender, uint16_t& key, TShiftState shift)", "Shown(TObject* sender)"));
}

TEST(FormClass, SaysWhereParametersAreNotKnown) {
    const TFormClass cls = ClassOf("object F: TNobodysForm\n  OnMiracle = Wonder\nend");
    EXPECT_THAT(HandlersOf(cls), ElementsAre("Wonder(TObject* sender)?"));
    EXPECT_THAT(FormClassDeclaration(cls), HasSubstr("    // What F.OnMiracle hands over is not known here.\n"
                                                     "    void Wonder(TObject* sender);\n"));
    const TFormClass told = ClassOf("object F: TNobodysForm\n  OnMiracle = Wonder\n  OnKeyPress = Wonder\nend");
    EXPECT_THAT(HandlersOf(told), ElementsAre("Wonder(TObject* sender, char32_t& key)"));
    EXPECT_EQ(told.Handlers[0].Event, "F.OnKeyPress");
    EXPECT_EQ(told.Handlers[0].Other, "");
}

TEST(FormClass, SaysWhichEventsAHandlerCannotServeTogether) {
    const TFormClass cls =
        ClassOf("object F: TNobodysForm\n  OnKeyPress = Key\n  OnMouseDown = Key\n  OnClick = Key\nend");
    EXPECT_THAT(HandlersOf(cls), ElementsAre("Key(TObject* sender, char32_t& key)"));
    EXPECT_THAT(FormClassDeclaration(cls),
                HasSubstr("    // It cannot be the handler of F.OnMouseDown (TObject* sender, TMouseButton button, "
                          "TShiftState shift, int x, int y) too.\n    void Key("));
}

TEST(FormClass, NamesThatAreThereTwiceAreErrors) {
    EXPECT_EQ(ErrorOf<EReadError>([] { ClassOf("object F: TF\n object A: TB\n end\n object a: TC\n end\nend"); }),
              "A component named a exists already on line 4");
}

TEST(FormClass, NamesThatCppDoesNotTakeAreErrors) {
    const auto errorOf = [](std::string_view inside) {
        const TFormClass cls = ClassOf("object F: TF\n" + std::string(inside) + "\nend");
        std::string error = ErrorOf<EInvalidOperation>([&] { FormClassDefinition(cls); });
        EXPECT_EQ(ErrorOf<EInvalidOperation>([&] { FormClassDeclaration(cls); }), error);
        return error;
    };
    EXPECT_EQ(errorOf("object delete: TB end"), "delete is a word of C++ and cannot be a name there");
    EXPECT_EQ(errorOf("OnClick = xor_eq"), "xor_eq is a word of C++ and cannot be a name there");
    EXPECT_EQ(errorOf("object TF: TB end"), "TF would be two things in class TF");
    EXPECT_EQ(errorOf("OnClick = A object A: TB end"), "A would be two things in class TF");
    EXPECT_EQ(errorOf("object Delete: TB end"), "no error");
}

TEST(FormClass, NestingWithoutEndIsAnError) {
    std::string text = "object F: TF\n";
    std::string binary = "TPF0";
    for (int i = 0; i < 200; ++i) {
        binary += std::string("\1T\0\0", 4);
    }
    EXPECT_THAT(ErrorOf<EReadError>([&] { ClassOf(binary); }), HasSubstr("nested too deeply"));
    std::string items = std::string("TPF0\1T\0", 7);
    for (int i = 0; i < 200; ++i) {
        items += std::string("\1P\x0E\1", 4);
    }
    EXPECT_THAT(ErrorOf<EReadError>([&] { ClassOf(items); }), HasSubstr("nested too deeply"));
}

TEST(FormClass, HandlersWithoutIdentifiersAreErrors) {
    EXPECT_THAT(ErrorOf<EReadError>([] { ClassOf(std::string("TPF0\1T\0\7OnClick\7\3a-b\0\0", 22)); }),
                HasSubstr("'a-b' is no identifier"));
}

TEST(EventParameters, TypesAreThoseOfTheRegisteredClass) {
    RegisterSampleClasses();
    ASSERT_NE(TButton::StaticClass().FindProperty("OnClick"), nullptr);
    EXPECT_EQ(EventParameters("TButton", "OnClick"), "TObject* sender");
    EXPECT_EQ(EventParameters("TButton", "Caption"), "");
    EXPECT_EQ(EventParameters("TButton", "OnMiracle"), "");
    EXPECT_EQ(EventParameters("TNobody", "onkeypress"), "TObject* sender, char32_t& key");
    EXPECT_EQ(EventParameters("TTreeView", "OnChange"), "TObject* sender, TTreeNode* node");
    EXPECT_EQ(EventParameters("TEdit", "OnChange"), "TObject* sender");
}

/// Its event is called like another one, and hands over something else.
class TOdd : public TComponent {
    KX_CLASS()
    using TEventOfOdd = TEvent<void(TObject* sender, int number)>;
    const TEventOfOdd& OnKeyPress() const { return FEvent; }
    void SetOnKeyPress(TEventOfOdd value) { FEvent = std::move(value); }

private:
    TEventOfOdd FEvent;
};

const TClass& TOdd::StaticClass() {
    static const TClassBuilder<TOdd> cls("TOdd", TComponent::StaticClass(), [](auto& c) {
        c.Property("OnKeyPress", &TOdd::OnKeyPress, &TOdd::SetOnKeyPress);
    });
    return cls.Class();
}

TEST(EventParameters, TypesOfAnEventThatIsCalledLikeAnotherOneAreItsOwn) {
    RegisterClasses<TOdd>();
    EXPECT_EQ(EventParameters("TOdd", "OnKeyPress"), "TObject* sender, int value1");
}

TEST(EventParameters, TypesAreTakenFromWhatTheCompilerCallsThem) {
    EXPECT_THAT(detail::ParameterTypes("void (TObject *, const basic_string<char> &, map<int, int>)"),
                ElementsAre("TObject*", "const std::string&", "map<int, int>"));
    EXPECT_THAT(detail::ParameterTypes("void(TObject*, short unsigned int&, unsigned char)"),
                ElementsAre("TObject*", "uint16_t&", "uint8_t"));
    EXPECT_THAT(detail::ParameterTypes("void()"), IsEmpty());
    EXPECT_THAT(detail::ParameterTypes("nothing"), IsEmpty());
    EXPECT_THAT(detail::TypesOfParameters("TObject* sender, const TRect& rect"),
                ElementsAre("TObject*", "const TRect&"));
}

} // namespace
} // namespace kx::sample
