// What has been typed and is not stored: how it is kept beside the database, and found again.
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
using Line = TypedEntries::Line;

class TypedEntriesTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder / "Client.typed";
    TypedEntries entries{folder / "Client.mdb"};
    TypedEntries::Record jane{.table = "P11D", .employer = "Acme Ltd", .employee = "Jane Smith"};
    TypedEntries::Record acme{.table = "P11DB", .employer = "Acme Ltd", .employee = {}};

    static std::vector<Line> LinesOf(const TypedEntries::Record& record, const std::vector<Entry>& typed)
    {
        std::vector<Line> lines;
        for (const Entry& entry : typed)
            lines.push_back({.record = record, .entry = entry});
        return lines;
    }
    std::vector<Entry> Of(const TypedEntries::Record& record) const
    {
        std::vector<Entry> found;
        for (const Line& line : entries.All())
            if (line.record == record)
                found.push_back(line.entry);
        return found;
    }
};

TEST_F(TypedEntriesTest, AreFoundAgainByTheirRecord)
{
    EXPECT_TRUE(Of(jane).empty());
    const std::vector<Entry> typed{{"DCashEqu", "", "    250.00"}, {"SexTick", "M", ""}};
    entries.Keep(LinesOf(jane, typed));
    entries.Keep(LinesOf(acme, std::vector<Entry>{{"SentToDate", "", "01/07/2011"}}));
    EXPECT_EQ(Of(jane), typed);
    EXPECT_EQ(Of(acme).size(), 1U);
    EXPECT_TRUE(Of({.table = "P11D", .employer = "Acme Ltd", .employee = "Joe"}).empty());
}

TEST_F(TypedEntriesTest, KeepWhateverCanBeTyped)
{
    const TypedEntries::Record odd{.table = "P11D", .employer = "A\tB\\t", .employee = "C\nD\\"};
    const std::vector<Entry> typed{{"F", "a\\nb", "tab\t line\n return\r back\\"}, {"G", "£ é", "\\"}};
    entries.Keep(LinesOf(odd, typed));
    EXPECT_EQ(Of(odd), typed);
}

TEST_F(TypedEntriesTest, OfTheSameFieldTheLastIsKept)
{
    entries.Keep(LinesOf(jane, std::vector<Entry>{{"A", "", "1"}, {"B", "", "2"}}));
    entries.Keep(LinesOf(jane, std::vector<Entry>{{"A", "", "3"}}));
    EXPECT_EQ(Of(jane), (std::vector<Entry>{{"B", "", "2"}, {"A", "", "3"}}));
}

TEST_F(TypedEntriesTest, TheFileGoesWithTheLastOfThem)
{
    entries.Keep(LinesOf(jane, std::vector<Entry>{{"A", "", "1"}, {"B", "", "2"}}));
    entries.Forget(LinesOf(acme, {{"A", "", "1"}, {"B", "", "2"}}));
    entries.Forget(LinesOf(jane, {{"A", "", "1"}}));
    EXPECT_EQ(Of(jane), (std::vector<Entry>{{"B", "", "2"}}));
    entries.Forget(LinesOf(jane, {{"B", "", "2"}}));
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(TypedEntriesTest, OfDesksThatKeepAtOneMomentNothingIsLost)
{
    constexpr int EachKeeps = 30;
    const auto keep = [&](const TypedEntries::Record& record) {
        const TypedEntries desk(folder / "Client.mdb");
        for (int field = 1; field <= EachKeeps; ++field)
            desk.Keep(LinesOf(record, std::vector<Entry>{{std::to_string(field), "", "typed"}}));
    };
    std::thread other(keep, acme);
    keep(jane);
    other.join();
    EXPECT_EQ(Of(jane).size(), EachKeeps);
    EXPECT_EQ(Of(acme).size(), EachKeeps);
    EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(folder.path)), 1) << "the file alone is left";
}

TEST_F(TypedEntriesTest, ADeskChangesItsOwnAlone)
{
    entries.Keep(LinesOf(jane, {{"A", "", "waits"}}));
    entries.KeepOf("one", LinesOf(jane, {{"A", "", "1"}, {"B", "", "2"}}));
    entries.KeepOf("other", LinesOf(jane, {{"A", "", "3"}}));
    entries.KeepOf("one", LinesOf(jane, {{"B", "", "4"}}));
    EXPECT_EQ(Of(jane), (std::vector<Entry>{{"A", "", "waits"}, {"A", "", "3"}, {"B", "", "4"}}));
    entries.Forget(LinesOf(jane, {{"A", "", "3"}}));
    EXPECT_EQ(entries.All().size(), 3U) << "somebody is still at it";
    entries.Release("other");
    EXPECT_EQ(entries.All()[1].desk, "");
    EXPECT_EQ(entries.All()[2].desk, "one");
    entries.KeepOf("one", {});
    entries.Forget(entries.All());
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(TypedEntriesTest, WhatChangesNothingWritesNothing)
{
    entries.Keep(LinesOf(jane, {{"A", "", "1"}}));
    std::filesystem::last_write_time(file, {});
    entries.Release("nobody");
    entries.KeepOf("nobody", {});
    EXPECT_EQ(std::filesystem::last_write_time(file), std::filesystem::file_time_type());
}

TEST_F(TypedEntriesTest, AreForTheEyesOfTheAccountAlone)
{
    entries.Keep(LinesOf(jane, std::vector<Entry>{{"A", "", "1"}}));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0600));
}

TEST_F(TypedEntriesTest, AFileOfAnotherKindIsLeftAlone)
{
    Store(file, "Notes\n");
    EXPECT_TRUE(Of(jane).empty());
    EXPECT_THROW(entries.Keep(LinesOf(jane, std::vector<Entry>{{"A", "", "1"}})), FileError);
    EXPECT_EQ(Content(file), "Notes\n");
}

TEST_F(TypedEntriesTest, ReadsLinesThatAreCutShortOrGoOn)
{
    Store(file, "Quillmere typed entries 1\nP11D\nP11D\tAcme Ltd\tJane Smith\tA\t\t1\t2011-06-21 14:31:00\tdesk\tmore\n"
                "\nP11D\tAcme Ltd");
    EXPECT_EQ(Of(jane), (std::vector<Entry>{{"A", "", "1", "2011-06-21 14:31:00"}}));
}

} // namespace
} // namespace quillmere
