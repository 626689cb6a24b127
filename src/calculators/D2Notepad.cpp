#include "calculators/D2Notepad.h"

#include "calculators/AccommodationBenefit.h"
#include "edition/NotepadWords.h"

#include <array>
#include <utility>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "FBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "Info", .kind = Kind::Label, .text = "What counts as cost", .letter = 'W'},
    {.name = "GBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "HBox", .readOnly = true, .amount = true},
    {.name = "JBox", .readOnly = true, .amount = true},
    {.name = "KBox", .readOnly = true, .amount = true},
    {.name = "AddChargeDays", .filter = WholeNumberKeyFilter, .amount = true},
    {.name = "LBox", .readOnly = true, .amount = true},
    {.name = "MBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "NBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "PBox", .readOnly = true, .amount = true},
    {.name = "QBox", .readOnly = true, .amount = true},
    {.name = "EBox", .filter = MoneyKeyFilter, .amount = true},
    {.name = "RBox", .readOnly = true, .amount = true},
});

/// The fields, in the order in which they are written. Box E is not stored.
constexpr auto Stored = std::to_array<BoundBox>({
    {"FBox", "AddChargeF"},
    {"GBox", "AddChargeG"},
    {"HBox", "AddChargeH"},
    {"JBox", "AddChargeJ"},
    {"KBox", "AddChargeK"},
    {"LBox", "AddChargeL"},
    {"MBox", "AddChargeM"},
    {"NBox", "AddChargeN"},
    {"PBox", "AddChargeP"},
    {"QBox", "AddChargeQ"},
    {"RBox", "AddChargeR"},
    {"AddChargeDays", "AddChargeDays"},
});

constexpr auto Computed = std::to_array<std::string_view>({"HBox", "JBox", "KBox", "LBox", "PBox", "QBox", "RBox"});

constexpr std::string_view UpdateErrorTitle = "Notepad D - update error";

} // namespace

D2Notepad::D2Notepad(Session& session)
    : CalculatorNotepad(
          session, "D2Notepad", "Notepad D - The additional charge",
          {.loading = "Notepad D2 - loading error", .failed = "Notepad D Error", .ok = "Notepad D 'Ok' Error"})
{
    AddBoxes(Rows);
    AddButtons();
    for (const BoundBox& row : Stored)
        OnLeave(row.box, [this](Box&) { Recalculate(); });
    OnLeave("EBox", [this](Box&) { Recalculate(); });
    OnLeave("FBox", [this](Box& cost) { LeaveCost(cost); });
    OnLeave("AddChargeDays", [this](Box& days) { LeaveDays(days); });
    OnClick("Info", [this](Box&) { this->session.screens.Show("D2InfoNotepad"); });
}

bool D2Notepad::Load()
{
    return Open([this](Database& database) {
        const Recordset own = FindEmployee(database, "DNotepad", titles.loading);
        FindEmployee(database, "P11D", titles.loading);
        if (!own.NoMatch())
            ShowStored(*this, own, Stored);
        ShowBasicCharge(own);
    });
}

/// Box E and N come from the basic charge: as it reads on its notepad, else as it is stored.
void D2Notepad::ShowBasicCharge(const Recordset& records)
{
    const Screen* basicCharge = session.screens.Find("DNotepad");
    for (const auto& [boxName, source] : {std::pair("EBox", "BasicChargeE"), std::pair("NBox", "BasicChargeD")}) {
        if (basicCharge != nullptr)
            box(boxName).SetText(basicCharge->box(source).Text());
        else if (!records.NoMatch())
            box(boxName).SetText(records.Field(source));
    }
}

void D2Notepad::Recalculate()
{
    const AdditionalChargeWorking working = AdditionalCharge({.FBox = TextOf("FBox"),
                                                              .GBox = TextOf("GBox"),
                                                              .AddChargeDays = TextOf("AddChargeDays"),
                                                              .MBox = TextOf("MBox"),
                                                              .NBox = TextOf("NBox"),
                                                              .EBox = TextOf("EBox")});
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
    Recalculate();
}

void D2Notepad::LeaveDays(Box& days)
{
    if (AreDaysOutOfRange(days.Text())) {
        session.messages.Tell("Out of range", edition::notepad::AccommodationDaysOutOfRange);
        days.Clear();
    }
    Recalculate();
}

void D2Notepad::Ok()
{
    const bool stored = StoreAll([this](Database& database) {
        Recordset own = FindEmployee(database, "DNotepad", UpdateErrorTitle);
        FindEmployee(database, "P11D", UpdateErrorTitle);
        StoreBoxes(*this, own, Stored);
    });
    if (stored)
        session.screens.Unload(Name());
}

void D2Notepad::Delete()
{
    for (const BoundBox& row : Stored)
        box(row.box).Clear();
    box("EBox").Clear();
}

D2InfoNotepad::D2InfoNotepad(Session& session)
    : Screen(session, "D2InfoNotepad", ShowMode::Modal, "Calculating the Cost of Accommodation")
{
    AddBox({.kind = Kind::Button, .text = "&Close Box"}, "Close");
    SetButtons("Close", "Close");
    OnClick("Close", [this](Box&) { this->session.screens.Unload(Name()); });
}

} // namespace quillmere
