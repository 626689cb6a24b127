#include "transfer/TransferRules.h"

#include "clientdb/store/TableLayouts.h"
#include "frame/Text.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <set>

namespace quillmere {
namespace {

using Fields = std::map<std::string, std::string, std::less<>>;

LastYearRecord Record(const Fields& fields)
{
    return [&fields](std::string_view name) {
        const auto found = fields.find(name);
        return found == fields.end() ? std::string_view() : std::string_view(found->second);
    };
}

/// What goes into the record: the fields that get a text.
Fields Written(const CarriedFields& carried)
{
    Fields written;
    for (const CarriedField& field : carried) {
        EXPECT_TRUE(written.emplace(field.field, field.text).second) << field.field << " twice";
        if (field.text.empty())
            written.erase(std::string(field.field));
    }
    return written;
}

Fields With(Fields fields, const Fields& changes)
{
    for (const auto& [name, text] : changes)
        fields[name] = text;
    return fields;
}

// ---- the list of tables ---------------------------------------------------------------------------

TEST(TransferTables, AreTheTablesOfAnEmployeeButTheTwoOfHimselfAndHisCars)
{
    std::set<std::string_view> expected;
    for (const TableLayout* table : NewEmployeeTables())
        if (table->level == TableLevel::Employee && table->name != "P11D" && table->name != "ExtraCars")
            expected.insert(table->name);
    std::set<std::string_view> listed;
    for (const TransferTable& row : TransferTables)
        listed.insert(row.table);
    EXPECT_EQ(listed, expected);
}

TEST(TransferTables, StandInTheOrderOfTheForm)
{
    std::string order;
    for (const TransferTable& row : TransferTables)
        order += std::string(row.table) + " ";
    EXPECT_EQ(order,
              "ANotepad BNotepad CNotepad DNotepad ENotepad FNotepad GNotepad HNotepad INotepad JNotepad KNotepad "
              "LNotepad NNotepad1 NNotepad2 NNotepad3 ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6 "
              "SpareTable ");
}

TEST(TransferTables, EveryErrorTitleNamesItsTable)
{
    for (const TransferTable& row : TransferTables) {
        if (row.table == "SpareTable") {
            EXPECT_EQ(row.errorTitle, "");
            continue;
        }
        std::string letter(row.table);
        letter.erase(letter.find("Notepad"), 7);
        EXPECT_EQ(row.errorTitle, "Notepad " + letter + " - File Transfer error");
    }
}

TEST(TransferTables, WhatEachCarriesHasItsFields)
{
    const Fields nothing;
    const CurrencyRates noRates;
    for (const TransferTable& row : TransferTables)
        for (const CarriedField& field :
             Carry(row.carries, Record(nothing), [&]() -> const CurrencyRates& { return noRates; }))
            EXPECT_NE(FieldsOf(FindTable(row.table)).Find(field.field), TableFields::None)
                << row.table << "." << field.field;
}

TEST(TransferTables, TheLoansAloneAskForTheCurrencies)
{
    const Fields nothing;
    const CurrencyRates noRates;
    std::vector<std::string_view> asked;
    for (const TransferTable& row : TransferTables)
        static_cast<void>(Carry(row.carries, Record(nothing), [&]() -> const CurrencyRates& {
            asked.push_back(row.table);
            return noRates;
        }));
    EXPECT_EQ(asked, std::vector<std::string_view>{"HNotepad"});
}

TEST(TransferTables, OnlyTheseStartWithAnEmptyRecord)
{
    std::string empty;
    for (const TransferTable& row : TransferTables)
        if (row.carries == Carries::KeysOnly)
            empty += std::string(row.table) + " ";
    EXPECT_EQ(empty, "ANotepad ENotepad FNotepad JNotepad SpareTable ");
}

// ---- descriptions and address ---------------------------------------------------------------------

TEST(TransferDescriptions, KeepTheirNumbersAndLeaveTheAmounts)
{
    EXPECT_EQ(Written(CarryDescriptions(Record({{"Description1", "One"},
                                                {"Description20", "Twenty"},
                                                {"Description7", ""},
                                                {"Cost1", "    100.00"},
                                                {"CashEq20", "    100.00"}}))),
              (Fields{{"Description1", "One"}, {"Description20", "Twenty"}}));
}

TEST(TransferDescriptions, NoneOfTwentyIsForgotten)
{
    Fields full;
    for (int line = 1; line <= 20; ++line)
        full[Numbered("Description", line)] = "Item " + std::to_string(line);
    EXPECT_EQ(Written(CarryDescriptions(Record(full))), full);
}

TEST(TransferAddress, HasFiveLinesAndThePostcode)
{
    const Fields address = {{"Address1", "a"}, {"Address2", "b"}, {"Address3", "c"},
                            {"Address4", "d"}, {"Address5", "e"}, {"Postcode", "f"}};
    EXPECT_EQ(Written(CarryAddress(Record(With(address, {{"BasicChargeA", "1"}, {"AccommodationYTick", "1"}})))),
              address);
}

// ---- vans -----------------------------------------------------------------------------------------

TEST(TransferVans, AreAllPackedFromTheFirstSlotOn)
{
    // Every choice of vans that run on, by whether each has a number and no last day.
    for (int choice = 0; choice < 8; ++choice) {
        Fields lastYear, expected;
        int slot = 0;
        for (int van = 1; van <= 3; ++van) {
            const std::string number = "VAN " + std::to_string(van);
            lastYear[Numbered("RegNumber", van)] = number;
            lastYear[Numbered("BeforeApril", van)] = van == 2 ? "0" : "1";
            if ((choice >> (van - 1) & 1) == 0) {
                lastYear[Numbered("DateTo1", van)] = "05/10/2009";
                continue;
            }
            expected[Numbered("RegNumber", ++slot)] = number;
            if (van != 2)
                expected[Numbered("BeforeApril", slot)] = "1";
        }
        EXPECT_EQ(Written(CarryVans(Record(lastYear))), expected) << choice;
    }
}

TEST(TransferVans, OneWithoutANumberDoesNotRunOn)
{
    EXPECT_EQ(Written(CarryVans(Record({{"BeforeApril1", "1"}, {"RegNumber3", "C"}}))), (Fields{{"RegNumber1", "C"}}));
}

TEST(TransferVans, OnlyTheFirstPeriodsEndCounts)
{
    EXPECT_EQ(Written(CarryVans(Record(
                  {{"RegNumber1", "A"}, {"DateTo21", "01/01/2010"}, {"DateTo31", "01/01/2010"}, {"DateTo12", "x"}}))),
              (Fields{{"RegNumber1", "A"}}));
}

TEST(TransferVans, ATickThatIsSetGoesAlongAsOne)
{
    for (const char* set : {"1", "-1", "True", "Y"})
        EXPECT_EQ(Written(CarryVans(Record({{"RegNumber1", "A"}, {"BeforeApril1", set}}))),
                  (Fields{{"RegNumber1", "A"}, {"BeforeApril1", "1"}}));
    for (const char* clear : {"0", "False", "N", ""})
        EXPECT_EQ(Written(CarryVans(Record({{"RegNumber1", "A"}, {"BeforeApril1", clear}}))),
                  (Fields{{"RegNumber1", "A"}}));
}

// ---- loans ----------------------------------------------------------------------------------------

const Fields& Currencies()
{
    static const Fields list = {{"Currency1", "Sterling"}, {"Rate1", "4.00"},     {"Currency2", "Yen"},
                                {"Rate2", "3.25"},         {"Currency3", "Yen"},  {"Rate3", "0"},
                                {"Currency4", "Franc"},    {"Rate4", "0.00"},     {"Currency15", "Dollar"},
                                {"Rate15", "5"},           {"Currency6", "Mark"}, {"Rate6", "(1.00)"}};
    return list;
}

TEST(TransferCurrencies, AreComparedExactlyAndTheFirstOfTwoCounts)
{
    const CurrencyRates rates = ReadCurrencyRates(Record(Currencies()));
    EXPECT_EQ(rates.firstRate, "4.00");
    EXPECT_EQ(rates.RateOf("Sterling"), ReadAmount("4"));
    EXPECT_EQ(rates.RateOf("Yen"), ReadAmount("3.25"));
    EXPECT_EQ(rates.RateOf("Dollar"), ReadAmount("5"));
    for (const char* without : {"yen", "Yen ", "Franc", "Drachma", ""})
        EXPECT_EQ(rates.RateOf(without), Amount()) << without;
}

TEST(TransferCurrencies, ARateBesideAnEmptyNameMakesNoCurrencyOfIt)
{
    for (int row = 1; row <= 15; ++row)
        for (const bool isNull : {true, false}) {
            Fields list = {{"Currency1", "Sterling"}, {"Rate1", "4.00"}};
            list[Numbered("Rate", row)] = "5.00";
            if (isNull)
                list.erase(Numbered("Currency", row));
            else
                list[Numbered("Currency", row)].clear();
            const CurrencyRates rates = ReadCurrencyRates(Record(list));
            EXPECT_EQ(rates.RateOf(""), Amount()) << row;
            const Fields written = Written(CarryLoans(Record({}), rates));
            for (int loan = 1; loan <= 5; ++loan) {
                EXPECT_EQ(written.at(Numbered("Currency", loan)), "Sterling") << row;
                EXPECT_EQ(written.at(Numbered("Index", loan)), "1") << row;
                EXPECT_EQ(written.at(Numbered("InterestRate", loan)), list["Rate1"]) << row;
            }
        }
}

/// What a loan record of these fields carries, without the loans that it says nothing of.
Fields Loans(const Fields& lastYear)
{
    Fields written = Written(CarryLoans(Record(lastYear), ReadCurrencyRates(Record(Currencies()))));
    for (int loan = 1; loan <= 5; ++loan)
        if (!lastYear.contains(Numbered("Currency", loan)))
            for (const char* stem : {"Currency", "Index", "InterestRate"})
                written.erase(Numbered(stem, loan));
    return written;
}

TEST(TransferLoans, EveryLoanHasACurrencyAfterwards)
{
    Fields expected;
    for (int loan = 1; loan <= 5; ++loan) {
        expected[Numbered("Currency", loan)] = "Sterling";
        expected[Numbered("Index", loan)] = "1";
        expected[Numbered("InterestRate", loan)] = "4.00";
    }
    EXPECT_EQ(Written(CarryLoans(Record({}), ReadCurrencyRates(Record(Currencies())))), expected);
}

TEST(TransferLoans, AKnownCurrencyKeepsLastYearsIndexAndRate)
{
    EXPECT_EQ(Loans({{"Currency2", "Dollar"}, {"Index2", "9"}, {"InterestRate2", "7.50"}}),
              (Fields{{"Currency2", "Dollar"}, {"Index2", "9"}, {"InterestRate2", "7.50"}}));
    EXPECT_EQ(Loans({{"Currency2", "Dollar"}}), (Fields{{"Currency2", "Dollar"}}));
}

TEST(TransferLoans, ACurrencyWithoutARateBecomesSterling)
{
    for (const char* currency : {"Franc", "Mark", "Drachma", "sterling", ""})
        EXPECT_EQ(Loans({{"Currency5", currency}, {"Index5", "4"}, {"InterestRate5", "9.00"}}),
                  (Fields{{"Currency5", "Sterling"}, {"Index5", "1"}, {"InterestRate5", "4.00"}}))
            << currency;
}

TEST(TransferLoans, TheRateIsTheStoredTextOfTheFirst)
{
    const CurrencyRates rates = ReadCurrencyRates(Record({{"Currency1", "Sterling"}, {"Rate1", " 4.0"}}));
    EXPECT_EQ(Written(CarryLoans(Record({}), rates))["InterestRate1"], " 4.0");
}

TEST(TransferLoans, BalancesOfThoseThatRunOnChangeTheirColumnAndArePacked)
{
    EXPECT_EQ(Loans({{"MaxBalanceEarlier1", "one"},
                     {"DateTo1", "31/12/2009"},
                     {"MaxBalanceEarlier2", "two"},
                     {"MaxBalanceLater2", "later"},
                     {"MaxBalanceEarlier3", ""},
                     {"MaxBalanceEarlier5", "five"},
                     {"DateFrom5", "01/01/2009"},
                     {"CashEq5", "     90.00"},
                     {"TotalBalance5", "x"}}),
              (Fields{{"MaxBalanceLater1", "two"}, {"MaxBalanceLater2", "five"}}));
}

// ---- cars -----------------------------------------------------------------------------------------

/// Two records of cars, and what of them runs on.
struct CarRecords {
    Fields p11d, extraCars;

