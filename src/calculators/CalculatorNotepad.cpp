#include "calculators/CalculatorNotepad.h"

#include "clientdb/BoundScreen.h"
#include "edition/Edition.h"

#include <array>

namespace quillmere {

std::span<const BoxRow> NotepadButtons()
{
    static constexpr auto Rows = std::to_array<BoxRow>({
        {.name = "Ok", .kind = Kind::Button, .text = "&OK"},
        {.name = "Delete", .kind = Kind::Button, .text = "&Delete"},
        {.name = "Cancel", .kind = Kind::Button, .text = "&Cancel"},
    });
    return Rows;
}

CalculatorNotepad::CalculatorNotepad(Session& session, std::string_view name, std::string_view caption,
                                     const Titles& titles)
    : Screen(session, name, ShowMode::Modal, caption), titles(titles)
{
}

void CalculatorNotepad::AddButtons()
{
    AddBoxes(NotepadButtons());
    SetButtons("Cancel", {});
    OnClick("Ok", [this](Box&) { Ok(); });
    OnClick("Delete", [this](Box&) { Delete(); });
    OnClick("Cancel", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool CalculatorNotepad::Open(const std::function<void(Database&)>& work, std::string_view failure)
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        work(database);
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(titles.failed.empty() ? Caption() : titles.failed,
                              failure.empty() ? error.what() : failure);
        return false;
    }
}

bool CalculatorNotepad::StoreAll(const std::function<void(Database&)>& work, std::string_view failure)
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        WriteBatch batch(database);
        work(database);
        batch.Commit();
        return true;
    } catch (const StoreError&) {
        session.messages.Tell(titles.ok, failure, Icon::Critical);
        return false;
    }
}

Recordset CalculatorNotepad::FindEmployee(Database& database, std::string_view table, std::string_view title)
{
    Recordset records = OpenCurrent(database, table, session);
    if (records.NoMatch())
        session.messages.Tell(title, "Employee not found");
    return records;
}

void CalculatorNotepad::SetAmount(std::string_view boxName, Amount amount)
{
    box(boxName).SetText(AmountText(amount, edition::FormatMoneyBlankZero));
}

void CalculatorNotepad::SetNumber(std::string_view boxName, double number)
{
    box(boxName).SetText(PlainNumberBlankZero(number));
}

void CalculatorNotepad::ClearBoxes(std::span<const std::string_view> boxNames)
{
    for (const std::string_view boxName : boxNames)
        box(boxName).Clear();
}

void CalculatorNotepad::PutOnPage(std::string_view page, std::string_view boxName, std::string_view text,
                                  std::string_view stored)
{
    if (auto* bound = static_cast<BoundScreen*>(session.screens.Find(page)))
        bound->TakeResult(boxName, text, stored);
}

std::string NotepadCaption(std::string_view words, const Session& session)
{
    return std::string(words) + session.CurrentEmployee + " (" + session.CurrentEmployer + ")";
}

void ShowStored(Screen& screen, const Recordset& records, std::span<const BoundBox> rows)
{
    for (const BoundBox& row : rows) {
        if (const std::string_view stored = records.Field(row.field); !stored.empty())
            screen.box(row.box).ShowStored(stored);
    }
}

void StoreBoxes(const Screen& screen, Recordset& records, std::span<const BoundBox> rows)
{
    for (const BoundBox& row : rows)
        StoreField(records, row.field, screen.box(row.box).Stored());
}

} // namespace quillmere
