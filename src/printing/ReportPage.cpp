#include "printing/ReportPage.h"

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fmt/format.h>

namespace quillmere {

namespace {

constexpr double RuleWidth = 0.2;
constexpr double FootRule = 274;
constexpr double FootText = 278;
constexpr double FontPoints = 10;
constexpr double LastLine = 268;

// The names in the head of a page.
constexpr double SmallestNamePoints = 7;
constexpr double GapBetweenNames = 2;
constexpr double LeastRoomOfEmployee = 72; ///< at the smallest size some 55 characters

constexpr double CompilerWidth = 140; ///< leaves room for the date beside it
constexpr const char* Ellipsis = "\u2026";

constexpr std::array<std::string_view, 12> Months = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};

/// Day, the month's name, year.
std::string LongDate(Day day)
{
    const std::chrono::year_month_day date(day);
    return fmt::format("{} {} {}", static_cast<unsigned>(date.day()),
                       Months.at(static_cast<unsigned>(date.month()) - 1), static_cast<int>(date.year()));
}

/// The employee's name in the middle and the employer's at the right, in the head of the page. Names too long to stand
/// beside each other are drawn smaller, and where that is not enough, cut.
void PrintNames(PrintJob& job, double titleEnd)
{
    PageLayer& page = job.page;
    constexpr double Middle = (ReportLeft + ReportCentre) / 2;
    const double roomOfEmployee = 2 * (Middle - titleEnd - GapBetweenNames);
    double points = FontPoints;
    double employee = page.vsTextWidth(job.employee);
    double employer = page.vsTextWidth(job.employer);
    const auto overlap = [&] {
        return employee > roomOfEmployee || Middle + employee / 2 + GapBetweenNames > ReportRight - employer;
    };
    while (overlap() && points > SmallestNamePoints) {
        employee *= (points - 1) / points;
        employer *= (points - 1) / points;
        --points;
    }
    page.vsFont(points, false, false);
    std::string shownEmployee = job.employee;
    std::string shownEmployer = job.employer;
    if (overlap()) {
        const double leftByEmployer = 2 * (ReportRight - employer - GapBetweenNames - Middle);
        shownEmployee =
            ShortenReportText(job, job.employee, std::clamp(leftByEmployer, LeastRoomOfEmployee, roomOfEmployee));
        employee = page.vsTextWidth(shownEmployee);
        shownEmployer = ShortenReportText(job, job.employer, ReportRight - Middle - employee / 2 - GapBetweenNames);
    }
    page.vsTextCentre(ReportLeft, ReportCentre, job.position, shownEmployee);
    page.vsTextRight(ReportRight, job.position, shownEmployer);
    page.vsFont(FontPoints, false, false);
}

} // namespace

void StartReportPage(PrintJob& job)
{
    PageLayer& page = job.page;
    // Kept: always a new page. Where a batch prints no form, a document begins with an empty sheet.
    page.vsOrientation(0);
    page.vsNewPage();
    page.SetScaleForPage();
    ++job.pageNumber;
    job.position = 5.0;
    page.vsFontName(page.ReportFont());
    page.vsTextColor(page.ColBlack);
    page.vsFont(FontPoints, false, false);
    page.vsTextLeft(ReportLeft, job.position, edition::AppTitle);
    PrintNames(job, page.vsTextEnd());
    job.position += 2.0;
    page.vsLine(RuleWidth, ReportLeft, job.position, ReportRight, job.position);
    job.position += 10.0;
    page.vsLine(RuleWidth, ReportLeft, FootRule, ReportRight, FootRule);
    page.vsTextLeft(ReportLeft, FootText, ShortenReportText(job, job.session.settings.reportCompiler, CompilerWidth));
    page.vsTextRight(ReportRight, FootText, LongDate(job.session.platform.Today()));
}

ReportInHand::ReportInHand(PrintJob& job, ReportHeading heading) : job(job), heading(std::move(heading))
{
    StartReportPage(job);
    std::string bookmark(this->heading.heading);
    for (const std::string_view more : {this->heading.subHeading, this->heading.item})
        if (!more.empty())
            bookmark.append(" - ").append(more);
    job.page.vsBookmark(bookmark);
    PrintHeading();
    job.onFurtherPage = [this] { PrintHeading(); };
}

void ReportInHand::PrintHeading()
{
    PageLayer& page = job.page;
    page.vsBoldOn();
    page.vsTextCentre(ReportLeft, ReportCentre, job.position, heading.heading);
    page.vsTextRight(ReportRight, job.position, heading.item);
    page.vsTextCentre(ReportLeft, ReportCentre, job.position + ReportLine + 1, heading.subHeading);
    job.position += 10.0;
    page.vsTextCentre(ReportLeft, ReportCentre, job.position, heading.section);
    if (heading.columnHeads)
        heading.columnHeads();
    page.vsBoldOff();
}

std::string ReportFigure(std::string_view stored)
{
    if (std::none_of(stored.begin(), stored.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return Trim(stored);
    return FormatAmount(ReadAmount(stored), edition::FormatPrintMoneyBlankZero);
}

void KeepReportRoom(PrintJob& job, double room)
{
    if (job.position + room <= LastLine)
        return;
    StartReportPage(job);
    if (job.onFurtherPage)
        job.onFurtherPage();
}

void NextReportLine(PrintJob& job, double pitch)
{
    KeepReportRoom(job, pitch);
    job.position += pitch;
}

std::vector<ReportTextLine> WrapReportText(PrintJob& job, std::string_view text, double width)
{
    std::vector<ReportTextLine> lines;
    std::u32string rest = CodePoints(text);
    const auto lineOf = [&](std::size_t count) {
        ReportTextLine line{.text = Utf8(rest.substr(0, count))};
        line.width = job.page.vsTextWidth(line.text);
        return line;
    };
    while (true) {
        ReportTextLine line = lineOf(rest.size());
        if (!(line.width > width) || rest.size() < 2) {
            lines.push_back(std::move(line));
            return lines;
        }
        // The longest beginning that fits, one character at least.
        std::size_t count = 1;
        std::size_t tooMany = rest.size();
        line = lineOf(count);
        while (count + 1 < tooMany) {
            const std::size_t middle = (count + tooMany) / 2;
            ReportTextLine longer = lineOf(middle);
            if (longer.width > width) {
                tooMany = middle;
            } else {
                count = middle;
                line = std::move(longer);
            }
        }
        // At the last blank that fits; a word as wide as the page is cut.
        const std::size_t blank = rest.rfind(U' ', count);
        if (blank != std::u32string::npos && blank > 0 && blank != count) {
            count = blank;
            line = lineOf(count);
        }
        lines.push_back(std::move(line));
        rest.erase(0, count);
        rest.erase(0, rest.find_first_not_of(U' '));
    }
}

double PrintReportText(PrintJob& job, double x, std::string_view text)
{
    bool first = true;
    for (const ReportTextLine& line : WrapReportText(job, text, ReportRight - x)) {
        if (!first)
            NextReportLine(job);
        job.page.vsTextLeft(x, job.position, line.text);
        first = false;
    }
    return job.page.vsTextEnd();
}

std::string ShortenReportText(PrintJob& job, std::string_view text, double width)
{
    if (!(job.page.vsTextWidth(text) > width))
        return std::string(text);
    std::u32string rest = CodePoints(text);
    std::string shortened;
    do {
        rest.pop_back();
        while (!rest.empty() && rest.back() == U' ')
            rest.pop_back();
        shortened = Utf8(rest) + Ellipsis;
    } while (!rest.empty() && job.page.vsTextWidth(shortened) > width);
    return shortened;
}

} // namespace quillmere
