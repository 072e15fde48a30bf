#include "CaptionsPage.h"
#include "DockingPage.h"
#include "DropDownPage.h"
#include "NavigationPage.h"
#include "PlacesPage.h"
#include "PlainPage.h"

namespace kx::gallery {

namespace {

template <class T> TGalleryPage* New(TComponent* owner) { return NewForm<T>(owner); }

} // namespace

std::vector<TGalleryPage*> CreatePages(TComponent* owner) {
    return {
        New<TPlainPage>(owner),
        New<TDockingPage>(owner),
        New<TCaptionsPage>(owner),
        New<TNavigationPage>(owner),
        New<TDropDownPage>(owner),
        New<TPlacesPage>(owner),
    };
}

} // namespace kx::gallery
