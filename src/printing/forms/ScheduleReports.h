#pragma once

#include "printing/forms/Records.h"
#include "printing/forms/ReportPage.h"

#include <span>
#include <string_view>

namespace quillmere {

/// A column of figures of a schedule's report.
struct ReportColumn {
    std::string_view field; ///< stem of the lines' fields
    double right;           ///< where the figures end, mm
    std::string_view head;
    std::string_view secondHead = {}; ///< one line lower
};

/// The report of one schedule: up to twenty lines with their totals.
struct ScheduleReport {
    std::string_view table;
    std::string_view heading;
    std::string_view headingInBatch = {}; ///< of the declaration at its end, if it differs
    std::string_view subHeading = {};
    std::string_view section = {};
    std::span<const ReportColumn> columns;
    std::string_view loadingError;
    RecordOf whose = RecordOf::Employee;
};

/// All schedules that have a report.
std::span<const ScheduleReport> ScheduleReports();

/// The report of a schedule by its table's name. An unknown one is a mistake in the program: std::logic_error.
const ScheduleReport& ScheduleReportOf(std::string_view table);

/// Prints a schedule on a page of its own; with no line filled, nothing. False if there is no record.
[[nodiscard]] bool PrintScheduleReport(PageLayer& page, const ReportNames& names, Records& records,
                                       const ScheduleReport& report, bool isInBatchDeclaration = false);

} // namespace quillmere
