// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Alive.h"
#include "kx/core/ComponentRef.h"
#include "kx/core/SystemNames.h"
#include "kx/frame/KxDlgLayout.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/Messages.h"

#include <functional>
#include <string>

namespace kx {

class TKxCustDlgParams;

/// Where a dialog shows.
enum TKxDlgPosition : uint8_t {
    dpDefault,        ///< Where the system puts it.
    dpScrCenter,      ///< Centred on the screen.
    dpMainFormCenter, ///< Centred over the application's main form.
    dpOwnerCenter,    ///< Centred over the dialog's OwnerWindow, else over the form that owns the component.
    dpFormCenter      ///< Centred over the form chosen in the position parameters.
};
KX_ENUM(TKxDlgPosition, "dpDefault", "dpScrCenter", "dpMainFormCenter", "dpOwnerCenter", "dpFormCenter")

/// Details of a dialog's placement.
class TKxPosParams : public TPersistent {
    KX_CLASS()

    /// Pixels that the dialog moves right and down after any placement, dpDefault included.
    int ShiftX() const { return FShiftX; }
    void SetShiftX(int value) { FShiftX = value; }
    int ShiftY() const { return FShiftY; }
    void SetShiftY(int value) { FShiftY = value; }
    /// Reference form of dpFormCenter, not owned; forgotten when it is freed. Setting it keeps the name.
    TCustomForm* Form() const { return FForm.Get(); }
    void SetForm(TCustomForm* value) { FForm.Set(value); }
    KX_AS_SYSTEM_NAMES(void, SetForm, (TCustomForm * value), (value), )
    /// Name from which the next docking finds the form. Setting it forgets the form.
    const std::string& FormName() const { return FFormName; }
    void SetFormName(const std::string& value);
    /// Finds the form by its name unless there is a form already; see TKxCustDlgParams.
    void ResolveForm();
    /// The dialog is moved inside the screen after everything else.
    bool FitToScreen() const { return FFit; }
    void SetFitToScreen(bool value) { FFit = value; }

    /// Copies everything but the form's name.
    void Assign(const TPersistent* source) override;

private:
    int32_t FShiftY = 0;
    int32_t FShiftX = 0;
    TComponentRef<TCustomForm> FForm;
    std::string FFormName;
    bool FFit = false;
};

/// Placement, docked forms and icon of one dialog component, which owns it.
///
/// Up to four forms of the application are docked to the dialog's sides while it shows. A fifth one, the custom form,
/// stands in the place of the dialog's own selection control. A form is given directly or by its name: the application
/// must own it, and its class name is "T" and the name, in any letter case. Giving the form forgets the name, and the
/// other way round. Forms are not owned; they may be freed at any time and are forgotten then.
class TKxCustDlgParams : public TPersistent {
    KX_CLASS()

    TKxCustDlgParams();
    ~TKxCustDlgParams() override;

    /// The life of the parameters, for `Outlives` and `TAlive`: handlers of docked forms may free the dialog.
    const TLifetime& Lifetime() const { return FLife; }

    TKxDlgPosition Position() const { return FPosition; }
    void SetPosition(TKxDlgPosition value) { FPosition = value; }
    TKxPosParams& PosParams() { return FPosParams; }
    const TKxPosParams& PosParams() const { return FPosParams; }
    void SetPosParams(const TKxPosParams& value) { FPosParams.Assign(&value); }

    // --- Forms by name. A dialog that does not support a side ignores the name; in a form designer it reports that.

    const std::string& BottomFormName() const { return FBFName; }
    void SetBottomFormName(const std::string& value) { SetBottomPanel(value); }
    const std::string& RightFormName() const { return FRFName; }
    void SetRightFormName(const std::string& value) { SetRightPanel(value); }
    const std::string& TopFormName() const { return FTFName; }
    void SetTopFormName(const std::string& value) { SetTopPanel(value); }
    const std::string& LeftFormName() const { return FLFName; }
    void SetLeftFormName(const std::string& value) { SetLeftPanel(value); }
    const std::string& CustFormName() const { return FCFName; }
    void SetCustFormName(const std::string& value) { SetCustPanel(value); }

    void SetLeftPanel(const std::string& value);
    void SetTopPanel(const std::string& value);
    void SetRightPanel(const std::string& value);
    void SetBottomPanel(const std::string& value);
    void SetCustPanel(const std::string& value);

    // --- Forms

    TForm* BottomForm() const { return FBottomForm.Get(); }
    void SetBottomForm(TForm* value);
    TForm* LeftForm() const { return FLeftForm.Get(); }
    void SetLeftForm(TForm* value);
    TForm* RightForm() const { return FRightForm.Get(); }
    void SetRightForm(TForm* value);
    TForm* TopForm() const { return FTopForm.Get(); }
    void SetTopForm(TForm* value);
    TForm* CustomForm() const { return FCustForm.Get(); }
    void SetCustomForm(TForm* value) { SetCustForm(value); }
    void SetCustForm(TForm* value);

    /// Finds the application's form of that name when `newForm` is null and the name is not empty. Nothing is created:
    /// without such a form `newForm` stays null.
    static void CreateFormAs(TForm*& newForm, const std::string& formName);

