#include "declaration/AdjustmentNotepad.h"

#include "clientdb/store/Recordset.h"
#include "declaration/Class1A.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "frame/Session.h"

#include <string>

namespace quillmere {

AdjustmentNotepad::AdjustmentNotepad(Session& session, const AdjustmentSchedule& schedule)
    : Screen(session, schedule.name, ShowMode::Modal, schedule.caption),
      schedule(schedule),
      lines(*this, schedule.columns)
{
    AddBox({.readOnly = true, .amount = true}, std::string(schedule.AmountColumn().total));
    AddBox({.kind = Kind::Button, .text = "&OK"}, "Ok");
    AddBox({.kind = Kind::Button, .text = "&Delete"}, "Delete");
    AddBox({.kind = Kind::Button, .text = "&Cancel"}, "Cancel");
    SetButtons("Cancel", {});

    lines.OnLeaveAmount([this](Box&) { Recalculate(); });
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
        return false;
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
    if (records.NoMatch())
        session.messages.Tell(schedule.loadingError, "Employee not found");
    else
        lines.Load(records);
}

void AdjustmentNotepad::Recalculate()
{
    Amount total;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        Box& amount = lines.At(schedule.AmountColumn(), line);
        std::string text = amount.Text();
        RewriteAndAdd(text, total);
        amount.SetText(text);
    }
    Total().SetText(Class1AText(total));
}

void AdjustmentNotepad::Ok()
{
    Recalculate();
    try {
        StoreLines();
    } catch (const StoreError&) {
        session.messages.Tell(Caption(), "Unable to update database");
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
    lines.Store(records);
    batch.Commit();
}

/// Puts the result into the declaration, which then brings itself up to date.
void AdjustmentNotepad::HandBack()
{
    auto* declaration = dynamic_cast<P11DDeclaration*>(session.screens.Find("P11DDeclaration"));
    if (declaration == nullptr)
        return;
    declaration->box(schedule.target).SetText(Total().Text());
    // Kept: one line or twenty, the declaration never shows a line's own description.
    declaration->box(schedule.targetDescription)
        .SetText(lines.HasDescription() ? edition::AsPerAttached : std::string_view());
    declaration->StartP11DBTimer();
}

void AdjustmentNotepad::Delete()
{
    lines.Clear();
    Total().Clear();
}

} // namespace quillmere
