#include "printing/forms/TableReport.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string>
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

std::vector<ColumnPlace> PlacesOf(const std::vector<PrintedTable::Column>& columns)
{
    const int shares = std::accumulate(columns.begin(), columns.end(), 0,
                                       [](int sum, const PrintedTable::Column& column) { return sum + column.width; });
    std::vector<ColumnPlace> places;
    double left = ReportLeft;
    for (const PrintedTable::Column& column : columns) {
        const double right = left + (ReportRight - ReportLeft) * column.width / shares;
        places.push_back({left, right - GapBetweenColumns});
        left = right;
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
    const std::vector<ColumnPlace> places = PlacesOf(table.columns);
    const auto columnHeads = [&](ReportSheet& sheet) {
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
