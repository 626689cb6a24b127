#pragma once

#include "cars/CarColumn.h"
#include "clientdb/Notepad.h"

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
class ExtraCarsScreen : public Notepad {
public:
    ExtraCarsScreen(Session& session, const ExtraCars& which);

private:
    void Write(Recordset& own) const override;
    bool HandOver(const std::vector<Result>& results) override;
    void Delete() override;

    std::deque<CarColumn> columns;
};

} // namespace quillmere
