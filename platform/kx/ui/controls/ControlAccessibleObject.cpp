// SPDX-License-Identifier: MIT
// The objects by which the system lets screen readers look at controls.

#include "kx/ui/controls/Controls.h"

#include "kx/core/Barrier.h"
#include "kx/win/Oleacc.h"
#include "kx/win/ReflectedMessages.h"
#include <algorithm>

namespace kx {

namespace {

// --- The object of a control

/// Shows a control, or one without a window, to screen readers, with its parts and with what is inside. It may be kept
/// after the control has gone: then each call fails, and says that there is nothing any more.
///
/// Of a window whose class is the system's, the system knows more than the framework: all that the control does not say
/// itself is asked of the system's own object.
class TAccessibleObject final : public TAccessibleBase {
public:
    explicit TAccessibleObject(const TControl& control)
        : FControl(const_cast<TControl&>(control)), FAlive(control), FWindowed(dynamic_cast<TWinControl*>(&FControl)),
          FParts(dynamic_cast<IAccessibleParts*>(&FControl)) {
        if (FWindowed) {
            FStandard = StandardObject(FWindowed->WindowHandle());
        }
    }

    // --- IUnknown

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (!out) {
            return E_POINTER;
        }
        *out = nullptr;
        if (id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible)) {
            *out = static_cast<IAccessible*>(this);
            AddRef();
            return S_OK;
        }
        // The system's object knows the window, and enumerates the children where they are its own.
        const bool standard = FStandard && (id == __uuidof(IOleWindow) || (FAlive && !OwnChildren()));
        return standard ? FStandard.get()->QueryInterface(id, out) : E_NOINTERFACE;
    }

