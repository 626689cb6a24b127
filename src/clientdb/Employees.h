#pragma once

#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"

#include <cstddef>
#include <map>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Employers and employees as the client database holds them: lists, creation, renaming and deletion, without any
/// screen. An employer is there because a record of P11D bears its name. Names are told apart by case. Each of the
/// changing operations is one batch, and what it has written before a failure stays.
namespace quillmere {

/// An employee's key: the first name, one blank and the surname, trimmed.
std::string EmployeeName(std::string_view firstName, std::string_view surname);

/// The joined key: the employer's name, one blank and the employee's.
std::string JoinedName(std::string_view employer, std::string_view employee);

// ---- lists --------------------------------------------------------------------------------------

/// So many different employers fit in a list.
inline constexpr std::size_t EmployerNameSlots = 751;

/// The employer of the sample data, which is never listed.
inline constexpr std::string_view SampleEmployer = "A SAMPLE";

/// More different employers than a list holds.
class TooManyEmployers : public std::out_of_range {
public:
    using std::out_of_range::out_of_range;
};

/// Every employer but the sample's, however many, in the order in which the records of P11D were added.
std::vector<std::string> EveryEmployer(Database& database);

/// Every employer but the sample's, in the order in which the records of P11D were added. Throws TooManyEmployers.
std::vector<std::string> ListEmployers(Database& database);

/// The names of an employer's employees, in the order in which their records were added.
std::vector<std::string> ListEmployees(Database& database, std::string_view employer);

bool EmployerExists(Database& database, std::string_view employer);
bool EmployeeExists(Database& database, std::string_view employer, std::string_view employee);

/// The PAYE reference with which a new employee of the employer begins, and which is offered when the employer is
/// renamed: the first that is not empty among the employer's employees, in the order of adding. Empty if none has one.
std::string FirstPayeReference(Database& database, std::string_view employer);

// ---- creation -----------------------------------------------------------------------------------

struct NewEmployee {
    std::string employer;
    std::string firstName;
    std::string surname;
    std::string payeReference;
};

/// A text for a field of one of an employee's records.
struct RecordText {
    std::string_view table, field, text;
};

/// The records of many employees, made and changed with one cursor for each table. Throws StoreError, as all here.
class EmployeeRecords {
public:
    explicit EmployeeRecords(Database& database) : database(database) {}

    /// Says that the next Make is all that the batch does, and need not wait for each record: Database::WillAdd.
    void WillMake(const NewEmployee& employee);
    /// Makes the employee's records in every table of NewEmployeeTables, in that order, with their keys and these texts
    /// set and all else null; the employer's own three only if they are not there yet.
    void Make(const NewEmployee& employee, std::span<const RecordText> texts = {});
    /// Writes texts to the records of an employee who is there.
    void Change(std::string_view employer, std::string_view employee, std::span<const RecordText> texts);

    /// Of the last Make: the tables in which it has made a record, and the one that it was about when it failed.
    std::span<const std::string_view> Made() const { return made; }
    std::string_view InHand() const { return inHand; }

private:
    Recordset& At(const TableLayout& table);

    Database& database;
    std::map<std::string_view, Recordset> tables;
    std::set<std::string> employers; ///< whose records are there
    std::vector<std::string_view> made;
    std::string_view inHand;
};

/// The store failed, or refused a key, while the records of a new employee were made. Those made before stay: the text
/// names their tables.
class RecordsNotMade : public StoreError {
public:
    RecordsNotMade(const StoreError& failure, std::string_view failedTable, std::vector<std::string> made);
    const std::vector<std::string>& Made() const { return made; }

private:
    std::vector<std::string> made;
};

/// Makes the employee's records in every table of NewEmployeeTables, in that order, with their keys set and all else
/// null; the employer's own three only if they are not there yet. Throws RecordsNotMade.
void CreateEmployee(Database& database, const NewEmployee& employee);

// ---- renaming and deletion ----------------------------------------------------------------------

/// Deletes every record of the employer, table by table.
void DeleteEmployer(Database& database, std::string_view employer);

/// Deletes the employee's records. The employer's own stay, even when the last employee goes.
void DeleteEmployee(Database& database, std::string_view employer, std::string_view employee);

/// Gives every record of the employer the new name, and P11D and P11DB the new PAYE reference. A record whose new key
/// another one has stays as it is, in silence.
void RenameEmployer(Database& database, std::string_view employer, std::string_view newName,
                    std::string_view newPayeReference);

/// Gives every record of the employee the new name. First name and surname stay as they are.
void RenameEmployee(Database& database, std::string_view employer, std::string_view employee, std::string_view newName);

} // namespace quillmere
