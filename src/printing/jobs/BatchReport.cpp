#include "printing/jobs/BatchReport.h"

#include "frame/Text.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>

namespace quillmere {

namespace {

using Of = BatchLine::Of;
using Outcome = BatchLine::Outcome;

std::string Counted(std::size_t number, std::string_view what)
{
    return fmt::format("{} {}{}", number, what, number == 1 ? "" : "s");
}

} // namespace

std::size_t BatchReport::Count(Outcome outcome) const
{
    return static_cast<std::size_t>(std::ranges::count(lines, outcome, &BatchLine::outcome));
}

std::string BatchReport::InWords() const
{
    const auto employees = static_cast<std::size_t>(std::ranges::count(lines, Of::Employee, &BatchLine::of));
    std::size_t pages = 0;
    std::vector<std::string> what;
    if (employees > 0)
        what.push_back(Counted(employees, "employee"));
    for (const BatchLine& line : lines) {
        if (line.outcome == Outcome::Done)
            pages += static_cast<std::size_t>(line.pages);
        if (line.of != Of::Employee)
            what.push_back(line.name);
    }
    std::string words;
    for (const std::string& one : what)
        words.append(words.empty() ? "" : &one == &what.back() ? " and " : ", ").append(one);
    words += ", " + Counted(pages, "page") + ", ";
    const std::size_t done = Count(Outcome::Done);
    if (done < lines.size())
        words += fmt::format("{} ", done);
    words += fmt::format("{} {}", order.files ? "written to" : "sent to", TextOr(to, "the printer"));
    return words + NotDone();
}

/// What follows of the documents that were not printed, each kind with its number.
std::string BatchReport::NotDone() const
{
    constexpr std::size_t MostNames = 3;
    std::string words;
    if (const std::size_t failed = Count(Outcome::Failed); failed > 0) {
        std::size_t named = 0;
        words += fmt::format(", {} not: ", failed);
        for (const BatchLine& line : lines)
            if (line.outcome == Outcome::Failed && named < MostNames)
                words.append(named++ == 0 ? "" : ", ").append(line.name);
        if (failed > named)
            words += fmt::format(" and {} more", failed - named);
        words += ", " + std::ranges::find(lines, Outcome::Failed, &BatchLine::outcome)->words;
    }
    if (const std::size_t empty = Count(Outcome::Empty); empty > 0)
        words += fmt::format(", {} without papers", empty);
    if (const std::size_t kept = Count(Outcome::Kept); kept > 0)
        words += fmt::format(", {} kept as {}", kept, kept == 1 ? "it was" : "they were");
    if (const std::size_t left = Count(Outcome::Left); left > 0)
        words += fmt::format(", {} left, from {} on", left,
                             std::ranges::find(lines, Outcome::Left, &BatchLine::outcome)->name);
    return words;
}

std::string BatchReport::InWords(const BatchLine& line) const
{
    switch (line.outcome) {
    case Outcome::Done:
        return order.files ? line.words : "sent";
    case Outcome::Failed:
        return fmt::format("{}: {}", order.files ? "not written" : "not printed", line.words);
    case Outcome::Empty:
        return "no papers";
    case Outcome::Kept:
        return fmt::format("kept as it was: {}", line.words);
    case Outcome::Left:
        break;
    }
    return "the batch had ended";
}

std::optional<BatchOrder> BatchReport::Again() const
{
    BatchOrder again = order;
    again.only.emplace();
    again.selection.Set(BatchTick::P11DB, false);
    if (again.files)
        again.files->whole = false;
    bool isAny = false;
    for (const BatchLine& line : lines) {
        if (line.outcome != Outcome::Failed && line.outcome != Outcome::Left)
            continue;
        isAny = true;
        if (line.of == Of::Employee)
            again.only->insert(line.name);
        else if (line.of == Of::Declaration)
            again.selection.Set(BatchTick::P11DB);
        else
            again.files->whole = true;
    }
    if (!isAny)
        return std::nullopt;
    if (again.files)
        again.files->each = !again.only->empty();
    return again;
}

} // namespace quillmere
