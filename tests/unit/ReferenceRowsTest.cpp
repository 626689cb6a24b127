// The reference database of car models: how it is made from text tables, and what the sample has.
#include "ReferenceRows.h"

#include "cars/CarReference.h"
#include "edition/LeftOvers.h"
#include "frame/Amount.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace quillmere {
namespace {

using tools::BadTable;
using tools::ReadTextTable;
using tools::TextTable;
using Cells = std::vector<std::string>;

TEST(TextTables, AreTakenApartCellByCell)
{
    const TextTable table = ReadTextTable("# a note\nMake,Model\nALPHA,ONE\n\"A, B\",\"2\"\" pipe\"\n,\nlast,row", "t");
    EXPECT_EQ(table.columns, (Cells{"Make", "Model"}));
    ASSERT_EQ(table.rows.size(), 4U);
    EXPECT_EQ(table.rows[0].cells, (Cells{"ALPHA", "ONE"}));
    EXPECT_EQ(table.rows[1].cells, (Cells{"A, B", "2\" pipe"}));
    EXPECT_EQ(table.rows[2].cells, (Cells{"", ""}));
    EXPECT_EQ(table.rows[3].cells, (Cells{"last", "row"}));
    EXPECT_EQ(table.rows[3].line, 6);
}

TEST(TextTables, MayComeFromAnySystem)
{
    const TextTable table =
        ReadTextTable("\xEF\xBB\xBFMake\r\n\r\n# note\r\nALPHA\r\n\"two\r\nlines\"\r\nBETA\r\n", "t");
    EXPECT_EQ(table.columns, Cells{"Make"});
    ASSERT_EQ(table.rows.size(), 3U);
    EXPECT_EQ(table.rows[0].cells, Cells{"ALPHA"});
    EXPECT_EQ(table.rows[1].cells, Cells{"two\r\nlines"});
    EXPECT_EQ(table.rows[2].line, 7);
}

TEST(TextTables, SayWhatIsWrongAndWhere)
{
    struct Case {
        std::string_view text, why;
    };
    for (const Case& c :
         {Case{"", "t:1: expected a line with the names of the columns"},
          Case{"# note\n", "t:2: expected a line with the names of the columns"},
          Case{"A,B\n1,2\n1\n", "t:3: expected 2 cells, found 1"},
          Case{"A,B\n1,2,3\n", "t:2: expected 2 cells, found 3"}, Case{"A\n\"open\n", "t:2: the quote is not closed"},
          Case{"A\n\"x\"y\n", "t:2: expected a comma after the closing quote"}}) {
        try {
            ReadTextTable(c.text, "t");
            ADD_FAILURE() << "took " << c.text;
        } catch (const BadTable& error) {
            EXPECT_EQ(error.what(), c.why);
        }
    }
}

class ReferenceDatabases : public ::testing::Test {
protected:
    ReferenceDatabases()
    {
        Write("Manufacturers", "Manufacturer\nALPHA\nBETA\n");
        Write("Figures", "Model,Manufacturer,Fuel Type,C02\nONE,ALPHA,P,150\nTWO,ALPHA,E,\n");
        Write("C02", "C02,Percentage\n");
    }
    void Write(const std::string& table, std::string_view text) const
    {
        std::ofstream(folder.path / (table + ".csv"), std::ios::binary) << text;
    }
    std::filesystem::path File() const { return folder.path / "CarC02"; }
    void ExpectRefused(std::string_view why) const
    {
        try {
            tools::MakeReferenceDatabase(folder.path, File());
            ADD_FAILURE() << "made in spite of: " << why;
        } catch (const BadTable& error) {
            EXPECT_NE(std::string_view(error.what()).find(why), std::string_view::npos) << error.what();
        }
        EXPECT_FALSE(std::filesystem::exists(folder.path / "CarC02.part"));
    }

    test::TemporaryFolder folder;
};

TEST_F(ReferenceDatabases, HaveTheRowsInTheirOrder)
{
    tools::MakeReferenceDatabase(folder.path, File());
    CarReference reference(File());
    Recordset& figures = reference.figures;
    EXPECT_EQ(figures.Field("Model"), "ONE");
    EXPECT_EQ(figures.Field("Manufacturer"), "ALPHA");
    EXPECT_EQ(figures.Field("C02"), "150");
    EXPECT_TRUE(figures.IsNull("Column 1"));
    figures.MoveNext();
    EXPECT_EQ(figures.Field("Fuel Type"), "E");
    EXPECT_TRUE(figures.IsNull("C02"));
    figures.MoveNext();
    EXPECT_TRUE(figures.AtEnd());
    EXPECT_TRUE(reference.percentages.AtEnd());
}

TEST_F(ReferenceDatabases, AreMadeInPlaceOfAnOlderOne)
{
    tools::MakeReferenceDatabase(folder.path, File());
    Write("Manufacturers", "Manufacturer\nGAMMA\n");
    tools::MakeReferenceDatabase(folder.path, File());
    EXPECT_EQ(CarReference(File()).manufacturers.Field("Manufacturer"), "GAMMA");
}

TEST_F(ReferenceDatabases, AreNotMadeFromWhatIsWrongAndTheOldOneStays)
{
    tools::MakeReferenceDatabase(folder.path, File());
    Write("Figures", "Manufacturer,Colour\nALPHA,red\n");
    ExpectRefused("Figures.csv: Figures has no column \"Colour\"");
    Write("Figures", "Manufacturer\nALPHA,red\n");
    ExpectRefused("Figures.csv:2: expected 1 cells, found 2");
    std::filesystem::remove(folder.path / "Figures.csv");
    ExpectRefused("Figures.csv");
    EXPECT_EQ(CarReference(File()).figures.Field("Model"), "ONE");
}

TEST(ReferenceSample, StandsBesideTheProgramAndSaysWhatItIs)
{
    CarReference reference(std::filesystem::path(BINARY_DIR) / "Q1111" / CarReferenceName);
    std::set<std::string, std::less<>> makers;
    for (; !reference.manufacturers.AtEnd(); reference.manufacturers.MoveNext()) {
        const auto maker = reference.manufacturers.Field("Manufacturer");
        EXPECT_TRUE(maker.starts_with("SAMPLE ")) << maker;
        makers.emplace(maker);
    }
    std::set<int> rated;
    Recordset& figures = reference.figures;
    for (; !figures.AtEnd(); figures.MoveNext()) {
        EXPECT_TRUE(makers.contains(figures.Field("Manufacturer"))) << figures.Field("Manufacturer");
        EXPECT_TRUE(IsSheetFuelLetter(figures.Field("Fuel Type"))) << figures.Field("Fuel Type");
        for (const std::string_view column : {"Model", "Description", "Transmission", "Fuel Type"})
            EXPECT_FALSE(figures.Field(column).empty()) << column;
        if (!figures.Field("Column 1").empty() && !figures.Field("Column 2").empty())
            rated.insert(ReadWholeNumber(figures.Field("C02")));
    }
    for (int figure = edition::SheetCO2.lowest; figure <= edition::SheetCO2.highest; figure += 5)
        EXPECT_TRUE(rated.contains(figure)) << figure << " has no rate";
}

} // namespace
} // namespace quillmere
