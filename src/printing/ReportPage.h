#pragma once

#include "printing/PrintJob.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

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

/// The heading of a report, on each of its pages.
struct ReportHeading {
    std::string_view heading;
    std::string_view item = {};             ///< which of several it is, beside the heading
    std::string_view subHeading = {};       ///< under it
    std::string_view section = {};          ///< of the form, and its page there
    std::function<void()> columnHeads = {}; ///< draws what stands between the heading and the lines
};

/// A report while its lines are drawn. Begins its first page, with a bookmark; the lines below go on to further pages,
/// which have the same heading.
class ReportInHand {
public:
    ReportInHand(PrintJob& job, ReportHeading heading);
    ~ReportInHand() { job.onFurtherPage = nullptr; }
    ReportInHand(const ReportInHand&) = delete;
    ReportInHand& operator=(const ReportInHand&) = delete;

private:
    void PrintHeading();

    PrintJob& job;
    ReportHeading heading;
};

/// A stored amount as the reports print it: nothing for a zero. A text without a digit, such as "Nil", stays as it is.
std::string ReportFigure(std::string_view stored);

/// Goes on to the next line, `pitch` mm below; at the foot of the page to a further page.
void NextReportLine(PrintJob& job, double pitch = ReportLine);

/// Goes on to a further page unless so much room, mm, is left on this one.
void KeepReportRoom(PrintJob& job, double room);

/// A line of a wrapped text and its width, mm.
struct ReportTextLine {
    std::string text;
    double width = 0;
};

/// Breaks a text into lines of a width, mm, at its blanks; a word that is wider is cut. Gives one line at least.
std::vector<ReportTextLine> WrapReportText(PrintJob& job, std::string_view text, double width);

/// Prints a text from x on, on further lines where it would run off the page's right rule. Gives the place where its
/// last line ends, mm.
double PrintReportText(PrintJob& job, double x, std::string_view text);

/// The text, or its beginning and an ellipsis where it is wider than `width` mm.
std::string ShortenReportText(PrintJob& job, std::string_view text, double width);

} // namespace quillmere
