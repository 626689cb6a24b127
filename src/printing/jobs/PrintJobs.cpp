#include "printing/jobs/PrintJobs.h"

#include "clientdb/Employees.h"
#include "clientdb/store/FormMarks.h"
#include "declaration/Declaration.h"
#include "edition/Edition.h"
#include "frame/BusyPointer.h"
#include "frame/CloseAll.h"
#include "frame/ProgressBar.h"
#include "frame/Text.h"
#include "frame/Tick.h"
#include "printing/forms/P11DBPages.h"
#include "printing/forms/P11DPages.h"
#include "printing/forms/TableReport.h"
#include "printing/jobs/JobPapers.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <functional>
#include <map>
#include <variant>
#include <vector>

namespace quillmere {

namespace {

constexpr std::string_view SingleJob = "Print P11D";
constexpr std::string_view BatchJob = "Batch Print";
constexpr std::string_view TableJob = "Print Table";
constexpr std::string_view PreviewScreen = "frmVSPrint";

// ---- what an employee's document is made of -----------------------------------------------------

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

FieldReader ReaderOf(const Recordset& records)
{
    return [&records](std::string_view field) { return std::string(records.Field(field)); };
}

/// The document of the job's employee, whose form `records` stands on.
class EmployeeDocument {
public:
    EmployeeDocument(PrintJob& job, std::string_view procedure, const Recordset& records)
        : job(job), procedure(procedure), read(ReaderOf(records))
    {
        job.nationalInsurance = records.Field("NatIns");
    }

    void Print(const BatchSelection& selection)
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

private:
    void Print(FormPage page)
    {
        job.page.NextPrintPage();
        page(job.page, read);
    }

    void Print(const SheetPaper& sheet)
    {
        const int first = sheet.cars.firstCar;
        if (ExtraCarsHaveData(job, "ExtraCars", first, first + 1) && PrintExtraCarSheet(job, sheet.cars))
            drawnSheets.push_back(&sheet.cars);
    }

    void Print(const SchedulePaper& schedule) { PrintScheduleReport(job, ScheduleReportOf(schedule.table)); }

    void Print(const WorkingPaper& working)
    {
        if (working.sheet == nullptr || std::ranges::find(drawnSheets, working.sheet) != drawnSheets.end())
            PrintWorkingReport(job, WorkingReportOf(working.name), working.first, working.last);
    }

    PrintJob& job;
    std::string_view procedure;
    FieldReader read;
    std::vector<const ExtraCarSheet*> drawnSheets;
};

// ---- the declaration's document -----------------------------------------------------------------

constexpr int DeclarationStep = 21;
constexpr int DocumentEndStep = 22; ///< an employee's papers are drawn; what is left is the printer and the next record

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

/// The totals under the names of the fields in which a declaration stores them.
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

// ---- names of documents -------------------------------------------------------------------------

std::string EmployeeDocumentName(std::string_view employer, std::string_view employee)
{
    return std::string(employer).append(" - ").append(employee);
}

std::string DeclarationDocumentName(std::string_view employer)
{
    return std::string(employer).append(" - P11D(b)");
}

// ---- a single job -------------------------------------------------------------------------------

/// Draws the document of a single job. False if there is nobody to draw it for.
bool DrawSingleDocument(PrintJob& job, PrintedDocument document)
{
    job.OpenClients();
    if (document == PrintedDocument::Declaration) {
        // An employer without a record fails when the first field is asked for.
        static_cast<void>(job.Seek("P11DB", RecordOf::Employer));
        const std::string name = DeclarationDocumentName(job.names.employer);
        job.names.employee = job.names.employer;
        if (job.document.OpenPrintJob(name) == Opening::Open)
            PrintDeclarationDocument(job, SingleJob, DeclarationVariant::Record, ReaderOf(job.Table("P11DB")));
        return true;
    }
    if (!job.Seek("P11D", RecordOf::Employee)) {
        job.session.messages.Tell(SingleJob, "Employee not found");
        return false;
    }
    EmployeeDocument paper(job, SingleJob, job.Table("P11D"));
    if (job.document.OpenPrintJob(EmployeeDocumentName(job.names.employer, job.names.employee)) == Opening::Open)
        paper.Print(BatchSelection::All());
    return true;
}

/// Marks the form with which a document begins, if it begins with one.
void MarkPrinted(Database& database, const JobDocument& document, Day today)
{
    if (!document.Form())
        return;
    const auto& [employer, employee] = *document.Form();
    try {
        static_cast<void>(FormMarks(database).Set(FormMark::Printed, employer, employee, FormatDate(today)));
    } catch (const StoreError&) {
        return; // a mark less
    }
}

// ---- a batch ------------------------------------------------------------------------------------

/// How far a batch has come, and what became of its documents.
class Batch {
public:
    Batch(PrintJob& job, int documents)
        : job(job), left(documents), progress(job.session.platform, documents, ProgressBar::Shows::EveryStep)
    {
    }

