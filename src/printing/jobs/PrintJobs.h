#pragma once

#include "frame/PrintedTable.h"
#include "printing/jobs/PrintSystem.h"

#include <bitset>
#include <cstddef>
#include <string_view>

namespace quillmere {

/// What a batch prints: the schedules by their sections, the employees' forms, the employer's declaration.
enum class BatchTick : std::size_t { A, B, C, D, E, Cars, G, H, I, J, K, L, M, N, P11D, P11DB };
inline constexpr std::size_t BatchTicks = 16;

/// The ticks that the user has set.
class BatchSelection {
public:
    BatchSelection() = default;
    static BatchSelection All()
    {
        BatchSelection all;
        all.ticks.set();
        return all;
    }
    void Set(BatchTick tick, bool isSet = true) { ticks.set(static_cast<std::size_t>(tick), isSet); }
    bool Has(BatchTick tick) const { return ticks.test(static_cast<std::size_t>(tick)); }
    /// True if there is anything to print for an employee.
    bool HasPapersOfEmployees() const
    {
        auto others = ticks;
        others.reset(static_cast<std::size_t>(BatchTick::P11DB));
        return others.any();
    }

private:
    std::bitset<BatchTicks> ticks;
};

/// Draws the document of one employee, or the declaration of the employer, and shows it: as a PDF file where the
/// settings say so, else in the preview. It never prints; that is done from the preview.
void PrintEmployeeJob(Session& session, PrintSystem& printing, std::string_view employer, std::string_view employee,
                      PrintedDocument document);

/// Draws a table that a screen shows and shows it as a document of its own, as PrintEmployeeJob does.
void PrintTableJob(Session& session, PrintSystem& printing, const PrintedTable& table);

/// Prints a document for each employee of the employer, in the order of their names, then the declaration, as selected.
/// They go to the printer; nothing is shown.
void PrintBatchJob(Session& session, PrintSystem& printing, std::string_view employer, const BatchSelection& selection);

/// Marks the form with which the document in hand begins, if it begins with one, as printed today. The mark is a help:
/// where the store cannot take it nothing else suffers.
void MarkPrinted(const Session& session, const JobDocument& document);

/// Says in the status bar how many pages a printer has been sent, and perhaps something more.
void SayPagesSent(Session& session, int pages, std::string_view printer, std::string_view more = {});

} // namespace quillmere
