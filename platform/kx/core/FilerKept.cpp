// SPDX-License-Identifier: MIT
// Writes what has not changed since a form was read as it stood in the form.

#include "kx/core/Filer.h"

#include "kx/core/FilerTools.h"
#include "kx/core/KeptForm.h"
#include "kx/core/Streams.h"

#include <algorithm>
#include <map>
#include <set>

namespace kx {

namespace {

using detail::TKeptProperties;
using detail::TKeptProperty;

/// The last property of each name, by its name in upper case.
std::map<std::string, const TKeptProperty*> ByName(const TKeptProperties& properties) {
    std::map<std::string, const TKeptProperty*> result;
    for (const TKeptProperty& property : properties) {
        result[UpperCase(property.Name)] = &property;
    }
    return result;
}

/// Where among `all` the property stands that has its place in `order`: behind the nearest one that it follows there.
size_t PlaceOf(const TKeptProperty& property, const TKeptProperties& order,
               const std::vector<const TKeptProperty*>& all) {
    const auto isNamed = [](std::string_view name) {
        return [name](const auto& other) { return SameText(other->Name, name); };
    };
    auto at = std::ranges::find(order, property.Name, &TKeptProperty::Name);
    while (at != order.begin()) {
        --at;
        const auto before = std::find_if(all.rbegin(), all.rend(), isNamed(at->Name));
        if (before != all.rend()) {
            return static_cast<size_t>(before.base() - all.begin());
        }
    }
    return 0;
}

} // namespace

// Here and not among the other parts of the reader: those who do not keep what they do not know need no writer.
void TReader::SetKeepsUnknown(bool value) { FNoteLoaded = value ? &TWriter::NoteLoaded : nullptr; }

/// The properties of a component, or of an item of a collection.
void TWriter::WriteInstance(TPersistent& instance) {
    const detail::TKept* const kept = Kept(instance);
    if (FMode == TMode::Plain || (FMode == TMode::Kept && !(kept && kept->IsNoted))) {
        return WriteProperties(instance);
    }
    const TKeptProperties plain = TakeProperties(instance, FMode == TMode::Note ? FMode : TMode::Plain, nullptr);
    if (FMode == TMode::Kept) {
        return WriteUnchangedAsItStood(*kept, plain, TakeProperties(instance, FMode, FAncestor));
    }
    for (const TKeptProperty& property : plain) {
        WriteStr(property.Name);
        Write(property.Value.data(), property.Value.size());
    }
    detail::TKept& noted = MakeKept(instance);
    noted.Loaded = plain;
    noted.RootName = Kept(*FRoot)->Name;
    noted.IsNoted = true;
}

/// What `WriteProperties` writes, property by property.
TKeptProperties TWriter::TakeProperties(TPersistent& instance, TMode mode, TPersistent* ancestor) {
    const size_t begin = FBuffer.size();
    std::vector<size_t> starts;
    {
        const detail::TRestore newMode(FMode, mode);
        const detail::TRestore newAncestor(FAncestor, ancestor);
        const detail::TRestore<std::vector<size_t>*> newStarts(FPropertyStarts, &starts);
        WriteProperties(instance);
    }
    TKeptProperties properties;
    for (size_t i = 0; i < starts.size(); ++i) {
        const size_t end = i + 1 < starts.size() ? starts[i + 1] : FBuffer.size();
        const size_t nameEnd = starts[i] + 1 + static_cast<unsigned char>(FBuffer[starts[i]]);
        properties.push_back(
            {FBuffer.substr(starts[i] + 1, nameEnd - starts[i] - 1), FBuffer.substr(nameEnd, end - nameEnd)});
    }
    FBuffer.resize(begin);
    return properties;
}

/// `plain` holds the properties as they are now, `now` what differs from the ancestor. What has changed is written at
/// the place that it had in the file, or else behind what it follows in the order of its class.
void TWriter::WriteUnchangedAsItStood(const detail::TKept& kept, const TKeptProperties& plain,
                                      const TKeptProperties& now) {
    const auto loadedByName = ByName(kept.Loaded);
    const auto plainByName = ByName(plain);
    const auto nowByName = ByName(now);
    const detail::TKept* const root = FRoot ? Kept(*FRoot) : nullptr;
    // References of the file may name the form by its former name.
    const bool isRenamed = !root || root->Name != kept.RootName || root->LoadedName != FRoot->Name();
    const auto hasChanged = [&](const std::string& name) {
        const auto before = loadedByName.find(name);
        const auto after = plainByName.find(name);
        if (before == loadedByName.end() || after == plainByName.end()) {
            return (before == loadedByName.end()) != (after == plainByName.end());
        }
        return before->second->Value != after->second->Value;
    };

    std::vector<const TKeptProperty*> all;
    std::set<std::string> inFile;
    for (const TKeptProperty& stood : kept.Stood) {
        const std::string name = UpperCase(stood.Name);
        const bool isFirst = inFile.insert(name).second;
        const auto current = nowByName.find(name);
        const bool hasCurrent = current != nowByName.end();
        if (!hasChanged(name) && !(isRenamed && hasCurrent)) {
            all.push_back(&stood);
        } else if (isFirst && hasCurrent) {
            all.push_back(current->second);
        }
    }
    for (const TKeptProperty& property : now) {
        const std::string name = UpperCase(property.Name);
        if (inFile.count(name) == 0 && hasChanged(name)) {
            const TKeptProperties& order = plainByName.count(name) != 0 ? plain : now;
            all.insert(all.begin() + static_cast<std::ptrdiff_t>(PlaceOf(property, order, all)), &property);
        }
    }
    for (const TKeptProperty* property : all) {
        WriteKeptProperty(*property);
    }
}

namespace {

/// Copies parts of a form, and leaves the spelling of numbers out.
class TPlainCopy {
public:
    TPlainCopy(const std::string& bytes, TValueWriter& to)
        : FBytes(bytes), FStream(bytes.data(), bytes.size()), FFrom(FStream), FTo(to) {}

