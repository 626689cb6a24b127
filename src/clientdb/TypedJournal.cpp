#include "clientdb/TypedJournal.h"

#include "clientdb/CurrentRecord.h"
#include "clientdb/Notepad.h"
#include "clientdb/OpenRecord.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/CheckedFile.h"
#include "frame/CloseAll.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace quillmere {

namespace {

constexpr std::chrono::seconds BetweenWrites(2);

bool IsOfSameField(const TypedEntries::Line& one, const TypedEntries::Line& other)
{
    return one.record == other.record && one.entry.field == other.entry.field;
}

bool SaysTheSame(const TypedEntries::Line& one, const TypedEntries::Line& other)
{
    return IsOfSameField(one, other) && one.entry.typed == other.entry.typed;
}

/// Puts a line behind the others, in place of an older one of its field.
void PutOver(std::vector<TypedEntries::Line>& lines, const TypedEntries::Line& line)
{
    std::erase_if(lines, [&](const TypedEntries::Line& old) { return IsOfSameField(old, line); });
    lines.push_back(line);
}

/// The layout of a record's table; nullptr for one of another version, or that somebody has written by hand.
const TableLayout* LayoutOf(const TypedEntries::Record& record)
{
    const auto tables = ClientTables();
    const auto table = std::ranges::find(tables, record.table, &TableLayout::name);
    const bool isKnown = table != tables.end() &&
                         table->level == (record.employee.empty() ? TableLevel::Employer : TableLevel::Employee);
    return isKnown ? &*table : nullptr;
}

bool Knows(const TypedEntries::Line& line)
{
    const TableLayout* const layout = LayoutOf(line.record);
    return layout != nullptr && FieldsOf(*layout).Find(line.entry.field) != TableFields::None;
}

/// What the store holds in the line's field; nothing if the record is not there.
std::optional<std::string> TextIn(Database& database, const TypedEntries::Line& line)
{
    const Recordset records = OpenAt(database, line.record);
    return records.NoMatch() ? std::nullopt : std::optional<std::string>(records.Field(line.entry.field));
}

} // namespace

TypedJournal::TypedJournal(Session& of) : session(of), writing(of.platform, BetweenWrites, [this] { Write(); })
{
}

/// One run of the program at a time has its folder.
std::string TypedJournal::Desk() const
{
    return session.platform.DeskName() + " " + session.programFolder.string();
}

bool TypedJournal::IsOpen(const TypedEntries::Record& record) const
{
    return session.screens.Find("Form3") != nullptr && record.employer == session.CurrentEmployer &&
           (record.employee.empty() || record.employee == session.CurrentEmployee);
}

// ---- keeping

void TypedJournal::GivenUp(const Screen& screen)
{
    const auto* const notepad = dynamic_cast<const Notepad*>(&screen);
    if (notepad == nullptr)
        return;
    const std::string now = MomentNow(session);
    for (TypedEntries::Line& line : notepad->Typed()) {
        line.entry.moment = now;
        PutOver(cancelled, line);
    }
}

void TypedJournal::Closed()
{
    std::erase_if(cancelled, [this](const TypedEntries::Line& line) { return !IsOpen(line.record); });
    WriteWhereKept();
    writing.Ask();
}

void TypedJournal::WriteWhereKept()
{
    if (!written.empty())
        Write();
}

std::vector<TypedEntries::Line> TypedJournal::Pending()
{
    std::vector<TypedEntries::Line> pending = cancelled;
    for (const auto& record : session.openRecords)
        for (const TypedEntries::Line& line : record->Typed())
            PutOver(pending, line);
    for (const Screen* screen : session.screens.Open())
        if (const auto* const notepad = dynamic_cast<const Notepad*>(screen))
            for (const TypedEntries::Line& line : notepad->Typed())
                PutOver(pending, line);
    const std::string now = MomentNow(session);
    for (TypedEntries::Line& line : pending) {
        const auto same = std::ranges::find_if(written, [&](const auto& old) { return SaysTheSame(old, line); });
        line.entry.moment = same == written.end() ? now : same->entry.moment;
    }
    return pending;
}

