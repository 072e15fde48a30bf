// SPDX-License-Identifier: MIT
// Property tables and access by name.

#include "kx/core/TypInfo.h"
#include "kx/core/Components.h"
#include "tests/support/ErrorOf.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

namespace kx {

enum TShade { shLight, shDark };
KX_ENUM(TShade, "shLight", "shDark")

enum class TTint : int32_t {};
inline const TIdentInfo& KxIdentInfo(TTint) {
    static const TIdentInfo info{{{1, "tiOne"}, {-2, "tiMinusTwo"}}};
    return info;
}

enum class TSmallTint : int16_t {};
inline const TIdentInfo& KxIdentInfo(TSmallTint) {
    static const TIdentInfo info{{{0, "tsNone"}, {-7, "tsMinusSeven"}}};
    return info;
}

namespace {

/// Whether a value of the set may join what T refers to.
template <class T> constexpr bool CanChange = requires(T set) {
    static_cast<T>(set).Include(shDark);
    static_cast<T>(set).Exclude(shDark);
};
static_assert(CanChange<TSet<TShade>&>);
static_assert(!CanChange<TSet<TShade>&&>, "a change of a copy would be lost");

using test::ErrorOf;
using testing::ElementsAre;

class TPart : public TPersistent {
    KX_CLASS()
    int Size() const { return FSize; }
    void SetSize(int value) { FSize = value; }
    void Assign(const TPersistent* source) override {
        const auto* part = dynamic_cast<const TPart*>(source);
        part ? SetSize(part->Size()) : TPersistent::Assign(source);
    }

private:
    int FSize = 0;
};

class IThing {
public:
    virtual ~IThing() = default;
};

class TBase : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    int Zeta() const { return FNumbers[0]; }
    void SetZeta(int value) { FNumbers[0] = value; }
    uint8_t Small() const { return FSmall; }
    void SetSmall(uint8_t value) { FSmall = value; }
    const std::string& Text() const { return FText; }
    void SetText(const std::string& value) { FText = value; }
    bool Flag() const { return FFlag; }
    void SetFlag(bool value) { FFlag = value; }
    TShade Shade() const { return FShade; }
    void SetShade(TShade value) { FShade = value; }
    TSet<TShade> Shades() const { return FShades; }
    void SetShades(TSet<TShade> value) { FShades = value; }
    TTint Tint() const { return FTint; }
    void SetTint(TTint value) { FTint = value; }
    TSmallTint SmallTint() const { return FSmallTint; }
    void SetSmallTint(TSmallTint value) { FSmallTint = value; }
    float Ratio() const { return FRatio; }
    void SetRatio(float value) { FRatio = value; }
    int Fixed() const { return 7; }
    TPart& Part() { return FPart; }
    void SetPart(const TPart& value) { FPart.Assign(&value); }
    TBase* Next() const { return FNext; }
    void SetNext(TBase* value) { FNext = value; }
    IThing* Thing() const { return FThing; }
    void SetThing(IThing* value) { FThing = value; }
    const TNotifyEvent& OnChange() const { return FOnChange; }
    void SetOnChange(const TNotifyEvent& value) { FOnChange = value; }
    void Changed(TObject*) { ++Changes; }
    int Changes = 0;
    TBase* Field1 = nullptr;

private:
    int FNumbers[2] = {};
    uint8_t FSmall = 0;
    std::string FText;
    bool FFlag = false;
    TShade FShade = shLight;
    TSet<TShade> FShades;
    TTint FTint{};
    TSmallTint FSmallTint{};
    float FRatio = 0;
    TPart FPart;
    TBase* FNext = nullptr;
    IThing* FThing = nullptr;
    TNotifyEvent FOnChange;
};

class TDerived : public TBase, public IThing {
    KX_CLASS()
    using TBase::TBase;
    int Extra() const { return 1; }
    int LoudZeta() const { return Zeta() * 10; }
    void SetLoudZeta(int value) { SetZeta(value / 10); }
};

const TClass& TPart::StaticClass() {
    static const TClassBuilder<TPart> cls("TPart", TPersistent::StaticClass(),
                                          [](auto& c) { c.Property("Size", &TPart::Size, &TPart::SetSize); });
    return cls.Class();
}

const TClass& TBase::StaticClass() {
    static const TClassBuilder<TBase> cls("TBase", TComponent::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Zeta", &TBase::Zeta, &TBase::SetZeta).Default = 3;
        c.Property("Small", &TBase::Small, &TBase::SetSmall);
        c.Property("Text", &TBase::Text, &TBase::SetText);
        c.Property("Flag", &TBase::Flag, &TBase::SetFlag);
        c.Property("Shade", &TBase::Shade, &TBase::SetShade);
        c.Property("Shades", &TBase::Shades, &TBase::SetShades);
        c.Property("Tint", &TBase::Tint, &TBase::SetTint);
        c.Property("SmallTint", &TBase::SmallTint, &TBase::SetSmallTint);
        c.Property("Ratio", &TBase::Ratio, &TBase::SetRatio);
        c.Property("Fixed", &TBase::Fixed, nullptr);
        c.SubObject("Part", &TBase::Part, &TBase::SetPart);
        c.Reference("Next", &TBase::Next, &TBase::SetNext);
        c.Interface("Thing", &TBase::Thing, &TBase::SetThing);
        c.Property("OnChange", &TBase::OnChange, &TBase::SetOnChange);
        c.Method("Changed", &TBase::Changed);
        c.Field("Field1", &TBase::Field1);
    });
    return cls.Class();
}

