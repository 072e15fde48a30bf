// SPDX-License-Identifier: MIT
// Nothing stops a destruction, whatever those who hear of it do.

#include "kx/core/Barrier.h"
#include "kx/core/Collections.h"
#include "kx/core/Components.h"

#include <gmock/gmock.h>

#include <exception>
#include <functional>
#include <string>
#include <vector>

namespace kx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Reported;

class Destruction : public testing::Test {
protected:
    Destruction() {
        Reported.clear();
        SetExceptionSink([] {
            try {
                throw;
            } catch (const std::exception& e) {
                Reported.emplace_back(e.what());
            }
        });
    }
    ~Destruction() override { SetExceptionSink(nullptr); }
};

/// Does what the test wants in the places where components hear of the end of others, and of their own.
class TListener : public TComponent {
    KX_CLASS()
    using TComponent::TComponent;
    ~TListener() override {
        if (Gone) {
            ++*Gone;
        }
    }
    void BeforeDestruction() override {
        if (OnBefore) {
            OnBefore();
        }
        TComponent::BeforeDestruction();
    }
    std::function<void()> OnBefore;
    std::function<void(TComponent*)> OnRemove;
    int* Gone = nullptr;

protected:
    void Notification(TComponent* component, TOperation operation) override {
        TComponent::Notification(component, operation);
        if (operation == opRemove && OnRemove) {
            OnRemove(component);
        }
    }
};

const TClass& TListener::StaticClass() {
    static const TClassBuilder<TListener> cls("TListener", TComponent::StaticClass());
    return cls.Class();
}

[[noreturn]] void Fail() { throw Exception("listener failed"); }

TEST_F(Destruction, AListenerThatThrowsIsReportedAndTheOthersAreToldNevertheless) {
    TListener thrower;
    TListener other;
    auto* const component = new TComponent;
    component->FreeNotification(&other);
    component->FreeNotification(&thrower); // told first
    thrower.OnRemove = [](TComponent*) { Fail(); };
    TComponent* told = nullptr;
    other.OnRemove = [&](TComponent* gone) { told = gone; };
    component->Free();
    EXPECT_EQ(told, component);
    EXPECT_THAT(Reported, ElementsAre("listener failed"));
}

TEST_F(Destruction, AnOwnerThatThrowsLosesTheComponentNevertheless) {
    TListener owner;
    owner.OnRemove = [](TComponent*) { Fail(); };
    auto* const component = new TComponent(&owner);
    component->SetName("Gone");
    component->Free();
    EXPECT_EQ(owner.ComponentCount(), 0);
    EXPECT_EQ(owner.FindComponent("Gone"), nullptr);
    EXPECT_THAT(Reported, ElementsAre("listener failed"));
}

TEST_F(Destruction, AnOwnerThatThrowsKeepsAComponentThatOnlyMovesAway) {
    TListener owner;
    TComponent next;
    owner.OnRemove = [](TComponent*) { Fail(); };
    auto* const component = new TComponent(&owner);
    EXPECT_THROW(next.InsertComponent(component), Exception);
    EXPECT_EQ(component->Owner(), &owner);
    EXPECT_THAT(Reported, IsEmpty());
    owner.OnRemove = {};
}

TEST_F(Destruction, AComponentThatThrowsBeforeItsEndEndsNevertheless) {
    int gone = 0;
    auto* const component = new TListener;
    component->Gone = &gone;
    component->OnBefore = Fail;
    component->Free();
    EXPECT_EQ(gone, 1);
    EXPECT_THAT(Reported, ElementsAre("listener failed"));
}

TEST_F(Destruction, AnOwnerFreesAllItsComponentsThoughOneOfThemThrows) {
    int gone = 0;
    auto* const owner = new TComponent;
    for (int i = 0; i < 3; ++i) {
        auto* const component = new TListener(owner);
        component->Gone = &gone;
        if (i == 1) {
            component->OnBefore = Fail;
        }
    }
    owner->Free();
    EXPECT_EQ(gone, 3);
    EXPECT_THAT(Reported, ElementsAre("listener failed"));
}

TEST_F(Destruction, ExceptionsOfAnyKindEndThere) {
    auto* const component = new TListener;
    component->OnBefore = [] { throw 5; };
    SetExceptionSink([] { Reported.emplace_back("any"); });
    component->Free();
    EXPECT_THAT(Reported, ElementsAre("any"));
}

