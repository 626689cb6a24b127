#include "clientdb/store/Salvage.h"

#include "clientdb/Employees.h"
#include "clientdb/PutBack.h"
#include "clientdb/SafetyCopies.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/CheckedFile.h"
#include "support/ProgramFixture.h"
#include "support/StoreFixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdlib>
#include <fmt/format.h>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace quillmere::test {
namespace {

constexpr std::size_t PageSize = 4096;

/// How many damaged databases; the environment may ask for more.
int Rounds()
{
    const char* const asked = std::getenv("QUILLMERE_ROUNDS");
    return asked == nullptr ? 60 : std::atoi(asked);
}

/// Every record of a table by its number, the fields one behind the other.
using Records = std::map<std::int64_t, std::string>;

class Salvaging : public StoreFixture {
protected:
    void SetUp() override
    {
        if (OnServer())
            GTEST_SKIP() << "it is about the bytes of a file";
    }
    Salvaging() : StoreFixture(QuickFolder()), target(folder / "salvaged"), emptyTemplate(folder / "empty")
    {
        CreateTables(emptyTemplate);
        {
            Database database = Open();
            WriteBatch batch(database);
            for (int i = 0; i < 60; ++i)
                CreateEmployee(database,
                               {fmt::format("Employer {}", i % 3), "First", fmt::format("Surname {}", i), "1"});
            for (const char* table : {"P11D", "ANotepad", "ExtraCars"})
                Fill(database, table);
            batch.Commit();
        }
        whole = Content(file);
        for (const TableLayout& table : ClientTables())
            records[std::string(table.name)] = RecordsOf(file, table);
    }

    /// Something in every fourth field, so that the table has many pages.
    static void Fill(Database& database, std::string_view table)
    {
        Recordset filled = database.OpenRecordset(table);
        const auto fields = FieldsOf(FindTable(table)).All();
        int number = 0;
        for (filled.MoveFirst(); !filled.AtEnd(); filled.MoveNext()) {
            filled.Edit();
            for (std::size_t field = 7; field < fields.size(); field += 4)
                filled.SetField(fields[field].name, fmt::format("{:>10}", ++number));
            filled.Update();
        }
    }

    static Records RecordsOf(const std::filesystem::path& database, const TableLayout& table)
    {
        Records found;
        sqlite3* handle = nullptr;
        sqlite3_open_v2(database.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_stmt* rows = nullptr;
        sqlite3_prepare_v2(handle, fmt::format("SELECT rowid,* FROM [{}]", table.name).c_str(), -1, &rows, nullptr);
        while (sqlite3_step(rows) == SQLITE_ROW) {
            std::string& text = found[sqlite3_column_int64(rows, 0)];
            for (int column = 1; column < sqlite3_column_count(rows); ++column) {
                const auto* field = reinterpret_cast<const char*>(sqlite3_column_text(rows, column));
                text += field == nullptr ? "\x01" : field;
                text += '\x02';
            }
        }
        sqlite3_finalize(rows);
        sqlite3_close(handle);
        return found;
    }

    /// A page of a table: which pages it is reached by, and how many records begin on it.
    struct Leaf {
        std::vector<std::size_t> pages;
        std::size_t records = 0;
    };
    /// The leaves of every table, as the store itself lists them of the whole database.
    std::map<std::string, std::vector<Leaf>> Leaves() const
    {
        std::map<std::string, std::vector<Leaf>> leaves;
        sqlite3* handle = nullptr;
        sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_stmt* rows = nullptr;
        sqlite3_prepare_v2(handle, "SELECT name,path,pageno,pagetype,ncell FROM dbstat ORDER BY name,path", -1, &rows,
                           nullptr);
        struct Page {
            std::string path;
            std::size_t number;
            bool isLeaf;
            std::size_t cells;
        };
        std::map<std::string, std::vector<Page>> pages;
        while (sqlite3_step(rows) == SQLITE_ROW) {
            const auto text = [&](int column) {
                return std::string(reinterpret_cast<const char*>(sqlite3_column_text(rows, column)));
            };
            pages[text(0)].push_back({text(1), static_cast<std::size_t>(sqlite3_column_int64(rows, 2)),
                                      text(3) == "leaf", static_cast<std::size_t>(sqlite3_column_int64(rows, 4))});
        }
        sqlite3_finalize(rows);
        sqlite3_close(handle);
        for (const TableLayout& table : ClientTables()) {
            const std::vector<Page>& all = pages[std::string(table.name)];
            for (const Page& leaf : all) {
                if (!leaf.isLeaf)
                    continue;
                Leaf& found = leaves[std::string(table.name)].emplace_back(Leaf{.pages = {}, .records = leaf.cells});
                // The pages above it, and what runs over from it.
                for (const Page& page : all)
                    if (leaf.path.starts_with(page.path) || page.path.starts_with(leaf.path))
                        found.pages.push_back(page.number);
            }
        }
        return leaves;
    }

    std::vector<std::size_t> IndexPagesOf(const std::string& table) const
    {
        std::vector<std::size_t> pages;
        sqlite3* handle = nullptr;
        sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READONLY, nullptr);
        sqlite3_stmt* rows = nullptr;
        sqlite3_prepare_v2(handle,
                           fmt::format("SELECT pageno FROM dbstat WHERE name LIKE '{}\\_%' ESCAPE '\\'", table).c_str(),
                           -1, &rows, nullptr);
        while (sqlite3_step(rows) == SQLITE_ROW)
            pages.push_back(static_cast<std::size_t>(sqlite3_column_int64(rows, 0)));
        sqlite3_finalize(rows);
        sqlite3_close(handle);
        return pages;
    }

