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

constexpr auto OfCar = std::to_array<FactRow<CarOnForm>>({
    {"FMakeModel", &CarOnForm::makeModel},
    {"FRegDate", &CarOnForm::registered},
    {"FListPrice", &CarOnForm::listPrice},
    {"FCashEqu", &CarOnForm::cash},
    {"FC02", &CarOnForm::co2},
    {"FNoC02", &CarOnForm::withoutCO2},
    {"FDateFrom", &CarOnForm::from},
    {"FDateTo", &CarOnForm::to},
    {"FFuelTick", &CarOnForm::fuelTick},
    {"FFuelEqu", &CarOnForm::fuel},
    {"FDateWithdrawn", &CarOnForm::withdrawn},
    {"FEngine", &CarOnForm::engine},
    {"FFuel", &CarOnForm::fuelLetter},
    {"FAccessories", &CarOnForm::accessories},
    {"FCaptContr", &CarOnForm::contribution},
    {"FPrivateUse", &CarOnForm::privateUse},
});

constexpr auto OfLoan = std::to_array<FactRow<LoanOnForm>>({
    {"HOutstand", &LoanOnForm::atStart},
    {"HOutsand2003", &LoanOnForm::atEnd},
    {"HMaxLoan", &LoanOnForm::largest},
    {"HLoanCashEqu", &LoanOnForm::cash},
    {"HLoanDate", &LoanOnForm::made},
    {"HLoanDischarge", &LoanOnForm::discharged},
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

/// A field of a calculator's record, or the stem of a numbered one, and its texts among the facts.
struct CalculatorRow {
    std::string_view table, field;
    std::span<std::string_view> (*texts)(CalculatorFacts&);
};

template<std::string_view CalculatorFacts::*Text>
std::span<std::string_view> Single(CalculatorFacts& facts)
{
    return {&(facts.*Text), 1};
}

template<auto Texts>
std::span<std::string_view> Several(CalculatorFacts& facts)
{
    return facts.*Texts;
}

/// Those of one record stand together.
constexpr auto OfCalculators = std::to_array<CalculatorRow>({
    {"DNotepad", "BasicChargeE", Single<&CalculatorFacts::basicCharge>},
    {"DNotepad", "AddChargeQ", Single<&CalculatorFacts::additionalCharge>},
    {"ENotepad", "QBox", Several<&CalculatorFacts::mileage>},
    {"GNotepad", "MBox", Several<&CalculatorFacts::vans>},
    {"GNotepad", "XBox", Several<&CalculatorFacts::vanFuel>},
    {"HNotepad", "CashEq", Several<&CalculatorFacts::loans>},
    {"JNotepad", "ABox", Single<&CalculatorFacts::expenses>},
    {"JNotepad", "EmployerCost", Single<&CalculatorFacts::employerCost>},
    {"JNotepad", "EmployeeCost", Single<&CalculatorFacts::employeeCost>},
    {"JNotepad", "CBox", Single<&CalculatorFacts::livingAccommodation>},
    {"JNotepad", "QualExp", Single<&CalculatorFacts::lastYear>},
});

using Fields = std::vector<FactsRecord::Field>;

/// Lists a field, unless the form has none such.
void Add(Fields& fields, std::string_view name, std::string_view& text)
{
    if (!name.empty())
        fields.push_back({std::string(name), &text});
}

void AddCar(Fields& fields, CarOnForm& car)
{
    for (const FactRow<CarOnForm>& row : OfCar)
        Add(fields, Numbered(row.field, car.number), car.*row.text);
    const bool onThePage = car.number <= CarsOnThePage;
    Add(fields, Numbered(onThePage ? "FDateWithdrawnTick" : "FWithdrawnTick", car.number), car.reinstated);
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

FactsRecord RecordOf(ListFacts& list, Descriptions read)
{
    const NotepadMember& notepad = *list.notepad;
    FactsRecord record{.table = notepad.name, .fields = {}};
    for (std::size_t column = 0; column < list.amounts.size(); ++column)
        if (!notepad.totalFields.at(column).empty())
            AddColumn(record.fields, notepad.columns.at(column + 1).field, list.amounts[column]);
    if (!notepad.describedField.empty() || read == Descriptions::OfEveryList)
        AddColumn(record.fields, notepad.columns.front().field, list.descriptions);
    return record;
}

void AddCalculator(Fields& fields, const CalculatorRow& row, CalculatorFacts& facts)
{
    const std::span<std::string_view> texts = row.texts(facts);
    for (std::size_t i = 0; i < texts.size(); ++i)
        Add(fields, texts.size() == 1 ? std::string(row.field) : Numbered(row.field, static_cast<int>(i) + 1),
            texts[i]);
}

void AddPage(Fields& fields, FormFacts& facts)
{
    for (const FactRow<FormFacts>& row : OfForm)
        Add(fields, row.field, facts.*row.text);
    for (SectionFacts& section : facts.sections)
        for (const SectionField& row : OfSection)
            Add(fields, section.row->*row.field, section.*row.text);
    for (std::size_t loan = 0; loan < facts.loans.size(); ++loan)
        for (const FactRow<LoanOnForm>& row : OfLoan)
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

std::vector<FactsRecord> RecordsOf(FormFacts& facts, Descriptions read)
{
    FactsRecord form{.table = "P11D", .fields = {}}, extraCars{.table = "ExtraCars", .fields = {}};
    AddPage(form.fields, facts);
    for (CarOnForm& car : facts.cars)
        AddCar((car.number <= CarsOnThePage ? form : extraCars).fields, car);
    for (std::size_t i = 0; i < facts.boxed.size(); ++i) {
        Fields& fields = i < BoxedTexts().ofForm ? form.fields : extraCars.fields;
        Add(fields, BoxedTexts().texts[i].field, facts.boxed[i]);
    }
    std::vector<FactsRecord> records{std::move(form), std::move(extraCars)};
    for (ListFacts& list : facts.lists)
        records.push_back(RecordOf(list, read));
    for (const CalculatorRow& row : OfCalculators) {
        if (records.back().table != row.table)
            records.push_back({.table = row.table, .fields = {}});
        AddCalculator(records.back().fields, row, facts.calculators);
    }
    return records;
}

} // namespace quillmere::review
