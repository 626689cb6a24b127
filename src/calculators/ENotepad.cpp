#include "calculators/ENotepad.h"

#include "calculators/CalculatorFacts.h"
#include "edition/NotepadWords.h"

namespace quillmere {

namespace {

/// In the order in which the record is written.
constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "CarVan", .kind = BoxKind::Label, .text = "Car or van", .letter = 'V'},
    {.name = "Motorcycle", .kind = BoxKind::Label, .text = "Motorcycle", .letter = 'M'},
    {.name = "Bicycle", .kind = BoxKind::Label, .text = "Bicycle", .letter = 'B'},
    {.name = "ABox", .field = "ABox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BBox", .field = "BBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "CBox", .field = "CBox", .readOnly = true, .amount = true},
    {.name = "DBox", .field = "DBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "JBox", .field = "JBox", .readOnly = true, .amount = true},
    {.name = "KBox", .field = "KBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "LBox", .field = "LBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "MBox", .field = "MBox", .readOnly = true, .amount = true},
    {.name = "QBox", .field = "QBox", .readOnly = true, .amount = true},
});

constexpr auto Entered = std::to_array<std::string_view>({"ABox", "BBox", "DBox", "KBox", "LBox"});

// Kept: the letter D in the title of this notepad.
constexpr std::string_view LoadingErrorTitle = "Notepad D - loading error";

} // namespace

ENotepad::ENotepad(Session& session)
    : TabbedNotepad(session, "ENotepad", NotepadCaption("Mileage allowance and passenger payments - ", session),
                    {.loading = LoadingErrorTitle,
                     .loadingPage = LoadingErrorTitle,
                     .failed = "Notepad E Error",
                     .ok = "Notepad E Error"},
                    {"CarVan", "Motorcycle", "Bicycle"})
{
    AddBoxes(Rows);
    AddButtons();
    KeepTabs();
    for (const std::string_view entered : Entered)
        OnLeave(entered, [this](Box&) { WorkOut(); });
}

void ENotepad::TabShown()
{
    TabbedNotepad::TabShown();
    for (Box* shown : FieldBoxes())
        if (shown->Text() == "0")
            shown->Clear();
}

void ENotepad::Recalculate()
{
    const MileageWorking working = MileageBenefit(ReadMileage(OnScreen(*this), static_cast<Vehicle>(Tab() - 1)));
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

std::vector<Notepad::Result> ENotepad::Results(const Recordset& /*own*/) const
{
    const MileageTotal total = TotalOfMileage(Row("QBox"));
    return {{.field = "ETaxAmount", .stored = total.stored, .shown = total.box}};
}

} // namespace quillmere