    // --- What it is

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* out) override {
        return Text(child, out, &TAccessibleInfo::Name, &IAccessible::get_accName);
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* out) override {
        return Text(child, out, &TAccessibleInfo::Value, &IAccessible::get_accValue);
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* out) override {
        return Text(child, out, &TAccessibleInfo::Description, &IAccessible::get_accDescription);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* out) override {
        return Text(child, out, &TAccessibleInfo::ShortCut, &IAccessible::get_accKeyboardShortcut);
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* out) override {
        return Text(child, out, &TAccessibleInfo::Action, &IAccessible::get_accDefaultAction);
    }

    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* out) override {
        return About(child, out, [&](const TTarget& target) {
            const TAccessibleRole role = target.Info().Role;
            if (role == arSystem && FStandard) {
                return FStandard.get()->get_accRole(child, out);
            }
            GiveNumber(role == arSystem ? arClient : role, out);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* out) override {
        return About(child, out, [&](const TTarget& target) {
            uint32_t state = target.Info().State | StateOf(*target.Control);
            VARIANT standard{};
            if (target.Control == &FControl && target.Part < 0 && FStandard &&
                FStandard.get()->get_accState(Self(), &standard) == S_OK && standard.vt == VT_I4) {
                state |= static_cast<uint32_t>(standard.lVal);
            }
            if (target.Part >= 0) {
                const TRect r = FParts->AccessiblePartRect(target.Part);
                constexpr uint32_t unseen = STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_OFFSCREEN;
                state |= Width(r) <= 0 || Height(r) <= 0 ? unseen : 0;
            }
            GiveNumber(static_cast<LONG>(state), out);
            return S_OK;
        });
    }

    // --- Where it is

    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height, VARIANT child) override {
        if (!left || !top || !width || !height) {
            return E_INVALIDARG;
        }
        *left = *top = *width = *height = 0;
        return With(
            child,
            [&](const TTarget& target) {
                const TWinControl* const window = WindowOf(*target.Control);
                if (!window || !window->HandleAllocated()) {
                    return S_FALSE;
                }
                RECT r = ToRECT(target.Part >= 0           ? FParts->AccessiblePartRect(target.Part)
                                : window == target.Control ? window->ClientRect()
                                                           : target.Control->BoundsRect());
                MapWindowPoints(window->WindowHandle(), nullptr, reinterpret_cast<POINT*>(&r), 2);
                *left = r.left;
                *top = r.top;
                *width = r.right - r.left;
                *height = r.bottom - r.top;
                return S_OK;
            },
            [&] { return FStandard.get()->accLocation(left, top, width, height, child); });
    }

    HRESULT STDMETHODCALLTYPE accHitTest(LONG x, LONG y, VARIANT* out) override {
        return About(Self(), out, [&](const TTarget&) -> HRESULT {
            if (!OwnChildren() && FStandard) {
                return FStandard.get()->accHitTest(x, y, out);
            }
            const TPoint at = FControl.ScreenToClient({static_cast<int32_t>(x), static_cast<int32_t>(y)});
            const TRect client = FControl.ClientRect();
            if (at.X < 0 || at.Y < 0 || at.X >= client.Right || at.Y >= client.Bottom) {
                return S_FALSE;
            }
            GiveNumber(CHILDID_SELF, out);
            if (!FWindowed) {
                return S_OK;
            }
            const HWND window = FWindowed->WindowHandle();
            const HWND inner = ChildWindowFromPointEx(window, ToPOINT(at), CWP_SKIPINVISIBLE);
            if (IDispatch* const object = inner && inner != window ? ObjectOfWindow(inner) : nullptr) {
                GiveObject(object, out);
                return S_OK;
            }
            const auto children = FWindowed->AccessibleChildren();
            for (auto i = children.rbegin(); i != children.rend(); ++i) {
                const RECT bounds = ToRECT((*i)->BoundsRect());
                if (PtInRect(&bounds, ToPOINT(at))) {
                    GiveObject(new TAccessibleObject(**i), out);
                    return S_OK;
                }
            }
            const int part = FParts ? FParts->AccessiblePartAt(at) : -1;
            if (part >= 0 && part < FParts->AccessiblePartCount()) {
                GiveNumber(part + 1, out);
            }
            return S_OK;
        });
    }

    // --- Family

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** out) override {
        if (!out) {
            return E_INVALIDARG;
        }
        *out = nullptr;
        return With(Self(), [&](const TTarget&) -> HRESULT {
            if (FStandard) {
                return FStandard.get()->get_accParent(out);
            }
            *out = FControl.Parent() ? new TAccessibleObject(*FControl.Parent()) : nullptr;
            return *out ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* out) override {
        if (!out) {
            return E_INVALIDARG;
        }
        *out = 0;
        return With(Self(), [&](const TTarget&) -> HRESULT {
            if (!OwnChildren() && FStandard) {
                return FStandard.get()->get_accChildCount(out);
            }
            *out = static_cast<LONG>(PartCount());
            if (FWindowed) {
                *out += static_cast<LONG>(FWindowed->AccessibleChildren().size() + ChildWindows().size());
            }
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override {
        if (!out) {
            return E_INVALIDARG;
        }
        *out = nullptr;
        return With(
            child,
            [&](const TTarget& target) -> HRESULT {
                if (target.Part >= 0) {
                    return S_FALSE; // told of by its number
                }
                *out = target.Window                 ? ObjectOfWindow(target.Window)
                       : target.Control != &FControl ? new TAccessibleObject(*target.Control)
                                                     : nullptr;
                return *out ? S_OK : target.Window ? S_FALSE : E_INVALIDARG;
            },
            [&] { return FStandard.get()->get_accChild(child, out); }, true);
    }

    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* out) override {
        return About(
            start, out,
            [&](const TTarget& target) -> HRESULT {
                const bool self = target.Control == &FControl && target.Part < 0 && !target.Window;
                LONG count = 0;
                get_accChildCount(&count);
                switch (direction) {
                case NAVDIR_FIRSTCHILD:
                case NAVDIR_LASTCHILD:
                    return self && count > 0 ? GiveChild(direction == NAVDIR_FIRSTCHILD ? 1 : count, out) : S_FALSE;
                case NAVDIR_NEXT:
                case NAVDIR_PREVIOUS: {
                    if (self) {
                        return FStandard ? FStandard.get()->accNavigate(direction, start, out)
                                         : Sibling(direction, out);
                    }
                    const LONG to = start.lVal + (direction == NAVDIR_NEXT ? 1 : -1);
                    return to >= 1 && to <= count ? GiveChild(to, out) : S_FALSE;
                }
                default: return self && FStandard ? FStandard.get()->accNavigate(direction, start, out) : S_FALSE;
                }
            },
            [&] { return FStandard.get()->accNavigate(direction, start, out); }, true);
    }

    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* out) override {
        return About(Self(), out, [&](const TTarget&) -> HRESULT {
            if (!OwnChildren() && FStandard) {
                return FStandard.get()->get_accFocus(out);
            }
            const HWND own = FWindowed ? FWindowed->WindowHandle() : nullptr;
            const HWND focus = own ? ::GetFocus() : nullptr;
            if (focus && focus == own) {
                const int part = FParts ? FParts->FocusedPart() : -1;
                GiveNumber(part >= 0 && part < PartCount() ? part + 1 : CHILDID_SELF, out);
                return S_OK;
            }
            HWND inner = focus;
            while (inner && GetAncestor(inner, GA_PARENT) != own) {
                inner = GetAncestor(inner, GA_PARENT);
            }
            IDispatch* const object = focus ? ObjectOfWindow(inner) : nullptr;
            if (object) {
                GiveObject(object, out);
            }
            return object ? S_OK : S_FALSE;
        });
    }

    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* out) override {
        return About(Self(), out, [&](const TTarget&) -> HRESULT {
            if (!OwnChildren() && FStandard) {
                return FStandard.get()->get_accSelection(out);
            }
            std::vector<LONG> numbers;
            for (const int part : FParts ? FParts->SelectedParts() : std::vector<int>()) {
                numbers.push_back(part + 1);
            }
            if (numbers.empty()) {
                return S_FALSE;
            }
            if (numbers.size() == 1) {
                GiveNumber(numbers.front(), out);
            } else {
                out->vt = VT_UNKNOWN;
                out->punkVal = NewNumbers(std::move(numbers));
            }
            return S_OK;
        });
    }

    // --- What can be done

    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override {
        return With(
            child,
            [&](const TTarget& target) -> HRESULT {
                const bool self = target.Control == &FControl && target.Part < 0;
                if (!self || !FWindowed || (flags & SELFLAG_TAKEFOCUS) == 0 || !FWindowed->CanFocus()) {
                    return S_FALSE;
                }
                FWindowed->SetFocus();
                return S_OK;
            },
            [&] { return FStandard.get()->accSelect(flags, child); });
    }

    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        return With(
            child,
            [&](const TTarget& target) -> HRESULT {
                if (target.Info().Action.empty()) {
                    return FStandard && target.Control == &FControl && target.Part < 0 && FWindowed->IsOfSystemClass()
                               ? FStandard.get()->accDoDefaultAction(child)
                               : DISP_E_MEMBERNOTFOUND;
                }
                const TWinControl* const window = WindowOf(*target.Control);
                PostMessageW(window ? window->WindowHandle() : nullptr, CM_ACCESSIBLEACTION,
                             static_cast<WPARAM>(target.Part + 1), reinterpret_cast<LPARAM>(target.Control));
                return S_OK;
            },
            [&] { return FStandard.get()->accDoDefaultAction(child); });
    }

    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
        return With(
            child,
            [&](const TTarget&) -> HRESULT {
                return FStandard && FWindowed->IsOfSystemClass() ? FStandard.get()->put_accValue(child, value)
                                                                 : DISP_E_MEMBERNOTFOUND;
            },
            [&] { return FStandard.get()->put_accValue(child, value); });
    }

