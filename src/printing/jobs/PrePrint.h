#pragma once

#include "clientdb/ListFilter.h"
#include "frame/Screen.h"
#include "printing/jobs/BatchRun.h"

#include <optional>

namespace quillmere {

struct PrintSystem;

/// "Employer Batch Print": an employer, and what is to be printed of all employees.
class PrePrint : public Screen {
public:
    PrePrint(Session& session, PrintSystem& printing);

    bool Load() override;

private:
    void Print();
    void ToPdfFiles();
    /// What is to be printed; nothing, which is told, if no employer is chosen.
    std::optional<BatchOrder> Order();
    BatchSelection Selection() const;

    PrintSystem& printing;
    std::optional<ListFilter> filter;
    BatchRun run;
};

} // namespace quillmere
