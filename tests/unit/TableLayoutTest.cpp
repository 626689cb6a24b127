#include "clientdb/store/StoreErrors.h"
#include "clientdb/store/TableLayouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quillmere::test {
namespace {

using Texts = std::vector<std::string>;

Texts Names(std::string_view table)
{
    Texts names;
    for (const Field& field : FieldsOf(FindTable(table)).All())
        names.push_back(field.name);
    return names;
}

FieldKind KindOf(std::string_view table, std::string_view field)
{
    const TableFields& fields = FieldsOf(FindTable(table));
    return fields.All()[fields.Find(field)].kind;
}

TEST(TableLayout, TheTablesStandInTheirOrder)
{
    Texts names;
    for (const TableLayout& table : ClientTables())
        names.emplace_back(table.name);
    EXPECT_EQ(names, (Texts{"P11D",          "ANotepad",  "BNotepad",  "CNotepad",  "DNotepad",  "FNotepad",
                            "GNotepad",      "INotepad",  "KNotepad",  "LNotepad",  "ONotepad1", "ONotepad2",
                            "ONotepad3",     "ONotepad4", "ONotepad5", "ONotepad6", "JNotepad",  "ENotepad",
                            "HNotepad",      "NNotepad1", "NNotepad2", "NNotepad3", "P11DB",     "P11DBNotepad1",
                            "P11DBNotepad2", "ExtraCars", "HNotepad2", "SpareTable"}));
    EXPECT_EQ(NewEmployeeTables().size(), 27u);
    EXPECT_EQ(NewEmployeeTables().front()->name, "P11D");
    EXPECT_EQ(NewEmployeeTables().back()->name, "SpareTable");
}

TEST(TableLayout, EveryTableHasAsManyFieldsAsItsListSays)
{
    // Three keys with each employee's record, one with each employer's.
    const std::map<std::string_view, std::size_t> counts = {
        {"P11D", 3 + 8 + 12 + 2 * 42 + 4 + 2 * 8 + 12 + 2 * 4 + 1 + 6 * 3 + 2},
        {"ANotepad", 3 + 80},
        {"BNotepad", 3 + 60},
        {"CNotepad", 3 + 80},
        {"DNotepad", 3 + 25},
        {"FNotepad", 3 + 6 * 35},
        {"GNotepad", 3 + 3 * 28 + 9 * 9 + 6},
        {"INotepad", 3 + 80},
        {"KNotepad", 3 + 80},
        {"LNotepad", 3 + 80},
        {"ONotepad1", 3 + 80},
        {"ONotepad2", 3 + 80},
        {"ONotepad3", 3 + 80},
        {"ONotepad4", 3 + 80},
        {"ONotepad5", 3 + 80},
        {"ONotepad6", 3 + 80},
        {"JNotepad", 3 + 7},
        {"ENotepad", 3 + 27},
        {"HNotepad", 3 + 5 * 13},
        {"NNotepad1", 3 + 80},
        {"NNotepad2", 3 + 80},
        {"NNotepad3", 3 + 40},
        {"P11DB", 1 + 2 + 12 + 15},
        {"P11DBNotepad1", 1 + 40},
        {"P11DBNotepad2", 1 + 40},
        {"ExtraCars", 3 + 2 + 4 * 42},
        {"HNotepad2", 30},
        {"SpareTable", 3},
    };
    ASSERT_EQ(counts.size(), ClientTables().size());
    for (const TableLayout& table : ClientTables())
        EXPECT_EQ(FieldsOf(table).Count(), counts.at(table.name)) << table.name;
}

TEST(TableLayout, NoNameStandsTwiceInATable)
{
    for (const auto tables : {ClientTables(), ReferenceTables()})
        for (const TableLayout& table : tables) {
            std::set<std::string> met;
            for (const Field& field : FieldsOf(table).All()) {
                std::string lower = field.name;
                std::transform(lower.begin(), lower.end(), lower.begin(),
                               [](unsigned char c) { return std::tolower(c); });
                EXPECT_TRUE(met.insert(lower).second) << table.name << ' ' << field.name;
            }
        }
}

TEST(TableLayout, TheKeysStandFirst)
{
    for (const TableLayout& table : ClientTables()) {
        const Texts names = Names(table.name);
        switch (table.level) {
        case TableLevel::Employee:
            EXPECT_EQ(Texts(names.begin(), names.begin() + 3), (Texts{"EmployerName", "EmployeeName", "Name"}))
                << table.name;
            ASSERT_EQ(table.indexes.size(), 2u);
            EXPECT_EQ(table.indexes[0].name, "IndKey");
            EXPECT_EQ(table.indexes[0].part1, "EmployerName");
            EXPECT_EQ(table.indexes[0].part2, "EmployeeName");
            EXPECT_EQ(table.indexes[1].name, "PrimaryKey");
            EXPECT_EQ(table.indexes[1].part1, "Name");
            EXPECT_EQ(table.indexes[1].part2, "");
            break;
        case TableLevel::Employer:
            EXPECT_EQ(names.front(), "EmployerName");
            ASSERT_EQ(table.indexes.size(), 1u);
            EXPECT_EQ(table.indexes[0].name, "PrimaryKey");
            EXPECT_EQ(table.indexes[0].part1, "EmployerName");
            break;
        case TableLevel::Database:
            EXPECT_EQ(table.name, "HNotepad2");
            EXPECT_TRUE(table.indexes.empty());
            break;
        case TableLevel::Reference:
            ADD_FAILURE() << table.name;
        }
    }
}

TEST(TableLayout, TheOddSpellingsStand)
{
    const std::vector<std::pair<std::string_view, Texts>> fields = {
        {"P11D",
         {"FC021", "FNoC022", "HOutsand20031", "HOutsand20032", "HOutstand2", "FDateWithdrawnTick2", "FFullDisc1",
          "FUnavailableFirst11", "FUnavailableLast42", "B2", "NDescriptItems2", "LDescriptAsset", "DOB", "NatIns",
          "OCashEqu6", "ODescExpenses", "OEntertainTick", "FMBox1", "GVanFuel"}},
        {"ExtraCars", {"FWithdrawnTick3", "FWithdrawnTick6", "FC026", "FUnavailableLast46", "FirstName"}},
        {"GNotepad",
         {"DateFrom11", "DateFrom13", "DateTo31", "BeforeApril1", "BeforeApril3", "ChangeUse9", "TypeUse21",
          "TypeUse31", "Days10", "Days29", "Days210", "Days310", "TotalDays3", "FuelVanTick2"}},
        {"FNotepad", {"C026", "A1", "Z6", "Tick1", "FuelBenTick6", "FirstDateUnav3", "DateWithdrawnTick5"}},
        {"ANotepad", {"CostMarket20", "CashEq20"}},
        {"LNotepad", {"AnnualValue1", "CashEqu20"}},
        {"HNotepad", {"Divide25", "MaxBox1", "Index5", "MaxBalanceEarlier3"}},
        {"HNotepad2", {"Currency15", "Rate15"}},
        {"DNotepad", {"Address5", "Postcode", "AddChargeDays", "AddChargeR"}},
        {"ENotepad", {"QBox3", "LBox1"}},
        {"JNotepad", {"QualExp", "EmployeeCost", "EmployerCost"}},
        {"P11DB",
         {"AccountsOffReference", "EmployerAdd6", "ReturnAdd1", "SentToBox", "Section2Tick3", "Section4FBox",
          "Section4CDesc"}},
        {"P11DBNotepad1", {"AmountAdded20"}},
        {"P11DBNotepad2", {"AmountDeducted20"}},
    };
    for (const auto& [table, names] : fields) {
        const Texts all = Names(table);
        for (const std::string& name : names)
            EXPECT_TRUE(std::find(all.begin(), all.end(), name) != all.end()) << table << ' ' << name;
    }
    EXPECT_EQ(FieldsOf(FindTable("ExtraCars")).Find("FDateWithdrawnTick3"), TableFields::None);
    EXPECT_EQ(FieldsOf(FindTable("P11D")).Find("FWithdrawnTick1"), TableFields::None);
    EXPECT_EQ(FieldsOf(FindTable("P11D")).Find("FMakeModel3"), TableFields::None);
    EXPECT_EQ(FieldsOf(FindTable("BNotepad")).Find("CashEq1"), TableFields::None);
    EXPECT_EQ(FieldsOf(FindTable("ANotepad")).Find("Tax21"), TableFields::None);
}

TEST(TableLayout, ARepeatedGroupStandsWholeForEachNumber)
{
    const Texts names = Names("BNotepad");
    EXPECT_EQ(Texts(names.begin() + 3, names.begin() + 9),
              (Texts{"Description1", "Payment1", "Tax1", "Description2", "Payment2", "Tax2"}));
}

TEST(TableLayout, KindsAreThoseOfTheirBoxes)
{
    EXPECT_EQ(KindOf("P11D", "ACashEqu"), FieldKind::Amount);
    EXPECT_EQ(KindOf("P11D", "DOB"), FieldKind::Date);
    EXPECT_EQ(KindOf("P11D", "SexTick"), FieldKind::Tick);
    EXPECT_EQ(KindOf("P11D", "FQBox2"), FieldKind::Days);
    EXPECT_EQ(KindOf("P11D", "FC021"), FieldKind::Count);
    EXPECT_EQ(KindOf("P11D", "LDescriptAsset"), FieldKind::Text);
    EXPECT_EQ(KindOf("ExtraCars", "FWithdrawnTick4"), FieldKind::Tick);
    EXPECT_EQ(KindOf("GNotepad", "DateFrom11"), FieldKind::Date);
}

TEST(TableLayout, NamesAreFoundRegardlessOfCase)
{
    EXPECT_EQ(&FindTable("p11d"), &FindTable("P11D"));
    EXPECT_EQ(FindTable("spareTABLE").name, "SpareTable");
    for (const auto tables : {ClientTables(), ReferenceTables()})
        for (const TableLayout& table : tables) {
            const TableFields& fields = FieldsOf(table);
            for (std::size_t i = 0; i < fields.Count(); ++i) {
                std::string upper = fields.All()[i].name;
                EXPECT_EQ(fields.Find(upper), i);
                std::transform(upper.begin(), upper.end(), upper.begin(),
                               [](unsigned char c) { return std::toupper(c); });
                EXPECT_EQ(fields.Find(upper), i) << table.name << ' ' << upper;
                EXPECT_EQ(fields.Find(upper + "x"), TableFields::None);
            }
            EXPECT_EQ(fields.Find(""), TableFields::None);
        }
}

TEST(TableLayout, UnknownTablesAreMistakes)
{
    EXPECT_THROW(FindTable("P11D "), UnknownName);
    EXPECT_THROW(FindTable(""), UnknownName);
    EXPECT_THROW(FindTable("Manufacturers"), UnknownName);
    EXPECT_THROW(FindReferenceTable("P11D"), UnknownName);
    EXPECT_EQ(FindReferenceTable("FIGURES").name, "Figures");
}

} // namespace
} // namespace quillmere::test
