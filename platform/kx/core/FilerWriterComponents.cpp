// SPDX-License-Identifier: MIT
// Writes components, one inside the other, and notes how those that were just read would be written.

#include "kx/core/Filer.h"

#include "kx/core/FilerTools.h"
#include "kx/core/KeptForm.h"

#include <algorithm>

namespace kx {

// --- Forms

void TWriter::WriteDescendent(TComponent& root, TComponent* ancestor) {
    const detail::TKept* const kept = Kept(root);
    if (FMode == TMode::Plain && kept && kept->LacksAncestor) {
        throw EWriteError(Format("The form from which %s inherits is not there", {root.Name()}));
    }
    const size_t start = FBuffer.size();
    const detail::TRestore nesting(FNesting, 0);
    FRoot = &root;
    FLookupRoot = &root;
    FRootAncestor = ancestor;
    FLookupAncestor = ancestor;
    FAncestor = ancestor;
    FIsInherited = ancestor != nullptr;
    FStrays.clear();
    FStraysIn.clear();
    FindStrays(root);
    try {
        WriteSignature();
        Enter();
        root.WriteState(*this);
    } catch (...) {
        FBuffer.resize(start);
        throw;
    }
    FlushBuffer();
}

// --- Components

void TWriter::WriteComponent(TComponent& component) {
    const detail::TRestore nesting(FNesting);
    Enter();
    TComponent* ancestor = FLookupAncestor ? FLookupAncestor->FindComponent(component.Name()) : nullptr;
    // What an inline component owns is there as soon as the component itself is.
    const bool isInside = FLookupRoot != FRoot && component.Owner() == FLookupRoot;
    const detail::TRestore isInherited(FIsInherited, FLookupAncestor ? ancestor != nullptr : isInside);
    if (!ancestor && component.FState.Contains(csInline)) {
        FOnFindAncestor(*this, &component, ancestor);
    }
    const detail::TRestore<TPersistent*> ancestorObject(FAncestor, ancestor);
    component.WriteState(*this);
}

TFilerFlags TWriter::HeaderFlags(const TComponent& component, const detail::TKept* kept) const {
    TFilerFlags flags;
    // Nothing can make an ancestor's component of what stands in for it.
    const bool staysInherited = FMode != TMode::Plain || component.IsPlaceholder();
    if (FIsInherited || (kept && kept->IsInherited && staysInherited)) {
        flags.Include(ffInherited);
    } else if ((&component != FRoot && component.FState.Contains(csInline)) || (kept && kept->IsInline)) {
        flags.Include(ffInline);
    }
    if (kept && kept->ChildPos) {
        flags.Include(ffChildPos);
    }
    return flags;
}

void TWriter::WriteHeader(const TComponent& component, const detail::TKept* kept) {
    const std::string& className = component.FormClassName();
    if (className.size() > MaxFormClassName) {
        throw EWriteError(Format("The class name %s is too long for a form", {className}));
    }
    WritePrefix(HeaderFlags(component, kept), kept && kept->ChildPos ? *kept->ChildPos : -1);
    WriteStr(className);
    const bool hasItsName = kept && kept->InFile && kept->IsNoted && component.Name() == kept->LoadedName;
    WriteStr(hasItsName ? kept->Name : component.Name());
}

void TWriter::WriteData(TComponent& component) {
    const size_t start = FBuffer.size();
    const bool isRoot = &component == FRoot;
    const detail::TKept* const kept = Kept(component);
    WriteHeader(component, kept);

    const size_t content = FBuffer.size();
    component.FState.Include(csWriting);
    try {
        const detail::TRestore prefix(FPrefix, {});
        WriteInstance(component);
    } catch (...) {
        component.FState.Exclude(csWriting);
        throw;
    }
    component.FState.Exclude(csWriting);
    WriteListEnd();

    const bool isRepeated = FIsInherited && FLookupAncestor;
    const detail::TRestore lookupRoot(FLookupRoot);
    const detail::TRestore lookupAncestor(FLookupAncestor);
    EnterInline(component);
    if (kept) {
        WriteKeptComponents(kept->Children);
    }
    for (TComponent* child : ChildrenOf(component)) {
        WriteComponent(*child);
    }
    WriteListEnd();

    const bool isEmpty = FBuffer.size() == content + 2; // just the two ends of lists
    if (isEmpty && !isRoot && (FMode != TMode::Plain && kept && kept->IsNoted ? !kept->InFile : isRepeated)) {
        FBuffer.resize(start);
    }
}

/// Inside an inline component names are its own; the caller restores the lookup.
void TWriter::EnterInline(TComponent& component) {
    if (&component != FRoot && component.FState.Contains(csInline)) {
        FLookupRoot = &component;
        FLookupAncestor = dynamic_cast<TComponent*>(FAncestor);
    }
}

/// What a form file holds inside the component: what the form owns, and in an inline component also what that one owns.
/// As long as nobody has changed the order in which they were read, it is that of the file.
std::vector<TComponent*> TWriter::ChildrenOf(TComponent& component) {
    std::vector<TComponent*> children;
    std::unordered_set<TComponent*> known;
    const auto add = [&](TComponent* child) {
        if (known.insert(child).second) {
            children.push_back(child);
        }
    };
    component.GetChildren(add, FLookupRoot);
    if (FLookupRoot != FRoot) {
        component.GetChildren(add, FRoot);
    }
    std::erase_if(children, [this](TComponent* child) { return FStrays.contains(child); });
    if (const auto strays = FStraysIn.find(&component); strays != FStraysIn.end()) {
        children.insert(children.end(), strays->second.begin(), strays->second.end());
    }
    if (FMode != TMode::Kept) {
        return children;
    }
    std::vector<size_t> slots;
    std::vector<TComponent*> read;
    for (size_t i = 0; i < children.size(); ++i) {
        const detail::TKept* const kept = Kept(*children[i]);
        if (kept && kept->IsNoted && kept->InFile && kept->Parent == &component) {
            slots.push_back(i);
            read.push_back(children[i]);
        }
    }
    const auto loadedPlace = [](TComponent* child) { return Kept(*child)->LoadedPlace; };
    const auto place = [](TComponent* child) { return Kept(*child)->Place; };
    if (std::ranges::is_sorted(read, {}, loadedPlace)) {
        std::ranges::stable_sort(read, {}, place);
        for (size_t i = 0; i < slots.size(); ++i) {
            children[slots[i]] = read[i];
        }
    }
    return children;
}

/// Components that stood inside one that does not hold them. The form holds them, but they are written where they
/// stood.
void TWriter::FindStrays(TComponent& component) {
    for (TComponent* inner : component.FComponents) {
        const detail::TKept* const kept = Kept(*inner);
        if (kept && kept->Home && kept->Home != FRoot && *kept->HomeAlive && !inner->HasParent()) {
            FStrays.insert(inner);
            FStraysIn[kept->Home].push_back(inner);
        }
        FindStrays(*inner);
    }
}

// --- Just after the reading

void TWriter::NoteLoaded(TComponent& root) {
    TMemoryStream nowhere; // nothing is flushed
    TWriter writer(nowhere);
    writer.FRoot = &root;
    writer.FLookupRoot = &root;
    writer.FMode = TMode::Note;
    writer.FindStrays(root);
    writer.NoteComponent(root);
}

void TWriter::NoteComponent(TComponent& component) {
    const detail::TRestore nesting(FNesting);
    Enter();
    WriteInstance(component);
    FBuffer.clear();
    detail::TKept& kept = MakeKept(component);
    kept.LoadedName = component.Name();

    const detail::TRestore lookupRoot(FLookupRoot);
    EnterInline(component);
    int place = 0;
    for (TComponent* child : ChildrenOf(component)) {
        NoteComponent(*child);
        detail::TKept& keptChild = *Kept(*child);
        keptChild.Parent = &component;
        keptChild.LoadedPlace = place++;
    }
}

} // namespace kx