const TClass& TDerived::StaticClass() {
    static const TClassBuilder<TDerived> cls("TDerived", TBase::StaticClass(), [](auto& c) {
        c.Property("Extra", &TDerived::Extra, nullptr);
        c.Property("Zeta", &TDerived::LoudZeta, &TDerived::SetLoudZeta).Default = 50;
    });
    return cls.Class();
}

TEST(PropertyTable, ListsAncestorsFirstEachInItsPublishedOrder) {
    std::vector<std::string> names;
    for (const TPropInfo* property : TDerived::StaticClass().Properties()) {
        names.push_back(property->Name);
    }
    EXPECT_THAT(names, ElementsAre("Name", "Tag", "Zeta", "Small", "Text", "Flag", "Shade", "Shades", "Tint",
                                   "SmallTint", "Ratio", "Fixed", "Part", "Next", "Thing", "OnChange", "Extra"));
}

TEST(PropertyTable, APropertyPublishedAgainReplacesItsAncestorsInPlace) {
    TDerived derived;
    SetOrdProp(derived, "Zeta", 40);
    EXPECT_EQ(derived.Zeta(), 4);
    EXPECT_EQ(TDerived::StaticClass().FindProperty("Zeta")->Default, 50);
    EXPECT_EQ(TBase::StaticClass().FindProperty("Zeta")->Default, 3);
}

TEST(PropertyTable, NamesAreFoundInAnyLetterCase) {
    EXPECT_EQ(TDerived::StaticClass().FindProperty("shades"), TBase::StaticClass().FindProperty("SHADES"));
    EXPECT_EQ(TBase::StaticClass().FindProperty("Extra"), nullptr);
    EXPECT_EQ(TBase::StaticClass().FindProperty(""), nullptr);
}

TEST(PropertyTable, DescribesKindsAndLimits) {
    const auto& find = [](const char* name) -> const TPropInfo& { return *TBase::StaticClass().FindProperty(name); };
    EXPECT_EQ(find("Zeta").Kind, TTypeKind::Integer);
    EXPECT_EQ(find("Small").MaxValue, 255);
    EXPECT_EQ(find("Flag").Enum, &BooleanInfo());
    EXPECT_EQ(find("Shade").Kind, TTypeKind::Enumeration);
    EXPECT_EQ(find("Shade").MaxValue, 1);
    EXPECT_EQ(find("Shades").MaxValue, 3);
    EXPECT_EQ(find("Part").Kind, TTypeKind::SubObject);
    EXPECT_EQ(&find("Part").Class(), &TPart::StaticClass());
    EXPECT_EQ(&find("Next").Class(), &TBase::StaticClass()); // its own class
    EXPECT_EQ(find("Thing").Kind, TTypeKind::Interface);
    EXPECT_EQ(find("OnChange").Signature, TNotifyEvent::Signature());
    EXPECT_TRUE(find("Fixed").IsReadOnly());
    EXPECT_FALSE(find("Zeta").IsReadOnly());
}

