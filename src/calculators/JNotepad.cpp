#include "calculators/JNotepad.h"

#include "calculators/RelocationBenefit.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "ABox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "EmployerCost", .filter = MoneyKeyFilter, .amount = true},
    {.name = "EmployeeCost", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BBox", .readOnly = true, .amount = true},
    {.name = "CBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "DBox", .readOnly = true, .amount = true},
    {.name = "QualExp", .filter = MoneyKeyFilter, .amount = true},
    {.name = "EBox", .readOnly = true, .amount = true},
    {.name = "FBox", .readOnly = true, .amount = true},
});

/// Fields of the notepad's own table, in the order in which they are written.
constexpr auto Stored = std::to_array<BoundBox>({
    {"ABox", "ABox"},
    {"EmployerCost", "EmployerCost"},
    {"EmployeeCost", "EmployeeCost"},
    {"CBox", "CBox"},
    {"DBox", "DBox"},
    {"EBox", "EBox"},
    {"QualExp", "QualExp"},
});
constexpr auto StoredOnPage = std::to_array<BoundBox>({{"FBox", "JRelocationExp"}});

} // namespace

JNotepad::JNotepad(Session& session)
    : CalculatorNotepad(
          session, "JNotepad", NotepadCaption("Qualifying relocation expenses payments and benefits - ", session),
          {.loading = "Notepad J - loading error", .failed = "Notepad J Error", .ok = "Notepad J 'Ok' Error"})
{
    AddBoxes(Rows);
    AddButtons();
    for (const BoxRow& row : Rows)
        OnLeave(row.name, [this](Box&) { Recalculate(); });
    OnLeave("EmployeeCost", [this](Box& cost) { LeaveEmployeeCost(cost); });
}

bool JNotepad::Load()
{
    return Open([this](Database& database) {
        if (const Recordset own = FindEmployee(database, "JNotepad", titles.loading); !own.NoMatch())
            ShowStored(*this, own, Stored);
        if (const Recordset page = FindEmployee(database, "P11D", titles.loading); !page.NoMatch())
            ShowStored(*this, page, StoredOnPage);
    });
}

void JNotepad::Recalculate()
{
    const RelocationWorking working = RelocationBenefit({.ABox = TextOf("ABox"),
                                                         .EmployerCost = TextOf("EmployerCost"),
                                                         .EmployeeCost = TextOf("EmployeeCost"),
                                                         .CBox = TextOf("CBox"),
                                                         .QualExp = TextOf("QualExp")});
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
    Recalculate();
}

void JNotepad::Ok()
{
    Recalculate();
    const bool stored = StoreAll([this](Database& database) {
        Recordset own = OpenCurrent(database, "JNotepad", session);
        StoreBoxes(*this, own, Stored);
        Recordset page = OpenCurrent(database, "P11D", session);
        StoreBoxes(*this, page, StoredOnPage);
    });
    if (!stored)
        return;
    PutOnPage("Side2Form1", "JRelocation", TextOf("FBox"), TextOf("FBox"));
    session.screens.Unload(Name());
}

void JNotepad::Delete()
{
    for (const BoxRow& row : Rows)
        box(row.name).Clear();
}

} // namespace quillmere
