#pragma once

#include "frame/Screen.h"

#include <array>
#include <string_view>

namespace quillmere {

class Recordset;

/// One of the two schedules behind section 4 of the declaration: what is particular to it.
struct AdjustmentSchedule {
    std::string_view name; ///< of the screen and of its table
    std::string_view caption;
    std::string_view timer;
    std::string_view amount; ///< stem of the boxes and of the fields
    std::string_view amountCaption;
    std::string_view total;
    std::string_view target; ///< boxes of the declaration that take the result
    std::string_view targetDescription;
    std::string_view loadingError;
};

inline constexpr auto AdjustmentSchedules = std::to_array<AdjustmentSchedule>({
    {.name = "P11DBNotepad1",
     .caption = "P11D (B) Notepad 1",
     .timer = "BNotepad1",
     .amount = "AmountAdded",
     .amountCaption = "Amount to be added",
     .total = "AmountAddedTotal",
     .target = "Section4BoxB",
     .targetDescription = "Section4DescriptionB",
     .loadingError = "P11D(B) Notepad 1 - loading error"},
    {.name = "P11DBNotepad2",
     .caption = "P11D (B) Notepad 2",
     .timer = "BNotepad2",
     .amount = "AmountDeducted",
     .amountCaption = "Amount to be deducted",
     .total = "AmountDeductedTotal",
     .target = "Section4BoxC",
     .targetDescription = "Section4DescriptionC",
     .loadingError = "P11D(B) Notepad 2 - loading error"},
});

/// A schedule of up to twenty lines, each a description and an amount. Its total and whether there is any description
/// go to the declaration.
class AdjustmentNotepad : public Screen {
public:
    AdjustmentNotepad(Session& session, const AdjustmentSchedule& schedule);

    bool Load() override;

private:
    Box& Description(int line) { return box("Description", line); }
    Box& AmountOf(int line) { return box(schedule.amount, line); }
    void LoadLines();
    void Recalculate();
    void Ok();
    void StoreLines();
    void HandBack();
    void Delete();

    const AdjustmentSchedule& schedule;
};

} // namespace quillmere
