#include "calculators/ENotepad.h"

#include "calculators/MileageBenefit.h"
#include "edition/NotepadWords.h"

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "CarVan", .kind = Kind::Label, .text = "Car or van", .letter = 'V'},
    {.name = "Motorcycle", .kind = Kind::Label, .text = "Motorcycle", .letter = 'M'},
    {.name = "Bicycle", .kind = Kind::Label, .text = "Bicycle", .letter = 'B'},
    {.name = "ABox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "CBox", .readOnly = true, .amount = true},
    {.name = "DBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "JBox", .readOnly = true, .amount = true},
    {.name = "KBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "LBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "MBox", .readOnly = true, .amount = true},
    {.name = "QBox", .readOnly = true, .amount = true},
});

/// The grid's rows, in the order in which the record is written.
constexpr auto GridRows = std::to_array<BoundBox>({
    {"ABox", "ABox"},
    {"BBox", "BBox"},
    {"CBox", "CBox"},
    {"DBox", "DBox"},
    {"JBox", "JBox"},
    {"KBox", "KBox"},
    {"LBox", "LBox"},
    {"MBox", "MBox"},
    {"QBox", "QBox"},
});

constexpr auto Entered = std::to_array<std::string_view>({"ABox", "BBox", "DBox", "KBox", "LBox"});

} // namespace

ENotepad::ENotepad(Session& session)
    : TabbedNotepad(session, "ENotepad", NotepadCaption("Mileage allowance and passenger payments - ", session),
                    // Kept: the letter D in the title of this notepad.
                    {.loading = "Notepad D - loading error", .failed = "Notepad E Error", .ok = "Notepad E Error"},
                    {.table = "ENotepad", .tabs = {"CarVan", "Motorcycle", "Bicycle"}, .rows = GridRows})
{
    AddBoxes(Rows);
    AddButtons();
    BindTabs();
    for (const std::string_view entered : Entered)
        OnLeave(entered, [this](Box&) { Recalculate(); });
}

void ENotepad::ColumnShown()
{
    for (const BoundBox& row : GridRows)
        if (Box& shown = box(row.box); shown.Text() == "0")
            shown.Clear();
}

void ENotepad::Recalculate()
{
    const MileageWorking working = MileageBenefit({.vehicle = static_cast<Vehicle>(Current() - 1),
                                                   .ABox = TextOf("ABox"),
                                                   .BBox = TextOf("BBox"),
                                                   .DBox = TextOf("DBox"),
                                                   .KBox = TextOf("KBox"),
                                                   .LBox = TextOf("LBox")});
    SetAmount("ABox", working.A);
    SetAmount("BBox", working.B);
    SetAmount("CBox", working.C);
    SetNumber("DBox", working.D);
    SetAmount("JBox", working.J);
    SetAmount("KBox", working.K);
    SetNumber("LBox", working.L);
    SetAmount("MBox", working.M);
    SetAmount("QBox", working.Q);
}

void ENotepad::Ok()
{
    Recalculate();
    SaveColumn();
    const MileageTotal total = TotalOfMileage(Row("QBox"));
    const bool stored = StoreAll([&](Database& database) {
        Recordset own = OpenCurrent(database, "ENotepad", session);
        StoreGrid(own);
        Recordset page = OpenCurrent(database, "P11D", session);
        StoreField(page, "ETaxAmount", total.stored);
    });
    if (!stored)
        return;
    PutOnPage("Form3", "ETaxAmount", total.box, total.stored);
    session.screens.Unload(Name());
}

} // namespace quillmere