    // --- Icon

    /// Small icon that the dialog window gets.
    TIcon& Icon() { return FIcon; }
    const TIcon& Icon() const { return FIcon; }
    void SetIcon(const TIcon& value) { FIcon.Assign(&value); }
    bool IsIconStored() const { return !FIcon.Empty(); }
    /// Gives the icon, if there is one, to the window.
    void SetIcon2(HWND handle) const;

    // --- Docking

    /// Docks the forms into the dialog window and grows it by their sizes. To be called once per showing, as soon as
    /// the window is there and before it is placed. @throws EIntOverflow
    virtual void ConnectForms(HWND handle);
    /// Hides the forms and takes them out of the dialog; they keep size and border. When a form's handler frees the
    /// dialog meanwhile, the end of the parameters does the rest.
    virtual void DisconnectForms();
    /// Offers a letter that was pressed with Alt to the docked forms, in the forms' thread. True: one has taken it.
    bool TakeAccelerator(wchar_t letter);
    /// Hides the custom form and takes it out of the dialog, and of any parent of ours.
    void HideCustomForm();
    /// Adapts the docked forms to WM_SIZE of the dialog window. @throws EIntOverflow
    void OnResizeWindow(const TMessage& message);
    /// Clears `showWhatsThis` for a WM_CONTEXTMENU over a control of ours that has a popup menu: the control shows its
    /// menu, and the dialog must not offer its context help.
    static void TrackContextMenus(bool& showWhatsThis, const TMessage& message);

    HWND Handle() const { return FHandle; } ///< Window of the last docking; not reset.
    int IncX() const { return FIncX; }      ///< Width in pixels that the last docking added.
    int IncY() const { return FIncY; }      ///< Height in pixels that the last docking added.

    /// Last known client size of the dialog: Right is the width, Bottom the height.
    const TRect& ClientRect() const { return FDlgRect; }
    void SetClientRect(const TRect& value) { FDlgRect = value; }
    /// Selection area; its Right and Bottom follow the dialog's size.
    const TRect& CustRect() const { return FSelRect; }
    void SetCustRect(const TRect& value) { FSelRect = value; }

    // --- For the owning dialog

    TComponent* Dlg() const { return FDlg; } ///< The dialog component.
    void SetDlg(TComponent* value) { FDlg = value; }
    /// Whether the dialog supports a form on that side; true at first.
    bool CanLeft() const { return FCanLeft; }
    void SetCanLeft(bool value) { FCanLeft = value; }
    bool CanTop() const { return FCanTop; }
    void SetCanTop(bool value) { FCanTop = value; }
    bool CanRight() const { return FCanRight; }
    void SetCanRight(bool value) { FCanRight = value; }
    bool CanBottom() const { return FCanBottom; }
    void SetCanBottom(bool value) { FCanBottom = value; }

    /// Copies the forms, their names, the placement and, of the sides' support, the left one's alone.
    void Assign(const TPersistent* source) override;

private:
    using TFormRef = TComponentRef<TForm>;

    void SetSide(bool supported, std::string& name, TFormRef& form, const std::string& value, const char* side);
    void ResolveForms();
    TDockedExtents DockForms(HWND handle);
    void LayOutForms(const TDockedExtents& docked, const TRect& client);
    void ResizeForms(int32_t width, int32_t height);
    void UndockForms(bool (*wanted)(const TForm& form, HWND dialog));
    TDockedExtents DockedExtents() const;

    TFormRef FTopForm;
    TFormRef FLeftForm;
    TFormRef FBottomForm;
    TFormRef FRightForm;
    std::string FBFName;
    std::string FRFName;
    std::string FTFName;
    std::string FLFName;
    std::string FCFName;
    TKxDlgPosition FPosition = dpDefault;
    TKxPosParams FPosParams;
    TFormRef FCustForm;
    HWND FHandle = nullptr;
    TIcon FIcon;
    bool FCanLeft = true;
    bool FCanTop = true;
    bool FCanRight = true;
    bool FCanBottom = true;
    TRect FDlgRect;
    TRect FSelRect;
    TComponent* FDlg = nullptr;
    int32_t FIncX = 0;
    int32_t FIncY = 0;
    bool FConnected = false; ///< Forms may be in the window.
    TLifetime FLife;
};

/// Runs `work`, which deals with forms of the application, in the application's thread and waits for it. What it throws
/// comes out.
///
/// The windows of the forms live in that thread. A dialog may run in another one: there a form could neither make nor
/// destroy its windows, and the application might free the form at any moment. For the same reason `work` looks the
/// forms up itself.
void KxInFormsThread(const std::function<void()>& work);

/// Places the dialog window by its parameters: by the position, then by the shifts, then, if wanted, inside the screen.
/// When the form that the position names is missing, the window is centred over the main form; when there is no main
/// form, on the screen.
void KxSetPosition(HWND window, const TKxCustDlgParams& params);
/// Centres the window on the screen.
void KxCenterWindow(HWND window);
/// Moves the rectangle inside the screen; a larger one ends with its left or top edge at 0.
void KxFitRectToScreen(TRect& rect);

} // namespace kx
