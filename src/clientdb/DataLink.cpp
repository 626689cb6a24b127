#include "clientdb/DataLink.h"

#include "clientdb/Recordset.h"
#include "frame/Text.h"

namespace quillmere {

bool IsSet(std::string_view storedTick)
{
    const std::string upper = UpperCase(Trim(storedTick));
    return upper == "1" || upper == "-1" || upper == "TRUE" || upper == "Y";
}

DataLink::DataLink(Session& session, Screen& screen, std::string_view table) : session(session), table(table)
{
    for (const auto& box : screen.Boxes())
        if (!box->Field().empty())
            bound.push_back(box.get());
}

std::string DataLink::Stored(const Box& box)
{
    if (box.GetKind() == Kind::Tick)
        return box.Ticked() ? "1" : "0";
    return box.Text();
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
    for (Box* box : bound)
        Take(*box, records.Field(box->Field()));
}

void DataLink::Take(Box& box, std::string_view text)
{
    if (box.GetKind() == Kind::Tick)
        box.SetTicked(IsSet(text));
    else
        box.SetText(text);
    shown[&box] = Stored(box);
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
    if (hasRecord)
        Show(records);
    return hasRecord;
}

void DataLink::Store()
{
    if (!hasRecord)
        return;
    std::vector<Box*> changed;
    for (Box* box : bound)
        if (Stored(*box) != shown[box])
            changed.push_back(box);
    if (changed.empty())
        return;
    Database opened = Database::OpenDatabase(key.database);
    Recordset records = opened.OpenRecordset(table);
    if (!Position(records, key)) {
        hasRecord = false;
        throw RecordGone();
    }
    records.Edit();
    for (const Box* box : changed)
        records.SetField(box->Field(), Stored(*box));
    records.Update();
    for (const Box* box : changed)
        shown[box] = Stored(*box);
}

void DataLink::Release()
{
    Store();
    hasRecord = false;
}

} // namespace quillmere
