#pragma once

#include "frame/PrintedTable.h"
#include "frame/Screen.h"
#include "review/Explaining.h"

namespace quillmere::review {

/// How a worked-out box has come to what it reads, step by step with the employee's own figures, and where HMRC's own
/// rule gives another figure. It stands beside the form, or in front of the notepad from which it was asked for.
class Explanation : public Screen {
public:
    explicit Explanation(Session& session);

    std::string Subject() const override { return subject; }

    /// Tells of a box, and whose it is.
    void Tell(const BoxExplained& told, std::string_view subject);

private:
    void ShowWords();
    std::string AsText() const;
    PrintedTable AsTable() const;

    BoxExplained told;
    std::string subject;
};

/// Opens the window for a box, or says in it that nothing is worked out there.
void ShowExplanation(Session& session, const Screen& screen, const Box& box);
/// The same for the box in use on the page in front.
void ExplainBoxInUse(Session& session);

} // namespace quillmere::review
