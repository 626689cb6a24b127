#pragma once

#include "clientdb/store/Recordset.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere::review {

/// Goes through an employer's employees by name and shows what their records hold in the tables of the form, its
/// further cars and its lists. The cursors of all tables move on together: a thousand employees cost one scan of each.
/// Between two employees everybody may write; who has much to look at does it in pieces, so that keys do not wait. It
/// may also begin anew behind the last employee of the piece before.
class EmployerForms {
public:
    /// Stands before the first employee, or before the one who follows `after`. Throws StoreError, as all here.
    EmployerForms(Database& database, std::string_view employer, std::string_view after = {});

    /// Goes on to the next employee; false after the last one.
    bool Next();
    /// The key of the employee.
    const std::string& Employee() const { return employee; }
    /// A field of the employee's record; empty where he has no such record.
    std::string_view Field(std::string_view table, std::string_view field) const;

private:
    struct Table {
        std::string_view name;
        Recordset records;
        bool isOfEmployee = false; ///< stands on the employee's record
    };
    void Start(Table& table, std::string_view after) const;
    void Follow(Table& table) const;
    bool HasRecord(const Table& table) const;

    std::string employer, employee;
    std::vector<Table> tables;     ///< the first is that of the forms
    mutable std::size_t asked = 0; ///< the table that was asked for last is mostly asked for next
    bool begun = false;
};

} // namespace quillmere::review
