#include "calculators/CalculatorFacts.h"

#include "frame/Text.h"
#include "frame/Tick.h"

#include <algorithm>

namespace quillmere {

FactReader OnScreen(const Screen& screen, int index)
{
    return [&screen, index](std::string_view field) {
        const auto found = std::ranges::find_if(
            screen.Boxes(), [&](const auto& box) { return box->Field() == field && box->Index() == index; });
        return found == screen.Boxes().end() ? std::string() : (*found)->Stored();
    };
}

FactReader InRecord(const Recordset& record, int number)
{
    return [&record, number](std::string_view field) {
        if (record.NoMatch())
            return std::string();
        return std::string(record.Field(number == 0 ? std::string(field) : Numbered(field, number)));
    };
}

VanFacts ReadVan(const FactReader& field)
{
    return {.registrationNumber = field("RegNumber"),
            .dates = {.texts = {field("DateFrom1"), field("DateTo1"), field("DateFrom2"), field("DateTo2"),
                                field("DateFrom3"), field("DateTo3"), field("DateFuelWithdrawn")}},
            .percentage = field("HBox"),
            .payments = field("LBox"),
            .fuelTick = IsSet(field("FuelVanTick"))};
}

LoanFacts ReadLoan(const FactReader& field)
{
    return {.ABox = field("MaxBalanceLater"),
            .BBox = field("MaxBalanceEarlier"),
            .interestRate = field("InterestRate"),
            .interestPaid = field("InterestPaid"),
            .maxAmount = field("MaxBox"),
            .dateFrom = field("DateFrom"),
            .dateTo = field("DateTo")};
}

BasicChargeFacts ReadBasicCharge(const FactReader& field)
{
    return {.BasicChargeA = field("BasicChargeA"),
            .BasicChargeB = field("BasicChargeB"),
            .BasicChargeD = field("BasicChargeD")};
}

AdditionalChargeFacts ReadAdditionalCharge(const FactReader& field, std::string_view basicCharge)
{
    return {.FBox = field("AddChargeF"),
            .GBox = field("AddChargeG"),
            .AddChargeDays = field("AddChargeDays"),
            .MBox = field("AddChargeM"),
            .NBox = field("AddChargeN"),
            .EBox = std::string(basicCharge)};
}

MileageFacts ReadMileage(const FactReader& field, Vehicle vehicle)
{
    return {.vehicle = vehicle,
            .ABox = field("ABox"),
            .BBox = field("BBox"),
            .DBox = field("DBox"),
            .KBox = field("KBox"),
            .LBox = field("LBox")};
}

RelocationFacts ReadRelocation(const FactReader& field)
{
    return {.ABox = field("ABox"),
            .EmployerCost = field("EmployerCost"),
            .EmployeeCost = field("EmployeeCost"),
            .CBox = field("CBox"),
            .QualExp = field("QualExp")};
}

} // namespace quillmere
