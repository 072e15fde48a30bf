// SPDX-License-Identifier: MIT
// Collections and their items by name.

#include "designer/CollectionPaths.h"

#include "designer/FormDesigner.h"

namespace kx::designer {

namespace {

void Visit(TPersistent& object, const std::string& path, const TCollectionProc& visit) {
    for (const TPropInfo* info : object.ClassType().Properties()) {
        auto* const part =
            info->Kind == TTypeKind::SubObject ? dynamic_cast<TPersistent*>(info->GetObj(object)) : nullptr;
        const std::string partPath = path + "." + info->Name;
        if (auto* const collection = dynamic_cast<TCollection*>(part)) {
            visit(partPath, *collection);
            for (int i = 0; i < collection->Count(); ++i) {
                Visit(*collection->GetItem(i), partPath + "[" + IntToStr(i) + "]", visit);
            }
        } else if (part) {
            Visit(*part, partPath, visit);
        }
    }
}

} // namespace

void ForEachCollection(TPersistent& object, const TCollectionProc& visit) { Visit(object, {}, visit); }

TCollectionPlace PlaceOf(const TFormDesigner& designer, const TCollection& collection) {
    TCollectionPlace place;
    for (TComponent* component : designer.AllComponents()) {
        ForEachCollection(*component, [&](const std::string& path, const TCollection& found) {
            if (&found == &collection) {
                place = {component, path};
            }
        });
    }
    return place;
}

std::string TitleOf(const TFormDesigner& designer, const TPersistent& object) {
    if (const auto* const component = dynamic_cast<const TComponent*>(&object)) {
        return component->Name() + ": " + component->FormClassName();
    }
    const auto* const item = dynamic_cast<const TCollectionItem*>(&object);
    if (!item || !item->Collection()) {
        return object.ClassName();
    }
    const TCollectionPlace place = PlaceOf(designer, *item->Collection());
    const std::string path = place.Component ? place.Component->Name() + place.Path : item->Collection()->ClassName();
    return path + "[" + IntToStr(item->Index()) + "]: " + item->ClassName();
}

} // namespace kx::designer
