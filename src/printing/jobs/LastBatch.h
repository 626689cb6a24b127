#pragma once

#include "frame/PrintedTable.h"
#include "frame/Screen.h"
#include "printing/jobs/BatchRun.h"

namespace quillmere {

struct PrintSystem;

/// "Last Batch": what became of each document of the batch that ran last, and the way to print what was not printed.
class LastBatch : public Screen {
public:
    LastBatch(Session& session, PrintSystem& printing);

    bool Load() override;

private:
    void Fill();
    void PrintAgain();
    PrintedTable Sheet() const;

    PrintSystem& printing;
    BatchRun run;
};

} // namespace quillmere
