#include "clientdb/Notepad.h"

#include "clientdb/FurtherCars.h"
#include "clientdb/GoneRecord.h"
#include "clientdb/OpenRecord.h"
#include "clientdb/UserOperation.h"
#include "edition/Edition.h"
#include "frame/CloseAll.h"
#include "frame/Text.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace quillmere {

namespace {

/// The beginning of what the status bar says from an Ok to the next notepad.
constexpr std::string_view ReplacedNote = "Another desk had stored the same meanwhile; your entries replaced: ";

/// What the others have stored, as a list.
std::string TheirsIn(const std::vector<Overwritten>& replaced)
{
    std::string texts;
    for (const Overwritten& of : replaced)
        texts += (texts.empty() ? "" : ", ") + of.theirs;
    return texts;
}

/// The records that a notepad reads: its own, and those to which it hands its results.
void WillSeekRecords(Database& database, std::string_view table, const Session& session)
{
    const TableLevel level = FindTable(table).level;
    if (level == TableLevel::Employer)
        database.WillSeek(table, session.CurrentEmployer);
    if (level != TableLevel::Employee)
        return;
    for (const std::string_view sought : {std::string_view("P11D"), table})
        database.WillSeek(sought, session.CurrentEmployer, session.CurrentEmployee);
}

/// True if page 1, which adds up the further cars as soon as it is in front, may come there by an Ok.
bool AddsUpFurtherCars(std::string_view table, const Session& session)
{
    return FindTable(table).level == TableLevel::Employee && session.screens.IsShown("Form3");
}

/// The same for its Ok, and what is looked for by it.
void WillSeekForOk(Database& database, std::string_view table, const Session& session)
{
    WillSeekRecords(database, table, session);
    if (table == "FNotepad" || AddsUpFurtherCars(table, session))
        database.WillSeek("ExtraCars", session.CurrentEmployer, session.CurrentEmployee);
}

/// True if page 1 is to have the further cars of the Ok. Where they cannot be read it looks itself, and tells of that.
bool MayReadFurtherCars(Database& database, std::string_view table, const Session& session)
{
    if (!AddsUpFurtherCars(table, session))
        return false;
    try {
        static_cast<void>(OpenCurrent(database, "ExtraCars", session));
        return true;
    } catch (const StoreError&) {
        return false;
    }
}

} // namespace

Notepad::Notepad(Session& session, std::string_view name, std::string_view caption, std::string_view table,
                 const Words& words)
    : Screen(session, name, ShowMode::Modal, caption), table(table), words(words)
{
}

// ---- how a notepad is put together

void Notepad::AddButtons(std::string_view ok, std::string_view remove, std::string_view cancel)
{
    AddBox({.kind = BoxKind::Button, .text = "&OK"}, std::string(ok));
    AddBox({.kind = BoxKind::Button, .text = "&Delete"}, std::string(remove));
    AddBox({.kind = BoxKind::Button, .text = "&Cancel"}, std::string(cancel));
    BindButtons(ok, remove, cancel);
}

void Notepad::BindButtons(std::string_view ok, std::string_view remove, std::string_view cancel)
{
    SetButtons(cancel, {});
    OnClick(ok, [this](Box&) { Ok(); });
    if (!remove.empty())
        OnClick(remove, [this](Box&) { Delete(); });
}

void Notepad::Keep(std::string_view field, Box* box, int thing, int tab)
{
    entries.push_back(
        {.field = std::string(field), .box = box, .thing = thing, .tab = tab, .text = {}, .stored = {}, .opened = {}});
}

std::vector<Box*> Notepad::FieldBoxes(std::span<const std::string_view> writingOrder) const
{
    std::vector<Box*> named;
    for (const auto& control : Boxes())
        if (!control->Field().empty())
            named.push_back(control.get());
    std::ranges::stable_sort(named, {},
                             [&](const Box* control) { return std::ranges::find(writingOrder, control->Field()); });
    return named;
}

void Notepad::KeepBoxes(std::span<const std::string_view> writingOrder)
{
    for (Box* named : FieldBoxes(writingOrder)) {
        if (named->Index() == Box::NoIndex)
            Keep(named->Field(), named);
        else
            Keep(Numbered(named->Field(), named->Index()), named, named->Index());
    }
}

std::vector<std::string> Notepad::Fields() const
{
    std::vector<std::string> fields;
    for (const Entry& entry : entries)
        if (!entry.field.empty())
            fields.push_back(entry.field);
    return fields;
}

Notepad::Shown Notepad::WhereShown(std::string_view field) const
{
    const Entry& entry = EntryOf(field);
    return {.box = entry.box, .tab = entry.tab};
}

void Notepad::ShowTab(int tab)
{
    if (tab != shownTab)
        TurnTo(tab);
}

