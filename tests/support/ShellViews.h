// SPDX-License-Identifier: MIT
#pragma once

#include "kx/win/Handles.h"
#include "kx/win/Subclass.h"
#include "support/TempFolder.h"

#include <shlobj.h>

#include <functional>
#include <string>
#include <vector>

// What the shell views of Windows do and those of other systems do not, done to a view by a test. Each class says which
// behaviour it stands for.

namespace kx::test {

/// A window that holds a shell view answers it with its browser. In no header of the system.
inline constexpr UINT GetShellBrowserMessage = WM_USER + 7;

/// The shell view of a file dialog; null when it has none.
HWND ShellViewOf(HWND dialog);

/// Goes to a folder by the shell alone, as some of its commands do: the dialog gets a new view and tells nobody.
void BrowseTo(HWND dialog, const std::string& folder);

/// Windows makes the view of a dialog when the dialog is complete already. While this lives, the dialog has none.
class TLateView {
public:
    explicit TLateView(HWND dialog);
    TLateView(const TLateView&) = delete;
    TLateView& operator=(const TLateView&) = delete;
    ~TLateView() { Come(); }
    /// The view is there. Nobody is told of it.
    void Come();

private:
    HWND FDialog;
    HWND FView;
};

/// Windows leaves the list box in whose place a dialog shows its files where it is and as large as it is when the
/// dialog is sized. This keeps a window so.
class TFrozenWindow {
public:
    explicit TFrozenWindow(HWND window);

private:
    TSubclass FMessages;
};

/// Has a list say of itself that it is a virtual one, so that it is asked and changed as one: its view can do it.
class TFeignedVirtualList {
public:
    explicit TFeignedVirtualList(HWND list);
    TFeignedVirtualList(const TFeignedVirtualList&) = delete;
    TFeignedVirtualList& operator=(const TFeignedVirtualList&) = delete;
    ~TFeignedVirtualList();

private:
    void SetVirtual(bool value);

    HWND FList;
    TSubclass FMessages;
};

/// Sends a message to a list view past all who watch its messages.
LRESULT SendPastAll(HWND list, UINT message, WPARAM wParam, LPARAM lParam);
/// Puts an item into a list past all who watch the list's messages, as a view does that has an interface to its list.
void InsertUnseen(HWND list, int index = 0);

/// A shell view of Windows in a window of its own: it has a virtual list, which shows a real folder and knows nothing
/// of its entries.
class TVirtualView {
public:
    explicit TVirtualView(const TTempFolder& folder);
    TVirtualView(const TVirtualView&) = delete;
    TVirtualView& operator=(const TVirtualView&) = delete;
    ~TVirtualView();

    HWND List() const { return FList.get(); }
    /// The names of the entries that are left.
    std::vector<std::string> Names() const;

    /// What the shell says of an entry by that name; `traits` is what the system says.
    std::function<SFGAOF(const std::string& name, SFGAOF traits)> Traits;
    HRESULT TraitsResult = S_OK; ///< Of the question for them.
    bool Removes = true;         ///< It removes entries when it is asked to.
    int DeletionsByMessage = 0;  ///< Each of which only makes the list shorter.
    /// The window around the view does not know it any more.
    void Forget();

private:
    class TShell;

    TShell* FShell;
    unique_hwnd FDialog;
    unique_hwnd FList;
    TSubclass FListMessages;
};

} // namespace kx::test
