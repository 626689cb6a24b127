#pragma once

#include "declaration/Class1A.h"
#include "frame/ScheduleLines.h"
#include "frame/Text.h"
#include "screens/ScheduleNotepad.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What is looked at of one employee's form. His stored texts are read once, as they stand; a check asks them as often
/// as it likes.
namespace quillmere::review {

inline constexpr std::string_view Page1 = "Form3";
inline constexpr std::string_view Page2 = "Side2Form1";

inline constexpr int Cars = 6;
inline constexpr int CarsOnThePage = 2; ///< the others have a record of their own
inline constexpr int PeriodsOfACar = 4;
inline constexpr int LoansOnThePage = 2;

/// True for a text in which something stands.
inline bool Filled(std::string_view text)
{
    return text.find_first_not_of(' ') != std::string_view::npos;
}

/// One line of the form with a cost, what was made good, and a cash equivalent. Fields and boxes have one name.
struct SectionRow {
    std::string_view section;
    std::string_view screen;
    std::string_view description; ///< empty: the form asks for none
    std::string_view cost;
    std::string_view madeGood; ///< empty where what stands there is no part of the cost
    std::string_view cash;
};

/// All of them, in the order of the form.
std::span<const SectionRow> SectionRows();

struct SectionFacts {
    const SectionRow* row = nullptr;
    std::string_view description, cost, madeGood, cash;
};

struct CarOnForm {
    int number = 0;
    std::string_view makeModel, registered, listPrice, cash;
    std::string_view co2, withoutCO2;
    std::string_view from, to;
    std::array<std::string_view, PeriodsOfACar> unavailableFirst, unavailableLast;
    std::string_view fuelTick, fuel, withdrawn, reinstated;
    std::string_view engine, fuelLetter, accessories, contribution, privateUse;
};

struct LoanOnForm {
    std::string_view atStart, atEnd, largest;
    std::string_view cash, made, discharged;
};

/// A list behind a section, and what the form shows of it.
struct ListFacts {
    using Column = std::array<std::string_view, LinesOfASchedule>;

    const NotepadMember* notepad = nullptr;
    Column descriptions;
    std::array<Column, 3> amounts;          ///< of cost, tax and cash
    std::array<std::string_view, 3> totals; ///< the same on the form
    std::string_view described;             ///< on the form
};

/// What the calculators have handed over to the form, as their own records hold it.
struct CalculatorFacts {
    std::array<std::string_view, 3> vans, vanFuel, mileage; ///< of each van, or kind of vehicle
    std::array<std::string_view, 5> loans;
    std::string_view basicCharge, additionalCharge;
    std::string_view expenses, employerCost, employeeCost, livingAccommodation, lastYear; ///< of the move
};

struct FormFacts {
    FormFacts();

    std::string_view payeReference, surname, firstName, worksNumber, nationalInsurance;
    std::string_view dateOfBirth, sexTick, directorTick;
    std::vector<SectionFacts> sections; ///< a fact for each of SectionRows
    std::string_view accommodation, mileageTax, relocation, taxPaid;
    std::string_view totalOfCars, totalOfFuel, van, vanFuel;
    std::array<CarOnForm, Cars> cars;
    std::array<LoanOnForm, LoansOnThePage> loans;
    std::vector<ListFacts> lists; ///< of each of Notepads
    CalculatorFacts calculators;

    std::array<std::string_view, Class1AFields.size()> liable; ///< the texts of Class1AFields
    std::vector<std::string_view> onReturn;                    ///< the amounts of OverviewSections, one after the other
    std::vector<std::string_view> boxed;                       ///< the texts of BoxedTexts
};

/// A record that facts are read of: its fields, each with the place of its text among the facts.
struct FactsRecord {
    struct Field {
        std::string name;
        std::string_view* text;
    };
    std::string_view table;
    std::vector<Field> fields;
};

/// Which lists are read with their descriptions.
enum class Descriptions {
    OfCheckedLists, ///< those that the form speaks of, which checks look at
    OfEveryList,
};

/// All records of one employee, the form first. The facts must stay where they are.
std::vector<FactsRecord> RecordsOf(FormFacts& facts, Descriptions read = Descriptions::OfCheckedLists);

} // namespace quillmere::review
