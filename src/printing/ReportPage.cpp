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

constexpr std::array<std::string_view, 12> Months = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};

/// "5 July 2011".
std::string LongDate(Day day)
{
    const std::chrono::year_month_day date(day);
    return fmt::format("{} {} {}", static_cast<unsigned>(date.day()),
                       Months.at(static_cast<unsigned>(date.month()) - 1), static_cast<int>(date.year()));
}

} // namespace

void StartReportPage(PrintJob& job)
{
    PageLayer& page = job.page;
    // Kept: always a new page. Where a batch prints no form, a document begins with an empty sheet.
    page.vsNewPage();
    page.SetScaleForPage();
    ++job.pageNumber;
    job.position = 5.0;
    page.vsFontName(page.ReportFont());
    page.vsTextColor(page.ColBlack);
    page.vsFont(FontPoints, false, false);
    page.vsTextLeft(ReportLeft, job.position, edition::AppTitle);
    page.vsTextCentre(ReportLeft, ReportCentre, job.position, job.employee);
    page.vsTextRight(ReportRight, job.position, job.employer);
    job.position += 2.0;
    page.vsLine(RuleWidth, ReportLeft, job.position, ReportRight, job.position);
    job.position += 10.0;
    page.vsLine(RuleWidth, ReportLeft, FootRule, ReportRight, FootRule);
    page.vsTextLeft(ReportLeft, FootText, job.session.settings.reportCompiler);
    page.vsTextRight(ReportRight, FootText, LongDate(job.session.platform.Today()));
}

void PrintReportHeading(PrintJob& job, std::string_view heading, std::string_view item, std::string_view subHeading,
                        std::string_view section)
{
    PageLayer& page = job.page;
    std::string bookmark(heading);
    for (const std::string_view more : {subHeading, item})
        if (!more.empty())
            bookmark.append(" - ").append(more);
    page.vsBookmark(bookmark);
    page.vsBoldOn();
    page.vsTextCentre(ReportLeft, ReportCentre, job.position, heading);
    page.vsTextRight(ReportRight, job.position, item);
    page.vsTextCentre(ReportLeft, ReportCentre, job.position + ReportLine + 1, subHeading);
    job.position += 10.0;
    page.vsTextCentre(ReportLeft, ReportCentre, job.position, section);
    page.vsBoldOff();
}

std::string ReportFigure(std::string_view stored)
{
    if (std::none_of(stored.begin(), stored.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return Trim(stored);
    return FormatAmount(ReadAmount(stored), edition::FormatPrintMoneyBlankZero);
}

void NextReportLine(PrintJob& job)
{
    if (job.position + ReportLine > LastLine)
        StartReportPage(job);
    job.position += ReportLine;
}

double PrintReportText(PrintJob& job, double x, std::string_view text)
{
    PageLayer& page = job.page;
    std::u32string rest = CodePoints(text);
    const auto fits = [&](std::size_t count) {
        return x + page.vsTextWidth(Utf8(rest.substr(0, count))) <= ReportRight;
    };
    while (!fits(rest.size())) {
        std::size_t count = rest.size() - 1;
        while (count > 1 && !fits(count))
            --count;
        // At the last blank that fits; a word as wide as the page is cut.
        const std::size_t blank = rest.rfind(U' ', count);
        if (blank != std::u32string::npos && blank > 0)
            count = blank;
        page.vsTextLeft(x, job.position, Utf8(rest.substr(0, count)));
        NextReportLine(job);
        rest.erase(0, count);
        rest.erase(0, rest.find_first_not_of(U' '));
    }
    page.vsTextLeft(x, job.position, Utf8(rest));
    return x + page.vsTextWidth(Utf8(rest));
}

} // namespace quillmere
