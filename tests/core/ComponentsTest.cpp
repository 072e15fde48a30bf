// SPDX-License-Identifier: MIT
// Components: owners, names, and who hears of their end.

#include "kx/core/Components.h"
#include "kx/core/TypInfo.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace kx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what it is told.
class TWatcher : public TComponent {
    KX_CLASS()
    explicit TWatcher(TComponent* owner = nullptr, std::vector<std::string>* log = nullptr)
        : TComponent(owner), FLog(log) {}
    ~TWatcher() override {
        Destroying();
        if (FLog) {
            FLog->push_back("~" + Name());
        }
    }
    std::vector<std::string> Told;
    TWatcher* Field1 = nullptr;
    TComponent* Friend = nullptr;

    void Watch(TComponent* component) {
        Friend = component;
        FreeNotification(component);
    }

protected:
    void Notification(TComponent* component, TOperation operation) override {
        TComponent::Notification(component, operation);
        Told.push_back((operation == opInsert ? "+" : "-") + component->Name());
        if (operation == opRemove && component == Friend) {
            Friend = nullptr;
        }
    }

private:
    std::vector<std::string>* FLog;
};

const TClass& TWatcher::StaticClass() {
    static const TClassBuilder<TWatcher> cls("TWatcher", TComponent::StaticClass(),
                                             [](auto& c) { c.Field("Field1", &TWatcher::Field1); });
    return cls.Class();
}

TWatcher* Named(TComponent* owner, const std::string& name, std::vector<std::string>* log = nullptr) {
    auto* const component = new TWatcher(owner, log);
    component->SetName(name);
    return component;
}

std::string MessageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Exception& error) {
        return std::string(error.ClassName()) + ": " + error.Message();
    }
    return "no error";
}

// --- Ownership

TEST(Component, IsFreedWithItsOwnerTheLatestFirst) {
    std::vector<std::string> log;
    {
        TWatcher owner;
        auto* const a = Named(&owner, "A", &log);
        Named(&owner, "B", &log);
        Named(a, "Inner", &log);
    }
    EXPECT_THAT(log, ElementsAre("~B", "~A", "~Inner"));
}

TEST(Component, LeavesItsOwnerWhenItIsFreed) {
    TWatcher owner;
    auto* const a = Named(&owner, "A");
    auto* const b = Named(&owner, "B");
    EXPECT_EQ(owner.ComponentCount(), 2);
    EXPECT_EQ(b->ComponentIndex(), 1);
    a->Free();
    EXPECT_EQ(owner.ComponentCount(), 1);
    EXPECT_EQ(owner.Components(0), b);
    EXPECT_EQ(b->ComponentIndex(), 0);
    EXPECT_EQ(owner.FindComponent("A"), nullptr);
    EXPECT_EQ(owner.ComponentIndex(), -1);
}

TEST(Component, IndicesOutOfBoundsAreErrors) {
    TWatcher owner;
    EXPECT_EQ(MessageOf([&] { owner.Components(0); }), "EListError: List index out of bounds (0)");
    EXPECT_EQ(MessageOf([&] { owner.Components(-1); }), "EListError: List index out of bounds (-1)");
}

TEST(Component, MovesBetweenOwners) {
    TWatcher first;
    TWatcher second;
    auto* const component = Named(&first, "A");
    second.InsertComponent(component);
    EXPECT_EQ(component->Owner(), &second);
    EXPECT_EQ(first.ComponentCount(), 0);
    EXPECT_EQ(first.FindComponent("A"), nullptr);
    EXPECT_EQ(second.FindComponent("A"), component);
    second.InsertComponent(component); // nothing to do
    EXPECT_EQ(second.ComponentCount(), 1);
    second.RemoveComponent(component);
    EXPECT_EQ(component->Owner(), nullptr);
    delete component;
}

TEST(Component, AnOwnerRefusesASecondComponentOfAName) {
    TWatcher first;
    TWatcher second;
    auto* const a = Named(&first, "A");
    Named(&second, "a");
    EXPECT_EQ(MessageOf([&] { second.InsertComponent(a); }), "EComponentError: A component named A already exists");
    EXPECT_EQ(a->Owner(), &first);
}

TEST(Component, DestroyComponentsLeavesTheOwner) {
    TWatcher owner;
    Named(&owner, "A");
    Named(&owner, "B");
    owner.DestroyComponents();
    EXPECT_EQ(owner.ComponentCount(), 0);
}

// --- Names

