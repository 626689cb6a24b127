#include "review/CalculatorCheck.h"

#include "frame/Session.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Summary", .kind = BoxKind::Label},
    TableBoxRow("Examples", "Published examples", "Example\tResult\tExpected\tGot\tFacts\tHolds\tSource"),
    {.name = "Chosen", .kind = BoxKind::Label},
    {.name = "CalculatorCheckPrint", .kind = BoxKind::Button, .text = "&Print", .key = "Ctrl+P"},
    {.name = "CalculatorCheckClose", .kind = BoxKind::Button, .text = "&Close"},
});

std::string SummaryText(const std::vector<WorkedExample>& worked)
{
    const auto count = [&worked](Verdict verdict) {
        return std::ranges::count(worked, verdict, &WorkedExample::verdict);
    };
    return fmt::format("{} examples: {} pass, {} differ as they are known to, {} fail", worked.size(),
                       count(Verdict::Passes), count(Verdict::Differs), count(Verdict::Fails));
}

std::string LineOf(const WorkedExample& worked)
{
    const edition::CalculatorExample& example = *worked.example;
    return fmt::format("{}\t{}\t{}\t{}\t{}\t{}\t{}", example.code, WordOf(worked.verdict),
                       FiguresInWords(example.expected), FiguresInWords(worked.got), example.words,
                       WordOf(example.kind), example.source);
}

/// All of an example, and why it differs.
std::string TextOf(const WorkedExample& worked)
{
    const edition::CalculatorExample& example = *worked.example;
    std::string text = fmt::format("{}. Expected: {}. Got: {}. ", example.words, FiguresInWords(example.expected),
                                   FiguresInWords(worked.got));
    if (worked.verdict == Verdict::Differs)
        text.append(example.why);
    else if (example.kind == edition::ExampleKind::Shifted)
        text.append("Published for another year and worked from it with the rates and days of this one.");
    return text;
}

} // namespace

CalculatorCheck::CalculatorCheck(Session& session)
    : Screen(session, "CalculatorCheck", ShowMode::Window, "Check the Calculators")
{
    AddBoxes(Rows);
    SetButtons("CalculatorCheckClose", {});
    OnSelect("Examples", [this](Box&) { ShowChosen(); });
    OnClick("CalculatorCheckPrint", [this](Box&) { this->session.printTable(AsTable()); });
    if (!session.printTable)
        box("CalculatorCheckPrint").SetEnabled(false);
}

bool CalculatorCheck::Load()
{
    worked = WorkOutAll();
    std::vector<std::string> lines;
    lines.reserve(worked.size());
    for (const WorkedExample& example : worked)
        lines.push_back(LineOf(example));
    box("Summary").SetText(SummaryText(worked));
    box("Examples").SetEntries(std::move(lines));
    // What fails is the first thing to look at.
    const auto failed = std::ranges::find(worked, Verdict::Fails, &WorkedExample::verdict);
    box("Examples").Select(failed == worked.end() ? 0 : static_cast<int>(failed - worked.begin()));
    ShowChosen();
    return true;
}

PrintedTable CalculatorCheck::AsTable() const
{
    PrintedTable table{.documentName = Caption(),
                       .heading = Caption(),
                       .subHeading = SummaryText(worked),
                       .columns = {{.caption = "Example", .width = 4},
                                   {.caption = "Result", .width = 4},
                                   {.caption = "Facts", .width = 14},
                                   {.caption = "Expected", .width = 10},
                                   {.caption = "Got", .width = 10},
                                   {.caption = "Holds", .width = 4},
                                   {.caption = "Source", .width = 9}}};
    for (const WorkedExample& line : worked) {
        const edition::CalculatorExample& example = *line.example;
        table.rows.push_back({std::string(example.code), std::string(WordOf(line.verdict)), std::string(example.words),
                              FiguresInWords(example.expected), FiguresInWords(line.got),
                              std::string(WordOf(example.kind)), std::string(example.source)});
        if (line.verdict == Verdict::Differs)
            table.remarks.push_back(fmt::format("{}: {}", example.code, example.why));
    }
    return table;
}

void CalculatorCheck::ShowChosen()
{
    const int chosen = box("Examples").Selected();
    box("Chosen").SetText(chosen < 0 ? std::string() : TextOf(worked.at(static_cast<std::size_t>(chosen))));
}

} // namespace quillmere::review
