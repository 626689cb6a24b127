// All the headers of the edition in one file: a name that two of them give to two things does not compile.
#include "edition/Edition.h"

#include "edition/AccommodationRates.h"
#include "edition/CarRates.h"
#include "edition/Class1ARates.h"
#include "edition/FormWords.h"
#include "edition/JoinedText.h"
#include "edition/LeftOvers.h"
#include "edition/LoanRates.h"
#include "edition/MileageRates.h"
#include "edition/NotepadWords.h"
#include "edition/RelocationRates.h"
#include "edition/ReportWords.h"
#include "edition/VanRates.h"
#include "frame/CheckedFile.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace quillmere::edition {
namespace {

TEST(Edition, TheConstantsAreThoseOfTheYear)
{
    EXPECT_EQ(TaxYearStartShort, "06/04/10");
    EXPECT_EQ(TaxYearStart, "06/04/2010");
    EXPECT_EQ(TaxYearEnd, "05/04/2011");
    EXPECT_EQ(PriorYearStart, "06/04/2009");
    EXPECT_EQ(PriorYearEnd, "05/04/2010");
    EXPECT_EQ(LongYearEndPrior, "5 April 2010");
    EXPECT_EQ(LongYearEnd, "5 April 2011");
    EXPECT_EQ(ReturnDueDate, "6 July 2011");
    EXPECT_EQ(YearLabelPrior, "2009-10");
    EXPECT_EQ(YearLabel, "2010-11");
    EXPECT_EQ(YearLabelLong, "2010-2011");
    EXPECT_EQ(YearEndYear, "2011");
    EXPECT_EQ(YearStartYear, "2010");
    EXPECT_EQ(AppTitle, "2011 Quillmere");
    EXPECT_EQ(ProductFolder, "Q1111");
    EXPECT_EQ(PriorProductFolder, "Q1110");
    EXPECT_EQ(ProductVersionLabel, "Q1111-12");
    EXPECT_EQ(ClientDatabaseName, "ClientQuillmere11.mdb");
    EXPECT_EQ(PriorClientDatabaseName, "ClientQuillmere10.mdb");
    EXPECT_EQ(TemplateDatabaseName, "dClientQuillmere11.mdb");
    EXPECT_EQ(FormatMoneyBlankZero, "######0.00;(######0.00);#");
    EXPECT_EQ(FormatMoneyZero, "######0.00;(######0.00);0.00");
    EXPECT_EQ(FormatPrintMoneyBlankZero, "#,###,##0.00;(#,###,##0.00);#");
    EXPECT_EQ(AmountColumnWidth, "          ");
    EXPECT_EQ(AsPerAttached, "As per attached");
}

TEST(Edition, TheStartOfTheYearIsKeptInTwoFormsAndTheShortOneStaysShort)
{
    EXPECT_EQ(TaxYearStartShort.size(), 8U);
    EXPECT_EQ(TaxYearStart.size(), 10U);
}

TEST(Edition, EveryHeaderOfItIsIncludedHere)
{
    const std::string source = ReadFile(SOURCE_DIR "/tests/unit/EditionTest.cpp");
    for (const auto& entry : std::filesystem::directory_iterator(SOURCE_DIR "/src/edition"))
        if (entry.path().extension() == ".h") {
            const std::string line = "#include \"edition/" + entry.path().filename().string() + "\"\n";
            EXPECT_NE(source.find(line), std::string::npos) << line;
        }
}

} // namespace
} // namespace quillmere::edition