void TypedJournal::Write()
{
    if (hasEnded)
        return;
    std::vector<TypedEntries::Line> pending = Pending();
    if (pending == written)
        return;
    try {
        TakeOver(session.ClientDatabasePath());
        TypedEntries(database).KeepOf(Desk(), pending);
        written = std::move(pending);
    } catch (const FileError& failure) {
        TellOnce(failure.what());
    }
}

void TypedJournal::TellOnce(std::string_view why)
{
    if (!std::exchange(isTold, true))
        SetStatusNote(session, "What is typed cannot be kept against a crash: " + std::string(why));
}

/// What an earlier run of this desk was at when it ended waits from now on.
void TypedJournal::TakeOver(const std::filesystem::path& newDatabase)
{
    if (database == newDatabase)
        return;
    if (!written.empty())
        TypedEntries(database).KeepOf(Desk(), {});
    written.clear();
    TypedEntries(newDatabase).Release(Desk());
    database = newDatabase;
}

void TypedJournal::LeaveForNextStart()
{
    Write();
    hasEnded = true;
    try {
        if (!written.empty())
            TypedEntries(database).Release(Desk());
    } catch (const FileError&) {
        // The next start of this desk takes it over.
    }
}

// ---- what waits

std::vector<TypedEntries::Line> TypedJournal::Waiting()
{
    try {
        TakeOver(session.ClientDatabasePath());
    } catch (const FileError&) {
        // What can be read is offered all the same.
    }
    const std::string today = MomentNow(session).substr(0, std::string_view("yyyy-mm-dd").size());
    std::vector<TypedEntries::Line> waiting;
    // Another desk is still at what it has typed today; what it has left from another day it will not come back to.
    for (const TypedEntries::Line& line : TypedEntries(session.ClientDatabasePath()).All())
        if (IsOpen(line.record) &&
            (line.desk.empty() || (line.desk != Desk() && !line.entry.moment.starts_with(today))))
            PutOver(waiting, line);
    for (const TypedEntries::Line& line : cancelled)
        if (IsOpen(line.record))
            PutOver(waiting, line);
    if (waiting.empty())
        return waiting;
    Database opened = Database::OpenDatabase(session.ClientDatabasePath());
    std::erase_if(waiting, [&](const TypedEntries::Line& line) {
        return !Knows(line) || TextIn(opened, line).value_or(line.entry.typed) == line.entry.typed;
    });
    return waiting;
}

void TypedJournal::Forget(const std::vector<TypedEntries::Line>& lines)
{
    std::erase_if(cancelled, [&](const TypedEntries::Line& line) {
        return std::ranges::any_of(lines, [&](const auto& gone) { return SaysTheSame(gone, line); });
    });
    Write();
    TypedEntries(session.ClientDatabasePath()).Forget(lines);
}

void CarryWaiting(Session& session, Database& database, const TypedEntries::Record& from,
                  const TypedEntries::Record& to)
{
    const TypedEntries entries(session.ClientDatabasePath());
    if (entries.All().empty())
        return;
    try {
        entries.Rename([&](const TypedEntries::Record& record) {
            const bool isMeant =
                record.employer == from.employer && (from.employee.empty() || record.employee == from.employee);
            if (!isMeant || LayoutOf(record) == nullptr || !OpenAt(database, record).NoMatch())
                return record;
            return TypedEntries::Record{.table = record.table,
                                        .employer = to.employer,
                                        .employee = from.employee.empty() ? record.employee : to.employee};
        });
    } catch (const FileError& failure) {
        SetStatusNote(session, "What waits to be stored keeps the old name: " + std::string(failure.what()));
    }
}

} // namespace quillmere
