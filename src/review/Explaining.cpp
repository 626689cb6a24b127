#include "review/Explaining.h"

#include "calculators/AccommodationExplained.h"
#include "calculators/CalculatorFacts.h"
#include "calculators/LoanExplained.h"
#include "calculators/MileageExplained.h"
#include "calculators/RelocationExplained.h"
#include "calculators/VanExplained.h"
#include "clientdb/ScheduleExplained.h"
#include "declaration/AdjustmentNotepad.h"
#include "declaration/Class1AExplained.h"
#include "edition/Edition.h"
#include "frame/Text.h"
#include "review/PageExplained.h"
#include "screens/ScheduleNotepad.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <set>

namespace quillmere::review {

namespace {

/// What is asked.
struct Asked {
    const Session& session;
    const Screen& screen;
    const Box& box;
};

Explained OfCarScreen(const Asked& asked)
{
    const int car = CarOf(asked.screen, asked.box);
    return car == 0 ? Explained() : ExplainCarOn(asked.screen, car);
}

Explained OfPage(const Asked& asked)
{
    return ExplainOnPage(asked.session, dynamic_cast<const P11DPage&>(asked.screen), asked.box);
}

Explained OfVan(const Asked& asked)
{
    return ExplainVan(ReadVan(OnScreen(asked.screen)));
}

Explained OfLoan(const Asked& asked)
{
    const int loan = asked.box.Index();
    if (loan == Box::NoIndex)
        return {};
    Amount others;
    for (const auto& box : asked.screen.Boxes())
        if (box->Name() == "ABox" && box->Index() != loan)
            others += LargestBalance(ReadLoan(OnScreen(asked.screen, box->Index())));
    return ExplainLoan(ReadLoan(OnScreen(asked.screen, loan)), others);
}

Explained OfBasicCharge(const Asked& asked)
{
    return ExplainBasicCharge(ReadBasicCharge(OnScreen(asked.screen)), asked.screen.box("BasicChargeE").Text());
}

Explained OfAdditionalCharge(const Asked& asked)
{
    return ExplainAdditionalCharge(ReadAdditionalCharge(OnScreen(asked.screen), asked.screen.box("EBox").Text()));
}

/// The kind of vehicle is the one whose tab is in front.
Explained OfMileage(const Asked& asked)
{
    constexpr auto Tabs = std::to_array<std::string_view>({"CarVan", "Motorcycle", "Bicycle"});
    const auto shown = std::ranges::find_if(
        Tabs, [&](std::string_view tab) { return asked.screen.box(tab).PaintedIn() == Paint::Yellow; });
    const std::ptrdiff_t kind = shown == Tabs.end() ? 0 : shown - Tabs.begin();
    return ExplainMileage(ReadMileage(OnScreen(asked.screen), static_cast<Vehicle>(kind)));
}

Explained OfRelocation(const Asked& asked)
{
    return ExplainRelocation(ReadRelocation(OnScreen(asked.screen)));
}

/// The lines of a schedule as its screen shows them.
Explained ListOn(const Screen& screen, const ScheduleShape& shape, const ScheduleColumn& description,
                 std::string_view source)
{
    return ExplainSchedule(
        shape, description,
        [&screen](const ScheduleColumn& column, int line) { return screen.box(column.box, line).Text(); }, source);
}

/// The cells of a column that is typed in are told of by their total.
Explained Towards(const Explained& explained, const Asked& asked, const ScheduleColumn& column)
{
    return column.Exists() && column.box == asked.box.Name() && explained.StepOf(asked.box.FullName()) == nullptr
               ? explained.ChainTo(column.total)
               : explained;
}

Explained OfSchedule(const Asked& asked)
{
    const NotepadMember& notepad = *std::ranges::find(Notepads(), asked.screen.Name(), &NotepadMember::name);
    Explained explained = ListOn(
        asked.screen, {.cost = notepad.Cost(), .tax = notepad.Tax(), .cash = notepad.Cash(), .kind = notepad.kind},
        notepad.columns.front(), ActOfSection(notepad.name.front()));
    for (const ScheduleColumn& column : notepad.columns)
        if (!column.total.empty())
            explained = Towards(explained, asked, column);
    return explained;
}

Explained OfAdjustments(const Asked& asked)
{
    const AdjustmentSchedule& schedule =
        *std::ranges::find(AdjustmentSchedules, asked.screen.Name(), &AdjustmentSchedule::name);
    return ListOn(asked.screen,
                  {.cost = schedule.AmountColumn(), .tax = {}, .cash = {}, .kind = ScheduleKind::CostAndTax},
                  AdjustmentDescription, "SSCBA 1992 s.10");
}

/// What the boxes of the pages that hold the given fields are called.
std::map<std::string, std::string, std::less<>> WordsOfFields(const Screens& screens)
{
    std::map<std::string, std::string, std::less<>> words;
    for (const std::string_view page : {"Form3", "Side2Form1"}) {
        const std::unique_ptr<Screen> made = screens.Make(page);
        for (const auto& box : made->Boxes())
            if (!box->Field().empty())
                words.emplace(box->Field(), box->Spoken());
    }
    return words;
}

Explained OfDeclaration(const Asked& asked)
{
    const auto amount = [&](std::string_view box) { return ReadAmount(asked.screen.box(box).Text()); };
    if (asked.box.Name() == "Section1BoxA") {
        Database database = Database::OpenDatabase(asked.session.ClientDatabasePath());
        return ExplainLiableBenefits(LiableBenefits(database, asked.session.CurrentEmployer),
                                     [words = WordsOfFields(asked.session.screens)](std::string_view field) {
                                         return words.at(std::string(field));
                                     });
    }
    return ExplainContributions({.benefits = amount("Section1BoxA"),
                                 .adjusted = asked.screen.box("AdjustTick").Ticked(),
                                 .added = amount("Section4BoxB"),
                                 .deducted = amount("Section4BoxC")});
}

/// A screen on which figures are worked out.
struct ScreenRow {
    std::string_view screen;
    Explained (*explain)(const Asked&);
};
constexpr auto ScreenRows = std::to_array<ScreenRow>({
    {"Form3", OfPage},
    {"Side2Form1", OfPage},
    {"Form3_4", OfCarScreen},
    {"Form5_6", OfCarScreen},
    {"DNotepad", OfBasicCharge},
    {"D2Notepad", OfAdditionalCharge},
    {"ENotepad", OfMileage},
    {"GNotepad", OfVan},
    {"HNotepad", OfLoan},
    {"JNotepad", OfRelocation},
    {"P11DDeclaration", OfDeclaration},
    {"P11DBNotepad1", OfAdjustments},
    {"P11DBNotepad2", OfAdjustments},
});

Explained WholeWorking(const Asked& asked)
{
    if (const auto row = std::ranges::find(ScreenRows, asked.screen.Name(), &ScreenRow::screen);
        row != ScreenRows.end())
        return row->explain(asked);
    if (std::ranges::find(Notepads(), asked.screen.Name(), &NotepadMember::name) != Notepads().end())
        return OfSchedule(asked);
    return {};
}

/// The step of the box; for a box that is typed in what comes of it, the first figure that goes into no other.
const ExplainedStep& StepFor(const Explained& explained, const Box& box)
{
    for (const std::string& name : {box.FullName(), box.Name()})
        if (const ExplainedStep* step = explained.StepOf(name))
            return *step;
    std::set<std::string_view> used;
    for (const ExplainedStep& step : explained.steps)
        used.insert(step.uses.begin(), step.uses.end());
    return *std::ranges::find_if(
        explained.steps, [&](const ExplainedStep& step) { return !step.box.empty() && !used.contains(step.name); });
}

/// An amount to the penny, as the boxes show it.
std::string ToThePenny(std::string_view text)
{
    return FormatAmount(ReadAmount(text), edition::FormatMoneyZero);
}

} // namespace

std::optional<BoxExplained> ExplainBox(const Session& session, const Screen& screen, const Box& box)
{
    const Explained whole = WholeWorking({session, screen, box});
    if (whole.steps.empty())
        return std::nullopt;
    const ExplainedStep& step = StepFor(whole, box);
    BoxExplained told{.heading = step.says, .chain = whole.ChainTo(step.box), .remarks = {}};
    const bool isItsOwn = step.box == box.FullName() || step.box == box.Name();
    if (isItsOwn && ToThePenny(box.Text()) != ToThePenny(step.result))
        told.remarks.push_back(fmt::format("The box reads {}: it has been typed over, or not been worked out again",
                                           box.Empty() ? "nothing" : Trim(box.Text())));
    return told;
}

std::vector<WorkingLine> LinesOf(const BoxExplained& told)
{
    std::vector<WorkingLine> lines;
    for (const ExplainedStep& step : told.chain.steps)
        lines.push_back({step.Letter(), step.says, step.SumInWords(), step.result, step.source});
    for (const ExplainedNote& note : told.chain.notes) {
        const std::string_view words = WordsOf(note.rounding);
        lines.push_back({"Note", note.says, words.empty() ? note.sum : fmt::format("{}, {}", note.sum, words),
                         note.result, note.source, true});
    }
    for (const std::string& remark : told.remarks)
        lines.push_back({"Note", remark, {}, {}, {}, true});
    return lines;
}

} // namespace quillmere::review