    Fields& Of(int car) { return car <= 2 ? p11d : extraCars; }
    std::string& Field(std::string_view stem, int car) { return Of(car)[Numbered(stem, car)]; }
    void Add(int car)
    {
        Field("FMakeModel", car) = "Car " + std::to_string(car);
        Field("FRegDate", car) = "01/02/2008";
        Field("FListPrice", car) = "  20000.00";
        Field("FCashEqu", car) = "   3000.00";
    }

    CarRecords Carried() const
    {
        const LastYearRecord page = Record(p11d), extra = Record(extraCars);
        const CarriedCars cars = CarryCars(&page, &extra);
        return {.p11d = Written(cars.p11d), .extraCars = Written(cars.extraCars)};
    }
    /// The models in the order of the slots, "-" for an empty one.
    std::string Models() const
    {
        CarRecords carried = Carried();
        std::string models;
        for (int slot = 1; slot <= 6; ++slot) {
            const std::string& model = carried.Field("FMakeModel", slot);
            models += model.empty() ? "-" : model.substr(model.size() - 1);
        }
        return models;
    }
};

CarRecords SixCars()
{
    CarRecords cars;
    for (int car = 1; car <= 6; ++car)
        cars.Add(car);
    return cars;
}

TEST(TransferCars, ArePackedInTheirOrder)
{
    for (int choice = 0; choice < 64; ++choice) {
        CarRecords cars = SixCars();
        std::string expected;
        for (int car = 1; car <= 6; ++car)
            if ((choice >> (car - 1) & 1) != 0)
                expected += std::to_string(car);
            else
                cars.Field("FDateTo", car) = "05/04/2010";
        expected.resize(6, '-');
        EXPECT_EQ(cars.Models(), expected);
    }
}

TEST(TransferCars, EachHasAFixedLastDayThatCountsAsNone)
{
    const std::vector<std::string> fixed = {"05/04/2003", "05/04/2003", "05/04/3004",
                                            "05/04/4004", "05/05/5005", "06/06/6006"};
    for (int car = 1; car <= 6; ++car)
        for (const std::string& date : std::set<std::string>(fixed.begin(), fixed.end())) {
            CarRecords cars;
            cars.Add(car);
            cars.Field("FDateTo", car) = date;
            EXPECT_EQ(cars.Models(),
                      date == fixed[static_cast<std::size_t>(car - 1)] ? std::to_string(car) + "-----" : "------")
                << car << " " << date;
        }
}

TEST(TransferCars, TheFixedDayIsComparedAsItStands)
{
    for (const char* other : {"5/4/2003", "05/04/03", "05/04/2003 ", " ", "05/04/2010", "05/04/2011"}) {
        CarRecords cars;
        cars.Add(1);
        cars.Field("FDateTo", 1) = other;
        EXPECT_EQ(cars.Models(), "------") << other;
    }
}

TEST(TransferCars, OneWithoutPriceRegistrationOrCashEquivalentStaysBehind)
{
    for (const char* required : {"FListPrice", "FRegDate", "FCashEqu"}) {
        CarRecords cars = SixCars();
        cars.Field(required, 2).clear();
        cars.Of(4).erase(Numbered(required, 4));
        EXPECT_EQ(cars.Models(), "1356--") << required;
    }
    CarRecords zero;
    zero.Add(1);
    zero.Field("FCashEqu", 1) = "      0.00";
    EXPECT_EQ(zero.Models(), "1-----");
}

TEST(TransferCars, TwoWithTheSameFactsBothRunOn)
{
    CarRecords cars;
    cars.Add(1);
    cars.Add(2);
    cars.Field("FMakeModel", 2) = "Car 1";
    EXPECT_EQ(cars.Models(), "11----");
}

TEST(TransferCars, TakeTheirFactsAlongAndLeaveDatesAndResults)
{
    for (int car = 1; car <= 6; ++car) {
        CarRecords cars;
        // Every field of the car's column is filled.
        for (const Field& field : FieldsOf(FindTable(car <= 2 ? "P11D" : "ExtraCars")).All())
            if (field.name.starts_with("F") && field.name.ends_with(std::to_string(car)))
                cars.Of(car)[field.name] = field.kind == FieldKind::Tick ? "1" : field.name;
        cars.Field("FDateTo", car).clear();
        CarRecords expected;
        for (const char* stem : {"FMakeModel", "FRegDate", "FC02", "FEngine", "FListPrice", "FAccessories", "FFuel",
                                 "FCaptContr", "FPrivateUse"})
            expected.Field(stem, 1) = Numbered(stem, car);
        expected.Field("FNoC02", 1) = "1";
        expected.Field("FFuelTick", 1) = "1";
        const CarRecords carried = cars.Carried();
        EXPECT_EQ(carried.p11d, expected.p11d) << car;
        EXPECT_EQ(carried.extraCars, Fields()) << car;
    }
}

TEST(TransferCars, FuelGoesAlongUnlessItWasWithdrawnAndNotReinstated)
{
    struct Case {
        const char *tick, *withdrawn, *reinstated;
        bool carried;
    };
    for (const Case& c :
         {Case{"1", "", "", true}, Case{"1", "", "1", true}, Case{"1", "01/12/2009", "1", true},
          Case{"1", "01/12/2009", "0", false}, Case{"1", "01/12/2009", "", false}, Case{"0", "", "", false},
          Case{"0", "01/12/2009", "1", false}, Case{"", "", "", false}, Case{"True", "", "", true}})
        for (int car = 1; car <= 6; ++car) {
            CarRecords cars;
            cars.Add(car);
            cars.Field("FFuelTick", car) = c.tick;
            cars.Field("FDateWithdrawn", car) = c.withdrawn;
            cars.Field(car <= 2 ? "FDateWithdrawnTick" : "FWithdrawnTick", car) = c.reinstated;
            EXPECT_EQ(cars.Carried().p11d.contains("FFuelTick1"), c.carried)
                << car << " " << c.tick << " " << c.withdrawn << " " << c.reinstated;
        }
}

TEST(TransferCars, ARecordThatIsMissingHasNone)
{
    const CarRecords cars = SixCars();
    const LastYearRecord page = Record(cars.p11d), extra = Record(cars.extraCars);
    EXPECT_EQ(Written(CarryCars(&page, nullptr).extraCars), Fields());
    EXPECT_EQ(Written(CarryCars(nullptr, &extra).p11d)["FMakeModel1"], "Car 3");
    EXPECT_EQ(Written(CarryCars(nullptr, &extra).extraCars)["FMakeModel4"], "Car 6");
    EXPECT_EQ(Written(CarryCars(nullptr, nullptr).p11d), Fields());
}

TEST(TransferCars, FillFieldsThatExist)
{
    const CarriedCars cars = CarryCars(nullptr, nullptr);
    for (const CarriedField& field : cars.p11d)
        EXPECT_NE(FieldsOf(FindTable("P11D")).Find(field.field), TableFields::None) << field.field;
    for (const CarriedField& field : cars.extraCars)
        EXPECT_NE(FieldsOf(FindTable("ExtraCars")).Find(field.field), TableFields::None) << field.field;
}

// ---- employee and employer ------------------------------------------------------------------------

TEST(TransferIdentity, HasSixFields)
{
    const Fields identity = {{"DOB", "01/02/1960"},
                             {"SexTick", "F"},
                             {"PAYEBox", "123/A"},
                             {"WorkNumberBox", "W17"},
                             {"NatIns", "AB123456C"}};
    const Fields others = {{"ACashEqu", "1"}, {"MShareTick", "1"}, {"FirstName", "Jane"}, {"FMakeModel1", "x"}};
    EXPECT_EQ(Written(CarryIdentity(Record(With(With(identity, others), {{"DirectorTick", "1"}})))),
              With(identity, {{"DirectorTick", "1"}}));
    EXPECT_EQ(Written(CarryIdentity(Record(With(identity, {{"DirectorTick", "0"}})))), identity);
    EXPECT_EQ(Written(CarryIdentity(Record({}))), Fields());
}

TEST(TransferEmployer, HasReferencesAndAddressesAndNoneOfTheDeclaration)
{
    Fields employer = {{"EmployerReference", "r"}, {"AccountsOffReference", "a"}};
    for (int line = 1; line <= 6; ++line) {
        employer[Numbered("EmployerAdd", line)] = "e";
        employer[Numbered("ReturnAdd", line)] = "r";
    }
    Fields full;
    for (const Field& field : FieldsOf(FindTable("P11DB")).All())
        full[field.name] = field.name;
    EXPECT_EQ(Written(CarryEmployer(Record(With(full, employer)))), employer);
}

// ---- random records -------------------------------------------------------------------------------

/// A record of a table in which each text tells where it stood; what the rules look into is picked from a few.
Fields RandomRecord(std::string_view table)
{
    static const std::map<std::string, std::vector<std::string>> choices = {
        {"FDateTo", {"", "05/04/2003", "05/04/3004", "05/05/5005", "05/04/2010"}},
        {"DateTo", {"", "", "05/04/2010"}},
        {"Currency", {"", "Sterling", "Yen", "Franc"}},
    };
    Fields fields;
    for (const Field& field : FieldsOf(FindTable(table)).All()) {
        const std::string stem = field.name.substr(0, field.name.find_last_not_of("0123456789") + 1);
        const auto choice = choices.find(stem);
        const auto texts = choice != choices.end()         ? choice->second
                           : field.kind == FieldKind::Tick ? std::vector<std::string>{"", "0", "1"}
                                                           : std::vector<std::string>{"", field.name, field.name};
        fields[field.name] = *rc::gen::elementOf(texts);
    }
    return fields;
}

std::string StemOf(const std::string& name)
{
    return name.substr(0, name.find_last_not_of("0123456789") + 1);
}

RC_GTEST_PROP(TransferAnyRecord, NothingGoesWhereItDoesNotBelong, ())
{
    const std::map<Carries, std::pair<std::string, std::set<std::string>>> allowed = {
        {Carries::Descriptions, {"KNotepad", {"Description"}}},
        {Carries::Address, {"DNotepad", {"Address", "Postcode"}}},
        {Carries::Vans, {"GNotepad", {"RegNumber", "BeforeApril"}}},
        {Carries::Loans, {"HNotepad", {"Currency", "Index", "InterestRate", "MaxBalanceLater"}}},
    };
    const CurrencyRates rates = ReadCurrencyRates(Record(Currencies()));
    for (const auto& [rule, where] : allowed) {
        const Fields lastYear = RandomRecord(where.first);
        for (const auto& [field, text] :
             Written(Carry(rule, Record(lastYear), [&]() -> const CurrencyRates& { return rates; }))) {
            RC_ASSERT(where.second.contains(StemOf(field)));
            // A text of its own place comes from a field of the same stem; only balances change their column.
            if (lastYear.contains(text))
                RC_ASSERT(StemOf(text) == (StemOf(field) == "MaxBalanceLater" ? "MaxBalanceEarlier" : StemOf(field)));
        }
    }
}

RC_GTEST_PROP(TransferAnyRecord, CarsKeepTheirOrderAndTheirFactsTogether, ())
{
    CarRecords cars{.p11d = RandomRecord("P11D"), .extraCars = RandomRecord("ExtraCars")};
    CarRecords carried = cars.Carried();
    int slot = 0;
    for (int car = 1; car <= 6; ++car) {
        if (cars.Field("FListPrice", car).empty() || cars.Field("FRegDate", car).empty() ||
            cars.Field("FCashEqu", car).empty())
            continue;
        const std::string& last = cars.Field("FDateTo", car);
        const bool fixed = (car <= 2 && last == "05/04/2003") || (car == 3 && last == "05/04/3004") ||
                           (car == 5 && last == "05/05/5005");
        if (!last.empty() && !fixed)
            continue;
        ++slot;
        for (const char* stem : {"FMakeModel", "FRegDate", "FC02", "FEngine", "FListPrice", "FAccessories", "FFuel",
                                 "FCaptContr", "FPrivateUse"})
            RC_ASSERT(carried.Field(stem, slot) == cars.Field(stem, car));
        RC_ASSERT((carried.Field("FNoC02", slot) == "1") == (cars.Field("FNoC02", car) == "1"));
    }
    for (++slot; slot <= 6; ++slot)
        for (const char* stem : {"FMakeModel", "FListPrice", "FFuelTick", "FNoC02"})
            RC_ASSERT(carried.Field(stem, slot).empty());
    for (const char* never : {"FDateFrom", "FDateTo", "FCashEqu", "FFuelEqu", "FDateWithdrawn"})
        for (int car = 1; car <= 6; ++car)
            RC_ASSERT(carried.Field(never, car).empty());
}

} // namespace
} // namespace quillmere
