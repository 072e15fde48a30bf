// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ide/Projects.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

/// A host with one project, which writes down what is asked of its modules. Without a project when told so.
class TTestHost : public IModuleServices, private IProject {
public:
    explicit TTestHost(std::string key) : FKey(std::move(key)) { SetModuleServices(this); }
    TTestHost(const TTestHost&) = delete;
    TTestHost& operator=(const TTestHost&) = delete;
    virtual ~TTestHost() { SetModuleServices(nullptr); }

    std::vector<std::string> Log;                       ///< "open SideForm", "show SideForm 0", ...
    std::function<void(const std::string& what)> OnLog; ///< Runs in what is written down, and may throw.
    bool HasProject = true;

    void AddModule(const std::string& formName, TModuleKind kind = mdForm, int editors = 1) {
        FModules.push_back(std::make_unique<TModule>(*this, formName, kind, editors));
    }

    IProject* CurrentProject() override { return HasProject ? this : nullptr; }
    IProject* ActiveProject() override { return HasProject ? this : nullptr; }
    std::string BaseRegistryKey() const override { return FKey; }

private:
    class TEditor : public IModuleEditor {
    public:
        TEditor(TTestHost& host, std::string name) : FHost(host), FName(std::move(name)) {}
        virtual ~TEditor() = default;
        void Show() override { FHost.Say("show " + FName); }

    private:
        TTestHost& FHost;
        std::string FName;
    };

    class TModule : public IModule {
    public:
        TModule(TTestHost& host, const std::string& formName, TModuleKind kind, int editors)
            : FHost(host), FFormName(formName), FKind(kind) {
            for (int i = 0; i < editors; ++i) {
                FEditors.push_back(std::make_unique<TEditor>(host, formName + " " + std::to_string(i)));
            }
        }
        virtual ~TModule() = default;
        TModuleKind Kind() const override { return FKind; }
        std::string FileName() const override { return "C:\\Project\\" + FFormName + ".dfm"; }
        std::string FormName() const override { return FFormName; }
        void Open() override {
            FHost.Say("open " + FFormName);
            FOpen = true;
        }
        int EditorCount() const override { return FOpen ? static_cast<int>(FEditors.size()) : 0; }
        IModuleEditor& Editor(int index) override { return *FEditors.at(static_cast<size_t>(index)); }

    private:
        TTestHost& FHost;
        std::string FFormName;
        TModuleKind FKind;
        std::vector<std::unique_ptr<TEditor>> FEditors;
        bool FOpen = false;
    };

    void Say(const std::string& what) {
        Log.push_back(what);
        if (OnLog) {
            OnLog(what);
        }
    }

    std::string FileName() const override { return "C:\\Project\\Project.kxproj"; }
    int ModuleCount() const override { return static_cast<int>(FModules.size()); }
    IModule& Module(int index) override { return *FModules.at(static_cast<size_t>(index)); }

    std::string FKey;
    std::vector<std::unique_ptr<TModule>> FModules;
};

} // namespace kx::test
