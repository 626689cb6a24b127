#include "review/PageExplained.h"

#include "calculators/AccommodationExplained.h"
#include "calculators/CalculatorFacts.h"
#include "calculators/LoanExplained.h"
#include "calculators/MileageExplained.h"
#include "calculators/RelocationExplained.h"
#include "calculators/VanExplained.h"
#include "cars/CarColumn.h"
#include "cars/CarExplained.h"
#include "clientdb/CurrentRecord.h"
#include "clientdb/ScheduleExplained.h"
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace quillmere::review {

namespace {

struct ActRow {
    char letter;
    std::string_view act;
};
constexpr auto Acts = std::to_array<ActRow>({
    {'A', "ITEPA 2003 s.203, s.206"},
    {'B', "ITEPA 2003 s.62, s.222"},
    {'C', "ITEPA 2003 s.87, s.94"},
    {'D', "ITEPA 2003 s.102"},
    {'E', "ITEPA 2003 s.229, s.233"},
    {'F', "ITEPA 2003 s.120, s.149"},
    {'G', "ITEPA 2003 s.154, s.160"},
    {'H', "ITEPA 2003 s.175"},
    {'I', "ITEPA 2003 s.203"},
    {'J', "ITEPA 2003 s.271, s.287"},
    {'K', "ITEPA 2003 s.203"},
    {'L', "ITEPA 2003 s.203, s.205"},
    {'N', "ITEPA 2003 s.203, s.223"},
    {'O', "ITEPA 2003 s.70, s.72"},
});

std::string ActOf(const Box& box)
{
    return std::string(ActOfSection(box.Name().front()));
}

/// A step that tells what follows, with no figure of its own.
ExplainedStep HeadStep(std::string says)
{
    return {.name = "part", .says = std::move(says)};
}

/// The last step for a box of the page.
ExplainedStep BoxStep(const Box& box, std::string result)
{
    return {.name = box.Name(),
            .box = box.FullName(),
            .says = box.Spoken(),
            .result = std::move(result),
            .source = ActOf(box)};
}

/// A figure that stands in its box, with nothing behind it.
Explained TypedIn(const Box& box)
{
    ExplainedStep step = BoxStep(box, box.Empty() ? std::string() : FigureText(ReadAmount(box.Text())));
    step.says += box.Empty() ? ": empty" : ": typed in";
    return {.steps = {std::move(step)}, .notes = {}};
}

/// Workings of several like things, one behind the other, and the box of the page that adds their results up.
class Parts {
public:
    /// The chain to the result of one of the things. A result below nought does not count unless `counts` says so.
    void Add(std::string title, const Explained& working, std::string_view result, bool countsBelowNought = true)
    {
        const Explained chain = working.ChainTo(result);
        all.steps.push_back(HeadStep(std::move(title)));
        all.Append(chain);
        const std::string& figure = chain.steps.back().result;
        const Amount amount = ReadAmount(figure);
        if (amount.IsNegative() && !countsBelowNought)
            return;
        figures.push_back(FigureText(amount));
        total += amount;
    }
    bool Empty() const { return all.steps.empty(); }
    Explained For(const Box& box) const
    {
        if (Empty())
            return TypedIn(box);
        Explained explained = all;
        ExplainedStep sum = BoxStep(box, FigureText(total));
        std::vector<std::string> texts;
        for (const std::string& figure : figures)
            texts.push_back(figure.starts_with('-') ? fmt::format("({})", figure) : figure);
        sum.sum = AddedUp(texts);
        for (const ExplainedStep& step : explained.steps)
            sum.uses.push_back(step.name);
        explained.steps.push_back(std::move(sum));
        return explained;
    }

private:
    Explained all;
    std::vector<std::string> figures;
    Amount total;
};

// ---- what stands behind a box of the page -----------------------------------------------------------

/// The stored record of the open employee in a table, as long as it lives.
struct Stored {
    Stored(const Session& session, std::string_view table)
        : database(Database::OpenDatabase(session.ClientDatabasePath())), record(OpenCurrent(database, table, session))
    {
    }
    Database database;
    Recordset record;
};

Explained VansBehind(const Session& session, const Box& box)
{
    const bool fuel = box.Name() == "GVanFuel";
    const Stored stored(session, "GNotepad");
    Parts vans;
    for (int number = 1; number <= 3; ++number) {
        const VanFacts van = ReadVan(InRecord(stored.record, number));
        if (!van.registrationNumber.empty() && (!fuel || van.fuelTick))
            vans.Add(fmt::format("Van {}, {}", number, van.registrationNumber), ExplainVan(van), fuel ? "XBox" : "MBox",
                     false);
    }
    return vans.For(box);
}

Explained MileageBehind(const Session& session, const Box& box)
{
    constexpr auto Kinds = std::to_array<std::pair<Vehicle, std::string_view>>(
        {{Vehicle::CarOrVan, "Car or van"}, {Vehicle::Motorcycle, "Motorcycle"}, {Vehicle::Bicycle, "Bicycle"}});
    const Stored stored(session, "ENotepad");
    Parts vehicles;
    int number = 0;
    for (const auto& [kind, words] : Kinds) {
        const MileageFacts facts = ReadMileage(InRecord(stored.record, ++number), kind);
        if (!facts.ABox.empty() || !facts.DBox.empty() || !facts.KBox.empty())
            vehicles.Add(std::string(words), ExplainMileage(facts), "QBox");
    }
    return vehicles.For(box);
}

Explained AccommodationBehind(const Session& session, const Box& box)
{
    const Stored stored(session, "DNotepad");
    const FactReader field = InRecord(stored.record);
    const std::string basicCharge = field("BasicChargeE");
    Parts charges;
    if (const BasicChargeFacts basic = ReadBasicCharge(field);
        !basic.BasicChargeA.empty() || !basic.BasicChargeB.empty())
        charges.Add("The basic charge", ExplainBasicCharge(basic, basicCharge), "BasicChargeE");
    if (const AdditionalChargeFacts additional = ReadAdditionalCharge(field, basicCharge); !additional.FBox.empty())
        charges.Add("The additional charge", ExplainAdditionalCharge(additional), "QBox");
    return charges.For(box);
}

Explained LoansBehind(const Session& session, const Box& box)
{
    constexpr int Loans = 5;
    const Stored stored(session, "HNotepad");
    const bool together = !InRecord(stored.record, 3)("CashEq").empty();
    const bool first = box.Name() == "HLoanCashEqu1";
    if (together && !first) {
        ExplainedStep attached = BoxStep(box, {});
        attached.says += ": there are more loans than the form has lines, and the first line has them all";
        return {.steps = {std::move(attached)}, .notes = {}};
    }
    Amount all;
    for (int number = 1; number <= Loans; ++number)
        all += LargestBalance(ReadLoan(InRecord(stored.record, number)));
    Parts loans;
    for (int number = 1; number <= Loans; ++number) {
        const bool counts = together || number == (first ? 1 : 2);
        if (const LoanFacts loan = ReadLoan(InRecord(stored.record, number));
            counts && !loan.ABox.empty() && !loan.BBox.empty())
            loans.Add(fmt::format("Loan {}", number), ExplainLoan(loan, all - LargestBalance(loan)), "CashEq");
    }
    return loans.For(box);
}

Explained RelocationBehind(const Session& session, const Box& box)
{
    const Stored stored(session, "JNotepad");
    Parts moves;
    if (const RelocationFacts move = ReadRelocation(InRecord(stored.record)); RelocationBenefit(move).computed)
        moves.Add("The move", ExplainRelocation(move), "FBox");
    return moves.For(box);
}

/// The total of the six cars, or of their fuel.
Explained CarsOnPage(const Session& session, const Box& box, const P11DPage& page)
{
    const std::string_view stem = box.Name() == "FTotalCashFuel" ? "FFuelEqu" : "FCashEqu";
    std::vector<ExplainedStep> lines;
    const std::array<std::string, 6> figures = CarFigures(nullptr, page, stem, FurtherCars(session));
    for (std::size_t car = 0; car < figures.size(); ++car)
        if (!figures.at(car).empty())
            lines.push_back(
                {.name = fmt::format("car {}", car + 1),
                 .says = fmt::format("Car {}: cash equivalent of the {}", car + 1, stem == "FCashEqu" ? "car" : "fuel"),
                 .result = FigureText(ReadAmount(figures.at(car)))});
    return ExplainLines(lines, BoxStep(box, FigureText(TotalOfCars(figures).total)));
}

// ---- lists and sections -----------------------------------------------------------------------------

/// The total that a list hands over to a field of the form.
struct ListTotal {
    const NotepadMember* notepad = nullptr;
    std::size_t column = 0;
};

ListTotal ListOf(std::string_view field)
{
    for (const NotepadMember& notepad : Notepads())
        for (std::size_t column = 0; column < notepad.totalFields.size(); ++column)
            if (!field.empty() && notepad.totalFields.at(column) == field)
                return {&notepad, column + 1};
    return {};
}

/// A box that a list fills: the list's lines and their total if it is what the box reads, else what the box reads.
Explained FromList(const Session& session, const Box& box)
{
    Explained list = ExplainStoredList(session, box.Field());
    if (list.steps.size() < 2 || ReadAmount(list.steps.back().result) != ReadAmount(box.Text()))
        return TypedIn(box);
    ExplainedStep& total = list.steps.back();
    total.says = box.Spoken() + ": total of the list";
    total.name = box.Name();
    total.box = box.FullName();
    return list;
}

Explained OfSection(const Session& session, const P11DPage& page, const AmountTriple& triple)
{
    Explained explained = FromList(session, page.box(triple.cost));
    explained.Append(FromList(session, page.box(triple.madeGood)));
    const Box& cash = page.box(triple.cashEquivalent);
    const Amount cost = ReadAmount(page.box(triple.cost).Text());
    const Amount madeGood = ReadAmount(page.box(triple.madeGood).Text());
    if (page.box(triple.cost).Empty()) {
        explained.Append(TypedIn(cash));
        return explained;
    }
    ExplainedStep net = BoxStep(cash, FigureText(NetOf(cost, madeGood)));
    net.sum = WithFigures("{cost} - {made good}, at least 0",
                          [&](std::string_view which) { return FigureText(which == "cost" ? cost : madeGood); });
    net.uses = {std::string(triple.cost), std::string(triple.madeGood)};
    explained.steps.push_back(std::move(net));
    return explained;
}

/// A box of the pages that a calculator fills.
struct CalculatedRow {
    std::string_view box;
    Explained (*behind)(const Session&, const Box&);
};
constexpr auto Calculated = std::to_array<CalculatedRow>({
    {"DCashEqu", AccommodationBehind},
    {"ETaxAmount", MileageBehind},
    {"GVan", VansBehind},
    {"GVanFuel", VansBehind},
    {"HLoanCashEqu1", LoansBehind},
    {"HLoanCashEqu2", LoansBehind},
    {"JRelocation", RelocationBehind},
});

} // namespace

std::string_view ActOfSection(char letter)
{
    const auto found = std::ranges::find(Acts, letter, &ActRow::letter);
    return found == Acts.end() ? std::string_view() : found->act;
}

Explained ExplainStoredList(const Session& session, std::string_view field)
{
    const ListTotal total = ListOf(field);
    if (total.notepad == nullptr)
        return {};
    const NotepadMember& notepad = *total.notepad;
    const Stored stored(session, notepad.name);
    const Explained list = ExplainSchedule(
        {.cost = notepad.Cost(), .tax = notepad.Tax(), .cash = notepad.Cash(), .kind = notepad.kind},
        notepad.columns.front(),
        [&stored](const ScheduleColumn& column, int line) { return InRecord(stored.record, line)(column.field); },
        ActOfSection(notepad.name.front()));
    return list.ChainTo(notepad.columns.at(total.column).total);
}

int CarOf(const Screen& screen, const Box& box)
{
    const std::string& name = box.Name();
    const int car = name.back() - '0';
    const bool isOfColumn = name.front() == 'F' || name.starts_with("txtUnavailable");
    return isOfColumn && car >= 1 && car <= 6 && screen.FindBox(Numbered("FCashEqu", car)) != nullptr ? car : 0;
}

Explained ExplainCarOn(const Screen& screen, int car)
{
    Explained explained = ExplainCar(CarTextsOn(screen, car), screen.box(Numbered("FuelTick", car)).Ticked());
    for (ExplainedStep& step : explained.steps)
        if (!step.box.empty())
            step.box = Numbered(step.box, car);
    return explained;
}

Explained ExplainOnPage(const Session& session, const P11DPage& page, const Box& box)
{
    if (const int car = CarOf(page, box); car > 0)
        return ExplainCarOn(page, car);
    if (box.Name() == "FTotalCashCars" || box.Name() == "FTotalCashFuel")
        return CarsOnPage(session, box, page);
    for (const AmountTriple& triple : page.OwnTriples())
        for (const std::string_view name : {triple.cost, triple.madeGood, triple.cashEquivalent})
            if (box.Name() == name)
                return OfSection(session, page, triple);
    if (const auto row = std::ranges::find(Calculated, box.Name(), &CalculatedRow::box); row != Calculated.end())
        return row->behind(session, box);
    return box.IsAmount() ? FromList(session, box) : Explained();
}

} // namespace quillmere::review
