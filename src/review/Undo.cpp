#include "review/Undo.h"

#include "clientdb/Employees.h"
#include "clientdb/OpenRecord.h"
#include "clientdb/RecentEmployees.h"
#include "clientdb/UserOperation.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/Text.h"
#include "review/BoxNotes.h"
#include "review/FieldWords.h"
#include "screens/Form3.h"

#include <fmt/format.h>

namespace quillmere::review {

namespace {

constexpr std::string_view UndoTitle = "Undo";
constexpr std::string_view Undo = "Undo: ", Redo = "Redo: ";

/// So many things that stand in the way are told.
constexpr std::size_t MostTold = 8;

/// The words of what takes an operation back: an undo is done again.
std::string WordsOfUndo(std::string_view words)
{
    if (words.starts_with(Undo))
        return std::string(Redo).append(words.substr(Undo.size()));
    if (words.starts_with(Redo))
        words.remove_prefix(Redo.size());
    return std::string(Undo).append(words);
}

bool IsAnyoneOpen(const Session& session)
{
    return session.screens.Find<Form3>() != nullptr;
}

std::string ConflictText(const Session& session, const std::vector<UndoConflict>& conflicts)
{
    const FieldWords words(session.screens);
    std::string text = "It has not been undone, because this has been changed since:\n";
    for (std::size_t i = 0; i < conflicts.size() && i < MostTold; ++i) {
        const UndoConflict& conflict = conflicts[i];
        const std::string whose = conflict.employee.empty() ? conflict.employer : conflict.employee;
        const FieldWords::Words* const of = words.Of(conflict.table, conflict.field);
        switch (conflict.what) {
        case UndoConflict::What::Changed:
            if (conflict.field.empty()) {
                text += fmt::format("\n{}, {}: the record is not as it was left", whose, words.PlaceOf(conflict.table));
                break;
            }
            text += fmt::format("\n{}, {}, {}: was left \"{}\", is \"{}\"", whose,
                                of == nullptr ? words.PlaceOf(conflict.table) : of->place,
                                of == nullptr ? std::string(conflict.field) : of->box, Trim(conflict.left),
                                Trim(conflict.found));
            break;
        case UndoConflict::What::Gone:
            text += fmt::format("\n{}, {}: the record is gone", whose, words.PlaceOf(conflict.table));
            break;
        case UndoConflict::What::ThereAlready:
            text += fmt::format("\n{}, {}: there is a record of that name", whose, words.PlaceOf(conflict.table));
        }
    }
    if (conflicts.size() > MostTold)
        text += fmt::format("\n... and {} more", conflicts.size() - MostTold);
    return text;
}

/// Shows what is open as it is stored now. An employee who is not there any more is closed.
void ShowAgain(Session& session)
{
    RebuildRecent(session);
    if (!IsAnyoneOpen(session))
        return UnloadAllScreens(session); // lists of names that may be others now
    bool isThere = false;
    {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        isThere = EmployeeExists(database, session.CurrentEmployer, session.CurrentEmployee);
    }
    if (isThere) {
        EmployeeRecord(session).StoreAndShowAgain(UndoTitle);
        if (BoxNotes* notes = NotesOf(session))
            notes->LookAgain();
        return;
    }
    EmployeeRecord(session).DropChanges();
    UnloadAllScreens(session);
}

} // namespace

std::optional<PastOperation> NextToUndo(Session& session)
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    const History history(database);
    const std::string desk = session.platform.DeskName();
    return IsAnyoneOpen(session) ? history.LastBy(desk, session.CurrentEmployer, session.CurrentEmployee)
                                 : history.LastBy(desk);
}

std::string UndoWords(Session& session)
{
    try {
        if (const auto next = NextToUndo(session))
            return WordsOfUndo(next->words);
    } catch (const Failure&) {
        // It is told when somebody asks for it.
    }
    return std::string(UndoTitle);
}

void UndoLast(Session& session)
{
    if (!EmployeeRecord(session).Store())
        return;
    if (const auto next = NextToUndo(session))
        static_cast<void>(UndoOperation(session, *next));
    else
        SetStatusNote(session, "There is nothing to undo");
}

bool UndoOperation(Session& session, const PastOperation& operation)
{
    if (!EmployeeRecord(session).Store())
        return false;
    const std::string words = WordsOfUndo(operation.words);
    std::vector<UndoConflict> conflicts;
    try {
        const BusyPointer busy(session.platform);
        const UserOperation scope(session, words);
        Database database = OpenClients(session);
        conflicts = History(database).Undo(operation.number);
    } catch (const StoreError& failure) {
        session.messages.Tell(UndoTitle, failure.what());
        return false;
    }
    if (!conflicts.empty()) {
        session.messages.Tell(UndoTitle, ConflictText(session, conflicts), Icon::Information);
        return false;
    }
    ShowAgain(session);
    SetStatusNote(session, "Done - " + words);
    return true;
}

} // namespace quillmere::review
