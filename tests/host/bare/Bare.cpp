// SPDX-License-Identifier: MIT
// A library that shows the system's dialog and leaves it as it is.

#include "../plugin/Plugin.h"

#include <commdlg.h>

#include <exception>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

/// Values of the thread, as many as the library has. GCC's runtime library takes a block for each, and frees those of a
/// thread that goes on only with the module's own code, which is not there any more.
template <int Number> thread_local int Value = 0;

/// Some heaps keep small blocks in groups, and a group stays as long as one block of it. What a library loses lies
/// among all that it uses for a while; so here.
class TUsedForAWhile {
public:
    void More() {
        for (const unsigned size : {16U, 24U, 40U, 64U, 120U}) {
            for (int i = 0; i < 32; ++i) {
                FBlocks.emplace_back(new char[size]);
            }
        }
    }

private:
    std::vector<std::unique_ptr<char[]>> FBlocks;
};

template <int... Number> void UseValues(std::integer_sequence<int, Number...>) {
    TUsedForAWhile blocks;
    ((blocks.More(), ++Value<Number>), ...);
}

void CALLBACK Cancel(HWND dialog, UINT, UINT_PTR id, DWORD) {
    if (IsWindowVisible(dialog) && IsWindowEnabled(dialog)) {
        KillTimer(dialog, id);
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }
}

UINT_PTR CALLBACK Hook(HWND window, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG) {
        SetTimer(GetParent(window), 4711, 10, Cancel);
    }
    return 0;
}

} // namespace

extern "C" __declspec(dllexport) int PluginShow(HWND owner, int fails, TPluginInside, void*) {
    if (fails) {
        try {
            throw std::runtime_error("The handler has failed");
        } catch (const std::exception&) {
            ++Value<0>;
        }
    }
    UseValues(std::make_integer_sequence<int, 11>());
    std::string name(MAX_PATH, '\0');
    OPENFILENAMEA record{};
    record.lStructSize = sizeof record;
    record.hwndOwner = owner;
    record.lpstrFile = name.data();
    record.nMaxFile = static_cast<DWORD>(name.size());
    record.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_ENABLESIZING | OFN_HIDEREADONLY;
    record.lpfnHook = Hook;
    GetOpenFileNameA(&record);
    return PLUGIN_ALL | (fails ? PLUGIN_THROWN : 0);
}

extern "C" __declspec(dllexport) int PluginEnd() { return 1; }
