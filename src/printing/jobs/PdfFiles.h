#pragma once

#include "frame/Screen.h"
#include "printing/jobs/BatchRun.h"

namespace quillmere {

struct PrintSystem;

/// "Batch to PDF Files": which files a batch makes of an employer's documents, and where; it shows them being made.
class PdfFiles : public Screen {
public:
    PdfFiles(Session& session, PrintSystem& printing);

    /// Whose documents, and which.
    void SetOrder(BatchOrder newOrder);

    bool Load() override;

private:
    void Browse();
    void Write();
    /// What the boxes say.
    FilesOrder Files() const;

    PrintSystem& printing;
    BatchOrder order;
    BatchRun run;
};

} // namespace quillmere
