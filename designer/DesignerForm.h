// SPDX-License-Identifier: MIT
#pragma once

#include "designer/Inspector.h"
#include "designer/PaletteBar.h"
#include "designer/Project.h"
#include "designer/Structure.h"
#include "designer/Surface.h"
#include "designer/Templates.h"
#include "kx/core/FormClass.h"
#include "kx/ui/controls/Menus.h"
#include "kx/ui/widgets/Splitters.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kx::designer {

/// The main window of the form designer.
class TDesignerForm final : public TForm, public IDocumentHost, private IModuleServices {
    KX_CLASS()

    explicit TDesignerForm(TComponent* owner = nullptr);
    ~TDesignerForm() override;

    /// Opens a project file, a folder or a form file, as the user's command does: what is wrong with it is told in a
    /// message box. False then.
    bool OpenPath(const std::string& path);
    /// Does what the menu item of that name does, "Save" for the item SaveItem.
    void Command(const std::string& name);

    TProject* Project() const { return FProject.get(); }
    TDocument* Document() const { return FDocument; } ///< The one that is shown; null when none is.
    TDesignSurface& DesignSurface() const { return *Surface; }
    TInspector& ObjectInspector() const { return *Inspector; }
    TPaletteBar& ComponentPalette() const { return *Palette; }
    TStructure& ComponentTree() const { return *Structure; }
    TMemo& TextView() const { return *TextMemo; }
    std::string ClassState() const {
        return ClassLabel->Caption();
    } ///< What the class's files lack, in the class view.
    std::string Status() const { return StatusPanel->Caption(); }
    TForm* RunningForm() const { return FRunning.get(); } ///< The one that Run has shown last.

    void WndProc(TMessage& message) override;

    // --- Handlers

    void CommandClick(TObject* sender);
    void MenuOpens(TObject* sender);
    void ProjectListClick(TObject* sender);
    void FormTabsChange(TObject* sender);
    void ViewTabsChange(TObject* sender);
    void TextMemoExit(TObject* sender);
    void FormCloseQuery(TObject* sender, bool& canClose);
    void FormShow(TObject* sender);
    void PanesResize(TObject* sender);

private:
    enum TView { FormView, TextView_, ClassView };

    // IDocumentHost
    void ShowDocument(TDocument& document) override;
    HWND FormWindow() override;
    void DocumentOpened(TDocument& document) override;
    TAncestorFiles AncestorsOf(const TDocument& document, const std::string& bytes) override {
        return FProject ? FProject->AncestorsOf(document, bytes) : TAncestorFiles();
    }
    // IModuleServices
    IProject* CurrentProject() override { return FProject.get(); }
    IProject* ActiveProject() override { return FProject.get(); }
    std::string BaseRegistryKey() const override;

    void AddCommands();
    void AddArrangeCommands();
    void UpdateMenus();
    TMenuItem& Item(const std::string& command) const;
    void UpdateAll();
    void UpdateTitle();
    void UpdateTabs();
    void UpdateView();
    void SelectionShown();
    bool Attempt(const std::function<void()>& work);
    void Say(const std::string& message);
    TFormDesigner* Current() const { return FDocument && FDocument->IsOpen() ? &FDocument->Designer() : nullptr; }
    std::vector<TDocument*> OpenDocuments() const;
    void ShowNone();

    void SetProject(std::unique_ptr<TProject> project);
    void OpenDocument(TDocument& document);
    void FocusForm();
    bool CloseDocument(TDocument& document);
    bool CloseAll();
    bool MayClose(TDocument& document);
    bool SaveDocument(TDocument& document);
    bool SaveDocumentAs(TDocument& document);
    void CheckForChanges();
    void OfferRecovery(TDocument& document);
    void TellOfMissingAncestor(const TDocument& document);
    void NewForm(TFormTemplate kind);
    void RemoveForm();
    void ToggleMainForm();
    void NewProject();
    void OpenFile();
    void AddRecent(const std::string& path);
    std::vector<std::string> RecentPaths() const;
    void ShowRecent();

    void RestorePlace();
    void RememberWindow() const;
    void FitPanes();
    void RestoreGrid();
    void SetGrid(const TDesignGrid& value);
    void ToggleGrid();
    void ToggleGuides();
    void EditGrid();

    bool TakeText();
    std::string TextProblem();
    void RefreshView();
    void ShowText();
    TFormClass ShownClass() const;
    void ShowClass();
    void CopyClass();
    void WriteClass();
    void SetView(TView view);
    void EditComponent();
    void ShowFormMenu(const TPoint& screen);
    void Cut();
    void Paste();
    void RunAt(int dotsPerInch);
    void DropChosen();

    KX_FIELDS(TDesignerForm, (TPanel, LeftPanel), (TSplitter, LeftSplitter, StructureSplitter), (TPaletteBar, Palette),
              (TStructure, Structure), (TInspector, Inspector), (TDesignSurface, Surface), (TMemo, TextMemo),
              (TPanel, ClassPanel, StatusPanel), (TLabel, ClassLabel), (TListBox, ProjectList),
              (TTabControl, FormTabs, ViewTabs), (TPopupMenu, FormMenu), (TMenuItem, RecentMenu), (TMainMenu, MainMenu))

    std::map<std::string, std::function<void()>> FCommands;
    std::unique_ptr<TProject> FProject;
    TDocument* FDocument = nullptr;
    TView FView = FormView;
    std::string FShownText; ///< What the text view was filled with.
    bool FChecking = false;
    bool FRefreshing = false;
    bool FHasPanes = false; ///< Their sizes have been restored.
    std::unique_ptr<TForm, TFreeDeleter> FRunning;
};

} // namespace kx::designer
