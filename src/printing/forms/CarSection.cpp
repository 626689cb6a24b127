#include "printing/forms/CarSection.h"

#include "edition/FormWords.h"
#include "frame/Text.h"

#include <array>

namespace quillmere {

namespace {

/// How far the second car's column lies to the right of the first one's.
constexpr double SecondCar = 59;

constexpr auto CarBoxes = std::to_array<FormBox>({
    {PrintedKind::Entry, 76, 148.5, 131},  // make and model
    {PrintedKind::Entry, 76, 156, 98},     // date first registered
    {PrintedKind::Entry, 76, 167, 98},     // CO2 figure
    {PrintedKind::Entry, 100, 167, 105.5}, // no CO2 figure
    {PrintedKind::Entry, 76, 174, 98},     // engine size
    {PrintedKind::Entry, 76, 181, 88},     // type of fuel
    {PrintedKind::Entry, 83, 188, 105},    // date from
    {PrintedKind::Entry, 109, 188, 131},   // date to
    {PrintedKind::Pound, 76, 202},         // list price
    {PrintedKind::Pound, 76, 210},         // accessories
    {PrintedKind::Pound, 76, 219},         // capital contributions
    {PrintedKind::Pound, 76, 229},         // private use payment
    {PrintedKind::Entry, 76, 238, 98},     // date fuel withdrawn
    {PrintedKind::Entry, 102, 238, 107.5}, // fuel reinstated
    {PrintedKind::Pound, 76, 245},         // cash equivalent of the car
    {PrintedKind::Pound, 76, 259},         // cash equivalent of the fuel
});

constexpr auto TotalBoxes = std::to_array<FormBox>({
    {PrintedKind::Number1A, 161, 253, 0, "   9"},
    {PrintedKind::Number1A, 161, 266, 0, "  10"},
});

constexpr auto LabelsAboveCars = std::to_array<Label>({
    LabelAt({8, Weight::Bold}, 9, 144, "Cars and car fuel"),
    {{7.5, Weight::Italic},
     At::Indented,
     0,
     0,
     "If more than two cars were made available, either at the same time or in succession, please give details on a "
     "separate sheet"},
});

constexpr auto Emissions = std::to_array<std::string_view>({"approved CO2 emissions figure"});
constexpr auto Fuel = std::to_array<std::string_view>({"type of fuel or power"});
constexpr auto Availability = std::to_array<std::string_view>({"from", "to"});

constexpr auto CarLabels = std::to_array<Label>({
    LabelTo({8}, 74, 152.5, "Make and Model", "FMakeModel"),
    LabelTo({8}, 74, 160, "Date first registered", "FRegDate"),
    LabelTo({8}, 74, 165, "Approved CO   emissions figure for cars"),
    LabelAt({8}, 40, 166, "2"),
    LabelTo({8}, 62, 168.5, edition::form::CarsWithCO2Figure, "FC02", Emissions),
    LabelTo({8}, 96, 171, "g/km"),
    LabelTo({8}, 155, 171, "g/km"),
    LabelTo({7.5, Weight::Italic}, 74, 168.5, "Tick"),
    LabelTo({7.5, Weight::Italic}, 74, 171.5, "box if the car does not have an approved CO   figure", "FNoC02"),
    LabelAt({7.5, Weight::Italic}, 65, 172.5, "2"),
    LabelAt({7, Weight::Italic}, 106.5, 167, "See P11D Guide for"),
    LabelAt({7, Weight::Italic}, 106.5, 170.5, "details of cars that have"),
    LabelAt({7, Weight::Italic}, 106.5, 174, "no approved CO   figure"),
    LabelAt({7, Weight::Italic}, 124, 175, "2"),
    LabelAt({7, Weight::Italic}, 165.5, 167, "See P11D Guide for"),
    LabelAt({7, Weight::Italic}, 165.5, 170.5, "details of cars that have"),
    LabelAt({7, Weight::Italic}, 165.5, 174, "no approved CO   figure"),
    LabelAt({7, Weight::Italic}, 183, 175, "2"),
    LabelTo({8}, 74, 178, "Engine size", "FEngine"),
    LabelTo({8}, 96, 178, "cc"),
    LabelTo({8}, 155, 178, "cc"),
    LabelTo({8}, 50, 182.5, "Type of fuel or power used"),
    LabelTo({7.5, Weight::Italic}, 74, 182.5, "Please use the"),
    LabelTo({7.5, Weight::Italic}, 74, 185.5, "key letter shown in the P11D Guide", "FFuel", Fuel),
    LabelAt({8}, 12, 190.5, "Dates car was available", "FDateFrom FDateTo", Availability),
    ReadAs(Reads::Nothing, LabelTo({7.5}, 82, 190.5, "From")),
    {{7.5}, At::Centre, 105, 190.5, "to", 109, {}, {}, Reads::Nothing},
    ReadAs(Reads::Nothing, LabelTo({7.5}, 141, 190.5, "From")),
    {{7.5}, At::Centre, 164, 190.5, "to", 168, {}, {}, Reads::Nothing},
    LabelAt({7.5, Weight::Italic}, 50, 190.5, "Do not complete the"),
    LabelAt({7.5, Weight::Italic}, 12, 193.5, edition::form::CarFromBox),
    LabelAt({7.5, Weight::Italic}, 12, 196.5, edition::form::CarToBox),
    LabelAt({7.5, Weight::Italic}, 12, 199.5, edition::form::CarStillAvailable, "FDateFrom FDateTo", Availability),
    LabelAt({8}, 12, 203, "List price of car"),
    LabelOn({7.5, Weight::Italic}, " Including car and standard"),
    LabelAt({7.5, Weight::Italic}, 12, 206, "accessories only: if there is no list price, or if it is a"),
    LabelAt({7.5, Weight::Italic}, 12, 209, "classic car, employers see booklet 480", "FListPrice"),
    LabelAt({8}, 12, 213, "Accessories "),
    LabelOn({7.5, Weight::Italic}, "All non-standard accessories,"),
    LabelAt({7.5, Weight::Italic}, 12, 216, "see P11D Guide", "FAccessories"),
    LabelAt({8}, 12, 220.5, edition::form::CapitalContributions),
    LabelAt({8}, 12, 224, "the employee made towards the cost of"),
    LabelAt({8}, 12, 227.5, "car or accessories", "FCaptContr"),
    LabelAt({8}, 12, 232.5, "Amount paid by employee for private use"),
    LabelAt({8}, 12, 236, "of the car", "FPrivateUse"),
    LabelAt({8}, 12, 241, "Date free fuel was withdrawn", "FDateWithdrawn"),
    LabelAt({7.5, Weight::Italic}, 12, 244, "Tick if reinstated in year (see P11D Guide)", "FDateWithdrawnTick"),
    LabelAt({8}, 12, 249, "Cash equivalent of each car", "FCashEqu"),
});

constexpr auto CarValues = std::to_array<FormValue>({
    {"FMakeModel", At::Left, 79, 152.5, 131},
    {"FRegDate", At::Centre, 76, 160, 98},
    {"FC02", At::Right, 88, 171},
    {"FNoC02", At::Left, 102, 171, 0, ValueKind::Tick},
    {"FEngine", At::Right, 91, 178},
    {"FFuel", At::Centre, 76, 185, 88},
    {"FDateFrom", At::Centre, 83, 192, 105},
    {"FDateTo", At::Centre, 109, 192, 131},
    {"FListPrice", At::Right, 96, 206},
    {"FAccessories", At::Right, 96, 214},
    {"FCaptContr", At::Right, 96, 223},
    {"FPrivateUse", At::Right, 96, 233},
    {"FCashEqu", At::Right, 96, 249},
    {"FFuelEqu", At::Right, 96, 263},
});

constexpr auto TotalValues = std::to_array<FormValue>({
    {"FTotalCashCars", At::Right, 188, 257},
    {"FTotalCashFuel", At::Right, 188, 270},
});

constexpr auto WithdrawalValues = std::to_array<FormValue>({
    {"FDateWithdrawn", At::Right, 96, 242.5},
    // Kept: the tick is printed whether or not a date stands before it.
    {"FDateWithdrawnTick", At::Left, 104, 242.5, 0, ValueKind::Tick},
});

void DrawOfBothCars(FormSheet& sheet, std::span<const FormValue> values, int firstCar, const FieldReader& read)
{
    for (std::size_t row = 0; row < values.size(); ++row) {
        DrawValues(sheet, values.subspan(row, 1), read, std::to_string(firstCar));
        DrawValues(sheet, values.subspan(row, 1), read, std::to_string(firstCar + 1), SecondCar);
    }
}

} // namespace

void DrawCarBoxes(FormSheet& sheet)
{
    DrawBoxes(sheet, CarBoxes);
    DrawBoxes(sheet, CarBoxes, SecondCar);
    DrawBoxes(sheet, TotalBoxes);
}

void DrawCarLabels(FormSheet& sheet, int firstCar, const CarSectionWords& words)
{
    const std::string first = Numbered("Car ", firstCar);
    const std::string second = Numbered("Car ", firstCar + 1);
    const auto heads = std::to_array<Label>({
        LabelAt({8, Weight::Bold}, 76, 147.5, first),
        LabelAt({8, Weight::Bold}, 76 + SecondCar, 147.5, second),
    });
    const auto cars = std::to_array<FieldSuffix>({
        {std::to_string(firstCar), first},
        {std::to_string(firstCar + 1), second},
    });
    const Label totalOfCars = LabelAt({8, Weight::Bold}, 12, 257, words.totalOfCars, "FTotalCashCars");
    const Label fuelOfEachCar = LabelAt({8}, 12, 263, "Cash equivalent of fuel for each car", "FFuelEqu");
    const Label totalOfFuel = LabelAt({8, Weight::Bold}, 12, 270, words.totalOfFuel, "FTotalCashFuel");
    DrawLabels(sheet, LabelsAboveCars);
    DrawLabels(sheet, heads);
    DrawLabels(sheet, CarLabels, cars);
    DrawLabel(sheet, totalOfCars);
    DrawLabel(sheet, fuelOfEachCar, cars);
    DrawLabel(sheet, totalOfFuel);
}

void DrawCarValues(FormSheet& sheet, int firstCar, const FieldReader& read)
{
    DrawOfBothCars(sheet, CarValues, firstCar, read);
    DrawValues(sheet, TotalValues, read);
    DrawOfBothCars(sheet, WithdrawalValues, firstCar, read);
}

void AddBoxedTextsOfCar(int car, std::vector<BoxedText>& texts)
{
    AddBoxedTexts(CarValues, std::to_string(car), texts);
}

} // namespace quillmere
