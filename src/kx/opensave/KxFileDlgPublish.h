// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/TypInfo.h"
#include "kx/frame/KxCommonDialog.h"
#include "kx/opensave/KxFileDlgControls.h"

// What the library's file dialogs publish alike, for their property tables, in the order that they share. T is the
// dialog's class.

namespace kx {

template <class T> void PublishTitle(TClassBuilder<T>& c) {
    c.Property("Title", &T::Title, &T::SetTitle);
    c.Property("OnShow", &T::OnShow, &T::SetOnShow);
}

template <class T> void PublishParams(TClassBuilder<T>& c) {
    c.SubObject("CustDlgParams", &T::CustDlgParams, &T::SetCustDlgParams);
    c.SubObject("DlgItemsCaptions", &T::DlgItemsCaptions, nullptr);
    c.Property("VisibleControls", &T::VisibleControls, &T::SetVisibleControls).Default = KxAllOpenDlgControls.Bits();
}

template <class T> void PublishNavigation(TClassBuilder<T>& c) {
    c.Property("OnDesktopNavigate", &T::OnDesktopNavigate, &T::SetOnDesktopNavigate);
    c.Property("OnDesktopNavigating", &T::OnDesktopNavigating, &T::SetOnDesktopNavigating);
    c.Property("OnUpLevelNavigate", &T::OnUpLevelNavigate, &T::SetOnUpLevelNavigate);
    c.Property("OnUpLevelNavigating", &T::OnUpLevelNavigating, &T::SetOnUpLevelNavigating);
    c.Property("OnLastFolderNavigate", &T::OnLastFolderNavigate, &T::SetOnLastFolderNavigate);
    c.Property("OnLastFolderNavigating", &T::OnLastFolderNavigating, &T::SetOnLastFolderNavigating);
}

template <class T> void PublishInput(TClassBuilder<T>& c) {
    c.Property("OnFolderCreating", &T::OnFolderCreating, &T::SetOnFolderCreating);
    c.Property("OnFilenameChange", &T::OnFilenameChange, &T::SetOnFilenameChange);
    c.Property("OnFilenameEntering", &T::OnFilenameEntering, &T::SetOnFilenameEntering);
    c.Property("OnEventHook", &T::OnEventHook, &T::SetOnEventHook);
    c.Property("OnEventHooking", &T::OnEventHooking, &T::SetOnEventHooking);
}

template <class T> void PublishMemory(TClassBuilder<T>& c) {
    c.Property("RememberKey", &T::RememberKey, &T::SetRememberKey);
}

/// Of the full dialogs: what the user selects with, and the parts of the dialog.
template <class T> void PublishSelection(TClassBuilder<T>& c) {
    c.Property("SelectionType", &T::SelectionType, &T::SetSelectionType).Default = stStandard;
    c.Property("SelectionStyle", &T::SelectionStyle, nullptr);
    PublishParams(c);
    c.SubObject("ListViewStyles", &T::ListViewStyles, nullptr);
    c.SubObject("PlacesBar", &T::PlacesBar, nullptr);
    c.SubObject("ExtFilter", &T::ExtFilter, nullptr);
    c.SubObject("ToolBar", &T::ToolBar, nullptr);
}

} // namespace kx
