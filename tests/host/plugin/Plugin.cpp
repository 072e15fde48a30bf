// SPDX-License-Identifier: MIT
// A library with dialogs that programs load and unload.

#include "Plugin.h"

#include "kx/modeless/KxModelessDlg.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/places/KxPlacesBarForm.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Timers.h"

#include <memory>

namespace kx {
namespace {

class TPluginForm : public TForm {
    KX_CLASS()
    explicit TPluginForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }
    KX_FIELDS(TPluginForm, (TLabel, Label1), (TEdit, Edit1))
};

const TClass& TPluginForm::StaticClass() {
    static const TClassBuilder<TPluginForm> cls("TPluginForm", TForm::StaticClass());
    return cls.Class();
}

using TPluginFormPtr = std::unique_ptr<TPluginForm, TFreeDeleter>;

TPluginFormPtr Kept;

/// One dialog with a form and a bar of places, and what is seen of it.
class TShowing {
public:
    explicit TShowing(HWND owner)
        : Form(NewForm<TPluginForm>(nullptr)), Dialog(nullptr), FOwner(owner), FTimer(nullptr) {
        Dialog.SetOwnerWindow(owner);
        Dialog.CustDlgParams().SetRightForm(Form.get());
        Dialog.PlacesBar().SetNative(false);
        TKxPlace& place = *Dialog.PlacesBar().Places().Add();
        place.SetPlaceName("Plugin");
        place.SetPlacePath("C:\\windows");
        FTimer.SetInterval(10);
        FTimer.SetEnabled(false);
    }

    int Run(bool fails, TPluginInside inside, void* data) {
        Application().SetOnException([this](TObject*, const std::exception&) { FSeen |= PLUGIN_THROWN; });
        FTimer.SetOnTimer([=, this](TObject*) {
            if (IsThere()) {
                FTimer.SetEnabled(false);
                Look();
                if (inside) {
                    inside(Dialog.DlgHandle(), data);
                }
                PostMessageW(Dialog.DlgHandle(), WM_COMMAND, IDCANCEL, 0);
            }
        });
        Dialog.SetOnShow([=, this](TObject*) {
            FTimer.SetEnabled(true);
            if (fails) {
                throw Exception("The handler has failed");
            }
        });
        Dialog.Execute();
        Application().SetOnException({});
        return FSeen;
    }
    bool IsThere() const {
        HWND dialog = Dialog.DlgHandle();
        return dialog && IsWindowVisible(dialog) && IsWindowEnabled(dialog);
    }

    TPluginFormPtr Form;
    TKxOpenDialog Dialog;

private:
    void Look() {
        HWND dialog = Dialog.DlgHandle();
        const TKxPlacesBarFrm* const bar = Dialog.PlacesForm();
        const auto see = [this](bool seen, int what) { FSeen |= seen ? what : 0; };
        see(GetWindow(dialog, GW_OWNER) == FOwner && !IsWindowEnabled(FOwner), PLUGIN_SHOWN);
        see(GetAncestor(Form->WindowHandle(), GA_PARENT) == dialog && IsWindowVisible(Form->Edit1->WindowHandle()) &&
                Form->Label1->Caption() == "Of the library",
            PLUGIN_DOCKED);
        see(bar && IsWindowVisible(bar->WindowHandle()), PLUGIN_PLACES);
    }

    HWND FOwner;
    TTimer FTimer;
    int FSeen = 0;
};

/// Owned by the application: it goes with it.
class TBrowsing : public TComponent {
public:
    explicit TBrowsing(HWND owner) : TComponent(&Application()), FShowing(owner), FRunner(nullptr) {
        FRunner.SetDialog(&FShowing.Dialog);
        FRunner.Show();
    }
    bool IsThere() const { return FShowing.IsThere(); }

private:
    TShowing FShowing;
    TKxModelessDialog FRunner;
};

/// What no caller in C may get.
template <class F> int Answer(F&& f) noexcept {
    try {
        return f();
    } catch (...) {
        return 0;
    }
}

} // namespace
} // namespace kx

extern "C" __declspec(dllexport) int PluginShow(HWND owner, int fails, TPluginInside inside, void* data) {
    return kx::Answer([=] { return kx::TShowing(owner).Run(fails != 0, inside, data); });
}

extern "C" __declspec(dllexport) int PluginEnd() {
    return kx::Answer([] {
        kx::EndApplication();
        return 1;
    });
}

extern "C" __declspec(dllexport) int PluginBrowse(HWND owner) {
    return kx::Answer([=] {
        const auto* const browsing = new kx::TBrowsing(owner);
        const ULONGLONG since = GetTickCount64();
        while (!browsing->IsThere() && GetTickCount64() - since < 20'000) {
            kx::Application().ProcessMessages();
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        }
        return browsing->IsThere() ? 1 : 0;
    });
}

extern "C" __declspec(dllexport) void PluginKeepForm(int keeps) {
    kx::Answer([=] {
        kx::Kept.reset(keeps ? kx::NewForm<kx::TPluginForm>(nullptr) : nullptr);
        if (keeps) {
            kx::Kept->HandleNeeded();
        }
        return 1;
    });
}
