#pragma once

#include "edition/Class1ARates.h"
#include "frame/Amount.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

/// Class 1A National Insurance contributions of an employer: the employees' benefits, and sections 1 and 4 of the
/// P11D(b). Social Security Contributions and Benefits Act 1992, s.10.
namespace quillmere {

/// The fields of `P11D` that make up the total, all of them marked 1A on the form, in the order of the sum.
inline constexpr auto Class1AFields = std::to_array<std::string_view>({
    "ACashEqu",
    "DCashEqu",
    "FTotalCashCars",
    "FTotalCashFuel",
    "GVan",
    "GVanFuel",
    "HLoanCashEqu1",
    "HLoanCashEqu2",
    "ICashEqu",
    "JRelocationExp",
    "KCashEqu",
    "LCashEqu",
    "NCashEqu1",
});

/// What one employee adds to the employer's total, given the texts of `Class1AFields` in their order. A word counts
/// nothing: neither "Nil" nor the "See Attach" in `HLoanCashEqu2`, where `HLoanCashEqu1` holds the sum of all loans
/// already.
Amount Class1ABenefits(std::span<const std::string_view, Class1AFields.size()> texts);

/// The same of the record whose fields `read` reads.
template<class Read>
Amount Class1ABenefitsOf(const Read& read)
{
    std::array<std::string_view, Class1AFields.size()> texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = read(Class1AFields[i]);
    return Class1ABenefits(texts);
}

/// An amount as it stands in a box of the return: empty for nought.
std::string Class1AText(Amount amount);

/// Contributions on benefits, at four decimals.
Amount Class1AContributions(Amount benefits, double rate = edition::Class1ARate);

/// Section 1: A the benefits, C the contributions.
struct Section1 {
    Amount A, C;

    friend bool operator==(const Section1&, const Section1&) = default;
};
Section1 ComputeSection1(Amount benefits, double rate = edition::Class1ARate);

/// Section 4: A the benefits of section 1, B added, C deducted, D the sum, F the contributions. D and F may be
/// negative.
struct Section4 {
    Amount A, B, C, D, F;

    friend bool operator==(const Section4&, const Section4&) = default;
};
Section4 ComputeSection4(Amount benefits, Amount added, Amount deducted, double rate = edition::Class1ARate);

} // namespace quillmere
