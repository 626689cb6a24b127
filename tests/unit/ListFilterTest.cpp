// The line over a list of names.
#include "clientdb/ListFilter.h"

#include "support/ProgramFixture.h"

namespace quillmere::test {
namespace {

const std::vector<std::string> Names{"Zoë & Sons", "acme Ltd", "Brass Bros", "Acme West"};

TEST(ListFilterRule, ShowsTheNamesOfWhichEachWordIsAPart)
{
    EXPECT_EQ(Filtered(Names, "", false), Names);
    EXPECT_EQ(Filtered(Names, "  ", false), Names);
    EXPECT_EQ(Filtered(Names, "ACME", false), (std::vector<std::string>{"acme Ltd", "Acme West"}));
    EXPECT_EQ(Filtered(Names, "we me", false), (std::vector<std::string>{"Acme West"}));
    EXPECT_EQ(Filtered(Names, "zoe", false), (std::vector<std::string>{"Zoë & Sons"}));
    EXPECT_TRUE(Filtered(Names, "acme brass", false).empty());
}

TEST(ListFilterRule, SortsWithoutRegardToCase)
{
    EXPECT_EQ(Filtered(Names, "", true),
              (std::vector<std::string>{"acme Ltd", "Acme West", "Brass Bros", "Zoë & Sons"}));
}

class ListFilterTest : public ProgramFixture {
protected:
    void Type(std::string_view screen, std::string_view text)
    {
        Box& line = At(screen, "ListFilter");
        line.AcceptTyped(text);
        Now().screens.Find(screen)->Typed(line);
    }
};

TEST_F(ListFilterTest, KeepsWhatIsChosenWhileItShows)
{
    Create("Zulu", "Jane", "Smith");
    Create("Acme", "Jane", "Smith");
    Menu("FileDeleteEmployer");
    Box& list = At("EmployerList", "EmployerList");
    EXPECT_EQ(list.Selected(), -1) << "nobody is chosen at the opening";
    Mark("EmployerList", "EmployerList", 0);
    Click("EmployerList", "ListSorted");
    EXPECT_EQ(list.Entries(), (std::vector<std::string>{"Acme", "Zulu"}));
    EXPECT_EQ(list.Text(), "Zulu");
    Type("EmployerList", "ac");
    EXPECT_EQ(list.Text(), "Acme");
    EXPECT_EQ(At("EmployerList", "ListCount").Text(), "1 of 2 employers");
    Type("EmployerList", "nobody");
    EXPECT_EQ(list.Text(), "");
    Click("EmployerList", "EmpDelete");
    EXPECT_EQ(TakeMessage().text, "You must select an Employer to delete.");
}

TEST_F(ListFilterTest, TheFirstStopIsTheListAsBefore)
{
    Create("Zulu", "Jane", "Smith");
    for (const char* screen : {"EmployerList", "EmployeeList"})
        EXPECT_EQ(Now().screens.Make(screen)->Boxes().front()->Name(), screen);
}

} // namespace
} // namespace quillmere::test
