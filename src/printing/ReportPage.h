#pragma once

#include "printing/PrintJob.h"

#include <string>
#include <string_view>

/// What all working papers behind the forms have in common: the page's head and foot, its heading and how a figure
/// prints. The lines run down the page at the job's line position.
namespace quillmere {

// Places of a report page, mm.
inline constexpr double ReportLeft = 10;
inline constexpr double ReportRight = 190;
inline constexpr double ReportCentre = 180; ///< texts are centred from ReportLeft to here
inline constexpr double ReportText = 25;
inline constexpr double ReportLine = 4;     ///< from line to line
inline constexpr double ReportColumn1 = 90; ///< figures end here, and at the two below
inline constexpr double ReportColumn2 = 140;
inline constexpr double ReportColumn3 = 175;

/// Begins a page with its head and foot, in the plain font of the reports.
void StartReportPage(PrintJob& job);

/// The heading of a report. `item` says which of several it is, beside it; `subHeading` stands under it. Also the
/// page's bookmark.
void PrintReportHeading(PrintJob& job, std::string_view heading, std::string_view item, std::string_view subHeading,
                        std::string_view section);

/// A stored amount as the reports print it: nothing for a zero. A text without a digit, such as "Nil", stays as it is.
std::string ReportFigure(std::string_view stored);

/// Goes on to the next line; at the foot of the page to a further page.
void NextReportLine(PrintJob& job);

/// Prints a text from x on, on further lines where it would run off the page's right rule. Gives the place where its
/// last line ends, mm.
double PrintReportText(PrintJob& job, double x, std::string_view text);

} // namespace quillmere
