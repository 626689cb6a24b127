#pragma once

#include "printing/jobs/Batch.h"

#include <string>

namespace quillmere {

/// A batch that goes to the printer, in one job a document.
class PrinterBatch : public Batch {
public:
    PrinterBatch(Session& session, PrintSystem& printing, BatchOrder order);

protected:
    Opening Open(const std::string& name, BatchLine::Of of) override;
    void Close(BatchLine line) override;
    void TellOfEnd() override;
    void TellBeforeFailure() override { TellOfUnprinted(); }

private:
    /// Tells, once, whose documents have not been printed and how many are left.
    void TellOfUnprinted() const;

    std::string firstLeft; ///< name of the first document that the batch has not come to
    bool isStopped = false, lastHasFailed = false;
};

} // namespace quillmere
