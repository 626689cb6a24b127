#pragma once

#include "clientdb/store/Recordset.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace quillmere {

/// What makes the table of the marks.
inline constexpr std::string_view CreateMarks =
    "CREATE TABLE [FormMarks]([EmployerName] TEXT,[EmployeeName] TEXT,[Mark] INTEGER,[Day] TEXT,[Form] TEXT,"
    "PRIMARY KEY([EmployerName],[EmployeeName],[Mark]))";

/// What has been done with an employee's form.
enum class FormMark { Printed, Reviewed };

/// A mark as it stands: the day on which it was set, and whether the form has been changed since.
struct MarkOfForm {
    std::string day;
    bool isOutdated = false;
};

/// The marks of the employees' forms, in a table of their own beside the required ones, which is made when the first
/// mark is set. A mark holds for what the form was when it was set: any other text in any record of the employee makes
/// it outdated, and the same text again makes it good. A table of that name which somebody else has made is left alone:
/// then there are no marks. Throws StoreError.
class FormMarks {
public:
    /// `database` outlives it.
    explicit FormMarks(Database& database);

    /// Sets a mark, in the place of one that was set before, all in one transaction. False if there can be none.
    [[nodiscard]] bool Set(FormMark mark, std::string_view employer, std::string_view employee,
                           std::string_view day) const;
    void Clear(FormMark mark, std::string_view employer, std::string_view employee) const;

    /// The marks of an employee; looking whether they are outdated reads all of the employee's records.
    std::map<FormMark, MarkOfForm> Of(std::string_view employer, std::string_view employee) const;

    /// What follows when an employee, or an employer where the employee is empty, is deleted or has got another name.
    void Forget(std::string_view employer, std::string_view employee = {}) const;
    void RenameEmployee(std::string_view employer, std::string_view employee, std::string_view newName) const;
    void RenameEmployer(std::string_view employer, std::string_view newName) const;

private:
    enum class Table { None, There, OfOthers };
    Table Look() const;
    bool AreThere() const { return Look() == Table::There; }
    std::string FormOf(std::string_view employer, std::string_view employee) const;

    Database& database;
    std::shared_ptr<Database::Connection> connection;
};

} // namespace quillmere
