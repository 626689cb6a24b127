#include "clientdb/OpenRecord.h"

#include "clientdb/FurtherCars.h"
#include "clientdb/GoneRecord.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/ServerService.h"
#include "frame/CloseAll.h"
#include "frame/Text.h"

#include <algorithm>
#include <utility>

namespace quillmere {

const std::vector<std::shared_ptr<OpenRecord>>& OpenRecords(Session& session)
{
    if (session.openRecords.empty())
        for (const OpenRecord::Source& source : {OpenRecord::Source{.table = "P11D", .index = "IndKey"},
                                                 OpenRecord::Source{.table = "P11DB", .index = "PrimaryKey"}})
            session.openRecords.push_back(std::make_shared<OpenRecord>(session, source));
    return session.openRecords;
}

// ---- what is told

bool OpenRecord::Telling(const Screen* under, const std::function<void()>& work) const
{
    try {
        work();
        return true;
    } catch (const Failure& error) {
        session.messages.Tell(under->Caption(), error.what());
        return false;
    }
}

/// What stands in front has the word.
void OpenRecord::ShowNote() const
{
    ClearStatusNote(session, RecordGoneWords);
    for (const auto& record : OpenRecords(session))
        if (record->screen != nullptr && !record->isThere)
            return SetStatusNote(session, record->goneWords);
}

// ---- what is shown

OpenRecord::Key OpenRecord::Current() const
{
    return {.database = session.ClientDatabasePath(),
            .record = {.table = std::string(source.table),
                       .employer = session.CurrentEmployer,
                       .employee = source.index == "IndKey" ? session.CurrentEmployee : std::string()}};
}

OpenRecord::Sought OpenRecord::StoreAndShow(Screen& on, std::string_view errorTitle, const FurtherCarsAlong* along)
{
    if (!Telling(&on, [&] { Seek(on, along); }))
        return Sought::Failed;
    ShowNote();
    for (Onlooker* onlooker : session.onlookers)
        onlooker->Shown();
    if (isThere)
        return Sought::Found;
    session.messages.Tell(errorTitle, "Employee not found");
    return Sought::NotFound;
}

void OpenRecord::StoreAndShowAgain(std::string_view errorTitle)
{
    if (screen != nullptr)
        static_cast<void>(StoreAndShow(*screen, errorTitle));
}

void OpenRecord::Seek(Screen& on, const FurtherCarsAlong* along)
{
    Key to = Current();
    try {
        Write();
    } catch (const RecordGone&) {
        // Whoever looks for the very record that is gone is told so by not finding it.
        if (to != key)
            throw;
    }
    // Until the store has answered, the record shows where it did: what is typed meanwhile is not lost.
    Database opened = Database::OpenDatabase(to.database);
    if (along != nullptr)
        along->WillSeek(opened);
    Recordset records = opened.OpenRecordset(source.table);
    const bool wasThere = isThere && to == key;
    isThere = Position(records, to);
    if (!isThere && wasThere)
        Lose(opened);
    else if (isThere || to != key)
        goneWords = NotStoredWords;
    key = std::move(to);
    screen = &on;
    bound.clear();
    for (const auto& box : on.Boxes())
        if (!box->Field().empty())
            bound.push_back({.box = box.get(), .held = {}, .stored = {}});
    if (!isThere)
        return;
    if (along != nullptr)
        along->Read(opened);
    for (auto& [box, held, stored] : bound) {
        stored = records.Field(box->Field());
        box->ShowStored(stored);
        held = box->Stored();
    }
}

bool OpenRecord::Position(Recordset& records, const Key& to) const
{
    records.Index(source.index);
    if (source.index == "IndKey")
        records.Seek(to.record.employer, to.record.employee);
    else
        records.Seek(to.record.employer);
    return !records.NoMatch();
}

void OpenRecord::HandOver(std::string_view field, std::string_view text, const std::optional<std::string>& stored)
{
    for (BoundBox& of : bound) {
        if (of.box->Field() != field)
            continue;
        of.box->ShowStored(text);
        // What the record is to write is kept like anything typed; a closed box's figure follows from the others.
        of.box->MarkByHand(!stored);
        if (!stored)
            continue;
        of.held = *stored == text ? of.box->Stored() : *stored;
        of.stored = *stored;
    }
}

std::optional<std::string> OpenRecord::Reads(std::string_view field) const
{
    const auto found = std::ranges::find(bound, field, [](const BoundBox& of) { return of.box->Field(); });
    return found == bound.end() ? std::nullopt : std::optional(found->box->Stored());
}

void OpenRecord::Leave(const Screen& gone)
{
    if (!IsOn(gone))
        return;
    screen = nullptr;
    bound.clear();
    isThere = false;
}

// ---- what is written

void OpenRecord::Write()
{
    if (!isThere)
        return;
    const std::vector<BoundBox*> changed = Changed();
    if (changed.empty())
        return;
    try {
        WriteChanged(changed);
    } catch (const StoreError& failure) {
        // Whoever may only look has entered nothing: what follows from the other boxes is worked out again each time.
        if (!Typed().empty() || !MayOnlyLook(key.database, failure))
            throw;
    }
}

void OpenRecord::WriteChanged(const std::vector<BoundBox*>& changed)
{
    const UserOperation operation(session, ScreenWords(*screen) + " stored");
    Database opened = OpenForWriting(session, key.database);
    WriteBatch batch(opened);
    batch.Begin();
    Recordset records = opened.OpenRecordset(source.table);
    if (!Position(records, key)) {
        batch.Commit(); // nobody waits for what is locked while it is looked for
        Lose(opened);
        ShowNote();
        throw RecordGone();
    }
    const std::vector<Overwritten> overwritten = WrittenOver(records, changed);
    records.Edit();
    for (const BoundBox* of : changed)
        records.SetField(of->box->Field(), of->box->Stored());
    records.Update();
    batch.Commit();
    for (BoundBox* of : changed)
        of->held = of->stored = of->box->Stored();
    SayStored(session);
    TellOverwritten(session, screen->Caption(), overwritten);
}

/// What another desk has stored meanwhile in boxes that the user has changed as well.
std::vector<Overwritten> OpenRecord::WrittenOver(const Recordset& records, const std::vector<BoundBox*>& changed)
{
    std::vector<Overwritten> overwritten;
    for (const BoundBox* of : changed) {
        const std::string_view theirs = records.Field(of->box->Field());
        if (theirs != of->stored && Trim(theirs) != Trim(of->box->Stored()) && of->box->IsByHand() &&
            !of->box->ReadOnly())
            overwritten.emplace_back(*of->box, theirs, of->box->Stored());
    }
    return overwritten;
}

std::vector<OpenRecord::BoundBox*> OpenRecord::Changed()
{
    std::vector<BoundBox*> changed;
    for (BoundBox& of : bound)
        if (of.box->Stored() != of.held)
            changed.push_back(&of);
    return changed;
}

bool OpenRecord::Store()
{
    return Telling(screen, [this] {
        try {
            Write();
        } catch (const RecordGone&) {
            // The status bar says so from now on.
        }
    });
}

bool OpenRecord::MayClose()
{
    return Telling(screen, [this] { Write(); }) || !isThere;
}

void OpenRecord::Close(const Screen& closing)
{
    if (!IsOn(closing))
        return;
    static_cast<void>(MayClose());
    Leave(closing);
    ShowNote();
}

void OpenRecord::StoreOrKeep()
{
    static_cast<void>(Telling(screen, [this] {
        try {
            Write();
        } catch (const RecordGone&) {
            // There is nothing that it could come back to.
        } catch (const StoreError&) {
            KeepTyped(session, key.database, key.record, Typed());
        }
    }));
    isThere = false;
}

void OpenRecord::Lose(Database& database)
{
    isThere = true; // for whoever asks what is typed
    goneWords = LoseRecord(session, database, key.database, key.record, Typed());
    isThere = false;
}

std::vector<TypedEntries::Line> OpenRecord::Typed() const
{
    std::vector<TypedEntries::Line> lines;
    for (const BoundBox& of : bound)
        if (isThere && of.box->IsByHand() && !of.box->ReadOnly() && of.box->Stored() != of.held)
            lines.push_back({.record = key.record,
                             .entry = {.field = of.box->Field(), .stored = of.held, .typed = of.box->Stored()}});
    return lines;
}

} // namespace quillmere
