// SPDX-License-Identifier: MIT
// Sets published properties to values of the binary form.

#include "designer/PropertyValues.h"

#include "kx/core/Filer.h"

namespace kx::designer {

namespace {

/// Sets the property from the value that the reader stands before; null: there is none.
bool Set(TComponent& root, TPersistent& instance, const TPropInfo& info, TReader* reader) {
    if (info.IsReadOnly()) {
        return false;
    }
    if (info.IsOrdinal()) {
        const std::optional<int64_t> ordinal = reader ? reader->ReadOrdinal(info) : info.Default;
        if (ordinal) {
            info.SetOrd(instance, *ordinal);
        }
        return ordinal.has_value();
    }
    switch (info.Kind) {
    case TTypeKind::String: info.SetStr(instance, reader ? reader->ReadString() : std::string()); return true;
    case TTypeKind::Float: info.SetFloat(instance, reader ? reader->ReadFloat() : 0); return true;
    case TTypeKind::Reference:
    case TTypeKind::Interface: {
        const std::string name = reader ? reader->ReadIdent() : "nil";
        TComponent* const target = SameText(name, root.Name()) ? &root : root.FindComponent(name);
        if (!target && name != "nil") {
            return false; // of another form, perhaps of one that is still to come
        }
        info.SetObj(instance, target);
        return true;
    }
    case TTypeKind::Event:
        info.SetEvent(instance, reader ? std::make_shared<TMethodName>(reader->ReadIdent()) : nullptr);
        return true;
    default: return false;
    }
}

} // namespace

bool SetPropertyValue(TComponent& root, TPersistent& instance, const std::string& path,
                      const std::optional<std::string>& value) {
    TPersistent* object = &instance;
    size_t start = 0;
    for (size_t dot = path.find('.'); dot != std::string::npos; dot = path.find('.', start)) {
        const TPropInfo* const part = object->ClassType().FindProperty(path.substr(start, dot - start));
        object =
            part && part->Kind == TTypeKind::SubObject ? dynamic_cast<TPersistent*>(part->GetObj(*object)) : nullptr;
        if (!object) {
            return false;
        }
        start = dot + 1;
    }
    const TPropInfo* const info = object->ClassType().FindProperty(path.substr(start));
    if (!info) {
        return false;
    }
    if (!value) {
        return Set(root, *object, *info, nullptr);
    }
    TStaticMemoryStream stream(value->data(), value->size());
    TReader reader(stream);
    return Set(root, *object, *info, &reader);
}

} // namespace kx::designer
