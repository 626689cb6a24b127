#include "review/LastYear.h"

#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/Text.h"
#include "transfer/TransferRules.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <set>

namespace quillmere::review {

namespace {

constexpr int Vans = 3, Loans = 5;

LastYearRecord ReaderOf(const Recordset& records)
{
    return [&records](std::string_view field) { return records.Field(field); };
}

OverviewSums SumsOfForm(const Recordset& p11d)
{
    FormFacts form;
    auto amount = form.onReturn.begin();
    for (const OverviewSection& section : OverviewSections())
        for (const std::string_view field : section.amounts)
            *amount++ = p11d.Field(field);
    std::ranges::transform(Class1AFields, form.liable.begin(), [&p11d](auto field) { return p11d.Field(field); });
    return SumsOf(form, 0);
}

bool Seek(Recordset& records, std::string_view employer, std::string_view employee)
{
    records.Index("IndKey");
    records.Seek(employer, employee);
    return !records.NoMatch();
}

std::string Or(std::string_view text, std::string_view standIn)
{
    return std::string(TextOr(text, standIn));
}

/// Cars, vans or loans that have something entered and do not run on.
void AddThings(std::vector<LeftBehind>& left, std::string_view kind, int first, int last,
               const std::function<std::string(int)>& nameOf, const std::function<std::string_view(int)>& whyNot)
{
    for (int number = first; number <= last; ++number) {
        const std::string name = nameOf(number);
        const std::string_view why = whyNot(number);
        if (!name.empty() && !why.empty())
            left.push_back({fmt::format("{} {}", kind, number), name, std::string(why)});
    }
}

/// "Notepad N1" of "NNotepad1".
std::string SpokenName(std::string_view table)
{
    constexpr std::string_view Kind = "Notepad";
    const std::size_t at = table.find(Kind);
    if (at == std::string_view::npos)
        return std::string(table);
    return fmt::format("{} {}{}", Kind, table.substr(0, at), table.substr(at + Kind.size()));
}

/// Of a table of the common kind, how many fields have something in them that its rule does not take along.
void AddFields(std::vector<LeftBehind>& left, const TransferTable& row, const Recordset& records)
{
    const LastYearRecord read = ReaderOf(records);
    static const CurrencyRates none{};
    std::set<std::string_view> carried;
    for (const CarriedField& field : Carry(row.carries, read, []() -> const CurrencyRates& { return none; }))
        carried.insert(field.field);
    std::size_t count = 0;
    for (const Field& field : FieldsOf(FindTable(row.table)).All())
        if (field.name != "EmployerName" && field.name != "EmployeeName" && field.name != "Name" &&
            !carried.contains(field.name) && !Trim(read(field.name)).empty())
            ++count;
    if (count > 0)
        left.push_back({SpokenName(row.table), fmt::format("{} entr{}", count, count == 1 ? "y" : "ies"),
                        std::string(WordsOf(row.carries))});
}

void AddLeftBehind(std::vector<LeftBehind>& left, Database& lastYear, const Recordset& p11d, std::string_view employer,
                   std::string_view employee)
{
    const auto cars = [&left](const Recordset& records, int first, int last) {
        const LastYearRecord read = ReaderOf(records);
        AddThings(
            left, "Car", first, last,
            [&](int car) {
                const std::string_view standIn =
                    TextOr(read(Numbered("FListPrice", car)), read(Numbered("FRegDate", car)));
                return Or(read(Numbered("FMakeModel", car)), standIn);
            },
            [&](int car) { return WhyCarStays(read, car); });
        AddThings(
            left, "Fuel of car", first, last,
            [&](int car) { return WhyCarStays(read, car).empty() ? std::string(read(Numbered("FFuelEqu", car))) : ""; },
            [&](int car) { return WhyFuelStays(read, car); });
    };
    cars(p11d, 1, CarsOnThePage);
    if (Recordset extra = lastYear.OpenRecordset("ExtraCars"); Seek(extra, employer, employee))
        cars(extra, CarsOnThePage + 1, Cars);
    for (const TransferTable& row : TransferTables) {
        Recordset records = lastYear.OpenRecordset(row.table);
        if (!Seek(records, employer, employee))
            continue;
        const LastYearRecord read = ReaderOf(records);
        if (row.carries == Carries::Vans)
            AddThings(
                left, "Van", 1, Vans,
                [&](int van) { return Or(read(Numbered("RegNumber", van)), read(Numbered("MBox", van))); },
                [&](int van) { return WhyVanStays(read, van); });
        else if (row.carries == Carries::Loans)
            AddThings(
                left, "Loan", 1, Loans,
                [&](int loan) {
                    return Or(read(Numbered("MaxBalanceEarlier", loan)), read(Numbered("MaxBalanceLater", loan)));
                },
                [&](int loan) { return WhyLoanStays(read, loan); });
        AddFields(left, row, records);
    }
}

std::vector<std::string> Sorted(std::vector<std::string> names)
{
    std::ranges::sort(names);
    return names;
}

void AddMissing(std::vector<LeftBehind>& left, const std::vector<std::string>& of, const std::vector<std::string>& in,
                std::string_view why)
{
    for (const std::string& name : of)
        if (!std::ranges::binary_search(in, name))
            left.push_back({"Employee", name, std::string(why)});
}

OverviewSums SumsOfEmployer(Database& database, std::string_view employer)
{
    OverviewSums sums;
    Recordset forms = database.OpenRecordset("P11D");
    for (forms.MoveFirstOf(employer); !forms.AtEnd(); forms.MoveNext())
        sums += SumsOfForm(forms);
    return sums;
}

} // namespace

YearsCompared CompareYears(Database& lastYear, Database& thisYear, std::string_view employer, std::string_view employee)
{
    YearsCompared years;
    if (employee.empty()) {
        const auto then = Sorted(ListEmployees(lastYear, employer)), now = Sorted(ListEmployees(thisYear, employer));
        years.isLastYear = !then.empty();
        years.isThisYear = !now.empty();
        years.lastYear = SumsOfEmployer(lastYear, employer);
        years.thisYear = SumsOfEmployer(thisYear, employer);
        AddMissing(years.leftBehind, then, now, "has not been transferred, or goes by another name");
        AddMissing(years.leftBehind, now, then, "is new this year, or went by another name");
        return years;
    }
    Recordset then = lastYear.OpenRecordset("P11D"), now = thisYear.OpenRecordset("P11D");
    years.isLastYear = Seek(then, employer, employee);
    years.isThisYear = Seek(now, employer, employee);
    if (years.isThisYear)
        years.thisYear = SumsOfForm(now);
    if (years.isLastYear) {
        years.lastYear = SumsOfForm(then);
        AddLeftBehind(years.leftBehind, lastYear, then, employer, employee);
    }
    return years;
}

} // namespace quillmere::review
