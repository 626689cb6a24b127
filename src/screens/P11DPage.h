#pragma once

#include "clientdb/BoundScreen.h"
#include "frame/Amount.h"

#include <string_view>
#include <vector>

namespace quillmere {

/// Cost, what was made good, and the cash equivalent that follows from them: three boxes of one section.
struct AmountTriple {
    std::string_view cost, madeGood, cashEquivalent;
};

/// The cash equivalent of a section: the cost less what was made good, not below zero.
Amount NetOf(Amount cost, Amount madeGood);

/// Rewrites a section's three boxes: the cash equivalent is the cost less what was made good, not below zero.
void RewriteTriple(Screen& screen, const AmountTriple& triple);

/// Puts an amount box in amount form; an empty one stays empty, a zero goes blank.
void RewriteAmount(Box& box);

/// What the two sides of the form have in common: boxes bound to the record of the open employee, and amounts that are
/// rewritten when they are left. There is no Save: what is typed is stored when the cursor moves or the page closes.
class P11DPage : public BoundScreen {
public:
    /// `refreshErrorTitle` is that of the message when the record is not found again after printing.
    P11DPage(Session& session, std::string_view name, std::string_view caption, std::string_view refreshErrorTitle);

    std::string_view RefreshErrorTitle() const { return refreshErrorTitle; }
    /// The sections of the page whose cash equivalent follows from two other boxes.
    const std::vector<AmountTriple>& OwnTriples() const { return triples; }

protected:
    /// Rewrites the triple when any of its boxes is left.
    void OnLeaveTriple(const AmountTriple& triple);
    /// Rewrites the box when it is left.
    void OnLeaveAmount(std::string_view boxName);
    /// A picture or label that opens a screen, once the page is stored. If the store fails the page stays.
    void OpensScreen(std::string_view picture, std::string_view screen);
    /// Goes to the other side of the form, which opens with what it showed before if the employee's record is gone. If
    /// the store fails the page stays.
    void TurnTo(std::string_view page, std::string_view errorTitle);

private:
    std::string_view refreshErrorTitle;
    std::vector<AmountTriple> triples;
};

} // namespace quillmere
