#pragma once

#include "clientdb/store/History.h"
#include "clientdb/store/TableLayouts.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Changes of records as the history's tables hold them.
namespace quillmere {

/// A field of a record before and after; nothing is null.
struct FieldChange {
    std::uint16_t column;
    std::optional<std::string> before, after;
};

/// A number for what a record holds, put in in the order of its fields; an empty field is like one that was never
/// filled. Records that differ come to different numbers but for one chance in 2^64. Histories hold it, so it stays as
/// it is.
class FieldsDigest {
public:
    void Put(std::size_t column, std::string_view text);
    std::uint64_t Number() const { return number; }

private:
    void Mix(std::uint64_t word);
    std::uint64_t number = 0;
};

/// What was done to one record.
struct RecordChange {
    const TableLayout* table;
    std::int64_t record; ///< its number
    ChangeKind kind;
    std::vector<FieldChange> fields;
    std::optional<std::uint64_t> digest; ///< of a new record whose fields are left to the table; `fields` has none then
};

/// Changed fields as bytes, those alone that differ. A new record has nothing before and a deleted one nothing after,
/// and neither has its empty fields.
std::string EncodeFields(ChangeKind kind, std::span<const FieldChange> fields);
/// Puts the field of a new or deleted record behind others; it is not null.
void PutField(std::string& bytes, std::size_t column, std::string_view text);
/// Puts a change behind others: its table and number, and its fields as bytes.
void AppendChange(std::string& bytes, const TableLayout& table, std::int64_t record, ChangeKind kind,
                  std::string_view fields);
/// The same for a new record whose fields are left to the table.
void AppendAdded(std::string& bytes, const TableLayout& table, std::int64_t record, std::uint64_t digest);
void AppendChange(std::string& bytes, const RecordChange& change);
/// The changes that have been put together. Throws StoreError for bytes that are none of these.
std::vector<RecordChange> DecodeChanges(std::string_view bytes);

} // namespace quillmere
