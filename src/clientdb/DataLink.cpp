#include "clientdb/DataLink.h"

#include "clientdb/store/Recordset.h"

#include <utility>

namespace quillmere {

DataLink::DataLink(Session& session, Screen& screen, std::string_view table) : session(session), table(table)
{
    for (const auto& box : screen.Boxes())
        if (!box->Field().empty())
            bound.push_back(box.get());
}

bool DataLink::Position(Recordset& records, const Key& to)
{
    records.Index(to.index);
    if (to.index == "IndKey")
        records.Seek(to.part1, to.part2);
    else
        records.Seek(to.part1);
    return !records.NoMatch();
}

void DataLink::Show(Recordset& records)
{
    for (Box* box : bound) {
        box->ShowStored(records.Field(box->Field()));
        shown[box] = box->Stored();
    }
}

bool DataLink::Seek(std::string_view index, std::string_view part1, std::string_view part2)
{
    Key to{.database = session.ClientDatabasePath(),
           .index = std::string(index),
           .part1 = std::string(part1),
           .part2 = std::string(part2)};
    try {
        Store();
    } catch (const RecordGone&) {
        // Whoever looks for the very record that is gone is told so by not finding it.
        if (to != key)
            throw;
    }
    // Until the store has answered, the link stands where it stood: what is typed meanwhile is not lost.
    Database opened = Database::OpenDatabase(to.database);
    Recordset records = opened.OpenRecordset(table);
    hasRecord = Position(records, to);
    key = std::move(to);
    if (hasRecord) {
        Show(records);
        BringBack();
    }
    return hasRecord;
}

/// What an earlier run could not store goes back into its boxes, which wait to be stored like any that have changed.
void DataLink::BringBack()
{
    for (const TypedEntries::Entry& entry : TypedEntries(key.database).Of(Record()))
        for (Box* box : bound)
            if (box->Field() == entry.field) {
                box->ShowStored(entry.typed);
                hasBroughtBack = true;
            }
}

void DataLink::KeepChanges()
{
    std::vector<TypedEntries::Entry> entries;
    for (const Box* box : Changed())
        entries.push_back({.field = box->Field(), .stored = shown.at(box), .typed = box->Stored()});
    TypedEntries(key.database).Keep(Record(), entries);
    hasBroughtBack = hasRecord = false;
}

void DataLink::ForgetKept()
{
    if (!std::exchange(hasBroughtBack, false))
        return;
    std::vector<std::string> fields;
    for (const Box* box : bound)
        fields.push_back(box->Field());
    TypedEntries(key.database).Forget(Record(), fields);
}

void DataLink::DropChanges()
{
    hasRecord = false;
    ForgetKept();
}

TypedEntries::Record DataLink::Record() const
{
    return {.table = table, .employer = key.part1, .employee = key.part2};
}

std::vector<Box*> DataLink::Changed() const
{
    std::vector<Box*> changed;
    for (Box* box : bound)
        if (const auto before = shown.find(box); before == shown.end() || box->Stored() != before->second)
            changed.push_back(box);
    return changed;
}

void DataLink::Store()
{
    if (!hasRecord)
        return;
    const std::vector<Box*> changed = Changed();
    if (changed.empty())
        return ForgetKept();
    Database opened = Database::OpenDatabase(key.database);
    Recordset records = opened.OpenRecordset(table);
    if (!Position(records, key)) {
        hasRecord = false;
        throw RecordGone();
    }
    records.Edit();
    for (const Box* box : changed)
        records.SetField(box->Field(), box->Stored());
    records.Update();
    for (const Box* box : changed)
        shown[box] = box->Stored();
    ForgetKept();
}

void DataLink::Release()
{
    Store();
    hasRecord = false;
}

} // namespace quillmere
