#include "clientdb/Overwritten.h"

#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere {
namespace {

/// A message has room for so many.
constexpr std::size_t MostInWords = 8;

} // namespace

Overwritten::Overwritten(const Box& of, std::string_view theirText, std::string_view ourText)
    : box(of.Spoken().empty() ? of.FullName() : of.Spoken()), theirs(Trim(theirText)), ours(Trim(ourText))
{
}

void TellOverwritten(Session& session, std::string_view title, const std::vector<Overwritten>& all)
{
    if (all.empty())
        return;
    std::string text = "Another desk has stored something else here meanwhile:\n";
    for (std::size_t place = 0; place < std::min(all.size(), MostInWords); ++place)
        text += fmt::format("\n{}: \"{}\" there, \"{}\" here", all[place].box, all[place].theirs, all[place].ours);
    if (all.size() > MostInWords)
        text += fmt::format("\nand {} more", all.size() - MostInWords);
    text += "\n\nWhat you have entered is stored. The change history keeps the other.";
    session.messages.Tell(title, text, Icon::Information);
}

} // namespace quillmere
