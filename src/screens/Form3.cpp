#include "screens/Form3.h"

#include "edition/Edition.h"
#include "frame/CloseAll.h"
#include "frame/Dates.h"
#include "frame/Text.h"
#include "frame/YearEnd.h"

#include <array>
#include <utility>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Page1", .kind = BoxKind::Label, .text = "Page 1", .spoken = "Page 1", .letter = '1'},
    {.name = "Page2", .kind = BoxKind::Label, .text = "Page 2", .spoken = "Page 2", .letter = '2'},
    {.name = "Label65", .kind = BoxKind::Label, .text = "Car 3 + 4", .letter = '3'},
    {.name = "Label66", .kind = BoxKind::Label, .text = "Car 5 + 6", .letter = '5'},
    {.name = "lblP11DB", .kind = BoxKind::Label, .text = "P11D (b)", .letter = 'B'},

    {.name = "EmployerNameBox", .field = "EmployerName", .spoken = "Employer name", .readOnly = true},
    {.name = "PAYEBox", .field = "PAYEBox", .spoken = "Employer PAYE reference"},
    {.name = "EmployeeNameBox", .field = "Surname", .spoken = "Employee surname"},
    {.name = "EmployeeNameBox2", .field = "FirstName", .spoken = "Employee first names"},
    {.name = "DirectorTick", .kind = BoxKind::Tick, .field = "DirectorTick", .spoken = "Director"},
    {.name = "DateofBirth", .field = "DOB", .filter = DateKeyFilter, .spoken = "Date of birth"},
    {.name = "WorkNumberBox", .field = "WorkNumberBox", .spoken = "Works number or department"},
    {.name = "NatIns", .field = "NatIns", .filter = NationalInsuranceKeyFilter, .spoken = "National Insurance number"},
    {.name = "SexBox", .field = "SexTick", .filter = SexKeyFilter, .spoken = "Gender, M for male or F for female"},

    {.name = "ADescriptionAsset", .field = "ADescriptionAsset", .spoken = "A, description of asset"},
    AmountRow("ACostMarketBox", "A, cost or market value"),
    AmountRow("AAmountGood", "A, amount made good or from which tax deducted"),
    AmountRow("ACashEqu", "A, cash equivalent, box 13"),
    PictureRow("Image1", "Assets transferred: list of items"),

    {.name = "BDescriptionPayment", .field = "BDescriptionPayment", .spoken = "B, description of payment"},
    AmountRow("B2", "B, payment, box 15"),
    AmountRow("BNotTax", "B, tax on notional payments, box 15"),
    PictureRow("Image2", "Payments made on behalf of employee: list of items"),

    AmountRow("CGrossAmount", "C, gross amount"),
    AmountRow("CAmountGood", "C, amount made good or from which tax deducted"),
    AmountRow("CCashEqu", "C, cash equivalent, box 12"),
    PictureRow("Image3", "Vouchers and credit cards: list of items"),

    AmountRow("DCashEqu", "D, cash equivalent, box 14"),
    PictureRow("Image4", "Living accommodation: calculation"),

    AmountRow("ETaxAmount", "E, taxable amount, box 12"),
    PictureRow("Image5", "Mileage allowance and passenger payments: calculation"),

    {.name = "Image6",
     .kind = BoxKind::Picture,
     .spoken = "Cars and car fuel: sheet",
     .tip = "Car sheet",
     .hidden = true},
});

constexpr auto TotalRows = std::to_array<BoxRow>({
    {.name = "FTotalCashCars",
     .field = "FTotalCashCars",
     .spoken = "F, total cash equivalent of all cars, box 9",
     .readOnly = true,
     .amount = true},
    {.name = "FTotalCashFuel",
     .field = "FTotalCashFuel",
     .spoken = "F, total cash equivalent of fuel for all cars, box 10",
     .readOnly = true,
     .amount = true},
});

constexpr AmountTriple SectionA{"ACostMarketBox", "AAmountGood", "ACashEqu"};
constexpr AmountTriple SectionC{"CGrossAmount", "CAmountGood", "CCashEqu"};

/// `ComputeCash` and `ComputeFuel`.
constexpr auto Totals = std::to_array<CarTotalKind>({
    {"FCashEqu", "FTotalCashCars", "Compute Cash error"},
    {"FFuelEqu", "FTotalCashFuel", "Compute Fuel error"},
});

/// No employee was born before this day.
constexpr std::string_view EarliestBirth = "01/01/1905";

} // namespace

