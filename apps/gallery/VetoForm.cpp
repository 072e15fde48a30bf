// SPDX-License-Identifier: MIT
// The docked form that lists the events of a file dialog, and refuses some.

#include "VetoForm.h"

#include <string>

namespace kx::gallery {

namespace {

std::string StyleName(TViewStyle style) {
    constexpr const char* names[] = {"icons", "small icons", "list", "details"};
    return names[style];
}

} // namespace

const TClass& TVetoForm::StaticClass() {
    static const TClassBuilder<TVetoForm> cls("TVetoForm", TForm::StaticClass());
    return cls.Class();
}

TVetoForm::TVetoForm(TComponent* owner) : TForm(owner) {
    InitForm(*this, StaticClass());
    FLog = NewForm<TEventLogForm>(this);
    FLog->SetAlign(alClient);
    FLog->SetParent(LogPanel);
    FLog->Show();
}

void TVetoForm::Attach(TKxCustomOpenDialog& dialog) {
    FLog->Clear();
    FOnSelect = {};
    TabBox->Hide();
    AttachNavigation(dialog);
    AttachSelection(dialog);
    dialog.SetOnEventHooking([this](TObject*, TMessage& message, bool& allow) {
        if (IsMoveCommand(message)) {
            FLog->Answer("OnEventHooking: move", *MoveBox, allow);
        }
    });
}

void TVetoForm::Attach(TKxOpenDialogEx& dialog) {
    Attach(static_cast<TKxCustomOpenDialog&>(dialog));
    TabBox->Show();
    dialog.SetOnTabChanging([this](TObject*, bool& allow) { FLog->Answer("OnTabChanging", *TabBox, allow); });
    dialog.SetOnTabChange([this, &dialog](TObject*) {
        FLog->Add("OnTabChange: " + dialog.Tabs()[dialog.TabIndex()]);
        FOnSelect(&dialog);
    });
}

void TVetoForm::AttachNavigation(TKxCustomOpenDialog& dialog) {
    const auto tell = [this](const char* event) { return [this, event](TObject*) { FLog->Add(event); }; };
    const auto ask = [this](const char* event, const TCheckBox* veto) {
        return [this, event, veto](TObject*, bool& allow) { FLog->Answer(event, *veto, allow); };
    };
    dialog.SetOnDesktopNavigating(ask("OnDesktopNavigating", DesktopBox));
    dialog.SetOnDesktopNavigate(tell("OnDesktopNavigate"));
    dialog.SetOnUpLevelNavigating(ask("OnUpLevelNavigating", UpLevelBox));
    dialog.SetOnUpLevelNavigate(tell("OnUpLevelNavigate"));
    dialog.SetOnLastFolderNavigating(ask("OnLastFolderNavigating", LastFolderBox));
    dialog.SetOnLastFolderNavigate(tell("OnLastFolderNavigate"));
    dialog.SetOnFolderCreating(ask("OnFolderCreating", NewFolderBox));
    dialog.SetOnFilenameEntering(ask("OnFilenameEntering", NameBox));
    dialog.SetOnCanClose(ask("OnCanClose", CloseBox));
}

void TVetoForm::AttachSelection(TKxCustomOpenDialog& dialog) {
    dialog.SetOnFolderChange([this, &dialog](TObject*) {
        FLog->Add("OnFolderChange: " + ExtractFileName(ExcludeTrailingPathDelimiter(dialog.SelectedFolder())));
        FOnSelect(&dialog);
    });
    dialog.SetOnSelectionChange([this, &dialog](TObject*) {
        FLog->Add("OnSelectionChange: " + dialog.SelectedFiles());
        FOnSelect(&dialog);
    });
    dialog.SetOnFilenameChange([this, &dialog](TObject*) { FLog->Add("OnFilenameChange: " + dialog.FilenameText()); });
    dialog.SetOnSelectionStyleChanging([this](TObject*, TViewStyle style, bool& allow) {
        FLog->Answer("OnSelectionStyleChanging: " + StyleName(style), *StyleBox, allow);
    });
    dialog.SetOnSelectionStyleChange(
        [this](TObject*, TViewStyle style) { FLog->Add("OnSelectionStyleChange: " + StyleName(style)); });
}

} // namespace kx::gallery
