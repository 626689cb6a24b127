// What has been typed and could not be stored: how it is kept, and how it comes back.
#include "clientdb/TypedEntries.h"

#include "frame/CheckedFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>

namespace quillmere {
namespace {

using test::Content;
using test::Store;
using test::TemporaryFolder;
using Entry = TypedEntries::Entry;

class TypedEntriesTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder / "Client.typed";
    TypedEntries entries{folder / "Client.mdb"};
    TypedEntries::Record jane{.table = "P11D", .employer = "Acme Ltd", .employee = "Jane Smith"};
    TypedEntries::Record acme{.table = "P11DB", .employer = "Acme Ltd", .employee = {}};
};

TEST_F(TypedEntriesTest, AreFoundAgainByTheirRecord)
{
    EXPECT_TRUE(entries.Of(jane).empty());
    const std::vector<Entry> typed{{"DCashEqu", "", "    250.00"}, {"SexTick", "M", ""}};
    entries.Keep(jane, typed);
    entries.Keep(acme, std::vector<Entry>{{"SentToDate", "", "01/07/2011"}});
    EXPECT_EQ(entries.Of(jane), typed);
    EXPECT_EQ(entries.Of(acme).size(), 1U);
    EXPECT_TRUE(entries.Of({.table = "P11D", .employer = "Acme Ltd", .employee = "Joe"}).empty());
}

TEST_F(TypedEntriesTest, KeepWhateverCanBeTyped)
{
    const TypedEntries::Record odd{.table = "P11D", .employer = "A\tB\\t", .employee = "C\nD\\"};
    const std::vector<Entry> typed{{"F", "a\\nb", "tab\t line\n return\r back\\"}, {"G", "£ é", "\\"}};
    entries.Keep(odd, typed);
    EXPECT_EQ(entries.Of(odd), typed);
}

TEST_F(TypedEntriesTest, OfTheSameFieldTheLastIsKept)
{
    entries.Keep(jane, std::vector<Entry>{{"A", "", "1"}, {"B", "", "2"}});
    entries.Keep(jane, std::vector<Entry>{{"A", "", "3"}});
    EXPECT_EQ(entries.Of(jane), (std::vector<Entry>{{"B", "", "2"}, {"A", "", "3"}}));
}

TEST_F(TypedEntriesTest, TheFileGoesWithTheLastOfThem)
{
    entries.Keep(jane, std::vector<Entry>{{"A", "", "1"}, {"B", "", "2"}});
    entries.Forget(acme, std::vector<std::string>{"A", "B"});
    entries.Forget(jane, std::vector<std::string>{"A"});
    EXPECT_EQ(entries.Of(jane), (std::vector<Entry>{{"B", "", "2"}}));
    entries.Forget(jane, std::vector<std::string>{"B"});
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(TypedEntriesTest, OfDesksThatKeepAtOneMomentNothingIsLost)
{
    constexpr int EachKeeps = 30;
    const auto keep = [&](const TypedEntries::Record& record) {
        const TypedEntries desk(folder / "Client.mdb");
        for (int field = 1; field <= EachKeeps; ++field)
            desk.Keep(record, std::vector<Entry>{{std::to_string(field), "", "typed"}});
    };
    std::thread other(keep, acme);
    keep(jane);
    other.join();
    EXPECT_EQ(entries.Of(jane).size(), EachKeeps);
    EXPECT_EQ(entries.Of(acme).size(), EachKeeps);
    EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(folder.path)), 1) << "the file alone is left";
}

TEST_F(TypedEntriesTest, AreForTheEyesOfTheAccountAlone)
{
    entries.Keep(jane, std::vector<Entry>{{"A", "", "1"}});
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));
}

TEST_F(TypedEntriesTest, AFileOfAnotherKindIsLeftAlone)
{
    Store(file, "Notes\n");
    EXPECT_TRUE(entries.Of(jane).empty());
    EXPECT_THROW(entries.Keep(jane, std::vector<Entry>{{"A", "", "1"}}), FileError);
    EXPECT_EQ(Content(file), "Notes\n");
}

TEST_F(TypedEntriesTest, ReadsLinesThatAreCutShortOrGoOn)
{
    Store(file, "Quillmere typed entries 1\nP11D\nP11D\tAcme Ltd\tJane Smith\tA\t\t1\t22/11/2026\n\nP11D\tAcme Ltd");
    EXPECT_EQ(entries.Of(jane), (std::vector<Entry>{{"A", "", "1"}}));
}

} // namespace
} // namespace quillmere
