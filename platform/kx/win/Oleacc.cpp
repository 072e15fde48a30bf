// SPDX-License-Identifier: MIT
// The system's library for screen readers. Programs start without it, and most are never asked.

#include "kx/win/Oleacc.h"

#include "kx/win/System.h"

#include <type_traits>

#ifdef __GNUC__
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor" // as the system declares its interfaces
#endif

namespace kx {

namespace {

/// Loaded when somebody asks for the first time: most programs are never asked.
struct TOleaccFunctions {
    decltype(&::LresultFromObject) LresultFromObject;
    decltype(&::CreateStdAccessibleObject) CreateStdAccessibleObject;
    decltype(&::AccessibleObjectFromWindow) AccessibleObjectFromWindow;
};

const TOleaccFunctions& Oleacc() {
    static const TOleaccFunctions functions = [] {
        TOleaccFunctions f{};
        wchar_t path[MAX_PATH + 16];
        const UINT length = GetSystemDirectoryW(path, MAX_PATH);
        if (length == 0 || length >= MAX_PATH) {
            return f;
        }
        lstrcpyW(path + length, L"\\oleacc.dll"); // by its path, since it is not one of those that every process has
        if (!LoadLibraryW(path)) {
            return f;
        }
        const auto find = [](auto& function, const char* name) {
            function = SystemFunction<std::decay_t<decltype(function)>>("oleacc.dll", name);
        };
        find(f.LresultFromObject, "LresultFromObject");
        find(f.CreateStdAccessibleObject, "CreateStdAccessibleObject");
        find(f.AccessibleObjectFromWindow, "AccessibleObjectFromWindow");
        return f;
    }();
    return functions;
}

/// Several numbers of children, one after the other.
class TNumbers final : public TCountedObject<IEnumVARIANT> {
public:
    explicit TNumbers(std::vector<LONG> numbers) : FNumbers(std::move(numbers)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (!out) {
            return E_POINTER;
        }
        const bool known = id == __uuidof(IUnknown) || id == __uuidof(IEnumVARIANT);
        *out = known ? this : nullptr;
        return known ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* out, ULONG* fetched) override {
        if (!out) {
            return E_INVALIDARG;
        }
        ULONG given = 0;
        for (; given < count && FAt < FNumbers.size(); ++given, ++FAt) {
            GiveNumber(FNumbers[FAt], &out[given]);
        }
        if (fetched) {
            *fetched = given;
        }
        return given == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const bool enough = count <= FNumbers.size() - FAt;
        FAt = enough ? FAt + count : FNumbers.size();
        return enough ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        FAt = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** out) override {
        if (!out) {
            return E_INVALIDARG;
        }
        auto* const copy = new TNumbers(FNumbers);
        copy->FAt = FAt;
        *out = copy;
        return S_OK;
    }

private:
    const std::vector<LONG> FNumbers;
    size_t FAt = 0;
};

} // namespace

LRESULT AnswerWithObject(WPARAM wParam, IAccessible* object) {
    if (!Oleacc().LresultFromObject) {
        return 0;
    }
    const auto give = [&] { return Oleacc().LresultFromObject(__uuidof(IAccessible), wParam, object); };
    LRESULT answer = give();
    if (static_cast<HRESULT>(answer) == CO_E_NOTINITIALIZED) {
        CoInitializeEx(nullptr,
                       COINIT_APARTMENTTHREADED); // for as long as the thread runs: the reader keeps the object
        answer = give();
    }
    return answer > 0 ? answer : 0; // an error is a negative number
}

IEnumVARIANT* NewNumbers(std::vector<LONG> numbers) { return new TNumbers(std::move(numbers)); }

unique_com<IAccessible> StandardObject(HWND window) {
    unique_com<IAccessible> object;
    if (window && Oleacc().CreateStdAccessibleObject) {
        void* found = nullptr;
        if (SUCCEEDED(Oleacc().CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible), &found))) {
            object.reset(static_cast<IAccessible*>(found));
        }
    }
    return object;
}

IDispatch* ObjectOfWindow(HWND window) {
    void* found = nullptr;
    if (!window || !Oleacc().AccessibleObjectFromWindow ||
        FAILED(Oleacc().AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_WINDOW), __uuidof(IAccessible),
                                                   &found))) {
        return nullptr;
    }
    return static_cast<IAccessible*>(found);
}

// --- Values

HRESULT GiveText(const std::string& text, BSTR* out) {
    const std::wstring wide = ToWide(text);
    *out = wide.empty() ? nullptr : SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    return wide.empty() ? S_FALSE : *out ? S_OK : E_OUTOFMEMORY;
}

void GiveNumber(LONG number, VARIANT* out) {
    out->vt = VT_I4;
    out->lVal = number;
}

void GiveObject(IDispatch* object, VARIANT* out) {
    out->vt = VT_DISPATCH;
    out->pdispVal = object;
}

} // namespace kx