TEST(PropertyAccess, ReadsAndWritesByName) {
    TBase base;
    SetOrdProp(base, "zeta", -5);
    SetStrProp(base, "Text", "hello");
    SetEnumProp(base, "Shade", "SHDARK");
    SetEnumProp(base, "Flag", "True");
    SetSetProp(base, "Shades", "[shLight, shDark]");
    GetPropInfo(base, "Ratio").SetFloat(base, 0.5);
    EXPECT_EQ(GetOrdProp(base, "Zeta"), -5);
    EXPECT_EQ(GetStrProp(base, "TEXT"), "hello");
    EXPECT_EQ(GetEnumProp(base, "Shade"), "shDark");
    EXPECT_EQ(GetEnumProp(base, "Flag"), "True");
    EXPECT_EQ(GetSetProp(base, "Shades"), "[shLight,shDark]");
    EXPECT_EQ(base.Ratio(), 0.5F);
    EXPECT_TRUE(IsPublishedProp(base, "Text"));
    EXPECT_FALSE(IsPublishedProp(base, "Texts"));
}

TEST(PropertyAccess, ErrorsAreClear) {
    TBase base;
    EXPECT_EQ(ErrorOf<EPropertyError>([&] { GetOrdProp(base, "Nothing"); }), "Property Nothing does not exist");
    EXPECT_THROW(GetOrdProp(base, "Text"), EPropertyError);
    EXPECT_THROW(GetStrProp(base, "Zeta"), EPropertyError);
    EXPECT_THROW(GetEnumProp(base, "Zeta"), EPropertyError);
    EXPECT_THROW(GetSetProp(base, "Shade"), EPropertyError);
    EXPECT_THROW(GetObjectProp(base, "Zeta"), EPropertyError);
    EXPECT_THROW(SetOrdProp(base, "Fixed", 1), EPropertyError);
    EXPECT_THROW(SetEnumProp(base, "Shade", "shNone"), EPropertyError);
    EXPECT_THROW(SetSetProp(base, "Shades", "[shNone]"), EPropertyError);
    EXPECT_THROW(GetPropInfo(base, "Zeta").GetFloat(base), EPropertyError);
    EXPECT_THROW(GetPropInfo(base, "Zeta").GetEvent(base), EPropertyError);
}

TEST(PropertyAccess, ValuesOutOfRangeAreRefused) {
    TBase base;
    SetOrdProp(base, "Small", 255);
    EXPECT_THROW(SetOrdProp(base, "Small", 256), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "Small", -1), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "Zeta", int64_t{INT32_MAX} + 1), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "Tint", int64_t{INT32_MAX} + 1), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "SmallTint", 32768), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "SmallTint", 65536), ERangeError) << "cut to 16 bits it would be one of the values";
    EXPECT_THROW(SetOrdProp(base, "SmallTint", -32769), ERangeError);
    SetOrdProp(base, "SmallTint", 32767);
    SetOrdProp(base, "SmallTint", -32768);
    EXPECT_EQ(GetOrdProp(base, "SmallTint"), -32768);
    EXPECT_THROW(SetOrdProp(base, "Shade", 2), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "Shades", 4), ERangeError);
    EXPECT_THROW(SetOrdProp(base, "Flag", 2), ERangeError);
    EXPECT_EQ(base.Small(), 255);
}

TEST(PropertyAccess, SubObjectsAreAssignedAndReferencesSet) {
    TBase base;
    TBase other;
    TDerived derived;
    TPart part;
    part.SetSize(9);
    EXPECT_EQ(GetObjectProp(base, "Part"), &base.Part());
    SetObjectProp(base, "Part", &part);
    EXPECT_EQ(base.Part().Size(), 9);
    EXPECT_THROW(SetObjectProp(base, "Part", &other), EInvalidCast);
    SetObjectProp(base, "Next", &other);
    EXPECT_EQ(GetObjectProp(base, "Next"), &other);
    EXPECT_THROW(SetObjectProp(base, "Next", &part), EInvalidCast);
    SetObjectProp(base, "Next", nullptr);
    EXPECT_EQ(base.Next(), nullptr);
    EXPECT_EQ(GetObjectProp(base, "Thing"), nullptr);
    SetObjectProp(base, "Thing", &derived);
    EXPECT_EQ(base.Thing(), &derived);
    EXPECT_EQ(GetObjectProp(base, "Thing"), &derived); // the object behind the interface
    EXPECT_THROW(SetObjectProp(base, "Thing", &other), EInvalidCast);
}

