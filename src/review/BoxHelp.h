#pragma once

#include <span>
#include <string>
#include <string_view>

namespace quillmere {
class Box;
class Screen;
} // namespace quillmere

namespace quillmere::review {

/// What a person in a box wants to know of it: where it goes on the return, and what belongs into it.
struct BoxHelp {
    std::string_view screen;       ///< names of all the screens that have the box, parted by blanks
    std::string_view box;          ///< given name; without the number of the car, loan, line of an address and the like
    std::string_view section = {}; ///< letter on the return, or the heading of a part that has none
    std::string_view number = {};  ///< of the box on the return; empty for one without
    bool class1A = false;          ///< the employer pays Class 1A contributions on what the line comes to
    bool worksOut = false;         ///< what is typed is overwritten when another box is left
    std::string_view takes = {};   ///< what it takes, in a few words that go on after "takes"
    std::string_view about = {};   ///< what belongs into it and the rule about it, in sentences
};

/// A row for every box that takes typing, screen by screen, in the order of the return.
std::span<const BoxHelp> AllBoxHelp();

/// The row of a box; nothing for one that takes no typing.
const BoxHelp* HelpOf(std::string_view screen, std::string_view box);

/// The line about a box for the status bar: its section, its number on the return, whether it counts for Class 1A, and
/// what it takes.
std::string LineOf(const BoxHelp& help);

/// What the row says about the box, with the figures of the year.
std::string AboutOf(const BoxHelp& help);

/// All of it for somebody who asks what the box is: its name, the line, and what belongs into it.
std::string WhatsThisOf(const BoxHelp& help, std::string_view spoken);
/// The same for any box that is typed in, ticked or worked out; empty for lists, buttons and pictures, which say what
/// they are.
std::string WhatsThisOf(const Screen& screen, const Box& box);

} // namespace quillmere::review
