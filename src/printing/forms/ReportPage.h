#pragma once

#include "frame/Dates.h"
#include "printing/paper/PageLayer.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What all working papers behind the forms have in common: the page's head and foot, its heading and how a figure
/// prints.
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

/// What stands in the head and foot of every report of a document. For a declaration the employer stands for both.
struct ReportNames {
    std::string employer, employee;
    std::string compiler;
    Day today;
};

class ReportSheet;

/// The heading of a report, on each of its pages.
struct ReportHeading {
    std::string_view heading;
    std::string_view item = {};                         ///< which of several it is, beside the heading
    std::string_view subHeading = {};                   ///< under it
    std::string_view section = {};                      ///< of the form, and its page there
    std::function<void(ReportSheet&)> columnHeads = {}; ///< draws what stands between the heading and the lines
    bool beginsDocument = false;                        ///< stands on the document's first page, where others leave it
};

/// A line of a wrapped text and its width, mm.
struct ReportTextLine {
    std::string text;
    double width = 0;
};

/// A sheet of a report while its lines are drawn: it knows the line that they have come to, and goes on to a further
/// sheet with the same head and heading at the foot.
class ReportSheet {
public:
    /// Begins the report's first page, with a bookmark.
    ReportSheet(PageLayer& page, const ReportNames& names, ReportHeading heading);
    ReportSheet(const ReportSheet&) = delete;
    ReportSheet& operator=(const ReportSheet&) = delete;

    /// Goes on to the next line, `pitch` mm below; at the foot of the page to a further page.
    void NextLine(double pitch = ReportLine);
    /// Goes on to a further page unless so much room, mm, is left on this one.
    void KeepRoom(double room);

    /// Breaks a text into lines of a width, mm, at its blanks; a word that is wider is cut. Gives one line at least.
    std::vector<ReportTextLine> Wrap(std::string_view text, double width) const;
    /// Prints a text from x on, on further lines where it would run off the page's right rule. Gives the place where
    /// its last line ends, mm.
    double PrintText(double x, std::string_view text);
    /// The text, or its beginning and an ellipsis where it is wider than `width` mm.
    std::string Shorten(std::string_view text, double width) const;

    PageLayer& page;
    const ReportNames& names;
    double position = 0;     ///< line on which the report goes on, mm
    ElementNumber table = 0; ///< to which rows belong on this page; 0: to none yet

private:
    /// Begins a page with its head and foot, in the plain font of the reports.
    void StartPage();
    void PrintNames(double titleEnd);
    void PrintHeading();

    ReportHeading heading;
};

/// A row of the table on a report's page, for who has it read out. Cells are added in the order of the columns; those
/// that come on a further page begin a row there.
class ReportRow {
public:
    ReportRow(ReportSheet& sheet, Role cells);
    ElementNumber AddCell();

private:
    void Begin();

    ReportSheet& sheet;
    Role cells;
    ElementNumber row = 0;
};

/// A stored amount as the reports print it: nothing for a zero. A text without a digit, such as "Nil", stays as it is.
std::string ReportFigure(std::string_view stored);

} // namespace quillmere
