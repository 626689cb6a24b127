#pragma once

#include "printing/PrintJob.h"

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
    std::string_view headingInBatch = {}; ///< if it differs
    std::string_view subHeading = {};
    std::string_view section = {};
    std::span<const ReportColumn> columns;
    std::string_view loadingError;
    bool ofEmployer = false; ///< one record for each employer
};

/// All schedules that have a report.
std::span<const ScheduleReport> ScheduleReports();

/// The report of a schedule by its table's name. An unknown one is a mistake in the program: std::logic_error.
const ScheduleReport& ScheduleReportOf(std::string_view table);

/// Prints a schedule on a page of its own; with no line filled, nothing. An employee without a record is told of.
void PrintScheduleReport(PrintJob& job, const ScheduleReport& report);

} // namespace quillmere
