#pragma once

#include "frame/Amount.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// What each table's record takes over from last year's when an employee goes into this year's database: who he is,
/// which cars, vans and loans run on, the words of his schedules. No amount and no date of last year comes along.
namespace quillmere {

/// What a table's record takes over besides its keys.
enum class Carries {
    KeysOnly,     ///< nothing
    Descriptions, ///< the twenty descriptions of a schedule
    Address,      ///< the address of the accommodation
    Vans,
    Loans,
};

/// A table with one record for each employee that is made in the common way.
struct TransferTable {
    std::string_view table;
    std::string_view errorTitle; ///< of the box for an employee whom last year's table lacks; empty: it is not asked
    Carries carries = Carries::KeysOnly;
};

/// What of a table does not come over under the rule, in words.
std::string_view WordsOf(Carries rule);

/// These tables, in the order in which an employee's records are made. The employee himself and his employer follow.
inline constexpr auto TransferTables = std::to_array<TransferTable>({
    {"ANotepad", "Notepad A - File Transfer error"},
    {"BNotepad", "Notepad B - File Transfer error", Carries::Descriptions},
    {"CNotepad", "Notepad C - File Transfer error", Carries::Descriptions},
    {"DNotepad", "Notepad D - File Transfer error", Carries::Address},
    {"ENotepad", "Notepad E - File Transfer error"},
    {"FNotepad", "Notepad F - File Transfer error"},
    {"GNotepad", "Notepad G - File Transfer error", Carries::Vans},
    {"HNotepad", "Notepad H - File Transfer error", Carries::Loans},
    {"INotepad", "Notepad I - File Transfer error", Carries::Descriptions},
    {"JNotepad", "Notepad J - File Transfer error"},
    {"KNotepad", "Notepad K - File Transfer error", Carries::Descriptions},
    {"LNotepad", "Notepad L - File Transfer error", Carries::Descriptions},
    {"NNotepad1", "Notepad N1 - File Transfer error", Carries::Descriptions},
    {"NNotepad2", "Notepad N2 - File Transfer error", Carries::Descriptions},
    {"NNotepad3", "Notepad N3 - File Transfer error", Carries::Descriptions},
    {"ONotepad1", "Notepad O1 - File Transfer error", Carries::Descriptions},
    {"ONotepad2", "Notepad O2 - File Transfer error", Carries::Descriptions},
    {"ONotepad3", "Notepad O3 - File Transfer error", Carries::Descriptions},
    {"ONotepad4", "Notepad O4 - File Transfer error", Carries::Descriptions},
    {"ONotepad5", "Notepad O5 - File Transfer error", Carries::Descriptions},
    {"ONotepad6", "Notepad O6 - File Transfer error", Carries::Descriptions},
    {"SpareTable", {}},
});

/// Reads a field of last year's record; a null field reads as an empty text.
using LastYearRecord = std::function<std::string_view(std::string_view field)>;

/// A field of this year's record with the text that it takes over; with an empty text it stays null. The text is last
/// year's record's own, or the list of currencies', and lives as long as that; the name lives always.
struct CarriedField {
    std::string_view field;
    std::string_view text;

    friend bool operator==(const CarriedField&, const CarriedField&) = default;
};

/// Every field that a rule can fill, whether or not it does so this time: the store then prepares one statement for a
/// table and not one for each selection of fields.
using CarriedFields = std::vector<CarriedField>;

/// This year's currencies and their official rates.
struct CurrencyRates {
    struct Row {
        std::string currency;
        Amount rate; ///< per cent
    };

    std::array<Row, 15> rows;
    std::string firstRate; ///< the first row's, as it is stored

    /// Zero for a currency that is not in the list, and for no currency. The first of two rows of one currency counts.
    Amount RateOf(std::string_view currency) const;
};

/// The list from the fields of its one record.
CurrencyRates ReadCurrencyRates(const LastYearRecord& currencies);

// Why a car, the fuel of a car, a van or a loan of last year does not run on, in words; empty for one that does. The
// rules below take along what has no such words.
std::string_view WhyCarStays(const LastYearRecord& lastYear, int car);
std::string_view WhyFuelStays(const LastYearRecord& lastYear, int car);
std::string_view WhyVanStays(const LastYearRecord& lastYear, int van);
std::string_view WhyLoanStays(const LastYearRecord& lastYear, int loan);

CarriedFields CarryDescriptions(const LastYearRecord& lastYear);
CarriedFields CarryAddress(const LastYearRecord& lastYear);
/// The vans that run on, packed from the first slot on.
CarriedFields CarryVans(const LastYearRecord& lastYear);
/// Currency and rate of every loan, and the balances of those that run on, packed.
CarriedFields CarryLoans(const LastYearRecord& lastYear, const CurrencyRates& rates);
/// The rule of the table; `KeysOnly` carries nothing. This year's currencies are asked for by the loans' rule alone.
CarriedFields Carry(Carries rule, const LastYearRecord& lastYear, const std::function<const CurrencyRates&()>& rates);

/// The cars that run on, packed from the first slot on: two slots in P11D, four in ExtraCars.
struct CarriedCars {
    CarriedFields p11d, extraCars;
};
/// A record that last year's table lacks is null, and has no cars.
CarriedCars CarryCars(const LastYearRecord* p11d, const LastYearRecord* extraCars);

/// Who the employee is: the fields of P11D beside keys and names.
CarriedFields CarryIdentity(const LastYearRecord& p11d);
/// References and addresses of the employer: the fields of P11DB.
CarriedFields CarryEmployer(const LastYearRecord& p11db);

} // namespace quillmere
