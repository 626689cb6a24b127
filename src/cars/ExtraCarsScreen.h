#pragma once

#include "cars/CarColumn.h"
#include "frame/Screen.h"

#include <array>
#include <deque>
#include <string_view>

namespace quillmere {

/// One of the two screens for further cars: what is particular to it.
struct ExtraCars {
    std::string_view name;
    std::string_view caption;
    std::array<int, 2> cars;
    std::string_view loadingTitle;
};

inline constexpr auto ExtraCarsScreens = std::to_array<ExtraCars>({
    {.name = "Form3_4", .caption = "Cars 3 + 4", .cars = {3, 4}, .loadingTitle = "Cars 3 + 4 - loading error"},
    {.name = "Form5_6", .caption = "Cars 5 + 6", .cars = {5, 6}, .loadingTitle = "Cars 5 + 6 - loading error"},
});

/// Two further cars of the open employee, in the columns of page 1. The screen holds the only working copy of its cars:
/// nothing is stored, and the totals on page 1 stay as they are, until Ok.
class ExtraCarsScreen : public Screen {
public:
    ExtraCarsScreen(Session& session, const ExtraCars& which);

    bool Load() override;

private:
    void LoadCars();
    void Ok();
    void Store();
    void Delete();

    const ExtraCars& which;
    std::deque<CarColumn> columns;
};

} // namespace quillmere
