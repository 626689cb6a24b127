#pragma once

#include "clientdb/TypedEntries.h"
#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/CloseAll.h"
#include "frame/Session.h"

#include <string>
#include <string_view>

/// What screens do with the records of the open employee.
namespace quillmere {

/// Whose record of a table is open: the employee with the employer in parentheses, or the employer alone; empty for a
/// table that belongs to nobody.
inline std::string SubjectOf(std::string_view table, const Session& session)
{
    switch (FindTable(table).level) {
    case TableLevel::Employee:
        return OpenEmployeeInWords(session);
    case TableLevel::Employer:
        return session.CurrentEmployer;
    default:
        return {};
    }
}

/// A cursor over its table, on the record of whomever it names; NoMatch if there is none.
inline Recordset OpenAt(Database& database, const TypedEntries::Record& record)
{
    Recordset records = database.OpenRecordset(record.table);
    const bool isOfEmployee = !record.employee.empty();
    records.Index(isOfEmployee ? "IndKey" : "PrimaryKey");
    if (isOfEmployee)
        records.Seek(record.employer, record.employee);
    else
        records.Seek(record.employer);
    return records;
}

/// A cursor over the table, on the open employee's record; NoMatch if there is none.
inline Recordset OpenCurrent(Database& database, std::string_view table, const Session& session)
{
    Recordset records = database.OpenRecordset(table);
    records.Index("IndKey");
    records.Seek(session.CurrentEmployer, session.CurrentEmployee);
    return records;
}

/// Writes one field in an edit and update of its own. Throws StoreError.
inline void StoreField(Recordset& records, std::string_view field, std::string_view text)
{
    records.Edit();
    records.SetField(field, text);
    records.Update();
}

} // namespace quillmere
