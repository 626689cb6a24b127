#include "calculators/JNotepad.h"

#include "calculators/CalculatorFacts.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "ABox", .field = "ABox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "EmployerCost", .field = "EmployerCost", .filter = MoneyKeyFilter, .amount = true},
    {.name = "EmployeeCost", .field = "EmployeeCost", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BBox", .readOnly = true, .amount = true},
    {.name = "CBox", .field = "CBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "DBox", .field = "DBox", .readOnly = true, .amount = true},
    {.name = "QualExp", .field = "QualExp", .filter = MoneyKeyFilter, .amount = true},
    {.name = "EBox", .field = "EBox", .readOnly = true, .amount = true},
    {.name = "FBox", .readOnly = true, .amount = true},
});

/// The fields, in the order in which they are written.
constexpr auto WritingOrder = std::to_array<std::string_view>({
    "ABox",
    "EmployerCost",
    "EmployeeCost",
    "CBox",
    "DBox",
    "EBox",
    "QualExp",
});

constexpr std::string_view FieldOfPage = "JRelocationExp";

constexpr std::string_view LoadingErrorTitle = "Notepad J - loading error";

} // namespace

JNotepad::JNotepad(Session& session)
    : Notepad(session, "JNotepad", NotepadCaption("Qualifying relocation expenses payments and benefits - ", session),
              "JNotepad",
              {.loading = LoadingErrorTitle,
               .loadingPage = LoadingErrorTitle,
               .failed = "Notepad J Error",
               .ok = "Notepad J 'Ok' Error"})
{
    AddBoxes(Rows);
    AddButtons();
    KeepBoxes(WritingOrder);
    for (const BoxRow& row : Rows)
        OnLeave(row.name, [this](Box&) { WorkOut(); });
    OnLeave("EmployeeCost", [this](Box& cost) { LeaveEmployeeCost(cost); });
}

void JNotepad::ShowPage(const Recordset& page)
{
    box("FBox").SetText(page.Field(FieldOfPage));
}

void JNotepad::Recalculate()
{
    const RelocationWorking working = RelocationBenefit(ReadRelocation(OnScreen(*this)));
    if (!working.computed)
        return;
    SetAmount("ABox", working.A);
    SetAmount("EmployerCost", working.employerCost);
    SetAmount("EmployeeCost", working.employeeCost);
    SetAmount("BBox", working.B);
    SetAmount("CBox", working.C);
    SetAmount("DBox", working.D);
    SetAmount("QualExp", working.qualExp);
    box("EBox").SetText(working.EText());
    box("FBox").SetText(working.FText());
}

void JNotepad::LeaveEmployeeCost(Box& cost)
{
    if (!DoesEmployeeCostStand(cost.Text(), TextOf("EmployerCost")))
        cost.Clear();
    WorkOut();
}

std::vector<Notepad::Result> JNotepad::Results(const Recordset& /*own*/) const
{
    return {{.field = std::string(FieldOfPage), .stored = TextOf("FBox"), .shown = TextOf("FBox")}};
}

void JNotepad::Delete()
{
    for (const BoxRow& row : Rows)
        box(row.name).Clear();
}

} // namespace quillmere
