#include "printing/jobs/JobSequence.h"

#include "frame/Text.h"
#include "frame/Tick.h"
#include "printing/forms/P11DPages.h"
#include "printing/jobs/JobPapers.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <utility>
#include <variant>

namespace quillmere {

namespace {

/// A page or report of an employee's document.
struct SequenceRow {
    int step;
    BatchTick tick;             ///< that it needs in a batch
    std::string_view procedure; ///< for the general error box; empty: the job's
    std::variant<FormPage, SheetPaper, SchedulePaper, WorkingPaper> paper;
};

/// All of it, in the order of printing.
constexpr auto Sequence = std::to_array<SequenceRow>({
    {1, BatchTick::P11D, "Print P11D(1)", PrintP11D1},
    {2, BatchTick::P11D, "Print P11D(2)", PrintP11D2},
    {3, BatchTick::P11D, Cars3And4.procedure, SheetPaper{Cars3And4}},
    {4, BatchTick::P11D, Cars5And6.procedure, SheetPaper{Cars5And6}},
    {5, BatchTick::A, {}, SchedulePaper{"ANotepad"}},
    {6, BatchTick::B, {}, SchedulePaper{"BNotepad"}},
    {7, BatchTick::C, {}, SchedulePaper{"CNotepad"}},
    {8, BatchTick::D, {}, WorkingPaper{"DNotepad"}},
    {9, BatchTick::E, {}, WorkingPaper{"ENotepad", 1, 3}},
    // A car that cannot be read is told of by itself, and the next one is tried.
    {10, BatchTick::Cars, {}, WorkingPaper{"Cars 1 and 2", 1, 1}},
    {10, BatchTick::Cars, {}, WorkingPaper{"Cars 1 and 2", 2, 2}},
    // Kept: where a batch prints no forms there are no sheets, and so no papers of the further cars.
    {11, BatchTick::Cars, {}, WorkingPaper{"Cars 3 to 6", 3, 3, &Cars3And4}},
    {11, BatchTick::Cars, {}, WorkingPaper{"Cars 3 to 6", 4, 4, &Cars3And4}},
    {12, BatchTick::Cars, {}, WorkingPaper{"Cars 3 to 6", 5, 5, &Cars5And6}},
    {12, BatchTick::Cars, {}, WorkingPaper{"Cars 3 to 6", 6, 6, &Cars5And6}},
    {13, BatchTick::G, {}, WorkingPaper{"GNotepad", 1, 3}},
    {14, BatchTick::H, {}, WorkingPaper{"HNotepad", 1, 5}},
    {15, BatchTick::I, {}, SchedulePaper{"INotepad"}},
    {16, BatchTick::J, {}, WorkingPaper{"JNotepad"}},
    {17, BatchTick::K, {}, SchedulePaper{"KNotepad"}},
    {18, BatchTick::L, {}, SchedulePaper{"LNotepad"}},
    {19, BatchTick::M, {}, SchedulePaper{"NNotepad1"}},
    {19, BatchTick::M, {}, SchedulePaper{"NNotepad2"}},
    {19, BatchTick::M, {}, SchedulePaper{"NNotepad3"}},
    {20, BatchTick::N, {}, SchedulePaper{"ONotepad1"}},
    {20, BatchTick::N, {}, SchedulePaper{"ONotepad2"}},
    {20, BatchTick::N, {}, SchedulePaper{"ONotepad3"}},
    {20, BatchTick::N, {}, SchedulePaper{"ONotepad4"}},
    {20, BatchTick::N, {}, SchedulePaper{"ONotepad5"}},
    {20, BatchTick::N, {}, SchedulePaper{"ONotepad6"}},
});

} // namespace

FieldReader ReaderOf(const Recordset& records)
{
    return [&records](std::string_view field) { return std::string(records.Field(field)); };
}

EmployeeDocument::EmployeeDocument(PrintJob& job, std::string_view procedure, const Recordset& records)
    : job(job), procedure(procedure), read(ReaderOf(records))
{
    job.nationalInsurance = records.Field("NatIns");
}

void EmployeeDocument::Print(const BatchSelection& selection)
{
    if (selection.Has(BatchTick::P11D))
        job.document.BeginsWith({job.names.employer, job.names.employee});
    for (const SequenceRow& row : Sequence) {
        if (!selection.Has(row.tick))
            continue;
        job.At(row.procedure.empty() ? procedure : row.procedure, row.step);
        std::visit([this](const auto& paper) { Print(paper); }, row.paper);
    }
}

void EmployeeDocument::Print(FormPage page)
{
    job.page.NextPrintPage();
    page(job.page, read);
}

void EmployeeDocument::Print(const SheetPaper& sheet)
{
    const int first = sheet.cars.firstCar;
    if (ExtraCarsHaveData(job, "ExtraCars", first, first + 1) && PrintExtraCarSheet(job, sheet.cars))
        drawnSheets.push_back(&sheet.cars);
}

void EmployeeDocument::Print(const SchedulePaper& schedule)
{
    PrintScheduleReport(job, ScheduleReportOf(schedule.table));
}

void EmployeeDocument::Print(const WorkingPaper& working)
{
    if (working.sheet == nullptr || std::ranges::find(drawnSheets, working.sheet) != drawnSheets.end())
        PrintWorkingReport(job, WorkingReportOf(working.name), working.first, working.last);
}

void PrintDeclarationDocument(PrintJob& job, std::string_view procedure, DeclarationVariant variant,
                              const FieldReader& read)
{
    job.At(procedure, DeclarationStep);
    job.page.NextPrintPage();
    PrintP11DBDeclaration(job.page, variant, read);
    job.page.NextPrintPage();
    PrintP11DBNotes(job.page, variant, read);
    for (const std::string_view schedule : {"P11DBNotepad1", "P11DBNotepad2"})
        PrintScheduleReport(job, ScheduleReportOf(schedule));
}

FieldReader ReaderOf(const DeclarationTotals& totals)
{
    struct TextField {
        std::string_view name;
        std::string DeclarationTotals::*text;
    };
    struct TickField {
        std::string_view name;
        bool DeclarationTotals::*tick;
    };
    static constexpr auto texts = std::to_array<TextField>({
        {"EmployerReference", &DeclarationTotals::employerReference},
        {"AccountsOffReference", &DeclarationTotals::accountsOffReference},
        {"Section1ABox", &DeclarationTotals::section1ABox},
        {"Section1CBox", &DeclarationTotals::section1CBox},
        {"SentToBox", &DeclarationTotals::sentToBox},
        {"SentToDate", &DeclarationTotals::sentToDate},
        {"Section4ABox", &DeclarationTotals::section4ABox},
        {"Section4BBox", &DeclarationTotals::section4BBox},
        {"Section4BDesc", &DeclarationTotals::section4BDesc},
        {"Section4CBox", &DeclarationTotals::section4CBox},
        {"Section4CDesc", &DeclarationTotals::section4CDesc},
        {"Section4DBox", &DeclarationTotals::section4DBox},
        {"Section4FBox", &DeclarationTotals::section4FBox},
    });
    static constexpr auto ticks = std::to_array<TickField>({
        {"Section1Tick", &DeclarationTotals::section1Tick},
        {"Section2Tick1", &DeclarationTotals::section2Tick1},
        {"Section2Tick2", &DeclarationTotals::section2Tick2},
        {"Section2Tick3", &DeclarationTotals::section2Tick3},
    });
    std::map<std::string, std::string, std::less<>> fields;
    for (const TextField& field : texts)
        fields.emplace(field.name, totals.*field.text);
    for (const TickField& field : ticks)
        fields.emplace(field.name, StoredTick(totals.*field.tick));
    for (std::size_t line = 0; line < AddressLines; ++line) {
        fields.emplace(Numbered("EmployerAdd", static_cast<int>(line) + 1), totals.employerAdd[line]);
        fields.emplace(Numbered("ReturnAdd", static_cast<int>(line) + 1), totals.returnAdd[line]);
    }
    return [fields = std::move(fields)](std::string_view field) { return fields.at(std::string(field)); };
}

std::string EmployeeDocumentName(std::string_view employer, std::string_view employee)
{
    return std::string(employer).append(" - ").append(employee);
}

std::string DeclarationDocumentName(std::string_view employer)
{
    return std::string(employer).append(" - P11D(b)");
}

} // namespace quillmere
