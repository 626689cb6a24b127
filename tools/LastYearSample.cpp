#include "LastYearSample.h"

#include "clientdb/Employees.h"
#include "clientdb/store/Template.h"
#include "frame/Text.h"

#include <array>
#include <string_view>

namespace quillmere::sample {

namespace {

struct Person {
    std::string_view employer, firstName, surname, payeReference;
};

/// A field of one of the people, by the place in their list.
struct Value {
    std::size_t person;
    std::string_view table, field, text;
};

/// A car as it stood at the end of last year.
struct Car {
    std::size_t person;
    int number;
    std::string_view model, registered, co2, engine, price, fuel, last, cashEquivalent;
    std::string_view fuelTick, withdrawn, reinstated;
};

constexpr auto People = std::to_array<Person>({
    {"Harbour Bakery Ltd", "Alice", "Marsh", "321/HB100"},
    {"Harbour Bakery Ltd", "Peter Colin", "Quay", "321/HB100"},
    {"A SAMPLE", "Sam", "Ple", "000/S"},
    {"Northgate Surveyors", "Ruth", "Fenn", "654/NS7"},
    {"Harbour Bakery Ltd", "", "Ellis", "321/HB100"},
    {"Northgate Surveyors", "Omar", "Field", "654/NS7"},
});
enum : std::size_t { Alice, Peter, Sample, Ruth, Ellis, Omar };

constexpr auto Values = std::to_array<Value>({
    {Alice, "P11D", "DOB", "14/02/1961"},
    {Alice, "P11D", "SexTick", "F"},
    {Alice, "P11D", "NatIns", "AB123456C"},
    {Alice, "P11D", "DirectorTick", "1"},
    {Alice, "P11D", "WorkNumberBox", "Office"},
    {Alice, "P11D", "ACashEqu", "    120.00"},
    {Alice, "ANotepad", "Description1", "Desk"},
    {Alice, "ANotepad", "CostMarket1", "    120.00"},
    {Alice, "ANotepad", "CashEq1", "    120.00"},
    {Alice, "BNotepad", "Description1", "Telephone rental"},
    {Alice, "BNotepad", "Payment1", "    180.00"},
    {Alice, "INotepad", "Description1", "Family cover"},
    {Alice, "INotepad", "Cost1", "    640.00"},
    {Alice, "INotepad", "CashEq1", "    640.00"},
    {Alice, "KNotepad", "Description1", "Window cleaning"},
    {Alice, "KNotepad", "Description20", "Gardener"},
    {Alice, "KNotepad", "Cost20", "    950.00"},
    {Alice, "LNotepad", "Description2", "Boat"},
    {Alice, "NNotepad1", "Description1", "Subscription"},
    {Alice, "NNotepad3", "Description1", "Tax on assets"},
    {Alice, "NNotepad3", "Tax1", "     40.00"},
    {Alice, "ONotepad6", "Description3", "Conference"},
    {Alice, "DNotepad", "Address1", "The Mill House"},
    {Alice, "DNotepad", "Address2", "Quay Lane"},
    {Alice, "DNotepad", "Postcode", "AB1 2CD"},
    {Alice, "DNotepad", "BasicChargeA", "   4200.00"},

    // Vans: the first was given back, the second and third run on.
    {Peter, "P11D", "SexTick", "M"},
    {Peter, "P11D", "DirectorTick", "0"},
    {Peter, "GNotepad", "RegNumber1", "HB05 VAN"},
    {Peter, "GNotepad", "DateTo11", "30/09/2009"},
    {Peter, "GNotepad", "RegNumber2", "HB06 VAN"},
    {Peter, "GNotepad", "BeforeApril2", "1"},
    {Peter, "GNotepad", "KBox2", "   3000.00"},
    {Peter, "GNotepad", "RegNumber3", "HB07 VAN"},
    {Peter, "GNotepad", "DateFrom13", "01/11/2009"},
    {Peter, "JNotepad", "QualExp", "   9000.00"},
    {Peter, "ENotepad", "ABox1", "   1500.00"},

    {Sample, "P11D", "NatIns", "ZZ000000A"},

    // Loans: one in sterling, one repaid, one in a currency that this year's list does not have.
    {Ruth, "P11D", "NatIns", "CD234567A"},
    {Ruth, "HNotepad", "DateFrom1", "01/05/2007"},
    {Ruth, "HNotepad", "Currency1", "Sterling"},
    {Ruth, "HNotepad", "Index1", "1"},
    {Ruth, "HNotepad", "InterestRate1", "4.75"},
    {Ruth, "HNotepad", "DateTo1", "31/12/2009"},
    {Ruth, "HNotepad", "MaxBalanceEarlier1", "   6000.00"},
    {Ruth, "HNotepad", "Currency2", "Sterling"},
    {Ruth, "HNotepad", "Index2", "1"},
    {Ruth, "HNotepad", "InterestRate2", "4.75"},
    {Ruth, "HNotepad", "MaxBalanceEarlier2", "  12000.00"},
    {Ruth, "HNotepad", "MaxBalanceLater2", "  11000.00"},
    {Ruth, "HNotepad", "Currency4", "Swiss Franc"},
    {Ruth, "HNotepad", "Index4", "3"},
    {Ruth, "HNotepad", "InterestRate4", "3.10"},
    {Ruth, "HNotepad", "MaxBalanceEarlier4", "   5500.00"},
    {Ruth, "HNotepad", "CashEq4", "    170.00"},

    {Omar, "P11D", "NatIns", "EF345678B"},
});

constexpr auto Cars = std::to_array<Car>({
    // Alice: the first ended, the second and the third run on.
    {.person = Alice,
     .number = 1,
     .model = "Old saloon",
     .registered = "01/03/2002",
     .co2 = "210",
     .price = "  18000.00",
     .fuel = "P",
     .last = "31/07/2009",
     .cashEquivalent = "   1500.00",
     .fuelTick = "1"},
    {.person = Alice,
     .number = 2,
     .model = "New saloon",
     .registered = "01/08/2009",
     .co2 = "139",
     .price = "  22000.00",
     .fuel = "D",
     .cashEquivalent = "   3200.00",
     .fuelTick = "1"},
    {.person = Alice,
     .number = 3,
     .model = "Estate",
     .registered = "15/05/2006",
     .co2 = "165",
     .engine = "1998",
     .price = "  19500.00",
     .fuel = "P",
     .last = "05/04/3004",
     .cashEquivalent = "   4300.00"},

    // Ellis: what lacks a figure stays behind, and so does fuel that was withdrawn.
    {.person = Ellis,
     .number = 1,
     .model = "Without a price",
     .registered = "01/01/2005",
     .cashEquivalent = "   1000.00"},
    {.person = Ellis, .number = 2, .model = "Without a figure", .registered = "01/01/2005", .price = "  10000.00"},
    {.person = Ellis,
     .number = 3,
     .model = "Hatchback",
     .registered = "02/02/2008",
     .co2 = "119",
     .price = "   9800.00",
     .fuel = "P",
     .cashEquivalent = "   1100.00",
     .fuelTick = "1",
     .withdrawn = "01/10/2009"},

    // Omar: six cars with their fixed last days, with fuel in every state.
    {.person = Omar,
     .number = 1,
     .model = "Car one",
     .registered = "01/02/2003",
     .co2 = "190",
     .price = "  15000.00",
     .fuel = "P",
     .last = "05/04/2003",
     .cashEquivalent = "   2100.00",
     .fuelTick = "1",
     .withdrawn = "01/12/2009",
     .reinstated = "1"},
    {.person = Omar,
     .number = 2,
     .model = "Car two",
     .registered = "01/02/2004",
     .co2 = "180",
     .price = "  16000.00",
     .fuel = "D",
     .last = "05/04/2003",
     .cashEquivalent = "   2200.00",
     .fuelTick = "1",
     .withdrawn = "01/12/2009",
     .reinstated = "0"},
    {.person = Omar,
     .number = 3,
     .model = "Car three",
     .registered = "01/02/2005",
     .co2 = "170",
     .price = "  17000.00",
     .fuel = "H",
     .last = "05/04/3004",
     .cashEquivalent = "   2300.00",
     .fuelTick = "1",
     .withdrawn = "01/12/2009",
     .reinstated = "1"},
    {.person = Omar,
     .number = 4,
     .model = "Car four",
     .registered = "01/02/2006",
     .co2 = "160",
     .price = "  18000.00",
     .fuel = "B",
     .last = "05/04/4004",
     .cashEquivalent = "   2400.00",
     .fuelTick = "0"},
    {.person = Omar,
     .number = 5,
     .model = "Car five",
     .registered = "01/02/2007",
     .co2 = "150",
     .price = "  19000.00",
     .fuel = "G",
     .last = "05/05/5005",
     .cashEquivalent = "   2500.00",
     .fuelTick = "1"},
    {.person = Omar,
     .number = 6,
     .model = "Car six",
     .registered = "01/02/1997",
     .engine = "1600",
     .price = "  20000.00",
     .fuel = "P",
     .last = "06/06/6006",
     .cashEquivalent = "   2600.00"},
});

/// What the declaration of an employer holds.
struct EmployerValue {
    std::string_view employer, table, field, text;
};
constexpr auto EmployerValues = std::to_array<EmployerValue>({
    {"Harbour Bakery Ltd", "P11DB", "AccountsOffReference", "321PH00012345"},
    {"Harbour Bakery Ltd", "P11DB", "EmployerAdd2", "3 Harbour Street"},
    {"Harbour Bakery Ltd", "P11DB", "EmployerAdd3", "Seatown"},
    {"Harbour Bakery Ltd", "P11DB", "ReturnAdd1", "Tax Office"},
    {"Harbour Bakery Ltd", "P11DB", "SentToBox", "Miss Marsh"},
    {"Harbour Bakery Ltd", "P11DB", "Section1Tick", "1"},
    {"Harbour Bakery Ltd", "P11DB", "Section1ABox", "  12000.00"},
    {"Harbour Bakery Ltd", "P11DBNotepad1", "Description1", "Benefits of a partner"},
    {"Harbour Bakery Ltd", "P11DBNotepad1", "AmountAdded1", "    100.00"},
});

void Seek(Recordset& records, std::string_view employer, std::string_view employee)
{
    if (employee.empty()) {
        records.Index("PrimaryKey");
        records.Seek(employer);
    } else {
        records.Index("IndKey");
        records.Seek(employer, employee);
    }
}

void Write(Database& database, std::string_view table, std::string_view employer, std::string_view employee,
           std::string_view field, std::string_view text)
{
    if (text.empty())
        return;
    Recordset records = database.OpenRecordset(table);
    Seek(records, employer, employee);
    records.Edit();
    records.SetField(field, text);
    records.Update();
}

void WriteCar(Database& database, const Car& car)
{
    const bool onPage = car.number <= 2;
    const Person& person = People[car.person];
    const std::string employee = EmployeeName(person.firstName, person.surname);
    const auto write = [&](std::string_view stem, std::string_view text) {
        Write(database, onPage ? "P11D" : "ExtraCars", person.employer, employee, Numbered(stem, car.number), text);
    };
    write("FMakeModel", car.model);
    write("FRegDate", car.registered);
    write("FC02", car.co2);
    write("FNoC02", car.co2.empty() ? "1" : "0");
    write("FEngine", car.engine);
    write("FListPrice", car.price);
    write("FFuel", car.fuel);
    write("FDateFrom", "06/04/2009");
    write("FDateTo", car.last);
    write("FCashEqu", car.cashEquivalent);
    write("FFuelTick", car.fuelTick);
    write("FDateWithdrawn", car.withdrawn);
    write(onPage ? "FDateWithdrawnTick" : "FWithdrawnTick", car.reinstated);
}

} // namespace

void CreateLastYear(const std::filesystem::path& path)
{
    CreateTables(path);
    Database database = Database::OpenDatabase(path);
    WriteBatch batch(database);
    for (const Person& person : People)
        CreateEmployee(database, {.employer = std::string(person.employer),
                                  .firstName = std::string(person.firstName),
                                  .surname = std::string(person.surname),
                                  .payeReference = std::string(person.payeReference)});
    for (const Value& value : Values) {
        const Person& person = People[value.person];
        Write(database, value.table, person.employer, EmployeeName(person.firstName, person.surname), value.field,
              value.text);
    }
    for (const Car& car : Cars)
        WriteCar(database, car);
    for (const EmployerValue& value : EmployerValues)
        Write(database, value.table, value.employer, {}, value.field, value.text);
    batch.Commit();
}

} // namespace quillmere::sample
