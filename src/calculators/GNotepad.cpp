#include "calculators/GNotepad.h"

#include "edition/Edition.h"
#include "edition/NotepadWords.h"
#include "frame/Dates.h"
#include "frame/Text.h"

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Van1", .kind = Kind::Label, .text = "Van 1", .letter = '1'},
    {.name = "Van2", .kind = Kind::Label, .text = "Van 2", .letter = '2'},
    {.name = "Van3", .kind = Kind::Label, .text = "Van 3", .letter = '3'},
    {.name = "VanRegNumber"},
    {.name = "ABox", .readOnly = true, .amount = true},
    {.name = "DateFrom1", .filter = DateKeyFilter},
    {.name = "DateTo1", .filter = DateKeyFilter},
    {.name = "BBox", .readOnly = true, .amount = true},
    {.name = "DateFrom2", .filter = DateKeyFilter},
    {.name = "DateTo2", .filter = DateKeyFilter},
    {.name = "CBox", .readOnly = true, .amount = true},
    {.name = "DateFrom3", .filter = DateKeyFilter},
    {.name = "DateTo3", .filter = DateKeyFilter},
    {.name = "DBox", .filter = MoneyKeyFilter, .amount = true, .computed = true},
    {.name = "EBox", .readOnly = true, .amount = true},
    {.name = "FFormula", .kind = Kind::Label, .text = edition::notepad::VanReductionFormula},
    {.name = "FBox", .readOnly = true, .amount = true},
    {.name = "GBox", .filter = MoneyKeyFilter, .amount = true, .computed = true},
    {.name = "HBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "JBox", .readOnly = true, .amount = true},
    {.name = "KBox", .readOnly = true, .amount = true},
    {.name = "LBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "MBox", .readOnly = true, .amount = true},
    {.name = "VanFuelTick", .kind = Kind::Tick, .text = "Fuel Benefit Required?"},
    {.name = "PBox", .readOnly = true, .amount = true},
    {.name = "DateWithdrawn", .filter = DateKeyFilter},
    {.name = "RBox", .readOnly = true, .amount = true},
    {.name = "SBox", .readOnly = true, .amount = true},
    {.name = "TFormula", .kind = Kind::Label, .text = edition::notepad::VanFuelReductionFormula},
    {.name = "TBox", .readOnly = true, .amount = true},
    {.name = "VBox", .readOnly = true, .amount = true},
    {.name = "WBox", .readOnly = true, .amount = true},
    {.name = "XBox", .readOnly = true, .amount = true},
    {.name = "EBox2", .hidden = true}, // Kept: a spare box that nothing writes.
});

/// The grid's rows, in the order in which the record is written.
constexpr auto GridRows = std::to_array<BoundBox>({
    {"VanFuelTick", "FuelVanTick"},
    {"ABox", "ABox"},
    {"BBox", "BBox"},
    {"CBox", "CBox"},
    {"DBox", "DBox"},
    {"EBox", "EBox"},
    {"FBox", "FBox"},
    {"GBox", "GBox"},
    {"HBox", "HBox"},
    {"JBox", "JBox"},
    {"LBox", "LBox"},
    {"MBox", "MBox"},
    {"KBox", "KBox"},
    {"VanRegNumber", "RegNumber"},
    {"DateFrom1", "DateFrom1"},
    {"DateTo1", "DateTo1"},
    {"DateFrom2", "DateFrom2"},
    {"DateTo2", "DateTo2"},
    {"DateFrom3", "DateFrom3"},
    {"DateTo3", "DateTo3"},
    {"RBox", "RBox"},
    {"SBox", "SBox"},
    {"TBox", "TBox"},
    {"VBox", "VBox"},
    {"WBox", "WBox"},
    {"XBox", "XBox"},
    {"DateWithdrawn", "DateFuelWithdrawn"},
});

/// The date boxes in the order of VanDate.
constexpr auto DateBoxes = std::to_array<std::string_view>(
    {"DateFrom1", "DateTo1", "DateFrom2", "DateTo2", "DateFrom3", "DateTo3", "DateWithdrawn"});

/// In the captions it stands for the days of the tax year.
constexpr std::string_view DaysInYearMark = "%DIY%";

} // namespace

std::string WithDaysOfYear(std::string_view caption)
{
    std::string text(caption);
    if (const std::size_t mark = text.find(DaysInYearMark); mark != std::string::npos)
        text.replace(mark, DaysInYearMark.size(), std::to_string(DaysInYear(ReadWholeNumber(edition::YearEndYear))));
    return text;
}