private:
    ~TAccessibleObject() override = default;

    /// What a number stands for.
    struct TTarget {
        TControl* Control = nullptr;
        int Part = -1;         ///< Of the control; -1: all of it.
        HWND Window = nullptr; ///< A window inside, which tells of itself.

        TAccessibleInfo Info() const {
            return Part >= 0 ? dynamic_cast<const IAccessibleParts&>(*Control).AccessiblePart(Part)
                             : Control->AccessibleInfo();
        }
    };

    static VARIANT Self() {
        VARIANT self{};
        GiveNumber(CHILDID_SELF, &self);
        return self;
    }
    static const TWinControl* WindowOf(const TControl& control) {
        const auto* const windowed = dynamic_cast<const TWinControl*>(&control);
        return windowed ? windowed : control.Parent();
    }
    static uint32_t StateOf(const TControl& control) {
        const TControl* disabled = &control;
        while (disabled && disabled->Enabled()) {
            disabled = disabled->Parent();
        }
        return (control.Showing() ? 0u : uint32_t{STATE_SYSTEM_INVISIBLE}) |
               (disabled ? uint32_t{STATE_SYSTEM_UNAVAILABLE} : 0u);
    }

    int PartCount() const { return FParts ? FParts->AccessiblePartCount() : 0; }
    /// The framework knows what is inside the control; else the system does.
    bool OwnChildren() const {
        return !FWindowed || !FWindowed->IsOfSystemClass() || FParts || !FWindowed->AccessibleChildren().empty();
    }
    std::vector<HWND> ChildWindows() const {
        std::vector<HWND> windows =
            FWindowed && FWindowed->HandleAllocated() ? DirectChildren(FWindowed->WindowHandle()) : std::vector<HWND>();
        std::erase_if(windows, [](HWND window) { return !IsWindowVisible(window); });
        return windows;
    }

    /// False: there is nothing of this number.
    bool Find(LONG number, TTarget& target) const {
        target.Control = &FControl;
        if (number == CHILDID_SELF) {
            return true;
        }
        if (number < 0) {
            return false;
        }
        auto index = static_cast<size_t>(number - 1);
        const auto parts = static_cast<size_t>(PartCount());
        if (index < parts) {
            target.Part = static_cast<int>(index);
            return true;
        }
        index -= parts;
        const auto children = FWindowed ? FWindowed->AccessibleChildren() : std::vector<const TControl*>();
        if (index < children.size()) {
            target.Control = const_cast<TControl*>(children[index]);
            return true;
        }
        index -= children.size();
        const std::vector<HWND> windows = ChildWindows();
        target.Window = index < windows.size() ? windows[index] : nullptr;
        return target.Window != nullptr;
    }

    /// Runs `own` for what the number stands for, or `standard` for a child that is the system's. A window inside has
    /// an object of its own: only ways that lead to it know its number (`windows`).
    template <class F, class S> HRESULT With(const VARIANT& child, F&& own, S&& standard, bool windows = false) const {
        if (!FAlive) {
            return CO_E_OBJNOTCONNECTED;
        }
        if (child.vt != VT_I4) {
            return E_INVALIDARG;
        }
        return Guarded(HRESULT{E_FAIL}, [&]() -> HRESULT {
            if (child.lVal != CHILDID_SELF && !OwnChildren() && FStandard) {
                return standard();
            }
            TTarget target;
            const bool known = Find(child.lVal, target) && (windows || !target.Window);
            return known ? own(target) : E_INVALIDARG;
        });
    }
    template <class F> HRESULT With(const VARIANT& child, F&& own) const {
        return With(child, std::forward<F>(own), [] { return E_INVALIDARG; });
    }
    /// The same with an answer in a variant, which is empty unless there is one.
    template <class F, class S>
    HRESULT About(const VARIANT& child, VARIANT* out, F&& own, S&& standard, bool windows = false) const {
        if (!out) {
            return E_INVALIDARG;
        }
        *out = VARIANT{};
        return With(child, std::forward<F>(own), std::forward<S>(standard), windows);
    }

    template <class F> HRESULT About(const VARIANT& child, VARIANT* out, F&& own) const {
        return About(child, out, std::forward<F>(own), [] { return E_INVALIDARG; });
    }

    HRESULT Text(const VARIANT& child, BSTR* out, std::string TAccessibleInfo::*field,
                 HRESULT (STDMETHODCALLTYPE IAccessible::*standard)(VARIANT, BSTR*)) const {
        if (!out) {
            return E_INVALIDARG;
        }
        *out = nullptr;
        return With(
            child,
            [&](const TTarget& target) -> HRESULT {
                const std::string text = target.Info().*field;
                const bool isSystems =
                    target.Control == &FControl && target.Part < 0 && FStandard && FWindowed->IsOfSystemClass();
                return text.empty() && isSystems ? (FStandard.get()->*standard)(child, out) : GiveText(text, out);
            },
            [&] { return (FStandard.get()->*standard)(child, out); });
    }

    HRESULT GiveChild(LONG number, VARIANT* out) const {
        TTarget target;
        if (!Find(number, target)) {
            return S_FALSE;
        }
        if (target.Part >= 0) {
            GiveNumber(number, out);
            return S_OK;
        }
        IDispatch* const object =
            target.Window ? ObjectOfWindow(target.Window) : new TAccessibleObject(*target.Control);
        if (object) {
            GiveObject(object, out);
        }
        return object ? S_OK : S_FALSE;
    }

    /// The next or the last control without a window in the same one.
    HRESULT Sibling(LONG direction, VARIANT* out) const {
        const auto fellows = FControl.Parent()->AccessibleChildren();
        const auto found = std::find(fellows.begin(), fellows.end(), &FControl);
        const bool forward = direction == NAVDIR_NEXT;
        if (found == fellows.end() || (forward ? found + 1 == fellows.end() : found == fellows.begin())) {
            return S_FALSE;
        }
        GiveObject(new TAccessibleObject(**(forward ? found + 1 : found - 1)), out);
        return S_OK;
    }

    TControl& FControl;
    const TAlive FAlive;
    TWinControl* const FWindowed; ///< The same; null when it has no window.
    IAccessibleParts* const FParts;
    unique_com<IAccessible> FStandard; ///< What the system says of the window.
};

} // namespace

bool TWinControl::AnswerAccessible(TMessage& message) {
    if (static_cast<LONG>(message.LParam) != OBJID_CLIENT || IsGoing()) {
        return false;
    }
    const unique_com<IAccessible> object(new TAccessibleObject(*this));
    const LRESULT answer = AnswerWithObject(message.WParam, object.get());
    if (answer != 0) {
        message.Result = answer;
    }
    return answer != 0;
}

} // namespace kx
