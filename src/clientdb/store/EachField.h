#pragma once

#include "clientdb/store/TableLayouts.h"

namespace quillmere {

/// Goes through the fields of a table in their order: the field or its stem, and its number, 0 for one that has none.
template<class Take>
void EachField(const TableLayout& table, Take take)
{
    for (const FieldGroup& group : table.groups)
        for (int number = group.first; number <= group.last; ++number)
            for (const FieldStem& field : group.stems)
                take(field, number);
}

} // namespace quillmere