TEST(PropertyAccess, EventsTakeTargetsOfTheirSignature) {
    TBase base;
    const TPropInfo& property = GetPropInfo(base, "OnChange");
    const TMethodInfo* const method = base.ClassType().FindMethod("CHANGED");
    ASSERT_TRUE(method);
    property.SetEvent(base, method->Bind(base));
    base.OnChange()(nullptr);
    EXPECT_EQ(base.Changes, 1);
    EXPECT_EQ(property.GetEvent(base)->MethodName(), "Changed");
    EXPECT_EQ(base.OnChange(), TNotifyEvent(&base, &TBase::Changed));
    EXPECT_THROW(property.SetEvent(base, TEvent<void(int)>([](int) {}).Target()), EPropertyError);
    property.SetEvent(base, nullptr);
    EXPECT_FALSE(base.OnChange());
    EXPECT_EQ(base.ClassType().FindMethod("Nothing"), nullptr);
}

TEST(Classes, KnowTheirAncestorsAndCreateTheirObjects) {
    TDerived derived;
    EXPECT_EQ(derived.ClassName(), "TDerived");
    EXPECT_TRUE(derived.InheritsFrom(TBase::StaticClass()));
    EXPECT_TRUE(derived.InheritsFrom(TObject::StaticClass()));
    EXPECT_FALSE(derived.InheritsFrom(TPart::StaticClass()));
    EXPECT_EQ(TDerived::StaticClass().Parent(), &TBase::StaticClass());
    TBase owner;
    TComponent* const created = TBase::StaticClass().Create(&owner);
    EXPECT_EQ(created->Owner(), &owner);
    EXPECT_EQ(created->ClassName(), "TBase");
    EXPECT_FALSE(TDerived::StaticClass().IsCreatable());
    EXPECT_THROW(TDerived::StaticClass().Create(&owner), EInvalidOperation);
    EXPECT_EQ(TDerived::StaticClass().FindFieldClass("tbase"), &TBase::StaticClass());
    EXPECT_EQ(TDerived::StaticClass().FindFieldClass("TPart"), nullptr);
}

TEST(Classes, AreRegisteredByName) {
    EXPECT_EQ(GetClass("TPart"), nullptr);
    EXPECT_THROW(FindClass("TPart"), EClassNotFound);
    RegisterClasses<TBase, TDerived>();
    EXPECT_EQ(GetClass("tBASE"), &TBase::StaticClass());
    EXPECT_EQ(&FindClass("TDerived"), &TDerived::StaticClass());
}

TEST(Sets, HoldTheirElements) {
    TSet<TShade> set{shDark};
    EXPECT_TRUE(set.Contains(shDark));
    EXPECT_FALSE(set.Contains(shLight));
    EXPECT_EQ(set.Bits(), 2u);
    set.Include(shLight).Exclude(shDark);
    EXPECT_EQ(set, TSet<TShade>{shLight});
    EXPECT_EQ((set + TSet<TShade>{shDark}), (TSet<TShade>{shLight, shDark}));
    EXPECT_TRUE((set * TSet<TShade>{shDark}).IsEmpty());
    EXPECT_EQ((TSet<TShade>{shLight, shDark} - set), TSet<TShade>{shDark});
}

TEST(Sets, HaveATextForm) {
    const TEnumInfo& info = KxTypeInfo(TShade{});
    EXPECT_EQ(SetToString(info, 0), "[]");
    EXPECT_EQ(SetToString(info, 3), "[shLight,shDark]");
    EXPECT_EQ(StringToSet(info, " [ shdark , shlight ] "), 3u);
    EXPECT_EQ(StringToSet(info, "shDark"), 2u);
    EXPECT_EQ(StringToSet(info, ""), 0u);
    EXPECT_THROW(StringToSet(info, "["), EPropertyError);
    EXPECT_THROW(StringToSet(info, "shDark shLight"), EPropertyError);
}

TEST(Enumerations, NameTheirValues) {
    const TEnumInfo& info = KxTypeInfo(TShade{});
    EXPECT_EQ(info.Name, "TShade");
    EXPECT_EQ(info.Find("SHLIGHT"), 0);
    EXPECT_EQ(info.Find("x"), std::nullopt);
    EXPECT_EQ(info.NameOf(1), "shDark");
    EXPECT_THROW(info.NameOf(2), ERangeError);
    EXPECT_THROW(info.NameOf(-1), ERangeError);
    EXPECT_EQ(KxIdentInfo(TTint{}).Find("TIMINUSTWO"), -2);
    EXPECT_EQ(*KxIdentInfo(TTint{}).NameOf(1), "tiOne");
    EXPECT_EQ(KxIdentInfo(TTint{}).NameOf(5), nullptr);
}

// --- What form designers list

struct TOuter {
    enum class TInner : int32_t {};
};

