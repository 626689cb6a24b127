#include "clientdb/EmployeeFinder.h"

#include "clientdb/Employees.h"
#include "support/StoreFixture.h"

namespace quillmere::test {
namespace {

using Texts = std::vector<std::string>;

class Finder : public StoreFixture {
protected:
    Finder() : database(Open()) {}

    void Add(std::string employer, std::string first, std::string surname, std::string_view number = {},
             std::string_view works = {})
    {
        const std::string employee = EmployeeName(first, surname);
        CreateEmployee(database, {employer, std::move(first), std::move(surname), ""});
        Recordset records = database.OpenRecordset("P11D");
        records.Index("IndKey");
        records.Seek(employer, employee);
        records.Edit();
        records.SetField("NatIns", number);
        records.SetField("WorkNumberBox", works);
        records.Update();
    }

    Texts Find(std::string_view query, std::size_t most = 100)
    {
        Texts names;
        const EmployeeFinder finder(database);
        const EmployeeFinder::Result result = finder.Find(query, most);
        matches = result.matches;
        for (const FoundEmployee& found : result.best)
            names.push_back(found.employee);
        return names;
    }

    Database database;
    std::size_t matches = 0;
};

TEST_F(Finder, AnyPartOfAnyWordFinds)
{
    Add("Acme Ltd", "Jane", "Smith", "AB123456C", "W-77");
    Add("Brass & Co", "Peter", "Goldsmith", "YZ654321A");
    EXPECT_EQ(Find("smi"), (Texts{"Jane Smith", "Peter Goldsmith"}));
    EXPECT_EQ(Find("dsm"), Texts{"Peter Goldsmith"});
    EXPECT_EQ(Find("brass"), Texts{"Peter Goldsmith"});
    EXPECT_EQ(Find("w-7"), Texts{"Jane Smith"});
    EXPECT_EQ(Find("3456"), Texts{"Jane Smith"});
    EXPECT_EQ(Find("xyz"), Texts{});
}

TEST_F(Finder, EveryWordOfTheQueryMustBeThereInAnyOrder)
{
    Add("Acme Ltd", "Jane", "Smith");
    Add("Brass & Co", "Jane", "Cooper");
    EXPECT_EQ(Find("jane ac"), Texts{"Jane Smith"});
    EXPECT_EQ(Find("  ltd   SMITH "), Texts{"Jane Smith"});
    EXPECT_EQ(Find("jane smith brass"), Texts{});
}

TEST_F(Finder, AWordEndsWhereItEnds)
{
    Add("Acme Ltd", "Jane", "Smith");
    EXPECT_EQ(Find("smithjane"), Texts{});
    EXPECT_EQ(Find("janesmith"), Texts{});
}

TEST_F(Finder, AccentsAndCaseDoNotCount)
{
    Add("Café Zürich", "Zoë", "O'Brien-Łuczak");
    Add("Acme Ltd", "ÉMILE", "STRASSE");
    EXPECT_EQ(Find("zoe"), Texts{"Zoë O'Brien-Łuczak"});
    EXPECT_EQ(Find("ZÜRICH cafe"), Texts{"Zoë O'Brien-Łuczak"});
    EXPECT_EQ(Find("émile straße"), Texts{"ÉMILE STRASSE"});
}

TEST_F(Finder, ANationalInsuranceNumberIsFoundWithAndWithoutBlanks)
{
    Add("Acme Ltd", "Jane", "Smith", "AB 12 34 56 C");
    EXPECT_EQ(Find("ab123456c"), Texts{"Jane Smith"});
    EXPECT_EQ(Find("AB 12 34 56 C"), Texts{"Jane Smith"});
}

TEST_F(Finder, SurnamesComeBeforeOtherWordsAndBeforeTheInsideOfWords)
{
    Add("Mark & Sons", "Ann", "Bell");
    Add("Acme Ltd", "Ann", "Denmark");
    Add("Acme Ltd", "Mark", "Hill");
    Add("Acme Ltd", "Ann", "Marks");
    EXPECT_EQ(Find("mark"), (Texts{"Ann Marks", "Ann Bell", "Mark Hill", "Ann Denmark"}));
}

TEST_F(Finder, TheBestAreGivenAndAllAreCounted)
{
    for (int i = 0; i < 7; ++i)
        Add("Acme Ltd", "Ann " + std::to_string(i), "Smith");
    EXPECT_EQ(Find("ann", 3), (Texts{"Ann 0 Smith", "Ann 1 Smith", "Ann 2 Smith"}));
    EXPECT_EQ(matches, 7U);
}

TEST_F(Finder, NothingSoughtFindsNothing)
{
    Add("Acme Ltd", "Jane", "Smith");
    EXPECT_EQ(Find(""), Texts{});
    EXPECT_EQ(Find("   "), Texts{});
    EXPECT_EQ(matches, 0U);
}

TEST_F(Finder, ThePeopleOfTheSampleAreNotFound)
{
    Add(std::string(SampleEmployer), "Jane", "Smith");
    EXPECT_EQ(Find("smith"), Texts{});
}

TEST_F(Finder, ARenamedEmployeeIsFoundByHisNewNameToo)
{
    Add("Acme Ltd", "Jane", "Smith");
    RenameEmployee(database, "Acme Ltd", "Jane Smith", "Jane Miller");
    EXPECT_EQ(Find("miller"), Texts{"Jane Miller"});
    EXPECT_EQ(Find("smith"), Texts{"Jane Miller"});
}

TEST_F(Finder, BytesThatAreNoTextDoNoHarm)
{
    Add("Acme Ltd", "Jane", "Sm\xFFith");
    EXPECT_EQ(Find("sm\xFFith"), Texts{"Jane Sm\xFFith"});
    EXPECT_EQ(Find("\xC3"), Texts{});
}

TEST_F(Finder, MoreEmployersThanAListHoldsAreNoBar)
{
    Recordset records = database.OpenRecordset("P11D");
    for (std::size_t i = 0; i <= EmployerNameSlots; ++i) {
        const std::string employer = "Employer " + std::to_string(i);
        records.AddNew();
        records.SetField("EmployerName", employer);
        records.SetField("EmployeeName", "Jane Smith");
        records.SetField("Name", JoinedName(employer, "Jane Smith"));
        records.SetField("Surname", "Smith");
        records.Update();
    }
    EXPECT_EQ(Find("smith 751"), Texts{"Jane Smith"});
    EXPECT_EQ(EmployeeFinder(database).Count(), EmployerNameSlots + 1);
}

} // namespace
} // namespace quillmere::test
