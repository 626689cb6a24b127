#pragma once

#include "frame/Screen.h"
#include "review/EmployerReview.h"

#include <optional>
#include <string>
#include <vector>

namespace quillmere::review {

/// What of the open employee's form, or of all of his employer's, should be looked at before it is sent; Enter goes to
/// the box. It stands beside the form and is in nobody's way: an employer is looked through in pieces between the keys.
class CheckList : public Screen {
public:
    explicit CheckList(Session& session);

    bool Load() override;

private:
    /// The two things that may be checked, with the index of their option.
    enum Scope { ThisEmployee, ThisEmployer };

    void Start();
    void GoOn();
    void Show(const FindingList& newFindings, bool complete);
    void GoToChosen();

    Paper paper;
    std::optional<EmployerReview> review; ///< while an employer is looked through
    FindingList findings;                 ///< in the order of the list
};

} // namespace quillmere::review
