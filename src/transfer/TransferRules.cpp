#include "transfer/TransferRules.h"

#include "edition/LeftOvers.h"
#include "edition/LoanRates.h"
#include "frame/Nth.h"
#include "frame/Text.h"
#include "frame/Tick.h"

#include <algorithm>

namespace quillmere {

namespace {

constexpr int DescriptionLines = 20;
constexpr int AddressLines = 5;
constexpr int EmployerAddressLines = 6;
constexpr int Vans = 3;
constexpr int Loans = 5;
constexpr int Cars = 6;
/// Cars up to this one stand in P11D, the others in ExtraCars.
constexpr int CarsInP11D = 2;

std::string_view TickText(bool set)
{
    return set ? "1" : "";
}

/// The names of numbered fields, such as "Description1" to "Description20": made once, not for each employee.
template<int Last>
class NumberedFields {
public:
    constexpr NumberedFields(const char* stem)
    {
        for (int number = 1; number <= Last; ++number) {
            Name& name = Nth(names, number);
            for (const char letter : std::string_view(stem))
                name.letters[name.size++] = letter;
            if (number > 9)
                name.letters[name.size++] = static_cast<char>('0' + number / 10);
            name.letters[name.size++] = static_cast<char>('0' + number % 10);
        }
    }
    constexpr std::string_view operator()(int number) const
    {
        const Name& name = Nth(names, number);
        return {name.letters.data(), name.size};
    }

private:
    struct Name {
        std::array<char, 24> letters{};
        std::size_t size = 0;
    };
    static_assert(Last < 100);
    std::array<Name, Last> names{};
};

void CarryNamed(CarriedFields& carried, const LastYearRecord& lastYear, std::string_view field)
{
    carried.push_back({field, lastYear(field)});
}

template<int Last>
void CarryNumbered(CarriedFields& carried, const LastYearRecord& lastYear, const NumberedFields<Last>& fields)
{
    for (int number = 1; number <= Last; ++number)
        CarryNamed(carried, lastYear, fields(number));
}

constexpr NumberedFields<DescriptionLines> Description = "Description";
constexpr NumberedFields<AddressLines> Address = "Address";
constexpr NumberedFields<EmployerAddressLines> EmployerAdd = "EmployerAdd", ReturnAdd = "ReturnAdd";
constexpr NumberedFields<Vans> RegNumber = "RegNumber", VanDateTo = "DateTo1", BeforeApril = "BeforeApril";
constexpr NumberedFields<Loans> Currency = "Currency", Index = "Index", InterestRate = "InterestRate",
                                LoanDateTo = "DateTo", MaxBalanceEarlier = "MaxBalanceEarlier",
                                MaxBalanceLater = "MaxBalanceLater";

// ---- cars -----------------------------------------------------------------------------------------

/// What a car takes along, apart from its two ticks.
constexpr NumberedFields<Cars> FRegDate = "FRegDate", FListPrice = "FListPrice";
constexpr auto CarFields = std::to_array<NumberedFields<Cars>>(
    {"FMakeModel", FRegDate, "FC02", "FEngine", FListPrice, "FAccessories", "FFuel", "FCaptContr", "FPrivateUse"});
constexpr NumberedFields<Cars> FNoC02 = "FNoC02", FFuelTick = "FFuelTick";
/// What says whether a car runs on.
constexpr NumberedFields<Cars> FDateTo = "FDateTo", FCashEqu = "FCashEqu", FDateWithdrawn = "FDateWithdrawn",
                               FDateWithdrawnTick = "FDateWithdrawnTick", FWithdrawnTick = "FWithdrawnTick";

struct Car {
    std::array<std::string_view, CarFields.size()> texts;
    bool noC02 = false;
    bool fuel = false;
};

Car ReadCar(const LastYearRecord& lastYear, int number)
{
    Car car;
    for (std::size_t i = 0; i < CarFields.size(); ++i)
        car.texts[i] = lastYear(CarFields[i](number));
    car.noC02 = IsSet(lastYear(FNoC02(number)));
    car.fuel = WhyFuelStays(lastYear, number).empty();
    return car;
}

} // namespace

std::string_view WordsOf(Carries rule)
{
    switch (rule) {
    case Carries::Descriptions:
        return "descriptions come over, amounts are of their year";
    case Carries::Address:
        return "the address comes over, amounts and dates are of their year";
    case Carries::Vans:
        return "vans that run on come over, amounts and dates are of their year";
    case Carries::Loans:
        return "currency and rate come over, and the balance of a loan that runs on; amounts and dates are of their "
               "year";
    case Carries::KeysOnly:
        break;
    }
    return "nothing of it comes over: all of it is of its year";
}

std::string_view WhyCarStays(const LastYearRecord& lastYear, int car)
{
    const std::string_view last = lastYear(FDateTo(car));
    // Kept: the fixed date is no date of any year; it stands for a car that was never given back.
    if (!last.empty() && last != Nth(edition::RunningOnDates, car))
        return "it was given back";
    // Kept: a car that had no cash equivalent last year is left behind with those that lack price or registration.
    if (lastYear(FListPrice(car)).empty())
        return "it had no list price";
    if (lastYear(FRegDate(car)).empty())
        return "it had no date of registration";
    return lastYear(FCashEqu(car)).empty() ? "it had no cash equivalent" : "";
}

std::string_view WhyFuelStays(const LastYearRecord& lastYear, int car)
{
    const NumberedFields<Cars>& reinstated = car <= CarsInP11D ? FDateWithdrawnTick : FWithdrawnTick;
    if (!IsSet(lastYear(FFuelTick(car))))
        return "fuel was not ticked";
    if (!lastYear(FDateWithdrawn(car)).empty() && !IsSet(lastYear(reinstated(car))))
        return "fuel was withdrawn";
    return {};
}

std::string_view WhyVanStays(const LastYearRecord& lastYear, int van)
{
    if (lastYear(RegNumber(van)).empty())
        return "it had no registration number";
    return lastYear(VanDateTo(van)).empty() ? "" : "it was given back";
}

std::string_view WhyLoanStays(const LastYearRecord& lastYear, int loan)
{
    if (!lastYear(LoanDateTo(loan)).empty())
        return "it was discharged";
    return lastYear(MaxBalanceEarlier(loan)).empty() ? "it had no balance at the end of last year" : "";
}

Amount CurrencyRates::RateOf(std::string_view currency) const
{
    // A rate beside an empty name makes no currency of the empty name.
    if (currency.empty())
        return Amount();
    const auto row = std::ranges::find(rows, currency, &Row::currency);
    return row == rows.end() ? Amount() : row->rate;
}

CurrencyRates ReadCurrencyRates(const LastYearRecord& currencies)
{
    CurrencyRates rates;
    rates.firstRate = currencies("Rate1");
    int number = 0;
    for (CurrencyRates::Row& row : rates.rows) {
        row.currency = currencies(Numbered("Currency", ++number));
        row.rate = ReadAmount(currencies(Numbered("Rate", number)));
    }
    return rates;
}

CarriedFields CarryDescriptions(const LastYearRecord& lastYear)
{
    CarriedFields carried;
    carried.reserve(DescriptionLines);
    CarryNumbered(carried, lastYear, Description);
    return carried;
}

CarriedFields CarryAddress(const LastYearRecord& lastYear)
{
    CarriedFields carried;
    CarryNumbered(carried, lastYear, Address);
    CarryNamed(carried, lastYear, "Postcode");
    return carried;
}

CarriedFields CarryVans(const LastYearRecord& lastYear)
{
    std::vector<int> runOn;
    for (int van = 1; van <= Vans; ++van)
        if (WhyVanStays(lastYear, van).empty())
            runOn.push_back(van);
    CarriedFields carried;
    for (int slot = 1; slot <= Vans; ++slot) {
        CarriedField number{RegNumber(slot), {}};
        CarriedField beforeApril{BeforeApril(slot), {}};
        if (slot <= static_cast<int>(runOn.size())) {
            const int van = Nth(runOn, slot);
            number.text = lastYear(RegNumber(van));
            beforeApril.text = TickText(IsSet(lastYear(BeforeApril(van))));
        }
        carried.push_back(number);
        carried.push_back(beforeApril);
    }
    return carried;
}

CarriedFields CarryLoans(const LastYearRecord& lastYear, const CurrencyRates& rates)
{
    CarriedFields carried;
    std::vector<std::string_view> balances;
    for (int loan = 1; loan <= Loans; ++loan) {
        const std::string_view currency = lastYear(Currency(loan));
        // A loan that ended has its currency too: what is left empty would be taken for a currency without a rate.
        if (rates.RateOf(currency) <= Amount()) {
            carried.push_back({Currency(loan), edition::FirstCurrency});
            carried.push_back({Index(loan), "1"});
            carried.push_back({InterestRate(loan), rates.firstRate});
        } else {
            // Kept: rate and place in the list are last year's, even where this year's list has others.
            for (const NumberedFields<Loans>* fields : {&Currency, &Index, &InterestRate})
                CarryNamed(carried, lastYear, (*fields)(loan));
        }
        if (WhyLoanStays(lastYear, loan).empty())
            balances.push_back(lastYear(MaxBalanceEarlier(loan)));
    }
    // Kept: balances are packed from the first loan on and change their column, while currency and rate stay with the
    // number of their loan.
    balances.resize(Loans);
    for (int loan = 1; loan <= Loans; ++loan)
        carried.push_back({MaxBalanceLater(loan), Nth(balances, loan)});
    return carried;
}

CarriedFields Carry(Carries rule, const LastYearRecord& lastYear, const std::function<const CurrencyRates&()>& rates)
{
    switch (rule) {
    case Carries::Descriptions:
        return CarryDescriptions(lastYear);
    case Carries::Address:
        return CarryAddress(lastYear);
    case Carries::Vans:
        return CarryVans(lastYear);
    case Carries::Loans:
        return CarryLoans(lastYear, rates());
    case Carries::KeysOnly:
        break;
    }
    return {};
}

CarriedCars CarryCars(const LastYearRecord* p11d, const LastYearRecord* extraCars)
{
    std::vector<Car> runOn;
    for (int car = 1; car <= Cars; ++car) {
        const LastYearRecord* const lastYear = car <= CarsInP11D ? p11d : extraCars;
        if (lastYear != nullptr && WhyCarStays(*lastYear, car).empty())
            runOn.push_back(ReadCar(*lastYear, car));
    }
    runOn.resize(Cars);
    CarriedCars carried;
    for (int slot = 1; slot <= Cars; ++slot) {
        CarriedFields& record = slot <= CarsInP11D ? carried.p11d : carried.extraCars;
        const Car& car = Nth(runOn, slot);
        for (std::size_t i = 0; i < CarFields.size(); ++i)
            record.push_back({CarFields[i](slot), car.texts[i]});
        record.push_back({FNoC02(slot), TickText(car.noC02)});
        record.push_back({FFuelTick(slot), TickText(car.fuel)});
    }
    return carried;
}

CarriedFields CarryIdentity(const LastYearRecord& p11d)
{
    CarriedFields carried;
    for (const std::string_view field : {"DOB", "SexTick", "PAYEBox", "WorkNumberBox", "NatIns"})
        CarryNamed(carried, p11d, field);
    carried.push_back({"DirectorTick", TickText(IsSet(p11d("DirectorTick")))});
    return carried;
}

CarriedFields CarryEmployer(const LastYearRecord& p11db)
{
    CarriedFields carried;
    CarryNamed(carried, p11db, "EmployerReference");
    CarryNamed(carried, p11db, "AccountsOffReference");
    CarryNumbered(carried, p11db, EmployerAdd);
    CarryNumbered(carried, p11db, ReturnAdd);
    return carried;
}

} // namespace quillmere
