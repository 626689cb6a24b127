#include "declaration/AdjustmentNotepad.h"

#include "clientdb/Recordset.h"
#include "declaration/Class1A.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "frame/Session.h"
#include "frame/Text.h"

#include <string>

namespace quillmere {

AdjustmentNotepad::AdjustmentNotepad(Session& session, const AdjustmentSchedule& schedule)
    : Screen(session, schedule.name, ShowMode::Modal, schedule.caption), schedule(schedule)
{
    for (int line = 1; line <= LinesOfAdjustments; ++line) {
        const std::string description = "Description, line " + std::to_string(line);
        const std::string amount = std::string(schedule.amountCaption) + ", line " + std::to_string(line);
        AddBox({.spoken = description}, "Description", line);
        AddBox({.filter = SignedMoneyKeyFilter, .spoken = amount, .amount = true}, std::string(schedule.amount), line);
    }
    AddBox({.spoken = "Total", .readOnly = true, .amount = true}, std::string(schedule.total));
    AddBox({.kind = Kind::Button, .text = "&OK"}, "Ok");
    AddBox({.kind = Kind::Button, .text = "&Delete"}, "Delete");
    AddBox({.kind = Kind::Button, .text = "&Cancel"}, "Cancel");
    SetButtons("Cancel", {});

    OnLeave(schedule.amount, [this](Box&) { Recalculate(); });
    OnClick("Ok", [this](Box&) { Ok(); });
    OnClick("Delete", [this](Box&) { Delete(); });
    OnClick("Cancel", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool AdjustmentNotepad::Load()
{
    try {
        LoadLines();
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
    }
    session.screens.StartTimer(*this, schedule.timer, [this] { Recalculate(); });
    return true;
}

void AdjustmentNotepad::LoadLines()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    Recordset records = database.OpenRecordset(schedule.name);
    records.Index("PrimaryKey");
    records.Seek(session.CurrentEmployer);
    if (records.NoMatch()) {
        database.Close();
        session.messages.Tell(schedule.loadingError, "Employee not found");
        return;
    }
    for (int line = 1; line <= LinesOfAdjustments; ++line) {
        Description(line).SetText(records.Field(Numbered("Description", line)));
        AmountOf(line).SetText(records.Field(Numbered(schedule.amount, line)));
    }
}

void AdjustmentNotepad::Recalculate()
{
    std::array<std::string, LinesOfAdjustments> amounts;
    for (int line = 1; line <= LinesOfAdjustments; ++line) {
        Box& amount = AmountOf(line);
        amounts[static_cast<std::size_t>(line - 1)] = amount.Text();
        if (!amount.Empty())
            amount.SetText(AmountText(ReadAmount(amount.Text()), edition::FormatMoneyBlankZero));
    }
    box(schedule.total).SetText(AdjustmentTotalText(amounts));
}

void AdjustmentNotepad::Ok()
{
    Recalculate();
    try {
        StoreLines();
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return;
    }
    HandBack();
    session.screens.Unload(Name());
}

void AdjustmentNotepad::StoreLines()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    WriteBatch batch(database);
    Recordset records = database.OpenRecordset(schedule.name);
    records.Index("PrimaryKey");
    records.Seek(session.CurrentEmployer);
    const auto store = [&records](std::string_view stem, int line, const Box& from) {
        records.Edit();
        records.SetField(Numbered(stem, line), from.Text());
        records.Update();
    };
    for (int line = 1; line <= LinesOfAdjustments; ++line) {
        store("Description", line, Description(line));
        store(schedule.amount, line, AmountOf(line));
    }
    batch.Commit();
}

/// Puts the result into the declaration, which then brings itself up to date.
void AdjustmentNotepad::HandBack()
{
    auto* declaration = dynamic_cast<P11DDeclaration*>(session.screens.Find("P11DDeclaration"));
    if (declaration == nullptr)
        return;
    std::array<std::string, LinesOfAdjustments> descriptions;
    for (int line = 1; line <= LinesOfAdjustments; ++line)
        descriptions[static_cast<std::size_t>(line - 1)] = Description(line).Text();
    declaration->box(schedule.target).SetText(box(schedule.total).Text());
    declaration->box(schedule.targetDescription).SetText(AdjustmentDescription(descriptions));
    declaration->StartP11DBTimer();
}

void AdjustmentNotepad::Delete()
{
    for (int line = 1; line <= LinesOfAdjustments; ++line) {
        Description(line).Clear();
        AmountOf(line).Clear();
    }
    box(schedule.total).Clear();
}

} // namespace quillmere
