#include "printing/forms/ReportPage.h"

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

} // namespace

/// The employee's name in the middle and the employer's at the right, in the head of the page. Names too long to stand
/// beside each other are drawn smaller, and where that is not enough, cut.
void ReportSheet::PrintNames(double titleEnd)
{
    constexpr double Middle = (ReportLeft + ReportCentre) / 2;
    const double roomOfEmployee = 2 * (Middle - titleEnd - GapBetweenNames);
    double points = FontPoints;
    double employee = page.vsTextWidth(names.employee);
    double employer = page.vsTextWidth(names.employer);
    const auto overlap = [&] {
        return employee > roomOfEmployee || Middle + employee / 2 + GapBetweenNames > ReportRight - employer;
    };
    while (overlap() && points > SmallestNamePoints) {
        employee *= (points - 1) / points;
        employer *= (points - 1) / points;
        --points;
    }
    page.vsFont(points, false, false);
    std::string shownEmployee = names.employee;
    std::string shownEmployer = names.employer;
    if (overlap()) {
        const double leftByEmployer = 2 * (ReportRight - employer - GapBetweenNames - Middle);
        shownEmployee = Shorten(names.employee, std::clamp(leftByEmployer, LeastRoomOfEmployee, roomOfEmployee));
        employee = page.vsTextWidth(shownEmployee);
        shownEmployer = Shorten(names.employer, ReportRight - Middle - employee / 2 - GapBetweenNames);
    }
    page.vsTextCentre(ReportLeft, ReportCentre, position, shownEmployee);
    page.vsTextRight(ReportRight, position, shownEmployer);
    page.vsFont(FontPoints, false, false);
}

void ReportSheet::StartPage()
{
    // Kept: always a new page. Where a batch prints no form, a document begins with an empty sheet.
    if (heading.beginsDocument)
        page.NextPrintPage();
    else
        page.FurtherPrintPage();
    position = 5.0;
    table = 0;
    page.vsFontName(page.ReportFont());
    page.vsTextColor(page.ColBlack);
    page.vsFont(FontPoints, false, false);
    {
        const BelongsTo element(page, Role::Paragraph);
        page.vsTextLeft(ReportLeft, position, edition::AppTitle);
        PrintNames(page.vsTextEnd());
    }
    position += 2.0;
    page.vsLine(RuleWidth, ReportLeft, position, ReportRight, position);
    position += 10.0;
    page.vsLine(RuleWidth, ReportLeft, FootRule, ReportRight, FootRule);
    page.vsTextLeft(ReportLeft, FootText, Shorten(names.compiler, CompilerWidth));
    page.vsTextRight(ReportRight, FootText, LongDate(names.today));
}

ReportSheet::ReportSheet(PageLayer& page, const ReportNames& names, ReportHeading ofReport)
    : page(page), names(names), heading(std::move(ofReport))
{
    StartPage();
    std::string bookmark(heading.heading);
    for (const std::string_view more : {heading.subHeading, heading.item})
        if (!more.empty())
            bookmark.append(" - ").append(more);
    page.vsBookmark(bookmark);
    PrintHeading();
}

ReportRow::ReportRow(ReportSheet& sheet, Role cells) : sheet(sheet), cells(cells)
{
    Begin();
}

void ReportRow::Begin()
{
    if (sheet.table == 0)
        sheet.table = sheet.page.AddElement({.role = Role::Table});
    row = sheet.page.AddElement({.role = Role::Row, .parent = sheet.table});
}

ElementNumber ReportRow::AddCell()
{
    if (sheet.table == 0 || row < sheet.table)
        Begin();
    return sheet.page.AddElement({.role = cells, .parent = row});
}

void ReportSheet::PrintHeading()
{
    page.vsBoldOn();
    {
        const BelongsTo element(page, Role::Title);
        page.vsTextCentre(ReportLeft, ReportCentre, position, heading.heading);
        page.vsTextRight(ReportRight, position, heading.item);
        page.vsTextCentre(ReportLeft, ReportCentre, position + ReportLine + 1, heading.subHeading);
    }
    position += 10.0;
    {
        const BelongsTo element(page, Role::Paragraph);
        page.vsTextCentre(ReportLeft, ReportCentre, position, heading.section);
    }
    if (heading.columnHeads)
        heading.columnHeads(*this);
    page.vsBoldOff();
}

std::string ReportFigure(std::string_view stored)
{
    if (std::none_of(stored.begin(), stored.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return Trim(stored);
    return FormatAmount(ReadAmount(stored), edition::FormatPrintMoneyBlankZero);
}

void ReportSheet::KeepRoom(double room)
{
    if (position + room <= LastLine)
        return;
    StartPage();
    PrintHeading();
}

void ReportSheet::NextLine(double pitch)
{
    KeepRoom(pitch);
    position += pitch;
}

std::vector<ReportTextLine> ReportSheet::Wrap(std::string_view text, double width) const
{
    std::vector<ReportTextLine> lines;
    std::u32string rest = CodePoints(text);
    const auto lineOf = [&](std::size_t count) {
        ReportTextLine line{.text = Utf8(rest.substr(0, count))};
        line.width = page.vsTextWidth(line.text);
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

double ReportSheet::PrintText(double x, std::string_view text)
{
    bool first = true;
    for (const ReportTextLine& line : Wrap(text, ReportRight - x)) {
        if (!first)
            NextLine();
        page.vsTextLeft(x, position, line.text);
        first = false;
    }
    return page.vsTextEnd();
}

std::string ReportSheet::Shorten(std::string_view text, double width) const
{
    if (!(page.vsTextWidth(text) > width))
        return std::string(text);
    std::u32string rest = CodePoints(text);
    std::string shortened;
    do {
        rest.pop_back();
        while (!rest.empty() && rest.back() == U' ')
            rest.pop_back();
        shortened = Utf8(rest) + Ellipsis;
    } while (!rest.empty() && page.vsTextWidth(shortened) > width);
    return shortened;
}

} // namespace quillmere
