#include "printing/jobs/JobPapers.h"

#include "edition/Edition.h"

namespace quillmere {

namespace {

constexpr std::string_view NotFound = "Employee not found";

} // namespace

void PrintScheduleReport(PrintJob& job, const ScheduleReport& report)
{
    if (!PrintScheduleReport(job.page, job.names, job, report, job.batchDeclaration))
        job.session.messages.Tell(report.loadingError, NotFound);
}

void PrintWorkingReport(PrintJob& job, const WorkingReport& report, int first, int last)
{
    const bool tellsOfReading = !report.readingError.empty();
    try {
        if (PrintWorkingReport(job.page, job.names, job, report, first, last))
            return;
    } catch (const StoreError&) {
        // Told below; the job goes on with what comes after.
        if (!tellsOfReading)
            throw;
    }
    if (tellsOfReading)
        job.session.messages.Tell(edition::AppTitle, report.readingError);
    else
        job.session.messages.Tell(report.loadingError, NotFound);
}

bool ExtraCarsHaveData(PrintJob& job, std::string_view table, int firstCar, int lastCar)
{
    if (job.Seek(table, RecordOf::Employee))
        return HaveCashEquivalents(job, table, firstCar, lastCar);
    job.session.messages.Tell("Extra Cars check for data error", NotFound);
    return false;
}

bool PrintExtraCarSheet(PrintJob& job, const ExtraCarSheet& sheet)
{
    if (!job.Seek("ExtraCars", RecordOf::Employee)) {
        job.session.messages.Tell(sheet.loadingError, NotFound);
        return false;
    }
    job.page.NextPrintPage();
    DrawExtraCarSheet(job.page, sheet, job.nationalInsurance,
                      [&job](std::string_view field) { return std::string(job.Field("ExtraCars", field)); });
    return true;
}

} // namespace quillmere
