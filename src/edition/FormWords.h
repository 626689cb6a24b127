#pragma once

#include <string_view>

/// The words of the printed forms that belong to the year: its dates, its labels and the amounts that its law and its
/// guides name. The texts of the forms that stay from year to year are in the tables of printing/.
namespace quillmere::edition {

/// P11D, first side: headings and notes.
inline constexpr std::string_view P11DHeading = "P11D Expenses and benefits 2010-11";
inline constexpr std::string_view P11DWhoReturns =
    "rate of £8,500 or more a year during the year to 5 April 2011. Send the";
inline constexpr std::string_view P11DWhenReturned =
    "completed form to your HM Revenue & Customs office by 6 July 2011.";
inline constexpr std::string_view P11DTaxReturn =
    "need it to complete your 2010-11 tax return if you get one.  The box";
inline constexpr std::string_view P11DIdentifier = "P11D(2011)(Substitute)(Fenwright)";

/// P11D, first side: sections C and E.
inline constexpr std::string_view ChildcareVouchers = "(for qualifying childcare vouchers the excess over £55 a week)";
inline constexpr std::string_view ExemptRates = "(See P11D Guide for 2010-11 exempt rates)";

/// P11D, first side: section F.
inline constexpr std::string_view CarsWithCO2Figure = "registered on or after 1 January 1998";
inline constexpr std::string_view CarFromBox = "'From' box if the car was available on 5 April";
inline constexpr std::string_view CarToBox = "2010 or the 'To' box if it continued to be";
inline constexpr std::string_view CarStillAvailable = "available on 6 April 2011";
inline constexpr std::string_view CapitalContributions = "Capital contributions (maximum £5,000)";
inline constexpr std::string_view TotalOfCars = "Total cash equivalent of all cars made available in 2010-11";
inline constexpr std::string_view TotalOfCarFuel =
    "Total cash equivalent of fuel for all cars made available in 2010-11";
/// The same totals on the sheets for further cars.
inline constexpr std::string_view TotalOfExtraCars = "Total cash equivalent of all cars available in 2010-11";
inline constexpr std::string_view TotalOfExtraCarFuel =
    "Total cash equivalent of fuel for all cars available in 2010-11";

/// P11D, second side.
inline constexpr std::string_view TotalOfVans = "Total cash equivalent of all vans made available in 2010-11";
inline constexpr std::string_view TotalOfVanFuel =
    "Total cash equivalent of fuel for all vans made available in 2010-11";
inline constexpr std::string_view SmallLoans = "If the total amount outstanding on all loans does not exceed £5,000 at "
                                               "any time in the year, there is no need to complete this section.";
inline constexpr std::string_view LoanAtStart = "Amount outstanding at 5 April 2010 or at date loan was made if later";
inline constexpr std::string_view LoanAtEnd =
    "Amount outstanding at 5 April 2011 or at date loan was discharged if earlier";
inline constexpr std::string_view LoanInterestPaid = "Total amount of interest paid by the borrower in 2010-11";
inline constexpr std::string_view LoanMade = "Date loan was made in 2010-11 if applicable";
inline constexpr std::string_view LoanDischarged = "Date loan was discharged in 2010-11 if applicable";
inline constexpr std::string_view RelocationExcess =
    "Excess over £8,000 of all qualifying relocation expenses payments and benefits for each move";

/// P11D(b), declaration side.
inline constexpr std::string_view DeclarationYear = "Year ended 5 April 2011";
inline constexpr std::string_view DeclarationNoForms =
    "year ended 5 April 2011.  For this reason no forms P11D are attached.";
inline constexpr std::string_view DeclarationSent = "5 April 2011 were sent to";
inline constexpr std::string_view P11DBIdentifier = "P11D(b)(2011)(Man)(Substitute)(Fenwright)";
/// The rate of Class 1A contributions as it is printed.
inline constexpr std::string_view Class1ARateText = "12.8%";

/// P11D(b), notes side: the days, the guide to Class 1A contributions as the two variants of the form print it, the
/// page on how to pay, and who makes a return.
inline constexpr std::string_view NotesReturnDay = "6 July. ";
inline constexpr std::string_view NotesPostDay = "19 July ";
inline constexpr std::string_view NotesElectronicDay = "22 July";
inline constexpr std::string_view NotesElectronicDayWeekend = "22 July ";
inline constexpr std::string_view NotesElectronicDayBefore = "22 July.  ";
inline constexpr std::string_view NotesLate =
    "Interest is chargeable on payments paid late. If your return is not received by 6 July, ";
inline constexpr std::string_view NotesGuideRecord = "CWG5(2011)";
inline constexpr std::string_view NotesGuideTotals = "CWG5(2011) ";
inline constexpr std::string_view Class1AWebAddress = "www.hmrc.gov.uk/payinghmrc/class1a.htm";
inline constexpr std::string_view NotesWhoReturns = "at a rate of £8,500 or more a year and for each director if:";

/// What the printed documents are about, for their properties.
inline constexpr std::string_view DocumentSubject = "Expenses and benefits 2010-11";

} // namespace quillmere::edition
