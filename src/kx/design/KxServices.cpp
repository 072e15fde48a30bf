// SPDX-License-Identifier: MIT
// Copies designed forms, and previews dialogs with them.

#include "kx/design/KxServices.h"

#include "kx/core/Barrier.h"
#include "kx/core/FormText.h"
#include "kx/core/Streams.h"
#include "kx/frame/KxCommonDialog.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/opensave/KxToolBarProps.h"
#include "kx/places/KxPlaces.h"
#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/widgets/ComCtrlsToolBar.h"
#include "kx/win/Registry.h"
#include "kx/win/Windows.h"

#include <array>
#include <exception>
#include <utility>
#include <vector>

namespace kx {

// --- Form files

const TClass& TKxDfmFileStream::StaticClass() {
    static const TClassBuilder<TKxDfmFileStream> cls("TKxDfmFileStream", TFileStream::StaticClass());
    return cls.Class();
}

void TKxDfmFileStream::OnFindEvent(TReader&, const std::string&, TEventTargetPtr& address, bool& error) {
    address = nullptr;
    error = false;
}

TComponent* TKxDfmFileStream::ReadComponent2(TComponent* instance) {
    constexpr size_t bufferSize = 4096;
    TReader reader(*this, bufferSize);
    reader.SetOnFindEvent(TFindEventEvent(this, &TKxDfmFileStream::OnFindEvent));
    return reader.ReadRootComponent(instance);
}

TComponent* TKxDfmFileStream::ReadComponentRes2(TComponent* instance) {
    ReadResHeader(*this);
    return ReadComponent2(instance);
}

void ReadFormForPreview(const std::string& fileName, TComponent* instance) {
    TKxDfmFileStream stream(fileName, fmOpenRead | fmShareDenyWrite);
    stream.ReadComponentRes2(instance);
}

TForm* GetFormUnderConstruction(const std::string& formName) {
    for (int i = 0; i < Screen().FormCount(); ++i) {
        auto* const form = dynamic_cast<TForm*>(Screen().Forms(i));
        if (form && form->IsDesigning() && SameText(form->Name(), formName)) {
            return form;
        }
    }
    return nullptr;
}

namespace {

std::string TempFolder() {
    wchar_t path[MAX_PATH + 1] = L""; // the longest that the system gives
    GetTempPathW(MAX_PATH + 1, path);
    return FromWide(path);
}

} // namespace

std::unique_ptr<TForm> CreatePreviewForm(const std::string& formName, std::string& tmpFileName) {
    try {
        if (TForm* const designed = GetFormUnderConstruction(formName)) {
            tmpFileName = TempFolder() + formName + ".tmp";
            {
                TFileStream file(tmpFileName, fmCreate);
                // Whole: where the copy is read, the forms from which it inherits are not known.
                WriteComponent(file, *designed, TStreamFormat::Resource, nullptr,
                               [](TWriter& writer) { writer.SetWritesWhole(); });
            }
            auto copy = std::make_unique<TForm>();
            ReadFormForPreview(tmpFileName, copy.get());
            return copy;
        }
    } catch (const std::exception&) { // what could not be read is of no help to the user
    }
    ShowMessage("Could not open form for preview");
    return nullptr;
}

// --- Properties by name

TKxCustDlgParams& KxGetDlgParams(TComponent& dialog) {
    auto* const params = dynamic_cast<TKxCustDlgParams*>(GetObjectProp(dialog, "CustDlgParams"));
    if (!params) {
        throw EPropertyError(dialog.ClassName() + " has no parameters of a dialog");
    }
    return *params;
}

std::string KxGetDlgTitle(const TComponent& dialog) { return GetStrProp(dialog, "Title"); }

void KxSetDlgTitle(TComponent& dialog, const std::string& value) { SetStrProp(dialog, "Title", value); }

// --- The project

IProject* GetCurrentProject() { return ModuleServices() ? ModuleServices()->CurrentProject() : nullptr; }

IProject* GetActiveProject() { return ModuleServices() ? ModuleServices()->ActiveProject() : nullptr; }

void GetProjectForms(IProject* project, TStrings& list, const TComponent* exclude) {
    const int count = project ? project->ModuleCount() : 0;
    for (int i = 0; i < count; ++i) {
        const IModule& module = project->Module(i);
        const std::string name = module.Kind() == mdForm ? module.FormName() : std::string();
        if (!name.empty() && !(exclude && SameText(name, exclude->Name()))) {
            list.Add(name);
        }
    }
}

// --- Places of windows

void SaveFormPosInRegistry(const TCustomForm& form, const std::string& key) {
    TRegistry registry;
    if (registry.OpenKey(key, true)) {
        registry.WriteInteger("Height", form.Height());
        registry.WriteInteger("Left", form.Left());
        registry.WriteInteger("Top", form.Top());
        registry.WriteInteger("Width", form.Width());
    }
}

void LoadFormPosFromRegistry(TCustomForm& form, const std::string& key) {
    TRegistry registry;
    if (!registry.OpenKey(key, true)) {
        return;
    }
    const auto load = [&](const char* name, auto set) {
        try {
            set(registry.ReadInteger(name));
        } catch (const Exception&) { // missing or of another type: this bound stays
        }
    };
    load("Height", [&](int value) { form.SetHeight(value); });
    load("Width", [&](int value) { form.SetWidth(value); });
    load("Left", [&](int value) { form.SetLeft(value); });
    load("Top", [&](int value) { form.SetTop(value); });
}

// --- The preview

namespace {

/// A side of a dialog, and how it is dealt with there.
struct TSide {
    const std::string& (TKxCustDlgParams::*Name)() const;
    void (TKxCustDlgParams::*SetName)(const std::string& value);
    bool (TKxCustDlgParams::*CanDock)() const;
    void (TKxCustDlgParams::*SetForm)(TForm* form);
    bool Upright; ///< The dialog gives the form its height; else its width.
};

using TParams = TKxCustDlgParams;
constexpr std::array<TSide, 4> Sides = {{
    {&TParams::LeftFormName, &TParams::SetLeftPanel, &TParams::CanLeft, &TParams::SetLeftForm, true},
    {&TParams::TopFormName, &TParams::SetTopPanel, &TParams::CanTop, &TParams::SetTopForm, false},
    {&TParams::RightFormName, &TParams::SetRightPanel, &TParams::CanRight, &TParams::SetRightForm, true},
    {&TParams::BottomFormName, &TParams::SetBottomPanel, &TParams::CanBottom, &TParams::SetBottomForm, false},
}};
constexpr std::array<size_t, 4> RestoreOrder = {3, 1, 0, 2}; // bottom, top, left, right

/// A designed form's copy, with the file that it came through.
class TFormCopy {
public:
    void Make(const std::string& formName) { FForm = CreatePreviewForm(formName, FFileName); }
    TForm* Form() const { return FForm.get(); }

