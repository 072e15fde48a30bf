#include "frame/KxDlgParams.h"

namespace kx {

void KxWithForms(const std::function<void()>& work) { Application().Synchronize(work); }

namespace {

/// Out of any parent of ours, into the dialog, shown.
void Dock(const TKxFormRef<TForm>& ref, HWND handle) {
    KxWithForms([&] {
        if (TForm* const form = ref.Get()) {
            form->SetParent(nullptr);
            form->SetParentWindow(handle);
            form->Show();
        }
    });
}

/// A form is referred to. Said without touching the form, which may be going in its own thread: whoever would have to
/// wait for that thread is spared it.
bool IsSet(const TKxFormRef<TForm>& form) { return form.operator->() != nullptr; }

void Undock(TForm* form) {
    if (form) {
        form->Hide();
        form->SetParentWindow(nullptr);
    }
}

std::optional<int32_t> WidthOf(const TForm* form) {
    return form ? std::optional<int32_t>(form->Width()) : std::nullopt;
}

std::optional<int32_t> HeightOf(const TForm* form) {
    return form ? std::optional<int32_t>(form->Height()) : std::nullopt;
}

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
    const auto resolve = [](TFormRef& ref, const std::string& name) {
        TForm* form = ref.Get();
        CreateFormAs(form, name);
        ref.Set(form);
        if (form) {
            form->SetBorderStyle(bsNone);
        }
    };
    resolve(FLeftForm, FLFName);
    resolve(FRightForm, FRFName);
    resolve(FTopForm, FTFName);
    resolve(FBottomForm, FBFName);
    resolve(FCustForm, FCFName);
    FPosParams.ResolveForm();
}

void TKxCustDlgParams::ConnectForms(HWND handle) {
    GHandle = handle;
    FHandle = handle;
    FIncX = 0;
    FIncY = 0;
    KxWithForms([this] { ResolveForms(); });
    const TRect window = KxWindowRect(handle);
    const TRect client = KxClientRect(handle);
    const std::weak_ptr<const void> alive = FAlive;
    const TDockedExtents docked = DockForms(handle);
    if (alive.expired()) {
        return;
    }
    KxWithForms([&] { LayOutForms(docked, client); });
    ResizeWindow(handle, CheckedAdd(Width(window), docked.TotalWidth()),
                 CheckedAdd(Height(window), docked.TotalHeight()));
    if (alive.expired()) {
        return;
    }
    FIncX = docked.TotalWidth();
    FIncY = docked.TotalHeight();
    SetIcon2(handle);
}

TDockedExtents TKxCustDlgParams::DockForms(HWND handle) {
    const std::weak_ptr<const void> alive = FAlive;
    const auto dock = [&](const TFormRef& form, std::optional<int32_t> (*measure)(const TForm* form),
                          WNDENUMPROC makeRoom) {
        std::optional<int32_t> extent;
        if (!alive.expired()) {
            KxWithForms([&] { extent = measure(form.Get()); });
        }
        if (extent && makeRoom) {
            KxEnumDirectChildren(handle, makeRoom, *extent);
        }
        if (extent) {
            Dock(form, handle);
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
    if (FLeftForm) {
        FLeftForm->SetBounds(0, 0, FLeftForm->Width(), layout.SideHeight);
    }
    if (FTopForm) {
        FTopForm->SetBounds(layout.TopLeft, 0, layout.TopWidth, FTopForm->Height());
    }
    if (FRightForm) {
        FRightForm->SetBounds(layout.RightLeft, 0, FRightForm->Width(), layout.SideHeight);
    }
    if (FBottomForm) {
        FBottomForm->SetBounds(0, layout.BottomTop, layout.BottomWidth, FBottomForm->Height());
    }
}

TDockedExtents TKxCustDlgParams::DockedExtents() const {
    return {.LeftWidth = WidthOf(LeftForm()),
            .TopHeight = HeightOf(TopForm()),
            .RightWidth = WidthOf(RightForm()),
            .BottomHeight = HeightOf(BottomForm())};
}

void TKxCustDlgParams::OnResizeWindow(const TMessage& message) {
    const int32_t width = message.LParamLo();
    const int32_t height = message.LParamHi();
    if (IsSet(FBottomForm) || IsSet(FTopForm) || IsSet(FLeftForm) || IsSet(FRightForm)) {
        KxWithForms([&] { ResizeForms(width, height); });
    }
    FSelRect.Bottom = CheckedAdd(FSelRect.Bottom, CheckedSub(height, FDlgRect.Bottom));
    FSelRect.Right = CheckedAdd(FSelRect.Right, CheckedSub(width, FDlgRect.Right));
    FDlgRect.Bottom = height;
    FDlgRect.Right = width;
}

/// Sizes alone: the system dialog moves what is right of and below its list when it is resized.
/// Forms that are not docked yet get their sizes when they are.
void TKxCustDlgParams::ResizeForms(int32_t width, int32_t height) {
    const TDockedSizes sizes = ResizeDocked(DockedExtents(), width, height);
    const auto isDocked = [this](const TFormRef& form) { return form && form->ParentWindow() == FHandle; };
    if (isDocked(FBottomForm)) {
        FBottomForm->SetWidth(sizes.BottomWidth);
    }
    if (isDocked(FTopForm)) {
        FTopForm->SetWidth(sizes.TopWidth);
    }
    if (isDocked(FLeftForm)) {
        FLeftForm->SetHeight(sizes.LeftHeight);
    }
    if (isDocked(FRightForm)) {
        FRightForm->SetHeight(sizes.RightHeight);
    }
}

void TKxCustDlgParams::DisconnectForms() {
    KxWithForms([this] {
        Undock(FBottomForm.Get());
        Undock(FTopForm.Get());
        Undock(FLeftForm.Get());
        Undock(FRightForm.Get());
        Undock(FCustForm.Get());
    });
}

void TKxCustDlgParams::HideCustomForm() {
    if (!IsSet(FCustForm)) {
        return;
    }
    KxWithForms([this] {
        if (TForm* const form = CustomForm()) {
            form->Hide();
            form->SetParent(nullptr);
            form->SetParentWindow(nullptr);
        }
    });
}

void TKxCustDlgParams::TrackContextMenus(bool& showWhatsThis, const TMessage& message) {
    if (message.Msg != WM_CONTEXTMENU) {
        return;
    }
    // Deliberate: without sign, so that points left of or above the primary screen, which one would expect, are missed.
    KxWithForms([&] {
        const TWinControl* const control = FindVCLWindow({message.LParamLo(), message.LParamHi()});
        if (control && control->PopupMenu()) {
            showWhatsThis = false;
        }
    });
}

} // namespace kx
