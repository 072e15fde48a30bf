// SPDX-License-Identifier: MIT
// Classes and what they publish.

#include "kx/core/Objects.h"

#include "kx/core/Barrier.h"
#include "kx/core/Lasting.h"
#include "kx/core/TypInfo.h"

#include <algorithm>

namespace kx {

TClass::TClass(std::string_view name, const TClass* parent) : FName(name), FParent(parent) {
    detail::NoteLasting(this, [](void* cls) { delete static_cast<TClass*>(cls); });
}
TClass::~TClass() = default;

const TClass& TObject::StaticClass() {
    static const TClass& cls = *new TClass("TObject", nullptr); // it lasts, as those of all other classes
    return cls;
}

void TObject::Free() {
    Guarded([this] { BeforeDestruction(); });
    delete this;
}

const std::string& TObject::ClassName() const { return ClassType().Name(); }

bool TObject::InheritsFrom(const TClass& ancestor) const { return ClassType().InheritsFrom(ancestor); }

bool TClass::InheritsFrom(const TClass& ancestor) const {
    for (const TClass* cls = this; cls; cls = cls->FParent) {
        if (cls == &ancestor) {
            return true;
        }
    }
    return false;
}

TPropInfo& TClass::AddProperty(std::string_view name, const detail::TPropShape& shape, detail::TMemberPointer get,
                               detail::TMemberPointer set) {
    TPropInfo& property = *FOwnProperties.emplace_back(new TPropInfo(name, shape, get, set));
    property.Introduced = this;
    return property;
}

void TClass::Finish() {
    if (FParent) {
        FAllProperties = FParent->FAllProperties;
        FPropertyByName = FParent->FPropertyByName;
    }
    for (const auto& own : FOwnProperties) {
        const TPropInfo*& known = FPropertyByName[UpperCase(own->Name)];
        if (known) {
            own->Introduced = known->Introduced;
            std::replace(FAllProperties.begin(), FAllProperties.end(), known, static_cast<const TPropInfo*>(own.get()));
        } else {
            FAllProperties.push_back(own.get());
        }
        known = own.get();
    }
}

const TPropInfo* TClass::FindProperty(std::string_view name) const {
    const auto found = FPropertyByName.find(UpperCase(name));
    return found == FPropertyByName.end() ? nullptr : found->second;
}

const TMethodInfo* TClass::FindMethod(std::string_view name) const {
    for (const TClass* cls = this; cls; cls = cls->FParent) {
        for (const TMethodInfo& method : cls->FMethods) {
            if (SameText(method.Name, name)) {
                return &method;
            }
        }
    }
    return nullptr;
}

const TFieldInfo* TClass::FindField(std::string_view name) const {
    for (const TClass* cls = this; cls; cls = cls->FParent) {
        for (const TFieldInfo& field : cls->FFields) {
            if (SameText(field.Name, name)) {
                return &field;
            }
        }
    }
    return nullptr;
}

const TClass* TClass::FindFieldClass(std::string_view className) const {
    for (const TClass* cls = this; cls; cls = cls->FParent) {
        for (const TFieldInfo& field : cls->FFields) {
            if (SameText(field.Class().Name(), className)) {
                return &field.Class();
            }
        }
    }
    return nullptr;
}

TComponent* TClass::Create(TComponent* owner) const {
    if (!FCreate) {
        throw EInvalidOperation(Format("Class %s cannot be created by name", {FName}));
    }
    return FCreate(owner);
}

} // namespace kx
