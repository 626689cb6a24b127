#pragma once

#include "clientdb/store/Recordset.h"
#include "transfer/TransferRules.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

/// The transfer itself, without any screen: last year's database, this year's, and the records that go from the one
/// into the other. It adds records and never changes one.
namespace quillmere {

/// Title of the transfer's screen, and of its boxes that have none of their own.
inline constexpr std::string_view TransferTitle = "Transfer Selected Employees ";

/// Last year's database: of the folder that is selected in last year's edition beside this one. Throws FileError if
/// there is no such edition, or no folder selected.
std::filesystem::path LastYearDatabaseOf(const std::filesystem::path& programFolder);

/// An employee of last year's database.
struct LastYearEmployee {
    std::string employer;
    std::string employee;
    std::string firstName;
    std::string surname;
};

/// Everybody in last year's database but the sample, in the order in which the records were added.
std::vector<LastYearEmployee> ListLastYearEmployees(Database& lastYear);

/// An employee as the list shows him: "Acme Ltd - (Jane Smith)".
std::string ListText(const LastYearEmployee& employee);
/// Reads that text back: the employer stands before the first " - (", and the surname is the employee's last word.
LastYearEmployee ParseListText(std::string_view text);

/// More employees than the list of those who are there this year has room for.
class TooManyEmployees : public std::out_of_range {
public:
    using std::out_of_range::out_of_range;
};

/// The employees whom this year's database has already, in a list of fixed size.
class ExistingEmployees {
public:
    static constexpr std::size_t Room = 3001;
    /// A look-up goes no further than this; whoever stands behind is not found.
    static constexpr std::size_t Searched = 3000;

    /// Throws TooManyEmployees.
    void Add(std::string_view employer, std::string_view employee);
    bool Contains(std::string_view employer, std::string_view employee) const;

private:
    static std::string Key(std::string_view employer, std::string_view employee);

    std::size_t count = 0;
    std::unordered_set<std::string> found;
};

enum class TransferMode { Single, All };

/// What a box says of a record that was not made.
struct TransferNotice {
    std::string title;
    std::string text;

    friend bool operator==(const TransferNotice&, const TransferNotice&) = default;
};

/// One run of the transfer. Both databases stay open for its length. The records of an employee are stored together,
/// and those of many employees with one sync, so that a run that is killed leaves no employee half transferred. Where
/// the store fails with a record, what was made before it is stored at once: a record of last year that cannot be read
/// is made with its keys alone, and one that cannot be written is missing.
class YearTransfer {
public:
    /// Opens both databases and lists who is there this year. Throws StoreError and TooManyEmployees.
    YearTransfer(const std::filesystem::path& thisYear, const std::filesystem::path& lastYear,
                 std::shared_ptr<OperationNote> note = nullptr);

    std::vector<LastYearEmployee> LastYearEmployees() { return ListLastYearEmployees(lastYear); }
    /// True if this year's database had the employee when the run began.
    bool EmployeeExists(std::string_view employer, std::string_view employee) const;

    /// Makes the employee's records unless he is there already. What goes wrong with one table is added to the notices,
    /// in order, and the others go on: last year's table lacks the employee, this year's has a record of him, the store
    /// fails. Throws StoreError if a database is out of reach altogether or what has been written cannot be stored; the
    /// run is over then.
    void Transfer(const LastYearEmployee& employee, TransferMode mode, std::vector<TransferNotice>& notices);
    /// Stores what has not been stored yet. Throws StoreError; then none of that is stored.
    void Commit();
    /// After a StoreError of the two: the first employee who has not been transferred.
    const LastYearEmployee& FirstNotStored() const { return firstNotStored; }

private:
    /// Last year's records of a table, one for each employee. Those of a whole run mostly stand in the order in which
    /// the employees come, so the record behind the last is looked at before one is sought by its name.
    class LastYearTable {
    public:
        LastYearTable(Database& lastYear, std::string_view table);

        /// The record of that name; nullptr if there is none. `inOrder` allows the look at the record behind the last.
        const Recordset* Find(std::string_view name, bool inOrder);

    private:
        bool IsNext(std::string_view name);
        void GoOnTo(std::string_view name);

        Recordset sought;
        Recordset following;      ///< in the order of adding
        bool follows = false;     ///< it stands on a record that nobody has had yet
        bool isExhausted = false; ///< it has come to its end, or failed
    };
    /// A table of both databases.
    struct Tables {
        Recordset thisYear;
        LastYearTable lastYear;
    };
    struct Keys {
        std::string_view employer, employee;
        std::string name;
    };

    Tables Open(std::string_view table);
    void AddRecords(const LastYearEmployee& employee, TransferMode mode);
    void AddRecord(const TransferTable& row, Tables& tables, const Keys& keys, TransferMode mode);
    void AddEmployeeAndCars(const LastYearEmployee& employee, const Keys& keys, TransferMode mode);
    /// False if the employer's record is not there now.
    bool AddEmployer(const Keys& keys);
    bool AddEmployerSchedule(Recordset& schedule, const Keys& keys);
    /// Does the work of one table; a failure of the store ends that work alone, and makes this false.
    template<class Work>
    bool Attempt(std::string_view title, Work work);
    /// What the rule takes over from last year's record. Nothing if there is none, which is told. One that cannot be
    /// read is told too and carries no field: its record is then made with its keys alone, so that it can be entered.
    template<class Find, class Rule>
    std::optional<CarriedFields> CarriedFrom(Find find, std::string_view title, std::string_view notFound, Rule rule);
    /// Begins a record of the employee with its keys.
    static void BeginRecord(Recordset& records, const Keys& keys);
    /// Ends the adding of a record. One that is there already stays as it is, and is told.
    void Add(Recordset& records, std::string_view title);
    void Notice(std::string_view title, std::string_view text);
    const CurrencyRates& Rates();

    Database thisYear, lastYear;
    std::vector<Tables> notepads; ///< in the order of TransferTables
    Tables p11d, extraCars;
    Recordset p11db, lastYearP11DB;
    Recordset addedSchedule, deductedSchedule;
    ExistingEmployees existing;
    std::optional<CurrencyRates> rates;
    std::vector<TransferNotice>* noticed = nullptr; ///< those of the caller
    const LastYearEmployee* inHand = nullptr;
    std::string employerThere; ///< whose records are known to be there, as the transaction keeps them
    std::size_t notStored = 0; ///< employees since the last sync
    LastYearEmployee firstNotStored;
    std::optional<WriteBatch> batch; ///< last, so that it ends while the database is open
};

} // namespace quillmere
