#include "printing/forms/WorkingReports.h"

#include "edition/AccommodationRates.h"
#include "edition/Edition.h"
#include "edition/LeftOvers.h"
#include "edition/RelocationRates.h"
#include "edition/ReportWords.h"
#include "edition/VanRates.h"
#include "frame/Nth.h"
#include "frame/Text.h"
#include "frame/Tick.h"
#include "printing/forms/FormPrimitives.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <stdexcept>

namespace quillmere {

namespace {

using enum Show;

constexpr std::string_view NotApplicable = "N/A";
constexpr std::string_view CarReadingError = "Unable to Open Car Information for printing";

// ---- section F: cars ----------------------------------------------------------------------------

constexpr auto CarItems = std::to_array<std::string_view>({"Car 1", "Car 2", "Car3", "Car4", "Car5", "Car6"});

constexpr auto CarEntered = std::to_array<std::string_view>({
    "FMakeModel",
    "FRegDate",
    "FC02",
    "FEngine",
    "FFuel",
    "FDateFrom",
    "FDateTo",
    "FListPrice",
    "FAccessories",
    "FCaptContr",
    "FPrivateUse",
    "FCashEqu",
    "FFuelEqu",
    "FDateWithdrawn",
    "FUnavailableFirst1",
    "FUnavailableLast1",
    "FUnavailableFirst2",
    "FUnavailableLast2",
    "FUnavailableFirst3",
    "FUnavailableLast3",
    "FUnavailableFirst4",
    "FUnavailableLast4",
});

constexpr WorkingRow UnavailabilityRow(std::string_view label, std::string_view first, std::string_view last)
{
    return {.label = label,
            .show = Period,
            .field = first,
            .field2 = last,
            .otherwise = NotApplicable,
            .otherwise2 = NotApplicable};
}

constexpr auto CarRows = std::to_array<WorkingRow>({
    {"The Car"},
    {"Make & Model", Text, "FMakeModel"},
    {"Engine size", Text, "FEngine"},
    {"Fuel type", Text, "FFuel"},
    {"C02 figure", Text, "FC02"},
    {"Date first registered", Text, "FRegDate"},
    {.label = "Date Car was first available", .show = Text, .field = "FDateFrom", .otherwise = edition::TaxYearStart},
    {.label = "Dates car was last available", .show = Text, .field = "FDateTo", .otherwise = edition::TaxYearEnd},
    {.label = "Unavailability Periods", .show = Heads, .otherwise = "From", .otherwise2 = "To"},
    UnavailabilityRow("Period 1", "FUnavailableFirst1", "FUnavailableLast1"),
    UnavailabilityRow("Period 2", "FUnavailableFirst2", "FUnavailableLast2"),
    UnavailabilityRow("Period 3", "FUnavailableFirst3", "FUnavailableLast3"),
    UnavailabilityRow("Period 4", "FUnavailableFirst4", "FUnavailableLast4"),
    {"Calculating the price of the car"},
    {"List price", Figure, "FListPrice"},
    {"Accessories", Figure, "FAccessories"},
    {"Total price of car and accessories", Figure, "FCBox"},
    {"Capital Contributions", Figure, "FCaptContr"},
    {edition::report::CarPrice, Figure, "FEBox"},
    {"Calculation of appropriate percentage"},
    {"CO2 Figure Rounded Down", Text, "FGBox"},
    {"Basic percentage", Text, "FHBox"},
    {"Reduction for fuel types B,C,E + H", Text, "FJBox"},
    {"Appropriate Percentage", Text, "FNBox"},
    {"Full Year Benefit", Figure, "FPBox"},
    {"Deductions (Unavailable days + private use payments)"},
    {"Number of Days the car was unavailable", Text, "FQBox"},
    {"Deduction for Unavailability", Figure, "FRBox"},
    {"Car Benefit for available period", Figure, "FSBox"},
    {"Payments made in the year for private use of the car", Figure, "FPrivateUse"},
    {edition::report::CarCharge, Figure, "FUBox"},
    {"Car fuel benefit charge"},
    {"Car fuel charge (Full year)", Figure, "FVBox"},
    {"Date the Fuel was withdrawn", Text, "FDateWithdrawn"},
    {"Additional days after Fuel Withdrawn", Text, "FWBox"},
    {"Total Days fuel benefit not applicable", Text, "FXBox"},
    {"Deduction", Figure, "FYBox"},
    {edition::report::CarFuelCharge, Figure, "FFuelEqu"},
});

// ---- section G: vans ----------------------------------------------------------------------------

constexpr auto VanItems = std::to_array<std::string_view>({"Van 1", "Van 2", "Van 3"});

constexpr auto VanEntered = std::to_array<std::string_view>({
    "RegNumber",
    "HBox",
    "LBox",
    "DateFrom1",
    "DateTo1",
    "DateFrom2",
    "DateTo2",
    "DateFrom3",
    "DateTo3",
    "DateFuelWithdrawn",
});

/// The full fuel charge is not stored: it stands while the van is there and the tick is set.
Amount VanFuelCharge(const WorkingReader& read)
{
    const bool charged = IsSet(read("FuelVanTick")) && !read("RegNumber").empty();
    return Amount::WholePounds(charged ? edition::Vans.fuelCharge : 0);
}

constexpr auto VanRows = std::to_array<WorkingRow>({
    {"The Van"},
    {"Registration Number", Text, "RegNumber"},
    {edition::report::VanFullCharge, Figure, "ABox"},
    {.label = edition::report::VanAvailability,
     .show = Period,
     .field = "DateFrom1",
     .field2 = "DateTo1",
     .otherwise = edition::TaxYearStart,
     .otherwise2 = edition::TaxYearEnd},
    {"Further period of unavailability", Period, "DateFrom2", "DateTo2"},
    {{}, Period, "DateFrom3", "DateTo3"},
    {"Total Days for which the van was unavailable", Text, "EBox"},
    {"Reduction for unavailability", Figure, "FBox"},
    {"Van benefit charge after reduction for unavailability", Figure, "GBox"},
    {"Percentage Reduction", Text, "HBox"},
    {"Reduction for Sharing", Figure, "JBox"},
    {"Van benefit charge after reduction for sharing", Figure, "KBox"},
    {"Payments made for private use of the van", Figure, "LBox"},
    {edition::report::VanCharge, Figure, "MBox"},
    {.label = "Fuel Benefit charge for the whole tax year", .show = Worked, .work = VanFuelCharge},
    // The days without the van are those without its fuel: there is one figure for both.
    {"Days for which the van was unavailable", Text, "EBox"},
    {"Date the provision of fuel was withdrawn", Text, "DateFuelWithdrawn"},
    {"Additional days after fuel was withdrawn", Text, "RBox"},
    {"Total days for which no fuel benefit charge applies", Text, "SBox"},
    {"Reduction", Figure, "TBox"},
    {"Van fuel benefit charge after reduction for unavailability", Figure, "VBox"},
    {"Reduction for sharing", Figure, "WBox"},
    {edition::report::VanFuelCharge, Figure, "XBox"},
});

// ---- section D: living accommodation ------------------------------------------------------------

constexpr auto AccommodationEntered = std::to_array<std::string_view>({
    "Address1",
    "Address2",
    "Address3",
    "Address4",
    "Address5",
    "Postcode",
    "BasicChargeA",
    "BasicChargeB",
    "BasicChargeD",
    "BasicChargeE",
    "AddChargeF",
    "AddChargeG",
    "AddChargeM",
    "AddChargeN",
    "AddChargeDays",
});

constexpr auto AddressFields =
    std::to_array<std::string_view>({"Address1", "Address2", "Address3", "Address4", "Address5", "Postcode"});

/// "(183 / 366) x (…": how the charge of a part of the year comes from that of the whole one.
std::string AccommodationDaysLabel(const WorkingReader& read)
{
    const std::string days = read("AddChargeDays");
    return fmt::format("({} / {}{}", days.empty() ? "Number of days" : days, edition::Accommodation.daysDivisor,
                       edition::report::AdditionalChargeOfDays);
}

/// Not the stored sum: that is brought up to date by the additional charge's own screen alone, and this one must agree
/// with the form.
Amount TotalCharges(const WorkingReader& read)
{
    return ReadAmount(read("BasicChargeE")) + ReadAmount(read("AddChargeQ"));
}

constexpr auto AccommodationRows = std::to_array<WorkingRow>({
    {"The Accommodation", Address},
    {"The Basic Charge"},
    {"Amount of rent paid for the year", Figure, "BasicChargeA"},
    {"Annual value of the accommodation", Figure, "BasicChargeB"},
    {"Greater of Amount paid & Annual Value", Figure, "BasicChargeC"},
    {"Amount made good by the employee for the living accommodation", Figure, "BasicChargeD"},
    {"Cash equivalent of the basic benefit", Figure, "BasicChargeE"},
    {"The Additional Charge"},
    {"Cost of Accommodation (including cost of improvements)", Figure, "AddChargeF"},
    {"Payments made by the employee towards the cost or for grant of tenancy", Figure, "AddChargeG"},
    {"(Cost of Accommodation) - (Payments made by the employee)", Figure, "AddChargeH"},
    {edition::report::CostLimit, Figure, "AddChargeJ"},
    // Kept: the labels name the rate of an older year.
    {edition::report::AdditionalCharge, Figure, "AddChargeK"},
    {"Number of days (if accommodation provided for less than a year)", Text, "AddChargeDays"},
    {.show = Figure, .field = "AddChargeL", .label2 = AccommodationDaysLabel},
    {"Rent paid by employee for the accommodation", Figure, "AddChargeM"},
    {"Any rent included in basic charge", Figure, "AddChargeN"},
    {"(Rent paid by employee) - (Any rent included in basic charge)", Figure, "AddChargeP"},
    {"Additional Charge cash equivalent", Figure, "AddChargeQ"},
    {"Basic Charge cash equivalent", Figure, "BasicChargeE"},
    {.label = "Total Charges", .show = Worked, .work = TotalCharges},
});

// ---- section H: loans ---------------------------------------------------------------------------

constexpr auto LoanItems = std::to_array<std::string_view>({"Loan 1", "Loan 2", "Loan 3", "Loan 4", "Loan 5"});

// The currency and its rate are stored for every loan, whether there is one or not.
constexpr auto LoanEntered = std::to_array<std::string_view>(
    {"MaxBalanceLater", "MaxBalanceEarlier", "MaxBox", "InterestPaid", "DateFrom", "DateTo", "CashEq"});

constexpr auto LoanRows = std::to_array<WorkingRow>({
    {"Loan Details"},
    {"Currency", Text, "Currency"},
    {"Maximum amount outstanding at any time in the year", Figure, "MaxBox"},
    {"Total of both balances", Figure, "TotalBalance"},
    {"Total / 2", Figure, "Divide2"},
    {"Number of complete tax months in tax year throughout which loan was owing", Text, "TaxMonths"},
    {"Official rate of interest (%)", Text, "InterestRate"},
    {"Cash Equivalent of loan", Figure, "CashEq"},
});

// ---- section E: mileage -------------------------------------------------------------------------

constexpr auto VehicleItems = std::to_array<std::string_view>({"Car or van", "Motorcycle", "Bicycle"});

constexpr auto VehicleEntered = std::to_array<std::string_view>({"ABox", "BBox", "DBox", "KBox", "LBox"});

constexpr auto VehicleRows = std::to_array<WorkingRow>({
    {"Mileage allowance payments made to employee"},
    {edition::report::MileagePaid, Figure, "ABox"},
    {"Amounts from which tax has been deducted", Figure, "BBox"},
    {"Net mileage allowance paid", Figure, "CBox"},
    {edition::report::Miles, Text, "DBox"},
    {"Total Approved mileage allowance payments", Figure, "JBox"},
    {"Passenger payments"},
    {edition::report::Passengers, Figure, "KBox"},
    {"Number of business miles for which passenger payments made", Text, "LBox"},
    {edition::report::PassengerRate, Figure, "MBox"},
    {"Total", Figure, "QBox"},
});

// ---- section J: relocation ----------------------------------------------------------------------

constexpr auto RelocationEntered =
    std::to_array<std::string_view>({"ABox", "EmployerCost", "EmployeeCost", "CBox", "QualExp"});

/// The qualifying benefits are not stored.
Amount RelocationBenefits(const WorkingReader& read)
{
    return ReadAmount(read("EmployerCost")) - ReadAmount(read("EmployeeCost"));
}

Amount RelocationExemption(const WorkingReader&)
{
    return Amount::WholePounds(edition::RelocationExemption);
}

constexpr auto RelocationRows = std::to_array<WorkingRow>({
    {"Qualifying expenses payments"},
    {"Gross amount of all qualifying expenses payments", Figure, "ABox"},
    {"Cost to you as an employer of any qualifying benefits", Figure, "EmployerCost"},
    {"Less anything paid towards the cost by the employee", Figure, "EmployeeCost"},
    {.label = "Amount of qualifying benefits", .show = Worked, .work = RelocationBenefits},
    {"Cost of qualifying living accommodation paid", Figure, "CBox"},
    {"Total of expenses and benefits", Figure, "DBox"},
    {"Calculating the exempt amount"},
    {.label = edition::report::Exemption, .show = Worked, .work = RelocationExemption},
    {edition::report::PriorExpenses, Figure, "QualExp"},
    {"Exempt amount for this employee", Figure, "EBox"},
});

// ---- all of them --------------------------------------------------------------------------------

/// Cars 1 and 2 stand in another table than the rest; their papers are alike.
constexpr WorkingReport CarReport(std::string_view name, std::string_view table)
{
    return {.name = name,
            .table = table,
            .heading = "Cars and car fuel",
            .section = "Section F - Page 1",
            .readingError = CarReadingError,
            .items = CarItems,
            .entered = CarEntered,
            .rows = CarRows,
            .pitch = 5.5,
            .labelsRight = true};
}

constexpr WorkingReport Paper(std::string_view name, std::string_view heading, std::string_view section,
                              std::string_view loadingError, std::span<const std::string_view> entered,
                              std::span<const WorkingRow> rows, std::span<const std::string_view> items = {})
{
    return {.name = name,
            .table = name,
            .heading = heading,
            .section = section,
            .loadingError = loadingError,
            .items = items,
            .entered = entered,
            .rows = rows};
}

constexpr auto Reports = std::to_array<WorkingReport>({
    {.name = "DNotepad",
     .table = "DNotepad",
     .heading = "Living Accommodation",
     .subHeading = "Cash Equivalent of accommodation provided for employee, or his/her family or household",
     .section = "Section D - Page 1",
     .loadingError = "D Notepad - loading error",
     .entered = AccommodationEntered,
     .rows = AccommodationRows},
    Paper("ENotepad", "Mileage allowance and passenger payments", "Section E - Page 1", "E Notepad - loading error",
          VehicleEntered, VehicleRows, VehicleItems),
    CarReport("Cars 1 and 2", "P11D"),
    CarReport("Cars 3 to 6", "ExtraCars"),
    Paper("GNotepad", "Vans", "Section G - Page 2", "G Notepad - loading error", VanEntered, VanRows, VanItems),
    Paper("HNotepad", "Interest-free and low interest loans", "Section H - Page 2", "H Notepad - loading error",
          LoanEntered, LoanRows, LoanItems),
    Paper("JNotepad", "Qualifying relocation expenses payments and benefits", "Section J - Page 2",
          "J Notepad - loading error", RelocationEntered, RelocationRows),
});

constexpr double LabelLeft = 12;
constexpr double BeforeTitle = 1.5; ///< additional room above a title

/// Prints a label; in a report whose labels end at the first column, at the left where it is too long for that.
void PrintLabel(ReportSheet& sheet, const WorkingReport& report, std::string_view label)
{
    if (report.labelsRight && sheet.page.vsTextWidth(label) <= ReportColumn1 - LabelLeft)
        sheet.page.vsTextRight(ReportColumn1, sheet.position, label);
    else
        sheet.page.vsTextLeft(LabelLeft, sheet.position, label);
}

std::string TextOr(const WorkingReader& read, std::string_view field, std::string_view otherwise)
{
    std::string text = field.empty() ? std::string() : Trim(read(field));
    return text.empty() ? std::string(otherwise) : text;
}

constexpr double GapAfterLabel = 2;

/// A value ends at the third column, beside its label; where it is too long for that, on further lines below.
void PrintValue(ReportSheet& sheet, std::string_view text)
{
    PageLayer& page = sheet.page;
    const double start = page.vsTextEnd() + GapAfterLabel;
    bool first = true;
    for (const ReportTextLine& line : sheet.Wrap(text, ReportColumn3 - LabelLeft)) {
        if (!first || ReportColumn3 - line.width < start)
            sheet.NextLine();
        page.vsTextRight(ReportColumn3, sheet.position, line.text);
        first = false;
    }
}

void PrintAddress(ReportSheet& sheet, const WorkingReader& read)
{
    bool first = true;
    for (const std::string_view field : AddressFields) {
        const std::string line = Trim(read(field));
        if (line.empty())
            continue;
        if (!first) {
            sheet.NextLine();
            sheet.page.vsTextLeft(LabelLeft, sheet.position, {});
        }
        PrintValue(sheet, line);
        first = false;
    }
}

void PrintRow(ReportSheet& sheet, const WorkingReport& report, const WorkingRow& row, const WorkingReader& read)
{
    PageLayer& page = sheet.page;
    const bool goesOn = row.label.empty() && row.label2 == nullptr; // with what the line above began
    if (goesOn && TextOr(read, row.field, row.otherwise).empty() && TextOr(read, row.field2, row.otherwise2).empty())
        return;
    const bool isTitle = row.show == Title || row.show == Heads || row.show == Address;
    sheet.NextLine(report.pitch + (isTitle ? BeforeTitle : 0));
    const BelongsTo element(page, isTitle ? Role::Heading : Role::Paragraph);
    if (isTitle)
        page.vsBoldOn();
    PrintLabel(sheet, report, row.label2 != nullptr ? row.label2(read) : std::string(row.label));
    page.vsBoldOff();
    switch (row.show) {
    case Title:
        break;
    case Heads:
    case Period:
        page.vsTextRight(ReportColumn2, sheet.position, TextOr(read, row.field, row.otherwise));
        page.vsTextRight(ReportColumn3, sheet.position, TextOr(read, row.field2, row.otherwise2));
        break;
    case Text:
        PrintValue(sheet, TextOr(read, row.field, row.otherwise));
        break;
    case Figure:
        PrintValue(sheet, ReportFigure(read(row.field)));
        break;
    case Worked:
        PrintValue(sheet, FormatAmount(row.work(read), edition::FormatPrintMoneyBlankZero));
        break;
    case Address:
        PrintAddress(sheet, read);
        break;
    }
}

void PrintRecord(PageLayer& page, const ReportNames& names, Records& records, const WorkingReport& report, int number)
{
    const WorkingReader read = [&](std::string_view stem) {
        return std::string(records.Field(report.table, number > 0 ? Numbered(stem, number) : std::string(stem)));
    };
    if (std::ranges::all_of(report.entered, [&](std::string_view field) { return Trim(read(field)).empty(); }))
        return;
    const std::string_view item = number > 0 ? Nth(report.items, number) : std::string_view();
    ReportSheet sheet(
        page, names,
        {.heading = report.heading, .item = item, .subHeading = report.subHeading, .section = report.section});
    for (const WorkingRow& row : report.rows)
        PrintRow(sheet, report, row, read);
}

} // namespace

std::span<const WorkingReport> WorkingReports()
{
    return Reports;
}

const WorkingReport& WorkingReportOf(std::string_view name)
{
    const auto found = std::ranges::find(Reports, name, &WorkingReport::name);
    if (found == Reports.end())
        throw std::logic_error("There is no working paper " + std::string(name));
    return *found;
}

bool PrintWorkingReport(PageLayer& page, const ReportNames& names, Records& records, const WorkingReport& report,
                        int first, int last)
{
    if (!records.Seek(report.table, RecordOf::Employee))
        return false;
    for (int number = first; number <= last; ++number)
        PrintRecord(page, names, records, report, number);
    return true;
}

} // namespace quillmere
