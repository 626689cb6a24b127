#include "screens/ScheduleNotepad.h"

#include "clientdb/BoundScreen.h"
#include "clientdb/CurrentRecord.h"
#include "edition/Edition.h"

#include <string>
#include <vector>

namespace quillmere {

namespace {

/// Where a total stands among the fields of its member.
constexpr std::size_t CostTotal = 0, TaxTotal = 1, CashTotal = 2;

} // namespace

ScheduleNotepad::ScheduleNotepad(Session& session, const NotepadMember& member)
    : Screen(session, member.name, ShowMode::Modal,
             std::string(member.section) + session.CurrentEmployee + " (" + session.CurrentEmployer + ")"),
      member(member),
      schedule(*this, member.columns)
{
    for (const ScheduleColumn& column : member.columns)
        if (!column.total.empty())
            AddBox({.kind = Kind::Label, .amount = true}, std::string(column.total));
    AddBox({.kind = Kind::Button, .text = "&OK"}, "cmdOK");
    AddBox({.kind = Kind::Button, .text = "&Delete"}, "cmdDelete");
    AddBox({.kind = Kind::Button, .text = "&Cancel"}, "cmdCancel");
    SetButtons("cmdCancel", {});

    schedule.OnLeaveAmount([this](Box&) { Recalculate(); });
    OnClick("cmdOK", [this](Box&) { Ok(); });
    OnClick("cmdDelete", [this](Box&) { Delete(); });
    OnClick("cmdCancel", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool ScheduleNotepad::Load()
{
    try {
        LoadLines();
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return false;
    }
}

void ScheduleNotepad::LoadLines()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    const Recordset own = OpenCurrent(database, member.name, session);
    if (own.NoMatch())
        session.messages.Tell(member.loadingTitle, "Employee not found");
    else
        schedule.Load(own);

    const Recordset page = OpenCurrent(database, "P11D", session);
    if (page.NoMatch()) {
        session.messages.Tell(member.loadingTitle, "Employee not found");
        return;
    }
    for (std::size_t which = 0; which < member.totalFields.size(); ++which)
        if (const std::string_view field = member.totalFields[which]; !field.empty())
            box(member.columns[which + 1].total).SetText(page.Field(field));
}

void ScheduleNotepad::Activate()
{
    Recalculate();
}

void ScheduleNotepad::Recalculate()
{
    const auto text = [this](const ScheduleColumn& column, int line) {
        return column.Exists() ? schedule.At(column, line).Text() : std::string();
    };
    const auto put = [this](const ScheduleColumn& column, int line, const std::string& shown) {
        if (column.Exists())
            schedule.At(column, line).SetText(shown);
    };
    const ScheduleColumn& description = member.columns.front();
    std::vector<ScheduleLine> lines;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        schedule.At(description, line).TrimText();
        lines.push_back({text(member.Cost(), line), text(member.Tax(), line), text(member.Cash(), line)});
    }
    const ScheduleTotals totals = RecalculateSchedule(lines, member.kind);
    int number = 0;
    for (const ScheduleLine& line : lines) {
        ++number;
        put(member.Cost(), number, line.cost);
        put(member.Tax(), number, line.tax);
        put(member.Cash(), number, line.cash);
    }
    const auto show = [this](const ScheduleColumn& column, const std::string& total) {
        if (column.Exists())
            box(column.total).SetText(total);
    };
    show(member.Cost(), totals.cost);
    show(member.Tax(), totals.tax);
    show(member.Cash(), totals.cash);
}

/// A line whose tax exceeds its cost is told of; an empty box counts as nothing.
bool ScheduleNotepad::TaxIsWithinCost()
{
    if (member.inputTitle.empty())
        return true;
    for (int line = 1; line <= LinesOfASchedule; ++line) {
        if (ReadAmount(schedule.At(member.Tax(), line).Text()) <= ReadAmount(schedule.At(member.Cost(), line).Text()))
            continue;
        session.messages.Tell(member.inputTitle, "Tax is greater than the Cost on line: " + std::to_string(line));
        return false;
    }
    return true;
}

void ScheduleNotepad::Ok()
{
    if (!TaxIsWithinCost())
        return;
    try {
        Store();
    } catch (const StoreError&) {
        session.messages.Tell(member.okTitle, "Unable to update database");
        return;
    }
    PutOnPage();
    session.screens.Unload(Name());
}

void ScheduleNotepad::Store()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    Recordset own = OpenCurrent(database, member.name, session);
    Recordset page = OpenCurrent(database, "P11D", session);
    WriteBatch batch(database);
    schedule.Store(own);
    for (const std::size_t which : {CostTotal, TaxTotal, CashTotal})
        if (!member.totalFields[which].empty())
            StoreTotal(page, which);
    batch.Commit();
}

const std::string& ScheduleNotepad::Total(std::size_t which) const
{
    return box(member.columns[which + 1].total).Text();
}

/// The field that takes a total as it reads now.
std::string_view ScheduleNotepad::FieldOfTotal(std::size_t which) const
{
    return Total(which).empty() && !member.emptiedInstead.empty() ? member.emptiedInstead : member.totalFields[which];
}

/// Writes one total to the employee's record.
void ScheduleNotepad::StoreTotal(Recordset& records, std::size_t which)
{
    records.Edit();
    records.SetField(FieldOfTotal(which), Total(which));
    records.Update();
}

void ScheduleNotepad::Delete()
{
    schedule.Clear();
    for (const ScheduleColumn& column : member.columns)
        if (!column.total.empty())
            box(column.total).Clear();
}

/// Puts the stored totals on the page, and whether any line has a description.
void ScheduleNotepad::PutOnPage()
{
    auto* page = static_cast<BoundScreen*>(session.screens.Find(member.page));
    if (page == nullptr)
        return;
    for (std::size_t which = 0; which < member.totalFields.size(); ++which) {
        const std::string_view own = member.totalFields[which];
        if (own.empty())
            continue;
        if (FieldOfTotal(which) == own)
            page->TakeResult(own, Total(which), Total(which));
        else
            page->box(own).Clear(); // its own field is left to the page to store
    }
    if (!member.describedBox.empty())
        page->box(member.describedBox).SetText(schedule.HasDescription() ? edition::AsPerAttached : std::string_view());
}

} // namespace quillmere
