#include "clientdb/DataLink.h"

#include "clientdb/Recordset.h"
#include "frame/Text.h"

namespace quillmere {

bool IsSet(std::string_view storedTick)
{
    const std::string upper = UpperCase(storedTick);
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

bool DataLink::Position(Recordset& records) const
{
    records.Index(index);
    if (index == "IndKey")
        records.Seek(part1, part2);
    else
        records.Seek(part1);
    return !records.NoMatch();
}

void DataLink::Show(Recordset& records)
{
    loading = true;
    for (Box* box : bound) {
        const std::string_view text = records.Field(box->Field());
        if (box->GetKind() == Kind::Tick)
            box->SetTicked(IsSet(text));
        else
            box->SetText(text);
        shown[box] = Stored(*box);
    }
    loading = false;
}

bool DataLink::Seek(std::string_view newIndex, std::string_view newPart1, std::string_view newPart2)
{
    Store();
    hasRecord = false;
    database = session.ClientDatabasePath();
    Database opened = Database::OpenDatabase(database);
    Recordset records = opened.OpenRecordset(table);
    index = newIndex;
    part1 = newPart1;
    part2 = newPart2;
    if (!Position(records))
        return false;
    hasRecord = true;
    Show(records);
    return true;
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
    Database opened = Database::OpenDatabase(database);
    Recordset records = opened.OpenRecordset(table);
    if (!Position(records))
        throw StoreError(3021, "No current record.", {});
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
