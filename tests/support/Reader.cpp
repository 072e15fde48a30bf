// SPDX-License-Identifier: MIT
// What a screen reader gets to know.

#include "Reader.h"

#include <algorithm>

namespace kx::test {

namespace {

unique_com<IAccessible> AccessibleOf(IUnknown* object) {
    void* found = nullptr;
    if (object) {
        object->QueryInterface(__uuidof(IAccessible), &found);
    }
    return unique_com<IAccessible>(static_cast<IAccessible*>(found));
}

unique_com<IAccessible> Shared(IAccessible* object) {
    if (object) {
        object->AddRef();
    }
    return unique_com<IAccessible>(object);
}

std::vector<THeard>& AllHeard() {
    static std::vector<THeard> all;
    return all;
}

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG number, DWORD, DWORD) {
    AllHeard().push_back({event, window, object, number});
}

} // namespace

TSeen TSeen::Of(HWND window) {
    TSeen seen;
    void* found = nullptr;
    AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &found);
    seen.FObject.reset(static_cast<IAccessible*>(found));
    return seen;
}

TSeen TSeen::Standard(HWND window) {
    TSeen seen;
    void* found = nullptr;
    CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible), &found);
    seen.FObject.reset(static_cast<IAccessible*>(found));
    return seen;
}

HWND TSeen::Window() const {
    HWND window = nullptr;
    return FObject && SUCCEEDED(WindowFromAccessibleObject(FObject.get(), &window)) ? window : nullptr;
}

TSeen TSeen::AtPoint(const TSeen& in, int x, int y) {
    VARIANT found{};
    in.FObject.get()->accHitTest(x, y, &found);
    return From(in, found);
}

VARIANT TSeen::Self() const {
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = FNumber;
    return self;
}

TSeen TSeen::From(const TSeen& parent, const VARIANT& value) {
    TSeen seen;
    if (value.vt == VT_I4) {
        seen.FObject = Shared(parent.Object());
        seen.FNumber = value.lVal;
        VARIANT number = value;
        IDispatch* object = nullptr;
        if (value.lVal != CHILDID_SELF && parent.Object()->get_accChild(number, &object) == S_OK) {
            seen.FObject = AccessibleOf(object);
            seen.FNumber = CHILDID_SELF;
            object->Release();
        }
    } else if (value.vt == VT_DISPATCH) {
        seen.FObject = AccessibleOf(value.pdispVal);
        value.pdispVal->Release();
    }
    return seen;
}

std::string TSeen::Text(TTextOf get) const {
    BSTR text = nullptr;
    if (!FObject || (FObject.get()->*get)(Self(), &text) != S_OK || !text) {
        return {};
    }
    std::string result = FromWide({text, SysStringLen(text)});
    SysFreeString(text);
    return result;
}

LONG TSeen::Figure(TFigureOf get) const {
    VARIANT value{};
    const bool given = FObject && (FObject.get()->*get)(Self(), &value) == S_OK && value.vt == VT_I4;
    return given ? value.lVal : -1;
}

TRect TSeen::Rect() const {
    LONG left = 0;
    LONG top = 0;
    LONG width = 0;
    LONG height = 0;
    if (!FObject || FObject.get()->accLocation(&left, &top, &width, &height, Self()) != S_OK) {
        return {};
    }
    return FromRECT({left, top, left + width, top + height});
}

TSeen TSeen::Parent() const {
    TSeen parent;
    IDispatch* object = nullptr;
    if (FObject.get()->get_accParent(&object) == S_OK && object) {
        parent.FObject = AccessibleOf(object);
        object->Release();
    }
    return parent;
}

TSeen TSeen::Focus() const {
    VARIANT value{};
    FObject.get()->get_accFocus(&value);
    return From(*this, value);
}

std::vector<LONG> TSeen::Selection() const {
    std::vector<LONG> numbers;
    VARIANT value{};
    FObject.get()->get_accSelection(&value);
    if (value.vt == VT_I4) {
        numbers.push_back(value.lVal);
    } else if (value.vt == VT_UNKNOWN) {
        void* found = nullptr;
        value.punkVal->QueryInterface(__uuidof(IEnumVARIANT), &found);
        const unique_com<IEnumVARIANT> all(static_cast<IEnumVARIANT*>(found));
        VARIANT one{};
        for (ULONG got = 0; all && all.get()->Next(1, &one, &got) == S_OK;) {
            numbers.push_back(one.lVal);
        }
        value.punkVal->Release();
    }
    return numbers;
}

std::vector<TSeen> TSeen::Children() const {
    LONG count = 0;
    FObject.get()->get_accChildCount(&count);
    std::vector<VARIANT> values(static_cast<size_t>(count));
    LONG got = 0;
    if (count > 0) {
        AccessibleChildren(FObject.get(), 0, count, values.data(), &got);
    }
    std::vector<TSeen> children;
    for (LONG i = 0; i < got; ++i) {
        children.push_back(From(*this, values[static_cast<size_t>(i)]));
    }
    return children;
}

TSeen TSeen::Child(const std::string& name) const {
    for (TSeen& child : Children()) {
        if (child.Name() == name) {
            return std::move(child);
        }
    }
    return {};
}

TListener::TListener()
    : FHook(SetWinEventHook(EVENT_OBJECT_CREATE, EVENT_OBJECT_END, nullptr, Hear, GetCurrentProcessId(),
                            GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT)) {
    AllHeard().clear();
}

TListener::~TListener() { UnhookWinEvent(FHook); }

bool TListener::Heard(DWORD event, HWND window, LONG number) const {
    const auto& all = AllHeard();
    return std::find(all.begin(), all.end(), THeard{event, window, OBJID_CLIENT, number}) != all.end();
}

} // namespace kx::test