TEST(Component, IsFoundByItsNameInAnyLetterCase) {
    TWatcher owner;
    auto* const component = Named(&owner, "Button1");
    EXPECT_EQ(owner.FindComponent("BUTTON1"), component);
    EXPECT_EQ(owner.FindComponent("Button"), nullptr);
    EXPECT_EQ(owner.FindComponent(""), nullptr);
    component->SetName("Button2");
    EXPECT_EQ(owner.FindComponent("Button1"), nullptr);
    EXPECT_EQ(owner.FindComponent("button2"), component);
    component->SetName("BUTTON2"); // just the case
    EXPECT_EQ(component->Name(), "BUTTON2");
    component->SetName("");
    EXPECT_EQ(owner.FindComponent("Button2"), nullptr);
}

TEST(Component, ANameMustBeAnIdentifierAndFree) {
    TWatcher owner;
    auto* const component = Named(&owner, "A");
    Named(&owner, "B");
    for (const char* name : {"1x", "a b", "a.b", "\xC3\xA4", "a-b", " ", "True", "false", "NIL", "Null"}) {
        EXPECT_EQ(MessageOf([&] { component->SetName(name); }),
                  "EComponentError: '" + std::string(name) + "' is not a valid component name");
    }
    EXPECT_EQ(MessageOf([&] { component->SetName("b"); }), "EComponentError: A component named b already exists");
    EXPECT_EQ(component->Name(), "A");
    EXPECT_EQ(owner.FindComponent("A"), component);
    component->SetName("Truest"); // begins like a word of form files
    EXPECT_EQ(component->Name(), "Truest");
}

TEST(Component, IdentifiersAreLettersDigitsAndUnderscores) {
    for (const char* name : {"a", "_", "A1_b", "_1"}) {
        EXPECT_TRUE(IsValidIdent(name)) << name;
    }
    for (const char* name : {"", "1", "a b", "a.b", "\xE4"}) {
        EXPECT_FALSE(IsValidIdent(name)) << name;
    }
}

TEST(Component, ItsNameBindsThePublishedFieldOfItsOwner) {
    TWatcher owner;
    auto* const component = Named(&owner, "Field1");
    EXPECT_EQ(owner.Field1, component);
    component->SetName("Other");
    EXPECT_EQ(owner.Field1, nullptr);
    component->SetName("FIELD1");
    EXPECT_EQ(owner.Field1, component);
    owner.RemoveComponent(component);
    EXPECT_EQ(owner.Field1, nullptr);
    owner.InsertComponent(component);
    EXPECT_EQ(owner.Field1, component);
    delete component;
    EXPECT_EQ(owner.Field1, nullptr);
}

TEST(Component, AFieldOfAnotherClassIsAnError) {
    TWatcher owner;
    TComponent component(&owner);
    EXPECT_EQ(MessageOf([&] { component.SetName("Field1"); }),
              "EInvalidCast: Component Field1 is a TComponent, not a TWatcher");
}

TEST(Component, PathsNameTheOwner) {
    TWatcher owner;
    owner.SetName("Form1");
    EXPECT_EQ(owner.GetNamePath(), "Form1");
    EXPECT_EQ(Named(&owner, "A")->GetOwner(), &owner);
}

// --- Notifications

TEST(Component, AnOwnerIsToldOfComingAndGoing) {
    TWatcher owner;
    auto* const component = Named(nullptr, "A");
    owner.InsertComponent(component);
    owner.RemoveComponent(component);
    EXPECT_THAT(owner.Told, ElementsAre("+A", "-A"));
    owner.InsertComponent(component);
    owner.Told.clear();
    component->Free();
    EXPECT_THAT(owner.Told, ElementsAre("-A"));
}

TEST(Component, WhoAskedIsToldOnceWhenAComponentGoes) {
    TWatcher listener;
    auto* const component = Named(nullptr, "A");
    listener.Watch(component);
    listener.FreeNotification(component); // a second time changes nothing
    component->Free();
    EXPECT_THAT(listener.Told, ElementsAre("-A"));
    EXPECT_EQ(listener.Friend, nullptr);
}

TEST(Component, TheNotificationWorksBothWays) {
    TWatcher component;
    {
        TWatcher listener;
        listener.SetName("L");
        listener.Watch(&component);
    }
    EXPECT_THAT(component.Told, ElementsAre("-L"));
}

TEST(Component, NobodyIsToldWhoAskedNoMore) {
    TWatcher listener;
    auto* const component = Named(nullptr, "A");
    listener.Watch(component);
    listener.RemoveFreeNotification(component);
    component->Free();
    EXPECT_THAT(listener.Told, IsEmpty());
}

TEST(Component, SiblingsTellEachOther) {
    TWatcher owner;
    auto* const a = Named(&owner, "A");
    auto* const b = Named(&owner, "B");
    a->Watch(b);
    b->Free();
    EXPECT_EQ(a->Friend, nullptr);
    EXPECT_THAT(a->Told, ElementsAre("-B"));
}