Form3::Form3(Session& session) : P11DPage(session, "Form3", "P11D - Form 1", "P11D Page 1 - Refresh after Print Error")
{
    AddBoxes(Rows);
    for (const int car : {1, 2})
        cars.emplace_back(session, *this, car,
                          CarColumn::Totals{.computeBoth = [this] { ComputeCashAndFuel(); },
                                            .computeFuel = [this] { ComputeFuel(); }});
    AddBoxes(TotalRows);

    OnLeaveTriple(SectionA);
    OnLeaveTriple(SectionC);
    for (const std::string_view single : {"B2", "BNotTax", "DCashEqu", "ETaxAmount"})
        OnLeaveAmount(single);
    OnLeave("SexBox", [](Box& sex) { sex.SetText(UpperCase(sex.Text())); });
    OnLeave("NatIns", [this](Box&) { LeaveNationalInsurance(); });
    OnLeave("DateofBirth", [this](Box&) { LeaveDateOfBirth(); });
    OnClick("Page1", [](Box&) {});
    OnClick("Page2", [this](Box&) { TurnTo("Side2Form1", "P11D Side 2 - loading error"); });
    OnClick("lblP11DB", [this](Box&) { ClickDeclaration(); });
    OpensScreen("Image1", "ANotepad");
    OpensScreen("Image2", "BNotepad");
    OpensScreen("Image3", "CNotepad");
    OpensScreen("Image4", "DNotepad");
    OpensScreen("Image5", "ENotepad");
    OpensScreen("Image6", "FNotepad");
    OpensScreen("Label65", "Form3_4");
    OpensScreen("Label66", "Form5_6");
}

bool Form3::Load()
{
    box("Page1").SetPaint(Paint::Yellow);
    session.CurrentPage = 1;
    return true;
}

void Form3::Activate()
{
    session.CurrentPage = 1;
    box("lblP11DB").SetPaint(Paint::Plain);
    CarColumn& first = cars.front();
    CarColumn& second = cars.back();
    // The load step's own runs wait until the boxes show the record.
    // Kept: the second car alone is worked out again whenever the page comes to the front, the first time too.
    if (std::exchange(computedOnce, true))
        ComputeCars({&second});
    else
        ComputeCars({&first, &second, &second});
    session.DeclarationOpen = false;
}

void Form3::ComputeCars(std::initializer_list<CarColumn*> columns)
{
    keepsFurtherCars = true;
    for (CarColumn* car : columns)
        car->CarBenefitCompute(); // tells of its failures itself
    keepsFurtherCars = false;
    furtherCars.reset();
}

void Form3::Unload()
{
    P11DPage::Unload();
    session.DeclarationOpen = false;
    UnloadAllScreens(session);
    SetMainCaption(session, edition::AppTitle);
    EnableEmployeeCommands(session, false);
    ShowOpenEmployee(session, false);
}

void Form3::ComputeCashAndFuel()
{
    if (!keepsFurtherCars)
        return ComputeCarTotals(session, *this, Totals, FurtherCars(session));
    if (!furtherCars)
        furtherCars.emplace(session);
    ComputeCarTotals(session, *this, Totals, *furtherCars);
}

void Form3::ComputeFuel()
{
    ComputeCarTotals(session, *this, std::span(Totals).last(1), FurtherCars(session));
}

void Form3::LeaveNationalInsurance()
{
    Box& number = box("NatIns");
    number.SetText(UpperCase(number.Text()));
    if (IsNationalInsuranceNumber(number.Text()))
        return;
    session.messages.Tell("Invalid Entry", "Invalid National Insurance Number");
    number.Clear();
}

void Form3::LeaveDateOfBirth()
{
    Box& birth = box("DateofBirth");
    const std::string text = birth.TrimText();
    if (text.empty())
        return;
    const auto day = ReadDate(text);
    const bool valid = IsDateText(text) && IsNotAfterYearEnd(session, text) && day && *day >= *ReadDate(EarliestBirth);
    birth.SetText(valid ? NormaliseDate(text) : std::string());
}

void Form3::ClickDeclaration()
{
    box("lblP11DB").SetPaint(Paint::Yellow);
    // From here until the page is in front again, so that no run on the way there or back resets a tick.
    session.DeclarationOpen = true;
    ComputeCars({&cars.front(), &cars.back()});
    // An employee whom somebody has deleted is told of and is no bar; a page that the store has not taken is.
    if (StoreAndShow("Recovering Recordset after P11DB NICs") == Sought::Failed) {
        session.DeclarationOpen = false;
        box("lblP11DB").SetPaint(Paint::Plain);
        return;
    }
    session.EmployeeOpenFlag = false;
    if (session.screens.Show("P11DDeclaration") == nullptr) {
        session.DeclarationOpen = false;
        box("lblP11DB").SetPaint(Paint::Plain);
    }
}

} // namespace quillmere
