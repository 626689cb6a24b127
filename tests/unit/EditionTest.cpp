// All the headers of the edition in one file: a name that two of them give to two things does not compile.
#include "edition/Edition.h"

#include "edition/AccommodationRates.h"
#include "edition/CalculatorExamples.h"
#include "edition/CarRates.h"
#include "edition/CarWords.h"
#include "edition/Class1ARates.h"
#include "edition/DayOf.h"
#include "edition/FormWords.h"
#include "edition/JoinedText.h"
#include "edition/LeftOvers.h"
#include "edition/LoanRates.h"
#include "edition/MileageRates.h"
#include "edition/NotepadWords.h"
#include "edition/RelocationRates.h"
#include "edition/ReportWords.h"
#include "edition/SampleClients.h"
#include "edition/VanRates.h"
#include "frame/CheckedFile.h"
#include "frame/Dates.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <utility>

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

TEST(Edition, TheDaysAreThoseOfTheTexts)
{
    EXPECT_EQ(ReadDate(TaxYearStartShort), TaxYearStartDay);
    EXPECT_EQ(ReadDate(TaxYearStart), TaxYearStartDay);
    EXPECT_EQ(ReadDate(TaxYearEnd), TaxYearEndDay);
    EXPECT_EQ(ReadDate("01/01/1998"), CO2RegimeStart);
    EXPECT_EQ(ReadDate("01/01/2006"), DieselStandardEnd);
    EXPECT_EQ(ReadDate("06/04/2002"), EarliestLoanDay);
    EXPECT_EQ(ReadDate(VanHistoryStart), VanHistoryStartDay);
    EXPECT_EQ(ReadDate(VanHistoryEnd), VanHistoryEndDay);
}

TEST(Edition, TheStartOfTheYearIsKeptInTwoFormsAndTheShortOneStaysShort)
{
    EXPECT_EQ(TaxYearStartShort.size(), 8U);
    EXPECT_EQ(TaxYearStart.size(), 10U);
}

TEST(Edition, AmountsInWordsAreTheRatesOfTheYear)
{
    EXPECT_EQ(std::string_view(Pounds(0)), "£0");
    EXPECT_EQ(std::string_view(Pounds(999)), "£999");
    EXPECT_EQ(std::string_view(Pounds(1000)), "£1,000");
    EXPECT_EQ(std::string_view(Pounds(1234056)), "£1,234,056");
    EXPECT_EQ(std::string_view(Digits(5000)), "5000");

    for (const auto& [text, expected] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {car::ListPriceTooHigh, "Listprice value cannot exceed £80,000"},
             {car::AccessoriesTooHigh, "Accessories value cannot exceed £80,000"},
             {car::BothTooHigh, "Listprice and Accessories combined cannot exceed £80,000"},
             {car::BothTooHighOfSecondCar, "Listprice and Accessories cannot exceed £80,000"},
             {car::ContributionTooHigh, "Capital Contribution cannot be over £5000"},
             {form::CapitalContributions, "Capital contributions (maximum £5,000)"},
             {form::P11DWhoReturns, "rate of £8,500 or more a year during the year to 5 April 2011. Send the"},
             {form::NotesWhoReturns, "at a rate of £8,500 or more a year and for each director if:"},
             {form::RelocationExcess,
              "Excess over £8,000 of all qualifying relocation expenses payments and benefits for each move"},
             {form::NotesLate,
              "Interest is chargeable on payments paid late. If your return is not received by 6 July, "},
             {notepad::AccommodationExcess, "Excess of cost over £75,000 is H minus £75,000"},
             {notepad::AccommodationRate, "Multilply J by 4.00% "},
             {notepad::AccommodationCostTooLow, "Value must not be lower than £75,000"},
             {notepad::AccommodationDaysOutOfRange, "Value can not be greater than 366"},
             {notepad::MileagePassengers, "L x 5p"},
             {notepad::RelocationExempt, "Exempt amount for 2010-2011 = £8,000"},
             {report::CostLimit, "Excess of cost over £75,000"},
             {report::PassengerRate, "Number of business miles x 5p"}})
        EXPECT_EQ(text, expected);
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
