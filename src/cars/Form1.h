#pragma once

#include "cars/CarReference.h"
#include "frame/Screen.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace quillmere {

/// The dialog that finds a car's CO2 figure and engine size in the reference database: five lists, each of which fills
/// the next one. It hands what was found to the car notepad.
class Form1 : public Screen {
public:
    static constexpr std::size_t Lists = 5;

    explicit Form1(Session& session);

    bool Load() override;

private:
    void ListManufacturers();
    void RestoreOpeningState();
    void EmptyAfter(std::size_t list);
    void EmptyAll();

    void ChooseFrom(std::size_t list);
    void Choose(std::size_t list);
    [[nodiscard]] bool RegistrationDateStands();
    void FillNext(std::size_t list);
    void FindFigure();
    [[nodiscard]] bool Matches(std::size_t lists) const;
    void Ok();

    /// Runs what reads the reference database; what the store says of a failure is shown under the screen's caption.
    void Reading(const std::function<void()>& work);

    std::optional<CarReference> reference;
    std::array<std::string, Lists> chosen;
    std::array<ListedValues, Lists> listed;
};

} // namespace quillmere