    void Value() {
        const TValueType type = FFrom.NextValue(); // goes beyond a spelling
        if (type != vaList && type != vaCollection) {
            return Copy([this] { FFrom.SkipValue(); });
        }
        Copy([this] { FFrom.ReadValue(); });
        while (!FFrom.EndOfList()) {
            if (type == vaCollection && FFrom.NextValue() == vaList) {
                Copy([this] { FFrom.ReadListBegin(); });
                Properties();
            } else { // of a list, or the position of an item
                Value();
            }
        }
        EndOfList();
    }

    void Components() {
        while (FFrom.Remaining() > 0) {
            Component();
        }
    }

private:
    template <class F> void Copy(F skip) {
        const auto start = static_cast<size_t>(FFrom.Position());
        skip();
        FTo.Write(FBytes.data() + start, static_cast<size_t>(FFrom.Position()) - start);
    }

    void EndOfList() {
        Copy([this] { FFrom.ReadListEnd(); });
    }

    void Properties() {
        while (!FFrom.EndOfList()) {
            Copy([this] { FFrom.ReadStr(); });
            Value();
        }
        EndOfList();
    }

    void Component() {
        Copy([this] {
            TFilerFlags flags;
            int childPos = -1;
            FFrom.ReadPrefix(flags, childPos);
            FFrom.ReadStr(); // the names of its class and its own
            FFrom.ReadStr();
        });
        Properties();
        while (!FFrom.EndOfList()) {
            Component();
        }
        EndOfList();
    }

    const std::string& FBytes;
    TStaticMemoryStream FStream;
    TReader FFrom;
    TValueWriter& FTo;
};

} // namespace

bool TWriter::IsWrittenAsItIs(const std::string& kept) const {
    return FNumbers == TFormNumbers::Spelled || FindChar(kept, static_cast<char>(vaSpelled)) == std::string::npos;
}

void TWriter::WriteKeptProperty(const TKeptProperty& property) {
    WriteStr(property.Name);
    if (IsWrittenAsItIs(property.Value)) {
        Write(property.Value.data(), property.Value.size());
    } else {
        TPlainCopy(property.Value, *this).Value();
    }
}

void TWriter::WriteKeptComponents(const std::string& components) {
    if (IsWrittenAsItIs(components)) {
        Write(components.data(), components.size());
    } else {
        TPlainCopy(components, *this).Components();
    }
}

} // namespace kx
