// SPDX-License-Identifier: MIT
#pragma once

#include "kx/ui/forms/Forms.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Windows.h"

#include <string>

namespace kx::gallery {

/// The events of a dialog as they happen, docked to its right.
class TEventLogForm : public TForm {
    KX_CLASS()

    explicit TEventLogForm(TComponent* owner = nullptr);

    void Add(const std::string& event);
    void Clear();
    /// Answers a query: refused when the box is checked. Both the question and the refusal are told.
    void Answer(const std::string& event, const TCheckBox& veto, bool& allow);
    /// The query has been refused.
    bool HasRefused(const std::string& event) const { return Contains(event + Refused); }
    bool Contains(const std::string& event) const { return EventList->Items().IndexOf(event) >= 0; }
    const TStrings& Events() const { return EventList->Items(); }

    void ClearButtonClick(TObject* sender);

private:
    static constexpr const char* Refused = ": refused";

    KX_FIELDS(TEventLogForm, (TListBox, EventList))
};

/// The message of a dialog window by which the user begins to move it.
inline bool IsMoveCommand(const TMessage& message) {
    return message.Msg == WM_SYSCOMMAND && (message.WParam & 0xFFF0) == SC_MOVE;
}

inline TEventLogForm* EventLogForm = nullptr;

} // namespace kx::gallery
