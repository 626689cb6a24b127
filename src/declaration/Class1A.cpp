#include "declaration/Class1A.h"

#include "edition/Edition.h"

namespace quillmere {

Amount Class1ABenefits(std::span<const std::string_view, Class1AFields.size()> texts)
{
    Amount total;
    for (const std::string_view text : texts)
        total += ReadAmount(text);
    return total;
}

std::string Class1AText(Amount amount)
{
    return AmountText(amount, edition::FormatMoneyBlankZero);
}

Amount Class1AContributions(Amount benefits, double rate)
{
    return Amount::FromDouble(benefits.Pounds() * rate / 100);
}

Section1 ComputeSection1(Amount benefits, double rate)
{
    return {.A = benefits, .C = Class1AContributions(benefits, rate)};
}

Section4 ComputeSection4(Amount benefits, Amount added, Amount deducted, double rate)
{
    Section4 section{.A = benefits, .B = added, .C = deducted};
    // Kept: with no benefits there is nothing to adjust, whatever B and C hold.
    if (benefits.IsZero())
        return section;
    section.D = benefits + added - deducted;
    section.F = Class1AContributions(section.D, rate);
    return section;
}

} // namespace quillmere
