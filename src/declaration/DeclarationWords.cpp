#include "declaration/DeclarationWords.h"

#include "edition/Class1ARates.h"
#include "edition/Edition.h"
#include "edition/JoinedText.h"

#include <fmt/format.h>

namespace quillmere::words {

std::string YearEnded()
{
    return fmt::format("Year ended {}", edition::LongYearEnd);
}

std::string NoBenefits()
{
    return fmt::format("No expenses payments or benefits of the type to be returned on forms P11D have been or will be "
                       "provided for the year end {}.  For this reason no forms P11D are attached.",
                       edition::LongYearEnd);
}

std::string FormsEnclosed()
{
    return fmt::format("I confirm that all details of expenses payments and benefits that have to be returned on forms "
                       "P11D for the year ended {} are enclosed with this declaration.  I declare that the details on "
                       "these forms are fully and truly stated to the best of my knowledge and belief.",
                       edition::LongYearEnd);
}

std::string FormsSent()
{
    return fmt::format("Forms P11D for the year ended {} were sent to", edition::LongYearEnd);
}

std::string SendingNote()
{
    return fmt::format(
        "Give each director or employee a copy of what his or her form P11D says, and send the completed "
        "forms P11D with this form to your HM Revenue & Customs office by {}.",
        edition::ReturnDueDay);
}

std::string PayingNote()
{
    return fmt::format(
        "Pay the Class 1A NICs shown on this return to the accounts office: by {} if you pay by post or "
        "in cash, by {} if you pay by an approved electronic method. Where {} falls on a weekend or a bank "
        "holiday, the payment should arrive on the last bank working day before it. How to pay:",
        edition::PostedPaymentDueDay, edition::ElectronicPaymentDueDay, edition::ElectronicPaymentDueDay);
}

std::string LateNote()
{
    return fmt::format("Interest is charged on late payments. There may be penalties for a return that has not arrived "
                       "by {}, and for false statements.",
                       edition::ReturnDueDay);
}

std::string BoxesNote()
{
    return fmt::format("Employers pay Class 1A NICs on benefits that are returned on forms P11D, unless Class 1 or "
                       "Class 1B NICs are due on them. The boxes concerned are marked 1A on the forms. Please read the "
                       "P11D Guide and booklet CWG5({}) first.",
                       edition::YearEndYear);
}

std::string FormsNote()
{
    return fmt::format("Complete a form P11D for each director, and for each employee paid at a rate of {} or more a "
                       "year, to whom you gave expenses or benefits that no dispensation or PAYE Settlement Agreement "
                       "covers, or for whom you arranged that somebody else gave them. If you send the forms in "
                       "batches, send this declaration with the last one.",
                       std::string_view(edition::Pounds(edition::P11DThreshold)));
}

std::string AdjustmentNote()
{
    return fmt::format(
        "Complete this section only if the total in section 1 has to be adjusted. Booklet CWG5({}) tells "
        "when that may be so.",
        edition::YearEndYear);
}

} // namespace quillmere::words