std::vector<TypedEntries::Line> Notepad::Typed() const
{
    std::vector<TypedEntries::Line> lines;
    if (isStored || FindTable(table).level == TableLevel::Database)
        return lines;
    const bool isOfEmployee = FindTable(table).level == TableLevel::Employee;
    for (const Entry& entry : entries)
        if (!entry.field.empty() && entry.box != nullptr && !entry.box->ReadOnly() && !entry.box->IsComputed() &&
            Reads(entry) != entry.opened)
            lines.push_back({.record = {.table = table,
                                        .employer = session.CurrentEmployer,
                                        .employee = isOfEmployee ? session.CurrentEmployee : std::string()},
                             .entry = {.field = entry.field, .stored = entry.opened, .typed = Reads(entry)}});
    return lines;
}

// ---- the opening

bool Notepad::Load()
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        WillSeekRecords(database, table, session);
        Open(database);
    } catch (const StoreError& error) {
        session.messages.Tell(words.failed.empty() ? Caption() : words.failed,
                              words.failure.empty() ? error.what() : words.failure);
        return false;
    }
    TabShown();
    for (Entry& entry : entries)
        entry.opened = Reads(entry);
    ClearStatusNote(session, ReplacedNote);
    return true;
}

void Notepad::Unload()
{
    for (Onlooker* onlooker : session.onlookers)
        onlooker->GivenUp(*this);
}

void Notepad::Open(Database& database)
{
    if (const Recordset own = FindOwn(database, words.loading); !own.NoMatch()) {
        wasThere = true;
        for (Entry& entry : entries)
            if (!entry.field.empty())
                entry.stored = own.Field(entry.field);
        for (Entry& entry : entries)
            ShowStored(entry);
    }
    if (!words.loadingPage.empty())
        if (const Recordset page = FindEmployee(database, "P11D", words.loadingPage); !page.NoMatch())
            ShowPage(page);
}

Recordset Notepad::OpenOwn(Database& database) const
{
    return OpenCurrent(database, table, session);
}

Recordset Notepad::FindOwn(Database& database, std::string_view title) const
{
    Recordset records = OpenOwn(database);
    if (records.NoMatch() && !title.empty())
        session.messages.Tell(title, "Employee not found");
    return records;
}

Recordset Notepad::FindEmployee(Database& database, std::string_view ofTable, std::string_view title) const
{
    Recordset records = OpenCurrent(database, ofTable, session);
    if (records.NoMatch() && !title.empty())
        session.messages.Tell(title, "Employee not found");
    return records;
}

// ---- what is kept

std::string Notepad::Reads(const Entry& entry) const
{
    return IsInBox(entry) ? entry.box->Stored() : entry.text;
}

const Notepad::Entry& Notepad::EntryOf(std::string_view field) const
{
    const auto found = std::ranges::find(entries, field, &Entry::field);
    if (found == entries.end())
        throw std::logic_error(Name() + " keeps no field " + std::string(field));
    return *found;
}

void Notepad::Show(Entry& entry, std::string_view text)
{
    entry.text = text;
    if (IsInBox(entry))
        entry.box->ShowStored(text);
}

void Notepad::TurnTo(int tab)
{
    WorkOut([this, tab] {
        for (Entry& entry : entries)
            entry.text = Reads(entry);
        shownTab = tab;
        for (Entry& entry : entries)
            Show(entry, entry.text);
        TabShown();
        Recalculate();
    });
}

// ---- the work

void Notepad::WorkOut()
{
    WorkOut([this] { Recalculate(); });
}

void Notepad::WorkOut(const std::function<void()>& work)
{
    std::vector<Entry*> untouched;
    for (Entry& entry : entries)
        if (Reads(entry) == entry.opened)
            untouched.push_back(&entry);
    work();
    for (Entry* entry : untouched)
        entry->opened = Reads(*entry);
}

// ---- the buttons

void Notepad::Ok()
{
    const FurtherCarsAlong forTheOk(session);
    std::vector<Result> results;
    if (MayStore() && Store(results) && HandOver(results))
        session.screens.Unload(Name());
    else
        isStored = false;
}

std::optional<std::vector<Notepad::Written>> Notepad::WhatOkWrites(const Recordset& own)
{
    if (!MayStore())
        return std::nullopt;
    std::vector<Written> written;
    for (const Entry& entry : entries)
        if (!entry.field.empty())
            written.push_back({table, entry.field, Reads(entry)});
    for (const Result& result : Results(own))
        if (result.stored || result.shown)
            written.push_back(
                {std::string(result.table), result.field, result.stored ? *result.stored : *result.shown});
    return written;
}

bool Notepad::MayStore()
{
    WorkOut();
    return true;
}

