#include "printing/forms/ScheduleReports.h"

#include "edition/Edition.h"
#include "frame/Amount.h"
#include "frame/ScheduleLines.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillmere {

namespace {

constexpr std::string_view MadeGood = "Amount made good or";
constexpr std::string_view TaxDeducted = "from which tax deducted";

constexpr auto AssetColumns = std::to_array<ReportColumn>({
    {"CostMarket", ReportColumn1, "Cost"},
    {"Tax", ReportColumn2, MadeGood, TaxDeducted},
    {"CashEq", ReportColumn3, "Cash equivalent"},
});
constexpr auto PaymentColumns = std::to_array<ReportColumn>({
    {"Payment", ReportColumn1, "Payment"},
    {"Tax", ReportColumn2, "Tax"},
});
constexpr auto VoucherColumns = std::to_array<ReportColumn>({
    {"Gross", ReportColumn1, "Gross Amount"},
    {"Tax", ReportColumn2, MadeGood, TaxDeducted},
    {"CashEq", ReportColumn3, "Cash equivalent"},
});
constexpr auto CostColumns = std::to_array<ReportColumn>({
    {"Cost", ReportColumn1, "Cost"},
    {"AmountGood", ReportColumn2, MadeGood, TaxDeducted},
    {"CashEq", ReportColumn3, "Cash equivalent"},
});
constexpr auto AnnualValueColumns = std::to_array<ReportColumn>({
    {"AnnualValue", ReportColumn1, "Annual value plus", "expenses incurred"},
    {"AmountGood", ReportColumn2, MadeGood, TaxDeducted},
    {"CashEqu", ReportColumn3, "Cash equivalent"},
});
constexpr auto TaxColumns = std::to_array<ReportColumn>({
    {"Tax", ReportColumn2, "Tax"},
});
constexpr auto ExpenseColumns = std::to_array<ReportColumn>({
    {"Cost", ReportColumn1, "Cost"},
    {"AmountGood", ReportColumn2, MadeGood, TaxDeducted},
    {"CashEq", ReportColumn3, "Taxable Payment"},
});
constexpr auto AddedColumns = std::to_array<ReportColumn>({
    {"AmountAdded", ReportColumn3, "Amount Added"},
});
constexpr auto DeductedColumns = std::to_array<ReportColumn>({
    {"AmountDeducted", ReportColumn3, "Amount Deducted"},
});

constexpr std::string_view OtherItems = "Other Items (Including subscriptions and professional fees)";
constexpr std::string_view Expenses = "Expenses payments made to, or on behalf of, the employee";

constexpr ScheduleReport Of(std::string_view table, std::string_view heading, std::string_view section,
                            std::span<const ReportColumn> columns, std::string_view loadingError)
{
    return {.table = table, .heading = heading, .section = section, .columns = columns, .loadingError = loadingError};
}

constexpr ScheduleReport OtherItemsReport(std::string_view table, std::string_view loadingError)
{
    return Of(table, OtherItems, "Section M - Page 2", CostColumns, loadingError);
}

constexpr ScheduleReport ExpensesReport(std::string_view table, std::string_view loadingError,
                                        std::string_view subHeading)
{
    ScheduleReport report = Of(table, Expenses, "Section N - Page 2", ExpenseColumns, loadingError);
    report.subHeading = subHeading;
    return report;
}

constexpr auto Reports = std::to_array<ScheduleReport>({
    Of("ANotepad", "Assets transferred (cars, property goods or other assets)", "Section A - Page 1", AssetColumns,
       "A Notepad - loading error"),
    Of("BNotepad", "Payments made on behalf of employee", "Section B - Page 1", PaymentColumns,
       "B Notepad - loading error"),
    Of("CNotepad", "Vouchers or credit cards", "Section C - Page 1", VoucherColumns, "C Notepad - loading error"),
    Of("INotepad", "Private medical treatment or insurance", "Section I - Page 2", CostColumns,
       "I Notepad - loading error"),
    Of("KNotepad", "Services supplied", "Section K - Page 2", CostColumns, "K Notepad - loading error"),
    Of("LNotepad", "Assets placed at the employee's disposal", "Section L - Page 2", AnnualValueColumns,
       "L Notepad - loading error"),
    OtherItemsReport("NNotepad1", "N1 Notepad - loading error"),
    OtherItemsReport("NNotepad2", "N2 Notepad - loading error"),
    Of("NNotepad3", "Income tax paid but not deducted from director's remuneration", "Section M - Page 2", TaxColumns,
       "N3 Notepad - loading error"),
    ExpensesReport("ONotepad1", "O1 Notepad - loading error",
                   "Travelling and subsistence payments (except mileage allowance payments for employee's own car)"),
    ExpensesReport("ONotepad2", "O2 Notepad - loading error", "Entertainment"),
    ExpensesReport("ONotepad3", "O3 Notepad - loading error", "General expenses allowance for business travel"),
    ExpensesReport("ONotepad4", "O4 Notepad - loading error", "Payments for use of home telephone"),
    ExpensesReport("ONotepad5", "O5 Notepad - loading error",
                   "Non-qualifying relocation expenses (those not shown in sections J or M)"),
    ExpensesReport("ONotepad6", "O6 Notepad - loading error", "Description of other expenses"),
    {.table = "P11DBNotepad1",
     .heading = "Any amounts not included in box A on which Class 1A NICs are due (P11D(b))",
     .columns = AddedColumns,
     .loadingError = "P11D(B) Notepad 1 - loading error",
     .whose = RecordOf::Employer},
    {.table = "P11DBNotepad2",
     .heading = "Any amounts not included in box A on which Class 1A NICs are not due (P11D(b))",
     // Kept: the same schedule has another heading in a batch.
     .headingInBatch = "Any amounts included in box A on which Class 1A NICs are not due (P11D(b))",
     .columns = DeductedColumns,
     .loadingError = "P11D(B) Notepad 2 - loading error",
     .whose = RecordOf::Employer},
});

/// A filled line: its description and the stored texts of its columns.
struct PrintedLine {
    std::string description;
    std::vector<std::string> figures;
};

std::vector<PrintedLine> FilledLines(Records& records, const ScheduleReport& report)
{
    std::vector<PrintedLine> lines;
    for (int number = 1; number <= LinesOfASchedule; ++number) {
        PrintedLine line{.description = std::string(records.Field(report.table, Numbered("Description", number)))};
        bool filled = !line.description.empty();
        for (const ReportColumn& column : report.columns) {
            line.figures.emplace_back(records.Field(report.table, Numbered(column.field, number)));
            filled = filled || !line.figures.back().empty();
        }
        if (filled)
            lines.push_back(std::move(line));
    }
    return lines;
}

constexpr double WidthOfRules = 15;
constexpr double GapBelowHeads = 1; ///< keeps the first line clear of the underlines
constexpr double RoomOfTotals = 6;  ///< from the last line to the rules under the totals
constexpr double MoneyShort = 0.75; ///< totals stand so much before the end of the figures

void DrawRules(ReportSheet& sheet, std::span<const ReportColumn> columns, double width)
{
    for (const ReportColumn& column : columns)
        sheet.page.vsLine(width, column.right - WidthOfRules, sheet.position, column.right, sheet.position);
}

/// A head of one line is underlined; of two the second.
void DrawColumnHeads(ReportSheet& sheet, std::span<const ReportColumn> columns)
{
    PageLayer& page = sheet.page;
    ReportRow row(sheet, Role::HeadCell);
    const auto underlined = [&](double y, const ReportColumn& column, std::string_view text) {
        page.vsUnderlineOn();
        page.vsTextRight(column.right, y, text);
        page.vsUnderlineOff();
    };
    {
        const BelongsTo cell(page, row.AddCell());
        page.vsUnderlineOn();
        page.vsTextLeft(ReportText, sheet.position, "Description");
        page.vsUnderlineOff();
    }
    for (const ReportColumn& column : columns) {
        const BelongsTo cell(page, row.AddCell());
        if (column.secondHead.empty()) {
            underlined(sheet.position, column, column.head);
            continue;
        }
        page.vsTextRight(column.right, sheet.position, column.head);
        underlined(sheet.position + ReportLine, column, column.secondHead);
    }
    const bool hasSecondLine =
        std::ranges::any_of(columns, [](const ReportColumn& column) { return !column.secondHead.empty(); });
    sheet.position += (hasSecondLine ? ReportLine : 0) + GapBelowHeads;
}

constexpr double GapBeforeFigures = 1;

/// A line's figures stand beside its description, or below where that is too long for it.
void PrintLine(ReportSheet& sheet, std::span<const ReportColumn> columns, const PrintedLine& line)
{
    PageLayer& page = sheet.page;
    ReportRow row(sheet, Role::Cell);
    const auto printDescription = [&] {
        const BelongsTo cell(page, row.AddCell());
        return sheet.PrintText(ReportText, line.description);
    };
    const double end = printDescription();
    std::vector<std::string> figures;
    double leftmost = ReportRight;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        figures.push_back(ReportFigure(line.figures[i]));
        if (!figures[i].empty())
            leftmost = std::min(leftmost, columns[i].right - page.vsTextWidth(figures[i]));
    }
    if (leftmost < ReportRight && end + GapBeforeFigures > leftmost)
        sheet.NextLine();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const BelongsTo cell(page, row.AddCell());
        page.vsTextRight(columns[i].right, sheet.position, figures[i]);
    }
}

} // namespace

