// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/Windows.h"

#include <atomic>
#include <oleacc.h>
#include <string>
#include <vector>

// The system's library for screen readers, and values that are given to them.

namespace kx {

#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor" // as the system declares its interface
#endif

/// How many objects of this module others may still call.
inline constinit std::atomic<long> CountedObjects{0};

/// An object of the system's interface I that counts its users, the first of whom is its maker.
template <class I> class TCountedObject : public I {
public:
    TCountedObject() { ++CountedObjects; }
    TCountedObject(const TCountedObject&) = delete;
    TCountedObject& operator=(const TCountedObject&) = delete;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++FUsers; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --FUsers;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    virtual ~TCountedObject() { --CountedObjects; }

private:
    std::atomic<ULONG> FUsers = 1;
};

/// What all objects for screen readers have in common: they offer no late binding, which screen readers do not use, and
/// have no help of their own.
class TAccessibleBase : public TCountedObject<IAccessible> {
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR*, VARIANT, LONG*) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
};

#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

/// Gives an object to whoever sent WM_GETOBJECT. The answer of the message; 0: it cannot be given.
LRESULT AnswerWithObject(WPARAM wParam, IAccessible* object);
/// What the system says of the client area of a window; null: nothing.
unique_com<IAccessible> StandardObject(HWND window);
/// What a window tells of itself, frame and all; null: nothing. The caller releases it.
IDispatch* ObjectOfWindow(HWND window);

HRESULT GiveText(const std::string& text, BSTR* out); ///< S_FALSE for an empty one.
void GiveNumber(LONG number, VARIANT* out);
void GiveObject(IDispatch* object, VARIANT* out); ///< With the caller's reference.
/// Several numbers of children, one after the other; with a reference for the caller.
IEnumVARIANT* NewNumbers(std::vector<LONG> numbers);

} // namespace kx
