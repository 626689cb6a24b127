#pragma once

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "review/Checks.h"

#include <optional>
#include <string>
#include <string_view>

/// What the tables of checks share.
namespace quillmere::review {

inline constexpr std::string_view QualityStandard = "HMRC, P11D Quality Standard";
inline constexpr std::string_view CommonMistakes = "HMRC, PAYE Manual PAYE57003: common mistakes";
inline constexpr std::string_view Contradiction = "The form contradicts itself";

/// An amount as a person writes it.
inline std::string Money(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyZero);
}

/// A spot at a box, if the check trips.
inline Spots One(std::string_view screen, std::string_view box, bool trips)
{
    return trips ? Spots{{.section = {}, .screen = screen, .box = std::string(box)}} : Spots{};
}

/// At a box of one of the six cars, whose name ends with the car's number.
Spot SpotOfCar(int car, std::string_view box);

// The checks of section F, in the order of the list.
Spots NoListPrice(const FormFacts& form);
Spots CarNotWorkedOut(const FormFacts& form);
Spots NoCO2Figure(const FormFacts& form);
Spots WholeYear(const FormFacts& form);
Spots OutsideTheYear(const FormFacts& form);
Spots RegisteredLater(const FormFacts& form);
Spots PeriodsOverlap(const FormFacts& form);
Spots FuelNotCompleted(const FormFacts& form);
Spots FuelNotTicked(const FormFacts& form);
Spots WithdrawnOutside(const FormFacts& form);
Spots CarTotalDiffers(const FormFacts& form);
Spots FuelWithoutCar(const FormFacts& form);
Spots CarTypedOver(const FormFacts& form);

// Of what calculators have handed over.
Spots CalculatorDiffers(const FormFacts& form);

/// What the lines of a column add up to; nothing if no line has an amount.
std::optional<Amount> SumOf(const ListFacts::Column& column);
/// What a calculator, by the name of its screen, hands over to the form: its figures one after the other, empty if
/// there are none.
std::string FiguresOf(const CalculatorFacts& facts, std::string_view calculator);

/// What stands in a box, and what its rule makes of the others.
std::string ShownAndWorkedOut(Amount shown, Amount workedOut);

} // namespace quillmere::review