bool Notepad::Store(std::vector<Result>& results)
{
    const UserOperation operation(session, ScreenWords(*this) + ", OK");
    try {
        Database database = OpenClients(session);
        WriteBatch batch(database);
        WillSeekForOk(database, table, session);
        const bool isMissing = OpenOwn(database).NoMatch();
        const bool isPageMissing = !words.okMissingPage.empty() && OpenCurrent(database, "P11D", session).NoMatch();
        if (isMissing || isPageMissing)
            batch.Commit(); // nobody waits for what is locked while a message stands
        if (isMissing && wasThere)
            Lose(database);
        if (isMissing && !words.okMissing.empty())
            session.messages.Tell(words.okMissing, "Employee not found");
        if (isMissing && words.missingEnds)
            return false;
        if (isPageMissing)
            session.messages.Tell(words.okMissingPage, "Employee not found");
        batch.Begin();
        Recordset own = OpenOwn(database);
        std::vector<Overwritten> replaced;
        if (!own.NoMatch()) {
            TakeOver(own);
            replaced = Replaced(own);
        }
        const bool readsFurtherCars = MayReadFurtherCars(database, table, session);
        Write(own);
        results = Results(own);
        StoreResults(results, database);
        if (readsFurtherCars)
            session.furtherCars = std::make_shared<const FurtherCars>(database, session);
        batch.Commit();
        isStored = true;
        SayStored(session);
        if (!replaced.empty()) {
            SetStatusNote(session, std::string(ReplacedNote) + TheirsIn(replaced));
            session.furtherCars.reset(); // they may be others when the message is gone
        }
        TellOverwritten(session, Caption(), replaced);
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(words.ok.empty() ? Caption() : words.ok,
                              words.okFailure.empty() ? error.what() : words.okFailure, words.okIcon);
        return false;
    }
}

/// Another desk has taken the record away since it was opened.
void Notepad::Lose(Database& database) const
{
    const std::vector<TypedEntries::Line> typed = Typed();
    if (!typed.empty())
        SetStatusNote(session,
                      LoseRecord(session, database, session.ClientDatabasePath(), typed.front().record, typed));
}

void Notepad::StoreResults(const std::vector<Result>& results, Database& database) const
{
    std::optional<Recordset> records;
    std::string_view inHand;
    for (const Result& result : results) {
        if (!result.stored)
            continue;
        if (inHand != result.table)
            records = OpenCurrent(database, result.table, session);
        inHand = result.table;
        StoreField(*records, result.field, *result.stored);
    }
}

void Notepad::TakeOver(const Recordset& own)
{
    std::set<int> touched;
    const auto isTouched = [&](const Entry& entry) {
        return entry.thing == 0 ? Reads(entry) != entry.opened : touched.contains(entry.thing);
    };
    for (const Entry& entry : entries)
        if (Reads(entry) != entry.opened)
            touched.insert(entry.thing);
    std::vector<Entry*> taken;
    for (Entry& entry : entries)
        if (!entry.field.empty() && !isTouched(entry) && own.Field(entry.field) != entry.stored)
            taken.push_back(&entry);
    if (taken.empty())
        return;
    WorkOut([&] {
        for (Entry* entry : taken) {
            entry->stored = own.Field(entry->field);
            ShowStored(*entry);
        }
        TabShown();
        Recalculate();
    });
}

std::vector<Overwritten> Notepad::Replaced(const Recordset& own) const
{
    std::vector<Overwritten> replaced;
    for (const Entry& entry : entries) {
        if (entry.field.empty() || entry.box == nullptr || entry.box->ReadOnly())
            continue;
        const std::string_view theirs = own.Field(entry.field);
        if (theirs != entry.stored && Trim(theirs) != Trim(Reads(entry)) && !Trim(theirs).empty())
            replaced.emplace_back(*entry.box, theirs, Reads(entry));
    }
    return replaced;
}

void Notepad::Write(Recordset& own) const
{
    for (const Entry& entry : entries)
        if (!entry.field.empty())
            StoreField(own, entry.field, Reads(entry));
}

bool Notepad::HandOver(const std::vector<Result>& results)
{
    for (const auto& record : OpenRecords(session))
        for (const Result& result : results)
            if (result.shown && result.table == record->Table())
                record->HandOver(result.field, *result.shown, result.stored);
    return true;
}

void Notepad::Delete()
{
    for (Entry& entry : entries)
        if (IsInBox(entry))
            entry.box->Clear();
}

void Notepad::SetAmount(std::string_view boxName, Amount amount)
{
    box(boxName).SetText(AmountText(amount, edition::FormatMoneyBlankZero));
}

void Notepad::SetNumber(std::string_view boxName, double number)
{
    box(boxName).SetText(PlainNumberBlankZero(number));
}

void Notepad::ClearBoxes(std::span<const std::string_view> boxNames)
{
    for (const std::string_view boxName : boxNames)
        box(boxName).Clear();
}

std::string NotepadCaption(std::string_view words, const Session& session)
{
    return std::string(words) + OpenEmployeeInWords(session);
}

} // namespace quillmere
