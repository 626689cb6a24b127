#include "review/Explanation.h"

#include "frame/Session.h"

#include <array>
#include <fmt/format.h>
#include <iterator>
#include <utility>

namespace quillmere::review {

namespace {

constexpr std::string_view WindowName = "Explanation";

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Heading", .kind = BoxKind::Label},
    TableBoxRow("Steps", "Steps of the working", "Box\tWhat it is\tHow it is worked out\tFigure\tSource"),
    {.name = "Words", .kind = BoxKind::Label},
    {.name = "ExplainCopy", .kind = BoxKind::Button, .text = "C&opy", .key = "Ctrl+C"},
    {.name = "ExplainPrint", .kind = BoxKind::Button, .text = "&Print", .key = "Ctrl+P"},
    {.name = "ExplainClose", .kind = BoxKind::Button, .text = "&Close"},
});

constexpr std::string_view NoBoxInUse = "Go to the box on the page first";
constexpr std::string_view OtherThanHMRC = "HMRC has another figure";
constexpr std::string_view OtherThanTold = "The box reads another figure";
constexpr std::string_view NothingWorkedOut = "Nothing is worked out in this box";

/// A line of the table. The words of a note, which are long, come last.
std::string EntryOf(const WorkingLine& line)
{
    if (!line.isNote)
        return fmt::format("{}\t{}\t{}\t{}\t{}", line.letter, line.says, line.sum, line.figure, line.source);
    return fmt::format("{}\t{}\t{}\t{}\t{}{}{}", line.letter, line.figure.empty() ? OtherThanTold : OtherThanHMRC,
                       line.sum, line.figure, line.source, line.source.empty() ? "" : ": ", line.says);
}

/// A line as a sentence.
std::string Sentence(const WorkingLine& line)
{
    std::string text = line.letter.empty() ? line.says : fmt::format("{}: {}", line.letter, line.says);
    if (!line.sum.empty())
        text += fmt::format(". {}", line.sum);
    if (!line.figure.empty() && !(line.isNote && line.sum.empty()))
        text += fmt::format(" = {}", line.figure);
    return line.source.empty() ? text : fmt::format("{} ({})", text, line.source);
}

} // namespace

Explanation::Explanation(Session& session) : Screen(session, WindowName, ShowMode::Above, "Explain")
{
    AddBoxes(Rows);
    SetButtons("ExplainClose", "ExplainClose");
    OnSelect("Steps", [this](Box&) { ShowWords(); });
    OnClick("ExplainCopy", [this](Box&) { this->session.platform.CopyText(AsText()); });
    OnClick("ExplainPrint", [this](Box&) { this->session.printTable(AsTable()); });
    OnClick("ExplainClose", [this](Box&) { this->session.screens.Unload(this->Name()); });
    if (!session.printTable)
        box("ExplainPrint").SetEnabled(false);
}

void Explanation::Tell(const BoxExplained& newTold, std::string_view newSubject)
{
    told = newTold;
    subject = newSubject;
    std::vector<std::string> entries;
    for (const WorkingLine& line : LinesOf(told))
        entries.push_back(EntryOf(line));
    box("Heading").SetText(told.heading);
    box("Steps").SetEntries(std::move(entries));
    // The result, which the notes follow.
    box("Steps").Select(static_cast<int>(told.chain.steps.size()) - 1);
    ShowWords();
}

/// The chosen line in full, and all notes while that is the result.
void Explanation::ShowWords()
{
    const std::vector<WorkingLine> lines = LinesOf(told);
    const int chosen = box("Steps").Selected();
    if (chosen < 0)
        return box("Words").SetText({});
    std::string words = Sentence(lines.at(static_cast<std::size_t>(chosen)));
    if (chosen + 1 == static_cast<int>(told.chain.steps.size()))
        for (const WorkingLine& line : lines)
            if (line.isNote)
                words += "\n" + Sentence(line);
    box("Words").SetText(words);
}

std::string Explanation::AsText() const
{
    std::string text = fmt::format("{}\n{}\n", told.heading, subject);
    for (const WorkingLine& line : LinesOf(told))
        text += fmt::format("{}\t{}\t{}\t{}\t{}\n", line.letter, line.says, line.sum, line.figure, line.source);
    return text;
}

PrintedTable Explanation::AsTable() const
{
    PrintedTable table{.documentName = fmt::format("{} - {}", subject, told.heading),
                       .employee = subject == session.CurrentEmployer ? std::string() : session.CurrentEmployee,
                       .heading = "How it is worked out",
                       .subHeading = told.heading,
                       .columns = {{.caption = "Box", .width = 2},
                                   {.caption = "What it is", .width = 9},
                                   {.caption = "How it is worked out", .width = 9},
                                   {.caption = "Figure", .width = 3, .figure = true},
                                   {.caption = "Source", .width = 5}},
                       .rows = {}};
    for (const WorkingLine& line : LinesOf(told))
        table.rows.push_back({line.letter, line.says, line.sum, line.figure, line.source});
    return table;
}

namespace {

void Open(Session& session, const BoxExplained& told, std::string_view subject)
{
    // One that stands elsewhere, or could not be reached from here, is made anew.
    session.screens.Unload(WindowName);
    session.screens.Load<Explanation>(WindowName)->Tell(told, subject);
    session.screens.Show(WindowName);
}

BoxExplained Nothing(std::string_view why)
{
    return {.heading = std::string(why), .chain = {}, .remarks = {}};
}

} // namespace

void ShowExplanation(Session& session, const Screen& screen, const Box& box)
{
    if (screen.Name() != WindowName)
        Open(session, ExplainBox(session, screen, box).value_or(Nothing(NothingWorkedOut)), screen.Subject());
}

void ExplainBoxInUse(Session& session)
{
    for (const Screen* screen : session.screens.Open())
        if (screen->Mode() == ShowMode::Child && session.screens.IsShown(screen->Name()) && screen->InUse() != nullptr)
            return ShowExplanation(session, *screen, *screen->InUse());
    Open(session, Nothing(NoBoxInUse), {});
}

} // namespace quillmere::review
