// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <utility>

namespace kx {

class TObject;

/// What an event calls, without its signature: the common ground of all events, for property tables and form files.
class TEventTarget {
public:
    virtual ~TEventTarget() = default;

    /// Object whose method is called; null for a lambda.
    virtual TObject* Receiver() const { return nullptr; }
    virtual bool Equals(const TEventTarget&) const { return false; }
    virtual bool HasCode() const { return true; } ///< False for a method of which just the name is known.

    /// Name under which a form file stores the handler; empty when it cannot be stored.
    const std::string& MethodName() const { return FMethodName; }

protected:
    TEventTarget() = default;
    explicit TEventTarget(std::string methodName) : FMethodName(std::move(methodName)) {}

private:
    std::string FMethodName;
};

using TEventTargetPtr = std::shared_ptr<const TEventTarget>;

/// The name of a method whose code is not there, for events of whatever signature: a form designer edits forms without
/// the classes that handle their events.
class TMethodName final : public TEventTarget {
public:
    explicit TMethodName(std::string name) : TEventTarget(std::move(name)) {}
    bool HasCode() const override { return false; }
};

template <class Signature> class TEvent;

/// An event: empty, a lambda, a method of an object, or just the name of a method, which does nothing when called.
///
/// Calling holds the target, so that a handler may replace or clear the event, or free the object that owns it, while
/// it runs. A copy refers to the same target. Two events are equal when both are empty, share their target, or are
/// bound to the same method of the same object, or hold the same name. The receiver of a bound method is not owned:
/// whoever frees it clears the events that call it.
template <class... Args> class TEvent<void(Args...)> {
    class TTarget : public TEventTarget {
    public:
        using TEventTarget::TEventTarget;
        virtual void Invoke(Args... args) const = 0;
    };

    template <class F> class TCallable final : public TTarget {
    public:
        explicit TCallable(F f) : FCallable(std::move(f)) {}
        void Invoke(Args... args) const override { FCallable(std::forward<Args>(args)...); }

    private:
        mutable F FCallable;
    };

    template <class T> class TBound final : public TTarget {
    public:
        TBound(T* object, void (T::*method)(Args...), std::string name)
            : TTarget(std::move(name)), FObject(object), FMethod(method) {}
        void Invoke(Args... args) const override { (FObject->*FMethod)(std::forward<Args>(args)...); }
        TObject* Receiver() const override {
            if constexpr (std::is_convertible_v<T*, TObject*>) {
                return FObject;
            } else {
                return nullptr;
            }
        }
        bool Equals(const TEventTarget& other) const override {
            const auto* that = dynamic_cast<const TBound*>(&other);
            return that && that->FObject == FObject && that->FMethod == FMethod;
        }

    private:
        T* FObject;
        void (T::*FMethod)(Args...);
    };

    class TNamed final : public TTarget {
    public:
        explicit TNamed(const std::string& name) : TTarget(name) {}
        void Invoke(Args...) const override {}
        bool HasCode() const override { return false; }
        bool Equals(const TEventTarget& other) const override {
            return !other.HasCode() && other.MethodName() == this->MethodName();
        }
    };

public:
    TEvent() = default;
    TEvent(std::nullptr_t) {}

    template <class F>
    requires(!std::same_as<std::remove_cvref_t<F>, TEvent> && std::invocable<F&, Args...>) TEvent(F&& callable)
        : FTarget(std::make_shared<TCallable<std::decay_t<F>>>(std::forward<F>(callable))) {}

    /// `method` may be one of an ancestor of T.
    template <class T, class C>
    requires std::derived_from<T, C> TEvent(T* object, void (C::*method)(Args...), std::string methodName = {})
        : FTarget(std::make_shared<TBound<C>>(object, method, std::move(methodName))) {}

    /// There is code to call: who would do something of his own without a handler does it for a mere name too.
    explicit operator bool() const { return FTarget && FTarget->HasCode(); }

    /// Calls the handler; does nothing when the event is empty.
    void operator()(Args... args) const {
        if (const auto keep = FTarget) {
            keep->Invoke(std::forward<Args>(args)...);
        }
    }

    friend bool operator==(const TEvent& a, const TEvent& b) {
        return a.FTarget == b.FTarget || (a.FTarget && b.FTarget && a.FTarget->Equals(*b.FTarget));
    }

    /// The target without its signature, and the way back. `FromTarget` of a target of another signature is empty; a
    /// TMethodName has none.
    TEventTargetPtr Target() const { return FTarget; }
    static TEvent FromTarget(const TEventTargetPtr& target) {
        TEvent event;
        event.FTarget = std::dynamic_pointer_cast<const TTarget>(target);
        if (const auto* name = dynamic_cast<const TMethodName*>(target.get())) {
            event.FTarget = std::make_shared<TNamed>(name->MethodName());
        }
        return event;
    }
    static std::type_index Signature() { return typeid(void(Args...)); }

private:
    std::shared_ptr<const TTarget> FTarget;
};

/// The plain notification: `sender` is the object that fires it.
using TNotifyEvent = TEvent<void(TObject* sender)>;

} // namespace kx
