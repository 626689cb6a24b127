#include "clientdb/store/PendingEdit.h"

#include <algorithm>
#include <stdexcept>

namespace quillmere {

void PendingEdit::Set(std::size_t column, std::string_view text, bool isNull)
{
    if (!IsOpen())
        throw std::logic_error("A field is set without Edit or AddNew");
    const auto place = static_cast<std::uint16_t>(column);
    const auto at = std::ranges::lower_bound(changes, place, {}, &Change::column);
    if (at != changes.end() && at->column == place)
        *at = {place, isNull, std::string(text)};
    else
        changes.insert(at, {place, isNull, std::string(text)});
}

const PendingEdit::Change* PendingEdit::Find(std::size_t column) const
{
    const auto found = std::ranges::find(changes, column, &Change::column);
    return found == changes.end() ? nullptr : &*found;
}

int PendingEdit::Write(TableStatements& statements, std::int64_t rowid, bool isHeld) const
{
    std::vector<std::uint16_t> written;
    written.reserve(changes.size());
    for (const Change& change : changes)
        written.push_back(change.column);
    Run run(IsNewRecord() ? statements.Insert(written) : statements.Update(written));
    for (const Change& change : changes)
        if (change.isNull)
            run.BindNull();
        else
            run.Bind(change.text);
    if (!IsNewRecord())
        run.Bind(rowid);
    const auto isOfKey = [&](const Change& change) {
        return std::ranges::any_of(statements.Layout().indexes, [&](const TableIndex& index) {
            const std::string_view name = statements.Fields().All()[change.column].name;
            return name == index.part1 || name == index.part2;
        });
    };
    if (!isHeld || std::ranges::any_of(changes, isOfKey))
        return run.Change();
    run.Post();
    return 1;
}

} // namespace quillmere
