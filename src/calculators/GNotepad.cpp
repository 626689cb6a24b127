#include "calculators/GNotepad.h"

#include "calculators/CalculatorFacts.h"
#include "edition/Edition.h"
#include "edition/NotepadWords.h"
#include "frame/Dates.h"
#include "frame/Text.h"

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Van1", .kind = BoxKind::Label, .text = "Van 1", .letter = '1'},
    {.name = "Van2", .kind = BoxKind::Label, .text = "Van 2", .letter = '2'},
    {.name = "Van3", .kind = BoxKind::Label, .text = "Van 3", .letter = '3'},
    {.name = "VanRegNumber", .field = "RegNumber"},
    {.name = "ABox", .field = "ABox", .readOnly = true, .amount = true},
    {.name = "DateFrom1", .field = "DateFrom1", .filter = DateKeyFilter},
    {.name = "DateTo1", .field = "DateTo1", .filter = DateKeyFilter},
    {.name = "BBox", .field = "BBox", .readOnly = true, .amount = true},
    {.name = "DateFrom2", .field = "DateFrom2", .filter = DateKeyFilter},
    {.name = "DateTo2", .field = "DateTo2", .filter = DateKeyFilter},
    {.name = "CBox", .field = "CBox", .readOnly = true, .amount = true},
    {.name = "DateFrom3", .field = "DateFrom3", .filter = DateKeyFilter},
    {.name = "DateTo3", .field = "DateTo3", .filter = DateKeyFilter},
    {.name = "DBox", .field = "DBox", .filter = MoneyKeyFilter, .amount = true, .computed = true},
    {.name = "EBox", .field = "EBox", .readOnly = true, .amount = true},
    {.name = "FFormula", .kind = BoxKind::Label, .text = edition::notepad::VanReductionFormula},
    {.name = "FBox", .field = "FBox", .readOnly = true, .amount = true},
    {.name = "GBox", .field = "GBox", .filter = MoneyKeyFilter, .amount = true, .computed = true},
    {.name = "HBox", .field = "HBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "JBox", .field = "JBox", .readOnly = true, .amount = true},
    {.name = "KBox", .field = "KBox", .readOnly = true, .amount = true},
    {.name = "LBox", .field = "LBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "MBox", .field = "MBox", .readOnly = true, .amount = true},
    {.name = "VanFuelTick", .kind = BoxKind::Tick, .field = "FuelVanTick", .text = "Fuel Benefit Required?"},
    {.name = "PBox", .readOnly = true, .amount = true},
    {.name = "DateWithdrawn", .field = "DateFuelWithdrawn", .filter = DateKeyFilter},
    {.name = "RBox", .field = "RBox", .readOnly = true, .amount = true},
    {.name = "SBox", .field = "SBox", .readOnly = true, .amount = true},
    {.name = "TFormula", .kind = BoxKind::Label, .text = edition::notepad::VanFuelReductionFormula},
    {.name = "TBox", .field = "TBox", .readOnly = true, .amount = true},
    {.name = "VBox", .field = "VBox", .readOnly = true, .amount = true},
    {.name = "WBox", .field = "WBox", .readOnly = true, .amount = true},
    {.name = "XBox", .field = "XBox", .readOnly = true, .amount = true},
    {.name = "EBox2", .hidden = true}, // Kept: a spare box that nothing writes.
});

/// The fields, in the order in which they are written.
constexpr auto WritingOrder = std::to_array<std::string_view>({
    "FuelVanTick", "ABox",    "BBox", "CBox", "DBox",      "EBox",      "FBox",    "GBox",      "HBox",
    "JBox",        "LBox",    "MBox", "KBox", "RegNumber", "DateFrom1", "DateTo1", "DateFrom2", "DateTo2",
    "DateFrom3",   "DateTo3", "RBox", "SBox", "TBox",      "VBox",      "WBox",    "XBox",      "DateFuelWithdrawn",
});

/// The date boxes in the order of VanDate.
constexpr auto DateBoxes = std::to_array<std::string_view>(
    {"DateFrom1", "DateTo1", "DateFrom2", "DateTo2", "DateFrom3", "DateTo3", "DateWithdrawn"});

/// In the captions it stands for the days of the tax year.
constexpr std::string_view DaysInYearMark = "%DIY%";

constexpr std::string_view MissingTitle = "Notepad G - loading error";

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
                    {.loading = MissingTitle,
                     .loadingPage = MissingTitle,
                     .ok = "Notepad G 'Ok' Error",
                     .okMissing = MissingTitle},
                    {"Van1", "Van2", "Van3"})
{
    AddBoxes(Rows);
    AddButtons();
    KeepTabs(WritingOrder);
    for (const Box* stored : FieldBoxes())
        OnLeave(stored->Name(), [this](Box&) { WorkOut(); });
    for (std::size_t place = 0; place < DateBoxes.size(); ++place)
        OnLeave(DateBoxes[place], [this, place](Box&) { LeaveDate(static_cast<VanDate>(place)); });
    OnLeave("VanRegNumber", [this](Box& number) { LeaveRegistrationNumber(number); });
    OnClick("VanFuelTick", [this](Box&) { ClickFuelTick(); });
}

bool GNotepad::Load()
{
    for (const std::string_view formula : {"FFormula", "TFormula"})
        box(formula).SetText(WithDaysOfYear(TextOf(formula)));
    if (!TabbedNotepad::Load())
        return false;
    session.screens.StartTimer(*this, "Timer1", [this] { WorkOut(); });
    return true;
}

void GNotepad::TabShown()
{
    TabbedNotepad::TabShown();
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
    Put(VanBenefit(ReadVan(OnScreen(*this))));
}

void GNotepad::Put(const VanWorking& working)
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
    WorkOut();
}

void GNotepad::LeaveRegistrationNumber(Box& number)
{
    number.SetText(UpperCase(number.Text()));
    WorkOut();
}

void GNotepad::ClickFuelTick()
{
    if (!box("VanFuelTick").Ticked())
        box("DateWithdrawn").Clear();
    OpenDateWithdrawn();
    WorkOut();
}

void GNotepad::Delete()
{
    Notepad::Delete();
    OpenDateWithdrawn();
    WorkOut();
}

std::vector<Notepad::Result> GNotepad::Results(const Recordset& /*own*/) const
{
    const VanTotals totals = TotalOfVans(Row("MBox"), Row("XBox"));
    return {{.field = "GVan", .stored = totals.storedVan, .shown = totals.van},
            {.field = "GVanFuel", .stored = totals.storedFuel, .shown = totals.fuel}};
}

} // namespace quillmere
