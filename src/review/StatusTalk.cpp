#include "review/StatusTalk.h"

#include "frame/Amount.h"
#include "frame/CloseAll.h"
#include "frame/Dates.h"
#include "frame/Text.h"
#include "review/Paper.h"

#include <algorithm>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

/// An amount with nothing about it that reading would pass over.
bool IsPlainAmount(std::string_view text)
{
    const bool negative = text.starts_with('-');
    const bool parenthesised = text.starts_with('(') && text.ends_with(')');
    if (negative)
        text.remove_prefix(1);
    if (parenthesised)
        text = text.substr(1, text.size() - 2);
    return std::ranges::any_of(text, [](char c) { return c >= '0' && c <= '9'; }) &&
           std::ranges::all_of(text, [](char c) { return (c >= '0' && c <= '9') || c == ',' || c == '.'; }) &&
           std::ranges::count(text, '.') <= 1;
}

std::string WhyEmptied(std::string_view entry, const Box& box, const BoxHelp* help)
{
    if (box.Filter() == DateKeyFilter && !IsDateText(entry))
        return fmt::format("Emptied: {} is not a date", entry);
    if (IsPlainAmount(entry) && ReadAmount(entry).IsZero())
        return fmt::format("Emptied: {} is left blank", entry);
    if (help == nullptr)
        return fmt::format("Emptied: {}", entry);
    return fmt::format("Emptied: {}; the box takes {}", entry, help->takes);
}

} // namespace

bool MeanTheSame(std::string_view before, std::string_view after)
{
    const std::string one = UpperCase(Trim(before)), other = UpperCase(Trim(after));
    if (one == other)
        return true;
    if (IsPlainAmount(one) && IsPlainAmount(other))
        return ReadAmount(one) == ReadAmount(other);
    const auto oneDay = ReadDate(one), otherDay = ReadDate(other);
    return oneDay && oneDay == otherDay;
}

std::string LineOf(const Screen& screen, const Box& box)
{
    if (box.Kind() != BoxKind::Text)
        return {};
    const BoxHelp* help = HelpOf(screen.Name(), box.Name());
    if (box.ReadOnly())
        return "Cannot be typed in";
    return help == nullptr ? std::string() : LineOf(*help);
}

std::string WordsOf(const Screen& screen, const Box& left, const Rewritten& rewritten)
{
    const Box& box = *rewritten.box;
    const bool isLeft = &box == &left;
    if (box.Kind() == BoxKind::Tick)
        return fmt::format("{}: {}", box.Ticked() ? "Ticked" : "Cleared", box.Spoken());
    const std::string before = Trim(rewritten.before), after = Trim(box.Stored());
    const BoxHelp* help = HelpOf(screen.Name(), box.Name());
    const bool isResult = box.IsComputed() || (help != nullptr && help->worksOut);
    if (before.empty() || (isResult && !isLeft) || MeanTheSame(before, after))
        return {};
    if (isLeft)
        return after.empty() ? WhyEmptied(before, box, help) : fmt::format("Changed: {} to {}", before, after);
    return after.empty() ? fmt::format("Emptied too: {} ({})", before, box.Spoken())
                         : fmt::format("Changed too: {} to {} ({})", before, after, box.Spoken());
}

bool StatusTalk::StillSays(std::string_view words) const
{
    const Box* panel = session.screens.FindBox("MDIForm1", "StatusNote");
    return !words.empty() && panel != nullptr && panel->Text() == words;
}

void StatusTalk::Entered(const Screen& screen, const Box& box)
{
    if (Box* panel = session.screens.FindBox("MDIForm1", "StatusBox"))
        panel->SetText(LineNow(screen, box));
}

void StatusTalk::Left(const Screen& screen, const Box& left, std::span<const Rewritten> rewritten)
{
    std::string words;
    for (const Rewritten& one : rewritten)
        if (const std::string said = WordsOf(screen, left, one); !said.empty())
            words.append(words.empty() ? "" : "; ").append(said);
    // What was said of the box before is over; what else has happened stays until something new does.
    if (!words.empty() || StillSays(saidOfBox))
        SetStatusNote(session, words);
    saidOfBox = words;
}

/// The line about a box, with a word about what of its text the paper has no room for.
std::string StatusTalk::LineNow(const Screen& screen, const Box& box) const
{
    std::string line = LineOf(screen, box);
    const std::size_t cut = CutOnPaper(session, screen, box);
    if (cut == 0)
        return line;
    const std::string words =
        cut == 1 ? "The last character does not print" : fmt::format("The last {} characters do not print", cut);
    return line.empty() ? words : fmt::format("{}; {}", words, line);
}

/// Once a window has closed, the one below it has its box in use as before.
void StatusTalk::TellOfBoxInUse()
{
    Box* panel = session.screens.FindBox("MDIForm1", "StatusBox");
    if (panel == nullptr)
        return;
    std::string line;
    for (const Screen* screen : session.screens.Open())
        if (screen->InUse() != nullptr && session.screens.IsShown(screen->Name()))
            line = LineNow(*screen, *screen->InUse());
    panel->SetText(line);
}

void StatusTalk::Stored()
{
    if (StillSays(saidOfBox))
        SetStatusNote(session, saidOfBox += "; stored");
    else
        SetStatusNote(session, "Stored");
}

} // namespace quillmere::review