std::span<const ScheduleReport> ScheduleReports()
{
    return Reports;
}

const ScheduleReport& ScheduleReportOf(std::string_view table)
{
    const auto found = std::ranges::find(Reports, table, &ScheduleReport::table);
    if (found == Reports.end())
        throw std::logic_error("There is no report of " + std::string(table));
    return *found;
}

bool PrintScheduleReport(PageLayer& page, const ReportNames& names, Records& records, const ScheduleReport& report,
                         bool isInBatchDeclaration)
{
    if (!records.Seek(report.table, report.whose))
        return false;
    const std::vector<PrintedLine> lines = FilledLines(records, report);
    if (lines.empty())
        return true;

    const bool otherHeading = isInBatchDeclaration && !report.headingInBatch.empty();
    const auto columnHeads = [&](ReportSheet& sheet) {
        sheet.position += 2 * ReportLine;
        {
            const BelongsTo element(page, Role::Paragraph);
            page.vsTextLeft(ReportText, sheet.position, sheet.Shorten(sheet.names.employee, ReportRight - ReportText));
        }
        sheet.position += 2 * ReportLine;
        DrawColumnHeads(sheet, report.columns);
    };
    ReportSheet sheet(page, names,
                      {.heading = otherHeading ? report.headingInBatch : report.heading,
                       .subHeading = report.subHeading,
                       .section = report.section,
                       .columnHeads = columnHeads});

    std::vector<Amount> totals(report.columns.size());
    for (const PrintedLine& line : lines) {
        sheet.NextLine();
        PrintLine(sheet, report.columns, line);
        for (std::size_t i = 0; i < report.columns.size(); ++i)
            totals[i] += ReadAmount(line.figures[i]);
    }
    sheet.KeepRoom(RoomOfTotals);
    sheet.position += 1.0;
    DrawRules(sheet, report.columns, 0.2);
    sheet.position += 4.0;
    page.vsBoldOn();
    ReportRow row(sheet, Role::Cell);
    row.AddCell();
    for (std::size_t i = 0; i < report.columns.size(); ++i) {
        const BelongsTo cell(page, row.AddCell());
        page.vsTextMoney(report.columns[i].right - MoneyShort, sheet.position,
                         FormatAmount(totals[i], edition::FormatPrintMoneyBlankZero));
    }
    sheet.position += 1.0;
    DrawRules(sheet, report.columns, 0.4);
    page.vsBoldOff();
    return true;
}

} // namespace quillmere
