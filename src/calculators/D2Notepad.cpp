#include "calculators/D2Notepad.h"

#include "calculators/CalculatorFacts.h"
#include "calculators/DNotepad.h"
#include "edition/NotepadWords.h"

#include <array>
#include <utility>

namespace quillmere {

namespace {

/// Box E is not stored.
constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "FBox", .field = "AddChargeF", .filter = MoneyKeyFilter, .amount = true},
    {.name = "Info", .kind = BoxKind::Label, .text = "What counts as cost", .letter = 'W'},
    {.name = "GBox", .field = "AddChargeG", .filter = MoneyKeyFilter, .amount = true},
    {.name = "HBox", .field = "AddChargeH", .readOnly = true, .amount = true},
    {.name = "JBox", .field = "AddChargeJ", .readOnly = true, .amount = true},
    {.name = "KBox", .field = "AddChargeK", .readOnly = true, .amount = true},
    {.name = "AddChargeDays", .field = "AddChargeDays", .filter = WholeNumberKeyFilter, .amount = true},
    {.name = "LBox", .field = "AddChargeL", .readOnly = true, .amount = true},
    {.name = "MBox", .field = "AddChargeM", .filter = MoneyKeyFilter, .amount = true},
    {.name = "NBox", .field = "AddChargeN", .filter = MoneyKeyFilter, .amount = true},
    {.name = "PBox", .field = "AddChargeP", .readOnly = true, .amount = true},
    {.name = "QBox", .field = "AddChargeQ", .readOnly = true, .amount = true},
    {.name = "EBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "RBox", .field = "AddChargeR", .readOnly = true, .amount = true},
});

/// The fields, in the order in which they are written.
constexpr auto WritingOrder = std::to_array<std::string_view>({
    "AddChargeF",
    "AddChargeG",
    "AddChargeH",
    "AddChargeJ",
    "AddChargeK",
    "AddChargeL",
    "AddChargeM",
    "AddChargeN",
    "AddChargeP",
    "AddChargeQ",
    "AddChargeR",
    "AddChargeDays",
});

constexpr auto Computed = std::to_array<std::string_view>({"HBox", "JBox", "KBox", "LBox", "PBox", "QBox", "RBox"});

constexpr std::string_view LoadingErrorTitle = "Notepad D2 - loading error";
constexpr std::string_view UpdateErrorTitle = "Notepad D - update error";

} // namespace

D2Notepad::D2Notepad(Session& session)
    : Notepad(session, "D2Notepad", "Notepad D - The additional charge", "DNotepad",
              {.loading = LoadingErrorTitle,
               .loadingPage = LoadingErrorTitle,
               .failed = "Notepad D Error",
               .ok = "Notepad D 'Ok' Error",
               .okMissing = UpdateErrorTitle,
               .okMissingPage = UpdateErrorTitle})
{
    AddBoxes(Rows);
    AddButtons();
    KeepBoxes(WritingOrder);
    for (const Box* stored : FieldBoxes())
        OnLeave(stored->Name(), [this](Box&) { WorkOut(); });
    OnLeave("EBox", [this](Box&) { WorkOut(); });
    OnLeave("FBox", [this](Box& cost) { LeaveCost(cost); });
    OnLeave("AddChargeDays", [this](Box& days) { LeaveDays(days); });
    OnClick("Info", [this](Box&) { this->session.screens.Show("D2InfoNotepad"); });
}

void D2Notepad::Open(Database& database)
{
    Notepad::Open(database);
    ShowBasicCharge(OpenOwn(database));
}

/// Box E and N come from the basic charge: as it reads on its notepad, else as it is stored.
void D2Notepad::ShowBasicCharge(const Recordset& records)
{
    const Screen* basicCharge = session.screens.Find<DNotepad>();
    for (const auto& [boxName, source] : {std::pair("EBox", "BasicChargeE"), std::pair("NBox", "BasicChargeD")}) {
        if (basicCharge != nullptr)
            box(boxName).SetText(basicCharge->box(source).Text());
        else if (!records.NoMatch())
            box(boxName).SetText(records.Field(source));
    }
}

void D2Notepad::Recalculate()
{
    const AdditionalChargeWorking working = AdditionalCharge(ReadAdditionalCharge(OnScreen(*this), TextOf("EBox")));
    if (!working.computed)
        return ClearBoxes(Computed);
    SetAmount("FBox", working.F);
    SetAmount("GBox", working.G);
    SetAmount("HBox", working.H);
    SetAmount("JBox", working.J);
    SetAmount("KBox", working.K);
    SetNumber("AddChargeDays", working.days);
    SetAmount("LBox", working.L);
    SetAmount("MBox", working.M);
    SetAmount("NBox", working.N);
    SetAmount("PBox", working.P);
    SetAmount("QBox", working.Q);
    SetAmount("EBox", working.E);
    SetAmount("RBox", working.R);
}

void D2Notepad::LeaveCost(const Box& cost)
{
    if (IsCostTooLow(cost.Text()))
        session.messages.Tell("Value too low", edition::notepad::AccommodationCostTooLow);
    WorkOut();
}

void D2Notepad::LeaveDays(Box& days)
{
    if (AreDaysOutOfRange(days.Text())) {
        session.messages.Tell("Out of range", edition::notepad::AccommodationDaysOutOfRange);
        days.Clear();
    }
    WorkOut();
}

void D2Notepad::Delete()
{
    Notepad::Delete();
    box("EBox").Clear();
}

D2InfoNotepad::D2InfoNotepad(Session& session)
    : Screen(session, "D2InfoNotepad", ShowMode::Modal, "Calculating the Cost of Accommodation")
{
    AddBox({.kind = BoxKind::Button, .text = "&Close Box"}, "Close");
    SetButtons("Close", "Close");
}

} // namespace quillmere
