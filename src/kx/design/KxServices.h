// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Filer.h"
#include "kx/ide/Projects.h"
#include "kx/ui/forms/Forms.h"
#include "kx/win/FileStreams.h"

#include <memory>
#include <string>

// What the design-time tools share: copies of the forms that are being designed, a dialog shown with such copies docked
// to it, a dialog's properties by name, the forms of the project, and where the tools' windows stood.

namespace kx {

class TKxCustDlgParams;

/// A form file whose handlers are left unbound: nothing that the form's class would do is done.
class TKxDfmFileStream : public TFileStream {
    KX_CLASS()

    using TFileStream::TFileStream;

    /// Accepts every handler and leaves its event empty.
    void OnFindEvent(TReader& reader, const std::string& methodName, TEventTargetPtr& address, bool& error);
    /// Reads the form at the stream's position into `instance`, and returns it. @throws EReadError, EClassNotFound
    TComponent* ReadComponent2(TComponent* instance);
    /// The same behind a resource header. @throws EInvalidImage
    TComponent* ReadComponentRes2(TComponent* instance);
};

/// Reads a form file with a resource header into `instance`, without its handlers.
void ReadFormForPreview(const std::string& fileName, TComponent* instance);

/// The form of that name that is open in a form designer; null when there is none.
TForm* GetFormUnderConstruction(const std::string& formName);

/// A copy of the form of that name that is open in a form designer, without its handlers; the caller owns it.
/// `tmpFileName` receives the name of the file that the form went through, in the folder for temporary files; the
/// caller deletes it. Null, and a message box says so, when there is no such form or it cannot be copied.
std::unique_ptr<TForm> CreatePreviewForm(const std::string& formName, std::string& tmpFileName);

// --- Any dialog of the library. @throws EPropertyError for an object that publishes no such property.

TKxCustDlgParams& KxGetDlgParams(TComponent& dialog);
std::string KxGetDlgTitle(const TComponent& dialog);
void KxSetDlgTitle(TComponent& dialog, const std::string& value);

// --- The host's project; null when there is none.

IProject* GetCurrentProject();
IProject* GetActiveProject();
/// Appends the names of the project's forms, in the project's order, but for the one of the component `exclude`.
/// Without a project there are none.
void GetProjectForms(IProject* project, TStrings& list, const TComponent* exclude);

// --- Where a window of the tools stood, in screen coordinates, below HKEY_CURRENT_USER

void SaveFormPosInRegistry(const TCustomForm& form, const std::string& key);
/// A bound whose value is missing or no number stays as it is.
void LoadFormPosFromRegistry(TCustomForm& form, const std::string& key);

/// Shows the dialog modally, with copies of the designed forms of these names docked to its sides; for an empty name,
/// of the form that the dialog's parameters name. Afterwards the dialog's parameters and
/// values are as before, whatever the user did. With `resizeDesignForms`
/// the designed forms get the extents that docking gave their copies.
///
/// A form that cannot be copied is reported, and the dialog shows without it. When the dialog is freed while it shows,
/// the copies go all the same. @throws what `Execute` throws, once everything is restored
void KxPreviewDialog(TComponent& dialog, const std::string& leftFormName, const std::string& topFormName,
                     const std::string& rightFormName, const std::string& bottomFormName, bool resizeDesignForms);

} // namespace kx
