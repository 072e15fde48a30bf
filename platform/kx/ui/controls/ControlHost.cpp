// What controls ask of the program around them.

#include "kx/ui/controls/ControlHost.h"

#include "kx/win/Windows.h"

namespace kx {

namespace {

/// Of a program with controls and without an application.
class TNoHost final : public IControlHost {
public:
    void ControlGone(const TControl&) override {}
    void MouseOver(TControl*, const TPoint&) override {}
    void HideHint() override {}
    void CancelHint() override {}
    void MenuItemSelected(const std::string&) override {}
    TCursor Cursor() const override { return crDefault; }
    HCURSOR Cursors(TCursor) const override { return LoadCursorA(nullptr, IDC_ARROW); }
    void MessageDone(int) override {}
};

constinit TNoHost NoHost;
constinit IControlHost* Host = &NoHost; // static objects of the program may install theirs before any code here runs

} // namespace

void SetControlHost(IControlHost& host) { Host = &host; }

IControlHost& ControlHost() { return *Host; }

} // namespace kx
