#include "clientdb/store/TableLayouts.h"

#include "clientdb/store/EachField.h"
#include "clientdb/store/StoreErrors.h"
#include "frame/Text.h"

#include <algorithm>
#include <mutex>
#include <optional>

namespace quillmere {
namespace {

using enum FieldKind;

// ---- keys ---------------------------------------------------------------------------------------

constexpr auto EmployeeKeys = std::to_array<FieldStem>({{"EmployerName"}, {"EmployeeName"}, {"Name"}});
constexpr auto EmployerKeys = std::to_array<FieldStem>({{"EmployerName"}});

constexpr auto EmployeeIndexes = std::to_array<TableIndex>({
    {.name = "IndKey", .part1 = "EmployerName", .part2 = "EmployeeName"},
    {.name = "PrimaryKey", .part1 = "Name"},
});
constexpr auto EmployerIndexes = std::to_array<TableIndex>({{.name = "PrimaryKey", .part1 = "EmployerName"}});

// ---- P11D ---------------------------------------------------------------------------------------

constexpr auto Identity = std::to_array<FieldStem>({
    {"FirstName"},
    {"Surname"},
    {"PAYEBox"},
    {"WorkNumberBox"},
    {"NatIns"},
    {"DOB", Date},
    {"SexTick", Tick},
    {"DirectorTick", Tick},
});

constexpr auto SectionsAToE = std::to_array<FieldStem>({
    {"ADescriptionAsset"},
    {"ACostMarketBox", Amount},
    {"AAmountGood", Amount},
    {"ACashEqu", Amount},
    {"BDescriptionPayment"},
    {"B2", Amount},
    {"BNotTax", Amount},
    {"CGrossAmount", Amount},
    {"CAmountGood", Amount},
    {"CCashEqu", Amount},
    {"DCashEqu", Amount},
    {"ETaxAmount", Amount},
});

// The columns of the pages' cars and of the further cars differ in one name, the tick beside the date withdrawn.
constexpr auto CarBeforeTick = std::to_array<FieldStem>({
    {"FMakeModel"},
    {"FRegDate", Date},
    {"FC02", Count},
    {"FNoC02", Tick},
    {"FEngine", Count},
    {"FFuel"},
    {"FDateFrom", Date},
    {"FDateTo", Date},
    {"FListPrice", Amount},
    {"FAccessories", Amount},
    {"FCaptContr", Amount},
    {"FPrivateUse", Amount},
    {"FCashEqu", Amount},
    {"FFuelEqu", Amount},
    {"FFuelTick", Tick},
    {"FDateWithdrawn", Date},
});
constexpr auto CarAfterTick = std::to_array<FieldStem>({
    {"FFullDisc", Tick},
    {"FCBox", Amount},
    {"FEBox", Amount},
    {"FGBox", Count},
    {"FHBox", Count},
    {"FJBox", Count},
    {"FMBox", Count},
    {"FNBox", Count},
    {"FPBox", Amount},
    {"FQBox", Days},
    {"FRBox", Amount},
    {"FSBox", Amount},
    {"FUBox", Amount},
    {"FVBox", Amount},
    {"FWBox", Days},
    {"FXBox", Days},
    {"FYBox", Amount},
    {"FUnavailableFirst1", Date},
    {"FUnavailableLast1", Date},
    {"FUnavailableFirst2", Date},
    {"FUnavailableLast2", Date},
    {"FUnavailableFirst3", Date},
    {"FUnavailableLast3", Date},
    {"FUnavailableFirst4", Date},
    {"FUnavailableLast4", Date},
});

constexpr auto CarColumn(std::string_view withdrawnTick)
{
    std::array<FieldStem, CarBeforeTick.size() + 1 + CarAfterTick.size()> column;
    const auto tick = std::copy(CarBeforeTick.begin(), CarBeforeTick.end(), column.begin());
    *tick = {withdrawnTick, Tick};
    std::copy(CarAfterTick.begin(), CarAfterTick.end(), tick + 1);
    return column;
}

constexpr auto PageCar = CarColumn("FDateWithdrawnTick");
constexpr auto FurtherCar = CarColumn("FWithdrawnTick");

constexpr auto CarTotalsAndVans = std::to_array<FieldStem>({
    {"FTotalCashCars", Amount},
    {"FTotalCashFuel", Amount},
    {"GVan", Amount},
    {"GVanFuel", Amount},
});

constexpr auto PageLoan = std::to_array<FieldStem>({
    {"HJointBorrow", Tick},
    {"HOutstand", Amount},
    {"HOutsand2003", Amount},
    {"HMaxLoan", Amount},
    {"HLoanInterest", Amount},
    {"HLoanDate", Date},
    {"HLoanDischarge", Date},
    {"HLoanCashEqu", Amount},
});

constexpr auto SectionsIToM = std::to_array<FieldStem>({
    {"IMedCost", Amount},
    {"IAmountGood", Amount},
    {"ICashEqu", Amount},
    {"JRelocationExp", Amount},
    {"KCostYou", Amount},
    {"KAmountGood", Amount},
    {"KCashEqu", Amount},
    {"LDescriptAsset"},
    {"LAnnualValue", Amount},
    {"LAmountGood", Amount},
    {"LCashEqu", Amount},
    {"MShareTick", Tick},
});

constexpr auto OtherItem = std::to_array<FieldStem>({
    {"NDescriptItems"},
    {"NCostYou", Amount},
    {"NAmountGood", Amount},
    {"NCashEqu", Amount},
});
constexpr auto TaxPaid = std::to_array<FieldStem>({{"NTaxPaid", Amount}});

constexpr auto ExpensesPayment = std::to_array<FieldStem>({
    {"OCostYou", Amount},
    {"OAmountGood", Amount},
    {"OCashEqu", Amount},
});
constexpr auto EndOfSectionO = std::to_array<FieldStem>({{"ODescExpenses"}, {"OEntertainTick", Tick}});

constexpr auto P11DGroups = std::to_array<FieldGroup>({
    {EmployeeKeys},
    {Identity},
    {SectionsAToE},
    {PageCar, 1, 2},
    {CarTotalsAndVans},
    {PageLoan, 1, 2},
    {SectionsIToM},
    {OtherItem, 1, 2},
    {TaxPaid},
    {ExpensesPayment, 1, 6},
    {EndOfSectionO},
});

// ---- cars 3 to 6 --------------------------------------------------------------------------------

constexpr auto TwoNames = std::to_array<FieldStem>({{"FirstName"}, {"Surname"}});
constexpr auto ExtraCarsGroups = std::to_array<FieldGroup>({{EmployeeKeys}, {TwoNames}, {FurtherCar, 3, 6}});

// ---- schedules of twenty lines ------------------------------------------------------------------

constexpr auto AssetLine =
    std::to_array<FieldStem>({{"Description"}, {"CostMarket", Amount}, {"Tax", Amount}, {"CashEq", Amount}});
constexpr auto PaymentLine = std::to_array<FieldStem>({{"Description"}, {"Payment", Amount}, {"Tax", Amount}});
constexpr auto VoucherLine =
    std::to_array<FieldStem>({{"Description"}, {"Gross", Amount}, {"Tax", Amount}, {"CashEq", Amount}});
constexpr auto CostLine =
    std::to_array<FieldStem>({{"Description"}, {"Cost", Amount}, {"AmountGood", Amount}, {"CashEq", Amount}});
constexpr auto AnnualValueLine =
    std::to_array<FieldStem>({{"Description"}, {"AnnualValue", Amount}, {"AmountGood", Amount}, {"CashEqu", Amount}});
constexpr auto TaxLine = std::to_array<FieldStem>({{"Description"}, {"Tax", Amount}});
constexpr auto AddedLine = std::to_array<FieldStem>({{"Description"}, {"AmountAdded", Amount}});
constexpr auto DeductedLine = std::to_array<FieldStem>({{"Description"}, {"AmountDeducted", Amount}});

constexpr auto AssetSchedule = std::to_array<FieldGroup>({{EmployeeKeys}, {AssetLine, 1, 20}});
constexpr auto PaymentSchedule = std::to_array<FieldGroup>({{EmployeeKeys}, {PaymentLine, 1, 20}});
constexpr auto VoucherSchedule = std::to_array<FieldGroup>({{EmployeeKeys}, {VoucherLine, 1, 20}});
constexpr auto CostSchedule = std::to_array<FieldGroup>({{EmployeeKeys}, {CostLine, 1, 20}});
constexpr auto AnnualValueSchedule = std::to_array<FieldGroup>({{EmployeeKeys}, {AnnualValueLine, 1, 20}});
constexpr auto TaxSchedule = std::to_array<FieldGroup>({{EmployeeKeys}, {TaxLine, 1, 20}});
constexpr auto AddedSchedule = std::to_array<FieldGroup>({{EmployerKeys}, {AddedLine, 1, 20}});
constexpr auto DeductedSchedule = std::to_array<FieldGroup>({{EmployerKeys}, {DeductedLine, 1, 20}});

// ---- workings -----------------------------------------------------------------------------------

constexpr auto Address = std::to_array<FieldStem>({{"Address"}});
constexpr auto Accommodation = std::to_array<FieldStem>({
    {"Postcode"},
    {"AccommodationYTick", Tick},
    {"AccommodationNTick", Tick},
    {"BasicChargeA", Amount},
    {"BasicChargeB", Amount},
    {"BasicChargeC", Amount},
    {"BasicChargeD", Amount},
    {"BasicChargeE", Amount},
    {"AddChargeDays", Days},
    {"AddChargeF", Amount},
    {"AddChargeG", Amount},
    {"AddChargeH", Amount},
    {"AddChargeJ", Amount},
    {"AddChargeK", Amount},
    {"AddChargeL", Amount},
    {"AddChargeM", Amount},
    {"AddChargeN", Amount},
    {"AddChargeP", Amount},
    {"AddChargeQ", Amount},
    {"AddChargeR", Amount},
});
constexpr auto DNotepadGroups = std::to_array<FieldGroup>({{EmployeeKeys}, {Address, 1, 5}, {Accommodation}});

constexpr auto Vehicle = std::to_array<FieldStem>({
    {"ABox", Amount},
    {"BBox", Amount},
    {"CBox", Amount},
    {"DBox", Count},
    {"JBox", Amount},
    {"KBox", Amount},
    {"LBox", Count},
    {"MBox", Amount},
    {"QBox", Amount},
});
constexpr auto ENotepadGroups = std::to_array<FieldGroup>({{EmployeeKeys}, {Vehicle, 1, 3}});

constexpr auto SheetCar = std::to_array<FieldStem>({
    {"Make"},
    {"Model"},
    {"RegDate", Date},
    {"C02", Count},
    {"Engine", Count},
    {"Fuel"},
    {"ListPrice", Amount},
    {"Accessories", Amount},
    {"A", Amount},
    {"D", Amount},
    {"E", Amount},
    {"G", Count},
    {"H", Count},
    {"J", Count},
    {"P", Amount},
    {"Q", Days},
    {"R", Amount},
    {"S", Amount},
    {"T", Amount},
    {"U", Amount},
    {"V", Amount},
    {"W", Days},
    {"X", Days},
    {"Y", Amount},
    {"Z", Amount},
    {"Tick", Tick},
    {"FuelBenTick", Tick},
    {"DateFirst", Date},
    {"DateLast", Date},
    {"DateWithdrawn", Date},
    {"DateWithdrawnTick", Tick},
    {"FirstDateUnav", Date},
    {"LastDateUnav", Date},
    {"CashEqu", Amount},
    {"FuelEqu", Amount},
});
constexpr auto FNotepadGroups = std::to_array<FieldGroup>({{EmployeeKeys}, {SheetCar, 1, 6}});

constexpr auto Van = std::to_array<FieldStem>({
    {"RegNumber"},         {"ABox", Amount},      {"BBox", Days},
    {"CBox", Days},        {"DBox", Days},        {"EBox", Days},
    {"FBox", Amount},      {"GBox", Amount},      {"HBox", Count},
    {"JBox", Amount},      {"KBox", Amount},      {"LBox", Amount},
    {"MBox", Amount},      {"RBox", Days},        {"SBox", Days},
    {"TBox", Amount},      {"VBox", Amount},      {"WBox", Amount},
    {"XBox", Amount},      {"FuelVanTick", Tick}, {"DateFrom1", Date},
    {"DateFrom2", Date},   {"DateFrom3", Date},   {"DateTo1", Date},
    {"DateTo2", Date},     {"DateTo3", Date},     {"DateFuelWithdrawn", Date},
    {"BeforeApril", Tick},
});
constexpr auto VanHistoryRow = std::to_array<FieldStem>({
    {"ChangeUse", Date},
    {"TypeUse", Count},
    {"Days", Days},
    {"ChangeUse2", Date},
    {"TypeUse2", Count},
    {"Days2", Days},
    {"ChangeUse3", Date},
    {"TypeUse3", Count},
    {"Days3", Days},
});
constexpr auto VanHistoryLastRow = std::to_array<FieldStem>({
    {"Days10", Days},
    {"Days210", Days},
    {"Days310", Days},
    {"TotalDays1", Days},
    {"TotalDays2", Days},
    {"TotalDays3", Days},
});
constexpr auto GNotepadGroups =
    std::to_array<FieldGroup>({{EmployeeKeys}, {Van, 1, 3}, {VanHistoryRow, 1, 9}, {VanHistoryLastRow}});

constexpr auto Loan = std::to_array<FieldStem>({
    {"DateFrom", Date},
    {"DateTo", Date},
    {"TaxMonths", Count},
    {"InterestRate"},
    {"MaxBalanceEarlier", Amount},
    {"MaxBalanceLater", Amount},
    {"MaxBox", Amount},
    {"TotalBalance", Amount},
    {"InterestPaid", Amount},
    {"Divide2", Amount},
    {"Currency"},
    {"Index", Count},
    {"CashEq", Amount},
});
constexpr auto HNotepadGroups = std::to_array<FieldGroup>({{EmployeeKeys}, {Loan, 1, 5}});

constexpr auto CurrencyRow = std::to_array<FieldStem>({{"Currency"}, {"Rate"}});
constexpr auto HNotepad2Groups = std::to_array<FieldGroup>({{CurrencyRow, 1, 15}});

constexpr auto Relocation = std::to_array<FieldStem>({
    {"ABox", Amount},
    {"CBox", Amount},
    {"DBox", Amount},
    {"EBox", Amount},
    {"QualExp", Amount},
    {"EmployeeCost", Amount},
    {"EmployerCost", Amount},
});
constexpr auto JNotepadGroups = std::to_array<FieldGroup>({{EmployeeKeys}, {Relocation}});

constexpr auto KeysOnly = std::to_array<FieldGroup>({{EmployeeKeys}});

// ---- the declaration ----------------------------------------------------------------------------

constexpr auto References = std::to_array<FieldStem>({{"EmployerReference"}, {"AccountsOffReference"}});
constexpr auto EmployerAddress = std::to_array<FieldStem>({{"EmployerAdd"}});
constexpr auto ReturnAddress = std::to_array<FieldStem>({{"ReturnAdd"}});
constexpr auto Declaration = std::to_array<FieldStem>({
    {"SentToBox"},
    {"SentToDate", Date},
    {"Section1Tick", Tick},
    {"Section2Tick1", Tick},
    {"Section2Tick2", Tick},
    {"Section2Tick3", Tick},
    {"Section1ABox", Amount},
    {"Section1CBox", Amount},
    {"Section4ABox", Amount},
    {"Section4BBox", Amount},
    {"Section4CBox", Amount},
    {"Section4DBox", Amount},
    {"Section4FBox", Amount},
    {"Section4BDesc"},
    {"Section4CDesc"},
});
constexpr auto P11DBGroups = std::to_array<FieldGroup>(
    {{EmployerKeys}, {References}, {EmployerAddress, 1, 6}, {ReturnAddress, 1, 6}, {Declaration}});

// ---- the tables ---------------------------------------------------------------------------------

constexpr TableLayout OfEmployee(std::string_view name, std::span<const FieldGroup> groups)
{
    return {.name = name, .level = TableLevel::Employee, .indexes = EmployeeIndexes, .groups = groups};
}

constexpr TableLayout OfEmployer(std::string_view name, std::span<const FieldGroup> groups)
{
    return {.name = name, .level = TableLevel::Employer, .indexes = EmployerIndexes, .groups = groups};
}

constexpr auto Tables = std::to_array<TableLayout>({
    OfEmployee("P11D", P11DGroups),
    OfEmployee("ANotepad", AssetSchedule),
    OfEmployee("BNotepad", PaymentSchedule),
    OfEmployee("CNotepad", VoucherSchedule),
    OfEmployee("DNotepad", DNotepadGroups),
    OfEmployee("FNotepad", FNotepadGroups),
    OfEmployee("GNotepad", GNotepadGroups),
    OfEmployee("INotepad", CostSchedule),
    OfEmployee("KNotepad", CostSchedule),
    OfEmployee("LNotepad", AnnualValueSchedule),
    OfEmployee("ONotepad1", CostSchedule),
    OfEmployee("ONotepad2", CostSchedule),
    OfEmployee("ONotepad3", CostSchedule),
    OfEmployee("ONotepad4", CostSchedule),
    OfEmployee("ONotepad5", CostSchedule),
    OfEmployee("ONotepad6", CostSchedule),
    OfEmployee("JNotepad", JNotepadGroups),
    OfEmployee("ENotepad", ENotepadGroups),
    OfEmployee("HNotepad", HNotepadGroups),
    OfEmployee("NNotepad1", CostSchedule),
    OfEmployee("NNotepad2", CostSchedule),
    OfEmployee("NNotepad3", TaxSchedule),
    OfEmployer("P11DB", P11DBGroups),
    OfEmployer("P11DBNotepad1", AddedSchedule),
    OfEmployer("P11DBNotepad2", DeductedSchedule),
    OfEmployee("ExtraCars", ExtraCarsGroups),
    {.name = "HNotepad2", .level = TableLevel::Database, .groups = HNotepad2Groups},
    OfEmployee("SpareTable", KeysOnly),
});

// ---- the reference database of car models -------------------------------------------------------

constexpr auto Manufacturer = std::to_array<FieldStem>({{"Manufacturer"}});
constexpr auto Figure = std::to_array<FieldStem>({
    {"Manufacturer"},
    {"Model"},
    {"Description"},
    {"Transmission"},
    {"Fuel Type"},
    {"C02", Count},
    {"Engine Capacity", Count},
    {"Column 1", Count},
    {"Column 2", Count},
});
constexpr auto FigurePercentage = std::to_array<FieldStem>({{"C02", Count}, {"Percentage", Count}});

constexpr auto ManufacturersGroups = std::to_array<FieldGroup>({{Manufacturer}});
constexpr auto FiguresGroups = std::to_array<FieldGroup>({{Figure}});
constexpr auto C02Groups = std::to_array<FieldGroup>({{FigurePercentage}});

constexpr auto CarTables = std::to_array<TableLayout>({
    {.name = "Manufacturers", .level = TableLevel::Reference, .groups = ManufacturersGroups},
    {.name = "Figures", .level = TableLevel::Reference, .groups = FiguresGroups},
    {.name = "C02", .level = TableLevel::Reference, .groups = C02Groups},
});

constexpr auto TablesOfNewEmployee = [] {
    std::array<const TableLayout*, Tables.size() - 1> made{};
    auto next = made.begin();
    for (const TableLayout& table : Tables)
        if (table.level != TableLevel::Database)
            *next++ = &table;
    return made;
}();
static_assert(TablesOfNewEmployee.size() == 27 && TablesOfNewEmployee.back() != nullptr);

// ---- finding a name -----------------------------------------------------------------------------

constexpr char LowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSameName(std::string_view one, std::string_view other)
{
    return std::ranges::equal(one, other, [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

const TableLayout& FindIn(std::span<const TableLayout> tables, std::string_view name)
{
    const auto found =
        std::ranges::find_if(tables, [name](const TableLayout& table) { return IsSameName(table.name, name); });
    if (found == tables.end())
        throw UnknownName("There is no table " + std::string(name));
    return *found;
}

} // namespace

std::span<const TableLayout> ClientTables()
{
    return Tables;
}

std::span<const TableLayout> ReferenceTables()
{
    return CarTables;
}

std::span<const TableLayout* const> NewEmployeeTables()
{
    return TablesOfNewEmployee;
}

const TableLayout& FindTable(std::string_view name)
{
    return FindIn(Tables, name);
}

const TableLayout& FindReferenceTable(std::string_view name)
{
    return FindIn(CarTables, name);
}

TableFields::TableFields(const TableLayout& layout)
{
    EachField(layout, [this](const FieldStem& field, int number) {
        fields.push_back({number == 0 ? std::string(field.stem) : Numbered(field.stem, number), field.kind});
    });
    places.reserve(fields.size());
    for (const Field& field : fields)
        places.emplace(field.name, places.size());
}

std::size_t TableFields::Find(std::string_view name) const
{
    if (const auto found = places.find(name); found != places.end())
        return found->second;
    const auto found =
        std::ranges::find_if(fields, [name](const Field& field) { return IsSameName(field.name, name); });
    return found == fields.end() ? None : static_cast<std::size_t>(found - fields.begin());
}

const TableFields& FieldsOf(const TableLayout& table)
{
    // Made when they are first wanted: a start wants those of one table.
    struct Made {
        std::once_flag once;
        std::optional<TableFields> fields;
    };
    static std::array<Made, Tables.size() + CarTables.size()> all;
    Made& made =
        all[table.level == TableLevel::Reference ? Tables.size() + static_cast<std::size_t>(&table - CarTables.data())
                                                 : static_cast<std::size_t>(&table - Tables.data())];
    std::call_once(made.once, [&] { made.fields.emplace(table); });
    return *made.fields;
}

} // namespace quillmere
