#pragma once

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/Text.h"
#include "review/Checks.h"

#include <span>
#include <string>
#include <string_view>

/// What the tables of checks share.
namespace quillmere::review {

inline constexpr std::string_view QualityStandard = "HMRC, P11D Quality Standard";
inline constexpr std::string_view CommonMistakes = "HMRC, PAYE Manual PAYE57003: common mistakes";
inline constexpr std::string_view Contradiction = "The form contradicts itself";

inline constexpr std::string_view Page1 = "Form3";
inline constexpr std::string_view Page2 = "Side2Form1";
inline constexpr std::string_view FormTable = "P11D";

inline constexpr int Cars = 6;

inline std::string OnForm(const FieldReader& read, std::string_view field)
{
    return field.empty() ? std::string() : Trim(read(FormTable, field));
}

inline bool Filled(const FieldReader& read, std::string_view field)
{
    return !OnForm(read, field).empty();
}

inline Amount AmountOnForm(const FieldReader& read, std::string_view field)
{
    return ReadAmount(OnForm(read, field));
}

/// An amount as a person writes it.
inline std::string Money(Amount amount)
{
    return FormatAmount(amount, edition::FormatMoneyZero);
}

/// One line of the form with a cost, what was made good, and a cash equivalent. Fields and boxes have one name.
struct SectionRow {
    std::string_view section;
    std::string_view screen;
    std::string_view description; ///< empty: the form asks for none
    std::string_view cost;
    std::string_view madeGood; ///< empty where what stands there is no part of the cost
    std::string_view cash;
};

/// All of them, in the order of the form.
std::span<const SectionRow> SectionRows();

/// A spot at a box, if the check trips.
inline Spots One(std::string_view screen, std::string_view box, bool trips)
{
    return trips ? Spots{{.section = {}, .screen = screen, .box = std::string(box)}} : Spots{};
}

/// At a box of one of the six cars, whose name ends with the car's number.
Spot SpotOfCar(int car, std::string_view box);

// The checks of section F, in the order of the list.
Spots NoListPrice(const FieldReader& read);
Spots CarNotWorkedOut(const FieldReader& read);
Spots NoCO2Figure(const FieldReader& read);
Spots WholeYear(const FieldReader& read);
Spots OutsideTheYear(const FieldReader& read);
Spots RegisteredLater(const FieldReader& read);
Spots PeriodsOverlap(const FieldReader& read);
Spots FuelNotCompleted(const FieldReader& read);
Spots FuelNotTicked(const FieldReader& read);
Spots WithdrawnOutside(const FieldReader& read);
Spots CarTotalDiffers(const FieldReader& read);
Spots FuelWithoutCar(const FieldReader& read);

} // namespace quillmere::review
