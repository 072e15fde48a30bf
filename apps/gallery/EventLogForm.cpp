// SPDX-License-Identifier: MIT
// The docked form that lists the events of a dialog.

#include "EventLogForm.h"

namespace kx::gallery {

const TClass& TEventLogForm::StaticClass() {
    static const TClassBuilder<TEventLogForm> cls("TEventLogForm", TForm::StaticClass(), [](auto& c) {
        c.Method("ClearButtonClick", &TEventLogForm::ClearButtonClick);
    });
    return cls.Class();
}

TEventLogForm::TEventLogForm(TComponent* owner) : TForm(owner) { InitForm(*this, StaticClass()); }

void TEventLogForm::Add(const std::string& event) {
    EventList->SetTopIndex(EventList->Items().Add(event)); // the latest stays in sight
}

void TEventLogForm::Clear() { EventList->Items().Clear(); }

void TEventLogForm::Answer(const std::string& event, const TCheckBox& veto, bool& allow) {
    allow = !veto.Checked();
    Add(allow ? event : event + Refused);
}

void TEventLogForm::ClearButtonClick(TObject*) { Clear(); }

} // namespace kx::gallery
