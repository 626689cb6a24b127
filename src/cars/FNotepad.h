#pragma once

#include "cars/CarPrices.h"
#include "cars/CarSheet.h"
#include "clientdb/store/Recordset.h"
#include "frame/Screen.h"
#include "frame/Session.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quillmere {

/// The car notepad: a working sheet for five cars, of which one shows at a time, by the rules of an older year. It is
/// out of ordinary use. Its Ok writes its own table and copies the cars' facts to page 1 and to the record of further
/// cars.
class FNotepad : public Screen {
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
    /// The working store has room for six cars, of which the sheet uses five.
    static constexpr std::size_t Cars = 6;
    static constexpr int Tabs = 5;
    using CarTexts = std::array<std::string, Fields>;

    CarTexts& TextsOf(int car) { return texts[static_cast<std::size_t>(car - 1)]; }
    const CarTexts& TextsOf(int car) const { return texts[static_cast<std::size_t>(car - 1)]; }
    void BindEvents();
    void ReadRecord(const Recordset& own);
    void StoreBoxes();
    void ShowCar(int car);
    void ClickTab(int car);

    void Recalculate();
    void Compute();
    CarDateTexts DateTexts() const;
    CarSheetFacts Facts() const;
    void Write(const CarSheetWorking& working);
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

    void Ok();
    void Store();
    void StoreCar(Recordset& records, int car);
    void StorePage(Recordset& records, std::string_view field, std::string_view text);
    std::string Total(std::string_view storedStem) const;
    void Delete();

    std::array<CarTexts, Cars> texts;
    int current = 1;
};

} // namespace quillmere
