#include "cars/Form1.h"

#include "cars/CO2Calculations.h"
#include "cars/CarMessages.h"
#include "cars/FNotepad.h"
#include "edition/CarWords.h"
#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "frame/Session.h"

#include <vector>

namespace quillmere {

namespace {

/// One list of the cascade, the box that shows what was chosen in it, and the column of `Figures` that it lists.
struct CascadeRow {
    std::string_view list;
    std::string_view display;
    std::string_view column;
};
constexpr auto Cascade = std::to_array<CascadeRow>({
    {.list = "Manufacture", .display = "MakeBox", .column = "Manufacturer"},
    {.list = "Model", .display = "ModelBox", .column = "Model"},
    {.list = "ModelDescription", .display = "ModelDescBox", .column = "Description"},
    {.list = "Transm", .display = "TransmissionBox", .column = "Transmission"},
    {.list = "FuelT", .display = "FuelBox", .column = "Fuel Type"},
});
static_assert(Cascade.size() == Form1::Lists);
constexpr std::size_t Manufacturers = 0, Models = 1;

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "CarReg", .filter = DateKeyFilter, .spoken = "Date first registered"},
    {.name = "Manufacture", .kind = BoxKind::List, .spoken = "Manufacturers"},
    {.name = "Model", .kind = BoxKind::List, .spoken = "Models"},
    {.name = "ModelDescription", .kind = BoxKind::List, .spoken = "Descriptions"},
    {.name = "Transm", .kind = BoxKind::List, .spoken = "Transmissions"},
    {.name = "FuelT", .kind = BoxKind::List, .spoken = "Types of fuel"},
    {.name = "MakeBox", .spoken = "Chosen make", .readOnly = true},
    {.name = "ModelBox", .spoken = "Chosen model", .readOnly = true},
    {.name = "ModelDescBox", .spoken = "Chosen description", .readOnly = true},
    {.name = "TransmissionBox", .spoken = "Chosen transmission", .readOnly = true},
    {.name = "FuelBox", .spoken = "Chosen type of fuel", .readOnly = true},
    {.name = "C02Level", .spoken = "CO2 emissions, g/km", .readOnly = true},
    {.name = "EngineBox", .spoken = "Engine size, cc", .readOnly = true},
    {.name = "Ok", .kind = BoxKind::Button, .text = "&OK"},
    {.name = "Delete", .kind = BoxKind::Button, .text = "&Delete"},
    {.name = "Cancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

/// The file that each opening leaves in the program's folder, and its one line.
constexpr std::string_view ReportFile = "Report.txt";
constexpr std::string_view ReportLine = "*** Getting Car Details ***\n";

} // namespace

Form1::Form1(Session& session) : Screen(session, "Form1", ShowMode::Modal, "CO2 Calculator")
{
    AddBoxes(Rows);
    SetButtons("Cancel", {});
    for (std::size_t list = 0; list < Lists; ++list) {
        const auto choose = [this, list](Box&) { ChooseFrom(list); };
        OnSelect(Cascade[list].list, choose);
        // Enter on an entry, too.
        OnDoubleClick(Cascade[list].list, choose);
    }
    OnClick("Ok", [this](Box&) { Ok(); });
    OnClick("Delete", [this](Box&) {
        EmptyAll();
        RestoreOpeningState();
    });
}

bool Form1::Load()
{
    try {
        WriteFileChecked(session.programFolder / ReportFile, ReportLine);
    } catch (const FileError& error) {
        ReportError("Form1 - Load", error);
    }
    Reading([this] {
        reference.emplace(session.resourceFolder / CarReferenceName);
        ListManufacturers();
    });
    return true;
}

void Form1::Reading(const std::function<void()>& work)
{
    try {
        work();
    } catch (const StoreError& error) {
        session.messages.Tell(Caption(), error.what());
    }
}

void Form1::ListManufacturers()
{
    if (!reference)
        return;
    std::vector<std::string> manufacturers;
    Recordset& table = reference->manufacturers;
    for (table.MoveFirst(); !table.AtEnd(); table.MoveNext())
        manufacturers.emplace_back(table.Field("Manufacturer"));
    box("Manufacture").SetEntries(std::move(manufacturers));
}

/// As when it opened: the manufacturers are listed and nothing is chosen.
void Form1::RestoreOpeningState()
{
    EmptyAfter(Manufacturers);
    box(Cascade[Manufacturers].display).Clear();
    Reading([this] { ListManufacturers(); });
    Focus(box("CarReg"));
}

/// Empties every list after the one given, with the box of each, and what was found.
void Form1::EmptyAfter(std::size_t list)
{
    for (std::size_t after = list + 1; after < Lists; ++after) {
        box(Cascade[after].list).SetEntries({});
        box(Cascade[after].display).Clear();
    }
    box("C02Level").Clear();
    box("EngineBox").Clear();
}

void Form1::EmptyAll()
{
    EmptyAfter(Manufacturers);
    box(Cascade[Manufacturers].list).SetEntries({});
    box(Cascade[Manufacturers].display).Clear();
    box("CarReg").Clear();
}

void Form1::ChooseFrom(std::size_t list)
{
    if (list == Manufacturers && !RegistrationDateStands())
        return;
    if (list == Models && LeaveRegistrationDate(box("CarReg").Text()).check != RegistrationCheck::Good) {
        EmptyAfter(Models);
        session.messages.Tell(edition::AppTitle, "Registration Date Not Completed");
        return;
    }
    Choose(list);
}

/// Looks at the date of registration and says what is wrong with it. A date that is refused is emptied.
bool Form1::RegistrationDateStands()
{
    Box& registered = box("CarReg");
    if (registered.Empty()) {
        session.messages.Tell("No date entered", "Date must be entered");
        RestoreOpeningState();
        return false;
    }
    const RegistrationOutcome outcome = LeaveRegistrationDate(registered.Text());
    registered.SetText(outcome.text);
    if (outcome.check != RegistrationCheck::Good) {
        session.messages.Tell(edition::AppTitle, outcome.check == RegistrationCheck::Empty
                                                     ? "No Registration Date Entered"
                                                     : carwords::RegistrationMessage(outcome.check));
        RestoreOpeningState();
        return false;
    }
    if (IsBeforeCO2Regime(DateOf(outcome.text))) {
        session.messages.Tell("No CO2 Available", edition::car::NoCO2Figure);
        // Kept: the manufacturers go too; Delete brings them back.
        EmptyAll();
        return false;
    }
    return true;
}

/// Shows what was chosen in a list and fills the next one; after the last the car has been found.
void Form1::Choose(std::size_t list)
{
    EmptyAfter(list);
    chosen[list] = box(Cascade[list].list).Text();
    box(Cascade[list].display).SetText(chosen[list]);
    Reading([this, list] { list + 1 < Lists ? FillNext(list) : FindFigure(); });
}

/// True if the current row of `Figures` has what was chosen in so many lists.
bool Form1::Matches(std::size_t lists) const
{
    for (std::size_t list = 0; list < lists; ++list)
        if (reference->figures.Field(Cascade[list].column) != chosen[list])
            return false;
    return true;
}

void Form1::FillNext(std::size_t list)
{
    const std::size_t next = list + 1;
    listed[next].Clear();
    std::vector<std::string> entries;
    Recordset& figures = reference->figures;
    for (figures.MoveFirst(); !figures.AtEnd(); figures.MoveNext())
        if (Matches(next))
            if (const std::string_view value = figures.Field(Cascade[next].column); listed[next].Add(value))
                entries.emplace_back(value);
    box(Cascade[next].list).SetEntries(std::move(entries));
}

void Form1::FindFigure()
{
    Recordset& figures = reference->figures;
    for (figures.MoveFirst(); !figures.AtEnd(); figures.MoveNext()) {
        if (!Matches(Lists))
            continue;
        // Kept: the walk goes on, so that of two rows alike the last one counts.
        box("C02Level").SetText(figures.Field("C02"));
        box("EngineBox").SetText(figures.Field("Engine Capacity"));
    }
}

void Form1::Ok()
{
    if (auto* sheet = session.screens.Find<FNotepad>()) {
        const std::string& model = box("ModelBox").Text();
        sheet->TakeCar({.make = box("MakeBox").Text(),
                        .model = model.empty() ? std::string() : model + " " + box("ModelDescBox").Text(),
                        .fuel = box("FuelBox").Text(),
                        .co2 = box("C02Level").Text(),
                        .registrationDate = box("CarReg").Text(),
                        .engine = box("EngineBox").Text()});
    }
    session.screens.Unload(Name());
}

} // namespace quillmere
