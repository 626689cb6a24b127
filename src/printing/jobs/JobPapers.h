#pragma once

#include "printing/forms/ExtraCarSheets.h"
#include "printing/forms/ScheduleReports.h"
#include "printing/forms/WorkingReports.h"
#include "printing/jobs/PrintJob.h"

/// The papers of a job, read from its records. A record that is missing is told of.
namespace quillmere {

void PrintScheduleReport(PrintJob& job, const ScheduleReport& report);

/// A record that is missing or cannot be read is told of once.
void PrintWorkingReport(PrintJob& job, const WorkingReport& report, int first, int last);

/// True if one of the cars has a cash equivalent in the table. An employee with no record there has none.
[[nodiscard]] bool ExtraCarsHaveData(PrintJob& job, std::string_view table, int firstCar, int lastCar);

/// Begins a page and draws the sheet on it, from `ExtraCars`. False, and with no page, without a record there.
[[nodiscard]] bool PrintExtraCarSheet(PrintJob& job, const ExtraCarSheet& sheet);

} // namespace quillmere
