#include "printing/forms/FormPrimitives.h"

#include "support/PrintRoom.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

using test::PrintRoom;

class FormPrimitivesTest : public ::testing::Test {
protected:
    FormPrimitivesTest() { Begin(); }

    void Begin()
    {
        room.settings.vsTop = -2; // against the added margin, so that listings show the given places
        ASSERT_EQ(room.job.OpenPrintJob("Document"), Opening::Open);
    }
    std::string Drawn() { return Listing(room.Ended(), 1); }

    PrintRoom room;
    PageLayer& page = room.page;
};

TEST_F(FormPrimitivesTest, AnEntryBoxIsWhiteWithABlackPen)
{
    PrintEntryBox(page, 2, 80, 22.5);
    EXPECT_EQ(Drawn(), "rectangle 2.00 22.50 80.00 28.00 pen 0 width 0.20 fill 255\n");
}

TEST_F(FormPrimitivesTest, APoundBoxHasItsSign)
{
    PrintPoundBox(page, 105, 81);
    EXPECT_EQ(Drawn(), "rectangle 105.00 81.00 127.00 86.50 pen 0 width 0.20 fill 255\n"
                       "text left 106.00 85.00 9.5 \"£\"\n");
}

TEST_F(FormPrimitivesTest, ASectionLetterIsWhiteOnABlackSquare)
{
    PrintSectionLetter(page, 2, 75, "A");
    EXPECT_EQ(Drawn(), "rectangle 2.00 75.00 7.50 80.50 pen 0 width 0.20 fill 0\n"
                       "text centre 4.75 79.50 11 bold colour 255 \"A\"\n");
}

TEST_F(FormPrimitivesTest, BoxNumbersStandInTagsBesideTheirBoxes)
{
    PrintBoxNumber1A(page, 161, 81, "  13");
    EXPECT_EQ(Drawn(), "rectangle 161.00 81.00 168.50 86.50 pen 0 width 0.20 fill 0\n"
                       "text left 161.00 85.00 10 bold colour 255 \"  13\"\n"
                       "rectangle 168.50 81.00 190.50 86.50 pen 0 width 0.20 fill 255\n"
                       "text left 169.50 85.00 9.5 \"£\"\n"
                       "rectangle 190.00 81.00 195.00 86.50 pen 0 width 0.20 fill 0\n"
                       "text centre 192.50 85.00 10 bold colour 255 \"1A\"\n");
    Begin();
    PrintBoxNumber(page, 161, 81, "  13");
    EXPECT_EQ(Drawn().find("1A"), std::string::npos);
}

TEST_F(FormPrimitivesTest, TheTag1AIsWhiteOnABlackSquare)
{
    Print1ATag(page, 185, 116);
    EXPECT_EQ(Drawn(), "rectangle 185.00 116.00 190.00 121.00 pen 0 width 0.20 fill 0\n"
                       "text centre 187.50 119.50 10 bold colour 255 \"1A\"\n");
}

TEST_F(FormPrimitivesTest, ColoursFollowTheGreysOfTheJob)
{
    room.settings.vsBlack = 40;
    room.settings.vsWhite = 250;
    Begin();
    PrintSectionLetter(page, 2, 75, "A");
    PrintPoundBox(page, 0, 0);
    EXPECT_EQ(Drawn(), "rectangle 2.00 75.00 7.50 80.50 pen 40 width 0.20 fill 40\n"
                       "text centre 4.75 79.50 11 bold colour 250 \"A\"\n"
                       "rectangle 0.00 0.00 22.00 5.50 pen 0 width 0.20 fill 250\n"
                       "text left 1.00 4.00 9.5 colour 40 \"£\"\n")
        << "the pound box alone has an edge in true black";
}

TEST_F(FormPrimitivesTest, ASectionLetterIsAlwaysArial)
{
    page.vsFontName("Times New Roman");
    page.vsFont(3, false, true);
    PrintSectionLetter(page, 0, 0, "B");
    EXPECT_NE(Drawn().find(" 11 bold colour 255 \"B\""), std::string::npos);
    EXPECT_EQ(Drawn().find("Times"), std::string::npos);
}

