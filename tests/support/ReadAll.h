#pragma once

#include "clientdb/store/Recordset.h"
#include "clientdb/store/TableLayouts.h"

namespace quillmere::test {

/// Reads every field of every record, in every order.
inline void ReadAll(Database& database)
{
    for (const TableLayout& table : ClientTables()) {
        Recordset records = database.OpenRecordset(table.name);
        for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
            for (const Field& field : FieldsOf(table).All())
                records.Field(field.name);
        for (const TableIndex& index : table.indexes) {
            records.Index(index.name);
            for (records.MoveFirst(); !records.AtEnd(); records.MoveNext())
                records.Field(index.part1);
        }
    }
}

} // namespace quillmere::test
