#pragma once

#include "clientdb/store/PendingEdit.h"

#include <deque>

namespace quillmere {

/// The records that a writing transaction has locked and read: nobody else changes them before its end, so what they
/// hold is known. The last few of them; of the others it is asked again.
class HeldRecords {
public:
    const HeldRecord* Find(const TableLayout& layout, std::int64_t number) const;
    const HeldRecord* Find(const TableStatements& statements, const TableIndex& index, const Key& key) const;
    /// The first of its table in the order of adding.
    const HeldRecord* FindFirst(const TableLayout& layout) const;
    void Hold(const TableLayout& layout, std::int64_t number, const Cells& texts, bool isFirst = false);
    /// The record has been written.
    void Change(const TableLayout& layout, std::int64_t number, const PendingEdit& edit);
    void Release(const TableLayout& layout, std::int64_t number);
    void Clear() { records.clear(); }

private:
    std::deque<HeldRecord> records;
};

} // namespace quillmere
