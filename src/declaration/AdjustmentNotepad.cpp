#include "declaration/AdjustmentNotepad.h"

#include "declaration/Class1A.h"
#include "declaration/P11DDeclaration.h"
#include "edition/Edition.h"
#include "frame/Session.h"

#include <string>

namespace quillmere {

AdjustmentNotepad::AdjustmentNotepad(Session& session, const AdjustmentSchedule& schedule)
    : Notepad(session, schedule.name, schedule.caption, schedule.name,
              {.loading = schedule.loadingError, .okIcon = Icon::Exclamation}),
      schedule(schedule),
      lines(*this, schedule.columns)
{
    AddBox({.readOnly = true, .amount = true}, std::string(schedule.AmountColumn().total));
    AddButtons();
    KeepBoxes();
    lines.OnLeaveAmount([this](Box&) { WorkOut(); });
}

bool AdjustmentNotepad::Load()
{
    if (!Notepad::Load())
        return false;
    session.screens.StartTimer(*this, schedule.timer, [this] { WorkOut(); });
    return true;
}

Recordset AdjustmentNotepad::OpenOwn(Database& database) const
{
    Recordset records = database.OpenRecordset(schedule.name);
    records.Index("PrimaryKey");
    records.Seek(session.CurrentEmployer);
    return records;
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
    box(schedule.AmountColumn().total).SetText(Class1AText(total));
}

/// The declaration stores them.
std::vector<Notepad::Result> AdjustmentNotepad::Results(const Recordset& /*own*/) const
{
    // Kept: one line or twenty, the declaration never shows a line's own description.
    const std::string_view description = lines.HasDescription() ? edition::AsPerAttached : std::string_view();
    return {{.field = std::string(schedule.target),
             .stored = {},
             .shown = TextOf(schedule.AmountColumn().total),
             .table = "P11DB"},
            {.field = std::string(schedule.targetDescription),
             .stored = {},
             .shown = std::string(description),
             .table = "P11DB"}};
}

bool AdjustmentNotepad::HandOver(const std::vector<Result>& results)
{
    if (auto* declaration = session.screens.Find<P11DDeclaration>())
        declaration->StartP11DBTimer();
    return Notepad::HandOver(results);
}

void AdjustmentNotepad::Delete()
{
    Notepad::Delete();
    box(schedule.AmountColumn().total).Clear();
}

} // namespace quillmere
