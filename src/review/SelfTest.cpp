#include "review/SelfTest.h"

#include "calculators/AccommodationBenefit.h"
#include "calculators/LoanBenefit.h"
#include "calculators/MileageBenefit.h"
#include "calculators/RelocationBenefit.h"
#include "calculators/VanBenefit.h"
#include "cars/CarBenefit.h"
#include "declaration/Class1A.h"
#include "edition/LeftOvers.h"
#include "frame/Text.h"
#include "review/CheckParts.h"

#include <algorithm>
#include <array>
#include <set>
#include <stdexcept>
#include <utility>

namespace quillmere::review {

namespace {

using Figures = std::vector<std::pair<std::string_view, std::string>>;

/// "A=1; B=2" as pairs.
Figures Parsed(std::string_view text)
{
    Figures pairs;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view piece = text.substr(0, end);
        const std::size_t equals = piece.find('=');
        if (equals == std::string_view::npos)
            throw std::logic_error("no figure: " + std::string(piece));
        const std::size_t first = std::min(piece.find_first_not_of(' '), equals);
        pairs.emplace_back(piece.substr(first, equals - first), piece.substr(equals + 1));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pairs;
}

/// The facts of an example by their names. One that nobody has asked for is a fact that the rule does not know.
class Facts {
public:
    explicit Facts(std::string_view text) : texts(Parsed(text)) {}

    std::string operator[](std::string_view name)
    {
        asked.insert(name);
        const auto found = std::ranges::find(texts, name, &Figures::value_type::first);
        return found == texts.end() ? std::string() : found->second;
    }
    bool IsSet(std::string_view name) { return (*this)[name] == "1"; }
    int Number(std::string_view name, int otherwise)
    {
        const std::string text = (*this)[name];
        return text.empty() ? otherwise : ReadWholeNumber(text);
    }

