#pragma once

#include "cars/CarPrices.h"
#include "cars/CarSheet.h"
#include "clientdb/Notepad.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmere {

/// The car notepad: a working sheet for five cars, of which one shows at a time, by the rules of an older year. It is
/// out of ordinary use. Its Ok writes its own table and copies the cars' facts to page 1 and to the record of further
/// cars.
class FNotepad : public Notepad {
public:
    explicit FNotepad(Session& session);

    bool Load() override;

    /// A car as the dialog has found it.
    struct FoundCar {
        std::string make, model, fuel, co2, registrationDate, engine;
    };
    /// Puts a car that the dialog has found into the boxes, and works the sheet out.
    void TakeCar(const FoundCar& car);

    /// Fields of one car in the sheet's working store.
    static constexpr std::size_t Fields = 43;

private:
    static constexpr int Tabs = 5;

    void KeepCars();
    void BindEvents();
    void ShowStored(Entry& entry) override;
    void TabShown() override { SetWithdrawnState(); }
    void ClickTab(int car);
    /// What a field of a car reads, by its place among the fields of one.
    std::string TextOfCar(int car, std::size_t place) const;

    void Recalculate() override;
    void Compute();
    CarDateTexts DateTexts() const;
    CarSheetFacts Facts() const;
    void Put(const CarSheetWorking& working);
    /// The tick beside the day of withdrawal has a meaning only with a day.
    void SetWithdrawnState();

    void LeaveFuel();
    void LeaveRegistration();
    void LeaveFirst();
    void LeaveLast();
    void LeavePrice();
    void LeaveExtras();
    void LeaveContribution();
    /// Says what is wrong with a price and empties its box; false if nothing is.
    bool Refuse(Box& price, PriceCheck check);
    void LeaveWithdrawn();
    void ClickFuelTick();

    std::vector<Result> Results(const Recordset& own) const override;
    void AddCar(std::vector<Result>& results, int car) const;
    std::string Total(std::string_view storedStem) const;
    void Delete() override;
};

} // namespace quillmere
