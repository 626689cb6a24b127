#pragma once

#include "frame/PrintedTable.h"
#include "frame/Screen.h"
#include "review/SelfTest.h"

#include <vector>

namespace quillmere::review {

/// The published examples, worked while the user looks on by the rules that work his forms.
class CalculatorCheck : public Screen {
public:
    explicit CalculatorCheck(Session& session);

    bool Load() override;

private:
    void ShowChosen();
    PrintedTable AsTable() const;

    std::vector<WorkedExample> worked; ///< in the order of the list
};

} // namespace quillmere::review
