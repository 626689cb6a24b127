#pragma once

#include "edition/CarRates.h"
#include "edition/Class1ARates.h"
#include "edition/Edition.h"
#include "edition/JoinedText.h"
#include "edition/RelocationRates.h"

#include <string_view>

/// The words of the printed forms that belong to the year: its dates, its labels and the amounts that its law and its
/// guides name. Where a line names the year itself, it takes it from the edition's own dates; the other dates in it
/// stand as they are printed. The texts of the forms that stay from year to year are in the tables of printing/.
namespace quillmere::edition::form {

/// P11D, first side: headings and notes.
inline constexpr JoinedText P11DHeading = Join({"P11D Expenses and benefits ", YearLabel});
inline constexpr JoinedText P11DWhoReturns =
    Join({"rate of ", Pounds(P11DThreshold), " or more a year during the year to ", LongYearEnd, ". Send the"});
inline constexpr JoinedText P11DWhenReturned =
    Join({"completed form to your HM Revenue & Customs office by ", ReturnDueDate, "."});
inline constexpr JoinedText P11DTaxReturn =
    Join({"need it to complete your ", YearLabel, " tax return if you get one.  The box"});
inline constexpr JoinedText P11DIdentifier = Join({"P11D(", YearEndYear, ")(Substitute)(Fenwright)"});

/// P11D, first side: sections C and E.
inline constexpr std::string_view ChildcareVouchers = "(for qualifying childcare vouchers the excess over £55 a week)";
inline constexpr JoinedText ExemptRates = Join({"(See P11D Guide for ", YearLabel, " exempt rates)"});

/// P11D, first side: section F.
inline constexpr std::string_view CarsWithCO2Figure = "registered on or after 1 January 1998";
inline constexpr std::string_view CarFromBox = "'From' box if the car was available on 5 April";
inline constexpr std::string_view CarToBox = "2010 or the 'To' box if it continued to be";
inline constexpr std::string_view CarStillAvailable = "available on 6 April 2011";
inline constexpr JoinedText CapitalContributions =
    Join({"Capital contributions (maximum ", Pounds(MaximumCapitalContribution), ")"});
inline constexpr JoinedText TotalOfCars = Join({"Total cash equivalent of all cars made available in ", YearLabel});
inline constexpr JoinedText TotalOfCarFuel =
    Join({"Total cash equivalent of fuel for all cars made available in ", YearLabel});
/// The same totals on the sheets for further cars.
inline constexpr JoinedText TotalOfExtraCars = Join({"Total cash equivalent of all cars available in ", YearLabel});
inline constexpr JoinedText TotalOfExtraCarFuel =
    Join({"Total cash equivalent of fuel for all cars available in ", YearLabel});

/// P11D, second side.
inline constexpr JoinedText TotalOfVans = Join({"Total cash equivalent of all vans made available in ", YearLabel});
inline constexpr JoinedText TotalOfVanFuel =
    Join({"Total cash equivalent of fuel for all vans made available in ", YearLabel});
inline constexpr std::string_view SmallLoans = "If the total amount outstanding on all loans does not exceed £5,000 at "
                                               "any time in the year, there is no need to complete this section.";
inline constexpr JoinedText LoanAtStart =
    Join({"Amount outstanding at ", LongYearEndPrior, " or at date loan was made if later"});
inline constexpr JoinedText LoanAtEnd =
    Join({"Amount outstanding at ", LongYearEnd, " or at date loan was discharged if earlier"});
inline constexpr JoinedText LoanInterestPaid = Join({"Total amount of interest paid by the borrower in ", YearLabel});
inline constexpr JoinedText LoanMade = Join({"Date loan was made in ", YearLabel, " if applicable"});
inline constexpr JoinedText LoanDischarged = Join({"Date loan was discharged in ", YearLabel, " if applicable"});
inline constexpr JoinedText RelocationExcess =
    Join({"Excess over ", Pounds(RelocationExemption),
          " of all qualifying relocation expenses payments and benefits for each move"});

/// P11D(b), declaration side.
inline constexpr JoinedText DeclarationYear = Join({"Year ended 5 April ", YearEndYear});
inline constexpr JoinedText DeclarationNoForms =
    Join({"year ended ", LongYearEnd, ".  For this reason no forms P11D are attached."});
inline constexpr JoinedText DeclarationSent = Join({LongYearEnd, " were sent to"});
inline constexpr JoinedText P11DBIdentifier = Join({"P11D(b)(", YearEndYear, ")(Man)(Substitute)(Fenwright)"});

/// P11D(b), notes side: the days, the guide to Class 1A contributions as the two variants of the form print it,
/// and who makes a return.
inline constexpr JoinedText NotesReturnDay = Join({ReturnDueDay, ". "});
inline constexpr JoinedText NotesPostDay = Join({PostedPaymentDueDay, " "});
inline constexpr JoinedText NotesElectronicDayWeekend = Join({ElectronicPaymentDueDay, " "});
inline constexpr JoinedText NotesElectronicDayBefore = Join({ElectronicPaymentDueDay, ".  "});
inline constexpr JoinedText NotesLate =
    Join({"Interest is chargeable on payments paid late. If your return is not received by ", ReturnDueDay, ", "});
inline constexpr JoinedText NotesGuideRecord = Join({"CWG5(", YearEndYear, ")"});
inline constexpr JoinedText NotesGuideTotals = Join({"CWG5(", YearEndYear, ") "});
inline constexpr JoinedText NotesWhoReturns =
    Join({"at a rate of ", Pounds(P11DThreshold), " or more a year and for each director if:"});

/// What the printed documents are about, for their properties.
inline constexpr JoinedText DocumentSubject = Join({"Expenses and benefits ", YearLabel});

} // namespace quillmere::edition::form
