#include "exchange/Csv.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace quillmere::test {
namespace {

using exchange::NotATable;
using exchange::ParseTable;

using Texts = std::vector<std::vector<std::string>>;

Texts CellsOf(const exchange::Table& table)
{
    Texts cells;
    for (const exchange::TableRow& row : table.rows)
        cells.push_back(row.cells);
    return cells;
}

std::string Refused(std::string_view bytes)
{
    try {
        static_cast<void>(ParseTable(bytes));
    } catch (const NotATable& refusal) {
        return refusal.what();
    }
    return {};
}

TEST(ParseTable, TakesTheSeparatorThatMostOftenPartsTheFirstLine)
{
    for (const char separator : {',', ';', '\t'}) {
        const std::string s(1, separator);
        const exchange::Table table = ParseTable("Surname" + s + "Cost" + s + "\"a,b;c\td\"\r\nSmith" + s + "1\r\n");
        EXPECT_EQ(table.separator, separator);
        EXPECT_EQ(CellsOf(table), (Texts{{"Surname", "Cost", "a,b;c\td"}, {"Smith", "1"}}));
    }
    EXPECT_EQ(CellsOf(ParseTable("sep=;\r\na,b;c\r\n")), (Texts{{"a,b", "c"}}));
}

TEST(ParseTable, ReadsQuotesAndLineEndsInsideThem)
{
    EXPECT_EQ(CellsOf(ParseTable("a,\"b \"\"c\"\"\nd\"\n\"e\",f")), (Texts{{"a", "b \"c\"\nd"}, {"e", "f"}}));
}

TEST(ParseTable, CountsRowsAsASpreadsheetDoes)
{
    const exchange::Table table = ParseTable("a\r\n\r\n,,\r\nb\r\n\"c\nd\"\r\ne");
    ASSERT_EQ(table.rows.size(), 4U);
    EXPECT_EQ(table.rows[1].number, 4);
    EXPECT_EQ(table.rows[2].number, 5);
    EXPECT_EQ(table.rows[3].number, 6);
    EXPECT_EQ(ParseTable("a\n\nb\n").rows[1].number, 3);
    EXPECT_EQ(ParseTable("a\r\rb\r").rows[1].number, 3);
}

TEST(ParseTable, ReadsUtf8WithAndWithoutItsMarkAndWindows1252AndUtf16)
{
    for (const auto& [bytes, encoding] : std::vector<std::pair<std::string, std::string>>{
             {"Zo\xC3\xAB,\xC2\xA3", "UTF-8"},
             {"\xEF\xBB\xBFZo\xC3\xAB,\xC2\xA3", "UTF-8"},
             {"Zo\xEB,\xA3", "Windows-1252"},
             {std::string("\xFF\xFEZ\0o\0\xEB\0,\0\xA3\0", 12), "UTF-16"}}) {
        const exchange::Table table = ParseTable(bytes);
        EXPECT_EQ(table.encoding, encoding);
        EXPECT_EQ(CellsOf(table), (Texts{{"Zoë", "£"}})) << encoding;
    }
}

TEST(ParseTable, RefusesWhatIsNoTableInWords)
{
    EXPECT_EQ(Refused(""), "There is nothing in this file.");
    EXPECT_EQ(Refused(",,\n\n"), "There is nothing in this file.");
    EXPECT_EQ(Refused("a,b\nc,\"d\ne,f\n"), "A quotation mark in row 2 is not closed.");
    for (const std::string& junk : {std::string("PK\x03\x04\0\0", 6), std::string("a,b\0c", 5),
                                    std::string("\x7F"
                                                "ELF")})
        EXPECT_EQ(Refused(junk), "This is not a text file. In the program that it comes from, save the table as CSV.");
    EXPECT_EQ(Refused(std::string(10'000, ',') + "x"),
              "This table has more than 500 columns: it is no list of employees.");
    std::string rows = "a\n";
    for (std::size_t row = 0; row < exchange::MostRows; ++row)
        rows += "b\n";
    EXPECT_EQ(Refused(rows), "This table has more than 100000 rows: it is no list of employees.");
    std::string cells;
    for (int row = 0; row < 5'000; ++row)
        cells += std::string(499, ',') + "x\n";
    EXPECT_EQ(Refused(cells), "This table has more than 2000000 cells: it is no list of employees.");
}

TEST(ReadTable, RefusesAnEnormousFileWithoutReadingIt)
{
    const TemporaryFolder folder;
    const std::filesystem::path file = folder.path / "huge.csv";
    std::ofstream(file) << "a,b\n";
    std::filesystem::resize_file(file,
                                 1'000'000'000); // its blocks are not there: reading it would still take its memory
    try {
        static_cast<void>(exchange::ReadTable(file));
        ADD_FAILURE() << "it was read";
    } catch (const NotATable& refusal) {
        EXPECT_STREQ(refusal.what(), "This file has 1000 MB: it is no list of employees. At most 32 MB are read.");
    }
    EXPECT_THROW(static_cast<void>(exchange::ReadTable("/dev/zero")), NotATable);
    EXPECT_THROW(static_cast<void>(exchange::ReadTable(folder.path / "none.csv")), NotATable);
    EXPECT_THROW(static_cast<void>(exchange::ReadTable(folder.path)), NotATable);
}

TEST(TableBytes, LeaveFiguresFiguresAndGuardTextsThatBeginAFormula)
{
    const std::string bytes = exchange::TableBytes({{{"Name"}, {"Cost"}},
                                                    {{"=1+1"}, {"-12.50", true}},
                                                    {{" @SUM(A1)"}, {"+44"}},
                                                    {{"a, \"b\""}, {"-"}},
                                                    {{"O'Hara"}, {"two\nlines"}}});
    EXPECT_EQ(bytes, "\xEF\xBB\xBFName,Cost\r\n'=1+1,-12.50\r\n' @SUM(A1),'+44\r\n"
                     "\"a, \"\"b\"\"\",'-\r\nO'Hara,\"two\nlines\"\r\n");
    EXPECT_EQ(exchange::WithoutGuard("'=1+1"), "=1+1");
    EXPECT_EQ(exchange::WithoutGuard("'tis"), "'tis");
}

RC_GTEST_PROP(TableBytes, AreReadAsTheyWereWritten, ())
{
    const auto text =
        *rc::gen::container<std::vector<std::vector<std::string>>>(rc::gen::container<std::vector<std::string>>(
            rc::gen::container<std::string>(rc::gen::element('a', '"', ',', ';', '\t', '\n', '=', '-', '\'', '1'))));
    std::vector<exchange::Cells> rows{{{"Heading"}, {"Second"}}};
    Texts expected{{"Heading", "Second"}};
    for (const auto& cells : text) {
        exchange::Cells row;
        bool isEmpty = true;
        for (const std::string& cell : cells) {
            row.push_back({cell});
            isEmpty = isEmpty && cell.empty();
        }
        rows.push_back(row);
        if (!isEmpty)
            expected.push_back(cells);
    }
    Texts read = CellsOf(ParseTable(exchange::TableBytes(rows)));
    for (std::vector<std::string>& row : read)
        for (std::string& cell : row)
            cell = exchange::WithoutGuard(cell);
    RC_ASSERT(read == expected);
}

RC_GTEST_PROP(ParseTable, TakesOrRefusesAnyBytes, (const std::string& bytes))
{
    try {
        RC_ASSERT(!ParseTable(bytes).rows.empty());
    } catch (const NotATable& refusal) {
        RC_ASSERT(std::string(refusal.what()).ends_with('.'));
    }
}

} // namespace
} // namespace quillmere::test
