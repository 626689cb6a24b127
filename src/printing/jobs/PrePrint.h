#pragma once

#include "clientdb/ListFilter.h"
#include "frame/Screen.h"
#include "printing/jobs/PrintJobs.h"

#include <optional>

namespace quillmere {

/// "Employer Batch Print": an employer, and what is to be printed of all employees.
class PrePrint : public Screen {
public:
    PrePrint(Session& session, PrintSystem& printing);

    bool Load() override;

private:
    void Print();
    BatchSelection Selection() const;

    PrintSystem& printing;
    std::optional<ListFilter> filter;
};

} // namespace quillmere
