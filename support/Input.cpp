// SPDX-License-Identifier: MIT
// Sends input of the mouse and the keyboard.

#include "support/Input.h"

#include "kx/core/SysUtils.h"
#include "support/WindowTools.h"

#include <vector>

namespace kx::test {

namespace {

INPUT MouseInput(TPoint screen, DWORD flags) {
    constexpr int scale = 65536; // absolute positions run from 0 to 65535 over the screen
    const auto normalised = [](int32_t at, int metric) {
        const int extent = GetSystemMetrics(metric);
        return (at * scale + scale / 2) / extent;
    };
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = normalised(screen.X, SM_CXSCREEN);
    input.mi.dy = normalised(screen.Y, SM_CYSCREEN);
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | flags;
    return input;
}

INPUT KeyInput(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

void Send(std::vector<INPUT>& inputs) {
    const UINT sent = SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    if (sent != inputs.size()) {
        throw Exception("the system did not take the input");
    }
}

constexpr DWORD Down[] = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_MIDDLEDOWN};
constexpr DWORD Up[] = {MOUSEEVENTF_LEFTUP, MOUSEEVENTF_RIGHTUP, MOUSEEVENTF_MIDDLEUP};

void AddClick(std::vector<INPUT>& inputs, TPoint screen, TMouseButton button) {
    inputs.push_back(MouseInput(screen, Down[button]));
    inputs.push_back(MouseInput(screen, Up[button]));
}

} // namespace

TPoint CenterOf(HWND window) {
    const TRect r = ScreenRectOf(window);
    return {(r.Left + r.Right) / 2, (r.Top + r.Bottom) / 2};
}

void MoveMouse(TPoint screen) {
    // The screen's own pointer goes there too: a window that appears under it would report it, and the system asks it
    // where the mouse is when that has not moved for a while.
    SetCursorPos(screen.X, screen.Y);
    std::vector<INPUT> inputs{MouseInput(screen, 0)};
    Send(inputs);
}

void PressAt(TPoint screen, TMouseButton button) {
    MoveMouse(screen);
    std::vector<INPUT> inputs{MouseInput(screen, Down[button])};
    Send(inputs);
}

void ReleaseAt(TPoint screen, TMouseButton button) {
    MoveMouse(screen);
    std::vector<INPUT> inputs{MouseInput(screen, Up[button])};
    Send(inputs);
}

bool MouseInputTaken() { return HIWORD(GetQueueStatus(QS_MOUSE)) == 0; }

void ClickAt(TPoint screen, TMouseButton button) {
    MoveMouse(screen);
    std::vector<INPUT> inputs;
    AddClick(inputs, screen, button);
    Send(inputs);
}

void DoubleClickAt(TPoint screen) {
    MoveMouse(screen);
    std::vector<INPUT> inputs;
    AddClick(inputs, screen, mbLeft);
    AddClick(inputs, screen, mbLeft);
    Send(inputs);
}

void Click(HWND window, TMouseButton button) {
    const TPoint at = CenterOf(window);
    HWND hit = WindowFromPoint(ToPOINT(at));
    if (hit != window && IsChild(window, hit) == 0) {
        throw Exception("the middle of " + ClassOf(window) + " \"" + TextOf(window) + "\" is covered by " +
                        ClassOf(hit) + " \"" + TextOf(hit) + "\"");
    }
    ClickAt(at, button);
}

void Drag(TPoint from, TPoint to) {
    constexpr int steps = 8;
    PressAt(from);
    for (int i = 1; i <= steps; ++i) {
        MoveMouse({from.X + (to.X - from.X) * i / steps, from.Y + (to.Y - from.Y) * i / steps});
    }
    ReleaseAt(to);
}

void PressKey(WORD key, std::initializer_list<WORD> held) {
    std::vector<INPUT> inputs;
    for (const WORD modifier : held) {
        inputs.push_back(KeyInput(modifier, 0));
    }
    inputs.push_back(KeyInput(key, 0));
    inputs.push_back(KeyInput(key, KEYEVENTF_KEYUP));
    for (auto it = std::rbegin(held); it != std::rend(held); ++it) {
        inputs.push_back(KeyInput(*it, KEYEVENTF_KEYUP));
    }
    Send(inputs);
}

void TypeText(std::string_view text) {
    for (const char c : text) {
        const SHORT key = VkKeyScanA(c);
        if (key == -1) {
            throw Exception(std::string("the keyboard has no key for '") + c + "'");
        }
        constexpr int shiftBit = 0x100;
        if ((key & shiftBit) != 0) {
            PressKey(static_cast<WORD>(key & 0xFF), {VK_SHIFT});
        } else {
            PressKey(static_cast<WORD>(key & 0xFF));
        }
    }
}

void TypeCharacters(std::wstring_view text) {
    std::vector<INPUT> inputs;
    for (const wchar_t unit : text) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wScan = unit;
        for (const DWORD flags : {DWORD{KEYEVENTF_UNICODE}, DWORD{KEYEVENTF_UNICODE | KEYEVENTF_KEYUP}}) {
            input.ki.dwFlags = flags;
            inputs.push_back(input);
        }
    }
    Send(inputs);
}

void PressButton(HWND button) {
    if (IsWindow(button) == 0) {
        throw Exception("there is no such button");
    }
    SendMessageA(button, BM_CLICK, 0, 0);
}

bool ChooseInCombo(HWND combo, int index, WORD code) {
    if (SendMessageA(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0) == CB_ERR) {
        return false;
    }
    const WPARAM notification = MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(combo)), code);
    SendMessageA(GetParent(combo), WM_COMMAND, notification, reinterpret_cast<LPARAM>(combo));
    return true;
}

} // namespace kx::test
