// SPDX-License-Identifier: MIT
// The C++ code of a form's class, in new files and in those that are there.

#include "WindowFixture.h"

#include "designer/ClassFiles.h"
#include "designer/CodeText.h"

namespace kx::test {
namespace {

using designer::TClassFiles;

class ClassFiles : public testing::Test {
protected:
    ClassFiles() : Folder("classfiles") { designer::RegisterStandardPackage(); }

    static TFormClass Class(const std::string& text) {
        TMemoryStream stream(text);
        return FormClassOf(stream);
    }
    TClassFiles Files(const std::string& text = Form, const char* lineBreak = "\n") const {
        return {Folder.Path("Order.dfm"), Class(text), lineBreak};
    }
    std::string Header() const { return designer::ReadWholeFile(Folder.Path("Order.h")); }
    std::string Source() const { return designer::ReadWholeFile(Folder.Path("Order.cpp")); }
    void Put(const std::string& header, const std::string& source) {
        Folder.AddFile("Order.h", header);
        Folder.AddFile("Order.cpp", source);
    }

    static constexpr const char* Form = "object Order: TOrder\n"
                                        "  OnCreate = FormCreate\n"
                                        "  object Ok: TButton\n"
                                        "    OnClick = OkClick\n"
                                        "    OnKeyPress = OkKeyPress\n"
                                        "  end\n"
                                        "  object Gauge: TFuelGauge\n"
                                        "  end\n"
                                        "end\n";
    TTempFolder Folder;
};

TEST_F(ClassFiles, NewFilesHoldAllThatAProgramNeeds) {
    TClassFiles files = Files();
    EXPECT_THAT(files.Missing(), IsEmpty());
    EXPECT_FALSE(files.IsComplete());
    files.Write();
    EXPECT_EQ(Header(), "#pragma once\n"
                        "\n"
                        "#include \"kx/ui/forms/Forms.h\"\n"
                        "#include \"kx/ui/widgets/StdCtrls.h\"\n"
                        "// The header of TFuelGauge belongs here.\n"
                        "\n"
                        "using namespace kx;\n"
                        "\n"
                        "class TOrder : public TForm {\n"
                        "    KX_CLASS()\n"
                        "\n"
                        "    explicit TOrder(TComponent* owner = nullptr);\n"
                        "\n"
                        "    void FormCreate(TObject* sender);\n"
                        "    void OkClick(TObject* sender);\n"
                        "    void OkKeyPress(TObject* sender, char32_t& key);\n"
                        "\n"
                        "private:\n"
                        "    KX_FIELDS(TOrder,\n"
                        "              (TButton, Ok),\n"
                        "              (TFuelGauge, Gauge))\n"
                        "};\n"
                        "\n"
                        "inline TOrder* Order = nullptr;\n");
    EXPECT_THAT(Source(), testing::StartsWith("#include \"Order.h\"\n\nconst TClass& TOrder::StaticClass() {\n"));
    EXPECT_THAT(Source(), HasSubstr("\nvoid TOrder::OkKeyPress(TObject* sender, char32_t& key) {\n}\n"));
    EXPECT_TRUE(Files().IsComplete());
}

TEST_F(ClassFiles, NewFilesHaveTheLineBreaksThatAreWanted) {
    Files(Form, "\r\n").Write();
    EXPECT_THAT(Header(), testing::StartsWith("#pragma once\r\n\r\n#include"));
    EXPECT_THAT(Source(), HasSubstr("{\r\n}\r\n"));
}

TEST_F(ClassFiles, WhatIsThereStaysAndWhatIsMissingIsPutIn) {
    const char* const header = "// Orders of our customers\r\n"
                               "#pragma once\r\n"
                               "#include \"kx/ui/forms/Forms.h\"\r\n"
                               "class TOrder;   // OkClick, Ok\r\n"
                               "class TOrder : public kx::TForm {\r\n"
                               "    KX_CLASS()\r\n"
                               "    explicit TOrder(kx::TComponent* owner = nullptr);\r\n"
                               "    void FormCreate(kx::TObject*);\r\n"
                               "    int Mine = 7; /* OkKeyPress */\r\n"
                               "};\r\n"
                               "struct TOther { int Gauge; };\r\n";
    const char* const source =
        "#include \"Order.h\"\n"
        "namespace {\n"
        "const char* Note() { return \"TOrder::OkClick() {\"; }\n"
        "}\n"
        "const TClass& TOrder::StaticClass() {\n"
        "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass(), [](auto& c) {\n"
        "        c.Method(\"FormCreate\", &TOrder::FormCreate);\n"
        "    });\n"
        "    return cls.Class();\n"
        "}\n"
        "TOrder::TOrder(TComponent* owner) : TForm(owner), Mine{8} { InitForm(*this, StaticClass()); }\n"
        "void TOrder::FormCreate(TObject*) {\n"
        "    if (TOrder::IsOpen()) { Mine = 9; }\n"
        "}\n"
        "int Last() { return 1; }\n";
    Put(header, source);
    TClassFiles files = Files();
    EXPECT_THAT(files.Missing(),
                ElementsAre("Order.h: void OkClick(TObject* sender)",
                            "Order.h: void OkKeyPress(TObject* sender, char32_t& key)", "Order.h: TButton* Ok",
                            "Order.h: TFuelGauge* Gauge", "Order.cpp: TOrder::OkClick", "Order.cpp: TOrder::OkKeyPress",
                            "Order.cpp: c.Method(\"OkClick\", &TOrder::OkClick)",
                            "Order.cpp: c.Method(\"OkKeyPress\", &TOrder::OkKeyPress)"));
    EXPECT_EQ(Header(), header) << "looking writes nothing";
    files.Write();
    EXPECT_EQ(Header(), "// Orders of our customers\r\n"
                        "#pragma once\r\n"
                        "#include \"kx/ui/forms/Forms.h\"\r\n"
                        "#include \"kx/ui/widgets/StdCtrls.h\"\r\n"
                        "// The header of TFuelGauge belongs here.\r\n"
                        "class TOrder;   // OkClick, Ok\r\n"
                        "class TOrder : public kx::TForm {\r\n"
                        "    KX_CLASS()\r\n"
                        "    explicit TOrder(kx::TComponent* owner = nullptr);\r\n"
                        "    void FormCreate(kx::TObject*);\r\n"
                        "    int Mine = 7; /* OkKeyPress */\r\n"
                        "    void OkClick(TObject* sender);\r\n"
                        "    void OkKeyPress(TObject* sender, char32_t& key);\r\n"
                        "    KX_FIELDS(TOrder,\r\n"
                        "              (TButton, Ok),\r\n"
                        "              (TFuelGauge, Gauge))\r\n"
                        "};\r\n"
                        "struct TOther { int Gauge; };\r\n");
    std::string expected = source;
    expected.insert(expected.find("    });\n"), "        c.Method(\"OkClick\", &TOrder::OkClick);\n"
                                                "        c.Method(\"OkKeyPress\", &TOrder::OkKeyPress);\n");
    expected.insert(expected.find("\nint Last"), "\n\nvoid TOrder::OkClick(TObject* sender) {\n}"
                                                 "\n\nvoid TOrder::OkKeyPress(TObject* sender, char32_t& key) {\n}");
    EXPECT_EQ(Source(), expected);
    EXPECT_TRUE(Files().IsComplete());
}

TEST_F(ClassFiles, AFormThatHasGrownFromAnEmptyOneGetsItsTable) {
    const std::string empty = "object Order: TOrder\nend\n";
    Files(empty).Write();
    EXPECT_TRUE(Files(empty).IsComplete());
    EXPECT_FALSE(Files().IsComplete());
    Files().Write();
    EXPECT_THAT(Source(), HasSubstr("TForm::StaticClass(), [](auto& c) {\n        c.Method(\"FormCreate\", "));
    EXPECT_THAT(Source(), HasSubstr("&TOrder::OkKeyPress);\n    });\n    return cls.Class();\n"));
    EXPECT_TRUE(Files().IsComplete());
}

TEST_F(ClassFiles, AClassMayStandInItsSourceWithHandlersInside) {
    const char* const source = "class TOrder : public TForm {\n"
                               "    KX_CLASS()\n"
                               "    void FormCreate(TObject*) {}\n"
                               "    void OkClick(TObject*) {}\n"
                               "    void OkKeyPress(TObject*, char32_t&);\n"
                               "    TButton* Ok; TFuelGauge* Gauge;\n"
                               "};\n"
                               "const TClass& TOrder::StaticClass() {\n"
                               "    using T = TOrder;\n"
                               "    static const TClassBuilder<T> cls(\"TOrder\", TForm::StaticClass(), [](auto& c) {\n"
                               "        c.Field(\"Ok\", &T::Ok); c.Field(\"Gauge\", &T::Gauge);\n"
                               "        c.Method(\"FormCreate\", &T::FormCreate); c.Method(\"OkClick\", &T::OkClick);\n"
                               "        c.Method(\"OkKeyPress\", &T::OkKeyPress); });\n"
                               "    return cls.Class();\n"
                               "}\n";
    Folder.AddFile("Order.cpp", source);
    TClassFiles files = Files();
    EXPECT_THAT(files.Missing(), ElementsAre("Order.cpp: TOrder::OkKeyPress"));
    files.Write();
    EXPECT_FALSE(Folder.Contains("Order.h"));
    std::string expected = source;
    expected.insert(expected.size() - 1, "\n\nvoid TOrder::OkKeyPress(TObject* sender, char32_t& key) {\n}");
    EXPECT_EQ(Source(), expected);
}

TEST_F(ClassFiles, FilesWithoutThePlaceForWhatIsMissingAreLeftAlone) {
    Put("struct TSomething {};\n", "int x;\n");
    TClassFiles files = Files();
    EXPECT_FALSE(files.IsComplete());
    EXPECT_THROW(files.Write(), designer::EDesignError);
    EXPECT_EQ(Header(), "struct TSomething {};\n");
    EXPECT_EQ(Source(), "int x;\n");
}

TEST_F(ClassFiles, NamesThatCppDoesNotTakeAreRefused) {
    EXPECT_THROW(Files("object Order: TOrder\n  OnCreate = delete\nend\n"), EInvalidOperation);
    EXPECT_FALSE(Folder.Contains("Order.h"));
}

// --- Code that others have written in their own way

TEST_F(ClassFiles, HeadersInAngleBracketsAreIncludedToo) {
    Put("#include <kx/ui/forms/Forms.h>\n#include <kx/ui/widgets/StdCtrls.h>\nstruct TOrder : TForm {\n};\n", "");
    Folder.AddFile("Order.cpp", "const TClass& TOrder::StaticClass() {\n"
                                "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass());\n"
                                "    return cls.Class();\n}\n");
    Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n").Write();
    EXPECT_EQ(Header(), "#include <kx/ui/forms/Forms.h>\n#include <kx/ui/widgets/StdCtrls.h>\nstruct TOrder : TForm {\n"
                        "    KX_FIELDS(TOrder,\n              (TButton, Ok))\n};\n");
}

TEST_F(ClassFiles, WhatStandsOnOneLineIsBrokenUp) {
    Put("class TOrder : public TForm { KX_CLASS() };\n", "const TClass& TOrder::StaticClass() {\n"
                                                         "    static const TClassBuilder<TOrder> cls(\"TOrder\", "
                                                         "TForm::StaticClass(), [](auto& c) { c.Creatable(); });\n"
                                                         "    return cls.Class();\n}\n");
    Files("object Order: TOrder\n  OnCreate = Go\n  object Ok: TButton\n  end\nend\n").Write();
    EXPECT_EQ(Header(), "#include \"kx/ui/widgets/StdCtrls.h\"\n"
                        "class TOrder : public TForm { KX_CLASS() \n    void Go(TObject* sender);\n"
                        "    KX_FIELDS(TOrder,\n              (TButton, Ok))\n};\n");
    EXPECT_THAT(Source(), HasSubstr("{ c.Creatable(); \n        c.Method(\"Go\", &TOrder::Go);\n});\n"));
}

// --- The fields of a class

constexpr const char* TwoButtons =
    "object Order: TOrder\n  object Ok: TButton\n  end\n  object No: TButton\n  end\nend\n";

TEST_F(ClassFiles, FieldsJoinTheListThatIsThere) {
    for (const std::string behind : {")", "  // the one\n             )", "\n    /* one */ )"}) {
        const std::string head = "#include \"kx/ui/widgets/StdCtrls.h\"\n"
                                 "class TOrder : public TForm {\n"
                                 "    struct TPart { KX_FIELDS(TPart, (TButton, No)) };\n"
                                 "  KX_FIELDS( TOrder, (TButton, Ok)";
        Put(head + behind + "\n    int Rest;\n};\n", "const TClass& TOrder::StaticClass() {\n"
                                                     "    static const TClassBuilder<TOrder> cls(\"TOrder\", "
                                                     "TForm::StaticClass());\n"
                                                     "    return cls.Class();\n}\n");
        const std::string source = Source();
        EXPECT_TRUE(Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n").IsComplete());
        Files("object Order: TOrder\n  object Ok: TButton\n  end\n  object Yes: TButton\n  end\nend\n").Write();
        EXPECT_EQ(Header(), head + ",\n            (TButton, Yes)" + behind + "\n    int Rest;\n};\n");
        EXPECT_EQ(Source(), source);
    }
}

TEST_F(ClassFiles, FieldsThatAreDeclaredOneByOneAreNamedInTheTable) {
    Put("#include \"kx/ui/widgets/StdCtrls.h\"\n"
        "class TOrder : public TForm {\n"
        "    KX_FIELDS(TOrder, (TButton, No))\n"
        "    TButton* Ok = nullptr;\n};\n",
        "const TClass& TOrder::StaticClass() {\n"
        "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass());\n"
        "    return cls.Class();\n}\n");
    const std::string header = Header();
    TClassFiles files = Files(TwoButtons);
    EXPECT_THAT(files.Missing(), ElementsAre("Order.cpp: c.Field(\"Ok\", &TOrder::Ok)"));
    files.Write();
    EXPECT_EQ(Header(), header);
    EXPECT_THAT(Source(),
                HasSubstr("TForm::StaticClass(), [](auto& c) {\n        c.Field(\"Ok\", &TOrder::Ok);\n    });"));
    EXPECT_TRUE(Files(TwoButtons).IsComplete());
}

TEST_F(ClassFiles, IncludesComeBehindThePragma) {
    Put("// Orders\n#pragma once\nclass TOrder : public TForm {\n};\n", "");
    TClassFiles files = Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n");
    EXPECT_THROW(files.Write(), designer::EDesignError) << "the source has no table";
    EXPECT_THAT(Header(), testing::Not(HasSubstr("TButton"))) << "then the header stays too";
    Folder.AddFile("Order.cpp", "const TClass& TOrder::StaticClass() {\n"
                                "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass());\n"
                                "    return cls.Class();\n}\n");
    Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n").Write();
    EXPECT_THAT(Header(), testing::StartsWith("// Orders\n#pragma once\n#include \"kx/ui/widgets/StdCtrls.h\"\nclass"));
}

TEST_F(ClassFiles, HandlersComeBehindAConstructorWithInitializersInBraces) {
    const char* const source =
        "const TClass& TOrder::StaticClass() {\n"
        "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass(), [](auto& c) {\n"
        "        c.Method(\"FormCreate\", &TOrder::FormCreate);\n    });\n"
        "    return cls.Class();\n}\n"
        "TOrder::TOrder(TComponent* owner) : TForm(owner), FOne{1}, FTwo{2} { Start(); }\n"
        "int Last() { return 1; }\n";
    Put("class TOrder : public TForm {\n    void FormCreate(TObject*);\n};\n", source);
    TClassFiles files = Files("object Order: TOrder\n  OnCreate = FormCreate\nend\n");
    EXPECT_THAT(files.Missing(), ElementsAre("Order.cpp: TOrder::FormCreate"));
    files.Write();
    std::string expected = source;
    expected.insert(expected.find("\nint Last"), "\n\nvoid TOrder::FormCreate(TObject* sender) {\n}");
    EXPECT_EQ(Source(), expected);
}

TEST_F(ClassFiles, AHandlerOfAnotherClassIsAnotherOne) {
    Put("class TOrder : public TForm {\n    void FormCreate(TObject*);\n};\n"
        "class TOther {\n    void OkClick(TObject*) {}\n    void FormCreate(TObject*) {}\n};\n",
        "const TClass& TOrder::StaticClass() {\n"
        "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass(), [](auto& c) {\n"
        "        c.Method(\"FormCreate\", &TOrder::FormCreate);\n    });\n    return cls.Class();\n}\n"
        "void TOther::FormCreate(TObject*) {\n}\n");
    EXPECT_THAT(Files("object Order: TOrder\n  OnCreate = FormCreate\nend\n").Missing(),
                ElementsAre("Order.cpp: TOrder::FormCreate"));
}

TEST_F(ClassFiles, HandlersMayStandInTheHeader) {
    Put("class TOrder : public TForm {\n    void FormCreate(TObject*) { Start(); }\n};\n",
        "const TClass& TOrder::StaticClass() {\n"
        "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass(), [](auto& c) {\n"
        "        c.Method(\"FormCreate\", &TOrder::FormCreate);\n    });\n    return cls.Class();\n}\n");
    EXPECT_TRUE(Files("object Order: TOrder\n  OnCreate = FormCreate\nend\n").IsComplete());
}

TEST_F(ClassFiles, IncludesComeBehindTheLastOne) {
    const char* const table = "const TClass& TOrder::StaticClass() {\n"
                              "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass());\n"
                              "    return cls.Class();\n}\n";
    Put("#include \"kx/ui/forms/Forms.h\"\n#include \"Own.h\"\nclass TOrder : public TForm {\n};\n", table);
    Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n").Write();
    EXPECT_THAT(Header(), HasSubstr("#include \"Own.h\"\n#include \"kx/ui/widgets/StdCtrls.h\"\nclass"));
    Put("#include \"Own.h\"\nclass TOrder : public TForm {\n};\n// #include \"none.h\"\n", table);
    Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n").Write();
    EXPECT_THAT(Header(), HasSubstr("#include \"Own.h\"\n#include \"kx/ui/widgets/StdCtrls.h\"\nclass"));
    // What is included is not included again.
    Files("object Order: TOrder\n  object Ok: TButton\n  end\n  object No: TButton\n  end\nend\n").Write();
    EXPECT_THAT(Header(), HasSubstr("(TButton, No)"));
    EXPECT_EQ(Header().find("StdCtrls.h"), Header().rfind("StdCtrls.h"));
}

TEST_F(ClassFiles, AHandlerIsKnownByItsWholeName) {
    const std::string table = "const TClass& TOrder::StaticClass() {\n"
                              "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass(), "
                              "[](auto& c) {\n        c.Method(\"FormCreate\", &TOrder::FormCreate);\n    });\n"
                              "    return cls.Class();\n}\n";
    const auto missing = [&](const char* code) {
        Put("class TOrder : public TForm {\n    void FormCreate(TObject*);\n};\n", table + code);
        return !Files("object Order: TOrder\n  OnCreate = FormCreate\nend\n").Missing().empty();
    };
    EXPECT_FALSE(missing("void TOrder::FormCreate(TObject*) {\n}\n"));
    EXPECT_FALSE(missing("void TOrder\n    ::\n    FormCreate(TObject*)\n{\n}\n"));
    EXPECT_TRUE(missing("void TOrder::FormCreated(TObject*) {\n}\n")) << "a longer name";
    EXPECT_TRUE(missing("TOrder& FormCreate(TObject*) {\n}\n")) << "it is no member";
    EXPECT_TRUE(missing("void TOrder::FormCreate(TObject*);\n")) << "it is just declared";
    EXPECT_TRUE(missing("auto at = &TOrder::FormCreate; int f() {\n}\n"));
    EXPECT_TRUE(missing("// ends in the middle\nvoid TOrder::FormCreate"));
}

TEST_F(ClassFiles, AClassThatIsCompleteOnOneLineStays) {
    const char* const header = "class TOrder : public TForm { KX_CLASS() TButton* Ok; };\n";
    Put(header, "const TClass& TOrder::StaticClass() {\n"
                "    static const TClassBuilder<TOrder> cls(\"TOrder\", TForm::StaticClass());\n"
                "    return cls.Class();\n}\n");
    Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n").Write();
    EXPECT_EQ(Header(), header);
}

TEST_F(ClassFiles, ATableOfAnotherClassIsNotTaken) {
    const char* const source = "const TClass& TOrder::StaticClass() { return Class; }\n"
                               "const TClass& TOther::StaticClass() {\n"
                               "    static const TClassBuilder<TOther> cls(\"TOther\", TForm::StaticClass());\n"
                               "    return cls.Class();\n}\n";
    Put("class TOrder : public TForm {\n    TButton* Ok;\n};\n", source);
    TClassFiles files = Files("object Order: TOrder\n  object Ok: TButton\n  end\nend\n");
    EXPECT_FALSE(files.IsComplete());
    EXPECT_THROW(files.Write(), designer::EDesignError);
    EXPECT_EQ(Source(), source);
}

TEST_F(ClassFiles, AHeaderWithoutTheClassIsAProblemOfItsOwn) {
    Files("object Order: TOrder\nend\n").Write();
    Folder.AddFile("Order.h", "struct TSomething {};\n");
    TClassFiles files = Files("object Order: TOrder\nend\n");
    EXPECT_THAT(files.Missing(), IsEmpty());
    EXPECT_FALSE(files.IsComplete());
    EXPECT_THROW(files.Write(), designer::EDesignError);
}

TEST_F(ClassFiles, AFileThatIsCompleteIsNotWritten) {
    Files().Write();
    DeleteFileA(Folder.Path("Order.cpp").c_str());
    SetFileAttributesA(Folder.Path("Order.h").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_NO_THROW(Files().Write());
    SetFileAttributesA(Folder.Path("Order.h").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_TRUE(Files().IsComplete());
}

TEST_F(ClassFiles, TheFilesStandBesideAFormFileOfAnyName) {
    Folder.AddFolder("v1.2");
    const TClassFiles files(Folder.Path("v1.2\\Order"), Class(Form), "\n");
    EXPECT_EQ(files.HeaderPath(), Folder.Path("v1.2\\Order.h"));
    EXPECT_EQ(files.SourcePath(), Folder.Path("v1.2\\Order.cpp"));
}

TEST_F(ClassFiles, TheBaseOfAClassIsReadFromItsCode) {
    const auto base = [this](const char* header) {
        Folder.AddFile("Order.h", header);
        return designer::BaseInCode(Folder.Path("Order.dfm"), "TOrder");
    };
    EXPECT_EQ(base("class TOrder : public TBase {};"), "TBase");
    EXPECT_EQ(base("class TOrder final : public forms::TBase, private IListener {};"), "TBase");
    EXPECT_EQ(base("struct TOrder\n  : TBase\n{};"), "TBase");
    EXPECT_EQ(base("class TOther : public TBase {};"), "");
    Folder.AddFile("Order.cpp", "class TOrder : public TInSource {};");
    EXPECT_EQ(base("// class TOrder : public TBase {};"), "TInSource");
}

// --- Code as text

TEST(CodeText, BlanksOutCommentsAndQuotes) {
    EXPECT_EQ(designer::BareCode("a // b\nc"), "a     \nc");
    EXPECT_EQ(designer::BareCode("a /* {\n} */ b"), "a     \n     b");
    EXPECT_EQ(designer::BareCode("f(\"{\\\"\", '}')"), "f(     ,    )");
    EXPECT_EQ(designer::BareCode("R\"x({)\" )x\" }"), "R           }");
    EXPECT_EQ(designer::BareCode("1'000'000 {"), "1'000'000 {");
    EXPECT_EQ(designer::BareCode("a \" open\nb"), "a       \nb");
    EXPECT_EQ(designer::BareCode("a /* open"), "a        ");
    EXPECT_EQ(designer::BareCode("a \" open\nb \" c"), "a       \nb    ");
    EXPECT_EQ(designer::BareCode("/*/ a */ b"), "         b");
}

TEST(CodeText, WordsAreWhole) {
    EXPECT_EQ(designer::FindWord("xOk Okx Ok_ Ok", "Ok"), 12U);
    EXPECT_EQ(designer::FindWord("Ok", "Ok"), 0U);
    EXPECT_EQ(designer::FindWord("Ok Ok", "Ok", 1), 3U);
    EXPECT_EQ(designer::FindWord("Okay", "Ok"), std::string::npos);
    EXPECT_EQ(designer::FindWord("XOk OkX ZOk OkA 0Ok Ok9 _Ok", "Ok"), std::string::npos);
}

TEST(CodeText, BracketsMatchAcrossKinds) {
    EXPECT_EQ(designer::MatchingBracket("({[]})x", 0), 5U);
    EXPECT_EQ(designer::MatchingBracket("({[]})x", 2), 3U);
    EXPECT_EQ(designer::MatchingBracket("({[]}", 0), std::string::npos);
}

} // namespace
} // namespace kx::test
