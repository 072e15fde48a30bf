// SPDX-License-Identifier: MIT
// The list of all pages.

#include "CaptionsPage.h"
#include "ColorPage.h"
#include "DockingPage.h"
#include "DropDownPage.h"
#include "FolderPage.h"
#include "ModelessPage.h"
#include "NavigationPage.h"
#include "OpenPage.h"
#include "PlacesPage.h"
#include "PlainPage.h"
#include "PrintPage.h"
#include "RecentPage.h"
#include "SavePage.h"
#include "ScriptsPage.h"

namespace kx::gallery {

namespace {

template <class T> TGalleryPage* New(TComponent* owner) { return NewForm<T>(owner); }

} // namespace

std::vector<TGalleryPage*> CreatePages(TComponent* owner) {
    return {
        New<TPlainPage>(owner),    New<TDockingPage>(owner), New<TCaptionsPage>(owner), New<TNavigationPage>(owner),
        New<TDropDownPage>(owner), New<TPlacesPage>(owner),  New<TOpenPage>(owner),     New<TSavePage>(owner),
        New<TRecentPage>(owner),   New<TFolderPage>(owner),  New<TColorPage>(owner),    New<TPrintPage>(owner),
        New<TModelessPage>(owner), New<TScriptsPage>(owner),
    };
}

} // namespace kx::gallery