    /// Salvages what is in the file, in the time that nobody takes for a hang.
    Salvaged SalvageIt()
    {
        const auto begin = std::chrono::steady_clock::now();
        std::filesystem::remove(target);
        Salvaged salvaged = SalvageDatabase(file, emptyTemplate, target);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
        return salvaged;
    }

    std::filesystem::path target, emptyTemplate;
    std::string whole;
    std::map<std::string, Records> records;
};

TEST_F(Salvaging, OfAWholeDatabaseIsAllOfIt)
{
    const Salvaged salvaged = SalvageIt();
    EXPECT_TRUE(salvaged.lost.empty());
    EXPECT_EQ(salvaged.state, LookAtDatabase(file));
    EXPECT_EQ(salvaged.state.employees, 60);
    for (const TableLayout& table : ClientTables())
        EXPECT_EQ(RecordsOf(target, table), records[std::string(table.name)]) << table.name;
    EXPECT_EQ(Content(file), whole) << "the damaged one is only looked at";
    // The change history comes along.
    for (const char* table : {"HistoryOperation", "HistoryChange"})
        EXPECT_EQ(RecordsOf(target, {.name = table}), RecordsOf(file, {.name = table})) << table;
    EXPECT_FALSE(RecordsOf(target, {.name = "HistoryOperation"}).empty());
}

TEST_F(Salvaging, OfDatabasesDamagedAtRandomKeepsWhatIsOnUndamagedPages)
{
    const std::map<std::string, std::vector<Leaf>> leaves = Leaves();
    std::mt19937 random(20110630);
    const std::size_t pages = whole.size() / PageSize;
    int withLosses = 0;
    for (int round = 0; round < Rounds(); ++round) {
        SCOPED_TRACE(round);
        std::string content = whole;
        std::set<std::size_t> damaged;
        for (std::size_t many = 1 + random() % 6; many > 0; --many) {
            const std::size_t page = 1 + random() % pages;
            damaged.insert(page);
            for (std::size_t at = 0; at < PageSize; ++at)
                content[(page - 1) * PageSize + at] = static_cast<char>(round % 4 == 0   ? 0
                                                                        : round % 4 == 1 ? 0xff
                                                                                         : random() % 256);
            // Another page's content looks right in a wrong place.
            if (round % 4 == 2)
                content.replace((page - 1) * PageSize, PageSize, whole, random() % pages * PageSize, PageSize);
        }
        Store(file, content);
        const Salvaged salvaged = SalvageIt();
        EXPECT_TRUE(LookAtDatabase(target).IsWhole());
        for (const TableLayout& table : ClientTables()) {
            const std::string name(table.name);
            std::size_t expected = 0;
            const auto ofTable = leaves.find(name);
            ASSERT_NE(ofTable, leaves.end());
            for (const Leaf& leaf : ofTable->second)
                if (std::ranges::none_of(leaf.pages, [&](std::size_t page) { return damaged.contains(page); }))
                    expected += leaf.records;
            const Records found = RecordsOf(target, table);
            std::size_t kept = 0;
            for (const auto& [number, text] : records[name])
                kept += found.contains(number) && found.at(number) == text;
            ASSERT_GE(kept, expected) << name;
            if (kept < records[name].size())
                ++withLosses;
        }
        withLosses += salvaged.lost.empty() ? 0 : 1;
    }
    EXPECT_GT(withLosses, Rounds() / 3) << "or nothing has been damaged";
}

TEST_F(Salvaging, NamesWhoseRecordsAreLost)
{
    // One leaf of P11D at a time: the index still knows who was on it.
    int named = 0;
    const std::map<std::string, std::vector<Leaf>> leaves = Leaves();
    for (const Leaf& leaf : leaves.at("P11D")) {
        std::string content = whole;
        content.replace((leaf.pages.front() - 1) * PageSize, 1, "\x7f");
        for (const std::size_t page : leaf.pages)
            if (page != leaf.pages.front())
                content.replace((page - 1) * PageSize, PageSize, PageSize, '\xA5');
        Store(file, content);
        const Salvaged salvaged = SalvageIt();
        std::set<std::string> missing, listed;
        const Records found = RecordsOf(target, FindTable("P11D"));
        for (const auto& [number, text] : records["P11D"])
            if (!found.contains(number))
                missing.insert(text.substr(0, text.find('\x02')));
        for (const NotRead& lost : salvaged.lost)
            if (lost.table == "P11D") {
                listed.insert(
                    lost.record.substr(lost.record.find("(") + 1, lost.record.size() - lost.record.find("(") - 2));
                EXPECT_TRUE(lost.record.starts_with("First Surname ")) << lost.record;
                EXPECT_FALSE(lost.why.empty());
                ++named;
            }
        EXPECT_EQ(salvaged.state.employees, static_cast<std::int64_t>(found.size()));
        EXPECT_FALSE(missing.empty() && !listed.empty());
    }
    EXPECT_GE(named, 60);
}

TEST_F(Salvaging, StepsOverWhatCannotBeReadWhereNoIndexSaysWhoIsThere)
{
    const std::vector<Leaf> leaves = Leaves()["P11D"];
    ASSERT_GT(leaves.size(), 6u);
    std::string content = whole;
    const auto spoil = [&](std::size_t page) { content.replace((page - 1) * PageSize, PageSize, PageSize, '\xA5'); };
    for (const std::size_t page : IndexPagesOf("P11D"))
        spoil(page);
    // What stands between two of them is reached from neither end.
    std::size_t expected = 0;
    for (std::size_t leaf = 0; leaf < leaves.size(); ++leaf)
        if (leaf == 1 || leaf == leaves.size() - 2)
            spoil(leaves[leaf].pages.back());
        else
            expected += leaves[leaf].records;
    Store(file, content);
    const Salvaged salvaged = SalvageIt();
    EXPECT_GE(salvaged.state.employees, static_cast<std::int64_t>(expected));
    EXPECT_FALSE(salvaged.lost.empty());
}

TEST_F(Salvaging, OfAFileThatIsCutOffOrHasNoHeadKeepsTheRest)
{
    for (const std::size_t size : {whole.size() - 1, whole.size() / 2, whole.size() / 3 * 2}) {
        Store(file, whole.substr(0, size));
        EXPECT_GT(SalvageIt().records, 100) << size;
    }
    std::string content = whole;
    content.replace(0, PageSize, PageSize, '\0');
    Store(file, content);
    const Salvaged salvaged = SalvageIt();
    EXPECT_EQ(salvaged.state.employees, 60);
    for (const TableLayout& table : ClientTables())
        EXPECT_EQ(RecordsOf(target, table), records[std::string(table.name)]) << table.name;
}

TEST_F(Salvaging, OfWhatIsNoDatabaseIsNothing)
{
    for (const std::string& content : {std::string(), std::string("This is no database."), std::string(500'000, 'x')}) {
        Store(file, content);
        std::filesystem::remove(target);
        EXPECT_THROW(SalvageDatabase(file, emptyTemplate, target), StoreError);
        EXPECT_FALSE(std::filesystem::exists(target));
    }
    std::filesystem::remove(file);
    EXPECT_THROW(SalvageDatabase(file, emptyTemplate, target), FileError);
}

// ---- as the program shows it

class DamagedDesk : public ProgramFixture {
protected:
    void SetUp() override
    {
        if (OnServer())
            GTEST_SKIP() << "it is about the bytes of a file";
    }
    void SpoilPage(std::size_t page)
    {
        std::string content = Content(Now().ClientDatabasePath());
        content.replace((page - 1) * PageSize, PageSize, PageSize, '\xA5');
        Store(Now().ClientDatabasePath(), content);
    }
};

TEST_F(DamagedDesk, IsToldOfBesideEverythingElseAndGoneBackFrom)
{
    Create("Acme", "Jane", "Smith");
    Now().screens.RunDeferred();
    EXPECT_FALSE(Shows("DamagedDatabase"));
    SpoilPage(30);
    Menu("mnuSafetyCopies");
    ASSERT_TRUE(Shows("DamagedDatabase"));
    EXPECT_TRUE(door.messages.empty()) << "nobody is asked anything";
    EXPECT_TRUE(At("SafetyCopies", "InUse").Text().starts_with("In use: damaged: "))
        << At("SafetyCopies", "InUse").Text();
    EXPECT_FALSE(At("DamagedDatabase", "Faults").Entries().empty());
    EXPECT_EQ(At("DamagedDatabase", "Offer").Text(), "The newest good copy, which Put Back goes back to: 30/06/2011 "
                                                     "12:00, first of the day: opened, 1 employee, complete");
    door.answers = {Answer::Yes};
    Click("DamagedDatabase", "DamagedPutBack");
    EXPECT_FALSE(Shows("DamagedDatabase"));
    EXPECT_TRUE(LookAtDatabase(Now().ClientDatabasePath()).IsWhole());
    // The damaged file has been kept as it was.
    const std::vector<SafetyCopy> copies = SafetyCopiesOf(Now().ClientDatabasePath());
    ASSERT_EQ(copies.size(), 2u);
    EXPECT_EQ(copies.front().reason, CopyReason::Damaged);
    EXPECT_FALSE(LookAtDatabase(copies.front().file).IsWhole());
}

TEST_F(DamagedDesk, OffersWhatTheUserHasGoneBackFromLastOfAll)
{
    Create("Acme", "Jane", "Smith");
    Now().screens.RunDeferred();
    Create("Acme", "Peter", "Cooper");
    door.answers = {Answer::Yes};
    ASSERT_TRUE(PutBack(Now(), KeptCopiesOf(Now().ClientDatabasePath()).front()));
    ASSERT_EQ(KeptCopiesOf(Now().ClientDatabasePath()).front().why, "before Put Back");
    EXPECT_EQ(NewestGoodCopy(Now().ClientDatabasePath())->copy.why, "first of the day");
}

TEST_F(DamagedDesk, WithoutAGoodCopyOffersWhatCanBeRead)
{
    Create("Acme", "Jane", "Smith");
    Create("Acme", "Peter", "Cooper");
    SpoilPage(30);
    Now().screens.Show("DamagedDatabase");
    Click("DamagedDatabase", "DamagedPutBack");
    EXPECT_EQ(At("MDIForm1", "StatusNote").Text(), "There is no good copy to put back");
    Click("DamagedDatabase", "DamagedSalvage");
    EXPECT_TRUE(At("DamagedDatabase", "DamagedWords").Text().starts_with("Salvaged: "))
        << At("DamagedDatabase", "DamagedWords").Text();
    const std::vector<SafetyCopy> copies = SafetyCopiesOf(Now().ClientDatabasePath());
    ASSERT_EQ(copies.size(), 1u);
    EXPECT_EQ(copies.front().reason, CopyReason::Salvaged);
    EXPECT_TRUE(LookAtDatabase(copies.front().file).IsWhole());
}

} // namespace
} // namespace quillmere::test
