// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/dialogs/Dialogs.h"
#include "kx/ui/forms/Forms.h"

#include <string>
#include <vector>

namespace kx::gallery {

class TTour;

/// A page of the gallery. Its form file gives it its title, the caption, and its description, the hint.
class TGalleryPage : public TForm {
    KX_CLASS()

    explicit TGalleryPage(TComponent* owner = nullptr);

    /// Adds the steps that show the page without a user.
    virtual void AddTour(TTour& tour) = 0;

    /// Receives the text that tells what a dialog returned.
    using TReportEvent = TEvent<void(const std::string& text)>;
    void SetOnReport(TReportEvent value) { FOnReport = std::move(value); }

protected:
    void Report(const std::string& text) const { FOnReport(text); }
    /// Shows the dialog in the folder of the samples and reports what came back.
    void RunDialog(TOpenDialog& dialog, const std::string& fileName = {});
    /// Path of the file that the last dialog returned; empty when it was cancelled.
    const std::string& LastResult() const { return FLastResult; }

private:
    TReportEvent FOnReport;
    std::string FLastResult;
};

/// All pages, in the order of the navigation list. The owner frees them.
std::vector<TGalleryPage*> CreatePages(TComponent* owner);

} // namespace kx::gallery
