#include "exchange/TypedBoxes.h"

#include "frame/Text.h"

#include <fmt/format.h>

namespace quillmere::exchange {

std::string StoredTexts::Text(const Person& person, std::string_view table, const std::string& field)
{
    const auto planned = person.written.find({std::string(table), field});
    if (planned != person.written.end())
        return planned->second;
    if (person.isNew)
        return {};
    Table& of = At(table);
    if (of.person != &person) {
        of.records.Seek(person.employer, person.name);
        of.person = &person;
    }
    return of.records.NoMatch() ? std::string() : std::string(of.records.Field(field));
}

StoredTexts::Table& StoredTexts::At(std::string_view table)
{
    const auto known = tables.find(table);
    if (known != tables.end())
        return known->second;
    Table& opened = tables.emplace(table, Table{database.OpenRecordset(table)}).first->second;
    opened.records.Index("IndKey");
    return opened;
}

void TypedBoxes::Show(StoredTexts& stored, const Person& person)
{
    for (Entry& entry : entries)
        entry.box->ShowStored(stored.Text(person, entry.table, entry.field));
    for (Entry& entry : entries)
        entry.shown = entry.before = entry.box->Stored();
}

void TypedBoxes::Type(Box& box, std::string_view cell)
{
    const std::string held = box.Stored();
    if (const std::string wrong = room.Type(screen, box, cell); !wrong.empty())
        throw Fault{fmt::format("{}: {}", box.Spoken(), wrong)};
    const bool isSame = box.Stored() == held;
    for (Entry& entry : entries) {
        if (isSame && entry.box->Stored() != entry.before)
            entry.box->ShowStored(entry.before);
        entry.before = entry.box->Stored();
    }
}

void TypedBoxes::Take(std::vector<PlannedField>& fields, std::vector<std::string>& words) const
{
    for (const Entry& entry : entries) {
        const std::string now = entry.box->Stored();
        if (now == entry.shown)
            continue;
        fields.push_back({entry.table, entry.field, now});
        if (!entry.box->Visible())
            continue;
        const std::string from(Trimmed(entry.shown)), to(Trimmed(now));
        words.push_back(from.empty() || entry.box->Kind() == BoxKind::Tick
                            ? fmt::format("{} {}", entry.box->Spoken(), to)
                            : fmt::format("{} {} (was {})", entry.box->Spoken(), to, from));
    }
}

} // namespace quillmere::exchange
