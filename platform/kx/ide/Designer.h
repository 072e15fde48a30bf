// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Components.h"
#include "kx/core/TypInfo.h"
#include "kx/graphics/Graphics.h"

#include <string>
#include <vector>

// What a design-time package knows of the form designer that it runs in. The designer implements IDesigner, once for
// each form that it has open, and tells those who listen what happens to the form.

namespace kx {

/// What is selected in a designer: components of the form, or objects inside them, as items of a collection.
using TDesignSelection = std::vector<TPersistent*>;

/// A form that is being designed. It belongs to the designer; whoever keeps a reference gives it up when
/// `DesignerClosed` tells of its end. All of it is called in the thread of the user interface.
class IDesigner {
public:
    /// The component that the form file holds: the form.
    virtual TComponent* Root() const = 0;

    /// Something of the form has changed: it has to be saved, and the change can be undone.
    virtual void Modified() = 0;

    virtual TDesignSelection Selection() const = 0;
    virtual void Select(const TDesignSelection& selection) = 0;

    /// Puts a new component on the form, inside `parent` if that can hold it, with a name of its own, and selects it.
    /// `bounds` is in client coordinates of the parent; a component that is no control takes only the corner. What the
    /// constructor throws comes through, and then nothing has changed.
    virtual TComponent* CreateComponent(const TClass& cls, TComponent* parent, const TRect& bounds) = 0;
    /// A name that no component of the form has: the class's without its T, and a number.
    virtual std::string UniqueName(const std::string& className) const = 0;

    // --- Methods of the form's class, to which events are bound

    /// Names of the methods that an event of that signature can be bound to, in alphabetical order.
    virtual std::vector<std::string> MethodsOf(std::type_index signature) const = 0;
    virtual bool MethodExists(const std::string& name) const = 0;
    /// The handler of that name, made when there is none yet. @throws EPropertyError when `name` is no identifier, or
    /// belongs to a method of another signature.
    virtual TEventTargetPtr Method(const std::string& name, const TPropInfo& event) = 0;
    /// Shows the method to the user, as far as the designer can.
    virtual void ShowMethod(const std::string& name) = 0;

protected:
    ~IDesigner() = default;
};

/// Hears what happens in all designers. Nothing that is thrown here reaches the designer: it is reported.
class IDesignNotification {
public:
    virtual void ItemDeleted(IDesigner& designer, TPersistent& item) = 0; ///< It still lives.
    virtual void ItemInserted(IDesigner& designer, TPersistent& item) = 0;
    virtual void ItemsModified(IDesigner& designer) = 0;
    virtual void SelectionChanged(IDesigner& designer, const TDesignSelection& selection) = 0;
    /// The designer goes away, and its form with it; both still live. `goingDormant`: the form comes back when the user
    /// opens it again, with what he has changed.
    virtual void DesignerClosed(IDesigner& designer, bool goingDormant) = 0;

protected:
    ~IDesignNotification() = default;
};

/// From now on `listener` hears of all designers; not owned. A second registration does nothing.
void RegisterDesignNotification(IDesignNotification& listener);
void UnregisterDesignNotification(IDesignNotification& listener);

// --- For designers: these tell everyone who listens, the first registered first. A listener may come or go meanwhile.

void NotifyItemDeleted(IDesigner& designer, TPersistent& item);
void NotifyItemInserted(IDesigner& designer, TPersistent& item);
void NotifyItemsModified(IDesigner& designer);
void NotifySelectionChanged(IDesigner& designer, const TDesignSelection& selection);
void NotifyDesignerClosed(IDesigner& designer, bool goingDormant);

} // namespace kx
