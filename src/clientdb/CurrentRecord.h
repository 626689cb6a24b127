#pragma once

#include "clientdb/store/Recordset.h"
#include "frame/Session.h"

#include <string_view>

/// What screens do with the records of the open employee.
namespace quillmere {

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
