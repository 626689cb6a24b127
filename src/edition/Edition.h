#pragma once

#include "edition/DayOf.h"

#include <string_view>

/// The constants of the edition for the tax year 2010-11: its dates, labels, file names and display formats. Nothing
/// works one of them out from another (the century limit apart) or from the clock; for a new edition these are changed
/// and the statutory tables beside this file are replaced.
namespace quillmere::edition {

/// First day of the tax year, two-digit form: lower bound of every range test, default start of a period.
inline constexpr std::string_view TaxYearStartShort = "06/04/10";
/// The same day in four-digit form: printed periods, car and loan screens.
inline constexpr std::string_view TaxYearStart = "06/04/2010";
/// Last day of the tax year: upper bound of every range test, default end of a period.
inline constexpr std::string_view TaxYearEnd = "05/04/2011";
/// The two days themselves, for rules that count.
inline constexpr auto TaxYearStartDay = DayOf(TaxYearStart);
inline constexpr auto TaxYearEndDay = DayOf(TaxYearEnd);
/// Nobody and nothing on a form is older.
inline constexpr auto OldestDate = DayOf("01/01/1900");
/// First and last day of last tax year, read by the car notepad for a car carried over.
inline constexpr std::string_view PriorYearStart = "06/04/2009";
inline constexpr std::string_view PriorYearEnd = "05/04/2010";

/// Wording for last year's end and this year's end on forms and declarations.
inline constexpr std::string_view LongYearEndPrior = "5 April 2010";
inline constexpr std::string_view LongYearEnd = "5 April 2011";
/// The date by which the forms are due.
inline constexpr std::string_view ReturnDueDate = "6 July 2011";

/// Labels of last year, of this year, and the long one of the P11D(b).
inline constexpr std::string_view YearLabelPrior = "2009-10";
inline constexpr std::string_view YearLabel = "2010-11";
inline constexpr std::string_view YearLabelLong = "2010-2011";
/// The calendar years in which the tax year ends and begins.
inline constexpr std::string_view YearEndYear = "2011";
inline constexpr std::string_view YearStartYear = "2010";

/// First two-digit year that belongs to the last century: the year in which the tax year ends, less 1995, so
/// that every year before it is of this century, and it and those behind it are of the last.
constexpr int CenturyLimit()
{
    int year = 0;
    for (const char digit : YearEndYear)
        year = year * 10 + (digit - '0');
    return year - 1995;
}

/// Title of every message box, first words of the main window's caption.
inline constexpr std::string_view AppTitle = "2011 Quillmere";
/// Product code: the name of the folder that holds the program; and last edition's.
inline constexpr std::string_view ProductFolder = "Q1111";
inline constexpr std::string_view PriorProductFolder = "Q1110";
/// Product code and release; its first five characters stand in the first panel of the status bar.
inline constexpr std::string_view ProductVersionLabel = "Q1111-12";
/// The client database of a client folder, last year's, and the empty template in the program's own folder.
inline constexpr std::string_view ClientDatabaseName = "ClientQuillmere11.mdb";
inline constexpr std::string_view PriorClientDatabaseName = "ClientQuillmere10.mdb";
inline constexpr std::string_view TemplateDatabaseName = "dClientQuillmere11.mdb";
/// Name that the settings propose for a PDF file, set afresh at the first start of a new edition.
inline constexpr std::string_view DefaultPdfFileName = "2011 Quillmere";

/// Pay in a year, in pounds, from which an employee's expenses and benefits are returned on a form P11D: the Income Tax
/// (Earnings and Pensions) Act 2003, s.216 to s.218.
inline constexpr int P11DThreshold = 8500;

/// The fuel letters of a car on the form.
inline constexpr std::string_view FuelLetters = "BCDEGHLP";

/// Every amount on the screens and every total that a notepad hands back: zero displays as nothing.
inline constexpr std::string_view FormatMoneyBlankZero = "######0.00;(######0.00);#";
/// Results where a computed zero must be seen.
inline constexpr std::string_view FormatMoneyZero = "######0.00;(######0.00);0.00";
/// Amounts of the section reports, with thousands separators.
inline constexpr std::string_view FormatPrintMoneyBlankZero = "#,###,##0.00;(#,###,##0.00);#";
/// Ten blanks: the width to which an amount is padded on the left.
inline constexpr std::string_view AmountColumnWidth = "          ";

/// What a section's description box reads when a line of its notepad has a description.
inline constexpr std::string_view AsPerAttached = "As per attached";

} // namespace quillmere::edition
