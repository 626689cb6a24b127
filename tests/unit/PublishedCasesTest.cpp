#include "calculators/AccommodationBenefit.h"
#include "calculators/LoanBenefit.h"
#include "calculators/MileageBenefit.h"
#include "calculators/VanBenefit.h"
#include "cars/CarBenefit.h"
#include "declaration/Class1A.h"
#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillmere {
namespace {

using Figures = std::map<std::string, std::string>;

std::vector<std::string> Split(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, separator);)
        pieces.push_back(Trim(piece));
    return pieces;
}

/// "A=1; B=2" as a map.
Figures ReadFigures(const std::string& text)
{
    Figures figures;
    for (const std::string& piece : Split(text, ';')) {
        const auto equals = piece.find('=');
        if (equals == std::string::npos)
            throw std::runtime_error("no figure: " + piece);
        figures[piece.substr(0, equals)] = piece.substr(equals + 1);
    }
    return figures;
}

/// The facts of a case. What the rule has not asked for at the end is a fact that it does not know.
class Facts {
public:
    explicit Facts(Figures figures) : texts(std::move(figures)) {}

    std::string operator[](const std::string& name)
    {
        asked.insert(name);
        const auto found = texts.find(name);
        return found == texts.end() ? std::string() : found->second;
    }

    void ExpectAllAsked() const
    {
        for (const auto& [name, text] : texts)
            EXPECT_TRUE(asked.contains(name)) << "no rule reads the fact " << name;
    }

private:
    Figures texts;
    std::set<std::string> asked;
};

std::string Money(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyZero);
}

Figures Loan(Facts& facts)
{
    const LoanWorking working = LoanBenefit({.ABox = facts["A"],
                                             .BBox = facts["B"],
                                             .interestRate = facts["rate"],
                                             .interestPaid = facts["paid"],
                                             .dateFrom = facts["from"]});
    return {{"E", std::to_string(working.E)},
            {"interest", Money(working.interest)},
            {"result", Money(working.cashEquivalent)}};
}

Figures Mileage(Facts& facts)
{
    const MileageWorking working =
        MileageBenefit({.ABox = facts["A"], .DBox = facts["miles"], .KBox = facts["K"], .LBox = facts["L"]});
    return {{"M", Money(working.M)}, {"taxable", Money(working.Q)}};
}

Figures Van(Facts& facts, const edition::VanRates& rates)
{
    VanFacts van{.registrationNumber = "VAN", .percentage = facts["H"], .payments = facts["L"]};
    van.dates[VanDate::To1] = facts["to"];
    van.dates[VanDate::Withdrawn] = facts["withdrawn"];
    van.fuelTick = facts["fuel"] == "1";
    const VanWorking w = VanBenefit(van, rates);
    return {{"B", std::to_string(w.B)}, {"F", Money(w.F)},          {"G", Money(w.G)},     {"J", Money(w.J)},
            {"K", Money(w.K)},          {"S", std::to_string(w.S)}, {"T", Money(w.T)},     {"V", Money(w.V)},
            {"W", Money(w.W)},          {"X", Money(w.X)},          {"result", Money(w.M)}};
}

Figures Accommodation(Facts& facts)
{
    return {{"Q", Money(AdditionalCharge({.FBox = facts["F"], .MBox = facts["M"], .NBox = facts["N"]}).Q)}};
}

Figures Car(Facts& facts)
{
    const CarWorking w = CarBenefit(ReadCar({.registrationDate = "01/02/2008",
                                             .fuel = facts["fuel"],
                                             .co2 = facts["co2"],
                                             .dateFrom = facts["from"],
                                             .listPrice = facts["price"],
                                             .dateWithdrawn = facts["withdrawn"]}));
    return {{"N", std::to_string(w.percentages.N)}, {"Q", std::to_string(w.Q)},
            {"W", std::to_string(w.fuelDays.W)},    {"X", std::to_string(w.fuelDays.X)},
            {"result", Money(w.cashEquivalent)},    {"fuelresult", std::to_string(w.fuelEquivalent)}};
}

/// Works a case, with the constant of the published year where it is not this edition's.
Figures WorkOut(const std::string& rule, const std::string& difference, Facts& facts)
{
    if (rule == "van") {
        edition::VanRates rates = edition::Vans;
        if (difference != "same")
            rates.charge = std::stoi(ReadFigures(difference).at("charge"));
        return Van(facts, rates);
    }
    if (difference != "same")
        throw std::runtime_error("no constant to change: " + difference);
    if (rule == "loan")
        return Loan(facts);
    if (rule == "mileage")
        return Mileage(facts);
    if (rule == "accommodation")
        return Accommodation(facts);
    if (rule == "car")
        return Car(facts);
    if (rule == "contributions")
        return {{"C", Money(Class1AContributions(ReadAmount(facts["A"])))}};
    throw std::runtime_error("no such rule: " + rule);
}

TEST(PublishedCases, EveryFigureOfTheAuthorityComesOut)
{
    int cases = 0;
    for (const std::string& line : Split(ReadFile(SOURCE_DIR "/tests/unit/data/published_cases.txt"), '\n')) {
        if (line.empty() || line.starts_with('#'))
            continue;
        SCOPED_TRACE(line);
        const auto columns = Split(line, '|');
        ASSERT_EQ(columns.size(), 5U);
        Facts facts(ReadFigures(columns[3]));
        const Figures figures = WorkOut(columns[0], columns[2], facts);
        facts.ExpectAllAsked();
        for (const auto& [name, expected] : ReadFigures(columns[4])) {
            ASSERT_TRUE(figures.contains(name)) << name;
            EXPECT_EQ(figures.at(name), expected) << name;
        }
        ++cases;
    }
    EXPECT_EQ(cases, 15);
}

} // namespace
} // namespace quillmere
