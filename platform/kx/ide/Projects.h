// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kx {

// The host's project and its parts, as a design-time package sees them. The host implements these and says so by
// `SetModuleServices`; all objects are the host's.

enum TModuleKind {
    mdForm, ///< A form file.
    mdOther ///< Anything else that belongs to the project.
};

/// Shows a module in some way, as a form or as text.
class IModuleEditor {
public:
    virtual void Show() = 0; ///< Brings it to the front.

protected:
    ~IModuleEditor() = default;
};

/// A part of a project.
class IModule {
public:
    virtual TModuleKind Kind() const = 0;
    virtual std::string FileName() const = 0; ///< Full path.
    virtual std::string FormName() const = 0; ///< Name of the form that it holds; empty when it holds none.
    /// Has the host load it. @throws Exception that says why it cannot be loaded.
    virtual void Open() = 0;
    virtual int EditorCount() const = 0; ///< 0 until it is open.
    virtual IModuleEditor& Editor(int index) = 0;

protected:
    ~IModule() = default;
};

class IProject {
public:
    virtual std::string FileName() const = 0; ///< Full path.
    virtual int ModuleCount() const = 0;
    virtual IModule& Module(int index) = 0; ///< In the project's order.

protected:
    ~IProject() = default;
};

/// What the host offers besides its designers.
class IModuleServices {
public:
    virtual IProject* CurrentProject() = 0; ///< The one that the active window belongs to; null when there is none.
    virtual IProject* ActiveProject() = 0;  ///< The one that is built and run; null when there is none.
    /// The host's own key below HKEY_CURRENT_USER, without a backslash at its end, for settings of its packages too.
    virtual std::string BaseRegistryKey() const = 0;

protected:
    ~IModuleServices() = default;
};

/// The host's services; null when there is no host. Not owned.
IModuleServices* ModuleServices();
void SetModuleServices(IModuleServices* services);

} // namespace kx
