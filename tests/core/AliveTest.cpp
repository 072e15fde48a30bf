// SPDX-License-Identifier: MIT
// Objects that foreign code frees under the methods that call it.

#include "kx/core/Alive.h"
#include "kx/core/Components.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <thread>

namespace kx {
namespace {

/// Fires an event in the middle of its work, as components do.
class TWorker : public TComponent {
public:
    using TComponent::TComponent;

    /// Returns whether the work was done.
    bool Work() {
        if (!Outlives(*this, [this] { FOnWork(this); })) {
            return false;
        }
        ++FDone;
        return true;
    }
    void GiveUp() { EndLife(); }

    TNotifyEvent FOnWork;
    int FDone = 0;
};

TEST(Alive, AnObjectThatNobodyFreesOutlivesTheCall) {
    TWorker worker;
    worker.FOnWork = [](TObject*) {};
    EXPECT_TRUE(worker.Work());
    EXPECT_TRUE(worker.Work());
    EXPECT_EQ(worker.FDone, 2);
}

TEST(Alive, AnObjectThatItsHandlerFreesDoesNotGoOn) {
    auto* const worker = new TWorker;
    worker->FOnWork = [](TObject* sender) { sender->Free(); };
    EXPECT_FALSE(worker->Work());
}

TEST(Alive, AFreedOwnerIsNoticedByWhatItOwns) {
    auto* const owner = new TComponent;
    auto* const worker = new TWorker(owner);
    worker->FOnWork = [=](TObject*) { owner->Free(); };
    EXPECT_FALSE(worker->Work());
}

TEST(Alive, AllCallsUnderWayNotice) {
    auto* const worker = new TWorker;
    const TAlive outer(*worker);
    int depth = 0;
    bool innerDone = true;
    worker->FOnWork = [&](TObject* sender) {
        if (++depth < 3) {
            innerDone = static_cast<TWorker*>(sender)->Work();
        } else {
            sender->Free();
        }
    };
    EXPECT_FALSE(worker->Work());
    EXPECT_FALSE(innerDone);
    EXPECT_FALSE(outer);
}

TEST(Alive, ALifeThatEndsEarlyCountsAsOverThoughTheObjectIsThere) {
    TWorker worker;
    const TAlive before(worker);
    worker.FOnWork = [](TObject* sender) { static_cast<TWorker*>(sender)->GiveUp(); };
    EXPECT_FALSE(worker.Work());
    EXPECT_FALSE(before);
    EXPECT_FALSE(TAlive(worker));
    worker.GiveUp();
    EXPECT_FALSE(TAlive(worker));
}

TEST(Alive, ALifeThatEndedBeforeAnybodyAskedIsOver) {
    TLifetime life;
    life.End();
    EXPECT_FALSE(TAlive(life));
    TLifetime other;
    EXPECT_TRUE(TAlive(other)) << "the end of one life is not that of all";
}

TEST(Alive, TokensOutliveTheObject) {
    auto life = std::make_unique<TLifetime>();
    const TAlive first(*life);
    TAlive second = first;
    TLifetime other;
    TAlive third(other);
    third = first;
    EXPECT_TRUE(first && second && third);
    life.reset();
    EXPECT_FALSE(first || second || third);
    second = TAlive(other);
    EXPECT_TRUE(second);
}

TEST(Alive, ACopyOfAnObjectHasALifeOfItsOwn) {
    auto original = std::make_unique<TLifetime>();
    const TAlive ofOriginal(*original);
    const TLifetime copy(*original);
    const TAlive ofCopy(copy);
    original.reset();
    EXPECT_FALSE(ofOriginal);
    EXPECT_TRUE(ofCopy);
}

TEST(Alive, AnExceptionComesOut) {
    TWorker worker;
    worker.FOnWork = [](TObject*) { throw std::runtime_error("no"); };
    EXPECT_THROW(worker.Work(), std::runtime_error);
    EXPECT_EQ(worker.FDone, 0);
}

TEST(Alive, ThreadsMayAskWhileALifeEnds) {
    for (int i = 0; i < 200; ++i) {
        auto life = std::make_unique<TLifetime>();
        const TAlive mine(*life);
        std::thread asker([token = mine] {
            while (token) {
            }
        });
        life.reset();
        asker.join();
        EXPECT_FALSE(mine);
    }
}

} // namespace
} // namespace kx
