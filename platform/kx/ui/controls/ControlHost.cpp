// SPDX-License-Identifier: MIT
// What controls ask of the program around them.

#include "kx/ui/controls/ControlHost.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

/// The host of a program that has controls and no application.
class TNoHost final : public IControlHost {
public:
    void ControlGone(const TControl&) override {}
    void MouseOver(TControl*, const TPoint&) override {}
    void HideHint() override {}
    void CancelHint() override {}
    void MenuItemSelected(const std::string&) override {}
    TCursor Cursor() const override { return crDefault; }
    HCURSOR Cursors(TCursor) const override { return LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW)); }
    void MessageDone(int) override {}
};

constinit TNoHost NoHost;
constinit IControlHost* Host = &NoHost; // a static object may install its host before any code of this source runs

} // namespace

void SetControlHost(IControlHost& host) { Host = &host; }

IControlHost& ControlHost() { return *Host; }

} // namespace kx
