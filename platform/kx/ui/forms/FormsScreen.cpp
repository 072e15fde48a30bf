// SPDX-License-Identifier: MIT
// The screen, its pointers, and the forms on it.

#include "kx/ui/forms/Forms.h"

#include "kx/core/GlobalReferences.h"
#include "kx/core/Lasting.h"
#include "kx/win/Windows.h"

namespace kx {

TScreen& Screen() {
    static auto& screen = Lasting<TScreen>(); // forms may outlive static objects
    return screen;
}

const TClass& TScreen::StaticClass() {
    static const TClassBuilder<TScreen> cls("TScreen", TComponent::StaticClass());
    return cls.Class();
}

namespace {

/// The form of that name, for references from other forms. Forms that are being designed are no part of the program,
/// and other threads make theirs without asking.
TComponent* FindForm(const std::string& name) {
    if (!Application().InOwnThread()) {
        return nullptr;
    }
    for (int i = 0; i < Screen().FormCount(); ++i) {
        TCustomForm* const form = Screen().Forms(i);
        if (SameText(form->Name(), name) && !form->IsDesigning() && !form->IsDestroying()) {
            return form;
        }
    }
    return nullptr;
}

} // namespace

TScreen::TScreen() {
    RegisterFindGlobalComponentProc(FindForm);
    const auto add = [this](TCursor cursor, LPCTSTR name) {
        FCursors[cursor] = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(name));
    };
    add(crDefault, IDC_ARROW);
    add(crArrow, IDC_ARROW);
    add(crCross, IDC_CROSS);
    add(crIBeam, IDC_IBEAM);
    add(crSize, IDC_SIZEALL);
    add(crSizeNESW, IDC_SIZENESW);
    add(crSizeNS, IDC_SIZENS);
    add(crSizeNWSE, IDC_SIZENWSE);
    add(crSizeWE, IDC_SIZEWE);
    add(crUpArrow, IDC_UPARROW);
    add(crHourGlass, IDC_WAIT);
    add(crDrag, IDC_HAND);
    add(crNoDrop, IDC_NO);
    add(crHSplit, IDC_SIZEWE);
    add(crVSplit, IDC_SIZENS);
    add(crMultiDrag, IDC_HAND);
    add(crNo, IDC_NO);
    add(crAppStart, IDC_APPSTARTING);
    add(crHelp, IDC_HELP);
    add(crHandPoint, IDC_HAND);
    FCursors[crNone] = nullptr;
}

TScreen::~TScreen() = default;

int TScreen::Width() const { return GetSystemMetrics(SM_CXSCREEN); }

int TScreen::Height() const { return GetSystemMetrics(SM_CYSCREEN); }

TCustomForm* TScreen::Forms(int index) const {
    if (index < 0 || index >= FormCount()) {
        throw EListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
    return FForms[static_cast<size_t>(index)];
}

HCURSOR TScreen::Cursors(TCursor cursor) const {
    const auto found = FCursors.find(cursor);
    return found != FCursors.end() ? found->second : FCursors.at(crDefault);
}

void TScreen::SetCursor(TCursor value) {
    if (FCursor != value) {
        FCursor = value;
        POINT mouse;
        GetCursorPos(&mouse);
        const HWND window = WindowFromPoint(mouse);
        if (window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
            ::SetCursor(Cursors(value));
            SendMessageW(window, WM_SETCURSOR, reinterpret_cast<WPARAM>(window), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        }
    }
}

} // namespace kx
