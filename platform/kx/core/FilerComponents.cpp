// SPDX-License-Identifier: MIT
// A reading's components: which it has made, and what becomes of them when it fails.

#include "kx/core/FilerSession.h"
#include "kx/core/KeptForm.h"

namespace kx {

namespace {

thread_local TGlobalLoading* CurrentLoading = nullptr;

} // namespace

// --- The reading of one form

TReader::TSession::TSession(TReader& reader)
    : Loaded(CurrentLoading ? *CurrentLoading->FLoaded : FOwnLoaded), Outer(CurrentSession()), FReader(reader) {
    TComponent::OnGone = &TReader::ComponentGone;
    CurrentSession() = this;
    FReader.FSession = this;
}

TReader::TSession::~TSession() {
    if (!FFinished) {
        Discard(0);
        for (size_t i = 0; i < Known.Size(); ++i) {
            if (TComponent* component = Known.At(i)) {
                component->FState = component->FState - TComponentState{csLoading, csFixups};
                if (FReader.KeepsUnknown()) {
                    component->FKept.reset();
                }
            }
        }
    }
    FReader.FSession = nullptr;
    CurrentSession() = Outer;
}

TReader::TSession*& TReader::TSession::CurrentSession() {
    thread_local TSession* current = nullptr;
    return current;
}

void TReader::TSession::Discard(size_t mark) {
    for (size_t i = Created.Size(); i-- > mark;) {
        if (TComponent* component = Created.At(i)) {
            component->Free();
        }
    }
    Created.Truncate(mark);
}

void TReader::TSession::Finish(TComponent* root) {
    if (&Loaded == &FOwnLoaded) {
        NotifyLoaded(Loaded);
        if (FReader.KeepsUnknown() && Known.Contains(root)) { // a handler may have freed it
            FReader.FNoteLoaded(*root);
        }
    } else if (FReader.KeepsUnknown()) {
        CurrentLoading->FKeeping->Add(*root);
        CurrentLoading->FNoteLoaded = FReader.FNoteLoaded;
    }
    FFinished = true;
}

void TReader::TSession::Forget(TComponent& component) {
    Known.Forget(component);
    Created.Forget(component);
    Loaded.Forget(component);
}

void TReader::ComponentGone(TComponent& component) {
    for (TSession* session = TSession::CurrentSession(); session; session = session->Outer) {
        session->Forget(component);
    }
    for (TGlobalLoading* loading = CurrentLoading; loading; loading = loading->FOuter) {
        loading->FLoaded->Forget(component);
        loading->FKeeping->Forget(component);
    }
}

void TReader::NotifyLoaded(detail::TLiveComponents& components) {
    for (size_t i = 0; i < components.Size(); ++i) {
        if (TComponent* component = components.At(i)) {
            component->Loaded();
        }
        if (TComponent* component = components.At(i)) { // it may have gone meanwhile
            component->FState.Exclude(csLoading);
        }
    }
}

TGlobalLoading::TGlobalLoading()
    : FOuter(CurrentLoading), FLoaded(std::make_unique<detail::TLiveComponents>()),
      FKeeping(std::make_unique<detail::TLiveComponents>()) {
    CurrentLoading = this;
}

TGlobalLoading::~TGlobalLoading() { CurrentLoading = FOuter; }

void TGlobalLoading::NotifyLoaded() {
    TReader::NotifyLoaded(*FLoaded);
    *FLoaded = {};
    for (size_t i = 0; i < FKeeping->Size(); ++i) {
        if (TComponent* root = FKeeping->At(i)) {
            FNoteLoaded(*root);
        }
    }
    *FKeeping = {};
}

// --- Components

std::string TReader::ErrorReading(std::string_view what, int64_t position, const Exception& error) const {
    if (dynamic_cast<const TFailure*>(&error)) {
        return Format("Error reading %s: %s", {what, error.Message()});
    }
    return Format("Error reading %s %s: %s", {what, Place(position), error.Message()});
}

TComponent* TReader::ReadRootComponent(TComponent* root) {
    if (FSession) {
        throw EInvalidOperation("The reader is reading a form already");
    }
    TSession session(*this);
    const detail::TRestore nesting(FNesting, 0);
    root = ReadRoot(root);
    ResolveFixups();
    session.Finish(root);
    GlobalFixupReferences();
    return root;
}

namespace {

/// A name that no other component has: neither one of the same owner nor a form that is found by its name.
std::string UniqueRootName(const TComponent& root, const std::string& name) {
    const auto isTaken = [&root](const std::string& candidate) {
        const TComponent* const sibling = root.Owner() ? root.Owner()->FindComponent(candidate) : nullptr;
        const TComponent* const global = FindGlobalComponent(candidate);
        return (sibling && sibling != &root) || (global && global != &root);
    };
    std::string unique = name;
    for (int i = 1; !unique.empty() && isTaken(unique); ++i) {
        unique = name + "_" + IntToStr(i);
    }
    return unique;
}

} // namespace

/// What an earlier form said of the components that are there, but for what they stand in for.
void TReader::ForgetKept(TComponent& component) {
    if (const auto before = std::exchange(component.FKept, nullptr); before && before->IsPlaceholder) {
        MakeKept(component).IsPlaceholder = true;
        component.FKept->ClassName = before->ClassName;
    }
    for (TComponent* inner : component.FComponents) {
        ForgetKept(*inner);
    }
}

TReader::THeader TReader::ReadHeader() {
    THeader header;
    header.Start = Position();
    ReadPrefix(header.Flags, header.ChildPos);
    header.ClassName = ReadStr();
    header.Name = ReadStr();
    return header;
}

TComponent* TReader::CreateRoot(const std::string& className) {
    const TClass* cls = KeepsUnknown() ? FindKnownClass(className) : &FindComponentClass(className);
    if (!cls) {
        FOnPlaceholder(*this, className, cls);
    }
    TComponent* const root = (cls ? *cls : FindClass(className)).Create(nullptr);
    FSession->Created.Add(*root);
    return root;
}

TComponent* TReader::ReadRoot(TComponent* root) {
    ReadSignature();
    Enter();
    const THeader header = ReadHeader();
    FRootName = header.Name;
    FRoot = root;
    try {
        root = root ? root : CreateRoot(header.ClassName);
        FRoot = root;
        FLookupRoot = root;
        FOwner = root;
        FParent = nullptr;
        FSession->Known.Add(*root);
        root->FState.Include(csLoading);
        if (!FRootName.empty()) {
            SetName(*root, UniqueRootName(*root, FRootName));
        }
    } catch (const EAbort&) {
        throw;
    } catch (const EClassNotFound& error) {
        throw EClassNotFound(ErrorReading(header.ClassName, header.Start, error));
    } catch (const Exception& error) {
        throw TFailure(ErrorReading(header.ClassName, header.Start, error), true);
    }
    const detail::TKept* const before = Kept(*root);
    const bool hasAncestor = before && before->InFile && !before->LacksAncestor;
    if (KeepsUnknown()) {
        ForgetKept(*root);
    }
    KeepHeader(*root, header);
    if (KeepsUnknown()) {
        root->FKept->LacksAncestor = header.Flags.Contains(ffInherited) && !hasAncestor;
    }
    ReadBody(*root);
    return root;
}

void TReader::ReadComponent() {
    const detail::TRestore nesting(FNesting);
    Enter();
    const THeader header = ReadHeader();
    const size_t mark = FSession->Created.Size();
    TComponent* component = nullptr;
    try {
        component = MakeComponent(header);
    } catch (const EAbort&) {
        throw;
    } catch (const Exception& error) {
        FSession->Discard(mark);
        const std::string message =
            ErrorReading(header.Name.empty() ? header.ClassName : header.Name, header.Start, error);
        if (Error(message)) {
            return SkipComponentBody();
        }
        if (dynamic_cast<const EClassNotFound*>(&error)) {
            throw EClassNotFound(message);
        }
        throw TFailure(message, true);
    }
    ReadBody(*component);
}

/// The component that a header speaks of: an ancestor's, or a new one.
TComponent* TReader::MakeComponent(const THeader& header) {
    TComponent* component = nullptr;
    if (!header.Flags.Contains(ffInherited)) {
        const TClass* const cls =
            KeepsUnknown() ? FindKnownClass(header.ClassName) : &FindComponentClass(header.ClassName);
        component = cls ? CreateComponent(*cls, header) : CreatePlaceholder(header);
    } else if ((component = FLookupRoot->FindComponent(header.Name)) != nullptr) {
        FSession->Known.Add(*component);
        component->FState.Include(csLoading);
        component->FState.Include(csAncestor);
    } else if (KeepsUnknown()) {
        component = CreatePlaceholder(header);
    } else {
        throw EComponentError(Format("Ancestor for '%s' not found", {header.Name}));
    }
    KeepHeader(*component, header);
    return component;
}

TComponent* TReader::CreateComponent(const TClass& cls, const THeader& header) {
    TComponent* const component = cls.Create(FOwner);
    FSession->Created.Add(*component);
    FSession->Known.Add(*component);
    component->FState.Include(csLoading);
    if (header.Flags.Contains(ffInline)) {
        component->FState.Include(csInline);
    }
    SetName(*component, header.Name);
    component->SetParentComponent(FParent);
    return component;
}

TComponent* TReader::CreatePlaceholder(const THeader& header) {
    const TClass* cls = &TComponent::StaticClass();
    FOnPlaceholder(*this, header.ClassName, cls);
    TComponent* const component = CreateComponent(*cls, header);
    MakeKept(*component).IsPlaceholder = true;
    return component;
}

void TReader::KeepHeader(TComponent& component, const THeader& header) {
    if (!KeepsUnknown() && !header.Flags.Contains(ffChildPos)) {
        return;
    }
    detail::TKept& kept = MakeKept(component);
    if (header.Flags.Contains(ffChildPos)) {
        kept.ChildPos = header.ChildPos;
    }
    if (KeepsUnknown()) {
        kept.InFile = true;
        kept.ClassName = header.ClassName == component.ClassName() ? std::string() : header.ClassName;
        kept.Name = header.Name;
        kept.IsInherited = header.Flags.Contains(ffInherited);
        kept.IsInline = header.Flags.Contains(ffInline);
        kept.Place = FPlace++;
        kept.Home = FParent;
        kept.HomeAlive = TAlive(FParent);
    }
}

void TReader::ReadBody(TComponent& component) {
    const int64_t start = Position();
    try {
        component.ReadState(*this);
    } catch (const EAbort&) {
        throw;
    } catch (const TFailure&) {
        throw;
    } catch (const EClassNotFound&) {
        throw;
    } catch (const Exception& error) {
        throw TFailure(ErrorReading(component.Name(), start, error), true);
    }
    FSession->Loaded.Add(component);
}

void TReader::ReadData(TComponent& component) {
    if (!FSession) {
        throw EInvalidOperation("ReadData belongs into ReadState");
    }
    const detail::TRestore owner(FOwner);
    const detail::TRestore parent(FParent);
    const detail::TRestore lookupRoot(FLookupRoot);
    {
        const detail::TRestore current(FComponent, &component);
        const detail::TRestore path(FPath, {});
        component.FState.Include(csReading);
        try {
            ReadProperties(component);
        } catch (...) {
            component.FState.Exclude(csReading);
            throw;
        }
        component.FState.Exclude(csReading);
    }
    if (component.FState.Contains(csInline)) {
        FLookupRoot = &component;
    }
    TComponent* const childOwner = component.GetChildOwner();
    FOwner = childOwner ? childOwner : FRoot;
    FParent = &component;
    ReadChildren(component);
}

/// The components inside, up to the end of their list, that included.
void TReader::ReadChildren(TComponent& component) {
    if (component.IsPlaceholder()) {
        const int64_t start = Position();
        while (!EndOfList()) {
            SkipComponent();
        }
        component.FKept->Children = ReadAgain(start);
    }
    while (!EndOfList()) {
        ReadComponent();
    }
    ReadListEnd();
}

void TReader::SkipComponent() {
    const detail::TRestore nesting(FNesting);
    Enter();
    ReadHeader();
    SkipComponentBody();
}

void TReader::SkipComponentBody() {
    SkipProperties();
    while (!EndOfList()) {
        SkipComponent();
    }
    ReadListEnd();
}

// --- Overridable steps

/// Null for a class that nobody knows.
const TClass* TReader::FindKnownClass(const std::string& className) {
    try {
        return &FindComponentClass(className);
    } catch (const EClassNotFound&) {
        return nullptr;
    }
}

const TClass& TReader::FindComponentClass(const std::string& className) {
    const TClass* cls = FRoot ? FRoot->ClassType().FindFieldClass(className) : nullptr;
    if (!cls) {
        cls = GetClass(className);
    }
    if (!cls) {
        FOnFindComponentClass(*this, className, cls);
    }
    if (!cls) {
        throw EClassNotFound(Format("Class %s not found", {className}));
    }
    return *cls;
}

void TReader::SetName(TComponent& component, std::string name) {
    FOnSetName(*this, &component, name);
    component.SetName(name);
}

TEventTargetPtr TReader::FindMethod(TComponent& root, const std::string& methodName) {
    const TMethodInfo* const method = root.ClassType().FindMethod(methodName);
    TEventTargetPtr target = method ? method->Bind(root) : nullptr;
    bool error = target == nullptr;
    FOnFindEvent(*this, methodName, target, error);
    if (error && KeepsUnknown()) {
        return std::make_shared<TMethodName>(methodName);
    }
    if (error) {
        throw EMethodNotFound(Format("Method %s not found", {methodName}));
    }
    return target;
}

bool TReader::Error(const std::string& message) {
    bool handled = false;
    FOnError(*this, message, handled);
    return handled;
}

void TComponent::ReadState(TReader& reader) { reader.ReadData(*this); }

} // namespace kx
