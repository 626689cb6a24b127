#include "review/FieldWords.h"

#include "clientdb/BoundScreen.h"
#include "clientdb/Notepad.h"
#include "clientdb/UserOperation.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

/// What a field is called that no box with words of its own shows: by what its name begins with, and the rest of the
/// name behind it.
struct OwnWords {
    std::string_view stem, says;
};

/// Screens to which nothing leads: nobody knows their words.
constexpr auto Sheets = std::to_array<std::string_view>({"FNotepad", "Form1", "GNotepad2"});

/// Tables whose fields show on no other screen.
struct TablePlace {
    std::string_view table, place;
};
constexpr auto PlacesWithoutAWay = std::to_array<TablePlace>({
    {"FNotepad", "Cars and car fuel"},
    {"SpareTable", "Spare record"},
});

/// The part of the key that only joins the two others.
constexpr std::string_view JoinedKey = "Name";

constexpr auto Own = std::to_array<OwnWords>({
    {"EmployerName", "Employer"},
    {"EmployeeName", "Employee"},
    {"FirstName", "First name"},
    {"EmployerAdd", "Employer name and address, line"},
    {"Address", "Address, line"},
    {"BasicCharge", "Basic charge, box"},
    {"AddCharge", "Additional charge, box"},
    {"BeforeApril", "There before 6 April, van"},
    {"ChangeUse", "Change of use"},
    {"TypeUse", "Type of use"},
    {"Days", "Days of a use"},
    {"TotalDays", "Days in all, van"},
    {"RegNumber", "Registration number, van"},
    {"FuelVanTick", "Fuel for private use, van"},
    {"DateFrom", "Available from"},
    {"DateTo", "Available to"},
    {"DateFuelWithdrawn", "Fuel withdrawn, van"},
    {"Index", "Place of the currency in its list, loan"},
    {"Tick", "Tick of the car"},
    {"QualExp", "Qualifying expenses"},
    {"EmployeeCost", "Cost to the employee"},
    {"EmployerCost", "Cost to the employer"},
});

std::string OwnWordsOf(std::string_view field)
{
    const OwnWords* best = nullptr;
    for (const OwnWords& own : Own)
        if (field.starts_with(own.stem) && (best == nullptr || best->stem.size() < own.stem.size()))
            best = &own;
    if (best != nullptr)
        return Trim(fmt::format("{} {}", best->says, field.substr(best->stem.size())));
    // The steps of a working are called by their letters: "FCBox1" is step C of car 1.
    constexpr std::string_view box = "Box";
    const std::size_t end = field.find(box);
    if (end == std::string_view::npos || end == 0)
        return std::string(field);
    return Trim(fmt::format("Working, box {} {}", field.substr(end - 1, 1), field.substr(end + box.size())));
}

} // namespace

FieldWords::FieldWords(const Screens& screens)
{
    for (const auto& [table, place] : PlacesWithoutAWay)
        places.emplace(table, place);
    for (const std::string& name : screens.Registered()) {
        if (std::ranges::find(Sheets, name) != Sheets.end())
            continue;
        const std::unique_ptr<Screen> screen = screens.Make(name);
        if (const auto* const bound = dynamic_cast<const BoundScreen*>(screen.get()))
            AddBoxes(*bound, bound->Table());
        if (const auto* const notepad = dynamic_cast<const Notepad*>(screen.get()))
            AddKept(*notepad);
    }
    for (const TableLayout& table : ClientTables())
        for (const Field& field : FieldsOf(table).All())
            if (field.name != JoinedKey)
                Add(table.name, field.name, {PlaceOf(table.name), OwnWordsOf(field.name)});
}

void FieldWords::AddKept(const Notepad& notepad)
{
    const std::vector<std::string> fields = notepad.Fields();
    const bool hasTabs =
        std::ranges::any_of(fields, [&](const std::string& field) { return notepad.WhereShown(field).tab > 1; });
    for (const std::string& field : fields)
        if (const Notepad::Shown shown = notepad.WhereShown(field); shown.box != nullptr)
            Add(notepad.Table(), field,
                {ScreenWords(notepad), hasTabs && !shown.box->Spoken().empty()
                                           ? fmt::format("{} ({})", shown.box->Spoken(), shown.tab)
                                           : shown.box->Spoken()});
}

void FieldWords::AddBoxes(const Screen& screen, std::string_view table)
{
    for (const auto& box : screen.Boxes())
        if (!box->Field().empty())
            Add(table, box->Field(), {ScreenWords(screen), box->Spoken().empty() ? box->Text() : box->Spoken()});
}

/// What is said first counts.
void FieldWords::Add(std::string_view table, std::string_view field, Words of)
{
    if (of.box.empty())
        return;
    places.try_emplace(std::string(table), of.place);
    words.try_emplace({std::string(table), std::string(field)}, std::move(of));
}

const FieldWords::Words* FieldWords::Of(std::string_view table, std::string_view field) const
{
    const auto found = words.find(std::pair(std::string(table), std::string(field)));
    return found == words.end() ? nullptr : &found->second;
}

std::string FieldWords::PlaceOf(std::string_view table) const
{
    const auto found = places.find(table);
    return found == places.end() ? std::string(table) : found->second;
}

} // namespace quillmere::review
