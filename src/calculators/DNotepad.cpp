#include "calculators/DNotepad.h"

#include "calculators/AccommodationBenefit.h"

#include <array>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Address1"},
    {.name = "Address2"},
    {.name = "Address3"},
    {.name = "Address4"},
    {.name = "Address5"},
    {.name = "Postcode"},
    {.name = "AccommodationYTick", .kind = Kind::Tick, .text = "Yes"},
    {.name = "AccommodationNTick", .kind = Kind::Tick, .text = "No"},
    {.name = "BasicChargeA", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BasicChargeB", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BasicChargeC", .readOnly = true, .amount = true},
    {.name = "BasicChargeD", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BasicChargeE", .filter = SignedMoneyKeyFilter, .amount = true},
    PictureRow("Image1", "Calculate Additional Charge (if needed)"),
});

/// The fields, in the order in which they are written: every one has its box's name.
constexpr auto Stored = std::to_array<BoundBox>({
    {"Address1", "Address1"},
    {"Address2", "Address2"},
    {"Address3", "Address3"},
    {"Address4", "Address4"},
    {"Address5", "Address5"},
    {"Postcode", "Postcode"},
    {"AccommodationYTick", "AccommodationYTick"},
    {"AccommodationNTick", "AccommodationNTick"},
    {"BasicChargeA", "BasicChargeA"},
    {"BasicChargeB", "BasicChargeB"},
    {"BasicChargeC", "BasicChargeC"},
    {"BasicChargeD", "BasicChargeD"},
    {"BasicChargeE", "BasicChargeE"},
});

} // namespace

DNotepad::DNotepad(Session& session)
    : CalculatorNotepad(
          session, "DNotepad", NotepadCaption("Living Accommodation - ", session),
          {.loading = "Notepad D - loading error", .failed = "Notepad D Error", .ok = "Notepad D 'Ok' Error"})
{
    AddBoxes(Rows);
    AddButtons();
    for (const std::string_view entered : {"BasicChargeA", "BasicChargeB", "BasicChargeD"})
        OnLeave(entered, [this](Box&) { Recalculate(); });
    OnKey("BasicChargeE", [this](Box&) { return GuardE(); });
    OnClick("AccommodationYTick", [this](Box& yes) {
        if (yes.Ticked())
            box("AccommodationNTick").SetTicked(false);
    });
    OnClick("AccommodationNTick", [this](Box& no) {
        if (no.Ticked())
            box("AccommodationYTick").SetTicked(false);
    });
    OnClick("Image1", [this](Box&) { this->session.screens.Show("D2Notepad"); });
}

bool DNotepad::Load()
{
    return Open([this](Database& database) {
        if (const Recordset own = FindEmployee(database, "DNotepad", titles.loading); !own.NoMatch())
            ShowStored(*this, own, Stored);
        FindEmployee(database, "P11D", titles.loading);
    });
}

void DNotepad::Recalculate()
{
    const BasicChargeWorking working = BasicCharge({.BasicChargeA = TextOf("BasicChargeA"),
                                                    .BasicChargeB = TextOf("BasicChargeB"),
                                                    .BasicChargeD = TextOf("BasicChargeD")});
    if (!working.computed) {
        for (const std::string_view emptied : {"BasicChargeC", "BasicChargeD", "BasicChargeE"})
            box(emptied).Clear();
        return;
    }
    SetAmount("BasicChargeA", working.A);
    SetAmount("BasicChargeB", working.B);
    SetAmount("BasicChargeC", working.C);
    SetAmount("BasicChargeD", working.D);
    SetAmount("BasicChargeE", working.E);
}

Screen::Guard DNotepad::GuardE()
{
    if (!TextOf("BasicChargeC").empty() && !TextOf("BasicChargeD").empty())
        return Guard::Filters;
    // Kept: the key goes in, and unfiltered.
    session.messages.Tell("Error with box E", "There must be values in boxes C and D to be able to calculate E");
    return Guard::LetsIn;
}

void DNotepad::Ok()
{
    Recalculate();
    std::string total;
    const bool stored = StoreAll([&](Database& database) {
        Recordset own = FindEmployee(database, "DNotepad", titles.loading);
        Recordset page = FindEmployee(database, "P11D", titles.loading);
        StoreBoxes(*this, own, Stored);
        // Kept: the record takes the basic charge alone, until the page is stored.
        StoreField(page, "DCashEqu", TextOf("BasicChargeE"));
        total = AccommodationTotalText(TextOf("BasicChargeE"), own.Field("AddChargeQ"));
    });
    if (!stored)
        return;
    PutOnPage("Form3", "DCashEqu", total, TextOf("BasicChargeE"));
    session.screens.Unload(Name());
}

void DNotepad::Delete()
{
    for (const BoundBox& row : Stored)
        box(row.box).Clear();
}

} // namespace quillmere