TEST_F(FormPrimitivesTest, DateCellsSkipTheStrokes)
{
    page.vsFont(10, true, false);
    PrintDateCells(page, 151, 50, "12/03/1961");
    EXPECT_EQ(Drawn(), "text centre 153.75 54.00 10 bold \"1\"\n"
                       "text centre 159.25 54.00 10 bold \"2\"\n"
                       "text centre 164.75 54.00 10 bold \"0\"\n"
                       "text centre 170.25 54.00 10 bold \"3\"\n"
                       "text centre 175.75 54.00 10 bold \"1\"\n"
                       "text centre 181.25 54.00 10 bold \"9\"\n"
                       "text centre 186.75 54.00 10 bold \"6\"\n"
                       "text centre 192.25 54.00 10 bold \"1\"\n");
}

TEST_F(FormPrimitivesTest, DateCellsDropPositionsThreeAndSixOfAnything)
{
    page.vsFont(10, false, false);
    PrintDateCells(page, 0, 0, "1 May 61");
    EXPECT_EQ(Drawn(), "text centre 2.75 4.00 10 \"1\"\n"
                       "text centre 8.25 4.00 10 \" \"\n"
                       "text centre 13.75 4.00 10 \"a\"\n"
                       "text centre 19.25 4.00 10 \"y\"\n"
                       "text centre 24.75 4.00 10 \"6\"\n"
                       "text centre 30.25 4.00 10 \"1\"\n");
    Begin();
    PrintDateCells(page, 0, 0, "");
    EXPECT_EQ(Drawn(), "");
}

TEST_F(FormPrimitivesTest, NICellsHaveAWiderLastCell)
{
    page.vsFont(10, false, false);
    PrintNICells(page, 80, 59.5, "AB123456C");
    EXPECT_EQ(Drawn(), "text centre 82.25 63.50 10 \"A\"\n"
                       "text centre 86.75 63.50 10 \"B\"\n"
                       "text centre 91.25 63.50 10 \"1\"\n"
                       "text centre 95.75 63.50 10 \"2\"\n"
                       "text centre 100.25 63.50 10 \"3\"\n"
                       "text centre 104.75 63.50 10 \"4\"\n"
                       "text centre 109.25 63.50 10 \"5\"\n"
                       "text centre 113.75 63.50 10 \"6\"\n"
                       "text centre 119.75 63.50 10 \"C\"\n");
}

TEST_F(FormPrimitivesTest, NICellsLeaveTheLastOnesEmptyOrLoseTheTail)
{
    page.vsFont(10, false, false);
    PrintNICells(page, 80, 59.5, "AB1");
    EXPECT_EQ(room.Ended().Page(1).size(), 3U);
    Begin();
    PrintNICells(page, 80, 59.5, "AB123456CDE");
    EXPECT_EQ(room.Ended().Page(1).size(), 9U);
    Begin();
    PrintNICells(page, 80, 59.5, "Ä£Ω");
    EXPECT_EQ(room.Ended().Page(1).size(), 3U) << "characters, not bytes";
}

TEST_F(FormPrimitivesTest, IndentsARunOnTextOnEveryRoute)
{
    const auto drawn = [this](Route route, int preview) {
        room.job.route = route;
        room.settings.reportPreview = preview;
        room.settings.vsPdfTop = -2;
        Begin();
        page.vsFont(8, false, false);
        page.vsTextLeft(10, 10, "a");
        PrintIndented(page, 2, "b");
        return room.Ended().Page(1).size();
    };
    EXPECT_EQ(drawn(Route::Screen, 1), 3U);
    EXPECT_EQ(room.Ended().TextOf(room.Ended().Page(1)[1]), "  ");
    EXPECT_EQ(drawn(Route::File, 0), 3U);
    EXPECT_EQ(drawn(Route::Screen, 0), 3U);
    room.door.printers = {"Laser"};
    EXPECT_EQ(drawn(Route::Printer, 1), 3U);
}

TEST(FieldTextTest, ReadsATextOrATruth)
{
    EXPECT_EQ(FieldText("  12.50", 0), "  12.50");
    EXPECT_EQ(FieldText("", 0), "");
    for (const char* yes : {"1", "-1", "True", "TRUE", "true", "Y", "y", " 1 "})
        EXPECT_EQ(FieldText(yes, 1), "Y") << yes;
    for (const char* no : {"", "0", "False", "N", "2", "Yes", "11"})
        EXPECT_EQ(FieldText(no, 1), "") << no;
    EXPECT_EQ(FieldText("1", 2), "");
    EXPECT_EQ(FieldText("1", -1), "");
}

} // namespace
} // namespace quillmere
