#pragma once

#include "calculators/AccommodationBenefit.h"
#include "calculators/LoanBenefit.h"
#include "calculators/MileageBenefit.h"
#include "calculators/RelocationBenefit.h"
#include "calculators/VanBenefit.h"
#include "clientdb/store/Recordset.h"
#include "frame/Screen.h"

#include <functional>
#include <string>
#include <string_view>

/// Facts of the calculators, read of whatever holds their fields: the boxes of a screen or a stored record.
namespace quillmere {

/// The text of a field, by its name or the stem of it.
using FactReader = std::function<std::string(std::string_view field)>;

/// The boxes of a screen by the fields that they are stored in, those of one index where it has arrays.
FactReader OnScreen(const Screen& screen, int index = Box::NoIndex);
/// The fields of a record; with a number those of one of several like things. Empty where there is no record.
FactReader InRecord(const Recordset& record, int number = 0);

VanFacts ReadVan(const FactReader& field);
LoanFacts ReadLoan(const FactReader& field);
BasicChargeFacts ReadBasicCharge(const FactReader& field);
/// The basic charge, which the additional one is added to, has a notepad of its own.
AdditionalChargeFacts ReadAdditionalCharge(const FactReader& field, std::string_view basicCharge);
MileageFacts ReadMileage(const FactReader& field, Vehicle vehicle);
RelocationFacts ReadRelocation(const FactReader& field);

} // namespace quillmere
