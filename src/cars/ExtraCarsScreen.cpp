#include "cars/ExtraCarsScreen.h"

#include <span>

namespace quillmere {

namespace {

/// Cash and fuel, as the two totals of page 1.
constexpr auto Totals = std::to_array<CarTotalKind>({
    {"FCashEqu", "FTotalCashCars", "Compute Extra Cars Cash error"},
    {"FFuelEqu", "FTotalCashFuel", "Compute Extra Car Fuel error"},
});

} // namespace

ExtraCarsScreen::ExtraCarsScreen(Session& session, const ExtraCars& which)
    : Notepad(session, which.name, which.caption, "ExtraCars",
              {.loading = which.loadingTitle, .okFailure = {}, .okIcon = Icon::Exclamation})
{
    for (const int car : which.cars) {
        const std::size_t before = Boxes().size();
        columns.emplace_back(session, *this, car, CarColumn::Totals{});
        for (const auto& added : std::span(Boxes()).subspan(before))
            if (!added->Field().empty())
                Keep(added->Field(), added.get(), car);
    }
    AddButtons();
}

/// All in one edit and update.
void ExtraCarsScreen::Write(Recordset& own) const
{
    own.Edit();
    for (const Entry& entry : Entries())
        own.SetField(entry.field, Reads(entry));
    own.Update();
}

bool ExtraCarsScreen::HandOver(const std::vector<Result>& /*results*/)
{
    try {
        ComputeCarTotals(session, *this, Totals, FurtherCars(session));
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return false;
    }
}

void ExtraCarsScreen::Delete()
{
    for (CarColumn& column : columns)
        column.Empty();
}

} // namespace quillmere