    /// Frees the copy and deletes its file.
    void Remove() {
        Guarded([this] { FForm.reset(); });
        if (!FFileName.empty()) {
            DeleteFileW(ToWide(FFileName).c_str());
            FFileName.clear();
        }
    }

    /// Gives the designed form the extent that docking gave the copy.
    void ResizeDesigned(const std::string& formName, bool upright) const {
        TForm* const designed = GetFormUnderConstruction(formName);
        if (!FForm || !designed) {
            return;
        }
        if (upright) {
            designed->SetHeight(FForm->Height() + GetSystemMetrics(SM_CYCAPTION) + 2 * GetSystemMetrics(SM_CYFRAME));
        } else {
            designed->SetWidth(FForm->Width());
        }
    }

private:
    std::unique_ptr<TForm> FForm;
    std::string FFileName;
};

std::string BytesOf(const TCollection& collection) {
    TMemoryStream stream;
    TWriter writer(stream);
    writer.WriteCollection(collection);
    writer.FlushBuffer();
    return std::string(stream.Bytes());
}

/// The values of a dialog that its user may change while it shows, as the file name, the colour or the places.
class TSavedValues {
public:
    explicit TSavedValues(TPersistent& object) { Save(object); }

    /// Sets what has changed.
    void Restore() {
        for (const auto& [object, info, value] : FNumbers) {
            if (info->GetOrd(*object) != value) {
                info->SetOrd(*object, value);
            }
        }
        for (const auto& [object, info, value] : FTexts) {
            if (info->GetStr(*object) != value) {
                info->SetStr(*object, value);
            }
        }
        for (const auto& [lines, value] : FLines) {
            if (lines->Text() != value) {
                lines->SetText(value);
            }
        }
        if (FPlaces && BytesOf(*FPlaces) != BytesOf(FSavedPlaces)) {
            FPlaces->Assign(&FSavedPlaces);
        }
    }

private:
    template <class T> struct TValue {
        TPersistent* Object;
        const TPropInfo* Info;
        T Value;
    };

    void Save(TPersistent& object) {
        for (const TPropInfo* info : object.ClassType().Properties()) {
            if (info->Kind == TTypeKind::SubObject) {
                SaveObject(info->GetObj(object));
            } else if (info->IsReadOnly()) {
                continue;
            } else if (info->IsOrdinal()) {
                FNumbers.push_back({&object, info, info->GetOrd(object)});
            } else if (info->Kind == TTypeKind::String) {
                FTexts.push_back({&object, info, info->GetStr(object)});
            }
        }
    }
    void SaveObject(TObject* object) {
        if (auto* const lines = dynamic_cast<TStrings*>(object)) {
            FLines.emplace_back(lines, lines->Text());
        } else if (auto* const places = dynamic_cast<TKxPlaces*>(object)) {
            FPlaces = places;
            FSavedPlaces.Assign(places);
        } else if (auto* const other = dynamic_cast<TPersistent*>(object)) {
            Save(*other);
        }
    }

