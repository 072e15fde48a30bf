// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/controls/ControlTypes.h"
#include "kx/win/Windows.h"

#include <initializer_list>
#include <string_view>

namespace kx::test {

// Real input, as if it came from the mouse and the keyboard. It arrives through the message queue: wait for what it
// brings about. What cannot be done raises an Exception that says why.

TPoint CenterOf(HWND window); ///< In screen coordinates.
void MoveMouse(TPoint screen);
/// The two halves of a click, for dragging. Let go only when `MouseInputTaken`: a loop of the system that drags does
/// not look where the button is let go, only at the moves it has taken in by then.
void PressAt(TPoint screen, TMouseButton button = mbLeft);
void ReleaseAt(TPoint screen, TMouseButton button = mbLeft);
bool MouseInputTaken(); ///< No input of the mouse waits for the calling thread.
/// Presses the left button at `from`, moves to `to` in steps, and releases it there, for controls of ours.
void Drag(TPoint from, TPoint to);
void ClickAt(TPoint screen, TMouseButton button = mbLeft);
void DoubleClickAt(TPoint screen);
/// Clicks the middle of the window. @throws Exception when another window covers it there.
void Click(HWND window, TMouseButton button = mbLeft);

/// Presses and releases a key while the `held` ones are down: `PressKey('A', {VK_CONTROL})`.
void PressKey(WORD key, std::initializer_list<WORD> held = {});
/// Types letters, digits, blanks and whatever else the keyboard layout has a key for.
void TypeText(std::string_view text);
/// Types characters that no key of the layout has, as an on-screen keyboard does: each unit of UTF-16 is a key press.
void TypeCharacters(std::wstring_view text);

/// Presses a button by message, without the mouse: nothing may cover it, nothing else is disturbed.
void PressButton(HWND button);

/// Chooses an item in a combo box as a user would: selects it and has the parent told. `code` is the notification that
/// the parent acts on.
bool ChooseInCombo(HWND combo, int index, WORD code = CBN_SELCHANGE);

} // namespace kx::test
