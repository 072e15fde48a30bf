// SPDX-License-Identifier: MIT
// Window classes of controls.

#include "kx/ui/controls/Controls.h"

#include "kx/core/Lasting.h"
#include "kx/ui/controls/WindowClasses.h"
#include "kx/win/ExclusiveLock.h"
#include "kx/win/Windows.h"

#include <unordered_map>
#include <utility>

namespace kx {

namespace {

using detail::TWindowClass;

/// Those that are registered, by what they are for. Dialogs may run on other threads with controls of their own.
class TWindowClasses {
public:
    /// Without a procedure when there is none.
    TWindowClass Find(const std::string& key) {
        const TExclusiveLock lock(FLock);
        const auto known = FClasses.find(key);
        return known == FClasses.end() ? TWindowClass{} : known->second;
    }
    void Add(const std::string& key, const TWindowClass& windowClass) {
        const TExclusiveLock lock(FLock);
        FClasses[key] = windowClass;
    }
    /// A class of which there are windows stays.
    void Release() {
        const TExclusiveLock lock(FLock);
        std::erase_if(FClasses, [](const auto& entry) {
            return UnregisterClassW(entry.second.Name.c_str(), HInstance()) != FALSE;
        });
    }

private:
    SRWLOCK FLock = SRWLOCK_INIT;
    std::unordered_map<std::string, TWindowClass> FClasses;
};

TWindowClasses& Classes() {
    static auto& classes = Lasting<TWindowClasses>(); // windows may be made behind the end of static objects
    return classes;
}

WNDCLASSW SystemClass(const std::string& className) {
    const std::wstring name = ToWide(className);
    WNDCLASSW info;
    if (!GetClassInfoW(HInstance(), name.c_str(), &info) && !GetClassInfoW(nullptr, name.c_str(), &info)) {
        RaiseLastOSError(ERROR_CLASS_DOES_NOT_EXIST);
    }
    return info;
}

} // namespace

detail::TWindowClass detail::WindowClassFor(const std::string& className, const TCreateParams& params,
                                            WNDPROC initial) {
    const std::string key = className + "|" + params.BaseClass + "|" + IntToStr(params.ClassStyle);

    TWindowClass result = Classes().Find(key);
    if (result.DefWndProc) {
        return result;
    }

    WNDCLASSW info{};
    if (params.BaseClass.empty()) {
        info.lpfnWndProc = DefWindowProcW;
        info.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
        info.style = params.ClassStyle;
    } else {
        info = SystemClass(params.BaseClass);
        info.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
        info.lpszMenuName = nullptr;
    }
    result.DefWndProc = info.lpfnWndProc;
    info.lpfnWndProc = initial;
    info.hInstance = HInstance();
    const std::wstring wantedName = ToWide(className);
    result.Name = wantedName;
    // Classes of the same name, from different namespaces or other modules of the process, get a number behind it.
    for (int i = 2;; ++i) {
        info.lpszClassName = result.Name.c_str();
        if (RegisterClassW(&info)) {
            break;
        }
        if (GetLastError() != ERROR_CLASS_ALREADY_EXISTS) {
            RaiseLastOSError();
        }
        result.Name = wantedName + L"." + std::to_wstring(i);
    }
    Classes().Add(key, result);
    return result;
}

void detail::ReleaseWindowClasses() { Classes().Release(); }

} // namespace kx
