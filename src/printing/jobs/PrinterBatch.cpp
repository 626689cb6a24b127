#include "printing/jobs/PrinterBatch.h"

#include "edition/Edition.h"
#include "printing/jobs/JobSequence.h"
#include "printing/jobs/PrintJobs.h"

#include <fmt/format.h>
#include <utility>

namespace quillmere {

namespace {

using Outcome = BatchLine::Outcome;

bool HasFailed(PrintResult result)
{
    return result == PrintResult::PrinterUnreachable || result == PrintResult::NotReady;
}

} // namespace

PrinterBatch::PrinterBatch(Session& session, PrintSystem& printing, BatchOrder order)
    : Batch(session, printing, std::move(order), Route::Printer)
{
}

Opening PrinterBatch::Open(const std::string& name, BatchLine::Of of)
{
    // What is printed again is not what is being worked on.
    if (of == BatchLine::Of::Employee && !report.order.only)
        job.session.CurrentEmployee = job.names.employee;
    const Opening opening = isStopped ? Opening::Left : job.document.OpenPrintJob(name);
    isStopped = opening == Opening::Left;
    if (isStopped && firstLeft.empty())
        firstLeft = name;
    report.to = job.session.settings.vsPrinter;
    return opening;
}

void PrinterBatch::Close(BatchLine line)
{
    const PrintResult result = job.document.vsEndDoc();
    if (result == PrintResult::Sent) {
        line.outcome = Outcome::Done;
        line.pages = job.document.PagesSent();
        MarkPrinted(job.Clients(), job.document, job.session.platform.Today());
    }
    if (HasFailed(result)) {
        line.outcome = Outcome::Failed;
        line.words =
            result == PrintResult::NotReady ? "the printing system was not ready" : "the printer did not answer";
    }
    Note(std::move(line));
    // A second one in turn, or a printer that is gone: the others would fare no better.
    isStopped = HasFailed(result) && (lastHasFailed || result == PrintResult::NotReady || !job.document.HasPrinter());
    lastHasFailed = HasFailed(result);
}

void PrinterBatch::TellOfEnd()
{
    TellOfUnprinted();
    Batch::TellOfEnd();
}

void PrinterBatch::TellOfUnprinted() const
{
    constexpr std::size_t MostNames = 10;
    std::string text;
    std::size_t unprinted = 0;
    for (const BatchLine& line : report.lines) {
        if (line.outcome != Outcome::Failed || ++unprinted > MostNames)
            continue;
        text += unprinted == 1 ? "Not printed:\n\n" : "\n";
        text += line.of == BatchLine::Of::Employee ? EmployeeDocumentName(report.order.employer, line.name)
                                                   : DeclarationDocumentName(report.order.employer);
    }
    if (unprinted > MostNames)
        text += fmt::format("\nand {} more", unprinted - MostNames);
    if (const int left = DocumentsLeft(); isStopped && left > 0)
        text += fmt::format("{}{} of the batch {} left, from '{}' on.", text.empty() ? "" : "\n\n",
                            left == 1 ? "1 document" : fmt::format("{} documents", left), left == 1 ? "is" : "are",
                            firstLeft);
    if (!text.empty())
        job.session.messages.Tell(edition::AppTitle, text);
}

} // namespace quillmere
