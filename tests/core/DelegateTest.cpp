// SPDX-License-Identifier: MIT
// Events and what their handlers may do.

#include "kx/core/Delegate.h"
#include "kx/core/Objects.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace kx {
namespace {

class TReceiver : public TObject {
public:
    void Hear(TObject* sender) { Heard.push_back(sender); }
    void HearToo(TObject*) {}
    std::vector<TObject*> Heard;
};

class TKeenReceiver : public TReceiver {};

/// Fires as the components do: by a virtual method, from an event that is a field.
class TSender : public TObject {
public:
    explicit TSender(int* alive = nullptr) : FAlive(alive) {}
    ~TSender() override {
        if (FAlive) {
            --*FAlive;
        }
    }
    void Fire() { FOnFire(this); }
    TNotifyEvent FOnFire;

private:
    int* FAlive;
};

TEST(Delegate, AnEmptyEventDoesNothing) {
    TNotifyEvent event;
    EXPECT_FALSE(event);
    event(nullptr);
    EXPECT_EQ(event, TNotifyEvent(nullptr));
    EXPECT_FALSE(event.Target());
}

TEST(Delegate, CallsALambdaWithItsArguments) {
    TEvent<void(int, std::string&)> event = [](int count, std::string& text) { text.append(size_t(count), 'x'); };
    std::string text = "a";
    event(3, text);
    EXPECT_EQ(text, "axxx");
}

TEST(Delegate, MovesArgumentsThatCannotBeCopied) {
    TEvent<void(std::unique_ptr<int>)> event = [](std::unique_ptr<int> value) { EXPECT_EQ(*value, 5); };
    event(std::make_unique<int>(5));
}

TEST(Delegate, CallsAMethodOfAnObject) {
    TReceiver listener;
    TSender sender;
    sender.FOnFire = {&listener, &TReceiver::Hear};
    sender.Fire();
    EXPECT_EQ(listener.Heard, std::vector<TObject*>{&sender});
    EXPECT_EQ(sender.FOnFire.Target()->Receiver(), &listener);
}

TEST(Delegate, AHandlerMayClearItsOwnEvent) {
    TSender sender;
    int calls = 0;
    std::string kept = "captured";
    sender.FOnFire = [&calls, kept, &sender](TObject*) {
        sender.FOnFire = nullptr;
        ++calls;
        EXPECT_EQ(kept, "captured"); // what it captured lives as long as it runs
    };
    sender.Fire();
    sender.Fire();
    EXPECT_EQ(calls, 1);
}

TEST(Delegate, AHandlerMayReplaceItsOwnEvent) {
    TSender sender;
    std::string log;
    sender.FOnFire = [&](TObject*) {
        log += "1";
        sender.FOnFire = [&log](TObject*) { log += "2"; };
        log += "1";
    };
    sender.Fire();
    sender.Fire();
    EXPECT_EQ(log, "112");
}

TEST(Delegate, AHandlerMayFreeItsSender) {
    int alive = 1;
    auto* const sender = new TSender(&alive);
    std::string kept = "captured";
    sender->FOnFire = [kept, &alive](TObject* o) {
        o->Free();
        EXPECT_EQ(alive, 0);
        EXPECT_EQ(kept, "captured");
    };
    sender->Fire();
    EXPECT_EQ(alive, 0);
}

TEST(Delegate, AHandlerMayFireItsEventAgain) {
    TSender sender;
    int depth = 0;
    sender.FOnFire = [&](TObject*) {
        if (++depth < 5) {
            sender.Fire();
        }
    };
    sender.Fire();
    EXPECT_EQ(depth, 5);
}

TEST(Delegate, AnExceptionOfAHandlerReachesTheCaller) {
    TSender sender;
    sender.FOnFire = [](TObject*) { throw EAbort("enough"); };
    EXPECT_THROW(sender.Fire(), EAbort);
}

TEST(Delegate, EventsAreEqualWhenTheyCallTheSameMethodOfTheSameObject) {
    TReceiver one;
    TReceiver two;
    const TNotifyEvent event(&one, &TReceiver::Hear);
    EXPECT_EQ(event, TNotifyEvent(&one, &TReceiver::Hear));
    EXPECT_EQ(event, TNotifyEvent(&one, &TReceiver::Hear, "Hear"));
    EXPECT_FALSE(event == TNotifyEvent(&two, &TReceiver::Hear));
    EXPECT_FALSE(event == TNotifyEvent(&one, &TReceiver::HearToo));
    EXPECT_FALSE(event == TNotifyEvent());
}

TEST(Delegate, AMethodOfAnAncestorIsTheSameThroughADescendant) {
    TKeenReceiver listener;
    const TNotifyEvent event(&listener, &TKeenReceiver::Hear);
    EXPECT_EQ(event, TNotifyEvent(static_cast<TReceiver*>(&listener), &TReceiver::Hear));
    event(&listener);
    EXPECT_EQ(listener.Heard.size(), 1u);
}

TEST(Delegate, LambdasAreEqualToTheirCopiesAlone) {
    const auto handler = [](TObject*) {};
    const TNotifyEvent event = handler;
    const auto copy = TNotifyEvent(event);
    EXPECT_EQ(event, copy);
    EXPECT_FALSE(event == TNotifyEvent(handler));
    EXPECT_EQ(event.Target()->Receiver(), nullptr);
}

TEST(Delegate, ACopySharesTheStateOfItsLambda) {
    int last = 0;
    TNotifyEvent event = [count = 0, &last](TObject*) mutable { last = ++count; };
    const auto copy = TNotifyEvent(event);
    event(nullptr);
    copy(nullptr);
    EXPECT_EQ(last, 2);
}

TEST(Delegate, TheTargetKeepsItsNameAndSignature) {
    TReceiver listener;
    const TNotifyEvent event(&listener, &TReceiver::Hear, "ListenerHear");
    EXPECT_EQ(event.Target()->MethodName(), "ListenerHear");
    EXPECT_EQ(TNotifyEvent::FromTarget(event.Target()), event);
    using TOtherEvent = TEvent<void(int)>;
    EXPECT_FALSE(TOtherEvent::FromTarget(event.Target()));
    EXPECT_NE(TNotifyEvent::Signature(), TOtherEvent::Signature());
    EXPECT_FALSE(TNotifyEvent::FromTarget(nullptr));
}

TEST(Delegate, AnEventMayHoldTheNameOfAMethodWithoutItsCode) {
    const TNotifyEvent event = TNotifyEvent::FromTarget(std::make_shared<TMethodName>("ListenerHear"));
    EXPECT_FALSE(event) << "there is nothing to call";
    event(nullptr);
    ASSERT_TRUE(event.Target());
    EXPECT_FALSE(event.Target()->HasCode());
    EXPECT_EQ(event.Target()->MethodName(), "ListenerHear");
    EXPECT_EQ(TNotifyEvent::FromTarget(event.Target()), event);
    EXPECT_EQ(event, TNotifyEvent::FromTarget(std::make_shared<TMethodName>("ListenerHear")));
    EXPECT_FALSE(event == TNotifyEvent::FromTarget(std::make_shared<TMethodName>("Other")));
    TReceiver listener;
    const TNotifyEvent bound(&listener, &TReceiver::Hear, "ListenerHear");
    EXPECT_TRUE(bound.Target()->HasCode());
    EXPECT_FALSE(event == bound);
    EXPECT_FALSE(bound == event);
    EXPECT_FALSE(event == TNotifyEvent());
    using TOtherEvent = TEvent<void(int)>;
    EXPECT_FALSE(TOtherEvent::FromTarget(event.Target()).Target()) << "it has a signature now";
}

} // namespace
} // namespace kx
