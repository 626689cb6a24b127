#include "review/FormFacts.h"

#include "review/Overview.h"
#include "review/Paper.h"

namespace quillmere::review {

namespace {

constexpr auto Sections = std::to_array<SectionRow>({
    {"A", Page1, "ADescriptionAsset", "ACostMarketBox", "AAmountGood", "ACashEqu"},
    {"B", Page1, "BDescriptionPayment", "B2", {}, {}},
    {"C", Page1, {}, "CGrossAmount", "CAmountGood", "CCashEqu"},
    {"I", Page2, {}, "IMedCost", "IAmountGood", "ICashEqu"},
    {"K", Page2, {}, "KCostYou", "KAmountGood", "KCashEqu"},
    {"L", Page2, "LDescriptAsset", "LAnnualValue", "LAmountGood", "LCashEqu"},
    {"N", Page2, "NDescriptItems1", "NCostYou1", "NAmountGood1", "NCashEqu1"},
    {"N", Page2, "NDescriptItems2", "NCostYou2", "NAmountGood2", "NCashEqu2"},
    {"O", Page2, {}, "OCostYou1", "OAmountGood1", "OCashEqu1"},
    {"O", Page2, {}, "OCostYou2", "OAmountGood2", "OCashEqu2"},
    {"O", Page2, {}, "OCostYou3", "OAmountGood3", "OCashEqu3"},
    {"O", Page2, {}, "OCostYou4", "OAmountGood4", "OCashEqu4"},
    {"O", Page2, {}, "OCostYou5", "OAmountGood5", "OCashEqu5"},
    {"O", Page2, "ODescExpenses", "OCostYou6", "OAmountGood6", "OCashEqu6"},
});

/// A field, or the stem of a numbered one, and its text among the facts of one thing.
template<class Facts>
struct FactRow {
    std::string_view field;
    std::string_view Facts::*text;
};

constexpr auto OfForm = std::to_array<FactRow<FormFacts>>({
    {"PAYEBox", &FormFacts::payeReference},
    {"Surname", &FormFacts::surname},
    {"FirstName", &FormFacts::firstName},
    {"WorkNumberBox", &FormFacts::worksNumber},
    {"NatIns", &FormFacts::nationalInsurance},
    {"DOB", &FormFacts::dateOfBirth},
    {"SexTick", &FormFacts::sexTick},
    {"DirectorTick", &FormFacts::directorTick},
    {"DCashEqu", &FormFacts::accommodation},
    {"ETaxAmount", &FormFacts::mileageTax},
    {"FTotalCashCars", &FormFacts::totalOfCars},
    {"FTotalCashFuel", &FormFacts::totalOfFuel},
    {"GVan", &FormFacts::van},
    {"GVanFuel", &FormFacts::vanFuel},
    {"JRelocationExp", &FormFacts::relocation},
    {"NTaxPaid", &FormFacts::taxPaid},
});

constexpr auto OfCar = std::to_array<FactRow<CarFacts>>({
    {"FMakeModel", &CarFacts::makeModel},
    {"FRegDate", &CarFacts::registered},
    {"FListPrice", &CarFacts::listPrice},
    {"FCashEqu", &CarFacts::cash},
    {"FC02", &CarFacts::co2},
    {"FNoC02", &CarFacts::withoutCO2},
    {"FDateFrom", &CarFacts::from},
    {"FDateTo", &CarFacts::to},
    {"FFuelTick", &CarFacts::fuelTick},
    {"FFuelEqu", &CarFacts::fuel},
    {"FDateWithdrawn", &CarFacts::withdrawn},
});

constexpr auto OfLoan = std::to_array<FactRow<LoanFacts>>({
    {"HOutstand", &LoanFacts::atStart},
    {"HOutsand2003", &LoanFacts::atEnd},
    {"HMaxLoan", &LoanFacts::largest},
    {"HLoanCashEqu", &LoanFacts::cash},
    {"HLoanDate", &LoanFacts::made},
    {"HLoanDischarge", &LoanFacts::discharged},
});

/// What a section's facts are read of, in a member of its row.
struct SectionField {
    std::string_view SectionRow::*field;
    std::string_view SectionFacts::*text;
};
constexpr auto OfSection = std::to_array<SectionField>({
    {&SectionRow::description, &SectionFacts::description},
    {&SectionRow::cost, &SectionFacts::cost},
    {&SectionRow::madeGood, &SectionFacts::madeGood},
    {&SectionRow::cash, &SectionFacts::cash},
});

using Fields = std::vector<FactsRecord::Field>;

/// Lists a field, unless the form has none such.
void Add(Fields& fields, std::string_view name, std::string_view& text)
{
    if (!name.empty())
        fields.push_back({std::string(name), &text});
}

void AddCar(Fields& fields, CarFacts& car)
{
    for (const FactRow<CarFacts>& row : OfCar)
        Add(fields, Numbered(row.field, car.number), car.*row.text);
    for (int period = 1; period <= PeriodsOfACar; ++period) {
        const auto at = static_cast<std::size_t>(period - 1);
        Add(fields, Numbered(Numbered("FUnavailableFirst", period), car.number), car.unavailableFirst[at]);
        Add(fields, Numbered(Numbered("FUnavailableLast", period), car.number), car.unavailableLast[at]);
    }
}

void AddColumn(Fields& fields, std::string_view stem, ListFacts::Column& column)
{
    for (std::size_t line = 0; line < column.size(); ++line)
        Add(fields, Numbered(stem, static_cast<int>(line) + 1), column[line]);
}

/// What the form shows of a list.
void AddTotals(Fields& fields, ListFacts& list)
{
    for (std::size_t column = 0; column < list.totals.size(); ++column)
        Add(fields, list.notepad->totalFields[column], list.totals[column]);
    Add(fields, list.notepad->describedField, list.described);
}

FactsRecord RecordOf(ListFacts& list)
{
    const NotepadMember& notepad = *list.notepad;
    FactsRecord record{.table = notepad.name, .fields = {}};
    for (std::size_t column = 0; column < list.amounts.size(); ++column)
        if (!notepad.totalFields.at(column).empty())
            AddColumn(record.fields, notepad.columns.at(column + 1).field, list.amounts[column]);
    if (!notepad.describedField.empty())
        AddColumn(record.fields, notepad.columns.front().field, list.descriptions);
    return record;
}

void AddPage(Fields& fields, FormFacts& facts)
{
    for (const FactRow<FormFacts>& row : OfForm)
        Add(fields, row.field, facts.*row.text);
    for (SectionFacts& section : facts.sections)
        for (const SectionField& row : OfSection)
            Add(fields, section.row->*row.field, section.*row.text);
    for (std::size_t loan = 0; loan < facts.loans.size(); ++loan)
        for (const FactRow<LoanFacts>& row : OfLoan)
            Add(fields, Numbered(row.field, static_cast<int>(loan) + 1), facts.loans[loan].*row.text);
    for (ListFacts& list : facts.lists)
        AddTotals(fields, list);
    for (std::size_t i = 0; i < facts.liable.size(); ++i)
        Add(fields, Class1AFields[i], facts.liable[i]);
    std::size_t amount = 0;
    for (const OverviewSection& section : OverviewSections())
        for (const std::string_view field : section.amounts)
            Add(fields, field, facts.onReturn[amount++]);
}

} // namespace

std::span<const SectionRow> SectionRows()
{
    return Sections;
}

FormFacts::FormFacts() : boxed(BoxedTexts().texts.size())
{
    for (const SectionRow& row : Sections)
        sections.push_back({.row = &row});
    for (std::size_t car = 0; car < cars.size(); ++car)
        cars[car].number = static_cast<int>(car) + 1;
    for (const NotepadMember& notepad : Notepads())
        lists.push_back({.notepad = &notepad});
    for (const OverviewSection& section : OverviewSections())
        onReturn.resize(onReturn.size() + section.amounts.size());
}

std::vector<FactsRecord> RecordsOf(FormFacts& facts)
{
    FactsRecord form{.table = "P11D", .fields = {}}, extraCars{.table = "ExtraCars", .fields = {}};
    AddPage(form.fields, facts);
    for (CarFacts& car : facts.cars)
        AddCar((car.number <= CarsOnThePage ? form : extraCars).fields, car);
    for (std::size_t i = 0; i < facts.boxed.size(); ++i) {
        Fields& fields = i < BoxedTexts().ofForm ? form.fields : extraCars.fields;
        Add(fields, BoxedTexts().texts[i].field, facts.boxed[i]);
    }
    std::vector<FactsRecord> records{std::move(form), std::move(extraCars)};
    for (ListFacts& list : facts.lists)
        records.push_back(RecordOf(list));
    return records;
}

} // namespace quillmere::review
