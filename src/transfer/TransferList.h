#pragma once

#include "clientdb/ListFilter.h"
#include "frame/Screen.h"
#include "transfer/YearTransfer.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

/// "Transfer Selected Employees": the employees of last year's database, to be taken over one by one or all of them.
class TransferList : public Screen {
public:
    explicit TransferList(Session& session);

    /// The screen is not shown if there is nobody to transfer.
    bool Load() override { return ShowLastYearClients(); }

private:
    /// Finds last year's folder and fills the list. False, after a message, if there is nobody in it.
    [[nodiscard]] bool ShowLastYearClients();
    std::vector<std::string> ReadLastYearClients();
    [[nodiscard]] bool Confirmed(std::string_view title, std::string_view first);
    void TransferSelected();
    void TransferAll();
    /// Transfers the one employee, or with none all of them.
    void Run(const std::optional<LastYearEmployee>& selected);
    /// False, after a message, if the run could not be brought to its end.
    [[nodiscard]] bool TransferEach(YearTransfer& transfer, const std::vector<LastYearEmployee>& employees,
                                    TransferMode mode);

    std::filesystem::path lastYearDatabase;
    std::optional<ListFilter> filter;
};

} // namespace quillmere
