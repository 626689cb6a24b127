#include "calculators/DNotepad.h"

#include "calculators/CalculatorFacts.h"

#include <array>

namespace quillmere {

namespace {

/// In the order in which the record is written.
constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Address1", .field = "Address1"},
    {.name = "Address2", .field = "Address2"},
    {.name = "Address3", .field = "Address3"},
    {.name = "Address4", .field = "Address4"},
    {.name = "Address5", .field = "Address5"},
    {.name = "Postcode", .field = "Postcode"},
    {.name = "AccommodationYTick", .kind = BoxKind::Tick, .field = "AccommodationYTick", .text = "Yes"},
    {.name = "AccommodationNTick", .kind = BoxKind::Tick, .field = "AccommodationNTick", .text = "No"},
    {.name = "BasicChargeA", .field = "BasicChargeA", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BasicChargeB", .field = "BasicChargeB", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BasicChargeC", .field = "BasicChargeC", .readOnly = true, .amount = true},
    {.name = "BasicChargeD", .field = "BasicChargeD", .filter = MoneyKeyFilter, .amount = true},
    {.name = "BasicChargeE", .field = "BasicChargeE", .filter = SignedMoneyKeyFilter, .amount = true},
    PictureRow("Image1", "Calculate Additional Charge (if needed)"),
});

/// The two answers to one question.
constexpr int Answers = 1;

constexpr std::string_view MissingTitle = "Notepad D - loading error";

} // namespace

DNotepad::DNotepad(Session& session)
    : Notepad(session, "DNotepad", NotepadCaption("Living Accommodation - ", session), "DNotepad",
              {.loading = MissingTitle,
               .loadingPage = MissingTitle,
               .failed = "Notepad D Error",
               .ok = "Notepad D 'Ok' Error",
               .okMissing = MissingTitle,
               .okMissingPage = MissingTitle})
{
    AddBoxes(Rows);
    AddButtons();
    for (Box* stored : FieldBoxes())
        Keep(stored->Field(), stored, stored->Kind() == BoxKind::Tick ? Answers : 0);
    for (const std::string_view entered : {"BasicChargeA", "BasicChargeB", "BasicChargeD"})
        OnLeave(entered, [this](Box&) { WorkOut(); });
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

void DNotepad::Recalculate()
{
    const BasicChargeWorking working = BasicCharge(ReadBasicCharge(OnScreen(*this)));
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

std::vector<Notepad::Result> DNotepad::Results(const Recordset& own) const
{
    const std::string& basicCharge = TextOf("BasicChargeE");
    // Kept: the record takes the basic charge alone, until the page is stored.
    return {{.field = "DCashEqu",
             .stored = basicCharge,
             .shown = AccommodationTotalText(basicCharge, own.Field("AddChargeQ"))}};
}

} // namespace quillmere
