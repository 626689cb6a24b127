#pragma once

#include "frame/Session.h"
#include "review/BoxHelp.h"

#include <span>
#include <string>

namespace quillmere::review {

/// What the status bar says while the user goes from box to box: a line about the box in use, and what has just become
/// of what was typed. No box is emptied or changed by its rule without a word here.
class StatusTalk : public Onlooker {
public:
    explicit StatusTalk(Session& session) : session(session) {}

    void Entered(const Screen& screen, const Box& box) override;
    void Typed() override { TellOfBoxInUse(); }
    void Left(const Screen& screen, const Box& left, std::span<const Rewritten> rewritten) override;
    void Closed() override { TellOfBoxInUse(); }
    void Stored() override;

private:
    bool StillSays(std::string_view words) const;
    std::string LineNow(const Screen& screen, const Box& box) const;
    void TellOfBoxInUse();

    Session& session;
    std::string saidOfBox; ///< about the box that was left last
};

/// The line about a box of a screen; empty for one that takes no typing.
std::string LineOf(const Screen& screen, const Box& box);

/// What has become of an entry when a box was left; empty if it means the same as before, or is a figure that is worked
/// out at every leaving.
std::string WordsOf(const Screen& screen, const Box& left, const Rewritten& rewritten);

/// True if two texts of a box say the same: in other letters, in another form of date, or as another form of amount.
bool MeanTheSame(std::string_view before, std::string_view after);

} // namespace quillmere::review