    /// Opens the document that comes next. It does not open once the batch is at its end.
    [[nodiscard]] Opening Open(std::string_view name)
    {
        next = name;
        const Opening opening = isStopped ? Opening::Left : job.document.OpenPrintJob(name);
        isStopped = opening == Opening::Left;
        if (isStopped && firstLeft.empty())
            firstLeft = name;
        return opening;
    }

    /// Ends the document in hand, which goes to the printer.
    void Close()
    {
        const PrintResult result = job.document.vsEndDoc();
        if (result == PrintResult::Sent) {
            pagesSent += job.document.PagesSent();
            MarkPrinted(job.Clients(), job.document, job.session.platform.Today());
        }
        const bool hasFailed = result == PrintResult::PrinterUnreachable || result == PrintResult::NotReady;
        if (hasFailed)
            unprinted.push_back(next);
        // A second one in turn, or a printer that is gone: the others would fare no better.
        isStopped = hasFailed && (lastHasFailed || result == PrintResult::NotReady || !job.document.HasPrinter());
        lastHasFailed = hasFailed;
        Pass();
    }

    /// Goes on without the document in hand.
    void Pass()
    {
        --left;
        progress.Advance();
    }

    int PagesSent() const { return pagesSent; }

    /// Tells, once, whose documents have not been printed and how many are left.
    void TellOfUnprinted() const
    {
        std::string text;
        if (!unprinted.empty())
            text = "Not printed:\n";
        for (std::size_t at = 0; at < std::min(unprinted.size(), MostNames); ++at)
            text.append("\n").append(unprinted[at]);
        if (unprinted.size() > MostNames)
            text += fmt::format("\nand {} more", unprinted.size() - MostNames);
        if (isStopped && left > 0)
            text += fmt::format("{}{} of the batch {} left, from '{}' on.", text.empty() ? "" : "\n\n",
                                left == 1 ? "1 document" : fmt::format("{} documents", left), left == 1 ? "is" : "are",
                                firstLeft);
        if (!text.empty())
            job.session.messages.Tell(edition::AppTitle, text);
    }

private:
    static constexpr std::size_t MostNames = 10;