TEST(PropertyTable, PropertiesKnowTheNamesOfTheirTypes) {
    std::map<std::string, std::string> types;
    for (const TPropInfo* property : TDerived::StaticClass().Properties()) {
        types[property->Name] = property->TypeName();
    }
    types.erase("Tag"); // of a pointer's size
    const std::map<std::string, std::string> expected{
        {"Name", "string"},          {"Zeta", "Integer"},  {"Small", "Byte"},
        {"Text", "string"},          {"Flag", "Boolean"},  {"Shade", "TShade"},
        {"Shades", "set of TShade"}, {"Tint", "TTint"},    {"SmallTint", "TSmallTint"},
        {"Ratio", "Single"},         {"Fixed", "Integer"}, {"Part", "TPart"},
        {"Next", "TBase"},           {"Thing", "IThing"},  {"OnChange", "void(TObject*)"},
        {"Extra", "Integer"}};
    EXPECT_EQ(types, expected);
}

TEST(PropertyTable, NamesOfTypesAreThoseOfTheSource) {
    using detail::TypeNameIn;
    using detail::TypeNameOf;
    EXPECT_EQ(TypeNameOf<TTint>(), "TTint");
    EXPECT_EQ(TypeNameOf<TOuter::TInner>(), "TInner");
    EXPECT_EQ(TypeNameOf<void()>(), "void()");
    EXPECT_EQ(TypeNameOf<void(TObject*, const std::string&, bool&)>(), "void(TObject*, const std::string&, bool&)");
    EXPECT_EQ(TypeNameIn("const char *__cdecl kx::detail::FunctionNamedFor<enum kx::TColor>(void)"), "TColor");
    EXPECT_EQ(TypeNameIn("const char *__cdecl kx::detail::FunctionNamedFor<void __cdecl(class kx::TObject *,bool &)>"
                         "(void)"),
              "void(TObject*, bool&)");
    EXPECT_EQ(TypeNameIn("const char* kx::detail::FunctionNamedFor() [with T = void(kx::TObject*, const "
                         "std::__cxx11::basic_string<char>&)]"),
              "void(TObject*, const std::string&)");
    EXPECT_EQ(detail::NumberTypeName(1, true), "ShortInt");
    EXPECT_EQ(detail::NumberTypeName(2, true), "SmallInt");
    EXPECT_EQ(detail::NumberTypeName(2, false), "Word");
    EXPECT_EQ(detail::NumberTypeName(4, false), "Cardinal");
    EXPECT_EQ(detail::NumberTypeName(8, true), "Int64");
    EXPECT_EQ(detail::NumberTypeName(8, false), "UInt64");
}

TEST(PropertyTable, PropertiesKnowTheClassThatIntroducedThem) {
    const auto introduced = [](const char* name) { return TDerived::StaticClass().FindProperty(name)->Introduced; };
    EXPECT_EQ(introduced("Name"), &TComponent::StaticClass());
    EXPECT_EQ(introduced("Text"), &TBase::StaticClass());
    EXPECT_EQ(introduced("Zeta"), &TBase::StaticClass()) << "published again";
    EXPECT_EQ(introduced("Extra"), &TDerived::StaticClass());
}

TEST(Classes, ListTheirMethodsAndFields) {
    ASSERT_EQ(TBase::StaticClass().Methods().size(), 1u);
    EXPECT_EQ(TBase::StaticClass().Methods()[0].Name, "Changed");
    EXPECT_EQ(TBase::StaticClass().Methods()[0].TypeName, "void(TObject*)");
    ASSERT_EQ(TBase::StaticClass().Fields().size(), 1u);
    EXPECT_EQ(TBase::StaticClass().Fields()[0].Name, "Field1");
    EXPECT_EQ(&TBase::StaticClass().Fields()[0].Class(), &TBase::StaticClass());
    EXPECT_TRUE(TDerived::StaticClass().Methods().empty());
    EXPECT_TRUE(TDerived::StaticClass().Fields().empty());
}

TEST(Classes, ThatAreRegisteredAreListedByName) {
    RegisterClasses<TDerived, TBase>();
    const auto classes = RegisteredClasses();
    const auto base = std::find(classes.begin(), classes.end(), &TBase::StaticClass());
    const auto derived = std::find(classes.begin(), classes.end(), &TDerived::StaticClass());
    ASSERT_NE(derived, classes.end());
    EXPECT_LT(base, derived);
    RegisterClasses<TBase>();
    EXPECT_EQ(RegisteredClasses(), classes) << "each once";
}

} // namespace
} // namespace kx
