// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Filer.h"
#include "kx/core/FilerTools.h"
#include "kx/core/TypInfo.h"

#include <optional>

// What the units of the reader share among themselves.

namespace kx {

/// An error that names its place already. Reported: OnError was asked and did not handle it.
class TReader::TFailure : public EReadError {
public:
    TFailure(std::string message, bool reported) : EReadError(std::move(message)), Reported(reported) {}
    const bool Reported;
};

/// What stands in front of a component's properties.
struct TReader::THeader {
    int64_t Start = 0;
    TFilerFlags Flags;
    int ChildPos = -1;
    std::string ClassName;
    std::string Name;
};

/// A step from an object to one of its parts. Parts are found again by their steps rather than kept by pointers: a
/// later value of the file may have replaced them.
struct TReader::TPathStep {
    const TPropInfo* Property = nullptr; ///< To a sub-object.
    TCollection* Collection = nullptr;   ///< To an item of this collection, which no property led to...
    int Index = -1;                      ///< ...or of the collection that the steps before led to.
    std::optional<TAlive> Alive;         ///< Of `Collection`: a later value may free it.
};

/// A reference that is set when all components are there.
struct TReader::TFixup {
    TComponent* Component;
    TComponent* LookupRoot;
    std::vector<TPathStep> Path;
    const TPropInfo* Property;
    std::string Name; ///< Empty for nil.
    int64_t Position;

    TObject* FindOwner() const;
};

/// Restores the path on which a property is being read.
class TReader::TPathScope {
public:
    explicit TPathScope(TReader& reader) : FPath(reader.FPath), FSize(FPath.size()) {}
    TPathScope(const TPathScope&) = delete;
    TPathScope& operator=(const TPathScope&) = delete;
    ~TPathScope() { FPath.resize(FSize); }

private:
    std::vector<TPathStep>& FPath;
    size_t FSize;
};

/// The reading of one form. Unless it comes to its end, the components that it created are freed again.
class TReader::TSession {
public:
    explicit TSession(TReader& reader);
    TSession(const TSession&) = delete;
    TSession& operator=(const TSession&) = delete;
    ~TSession();

    void Discard(size_t mark);     ///< Frees what was created from `mark` on, the latest first.
    void Finish(TComponent* root); ///< Runs `Loaded`, or leaves it to the outermost TGlobalLoading.
    void Forget(TComponent& component);
    static TSession*& CurrentSession(); ///< The innermost one of this thread.

    detail::TLiveComponents Known; ///< Everything that is being read.
    detail::TLiveComponents Created;
    std::vector<TFixup> Fixups;
    detail::TLiveComponents& Loaded; ///< In the order of completion.
    TSession* const Outer;

private:
    TReader& FReader;
    detail::TLiveComponents FOwnLoaded;
    bool FFinished = false;
};

} // namespace kx
