#pragma once

#include "declaration/Declaration.h"
#include "printing/forms/ExtraCarSheets.h"
#include "printing/forms/P11DBPages.h"
#include "printing/jobs/BatchSelection.h"
#include "printing/jobs/PrintJob.h"

#include <string>
#include <string_view>
#include <vector>

/// What documents are made of, and in which order.
namespace quillmere {

/// A step of a document, for the general error box.
inline constexpr int DeclarationStep = 21;
inline constexpr int DocumentEndStep =
    22; ///< an employee's papers are drawn; what is left is the printer and the next record

using FormPage = void (*)(PageLayer& page, const FieldReader& read);

/// The sheet with two of the further cars.
struct SheetPaper {
    const ExtraCarSheet& cars;
};
/// The report of a schedule, by its table.
struct SchedulePaper {
    std::string_view table;
};
/// A working paper, of the first to the last of several things of which there is one record.
struct WorkingPaper {
    std::string_view name;
    int first = 0, last = 0;
    const ExtraCarSheet* sheet = nullptr; ///< prints only if this sheet was drawn
};

/// The document of the job's employee, whose form `records` stands on.
class EmployeeDocument {
public:
    EmployeeDocument(PrintJob& job, std::string_view procedure, const Recordset& records);

    void Print(const BatchSelection& selection);

private:
    void Print(FormPage page);
    void Print(const SheetPaper& sheet);
    void Print(const SchedulePaper& schedule);
    void Print(const WorkingPaper& working);

    PrintJob& job;
    std::string_view procedure;
    FieldReader read;
    std::vector<const ExtraCarSheet*> drawnSheets;
};

void PrintDeclarationDocument(PrintJob& job, std::string_view procedure, DeclarationVariant variant,
                              const FieldReader& read);

FieldReader ReaderOf(const Recordset& records);
/// The totals under the names of the fields in which a declaration stores them.
FieldReader ReaderOf(const DeclarationTotals& totals);

std::string EmployeeDocumentName(std::string_view employer, std::string_view employee);
std::string DeclarationDocumentName(std::string_view employer);

} // namespace quillmere
