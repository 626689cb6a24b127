#pragma once

#include "frame/Screen.h"
#include "review/EmployerReview.h"

#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace quillmere::review {

/// What of the open employee's form, of all of his employer's, or of everybody's in the folder should be looked at
/// before it is sent; Enter goes to the box. It stands beside the form and is in nobody's way: employers are looked
/// through in pieces between the keys.
class CheckList : public Screen {
public:
    explicit CheckList(Session& session);

    bool Load() override;

private:
    /// What may be checked, with the index of its option.
    enum Scope { ThisEmployee, ThisEmployer, EveryEmployer };
    /// A finding and its employer, one name for all of his.
    struct Found {
        std::shared_ptr<const std::string> employer;
        Finding finding;
    };

    void Start();
    void GoOn();
    void Take(const std::string& employer, const FindingList& findings);
    void Show();
    std::string LeadingTo(const Found& one) const;
    void GoToChosen();

    Paper paper;
    std::deque<std::string> waiting;      ///< employers that are yet to be looked through, with the one in hand
    std::optional<EmployerReview> review; ///< of the one in hand
    std::deque<Found> found;              ///< in the order of the list
};

} // namespace quillmere::review