GNotepad::GNotepad(Session& session)
    : TabbedNotepad(session, "GNotepad", NotepadCaption("Vans - ", session),
                    {.loading = "Notepad G - loading error", .failed = {}, .ok = "Notepad G 'Ok' Error"},
                    {.table = "GNotepad", .tabs = {"Van1", "Van2", "Van3"}, .rows = GridRows})
{
    AddBoxes(Rows);
    AddButtons();
    BindTabs();
    for (const BoundBox& row : GridRows)
        OnLeave(row.box, [this](Box&) { Recalculate(); });
    for (std::size_t place = 0; place < DateBoxes.size(); ++place)
        OnLeave(DateBoxes[place], [this, place](Box&) { LeaveDate(static_cast<VanDate>(place)); });
    OnLeave("VanRegNumber", [this](Box& number) { LeaveRegistrationNumber(number); });
    OnClick("VanFuelTick", [this](Box&) { ClickFuelTick(); });
}

bool GNotepad::Load()
{
    for (const std::string_view formula : {"FFormula", "TFormula"})
        box(formula).SetText(WithDaysOfYear(TextOf(formula)));
    if (!OpenGrid())
        return false;
    session.screens.StartTimer(*this, "Timer1", [this] { Recalculate(); });
    return true;
}

void GNotepad::ColumnShown()
{
    box("PBox").Clear();
    OpenDateWithdrawn();
    datesBefore = Dates();
}

void GNotepad::OpenDateWithdrawn()
{
    box("DateWithdrawn").SetReadOnly(!box("VanFuelTick").Ticked());
}

VanDates GNotepad::Dates() const
{
    VanDates dates;
    for (std::size_t place = 0; place < DateBoxes.size(); ++place)
        dates.texts[place] = TextOf(DateBoxes[place]);
    return dates;
}

void GNotepad::Recalculate()
{
    Write(VanBenefit({.registrationNumber = TextOf("VanRegNumber"),
                      .dates = Dates(),
                      .percentage = TextOf("HBox"),
                      .payments = TextOf("LBox"),
                      .fuelTick = box("VanFuelTick").Ticked()}));
}

void GNotepad::Write(const VanWorking& working)
{
    SetAmount("ABox", working.A);
    SetNumber("BBox", working.B);
    SetNumber("CBox", working.C);
    SetNumber("DBox", working.D);
    SetNumber("EBox", working.E);
    SetAmount("FBox", working.F);
    SetAmount("GBox", working.G);
    SetNumber("HBox", working.H.Pounds());
    SetAmount("JBox", working.J);
    SetAmount("KBox", working.K);
    SetAmount("LBox", working.L);
    SetAmount("MBox", working.M);
    SetAmount("PBox", working.P);
    SetNumber("RBox", working.R);
    SetNumber("SBox", working.S);
    SetAmount("TBox", working.T);
    SetAmount("VBox", working.V);
    SetAmount("WBox", working.W);
    SetAmount("XBox", working.X);
    WriteDates(working.dates);
}

void GNotepad::WriteDates(const VanDates& dates)
{
    for (std::size_t place = 0; place < DateBoxes.size(); ++place)
        box(DateBoxes[place]).SetText(dates.texts[place]);
    datesBefore = dates;
}

void GNotepad::LeaveDate(VanDate left)
{
    WriteDates(LeaveVanDate(datesBefore, Dates(), left));
    Recalculate();
}

void GNotepad::LeaveRegistrationNumber(Box& number)
{
    number.SetText(UpperCase(number.Text()));
    Recalculate();
}

void GNotepad::ClickFuelTick()
{
    if (!box("VanFuelTick").Ticked())
        box("DateWithdrawn").Clear();
    OpenDateWithdrawn();
    Recalculate();
}

void GNotepad::Delete()
{
    ClearColumn();
    OpenDateWithdrawn();
    Recalculate();
}

void GNotepad::Ok()
{
    Recalculate();
    SaveColumn();
    const VanTotals totals = TotalOfVans(Row("MBox"), Row("XBox"));
    const bool stored = StoreAll([&](Database& database) {
        Recordset own = FindEmployee(database, "GNotepad", titles.loading);
        StoreGrid(own);
        Recordset page = OpenCurrent(database, "P11D", session);
        StoreField(page, "GVan", totals.storedVan);
        StoreField(page, "GVanFuel", totals.storedFuel);
    });
    if (!stored)
        return;
    PutOnPage("Side2Form1", "GVan", totals.van, totals.storedVan);
    PutOnPage("Side2Form1", "GVanFuel", totals.fuel, totals.storedFuel);
    session.screens.Unload(Name());
}

} // namespace quillmere