    std::vector<TValue<int64_t>> FNumbers;
    std::vector<TValue<std::string>> FTexts;
    std::vector<std::pair<TStrings*, std::string>> FLines;
    TKxPlaces* FPlaces = nullptr;
    TKxPlaces FSavedPlaces{nullptr};
};

/// One preview: what is put into the dialog, and taken out again.
class TPreview {
public:
    explicit TPreview(TComponent& dialog)
        : FDialog(dialog), FAlive(dialog), FParams(KxGetDlgParams(dialog)), FValues(dialog) {
        for (size_t i = 0; i < Sides.size(); ++i) {
            FSavedNames[i] = (FParams.*Sides[i].Name)();
        }
    }
    TPreview(const TPreview&) = delete;
    TPreview& operator=(const TPreview&) = delete;

    void DockCopies(const std::array<std::string, 4>& formNames) {
        for (size_t i = 0; i < Sides.size(); ++i) {
            const TSide& side = Sides[i];
            FNames[i] = formNames[i].empty() ? FSavedNames[i] : formNames[i];
            if (!FNames[i].empty() && FNames[i] != "Not supported" && (FParams.*side.CanDock)()) {
                FCopies[i].Make(FNames[i]);
                if (FCopies[i].Form()) {
                    (FParams.*side.SetForm)(FCopies[i].Form());
                }
            }
        }
    }

    /// The tool bar that the dialog borrows is on a designed form too.
    void LendToolBarCopy() {
        if (FDialog.ClassName() != "TKxOpenDialog" && FDialog.ClassName() != "TKxSaveDialog") {
            return;
        }
        auto* const options = dynamic_cast<TKxToolBarOptions*>(GetObjectProp(FDialog, "ToolBar"));
        TToolBar* const bar = options ? options->CustomBar() : nullptr;
        if (!bar || !dynamic_cast<TCustomForm*>(bar->Owner())) {
            return;
        }
        FBarForm.Make(bar->Owner()->Name());
        if (FBarForm.Form()) {
            FBarOptions = options;
            FBar.Set(bar);
            options->SetCustomBar(dynamic_cast<TToolBar*>(FBarForm.Form()->FindComponent(bar->Name())));
        }
    }

    void Restore(bool resizeDesignForms) {
        if (FAlive && FBarOptions) {
            FBarOptions->SetCustomBar(FBar.Get());
        }
        FBarForm.Remove();
        for (size_t i = 0; i < Sides.size(); ++i) {
            if (resizeDesignForms) {
                Guarded([&] { FCopies[i].ResizeDesigned(FNames[i], Sides[i].Upright); });
            }
            FCopies[i].Remove();
        }
        for (const size_t i : RestoreOrder) {
            if (FAlive) {
                (FParams.*Sides[i].SetName)(FSavedNames[i]);
            }
        }
        if (FAlive) {
            FValues.Restore();
        }
    }

private:
    TComponent& FDialog;
    TAlive FAlive; ///< Of the dialog, which its own handlers may free.
    TKxCustDlgParams& FParams;
    TSavedValues FValues;
    std::array<std::string, 4> FSavedNames;
    std::array<std::string, 4> FNames;
    std::array<TFormCopy, 4> FCopies;
    TFormCopy FBarForm;
    TKxToolBarOptions* FBarOptions = nullptr; ///< Of the dialog, when it got a copy of its tool bar.
    TComponentRef<TToolBar> FBar;             ///< The dialog's own one.
};

} // namespace

void KxPreviewDialog(TComponent& dialog, const std::string& leftFormName, const std::string& topFormName,
                     const std::string& rightFormName, const std::string& bottomFormName, bool resizeDesignForms) {
    if (dialog.ClassName() == "TKxFindDialog" || dialog.ClassName() == "TKxReplaceDialog") {
        ShowMessage("Preview mode does not work with Find/Replace dialogs");
        return;
    }
    TPreview preview(dialog);
    std::exception_ptr error; // kept until everything is restored
    try {
        preview.DockCopies({leftFormName, topFormName, rightFormName, bottomFormName});
        preview.LendToolBarCopy();
        if (auto* const shown = dynamic_cast<ICommonDialog*>(&dialog)) {
            shown->Execute();
        }
    } catch (...) {
        error = std::current_exception();
    }
    preview.Restore(resizeDesignForms);
    if (error) {
        std::rethrow_exception(error);
    }
}

} // namespace kx
