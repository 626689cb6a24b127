#include "review/LastYear.h"

#include "clientdb/Employees.h"
#include "clientdb/store/TableLayouts.h"
#include "support/StoreFixture.h"
#include "transfer/YearTransfer.h"

#include <algorithm>

namespace quillmere::test {
namespace {

using review::CompareYears;
using review::LeftBehind;
using review::YearsCompared;

class LastYear : public StoreFixture {
protected:
    LastYear() : priorFile(folder.path / "prior") { MakeEmpty(priorFile); }

    static void Create(const std::filesystem::path& path, std::string firstName, std::string surname)
    {
        Database database = Database::OpenDatabase(path);
        CreateEmployee(database, {"Acme Ltd", std::move(firstName), std::move(surname), "123/A456"});
    }
    static void Write(const std::filesystem::path& path, std::string_view table, std::string_view field,
                      std::string_view text)
    {
        Database database = Database::OpenDatabase(path);
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek("Acme Ltd", "Jane Smith");
        records.Edit();
        records.SetField(field, text);
        records.Update();
    }
    void SetLastYear(std::string_view table, std::string_view field, std::string_view text) const
    {
        Write(priorFile, table, field, text);
    }
    YearsCompared Compare(std::string_view employee) const
    {
        Database lastYear = Database::OpenDatabase(priorFile, OpenMode::ReadOnly);
        Database thisYear = Database::OpenDatabase(file, OpenMode::ReadOnly);
        return CompareYears(lastYear, thisYear, "Acme Ltd", employee);
    }
    void TransferAll() const
    {
        YearTransfer transfer(file, priorFile);
        std::vector<TransferNotice> notices;
        for (const LastYearEmployee& employee : transfer.LastYearEmployees())
            transfer.Transfer(employee, TransferMode::All, notices);
        transfer.Commit();
        EXPECT_TRUE(notices.empty());
    }
    std::string ThisYear(std::string_view table, std::string_view field) const
    {
        Database database = Open();
        Recordset records = database.OpenRecordset(table);
        records.Index("IndKey");
        records.Seek("Acme Ltd", "Jane Smith");
        return std::string(records.Field(field));
    }
    static bool Says(const YearsCompared& years, const LeftBehind& thing)
    {
        return std::ranges::find(years.leftBehind, thing) != years.leftBehind.end();
    }

    std::filesystem::path priorFile;
};

TEST_F(LastYear, SectionsOfBothYearsAreTheOverviewsOwn)
{
    Create(priorFile, "Jane", "Smith");
    Create(file, "Jane", "Smith");
    SetLastYear("P11D", "ICashEqu", "    400.00");
    SetLastYear("P11D", "OCashEqu6", "     50.00");
    Write(file, "P11D", "ICashEqu", "    420.00");
    const YearsCompared years = Compare("Jane Smith");
    EXPECT_TRUE(years.isLastYear);
    EXPECT_TRUE(years.isThisYear);
    EXPECT_EQ(years.lastYear.total, Amount::FromUnits(450'0000));
    EXPECT_EQ(years.thisYear.total, Amount::FromUnits(420'0000));
    EXPECT_EQ(years.lastYear.benefits, Amount::FromUnits(400'0000));
    EXPECT_FALSE(Compare("Nobody").isLastYear);
}

TEST_F(LastYear, WhatIsSaidToStayIsWhatTheTransferLeavesBehind)
{
    Create(priorFile, "Jane", "Smith");
    for (const auto& [field, text] :
         std::initializer_list<std::pair<std::string_view, std::string_view>>{{"FMakeModel1", "Runs on"},
                                                                              {"FListPrice1", "  20000.00"},
                                                                              {"FRegDate1", "01/02/2008"},
                                                                              {"FCashEqu1", "   3000.00"},
                                                                              {"FFuelTick1", "1"},
                                                                              {"FFuelEqu1", "   1000.00"},
                                                                              {"FDateWithdrawn1", "01/12/2009"},
                                                                              {"FMakeModel2", "Given back"},
                                                                              {"FListPrice2", "  20000.00"},
                                                                              {"FRegDate2", "01/02/2008"},
                                                                              {"FCashEqu2", "   3000.00"},
                                                                              {"FDateTo2", "01/12/2009"}})
        SetLastYear("P11D", field, text);
    SetLastYear("ExtraCars", "FMakeModel3", "No price");
    SetLastYear("ANotepad", "Description1", "Laptop");
    SetLastYear("ANotepad", "CostMarket1", "    100.00");
    SetLastYear("INotepad", "Description1", "Cover");
    SetLastYear("INotepad", "Cost1", "    400.00");
    SetLastYear("GNotepad", "RegNumber1", "V1");
    SetLastYear("GNotepad", "RegNumber2", "V2");
    SetLastYear("GNotepad", "DateTo12", "01/12/2009");
    SetLastYear("HNotepad", "MaxBalanceEarlier1", "   9000.00");
    SetLastYear("HNotepad", "DateTo1", "01/12/2009");
    const YearsCompared before = Compare("Jane Smith");
    TransferAll();
    const YearsCompared years = Compare("Jane Smith");
    EXPECT_EQ(years.leftBehind, before.leftBehind) << "said of last year alone";

    EXPECT_TRUE(Says(years, {"Car 2", "Given back", "it was given back"}));
    EXPECT_TRUE(Says(years, {"Car 3", "No price", "it had no list price"}));
    EXPECT_TRUE(Says(years, {"Fuel of car 1", "   1000.00", "fuel was withdrawn"}));
    EXPECT_EQ(ThisYear("P11D", "FMakeModel1"), "Runs on");
    EXPECT_EQ(ThisYear("P11D", "FMakeModel2"), "");
    EXPECT_EQ(ThisYear("P11D", "FFuelTick1"), "");

    EXPECT_TRUE(Says(years, {"Van 2", "V2", "it was given back"}));
    EXPECT_EQ(ThisYear("GNotepad", "RegNumber1"), "V1");
    EXPECT_EQ(ThisYear("GNotepad", "RegNumber2"), "");
    EXPECT_TRUE(Says(years, {"Loan 1", "   9000.00", "it was discharged"}));
    EXPECT_EQ(ThisYear("HNotepad", "MaxBalanceLater1"), "");

    EXPECT_TRUE(Says(years, {"Notepad A", "2 entries", std::string(WordsOf(Carries::KeysOnly))}));
    EXPECT_EQ(ThisYear("ANotepad", "Description1"), "");
    EXPECT_TRUE(Says(years, {"Notepad I", "1 entry", std::string(WordsOf(Carries::Descriptions))}));
    EXPECT_EQ(ThisYear("INotepad", "Description1"), "Cover");
    EXPECT_EQ(ThisYear("INotepad", "Cost1"), "");
}

TEST_F(LastYear, OfAnEmployerWhoIsInOneYearAloneIsNamed)
{
    Create(priorFile, "Jane", "Smith");
    Create(priorFile, "Ann", "Other");
    Create(file, "Jane", "Smith");
    Create(file, "Ben", "New");
    SetLastYear("P11D", "ICashEqu", "    400.00");
    const YearsCompared years = Compare({});
    EXPECT_EQ(years.lastYear.employees, 2U);
    EXPECT_EQ(years.lastYear.total, Amount::FromUnits(400'0000));
    EXPECT_EQ(years.leftBehind, (std::vector<LeftBehind>{
                                    {"Employee", "Ann Other", "has not been transferred, or goes by another name"},
                                    {"Employee", "Ben New", "is new this year, or went by another name"},
                                }));
}

} // namespace
} // namespace quillmere::test
