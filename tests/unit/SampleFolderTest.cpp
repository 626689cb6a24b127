#include "app/SampleFolder.h"

#include "clientdb/EmployerScreens.h"
#include "clientdb/store/TableLayouts.h"
#include "edition/SampleClients.h"
#include "support/ProgramFixture.h"

#include <array>
#include <map>

namespace quillmere::test {
namespace {

class SampleFolder : public ProgramFixture {
protected:
    /// Every text of every table, by table, record and field; what is empty is left out.
    std::map<std::string, std::string> Stored()
    {
        std::map<std::string, std::string> stored;
        Database database = Clients();
        for (const TableLayout& table : ClientTables()) {
            Recordset records = database.OpenRecordset(table.name);
            for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
                for (const Field& field : FieldsOf(table).All())
                    if (const std::string_view text = records.Field(field.name); !text.empty())
                        stored.emplace(KeyOf(table, records) + field.name, text);
        }
        return stored;
    }
    static std::string KeyOf(const TableLayout& table, const Recordset& records)
    {
        std::string key(table.name);
        if (table.level != TableLevel::Database)
            key.append("/").append(records.Field("EmployerName"));
        if (table.level == TableLevel::Employee)
            key.append("/").append(records.Field("EmployeeName"));
        return key + "/";
    }
    static std::string NameOf(const edition::SampleClient& client)
    {
        return EmployeeName(client.firstName, client.surname);
    }
};

TEST_F(SampleFolder, IsTakenAwayJustAsItWasAdded)
{
    Create("Acme Ltd", "Jane", "Smith");
    const auto before = Stored();
    EXPECT_EQ(SampleWords(Now()), "Add Sample Clients");
    Menu("mnuSample");
    EXPECT_EQ(At("MDIForm1", "StatusNote").Text(), "5 sample clients added");
    EXPECT_EQ(SampleWords(Now()), "Take Sample Clients Away");
    {
        Database database = Clients();
        EXPECT_EQ(ListEmployers(database),
                  (std::vector<std::string>{"Acme Ltd", "Sample Trading Ltd", "Sample Services plc"}));
    }
    door.answers = {Answer::No};
    Menu("mnuSample");
    EXPECT_NE(Stored(), before);
    door.answers = {Answer::Yes};
    Menu("mnuSample");
    EXPECT_EQ(Stored(), before);
    ASSERT_EQ(door.messages.size(), 2U);
    EXPECT_EQ(door.messages[0].defaultAnswer, Answer::No);
}

TEST_F(SampleFolder, LeavesWhomTheUserHasAddedToItsEmployers)
{
    Menu("mnuSample");
    Create("Sample Trading Ltd", "Real", "Person");
    door.answers = {Answer::Yes};
    Menu("mnuSample");
    Database database = Clients();
    EXPECT_EQ(ListEmployers(database), std::vector<std::string>{"Sample Trading Ltd"});
    EXPECT_EQ(ListEmployees(database, "Sample Trading Ltd"), std::vector<std::string>{"Real Person"});
    Menu("mnuSample");
    EXPECT_EQ(ListEmployees(database, "Sample Trading Ltd"), std::vector<std::string>{"Real Person"})
        << "an employer of that name is not mixed with the sample's";
    EXPECT_EQ(At("MDIForm1", "StatusNote").Text(), "There is an employer Sample Trading Ltd already");
}

TEST_F(SampleFolder, HasTheFiguresThatTheScreensWorkOutThemselves)
{
    Menu("mnuSample");
    const auto added = Stored();
    for (const edition::SampleClient& client : edition::SampleClients) {
        ASSERT_TRUE(quillmere::OpenEmployee(Now(), std::string(client.employer), NameOf(client)));
        for (const std::string_view page : {"Form3", "Side2Form1"}) {
            if (page == "Side2Form1")
                Click("Form3", "Page2");
            Screen& screen = *Now().screens.Find(page);
            for (const auto& box : screen.Boxes())
                if (box->Kind() == BoxKind::Text && box->Enabled() && !box->ReadOnly()) {
                    screen.Enter(*box);
                    screen.Leave(*box);
                }
        }
        Menu("mnuCloseFile");
    }
    const auto left = Stored();
    // The working of a car that is not there shows noughts once its column has been looked at.
    for (const auto& [field, text] : left)
        if (!added.contains(field)) {
            EXPECT_EQ(text, "0") << field;
        }
    for (const auto& [field, text] : added)
        EXPECT_EQ(left.contains(field) ? left.at(field) : "", text) << field;
    EXPECT_TRUE(door.messages.empty()) << door.messages.front().text;
}

} // namespace
} // namespace quillmere::test