TEST(Component, AnOwnedComponentNeedsNotAsk) {
    TWatcher owner;
    auto* const a = Named(&owner, "A");
    owner.Watch(a);
    owner.Told.clear();
    a->Free();
    EXPECT_THAT(owner.Told, ElementsAre("-A"));
    EXPECT_EQ(owner.Friend, nullptr);
}

TEST(Component, ManyListenersMayGoInAnyOrder) {
    auto* const component = Named(nullptr, "A");
    std::vector<std::unique_ptr<TWatcher>> listeners;
    for (int i = 0; i < 5; ++i) {
        listeners.push_back(std::make_unique<TWatcher>());
        listeners.back()->Watch(component);
    }
    listeners[2].reset();
    listeners[0].reset();
    component->Free();
    for (const int i : {1, 3, 4}) {
        EXPECT_EQ(listeners[size_t(i)]->Friend, nullptr);
    }
}

// --- States

TEST(Component, DesigningReachesEverythingThatIsOwned) {
    TWatcher owner;
    auto* const a = Named(&owner, "A");
    auto* const inner = Named(a, "Inner");
    owner.SetDesigning(true);
    EXPECT_TRUE(inner->IsDesigning());
    EXPECT_TRUE(Named(&owner, "Later")->IsDesigning());
    owner.SetDesigning(false, false);
    EXPECT_FALSE(owner.IsDesigning());
    EXPECT_TRUE(a->IsDesigning());
}

TEST(Component, DestroyingReachesEverythingThatIsOwned) {
    class TProbe : public TComponent {
    public:
        TProbe(TComponent* owner, bool& ownerWasGoing) : TComponent(owner), FOwnerWasGoing(ownerWasGoing) {}
        ~TProbe() override { FOwnerWasGoing = Owner()->IsDestroying() && IsDestroying(); }

    private:
        bool& FOwnerWasGoing;
    };
    bool ownerWasGoing = false;
    auto* const owner = new TComponent;
    new TProbe(owner, ownerWasGoing);
    owner->Free();
    EXPECT_TRUE(ownerWasGoing);
}

// --- Assignment

TEST(Persistent, AssigningUnknownClassesIsAnError) {
    TPersistent a;
    TComponent b;
    EXPECT_EQ(MessageOf([&] { a.Assign(&b); }), "EConvertError: Cannot assign a TComponent to a TPersistent");
    EXPECT_EQ(MessageOf([&] { a.Assign(nullptr); }), "EConvertError: Cannot assign a nil to a TPersistent");
    EXPECT_EQ(a.GetNamePath(), "TPersistent");
}

TEST(Component, ThousandsAreNamedAndFreedInNoTime) {
    TWatcher owner;
    constexpr int count = 20000; // a search through all of them for each would be noticed
    for (int i = 0; i < count; ++i) {
        (new TComponent(&owner))->SetName("C" + IntToStr(i));
    }
    EXPECT_EQ(owner.FindComponent("c19999"), owner.Components(count - 1));
    owner.DestroyComponents();
    EXPECT_EQ(owner.ComponentCount(), 0);
}

/// Goes when the program ends.
TComponent& ProgramsOwner() {
    static TComponent owner;
    return owner;
}

/// A class that nothing else uses: its table is made later than the program's owner.
class TLateOwner : public TComponent {
    KX_CLASS()
    explicit TLateOwner(TComponent* owner) : TComponent(owner) {}
    ~TLateOwner() override { DestroyComponents(); }
    TComponent* Child = nullptr;
};

const TClass& TLateOwner::StaticClass() {
    static const TClassBuilder<TLateOwner> cls("TLateOwner", TComponent::StaticClass(),
                                               [](auto& c) { c.Field("Child", &TLateOwner::Child); });
    return cls.Class();
}

/// What it leaves is freed when the program ends; a fault there fails it.
TEST(Component, MayGoWhenTheProgramEnds) {
    auto* const late = new TLateOwner(&ProgramsOwner());
    auto* const child = new TComponent(late);
    child->SetName("Child");
    EXPECT_EQ(late->Child, child);
}

TEST(Component, ItsComponentsCanBeGoneThrough) {
    TWatcher owner;
    const TComponent& component = owner;
    EXPECT_TRUE(component.Components().empty());
    TWatcher* const a = Named(&owner, "A");
    TWatcher* const b = Named(&owner, "B");
    EXPECT_THAT(component.Components(), ElementsAre(a, b));
}

} // namespace
} // namespace kx
