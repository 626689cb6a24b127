#pragma once

#include "frame/Amount.h"
#include "printing/forms/Records.h"
#include "printing/forms/ReportPage.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quillmere {

/// The fields of one numbered thing: a field by its stem, without the number.
using WorkingReader = std::function<std::string(std::string_view stem)>;

/// How a line of a working paper shows its source.
enum class Show {
    Title,   ///< a label alone, bold
    Heads,   ///< a label and the heads of the two columns of a period, bold label
    Text,    ///< as stored: names, dates, days, miles, percentages
    Figure,  ///< an amount
    Worked,  ///< an amount that is not stored
    Period,  ///< two dates, from and to
    Address, ///< some fields, one below the other
};

/// One line of a working paper: its label and where its value comes from.
struct WorkingRow {
    std::string_view label;
    Show show = Show::Title;
    std::string_view field = {};
    std::string_view field2 = {};     ///< of a period: its end
    std::string_view otherwise = {};  ///< printed where the field is empty, or the head of its column
    std::string_view otherwise2 = {}; ///< the same for the end of a period
    Amount (*work)(const WorkingReader& read) = nullptr;
    std::string (*label2)(const WorkingReader& read) = nullptr; ///< makes the label from the record
};

/// The working paper of one calculation.
struct WorkingReport {
    std::string_view name;
    std::string_view table;
    std::string_view heading;
    std::string_view subHeading = {};
    std::string_view section;
    std::string_view loadingError = {}; ///< title of the message about a missing record
    std::string_view readingError = {}; ///< a message of its own for a record that is missing or cannot be read
    std::span<const std::string_view> items = {}; ///< what each numbered one is called, from 1; none: there is one only
    /// Fields of which one at least must be filled; what is only worked out or always stored does not count.
    std::span<const std::string_view> entered;
    std::span<const WorkingRow> rows;
    double pitch = 7;         ///< from line to line, mm
    bool labelsRight = false; ///< labels end at the first column instead of starting at the left
};

std::span<const WorkingReport> WorkingReports();

/// A working paper by its name. An unknown one is a mistake in the program: std::logic_error.
const WorkingReport& WorkingReportOf(std::string_view name);

/// Prints the working papers of the things from `first` to `last` (vans 1 to 3; 0 and 0 where there is one only), each
/// on a page of its own; of one with nothing entered, nothing. False if there is no record.
[[nodiscard]] bool PrintWorkingReport(PageLayer& page, const ReportNames& names, Records& records,
                                      const WorkingReport& report, int first, int last);

} // namespace quillmere
