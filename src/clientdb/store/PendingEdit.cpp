#include "clientdb/store/PendingEdit.h"

#include <algorithm>
#include <stdexcept>

namespace quillmere {

void PendingEdit::Set(std::size_t column, std::string_view text, bool isNull)
{
    if (!IsOpen())
        throw std::logic_error("A field is set without Edit or AddNew");
    const auto place = static_cast<std::uint16_t>(column);
    const auto end = changes.begin() + static_cast<std::ptrdiff_t>(count);
    const auto at = std::ranges::lower_bound(changes.begin(), end, place, {}, &Change::column);
    if (at == end || at->column != place)
        return Insert(at - changes.begin(), place, text, isNull);
    at->isNull = isNull;
    at->text = text;
}

void PendingEdit::Insert(std::ptrdiff_t at, std::uint16_t column, std::string_view text, bool isNull)
{
    if (count == changes.size()) {
        changes.push_back({column, isNull, std::string(text)}); // a copy, as the text may be that of another change
    } else {
        Change& added = changes[count];
        added.column = column;
        added.isNull = isNull;
        added.text = text;
    }
    const auto end = changes.begin() + static_cast<std::ptrdiff_t>(++count);
    std::rotate(changes.begin() + at, end - 1, end);
}

const PendingEdit::Change* PendingEdit::Find(std::size_t column) const
{
    const auto found = std::ranges::find(Changes(), column, &Change::column);
    return found == Changes().end() ? nullptr : &*found;
}

int PendingEdit::Write(TableStatements& statements, std::int64_t rowid, bool isHeld, bool mayBeRefused) const
{
    std::vector<std::uint16_t> written;
    written.reserve(count);
    for (const Change& change : Changes())
        written.push_back(change.column);
    const bool isNumbered = IsNewRecord() && rowid != 0;
    Run run(IsNewRecord() ? statements.Insert(written, isNumbered) : statements.Update(written));
    if (isNumbered)
        run.Bind(rowid);
    for (const Change& change : Changes())
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
    return run.ChangeOne(isNumbered || (isHeld && (mayBeRefused || std::ranges::none_of(Changes(), isOfKey))));
}

} // namespace quillmere
