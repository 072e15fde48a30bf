// SPDX-License-Identifier: MIT
// Forms of the application in the dialog window.

#include "kx/frame/KxCustDlgParams.h"

#include "kx/frame/KxDlgGeometry.h"
#include "kx/frame/KxWhileAlive.h"
#include "kx/win/Windows.h"

namespace kx {

void KxInFormsThread(const std::function<void()>& work) { Application().Synchronize(work); }

namespace {

/// Does something to each of several forms. What it does to one may free others, or the parameters with their
/// references.
class TFormsInTurn {
public:
    explicit TFormsInTurn(const TKxCustDlgParams& params) : FAlive(params) {}

    template <class F> void Do(const TComponentRef<TForm>& ref, F&& work) const {
        if (TForm* const form = FAlive ? ref.Get() : nullptr) {
            work(*form);
        }
    }
    bool ParamsAlive() const { return static_cast<bool>(FAlive); }

private:
    TAlive FAlive;
};

/// Takes the form out of any parent of ours, puts it into the dialog and shows it.
void Dock(TForm& form, HWND handle, const TKxCustDlgParams& params) {
    KxWhileAlive(
        {TAlive(form), TAlive(params)}, [&] { form.SetParent(nullptr); }, [&] { form.SetParentWindow(handle); },
        [&] { form.Show(); });
}

int32_t WidthOf(const TForm& form) { return Width(form.NormalBounds()); }
int32_t HeightOf(const TForm& form) { return Height(form.NormalBounds()); }

} // namespace

void TKxCustDlgParams::CreateFormAs(TForm*& newForm, const std::string& formName) {
    if (newForm || formName.empty()) {
        return;
    }
    const std::string className = "T" + formName;
    TApplication& application = Application();
    for (int i = 0; i < application.ComponentCount() && !newForm; ++i) {
        TComponent* const component = application.Components(i);
        if (SameText(component->ClassName(), className) && !component->IsDestroying()) {
            newForm = dynamic_cast<TForm*>(component);
        }
    }
}

void TKxPosParams::ResolveForm() {
    if (!FForm) {
        TForm* form = nullptr;
        TKxCustDlgParams::CreateFormAs(form, FFormName);
        FForm.Set(form);
    }
}

void TKxCustDlgParams::ResolveForms() {
    const TAlive alive(FLife);
    const auto resolve = [&](TFormRef& ref, const std::string& name) {
        TForm* form = alive ? ref.Get() : nullptr;
        if (alive) {
            CreateFormAs(form, name);
            ref.Set(form);
        }
        if (form) {
            form->SetBorderStyle(bsNone);
        }
    };
    resolve(FLeftForm, FLFName);
    resolve(FRightForm, FRFName);
    resolve(FTopForm, FTFName);
    resolve(FBottomForm, FBFName);
    resolve(FCustForm, FCFName);
    if (alive) {
        FPosParams.ResolveForm();
    }
}

void TKxCustDlgParams::ConnectForms(HWND handle) {
    GHandle = handle;
    FHandle = handle;
    FIncX = 0;
    FIncY = 0;
    FConnected = true;
    const TAlive alive(FLife);
    KxInFormsThread([this] { ResolveForms(); });
    if (!alive) {
        return;
    }
    const TRect window = KxWindowRect(handle);
    const TRect client = KxClientRect(handle);
    const TDockedExtents docked = DockForms(handle);
    if (!alive) {
        return;
    }
    KxInFormsThread([&] { LayOutForms(docked, client); });
    if (!alive) {
        return;
    }
    ResizeWindow(handle, CheckedAdd(Width(window), docked.TotalWidth()),
                 CheckedAdd(Height(window), docked.TotalHeight()));
    if (!alive) {
        return;
    }
    FIncX = docked.TotalWidth();
    FIncY = docked.TotalHeight();
    SetIcon2(handle);
}

TDockedExtents TKxCustDlgParams::DockForms(HWND handle) {
    const TFormsInTurn forms(*this);
    const auto dock = [&](const TFormRef& form, int32_t (*measure)(const TForm& form), WNDENUMPROC makeRoom) {
        std::optional<int32_t> extent;
        KxInFormsThread([&] { forms.Do(form, [&](const TForm& f) { extent = measure(f); }); });
        if (extent && makeRoom) {
            GHandle = handle; // a handler of the form before may have docked others to another dialog
            KxEnumDirectChildren(handle, makeRoom, *extent);
        }
        if (extent) {
            KxInFormsThread([&] { forms.Do(form, [=, this](TForm& f) { Dock(f, handle, *this); }); });
        }
        return extent;
    };
    TDockedExtents docked;
    docked.LeftWidth = dock(FLeftForm, WidthOf, MoveLeft);
    docked.TopHeight = dock(FTopForm, HeightOf, MoveDown);
    docked.RightWidth = dock(FRightForm, WidthOf, nullptr);
    docked.BottomHeight = dock(FBottomForm, HeightOf, nullptr);
    return docked;
}

void TKxCustDlgParams::LayOutForms(const TDockedExtents& docked, const TRect& client) {
    const TDockLayout layout = LayoutDocked(docked, client.Right, client.Bottom);
    const TFormsInTurn forms(*this);
    forms.Do(FLeftForm, [&](TForm& form) { form.SetBounds(0, 0, form.Width(), layout.SideHeight); });
    forms.Do(FTopForm, [&](TForm& form) { form.SetBounds(layout.TopLeft, 0, layout.TopWidth, form.Height()); });
    forms.Do(FRightForm, [&](TForm& form) { form.SetBounds(layout.RightLeft, 0, form.Width(), layout.SideHeight); });
    forms.Do(FBottomForm, [&](TForm& form) { form.SetBounds(0, layout.BottomTop, layout.BottomWidth, form.Height()); });
}

TDockedExtents TKxCustDlgParams::DockedExtents() const {
    const auto extent = [](const TForm* form, int32_t (*measure)(const TForm& form)) {
        return form ? std::optional<int32_t>(measure(*form)) : std::nullopt;
    };
    return {.LeftWidth = extent(LeftForm(), WidthOf),
            .TopHeight = extent(TopForm(), HeightOf),
            .RightWidth = extent(RightForm(), WidthOf),
            .BottomHeight = extent(BottomForm(), HeightOf)};
}

void TKxCustDlgParams::OnResizeWindow(const TMessage& message) {
    const int32_t width = message.LParamLo();
    const int32_t height = message.LParamHi();
    const bool hasForms = FBottomForm.IsSet() || FTopForm.IsSet() || FLeftForm.IsSet() || FRightForm.IsSet();
    if (hasForms && !Outlives(*this, [&] { KxInFormsThread([&] { ResizeForms(width, height); }); })) {
        return;
    }
    FSelRect.Bottom = CheckedAdd(FSelRect.Bottom, CheckedSub(height, FDlgRect.Bottom));
    FSelRect.Right = CheckedAdd(FSelRect.Right, CheckedSub(width, FDlgRect.Right));
    FDlgRect.Bottom = height;
    FDlgRect.Right = width;
}

/// Sets sizes alone: a system dialog that is resized moves by itself what is right of its list and below it. Forms that
/// are not docked yet get their sizes when they are docked.
void TKxCustDlgParams::ResizeForms(int32_t width, int32_t height) {
    const TDockedSizes sizes = ResizeDocked(DockedExtents(), width, height);
    const TFormsInTurn forms(*this);
    const auto resize = [&, dialog = FHandle](const TFormRef& ref, void (TForm::*setSize)(int), int32_t size) {
        forms.Do(ref, [&](TForm& form) {
            if (form.ParentWindow() == dialog) {
                (form.*setSize)(size);
            }
        });
    };
    resize(FBottomForm, &TForm::SetWidth, sizes.BottomWidth);
    resize(FTopForm, &TForm::SetWidth, sizes.TopWidth);
    resize(FLeftForm, &TForm::SetHeight, sizes.LeftHeight);
    resize(FRightForm, &TForm::SetHeight, sizes.RightHeight);
}

void TKxCustDlgParams::DisconnectForms() {
    UndockForms([](const TForm&, HWND) { return true; });
}

void TKxCustDlgParams::UndockForms(bool (*wanted)(const TForm& form, HWND dialog)) {
    KxInFormsThread([&] {
        const TFormsInTurn forms(*this);
        const auto undock = [&, dialog = FHandle](TForm& form) {
            if (wanted(form, dialog)) {
                KxWhileAlive(
                    form, [&] { form.Hide(); }, [&] { form.SetParentWindow(nullptr); });
            }
        };
        forms.Do(FBottomForm, undock);
        forms.Do(FTopForm, undock);
        forms.Do(FLeftForm, undock);
        forms.Do(FRightForm, undock);
        forms.Do(FCustForm, undock);
        if (forms.ParamsAlive()) {
            FConnected = false;
        }
    });
}

bool TKxCustDlgParams::TakeAccelerator(wchar_t letter) {
    bool taken = false;
    KxInFormsThread([&] {
        const TFormsInTurn forms(*this);
        for (const TFormRef* ref : {&FLeftForm, &FTopForm, &FRightForm, &FBottomForm, &FCustForm}) {
            if (!taken && forms.ParamsAlive()) {
                forms.Do(*ref, [&, dialog = FHandle](TForm& form) {
                    taken = form.ParentWindow() == dialog && form.TakeAccelerator(letter);
                });
            }
        }
    });
    return taken;
}

void TKxCustDlgParams::HideCustomForm() {
    if (!FCustForm.IsSet()) {
        return;
    }
    KxInFormsThread([this] {
        if (TForm* const form = CustomForm()) {
            KxWhileAlive(
                *form, [=] { form->Hide(); }, [=] { form->SetParent(nullptr); },
                [=] { form->SetParentWindow(nullptr); });
        }
    });
}

void TKxCustDlgParams::TrackContextMenus(bool& showWhatsThis, const TMessage& message) {
    if (message.Msg != WM_CONTEXTMENU) {
        return;
    }
    // Deliberate: the coordinates are read without sign, so that points left of or above the primary screen are missed,
    // where one would expect them to be found.
    KxInFormsThread([&] {
        const TWinControl* const control = FindVCLWindow({message.LParamLo(), message.LParamHi()});
        if (control && control->PopupMenu()) {
            showWhatsThis = false;
        }
    });
}

} // namespace kx
