#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// The tables of a client database and of the reference database: names, indexes and every field, as lists. The
/// template database is made from them, and the record store takes no name that is not in them.
namespace quillmere {

/// What a field holds. All are stored as text.
enum class FieldKind {
    Text,
    Amount, ///< an amount as shown: formatted and right-aligned in ten characters, or empty
    Date,   ///< dd/mm/yyyy, or empty
    Tick,   ///< "1" or "0"; SexTick "M" or "F", OEntertainTick "Y" or "N"
    Days,   ///< a whole number of days
    Count,  ///< a whole number
};

/// Whom one record of a table belongs to.
enum class TableLevel {
    Employee,
    Employer,
    Database,  ///< one record for the whole client database
    Reference, ///< a table of the reference database of car models
};

/// A field, or the stem of a numbered field.
struct FieldStem {
    std::string_view stem;
    FieldKind kind = FieldKind::Text;
};

/// Fields that stand together. With a range of numbers the whole group is repeated for each of them, and each name is
/// stem and number with nothing between ("DateFrom1" of van 2 is "DateFrom12"). Without one the stems are the names.
struct FieldGroup {
    std::span<const FieldStem> stems;
    int first = 0;
    int last = 0;
};

/// A unique index. `part2` is empty for a key of one part.
struct TableIndex {
    std::string_view name;
    std::string_view part1;
    std::string_view part2 = {};
};

struct TableLayout {
    std::string_view name;
    TableLevel level = TableLevel::Employee;
    std::span<const TableIndex> indexes;
    std::span<const FieldGroup> groups;
};

struct Field {
    std::string name;
    FieldKind kind = FieldKind::Text;
};

/// The tables of a client database, in the order in which the records of a new employee are made; the one table that
/// has no record of an employee or employer, "HNotepad2", stands before the last.
std::span<const TableLayout> ClientTables();

/// The tables of the reference database, which this program only reads.
std::span<const TableLayout> ReferenceTables();

/// The 27 tables in which a new employee has a record, in the order in which they are made.
std::span<const TableLayout* const> NewEmployeeTables();

/// The layout of a table of the client database, regardless of case. Throws UnknownName.
const TableLayout& FindTable(std::string_view name);

/// The same for the reference database.
const TableLayout& FindReferenceTable(std::string_view name);

/// All fields of one table in order, and the place of each name.
class TableFields {
public:
    explicit TableFields(const TableLayout& layout);
    TableFields(const TableFields&) = delete;
    TableFields& operator=(const TableFields&) = delete;

    std::span<const Field> All() const { return fields; }
    std::size_t Count() const { return fields.size(); }

    /// The field's place, regardless of case; `None` for an unknown name.
    std::size_t Find(std::string_view name) const;
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

private:
    std::vector<Field> fields;
    std::unordered_map<std::string_view, std::size_t> places; ///< of the names as the fields have them
};

/// The fields of one of the tables above.
const TableFields& FieldsOf(const TableLayout& table);

} // namespace quillmere
