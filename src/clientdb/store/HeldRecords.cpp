#include "clientdb/store/HeldRecords.h"

#include <algorithm>

namespace quillmere {
namespace {

constexpr std::size_t MostRecords = 64;

} // namespace

const HeldRecord* HeldRecords::Find(const TableLayout& layout, std::int64_t number) const
{
    const auto found = std::ranges::find_if(
        records, [&](const HeldRecord& record) { return record.layout == &layout && record.number == number; });
    return found == records.end() ? nullptr : &*found;
}

const HeldRecord* HeldRecords::Find(const TableStatements& statements, const TableIndex& index, const Key& key) const
{
    const auto reads = [&](const HeldRecord& record, std::string_view field, std::string_view text) {
        const std::size_t column = statements.Fields().Find(field);
        return !record.texts.IsNull(column) && record.texts.Text(column) == text;
    };
    const auto found = std::ranges::find_if(records, [&](const HeldRecord& record) {
        return record.layout == &statements.Layout() && reads(record, index.part1, key.part1) &&
               (!key.part2 || reads(record, index.part2, *key.part2));
    });
    return found == records.end() ? nullptr : &*found;
}

const HeldRecord* HeldRecords::FindFirst(const TableLayout& layout) const
{
    const auto found = std::ranges::find_if(
        records, [&](const HeldRecord& record) { return record.layout == &layout && record.isFirst; });
    return found == records.end() ? nullptr : &*found;
}

void HeldRecords::Hold(const TableLayout& layout, std::int64_t number, const Cells& texts, bool isFirst)
{
    Release(layout, number);
    if (records.size() == MostRecords)
        records.pop_front();
    records.push_back({.layout = &layout, .number = number, .texts = texts, .isFirst = isFirst});
}

void HeldRecords::Change(const TableLayout& layout, std::int64_t number, const PendingEdit& edit)
{
    const HeldRecord* const before = Find(layout, number);
    if (before == nullptr)
        return;
    Cells after;
    for (std::size_t column = 0; column < before->texts.Count(); ++column)
        if (const PendingEdit::Change* const change = edit.Find(column))
            after.Put(change->isNull ? std::nullopt : std::optional<std::string_view>(change->text));
        else
            after.Put(before->texts.IsNull(column) ? std::nullopt : std::optional(before->texts.Text(column)));
    Hold(layout, number, after, before->isFirst);
}

void HeldRecords::Release(const TableLayout& layout, std::int64_t number)
{
    std::erase_if(records,
                  [&](const HeldRecord& record) { return record.layout == &layout && record.number == number; });
}

} // namespace quillmere