    void ExpectAllAsked() const
    {
        for (const auto& [name, text] : texts)
            if (!asked.contains(name))
                throw std::logic_error("no rule reads the fact " + std::string(name));
    }

private:
    Figures texts;
    std::set<std::string_view> asked;
};

Figures Car(Facts& facts)
{
    CarTexts car{.registrationDate = std::string(TextOr(facts["registered"], edition::ExampleRegistration)),
                 .fuel = facts["fuel"],
                 .co2 = facts["co2"],
                 .noCO2 = facts.IsSet("noco2"),
                 .engine = facts["engine"],
                 .dateFrom = facts["from"],
                 .dateTo = facts["to"],
                 .listPrice = facts["price"],
                 .accessories = facts["accessories"],
                 .contribution = facts["contribution"],
                 .privateUse = facts["private"],
                 .dateWithdrawn = facts["withdrawn"],
                 .reinstated = facts.IsSet("reinstated")};
    // A period stands if its box lets it.
    car.periods[0] = {.first = facts["first"], .last = facts["last"]};
    if (!car.periods[0].last.empty())
        car.periods[0].last =
            LeavePeriodLast({.dateFrom = car.dateFrom, .dateTo = car.dateTo, .periods = car.periods}, 0).text;
    const CarWorking w = CarBenefit(ReadCar(car));
    return {{"E", Money(w.E)},
            {"G", std::to_string(w.percentages.G)},
            {"N", std::to_string(w.percentages.N)},
            {"Q", std::to_string(w.Q)},
            {"U", Money(w.U)},
            {"charge", Money(w.cashEquivalent)},
            {"V", Money(w.V)},
            {"W", std::to_string(w.fuelDays.W)},
            {"X", std::to_string(w.fuelDays.X)},
            {"Y", Money(w.Y)},
            {"fuel", std::to_string(w.fuelEquivalent)}};
}

/// The deduction for the days of a car's year, of a car or of its fuel.
Figures Days(Facts& facts)
{
    const Amount charge = ReadAmount(facts["charge"]);
    const Amount deduction = DeductionForDays(charge, static_cast<std::int16_t>(facts.Number("days", 0)));
    return {{"deduction", Money(deduction)}, {"left", Money(charge - deduction)}};
}

Figures Van(Facts& facts)
{
    VanFacts van{
        .registrationNumber = "VAN", .percentage = facts["H"], .payments = facts["L"], .fuelTick = facts.IsSet("fuel")};
    van.dates[VanDate::To1] = facts["to"];
    van.dates[VanDate::Withdrawn] = facts["withdrawn"];
    edition::VanRates rates = edition::Vans;
    rates.charge = facts.Number("charge", rates.charge);
    const VanWorking w = VanBenefit(van, rates);
    return {{"B", std::to_string(w.B)}, {"F", Money(w.F)}, {"G", Money(w.G)},          {"J", Money(w.J)},
            {"K", Money(w.K)},          {"M", Money(w.M)}, {"R", std::to_string(w.R)}, {"S", std::to_string(w.S)},
            {"T", Money(w.T)},          {"V", Money(w.V)}, {"W", Money(w.W)},          {"X", Money(w.X)}};
}

Figures Loan(Facts& facts)
{
    const LoanWorking w = LoanBenefit({.ABox = facts["A"],
                                       .BBox = facts["B"],
                                       .interestRate = facts["rate"],
                                       .interestPaid = facts["paid"],
                                       .dateFrom = facts["from"],
                                       .dateTo = facts["to"]});
    return {{"E", std::to_string(w.E)}, {"interest", Money(w.interest)}, {"charge", Money(w.cashEquivalent)}};
}

Figures Accommodation(Facts& facts)
{
    const BasicChargeWorking basic =
        BasicCharge({.BasicChargeA = facts["A"], .BasicChargeB = facts["B"], .BasicChargeD = facts["D"]});
    const AdditionalChargeWorking added = AdditionalCharge({.FBox = facts["F"],
                                                            .GBox = {},
                                                            .AddChargeDays = facts["days"],
                                                            .MBox = facts["M"],
                                                            .NBox = facts["N"],
                                                            .EBox = Money(basic.E)});
    return {{"C", Money(basic.C)}, {"E", Money(basic.E)}, {"K", Money(added.K)}, {"L", Money(added.L)},
            {"P", Money(added.P)}, {"Q", Money(added.Q)}, {"R", Money(added.R)}};
}

Figures Mileage(Facts& facts)
{
    const MileageWorking w = MileageBenefit(
        {.ABox = facts["A"], .BBox = {}, .DBox = facts["miles"], .KBox = facts["K"], .LBox = facts["L"]});
    return {{"J", Money(w.J)}, {"M", Money(w.M)}, {"Q", Money(w.Q)}};
}

Figures Relocation(Facts& facts)
{
    const RelocationWorking w = RelocationBenefit({.ABox = facts["A"]});
    return {{"E", Money(w.E)}, {"F", Money(w.F)}};
}

Figures Contributions(Facts& facts)
{
    return {{"C", Money(Class1AContributions(ReadAmount(facts["A"])))}};
}

/// The rate that the words of a working paper name.
Figures Label(Facts&)
{
    const std::string_view words = edition::report::AdditionalCharge;
    const std::size_t end = words.find('%');
    const std::size_t begin = words.find_last_not_of("0123456789.", end - 1) + 1;
    return {{"rate", std::string(words.substr(begin, end - begin))}};
}

struct RuleRow {
    std::string_view name;
    Figures (*work)(Facts&);
};
constexpr auto Rules = std::to_array<RuleRow>({
    {"car", Car},
    {"days", Days},
    {"van", Van},
    {"loan", Loan},
    {"accommodation", Accommodation},
    {"mileage", Mileage},
    {"relocation", Relocation},
    {"contributions", Contributions},
    {"label", Label},
});

/// Of all figures the ones that are asked for, in the form of the list.
std::string Picked(const Figures& figures, std::string_view wanted)
{
    std::string text;
    for (const auto& [name, expected] : Parsed(wanted)) {
        const auto found = std::ranges::find(figures, name, &Figures::value_type::first);
        if (found == figures.end())
            throw std::logic_error("no rule has the figure " + std::string(name));
        text.append(text.empty() ? "" : "; ").append(name).append("=").append(found->second);
    }
    return text;
}

} // namespace

WorkedExample WorkOut(const edition::CalculatorExample& example)
{
    const auto rule = std::ranges::find(Rules, example.rule, &RuleRow::name);
    if (rule == Rules.end())
        throw std::logic_error("no such rule: " + std::string(example.rule));
    Facts facts(example.facts);
    WorkedExample worked{.example = &example, .got = Picked(rule->work(facts), example.expected)};
    facts.ExpectAllAsked();
    if (worked.got == example.expected)
        worked.verdict = Verdict::Passes;
    else if (worked.got == example.ours)
        worked.verdict = Verdict::Differs;
    return worked;
}

std::vector<WorkedExample> WorkOutAll()
{
    std::vector<WorkedExample> worked;
    worked.reserve(edition::CalculatorExamples.size());
    for (const edition::CalculatorExample& example : edition::CalculatorExamples)
        worked.push_back(WorkOut(example));
    return worked;
}

std::string FiguresInWords(std::string_view figures)
{
    std::string words;
    for (const auto& [name, text] : Parsed(figures))
        words.append(words.empty() ? "" : ", ").append(name).append(" ").append(text);
    return words;
}

std::string_view WordOf(Verdict verdict)
{
    switch (verdict) {
    case Verdict::Passes:
        return "passes";
    case Verdict::Differs:
        return "differs";
    case Verdict::Fails:
        break;
    }
    return "FAILS";
}

std::string_view WordOf(edition::ExampleKind kind)
{
    return kind == edition::ExampleKind::Direct ? "direct" : "shifted";
}

} // namespace quillmere::review
