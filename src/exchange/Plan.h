#pragma once

#include "clientdb/Employees.h"
#include "clientdb/store/Recordset.h"
#include "exchange/Csv.h"
#include "exchange/Targets.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// What an import would do, row by row, and its doing.
namespace quillmere::exchange {

enum class RowState { New, Changed, Same, Faulty };
inline constexpr std::size_t RowStates = 4;
/// "New"
std::string_view WordsOf(RowState state);

struct PlannedRow {
    int number = 0; ///< in the file
    RowState state = RowState::Same;
    std::string employee, employer;
    std::string matchedBy; ///< "NI number"; empty for a new employee
    std::string words;     ///< what changes, or what is wrong
};

/// A field of an employee's record that is to be written.
struct PlannedField {
    std::string table, field, text;
};

/// What is to be written of one employee.
struct PlannedEmployee {
    NewEmployee employee; ///< whose names and reference count only for a new one
    std::string name;     ///< the key
    bool isNew = false;
    std::vector<PlannedField> fields;
};

struct ImportPlan {
    std::vector<PlannedRow> rows;
    std::vector<PlannedEmployee> employees; ///< those of whom something is written
    std::array<std::size_t, RowStates> counts{};

    std::size_t CountOf(RowState state) const { return counts.at(static_cast<std::size_t>(state)); }
};

/// What each column of a table stands for: positions of targets, or Nothing.
using Columns = std::vector<int>;

/// The columns that the headings in the first row name. No target is named twice.
Columns ColumnsOf(const Table& table, const Targets& targets);

/// Works out what the rows after the first would change. Each cell goes through its box's filter and is left there, so
/// that what follows from it follows here, too; a row with a cell that is not taken is left out. An empty cell changes
/// nothing. An employee is the one of the National Insurance number, else of the works number, else of the names, among
/// those of his employer, who is `employer` where the row names none. Throws StoreError.
ImportPlan MakePlan(Database& database, const Table& table, const Targets& targets, const Columns& columns,
                    std::string_view employer);

/// Writes what was planned, as one batch, and counts the employees of whom all is written. Throws StoreError.
void CarryOut(Database& database, const ImportPlan& plan, std::size_t& written);
inline void CarryOut(Database& database, const ImportPlan& plan)
{
    std::size_t written = 0;
    CarryOut(database, plan, written);
}

} // namespace quillmere::exchange
