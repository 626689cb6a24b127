#pragma once

#include "clientdb/store/Recordset.h"
#include "review/FormFacts.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillmere::review {

/// Goes through an employer's employees by name and reads the facts of their forms. The cursors of all tables move on
/// together: a thousand employees cost one scan of each, of the fields that are looked at. Between two employees
/// everybody may write; who has much to look at does it in pieces, so that keys do not wait.
class EmployerForms {
public:
    /// Stands before the first employee. Throws StoreError, as all here.
    EmployerForms(Database& database, std::string_view employer);
    EmployerForms(const EmployerForms&) = delete;
    EmployerForms& operator=(const EmployerForms&) = delete;

    /// Goes on to the next employee; false after the last one.
    bool Next();
    /// The key of the employee.
    const std::string& Employee() const { return employee; }
    /// What stands on the employee's form, until the next one's.
    const FormFacts& Facts() const { return facts; }

private:
    struct Table {
        Recordset records;
        FieldPlace key; ///< the employee's
        std::vector<std::pair<FieldPlace, std::string_view*>> facts;
        bool isRead = false; ///< the facts are those of a record
    };
    static std::string_view KeyOf(const Table& table) { return table.records.Field(table.key); }
    static void Read(Table& table, bool isOfEmployee);

    FormFacts facts;
    std::string employee;
    std::vector<Table> tables; ///< the first is that of the forms
    bool begun = false;
};

} // namespace quillmere::review
