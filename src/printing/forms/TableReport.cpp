#include "printing/forms/TableReport.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

namespace {

constexpr double GapBetweenColumns = 2;
constexpr double RuleWidth = 0.2;
constexpr double FontPoints = 8;
constexpr double RowGap = 1.5;

/// Where a column stands, mm.
struct ColumnPlace {
    double left = 0, right = 0;
};

/// How wide a column's longest word is with the gap behind it, mm, in the font in force. A word that would take more
/// than a quarter of the page is left to be cut.
double RoomForWords(const PageLayer& page, const PrintedTable& table, std::size_t column)
{
    constexpr double Rounding = 0.01;
    double widest = 0;
    const auto look = [&](std::string_view text) {
        while (!text.empty()) {
            const std::string_view word = text.substr(0, text.find(' '));
            widest = std::max(widest, page.vsTextWidth(word));
            text.remove_prefix(std::min(word.size() + 1, text.size()));
        }
    };
    look(table.columns[column].caption);
    for (const std::vector<std::string>& cells : table.rows)
        if (column < cells.size())
            look(cells[column]);
    return std::min(widest + Rounding + GapBetweenColumns, (ReportRight - ReportLeft) / 4);
}

/// The columns' shares of the page; one whose share is narrower than its words takes their room from the others.
std::vector<double> WidthsOf(const std::vector<PrintedTable::Column>& columns, const std::vector<double>& needed)
{
    std::vector<double> widths(columns.size());
    std::vector<bool> isFixed(columns.size());
    for (bool changed = true; changed;) {
        double room = ReportRight - ReportLeft;
        int shares = 0;
        for (std::size_t column = 0; column < columns.size(); ++column) {
            room -= isFixed[column] ? needed[column] : 0;
            shares += isFixed[column] ? 0 : columns[column].width;
        }
        changed = false;
        for (std::size_t column = 0; column < columns.size(); ++column) {
            widths[column] = isFixed[column] ? needed[column] : room * columns[column].width / shares;
            const bool isNarrow = widths[column] < needed[column];
            changed = changed || isNarrow;
            isFixed[column] = isFixed[column] || isNarrow;
        }
    }
    return widths;
}

std::vector<ColumnPlace> PlacesOf(PageLayer& page, const PrintedTable& table)
{
    page.vsFont(FontPoints, true, false); // that of the heads, which is the wider one
    std::vector<double> needed;
    for (std::size_t column = 0; column < table.columns.size(); ++column)
        needed.push_back(RoomForWords(page, table, column));
    const std::vector<double> widths = WidthsOf(table.columns, needed);
    // Where there is not room enough for all, each gives of it.
    const double whole = std::accumulate(widths.begin(), widths.end(), 0.0);
    const double scale = std::min(1.0, (ReportRight - ReportLeft) / whole);
    std::vector<ColumnPlace> places;
    double left = ReportLeft;
    for (const double width : widths) {
        places.push_back({left, left + width * scale - GapBetweenColumns});
        left += width * scale;
    }
    return places;
}

/// The cells of one row, each broken into the lines of its column.
class WrappedRow {
public:
    WrappedRow(const ReportSheet& sheet, const std::vector<ColumnPlace>& places, const std::vector<std::string>& cells)
        : places(places)
    {
        for (std::size_t column = 0; column < places.size(); ++column) {
            const ColumnPlace& place = places[column];
            lines.push_back(
                sheet.Wrap(column < cells.size() ? cells[column] : std::string(), place.right - place.left));
            height = std::max(height, lines.back().size());
        }
    }
    double Room() const { return static_cast<double>(height) * ReportLine; }
    /// Draws the row below the sheet's line, which comes to its last one.
    void Print(ReportSheet& sheet, const std::vector<PrintedTable::Column>& columns, Role role) const
    {
        ReportRow row(sheet, role);
        std::vector<ElementNumber> cells;
        for (std::size_t column = 0; column < places.size(); ++column)
            cells.push_back(row.AddCell());
        for (std::size_t line = 0; line < height; ++line) {
            sheet.position += ReportLine;
            for (std::size_t column = 0; column < places.size(); ++column)
                if (line < lines[column].size()) {
                    const BelongsTo cell(sheet.page, cells[column]);
                    PrintCell(sheet, columns[column].figure, places[column], lines[column][line].text);
                }
        }
    }

private:
    static void PrintCell(ReportSheet& sheet, bool figure, const ColumnPlace& place, const std::string& text)
    {
        if (figure)
            sheet.page.vsTextRight(place.right, sheet.position, text);
        else
            sheet.page.vsTextLeft(place.left, sheet.position, text);
    }

    const std::vector<ColumnPlace>& places;
    std::vector<std::vector<ReportTextLine>> lines;
    std::size_t height = 1;
};

std::vector<std::string> CaptionsOf(const PrintedTable& table)
{
    std::vector<std::string> captions;
    for (const PrintedTable::Column& column : table.columns)
        captions.push_back(column.caption);
    return captions;
}

} // namespace

void PrintTableReport(PageLayer& page, const ReportNames& names, const PrintedTable& table)
{
    std::vector<ColumnPlace> places;
    const auto columnHeads = [&](ReportSheet& sheet) {
        if (places.empty()) // measured once there is a page
            places = PlacesOf(page, table);
        page.vsFont(FontPoints, true, false);
        WrappedRow(sheet, places, CaptionsOf(table)).Print(sheet, table.columns, Role::HeadCell);
        sheet.position += RowGap;
        page.vsLine(RuleWidth, ReportLeft, sheet.position, ReportRight, sheet.position);
        page.vsFont(FontPoints, false, false);
    };
    ReportSheet sheet(
        page, names,
        {.heading = table.heading, .subHeading = table.subHeading, .columnHeads = columnHeads, .beginsDocument = true});
    for (const std::vector<std::string>& cells : table.rows) {
        const WrappedRow row(sheet, places, cells);
        sheet.KeepRoom(row.Room());
        row.Print(sheet, table.columns, Role::Cell);
        sheet.position += RowGap;
    }
    for (const std::string& remark : table.remarks) {
        sheet.NextLine();
        const BelongsTo element(page, Role::Paragraph);
        sheet.PrintText(ReportLeft, remark);
    }
}

} // namespace quillmere
