#include "cars/CarDates.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillmere {
namespace {

const CarDateOutcome Emptied{.compute = false};

CarDateOutcome Stands(std::string text)
{
    return {.text = std::move(text)};
}

TEST(CarDates, AFirstDateIsNotBeforeTheYear)
{
    EXPECT_EQ(FirstDateChecker(" 6/4/10 "), "06/04/2010");
    EXPECT_EQ(FirstDateChecker("05/04/2010"), "");
    EXPECT_EQ(FirstDateChecker("31/04/2010"), "");
    EXPECT_EQ(FirstDateChecker("soon"), "");
    EXPECT_EQ(FirstDateChecker(""), "");
    EXPECT_EQ(FirstDateChecker("06/04/2011"), "06/04/2011") << "no upper limit";
    EXPECT_EQ(FirstDateChecker("05/04/16"), "") << "1916";
}

TEST(CarDates, ALastDateIsNotBeforeTheFirst)
{
    EXPECT_EQ(LastDateChecker("", "6/4/10"), "06/04/2010");
    EXPECT_EQ(LastDateChecker("", "05/04/2010"), "");
    EXPECT_EQ(LastDateChecker("01/06/2010", "31/05/2010"), "");
    EXPECT_EQ(LastDateChecker("01/06/2010", "01/06/2010"), "01/06/2010");
    EXPECT_EQ(LastDateChecker("01/06/2010", "x"), "");
    EXPECT_EQ(LastDateChecker("", ""), "");
}

TEST(CarDates, ALastDateAfterTheYearStands)
{
    EXPECT_EQ(LastDateChecker("", "15/04/2011"), "15/04/2011");
    EXPECT_EQ(LeaveDateTo("15/04/2011", ""), Stands("15/04/2011"));
    EXPECT_EQ(LeaveDateTo("5/4/2010", ""), Stands("")) << "blanked, and the car is worked out all the same";
}

TEST(CarDates, LeavingTheFirstDay)
{
    EXPECT_EQ(LeaveDateFrom("", "01/05/2008"), Stands("")) << "an empty box runs the routine";
    EXPECT_EQ(LeaveDateFrom("1/5/10", "01/05/2008"), Stands("01/05/2010"));
    EXPECT_EQ(LeaveDateFrom("1/5/10", ""), (CarDateOutcome{.text = "01/05/2010", .compute = false}));
    EXPECT_EQ(LeaveDateFrom("1/3/10", "01/05/2008"), Emptied) << "before the year, without a message";
    EXPECT_EQ(LeaveDateFrom("30/4/10", "01/05/2010"), (CarDateOutcome{.beforeRegistration = true}))
        << "emptied with the message, and worked out";
    EXPECT_EQ(LeaveDateFrom("1/5/10", "01/05/2010"), Stands("01/05/2010"));
}

TEST(CarDates, AvailabilityBeforeRegistrationNeedsBothDates)
{
    EXPECT_TRUE(IsAvailableBeforeRegistered("30/04/2010", "01/05/2010"));
    EXPECT_FALSE(IsAvailableBeforeRegistered("01/05/2010", "01/05/2010"));
    EXPECT_FALSE(IsAvailableBeforeRegistered("", "01/05/2010"));
    EXPECT_FALSE(IsAvailableBeforeRegistered("30/04/2010", ""));
}

TEST(CarDates, LeavingTheDateOfRegistration)
{
    using enum RegistrationCheck;
    EXPECT_EQ(LeaveRegistrationDate("  "), RegistrationOutcome{});
    EXPECT_EQ(LeaveRegistrationDate("1/2/08"), (RegistrationOutcome{Good, "01/02/2008"}));
    EXPECT_EQ(LeaveRegistrationDate("31/02/2008").check, BadForm);
    EXPECT_EQ(LeaveRegistrationDate("05/04/2011").check, Good);
    EXPECT_EQ(LeaveRegistrationDate("06/04/2011").check, AfterYearEnd);
    EXPECT_EQ(LeaveRegistrationDate("30/12/1899").check, Good);
    EXPECT_EQ(LeaveRegistrationDate("29/12/1899").check, TooEarly);
}

TEST(CarDates, TheDayOfWithdrawalLiesWithinTheDaysOfTheCar)
{
    EXPECT_EQ(CheckWithdrawnDate("1/6/10", "", ""), "01/06/2010");
    EXPECT_EQ(CheckWithdrawnDate("05/04/2011", "", ""), "05/04/2011");
    EXPECT_EQ(CheckWithdrawnDate("06/04/2011", "", ""), "");
    EXPECT_EQ(CheckWithdrawnDate("05/04/2010", "", ""), "");
    EXPECT_EQ(CheckWithdrawnDate("31/05/2010", "01/06/2010", ""), "");
    EXPECT_EQ(CheckWithdrawnDate("01/06/2010", "01/06/2010", "01/06/2010"), "01/06/2010");
    EXPECT_EQ(CheckWithdrawnDate("02/06/2010", "", "01/06/2010"), "");
    EXPECT_EQ(CheckWithdrawnDate("no date", "", ""), "");
    EXPECT_EQ(CheckWithdrawnDate("", "", ""), "");
}

/// A column with the periods given, available all year.
CarDateTexts Column(UnavailablePeriods periods)
{
    return {.periods = std::move(periods)};
}

TEST(CarPeriods, ALastDateNeedsAFirstDateInItsRow)
{
    EXPECT_EQ(LeavePeriodLast(Column({{{"", "01/08/2010"}}}), 0), Emptied);
    EXPECT_EQ(LeavePeriodLast(Column({{{"01/07/2010", "01/08/2010"}, {"", "01/10/2010"}}}), 1), Emptied);
}

TEST(CarPeriods, APeriodHasThirtyDaysCountingBothEnds)
{
    EXPECT_EQ(LeavePeriodLast(Column({{{"01/06/2010", "30/6/10"}}}), 0), Stands("30/06/2010"));
    EXPECT_EQ(LeavePeriodLast(Column({{{"01/06/2010", "29/6/10"}}}), 0), Emptied);
    EXPECT_EQ(LeavePeriodFirst(Column({{{"1/6/10", "30/06/2010"}}}), 0), Stands("01/06/2010"));
    EXPECT_EQ(LeavePeriodFirst(Column({{{"2/6/10", "30/06/2010"}}}), 0), Emptied);
}

TEST(CarPeriods, ALastDateIsNotAfterTheLastDayOfTheCar)
{
    CarDateTexts texts = Column({{{"01/12/2010", "5/4/11"}}});
    EXPECT_EQ(LeavePeriodLast(texts, 0), Stands("05/04/2011"));
    texts.periods[0].last = "6/4/11";
    EXPECT_EQ(LeavePeriodLast(texts, 0), Emptied);
    texts.dateTo = "31/01/2011";
    texts.periods[0].last = "31/1/11";
    EXPECT_EQ(LeavePeriodLast(texts, 0), Stands("31/01/2011"));
    texts.periods[0].last = "1/2/11";
    EXPECT_EQ(LeavePeriodLast(texts, 0), Emptied);
}

TEST(CarPeriods, TheFirstRowBeginsOnTheFirstDayOrLater)
{
    CarDateTexts texts = Column({{{"6/4/10", ""}}});
    EXPECT_EQ(LeavePeriodFirst(texts, 0), Stands("06/04/2010"));
    texts.periods[0].first = "5/4/10";
    EXPECT_EQ(LeavePeriodFirst(texts, 0), Emptied);
    texts.dateFrom = "01/06/2010";
    texts.periods[0].first = "1/6/10";
    EXPECT_EQ(LeavePeriodFirst(texts, 0), Stands("01/06/2010"));
    texts.periods[0].first = "31/5/10";
    EXPECT_EQ(LeavePeriodFirst(texts, 0), Emptied);
}

TEST(CarPeriods, LaterRowsBeginThirtyDaysAfterTheBoundaryBeforeThem)
{
    EXPECT_EQ(LeavePeriodFirst(Column({{{"01/06/2010", "30/06/2010"}, {"30/7/10", ""}}}), 1), Stands("30/07/2010"));
    EXPECT_EQ(LeavePeriodFirst(Column({{{"01/06/2010", "30/06/2010"}, {"29/7/10", ""}}}), 1), Emptied);
    // The nearest earlier row with a last date counts, however far up.
    EXPECT_EQ(LeavePeriodFirst(Column({{{"01/06/2010", "30/06/2010"}, {}, {"01/08/2010", ""}, {"30/7/10", ""}}}), 3),
              Stands("30/07/2010"));
    // With none, the first day of the car, and the thirty days are asked for all the same.
    EXPECT_EQ(LeavePeriodFirst(Column({{{}, {"6/5/10", ""}}}), 1), Stands("06/05/2010"));
    EXPECT_EQ(LeavePeriodFirst(Column({{{}, {"5/5/10", ""}}}), 1), Emptied);
}

TEST(CarPeriods, TheBoundaryAfterAFirstDateIsMoreThanThirtyDaysAway)
{
    EXPECT_EQ(LeavePeriodFirst(Column({{{"1/6/10", ""}, {}, {"02/07/2010", ""}}}), 0), Stands("01/06/2010"));
    EXPECT_EQ(LeavePeriodFirst(Column({{{"2/6/10", ""}, {}, {"02/07/2010", ""}}}), 0), Emptied);
    EXPECT_EQ(LeavePeriodFirst(Column({{{"5/3/11", ""}}}), 0), Stands("05/03/2011"));
    EXPECT_EQ(LeavePeriodFirst(Column({{{"6/3/11", ""}}}), 0), Emptied)
        << "30 days to the end of the year are not enough";
    CarDateTexts texts = Column({{{"1/6/10", ""}}});
    texts.dateTo = "01/07/2010";
    EXPECT_EQ(LeavePeriodFirst(texts, 0), Emptied);
    texts.dateTo = "02/07/2010";
    EXPECT_EQ(LeavePeriodFirst(texts, 0), Stands("01/06/2010"));
}

TEST(CarPeriods, AnEmptyBoxRunsTheRoutineAndABadDateDoesNot)
{
    EXPECT_EQ(LeavePeriodFirst(Column({}), 0), Stands(""));
    EXPECT_EQ(LeavePeriodLast(Column({}), 3), Stands(""));
    EXPECT_EQ(LeavePeriodFirst(Column({{{"31/6/10", ""}}}), 0), Emptied);
    EXPECT_EQ(LeavePeriodLast(Column({{{"01/06/2010", "31/6/10"}}}), 0), Emptied);
}

TEST(CarPeriods, OnlyTheBoxThatIsLeftIsJudged)
{
    const CarDateTexts texts = Column({{{"not a date", "01/08/2010"}}});
    EXPECT_EQ(LeavePeriodLast(texts, 0), Emptied);
    EXPECT_EQ(texts.periods[0].first, "not a date");
}

} // namespace
} // namespace quillmere