TEST_F(Destruction, ASinkThatThrowsEndsNothing) {
    auto* const component = new TListener;
    component->OnBefore = Fail;
    SetExceptionSink([] { throw; });
    component->Free();
    SetExceptionSink(nullptr);
    auto* const another = new TListener;
    another->OnBefore = Fail;
    another->Free(); // nobody is told
    SUCCEED();
}

TEST_F(Destruction, AComponentThatIsFreedAgainMeanwhileIsFreedOnce) {
    int gone = 0;
    auto* const component = new TListener;
    component->Gone = &gone;
    component->OnBefore = [&] { component->Free(); };
    TListener listener;
    component->FreeNotification(&listener);
    listener.OnRemove = [](TComponent* going) { going->Free(); };
    component->Free();
    EXPECT_EQ(gone, 1);
}

TEST_F(Destruction, AnOwnerThatIsFreedWhileItsComponentGoesFreesItNotAgain) {
    int gone = 0;
    auto* const owner = new TListener;
    owner->Gone = &gone;
    auto* const component = new TListener(owner);
    component->Gone = &gone;
    component->OnBefore = [&] { owner->Free(); };
    component->Free();
    EXPECT_EQ(gone, 2);
}

TEST_F(Destruction, AnOwnerMayBeFreedWhenItHearsOfItsComponentsEnd) {
    int gone = 0;
    auto* const owner = new TListener;
    owner->Gone = &gone;
    auto* const component = new TListener(owner);
    component->Gone = &gone;
    owner->OnRemove = [&](TComponent*) {
        owner->OnRemove = {};
        owner->Free();
    };
    component->Free();
    EXPECT_EQ(gone, 2);
}

TEST_F(Destruction, TheLifeIsOverForThoseWhoHearOfTheEnd) {
    auto* const component = new TComponent;
    const TAlive alive(*component);
    TListener listener;
    component->FreeNotification(&listener);
    bool lived = true;
    listener.OnRemove = [&](TComponent*) { lived = static_cast<bool>(alive); };
    component->Free();
    EXPECT_FALSE(lived);
}

/// Does what the test wants when it hears of a change.
class TListeningCollection : public TCollection {
    KX_CLASS()
    TListeningCollection()
        : TCollection(TCollectionItem::StaticClass(),
                      [](TCollection* collection) { return new TCollectionItem(collection); }) {}
    std::function<void()> OnUpdate;

protected:
    void Update(TCollectionItem*) override {
        if (OnUpdate) {
            OnUpdate();
        }
    }
};

const TClass& TListeningCollection::StaticClass() {
    static const TClassBuilder<TListeningCollection> cls("TListeningCollection", TCollection::StaticClass());
    return cls.Class();
}

TEST_F(Destruction, ACollectionThatThrowsLosesTheItemNevertheless) {
    TListeningCollection collection;
    collection.Add();
    collection.OnUpdate = Fail;
    collection.Delete(0);
    EXPECT_EQ(collection.Count(), 0);
    EXPECT_THAT(Reported, ElementsAre("listener failed"));
}

// --- Fields for the length of a scope

struct THolder {
    TLifetime Life;
    int Value = 1;
    const TLifetime& Lifetime() const { return Life; }
};

TEST(FieldScope, HoldsTheValueAndPutsTheOldOneBack) {
    THolder holder;
    {
        const TFieldScope scope(holder, holder.Value, 2);
        EXPECT_EQ(holder.Value, 2);
        {
            const TFieldScope inner(holder, holder.Value, 3);
            EXPECT_EQ(holder.Value, 3);
        }
        EXPECT_EQ(holder.Value, 2);
    }
    EXPECT_EQ(holder.Value, 1);
}

TEST(FieldScope, PutsTheOldValueBackWhenItIsLeftByAnException) {
    THolder holder;
    try {
        const TFieldScope scope(holder, holder.Value, 2);
        Fail();
    } catch (const Exception&) {
        EXPECT_EQ(holder.Value, 1);
    }
}

TEST(FieldScope, LeavesTheFieldOfAnObjectThatHasGoneAlone) {
    THolder holder;
    {
        const TFieldScope scope(holder, holder.Value, 2);
        holder.Life.End();
    }
    EXPECT_EQ(holder.Value, 2);
}

} // namespace
} // namespace kx
