#include "cars/ExtraCarsScreen.h"

#include "clientdb/CurrentRecord.h"

#include <string>

namespace quillmere {

namespace {

constexpr std::string_view Table = "ExtraCars";

/// Cash and fuel, as the two totals of page 1.
constexpr auto Totals = std::to_array<CarTotalKind>({
    {"FCashEqu", "FTotalCashCars", "Compute Extra Cars Cash error"},
    {"FFuelEqu", "FTotalCashFuel", "Compute Extra Car Fuel error"},
});

} // namespace

ExtraCarsScreen::ExtraCarsScreen(Session& session, const ExtraCars& which)
    : Screen(session, which.name, ShowMode::Modal, which.caption), which(which)
{
    for (const int car : which.cars)
        columns.emplace_back(session, *this, car, CarColumn::Totals{});
    AddBox({.kind = Kind::Button, .text = "&OK"}, "Ok");
    AddBox({.kind = Kind::Button, .text = "&Delete"}, "Delete");
    AddBox({.kind = Kind::Button, .text = "&Cancel"}, "Cancel");
    SetButtons("Cancel", {});
    OnClick("Ok", [this](Box&) { Ok(); });
    OnClick("Delete", [this](Box&) { Delete(); });
    OnClick("Cancel", [this](Box&) { this->session.screens.Unload(Name()); });
}

bool ExtraCarsScreen::Load()
{
    try {
        LoadCars();
        return true;
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return false;
    }
}

void ExtraCarsScreen::LoadCars()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    const Recordset records = OpenCurrent(database, Table, session);
    if (records.NoMatch()) {
        session.messages.Tell(which.loadingTitle, "Employee not found");
        return;
    }
    for (const auto& control : Boxes()) {
        if (control->Field().empty())
            continue;
        if (const std::string_view stored = records.Field(control->Field()); !stored.empty())
            control->ShowStored(stored);
    }
}

void ExtraCarsScreen::Ok()
{
    try {
        Store();
        ComputeCarTotals(session, *this, Totals, FurtherCars(session));
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
        return;
    }
    session.screens.Unload(Name());
}

void ExtraCarsScreen::Store()
{
    Database database = Database::OpenDatabase(session.ClientDatabasePath());
    Recordset records = OpenCurrent(database, Table, session);
    records.Edit();
    for (const auto& control : Boxes())
        if (!control->Field().empty())
            records.SetField(control->Field(), control->Stored());
    records.Update();
}

void ExtraCarsScreen::Delete()
{
    for (CarColumn& column : columns)
        column.Empty();
}

} // namespace quillmere