    PrintJob& job;
    int left;
    ProgressBar progress;
    std::string next;                   ///< the name of the document in hand
    std::string firstLeft;              ///< and of the first one that the batch has not come to
    std::vector<std::string> unprinted; ///< names of those that did not reach the printer
    bool isStopped = false, lastHasFailed = false;
    int pagesSent = 0;
};

void PrintEmployees(PrintJob& job, const BatchSelection& selection, Batch& batch)
{
    Recordset records = job.Clients().OpenRecordset("P11D");
    records.Index("IndKey");
    records.MoveFirstOf(job.names.employer);
    while (!records.AtEnd()) {
        job.At(BatchJob, 0);
        job.names.employee = records.Field("EmployeeName");
        job.session.CurrentEmployee = job.names.employee;
        EmployeeDocument paper(job, BatchJob, records);
        const Opening opening = batch.Open(EmployeeDocumentName(job.names.employer, job.names.employee));
        if (opening == Opening::Left)
            return;
        // Kept: without a printer that opens the same question is asked again, for the same employee.
        if (opening == Opening::NotOpen)
            continue;
        paper.Print(selection);
        job.At(BatchJob, DocumentEndStep);
        batch.Close();
        records.MoveNext();
    }
}

void PrintBatchDeclaration(PrintJob& job, Batch& batch)
{
    job.At(BatchJob, DeclarationStep);
    job.names.employee = job.names.employer;
    const Opening opening = batch.Open(DeclarationDocumentName(job.names.employer));
    if (opening == Opening::NotOpen)
        batch.Pass();
    if (opening != Opening::Open)
        return;
    job.batchDeclaration = true;
    PrintDeclarationDocument(job, BatchJob, DeclarationVariant::Totals,
                             ReaderOf(ComputeDeclarationTotals(job.Clients(), job.names.employer)));
    job.batchDeclaration = false;
    batch.Close();
}

/// What of a document should be looked at before it is sent; printing goes on.
std::string WordsOfLook(const Session& session, const std::string& employer, const std::string& employee)
{
    return session.thingsToLookAt ? session.thingsToLookAt(employer, employee) : std::string();
}

void PrintBatch(PrintJob& job, const BatchSelection& selection)
{
    job.OpenClients();
    const bool hasEmployees = selection.HasPapersOfEmployees();
    const bool hasDeclaration = selection.Has(BatchTick::P11DB);
    const std::size_t employees = hasEmployees ? ListEmployees(job.Clients(), job.names.employer).size() : 0;
    Batch batch(job, static_cast<int>(employees) + (hasDeclaration ? 1 : 0));
    try {
        if (hasEmployees)
            PrintEmployees(job, selection, batch);
        if (hasDeclaration)
            PrintBatchDeclaration(job, batch);
    } catch (const std::exception&) {
        batch.TellOfUnprinted();
        throw;
    }
    batch.TellOfUnprinted();
    if (batch.PagesSent() > 0)
        SayPagesSent(job.session, batch.PagesSent(), job.document.Printer(),
                     WordsOfLook(job.session, job.names.employer, {}));
}

/// Draws a single document and shows it, as a PDF file where the settings say so; `draw` says whether there is one, and
/// `look` what of it should be looked at.
void ShowJob(Session& session, PrintSystem& printing, std::string_view procedure,
             const std::function<bool(PrintJob&)>& draw, const std::function<std::string()>& look)
{
    BusyPointer busy(session.platform);
    {
        PrintJob job(session, printing, procedure, Route::Screen);
        try {
            if (!draw(job))
                return;
            if (session.settings.reportPreview == 1) {
                job.document.EndOnPdf();
                SetStatusNote(session, look());
                return;
            }
            job.document.vsEndDoc();
        } catch (const std::exception& error) {
            job.Fail(error);
            return;
        }
    }
    if (Screen* preview = session.screens.Load(PreviewScreen)) {
        Box& words = preview->box("lblLook");
        words.SetText(look());
        words.SetVisible(!words.Empty());
    }
    // The preview sets the pointer back once it has been painted.
    if (session.screens.Show(PreviewScreen) != nullptr)
        busy.HandOver();
}

} // namespace

void PrintEmployeeJob(Session& session, PrintSystem& printing, std::string_view employer, std::string_view employee,
                      PrintedDocument document)
{
    const auto draw = [&](PrintJob& job) {
        job.names.employer = employer;
        job.names.employee = employee;
        return DrawSingleDocument(job, document);
    };
    ShowJob(session, printing, SingleJob, draw, [&] {
        const bool isOfEmployee = document == PrintedDocument::Employee;
        return WordsOfLook(session, std::string(employer), isOfEmployee ? std::string(employee) : std::string());
    });
}

void PrintTableJob(Session& session, PrintSystem& printing, const PrintedTable& table)
{
    const auto draw = [&](PrintJob& job) {
        job.names.employer = table.employer.empty() ? session.CurrentEmployer : table.employer;
        job.names.employee = table.employee.empty() ? job.names.employer : table.employee;
        if (job.document.OpenPrintJob(table.documentName) == Opening::Open)
            PrintTableReport(job.page, job.names, table);
        return true;
    };
    ShowJob(session, printing, TableJob, draw, [] { return std::string(); });
}

void MarkPrinted(const Session& session, const JobDocument& document)
{
    try {
        Database database = Database::OpenDatabase(session.ClientDatabasePath());
        MarkPrinted(database, document, session.platform.Today());
    } catch (const StoreError&) {
        return; // a mark less
    }
}

void SayPagesSent(Session& session, int pages, std::string_view printer, std::string_view more)
{
    SetStatusNote(session, fmt::format("{} page{} sent to {}{}{}", pages, pages == 1 ? "" : "s", printer,
                                       more.empty() ? "" : "; ", more));
}

void PrintBatchJob(Session& session, PrintSystem& printing, std::string_view employer, const BatchSelection& selection)
{
    const BusyPointer busy(session.platform);
    PrintJob job(session, printing, BatchJob, Route::Printer);
    job.names.employer = employer;
    try {
        PrintBatch(job, selection);
    } catch (const std::exception& error) {
        job.Fail(error);
    }
}

} // namespace quillmere
