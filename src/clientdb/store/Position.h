#pragma once

#include "clientdb/store/TableStatements.h"

#include <optional>

namespace quillmere {

/// Where a cursor stands, and in which order it goes on. The number of the record is below all others before the first
/// record, and stays when the record is deleted: the record that comes next is always the first one behind it. A scan
/// in another order than that of adding goes by a list of numbers, which is taken up when it first goes on and holds
/// the number on which the cursor stands; what the list has up to `Used` has been read.
class Position {
public:
    enum class Place { BeforeFirst, OnRecord, OnDeleted, Nowhere, AtEnd };

    explicit Position(TableStatements& statements);

    /// The order of an index; of all records.
    void SetOrder(const TableIndex& newIndex);
    /// Of one employer's records alone.
    void SetEmployer(std::string_view name) { employer.emplace(name); }
    const TableIndex* Order() const { return index; }
    bool GoesByList() const { return index != nullptr || employer.has_value(); }

    Place At() const { return place; }
    std::int64_t Rowid() const { return rowid; }
    /// Throws StoreError unless the cursor stands on a record.
    void RequireRecord() const;

    void StandBeforeFirst();
    /// Takes up a position to which no scan has led.
    void StandOn(std::int64_t record);
    void MoveOnTo(std::int64_t record);
    void Leave(Place where) { place = where; }

    /// The numbers of a scan that goes by list.
    const std::vector<std::int64_t>& List();
    std::size_t Used() const { return used; }
    void Use(std::size_t upTo) { used = upTo; }

    /// A scan that does not go forward would never end.
    [[noreturn]] void FailOutOfOrder();

private:
    void TakeUpList();

    TableStatements& statements;
    const TableIndex* index = nullptr;
    std::optional<std::string> employer;
    Place place = Place::BeforeFirst;
    std::int64_t rowid = 0;
    bool listed = false;
    std::vector<std::int64_t> list;
    std::size_t used = 0;
};

} // namespace quillmere
