#pragma once

#include "ui/Forms.h"
#include "ui/StdCtrls.h"

#include <string>

namespace kx::gallery {

/// The events of a dialog as they happen, docked to its right.
class TEventLogForm : public TForm {
    KX_CLASS()

    explicit TEventLogForm(TComponent* owner = nullptr);

    void Add(const std::string& event);
    void Clear();
    bool Contains(const std::string& event) const { return EventList->Items().IndexOf(event) >= 0; }
    const TStrings& Events() const { return EventList->Items(); }

    void ClearButtonClick(TObject* sender);

private:
    TListBox* EventList = nullptr;
};

inline TEventLogForm* EventLogForm = nullptr;

} // namespace kx::gallery
